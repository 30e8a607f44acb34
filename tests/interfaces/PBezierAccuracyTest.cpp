// Accuracy of the Bezier kernel against independent references: dense sampling refined in long double.

#include "simplepath/interfaces/PBezier.h"
#include "simplepath/interfaces/Tolerance.h"

#include <gtest/gtest.h>

#include "support/BezierReference.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace {

using support::LD;
using support::LPoint;
using support::speed;

LPoint at(PBezier const& b, LD t) {
    return support::evaluate(b, t);
}
LD dist2(PBezier const& b, LD t, DPoint p) {
    return support::squaredDistanceTo(b, t, p);
}
template <class F> LD referenceMin(F const& f) {
    return support::minimumOver(f);
}

double size(PBezier const& b) {
    double lo[2] = {b[0].x, b[0].y}, hi[2] = {b[0].x, b[0].y};
    for (int i = 1; i < 4; ++i) {
        lo[0] = std::min(lo[0], b[i].x), hi[0] = std::max(hi[0], b[i].x);
        lo[1] = std::min(lo[1], b[i].y), hi[1] = std::max(hi[1], b[i].y);
    }
    return std::max(hi[0] - lo[0], hi[1] - lo[1]);
}

// Random curves of size about 1000, plus translated, tiny and huge ones.
std::vector<PBezier> randomCurves(int count, unsigned seed) {
    std::mt19937_64 rng(seed);
    std::uniform_real_distribution<double> u(-500.0, 500.0);
    std::vector<PBezier> out;
    for (int i = 0; i < count; ++i) {
        PBezier b({u(rng), u(rng)}, {u(rng), u(rng)}, {u(rng), u(rng)}, {u(rng), u(rng)});
        if (i % 10 == 7) { // far from the origin
            for (int k = 0; k < 4; ++k) {
                b[k] = b[k] + DVector(1e6, -3e6);
            }
        }
        out.push_back(b);
    }
    return out;
}

// Hand-picked hard shapes: loops, cusps, near-cusps, collinear doubling back, coincident controls, flat.
std::vector<PBezier> hardCurves() {
    return {
        {{0, 0}, {1000, 1000}, {0, 1000}, {1000, 0}},     // loop
        {{0, 0}, {1000, 1000}, {0, 1000}, {1000, 0.001}}, // loop, almost symmetric
        {{0, 0}, {1000, 1000}, {0, 1000}, {1000, 0}},     // self-crossing
        {{0, 0}, {1000, 1000}, {0, 1000}, {1000, 0}},     // repeated on purpose: tie handling
        {{0, 0}, {1000, 600}, {0, 600}, {1000, 0}},       // cusp (B' vanishes)
        {{0, 0}, {1000, 600}, {0, 600.001}, {1000, 0}},   // near-cusp
        {{0, 0}, {1000, 0}, {-500, 0}, {600, 0}},         // collinear, doubling back twice
        {{0, 0}, {2000, 0}, {-1000, 0}, {0, 0}},          // closed collinear
        {{0, 0}, {0, 0}, {1000, 1000}, {1000, 1000}},     // coincident controls at both ends
        {{0, 0}, {0, 0}, {0, 0}, {1000, 500}},            // three coincident
        {{300, 300}, {300, 300}, {300, 300}, {300, 300}}, // a point
        {{0, 0}, {333, 1e-9}, {667, -1e-9}, {1000, 0}},   // nearly flat
        {{0, 0}, {1e-9, 2e-9}, {3e-9, -1e-9}, {4e-9, 0}}, // tiny
        {{1e9, 1e9}, {1e9 + 300, 1e9 + 900}, {1e9 + 800, 1e9 - 200}, {1e9 + 1000, 1e9}}, // far away
        {{-1e9, 0}, {1e9, 2e9}, {-1e9, 2e9}, {1e9, 0}},                                  // huge
    };
}

TEST(PBezierAccuracy, NearestPointIsTheGlobalMinimum) {
    std::mt19937_64 rng(11);
    std::uniform_real_distribution<double> u(-0.3, 1.3);
    std::uniform_real_distribution<double> t01(0.0, 1.0);
    auto curves = randomCurves(500, 1);
    auto hard = hardCurves();
    curves.insert(curves.end(), hard.begin(), hard.end());
    double worst = 0.0;
    for (PBezier const& b : curves) {
        double const s = size(b);
        std::vector<DPoint> probes;
        DPoint const o = b[0];
        for (int k = 0; k < 3; ++k) { // random points around the curve
            probes.push_back(o + DVector((u(rng) - 0.3) * s * 2, (u(rng) - 0.3) * s * 2));
        }
        probes.push_back(b.bValue(t01(rng))); // on the curve
        probes.push_back(b[0]);               // at the ends
        probes.push_back(b[3]);
        probes.push_back(o + 0.5 * ((b[1] - o) + (b[2] - o))); // inside a loop, near a cusp
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
            ASSERT_GE(t, 0.0);
            ASSERT_LE(t, 1.0);
            LD const found = std::sqrt(dist2(b, t, p));
            LD const truth = std::sqrt(referenceMin([&](LD x) { return dist2(b, x, p); }));
            double const err = double((found - truth) / (s > 0 ? s : 1.0));
            worst = std::max(worst, err);
            EXPECT_LE(err, 1e-12) << "curve " << b[0].x << "," << b[0].y << " " << b[1].x << "," << b[1].y
                                  << " " << b[2].x << "," << b[2].y << " " << b[3].x << "," << b[3].y << " p "
                                  << p.x << "," << p.y;
        }
    }
    RecordProperty("worstRelativeDistanceExcess", std::to_string(worst));
}

