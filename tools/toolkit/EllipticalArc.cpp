#include "toolkit/EllipticalArc.h"

#include <algorithm>
#include <cmath>

namespace sptool {
namespace {

constexpr double kPi = 3.14159265358979323846;
// Bound on the unit-circle error of one piece divided by delta^6 (measured maximum 1.815e-5 up to 90°).
constexpr double kPieceErrorFactor = 2e-5;
constexpr int kMaxPieces = 1024; // only reached by tolerances far below the double resolution

// Signed angle from u to v in (-pi, pi].
double angleBetween(DVector const& u, DVector const& v) {
    return std::atan2(u.cross(v), u.dot(v));
}

void appendLine(DPoint const& from, DPoint const& to, std::vector<CubicSegment>& out) {
    out.push_back({from, to, to});
}

int pieceCount(double sweep, double relativeTolerance) {
    double const quarter = kPi / 2.0;
    double maxDelta = quarter;
    if (relativeTolerance > 0.0) {
        maxDelta = std::min(quarter, std::pow(relativeTolerance / kPieceErrorFactor, 1.0 / 6.0));
    }
    double const pieces = std::ceil(std::fabs(sweep) / maxDelta - 1e-12);
    return static_cast<int>(std::clamp(pieces, 1.0, static_cast<double>(kMaxPieces)));
}

} // namespace

void appendArcCubics(EndpointArc const& arc, double tolerance, std::vector<CubicSegment>& out) {
    DPoint const& p0 = arc.from;
    DPoint const& p1 = arc.to;
    if (p0 == p1) {
        return;
    }
    double rx = std::fabs(arc.rx);
    double ry = std::fabs(arc.ry);
    double const phi = arc.rotationDegrees * (kPi / 180.0);
    bool const finite = std::isfinite(rx) && std::isfinite(ry) && std::isfinite(phi) && std::isfinite(p0.x) &&
                        std::isfinite(p0.y) && std::isfinite(p1.x) && std::isfinite(p1.y);
    if (!finite || rx == 0.0 || ry == 0.0) {
        appendLine(p0, p1, out);
        return;
    }
    double const cosPhi = std::cos(phi);
    double const sinPhi = std::sin(phi);

    // The half chord in the ellipse's own axes.
    double const hx = (p0.x - p1.x) / 2.0;
    double const hy = (p0.y - p1.y) / 2.0;
    double const x1 = cosPhi * hx + sinPhi * hy;
    double const y1 = -sinPhi * hx + cosPhi * hy;

    // lambda = (x1/rx)^2 + (y1/ry)^2 > 1 means the radii cannot span the chord: grow them until it lies on
    // a diameter. The ratios are scaled by the larger of them before squaring, so that neither huge radii
    // (ratios underflowing when squared) nor tiny ones (overflowing) lose the arc; root = sqrt(lambda).
    double const ax = x1 / rx, ay = y1 / ry;
    double const scale = std::max(std::fabs(ax), std::fabs(ay));
    if (!(scale > 0.0) || !std::isfinite(scale)) {
        // The chord is below the resolution of doubles against these radii, or beyond their range.
        appendLine(p0, p1, out);
        return;
    }
    double root = scale * std::sqrt((ax / scale) * (ax / scale) + (ay / scale) * (ay / scale));
    if (root > 1.0) {
        rx *= root;
        ry *= root;
        root = 1.0;
    }
    // The centre's offset along the ellipse's axes is coef (rx y1/ry, -ry x1/rx) with
    // coef = sqrt((1 - lambda) / lambda); coef times a ratio is at most about 1, so it is formed first.
    double const lambda = root * root; // may underflow to 0, which is harmless in 1 - lambda
    double coef = std::sqrt(std::max(0.0, 1.0 - lambda)) / root;
    if (arc.largeArc == arc.sweep) {
        coef = -coef;
    }
    double const cx1 = (coef * (y1 / ry)) * rx;
    double const cy1 = -(coef * (x1 / rx)) * ry;
    DPoint const centre(cosPhi * cx1 - sinPhi * cy1 + (p0.x + p1.x) / 2.0,
                        sinPhi * cx1 + cosPhi * cy1 + (p0.y + p1.y) / 2.0);

    // In unit-circle terms the end points are a - c and -a - c, with a the half chord and c the centre
    // offset, both measured in radii. The angle between them is taken from cross = 2 c x a and
    // dot = |c|^2 - |a|^2 rather than from the differences, which would round to one point when the
    // chord is tiny against the radii.
    DVector const a(x1 / rx, y1 / ry);
    DVector const c(cx1 / rx, cy1 / ry);
    DVector const u = a - c;
    double const theta = angleBetween(DVector(1.0, 0.0), u);
    double sweep = std::atan2(2.0 * c.cross(a), c.dot(c) - a.dot(a));
    if (!arc.sweep && sweep > 0.0) {
        sweep -= 2.0 * kPi;
    } else if (arc.sweep && sweep < 0.0) {
        sweep += 2.0 * kPi;
    }

    // Point and derivative of the ellipse at angle a: centre + R(phi) (rx cos a, ry sin a).
    auto pointAt = [&](double a) {
        double const ex = rx * std::cos(a);
        double const ey = ry * std::sin(a);
        return DPoint(centre.x + cosPhi * ex - sinPhi * ey, centre.y + sinPhi * ex + cosPhi * ey);
    };
    auto tangentAt = [&](double a) {
        double const ex = -rx * std::sin(a);
        double const ey = ry * std::cos(a);
        return DVector(cosPhi * ex - sinPhi * ey, sinPhi * ex + cosPhi * ey);
    };

    if (!std::isfinite(rx) || !std::isfinite(ry) || !std::isfinite(coef) || !std::isfinite(sweep)) {
        // Radii so lopsided (a ratio beyond the double range) that growing them overflows: the ellipse
        // is indistinguishable from its chord.
        appendLine(p0, p1, out);
        return;
    }
    int const n = pieceCount(sweep, tolerance);
    double const delta = sweep / n;
    double const k = 4.0 / 3.0 * std::tan(delta / 4.0);
    DPoint start = p0;
    for (int i = 0; i < n; ++i) {
        double const a0 = theta + delta * i;
        double const a1 = i + 1 == n ? theta + sweep : theta + delta * (i + 1);
        DPoint const end = i + 1 == n ? p1 : pointAt(a1);
        out.push_back({start + tangentAt(a0) * k, end - tangentAt(a1) * k, end});
        start = end;
    }
}

} // namespace sptool
