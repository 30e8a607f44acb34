// The rules of the individual vertex operations: what each edit does, the result codes, and what undo
// and redo give back. States are compared exactly (bytes and vertex objects).

#include <cmath>
#include <limits>
#include <list>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

#include "OperationHost.h"
#include "simplepath/edit/SimplePathChangeInstruction.h"
#include "simplepath/operations/AddSimplePathVertexOperation.h"
#include "simplepath/operations/AverageVertexOperation.h"
#include "simplepath/operations/JoinSimplePathVerticesOperation.h"
#include "simplepath/operations/SimplePathOperationFactory.h"
#include "simplepath/operations/SplitSimplePathVertexOperation.h"

using namespace ops_test;

namespace {

using F = SimplePathOperationFactory;
using Op = std::unique_ptr<SimplePathOperation>;
using Mode = SimplePathVertexTriple::VertexTripleMode;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

struct Outcome {
    SimplePathOperation::Result result;
    std::list<PHashablePointer<SimplePath>> affected;
    std::unique_ptr<SimplePathChangeInstruction> change = std::make_unique<SimplePathChangeInstruction>();
};

Outcome execute(SimplePathOperation& op) {
    Outcome run;
    run.result = op.executeOperation(run.affected, *run.change);
    return run;
}

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

// Executes, checks the edit with `check`, undoes (twice), checks the state before, redoes and checks
// that the redo gives exactly the first result.
template <class Paths, class Check>
void executeUndoRedo(SimplePathOperation& op, Paths const& pool, Check const& check) {
    DrawingState const before = drawingState(pool);
    Outcome const first = execute(op);
    ASSERT_EQ(SimplePathOperation::Success, first.result);
    check();
    DrawingState const after = drawingState(pool);
    op.undoOperation();
    EXPECT_EQ(before, drawingState(pool));
    op.undoOperation();
    EXPECT_EQ(before, drawingState(pool));
    ASSERT_EQ(SimplePathOperation::Success, execute(op).result);
    EXPECT_EQ(after, drawingState(pool));
    EXPECT_TRUE(eachVertexOnce(pool));
}

TEST(ModeOperations, EachSetsItsModeThroughAnyVertexOfTheTripleAndUndoes) {
    std::vector<std::unique_ptr<SimplePath>> pool;
    SimplePath* const path = addPath(pool, row(3), 0);
    SimplePathVertexTriple const t = tripleAt(*path, 1);

    Op smooth(F::createSetSmoothModeOperation(path, t.last, false));
    executeUndoRedo(*smooth, pool, [&] {
        EXPECT_EQ(Mode::Smooth, tripleAt(*path, 1).mode);
        EXPECT_NEAR(0.0, (at(t.first) - at(t.anchor)).cross(at(t.last) - at(t.anchor)), 1e-12);
    });
    smooth->undoOperation();
    Op symmetric(F::createSetSymmetricModeOperation(path, t.first, false));
    executeUndoRedo(*symmetric, pool, [&] {
        EXPECT_EQ(Mode::Symmetric, tripleAt(*path, 1).mode);
        EXPECT_NEAR((at(t.first) - at(t.anchor)).length(), (at(t.last) - at(t.anchor)).length(), 1e-12);
    });
    symmetric->undoOperation();
    Op straight(F::createSetStraightModeOperation(path, t.anchor, false));
    executeUndoRedo(*straight, pool, [&] {
        EXPECT_EQ(Mode::Cusp, tripleAt(*path, 1).mode);
        EXPECT_EQ(at(t.anchor), at(t.first));
        EXPECT_EQ(at(t.anchor), at(t.last));
    });
    // Cusp on a straight vertex pulls the handles out towards the neighbours.
    Op cusp(F::createSetCuspModeOperation(path, t.anchor, false));
    executeUndoRedo(*cusp, pool, [&] { EXPECT_NE(at(t.anchor), at(t.first)); });
}

TEST(Factory, ShellFlagDecidesWhetherNullArgumentsGiveAnOperation) {
    SimplePath path;
    SimplePathVertex* anchor = nullptr;
    EXPECT_EQ(SimplePath::Success, path.addSingle(DPoint(1.0, 2.0), anchor));
    EXPECT_EQ(nullptr, Op(F::createSetCuspModeOperation(nullptr, anchor, false)));
    EXPECT_EQ(nullptr, Op(F::createSetSmoothModeOperation(&path, nullptr, false)));
    EXPECT_EQ(nullptr, Op(F::createDeleteVertexOperation(&path, nullptr, false)));
    EXPECT_EQ(nullptr, Op(F::createMoveSelectedVerticesOperation(nullptr, anchor, DVector(), false)));
    EXPECT_EQ(nullptr, Op(F::createAddVertexAtPositionOperation(nullptr, SimplePathPosition(), false)));
    EXPECT_EQ(nullptr, Op(F::createJoinVerticesOperation(&path, anchor, nullptr, &path, false)));
    EXPECT_EQ(nullptr,
              Op(F::createSplitVertexOperation(nullptr, SimplePathPosition(), nullptr, nullptr, false)));

    // Shells are operations all the same; executed unfilled they fail cleanly and undo harmlessly.
    std::vector<Op> shells;
    shells.emplace_back(F::createSetCuspModeOperation(nullptr, nullptr, true));
    shells.emplace_back(F::createMoveSelectedVerticesOperation(nullptr, nullptr, DVector(), true));
    shells.emplace_back(F::createAddVertexAtPositionOperation(nullptr, SimplePathPosition(), true));
    shells.emplace_back(F::createAverageVertexOperation(nullptr, nullptr, {}, {}, {}, 0, PBoxForm(), true));
    shells.emplace_back(F::createChangeVertexOperation(nullptr, {}, {}, true));
    shells.emplace_back(F::createInsertVerticesOperation(nullptr, {}, -1, true));
    shells.emplace_back(F::createDeleteVertexOperation(nullptr, nullptr, true));
    shells.emplace_back(F::createJoinVerticesOperation(nullptr, nullptr, nullptr, nullptr, true));
    shells.emplace_back(F::createSplitVertexOperation(nullptr, SimplePathPosition(), nullptr, nullptr, true));
    shells.emplace_back(F::createVertexPickOperation(nullptr, SimplePathVertexPickAction(), true));
    for (Op const& shell : shells) {
        ASSERT_NE(nullptr, shell);
        Outcome const run = execute(*shell);
        EXPECT_NE(SimplePathOperation::Success, run.result);
        EXPECT_TRUE(run.affected.empty());
        shell->undoOperation();
    }
    // A vertex of another path is refused by the edit, not the factory.
    SimplePath other;
    SimplePathVertex* foreign = nullptr;
    EXPECT_EQ(SimplePath::Success, other.addSingle(DPoint(5.0, 5.0), foreign));
    Op wrong(F::createSetSmoothModeOperation(&path, foreign, false));
    EXPECT_EQ(SimplePathOperation::EditFailed, execute(*wrong).result);
}

TEST(MoveSelectedVertices, MovesAnchorAndBothHandlesByTheOffset) {
    std::vector<std::unique_ptr<SimplePath>> pool;
    SimplePath* const path = addPath(pool, row(3), 1);
    SimplePathVertexTriple const t = tripleAt(*path, 2);
    std::vector<DPoint> const was{at(t.first), at(t.anchor), at(t.last)};
    Op move(F::createMoveSelectedVerticesOperation(path, t.first, DVector(2.5, -1.0), false));
    executeUndoRedo(*move, pool, [&] {
        EXPECT_EQ(was[0] + DVector(2.5, -1.0), at(t.first));
        EXPECT_EQ(was[1] + DVector(2.5, -1.0), at(t.anchor));
        EXPECT_EQ(was[2] + DVector(2.5, -1.0), at(t.last));
    });
    Op infinite(F::createMoveSelectedVerticesOperation(path, t.anchor, DVector(kNaN, 0.0), false));
    DrawingState const before = drawingState(pool);
    EXPECT_EQ(SimplePathOperation::EditFailed, execute(*infinite).result);
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

TEST(AverageVertex, MovesTheVertexWithItsHandlesAndMapsItsReferencePointsAgainOnRedo) {
    std::vector<std::unique_ptr<SimplePath>> pool;
    SimplePath* const path = addPath(pool, row(3), 0);
    SimplePathVertexTriple const t = tripleAt(*path, 1);
    DVector const inHandle = at(t.first) - at(t.anchor);
    // The box (0,0)-(100,100) mapped onto twice its size: a plain scaling by 2, exact in binary.
    PBoxForm const doubling(DPoint(0, 0), DPoint(100, 100), DPoint(0, 0), DPoint(200, 0), DPoint(0, 200),
                            DPoint(200, 200));
    Op average(F::createAverageVertexOperation(path, t.anchor, DPoint(3, 4), DPoint(5, 6), DPoint(7, 8),
                                               0x40 | 0x200, doubling, false));
    ASSERT_EQ(SimplePathOperation::Success, execute(*average).result);
    // x from p0 and y from p1, both in box space (doubled), mapped back (halved).
    EXPECT_NEAR(3.0, at(t.anchor).x, 1e-9);
    EXPECT_NEAR(6.0, at(t.anchor).y, 1e-9);
    EXPECT_NEAR(inHandle.x, (at(t.first) - at(t.anchor)).x, 1e-9);
    EXPECT_NEAR(inHandle.y, (at(t.first) - at(t.anchor)).y, 1e-9);

    SimplePathOperation::SegmentIndependentInformation* info = nullptr;
    ASSERT_EQ(2, average->RetreiveSegIndependentInfo(info));
    std::unique_ptr<SimplePathOperation::SegmentIndependentInformation> record(info);
    auto const& ave = dynamic_cast<AverageVertexOperation::AveOpInformation const&>(*record);
    EXPECT_NEAR(6.0, ave.p0.x, 1e-9); // mapped once, and kept so
    EXPECT_EQ(static_cast<short>(0x40 | 0x200), ave.alignment);

    average->undoOperation();
    ASSERT_EQ(SimplePathOperation::Success, execute(*average).result);
    EXPECT_NEAR(6.0, at(t.anchor).x, 1e-9); // the redo mapped p0 once more
    EXPECT_NEAR(12.0, at(t.anchor).y, 1e-9);

    // Code 2176 keeps the anchor where it is.
    average->undoOperation();
    DPoint const still = at(t.anchor);
    Op keep(F::createAverageVertexOperation(path, t.anchor, {}, {}, {}, 2176, doubling, false));
    ASSERT_EQ(SimplePathOperation::Success, execute(*keep).result);
    EXPECT_NEAR(still.x, at(t.anchor).x, 1e-9);
    EXPECT_NEAR(still.y, at(t.anchor).y, 1e-9);
}

TEST(DeleteVertex, AnAnchorGoesWithItsTripleAndAHandleIsRetracted) {
    std::vector<std::unique_ptr<SimplePath>> pool;
    SimplePath* const path = addPath(pool, row(4), 1);
    SimplePathVertexTriple const t = tripleAt(*path, 2);
    Op anchor(F::createDeleteVertexOperation(path, t.anchor, false));
    executeUndoRedo(*anchor, pool, [&] {
        EXPECT_EQ(3, path->numTriples());
        EXPECT_EQ(tripleAt(*path, 2).anchor, tripleAt(*pool[0], 2).anchor);
        EXPECT_NE(t.anchor, tripleAt(*path, 2).anchor);
    });
    anchor->undoOperation();

    DPoint const anchorAt = at(t.anchor);
    DPoint const lastAt = at(t.last);
    Op handle(F::createDeleteVertexOperation(path, t.first, false));
    executeUndoRedo(*handle, pool, [&] {
        EXPECT_EQ(4, path->numTriples());
        EXPECT_EQ(anchorAt, at(t.first));
        EXPECT_EQ(anchorAt, at(t.anchor));
        EXPECT_EQ(lastAt, at(t.last));
    });
    handle.reset(); // destroyed with its edit in effect: nothing of the path is freed
    EXPECT_EQ(anchorAt, at(t.first));
    anchor.reset(); // undone: it holds no vertex of the path any more
    EXPECT_EQ(4, path->numTriples());
}

TEST(DeleteVertex, TheAnchorOfAPathOfTwoVerticesDeletesThePath) {
    std::vector<std::unique_ptr<SimplePath>> pool;
    SimplePath* const path = addPath(pool, row(2), 0);
    Op del(F::createDeleteVertexOperation(path, tripleAt(*path, 1).anchor, false));
    DrawingState const before = drawingState(pool);
    Outcome const run = execute(*del);
    ASSERT_EQ(SimplePathOperation::Success, run.result);
    EXPECT_EQ(0, path->numTriples());
    std::list<PHashablePointer<SimplePath>> removed;
    run.change->simplePathsRemoved(removed);
    EXPECT_EQ(std::list<PHashablePointer<SimplePath>>{path}, removed);
    std::set<SimplePathVertex*> gone;
    run.change->simplePathVerticesRemoved(gone);
    EXPECT_EQ(6u, gone.size());
    del->undoOperation();
    EXPECT_EQ(before, drawingState(pool));
    ASSERT_EQ(SimplePathOperation::Success, execute(*del).result);
    // Destroyed while the path is deleted: the operation frees the six vertices (the sanitizers see it).
}

TEST(AddVertex, InsertsAtThePositionAndReusesItsTripleOnRedo) {
    std::vector<std::unique_ptr<SimplePath>> pool;
    SimplePath* const path = addPath(pool, row(3), 0);
    SimplePathPosition position;
    EXPECT_EQ(SimplePath::Success, path->makePosition(1, 0.5, position));
    DPoint expected;
    EXPECT_EQ(SimplePath::Success, path->locatePosition(position, expected));
    auto add = std::make_unique<AddSimplePathVertexOperation>(path, position);
    executeUndoRedo(*add, pool, [&] {
        EXPECT_EQ(4, path->numTriples());
        EXPECT_EQ(add->getNewTriple(), tripleAt(*path, 2));
        EXPECT_NEAR(expected.x, at(tripleAt(*path, 2).anchor).x, 1e-12);
    });
    add->undoOperation();
    // Destroyed undone: it frees its triple.
}

TEST(AddVertex, PositionsThatNameNoSegmentFailWithoutAMemento) {
    std::vector<std::unique_ptr<SimplePath>> pool;
    SimplePath* const path = addPath(pool, row(3), 0);
    DrawingState const before = drawingState(pool);
    for (auto [index, t] : {std::pair<int, double>{7, 0.5}, {-1, 0.0}, {1, kNaN}, {2, 0.5}}) {
        SimplePathPosition position;
        EXPECT_EQ(SimplePath::Success, path->makePosition(index, t, position));
        Op add(F::createAddVertexAtPositionOperation(path, position, false));
        EXPECT_EQ(SimplePathOperation::EditFailed, execute(*add).result) << index << " " << t;
        add->undoOperation();
        EXPECT_EQ(before, drawingState(pool));
    }
}

TEST(InsertVertices, InsertsTheRunInOrderAndRedoesWithTheSameVertices) {
    std::vector<std::unique_ptr<SimplePath>> pool;
    SimplePath* const path = addPath(pool, row(3), 0);
    std::list<SimplePathLocationTriple> const run{curved(DPoint(100, 100), 0.5, Mode::Smooth),
                                                  curved(DPoint(110, 100), 0.7, Mode::Symmetric)};
    SimplePathVertexTriple inserted;
    Op insert(F::createInsertVerticesOperation(path, run, 1, false));
    executeUndoRedo(*insert, pool, [&] {
        ASSERT_EQ(5, path->numTriples());
        std::vector<SimplePathLocationTriple> const now = [&] {
            std::list<SimplePathLocationTriple> l;
            EXPECT_EQ(SimplePath::Success, path->getLocationTripleList(l));
            return std::vector<SimplePathLocationTriple>(l.begin(), l.end());
        }();
        EXPECT_EQ(run.front(), now[1]);
        EXPECT_EQ(run.back(), now[2]);
        inserted = tripleAt(*path, 1);
    });
    EXPECT_EQ(inserted, tripleAt(*path, 1));

    // Positions at and after the insertion move up; those before stay.
    insert->undoOperation();
    Outcome const again = execute(*insert);
    SimplePathPosition p1;
    EXPECT_EQ(SimplePath::Success, path->makePosition(1, 0.0, p1));
    EXPECT_EQ(3, again.change->translate({path, p1}).second.getIndex());

    Op front(F::createInsertVerticesOperation(path, run, -1, false));
    insert->undoOperation();
    ASSERT_EQ(SimplePathOperation::Success, execute(*front).result);
    EXPECT_EQ(run.front().anchor, at(tripleAt(*path, 0).anchor));
    front->undoOperation();

    DrawingState const before = drawingState(pool);
    Op beyond(F::createInsertVerticesOperation(path, run, 4, false));
    EXPECT_EQ(SimplePathOperation::EditFailed, execute(*beyond).result);
    std::list<SimplePathLocationTriple> bad = run;
    bad.back().last.y = std::numeric_limits<double>::infinity();
    Op infinite(F::createInsertVerticesOperation(path, bad, 0, false));
    EXPECT_EQ(SimplePathOperation::EditFailed, execute(*infinite).result);
    EXPECT_EQ(before, drawingState(pool));
}

TEST(ChangeAndPick, ApplyTheTargetTripleAndRefuseNonFiniteTargets) {
    std::vector<std::unique_ptr<SimplePath>> pool;
    SimplePath* const path = addPath(pool, row(3), 0);
    SimplePathVertexTriple const t = tripleAt(*path, 1);
    SimplePathLocationTriple const target(DPoint(1, 1), DPoint(2, 2), DPoint(3, 3), Mode::Symmetric);
    Op change(F::createChangeVertexOperation(path, t, target, false));
    executeUndoRedo(*change, pool, [&] {
        EXPECT_EQ(DPoint(2, 2), at(t.anchor));
        EXPECT_EQ(Mode::Symmetric, tripleAt(*path, 1).mode);
    });
    change->undoOperation();
    Op pick(F::createVertexPickOperation(path, SimplePathVertexPickAction(t, target), false));
    executeUndoRedo(*pick, pool, [&] { EXPECT_EQ(DPoint(3, 3), at(t.last)); });
    pick->undoOperation();

    SimplePathLocationTriple bad = target;
    bad.first.x = kNaN;
    DrawingState const before = drawingState(pool);
    Op badChange(F::createChangeVertexOperation(path, t, bad, false));
    Op badPick(F::createVertexPickOperation(path, SimplePathVertexPickAction(t, bad), false));
    // A triple that is not the path's as given (its handles swapped) is refused by the primitive.
    Op swapped(F::createChangeVertexOperation(path, SimplePathVertexTriple(t.last, t.anchor, t.first, t.mode),
                                              target, false));
    EXPECT_EQ(SimplePathOperation::EditFailed, execute(*badChange).result);
    EXPECT_EQ(SimplePathOperation::EditFailed, execute(*badPick).result);
    EXPECT_EQ(SimplePathOperation::EditFailed, execute(*swapped).result);
    EXPECT_EQ(before, drawingState(pool));
}

TEST(JoinVertices, ResultCodesComeInTheirOrder) {
    std::vector<std::unique_ptr<SimplePath>> pool;
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

// Ends apart are joined by a new segment; ends at one place merge into one vertex, which undo gives back
// (the exact states compare vertex objects). Redo refills the same joined path object.
TEST(JoinVertices, JoinsIntoOnePathObjectThatUndoEmptiesAndRedoRefills) {
    for (bool touching : {false, true}) {
        SCOPED_TRACE(touching);
        std::vector<std::unique_ptr<SimplePath>> pool;
        SimplePath* const a = addPath(pool, row(3), 0);
        auto second = row(2, touching ? 0.0 : 50.0);
        for (auto& t : second) {
            t.first.x += 20.0;
            t.anchor.x += 20.0;
            t.last.x += 20.0;
        }
        SimplePath* const b = addPath(pool, second, 0); // touching: b starts where a ends
        auto join = std::make_unique<JoinSimplePathVerticesOperation>(a, tripleAt(*a, 2).anchor,
                                                                      tripleAt(*b, 0).anchor, b);
        DrawingState const before = drawingState(pool);
        Outcome const run = execute(*join);
        ASSERT_EQ(SimplePathOperation::Success, run.result);
        SimplePath* const joined = join->getJoinedPath();
        pool.emplace_back(joined); // reported added: the host's now
        EXPECT_EQ((std::list<PHashablePointer<SimplePath>>{a, b}), run.affected);
        EXPECT_EQ(touching ? 4 : 5, joined->numTriples());
        EXPECT_EQ(0, a->numTriples());
        DrawingState const after = drawingState(pool);
        join->undoOperation();
        EXPECT_EQ(before, drawingState(pool));
        EXPECT_EQ(0, joined->numTriples());
        ASSERT_EQ(SimplePathOperation::Success, execute(*join).result);
        EXPECT_EQ(joined, join->getJoinedPath());
        EXPECT_EQ(after, drawingState(pool));
        // Destroyed with the join in effect: a merged-away triple is freed by the operation.
    }
}

TEST(SplitVertex, AClosedPathOpensAtTheAnchorAndEndAnchorsCannotBeSplit) {
    std::vector<std::unique_ptr<SimplePath>> pool;
    SimplePath* const path = addPath(pool, row(4), 1);
    SimplePathVertex* const anchor = tripleAt(*path, 2).anchor;
    Op split(F::createSplitVertexOperation(path, anchor));
    ASSERT_NE(nullptr, split);
    executeUndoRedo(*split, pool, [&] {
        EXPECT_EQ(0, path->isClosedSimplePath());
        EXPECT_EQ(5, path->numTriples());
        EXPECT_EQ(anchor, tripleAt(*path, 0).anchor);
        EXPECT_EQ(at(anchor), at(tripleAt(*path, 4).anchor));
    });
    std::unique_ptr<SimplePath> open(new SimplePath(*pool[0]));
    EXPECT_EQ(nullptr, Op(F::createSplitVertexOperation(open.get(), tripleAt(*open, 0).anchor)));
    EXPECT_EQ(nullptr, Op(F::createSplitVertexOperation(open.get(), tripleAt(*open, 4).anchor)));
    EXPECT_EQ(nullptr, Op(F::createSplitVertexOperation(open.get(), tripleAt(*path, 1).anchor)));
    EXPECT_NE(nullptr, Op(F::createSplitVertexOperation(open.get(), tripleAt(*open, 1).anchor)));
}

} // namespace

namespace {

TEST(OperationFramework, AFailedExecutionKeepsItsMementoForUndo) {
    std::vector<std::unique_ptr<SimplePath>> pool;
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
    del->undoOperation();
    EXPECT_EQ(before, drawingState(pool));
}

} // namespace
