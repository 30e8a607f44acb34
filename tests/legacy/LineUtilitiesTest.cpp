#include "simplepath/simplepath.h"

#include "LegacyReference.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace {

using legacytest::expectNear;
using legacytest::LD;

struct Hit {
    int found;
    double x, y;
};

Hit intersect(double x1, double y1, double x2, double y2, double x3, double y3, double x4, double y4) {
    Hit h{-1, 99.0, 99.0}; // garbage that must be overwritten
    h.found = GetLinesIntersection(x1, y1, x2, y2, x3, y3, x4, y4, &h.x, &h.y);
    return h;
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
    struct Case {
        Hit expected, actual;
    } const cases[] = {
        {{1, 2, 0}, intersect(0, 0, 1, 0, 2, -1, 2, 1)},        // second line vertical
        {{1, 3, 7}, intersect(3, 0, 3, 1, 0, 1, 1, 3)},         // first line vertical, second y = 2x + 1
        {{1, 2, 2}, intersect(0, 0, 1, 1, 2, -1, 2 + 5e-9, 1)}, // within 1e-8 of vertical: through x3
        {{0, 2, 0}, intersect(5, 0, 5, 1, 7, 0, 7, 3)},         // both vertical: x keeps x3 - x2
        {{0, 0, 0}, intersect(0, 0, 1, 1, 0, 3, 1, 4 + 5e-9)},  // slopes 1e-8 apart: parallel
        {{0, 0, 0}, intersect(1, 1, 1, 1, 0, 0, 5, 5)},         // a point is no line
        {{0, 0, 0}, intersect(0, 0, 5, 5, 2, 2, 2, 2)},
    };
    for (Case const& c : cases) {
        EXPECT_EQ(c.actual.found, c.expected.found);
        expectNear(c.actual, DPoint(c.expected.x, c.expected.y), 1e-12);
    }
    // Steep lines whose directions differ by ~2e-16 radians still have slopes 2e-8 apart: not parallel.
    Hit const steep = intersect(0, 0, 1, 1e4, 0, 1, 1, 1e4 + 1 + 2e-8);
    EXPECT_EQ(steep.found, 1);
    EXPECT_LT(steep.x, -1e7);
    double x = 0;
    EXPECT_EQ(GetLinesIntersection(0, 0, 1, 0, 2, -1, 2, 1, &x, nullptr), 0);
}

TEST(LegacyLines, LineRangeIsTheBoxWidenedByTheTolerance) {
    double const in = 5e-9, out = 2e-8;
    struct Case {
        double x, y;
        int inRange;
    } const cases[] = {{5, 2, 1},        {-in, 2, 1},  {10 + in, 5 + in, 1}, {-out, 2, 0},
                       {10 + out, 2, 0}, {5, -out, 0}, {5, 5 + out, 0},      {NAN, 2, 0}};
    for (Case const& c : cases) {
        EXPECT_EQ(IsPointInLineRange(0, 0, 10, 5, c.x, c.y), c.inRange) << c.x << "," << c.y;
        EXPECT_EQ(IsPointInLineRange(10, 5, 0, 0, c.x, c.y), c.inRange) << c.x << "," << c.y;
    }
}

TEST(LegacyLines, PolygonAndPolylineBounds) {
    tagPOINT points[] = {{100, 200}, {90, 250}, {130, 190}};
    EXPECT_EQ(GetPolygonRect(nullptr, 3), CRect());
    EXPECT_EQ(GetPolygonRect(points, 0), CRect(0, 0, 0, 0));
    EXPECT_EQ(GetPolygonRect(points, 1), CRect(100, 200, 100, 200));
    EXPECT_EQ(GetPolygonRect(points, 3), CRect(90, 190, 130, 250));

    CArray<DPoint, DPoint> polyline;
    DRECT box{9, 9, 9, 9};
    GetPolylineBounds(polyline, box);
    EXPECT_EQ(box.left, 0.0);
    EXPECT_EQ(box.bottom, 0.0);
    for (tagPOINT const& p : points) {
        polyline.Add(DPoint(p.x, p.y));
    }
    GetPolylineBounds(polyline, box);
    expectNear(DPoint(box.left, box.top), DPoint(90, 190), 0);
    expectNear(DPoint(box.right, box.bottom), DPoint(130, 250), 0);
    // Handles sticking out beyond the anchors are ignored.
    CArray<BPOINT, BPOINT> anchors;
    anchors.Add(BPOINT{{-100, -100}, {10, 20}, {500, 20}});
    anchors.Add(BPOINT{{30, -300}, {30, 40}, {30, 900}});
    GetPolylineBounds(anchors, box);
    expectNear(DPoint(box.left, box.top), DPoint(10, 20), 0);
    expectNear(DPoint(box.right, box.bottom), DPoint(30, 40), 0);
}

} // namespace
