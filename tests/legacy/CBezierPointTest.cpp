#include "simplepath/simplepath.h"

#include "LegacyExpect.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using legacytest::expectNear;

constexpr double pi = 3.14159265358979323846;

CBezierPoint point(DPoint before, DPoint anchor, DPoint after) {
    return CBezierPoint(BPOINT{before, anchor, after});
}

TEST(LegacyBezierPoint, SmoothNeedsRealHandlesInLineThroughTheAnchor) {
    EXPECT_EQ(point({-10, 0}, {0, 0}, {20, 0}).IsSmooth(), 1);
    EXPECT_EQ(point({-10, 0.05}, {0, 0}, {20, -0.05}).IsSmooth(), 1); // within 0.1 of the line
    EXPECT_EQ(point({-10, 0}, {0, 0.12}, {20, 0}).IsSmooth(), 0);
    EXPECT_EQ(point({-10, 0}, {0, 0}, {0, 20}).IsSmooth(), 0); // a corner
    // A handle within 0.1 of the anchor makes it a corner whatever the other does.
    EXPECT_EQ(point({-0.09, 0}, {0, 0}, {20, 0}).IsSmooth(), 0);
    EXPECT_EQ(point({-10, 0}, {0, 0}, {0.05, 0.05}).IsSmooth(), 0);
    EXPECT_EQ(point({-0.1, 0}, {0, 0}, {0.1, 0}).IsSmooth(), 1);
    // Both handles on one spot away from the anchor: no line through them, a cusp.
    EXPECT_EQ(point({5, 5}, {0, 0}, {5, 5}).IsSmooth(), 0);
}

TEST(LegacyBezierPoint, MoveSubtractsTheOffset) {
    CBezierPoint p = point({-1, 2}, {0, 0}, {3, 4});
    p.Move(10, -20);
    EXPECT_EQ(p.before, DPoint(-11, 22));
    EXPECT_EQ(p.anchor, DPoint(-10, 20));
    EXPECT_EQ(p.after, DPoint(-7, 24));
    p.Move(DPoint(-10, 20));
    EXPECT_EQ(p.anchor, DPoint(0, 0));
    EXPECT_EQ(p.after, DPoint(3, 4));
}

TEST(LegacyBezierPoint, RotateAndStretchActAboutTheGivenCentre) {
    CBezierPoint p = point({9, 10}, {10, 10}, {12, 10});
    p.Rotate(10, 10, pi / 2); // counter-clockwise with y up
    expectNear(p.anchor, {10, 10});
    expectNear(p.before, {10, 9});
    expectNear(p.after, {10, 12});
    p.Rotate(0, 0, -pi / 2);
    expectNear(p.anchor, {10, -10});
    expectNear(p.after, {12, -10});

    CBezierPoint q = point({1, 1}, {2, 3}, {4, 5});
    q.Stretch(DPoint(1, 1), 2, -1);
    EXPECT_EQ(q.before, DPoint(1, 1));
    EXPECT_EQ(q.anchor, DPoint(3, -1));
    EXPECT_EQ(q.after, DPoint(7, -3));
}

TEST(LegacyBezierPoint, SmoothLaysBothHandlesAlongTheNeighboursDirection) {
    CBezierPoint p = point({0, 0}, {10, 10}, {10, 10});
    DPoint const previous(0, 0);
    DPoint const next(30, 0);
    p.Smooth(previous, next);
    EXPECT_EQ(p.anchor, DPoint(10, 10));
    // Direction (1, 0); handle lengths a third of the distances to the neighbours.
    expectNear(p.before, {10 - std::hypot(10, 10) / 3, 10});
    expectNear(p.after, {10 + std::hypot(20, 10) / 3, 10});
    EXPECT_EQ(p.IsSmooth(), 1);

    CBezierPoint corner = point({5, 0}, {0, 0}, {0, 5});
    corner.Smooth(DPoint(-3, -4), DPoint(6, 8));
    EXPECT_EQ(corner.IsSmooth(), 1);
    expectNear(corner.before, {-1.0, -4.0 / 3});
    expectNear(corner.after, {2.0, 8.0 / 3});

    CBezierPoint unchanged = point({5, 0}, {0, 0}, {0, 5});
    unchanged.Smooth(DPoint(3, 3), DPoint(3, 3));
    unchanged.Smooth(DPoint(NAN, 0), DPoint(3, 3));
    EXPECT_EQ(unchanged.before, DPoint(5, 0));
    EXPECT_EQ(unchanged.after, DPoint(0, 5));
}

} // namespace
