// Each vertex operation hands its edit to the right path primitive (whose geometry the edit tests
// check) and reports the right result; undo and redo are left to the random sequences except where
// those rarely reach.

#include <limits>
#include <list>
#include <memory>
#include <set>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "OperationHost.h"
#include "simplepath/edit/SimplePathChangeInstruction.h"
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
    SimplePathLocationTriple const dragged(DPoint(0, 5), DPoint(1, 6), DPoint(4, 7), Mode::Cusp);
    apply(F::createVertexPickOperation(path, SimplePathVertexPickAction(tripleAt(*path, 1), dragged), false));
    EXPECT_EQ(DPoint(4, 7), at(t.last));

    SimplePathLocationTriple const added = curved(DPoint(100, 100), 0.5, Mode::Symmetric);
    apply(F::createInsertVerticesOperation(path, {added}, 2, false));
    std::list<SimplePathLocationTriple> now;
    ASSERT_EQ(SimplePath::Success, path->getLocationTripleList(now));
    EXPECT_EQ(added, *std::next(now.begin(), 2));
}

TEST(Factory, NullArgumentsGiveNothingUnlessAShellIsAskedFor) {
    SimplePath path;
    SimplePathVertex* anchor = nullptr;
    EXPECT_EQ(SimplePath::Success, path.addSingle(DPoint(1.0, 2.0), anchor));
    SimplePathPosition const none;
    Pool pool;
    SimplePath* const open = addPath(pool, row(3), 0);
    // Nulls, and an end anchor (or another path's vertex) to split: nothing is made.
    for (SimplePathOperation* made :
         {F::createSetCuspModeOperation(nullptr, anchor, false),
          F::createSetSmoothModeOperation(&path, nullptr, false),
          F::createDeleteVertexOperation(&path, nullptr, false),
          F::createMoveSelectedVerticesOperation(nullptr, anchor, DVector(), false),
          F::createAddVertexAtPositionOperation(nullptr, none, false),
          F::createJoinVerticesOperation(&path, anchor, nullptr, &path, false),
          F::createSplitVertexOperation(nullptr, none, nullptr, nullptr, false),
          F::createSplitVertexOperation(open, tripleAt(*open, 0).anchor),
          F::createSplitVertexOperation(open, tripleAt(*open, 2).anchor),
          F::createSplitVertexOperation(open, anchor)}) {
        EXPECT_EQ(nullptr, Op(made));
    }
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
        {"vertex of another path", F::createDeleteVertexOperation(path, tripleAt(*other, 0).anchor, false)},
        {"offset no number",
         F::createMoveSelectedVerticesOperation(path, t.anchor, DVector(kNaN, 0.0), false)},
        {"segment past the end", F::createAddVertexAtPositionOperation(path, position(7, 0.5), false)},
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
        // A delete keeps the memento it took before the refusal: undo goes back to it whatever
        // happened since.
        SimplePathVertex* middle = tripleAt(*path, 1).anchor;
        SimplePathChangeInstruction change;
        ASSERT_TRUE(&note != &cases[0].first || path->setStraightMode(middle, change) == SimplePath::Success);
        op->undoOperation();
        EXPECT_EQ(before, drawingState(pool));
    }
}

// The reference points are mapped into box space once per execution and kept mapped, deliberately: a
// redo maps them again.
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
    average->undoOperation();
    ASSERT_EQ(SimplePathOperation::Success, execute(*average).result);
    expectNear(DPoint(6.0, 12.0), at(t.anchor));
    // The anchor's own coordinates; two x sources (or none, or a stray bit) give the default point.
    DPoint const p(1.0, 2.0), p0(10.0, 20.0), p1(30.0, 40.0), p2(50.0, 60.0);
    EXPECT_EQ(DPoint(50.0, 2.0), AverageVertexOperation::alignedAnchor(0x10 | 0x800, p, p0, p1, p2));
    for (short code : {0x30 | 0x100, 0x100, 0x10 | 0x100 | 0x1000}) {
        EXPECT_EQ(DPoint(), AverageVertexOperation::alignedAnchor(code, p, p0, p1, p2)) << code;
    }
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

    // Ends at one place merge into one vertex, which undo gives back; redo refills the same joined path.
    ASSERT_EQ(SimplePath::Success, b->translate(DVector(20.0, -50.0))); // b starts where a ends
    DrawingState const apart = drawingState(pool);
    auto join = std::make_unique<JoinSimplePathVerticesOperation>(a, aEnd, tripleAt(*b, 0).anchor, b);
    ASSERT_EQ(SimplePathOperation::Success, execute(*join).result);
    SimplePath* const joined = join->getJoinedPath();
    pool.emplace_back(joined); // reported added: the host's now
    EXPECT_EQ(5, joined->numTriples());
    DrawingState const after = drawingState(pool);
    join->undoOperation();
    EXPECT_EQ(apart, drawingState(pool));
    ASSERT_EQ(SimplePathOperation::Success, execute(*join).result);
    EXPECT_EQ(joined, join->getJoinedPath());
    EXPECT_EQ(after, drawingState(pool)); // dropped in effect: the merged-away triple is the operation's
}

} // namespace
