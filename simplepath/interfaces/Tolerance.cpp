#include "simplepath/interfaces/Tolerance.h"

double atan3(double y, double x) {
    constexpr double twoPi = 6.283185307179586476925286766559;
    if (y == 0.0 && (x == 0.0 || x > 0.0)) {
        return 0.0; // covers (0, 0) and both signed zeros
    }
    double const angle = std::atan2(y, x);
    if (angle < 0.0) {
        double const wrapped = angle + twoPi;
        // A tiny negative angle would round up to exactly 2*pi, which lies outside the range.
        return wrapped < twoPi ? wrapped : 0.0;
    }
    return angle;
}

DPoint closestToLineSegment(DPoint const& a, DPoint const& b, DPoint const& p) {
    DVector const ab = b - a;
    double const len2 = ab.squaredLength();
    if (!(len2 > 0.0)) {
        return a;
    }
    double const t = (p - a).dot(ab) / len2;
    if (!(t > 0.0)) {
        return a; // also for a NaN parameter
    }
    if (t >= 1.0) {
        return b;
    }
    return a + ab * t;
}
