#include "simplepath/interfaces/PBezier.h"

#include <gtest/gtest.h>

namespace {

TEST(PBezierBasics, IndicesClampAndEndsAreExact) {
    PBezier const b{{0.1, 1e-9}, {1e9, -3.3}, {-7.7, 0.3}, {2.2, 5.9}};
    EXPECT_EQ(b[-7], b[0]);
    EXPECT_EQ(b[9], b[3]);
    EXPECT_EQ(b.bValue(0.0), b[0]);
    EXPECT_EQ(b.bValue(1.0), b[3]);
    PBezier const s{{0, 0}, {1, 2}, {3, 2}, {4, 0}};
    DVector const fd = (s.bValue(0.7 + 1e-6) - s.bValue(0.7 - 1e-6)) / 2e-6;
    EXPECT_LT((s.derivative(0.7) - fd).length(), 1e-6);
}

TEST(PBezierBasics, SplitHalvesShareTheJoinAndTraceTheCurve) {
    PBezier const b{{0.1, 1e-9}, {1e9, -3.3}, {-7.7, 0.3}, {2.2, 5.9}};
    for (double t : {0.0, 0.3, 1.0}) {
        PBezier l, r;
        b.split(t, l, r);
        EXPECT_EQ(l[0], b[0]);
        EXPECT_EQ(r[3], b[3]);
        EXPECT_EQ(l[3], r[0]);
        EXPECT_LT(distance(l[3], b.bValue(t)), 1e-6);
        EXPECT_LT(distance(l.bValue(0.5), b.bValue(0.5 * t)), 1e-6);
        EXPECT_LT(distance(r.bValue(0.5), b.bValue(0.5 + 0.5 * t)), 1e-6);
    }
    PBezier same = b;
    same.split(0.5, same, same); // aliasing is allowed
    EXPECT_EQ(same[3], b[3]);
}

} // namespace
