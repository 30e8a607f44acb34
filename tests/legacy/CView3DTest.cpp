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
}

TEST(LegacyView3D, StepsComposeNewestFirstAndFitsMapRectangles) {
    CView3D v, both;
    v.Translate(5, 0, -3); // by the negated offset
    v.Scale(2, 1, 1);      // scaled first, then moved: 1 * 2 - 5
    expectMaps(v, 1, 0, 0, -3, 0, 3);
    // Within one call z reaches a point first, then y, then x: (1, 0, 0) -> (0, 1, 0) -> (0, 0, 1).
    both.Rotate(pi / 2, 0, pi / 2);
    expectMaps(both, 1, 0, 0, 0, 0, 1, 1e-15);
    // A fit starts from the identity and never mirrors.
    v.MakeTransform(DRECT{0, 0, 10, 10}, DRECT{120, 140, 100, 100});
    expectMaps(v, 0, 0, 0, 100, 100, 0);
    expectMaps(v, 10, 10, 7, 120, 140, 7);
    // The integer point rounds half away from zero and saturates.
    v.Reset();
    v.Transfer(-2.5, 1e20, 0);
    EXPECT_EQ(v.point().x, -3);
    EXPECT_EQ(v.point().y, INT32_MAX);
}

TEST(LegacyView3D, ReturnUndoesTransferAndSingularViewsReturnPointsUnchanged) {
    // Gauss-Jordan with partial pivoting: for views with scales 0.1 to 10 and offsets up to 1000 a round
    // trip lands within 1e-10, some fifty roundings of the largest coordinates.
    std::mt19937 random(5);
    std::uniform_real_distribution<double> angle(-pi, pi), factor(0.1, 10), offset(-1000, 1000);
    for (int i = 0; i < 20; ++i) {
        CView3D v;
        v.Rotate(angle(random), angle(random), angle(random));
        v.Scale(factor(random), factor(random), factor(random));
        v.Translate(offset(random), offset(random), offset(random));
        double const x = offset(random), y = offset(random), z = offset(random);
        v.Transfer(x, y, z);
        expectMaps(v, v.x(), v.y(), v.z(), x, y, z, 1e-10, true);
    }
    // A tiny first pivot would swamp the rest without a row exchange; the cached inverse follows a write.
    CView3D v;
    v.SetMat({{1e-20, 1, 0, 0}, {1, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}});
    expectMaps(v, 4, 7, 0, 3, 4, 0, 1e-12, true);
    v.mat()[3][2] = 10;
    expectMaps(v, 4, 7, 10, 3, 4, 0, 1e-12, true);
    // A NaN entry leaves no inverse: points come back unchanged.
    v.mat()[2][1] = NAN;
    EXPECT_FALSE(v.IsInvertible());
    expectMaps(v, 3, 4, 5, 3, 4, 5, 0, true);
}

} // namespace
