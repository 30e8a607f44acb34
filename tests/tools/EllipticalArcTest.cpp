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

    // Coordinates of (x, y) in the ellipse's own frame, scaled so the ellipse is the unit circle.
    void toUnit(Real x, Real y, Real& u, Real& v) const {
        Real const dx = x - cx, dy = y - cy;
        u = (std::cos(phi) * dx + std::sin(phi) * dy) / rx;
        v = (-std::sin(phi) * dx + std::cos(phi) * dy) / ry;
    }
    void point(Real a, Real& x, Real& y) const {
        Real const ex = rx * std::cos(a), ey = ry * std::sin(a);
        x = cx + std::cos(phi) * ex - std::sin(phi) * ey;
        y = cy + std::sin(phi) * ex + std::cos(phi) * ey;
    }
    // A bound on the distance from (x, y) to the ellipse: the point on the ellipse along the same ray from
    // the centre in the unit frame is |r - 1| unit radii away, and the map back stretches by max(rx, ry).
    Real distanceBound(Real x, Real y) const {
        Real u, v;
        toUnit(x, y, u, v);
        return std::fabs(std::hypot(u, v) - 1) * std::max(rx, ry);
    }
};

struct Measured {
    Real worstDistance = 0;
    Real coveredFrom = 0; // ellipse angles reached, unwrapped from the first sample
    Real coveredTo = 0;
    Real largestStep = 0; // largest angle between consecutive samples
    std::size_t pieces = 0;
};

// Samples the cubics densely in long double and measures them against the ellipse.
Measured measure(Ellipse const& e, DPoint from, std::vector<CubicSegment> const& cubics) {
    Measured m;
    m.pieces = cubics.size();
    Real previousAngle = 0;
    bool first = true;
    DPoint p0 = from;
    for (CubicSegment const& c : cubics) {
        for (int k = 0; k <= 64; ++k) {
            Real const t = k / 64.0L, s = 1 - t;
            Real const x =
                s * s * s * p0.x + 3 * s * s * t * c[0].x + 3 * s * t * t * c[1].x + t * t * t * c[2].x;
            Real const y =
                s * s * s * p0.y + 3 * s * s * t * c[0].y + 3 * s * t * t * c[1].y + t * t * t * c[2].y;
            m.worstDistance = std::max(m.worstDistance, e.distanceBound(x, y));
            Real u, v;
            e.toUnit(x, y, u, v);
            Real angle = std::atan2(v, u);
            if (first) {
                m.coveredFrom = m.coveredTo = previousAngle = angle;
                first = false;
                continue;
            }
            Real step = angle - previousAngle;
            step -= 2 * kPi * std::round(step / (2 * kPi));
            m.largestStep = std::max(m.largestStep, std::fabs(step));
            m.coveredTo += step;
            previousAngle = angle;
        }
        p0 = c[2];
    }
    return m;
}

