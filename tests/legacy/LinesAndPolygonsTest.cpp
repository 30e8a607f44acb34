#include "simplepath/simplepath.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

namespace {

using LD = long double;

void expectNear(DPoint const& actual, DPoint const& expected, double tolerance) {
    EXPECT_NEAR(actual.x, expected.x, tolerance);
    EXPECT_NEAR(actual.y, expected.y, tolerance);
}

// Whether the lines meet, and where; the point starts as garbage that must be overwritten.
std::array<double, 3> intersect(double x1, double y1, double x2, double y2, double x3, double y3, double x4,
                                double y4) {
    double x = 99, y = 99;
    int const found = GetLinesIntersection(x1, y1, x2, y2, x3, y3, x4, y4, &x, &y);
    return {double(found), x, y};
}

TEST(LegacyLines, FootAndIntersectionAgreeWithLongDoubleReferences) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> coordinate(-100, 100);
    for (int i = 0; i < 100; ++i) {
        double c[8];
        for (double& v : c) {
            v = coordinate(random);
        }
        // The foot of the perpendicular from P3 onto P1-P2, by projection.
        LD const d1x = LD(c[2]) - c[0], d1y = LD(c[3]) - c[1], d2x = LD(c[6]) - c[4], d2y = LD(c[7]) - c[5];
        LD const s = ((c[4] - LD(c[0])) * d1x + (c[5] - LD(c[1])) * d1y) / (d1x * d1x + d1y * d1y);
        expectNear(GetDistancePoint(c[0], c[1], c[2], c[3], c[4], c[5]),
                   DPoint(double(c[0] + s * d1x), double(c[1] + s * d1y)), 1e-9);
        // The intersection of P1-P2 with P3-P4, by Cramer's rule, unless nearly parallel (where the
        // slope form loses digits).
        LD const det = d1x * d2y - d1y * d2x;
        if (std::fabs(double(det)) < 100) {
            continue;
        }
        LD const r = ((c[4] - LD(c[0])) * d2y - (c[5] - LD(c[1])) * d2x) / det;
        auto const h = intersect(c[0], c[1], c[2], c[3], c[4], c[5], c[6], c[7]);
        ASSERT_EQ(h[0], 1);
        expectNear(DPoint(h[1], h[2]), DPoint(double(c[0] + r * d1x), double(c[1] + r * d1y)),
                   1e-9 * (1 + std::fabs(double(r)) * 200));
    }
}

TEST(LegacyLines, VerticalsParallelsRangesAndBounds) {
    using Hit = std::array<double, 3>;
    EXPECT_EQ(intersect(3, 0, 3, 1, 0, 1, 1, 3), (Hit{1, 3, 7}));        // first vertical, second y = 2x + 1
    EXPECT_EQ(intersect(0, 0, 1, 1, 0, 3, 1, 4 + 5e-9), (Hit{0, 0, 0})); // slopes 1e-8 apart: parallel
    EXPECT_EQ(intersect(1, 1, 1, 1, 0, 0, 5, 5), (Hit{0, 0, 0}));        // a point is no line
    // The range is the box widened by 1e-8.
    EXPECT_EQ(IsPointInLineRange(10, 5, 0, 0, 10 + 5e-9, 5), 1);
    EXPECT_EQ(IsPointInLineRange(0, 0, 10, 5, -2e-8, 2), 0);
    EXPECT_EQ(IsPointInLineRange(0, 0, 10, 5, NAN, 2), 0);
    // A chain's handles sticking out are left out of its bounds.
    CArray<BPOINT, BPOINT> chain;
    chain.Add(BPOINT{{-100, -100}, {10, 20}, {500, 20}});
    chain.Add(BPOINT{{30, -300}, {30, 40}, {30, 900}});
    DRECT box{9, 9, 9, 9};
    GetPolylineBounds(chain, box);
    EXPECT_EQ((std::vector<double>{box.left, box.top, box.right, box.bottom}),
              (std::vector<double>{10, 20, 30, 40}));
    EXPECT_EQ(GetPolygonRect(nullptr, 3), CRect());
}

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

TEST(LegacyPointInPolygon, EvenOddAgreesWithPlainRayCasting) {
    // Every integer point in and around a few shapes: edges, vertices, rays through vertices and along
    // edges, and a pentagram drawn in one stroke, whose centre is wound twice and so lies outside. Each
    // shape again scaled up, to where products of coordinate differences overflow 64 bits.
    Polygon const star = {{0, 100}, {59, -81}, {-95, 31}, {95, 31}, {-59, -81}};
    Polygon const shapes[] = {
        {{0, 0}, {10, 0}, {10, 10}, {0, 10}}, {{-100, 0}, {0, -100}, {100, 0}, {0, 100}}, star};
    std::int32_t const scale = 21000000; // the diamond then spans nearly 2^32
    for (Polygon const& shape : shapes) {
        Polygon scaled;
        for (tagPOINT const& p : shape) {
            scaled.push_back({p.x * scale, p.y * scale});
        }
        CRect const box = GetPolygonRect(const_cast<tagPOINT*>(shape.data()), int(shape.size()));
        for (std::int32_t x = box.left - 2; x <= box.right + 2; ++x) {
            for (std::int32_t y = box.top - 2; y <= box.bottom + 2; ++y) {
                int const expected = referenceInside(shape, {x, y});
                ASSERT_EQ(inside(shape, {x, y}, &box), expected) << x << "," << y;
                ASSERT_EQ(inside(scaled, {x * scale, y * scale}), expected) << x << "," << y;
            }
        }
    }
    // Fewer than three vertices enclose nothing.
    EXPECT_EQ(inside({{0, 0}, {10, 0}}, {5, 0}), 0);
    EXPECT_EQ(IsPointInPolygon(nullptr, 4, tagPOINT{0, 0}, nullptr), 0);
}

} // namespace
