#include "simplepath/simplepath.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <random>

namespace {

double const pi = std::acos(-1.0);

// Transfers (or Returns) the point and checks the result.
void expectMaps(CView3D& v, double x, double y, double z, double ex, double ey, double ez,
                double tolerance = 0, bool back = false) {
    back ? v.Return(x, y, z) : v.Transfer(x, y, z);
    EXPECT_NEAR(v.x(), ex, tolerance);
    EXPECT_NEAR(v.y(), ey, tolerance);
    EXPECT_NEAR(v.z(), ez, tolerance);
    EXPECT_EQ(v.w(), 1.0);
}

TEST(LegacyView3D, TranslateMovesByTheNegatedOffsetAndNewStepsActFirst) {
    CView3D v;
    v.Translate(5, 0, -3);
    expectMaps(v, 0, 0, 0, -5, 0, 3);
    v.Scale(2, 1, 1); // scaled first, then moved: 1 * 2 - 5
    expectMaps(v, 1, 0, 0, -3, 0, 3);
    // *= appends the other transform after this one: (1 - 5) * 2 = -8.
    CView3D moved, scaled;
    moved.Translate(5, 0, 0);
    scaled.Scale(2, 1, 1);
    moved *= scaled;
    expectMaps(moved, 1, 0, 0, -8, 0, 0);
    scaled *= scaled;
    expectMaps(scaled, 1, 0, 0, 4, 0, 0);
}

TEST(LegacyView3D, RotationsAboutEachAxisAndTheTwoDimensionalReadings) {
    CView3D z, x, y, both, tiny;
    z.Rotate(pi / 2);
    expectMaps(z, 1, 0, 0, 0, 1, 0, 1e-15);
    x.Rotate(pi / 2, 0, 0);
    expectMaps(x, 0, 1, 0, 0, 0, 1, 1e-15);
    y.Rotate(0, pi / 2, 0);
    expectMaps(y, 0, 0, 1, 1, 0, 0, 1e-15);
    // Within one call z reaches a point first, then y, then x: (1, 0, 0) -> (0, 1, 0) -> (0, 0, 1).
    both.Rotate(pi / 2, 0, pi / 2);
    expectMaps(both, 1, 0, 0, 0, 0, 1, 1e-15);
    tiny.Rotate(5e-9, -5e-9, 5e-9); // below 1e-8: no rotation at all
    expectMaps(tiny, 1e9, 1e9, 1e9, 1e9, 1e9, 1e9);

    // The last step given acts first: scale, then turn, then move by (10, 20).
    CView3D v;
    v.Translate(-10, -20, 0);
    v.Rotate(pi / 6);
    v.Scale(2, 3, 1);
    EXPECT_NEAR(v.GetAngle(), pi / 6, 1e-15);
    EXPECT_NEAR(v.x(), 10.0 + 2 * std::cos(pi / 6), 1e-13); // the readings overwrite the vector
    EXPECT_NEAR(v.GetXScale(), 2.0, 1e-15);
    EXPECT_NEAR(v.GetYScale(), 3.0, 1e-15);
    EXPECT_EQ(v.GetXOffset(), 10.0);
    EXPECT_EQ(v.GetYOffset(), 20.0);
}

TEST(LegacyView3D, FitsOneRectangleOntoAnotherWithoutMirroring) {
    CView3D v;
    v.Translate(1, 2, 3); // discarded: the fit starts from the identity
    v.MakeTransform(DRECT{0, 0, 10, 10}, DRECT{100, 100, 120, 140});
    expectMaps(v, 0, 0, 0, 100, 100, 0);
    expectMaps(v, 10, 10, 7, 120, 140, 7);
    v.MakeTransform(DRECT{0, 0, 10, 10}, DRECT{120, 140, 100, 100});
    expectMaps(v, 0, 0, 0, 100, 100, 0);
}

TEST(LegacyView3D, ReturnUndoesTransferThroughTheLazyInverse) {
    std::mt19937 random(5);
    std::uniform_real_distribution<double> angle(-pi, pi), factor(0.1, 10), offset(-1000, 1000);
    for (int i = 0; i < 50; ++i) {
        CView3D v;
        v.Rotate(angle(random), angle(random), angle(random));
        v.Scale(factor(random), factor(random), factor(random));
        v.Translate(offset(random), offset(random), offset(random));
        // Gauss-Jordan with partial pivoting: mat * imat - I is a few roundings times |mat| |imat|
        // (infinity norms); the product is formed in long double.
        auto norm = [](CView3D::Matrix const& a) {
            double largest = 0;
            for (auto const& row : a) {
                largest = std::fmax(largest, std::fabs(row[0]) + std::fabs(row[1]) + std::fabs(row[2]) +
                                                 std::fabs(row[3]));
            }
            return largest;
        };
        double const bound = 16 * 4 * 2.2e-16 * norm(v.mat()) * norm(v.imat());
        for (int r = 0; r < 4; ++r) {
            for (int c = 0; c < 4; ++c) {
                long double sum = 0;
                for (int k = 0; k < 4; ++k) {
                    sum += (long double)v.mat()[r][k] * v.imat()[k][c];
                }
                EXPECT_NEAR(double(sum), r == c ? 1.0 : 0.0, bound);
            }
        }
    }
    // A zero first pivot needs a row exchange; a tiny one would swamp the rest without it.
    CView3D v;
    v.SetMat({{0, 1, 0, 0}, {-1, 0, 0, 0}, {0, 0, 1, 0}, {5, 6, 0, 1}});
    expectMaps(v, 2, 3, 4, 2, 8, 4);
    expectMaps(v, 2, 8, 4, 2, 3, 4, 1e-14, true);
    v.SetMat({{1e-20, 1, 0, 0}, {1, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}});
    expectMaps(v, 4, 7, 0, 3, 4, 0, 1e-12, true);
    // The cached inverse follows every way of changing the matrix.
    CView3D w;
    expectMaps(w, 1, 1, 1, 1, 1, 1, 0, true);
    w.Scale(2, 2, 2);
    expectMaps(w, 4, 4, 4, 2, 2, 2, 0, true);
    w.mat()[3][0] = 10; // a write through the accessor
    expectMaps(w, 4, 4, 4, -3, 2, 2, 0, true);
    w.Reset();
    expectMaps(w, 4, 4, 4, 4, 4, 4, 0, true);
}

TEST(LegacyView3D, SingularMatricesReturnPointsUnchanged) {
    CView3D flat, zeroWidth, poisoned;
    flat.Scale(0, 1, 1);
    flat.Rotate(0.3);
    zeroWidth.MakeTransform(DRECT{5, 0, 5, 10}, DRECT{0, 0, 100, 100});
    poisoned.SetMat({{1, 0, 0, 0}, {0, 1, 0, 0}, {0, NAN, 1, 0}, {0, 0, 0, 1}});
    for (CView3D* v : {&flat, &zeroWidth, &poisoned}) {
        EXPECT_FALSE(v->IsInvertible());
        expectMaps(*v, 3, 4, 5, 3, 4, 5, 0, true);
    }
    poisoned.Reset();
    EXPECT_TRUE(poisoned.IsInvertible());
}

TEST(LegacyView3D, CopiesTakeTheMatrixOnly) {
    CView3D source, assigned;
    source.Rotate(0.7);
    source.Translate(3, 4, 0);
    source.Transfer(1, 2, 3);
    CView3D copy(source);
    expectMaps(copy, 1, 2, 3, source.x(), source.y(), source.z());
    expectMaps(copy, source.x(), source.y(), source.z(), 1, 2, 3, 1e-12, true);
    assigned.Transfer(-1, -2, -3);
    assigned = source;
    EXPECT_EQ(assigned.x(), -1.0); // the vector is not copied
    expectMaps(assigned, 1, 2, 3, source.x(), source.y(), source.z());
}

TEST(LegacyView3D, IntegerPointRoundsHalfAwayFromZero) {
    struct Case {
        double in;
        std::int32_t out;
    } const cases[] = {{2.5, 3},      {-2.5, -3}, {0.5, 1},          {-0.5, -1},         {2.4999, 2},
                       {-2.4999, -2}, {-0.0, 0},  {1e20, INT32_MAX}, {-1e20, INT32_MIN}, {NAN, 0}};
    CView3D v;
    for (Case const& c : cases) {
        v.Transfer(c.in, c.in, 0);
        EXPECT_EQ(v.point().x, c.out) << c.in;
        EXPECT_EQ(v.point().y, c.out) << c.in;
    }
}

} // namespace
