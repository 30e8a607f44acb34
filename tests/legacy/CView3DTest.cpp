#include "simplepath/simplepath.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <random>
#include <utility>

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

TEST(LegacyView3D, StepsComposeNewestFirstAndFitsMapRectangles) {
    CView3D v, moved, scaled, z, y, both, tiny;
    v.Translate(5, 0, -3); // by the negated offset
    expectMaps(v, 0, 0, 0, -5, 0, 3);
    v.Scale(2, 1, 1); // scaled first, then moved: 1 * 2 - 5
    expectMaps(v, 1, 0, 0, -3, 0, 3);
    // *= appends the other transform after this one: (1 - 5) * 2 = -8.
    moved.Translate(5, 0, 0);
    scaled.Scale(2, 1, 1);
    moved *= scaled;
    expectMaps(moved, 1, 0, 0, -8, 0, 0);
    scaled *= scaled;
    expectMaps(scaled, 1, 0, 0, 4, 0, 0);
    z.Rotate(pi / 2);
    expectMaps(z, 1, 0, 0, 0, 1, 0, 1e-15);
    EXPECT_NEAR(z.GetAngle(), pi / 2, 1e-15);
    y.Rotate(0, pi / 2, 0);
    expectMaps(y, 0, 0, 1, 1, 0, 0, 1e-15);
    // Within one call z reaches a point first, then y, then x: (1, 0, 0) -> (0, 1, 0) -> (0, 0, 1).
    both.Rotate(pi / 2, 0, pi / 2);
    expectMaps(both, 1, 0, 0, 0, 0, 1, 1e-15);
    tiny.Rotate(5e-9, -5e-9, 5e-9); // below 1e-8: no rotation at all
    expectMaps(tiny, 1e9, 1e9, 1e9, 1e9, 1e9, 1e9);

    // A fit starts from the identity and never mirrors; the readings work through Transfer.
    v.MakeTransform(DRECT{0, 0, 10, 10}, DRECT{100, 100, 120, 140});
    expectMaps(v, 0, 0, 0, 100, 100, 0);
    expectMaps(v, 10, 10, 7, 120, 140, 7);
    EXPECT_NEAR(v.GetXScale(), 2.0, 1e-15);
    EXPECT_NEAR(v.GetYScale(), 4.0, 1e-15);
    EXPECT_EQ(v.y(), 104.0); // here of (0, 1, 0)
    EXPECT_EQ(v.GetXOffset(), 100.0);
    EXPECT_EQ(v.GetYOffset(), 100.0);
    v.MakeTransform(DRECT{0, 0, 10, 10}, DRECT{120, 140, 100, 100});
    expectMaps(v, 0, 0, 0, 100, 100, 0);
}

TEST(LegacyView3D, ReturnUndoesTransferThroughTheLazyInverse) {
    // Gauss-Jordan with partial pivoting: for these well-conditioned views (scales 0.1 to 10, offsets up
    // to 1000) a round trip lands within 1e-10, some fifty roundings of the largest coordinates.
    std::mt19937 random(5);
    std::uniform_real_distribution<double> angle(-pi, pi), factor(0.1, 10), offset(-1000, 1000);
    for (int i = 0; i < 50; ++i) {
        CView3D v;
        v.Rotate(angle(random), angle(random), angle(random));
        v.Scale(factor(random), factor(random), factor(random));
        v.Translate(offset(random), offset(random), offset(random));
        double const x = offset(random), y = offset(random), z = offset(random);
        v.Transfer(x, y, z);
        expectMaps(v, v.x(), v.y(), v.z(), x, y, z, 1e-10, true);
    }
    // A zero first pivot needs a row exchange; a tiny one would swamp the rest without it.
    CView3D v;
    v.SetMat({{0, 1, 0, 0}, {-1, 0, 0, 0}, {0, 0, 1, 0}, {5, 6, 0, 1}});
    expectMaps(v, 2, 3, 4, 2, 8, 4);
    expectMaps(v, 2, 8, 4, 2, 3, 4, 1e-14, true);
    v.SetMat({{1e-20, 1, 0, 0}, {1, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}});
    expectMaps(v, 4, 7, 0, 3, 4, 0, 1e-12, true);
    // The cached inverse follows every way of changing the matrix.
    v.Scale(2, 2, 2);
    expectMaps(v, 8, 14, 8, 3, 4, 4, 1e-12, true);
    v.mat()[3][2] = 10; // a write through the accessor
    expectMaps(v, 8, 14, 8, 3, 4, -1, 1e-12, true);
    v.Reset();
    expectMaps(v, 4, 4, 4, 4, 4, 4, 0, true);
}

TEST(LegacyView3D, SingularMatricesReturnPointsUnchangedAndCopiesTakeTheMatrixOnly) {
    CView3D flattened, zeroWidth, poisoned;
    flattened.Scale(2, 2, 2);
    EXPECT_TRUE(flattened.IsInvertible()); // an inverse is cached, then the matrix goes singular
    flattened.Scale(0, 1, 1);
    zeroWidth.MakeTransform(DRECT{5, 0, 5, 10}, DRECT{0, 0, 100, 100});
    poisoned.SetMat({{1, 0, 0, 0}, {0, 1, 0, 0}, {0, NAN, 1, 0}, {0, 0, 0, 1}});
    for (CView3D* v : {&flattened, &zeroWidth, &poisoned}) {
        EXPECT_FALSE(v->IsInvertible());
        expectMaps(*v, 3, 4, 5, 3, 4, 5, 0, true);
    }
    CView3D source, assigned;
    source.Rotate(0.7);
    assigned.Transfer(-1, -2, -3);
    assigned = source;
    EXPECT_EQ(assigned.x(), -1.0); // the vector is not copied
    source.Transfer(1, 2, 3);
    CView3D copy(source);
    for (CView3D* v : {&copy, &assigned}) {
        expectMaps(*v, 1, 2, 3, source.x(), source.y(), source.z());
        expectMaps(*v, source.x(), source.y(), source.z(), 1, 2, 3, 1e-12, true);
    }
}

TEST(LegacyView3D, IntegerPointRoundsHalfAwayFromZero) {
    std::pair<double, std::int32_t> const cases[] = {
        {2.5, 3},      {-2.5, -3}, {0.5, 1},          {-0.5, -1},         {2.4999, 2},
        {-2.4999, -2}, {-0.0, 0},  {1e20, INT32_MAX}, {-1e20, INT32_MIN}, {NAN, 0}};
    CView3D v;
    for (auto const& [in, out] : cases) {
        v.Transfer(in, in, 0);
        EXPECT_EQ(v.point().x, out) << in;
        EXPECT_EQ(v.point().y, out) << in;
    }
}

} // namespace
