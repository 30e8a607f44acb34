#pragma once

#include "simplepath/interfaces/DPoint.h"

#include <cmath>

// Tolerance comparisons used throughout the library. A tolerance of 0.0 tests exact equality.
// NaN never compares equal to anything, whatever the tolerance.
inline bool IS_EQUAL(double a, double b, double tolerance) {
    return std::fabs(a - b) <= tolerance;
}
inline bool IS_ZERO(double a, double tolerance) {
    return std::fabs(a) <= tolerance;
}
inline bool isEqual(DPoint const& p, DPoint const& q, double tolerance) {
    return IS_EQUAL(p.x, q.x, tolerance) && IS_EQUAL(p.y, q.y, tolerance);
}

// The angle of (x, y) in [0, 2*pi); atan3(0, 0) is 0.
double atan3(double y, double x);

// The point of segment a-b nearest to p (a when a == b). Projects p on the segment's line and clamps
// the parameter to [0, 1]; exact at both ends.
DPoint closestToLineSegment(DPoint const& a, DPoint const& b, DPoint const& p);
