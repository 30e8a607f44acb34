#include "toolkit/EllipticalArc.h"
#include "toolkit/PathDataParser.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace sptool;

namespace {

using Real = long double;
constexpr Real kPi = 3.141592653589793238462643383279502884L;

// An ellipse in centre form, the reference the converted cubics are measured against.
struct Ellipse {
    Real cx, cy, rx, ry, phi;

    // Coordinates of p in the ellipse's own frame, scaled so the ellipse is the unit circle.
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
    // Distance from (x, y) to the ellipse. The point's angle in the unit-circle frame starts a golden-section
    // search for the closest ellipse angle; a point near the ellipse has its closest angle within a hair of
    // that start, and a search that misses it can only overstate the distance.
    Real distanceTo(Real x, Real y) const {
        auto d2 = [&](Real a) {
            Real px, py;
            point(a, px, py);
            return (px - x) * (px - x) + (py - y) * (py - y);
        };
        Real u, v;
        toUnit(x, y, u, v);
        Real const start = std::atan2(v, u);
        Real lo = start - 1e-3L, hi = start + 1e-3L;
        Real const g = (std::sqrt(5.0L) - 1) / 2;
        for (int it = 0; it < 60; ++it) {
            Real const m1 = hi - g * (hi - lo), m2 = lo + g * (hi - lo);
            if (d2(m1) < d2(m2)) {
                hi = m2;
            } else {
                lo = m1;
            }
        }
        return std::sqrt(std::min(d2((lo + hi) / 2), d2(start)));
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
            m.worstDistance = std::max(m.worstDistance, e.distanceTo(x, y));
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

struct ArcCase {
    Ellipse e;
    Real startAngle;
    Real sweep; // signed, |sweep| < 2 pi
};

} // namespace

TEST(EllipticalArc, StaysWithinToleranceOfTheTrueArcAndCoversIt) {
    ArcCase const cases[] = {
        {{0, 0, 1, 1, 0}, 0, kPi / 2},
        {{10, -5, 40, 15, 0.3}, 0.2, 1.9 * kPi},
        {{-3, 7, 0.05, 0.2, -1.1}, 2.5, -1.2 * kPi},
        {{500, 500, 1000, 400, kPi / 5}, -1.0, 0.7},
        {{0, 0, 250000, 100, 0}, kPi, -0.9 * kPi},
        {{1e3, -1e3, 3e4, 2e4, 2.0}, 0.4, 1.5 * kPi},
    };
    for (ArcCase const& c : cases) {
        Real x0, y0, x1, y1;
        c.e.point(c.startAngle, x0, y0);
        c.e.point(c.startAngle + c.sweep, x1, y1);
        EndpointArc arc;
        arc.from = DPoint(static_cast<double>(x0), static_cast<double>(y0));
        arc.to = DPoint(static_cast<double>(x1), static_cast<double>(y1));
        arc.rx = static_cast<double>(c.e.rx);
        arc.ry = static_cast<double>(c.e.ry);
        arc.rotationDegrees = static_cast<double>(c.e.phi * 180 / kPi);
        arc.largeArc = std::fabs(c.sweep) > kPi;
        arc.sweep = c.sweep > 0;
        std::vector<CubicSegment> cubics;
        appendArcCubics(arc, kArcTolerance, cubics);
        ASSERT_FALSE(cubics.empty());
        EXPECT_EQ(cubics.back()[2], arc.to);

        Measured const m = measure(c.e, arc.from, cubics);
        EXPECT_LE(m.worstDistance, 1e-6L) << "rx " << static_cast<double>(c.e.rx);
        // The cubics run the right way round the right arc, without jumps.
        EXPECT_NEAR(static_cast<double>(m.coveredTo - m.coveredFrom), static_cast<double>(c.sweep), 1e-6);
        EXPECT_LT(m.largestStep, 0.05L);
        // No piece spans more than a quarter turn.
        EXPECT_GE(m.pieces * (kPi / 2) + 1e-9L, std::fabs(c.sweep));
    }
}

TEST(EllipticalArc, RadiiTooSmallAreScaledUpToAHalfEllipse) {
    // Radius 1 cannot span a chord of 10: the radii grow until the chord is a diameter of the scaled ellipse.
    std::vector<CubicSegment> cubics;
    appendArcCubics({DPoint(0, 0), 1, 1, 0, false, true, DPoint(10, 0)}, kArcTolerance, cubics);
    Ellipse const halfCircle{5, 0, 5, 5, 0};
    Measured const m = measure(halfCircle, DPoint(0, 0), cubics);
    EXPECT_LE(m.worstDistance, 1e-6L);
    EXPECT_NEAR(static_cast<double>(m.coveredTo - m.coveredFrom), static_cast<double>(kPi), 1e-6);
    // Sweep flag 1 from (0,0) to (10,0) turns through negative y (positive angle direction).
    EXPECT_LT(cubics.front()[2].y, 0.0);
}

TEST(EllipticalArc, FlagsChooseAmongTheFourArcs) {
    // Unit-radius arcs from (0,0) to (1,1): the two circles have centres (1,0) and (0,1).
    struct Case {
        bool large, sweep;
        double cx, cy;
        double turn;
    } const cases[] = {{false, false, 1, 0, -kPi / 2},
                       {false, true, 0, 1, kPi / 2},
                       {true, false, 0, 1, -1.5 * kPi},
                       {true, true, 1, 0, 1.5 * kPi}};
    for (Case const& c : cases) {
        std::vector<CubicSegment> cubics;
        appendArcCubics({DPoint(0, 0), 1, 1, 0, c.large, c.sweep, DPoint(1, 1)}, kArcTolerance, cubics);
        Measured const m = measure({c.cx, c.cy, 1, 1, 0}, DPoint(0, 0), cubics);
        EXPECT_LE(m.worstDistance, 1e-6L) << c.large << c.sweep;
        EXPECT_NEAR(static_cast<double>(m.coveredTo - m.coveredFrom), c.turn, 1e-6) << c.large << c.sweep;
    }
}

TEST(EllipticalArc, DegenerateArcsFollowTheRulesOfPathData) {
    std::vector<CubicSegment> cubics;
    appendArcCubics({DPoint(1, 1), 5, 5, 0, false, true, DPoint(1, 1)}, kArcTolerance, cubics);
    EXPECT_TRUE(cubics.empty());
    for (double rx : {0.0, std::nan(""), HUGE_VAL}) {
        cubics.clear();
        appendArcCubics({DPoint(0, 0), rx, 5, 0, false, true, DPoint(3, 4)}, kArcTolerance, cubics);
        ASSERT_EQ(cubics.size(), 1u);
        EXPECT_EQ(cubics[0][0], DPoint(0, 0));
        EXPECT_EQ(cubics[0][1], DPoint(3, 4));
    }
    // Negative radii count as positive.
    std::vector<CubicSegment> negative, positive;
    appendArcCubics({DPoint(0, 0), -4, -2, 10, true, false, DPoint(3, 1)}, kArcTolerance, negative);
    appendArcCubics({DPoint(0, 0), 4, 2, 10, true, false, DPoint(3, 1)}, kArcTolerance, positive);
    EXPECT_EQ(negative, positive);
}