TEST(PBezierAccuracy, FindParameterHonoursTheTolerance) {
    PBezier const b{{0, 0}, {100, 200}, {300, 200}, {400, 0}};
    double const t = b.findParameter(b.bValue(0.3), 0.5, 1e-6);
    EXPECT_NEAR(t, 0.3, 1e-9);
    DPoint const off = b.bValue(0.3) + b.derivative(0.3).ortho().normalized() * 2.0;
    EXPECT_EQ(b.findParameter(off, 0.5, 1.999), -1.0);
    EXPECT_NEAR(b.findParameter(off, 0.0, 2.001), 0.3, 1e-6);
    EXPECT_EQ(b.findParameter(off, 0.9, 2.001), b.findParameter(off, 0.1, 2.001));
    EXPECT_EQ(b.findParameter({1e6, 0}, 0.5, 1.0), -1.0);
    EXPECT_EQ(b.findParameter(b[3], 0.5, 1e-9), 1.0);
    EXPECT_EQ(b.findParameter({NAN, 0}, 0.5, 1.0), -1.0);
    EXPECT_EQ(b.findParameter(b[0], 0.5, 0.0), -1.0);
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

TEST(PBezierAccuracy, LengthIsWithin1e12Relative) {
    auto curves = randomCurves(150, 2);
    auto hard = hardCurves();
    curves.insert(curves.end(), hard.begin(), hard.end());
    // Near-cusps and straight curves nearly turning back, with the zero of B' continued to complex t at
    // distances from 1e-1 to 1e-13 off the axis: across the cut between graded pieces and the cusp treatment.
    for (int k = 1; k <= 26; ++k) {
        double const e = std::pow(10.0, -0.5 * k);
        curves.push_back({{0, 0}, {1000, 600}, {0, 600 + 1000 * e}, {1000, 0}});
        curves.push_back({{0, 0}, {1000, 600}, {0, 600 - 1000 * e}, {1000, 0}});
        curves.push_back({{0, 0}, {1000, 100 * e}, {-500, 0}, {600, 0}});
    }
    double worst = 0.0;
    for (PBezier const& b : curves) {
        LD const truth = referenceLength(b);
        double const len = b.length();
        double const err = truth > 0 ? double(std::fabs(len - truth) / truth) : std::fabs(len);
        worst = std::max(worst, err);
        EXPECT_LE(err, 1e-12) << b[0].x << "," << b[0].y << " " << b[1].x << "," << b[1].y << " " << b[2].x
                              << "," << b[2].y << " " << b[3].x << "," << b[3].y;
    }
    RecordProperty("worstRelativeLengthError", std::to_string(worst));
    EXPECT_DOUBLE_EQ(PBezier({0, 0}, {1, 0}, {2, 0}, {3, 0}).length(), 3.0);
}

TEST(PBezierAccuracy, ExtremesAreTheCurvesNotThePolygons) {
    auto curves = randomCurves(300, 3);
    auto hard = hardCurves();
    curves.insert(curves.end(), hard.begin(), hard.end());
    for (PBezier const& b : curves) {
        double minX = 1e300, minY = 1e300, maxX = -1e300, maxY = -1e300;
        b.localMinMax(minX, minY, maxX, maxY);
        double const tol =
            1e-12 * std::max(1.0, size(b)) + 1e-15 * std::fabs(b[0].x) + 1e-15 * std::fabs(b[0].y);
        LD const rMinX = referenceMin([&](LD t) { return at(b, t).x; });
        LD const rMaxX = -referenceMin([&](LD t) { return -at(b, t).x; });
        LD const rMinY = referenceMin([&](LD t) { return at(b, t).y; });
        LD const rMaxY = -referenceMin([&](LD t) { return -at(b, t).y; });
        EXPECT_NEAR(minX, double(rMinX), tol);
        EXPECT_NEAR(maxX, double(rMaxX), tol);
        EXPECT_NEAR(minY, double(rMinY), tol);
        EXPECT_NEAR(maxY, double(rMaxY), tol);
        DPoint top, bottom;
        b.localTopBottom(top, bottom);
        EXPECT_NEAR(top.y, double(rMaxY), tol);
        EXPECT_NEAR(bottom.y, double(rMinY), tol);
    }
    // The outputs are folded into what they held.
    double minX = -5, minY = -5, maxX = 5000, maxY = 5000;
    PBezier({0, 0}, {10, 10}, {20, 0}, {30, 10}).localMinMax(minX, minY, maxX, maxY);
    EXPECT_EQ(minX, -5);
    EXPECT_EQ(maxY, 5000);
    // Ties in y go to the smaller t.
    DPoint top, bottom;
    PBezier({0, 0}, {10, 0}, {20, 0}, {30, 0}).localTopBottom(top, bottom);
    EXPECT_EQ(top, DPoint(0, 0));
    EXPECT_EQ(bottom, DPoint(0, 0));
}

// Reference crossings: sign changes on a dense grid, bisected in long double.
std::vector<LD> referenceCrossings(PBezier const& b) {
    std::vector<LD> out;
    int const n = 4096;
    LD prev = b[0].y;
    if (prev == 0) {
        out.push_back(0);
    }
    for (int i = 1; i <= n; ++i) {
        LD const t = LD(i) / n;
        LD const y = i == n ? LD(b[3].y) : at(b, t).y;
        if (y == 0) {
            out.push_back(t);
        } else if (prev != 0 && (prev < 0) != (y < 0)) {
            LD a = LD(i - 1) / n, c = t;
            for (int k = 0; k < 80; ++k) {
                LD const m = (a + c) / 2;
                ((at(b, m).y < 0) == (prev < 0) ? a : c) = m;
            }
            out.push_back((a + c) / 2);
        }
        prev = y;
    }
    return out;
}

TEST(PBezierAccuracy, AxisCrossingsAreAllFoundOnce) {
    auto curves = randomCurves(800, 4);
    for (PBezier b : curves) {
        b[0].y -= b[0].y > 1e5 ? -3e6 : 0; // keep the far ones near the axis
        for (int k = 1; k < 4; ++k) {
            b[k].y -= b[k].y > 1e5 ? -3e6 : 0;
        }
        std::vector<double> got;
        intersectBezierWithXAxis(b, got);
        std::vector<LD> const want = referenceCrossings(b);
        ASSERT_EQ(got.size(), want.size());
        for (std::size_t i = 0; i < got.size(); ++i) {
            EXPECT_NEAR(got[i], double(want[i]), 1e-12);
            if (i > 0) {
                EXPECT_LT(got[i - 1], got[i]);
            }
        }
    }
}

TEST(PBezierAccuracy, AxisTangenciesAndDegenerateCurves) {
    std::vector<double> r;
    // y = 3 (2t - 1)^2: a double root at 1/2, reported once.
    intersectBezierWithXAxis(PBezier({0, 3}, {1, -1}, {2, -1}, {3, 3}), r);
    ASSERT_EQ(r.size(), 1u);
    EXPECT_NEAR(r[0], 0.5, 1e-12);
    // Touching at the start and crossing later; the touching end is reported once.
    r.clear();
    intersectBezierWithXAxis(PBezier({0, 0}, {1, 0}, {2, -3}, {3, 5}), r);
    ASSERT_EQ(r.size(), 2u);
    EXPECT_EQ(r[0], 0.0);
    // Wholly on the axis.
    r.clear();
    intersectBezierWithXAxis(PBezier({0, 0}, {1, 0}, {2, 0}, {3, 0}), r);
    EXPECT_EQ(r, (std::vector<double>{0.0, 1.0}));
    // A triple root: y = (2t - 1)^3 scaled, Bernstein values -1, 1/3 -> use 3x: -3, 1, -1, 3.
    r.clear();
    intersectBezierWithXAxis(PBezier({0, -3}, {1, 1}, {2, -1}, {3, 3}), r);
    ASSERT_EQ(r.size(), 1u);
    EXPECT_NEAR(r[0], 0.5, 1e-5); // a triple root is only determined to the cube root of the rounding
    // Appends after what the vector held; nothing for non-finite curves or curves off the axis.
    r.assign(1, 42.0);
    intersectBezierWithXAxis(PBezier({0, 1}, {1, NAN}, {2, -1}, {3, 3}), r);
    intersectBezierWithXAxis(PBezier({0, 1}, {1, INFINITY}, {2, -1}, {3, 3}), r);
    intersectBezierWithXAxis(PBezier({0, 1}, {1, 2}, {2, 1e-300}, {3, 3}), r);
    EXPECT_EQ(r, std::vector<double>{42.0});
    // Two crossings closing in on a tangency: y = 3 (2t - 1)^2 - 3e, zeros at 1/2 +- sqrt(e)/2.
    for (double e : {1e-2, 1e-4, 1e-6, 1e-8}) {
        r.clear();
        intersectBezierWithXAxis(PBezier({0, 3 - 3 * e}, {1, -1 - 3 * e}, {2, -1 - 3 * e}, {3, 3 - 3 * e}),
                                 r);
        ASSERT_EQ(r.size(), 2u);
        EXPECT_NEAR(r[0], 0.5 - 0.5 * std::sqrt(e), 1e-12);
        EXPECT_NEAR(r[1], 0.5 + 0.5 * std::sqrt(e), 1e-12);
    }
    // One sign change among the control values is one simple crossing; a control value of zero leaves
    // that shortcut and takes the monotone pieces, with the same answer: y = 3t^2 - 2t^3 - 0.5 on (0, 1).
    for (double y1 : {-0.5, 0.0}) {
        r.clear();
        PBezier const b({0, -0.5}, {1, y1}, {2, 0.5}, {3, 0.5});
        intersectBezierWithXAxis(b, r);
        std::vector<LD> const want = referenceCrossings(b);
        ASSERT_EQ(r.size(), want.size());
        for (std::size_t i = 0; i < r.size(); ++i) {
            EXPECT_NEAR(r[i], double(want[i]), 1e-12);
        }
    }
    // Nearly flat crossings, at tiny and huge scale.
    for (double s : {1e-9, 1.0, 1e9}) {
        r.clear();
        intersectBezierWithXAxis(PBezier({0, -s}, {1, 3 * s}, {2, -3 * s}, {3, s}), r);
        EXPECT_EQ(r.size(), 3u);
    }
}

// Largest distance from the curve to a flattening made of points at uniform t (first at index `from`):
// each arc is sampled densely and measured against its own chord.
double worstDeviation(PBezier const& b, std::vector<DPoint> const& poly, std::size_t from) {
    std::size_t const n = poly.size() - 1 - from;
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
    auto curves = randomCurves(80, 5);
    auto hard = hardCurves();
    curves.insert(curves.end(), hard.begin(), hard.end());
    for (PBezier const& b : curves) {
        for (double tol : {0.1, 1.0, 25.0}) {
            std::vector<DPoint> poly{DPoint(-1, -1)}; // appends after what is there
            b.getPolyline(tol, poly);
            ASSERT_GE(poly.size(), 3u);
            EXPECT_EQ(poly[1], b[0]);
            EXPECT_EQ(poly.back(), b[3]);
            EXPECT_LE(worstDeviation(b, poly, 1), tol * (1 + 1e-9) + 1e-9 * std::fabs(b[0].x));
        }
    }
    // On a round arc the count is near the fewest: the worst deviation comes close to the tolerance.
    PBezier const arc({0, 0}, {0, 552.28}, {447.72, 1000}, {1000, 1000});
    for (double tol : {0.01, 0.5, 3.0}) {
        std::vector<DPoint> poly;
        arc.getPolyline(tol, poly);
        EXPECT_GT(worstDeviation(arc, poly, 0), 0.3 * tol) << poly.size();
    }
    std::vector<DPoint> none;
    PBezier({0, 0}, {1, 1}, {NAN, 2}, {3, 3}).getPolyline(1.0, none);
    EXPECT_EQ(none.size(), 2u);
    none.clear();
    PBezier({0, 0}, {1, 1}, {2, 2}, {3, 3}).getPolyline(1e-300, none);
    EXPECT_EQ(none.size(), 2u); // a straight, evenly spaced curve needs no interior point
}

TEST(PBezierAccuracy, NonFiniteAndExtremeInputNeverHangs) {
    double const bad[] = {NAN, INFINITY, -INFINITY, 1e308};
    for (double v : bad) {
        PBezier const b({0, 0}, {v, 1}, {2, v}, {3, 3});
        double const t = b.findNearestPointTValue({1, 1});
        EXPECT_TRUE(t >= 0.0 && t <= 1.0);
        (void)b.length();
        double a = 0, c = 0, d = 0, e = 0;
        b.localMinMax(a, c, d, e);
        DPoint top, bottom;
        b.localTopBottom(top, bottom);
        std::vector<double> r;
        intersectBezierWithXAxis(b, r);
        std::vector<DPoint> poly;
        b.getPolyline(1.0, poly);
        EXPECT_LE(poly.size(), (1u << 20) + 1);
        EXPECT_EQ(b.findParameter({1, 1}, 0.5, 1.0) >= -1.0, true);
    }
    PBezier const ok({0, 0}, {1, 1}, {2, 0}, {3, 1});
    EXPECT_EQ(ok.findNearestPointTValue({NAN, 0}), 0.0);
}

} // namespace
