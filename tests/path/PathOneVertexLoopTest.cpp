// A closed path of one vertex: its one segment runs from the vertex back to itself. The bounds, top and
// bottom, box test, closest-position, strict locate and curve-picking queries still take such a path as
// its anchor alone (hosts that want the loop measured split it first); length and line crossings follow
// the segment, which is checked against a long double reference.

#include <gtest/gtest.h>

#include <array>
#include <list>
#include <vector>

#include "simplepath/path/SimplePath.h"
#include "simplepath/path/SimplePathFastSession.h"
#include "support/BezierReference.h"
#include "support/PathQueryHelpers.h"
#include "support/WigglyPath.h"

using support::positionOf;

namespace {

// M0 0C10 10 20 0 0 0Z: the anchor at (0, 0), its outgoing handle at (10, 10), its incoming at (20, 0).
SimplePath loop() {
    SimplePath path;
    support::buildPath(path, std::vector<support::TriplePoints>{{{20, 0}, {0, 0}, {10, 10}}}, 1);
    return path;
}

PBezier mappedLoop(ArbTrans<DPoint> const& t) {
    return {t.transform({0, 0}), t.transform({10, 10}), t.transform({20, 0}), t.transform({0, 0})};
}

DPoint at(PBezier const& b, double t) {
    support::LPoint const p = support::evaluate(b, t);
    return {double(p.x), double(p.y)};
}

} // namespace

TEST(OneVertexLoop, PointQueriesTakeTheLoneAnchor) {
    support::Bend const bend;
    SimplePath path = loop();
    PBezier const b = mappedLoop(bend);
    DPoint const anchor = bend.transform({0, 0});
    ASSERT_GT(at(b, 0.5).y - anchor.y, 1.0); // the loop is far from being its anchor

    // Bounds, top and bottom are the anchor although the loop reaches y = 4.44, plain or mapped.
    std::array<double, 4> box{1, 1, 1, 1};
    ASSERT_EQ(SimplePath::Success, path.getMinMax(box[0], box[1], box[2], box[3]));
    EXPECT_EQ((std::array<double, 4>{0, 0, 0, 0}), box);
    std::array<double, 4> const atAnchor{anchor.x, anchor.y, anchor.x, anchor.y};
    ASSERT_EQ(SimplePath::Success, path.pretransformGetMinMax(bend, box[0], box[1], box[2], box[3]));
    EXPECT_EQ(atAnchor, box);
    ASSERT_EQ(SimplePath::Success, path.pretransformGetMinMaxEx(bend, box[0], box[1], box[2], box[3]));
    EXPECT_EQ(atAnchor, box);
    DPoint top(1, 1), bottom(1, 1);
    ASSERT_EQ(SimplePath::Success, path.getTopBottom(top, bottom));
    EXPECT_TRUE(top == DPoint(0, 0) && bottom == DPoint(0, 0));

    // Only the anchor is tested against a box: the middle of the loop is not found.
    DPoint const middle = at(b, 0.5);
    EXPECT_EQ(0, path.pretransformInBox(bend, middle - DVector(1, 1), middle + DVector(1, 1)));
    EXPECT_EQ(1, path.pretransformInBox(bend, anchor - DVector(1, 1), anchor + DVector(1, 1)));

    // The nearest position is the anchor: at squared distance 0.0 whatever the point, and the sampled
    // search leaves the squared distance as it was.
    SimplePathPosition position;
    double squared = -1.0;
    ASSERT_EQ(SimplePath::Success, path.findClosestPosition({10, 5}, position, squared));
    EXPECT_EQ(positionOf(path, 0, 0.0), position);
    EXPECT_EQ(0.0, squared);
    squared = 123.0;
    ASSERT_EQ(SimplePath::Success, path.pretransformFindClosestPosition(at(b, 0.4), bend, position, squared));
    EXPECT_EQ(positionOf(path, 0, 0.0), position);
    EXPECT_EQ(123.0, squared);

    // The strict locate gives the anchor for any position, even one no segment has.
    SimplePathFastSession* session = path.startFastSession();
    for (SimplePathPosition const& p : {positionOf(path, 0, 0.5), positionOf(path, 1, 0.5)}) {
        DPoint out(7, 7), fast(7, 7);
        ASSERT_EQ(SimplePath::Success, path.pretransformLocatePosition(bend, p, out));
        ASSERT_EQ(SimplePath::Success, path.fastPretransformLocatePosition(session, bend, p, fast));
        EXPECT_TRUE(out == anchor && fast == anchor);
    }
    path.stopFastSession(session);

    // Picking: a point on the loop away from the anchor misses; the anchor itself is (0, 0.0).
    position = positionOf(path, 0, 0.25);
    EXPECT_EQ(SimplePath::Failure, path.pretransformPickPosition(at(b, 0.3), 0.5, bend, position));
    EXPECT_EQ(positionOf(path, 0, 0.25), position);
    ASSERT_EQ(SimplePath::Success,
              path.pretransformPickPosition(anchor + DVector(0.1, 0), 0.5, bend, position));
    EXPECT_EQ(positionOf(path, 0, 0.0), position);
}

TEST(OneVertexLoop, LengthCrossingsAndTheForgivingLocateFollowTheSegment) {
    support::Bend const bend;
    SimplePath const path = loop();
    PBezier const b = mappedLoop(bend);
    double length = 0.0;
    path.pretransformLength(bend, length);
    EXPECT_NEAR(double(support::arcLength(b)), length, 1e-9);

    // The line y = 2 (in the mapped space) crosses the loop twice.
    std::list<SimplePathPosition> crossings;
    ASSERT_EQ(SimplePath::Success, path.pretransformFindIntersections({-100, 2}, {100, 2}, bend, crossings));
    ASSERT_EQ(2u, crossings.size());
    for (SimplePathPosition const& c : crossings) {
        EXPECT_EQ(0, c.getIndex());
        EXPECT_NEAR(2.0, at(b, c.getParameter()).y, 1e-9);
    }

    DPoint out;
    ASSERT_EQ(SimplePath::Success, path.locatePosition(positionOf(path, 0, 0.5), out));
    EXPECT_NEAR(0.0, distance(at(mappedLoop(IdTrans<DPoint>()), 0.5), out), 1e-12);
}
