#include <gtest/gtest.h>

#include "RecordingDrawer.h"

#include "simplepath/interaction/SimplePathMultipleVertexPickContext.h"

#include <cmath>

namespace {

using namespace recording;
using Context = SimplePathMultipleVertexPickContext;
using Selection = Context::Selection;
using Runs = std::vector<Context::Run>;

// Modes Smooth for even i and Symmetric for odd i, so that the modes show where each entry came from.
Mode modeAt(int i) {
    return i % 2 == 0 ? SimplePathVertexTriple::Smooth : SimplePathVertexTriple::Symmetric;
}
SimplePath makePath(int n, int closed, int p = 0) {
    return pathOf(n, closed, modeAt, p);
}

// The run entries: a moved triple, or a fixed neighbour in front (anchor, anchor, outgoing) or after
// (incoming, anchor, anchor).
ThreePoint entry(Triple const& t, int a, int b, int c, int fixed) {
    return ThreePoint(t[a], t[b], t[c], fixed);
}
ThreePoint moved(int i, int p = 0) {
    return entry(tripleAt(i, p), 0, 1, 2, 0);
}
ThreePoint front(int i, int p = 0) {
    return entry(tripleAt(i, p), 1, 1, 2, 1);
}
ThreePoint back(int i, int p = 0) {
    return entry(tripleAt(i, p), 0, 1, 1, 1);
}

Selection anchors(SimplePath& path, std::initializer_list<int> indices) {
    Selection selection;
    for (int i : indices) {
        selection.emplace_back(tripleOf(path, i).anchor, &path);
    }
    return selection;
}

// Runs are maximal chains of selected triples (by any of their vertices) framed by their unmoved
// neighbours; a closed path's run wraps through the end, and a fully selected closed path is one closed run.
// Runs go path by path, in the order of the selection, and vertices off their path are ignored.
TEST(MultipleVertexPickContext, RunsAreMaximalChainsFramedByTheirUnmovedNeighbours) {
    SimplePath path = makePath(7, 0);
    Selection const selection = {{tripleOf(path, 2).first, &path},
                                 {tripleOf(path, 1).anchor, &path},
                                 {tripleOf(path, 2).anchor, &path},
                                 {tripleOf(path, 4).last, &path},
                                 {tripleOf(path, 6).anchor, &path}};
    Context context(&path, tripleOf(path, 1).anchor, DPoint(10, 0), selection);
    EXPECT_EQ(context.getRuns(), (Runs{{{front(0), moved(1), moved(2), back(3)}, 0},
                                       {{front(3), moved(4), back(5)}, 0},
                                       {{front(5), moved(6)}, 0}}));
    Mode const s = modeAt(0), y = modeAt(1); // modes of triples 0, 1, 2, 3, 3, 4, 5, 5, 6
    EXPECT_EQ(context.getModes(), (std::vector<Mode>{s, y, s, y, y, s, y, y, s}));

    SimplePath closed = makePath(5, 1);
    Context wrapping(&closed, tripleOf(closed, 0).anchor, DPoint(0, 0), anchors(closed, {0, 4}));
    EXPECT_EQ(wrapping.getRuns(), (Runs{{{front(3), moved(4), moved(0), back(1)}, 0}}));
    Context whole(&closed, tripleOf(closed, 0).anchor, DPoint(0, 0), anchors(closed, {0, 1, 2, 3, 4}));
    EXPECT_EQ(whole.getRuns(), (Runs{{{moved(0), moved(1), moved(2), moved(3), moved(4)}, 1}}));
    // Drawn: a closed run closed, moved triples shifted; a refused rep leaves later runs their own modes.
    Drawer drawn;
    whole.move(DPoint(1, 2));
    whole.xorDraw(drawn);
    EXPECT_TRUE(drawn.calls[0].closed == 1 && drawn.calls[0].triples[0][1] == DPoint(1, 2));
    struct OnceRefusing : Drawer {
        CurveRep* makeCurveRep() override { return refused++ == 0 ? nullptr : Drawer::makeCurveRep(); }
        int refused = 0;
    } refusing;
    refusing.modesPerTriple = true;
    context.xorDraw(refusing);
    EXPECT_EQ(refusing.calls[1].modeValues, (std::vector<Mode>{y, s, y}));
    SimplePath open = makePath(3, 0);
    Context openWhole(&open, tripleOf(open, 0).anchor, DPoint(0, 0), anchors(open, {0, 1, 2}));
    EXPECT_EQ(openWhole.getRuns(), (Runs{{{moved(0), moved(1), moved(2)}, 0}}));
    // Path by path, ignoring vertices off their path.
    SimplePath &a = open, b = makePath(3, 0, 1);
    Selection const mixed = {{tripleOf(b, 1).anchor, &b},
                             {tripleOf(a, 0).anchor, &a},
                             {tripleOf(a, 2).anchor, &b}, // not on b
                             {tripleOf(a, 1).anchor, PHashablePointer<SimplePath>()},
                             {nullptr, &a}};
    Context both(&a, tripleOf(a, 0).anchor, DPoint(0, 0), mixed);
    EXPECT_EQ(both.getRuns(),
              (Runs{{{front(0, 1), moved(1, 1), back(2, 1)}, 0}, {{moved(0, 0), back(1, 0)}, 0}}));
}

// A picked vertex off the path leaves the context inert; a drag with snapping and points that are not
// numbers never changes the path, leaks no rep, and commits the picked triple as a cusp.
TEST(MultipleVertexPickContext, InertWhenThePickedVertexIsNotOnThePathAndNeverChangesAPath) {
    SimplePath path = makePath(4, 1), other = makePath(2, 0), empty;
    auto const before = locationsOf(path);
    Context inert(&path, tripleOf(other, 0).anchor, DPoint(), anchors(path, {1}));
    inert.move(DPoint(5, 5));
    EXPECT_EQ(inert.createSnapKit(), 0);
    Drawer drawer;
    inert.xorDraw(drawer);
    EXPECT_EQ(inert.commit().getVertexTriple().anchor, nullptr);
    Context none(&empty, nullptr, DPoint(), {{nullptr, PHashablePointer<SimplePath>()}});
    none.xorDraw(drawer);
    EXPECT_TRUE(drawer.made == 0 && drawer.calls.empty());

    int const live = liveReps();
    Context all(&path, tripleOf(path, 2).anchor, DPoint(20, 0), anchors(path, {0, 1, 2, 3}));
    EXPECT_EQ(all.createSnapKit(), 1);
    EXPECT_EQ(all.getSnapKit().getPO(), DPoint(20, 0)); // the picked anchor itself
    for (DPoint const& p : {DPoint(25, 7), DPoint(std::nan(""), 0), DPoint(HUGE_VAL, 1)}) {
        all.move(p);
        all.xorDraw(drawer);
    }
    Context(all).xorDraw(drawer);
    EXPECT_EQ(all.commit().getVertexTriple().mode, SimplePathVertexTriple::Cusp);
    EXPECT_EQ(liveReps(), live);
    EXPECT_EQ(locationsOf(path), before);
}

} // namespace
