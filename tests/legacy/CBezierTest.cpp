#include "simplepath/simplepath.h"

#include "LongDoubleCubic.h"

#include "LegacyExpect.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using legacytest::expectNear;

using legacytest::LongDoubleCubic;

// Exposes the protected building blocks of the flattening.
class BezierProbe : public CBezier {
  public:
    using CBezier::CBezier;
    using CBezier::GetL;
};

DPoint const arch[4] = {{0, 0}, {0, 100}, {100, 100}, {100, 0}};
DPoint const loop[4] = {{0, 0}, {150, 100}, {-50, 100}, {100, 0}};
DPoint const lopsided[4] = {{10, 20}, {300, -40}, {-20, 80}, {250, 260}};

CBezier make(DPoint const (&p)[4]) {
    return CBezier(p[0], p[1], p[2], p[3]);
}
LongDoubleCubic reference(DPoint const (&p)[4]) {
    return LongDoubleCubic(p[0], p[1], p[2], p[3]);
}

// A straight segment along x with its handles at the thirds: a uniformly parametrised line.
CBezier evenLine(double length) {
    return CBezier(DPoint(0, 0), DPoint(length / 3, 0), DPoint(2 * length / 3, 0), DPoint(length, 0));
}

TEST(LegacyBezier, EvaluatesTheCubicWithExactEnds) {
    for (auto const* p : {&arch, &loop, &lopsided}) {
        CBezier const curve = make(*p);
        LongDoubleCubic const ref = reference(*p);
        EXPECT_EQ(curve.GetCurvePoint(0.0), (*p)[0]);
        EXPECT_EQ(curve.GetCurvePoint(1.0), (*p)[3]);
        for (double t : {1e-9, 0.1, 0.37, 0.5, 0.83, 1 - 1e-9}) {
            auto const r = ref.at(t);
            DPoint const q = curve.GetCurvePoint(t);
            expectNear(q, DPoint(double(r.x), double(r.y)), 1e-12);
        }
    }
}

TEST(LegacyBezier, LengthIsTenIntervalSimpsonOnTheSpeed) {
    for (auto const* p : {&arch, &loop, &lopsided}) {
        CBezier const curve = make(*p);
        LongDoubleCubic const ref = reference(*p);
        double const whole = curve.GetLength();
        EXPECT_NEAR(whole, static_cast<double>(ref.simpson(0, 1, 10)), 1e-10 * whole);
        EXPECT_EQ(whole, curve.GetLength(0.0, 1.0));
        EXPECT_NEAR(curve.GetLength(0.2, 0.7), static_cast<double>(ref.simpson(0.2L, 0.7L, 10)),
                    1e-10 * whole);
    }
    // On a gentle arch ten intervals are close to the true arc length ...
    double const archTrue = static_cast<double>(reference(arch).arcLength());
    EXPECT_NEAR(make(arch).GetLength(), archTrue, 1e-4 * archTrue);
    // ... but not across a cusp, where the speed has a kink: the rule is fixed, not adaptive.
    DPoint const cusp[4] = {{0, 0}, {100, 100}, {0, 100}, {100, 0}};
    double const cuspTrue = static_cast<double>(reference(cusp).arcLength());
    EXPECT_GT(std::fabs(make(cusp).GetLength() - cuspTrue), 1e-3 * cuspTrue);
    // Speeds below 1e-8 count as standing still: a line of 3e-9 has no length, one of 3e-7 has.
    EXPECT_EQ(evenLine(3e-9).GetLength(), 0.0);
    EXPECT_NEAR(evenLine(3e-7).GetLength(), 3e-7, 1e-20);
    // A uniformly parametrised line is measured exactly; a point has no length.
    EXPECT_NEAR(evenLine(300).GetLength(), 300.0, 1e-12);
    EXPECT_EQ(CBezier(DPoint(5, 5), DPoint(5, 5), DPoint(5, 5), DPoint(5, 5)).GetLength(), 0.0);
}

