// The operations on whole paths: delete, translate, the two transforms, close and the curved slice, the
// slice's refusals and bad input, and the rule that none of them has a record. Geometry is checked
// against points computed here; undo against exact snapshots.

#include <cmath>
#include <limits>
#include <list>
#include <memory>
#include <set>
#include <vector>

#include <gtest/gtest.h>

#include "OperationHost.h"
#include "simplepath/operations/SimplePathOperationFactory.h"

using namespace ops_test;

namespace {

using F = SimplePathOperationFactory;
using Op = std::unique_ptr<SimplePathOperation>;
using Info = SimplePathOperation::SegmentIndependentInformation;
using Paths = std::list<PHashablePointer<SimplePath>>;
using Mode = SimplePathVertexTriple::VertexTripleMode;

struct Fixture {
    std::vector<std::unique_ptr<SimplePath>> pool;
    SimplePath* open = nullptr;
    SimplePath* closed = nullptr;
    SimplePath* other = nullptr;
    Fixture() {
        std::vector<SimplePathLocationTriple> a, b, c;
        for (int i = 0; i < 4; ++i) {
            a.push_back(curved(DPoint(20.0 * i, 5.0 * i), 0.2 * i, i == 2 ? Mode::Smooth : Mode::Cusp));
            b.push_back(curved(DPoint(20.0 * (i % 2), 100.0 + 20.0 * (i / 2)), 0.1 * i, Mode::Symmetric));
            c.push_back(curved(DPoint(200.0 + 10.0 * i, -3.0 * i), 0.3 * i));
        }
        open = addPath(pool, a, 0);
        closed = addPath(pool, b, 1);
        other = addPath(pool, c, 0);
    }
    DrawingState state() const { return drawingState(pool); }
};

// None of these operations has a record: both calls answer -1 and clear the caller's pointer, without
// freeing what it pointed to.
void expectNoRecord(SimplePathOperation& op) {
    Info kept;
    for (int call = 0; call < 2; ++call) {
        Info* info = &kept;
        EXPECT_EQ(-1, call == 0 ? op.RetreiveSegIndependentInfo(info) : op.ApplySegIndependentInfo(info));
        EXPECT_EQ(nullptr, info);
    }
}

std::vector<DPoint> pointsOf(SimplePath const& path) {
    std::vector<DPoint> out;
    for (SimplePathVertexTriple const& t : path.getTripleList()) {
        out.insert(out.end(), {t.first->getLocation(), t.anchor->getLocation(), t.last->getLocation()});
    }
    return out;
}

TEST(PathLevelOperations, TranslateAndTheTwoTransformsMoveEveryPointAndUndoExactly) {
    Fixture f;
    DPoint const centre(7.0, -3.0);
    double const c = std::cos(0.3), s = std::sin(0.3);
    struct Mirror : ArbTrans<DPoint> {
        DPoint transform(DPoint const& p) const override { return DPoint(-p.x, p.y); }
        DPoint reverseTransform(DPoint const& p) const override { return DPoint(-p.x, p.y); }
    } mirror;
    std::pair<SimplePathOperation*, DPoint (*)(DPoint const&, double, double)> const cases[] = {
        {F::createTranslateOperation(f.open, DVector(2.5, -4.0)),
         [](DPoint const& p, double, double) { return DPoint(p.x + 2.5, p.y - 4.0); }},
        {F::createTransformOperation(f.open, P2DTrans(2.0 * c, -2.0 * s, 2.0 * s, 2.0 * c), centre),
         [](DPoint const& p, double c, double s) {
             double const x = p.x - 7.0, y = p.y + 3.0;
             return DPoint(7.0 + 2.0 * (c * x - s * y), -3.0 + 2.0 * (s * x + c * y));
         }},
        {F::createTransformOperation(f.open, &mirror),
         [](DPoint const& p, double, double) { return DPoint(-p.x, p.y); }},
    };
    PathState const before = stateOf(*f.open);
    std::vector<DPoint> const start = pointsOf(*f.open);
    for (auto const& [made, expect] : cases) {
        Op op(made);
        expectNoRecord(*op);
        Outcome const run = execute(*op);
        ASSERT_EQ(SimplePathOperation::Success, run.result);
        EXPECT_EQ(Paths{f.open}, run.affected);
        std::vector<DPoint> const got = pointsOf(*f.open);
        ASSERT_EQ(start.size(), got.size());
        for (std::size_t i = 0; i < got.size(); ++i) {
            DPoint const want = expect(start[i], c, s);
            EXPECT_NEAR(want.x, got[i].x, 1e-12 * (1.0 + std::fabs(want.x)));
            EXPECT_NEAR(want.y, got[i].y, 1e-12 * (1.0 + std::fabs(want.y)));
        }
        op->undoOperation();
        EXPECT_EQ(before, stateOf(*f.open));
        op->undoOperation(); // nothing held: nothing done
        EXPECT_EQ(before, stateOf(*f.open));
        ASSERT_EQ(SimplePathOperation::Success, execute(*op).result); // redo
        EXPECT_EQ(got, pointsOf(*f.open));
        op->undoOperation();
    }
}

TEST(PathLevelOperations, DeleteEmptiesThePathReportsItAndUndoGivesTheSameVerticesBack) {
    Fixture f;
    EXPECT_EQ(nullptr, F::createDeleteOperation(nullptr));
    PathState const before = stateOf(*f.closed);
    Op op(F::createDeleteOperation(f.closed));
    expectNoRecord(*op);
    Outcome const run = execute(*op);
    ASSERT_EQ(SimplePathOperation::Success, run.result);
    EXPECT_EQ(0, f.closed->numTriples());
    EXPECT_EQ(Paths{f.closed}, run.affected);
    Paths removed;
    run.change->simplePathsRemoved(removed);
    EXPECT_EQ(Paths{f.closed}, removed);
    std::set<SimplePathVertex*> gone;
    run.change->simplePathVerticesRemoved(gone);
    EXPECT_EQ(std::set<SimplePathVertex*>(before.vertices.begin(), before.vertices.end()), gone);
    op->undoOperation();
    EXPECT_EQ(before, stateOf(*f.closed));
    // Executed again and dropped while in effect: the operation frees the vertices it holds.
    ASSERT_EQ(SimplePathOperation::Success, execute(*op).result);
}

TEST(PathLevelOperations, CloseClosesEveryListedPathInOrderAndUndoReopensThem) {
    Fixture f;
    Paths none, three{f.other, f.open, f.closed}, withNull{f.open, nullptr, f.other};
    EXPECT_EQ(SimplePathOperation::EditFailed, execute(*Op(F::createClosePathsOperation(none))).result);
    DrawingState const before = f.state();
    Op op(F::createClosePathsOperation(three));
    expectNoRecord(*op);
    three.clear(); // the operation keeps its own copy of the list
    Outcome const run = execute(*op);
    ASSERT_EQ(SimplePathOperation::Success, run.result);
    EXPECT_EQ((Paths{f.other, f.open, f.closed}), run.affected);
    for (SimplePath* p : {f.open, f.closed, f.other}) {
        EXPECT_NE(0, p->isClosedSimplePath());
    }
    op->undoOperation();
    EXPECT_EQ(before, f.state());

    // A null handle in the list ends the walk; the paths closed before it are restored by undo.
    Op broken(F::createClosePathsOperation(withNull));
    EXPECT_EQ(SimplePathOperation::MementoFailed, execute(*broken).result);
    EXPECT_NE(0, f.open->isClosedSimplePath());
    EXPECT_EQ(0, f.other->isClosedSimplePath());
    broken->undoOperation();
    EXPECT_EQ(before, f.state());
}

TEST(PathLevelOperations, ACurvedSliceRecordsTheReplacementAndMapsPositionsOntoTheFirstPiece) {
    Fixture f;
    for (Op const& empty : {Op(F::createCurvedSlicePathOperation({f.open}, {})),
                            Op(F::createCurvedSlicePathOperation({}, {f.other}))}) {
        Outcome const run = execute(*empty);
        EXPECT_EQ(SimplePathOperation::EditFailed, run.result);
        EXPECT_TRUE(run.affected.empty());
        EXPECT_EQ(0u, run.change->numPositionTransforms());
    }
    SimplePath pieceA, pieceB;
    Op op(F::createCurvedSlicePathOperation({f.open, f.closed}, {&pieceA, &pieceB}));
    expectNoRecord(*op);
    Outcome const run = execute(*op);
    ASSERT_EQ(SimplePathOperation::Success, run.result);
    EXPECT_EQ((Paths{f.open, f.closed}), run.affected);
    Paths removed, added;
    run.change->simplePathsRemoved(removed);
    run.change->simplePathsAdded(added);
    EXPECT_EQ((Paths{f.open, f.closed}), removed);
    EXPECT_EQ((Paths{&pieceA, &pieceB}), added);
    EXPECT_EQ(&pieceA, run.change->translate({f.open, positionOf(*f.open, 1, 0.25)}).first.getPointer());
    op->undoOperation();
}

// Refused cuts and bad input change nothing once undone; a null transform fails after taking its
// memento, so a second execution is refused until undo.
TEST(PathLevelOperations, ASliceRefusesDegenerateCutsAndBadInputChangesNothing) {
    Fixture f;
    DrawingState const before = f.state();
    SimplePathPosition const a = positionOf(*f.closed, 1, 0.0);
    SimplePathPosition const b = positionOf(*f.closed, 0, 0.7); // nearest anchor: 1 as well
    SimplePathPosition const far = positionOf(*f.closed, 1000, 0.0);
    SimplePathPosition const nan = positionOf(*f.closed, 2, std::numeric_limits<double>::quiet_NaN());
    SimplePath empty;
    // A position past the end leads to the first anchor; a parameter that is no number to its
    // segment's start: both cut.
    std::pair<SimplePathOperation::Result, SimplePathOperation*> const cases[] = {
        {SimplePathOperation::DegenerateSlice, F::createSlicePathOperation(f.closed, a, f.closed, a)},
        {SimplePathOperation::DegenerateSlice, F::createSlicePathOperation(f.closed, a, f.closed, b)},
        {SimplePathOperation::MementoFailed, F::createSlicePathOperation(nullptr, a, f.closed, b)},
        {SimplePathOperation::MementoFailed, F::createSlicePathOperation(f.closed, a, nullptr, b)},
        {SimplePathOperation::EditFailed, F::createSlicePathOperation(&empty, a, f.closed, b)},
        {SimplePathOperation::Success, F::createSlicePathOperation(f.closed, far, f.closed, a)},
        {SimplePathOperation::Success, F::createSlicePathOperation(f.closed, nan, f.open, a)},
        {SimplePathOperation::EditFailed,
         F::createTransformOperation(f.closed, static_cast<ArbTrans<DPoint>*>(nullptr))},
    };
    for (auto const& [expected, made] : cases) {
        Op op(made);
        ASSERT_NE(nullptr, op);
        expectNoRecord(*op);
        Outcome const run = execute(*op);
        EXPECT_EQ(expected, run.result);
        if (expected == SimplePathOperation::EditFailed) {
            EXPECT_TRUE(run.affected.empty());
            EXPECT_EQ(expected, execute(*op).result);
        }
        op->undoOperation();
        EXPECT_EQ(before, f.state());
        op.reset();
        Paths added; // reported added: the host's to free
        run.change->simplePathsAdded(added);
        for (auto const& p : added) {
            delete p.pointer;
        }
    }
}

} // namespace
