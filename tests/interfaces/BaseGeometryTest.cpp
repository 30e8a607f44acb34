#include "simplepath/simplepath.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

constexpr double pi = 3.14159265358979323846;

TEST(BaseGeometry, AnglesTolerancesClosestPointsArraysAndTransforms) {
    // atan3 covers the full turn [0, 2 pi) without reaching its end.
    EXPECT_NEAR(atan3(-1.0, 0.0), 1.5 * pi, 1e-15);
    double const tiny = atan3(-1e-300, 1.0);
    EXPECT_TRUE(tiny >= 0.0 && tiny < 2 * pi) << tiny;
    // Tolerances are inclusive, and NaN equals nothing.
    EXPECT_TRUE(IS_EQUAL(1.0, 1.5, 0.5) && !IS_EQUAL(1.0, 1.5000001, 0.5));
    EXPECT_FALSE(IS_EQUAL(NAN, NAN, 1.0));
    // The closest point of a segment clamps to its ends.
    DPoint const a(0, 0), b(10, 0);
    EXPECT_EQ(closestToLineSegment(a, b, DPoint(3, 5)), DPoint(3, 0));
    EXPECT_EQ(closestToLineSegment(a, b, DPoint(13, -5)), b);
    EXPECT_EQ(closestToLineSegment(a, a, DPoint(1, 1)), a);
    EXPECT_EQ(closestToLineSegment(a, b, DPoint(NAN, 0)), a);
    // Arrays ignore bad indices: removing past the end stops there, inserting past it fills the gap.
    CArray<int> arr;
    arr.Add(1);
    arr.RemoveAt(0, 10);
    arr.RemoveAt(-1);
    arr.InsertAt(3, 9);
    EXPECT_EQ(arr.GetSize(), 4);

    // Affine steps compose in order and invert.
    P2DTrans t;
    t.xScale(2.0).rotate(pi / 2).translate(DVector(1.0, 0.0));
    DPoint const p = t * DPoint(1.0, 1.0); // scale -> (2, 1), rotate -> (-1, 2), move -> (0, 2)
    EXPECT_LT(distance(p, DPoint(0, 2)), 1e-15);
    EXPECT_LT((t * DVector(1.0, 0.0) - DVector(0, 2)).length(), 1e-15) << "vectors are not moved";
    EXPECT_LT(distance(t.inverse() * p, DPoint(1, 1)), 1e-14);
    EXPECT_EQ((P2DTrans(1, 0, 0, 1, 10, 0) * P2DTrans(1, 2, 3, 4, 5, 6)) * DPoint(1, 1), DPoint(18, 13))
        << "the right operand applies first";
    EXPECT_EQ(P2DTrans(0, 0, 0, 0).inverse(), P2DTrans()) << "a singular transform inverts to the identity";
    EXPECT_EQ(DVector(1e300, 1e300).length(), std::hypot(1e300, 1e300)); // no overflow on the way
}

} // namespace
