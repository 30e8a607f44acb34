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
#include "simplepath/edit/SimplePathChangeInstruction.h"
#include "simplepath/operations/SimplePathOperationFactory.h"
#include "simplepath/operations/SliceSimplePathOperation.h"

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
    std::vector<SimplePath*> all() const { return {open, closed, other}; }
};

// The paths an edit reported added are the host's: freed once the operation is gone.
void freeAdded(SimplePathChangeInstruction const& change) {
    Paths added;
    change.simplePathsAdded(added);
    for (auto const& p : added) {
        delete p.pointer;
    }
}

std::vector<DPoint> pointsOf(SimplePath const& path) {
    std::vector<DPoint> out;
    for (SimplePathVertexTriple const& t : path.getTripleList()) {
        out.insert(out.end(), {t.first->getLocation(), t.anchor->getLocation(), t.last->getLocation()});
    }
    return out;
}

// Executes, checks the path against `expected` point for point, undoes to the exact state before, and
// redoes to the same points.
void expectWholePathEdit(SimplePathOperation& op, SimplePath& path, std::vector<DPoint> const& expected) {
    PathState const before = stateOf(path);
    Paths affected;
    SimplePathChangeInstruction change;
    ASSERT_EQ(SimplePathOperation::Success, op.executeOperation(affected, change));
    EXPECT_EQ(Paths{&path}, affected);
    std::vector<DPoint> const got = pointsOf(path);
    ASSERT_EQ(expected.size(), got.size());
    for (std::size_t i = 0; i < got.size(); ++i) {
        EXPECT_NEAR(expected[i].x, got[i].x, 1e-12 * (1.0 + std::fabs(expected[i].x)));
        EXPECT_NEAR(expected[i].y, got[i].y, 1e-12 * (1.0 + std::fabs(expected[i].y)));
    }
    op.undoOperation();
    EXPECT_EQ(before, stateOf(path));
    op.undoOperation(); // nothing held: nothing done
    EXPECT_EQ(before, stateOf(path));
    Paths again;
    ASSERT_EQ(SimplePathOperation::Success, op.executeOperation(again, change));
    EXPECT_EQ(got, pointsOf(path));
    op.undoOperation();
    EXPECT_EQ(before, stateOf(path));
}

TEST(PathLevelOperations, TranslateAndTheTwoTransformsMoveEveryPointAndUndoExactly) {
    Fixture f;
    std::vector<DPoint> const start = pointsOf(*f.open);
    std::vector<DPoint> shifted, turned, mirrored;
    DPoint const centre(7.0, -3.0);
    double const c = std::cos(0.3), s = std::sin(0.3);
    for (DPoint const& p : start) {
        shifted.emplace_back(p.x + 2.5, p.y - 4.0);
        double const x = p.x - centre.x, y = p.y - centre.y;
        turned.emplace_back(centre.x + 2.0 * (c * x - s * y), centre.y + 2.0 * (s * x + c * y));
        mirrored.emplace_back(-p.x, p.y);
    }
    Op translate(F::createTranslateOperation(f.open, DVector(2.5, -4.0)));
    expectWholePathEdit(*translate, *f.open, shifted);
    Op affine(F::createTransformOperation(f.open, P2DTrans(2.0 * c, -2.0 * s, 2.0 * s, 2.0 * c), centre));
    expectWholePathEdit(*affine, *f.open, turned);
    struct Mirror : ArbTrans<DPoint> {
        DPoint transform(DPoint const& p) const override { return DPoint(-p.x, p.y); }
        DPoint reverseTransform(DPoint const& p) const override { return DPoint(-p.x, p.y); }
    } mirror;
    Op arbitrary(F::createTransformOperation(f.open, &mirror));
    expectWholePathEdit(*arbitrary, *f.open, mirrored);
}

TEST(PathLevelOperations, ANullTransformFailsAfterItsMementoAndUndoIsStillAnswered) {
    Fixture f;
    PathState const before = stateOf(*f.closed);
    Op op(F::createTransformOperation(f.closed, static_cast<ArbTrans<DPoint>*>(nullptr)));
    ASSERT_NE(nullptr, op);
    Paths affected;
    SimplePathChangeInstruction change;
    EXPECT_EQ(SimplePathOperation::EditFailed, op->executeOperation(affected, change));
    EXPECT_TRUE(affected.empty());
    // The memento taken before the failure is held: a second execution is refused until undo.
    EXPECT_EQ(SimplePathOperation::EditFailed, op->executeOperation(affected, change));
    op->undoOperation();
    EXPECT_EQ(before, stateOf(*f.closed));
}