// Converts the arc and checks the cubics against the true ellipse: within the tolerance everywhere, ending
// exactly on the end point, running the right way round through `turn` without jumps, and with no piece
// spanning more than a quarter turn.
void expectTraces(EndpointArc const& arc, Ellipse const& e, Real turn) {
    std::vector<CubicSegment> cubics;
    appendArcCubics(arc, kArcTolerance, cubics);
    ASSERT_FALSE(cubics.empty());
    EXPECT_EQ(cubics.back()[2], arc.to);
    Measured const m = measure(e, arc.from, cubics);
    EXPECT_LE(m.worstDistance, 1e-6L)
        << "rx " << arc.rx << " large " << arc.largeArc << " sweep " << arc.sweep;
    EXPECT_NEAR(static_cast<double>(m.coveredTo - m.coveredFrom), static_cast<double>(turn), 1e-6);
    EXPECT_LT(m.largestStep, 0.05L);
    EXPECT_GE(m.pieces * (kPi / 2) + 1e-9L, std::fabs(turn));
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
        {{-3, 7, 0.05, 0.2, -1.1}, 2.5, -1.2 * kPi},
        {{500, 500, 1000, 400, kPi / 5}, -1.0, 0.7},
        {{0, 0, 250000, 100, 0}, kPi, -0.9 * kPi},
        {{1e3, -1e3, 3e4, 2e4, 2.0}, 0.4, 1.5 * kPi},
    };
    for (Case const& c : cases) {
        Real x0, y0, x1, y1;
        c.e.point(c.startAngle, x0, y0);
        c.e.point(c.startAngle + c.sweep, x1, y1);
        EndpointArc const arc{DPoint(static_cast<double>(x0), static_cast<double>(y0)),
                              static_cast<double>(c.e.rx),
                              static_cast<double>(c.e.ry),
                              static_cast<double>(c.e.phi * 180 / kPi),
                              std::fabs(c.sweep) > kPi,
                              c.sweep > 0,
                              DPoint(static_cast<double>(x1), static_cast<double>(y1))};
        expectTraces(arc, c.e, c.sweep);
    }
    // Radius 1 cannot span a chord of 10: the radii grow until the chord is a diameter, and sweep flag 1
    // turns the positive way, through negative y.
    expectTraces({DPoint(0, 0), 1, 1, 0, false, true, DPoint(10, 0)}, {5, 0, 5, 5, 0}, kPi);
    // The flags choose among the four unit-radius arcs from (0,0) to (1,1), on circles about (1,0) and (0,1).
    expectTraces({DPoint(0, 0), 1, 1, 0, false, false, DPoint(1, 1)}, {1, 0, 1, 1, 0}, -kPi / 2);
    expectTraces({DPoint(0, 0), 1, 1, 0, false, true, DPoint(1, 1)}, {0, 1, 1, 1, 0}, kPi / 2);
    expectTraces({DPoint(0, 0), 1, 1, 0, true, false, DPoint(1, 1)}, {0, 1, 1, 1, 0}, -1.5 * kPi);
    expectTraces({DPoint(0, 0), 1, 1, 0, true, true, DPoint(1, 1)}, {1, 0, 1, 1, 0}, 1.5 * kPi);
}

TEST(EllipticalArc, DegenerateArcsFollowTheRulesOfPathData) {
    std::vector<CubicSegment> cubics;
    appendArcCubics({DPoint(1, 1), 5, 5, 0, false, true, DPoint(1, 1)}, kArcTolerance, cubics);
    EXPECT_TRUE(cubics.empty());
    for (double rx : {0.0, std::nan(""), HUGE_VAL}) {
        cubics.clear();
        appendArcCubics({DPoint(0, 0), rx, 5, 0, false, true, DPoint(3, 4)}, kArcTolerance, cubics);
        EXPECT_EQ(cubics, (std::vector<CubicSegment>{{DPoint(0, 0), DPoint(3, 4), DPoint(3, 4)}})) << rx;
    }
    // Negative radii count as positive.
    std::vector<CubicSegment> negative, positive;
    appendArcCubics({DPoint(0, 0), -4, -2, 10, true, false, DPoint(3, 1)}, kArcTolerance, negative);
    appendArcCubics({DPoint(0, 0), 4, 2, 10, true, false, DPoint(3, 1)}, kArcTolerance, positive);
    EXPECT_EQ(negative, positive);
}

TEST(EllipticalArc, CirclesAndEllipsesOfADocumentStayWithinToleranceAfterItsTransforms) {
    // A unit-sized ellipse scaled by 1000: the pieces must be chosen for the scaled size.
    struct Case {
        char const* element;
        Ellipse e;
    } const cases[] = {
        {R"x(<ellipse cx="1" cy="2" rx="1" ry="0.5" transform="scale(1000)"/>)x", {1000, 2000, 1000, 500, 0}},
        {R"(<circle cx="5" cy="5" r="2"/>)", {5, 5, 2, 2, 0}},
    };
    for (Case const& c : cases) {
        SvgReadResult const doc = readSvgDocument(std::string("<svg>") + c.element + "</svg>");
        ASSERT_EQ(doc.document.chains.size(), 1u) << c.element << doc.error;
        CubicChain const& chain = doc.document.chains[0];
        EXPECT_TRUE(chain.closed);
        Measured const m = measure(c.e, chain.start, chain.segments);
        EXPECT_LE(m.worstDistance, 1e-6L) << c.element;
        EXPECT_NEAR(static_cast<double>(m.coveredTo - m.coveredFrom), static_cast<double>(2 * kPi), 1e-6);
    }
}
