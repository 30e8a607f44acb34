#include "simplepath/interaction/SnapKit.h"
#include "simplepath/interfaces/Tolerance.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr double kPi = 3.14159265358979323846;
DPoint const kOrigin(1.1, 2.3);

// The point at `radius` from the snap origin in the direction `degrees`.
DPoint at(double degrees, double radius = 50.0) {
    return DPoint(kOrigin.x + radius * std::cos(degrees * kPi / 180),
                  kOrigin.y + radius * std::sin(degrees * kPi / 180));
}

TEST(SnapKit, AxisSnapsReplaceOneCoordinateAndOtherModesLeaveThePoint) {
    DPoint const p(7.25, -3.5);
    EXPECT_EQ(SnapKit(kOrigin, SnapKit::HorizontalSnap).dragging(p), DPoint(7.25, 2.3));
    EXPECT_EQ(SnapKit(kOrigin, SnapKit::NoSnap).dragging(p), p);
    SnapKit kit(DPoint(), SnapKit::VerticalSnap);
    kit.setPO(DPoint(4, 4));
    EXPECT_EQ(kit.dragging(p), DPoint(4, -3.5));
    // Points that are not numbers must not hang the angle search.
    SnapKit const angle(kOrigin, SnapKit::AngleSnap);
    double const inf = std::numeric_limits<double>::infinity();
    for (DPoint const& q : {DPoint(std::nan(""), 0), DPoint(-inf, inf), DPoint(0, -inf)}) {
        (void)angle.dragging(q);
    }
    EXPECT_EQ(angle.dragging(kOrigin), kOrigin);
}

// A direction is projected onto the nearest multiple of 15 degrees, so the distance shrinks by the cosine
// of the angle snapped away; results on an axis lie exactly on the origin's line. From 352.5 degrees on
// nothing snaps, deliberately (the search never wraps back to 0). Half a step is measured in the stored
// degree constant: a hair above it snaps up, where in true degrees it is a hair below.
TEST(SnapKit, AngleSnapProjectsOntoTheNearestFifteenDegreeRay) {
    SnapKit const kit(kOrigin, SnapKit::AngleSnap);
    double const unsnapped = -1, halfStep = 7.5 * SnapKit::kRadiansPerDegree * 180 / kPi;
    double const above = halfStep * (1 + 1e-12), below = 7.5 * (1 + 1e-11);
    double const cases[][2] = {{187, 180},         {268, 270},  {22.4, 15}, {-7.6, 345},
                               {352.6, unsnapped}, {above, 15}, {below, 0}};
    for (auto const& c : cases) {
        double const from = c[0], to = c[1];
        SCOPED_TRACE(from);
        DPoint const p = at(from), q = kit.dragging(p);
        if (to == unsnapped) {
            EXPECT_NEAR(distance(p, q), 0.0, 1e-6);
            continue;
        }
        EXPECT_NEAR(distance(kOrigin, q), 50.0 * std::cos((from - to) * kPi / 180), 1e-7);
        EXPECT_NEAR(atan3(q.y - kOrigin.y, q.x - kOrigin.x) * 180 / kPi, to, 1e-6);
        EXPECT_TRUE(std::fmod(to, 180) != 0 || q.y == kOrigin.y);
        EXPECT_TRUE(std::fmod(to, 180) != 90 || q.x == kOrigin.x);
    }
}

} // namespace
