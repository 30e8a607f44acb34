#include "simplepath/simplepath.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

namespace {

constexpr double pi = 3.14159265358979323846;

void expectVector(CView3D const& v, double x, double y, double z, double tolerance = 1e-12) {
    EXPECT_NEAR(v.x(), x, tolerance);
    EXPECT_NEAR(v.y(), y, tolerance);
    EXPECT_NEAR(v.z(), z, tolerance);
    EXPECT_EQ(v.w(), 1.0);
}

TEST(LegacyView3D, StartsAsTheIdentity) {
    CView3D v;
    EXPECT_EQ(v.x(), 0.0);
    EXPECT_EQ(v.w(), 1.0);
    v.Transfer(3, -4, 5);
    expectVector(v, 3, -4, 5, 0);
    EXPECT_EQ(v.GetAngle(), 0.0);
    EXPECT_EQ(v.GetXScale(), 1.0);
    EXPECT_EQ(v.GetYScale(), 1.0);
    EXPECT_EQ(v.GetXOffset(), 0.0);
    EXPECT_EQ(v.GetYOffset(), 0.0);
    EXPECT_TRUE(v.IsInvertible());
}

TEST(LegacyView3D, TranslateMovesByTheNegatedOffset) {
    CView3D v;
    v.Translate(5, 0, 0);
    v.Transfer(0, 0, 0);
    EXPECT_EQ(v.x(), -5.0);
    v.Translate(0, 2, -3);
    v.Transfer(1, 1, 1);
    expectVector(v, -4, -1, 4, 0);
    EXPECT_EQ(v.GetXOffset(), -5.0);
    EXPECT_EQ(v.GetYOffset(), -2.0);
}

TEST(LegacyView3D, EachNewStepActsBeforeTheAccumulatedOnes) {
    // Translate then Scale: a point is scaled first, then moved: 1 * 2 - 5 = -3.
    CView3D v;
    v.Translate(5, 0, 0);
    v.Scale(2, 1, 1);
    v.Transfer(1, 0, 0);
    EXPECT_EQ(v.x(), -3.0);
    EXPECT_EQ(v.GetXScale(), 2.0);
    // *= appends the other transform after this one: (1 - 5) * 2 = -8.
    CView3D moved;
    moved.Translate(5, 0, 0);
    CView3D scaled;
    scaled.Scale(2, 1, 1);
    moved *= scaled;
    moved.Transfer(1, 0, 0);
    EXPECT_EQ(moved.x(), -8.0);
    // Multiplying by itself squares the transform.
    CView3D twice;
    twice.Scale(3, 1, 1);
    twice *= twice;
    twice.Transfer(1, 0, 0);
    EXPECT_EQ(twice.x(), 9.0);
}

TEST(LegacyView3D, RotationsAboutEachAxis) {
    CView3D z;
    z.Rotate(pi / 2);
    z.Transfer(1, 0, 0);
    expectVector(z, 0, 1, 0);
    EXPECT_NEAR(z.GetAngle(), pi / 2, 1e-15);
    EXPECT_NEAR(z.GetXScale(), 1.0, 1e-15);

    CView3D x;
    x.Rotate(pi / 2, 0, 0);
    x.Transfer(0, 1, 0);
    expectVector(x, 0, 0, 1);
    CView3D y;
    y.Rotate(0, pi / 2, 0);
    y.Transfer(0, 0, 1);
    expectVector(y, 1, 0, 0);
    y.Transfer(1, 0, 0);
    expectVector(y, 0, 0, -1);

    // Within one call the z rotation reaches a point first, then y, then x: (1, 0, 0) -> (0, 1, 0)
    // -> (0, 0, 1). The reverse order would give (0, 1, 0).
    CView3D both;
    both.Rotate(pi / 2, 0, pi / 2);
    both.Transfer(1, 0, 0);
    expectVector(both, 0, 0, 1);

    // Angles below 1e-8 are no rotation at all.
    CView3D tiny;
    tiny.Rotate(5e-9, -5e-9, 5e-9);
    tiny.Transfer(1e9, 1e9, 1e9);
    expectVector(tiny, 1e9, 1e9, 1e9, 0);
}

TEST(LegacyView3D, FitsOneRectangleOntoAnother) {
    CView3D v;
    v.Translate(1, 2, 3); // discarded: the fit starts from the identity
    v.MakeTransform(DRECT{0, 0, 10, 10}, DRECT{100, 100, 120, 140});
    v.Transfer(0, 0, 0);
    expectVector(v, 100, 100, 0);
    v.Transfer(10, 10, 0);
    expectVector(v, 120, 140, 0);
    v.Transfer(5, 5, 7);
    expectVector(v, 110, 120, 7);
    EXPECT_NEAR(v.GetXScale(), 2.0, 1e-15);
    EXPECT_NEAR(v.GetYScale(), 4.0, 1e-15);
    // A target given right to left is not mirrored.
    v.MakeTransform(DRECT{0, 0, 10, 10}, DRECT{120, 100, 100, 140});
    v.Transfer(0, 0, 0);
    expectVector(v, 100, 100, 0);
    EXPECT_NEAR(v.GetAngle(), 0.0, 1e-15);
    v.Return(110, 140, 0);
    expectVector(v, 5, 10, 0);
}

TEST(LegacyView3D, ReturnUndoesTransferThroughTheLazyInverse) {
    std::mt19937 random(5);
    std::uniform_real_distribution<double> angle(-pi, pi);
    std::uniform_real_distribution<double> factor(0.1, 10);
    std::uniform_real_distribution<double> offset(-1000, 1000);
    for (int i = 0; i < 50; ++i) {
        CView3D v;
        v.Rotate(angle(random), angle(random), angle(random));
        v.Scale(factor(random), factor(random), factor(random));
        v.Translate(offset(random), offset(random), offset(random));
        v.Rotate(angle(random));
        // Gauss-Jordan with partial pivoting leaves a residual mat * imat - I of a few roundings times
        // |mat| |imat| (infinity norms); checked in long double.
        CView3D::Matrix const& m = v.mat();
        CView3D::Matrix const& inverse = v.imat();
        auto norm = [](CView3D::Matrix const& a) {
            double largest = 0;
            for (auto const& row : a) {
                largest = std::fmax(largest, std::fabs(row[0]) + std::fabs(row[1]) + std::fabs(row[2]) +
                                                 std::fabs(row[3]));
            }
            return largest;
        };
        double const bound = 16 * 4 * 2.2e-16 * norm(m) * norm(inverse);
        for (int r = 0; r < 4; ++r) {
            for (int c = 0; c < 4; ++c) {
                long double sum = 0;
                for (int k = 0; k < 4; ++k) {
                    sum += (long double)m[r][k] * inverse[k][c];
                }
                EXPECT_NEAR(static_cast<double>(sum), r == c ? 1.0 : 0.0, bound);
            }
        }
        v.Transfer(12.5, -7.25, 3);
        v.Return(v.x(), v.y(), v.z());
        expectVector(v, 12.5, -7.25, 3, 1e-9);
    }
}

TEST(LegacyView3D, InversionPivotsAndFollowsEveryChange) {
    // A zero in the first pivot position needs a row exchange.
    CView3D::Matrix const quarterTurn = {{0, 1, 0, 0}, {-1, 0, 0, 0}, {0, 0, 1, 0}, {5, 6, 0, 1}};
    CView3D v;
    v.SetMat(quarterTurn);
    v.Transfer(2, 3, 4);
    expectVector(v, 2, 8, 4, 0);
    v.Return(2, 8, 4);
    expectVector(v, 2, 3, 4, 1e-14);
    // A tiny first pivot: without exchanging rows its reciprocal would swamp the rest.
    CView3D::Matrix const awkward = {{1e-20, 1, 0, 0}, {1, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    v.SetMat(awkward);
    v.Transfer(3, 4, 0);
    v.Return(v.x(), v.y(), 0);
    expectVector(v, 3, 4, 0, 1e-12);

    // The cached inverse follows every way of changing the matrix.
    CView3D w;
    w.Return(1, 1, 1);
    expectVector(w, 1, 1, 1, 0);
    w.Scale(2, 2, 2);
    w.Return(4, 4, 4);
    expectVector(w, 2, 2, 2, 0);
    w.mat()[3][0] = 10; // a write through the accessor
    w.Return(4, 4, 4);
    expectVector(w, -3, 2, 2, 0);
    w.Reset();
    w.Return(4, 4, 4);
    expectVector(w, 4, 4, 4, 0);
}

TEST(LegacyView3D, SingularMatricesReturnPointsUnchanged) {
    CView3D flat;
    flat.Scale(0, 1, 1);
    flat.Rotate(0.3);
    EXPECT_FALSE(flat.IsInvertible());
    flat.Return(3, 4, 5);
    expectVector(flat, 3, 4, 5, 0);

    CView3D zeroWidth;
    zeroWidth.MakeTransform(DRECT{5, 0, 5, 10}, DRECT{0, 0, 100, 100});
    EXPECT_FALSE(zeroWidth.IsInvertible());
    zeroWidth.Return(1, 2, 3);
    expectVector(zeroWidth, 1, 2, 3, 0);

    CView3D::Matrix poisoned = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    poisoned[2][1] = std::numeric_limits<double>::quiet_NaN();
    CView3D bad;
    bad.SetMat(poisoned);
    EXPECT_FALSE(bad.IsInvertible());
    bad.Scale(1, 1, 1);
    EXPECT_FALSE(bad.IsInvertible());
    bad.Reset();
    EXPECT_TRUE(bad.IsInvertible());
}

TEST(LegacyView3D, CopiesTakeTheMatrixOnly) {
    CView3D source;
    source.Rotate(0.7);
    source.Translate(3, 4, 0);
    source.Transfer(9, 9, 9);
    CView3D copy(source);
    copy.Transfer(1, 2, 3);
    source.Transfer(1, 2, 3);
    EXPECT_EQ(copy.x(), source.x());
    EXPECT_EQ(copy.y(), source.y());
    copy.Return(copy.x(), copy.y(), copy.z());
    expectVector(copy, 1, 2, 3, 1e-12);

    CView3D assigned;
    assigned.Transfer(-1, -2, -3);
    assigned = source;
    expectVector(assigned, -1, -2, -3, 0); // the result vector is not copied
    assigned.Transfer(1, 2, 3);
    EXPECT_EQ(assigned.x(), source.x());
    CView3D const& alias = assigned;
    assigned = alias;
    assigned.Transfer(1, 2, 3);
    EXPECT_EQ(assigned.x(), source.x());
}

TEST(LegacyView3D, IntegerPointRoundsHalfAwayFromZero) {
    CView3D v;
    struct Case {
        double in;
        std::int32_t out;
    };
    Case const cases[] = {{2.5, 3},    {-2.5, -3},        {0.5, 1},          {-0.5, -1},
                          {2.4999, 2}, {-2.4999, -2},     {3.5, 4},          {0.0, 0},
                          {-0.0, 0},   {1e20, INT32_MAX}, {-1e20, INT32_MIN}};
    for (Case const& c : cases) {
        v.Transfer(c.in, 0, 0);
        EXPECT_EQ(v.point().x, c.out) << c.in;
        v.Transfer(0, c.in, 0);
        EXPECT_EQ(v.point().y, c.out) << c.in;
    }
    v.Transfer(NAN, 0, 0);
    EXPECT_EQ(v.point().x, 0);
}

TEST(LegacyView3D, TwoDimensionalReadingsOverwriteTheVector) {
    CView3D v;
    // The last step given acts first: scale, then turn, then move by (10, 20).
    v.Translate(-10, -20, 0);
    v.Rotate(pi / 6);
    v.Scale(2, 3, 1);
    v.Transfer(7, 8, 9);
    EXPECT_NEAR(v.GetAngle(), pi / 6, 1e-15);
    EXPECT_NEAR(v.x(), 10.0 + 2 * std::cos(pi / 6), 1e-13); // the vector holds Transfer(1, 0, 0)
    EXPECT_NEAR(v.GetXScale(), 2.0, 1e-15);
    EXPECT_NEAR(v.GetYScale(), 3.0, 1e-15);
    EXPECT_EQ(v.GetXOffset(), 10.0);
    EXPECT_EQ(v.x(), 10.0);
    EXPECT_EQ(v.GetYOffset(), 20.0);
}

} // namespace
