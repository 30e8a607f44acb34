#include "simplepath/interfaces/PBoxForm.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace {

// A moderately bent envelope over the box (100, 50)-(400, 250): every side bulges or sags.
PBoxForm bentEnvelope() {
    DPoint const c00(0, 0), c10(1000, 100), c01(-50, 800), c11(1100, 900);
    PBezier const bottom(c00, {300, -120}, {700, 180}, c10);
    PBezier const top(c01, {300, 950}, {800, 700}, c11);
    PBezier const left(c00, {-150, 250}, {60, 550}, c01);
    PBezier const right(c10, {1150, 400}, {950, 600}, c11);
    return PBoxForm({100, 50}, {400, 250}, bottom, top, left, right);
}

TEST(PBoxForm, DefaultIsTheIdentityAndStraightSidesAreBilinear) {
    PBoxForm const id;
    DPoint const p(0.25, 0.75);
    EXPECT_EQ(id.xform(p), p);
    EXPECT_NEAR(id.xforminv(p).x, 0.25, 1e-15);

    PBoxForm const quad({0, 0}, {2, 1}, {10, 10}, {30, 12}, {8, 40}, {35, 45});
    PBoxPoint q(2, 1);
    quad.xform(q);
    EXPECT_NEAR(q.x, 35, 1e-12);
    EXPECT_NEAR(q.y, 45, 1e-12);
    DPoint const mid = quad.xform(DPoint(1, 0.5)); // the bilinear centre is the corners' mean
    EXPECT_NEAR(mid.x, (10 + 30 + 8 + 35) / 4.0, 1e-12);
    EXPECT_NEAR(mid.y, (10 + 12 + 40 + 45) / 4.0, 1e-12);
}

TEST(PBoxForm, CurvedSidesAreFollowedExactly) {
    PBoxForm const f = bentEnvelope();
    PBezier const bottom(DPoint(0, 0), {300, -120}, {700, 180}, {1000, 100});
    for (double u : {0.0, 0.3, 0.8, 1.0}) {
        DPoint const on = f.xform(DPoint(100 + 300 * u, 50));
        EXPECT_NEAR(on.x, bottom.bValue(u).x, 1e-9);
        EXPECT_NEAR(on.y, bottom.bValue(u).y, 1e-9);
    }
}

TEST(PBoxForm, InverseUndoesTheForwardMap) {
    std::mt19937_64 rng(7);
    std::uniform_real_distribution<double> ux(100 - 30, 400 + 30), uy(50 - 20, 250 + 20);
    PBoxForm const curved = bentEnvelope();
    PBoxForm const straight({100, 50}, {400, 250}, {0, 0}, {1000, 100}, {-50, 800}, {1100, 900});
    for (PBoxForm const* f : {&curved, &straight}) {
        for (int i = 0; i < 2000; ++i) {
            DPoint const p(ux(rng), uy(rng));
            PBoxPoint q(p);
            f->xform(q);
            f->xforminv(q);
            EXPECT_NEAR(q.x, p.x, 1e-9 * 300);
            EXPECT_NEAR(q.y, p.y, 1e-9 * 200);
        }
    }
    // Far from the origin.
    DVector const far(1e7, -1e7);
    PBoxForm const moved({0, 0}, {1, 1}, DPoint(0, 0) + far, DPoint(10, 1) + far, DPoint(-1, 10) + far,
                         DPoint(12, 12) + far);
    DPoint const back = moved.xforminv(moved.xform(DPoint(0.3, 0.6)));
    EXPECT_NEAR(back.x, 0.3, 1e-9);
    EXPECT_NEAR(back.y, 0.6, 1e-9);
}

TEST(PBoxForm, FoldedDegenerateAndNonFiniteInputEndsQuietly) {
    // The top side crosses the bottom one: the envelope folds over itself.
    PBezier const bottom({0, 0}, {300, 900}, {700, -900}, {1000, 0});
    PBezier const top({0, 100}, {300, -800}, {700, 1000}, {1000, 100});
    PBezier const left({0, 0}, {0, 33}, {0, 66}, {0, 100});
    PBezier const right({1000, 0}, {1000, 33}, {1000, 66}, {1000, 100});
    PBoxForm const folded({0, 0}, {1, 1}, bottom, top, left, right);
    for (double x : {0.1, 0.5, 0.9}) {
        DPoint const r = folded.xforminv(DPoint(x * 1000, 50));
        EXPECT_TRUE(std::isfinite(r.x) && std::isfinite(r.y));
    }
    PBoxForm const flat({0, 0}, {1, 1}, {0, 0}, {1, 0}, {0, 0}, {1, 0}); // zero height
    DPoint const r = flat.xforminv(DPoint(0.5, 3));
    EXPECT_TRUE(std::isfinite(r.x) && std::isfinite(r.y));
    PBoxForm const noBox({5, 5}, {5, 5}, {0, 0}, {1, 0}, {0, 1}, {1, 1}); // empty source box
    EXPECT_EQ(noBox.xform(DPoint(9, 9)), DPoint(0, 0));
    EXPECT_EQ(noBox.xforminv(DPoint(0.5, 0.5)), DPoint(5, 5));
    PBoxPoint nan(NAN, 1);
    bentEnvelope().xforminv(nan);
    EXPECT_TRUE(std::isnan(nan.x));
    EXPECT_TRUE(std::isnan(bentEnvelope().xform(DPoint(INFINITY, 0)).x));
}

} // namespace
