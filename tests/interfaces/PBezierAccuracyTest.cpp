// Accuracy of the Bezier kernel against independent references: dense sampling refined in long double.

#include "simplepath/interfaces/PBezier.h"
#include "simplepath/interfaces/Tolerance.h"

#include <gtest/gtest.h>

#include "support/BezierReference.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <random>
#include <sstream>
#include <vector>

namespace {

using support::LD;
using support::LPoint;
using support::speed;

LPoint at(PBezier const& b, LD t) {
    return support::evaluate(b, t);
}

std::string describe(PBezier const& b) {
    std::ostringstream out;
    out.precision(17);
    for (int i = 0; i < 4; ++i) {
        out << " " << b[i].x << "," << b[i].y;
    }
    return out.str();
}

// The larger side of the control points' box.
double size(PBezier const& b) {
    auto const [x0, x1] = std::minmax({b[0].x, b[1].x, b[2].x, b[3].x});
    auto const [y0, y1] = std::minmax({b[0].y, b[1].y, b[2].y, b[3].y});
    return std::max(x1 - x0, y1 - y0);
}

// Random curves of size about 1000, one in ten of them far from the origin.
std::vector<PBezier> randomCurves(int count, unsigned seed) {
    std::mt19937_64 rng(seed);
    std::uniform_real_distribution<double> u(-500.0, 500.0);
    std::vector<PBezier> out;
    for (int i = 0; i < count; ++i) {
        DVector const off = i % 10 == 7 ? DVector(1e6, -3e6) : DVector();
        out.push_back({DPoint{u(rng), u(rng)} + off, DPoint{u(rng), u(rng)} + off,
                       DPoint{u(rng), u(rng)} + off,
                       DPoint{u(rng), u(rng)} + off}); // braces: the draws in order
    }
    return out;
}

// Hand-picked hard shapes: loops, cusps, near-cusps, collinear doubling back, coincident controls, flat.
std::vector<PBezier> hardCurves() {
    return {
        {{0, 0}, {1000, 1000}, {0, 1000}, {1000, 0}},     // symmetric loop: ties between its halves
        {{0, 0}, {1000, 600}, {0, 600}, {1000, 0}},       // cusp (B' vanishes)
        {{0, 0}, {1000, 600}, {0, 600.001}, {1000, 0}},   // near-cusp
        {{0, 0}, {1000, 0}, {-500, 0}, {600, 0}},         // collinear, doubling back twice
        {{0, 0}, {0, 0}, {1000, 1000}, {1000, 1000}},     // coincident controls at both ends
        {{300, 300}, {300, 300}, {300, 300}, {300, 300}}, // a point
        {{0, 0}, {333, 1e-9}, {667, -1e-9}, {1000, 0}},   // nearly flat
        {{1e9, 1e9}, {1e9 + 300, 1e9 + 900}, {1e9 + 800, 1e9 - 200}, {1e9 + 1000, 1e9}}, // far away
        {{-1e9, 0}, {1e9, 2e9}, {-1e9, 2e9}, {1e9, 0}},                                  // huge
    };
}

// The random curves followed by the hard ones.
std::vector<PBezier> curves(int count, unsigned seed) {
    std::vector<PBezier> out = randomCurves(count, seed), hard = hardCurves();
    out.insert(out.end(), hard.begin(), hard.end());
    return out;
}

TEST(PBezierAccuracy, NearestPointIsTheGlobalMinimum) {
    std::mt19937_64 rng(11);
    std::uniform_real_distribution<double> u(-0.3, 1.3);
    std::uniform_real_distribution<double> t01(0.0, 1.0);
    std::vector<PBezier> all = curves(300, 1);
    for (PBezier const& b : all) {
        double const s = size(b);
        // Around the curve, on it, and inside a loop or near a cusp.
        DPoint const o = b[0];
        std::vector<DPoint> probes{o + DVector((u(rng) - 0.3) * s * 2, (u(rng) - 0.3) * s * 2),
                                   b.bValue(t01(rng)), o + 0.5 * ((b[1] - o) + (b[2] - o))};
        // At and near a centre of curvature the distance's slope has a double zero: the subdivision cannot
        // separate its zeros and hands the piece to the cascade.
        DVector const v = b.derivative(0.37);
        DVector const acc =
            6.0 * ((b[2] - b[1]) - (b[1] - b[0])) * 0.63 + 6.0 * ((b[3] - b[2]) - (b[2] - b[1])) * 0.37;
        double const cross = v.x * acc.y - v.y * acc.x;
        if (std::fabs(cross) > 1e-9 * v.squaredLength() * v.length() / (s > 0 ? s : 1.0)) {
            DPoint const centre = b.bValue(0.37) + v.ortho() * (v.squaredLength() / cross);
            probes.push_back(centre);
            probes.push_back(centre + v * (1e-7 / v.length()));
        }
        for (DPoint const& p : probes) {
            double const t = b.findNearestPointTValue(p);
            ASSERT_TRUE(t >= 0.0 && t <= 1.0) << t;
            LD const found = std::sqrt(support::squaredDistanceTo(b, t, p));
            LD const truth =
                std::sqrt(support::minimumOver([&](LD x) { return support::squaredDistanceTo(b, x, p); }));
            EXPECT_LE(double((found - truth) / (s > 0 ? s : 1.0)), 1e-12)
                << describe(b) << " p " << p.x << "," << p.y;
        }
    }
}

TEST(PBezierAccuracy, FindParameterHonoursTheTolerance) {
    PBezier const b{{0, 0}, {100, 200}, {300, 200}, {400, 0}};
    DPoint const off = b.bValue(0.3) + b.derivative(0.3).ortho().normalized() * 2.0;
    EXPECT_EQ(b.findParameter(off, 0.5, 1.999), -1.0);
    EXPECT_NEAR(b.findParameter(off, 0.5, 2.001), 0.3, 1e-6);
}

// Reference arc length: adaptive Simpson in long double to 1e-15 of the length.
LD simpson(PBezier const& b, LD a, LD c, LD fa, LD fm, LD fc, LD whole, LD tol, int depth) {
    LD const m = (a + c) / 2, l = (a + m) / 2, r = (m + c) / 2;
    LD const fl = speed(b, l), fr = speed(b, r);
    LD const left = (m - a) / 6 * (fa + 4 * fl + fm), right = (c - m) / 6 * (fm + 4 * fr + fc);
    if (depth > 40 || std::fabs(left + right - whole) <= 15 * tol) {
        return left + right + (left + right - whole) / 15;
    }
    return simpson(b, a, m, fa, fl, fm, left, tol / 2, depth + 1) +
           simpson(b, m, c, fm, fr, fc, right, tol / 2, depth + 1);
}

LD referenceLength(PBezier const& b) {
    LD total = 0;
    for (int i = 0; i < 8; ++i) { // panels keep the recursion shallow
        LD const a = LD(i) / 8, c = LD(i + 1) / 8, fa = speed(b, a), fc = speed(b, c),
                 fm = speed(b, (a + c) / 2);
        LD const whole = (c - a) / 6 * (fa + 4 * fm + fc);
        total += simpson(b, a, c, fa, fm, fc, whole, 1e-16L * size(b), 0);
    }
    return total;
}

// The cubic from the origin whose hodograph x' + i y' is e2 (t - z1)(t - z2).
PBezier withHodographZeros(std::complex<double> z1, std::complex<double> z2, std::complex<double> e2) {
    std::complex<double> const e1 = -e2 * (z1 + z2), e0 = e2 * z1 * z2;
    std::complex<double> const d0 = e0 / 3.0, d1 = d0 + e1 / 6.0, d2 = e2 / 3.0 + 2.0 * d1 - d0;
    std::complex<double> const p1 = d0, p2 = p1 + d1, p3 = p2 + d2;
    return {{0, 0}, {p1.real(), p1.imag()}, {p2.real(), p2.imag()}, {p3.real(), p3.imag()}};
}

void expectLengthWithin1e12(PBezier const& b) {
    LD const truth = referenceLength(b), len = b.length();
    EXPECT_LE(truth > 0 ? double(std::fabs(len - truth) / truth) : double(len), 1e-12) << describe(b);
}

TEST(PBezierAccuracy, LengthIsWithin1e12Relative) {
    std::vector<PBezier> all = curves(150, 2);
    // Every rule at the edge of what it is trusted with: zeros of the hodograph just outside the Bernstein
    // ellipse of [0, 1] at which the routine takes the rule of n points, alone or with a second one as near,
    // above the middle and towards an end; inside the last rule's ellipse, where [0, 1] is cut into pieces;
    // a near-cusp; and a hodograph whose quadratic coefficient underflows once scaled.
    for (int n = 4; n <= 68; n += 4) { // the routine trusts n points where rho^-2n <= n e^-30
        double const a = n <= 64 ? std::cosh((30 - std::log(n)) / (2.0 * n)) * (1 + 1e-9) : 1.015;
        double const major = a / 2, minor = std::sqrt(major * major - 0.25); // a = |z| + |z - 1|
        for (double f : {0.0, 0.6, 0.95}) { // z on the ellipse, f of the way from its top to its end
            std::complex<double> const z(0.5 + f * major, minor * std::sqrt(1 - f * f));
            all.push_back(withHodographZeros(z, {4.0, 3.0}, {900.0, -400.0}));
            all.push_back(withHodographZeros(z, {1.0 - z.real(), z.imag()}, {-300.0, 1000.0}));
            all.push_back(withHodographZeros(z, {1.0 - z.real(), -z.imag()}, {-300.0, 1000.0}));
        }
    }
    all.push_back(withHodographZeros({0.3, 1e-4}, {0.8, -1e-4}, {1000.0, 200.0}));
    all.push_back({{0, 0}, {0, 0}, {1, 0}, {3, 1e-200}});
    all.push_back({{0, 0}, {15, 0}, {5, 0}, {10, 0}}); // straight, turning back
    for (PBezier const& b : all) {
        expectLengthWithin1e12(b);
    }
}

TEST(PBezierAccuracy, ExtremesAreTheCurvesNotThePolygons) {
    std::vector<PBezier> all = curves(300, 3);
    for (PBezier const& b : all) {
        double box[4] = {1e300, 1e300, -1e300, -1e300}; // min x, min y, max x, max y
        b.localMinMax(box[0], box[1], box[2], box[3]);
        DPoint top, bottom;
        b.localTopBottom(top, bottom);
        double const tol =
            1e-12 * std::max(1.0, size(b)) + 1e-15 * std::fabs(b[0].x) + 1e-15 * std::fabs(b[0].y);
        for (int k = 0; k < 4; ++k) {
            LD const sign = k < 2 ? 1 : -1;
            double const want = double(
                sign * support::minimumOver([&](LD t) { return sign * (k % 2 ? at(b, t).y : at(b, t).x); }));
            EXPECT_NEAR(box[k], want, tol) << describe(b) << " bound " << k;
            if (k % 2) {
                EXPECT_NEAR(k < 2 ? bottom.y : top.y, want, tol) << describe(b);
            }
        }
    }
}

// Reference crossings: sign changes on a dense grid, bisected in long double.
std::vector<LD> referenceCrossings(PBezier const& b) {
    std::vector<LD> out;
    auto y = [&](LD t) { return t == 1 ? LD(b[3].y) : at(b, t).y; };
    for (int i = 0, n = 4096; i <= n; ++i) {
        LD a = LD(i - 1) / n, c = LD(i) / n;
        if (y(c) == 0) {
            out.push_back(c);
        } else if (i > 0 && y(a) != 0 && (y(a) < 0) != (y(c) < 0)) {
            for (int k = 0; k < 80; ++k) {
                LD const m = (a + c) / 2;
                ((y(m) < 0) == (y(a) < 0) ? a : c) = m;
            }
            out.push_back((a + c) / 2);
        }
    }
    return out;
}

// The crossings must be the wanted ones, each once and in order, appended after what the vector held.
void expectCrossings(PBezier const& b, std::vector<LD> const& want, double tolerance) {
    std::vector<double> got{-1.0};
    intersectBezierWithXAxis(b, got);
    ASSERT_EQ(got.size(), want.size() + 1) << describe(b);
    EXPECT_EQ(got[0], -1.0);
    for (std::size_t i = 0; i < want.size(); ++i) {
        EXPECT_NEAR(got[i + 1], double(want[i]), tolerance) << describe(b);
        EXPECT_LT(got[i], got[i + 1]) << describe(b);
    }
}

TEST(PBezierAccuracy, AxisCrossingsAreAllFoundOnce) {
    std::vector<PBezier> all = randomCurves(800, 4);
    for (PBezier& b : all) {
        for (int k = 0; k < 4; ++k) {
            b[k].y += b[k].y < -1e6 ? 3e6 : 0; // bring the far ones back to the axis
        }
    }
    // Touching at the start and crossing later (reported once); a control value of zero; nearly flat.
    all.insert(all.end(), {{{0, 0}, {1, 0}, {2, -3}, {3, 5}},
                           {{0, -0.5}, {1, 0}, {2, 0.5}, {3, 0.5}},
                           {{0, -1e-9}, {1, 3e-9}, {2, -3e-9}, {3, 1e-9}}});
    for (PBezier const& b : all) {
        expectCrossings(b, referenceCrossings(b), 1e-12);
    }
    // Tangencies, which no sign change reveals: y = 3 (2t - 1)^2 has a double root at 1/2, reported once;
    // y = 3 (2t - 1)^2 - 3e-8 two crossings closing in on it, at 1/2 +- 1e-4/2.
    expectCrossings({{0, 3}, {1, -1}, {2, -1}, {3, 3}}, {0.5L}, 1e-12);
    expectCrossings({{0, 3 - 3e-8}, {1, -1 - 3e-8}, {2, -1 - 3e-8}, {3, 3 - 3e-8}},
                    {0.5L - 5e-5L, 0.5L + 5e-5L}, 1e-12);
    // A triple root, (2t - 1)^3 scaled, is only determined to the cube root of the rounding.
    expectCrossings({{0, -3}, {1, 1}, {2, -1}, {3, 3}}, {0.5L}, 1e-5);
    // Wholly on the axis: its ends. Nothing for non-finite curves or curves off the axis.
    expectCrossings({{0, 0}, {1, 0}, {2, 0}, {3, 0}}, {0.0L, 1.0L}, 0.0);
    for (double y : {double(NAN), double(INFINITY), 2.0}) {
        expectCrossings({{0, 1}, {1, y}, {2, y == 2.0 ? 1e-300 : -1}, {3, 3}}, {}, 0.0);
    }
}

// Largest distance from the curve to a flattening made of points at uniform t (the first at index 1): each
// arc is sampled densely and measured against its own chord.
double worstDeviation(PBezier const& b, std::vector<DPoint> const& poly) {
    std::size_t const from = 1, n = poly.size() - 2;
    double worst = 0.0;
    for (std::size_t i = 0; i < n; ++i) {
        for (int k = 0; k <= 16; ++k) {
            LPoint const q = at(b, (LD(i) + LD(k) / 16) / n);
            DPoint const p(double(q.x), double(q.y));
            worst = std::max(worst, distance(closestToLineSegment(poly[from + i], poly[from + i + 1], p), p));
        }
    }
    return worst;
}

TEST(PBezierAccuracy, PolylineStaysWithinTheTolerance) {
    std::vector<PBezier> all = curves(80, 5);
    for (PBezier const& b : all) {
        for (double tol : {0.1, 1.0, 25.0}) {
            std::vector<DPoint> poly{DPoint(-1, -1)}; // appends after what is there
            b.getPolyline(tol, poly);
            ASSERT_GE(poly.size(), 3u);
            EXPECT_EQ(poly[1], b[0]);
            EXPECT_EQ(poly.back(), b[3]);
            EXPECT_LE(worstDeviation(b, poly), tol * (1 + 1e-9) + 1e-9 * std::fabs(b[0].x));
        }
    }
}

TEST(PBezierAccuracy, NonFiniteAndExtremeInputNeverHangs) {
    for (double v : {double(NAN), double(INFINITY), -double(INFINITY), 1e308}) {
        PBezier const b({0, 0}, {v, 1}, {2, v}, {3, 3});
        double const t = b.findNearestPointTValue({1, 1});
        EXPECT_TRUE(t >= 0.0 && t <= 1.0);
        double a = 0, c = 0, d = 0, e = 0;
        b.localMinMax(a, c, d, e);
        DPoint top, bottom;
        b.localTopBottom(top, bottom);
        std::vector<DPoint> poly;
        b.getPolyline(1.0, poly);
        EXPECT_LE(poly.size(), (1u << 20) + 1);
        EXPECT_GE(b.findParameter({1, 1}, 0.5, 1.0), -1.0);
    }
    PBezier const b{{0.1, 1e-9}, {1e9, -3.3}, {-7.7, 0.3}, {2.2, 5.9}};
    EXPECT_TRUE(b[-7] == b[0] && b[9] == b[3]) << "indices clamp";
    EXPECT_EQ(PBezier({0, 0}, {1, 1}, {2, 0}, {3, 1}).findNearestPointTValue({NAN, 0}), 0.0);
}

} // namespace
