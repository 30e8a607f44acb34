#include "simplepath/simplepath.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <vector>

namespace {

using Polygon = std::vector<tagPOINT>;

int inside(Polygon const& polygon, tagPOINT p, tagRECT const* bounds = nullptr) {
    return IsPointInPolygon(polygon.data(), static_cast<int>(polygon.size()), p, bounds);
}

// Plain even-odd ray casting for small coordinates: exact on-edge test in 64 bits, crossings by
// long-double division (exact enough when coordinates stay within a few thousand).
int referenceInside(Polygon const& polygon, tagPOINT p) {
    bool in = false;
    for (std::size_t i = 0, j = polygon.size() - 1; i < polygon.size(); j = i++) {
        tagPOINT const a = polygon[j], b = polygon[i];
        std::int64_t const cross =
            std::int64_t(b.x - a.x) * (p.y - a.y) - std::int64_t(b.y - a.y) * (p.x - a.x);
        if (cross == 0 && std::min(a.x, b.x) <= p.x && p.x <= std::max(a.x, b.x) &&
            std::min(a.y, b.y) <= p.y && p.y <= std::max(a.y, b.y)) {
            return 1;
        }
        if ((a.y > p.y) != (b.y > p.y) &&
            p.x < a.x + (long double)(p.y - a.y) * (b.x - a.x) / (long double)(b.y - a.y)) {
            in = !in;
        }
    }
    return in ? 1 : 0;
}

TEST(LegacyPointInPolygon, EvenOddWithTheBoundaryInside) {
    Polygon const square = {{0, 0}, {10, 0}, {10, 10}, {0, 10}};
    Polygon const diamond = {{0, 5}, {5, 0}, {10, 5}, {5, 10}};
    Polygon const notched = {{0, 0}, {30, 0}, {30, 30}, {20, 30}, {20, 10}, {10, 10}, {10, 30}, {0, 30}};
    // A pentagram drawn in one stroke: its centre is wound twice, so even-odd counts it outside.
    Polygon const star = {{0, 100}, {59, -81}, {-95, 31}, {95, 31}, {-59, -81}};
    struct Case {
        Polygon const& polygon;
        tagPOINT p;
        int in;
    } const cases[] = {
        {square, {5, 5}, 1},    {square, {10, 5}, 1},  {square, {0, 0}, 1},    {square, {0, 11}, 0},
        {diamond, {2, 5}, 1},   {diamond, {-2, 5}, 0}, {diamond, {12, 5}, 0}, // rays through vertices
        {notched, {15, 20}, 0}, {notched, {15, 5}, 1}, {notched, {25, 30}, 1}, {notched, {15, 30}, 0},
        {star, {0, 0}, 0},      {star, {0, 80}, 1},    {star, {0, 120}, 0},
    };
    for (Case const& c : cases) {
        EXPECT_EQ(inside(c.polygon, c.p), c.in) << c.p.x << "," << c.p.y;
    }
    // The bounds reject first, the caller's rectangle winning; fewer than three vertices enclose nothing.
    CRect const box = GetPolygonRect(const_cast<tagPOINT*>(square.data()), 4);
    EXPECT_EQ(inside(square, {10, 10}, &box), 1);
    tagRECT const tooSmall{0, 0, 4, 4};
    EXPECT_EQ(inside(square, {5, 5}, &tooSmall), 0);
    EXPECT_EQ(inside({{0, 0}, {10, 0}}, {5, 0}), 0);
    EXPECT_EQ(IsPointInPolygon(nullptr, 4, tagPOINT{0, 0}, nullptr), 0);
}

TEST(LegacyPointInPolygon, AgreesWithPlainRayCastingAndSurvivesScalingToTheFullIntegerRange) {
    std::mt19937 random(3);
    std::uniform_int_distribution<std::int32_t> coordinate(-500, 500);
    std::int32_t const scale = 1 << 22; // 500 * 2^22 < 2^31; products of differences exceed 2^63
    for (int shape = 0; shape < 40; ++shape) {
        Polygon polygon(3 + shape % 6), scaled;
        for (tagPOINT& p : polygon) {
            p = {coordinate(random), coordinate(random)};
            scaled.push_back({p.x * scale, p.y * scale});
        }
        for (int i = 0; i < 50; ++i) {
            tagPOINT const p{coordinate(random), coordinate(random)};
            int const expected = referenceInside(polygon, p);
            EXPECT_EQ(inside(polygon, p), expected);
            EXPECT_EQ(inside(scaled, {p.x * scale, p.y * scale}), expected);
        }
    }
    // One unit off a long diagonal edge, where 64-bit products would overflow.
    Polygon const sliver = {{INT32_MIN, INT32_MIN}, {INT32_MAX, INT32_MAX - 1}, {INT32_MAX, INT32_MIN}};
    EXPECT_EQ(inside(sliver, {0, -1}), 1);
    EXPECT_EQ(inside(sliver, {0, 1}), 0);
    EXPECT_EQ(inside(sliver, {INT32_MIN, INT32_MIN}), 1);
}

} // namespace
