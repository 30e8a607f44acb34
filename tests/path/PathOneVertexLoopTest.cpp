// A closed path of one vertex has one segment, from the vertex back to itself. Every query member is
// checked on that loop against dense sampling of the cubic in long double, with and without a bending
// transform.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <list>
#include <vector>

#include "simplepath/path/SimplePath.h"
#include "simplepath/path/SimplePathFastSession.h"
#include "support/BezierReference.h"
#include "support/PathQueryHelpers.h"
#include "support/WigglyPath.h"

using support::LD;
using support::positionOf;

namespace {

// M0 0C10 10 20 0 0 0Z: the anchor at the origin, its outgoing handle at (10, 10), its incoming at (20, 0).
SimplePath loop() {
    SimplePath path;
    support::buildPath(path, std::vector<support::TriplePoints>{{{20, 0}, {0, 0}, {10, 10}}}, 1);
    return path;
}

PBezier mappedLoop(ArbTrans<DPoint> const& t) {
    return {t.transform({0, 0}), t.transform({10, 10}), t.transform({20, 0}), t.transform({0, 0})};
}

constexpr int kSamples = 200000;

// The parameter of the sample that minimises f, refined by golden-section search around it.
template <class F> LD argMinimum(F const& f) {
    int best = 0;
    LD bestValue = f(0);
    for (int i = 1; i <= kSamples; ++i) {
        LD const v = f(LD(i) / kSamples);
        if (v < bestValue) {
            best = i;
            bestValue = v;
        }
    }
    LD a = LD(std::max(0, best - 1)) / kSamples, c = LD(std::min(kSamples, best + 1)) / kSamples;
    for (int k = 0; k < 100; ++k) {
        LD const x1 = a + (c - a) / 3, x2 = c - (c - a) / 3;
        if (f(x1) < f(x2)) {
            c = x2;
        } else {
            a = x1;
        }
    }
    return (a + c) / 2;
}

DPoint at(PBezier const& b, LD t) {
    support::LPoint const p = support::evaluate(b, t);
    return {double(p.x), double(p.y)};
}

struct Transform {
    char const* name;
    ArbTrans<DPoint> const* map;
};

} // namespace