TEST(LegacyBezier, TFromLengthInvertsTheLength) {
    for (auto const* p : {&arch, &loop, &lopsided}) {
        CBezier const curve = make(*p);
        double const total = curve.GetLength();
        double previous = 0.0;
        for (double fraction : {0.001, 0.1, 0.25, 0.5, 0.77, 0.999}) {
            double const t = curve.GetTFromLength(fraction * total);
            EXPECT_NEAR(curve.GetLength(0.0, t), fraction * total, 1e-9);
            EXPECT_GT(t, previous);
            previous = t;
        }
        EXPECT_EQ(curve.GetTFromLength(0.0), 0.0);
        EXPECT_EQ(curve.GetTFromLength(-3.0), 0.0);
        EXPECT_EQ(curve.GetTFromLength(total), 1.0);
        EXPECT_EQ(curve.GetTFromLength(2 * total), 1.0);
        EXPECT_EQ(curve.GetTFromLength(NAN), 0.0);
    }
    EXPECT_NEAR(evenLine(300).GetTFromLength(75.0), 0.25, 1e-12);
    // A handle on its anchor stops the curve dead at t = 0 (zero speed); the search still converges.
    CBezier const stalled(DPoint(0, 0), DPoint(0, 0), DPoint(50, 80), DPoint(100, 0));
    double const t = stalled.GetTFromLength(1.0);
    EXPECT_NEAR(stalled.GetLength(0.0, t), 1.0, 1e-9);
}

TEST(LegacyBezier, PolylineLengthSamplesUniformParameters) {
    BezierProbe const probe(arch[0], arch[1], arch[2], arch[3]);
    LongDoubleCubic const ref = reference(arch);
    for (int n : {1, 2, 10, 37}) {
        EXPECT_NEAR(probe.GetL(n), static_cast<double>(ref.polyline(n)), 1e-10);
    }
    EXPECT_EQ(probe.GetL(0), probe.GetL(1));
    EXPECT_EQ(probe.GetL(1), 100.0);
}

TEST(LegacyBezier, FlatteningAppendsEachPiecesLastThreeControlPointsLeftHalfFirst) {
    // Every leg within the tolerance: the segment is one piece, written P1, P2, P3.
    CBezier const small(DPoint(0, 0), DPoint(0.5, 0), DPoint(1, 0.5), DPoint(1, 1));
    CArray<DPoint, DPoint> out;
    small.GetPolyline(out);
    ASSERT_EQ(out.GetSize(), 4);
    EXPECT_EQ(out[0], DPoint(0, 0));
    EXPECT_EQ(out[1], DPoint(0.5, 0));
    EXPECT_EQ(out[2], DPoint(1, 0.5));
    EXPECT_EQ(out[3], DPoint(1, 1));
    // A non-empty output already holds the joint: P0 is not written again.
    small.GetPolyline(out);
    ASSERT_EQ(out.GetSize(), 7);
    EXPECT_EQ(out[4], DPoint(0.5, 0));
    EXPECT_EQ(out[6], DPoint(1, 1));

    // One halving: the left half's P1, P2, P3, then the right half's (all dyadic, so exact).
    CBezier const once(DPoint(0, 0), DPoint(0, 1.5), DPoint(1.5, 1.5), DPoint(1.5, 0));
    out.RemoveAll();
    once.GetPolyline(out);
    DPoint const expected[] = {{0, 0},         {0, 0.75},   {0.375, 1.125}, {0.75, 1.125},
                               {1.125, 1.125}, {1.5, 0.75}, {1.5, 0}};
    ASSERT_EQ(out.GetSize(), 7);
    for (int i = 0; i < 7; ++i) {
        EXPECT_EQ(out[i], expected[i]) << i;
    }
}

