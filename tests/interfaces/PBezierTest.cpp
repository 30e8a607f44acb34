#include "simplepath/interfaces/PBezier.h"
#include "simplepath/interfaces/PBezierCurve.h"

#include <gtest/gtest.h>

namespace {

PBezier const kS{{0, 0}, {1, 2}, {3, 2}, {4, 0}};

TEST(PBezierBasics, ConstructionIndexingAndEquality) {
    PBezier zero;
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(zero[i], DPoint());
    }
    PBezier b = kS;
    EXPECT_EQ(b, kS);
    b[2] = {3, 2.5};
    EXPECT_NE(b, kS);
    EXPECT_EQ(b[-7], b[0]);
    EXPECT_EQ(b[9], b[3]);
}

TEST(PBezierBasics, EndsAreExactAndSplitSharesTheJoin) {
    PBezier const b{{0.1, 1e-9}, {1e9, -3.3}, {-7.7, 0.3}, {2.2, 5.9}};
    EXPECT_EQ(b.bValue(0.0), b[0]);
    EXPECT_EQ(b.bValue(1.0), b[3]);
    for (double t : {0.0, 0.3, 0.5, 1.0}) {
        PBezier l, r;
        b.split(t, l, r);
        EXPECT_EQ(l[0], b[0]);
        EXPECT_EQ(r[3], b[3]);
        EXPECT_EQ(l[3], r[0]);
        EXPECT_NEAR(l[3].x, b.bValue(t).x, 1e-6);
        EXPECT_NEAR(l[3].y, b.bValue(t).y, 1e-15 * 1e9);
        // Halves trace the same curve.
        DPoint const q = l.bValue(0.5), qq = b.bValue(0.5 * t);
        EXPECT_NEAR(q.x, qq.x, 1e-6);
        EXPECT_NEAR(q.y, qq.y, 1e-6);
    }
    PBezier same = b;
    same.split(0.5, same, same); // aliasing is allowed
    EXPECT_EQ(same[3], b[3]);
}

TEST(PBezierBasics, DerivativeMatchesDifferenceQuotient) {
    for (double t : {0.0, 0.25, 0.7, 1.0}) {
        double const h = 1e-6;
        double const a = t < h ? t : t - h, z = t > 1 - h ? t : t + h;
        DVector const fd = (kS.bValue(z) - kS.bValue(a)) / (z - a);
        DVector const d = kS.derivative(t);
        EXPECT_NEAR(d.x, fd.x, 1e-4);
        EXPECT_NEAR(d.y, fd.y, 1e-4);
    }
    EXPECT_EQ(kS.derivative(0.0), 3.0 * (kS[1] - kS[0]));
    EXPECT_EQ(kS.derivative(1.0), 3.0 * (kS[3] - kS[2]));
}

TEST(PBezierCurveBasics, SegmentsFlagAndEquality) {
    PBezierCurve a;
    EXPECT_EQ(a.length(), 0);
    a.getSegments().add(kS);
    a.getSegments().add(PBezier());
    EXPECT_EQ(a.length(), 2);
    PBezierCurve b = a;
    EXPECT_EQ(a, b);
    b.setStrictIsClosed(1);
    EXPECT_EQ(b.strictIsClosed(), 1);
    EXPECT_NE(a, b);
    b.setStrictIsClosed(0);
    b.getSegments()[1][2] = {1, 1};
    EXPECT_NE(a, b);
}

} // namespace
