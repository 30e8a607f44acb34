#include <gtest/gtest.h>

#include "RecordingDrawer.h"
#include "support/PathHelpers.h"

#include "simplepath/interaction/TransformedCurveRep.h"
#include "simplepath/interaction/XYOffsetSimplePathTransform.h"
#include "simplepath/path/SimplePath.h"

#include <memory>

namespace {

using recording::Drawer;
using recording::Rep;
using recording::Triple;
using Mode = SimplePathVertexTriple::VertexTripleMode;

// A path of `n` triples: anchor i at (10 i, 0), handles at (10 i - 1, i) and (10 i + 1, -i), modes
// cycling Smooth, Cusp, Symmetric.
SimplePath makePath(int n, int closed) {
    SimplePath path;
    for (int i = 0; i < n; ++i) {
        double const x = 10.0 * i;
        EXPECT_EQ(
            appendTriple(path, DPoint(x - 1, i), DPoint(x, 0), DPoint(x + 1, -i), static_cast<Mode>(i % 3)),
            SimplePath::Success);
    }
    path.setStrictClosed(closed);
    return path;
}

Triple tripleAt(int i) {
    double const x = 10.0 * i;
    return {DPoint(x - 1, i), DPoint(x, 0), DPoint(x + 1, -i)};
}

// Counts the calls that set the open or closed flag.
int flagCalls(std::vector<std::string> const& log) {
    int count = 0;
    for (std::string const& line : log) {
        count += line.find(" open") != std::string::npos || line.find(" closed") != std::string::npos;
    }
    return count;
}

TEST(DrawerCurveRep, WholePathFillsEveryTripleThenSetsTheFlagOnceEvenWhenEmpty) {
    for (int closed : {0, 1}) {
        SimplePath const path = makePath(4, closed);
        std::vector<std::string> log;
        Rep rep(&log, 0);
        Mode* modes = nullptr;
        path.initializeDrawerCurveRep(rep, &modes);
        ASSERT_EQ(rep.triples.size(), 4u);
        for (int i = 0; i < 4; ++i) {
            EXPECT_EQ(rep.triples[i], tripleAt(i));
        }
        ASSERT_NE(modes, nullptr);
        EXPECT_EQ(modes[0], SimplePathVertexTriple::Smooth);
        EXPECT_EQ(modes[1], SimplePathVertexTriple::Cusp);
        EXPECT_EQ(modes[2], SimplePathVertexTriple::Symmetric);
        EXPECT_EQ(modes[3], SimplePathVertexTriple::Smooth);
        delete[] modes;
        EXPECT_EQ(rep.closed, closed);
        EXPECT_EQ(flagCalls(log), 1);
        EXPECT_EQ(log.back(), closed ? "rep0 closed" : "rep0 open"); // after the last triple

        // An empty path still sets its flag.
        SimplePath empty;
        empty.setStrictClosed(closed);
        Rep none(nullptr, 1);
        Mode* noModes = nullptr;
        empty.initializeDrawerCurveRep(none, closed ? &noModes : nullptr);
        EXPECT_TRUE(none.triples.empty());
        EXPECT_EQ(none.closed, closed);
        delete[] noModes; // an array of no entries, or null
    }
}

TEST(DrawerCurveRep, RangeClampsNeverWrapsLeavesTheFlagAloneAndMayBeEmpty) {
    SimplePath const path = makePath(5, 1);
    struct Case {
        int from, to, first, last;
    };
    for (Case const c :
         {Case{-3, 2, 0, 2}, Case{3, 99, 3, 4}, Case{1, 1, 1, 1}, Case{-1, 7, 0, 4}, Case{9, 9, 4, 4}}) {
        std::vector<std::string> log;
        Rep rep(&log, 0);
        Mode* modes = nullptr;
        path.initializeDrawerCurveRep(rep, c.from, c.to, &modes);
        ASSERT_EQ(rep.triples.size(), static_cast<std::size_t>(c.last - c.first + 1))
            << c.from << ".." << c.to;
        for (int i = c.first; i <= c.last; ++i) {
            EXPECT_EQ(rep.triples[i - c.first], tripleAt(i));
            EXPECT_EQ(modes[i - c.first], static_cast<Mode>(i % 3));
        }
        delete[] modes;
        EXPECT_EQ(flagCalls(log), 0);
        EXPECT_EQ(rep.closed, -1);
    }

    // An empty range, or a range of an empty path, fills nothing and allocates no modes.
    Mode dummy = SimplePathVertexTriple::Cusp;
    Mode* modes = &dummy;
    Rep rep(nullptr, 0);
    path.initializeDrawerCurveRep(rep, 4, 1, &modes);
    EXPECT_TRUE(rep.triples.empty());
    EXPECT_EQ(modes, nullptr);
    modes = &dummy;
    SimplePath().initializeDrawerCurveRep(rep, 0, 3, &modes);
    EXPECT_TRUE(rep.triples.empty());
    EXPECT_EQ(modes, nullptr);
    SimplePath().initializeDrawerCurveRep(rep, 0, 3, nullptr);
    EXPECT_EQ(rep.closed, -1);
}

TEST(DrawerCurveRep, PermanentDrawingFillsDrawsAndDeletesOneRep) {
    int const live = recording::liveReps();
    SimplePath const path = makePath(3, 1);
    Drawer drawer;
    path.permanentDrawCurve(drawer);
    EXPECT_EQ(recording::liveReps(), live);
    ASSERT_EQ(drawer.callNames(), std::vector<std::string>{"drawPermanentCurve"});
    EXPECT_EQ(drawer.calls[0].triples, (std::vector<Triple>{tripleAt(0), tripleAt(1), tripleAt(2)}));
    EXPECT_EQ(drawer.calls[0].closed, 1);
    EXPECT_EQ(drawer.log.back(), "rep0 delete");

    Drawer refusing;
    refusing.refuseReps = true;
    path.permanentDrawCurve(refusing);
    EXPECT_TRUE(refusing.calls.empty());
    EXPECT_EQ(refusing.log, std::vector<std::string>{"make"});
}

// Counts every mapping call, to show that a wrapper maps points even with nothing to pass them to.
struct CountingOffset : XYOffsetSimplePathTransform {
    CountingOffset() : XYOffsetSimplePathTransform(100, 0) {}
    DPoint transform(DPoint const& p) const override {
        ++forward;
        return XYOffsetSimplePathTransform::transform(p);
    }
    mutable int forward = 0;
};

TEST(TransformedCurveRep, MapsEveryPointInOrderAndForwardsTheRest) {
    std::vector<std::string> log;
    CountingOffset shift;
    auto* inner = new Rep(&log, 7);
    TransformedCurveRep wrapper(inner, shift);
    EXPECT_STREQ(wrapper.getType(), "TransformedCurveRep");
    EXPECT_EQ(wrapper.getFinalRep(), inner);
    wrapper.addTriple(DPoint(1, 2), DPoint(3, 4), DPoint(5, 6));
    wrapper.setClosed();
    wrapper.popBackTriple();
    wrapper.setOpen();
    EXPECT_EQ(shift.forward, 3);
    EXPECT_EQ(log, (std::vector<std::string>{"rep7 add (101 2) (103 4) (105 6)", "rep7 closed", "rep7 pop",
                                             "rep7 open"}));

    // Without an inner rep the points are still mapped, and everything is dropped.
    TransformedCurveRep bare(nullptr, shift);
    bare.addTriple(DPoint(), DPoint(), DPoint());
    bare.setOpen();
    bare.popBackTriple();
    EXPECT_EQ(shift.forward, 6);
    EXPECT_EQ(bare.getFinalRep(), nullptr);
}

TEST(TransformedCurveRep, DeletesItsInnerRepExactlyOnceAndGoesOneLevelDeep) {
    int const live = recording::liveReps();
    CountingOffset shift;
    {
        auto* inner = new Rep(nullptr, 1);
        auto* middle = new TransformedCurveRep(inner, shift);
        TransformedCurveRep outer(middle, shift);
        EXPECT_EQ(outer.getFinalRep(), middle); // not inner
        EXPECT_EQ(Rep(nullptr, 9).getFinalRep(), nullptr);
        EXPECT_EQ(recording::liveReps(), live + 1);
        TransformedCurveRep copy(outer); // wraps nothing: the inner rep keeps one owner
        EXPECT_EQ(copy.getFinalRep(), nullptr);
    }
    EXPECT_EQ(recording::liveReps(), live);
}

} // namespace
