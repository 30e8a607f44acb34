#include "simplepath/simplepath.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <random>
#include <tuple>
#include <vector>

namespace {

using LD = long double;

// Both coordinates of anything with x and y within tolerance of expected.
template <class Point> void expectNear(Point const& actual, DPoint const& expected, double tolerance) {
    EXPECT_NEAR(actual.x, expected.x, tolerance);
    EXPECT_NEAR(actual.y, expected.y, tolerance);
}

struct Hit {
    int found;
    double x, y;
};

Hit intersect(double x1, double y1, double x2, double y2, double x3, double y3, double x4, double y4) {
    Hit h{-1, 99.0, 99.0}; // garbage that must be overwritten
    h.found = GetLinesIntersection(x1, y1, x2, y2, x3, y3, x4, y4, &h.x, &h.y);
    return h;
}

void expectHit(Hit const& hit, int found, double x, double y) {
    EXPECT_EQ(hit.found, found);
    expectNear(hit, DPoint(x, y), 1e-12);
}

TEST(LegacyLines, FootAndIntersectionAgreeWithLongDoubleReferences) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> coordinate(-100, 100);
    for (int i = 0; i < 300; ++i) {
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
        Hit const h = intersect(c[0], c[1], c[2], c[3], c[4], c[5], c[6], c[7]);
        ASSERT_EQ(h.found, 1);
        expectNear(h, DPoint(double(c[0] + r * d1x), double(c[1] + r * d1y)),
                   1e-9 * (1 + std::fabs(double(r)) * 200));
    }
    // Two line points closer than 1e-8 make no line: the first point comes back unchanged.
    EXPECT_EQ(GetDistancePoint(1.25, -7.5, 1.25 + 5e-9, -7.5, 100, 100), DPoint(1.25, -7.5));
}

TEST(LegacyLines, IntersectionOfVerticalsAndParallelsWithTheirLeftovers) {
    expectHit(intersect(0, 0, 1, 0, 2, -1, 2, 1), 1, 2, 0);        // second line vertical
    expectHit(intersect(3, 0, 3, 1, 0, 1, 1, 3), 1, 3, 7);         // first line vertical, second y = 2x + 1
    expectHit(intersect(0, 0, 1, 1, 2, -1, 2 + 5e-9, 1), 1, 2, 2); // within 1e-8 of vertical: through x3
    expectHit(intersect(5, 0, 5, 1, 7, 0, 7, 3), 0, 2, 0);         // both vertical: x keeps x3 - x2
    expectHit(intersect(0, 0, 1, 1, 0, 3, 1, 4 + 5e-9), 0, 0, 0);  // slopes 1e-8 apart: parallel
    expectHit(intersect(1, 1, 1, 1, 0, 0, 5, 5), 0, 0, 0);         // a point is no line
    expectHit(intersect(0, 0, 5, 5, 2, 2, 2, 2), 0, 0, 0);
    // Steep lines whose directions differ by ~2e-16 radians still have slopes 2e-8 apart: not parallel.
    Hit const steep = intersect(0, 0, 1, 1e4, 0, 1, 1, 1e4 + 1 + 2e-8);
    EXPECT_EQ(steep.found, 1);
    EXPECT_LT(steep.x, -1e7);
    double x = 0;
    EXPECT_EQ(GetLinesIntersection(0, 0, 1, 0, 2, -1, 2, 1, &x, nullptr), 0);
}

TEST(LegacyLines, LineRangeIsTheBoxWidenedByTheTolerance) {
    double const in = 5e-9, out = 2e-8;
    std::tuple<double, double, int> const cases[] = {{5, 2, 1},       {-in, 2, 1},  {10 + in, 5 + in, 1},
                                                     {-out, 2, 0},    {5, -out, 0}, {10 + out, 2, 0},
                                                     {5, 5 + out, 0}, {NAN, 2, 0}};
    for (auto const& [x, y, inRange] : cases) {
        EXPECT_EQ(IsPointInLineRange(0, 0, 10, 5, x, y), inRange) << x << "," << y;
        EXPECT_EQ(IsPointInLineRange(10, 5, 0, 0, x, y), inRange) << x << "," << y;
    }
}

TEST(LegacyLines, PolygonAndPolylineBounds) {
    tagPOINT points[] = {{100, 200}, {90, 250}, {130, 190}};
    EXPECT_EQ(GetPolygonRect(nullptr, 3), CRect());
    EXPECT_EQ(GetPolygonRect(points, 0), CRect(0, 0, 0, 0));
    EXPECT_EQ(GetPolygonRect(points, 3), CRect(90, 190, 130, 250));
    // Polylines: the empty one is bounded by zeros; a chain's handles sticking out are ignored.
    auto bounds = [](auto const& array) {
        DRECT box{9, 9, 9, 9};
        GetPolylineBounds(array, box);
        return std::vector<double>{box.left, box.top, box.right, box.bottom};
    };
    CArray<DPoint, DPoint> polyline;
    CArray<BPOINT, BPOINT> chain;
    EXPECT_EQ(bounds(polyline), std::vector<double>(4, 0.0));
    EXPECT_EQ(bounds(chain), std::vector<double>(4, 0.0));
    for (tagPOINT const& p : points) {
        polyline.Add(DPoint(p.x, p.y));
    }
    EXPECT_EQ(bounds(polyline), (std::vector<double>{90, 190, 130, 250}));
    chain.Add(BPOINT{{-100, -100}, {10, 20}, {500, 20}});
    chain.Add(BPOINT{{30, -300}, {30, 40}, {30, 900}});
    EXPECT_EQ(bounds(chain), (std::vector<double>{10, 20, 30, 40}));
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
    EXPECT_EQ(inside(star, {0, 0}), 0);
    Polygon const shapes[] = {{{0, 0}, {10, 0}, {10, 10}, {0, 10}},
                              {{-100, 0}, {0, -100}, {100, 0}, {0, 100}},
                              {{0, 0}, {30, 0}, {30, 30}, {20, 30}, {20, 10}, {10, 10}, {10, 30}, {0, 30}},
                              star};
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
    // The caller's bounds reject first; fewer than three vertices enclose nothing.
    tagRECT const tooSmall{0, 0, 4, 4};
    EXPECT_EQ(inside(shapes[0], {5, 5}, &tooSmall), 0);
    EXPECT_EQ(inside({{0, 0}, {10, 0}}, {5, 0}), 0);
    EXPECT_EQ(IsPointInPolygon(nullptr, 4, tagPOINT{0, 0}, nullptr), 0);
}

} // namespace