TEST(PathLevelOperations, DeleteEmptiesThePathReportsItAndUndoGivesTheSameVerticesBack) {
    Fixture f;
    EXPECT_EQ(nullptr, F::createDeleteOperation(nullptr));
    PathState const before = stateOf(*f.closed);
    Op op(F::createDeleteOperation(f.closed));
    Paths affected;
    SimplePathChangeInstruction change;
    ASSERT_EQ(SimplePathOperation::Success, op->executeOperation(affected, change));
    EXPECT_EQ(0, f.closed->numTriples());
    EXPECT_EQ(Paths{f.closed}, affected);
    Paths removed;
    change.simplePathsRemoved(removed);
    EXPECT_EQ(Paths{f.closed}, removed);
    std::set<SimplePathVertex*> gone;
    change.simplePathVerticesRemoved(gone);
    EXPECT_EQ(std::set<SimplePathVertex*>(before.vertices.begin(), before.vertices.end()), gone);
    op->undoOperation();
    EXPECT_EQ(before, stateOf(*f.closed));
    // Executed again and dropped while in effect: the operation frees the vertices it holds.
    ASSERT_EQ(SimplePathOperation::Success, op->executeOperation(affected, change));
    op.reset();
    EXPECT_EQ(0, f.closed->numTriples());
}

TEST(PathLevelOperations, CloseClosesEveryListedPathInOrderAndUndoReopensThem) {
    Fixture f;
    Paths none;
    Op empty(F::createClosePathsOperation(none));
    Paths affected;
    SimplePathChangeInstruction change;
    EXPECT_EQ(SimplePathOperation::EditFailed, empty->executeOperation(affected, change));

    Paths three{f.other, f.open, f.closed};
    DrawingState const before = drawingState(f.all());
    Op op(F::createClosePathsOperation(three));
    three.clear(); // the operation keeps its own copy of the list
    ASSERT_EQ(SimplePathOperation::Success, op->executeOperation(affected, change));
    EXPECT_EQ((Paths{f.other, f.open, f.closed}), affected);
    for (SimplePath* p : f.all()) {
        EXPECT_NE(0, p->isClosedSimplePath());
    }
    op->undoOperation();
    EXPECT_EQ(before, drawingState(f.all()));

    // A null handle in the list ends the walk; the paths closed before it are restored by undo.
    Paths withNull{f.open, nullptr, f.other};
    Op broken(F::createClosePathsOperation(withNull));
    Paths some;
    EXPECT_EQ(SimplePathOperation::MementoFailed, broken->executeOperation(some, change));
    EXPECT_NE(0, f.open->isClosedSimplePath());
    EXPECT_EQ(0, f.other->isClosedSimplePath());
    broken->undoOperation();
    EXPECT_EQ(before, drawingState(f.all()));
}

TEST(PathLevelOperations, ACurvedSliceRecordsTheReplacementAndMapsPositionsOntoTheFirstPiece) {
    Fixture f;
    Paths affected;
    SimplePathChangeInstruction change;
    Op noPieces(F::createCurvedSlicePathOperation({f.open}, {}));
    EXPECT_EQ(SimplePathOperation::EditFailed, noPieces->executeOperation(affected, change));
    Op noPaths(F::createCurvedSlicePathOperation({}, {f.other}));
    EXPECT_EQ(SimplePathOperation::EditFailed, noPaths->executeOperation(affected, change));
    EXPECT_TRUE(affected.empty());
    EXPECT_EQ(0u, change.numPositionTransforms());

    SimplePath pieceA, pieceB;
    Op op(F::createCurvedSlicePathOperation({f.open, f.closed}, {&pieceA, &pieceB}));
    ASSERT_EQ(SimplePathOperation::Success, op->executeOperation(affected, change));
    EXPECT_EQ((Paths{f.open, f.closed}), affected);
    Paths removed, added;
    change.simplePathsRemoved(removed);
    change.simplePathsAdded(added);
    EXPECT_EQ((Paths{f.open, f.closed}), removed);
    EXPECT_EQ((Paths{&pieceA, &pieceB}), added);
    SimplePathPosition at;
    EXPECT_EQ(SimplePath::Success, f.open->makePosition(1, 0.25, at));
    auto const moved = change.translate({f.open, at});
    EXPECT_EQ(&pieceA, moved.first.getPointer());
    op->undoOperation();
}