TEST(LegacyBezier, FlatteningTracksTheCurveWithinTheTolerance) {
    for (auto const* p : {&arch, &loop, &lopsided}) {
        CBezier curve = make(*p);
        curve.SetResolution(0.5);
        CArray<DPoint, DPoint> out;
        curve.GetPolyline(out);
        EXPECT_EQ(out[0], (*p)[0]);
        EXPECT_EQ(out[out.GetSize() - 1], (*p)[3]);
        // Every leaf's control legs are within 0.5 and its ends lie on the curve, so every vertex is
        // within 0.5 of the curve. Twenty vertices spread along are checked.
        LongDoubleCubic const ref = reference(*p);
        ASSERT_GT(out.GetSize(), 20);
        int const stride = out.GetSize() / 20;
        for (int i = 1; i < out.GetSize(); i += stride) {
            EXPECT_LE(static_cast<double>(ref.nearest(out[i], 1000).distance), 0.5 + 1e-9);
        }
    }
}

// Halving a uniformly parametrised line halves all three control legs: the flattening of a line of
// length d with tolerance tol has 3 * 2^k + 1 points, k the fewest halvings that bring d / 3 within tol.
int expectedLinePoints(double length, double tolerance) {
    int pieces = 1;
    for (double leg = length / 3; leg > tolerance; leg /= 2) {
        pieces *= 2;
    }
    return 3 * pieces + 1;
}

TEST(LegacyBezier, LongChordsRaiseTheFlatteningTolerance) {
    struct Case {
        double chord;
        double resolution;
        double tolerance;
    };
    Case const cases[] = {
        {1000, 1, 1},     {2000, 1, 1},       {2000.5, 1, 3}, {3000, 1, 3},   {3000, 7, 7},
        {5000, 1, 3},     {5001, 1, 5},       {10000, 1, 5},  {10001, 1, 10}, {100000, 1, 10},
        {100001, 1, 100}, {100001, 250, 250}, {3000, 0.5, 3},
    };
    for (Case const& c : cases) {
        CBezier line = evenLine(c.chord);
        line.SetResolution(c.resolution);
        CArray<DPoint, DPoint> out;
        line.GetPolyline(out);
        EXPECT_EQ(out.GetSize(), expectedLinePoints(c.chord, c.tolerance)) << c.chord << " " << c.resolution;
    }
}

TEST(LegacyBezier, StraightSegmentsSkipSubdivisionOnlyWhenAsked) {
    CBezier line(DPoint(0, 0), DPoint(0, 0), DPoint(10, 0), DPoint(10, 0));
    CArray<DPoint, DPoint> out;
    line.GetPolyline(out);
    ASSERT_GT(out.GetSize(), 2);
    for (int i = 1; i < out.GetSize(); ++i) {
        EXPECT_EQ(out[i].y, 0.0);
        EXPECT_GE(out[i].x, out[i - 1].x);
    }
    line.SetExpandStraightLines(false);
    out.RemoveAll();
    line.GetPolyline(out);
    ASSERT_EQ(out.GetSize(), 2);
    EXPECT_EQ(out[1], DPoint(10, 0));
    // Handles within 1e-8 of their anchors still count as absent; one real handle does not.
    CBezier nearlyStraight(DPoint(0, 0), DPoint(5e-9, 0), DPoint(10, 5e-9), DPoint(10, 0));
    nearlyStraight.SetExpandStraightLines(false);
    out.RemoveAll();
    nearlyStraight.GetPolyline(out);
    EXPECT_EQ(out.GetSize(), 2);
    CBezier curved(DPoint(0, 0), DPoint(0, 0), DPoint(10, 3), DPoint(10, 0));
    curved.SetExpandStraightLines(false);
    out.RemoveAll();
    curved.GetPolyline(out);
    EXPECT_GT(out.GetSize(), 2);
}

TEST(LegacyBezier, FlatteningStaysBoundedOnHostileInput) {
    int const cap = 3 * (1 << 16) + 1;
    CBezier exact = make(arch);
    exact.SetResolution(0.0);
    CArray<DPoint, DPoint> out;
    exact.GetPolyline(out);
    EXPECT_EQ(out.GetSize(), cap);
    EXPECT_EQ(out[out.GetSize() - 1], arch[3]);

    CBezier broken(DPoint(0, 0), DPoint(NAN, 1), DPoint(2, 2), DPoint(3, 3));
    out.RemoveAll();
    broken.GetPolyline(out);
    EXPECT_LE(out.GetSize(), cap);

    CBezier nanResolution = make(arch);
    nanResolution.SetResolution(NAN);
    nanResolution.GetPolylineEx(out);
    EXPECT_EQ(out.GetSize(), 21); // a NaN difference never exceeds the resolution
}

