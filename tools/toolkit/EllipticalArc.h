#pragma once

#include "toolkit/CubicChain.h"

#include <vector>

namespace sptool {

// The largest distance that the cubics of a converted arc keep from the true ellipse, as a fraction of
// the ellipse's larger radius: a small drawing keeps the same relative accuracy as a large one. At this
// tolerance the length of a converted circle is within 1e-9 of the true length, relatively.
constexpr double kArcTolerance = 1e-10;

// An elliptical arc in the endpoint form of SVG path data: from the current point to `to` on an ellipse
// with radii rx, ry whose x axis is rotated by `rotationDegrees`, choosing between the four candidate
// arcs with the large-arc and sweep flags.
struct EndpointArc {
    DPoint from;
    double rx = 0.0;
    double ry = 0.0;
    double rotationDegrees = 0.0;
    bool largeArc = false;
    bool sweep = false;
    DPoint to;
};

// Appends cubic segments that follow the arc to `out`.
//
// Method: the endpoint form is turned into centre form (centre, start angle, sweep) the way SVG renderers
// do it; radii too small to reach between the end points are scaled up uniformly until they just do.
// The sweep is then cut into n equal pieces, each drawn as the cubic whose handles are tangent to the
// ellipse with length 4/3 tan(delta/4) of the radius vector. For a unit circle that cubic stays within
// e(delta) <= 2e-5 * delta^6 of the circle (the true maximum is delta^6 / 55296 for small delta and
// 2.73e-4 at 90 degrees); the ellipse is the image of the circle under a linear map of norm max(rx, ry),
// so the distance to the ellipse is at most max(rx, ry) * e(delta). `tolerance` is relative to max(rx, ry),
// so n is the smallest count that keeps e(delta) below it and every piece at or under 90 degrees: it
// depends on the sweep alone (a full turn takes 48 pieces at the default tolerance).
//
// Huge radii against a short chord (1e200 and up) are handled without squaring them: the chord is
// measured in radii, scaled by its larger component before that is squared, so a large arc on such an
// ellipse is still drawn round the ellipse instead of collapsing into its chord.
// The first piece starts and the last piece ends exactly on the given end points.
//
// Degenerate arcs follow SVG: equal end points draw nothing; a zero radius draws a straight line;
// negative radii count as their absolute values. Non-finite input draws a straight line.
void appendArcCubics(EndpointArc const& arc, double tolerance, std::vector<CubicSegment>& out);

} // namespace sptool
