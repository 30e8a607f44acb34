#include "simplepath/legacy/CBezierPoint.h"

#include <cmath>

namespace {

constexpr double kSmoothTolerance = 0.1;

DPoint rotated(DPoint const& p, DPoint const& centre, double c, double s) {
    DVector const v = p - centre;
    return centre + DVector(v.x * c - v.y * s, v.x * s + v.y * c);
}

DPoint stretched(DPoint const& p, DPoint const& origin, double sx, double sy) {
    DVector const v = p - origin;
    return origin + DVector(v.x * sx, v.y * sy);
}

} // namespace

int CBezierPoint::IsSmooth() const {
    if (distance(before, anchor) < kSmoothTolerance || distance(after, anchor) < kSmoothTolerance) {
        return 0;
    }
    DVector const line = after - before;
    double const length = line.length();
    // Handles on one spot (both well away from the anchor) make no line: the anchor is a corner.
    double const offLine =
        length > 0.0 ? std::fabs(line.cross(anchor - before)) / length : distance(before, anchor);
    return offLine < kSmoothTolerance ? 1 : 0;
}

void CBezierPoint::Move(double dx, double dy) {
    DVector const d(dx, dy);
    before -= d;
    anchor -= d;
    after -= d;
}

void CBezierPoint::Move(DPoint d) {
    Move(d.x, d.y);
}

void CBezierPoint::Rotate(double cx, double cy, double angle) {
    DPoint const centre(cx, cy);
    double const c = std::cos(angle);
    double const s = std::sin(angle);
    before = rotated(before, centre, c, s);
    anchor = rotated(anchor, centre, c, s);
    after = rotated(after, centre, c, s);
}

void CBezierPoint::Smooth(DPoint previous, DPoint next) {
    DVector const direction = (next - previous).normalized();
    if (!(direction.squaredLength() > 0.0) || !std::isfinite(direction.x) || !std::isfinite(direction.y)) {
        return;
    }
    before = anchor - direction * (distance(previous, anchor) / 3.0);
    after = anchor + direction * (distance(anchor, next) / 3.0);
}

void CBezierPoint::Stretch(DPoint origin, double sx, double sy) {
    before = stretched(before, origin, sx, sy);
    anchor = stretched(anchor, origin, sx, sy);
    after = stretched(after, origin, sx, sy);
}
