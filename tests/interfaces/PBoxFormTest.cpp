#include "simplepath/interfaces/PBoxForm.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace {

// A moderately bent envelope over the box (100, 50)-(400, 250): every side bulges or sags.
PBezier const kBottom({0, 0}, {300, -120}, {700, 180}, {1000, 100});
PBezier const kTop({-50, 800}, {300, 950}, {800, 700}, {1100, 900});
PBezier const kLeft({0, 0}, {-150, 250}, {60, 550}, {-50, 800});
PBezier const kRight({1000, 100}, {1150, 400}, {950, 600}, {1100, 900});
PBoxForm const kBent({100, 50}, {400, 250}, kBottom, kTop, kLeft, kRight);

TEST(PBoxForm, StraightSidesAreBilinearAndCurvedSidesAreFollowedExactly) {
    PBoxForm const quad({0, 0}, {2, 1}, {10, 10}, {30, 12}, {8, 40}, {35, 45});
    EXPECT_LT(
        distance(quad.xform(DPoint(1, 0.5)), DPoint((10 + 30 + 8 + 35) / 4.0, (10 + 12 + 40 + 45) / 4.0)),
        1e-12); // the bilinear centre is the corners' mean
    EXPECT_LT(distance(kBent.xform(DPoint(100 + 300 * 0.3, 50)), kBottom.bValue(0.3)), 1e-9);
    EXPECT_LT(distance(kBent.xform(DPoint(400, 50 + 200 * 0.8)), kRight.bValue(0.8)), 1e-9);
    // The inverse undoes the forward map, a little beyond the box too.
    std::mt19937_64 rng(7);
    std::uniform_real_distribution<double> ux(100 - 30, 400 + 30), uy(50 - 20, 250 + 20);
    for (int i = 0; i < 500; ++i) {
        DPoint const p(ux(rng), uy(rng));
        EXPECT_LT(distance(kBent.xforminv(kBent.xform(p)), p), 1e-9 * 300) << p.x << "," << p.y;
    }
}

TEST(PBoxForm, FoldedDegenerateAndNonFiniteInputEndsQuietly) {
    // The top side crosses the bottom one: the envelope folds over itself.
    PBoxForm const folded({0, 0}, {1, 1}, PBezier({0, 0}, {300, 900}, {700, -900}, {1000, 0}),
                          PBezier({0, 100}, {300, -800}, {700, 1000}, {1000, 100}),
                          PBezier({0, 0}, {0, 33}, {0, 66}, {0, 100}),
                          PBezier({1000, 0}, {1000, 33}, {1000, 66}, {1000, 100}));
    DPoint const r = folded.xforminv(DPoint(500, 50));
    EXPECT_TRUE(std::isfinite(r.x) && std::isfinite(r.y));
    PBoxForm const noBox({5, 5}, {5, 5}, {0, 0}, {1, 0}, {0, 1}, {1, 1}); // empty source box
    EXPECT_EQ(noBox.xforminv(DPoint(0.5, 0.5)), DPoint(5, 5));
    EXPECT_TRUE(std::isnan(kBent.xform(DPoint(INFINITY, 0)).x));
}

} // namespace
