#include "simplepath/legacy/LineUtilities.h"

#include "simplepath/interfaces/detail/Tolerances.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kTolerance = simplepath_tolerance::kLegacyFuzz;

bool isZero(double v) {
    return std::fabs(v) < kTolerance;
}

// Folds the points given by anchorOf(i) into the four bounds, starting from (0, 0, 0, 0).
template <class Array, class AnchorOf>
void foldBounds(Array const& points, AnchorOf anchorOf, double& minX, double& minY, double& maxX,
                double& maxY) {
    minX = minY = maxX = maxY = 0.0;
    int const size = points.GetSize();
    for (int i = 0; i < size; ++i) {
        DPoint const& p = anchorOf(points[i]);
        if (i == 0) {
            minX = maxX = p.x;
            minY = maxY = p.y;
            continue;
        }
        minX = std::min(minX, p.x);
        minY = std::min(minY, p.y);
        maxX = std::max(maxX, p.x);
        maxY = std::max(maxY, p.y);
    }
}

} // namespace

DPoint GetDistancePoint(double x1, double y1, double x2, double y2, double px, double py) {
    double const length = std::hypot(x1 - x2, y1 - y2);
    if (length < kTolerance) {
        return DPoint(x1, y1);
    }
    // The line is A x + B y + C = 0 with (A, B) a unit normal; s is p's coordinate along the line.
    double const a = (y2 - y1) / length;
    double const b = (x1 - x2) / length;
    double const c = (x2 * y1 - x1 * y2) / length;
    double const s = b * px - a * py;
    return DPoint(b * s - a * c, -b * c - a * s);
}

int GetLinesIntersection(double x1, double y1, double x2, double y2, double x3, double y3, double x4,
                         double y4, double* outX, double* outY) {
    if (outX == nullptr || outY == nullptr) {
        return 0;
    }
    *outX = 0.0;
    *outY = 0.0;
    if ((x1 == x2 && y1 == y2) || (x3 == x4 && y3 == y4)) {
        return 0;
    }
    // Coordinates relative to P2: the first line runs through the origin with direction (dx, dy).
    double const dx = x1 - x2;
    double const dy = y1 - y2;
    double const u3 = x3 - x2;
    double const u4 = x4 - x2;
    double const t4 = y4 - y2;
    double ix = 0.0;
    double iy = 0.0;
    if (isZero(x3 - x4)) {
        ix = u3;
        *outX = ix; // stays behind, relative to P2, when both lines turn out vertical
        if (isZero(dx)) {
            return 0;
        }
        iy = ix * (dy / dx);
    } else {
        double const m2 = (y3 - y4) / (x3 - x4);
        if (isZero(dx)) {
            ix = 0.0;
            iy = t4 - m2 * u4;
        } else {
            double const m1 = dy / dx;
            if (isZero(m1 - m2)) {
                return 0;
            }
            ix = (t4 - m2 * u4) / (m1 - m2);
            iy = ix * m1;
        }
    }
    *outX = ix + x2;
    *outY = iy + y2;
    return 1;
}

int IsPointInLineRange(double x1, double y1, double x2, double y2, double px, double py) {
    if (!(px >= std::min(x1, x2) - kTolerance)) {
        return 0;
    }
    if (!(px <= std::max(x1, x2) + kTolerance)) {
        return 0;
    }
    if (!(py >= std::min(y1, y2) - kTolerance)) {
        return 0;
    }
    if (!(py <= std::max(y1, y2) + kTolerance)) {
        return 0;
    }
    return 1;
}

CRect GetPolygonRect(tagPOINT* points, int count) {
    CRect rect;
    if (points == nullptr || count <= 0) {
        return rect;
    }
    rect.left = rect.right = points[0].x;
    rect.top = rect.bottom = points[0].y;
    for (int i = 1; i < count; ++i) {
        rect.left = std::min(rect.left, points[i].x);
        rect.right = std::max(rect.right, points[i].x);
        rect.top = std::min(rect.top, points[i].y);
        rect.bottom = std::max(rect.bottom, points[i].y);
    }
    return rect;
}

void GetPolylineBounds(CArray<DPoint, DPoint> const& points, double& minX, double& minY, double& maxX,
                       double& maxY) {
    foldBounds(
        points, [](DPoint const& p) -> DPoint const& { return p; }, minX, minY, maxX, maxY);
}

void GetPolylineBounds(CArray<DPoint, DPoint> const& points, DRECT& bounds) {
    GetPolylineBounds(points, bounds.left, bounds.top, bounds.right, bounds.bottom);
}

void GetPolylineBounds(CArray<BPOINT, BPOINT> const& points, DRECT& bounds) {
    // Same as bounding a copy of the anchors, without making the copy.
    foldBounds(
        points, [](BPOINT const& p) -> DPoint const& { return p.anchor; }, bounds.left, bounds.top,
        bounds.right, bounds.bottom);
}
