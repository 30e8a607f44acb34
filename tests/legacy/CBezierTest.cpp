#include "simplepath/simplepath.h"

#include "support/BezierReference.h"

#include <gtest/gtest.h>

#include <cmath>
#include <tuple>
#include <vector>

namespace {

using support::LD;

// Both coordinates within tolerance of expected.
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
// Length of the polyline through the curve at t = i / n, i = 0..n.
double referencePolyline(CBezier const& c, int n) {
    LD length = 0;
    for (int i = 1; i <= n; ++i) {
        support::LPoint const a = support::evaluate(controlsOf(c), LD(i - 1) / n);
        support::LPoint const b = support::evaluate(controlsOf(c), LD(i) / n);
        length += std::hypot(b.x - a.x, b.y - a.y);
    }
    return double(length);
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

TEST(LegacyBezier, PointsAndLengthsAgreeWithTheLongDoubleReference) {
    for (CBezier const& curve : samples) {
        EXPECT_EQ(curve.GetCurvePoint(0.0), curve.GetP0());
        EXPECT_EQ(curve.GetCurvePoint(1.0), curve.GetP3());
        for (double t : {1e-9, 0.37, 0.83, 1 - 1e-9}) {
            expectNear(curve.GetCurvePoint(t), referencePoint(curve, t));
        }
        // Ten-interval Simpson, whole and partial.
        double const whole = curve.GetLength();
        EXPECT_NEAR(whole, referenceSimpson(curve, 0, 1), 1e-10 * whole);
        EXPECT_NEAR(curve.GetLength(0.2, 0.7), referenceSimpson(curve, 0.2L, 0.7L), 1e-10 * whole);
    }
    // On a gentle arch ten intervals come close to the true arc length.
    EXPECT_NEAR(arch.GetLength(), double(support::arcLength(controlsOf(arch))), 1e-4 * arch.GetLength());
    // Speeds below 1e-8 count as standing still: a line of 3e-9 has no length, one of 3e-7 has.
    EXPECT_EQ(evenLine(3e-9).GetLength(), 0.0);
    EXPECT_NEAR(evenLine(3e-7).GetLength(), 3e-7, 1e-20);
}

TEST(LegacyBezier, TFromLengthInvertsTheLength) {
    // The last curve's handle sits on its anchor: zero speed at t = 0, where a Newton step is undefined.
    CBezier const stalled(DPoint(0, 0), DPoint(0, 0), DPoint(50, 80), DPoint(100, 0));
    for (CBezier const& curve : {arch, loop, lopsided, stalled}) {
        double const total = curve.GetLength();
        for (double length : {1.0, 0.1 * total, 0.5 * total, 0.77 * total, total - 0.1}) {
            EXPECT_NEAR(curve.GetLength(0.0, curve.GetTFromLength(length)), length, 1e-9);
        }
        for (auto [length, t] :
             {std::pair(0.0, 0.0), {-3.0, 0.0}, {NAN, 0.0}, {total, 1.0}, {2 * total, 1.0}}) {
            EXPECT_EQ(curve.GetTFromLength(length), t);
        }
    }
}

TEST(LegacyBezier, FlatteningWritesEachPiecesLastThreePointsAndTracksTheCurve) {
    // Only the first leg is longer than the tolerance of 1, and one halving brings every leg within it:
    // the left half's P1, P2, P3, then the right half's (all dyadic, so exact). A non-empty output
    // already holds the joint, so P0 is written only into an empty one.
    CBezier const once(DPoint(0, 0), DPoint(0, 1.5), DPoint(0.5, 1.5), DPoint(1, 1.5));
    std::vector<DPoint> expected = {{0, 0},     {0, 0.75},   {0.125, 1.125}, {0.3125, 1.3125},
                                    {0.5, 1.5}, {0.75, 1.5}, {1, 1.5}};
    EXPECT_EQ(flatten(once), expected);
    CArray<DPoint, DPoint> joint;
    joint.Add(expected[0] = DPoint(9, 9));
    EXPECT_EQ(flatten(once, joint), expected);
    for (CBezier curve : samples) {
        curve.SetResolution(0.5);
        std::vector<DPoint> const out = flatten(curve);
        EXPECT_EQ(out.back(), curve.GetP3());
        // Every leaf's legs are within 0.5 and its ends on the curve: so is every vertex within 0.5.
        ASSERT_GT(out.size(), 20u);
        for (std::size_t i = 1; i < out.size(); i += out.size() / 20) {
            EXPECT_LE(referenceDistance(curve, out[i]), 0.5 + 1e-9);
        }
    }
}

TEST(LegacyBezier, LongChordsRaiseTheToleranceAndStraightSegmentsSkipSubdivisionOnlyWhenAsked) {
    // Halving a uniform line halves all three legs: with tolerance tol it flattens to 3 * 2^k + 1
    // points, k the fewest halvings that bring length / 3 within tol (no case here is a power of two).
    double const cases[][3] = {{2000, 1, 1},     {2000.5, 1, 3},    {3000, 7, 7},   {5000, 0.5, 3},
                               {5001, 1, 5},     {10000, 1, 5},     {10001, 1, 10}, {100000, 1, 10},
                               {100001, 1, 100}, {100001, 250, 250}}; // chord, resolution, tolerance
    for (auto const& c : cases) {
        double const halvings = std::ceil(std::log2(c[0] / 3 / c[2]));
        EXPECT_EQ(flatten(evenLine(c[0], c[1])).size(), 3 * std::exp2(halvings) + 1) << c[0];
    }
    // Handles within 1e-8 of their anchors count as absent; one real handle does not.
    CBezier straight(DPoint(0, 0), DPoint(5e-9, 0), DPoint(10, 5e-9), DPoint(10, 0));
    CBezier curved(DPoint(0, 0), DPoint(0, 0), DPoint(10, 3), DPoint(10, 0));
    EXPECT_GT(flatten(straight).size(), 2u);
    straight.SetExpandStraightLines(false);
    curved.SetExpandStraightLines(false);
    EXPECT_EQ(flatten(straight), (std::vector<DPoint>{{0, 0}, {10, 0}}));
    EXPECT_GT(flatten(curved).size(), 2u);
    // Halving stops 16 levels deep whatever the tolerance or the coordinates.
    std::size_t const cap = 3 * (1 << 16) + 1;
    EXPECT_EQ(flatten(evenLine(100, 0.0)).size(), cap);
    EXPECT_LE(flatten(CBezier(DPoint(0, 0), DPoint(NAN, 1), DPoint(2, 2), DPoint(3, 3))).size(), cap);
}

TEST(LegacyBezier, UniformFlatteningComparesEveryRefinementWithTenPieces) {
    double const ten = referencePolyline(arch, 10), twenty = referencePolyline(arch, 20);
    ASSERT_LT(referencePolyline(arch, 40) - twenty, 0.5 * (twenty - ten));
    CBezier curve = arch;
    CArray<DPoint, DPoint> out;
    out.Add(DPoint(-1, -1)); // replaced, not appended to
    // 20 pieces already agree with 10 within the resolution.
    curve.SetResolution(1.1 * (twenty - ten));
    curve.GetPolylineEx(out);
    EXPECT_EQ(out.GetSize(), 21);
    // They don't, and no refinement ever comes closer to 10 pieces: ten doublings, 20480 pieces, even
    // though 20 and 40 pieces agree with each other within the resolution.
    curve.SetResolution(0.9 * (twenty - ten));
    curve.GetPolylineEx(out);
    ASSERT_EQ(out.GetSize(), 20481);
    EXPECT_EQ(out[0], arch.GetP0());
    EXPECT_EQ(out[20480], arch.GetP3());
    expectNear(out[10240], referencePoint(arch, 0.5L));
}

TEST(LegacyBezier, NearestParameterMatchesDenseLongDoubleSearch) {
    std::pair<CBezier const&, DPoint> const queries[] = {
        {arch, {50, 20}},      {arch, {120, 50}},     {arch, {-10, -10}}, {arch, {50, 300}},
        {loop, {30, 50}},      {loop, {30, 80}},      {loop, {110, -3}},  {lopsided, {0, 0}},
        {lopsided, {120, 60}}, {lopsided, {260, 270}}};
    for (auto const& [curve, p] : queries) {
        double const t = curve._GetCurveT(p);
        EXPECT_EQ(t, curve.GetNearestCurvePointT(p));
        EXPECT_LE(distance(curve.GetCurvePoint(t), p), referenceDistance(curve, p) + 1e-9)
            << p.x << "," << p.y;
    }
    // Points on the curve: eight tenfold refinements of the 0.01 scan leave a step of 1e-10.
    for (CBezier const& curve : samples) {
        for (long double t : {0.0123456789L, 0.31415926535L, 0.70710678118L, 0.987654321L}) {
            EXPECT_NEAR(curve._GetCurveT(referencePoint(curve, t)), double(t), 1.5e-10);
        }
    }
    // Past the end anchor: the coarse scan stops short of 1, the refinement reaches it.
    EXPECT_GT(arch._GetCurveT(DPoint(110, -5)), 1 - 1e-9);
    // Only strictly closer points replace the best: on a segment shrunk to a point every parameter is
    // equally near, and the first, 0, stays; so it does when nothing is near (NaN).
    CBezier const dot(DPoint(0, 0), DPoint(0, 0), DPoint(0, 0), DPoint(0, 0));
    EXPECT_EQ(dot._GetCurveT(DPoint(3, 4)), 0.0);
    EXPECT_EQ(arch._GetCurveT(DPoint(NAN, 0)), 0.0);
}

TEST(LegacyBezier, DraggingNudgesTheFarHandleAndSolvesTheNearOne) {
    DPoint const a(0, 0), b(100, 0);
    CBezier const line = evenLine(100), bare(a, a, b, b), oneHandle(a, a, DPoint(80, 20), b);
    // The far handle (P2 up to t = 1/2, else P1) moves by w = -16/9 (1 - t) + 20/9, resp. -16/9 t + 20/9,
    // times the miss; the near one is then solved, which passing through the target pins down. A bare
    // segment first gets handles on its chord, P1 at alpha and P2 at beta of it from their own ends:
    // at t = 1/2 alpha = 0.33, beta = 0.335 (C = 49.8125); at t = 0.8 alpha = 0.386, beta = 0.15
    // (C = 87.5456). One real handle is enough not to get new ones.
    std::tuple<CBezier const&, double, DPoint, int, DPoint> const cases[] = {
        // curve, t, target, far
        {line, 0.25, {25, 9}, 2, {200.0 / 3, 8}},        {line, 0.45, {45, 9}, 2, {200.0 / 3, 11.2}},
        {line, 0.75, {75, 9}, 1, {100.0 / 3, 8}},        {bare, 0.5, {49.8125, 0}, 2, {66.5, 0}},
        {bare, 0.5, {49.8125, 10}, 2, {66.5, 40.0 / 3}}, {bare, 0.8, {87.5456, 10}, 1, {38.6, 8}},
        {oneHandle, 0.5, {42.5, 16.5}, 2, {80, 32}}};
    for (auto const& [curve, t, target, far, handle] : cases) {
        CBezier dragged = curve;
        dragged.DragToPoint(t, target);
        expectNear(far == 1 ? dragged.GetP1() : dragged.GetP2(), handle, 1e-9);
        expectNear(dragged.GetCurvePoint(t), target, 1e-9);
        EXPECT_EQ(dragged.GetP3(), b);
    }
    // At an end the anchor moves with its handle; bad input is ignored.
    CBezier start = arch, end = arch, untouched = arch;
    start.DragToPoint(5e-9, DPoint(-10, 5));
    end.DragToPoint(1.7, DPoint(110, 10)); // clamped to 1
    untouched.DragToPoint(NAN, DPoint(1, 1));
    untouched.DragToPoint(0.5, DPoint(INFINITY, 1));
    untouched.DragToPoint(0.5, DPoint(1, NAN));
    EXPECT_EQ(controls(start), (std::vector<DPoint>{{-10, 5}, {-10, 105}, {100, 100}, {100, 0}}));
    EXPECT_EQ(controls(end), (std::vector<DPoint>{{0, 0}, {0, 100}, {110, 110}, {110, 10}}));
    EXPECT_EQ(controls(untouched), controls(arch));
}

TEST(LegacyBezier, ChainsReadAndWriteTheirEntriesAndSumTheFirstSegments) {
    CArray<BPOINT, BPOINT> chain;
    EXPECT_EQ(CBezier::GetBPointArrayLength(chain, -1), 0.0);
    chain.Add(BPOINT{{-5, -5}, {0, 0}, {0, 100}});
    chain.Add(BPOINT{{100, 100}, {100, 0}, {110, 0}});
    chain.Add(BPOINT{{120, 0}, {130, 0}, {130, 0}});
    CBezier first(chain[0], chain[1]);
    EXPECT_EQ(controls(first), controls(arch));
    // Writing back leaves the neighbouring segments' handles alone.
    first.DragToPoint(0.3, DPoint(20, 90));
    first.GetBPoints(chain[0], chain[1]);
    EXPECT_EQ(controls(CBezier(chain[0], chain[1])), controls(first));
    EXPECT_EQ(chain[0].before, DPoint(-5, -5));
    EXPECT_EQ(chain[1].after, DPoint(110, 0));
    double const one = first.GetLength(), two = one + CBezier(chain[1], chain[2]).GetLength();
    for (auto [last, length] : {std::pair(-1, two), {0, 0.0}, {1, one}, {2, two}, {99, two}}) {
        EXPECT_EQ(CBezier::GetBPointArrayLength(chain, last), length) << last;
    }
}

TEST(LegacyBezierPoint, SmoothNeedsRealHandlesInLineThroughTheAnchor) {
    // Within 0.1 of the line through the handles is smooth; a handle within 0.1 of the anchor makes a
    // corner, and so do both handles on one spot (no line through them).
    std::pair<BPOINT, int> const cases[] = {
        {{{-10, 0.05}, {0, 0}, {20, -0.05}}, 1}, {{{-10, 0}, {0, 0.12}, {20, 0}}, 0},
        {{{-0.09, 0}, {0, 0}, {20, 0}}, 0},      {{{-10, 0}, {0, 0}, {0.05, 0.05}}, 0},
        {{{-0.1, 0}, {0, 0}, {0.1, 0}}, 1},      {{{5, 5}, {0, 0}, {5, 5}}, 0}};
    for (auto const& [p, smooth] : cases) {
        EXPECT_EQ(CBezierPoint(p).IsSmooth(), smooth) << p.before.x << "," << p.after.x;
    }
}

TEST(LegacyBezierPoint, MoveSubtractsTheOffsetRotateAndStretchKeepTheCentreAndSmoothAlignsTheHandles) {
    CBezierPoint p(BPOINT{{-1, 2}, {0, 0}, {3, 4}});
    p.Move(10, -20);
    p.Move(DPoint(1, 1));
    EXPECT_EQ(p.before, DPoint(-12, 21));
    EXPECT_EQ(p.anchor, DPoint(-11, 19));
    p.Rotate(-11, 19, std::acos(0.0)); // a quarter turn, counter-clockwise with y up
    expectNear(p.after, {-11 - 4, 19 + 3});
    p.Stretch(DPoint(-11, 19), 2, -1);
    expectNear(p.after, {-11 - 8, 19 - 3});
    EXPECT_EQ(p.anchor, DPoint(-11, 19));
    // Smooth lays the handles along (3, 4) / 5, a third of the distances to the neighbours long; without a
    // direction the point is left as it was.
    p = CBezierPoint(BPOINT{{5, 0}, {0, 0}, {0, 5}});
    p.Smooth(DPoint(3, 3), DPoint(3, 3));
    p.Smooth(DPoint(NAN, 0), DPoint(3, 3));
    EXPECT_EQ(p.before, DPoint(5, 0));
    p.Smooth(DPoint(-3, -4), DPoint(6, 8));
    expectNear(p.before, {-1.0, -4.0 / 3});
    expectNear(p.after, {2.0, 8.0 / 3});
}

} // namespace