TEST(LegacyBezier, UniformFlatteningComparesEveryRefinementWithTenPieces) {
    LongDoubleCubic const ref = reference(arch);
    double const ten = static_cast<double>(ref.polyline(10));
    double const twenty = static_cast<double>(ref.polyline(20));
    double const forty = static_cast<double>(ref.polyline(40));
    ASSERT_LT(forty - twenty, 0.5 * (twenty - ten)); // refinements converge much faster than 10 -> 20

    CBezier curve = make(arch);
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
    EXPECT_EQ(out[0], arch[0]);
    EXPECT_EQ(out[20480], arch[3]);
    auto const mid = ref.at(0.5L);
    expectNear(out[10240], DPoint(double(mid.x), double(mid.y)), 1e-12);
    auto const early = ref.at(3.0L / 20480);
    EXPECT_NEAR(out[3].y, static_cast<double>(early.y), 1e-12);
}

TEST(LegacyBezier, NearestParameterMatchesDenseLongDoubleSearch) {
    struct Query {
        DPoint const (*curve)[4];
        DPoint p;
    };
    Query const queries[] = {
        {&arch, {50, 20}},   {&arch, {10, 90}},      {&arch, {120, 50}},      {&arch, {-10, -10}},
        {&arch, {50, 300}},  {&loop, {30, 50}},      {&loop, {30, 80}},       {&loop, {110, -3}},
        {&lopsided, {0, 0}}, {&lopsided, {120, 60}}, {&lopsided, {260, 270}},
    };
    for (Query const& q : queries) {
        CBezier const curve = make(*q.curve);
        auto const best = reference(*q.curve).nearest(q.p);
        double const t = curve._GetCurveT(q.p);
        EXPECT_EQ(t, curve.GetNearestCurvePointT(q.p));
        EXPECT_GE(t, 0.0);
        EXPECT_LE(t, 1.0);
        EXPECT_LE(distance(curve.GetCurvePoint(t), q.p), static_cast<double>(best.distance) + 1e-9)
            << q.p.x << "," << q.p.y;
        EXPECT_NEAR(t, static_cast<double>(best.t), 1e-6) << q.p.x << "," << q.p.y;
    }
}

TEST(LegacyBezier, NearestParameterOfAPointOnTheCurveIsFoundToTheFinestStep) {
    // Eight tenfold refinements of the 0.01 scan leave a step of 1e-10.
    for (auto const* p : {&arch, &loop, &lopsided}) {
        CBezier const curve = make(*p);
        LongDoubleCubic const ref = reference(*p);
        for (long double t0 : {0.0123456789L, 0.31415926535L, 0.5L, 0.70710678118L, 0.987654321L}) {
            auto const on = ref.at(t0);
            DPoint const q(static_cast<double>(on.x), static_cast<double>(on.y));
            EXPECT_NEAR(curve._GetCurveT(q), static_cast<double>(t0), 1.5e-10);
        }
    }
    // Past the end anchor: the coarse scan stops short of 1, the refinement reaches it.
    EXPECT_GT(make(arch)._GetCurveT(DPoint(110, -5)), 1 - 1e-9);
}

TEST(LegacyBezier, NearestParameterKeepsTheFirstOfEquallyNearPoints) {
    // A closed loop meets itself at P0 = P3: t = 0 and t = 1 are the same point; 0 comes first.
    CBezier const closed(DPoint(0, 0), DPoint(100, 100), DPoint(-100, 100), DPoint(0, 0));
    EXPECT_EQ(closed._GetCurveT(DPoint(0, -5)), 0.0);
    EXPECT_EQ(closed._GetCurveT(DPoint(NAN, 0)), 0.0);
}

