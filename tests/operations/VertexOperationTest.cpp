// Each vertex operation hands its edit to the right path primitive (whose geometry the edit tests
// check) and reports the right result. Undo and redo are held to exact states by the random sequences;
// here undo is checked only where those rarely reach (ends merged at one place, a memento kept by a
// failed execution).

#include <cmath>
#include <limits>
#include <list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "OperationHost.h"
#include "simplepath/edit/SimplePathChangeInstruction.h"
#include "simplepath/operations/AddSimplePathVertexOperation.h"
#include "simplepath/operations/AverageVertexOperation.h"
#include "simplepath/operations/JoinSimplePathVerticesOperation.h"
#include "simplepath/operations/SimplePathOperationFactory.h"

using namespace ops_test;

namespace {

using F = SimplePathOperationFactory;
using Op = std::unique_ptr<SimplePathOperation>;
using Mode = SimplePathVertexTriple::VertexTripleMode;
using Paths = std::list<PHashablePointer<SimplePath>>;
using Pool = std::vector<std::unique_ptr<SimplePath>>;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

std::vector<SimplePathLocationTriple> row(int n, double y = 0.0) {
    std::vector<SimplePathLocationTriple> out;
    for (int i = 0; i < n; ++i) {
        out.push_back(curved(DPoint(10.0 * i, y), 0.1 * i));
    }
    return out;
}

DPoint at(SimplePathVertex const* v) {
    return v->getLocation();
}

TEST(VertexOperations, EachEditReachesItsTripleThroughAnyOfItsVertices) {
    Pool pool;
    SimplePath* const path = addPath(pool, row(3), 0);
    SimplePathVertexTriple const t = tripleAt(*path, 1);
    auto apply = [&](SimplePathOperation* op) {
        ASSERT_EQ(SimplePathOperation::Success, execute(*Op(op)).result);
    };
    apply(F::createSetSmoothModeOperation(path, t.last, false));
    EXPECT_EQ(Mode::Smooth, tripleAt(*path, 1).mode);
    apply(F::createSetSymmetricModeOperation(path, t.first, false));
    EXPECT_EQ(Mode::Symmetric, tripleAt(*path, 1).mode);
    apply(F::createSetStraightModeOperation(path, t.anchor, false));
    EXPECT_EQ((std::vector<DPoint>{at(t.anchor), at(t.anchor)}),
              (std::vector<DPoint>{at(t.first), at(t.last)}));
    apply(F::createSetCuspModeOperation(path, t.anchor, false)); // pulls straight handles out
    EXPECT_NE(at(t.anchor), at(t.first));

    DVector const by(2.5, -1.0);
    std::vector<DPoint> const moved{at(t.first) + by, at(t.anchor) + by, at(t.last) + by};
    apply(F::createMoveSelectedVerticesOperation(path, t.first, by, false));
    EXPECT_EQ(moved, (std::vector<DPoint>{at(t.first), at(t.anchor), at(t.last)}));

    SimplePathLocationTriple const target(DPoint(1, 1), DPoint(2, 2), DPoint(3, 3), Mode::Symmetric);
    apply(F::createChangeVertexOperation(path, tripleAt(*path, 1), target, false));
    EXPECT_EQ(DPoint(2, 2), at(t.anchor));
    EXPECT_EQ(Mode::Symmetric, tripleAt(*path, 1).mode);
    SimplePathLocationTriple const dragged(DPoint(0, 5), DPoint(1, 6), DPoint(4, 7), Mode::Cusp);
    apply(F::createVertexPickOperation(path, SimplePathVertexPickAction(tripleAt(*path, 1), dragged), false));
    EXPECT_EQ(DPoint(4, 7), at(t.last));
}

TEST(Factory, NullArgumentsGiveNothingUnlessAShellIsAskedFor) {
    SimplePath path;
    SimplePathVertex* anchor = nullptr;
    EXPECT_EQ(SimplePath::Success, path.addSingle(DPoint(1.0, 2.0), anchor));
    SimplePathPosition const none;
    EXPECT_EQ(nullptr, Op(F::createSetCuspModeOperation(nullptr, anchor, false)));
    EXPECT_EQ(nullptr, Op(F::createSetSmoothModeOperation(&path, nullptr, false)));
    EXPECT_EQ(nullptr, Op(F::createDeleteVertexOperation(&path, nullptr, false)));
    EXPECT_EQ(nullptr, Op(F::createMoveSelectedVerticesOperation(nullptr, anchor, DVector(), false)));
    EXPECT_EQ(nullptr, Op(F::createAddVertexAtPositionOperation(nullptr, none, false)));
    EXPECT_EQ(nullptr, Op(F::createJoinVerticesOperation(&path, anchor, nullptr, &path, false)));
    EXPECT_EQ(nullptr, Op(F::createSplitVertexOperation(nullptr, none, nullptr, nullptr, false)));
    // Shells executed unfilled fail cleanly and undo harmlessly.
    std::vector<Op> shells;
    shells.emplace_back(F::createSetCuspModeOperation(nullptr, nullptr, true));
    shells.emplace_back(F::createMoveSelectedVerticesOperation(nullptr, nullptr, DVector(), true));
    shells.emplace_back(F::createAddVertexAtPositionOperation(nullptr, none, true));
    shells.emplace_back(F::createAverageVertexOperation(nullptr, nullptr, {}, {}, {}, 0, PBoxForm(), true));
    shells.emplace_back(F::createChangeVertexOperation(nullptr, {}, {}, true));
    shells.emplace_back(F::createInsertVerticesOperation(nullptr, {}, -1, true));
    shells.emplace_back(F::createDeleteVertexOperation(nullptr, nullptr, true));
    shells.emplace_back(F::createJoinVerticesOperation(nullptr, nullptr, nullptr, nullptr, true));
    shells.emplace_back(F::createSplitVertexOperation(nullptr, none, nullptr, nullptr, true));
    shells.emplace_back(F::createVertexPickOperation(nullptr, SimplePathVertexPickAction(), true));
    for (Op const& shell : shells) {
        ASSERT_NE(nullptr, shell);
        Outcome const run = execute(*shell);
        EXPECT_NE(SimplePathOperation::Success, run.result);
        EXPECT_TRUE(run.affected.empty());
        shell->undoOperation();
    }
}

TEST(VertexOperations, BadInputIsRefusedByTheEditAndChangesNothing) {
    Pool pool;
    SimplePath* const path = addPath(pool, row(3), 0);
    SimplePath* const other = addPath(pool, row(2, 50.0), 0);
    SimplePathVertexTriple const t = tripleAt(*path, 1);
    auto position = [&](int index, double p) { return positionOf(*path, index, p); };
    SimplePathLocationTriple const target(DPoint(1, 1), DPoint(2, 2), DPoint(3, 3), Mode::Symmetric);
    SimplePathLocationTriple notANumber = target;
    notANumber.first.x = kNaN;
    std::list<SimplePathLocationTriple> const run{curved(DPoint(100, 100), 0.5),
                                                  curved(DPoint(110, 100), 0.7)};
    std::list<SimplePathLocationTriple> infinite = run;
    infinite.back().last.y = std::numeric_limits<double>::infinity();
    std::pair<char const*, SimplePathOperation*> const cases[] = {
        {"vertex of another path", F::createSetSmoothModeOperation(path, tripleAt(*other, 0).anchor, false)},
        {"offset no number",
         F::createMoveSelectedVerticesOperation(path, t.anchor, DVector(kNaN, 0.0), false)},
        {"segment past the end", F::createAddVertexAtPositionOperation(path, position(7, 0.5), false)},
        {"segment before the start", F::createAddVertexAtPositionOperation(path, position(-1, 0.0), false)},
        {"parameter no number", F::createAddVertexAtPositionOperation(path, position(1, kNaN), false)},
        {"open path's last anchor", F::createAddVertexAtPositionOperation(path, position(2, 0.5), false)},
        {"insert past the end", F::createInsertVerticesOperation(path, run, 4, false)},
        {"insert an infinite point", F::createInsertVerticesOperation(path, infinite, 0, false)},
        {"change to no number", F::createChangeVertexOperation(path, t, notANumber, false)},
        {"pick to no number",
         F::createVertexPickOperation(path, SimplePathVertexPickAction(t, notANumber), false)},
        // A triple that is not the path's as given (its handles swapped) is refused by the primitive.
        {"handles swapped",
         F::createChangeVertexOperation(path, SimplePathVertexTriple(t.last, t.anchor, t.first, t.mode),
                                        target, false)},
    };
    DrawingState const before = drawingState(pool);
    for (auto const& [note, made] : cases) {
        SCOPED_TRACE(note);
        Op op(made);
        ASSERT_NE(nullptr, op);
        Outcome const refused = execute(*op);
        EXPECT_EQ(SimplePathOperation::EditFailed, refused.result);
        EXPECT_TRUE(refused.affected.empty());
        op->undoOperation();
        EXPECT_EQ(before, drawingState(pool));
    }
}

TEST(VertexOperations, AFailedExecutionKeepsItsMementoForUndo) {
    Pool pool;
    SimplePath* const path = addPath(pool, row(3), 0);
    SimplePath* const other = addPath(pool, row(2, 50.0), 0);
    DrawingState const before = drawingState(pool);
    // The vertex is not the path's: the memento is taken, then the edit fails.
    Op del(F::createDeleteVertexOperation(path, tripleAt(*other, 0).anchor, false));
    EXPECT_EQ(SimplePathOperation::EditFailed, execute(*del).result);
    // Whatever happens to the path afterwards, undo goes back to the state of that attempt.
    SimplePathChangeInstruction change;
    SimplePathVertex* middle = tripleAt(*path, 1).anchor;
    ASSERT_EQ(SimplePath::Success, path->setStraightMode(middle, change));
    EXPECT_NE(before, drawingState(pool));
    del->undoOperation();
    EXPECT_EQ(before, drawingState(pool));
}

TEST(AverageVertex, SixteenCodesEachTakeOneXAndOneYSource) {
    DPoint const anchor(1.0, 2.0), p0(10.0, 20.0), p1(30.0, 40.0), p2(50.0, 60.0);
    double const xs[] = {p2.x, p1.x, p0.x, anchor.x};
    double const ys[] = {p2.y, p1.y, p0.y, anchor.y};
    for (int xi = 0; xi < 4; ++xi) {
        for (int yi = 0; yi < 4; ++yi) {
            auto const code = static_cast<short>((0x10 << xi) | (0x100 << yi));
            EXPECT_EQ(DPoint(xs[xi], ys[yi]), AverageVertexOperation::alignedAnchor(code, anchor, p0, p1, p2))
                << code;
        }
    }
    // Two x bits, no x bit, no bits, or a stray bit: the default point.
    for (short code : {0x30 | 0x100, 0x100, 0, 0x10 | 0x100 | 0x1, 0x10 | 0x100 | 0x1000}) {
        EXPECT_EQ(DPoint(), AverageVertexOperation::alignedAnchor(code, anchor, p0, p1, p2)) << code;
    }
}

// The reference points are mapped into box space once per execution and the record keeps them mapped,
// deliberately: a redo maps them again.
TEST(AverageVertex, MovesTheVertexWithItsHandlesAndMapsItsReferencePointsAgainOnRedo) {
    Pool pool;
    SimplePath* const path = addPath(pool, row(3), 0);
    SimplePathVertexTriple const t = tripleAt(*path, 1);
    auto expectNear = [](DPoint const& want, DPoint const& got) {
        EXPECT_NEAR(want.x, got.x, 1e-9);
        EXPECT_NEAR(want.y, got.y, 1e-9);
    };
    DVector const handle = at(t.first) - at(t.anchor);
    // The box (0,0)-(100,100) mapped onto twice its size: a plain scaling by 2, exact in binary.
    PBoxForm const doubling(DPoint(0, 0), DPoint(100, 100), DPoint(0, 0), DPoint(200, 0), DPoint(0, 200),
                            DPoint(200, 200));
    Op average(F::createAverageVertexOperation(path, t.anchor, DPoint(3, 4), DPoint(5, 6), DPoint(7, 8),
                                               0x40 | 0x200, doubling, false));
    ASSERT_EQ(SimplePathOperation::Success, execute(*average).result);
    expectNear(DPoint(3.0, 6.0), at(t.anchor)); // x of p0, y of p1, doubled in box space and halved back
    expectNear(at(t.anchor) + handle, at(t.first));
    SimplePathOperation::SegmentIndependentInformation* info = nullptr;
    ASSERT_EQ(2, average->RetreiveSegIndependentInfo(info));
    std::unique_ptr<SimplePathOperation::SegmentIndependentInformation> record(info);
    expectNear(DPoint(6.0, 8.0), dynamic_cast<AverageVertexOperation::AveOpInformation&>(*record).p0);
    average->undoOperation();
    ASSERT_EQ(SimplePathOperation::Success, execute(*average).result);
    expectNear(DPoint(6.0, 12.0), at(t.anchor));
    average->undoOperation();
    // Code 2176 keeps the anchor where it is.
    DPoint const still = at(t.anchor);
    Op keep(F::createAverageVertexOperation(path, t.anchor, {}, {}, {}, 2176, doubling, false));
    ASSERT_EQ(SimplePathOperation::Success, execute(*keep).result);
    expectNear(still, at(t.anchor));
}

TEST(DeleteVertex, AnAnchorGoesWithItsTripleAHandleIsRetractedAndTheLastSegmentTakesThePath) {
    Pool pool;
    SimplePath* const path = addPath(pool, row(4), 1);
    SimplePathVertexTriple const t = tripleAt(*path, 2);
    SimplePathVertexTriple const next = tripleAt(*path, 3);
    DPoint const anchorAt = at(t.anchor);
    DPoint const lastAt = at(t.last);
    Op handle(F::createDeleteVertexOperation(path, t.first, false));
    ASSERT_EQ(SimplePathOperation::Success, execute(*handle).result);
    EXPECT_EQ(4, path->numTriples());
    EXPECT_EQ((std::vector<DPoint>{anchorAt, anchorAt, lastAt}),
              (std::vector<DPoint>{at(t.first), at(t.anchor), at(t.last)}));
    Op anchor(F::createDeleteVertexOperation(path, t.anchor, false));
    ASSERT_EQ(SimplePathOperation::Success, execute(*anchor).result);
    EXPECT_EQ(3, path->numTriples());
    EXPECT_EQ(next, tripleAt(*path, 2));

    // The anchor of a path of two vertices deletes the whole path.
    SimplePath* const two = addPath(pool, row(2), 0);
    Op del(F::createDeleteVertexOperation(two, tripleAt(*two, 1).anchor, false));
    Outcome const run = execute(*del);
    ASSERT_EQ(SimplePathOperation::Success, run.result);
    EXPECT_EQ(0, two->numTriples());
    Paths removed;
    run.change->simplePathsRemoved(removed);
    EXPECT_EQ(Paths{two}, removed);
    std::set<SimplePathVertex*> gone;
    run.change->simplePathVerticesRemoved(gone);
    EXPECT_EQ(6u, gone.size());
    // Destroyed while the path is deleted: the operation frees the six vertices (the sanitizers see it).
}

TEST(AddAndInsertVertices, PutTheNewTriplesInPlaceAndMoveLaterPositionsUp) {
    Pool pool;
    SimplePath* const path = addPath(pool, row(3), 0);
    auto add = std::make_unique<AddSimplePathVertexOperation>(path, positionOf(*path, 1, 0.5));
    ASSERT_EQ(SimplePathOperation::Success, execute(*add).result);
    EXPECT_EQ(4, path->numTriples());
    EXPECT_EQ(add->getNewTriple(), tripleAt(*path, 2));
    add->undoOperation(); // destroyed undone: it frees its triple

    std::list<SimplePathLocationTriple> const run{curved(DPoint(100, 100), 0.5, Mode::Smooth),
                                                  curved(DPoint(110, 100), 0.7, Mode::Symmetric)};
    auto locations = [&] {
        std::list<SimplePathLocationTriple> l;
        EXPECT_EQ(SimplePath::Success, path->getLocationTripleList(l));
        return std::vector<SimplePathLocationTriple>(l.begin(), l.end());
    };
    Op insert(F::createInsertVerticesOperation(path, run, 1, false));
    Outcome const inserted = execute(*insert);
    ASSERT_EQ(SimplePathOperation::Success, inserted.result);
    ASSERT_EQ(5, path->numTriples());
    EXPECT_EQ(run.front(), locations()[1]);
    EXPECT_EQ(run.back(), locations()[2]);
    // Positions at and after the insertion move up; those before stay.
    for (auto [index, expectedIndex] : {std::pair<int, int>{0, 0}, {1, 3}, {2, 4}}) {
        EXPECT_EQ(expectedIndex,
                  inserted.change->translate({path, positionOf(*path, index, 0.0)}).second.getIndex())
            << index;
    }
    insert->undoOperation();
    Op front(F::createInsertVerticesOperation(path, run, -1, false));
    ASSERT_EQ(SimplePathOperation::Success, execute(*front).result);
    EXPECT_EQ(run.front(), locations()[0]);
}

TEST(JoinVertices, ResultCodesComeInTheirOrder) {
    Pool pool;
    SimplePath* const a = addPath(pool, row(3), 0);
    SimplePath* const b = addPath(pool, row(3, 50.0), 0);
    SimplePath* const closed = addPath(pool, row(3, 100.0), 1);
    SimplePath* const single = addPath(pool, row(1, 150.0), 0);
    auto code = [](SimplePath* p, SimplePathVertex* v, SimplePath* q, SimplePathVertex* w) {
        Op join(F::createJoinVerticesOperation(p, v, w, q, false));
        Outcome const run = execute(*join);
        EXPECT_TRUE(run.affected.empty() || run.result == SimplePathOperation::Success);
        return run.result;
    };
    SimplePathVertex* const aEnd = tripleAt(*a, 2).anchor;
    DrawingState const before = drawingState(pool);
    // A closed path is reported before the same vertex twice.
    EXPECT_EQ(SimplePathOperation::NotJoinable,
              code(closed, tripleAt(*closed, 0).anchor, closed, tripleAt(*closed, 0).anchor));
    EXPECT_EQ(SimplePathOperation::SameVertex, code(a, aEnd, a, aEnd));
    EXPECT_EQ(SimplePathOperation::EditFailed,
              code(a, aEnd, b, tripleAt(*single, 0).anchor)); // not the second path's
    EXPECT_EQ(SimplePathOperation::NotJoinable, code(a, tripleAt(*a, 1).anchor, b, tripleAt(*b, 0).anchor));
    EXPECT_EQ(SimplePathOperation::NotJoinable, code(a, tripleAt(*a, 2).last, b, tripleAt(*b, 0).anchor));
    // A first path of one vertex makes the join itself fail: reported as 6, deliberately.
    EXPECT_EQ(SimplePathOperation::MementoFailed,
              code(single, tripleAt(*single, 0).anchor, b, tripleAt(*b, 0).anchor));
    EXPECT_EQ(before, drawingState(pool));
}

// Ends at one place merge into one vertex, which undo gives back (the exact states compare vertex
// objects); redo refills the same joined path object. Joins of ends apart are left to the sequences.
TEST(JoinVertices, EndsAtOnePlaceMergeAndUndoGivesBothBack) {
    Pool pool;
    SimplePath* const a = addPath(pool, row(3), 0);
    SimplePath* const b = addPath(pool, row(2), 0);
    ASSERT_EQ(SimplePath::Success, b->translate(DVector(20.0, 0.0))); // b starts where a ends
    auto join = std::make_unique<JoinSimplePathVerticesOperation>(a, tripleAt(*a, 2).anchor,
                                                                  tripleAt(*b, 0).anchor, b);
    DrawingState const before = drawingState(pool);
    Outcome const run = execute(*join);
    ASSERT_EQ(SimplePathOperation::Success, run.result);
    SimplePath* const joined = join->getJoinedPath();
    pool.emplace_back(joined); // reported added: the host's now
    EXPECT_EQ((Paths{a, b}), run.affected);
    EXPECT_EQ(4, joined->numTriples());
    EXPECT_EQ(0, a->numTriples());
    DrawingState const after = drawingState(pool);
    join->undoOperation();
    EXPECT_EQ(before, drawingState(pool));
    ASSERT_EQ(SimplePathOperation::Success, execute(*join).result);
    EXPECT_EQ(joined, join->getJoinedPath());
    EXPECT_EQ(after, drawingState(pool));
    // Destroyed with the join in effect: the merged-away triple is freed by the operation.
}

TEST(SplitVertex, AClosedPathOpensAtTheAnchorAndEndAnchorsCannotBeSplit) {
    Pool pool;
    SimplePath* const path = addPath(pool, row(4), 1);
    SimplePathVertex* const anchor = tripleAt(*path, 2).anchor;
    Op split(F::createSplitVertexOperation(path, anchor));
    ASSERT_NE(nullptr, split);
    ASSERT_EQ(SimplePathOperation::Success, execute(*split).result);
    EXPECT_EQ(0, path->isClosedSimplePath());
    EXPECT_EQ(anchor, tripleAt(*path, 0).anchor);
    std::unique_ptr<SimplePath> open(new SimplePath(*pool[0]));
    EXPECT_EQ(nullptr, Op(F::createSplitVertexOperation(open.get(), tripleAt(*open, 0).anchor)));
    EXPECT_EQ(nullptr, Op(F::createSplitVertexOperation(open.get(), tripleAt(*open, 4).anchor)));
    EXPECT_EQ(nullptr, Op(F::createSplitVertexOperation(open.get(), tripleAt(*path, 1).anchor)));
    EXPECT_NE(nullptr, Op(F::createSplitVertexOperation(open.get(), tripleAt(*open, 1).anchor)));
}

} // namespace
