#include "simplepath/interaction/SnapKit.h"

#include "simplepath/interfaces/Tolerance.h"

#include <cmath>

DPoint SnapKit::dragging(DPoint const& p) const {
    switch (mode_) {
    case HorizontalSnap:
        return DPoint(p.x, origin_.y);
    case VerticalSnap:
        return DPoint(origin_.x, p.y);
    case AngleSnap:
        return angleSnap(p);
    default:
        return p;
    }
}

DPoint SnapKit::angleSnap(DPoint const& p) const {
    double angle = atan3(p.y - origin_.y, p.x - origin_.x);
    double degrees = angle / kRadiansPerDegree;
    // atan3 answers in [0, 2 pi), so this only matters for a foreign angle; a non-finite one is left
    // alone rather than looped on.
    while (std::isfinite(degrees) && degrees < -kHalfStep) {
        degrees += 360.0;
    }
    int step = 0;
    for (; step < 360; step += static_cast<int>(kAngleStep)) {
        if (step - kHalfStep <= degrees && degrees < step + kHalfStep) {
            angle = step * kRadiansPerDegree;
            break;
        }
    }
    DPoint const far(origin_.x + kRayLength * std::cos(angle), origin_.y + kRayLength * std::sin(angle));
    DPoint result = closestToLineSegment(origin_, far, p);
    // cos and sin of the axis directions are not exactly 0 and 1: put axis results on the axis.
    if (step == 0 || step == 180) {
        result.y = origin_.y;
    } else if (step == 90 || step == 270) {
        result.x = origin_.x;
    }
    return result;
}
