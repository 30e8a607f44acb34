#include "simplepath/simplepath.h"

#include "support/BezierReference.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace {

using support::LD;

void expectNear(DPoint const& actual, DPoint const& expected, double tolerance = 1e-12) {
    EXPECT_NEAR(actual.x, expected.x, tolerance);
    EXPECT_NEAR(actual.y, expected.y, tolerance);
}

// The independent long-double references, on the segment's control points.
PBezier controlsOf(CBezier const& c) {
    return PBezier(c.GetP0(), c.GetP1(), c.GetP2(), c.GetP3());
}
DPoint referencePoint(CBezier const& c, LD t) {
    support::LPoint const q = support::evaluate(controlsOf(c), t);
    return DPoint(double(q.x), double(q.y));
}
double referenceDistance(CBezier const& c, DPoint const& p) {
    PBezier const b = controlsOf(c);
    return double(std::sqrt(support::minimumOver([&](LD t) { return support::squaredDistanceTo(b, t, p); })));
}
// Composite Simpson's rule with ten intervals on the long-double speed over [t0, t1].
double referenceSimpson(CBezier const& c, LD t0, LD t1) {
    LD const h = (t1 - t0) / 10;
    LD sum = 0;
    for (int i = 0; i <= 10; ++i) {
        sum += (i == 0 || i == 10 ? 1 : i % 2 ? 4 : 2) * support::speed(controlsOf(c), t0 + i * h);
    }
    return double(sum * h / 3);
}

CBezier const arch(DPoint(0, 0), DPoint(0, 100), DPoint(100, 100), DPoint(100, 0));
CBezier const loop(DPoint(0, 0), DPoint(150, 100), DPoint(-50, 100), DPoint(100, 0));
CBezier const lopsided(DPoint(10, 20), DPoint(300, -40), DPoint(-20, 80), DPoint(250, 260));
CBezier const samples[] = {arch, loop, lopsided};

// A straight segment along x with its handles at the thirds: a uniformly parametrised line.
CBezier evenLine(double length, double resolution = 1.0) {
    CBezier line(DPoint(0, 0), DPoint(length / 3, 0), DPoint(2 * length / 3, 0), DPoint(length, 0));
    line.SetResolution(resolution);
    return line;
}

std::vector<DPoint> flatten(CBezier const& curve, CArray<DPoint, DPoint> out = {}) {
    curve.GetPolyline(out);
    return std::vector<DPoint>(&out[0], &out[0] + out.GetSize());
}

std::vector<DPoint> controls(CBezier const& c) {
    return {c.GetP0(), c.GetP1(), c.GetP2(), c.GetP3()};
}

TEST(LegacyBezier, PointsLengthsAndTheirInverseAgreeWithTheLongDoubleReference) {
    for (CBezier const& curve : samples) {
        for (double t : {1e-9, 0.37, 1 - 1e-9}) {
            expectNear(curve.GetCurvePoint(t), referencePoint(curve, t));
        }
        double const whole = curve.GetLength();
        EXPECT_NEAR(whole, referenceSimpson(curve, 0, 1), 1e-10 * whole);
        EXPECT_NEAR(curve.GetLength(0.2, 0.7), referenceSimpson(curve, 0.2L, 0.7L), 1e-10 * whole);
        for (double length : {0.1 * whole, 0.77 * whole}) {
            EXPECT_NEAR(curve.GetLength(0.0, curve.GetTFromLength(length)), length, 1e-9);
        }
        EXPECT_EQ(curve.GetTFromLength(NAN) + curve.GetTFromLength(2 * whole), 1.0);
    }
}

TEST(LegacyBezier, FlatteningTracksTheCurveAndStopsSixteenLevelsDeep) {
    for (CBezier curve : samples) {
        curve.SetResolution(0.5);
        std::vector<DPoint> const out = flatten(curve);
        EXPECT_EQ(out.back(), curve.GetP3());
        ASSERT_GT(out.size(), 20u);
        for (std::size_t i = 1; i < out.size(); i += out.size() / 20) {
            EXPECT_LE(referenceDistance(curve, out[i]), 0.5 + 1e-9);
        }
    }
    // Long chords raise the tolerance: halving a uniform line halves all three legs, to 3 * 2^k + 1 points.
    EXPECT_EQ(flatten(evenLine(10001, 1)).size(), 3 * std::exp2(std::ceil(std::log2(10001 / 3.0 / 10))) + 1);
    CBezier straight(DPoint(0, 0), DPoint(5e-9, 0), DPoint(10, 5e-9), DPoint(10, 0));
    straight.SetExpandStraightLines(false);
    EXPECT_EQ(flatten(straight), (std::vector<DPoint>{{0, 0}, {10, 0}}));
    std::size_t const cap = 3 * (1 << 16) + 1;
    EXPECT_EQ(flatten(evenLine(100, 0.0)).size(), cap);
    EXPECT_LE(flatten(CBezier(DPoint(0, 0), DPoint(NAN, 1), DPoint(2, 2), DPoint(3, 3))).size(), cap);
}

