#include "simplepath/simplepath.h"

#include "LegacyExpect.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

namespace {

using legacytest::expectNear;

TEST(LegacyLines, PerpendicularFootOnTheInfiniteLine) {
    EXPECT_EQ(GetDistancePoint(0, 0, 10, 0, 3, 5), DPoint(3, 0));
    // Beyond the segment: the line is infinite.
    DPoint const beyond = GetDistancePoint(0, 0, 10, 10, 30, 10);
    expectNear(beyond, DPoint(20.0, 20.0), 1e-12);
    // Two line points closer than 1e-8 make no line: the first point comes back unchanged.
    EXPECT_EQ(GetDistancePoint(1.25, -7.5, 1.25 + 5e-9, -7.5, 100, 100), DPoint(1.25, -7.5));

    // Against the projection worked in long double.
    std::mt19937 random(7);
    std::uniform_real_distribution<double> coordinate(-1000, 1000);
    for (int i = 0; i < 200; ++i) {
        double const x1 = coordinate(random), y1 = coordinate(random), x2 = coordinate(random),
                     y2 = coordinate(random), px = coordinate(random), py = coordinate(random);
        long double const dx = (long double)x2 - x1, dy = (long double)y2 - y1;
        long double const s =
            ((px - (long double)x1) * dx + (py - (long double)y1) * dy) / (dx * dx + dy * dy);
        DPoint const foot = GetDistancePoint(x1, y1, x2, y2, px, py);
        expectNear(foot, DPoint(static_cast<double>(x1 + s * dx), static_cast<double>(y1 + s * dy)), 1e-9);
    }
}

struct Hit {
    int found;
    double x;
    double y;
};

Hit intersect(double x1, double y1, double x2, double y2, double x3, double y3, double x4, double y4) {
    Hit h{-1, 99.0, 99.0}; // garbage that must be overwritten
    h.found = GetLinesIntersection(x1, y1, x2, y2, x3, y3, x4, y4, &h.x, &h.y);
    return h;
}

TEST(LegacyLines, IntersectionOfGeneralAndVerticalLines) {
    Hit const diagonal = intersect(0, 0, 4, 4, 0, 4, 4, 0);
    EXPECT_EQ(diagonal.found, 1);
    expectNear(diagonal, DPoint(2.0, 2.0), 1e-12);

    Hit const axisAndVertical = intersect(0, 0, 1, 0, 2, -1, 2, 1);
    EXPECT_EQ(axisAndVertical.found, 1);
    EXPECT_EQ(axisAndVertical.x, 2.0);
    EXPECT_EQ(axisAndVertical.y, 0.0);

    // First line vertical at x = 3, second y = 2x + 1.
    Hit const firstVertical = intersect(3, 0, 3, 1, 0, 1, 1, 3);
    EXPECT_EQ(firstVertical.found, 1);
    expectNear(firstVertical, DPoint(3.0, 7.0), 1e-12);

    // A second line within 1e-8 of vertical is taken as vertical through x3.
    Hit const nearlyVertical = intersect(0, 0, 1, 1, 2, -1, 2 + 5e-9, 1);
    EXPECT_EQ(nearlyVertical.x, 2.0);
    EXPECT_EQ(nearlyVertical.y, 2.0);

    // Against Cramer's rule in long double.
    std::mt19937 random(11);
    std::uniform_real_distribution<double> coordinate(-100, 100);
    for (int i = 0; i < 200; ++i) {
        double c[8];
        for (double& v : c) {
            v = coordinate(random);
        }
        long double const d1x = (long double)c[2] - c[0], d1y = (long double)c[3] - c[1];
        long double const d2x = (long double)c[6] - c[4], d2y = (long double)c[7] - c[5];
        long double const det = d1x * d2y - d1y * d2x;
        if (std::fabs(static_cast<double>(det)) < 100) {
            continue; // nearly parallel: the slope form loses digits there
        }
        long double const s = (((long double)c[4] - c[0]) * d2y - ((long double)c[5] - c[1]) * d2x) / det;
        Hit const h = intersect(c[0], c[1], c[2], c[3], c[4], c[5], c[6], c[7]);
        ASSERT_EQ(h.found, 1);
        double const scale = 1 + std::fabs(static_cast<double>(s)) * 200;
        expectNear(h, DPoint(static_cast<double>(c[0] + s * d1x), static_cast<double>(c[1] + s * d1y)),
                   1e-9 * scale);
    }
}

TEST(LegacyLines, IntersectionRefusalsAndTheirLeftovers) {
    // Both vertical: refused, but the x output keeps x3 - x2 (relative to P2, not absolute).
    Hit const bothVertical = intersect(5, 0, 5, 1, 7, 0, 7, 3);
    EXPECT_EQ(bothVertical.found, 0);
    EXPECT_EQ(bothVertical.x, 2.0);
    EXPECT_EQ(bothVertical.y, 0.0);
    // Parallel by slope: both outputs stay at 0.
    Hit const parallel = intersect(0, 0, 1, 1, 0, 3, 1, 4 + 5e-9);
    EXPECT_EQ(parallel.found, 0);
    EXPECT_EQ(parallel.x, 0.0);
    EXPECT_EQ(parallel.y, 0.0);
    // Steep lines whose directions differ by ~2e-16 radians still have slopes 2e-8 apart: not parallel.
    Hit const steep = intersect(0, 0, 1, 1e4, 0, 1, 1, 1e4 + 1 + 2e-8);
    EXPECT_EQ(steep.found, 1);
    EXPECT_LT(steep.x, -1e7);
    // Degenerate lines.
    Hit const point = intersect(1, 1, 1, 1, 0, 0, 5, 5);
    EXPECT_EQ(point.found, 0);
    EXPECT_EQ(point.x, 0.0);
    EXPECT_EQ(intersect(0, 0, 5, 5, 2, 2, 2, 2).found, 0);
    double x = 0;
    EXPECT_EQ(GetLinesIntersection(0, 0, 1, 0, 2, -1, 2, 1, &x, nullptr), 0);
    EXPECT_EQ(GetLinesIntersection(0, 0, 1, 0, 2, -1, 2, 1, nullptr, &x), 0);
}

TEST(LegacyLines, LineRangeIsTheBoxWidenedByTheTolerance) {
    EXPECT_EQ(IsPointInLineRange(0, 0, 10, 5, 5, 2), 1);
    EXPECT_EQ(IsPointInLineRange(10, 5, 0, 0, 5, 2), 1); // either order of ends
    EXPECT_EQ(IsPointInLineRange(0, 0, 10, 5, 10, 5), 1);
    double const in = 5e-9;
    double const out = 2e-8;
    EXPECT_EQ(IsPointInLineRange(0, 0, 10, 5, -in, 2), 1);
    EXPECT_EQ(IsPointInLineRange(0, 0, 10, 5, 10 + in, 5 + in), 1);
    EXPECT_EQ(IsPointInLineRange(0, 0, 10, 5, -out, 2), 0);
    EXPECT_EQ(IsPointInLineRange(0, 0, 10, 5, 10 + out, 2), 0);
    EXPECT_EQ(IsPointInLineRange(0, 0, 10, 5, 5, -out), 0);
    EXPECT_EQ(IsPointInLineRange(0, 0, 10, 5, 5, 5 + out), 0);
    // A vertical segment's box has no width beyond the tolerance.
    EXPECT_EQ(IsPointInLineRange(3, 0, 3, 9, 3 + in, 4), 1);
    EXPECT_EQ(IsPointInLineRange(3, 0, 3, 9, 3 + out, 4), 0);
    EXPECT_EQ(IsPointInLineRange(0, 0, 10, 5, NAN, 2), 0);
}

TEST(LegacyLines, PolygonRectangle) {
    EXPECT_EQ(GetPolygonRect(nullptr, 3), CRect());
    tagPOINT points[] = {{4, -2}, {-7, 9}, {3, 12}, {0, 0}};
    EXPECT_EQ(GetPolygonRect(points, 0), CRect(0, 0, 0, 0));
    EXPECT_EQ(GetPolygonRect(points, 1), CRect(4, -2, 4, -2));
    EXPECT_EQ(GetPolygonRect(points, 4), CRect(-7, -2, 4, 12));
    // Far from the origin: the start is the first point, not (0, 0).
    tagPOINT far[] = {{100, 200}, {110, 250}};
    EXPECT_EQ(GetPolygonRect(far, 2), CRect(100, 200, 110, 250));
}

std::vector<double> DRECTValues(DRECT const& r) {
    return {r.left, r.top, r.right, r.bottom};
}

TEST(LegacyLines, PolylineBounds) {
    CArray<DPoint, DPoint> points;
    double minX = 9, minY = 9, maxX = 9, maxY = 9;
    GetPolylineBounds(points, minX, minY, maxX, maxY);
    EXPECT_EQ(minX, 0.0);
    EXPECT_EQ(maxY, 0.0);

    points.Add(DPoint(50, 60));
    points.Add(DPoint(20, 80));
    points.Add(DPoint(70, 65));
    GetPolylineBounds(points, minX, minY, maxX, maxY);
    EXPECT_EQ(minX, 20.0);
    EXPECT_EQ(minY, 60.0);
    EXPECT_EQ(maxX, 70.0);
    EXPECT_EQ(maxY, 80.0);
    DRECT box;
    GetPolylineBounds(points, box);
    EXPECT_EQ(DRECTValues(box), DRECTValues({20, 60, 70, 80}));

    // Handles sticking out beyond the anchors are ignored.
    CArray<BPOINT, BPOINT> anchors;
    anchors.Add(BPOINT{{-100, -100}, {10, 20}, {500, 20}});
    anchors.Add(BPOINT{{30, -300}, {30, 40}, {30, 900}});
    GetPolylineBounds(anchors, box);
    EXPECT_EQ(DRECTValues(box), DRECTValues({10, 20, 30, 40}));
    anchors.RemoveAll();
    GetPolylineBounds(anchors, box);
    EXPECT_EQ(box.right, 0.0);
}

} // namespace
