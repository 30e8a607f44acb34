#include "simplepath/interaction/SnapKit.h"
#include "simplepath/interfaces/Tolerance.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr double kPi = 3.14159265358979323846;
DPoint const kOrigin(1.1, 2.3);

// The point at `radius` from the snap origin in the direction `radians`.
DPoint at(double radians, double radius = 50.0) {
    return DPoint(kOrigin.x + radius * std::cos(radians), kOrigin.y + radius * std::sin(radians));
}

// The direction of q seen from the origin, in true degrees.
double degreesOf(DPoint const& q) {
    return atan3(q.y - kOrigin.y, q.x - kOrigin.x) * 180.0 / kPi;
}

TEST(SnapKit, AxisSnapsReplaceOneCoordinateAndOtherModesLeaveThePoint) {
    DPoint const p(7.25, -3.5);
    EXPECT_EQ(SnapKit(kOrigin, SnapKit::HorizontalSnap).dragging(p), DPoint(7.25, 2.3));
    EXPECT_EQ(SnapKit(kOrigin, SnapKit::VerticalSnap).dragging(p), DPoint(1.1, -3.5));
    EXPECT_EQ(SnapKit(kOrigin, SnapKit::NoSnap).dragging(p), p);
    EXPECT_EQ(SnapKit(kOrigin, static_cast<SnapKit::SnapMode>(9)).dragging(p), p);
    SnapKit kit;
    EXPECT_EQ(kit.getSnapMode(), SnapKit::NoSnap);
    EXPECT_EQ(static_cast<int>(kit), 0);
    EXPECT_EQ(static_cast<int>(SnapKit(kOrigin, static_cast<SnapKit::SnapMode>(9))), 1);
    kit = SnapKit(DPoint(), SnapKit::VerticalSnap);
    kit.setPO(DPoint(4, 4));
    EXPECT_EQ(kit.dragging(p), DPoint(4, -3.5));
}

TEST(SnapKit, AngleSnapPutsAxisResultsExactlyOnTheOriginsLines) {
    SnapKit const kit(kOrigin, SnapKit::AngleSnap);
    struct Case {
        double degrees;
        bool onHorizontal;
    };
    for (Case const c :
         {Case{3.0, true}, Case{176.0, true}, Case{187.0, true}, Case{89.0, false}, Case{268.0, false}}) {
        DPoint const p = at(c.degrees * kPi / 180.0);
        DPoint const q = kit.dragging(p);
        if (c.onHorizontal) {
            EXPECT_EQ(q.y, kOrigin.y) << c.degrees;
            EXPECT_NEAR(q.x, p.x, 1e-7) << c.degrees; // the 1e10 ray costs digits
        } else {
            EXPECT_EQ(q.x, kOrigin.x) << c.degrees;
            EXPECT_NEAR(q.y, p.y, 1e-7) << c.degrees;
        }
    }
}

TEST(SnapKit, AngleSnapProjectsOntoTheNearestFifteenDegreeRay) {
    SnapKit const kit(kOrigin, SnapKit::AngleSnap);
    struct Case {
        double from;
        double to;
    };
    for (Case const c : {Case{7.4, 0}, Case{22.4, 15}, Case{38, 45}, Case{352.4, 345}, Case{-7.6, 345},
                         Case{200, 195}, Case{127.6, 135}}) {
        double const off = (c.from - c.to) * kPi / 180.0;
        DPoint const q = kit.dragging(at(c.from * kPi / 180.0, 50.0));
        // Projection onto the ray: the distance shrinks by the cosine of the angle snapped away.
        EXPECT_NEAR(distance(kOrigin, q), 50.0 * std::cos(off), 1e-7) << c.from;
        double const got = degreesOf(q);
        double const want = c.to < 0 ? c.to + 360 : c.to;
        EXPECT_NEAR(std::fmod(got + 360.0, 360.0), want, 1e-6) << c.from;
    }
}

TEST(SnapKit, HalfStepUsesTheStoredDegreeConstant) {
    SnapKit const kit(kOrigin, SnapKit::AngleSnap);
    // A direction a hair above half a step in stored degrees snaps up; in true degrees it is a hair
    // below, where pi/180 would have snapped it up too.
    DPoint const storedHalf = kit.dragging(at(7.5 * SnapKit::kRadiansPerDegree * (1 + 1e-12)));
    EXPECT_NEAR(degreesOf(storedHalf), 15.0, 1e-6);
    DPoint const trueHalf = kit.dragging(at(7.5 * kPi / 180.0 * (1 + 1e-11)));
    EXPECT_EQ(trueHalf.y, kOrigin.y);
}

TEST(SnapKit, DirectionsFrom352AndAHalfDegreesAreNotSnapped) {
    SnapKit const kit(kOrigin, SnapKit::AngleSnap);
    for (double degrees : {352.6, 355.0, 359.9}) {
        DPoint const p = at(degrees * kPi / 180.0);
        DPoint const q = kit.dragging(p);
        EXPECT_NEAR(q.x, p.x, 1e-6) << degrees;
        EXPECT_NEAR(q.y, p.y, 1e-6) << degrees;
        EXPECT_NE(q.y, kOrigin.y);
    }
}

TEST(SnapKit, NonFinitePointsDoNotHang) {
    SnapKit const kit(kOrigin, SnapKit::AngleSnap);
    double const nan = std::numeric_limits<double>::quiet_NaN();
    double const inf = std::numeric_limits<double>::infinity();
    for (DPoint const& p : {DPoint(nan, 0), DPoint(inf, 0), DPoint(-inf, inf), DPoint(0, -inf)}) {
        (void)kit.dragging(p);
    }
    EXPECT_EQ(kit.dragging(kOrigin), kOrigin);
}

} // namespace
