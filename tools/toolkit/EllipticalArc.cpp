#include "toolkit/EllipticalArc.h"

#include <algorithm>
#include <cmath>

namespace sptool {
namespace {

constexpr double kPi = 3.14159265358979323846;
// Bound on the unit-circle error of one piece divided by delta^6 (measured maximum 1.815e-5 up to 90°).
constexpr double kPieceErrorFactor = 2e-5;
constexpr int kMaxPieces = 1024;

// Signed angle from u to v in (-pi, pi].
double angleBetween(DVector const& u, DVector const& v) {
    return std::atan2(u.cross(v), u.dot(v));
}

void appendLine(DPoint const& from, DPoint const& to, std::vector<CubicSegment>& out) {
    out.push_back({from, to, to});
}

int pieceCount(double sweep, double radius, double tolerance) {
    double const quarter = kPi / 2.0;
    double maxDelta = quarter;
    if (radius > 0.0 && tolerance > 0.0) {
        maxDelta = std::min(quarter, std::pow(tolerance / (kPieceErrorFactor * radius), 1.0 / 6.0));
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

    // lambda > 1 means the radii cannot span the chord: grow them until it lies on a diameter. Working with
    // the ratios x1/rx, y1/ry keeps the squares clear of overflow for large radii.
    double lambda = (x1 / rx) * (x1 / rx) + (y1 / ry) * (y1 / ry);
    if (!(lambda > 0.0)) {
        // The chord is below the resolution of doubles against these radii.
        appendLine(p0, p1, out);
        return;
    }
    if (lambda > 1.0) {
        double const grow = std::sqrt(lambda);
        rx *= grow;
        ry *= grow;
        lambda = 1.0;
    }
    double coef = std::sqrt(std::max(0.0, (1.0 - lambda) / lambda));
    if (arc.largeArc == arc.sweep) {
        coef = -coef;
    }
    double const cx1 = coef * rx * (y1 / ry);
    double const cy1 = -coef * ry * (x1 / rx);
    DPoint const centre(cosPhi * cx1 - sinPhi * cy1 + (p0.x + p1.x) / 2.0,
                        sinPhi * cx1 + cosPhi * cy1 + (p0.y + p1.y) / 2.0);

    DVector const u((x1 - cx1) / rx, (y1 - cy1) / ry);
    DVector const v((-x1 - cx1) / rx, (-y1 - cy1) / ry);
    double const theta = angleBetween(DVector(1.0, 0.0), u);
    double sweep = angleBetween(u, v);
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
    int const n = pieceCount(sweep, std::max(rx, ry), tolerance);
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