TEST(OneVertexLoop, EveryQueryFollowsTheSegmentBackToTheVertex) {
    IdTrans<DPoint> const id;
    support::Bend const bend;
    SimplePath path = loop();
    for (Transform const& t : {Transform{"identity", &id}, Transform{"bend", &bend}}) {
        SCOPED_TRACE(t.name);
        PBezier const b = mappedLoop(*t.map);
        auto const coordinate = [&b](int axis, LD sign) {
            return [&b, axis, sign](LD u) {
                support::LPoint const p = support::evaluate(b, u);
                return sign * (axis == 0 ? p.x : p.y);
            };
        };
        DPoint const left = at(b, argMinimum(coordinate(0, 1))), right = at(b, argMinimum(coordinate(0, -1)));
        DPoint const low = at(b, argMinimum(coordinate(1, 1))), high = at(b, argMinimum(coordinate(1, -1)));
        ASSERT_GT(high.y - low.y, 1.0); // the loop is not its anchor

        double box[2][4];
        ASSERT_EQ(SimplePath::Success,
                  path.pretransformGetMinMax(*t.map, box[0][0], box[0][1], box[0][2], box[0][3]));
        ASSERT_EQ(SimplePath::Success,
                  path.pretransformGetMinMaxEx(*t.map, box[1][0], box[1][1], box[1][2], box[1][3]));
        for (auto const& e : box) {
            EXPECT_NEAR(left.x, e[0], 1e-9);
            EXPECT_NEAR(low.y, e[1], 1e-9);
            EXPECT_NEAR(right.x, e[2], 1e-9);
            EXPECT_NEAR(high.y, e[3], 1e-9);
        }

        double length = 0.0;
        path.pretransformLength(*t.map, length);
        EXPECT_NEAR(double(support::arcLength(b)), length, 1e-9);

        // Locating: the middle of the segment, and its end, which is the vertex again.
        DPoint p;
        SimplePathFastSession* session = path.startFastSession();
        for (double u : {0.25, 0.5, 0.9}) {
            ASSERT_EQ(SimplePath::Success,
                      path.pretransformLocatePosition(*t.map, positionOf(path, 0, u), p));
            EXPECT_NEAR(0.0, distance(at(b, u), p), 1e-12);
            ASSERT_EQ(SimplePath::Success,
                      path.fastPretransformLocatePosition(session, *t.map, positionOf(path, 0, u), p));
            EXPECT_NEAR(0.0, distance(at(b, u), p), 1e-12);
        }
        path.stopFastSession(session);
        ASSERT_EQ(SimplePath::Success, path.pretransformLocatePosition(*t.map, positionOf(path, 1, 0.0), p));
        EXPECT_EQ(t.map->transform({0, 0}), p);
        EXPECT_EQ(SimplePath::Failure, path.pretransformLocatePosition(*t.map, positionOf(path, 1, 0.5), p));

        // A box around the middle of the loop, away from the vertex, holds part of the curve.
        DPoint const middle = at(b, 0.5);
        EXPECT_EQ(1, path.pretransformInBox(*t.map, middle - DVector(1, 1), middle + DVector(1, 1)));

        // Closest by sampling: the nearest of the eleven samples t = 0.0, 0.1, ... (accumulated).
        DPoint const probe = t.map->transform({10, 5});
        double sampledBest = squaredDistance(t.map->transform({0, 0}), probe), sampledT = 0.0;
        for (double u = 0.0; u < 1.0; u += 0.1) {
            double const d = double(support::squaredDistanceTo(b, u, probe));
            if (d <= sampledBest) {
                sampledBest = d, sampledT = u;
            }
        }
        SimplePathPosition position;
        double squared = -1.0;
        ASSERT_EQ(SimplePath::Success,
                  path.pretransformFindClosestPosition(probe, *t.map, position, squared));
        EXPECT_EQ(0, position.getIndex());
        EXPECT_NEAR(sampledT, position.getParameter(), 1e-12);
        EXPECT_NEAR(sampledBest, squared, 1e-9);

        // The line y = 2 (mapped curve) crosses the loop twice, at the roots of its y(t) - 2.
        std::list<SimplePathPosition> crossings;
        ASSERT_EQ(SimplePath::Success,
                  path.pretransformFindIntersections({-100, 2}, {100, 2}, *t.map, crossings));
        ASSERT_EQ(2u, crossings.size());
        for (SimplePathPosition const& c : crossings) {
            EXPECT_EQ(0, c.getIndex());
            EXPECT_NEAR(2.0, at(b, c.getParameter()).y, 1e-9);
        }

        // Picking the curve where no vertex is.
        DPoint const onCurve = at(b, 0.3);
        ASSERT_EQ(SimplePath::Success, path.pretransformPickPosition(onCurve, 0.01, *t.map, position));
        EXPECT_EQ(0, position.getIndex());
        EXPECT_NEAR(0.3, position.getParameter(), 1e-3);
    }

    // The plain members, on the stored curve.
    PBezier const b = mappedLoop(IdTrans<DPoint>());
    double minX, minY, maxX, maxY;
    ASSERT_EQ(SimplePath::Success, path.getMinMax(minX, minY, maxX, maxY));
    auto const y = [&b](LD sign) { return [&b, sign](LD u) { return sign * support::evaluate(b, u).y; }; };
    auto const x = [&b](LD sign) { return [&b, sign](LD u) { return sign * support::evaluate(b, u).x; }; };
    EXPECT_NEAR(double(support::minimumOver(x(1))), minX, 1e-9);
    EXPECT_NEAR(double(-support::minimumOver(x(-1))), maxX, 1e-9);
    EXPECT_NEAR(double(support::minimumOver(y(1))), minY, 1e-9);
    EXPECT_NEAR(double(-support::minimumOver(y(-1))), maxY, 1e-9);

    DPoint top, bottom;
    ASSERT_EQ(SimplePath::Success, path.getTopBottom(top, bottom));
    EXPECT_NEAR(0.0, distance(at(b, argMinimum(y(-1))), top), 1e-6);
    EXPECT_EQ(0.0, bottom.y); // the vertex is the lowest point

    DPoint const probe(10, 5);
    LD const nearest = argMinimum([&](LD u) { return support::squaredDistanceTo(b, u, probe); });
    SimplePathPosition position;
    double squared = -1.0;
    ASSERT_EQ(SimplePath::Success, path.findClosestPosition(probe, position, squared));
    EXPECT_EQ(0, position.getIndex());
    EXPECT_NEAR(double(nearest), position.getParameter(), 1e-6);
    EXPECT_NEAR(double(support::squaredDistanceTo(b, nearest, probe)), squared, 1e-9);
    DPoint located;
    ASSERT_EQ(SimplePath::Success, path.locatePosition(position, located));
    EXPECT_NEAR(std::sqrt(squared), distance(located, probe), 1e-9);

    ASSERT_EQ(SimplePath::Success, path.pickPosition(at(b, 0.7), 0.01, position));
    EXPECT_NEAR(0.7, position.getParameter(), 1e-3);
    EXPECT_NEAR(0.3, path.getInterPositionMetric(positionOf(path, 0, 0.6), positionOf(path, 0, 0.3)), 1e-15);
}

TEST(OneVertexLoop, AnOpenLoneVertexIsStillItsAnchor) {
    SimplePath path = loop();
    path.setStrictClosed(0);
    double minX, minY, maxX, maxY;
    ASSERT_EQ(SimplePath::Success, path.getMinMax(minX, minY, maxX, maxY));
    EXPECT_EQ(0.0, minX + minY + maxX + maxY);
    SimplePathPosition position;
    double squared = -1.0;
    ASSERT_EQ(SimplePath::Success, path.findClosestPosition({10, 5}, position, squared));
    EXPECT_EQ(0.0, squared);
    double length = -1.0;
    path.pretransformLength(IdTrans<DPoint>(), length);
    EXPECT_EQ(0.0, length);
}