TEST(PathLevelOperations, ASliceRefusesDegenerateCutsAndSurvivesBadInput) {
    Fixture f;
    DrawingState const before = drawingState(f.all());
    SimplePathPosition a, b, far, nan;
    EXPECT_EQ(SimplePath::Success, f.closed->makePosition(1, 0.0, a));
    EXPECT_EQ(SimplePath::Success, f.closed->makePosition(0, 0.7, b)); // nearest anchor: 1 as well
    EXPECT_EQ(SimplePath::Success, f.closed->makePosition(1000, 0.0, far));
    EXPECT_EQ(SimplePath::Success, f.closed->makePosition(2, std::numeric_limits<double>::quiet_NaN(), nan));
    auto attempt = [&](PHashablePointer<SimplePath> p1, SimplePathPosition const& q1,
                       PHashablePointer<SimplePath> p2, SimplePathPosition const& q2) {
        Op op(F::createSlicePathOperation(p1, q1, p2, q2));
        EXPECT_NE(nullptr, op);
        Paths affected;
        SimplePathChangeInstruction change;
        SimplePathOperation::Result const result = op->executeOperation(affected, change);
        op->undoOperation();
        EXPECT_EQ(before, drawingState(f.all()));
        op.reset();
        freeAdded(change);
        return result;
    };
    EXPECT_EQ(SimplePathOperation::DegenerateSlice, attempt(f.closed, a, f.closed, a));
    EXPECT_EQ(SimplePathOperation::DegenerateSlice, attempt(f.closed, a, f.closed, b));
    EXPECT_EQ(SimplePathOperation::MementoFailed, attempt(nullptr, a, f.closed, b));
    EXPECT_EQ(SimplePathOperation::MementoFailed, attempt(f.closed, a, nullptr, b));
    SimplePath empty;
    EXPECT_EQ(SimplePathOperation::EditFailed, attempt(&empty, a, f.closed, b));
    // A position past the end leads to the first anchor; a parameter that is no number to its
    // segment's start: both cut, and undo restores.
    EXPECT_EQ(SimplePathOperation::Success, attempt(f.closed, far, f.closed, a));
    EXPECT_EQ(SimplePathOperation::Success, attempt(f.closed, nan, f.open, a));
}

TEST(PathLevelOperations, AClosedPathGivenFirstIsCutAsIfGivenSecond) {
    Fixture one, two;
    SimplePathPosition onOpen, onClosed;
    EXPECT_EQ(SimplePath::Success, one.open->makePosition(2, 0.0, onOpen));
    EXPECT_EQ(SimplePath::Success, one.closed->makePosition(1, 0.0, onClosed));
    Op forward(F::createSlicePathOperation(one.open, onOpen, one.closed, onClosed));
    Op swapped(F::createSlicePathOperation(two.closed, onClosed, two.open, onOpen));
    Paths affected1, affected2;
    SimplePathChangeInstruction change1, change2;
    ASSERT_EQ(SimplePathOperation::Success, forward->executeOperation(affected1, change1));
    ASSERT_EQ(SimplePathOperation::Success, swapped->executeOperation(affected2, change2));
    auto const* s1 = static_cast<SliceSimplePathOperation*>(forward.get());
    auto const* s2 = static_cast<SliceSimplePathOperation*>(swapped.get());
    EXPECT_EQ(bytesOf(*s1->getResultPath(0)), bytesOf(*s2->getResultPath(0)));
    forward->undoOperation();
    swapped->undoOperation();
    forward.reset();
    swapped.reset();
    freeAdded(change1);
    freeAdded(change2);
}

TEST(PathLevelOperations, NoneHasARecordAndTheCallersRecordIsNotFreed) {
    Fixture f;
    ArbTrans<DPoint>* const noTransform = nullptr;
    Paths list{f.open};
    SimplePathPosition p0, p1;
    EXPECT_EQ(SimplePath::Success, f.open->makePosition(0, 0.0, p0));
    EXPECT_EQ(SimplePath::Success, f.open->makePosition(2, 0.0, p1));
    std::vector<Op> ops;
    ops.emplace_back(F::createDeleteOperation(f.open));
    ops.emplace_back(F::createTranslateOperation(f.open, DVector(1, 1)));
    ops.emplace_back(F::createTransformOperation(f.open, P2DTrans(), DPoint()));
    ops.emplace_back(F::createTransformOperation(f.open, noTransform));
    ops.emplace_back(F::createClosePathsOperation(list));
    ops.emplace_back(F::createCurvedSlicePathOperation({f.open}, {f.other}));
    ops.emplace_back(F::createSlicePathOperation(f.open, p0, f.open, p1));
    Info kept;
    for (Op const& op : ops) {
        ASSERT_NE(nullptr, op);
        Info* info = &kept;
        EXPECT_EQ(-1, op->RetreiveSegIndependentInfo(info));
        EXPECT_EQ(nullptr, info);
        info = &kept;
        EXPECT_EQ(-1, op->ApplySegIndependentInfo(info));
        EXPECT_EQ(nullptr, info);
    }
    EXPECT_EQ(0, kept.getType()); // still alive and untouched
}

} // namespace