TEST(LegacyBezier, DraggingNudgesTheFarHandleAndSolvesTheNearOne) {
    DPoint const a(0, 0), h1(30, 0), h2(60, 0), b(90, 0);
    // t = 1/4: C = (22.5, 0). The far handle P2 moves by 8/9 of the miss (w = -16/9 * 3/4 + 20/9),
    // then P1 is solved so that C(1/4) = target.
    CBezier early(a, h1, h2, b);
    early.DragToPoint(0.25, DPoint(22.5, 9));
    EXPECT_EQ(early.GetP0(), a);
    EXPECT_EQ(early.GetP3(), b);
    expectNear(early.GetP2(), DPoint(60.0, 8.0), 1e-12);
    expectNear(early.GetP1(), DPoint(30.0, 56.0 / 3), 1e-12);
    // Up to t = 1/2 it is P2 that is nudged: at 0.45 by w = -16/9 * 0.55 + 20/9 = 11.2 / 9.
    CBezier middle(a, h1, h2, b);
    middle.DragToPoint(0.45, DPoint(40.5, 9));
    EXPECT_NEAR(middle.GetP2().y, 11.2, 1e-12);
    // t = 3/4 mirrors it: P1 is nudged, P2 solved.
    CBezier late(a, h1, h2, b);
    late.DragToPoint(0.75, DPoint(67.5, 9));
    expectNear(late.GetP1(), DPoint(30.0, 8.0), 1e-12);
    expectNear(late.GetP2(), DPoint(60.0, 56.0 / 3), 1e-12);
}

TEST(LegacyBezier, DraggingASegmentWithoutHandlesPutsHandlesOnTheChordFirst) {
    DPoint const a(0, 0), b(100, 0);
    // t = 0.5: P1 at 0.33 of the chord from P0, P2 at 0.335 from P3; the curve point there is
    // 0.375 * 33 + 0.375 * 66.5 + 0.125 * 100 = 49.8125, so dragging onto it changes nothing more.
    CBezier still(a, a, b, b);
    still.DragToPoint(0.5, DPoint(49.8125, 0));
    EXPECT_NEAR(still.GetP1().x, 33.0, 1e-12);
    EXPECT_NEAR(still.GetP2().x, 66.5, 1e-12);
    EXPECT_NEAR(still.GetP1().y, 0.0, 1e-12);
    // Lifting it by 10 moves the far handle by w = -16/9 * 0.5 + 20/9 = 4/3 of that.
    CBezier lifted(a, a, b, b);
    lifted.DragToPoint(0.5, DPoint(49.8125, 10));
    expectNear(lifted.GetP2(), DPoint(66.5, 40.0 / 3), 1e-12);
    // t = 0.8: alpha = 0.17 * 0.8 + 0.25 = 0.386, beta = 0.6 * 0.2 + 0.03 = 0.15; the far handle is P1,
    // nudged by w = -16/9 * 0.8 + 20/9 = 0.8 of the miss.
    CBezier const created(a, DPoint(38.6, 0), DPoint(85, 0), b);
    DPoint const onChord = created.GetCurvePoint(0.8);
    CBezier grabbed(a, a, b, b);
    grabbed.DragToPoint(0.8, onChord + DVector(0, 10));
    expectNear(grabbed.GetP1(), DPoint(38.6, 8.0), 1e-12);
    EXPECT_NEAR(grabbed.GetP2().x, 85.0, 1e-9);
    // A segment with one real handle is not given new ones.
    CBezier oneHandle(a, a, DPoint(80, 20), b);
    DPoint const before = oneHandle.GetCurvePoint(0.5);
    oneHandle.DragToPoint(0.5, before + DVector(0, 9));
    expectNear(oneHandle.GetP2(), DPoint(80.0, 20.0 + 12.0), 1e-12);
}

