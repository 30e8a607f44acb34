#include "simplepath/simplepath.h"

#include "LegacyReference.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using legacytest::expectNear;

TEST(LegacyBezierPoint, SmoothNeedsRealHandlesInLineThroughTheAnchor) {
    struct Case {
        BPOINT p;
        int smooth;
    } const cases[] = {
        {{{-10, 0.05}, {0, 0}, {20, -0.05}}, 1}, // within 0.1 of the line through the handles
        {{{-10, 0}, {0, 0.12}, {20, 0}}, 0},
        {{{-0.09, 0}, {0, 0}, {20, 0}}, 0}, // a handle within 0.1 of the anchor: a corner
        {{{-10, 0}, {0, 0}, {0.05, 0.05}}, 0},
        {{{-0.1, 0}, {0, 0}, {0.1, 0}}, 1},
        {{{5, 5}, {0, 0}, {5, 5}}, 0}, // both handles on one spot: no line through them
    };
    for (Case const& c : cases) {
        EXPECT_EQ(CBezierPoint(c.p).IsSmooth(), c.smooth) << c.p.before.x << "," << c.p.after.x;
    }
}

TEST(LegacyBezierPoint, MoveSubtractsTheOffsetAndRotateAndStretchKeepTheCentre) {
    CBezierPoint p(BPOINT{{-1, 2}, {0, 0}, {3, 4}});
    p.Move(10, -20);
    p.Move(DPoint(1, 1));
    EXPECT_EQ(p.before, DPoint(-12, 21));
    EXPECT_EQ(p.anchor, DPoint(-11, 19));
    p.Rotate(-11, 19, std::acos(0.0)); // a quarter turn, counter-clockwise with y up
    expectNear(p.after, {-11 - 4, 19 + 3});
    p.Stretch(DPoint(-11, 19), 2, -1);
    expectNear(p.after, {-11 - 8, 19 - 3});
    EXPECT_EQ(p.anchor, DPoint(-11, 19));
}

TEST(LegacyBezierPoint, SmoothLaysBothHandlesAlongTheNeighboursDirection) {
    // Direction (3, 4) / 5; handle lengths a third of the distances to the neighbours.
    CBezierPoint corner(BPOINT{{5, 0}, {0, 0}, {0, 5}});
    corner.Smooth(DPoint(-3, -4), DPoint(6, 8));
    expectNear(corner.before, {-1.0, -4.0 / 3});
    expectNear(corner.after, {2.0, 8.0 / 3});
    CBezierPoint unchanged(BPOINT{{5, 0}, {0, 0}, {0, 5}});
    unchanged.Smooth(DPoint(3, 3), DPoint(3, 3));
    unchanged.Smooth(DPoint(NAN, 0), DPoint(3, 3));
    EXPECT_EQ(unchanged.before, DPoint(5, 0));
    EXPECT_EQ(unchanged.after, DPoint(0, 5));
}

} // namespace
