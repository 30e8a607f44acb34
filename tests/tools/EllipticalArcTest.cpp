#include "toolkit/EllipticalArc.h"
#include "toolkit/SvgDocument.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

using namespace sptool;

namespace {

using Real = long double;
constexpr Real kPi = 3.141592653589793238462643383279502884L;

// An ellipse in centre form, the reference the converted cubics are measured against.
struct Ellipse {
    Real cx, cy, rx, ry, phi;
    DPoint at(Real a) const {
        Real const ex = rx * std::cos(a), ey = ry * std::sin(a);
        return DPoint(double(cx + std::cos(phi) * ex - std::sin(phi) * ey),
                      double(cy + std::sin(phi) * ex + std::cos(phi) * ey));
    }
};

// Samples the cubics densely and checks them against the ellipse: within the tolerance everywhere, running
// the right way round through `turn` without jumps, and no piece spanning more than a quarter turn. The
// distance is bounded through the unit frame: the point of the ellipse on the same ray from the centre is
// |r - 1| unit radii away, and the map back stretches by at most max(rx, ry).
void expectOnEllipse(Ellipse const& e, DPoint p0, std::vector<CubicSegment> const& cubics, Real turn) {
    Real worst = 0, covered = 0, largestStep = 0, previous = 0;
    for (std::size_t i = 0; i < cubics.size(); p0 = cubics[i++][2]) {
        for (int k = 0; k <= 64; ++k) {
            DPoint const p = cubicPoint(p0, cubics[i], k / 64.0);
            // Coordinates in the ellipse's own frame, scaled so the ellipse is the unit circle.
            Real const dx = p.x - e.cx, dy = p.y - e.cy;
            Real const u = (std::cos(e.phi) * dx + std::sin(e.phi) * dy) / e.rx;
            Real const v = (-std::sin(e.phi) * dx + std::cos(e.phi) * dy) / e.ry;
            worst = std::max(worst, std::fabs(std::hypot(u, v) - 1) * std::max(e.rx, e.ry));
            Real const angle = std::atan2(v, u);
            if (i > 0 || k > 0) {
                Real const step = std::remainder(angle - previous, 2 * kPi);
                largestStep = std::max(largestStep, std::fabs(step));
                covered += step;
            }
            previous = angle;
        }
    }
    // The tolerance is relative to the larger radius; the slack covers the rounding of the coordinates.
    EXPECT_LE(worst, (kArcTolerance + 1e-14) * std::max(e.rx, e.ry)) << "rx " << static_cast<double>(e.rx);
    EXPECT_NEAR(static_cast<double>(covered), static_cast<double>(turn), 1e-6);
    EXPECT_LT(largestStep, 0.05L);
    EXPECT_GE(cubics.size() * (kPi / 2) + 1e-9L, std::fabs(turn));
}

// Converts the arc, which must end exactly on its end point and trace the ellipse through `turn`.
void expectTraces(EndpointArc const& arc, Ellipse const& e, Real turn) {
    std::vector<CubicSegment> cubics;
    appendArcCubics(arc, kArcTolerance, cubics);
    ASSERT_FALSE(cubics.empty());
    EXPECT_EQ(cubics.back()[2], arc.to);
    expectOnEllipse(e, arc.from, cubics, turn);
}

} // namespace

TEST(EllipticalArc, StaysWithinToleranceOfTheTrueArcAndCoversIt) {
    struct Case {
        Ellipse e;
        Real startAngle;
        Real sweep; // signed, |sweep| < 2 pi
    } const cases[] = {
        {{0, 0, 1, 1, 0}, 0, kPi / 2},
        {{10, -5, 40, 15, 0.3}, 0.2, 1.9 * kPi},
        {{0, 0, 250000, 100, 0}, kPi, -0.9 * kPi},
    };
    for (Case const& c : cases) {
        expectTraces({c.e.at(c.startAngle), static_cast<double>(c.e.rx), static_cast<double>(c.e.ry),
                      static_cast<double>(c.e.phi * 180 / kPi), std::fabs(c.sweep) > kPi, c.sweep > 0,
                      c.e.at(c.startAngle + c.sweep)},
                     c.e, c.sweep);
    }
    // Radius 1 cannot span a chord of 10: the radii grow until the chord is a diameter, and sweep flag 1
    // turns the positive way, through negative y. Negative radii count as positive.
    expectTraces({DPoint(0, 0), -1, 1, 0, false, true, DPoint(10, 0)}, {5, 0, 5, 5, 0}, kPi);
    // The flags choose among the four unit-radius arcs from (0,0) to (1,1), on circles about (1,0) and (0,1).
    expectTraces({DPoint(0, 0), 1, 1, 0, false, false, DPoint(1, 1)}, {1, 0, 1, 1, 0}, -kPi / 2);
    expectTraces({DPoint(0, 0), 1, 1, 0, true, false, DPoint(1, 1)}, {0, 1, 1, 1, 0}, -1.5 * kPi);
    // Equal end points draw nothing; a zero or NaN radius draws the chord.
    std::vector<CubicSegment> cubics;
    appendArcCubics({DPoint(1, 1), 5, 5, 0, false, true, DPoint(1, 1)}, kArcTolerance, cubics);
    EXPECT_TRUE(cubics.empty());
    appendArcCubics({DPoint(0, 0), std::nan(""), 5, 0, false, true, DPoint(3, 4)}, kArcTolerance, cubics);
    EXPECT_EQ(cubics, (std::vector<CubicSegment>{{DPoint(0, 0), DPoint(3, 4), DPoint(3, 4)}}));
    // A unit-sized ellipse of a document scaled by 1000: the pieces must be chosen for the scaled size.
    SvgReadResult const doc =
        readSvgDocument(R"x(<svg><ellipse cx="1" cy="2" rx="1" ry="0.5" transform="scale(1000)"/></svg>)x");
    ASSERT_EQ(doc.document.chains.size(), 1u) << doc.error;
    CubicChain const& chain = doc.document.chains[0];
    EXPECT_TRUE(chain.closed);
    expectOnEllipse({1000, 2000, 1000, 500, 0}, chain.start, chain.segments, 2 * kPi);
}