TEST(LegacyBezier, DraggedCurvePassesThroughTheTarget) {
    for (auto const* p : {&arch, &loop, &lopsided}) {
        for (double t : {0.01, 0.2, 0.5, 0.5000001, 0.66, 0.99}) {
            CBezier curve = make(*p);
            DPoint const target(37.5, -12.25);
            curve.DragToPoint(t, target);
            EXPECT_EQ(curve.GetP0(), (*p)[0]);
            EXPECT_EQ(curve.GetP3(), (*p)[3]);
            DPoint const reached = curve.GetCurvePoint(t);
            EXPECT_NEAR(reached.x, target.x, 1e-9) << t;
            EXPECT_NEAR(reached.y, target.y, 1e-9) << t;
        }
    }
}

TEST(LegacyBezier, DraggingAtAnEndMovesTheAnchorWithItsHandle) {
    CBezier start = make(arch);
    start.DragToPoint(5e-9, DPoint(-10, 5));
    EXPECT_EQ(start.GetP0(), DPoint(-10, 5));
    EXPECT_EQ(start.GetP1(), DPoint(-10, 105));
    EXPECT_EQ(start.GetP2(), arch[2]);
    CBezier end = make(arch);
    end.DragToPoint(1.7, DPoint(110, 10)); // clamped to 1
    EXPECT_EQ(end.GetP3(), DPoint(110, 10));
    EXPECT_EQ(end.GetP2(), DPoint(110, 110));
    EXPECT_EQ(end.GetP1(), arch[1]);

    CBezier untouched = make(arch);
    untouched.DragToPoint(NAN, DPoint(1, 1));
    untouched.DragToPoint(0.5, DPoint(INFINITY, 1));
    untouched.DragToPoint(0.5, DPoint(1, NAN));
    EXPECT_EQ(untouched.GetP1(), arch[1]);
    EXPECT_EQ(untouched.GetP2(), arch[2]);
}

TEST(LegacyBezier, WritesBackIntoTheEntriesItWasMadeFrom) {
    BPOINT a{{-5, -5}, {0, 0}, {0, 100}};
    BPOINT b{{100, 100}, {100, 0}, {105, -5}};
    CBezier curve(a, b);
    EXPECT_EQ(curve.GetP1(), DPoint(0, 100));
    EXPECT_EQ(curve.GetP2(), DPoint(100, 100));
    EXPECT_EQ(curve.GetResolution(), 1.0);
    EXPECT_TRUE(curve.GetExpandStraightLines());
    curve.DragToPoint(0.3, DPoint(20, 90));
    curve.GetBPoints(a, b);
    EXPECT_EQ(a.before, DPoint(-5, -5));
    EXPECT_EQ(b.after, DPoint(105, -5));
    EXPECT_EQ(a.after, curve.GetP1());
    EXPECT_EQ(b.before, curve.GetP2());
    EXPECT_EQ(CBezier(a, b).GetCurvePoint(0.3), curve.GetCurvePoint(0.3));
}

TEST(LegacyBezier, ChainLengthSumsTheFirstSegments) {
    CArray<BPOINT, BPOINT> chain;
    EXPECT_EQ(CBezier::GetBPointArrayLength(chain, -1), 0.0);
    chain.Add(BPOINT{{0, 0}, {0, 0}, {10, 0}});
    EXPECT_EQ(CBezier::GetBPointArrayLength(chain, -1), 0.0);
    chain.Add(BPOINT{{20, 0}, {30, 0}, {30, 10}});
    chain.Add(BPOINT{{30, 20}, {30, 30}, {30, 30}});
    double const first = CBezier(chain[0], chain[1]).GetLength();
    double const second = CBezier(chain[1], chain[2]).GetLength();
    EXPECT_NEAR(first, 30.0, 1e-12);
    EXPECT_DOUBLE_EQ(CBezier::GetBPointArrayLength(chain, -1), first + second);
    EXPECT_EQ(CBezier::GetBPointArrayLength(chain, 0), 0.0);
    EXPECT_EQ(CBezier::GetBPointArrayLength(chain, 1), first);
    EXPECT_DOUBLE_EQ(CBezier::GetBPointArrayLength(chain, 2), first + second);
    EXPECT_DOUBLE_EQ(CBezier::GetBPointArrayLength(chain, 99), first + second);
}

} // namespace