TEST(LegacyBezier, NearestParameterMatchesDenseLongDoubleSearch) {
    std::pair<CBezier const&, DPoint> const queries[] = {
        {arch, {50, 20}}, {arch, {50, 300}}, {loop, {30, 50}}, {loop, {110, -3}}, {lopsided, {120, 60}}};
    for (auto const& [curve, p] : queries) {
        double const t = curve._GetCurveT(p);
        EXPECT_LE(distance(curve.GetCurvePoint(t), p), referenceDistance(curve, p) + 1e-9)
            << p.x << "," << p.y;
    }
    // Points on the curve: eight tenfold refinements of the 0.01 scan leave a step of 1e-10.
    EXPECT_NEAR(loop._GetCurveT(referencePoint(loop, 0.31415926535L)), 0.31415926535, 1.5e-10);
    EXPECT_EQ(arch._GetCurveT(DPoint(NAN, 0)), 0.0);
}

TEST(LegacyBezier, DraggingPassesThroughTheTargetAndWritesBackIntoItsChain) {
    // A bare segment first gets handles on its chord (at t = 1/2, P1 at 0.33 and P2 at 0.335 of it from
    // their ends); then the far handle moves by a weight of the miss and the near one is solved.
    CBezier bare(DPoint(0, 0), DPoint(0, 0), DPoint(100, 0), DPoint(100, 0));
    bare.DragToPoint(0.5, DPoint(49.8125, 10));
    expectNear(bare.GetP2(), {66.5, 40.0 / 3}, 1e-9);
    expectNear(bare.GetCurvePoint(0.5), {49.8125, 10}, 1e-9);
    CBezier line = evenLine(100);
    line.DragToPoint(0.75, DPoint(75, 9)); // past the middle the far handle is P1
    expectNear(line.GetP1(), {100.0 / 3, 8}, 1e-9);
    CArray<BPOINT, BPOINT> chain;
    chain.Add(BPOINT{{-5, -5}, {0, 0}, {0, 100}});
    chain.Add(BPOINT{{100, 100}, {100, 0}, {110, 0}});
    CBezier first(chain[0], chain[1]), untouched(chain[0], chain[1]);
    first.DragToPoint(1.7, DPoint(110, 10)); // clamped to 1: the anchor moves with its handle
    EXPECT_EQ(controls(first), (std::vector<DPoint>{{0, 0}, {0, 100}, {110, 110}, {110, 10}}));
    first.GetBPoints(chain[0], chain[1]);
    EXPECT_EQ(controls(CBezier(chain[0], chain[1])), controls(first));
    EXPECT_EQ(chain[0].before, DPoint(-5, -5)); // the neighbouring segment's handle is left alone
    EXPECT_EQ(CBezier::GetBPointArrayLength(chain, 99), first.GetLength());
    untouched.DragToPoint(NAN, DPoint(1, 1));
    untouched.DragToPoint(0.5, DPoint(INFINITY, 1));
    EXPECT_EQ(controls(untouched), controls(arch));
}

TEST(LegacyBezierPoint, SmoothnessMoveAndHandleAlignment) {
    // Within 0.1 of the line through the handles is smooth; a handle within 0.1 of the anchor is a corner.
    EXPECT_TRUE(CBezierPoint(BPOINT{{-10, 0.05}, {0, 0}, {20, -0.05}}).IsSmooth());
    EXPECT_FALSE(CBezierPoint(BPOINT{{-0.09, 0}, {0, 0}, {20, 0}}).IsSmooth());
    // Move subtracts the offset; Smooth lays the handles along (3, 4) / 5, a third of the distances to the
    // neighbours long.
    CBezierPoint p(BPOINT{{5, 20}, {0, 20}, {0, 25}});
    p.Move(0, 20);
    p.Smooth(DPoint(-3, -4), DPoint(6, 8));
    expectNear(p.before, {-1.0, -4.0 / 3});
    expectNear(p.after, {2.0, 8.0 / 3});
}

} // namespace
