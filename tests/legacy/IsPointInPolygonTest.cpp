#include "simplepath/simplepath.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <vector>

namespace {

int inside(std::vector<tagPOINT> const& polygon, std::int32_t x, std::int32_t y,
           tagRECT const* bounds = nullptr) {
    return IsPointInPolygon(polygon.data(), static_cast<int>(polygon.size()), tagPOINT{x, y}, bounds);
}

// Plain even-odd ray casting for small coordinates: exact on-edge test in 64 bits, crossings by
// long-double division (exact enough when coordinates stay within a few thousand).
int referenceInside(std::vector<tagPOINT> const& polygon, tagPOINT p) {
    bool in = false;
    for (std::size_t i = 0, j = polygon.size() - 1; i < polygon.size(); j = i++) {
        tagPOINT const a = polygon[j];
        tagPOINT const b = polygon[i];
        std::int64_t const cross =
            std::int64_t(b.x - a.x) * (p.y - a.y) - std::int64_t(b.y - a.y) * (p.x - a.x);
        if (cross == 0 && std::min(a.x, b.x) <= p.x && p.x <= std::max(a.x, b.x) &&
            std::min(a.y, b.y) <= p.y && p.y <= std::max(a.y, b.y)) {
            return 1;
        }
        if ((a.y > p.y) != (b.y > p.y)) {
            long double const x = a.x + (long double)(p.y - a.y) * (b.x - a.x) / (long double)(b.y - a.y);
            if (p.x < x) {
                in = !in;
            }
        }
    }
    return in ? 1 : 0;
}

TEST(LegacyPointInPolygon, SquareWithItsBoundary) {
    std::vector<tagPOINT> const square = {{0, 0}, {10, 0}, {10, 10}, {0, 10}};
    EXPECT_EQ(inside(square, 5, 5), 1);
    EXPECT_EQ(inside(square, 15, 5), 0);
    EXPECT_EQ(inside(square, -1, 5), 0);
    EXPECT_EQ(inside(square, 5, 11), 0);
    EXPECT_EQ(inside(square, 10, 5), 1); // on an edge
    EXPECT_EQ(inside(square, 0, 0), 1);  // on a vertex
    EXPECT_EQ(inside(square, 0, 11), 0); // on an edge's line, beyond its end
}

TEST(LegacyPointInPolygon, RaysThroughVerticesAndConcaveNotches) {
    std::vector<tagPOINT> const diamond = {{0, 5}, {5, 0}, {10, 5}, {5, 10}};
    EXPECT_EQ(inside(diamond, 2, 5), 1);  // the ray leaves through the vertex (10, 5)
    EXPECT_EQ(inside(diamond, -2, 5), 0); // the ray touches (0, 5) and (10, 5)
    EXPECT_EQ(inside(diamond, 12, 5), 0);
    std::vector<tagPOINT> const u = {{0, 0},   {30, 0},  {30, 30}, {20, 30},
                                     {20, 10}, {10, 10}, {10, 30}, {0, 30}};
    EXPECT_EQ(inside(u, 15, 20), 0); // in the notch
    EXPECT_EQ(inside(u, 15, 5), 1);
    EXPECT_EQ(inside(u, 5, 20), 1);
    EXPECT_EQ(inside(u, 25, 30), 1); // on the top edge of a prong
    EXPECT_EQ(inside(u, 15, 30), 0); // level with the prong tops, over the notch
}

TEST(LegacyPointInPolygon, EvenOddLeavesTheCentreOfAStarOutside) {
    // A pentagram drawn in one stroke: its centre is wound twice, so even-odd counts it outside.
    std::vector<tagPOINT> const star = {{0, 100}, {59, -81}, {-95, 31}, {95, 31}, {-59, -81}};
    EXPECT_EQ(inside(star, 0, 0), 0);
    EXPECT_EQ(inside(star, 0, 80), 1);
    EXPECT_EQ(inside(star, 0, 120), 0);
}

TEST(LegacyPointInPolygon, BoundsRejectFirstAndDegenerateInputEnclosesNothing) {
    std::vector<tagPOINT> const square = {{0, 0}, {10, 0}, {10, 10}, {0, 10}};
    CRect const box = GetPolygonRect(const_cast<tagPOINT*>(square.data()), 4);
    EXPECT_EQ(inside(square, 10, 10, &box), 1);
    EXPECT_EQ(inside(square, 11, 5, &box), 0);
    tagRECT const tooSmall{0, 0, 4, 4};
    EXPECT_EQ(inside(square, 5, 5, &tooSmall), 0); // the caller's rectangle wins
    EXPECT_EQ(inside({{0, 0}, {10, 0}}, 5, 0), 0);
    EXPECT_EQ(IsPointInPolygon(nullptr, 4, tagPOINT{0, 0}, nullptr), 0);
}

TEST(LegacyPointInPolygon, AgreesWithPlainRayCastingAndSurvivesScalingToTheFullIntegerRange) {
    std::mt19937 random(3);
    std::uniform_int_distribution<std::int32_t> coordinate(-500, 500);
    std::int32_t const scale = 1 << 22; // 500 * 2^22 < 2^31; products of differences exceed 2^63
    for (int shape = 0; shape < 40; ++shape) {
        std::vector<tagPOINT> polygon(3 + shape % 6);
        for (tagPOINT& p : polygon) {
            p = {coordinate(random), coordinate(random)};
        }
        std::vector<tagPOINT> scaled = polygon;
        for (tagPOINT& p : scaled) {
            p = {p.x * scale, p.y * scale};
        }
        for (int i = 0; i < 50; ++i) {
            tagPOINT const p{coordinate(random), coordinate(random)};
            int const expected = referenceInside(polygon, p);
            EXPECT_EQ(inside(polygon, p.x, p.y), expected);
            EXPECT_EQ(inside(scaled, p.x * scale, p.y * scale), expected);
        }
    }
    // Extreme corners of the 32-bit range.
    std::int32_t const lo = INT32_MIN;
    std::int32_t const hi = INT32_MAX;
    std::vector<tagPOINT> const huge = {{lo, lo}, {hi, lo}, {0, hi}};
    EXPECT_EQ(inside(huge, 0, 0), 1);
    EXPECT_EQ(inside(huge, hi, hi), 0);
    EXPECT_EQ(inside(huge, lo, lo), 1);
    // One unit off a long diagonal edge, where 64-bit products would overflow.
    std::vector<tagPOINT> const sliver = {{lo, lo}, {hi, hi - 1}, {hi, lo}};
    EXPECT_EQ(inside(sliver, 0, -1), 1);
    EXPECT_EQ(inside(sliver, 0, 1), 0);
}

} // namespace
