#include <gtest/gtest.h>

#include "RecordingDrawer.h"
#include "support/PathHelpers.h"

#include "simplepath/interaction/SimplePathMultipleVertexPickContext.h"
#include "simplepath/interfaces/BinarySerializer.h"
#include "simplepath/path/SimplePathSerializer.h"

#include <limits>
#include <sstream>

namespace {

using recording::Drawer;
using recording::Triple;
using Mode = SimplePathVertexTriple::VertexTripleMode;
using Context = SimplePathMultipleVertexPickContext;
using Selection = Context::Selection;

// Triple i of path `p`: anchor (10 i, 100 p), handles 2 before and 3 after; mode Smooth for even i,
// Symmetric for odd i, so that the modes show where each entry came from.
Triple tripleAt(int i, int p = 0) {
    double const x = 10.0 * i, y = 100.0 * p;
    return {DPoint(x - 2, y), DPoint(x, y), DPoint(x + 3, y)};
}
Mode modeAt(int i) {
    return i % 2 == 0 ? SimplePathVertexTriple::Smooth : SimplePathVertexTriple::Symmetric;
}

SimplePath makePath(int n, int closed, int p = 0) {
    SimplePath path;
    for (int i = 0; i < n; ++i) {
        Triple const t = tripleAt(i, p);
        EXPECT_EQ(appendTriple(path, t[0], t[1], t[2], modeAt(i)), SimplePath::Success);
    }
    path.setStrictClosed(closed);
    return path;
}

SimplePathVertexTriple tripleOf(SimplePath const& path, int i) {
    SimplePathVertexTriple t;
    EXPECT_EQ(path.getTriple(i, t), SimplePath::Success);
    return t;
}

// The expected run entries: a moved triple, or a fixed neighbour in front (anchor, anchor, outgoing) or
// after (incoming, anchor, anchor).
ThreePoint moved(int i, int p = 0) {
    Triple const t = tripleAt(i, p);
    return ThreePoint(t[0], t[1], t[2], 0);
}
ThreePoint front(int i, int p = 0) {
    Triple const t = tripleAt(i, p);
    return ThreePoint(t[1], t[1], t[2], 1);
}
ThreePoint back(int i, int p = 0) {
    Triple const t = tripleAt(i, p);
    return ThreePoint(t[0], t[1], t[1], 1);
}

using RunOf = Context::Run;

std::vector<Mode> modesOf(std::initializer_list<int> indices) {
    std::vector<Mode> modes;
    for (int i : indices) {
        modes.push_back(modeAt(i));
    }
    return modes;
}

TEST(MultipleVertexPickContext, RunsAreMaximalChainsFramedByTheirUnmovedNeighbours) {
    SimplePath path = makePath(7, 0);
    // Triples 1, 2 (by anchor and by handle), 4 (by a handle) and 6 (the open end).
    Selection const selection = {{tripleOf(path, 2).first, &path},
                                 {tripleOf(path, 1).anchor, &path},
                                 {tripleOf(path, 2).anchor, &path},
                                 {tripleOf(path, 4).last, &path},
                                 {tripleOf(path, 6).anchor, &path}};
    Context context(&path, tripleOf(path, 1).anchor, DPoint(10, 0), selection);
    std::vector<RunOf> const want = {
        {{front(0), moved(1), moved(2), back(3)}, 0},
        {{front(3), moved(4), back(5)}, 0},
        {{front(5), moved(6)}, 0},
    };
    EXPECT_EQ(context.getRuns(), want);
    EXPECT_EQ(context.getModes(), modesOf({0, 1, 2, 3, 3, 4, 5, 5, 6}));
}

TEST(MultipleVertexPickContext, ClosedPathRunsWrapThroughTheEndAndAFullSelectionIsOneClosedRun) {
    SimplePath path = makePath(5, 1);
    Selection const wrap = {{tripleOf(path, 0).anchor, &path}, {tripleOf(path, 4).anchor, &path}};
    Context wrapping(&path, tripleOf(path, 0).anchor, DPoint(0, 0), wrap);
    EXPECT_EQ(wrapping.getRuns(), (std::vector<RunOf>{{{front(3), moved(4), moved(0), back(1)}, 0}}));
    EXPECT_EQ(wrapping.getModes(), modesOf({3, 4, 0, 1}));

    Selection all;
    for (int i = 0; i < 5; ++i) {
        all.emplace_back(tripleOf(path, i).anchor, &path);
    }
    Context whole(&path, tripleOf(path, 0).anchor, DPoint(0, 0), all);
    EXPECT_EQ(whole.getRuns(), (std::vector<RunOf>{{{moved(0), moved(1), moved(2), moved(3), moved(4)}, 1}}));

    // An open path fully selected is one open run without neighbours.
    SimplePath open = makePath(3, 0);
    Selection openAll;
    for (int i = 0; i < 3; ++i) {
        openAll.emplace_back(tripleOf(open, i).last, &open);
    }
    Context openWhole(&open, tripleOf(open, 0).anchor, DPoint(0, 0), openAll);
    EXPECT_EQ(openWhole.getRuns(), (std::vector<RunOf>{{{moved(0), moved(1), moved(2)}, 0}}));
}

TEST(MultipleVertexPickContext, RunsGoPathByPathAndIgnoreVerticesOffTheirPath) {
    SimplePath a = makePath(3, 0, 0);
    SimplePath b = makePath(3, 0, 1);
    Selection const selection = {{tripleOf(b, 1).anchor, &b},
                                 {tripleOf(a, 0).anchor, &a},
                                 {tripleOf(a, 2).anchor, &b}, // not on b
                                 {tripleOf(a, 1).anchor, PHashablePointer<SimplePath>()},
                                 {nullptr, &a}};
    Context context(&a, tripleOf(a, 0).anchor, DPoint(0, 0), selection);
    EXPECT_EQ(context.getRuns(), (std::vector<RunOf>{{{front(0, 1), moved(1, 1), back(2, 1)}, 0},
                                                     {{moved(0, 0), back(1, 0)}, 0}}));
}

TEST(MultipleVertexPickContext, XorDrawShiftsMovedTriplesAndDrawsCurveThenVertices) {
    int const live = recording::liveReps();
    SimplePath path = makePath(5, 1);
    Selection const selection = {{tripleOf(path, 1).anchor, &path}};
    Context context(&path, tripleOf(path, 1).anchor, DPoint(10, 0), selection);
    context.move(DPoint(11, 2));
    Drawer drawer;
    drawer.modesPerTriple = true;
    context.xorDraw(drawer);
    EXPECT_EQ(drawer.log,
              (std::vector<std::string>{"make", "rep0 add (0 0) (0 0) (3 0)", "rep0 add (9 2) (11 2) (14 2)",
                                        "rep0 add (18 0) (20 0) (20 0)", "rep0 open", "drawCurve",
                                        "drawCurveVertices", "rep0 delete"}));
    EXPECT_EQ(drawer.calls[1].modeValues, (std::vector<Mode>{modeAt(0), modeAt(1), modeAt(2)}));
    EXPECT_EQ(drawer.calls[1].first, 1);
    EXPECT_EQ(drawer.calls[1].second, 0);
    // Drawing again gives the same: the modes are read, not used up.
    Drawer again;
    again.modesPerTriple = true;
    context.xorDraw(again);
    EXPECT_EQ(again.calls[1].modeValues, drawer.calls[1].modeValues);
    EXPECT_EQ(recording::liveReps(), live);
}

TEST(MultipleVertexPickContext, ClosedRunIsDrawnClosedAndARefusedRepKeepsLaterModesInStep) {
    SimplePath a = makePath(3, 1, 0);
    SimplePath b = makePath(3, 0, 1);
    Selection selection;
    for (int i = 0; i < 3; ++i) {
        selection.emplace_back(tripleOf(a, i).anchor, &a);
    }
    selection.emplace_back(tripleOf(b, 2).anchor, &b);
    Context context(&a, tripleOf(a, 0).anchor, DPoint(0, 0), selection);

    // Refuses the first rep only.
    struct OnceRefusing : Drawer {
        CurveRep* makeCurveRep() override {
            if (refused++ == 0) {
                log.push_back("make");
                return nullptr;
            }
            return Drawer::makeCurveRep();
        }
        int refused = 0;
    } drawer;
    drawer.modesPerTriple = true;
    context.xorDraw(drawer);
    ASSERT_EQ(drawer.callNames(), (std::vector<std::string>{"drawCurve", "drawCurveVertices"}));
    EXPECT_EQ(drawer.calls[1].modeValues, (std::vector<Mode>{modeAt(1), modeAt(2)}));

    Drawer full;
    context.xorDraw(full);
    EXPECT_EQ(full.calls[0].closed, 1);
    EXPECT_EQ(full.calls[2].closed, 0);
}

TEST(MultipleVertexPickContext, SnapAboutThePickedAnchorAndCommitAsCusp) {
    SimplePath path = makePath(3, 0);
    SimplePathVertexTriple const picked = tripleOf(path, 2); // Smooth
    Context context(&path, picked.anchor, DPoint(20, 0), {{picked.anchor, &path}});
    EXPECT_EQ(context.createSnapKit(), 1);
    EXPECT_EQ(context.getSnapKit().getPO(), DPoint(20, 0)); // itself, not the previous anchor
    context.move(DPoint(30, 0.25));
    SimplePathVertexPickAction const action = context.commit();
    EXPECT_EQ(action.getVertexTriple(),
              SimplePathVertexTriple(picked.first, picked.anchor, picked.last, SimplePathVertexTriple::Cusp));
    EXPECT_EQ(
        action.getLocationTriple(),
        SimplePathLocationTriple(DPoint(28, 0), DPoint(30, 0), DPoint(33, 0), SimplePathVertexTriple::Cusp));
    context.deleteSnapKit();
    EXPECT_EQ(context.isSnapKitActive(), 0);
    context.offset(DVector(1, 1));
    EXPECT_EQ(context.commit().getLocationTriple().first, DPoint(19, 1));

    // A handle is not an anchor: no kit.
    Context handle(&path, picked.first, DPoint(18, 0), {});
    EXPECT_EQ(handle.createSnapKit(), 0);
    EXPECT_EQ(handle.isSnapKitActive(), 0);
    handle.offset(DVector(1, 0)); // the whole triple still moves
    EXPECT_EQ(handle.commit().getLocationTriple().anchor, DPoint(21, 0));
}

TEST(MultipleVertexPickContext, InertWhenThePickedVertexIsNotOnThePathAndNeverChangesAPath) {
    SimplePath path = makePath(4, 1);
    SimplePath other = makePath(2, 0);
    std::ostringstream before;
    BinarySerializer stream(before);
    EXPECT_EQ(SimplePathSerializer::write(&path, stream), SimplePathSerializer::Success);

    Context inert(&path, tripleOf(other, 0).anchor, DPoint(), {{tripleOf(path, 1).anchor, &path}});
    inert.move(DPoint(5, 5));
    EXPECT_EQ(inert.createSnapKit(), 0);
    Drawer drawer;
    inert.xorDraw(drawer);
    EXPECT_TRUE(drawer.log.empty());
    EXPECT_EQ(inert.commit().getVertexTriple().anchor, nullptr);
    SimplePath empty;
    Context none(&empty, nullptr, DPoint(), {{nullptr, PHashablePointer<SimplePath>()}});
    none.xorDraw(drawer);
    EXPECT_TRUE(drawer.log.empty());

    int const live = recording::liveReps();
    Selection all;
    for (int i = 0; i < 4; ++i) {
        all.emplace_back(tripleOf(path, i).first, &path);
    }
    Context live1(&path, tripleOf(path, 2).anchor, DPoint(20, 0), all);
    live1.createSnapKit();
    double const nan = std::numeric_limits<double>::quiet_NaN();
    for (DPoint const& p :
         {DPoint(25, 7), DPoint(nan, 0), DPoint(std::numeric_limits<double>::infinity(), 1)}) {
        live1.move(p);
        live1.xorDraw(drawer);
    }
    Context copy(live1);
    copy.xorDraw(drawer);
    EXPECT_EQ(recording::liveReps(), live);
    std::ostringstream after;
    BinarySerializer stream2(after);
    EXPECT_EQ(SimplePathSerializer::write(&path, stream2), SimplePathSerializer::Success);
    EXPECT_EQ(after.str(), before.str());
}

TEST(ThreePoint, ComparesAllFieldsInOrder) {
    ThreePoint const a(DPoint(0, 0), DPoint(1, 1), DPoint(2, 2), 0);
    ThreePoint b = a;
    EXPECT_EQ(a, b);
    b.fixed = 1;
    EXPECT_NE(a, b);
    EXPECT_LT(a, b);
    EXPECT_GT(b, a);
    ThreePoint const c(DPoint(0, 0), DPoint(1, 0.5), DPoint(9, 9), 1);
    EXPECT_LT(c, a); // the anchor decides before the outgoing handle and the flag
    EXPECT_FALSE(a < a);
}

} // namespace
