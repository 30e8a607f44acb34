// Each operation hands its edit to the right path primitive (whose geometry the edit tests check) and
// reports the right result; undo and redo are left to the random sequences except where those rarely
// reach. Whole-path operations have no record; a group runs its members front to back, stops at the
// first failure, undoes back to front and owns its members.

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
#include "simplepath/operations/AverageVertexOperation.h"
#include "simplepath/operations/JoinSimplePathVerticesOperation.h"
#include "simplepath/operations/SimplePathMetaOperation.h"
#include "simplepath/operations/SimplePathOperationFactory.h"

using namespace ops_test;

namespace {

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

double gap(DPoint const& a, DPoint const& b) {
    return std::hypot(a.x - b.x, a.y - b.y);
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
    Drawing d;
    SimplePath* const open = d.path(0);
    SimplePathVertex* const anchor = d.triple(1, 1).anchor; // another path's
    SimplePathPosition const none;
    // Nulls, and an end anchor (or another path's vertex) to split: nothing is made.
    for (SimplePathOperation* made :
         {F::createSetCuspModeOperation(nullptr, anchor, false),
          F::createSetSmoothModeOperation(open, nullptr, false),
          F::createDeleteVertexOperation(open, nullptr, false),
          F::createMoveSelectedVerticesOperation(nullptr, anchor, DVector(), false),
          F::createAddVertexAtPositionOperation(nullptr, none, false),
          F::createJoinVerticesOperation(open, anchor, nullptr, open, false),
          F::createSplitVertexOperation(nullptr, none, nullptr, nullptr, false),
          F::createSplitVertexOperation(open, tripleAt(*open, 0).anchor),
          F::createSplitVertexOperation(open, tripleAt(*open, 4).anchor),
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
        {"open path's last anchor", F::createAddVertexAtPositionOperation(path, position(2, 0.5), false)},
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
    DVector const handle = at(t.first) - at(t.anchor);
    // The box (0,0)-(100,100) mapped onto twice its size: a plain scaling by 2, exact in binary.
    PBoxForm const doubling(DPoint(0, 0), DPoint(100, 100), DPoint(0, 0), DPoint(200, 0), DPoint(0, 200),
                            DPoint(200, 200));
    Op average(F::createAverageVertexOperation(path, t.anchor, DPoint(3, 4), DPoint(5, 6), DPoint(7, 8),
                                               0x40 | 0x200, doubling, false));
    ASSERT_EQ(SimplePathOperation::Success, execute(*average).result);
    EXPECT_LE(gap(DPoint(3.0, 6.0), at(t.anchor)), 1e-9); // x of p0, y of p1, doubled in box space and back
    EXPECT_LE(gap(at(t.anchor) + handle, at(t.first)), 1e-9);
    average->undoOperation();
    ASSERT_EQ(SimplePathOperation::Success, execute(*average).result);
    EXPECT_LE(gap(DPoint(6.0, 12.0), at(t.anchor)), 1e-9);
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

// Both record calls answer -1 and clear the caller's pointer without freeing what it pointed to.
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

TEST(PathLevelOperations, TranslateAndTheTwoTransformsMoveEveryPoint) {
    Drawing f;
    SimplePath* const open = f.path(0);
    DPoint const centre(7.0, -3.0);
    double const c = std::cos(0.3), s = std::sin(0.3);
    support::Bend bend;
    std::pair<SimplePathOperation*, DPoint (*)(DPoint const&, double, double)> const cases[] = {
        {F::createTranslateOperation(open, DVector(2.5, -4.0)),
         [](DPoint const& p, double, double) { return DPoint(p.x + 2.5, p.y - 4.0); }},
        {F::createTransformOperation(open, P2DTrans(2.0 * c, -2.0 * s, 2.0 * s, 2.0 * c), centre),
         [](DPoint const& p, double c, double s) {
             double const x = p.x - 7.0, y = p.y + 3.0;
             return DPoint(7.0 + 2.0 * (c * x - s * y), -3.0 + 2.0 * (s * x + c * y));
         }},
        {F::createTransformOperation(open, &bend),
         [](DPoint const& p, double,
            double) { return DPoint(p.x + 0.01 * p.y * p.y, p.y + 0.02 * p.x * p.x); }},
    };
    PathState const before = stateOf(*open);
    std::vector<DPoint> const start = pointsOf(*open);
    for (auto const& [made, expect] : cases) {
        Op op(made);
        expectNoRecord(*op);
        Outcome const run = execute(*op);
        ASSERT_EQ(SimplePathOperation::Success, run.result);
        EXPECT_EQ(Paths{open}, run.affected);
        std::vector<DPoint> const got = pointsOf(*open);
        ASSERT_EQ(start.size(), got.size());
        for (std::size_t i = 0; i < got.size(); ++i) {
            DPoint const want = expect(start[i], c, s);
            EXPECT_LE(gap(want, got[i]), 1e-12 * (1.0 + std::fabs(want.x) + std::fabs(want.y)));
        }
        op->undoOperation();
        EXPECT_EQ(before, stateOf(*open));
    }
}

TEST(PathLevelOperations, CloseAndCurvedSliceReportWhatTheyChanged) {
    Drawing f;
    SimplePath *const open = f.path(0), *const other = f.path(1), *const closed = f.path(2);
    Paths three{other, open, closed};
    Outcome const closing = execute(*Op(F::createClosePathsOperation(three)));
    ASSERT_EQ(SimplePathOperation::Success, closing.result);
    EXPECT_EQ(three, closing.affected);
    EXPECT_NE(0, open->isClosedSimplePath() * other->isClosedSimplePath());

    // A curved slice replaces its inputs by its pieces and maps positions onto the first piece.
    SimplePath pieceA, pieceB;
    Op op(F::createCurvedSlicePathOperation({open, closed}, {&pieceA, &pieceB}));
    Outcome const run = execute(*op);
    ASSERT_EQ(SimplePathOperation::Success, run.result);
    Paths removed, added;
    run.change->simplePathsRemoved(removed);
    run.change->simplePathsAdded(added);
    EXPECT_EQ((Paths{open, closed}), removed);
    EXPECT_EQ(removed, run.affected);
    EXPECT_EQ((Paths{&pieceA, &pieceB}), added);
    EXPECT_EQ(&pieceA, run.change->translate({open, positionOf(*open, 1, 0.25)}).first.getPointer());
    op->undoOperation();
}

// Refused cuts and bad input change nothing once undone; a null transform fails after taking its
// memento, so a second execution is refused until undo. A null handle ends the walk of a close.
TEST(PathLevelOperations, RefusedSlicesAndBadInputChangeNothing) {
    Drawing f;
    SimplePath *const open = f.path(0), *const other = f.path(1), *const closed = f.path(2);
    DrawingState const before = drawingState(f.pool);
    SimplePathPosition const a = positionOf(*closed, 1, 0.0);
    SimplePathPosition const b = positionOf(*closed, 0, 0.7); // nearest anchor: 1 as well
    SimplePathPosition const far = positionOf(*closed, 1000, 0.0);
    SimplePathPosition const nan = positionOf(*closed, 2, std::numeric_limits<double>::quiet_NaN());
    SimplePath empty;
    Paths none, withNull{open, nullptr, other};
    EXPECT_EQ(nullptr, F::createDeleteOperation(nullptr));
    // A position past the end leads to the first anchor; a parameter that is no number to its
    // segment's start: both cut.
    std::pair<SimplePathOperation::Result, SimplePathOperation*> const cases[] = {
        {SimplePathOperation::DegenerateSlice, F::createSlicePathOperation(closed, a, closed, a)},
        {SimplePathOperation::DegenerateSlice, F::createSlicePathOperation(closed, a, closed, b)},
        {SimplePathOperation::MementoFailed, F::createSlicePathOperation(nullptr, a, closed, b)},
        {SimplePathOperation::MementoFailed, F::createSlicePathOperation(closed, a, nullptr, b)},
        {SimplePathOperation::EditFailed, F::createSlicePathOperation(&empty, a, closed, b)},
        {SimplePathOperation::Success, F::createSlicePathOperation(closed, far, closed, a)},
        {SimplePathOperation::Success, F::createSlicePathOperation(closed, nan, open, a)},
        {SimplePathOperation::EditFailed,
         F::createTransformOperation(closed, static_cast<ArbTrans<DPoint>*>(nullptr))},
        {SimplePathOperation::EditFailed, F::createClosePathsOperation(none)},
        {SimplePathOperation::MementoFailed, F::createClosePathsOperation(withNull)},
        {SimplePathOperation::EditFailed, F::createCurvedSlicePathOperation({open}, {})},
        {SimplePathOperation::EditFailed, F::createCurvedSlicePathOperation({}, {other})},
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
        EXPECT_EQ(before, drawingState(f.pool));
        op.reset();
        Paths added; // reported added: the host's to free
        run.change->simplePathsAdded(added);
        for (auto const& p : added) {
            delete p.pointer;
        }
    }
}

using Meta = SimplePathMetaOperation;
using Log = std::vector<std::string>;

// A member that writes what happens to it into a shared log and answers with a set result.
struct Probe : SimplePathOperation {
    Probe(Log& log, std::string name, SimplePath* path = nullptr, Result answer = Success)
        : log(log), name(std::move(name)), path(path), answer(answer) {}
    ~Probe() override { log.push_back("~" + name); }
    Result executeOperation(Paths& affected, SimplePathChangeInstruction&) override {
        log.push_back("do " + name);
        if (answer == Success && path != nullptr) {
            affected.push_back(path);
        }
        return answer;
    }
    int RetreiveSegIndependentInfo(Info*& info) override { return (info = nullptr, -1); }
    int ApplySegIndependentInfo(Info*&) override { return 0; }
    void undoOperation() override { log.push_back("undo " + name); }
    Log& log;
    std::string name;
    SimplePath* path;
    Result answer;
};

TEST(MetaOperation, RunsInOrderStopsAtTheFirstFailureAndOwnsItsMembers) {
    Log log;
    SimplePath a, b;
    SimplePathChangeInstruction change;
    auto* after = new Probe(log, "after");
    {
        Meta group;
        group.addOperation(new Probe(log, "1", &a));
        group.addOperation(nullptr);
        group.addOperationList({new Probe(log, "2", &b), nullptr, after}); // taken up to the first null
        group.addOperation(new Probe(log, "3", &a, SimplePathOperation::NotJoinable));
        group.addOperation(new Probe(log, "4", &b));
        EXPECT_EQ(4u, group.getOperations().size());
        EXPECT_TRUE(Meta(group).getOperations().empty()); // a copy starts empty: one owner per member
        Paths affected{&b};
        EXPECT_EQ(SimplePathOperation::NotJoinable, group.executeOperation(affected, change));
        EXPECT_EQ((Paths{&b, &a, &b}), affected); // appended in member order up to the failure
        group.undoOperation();
    }
    EXPECT_EQ((Log{"do 1", "do 2", "do 3", "undo 4", "undo 3", "undo 2", "undo 1", "~4", "~3", "~2", "~1"}),
              log);
    delete after; // never taken: still the caller's
}

} // namespace
