// Hit testing of vertices and positions.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "simplepath/path/SimplePath.h"
#include "support/PathQueryHelpers.h"
#include "support/WigglyPath.h"

using support::positionOf;

namespace {

// Three triples along the x-axis at 0, 10 and 20; every handle sits 2 units above its anchor, except that
// triple 1's outgoing handle is 2 units below.
struct Row {
    SimplePath path;
    SimplePathVertexTriple t[3];
    explicit Row(int closedFlag) {
        support::buildPath(path,
                           std::vector<support::TriplePoints>{{{0, 2}, {0, 0}, {0, 2}},
                                                              {{10, 2}, {10, 0}, {10, -2}},
                                                              {{20, 2}, {20, 0}, {20, 2}}},
                           closedFlag);
        for (int i = 0; i < 3; ++i) {
            path.getTriple(i, t[i]);
        }
    }
};

} // namespace

TEST(PickVertex, AnchorsBeforeHandlesAndLaterTriplesFirst) {
    Row row(0);
    SimplePathVertex* picked = nullptr;
    ASSERT_EQ(SimplePath::Success, row.path.pickVertex({10, 1.9}, 2.5, picked));
    EXPECT_EQ(row.t[1].anchor, picked); // the handle is nearer, the anchor still wins
    ASSERT_EQ(SimplePath::Success, row.path.pickVertex({10, 3.0}, 2.0, picked));
    EXPECT_EQ(row.t[1].first, picked);
    ASSERT_EQ(SimplePath::Success, row.path.pickVertex({10, 0}, 2.5, picked));
    EXPECT_EQ(row.t[1].anchor, picked);
    ASSERT_EQ(SimplePath::Success, row.path.pickVertex({10, 0}, 2.01, picked));
    EXPECT_EQ(row.t[1].anchor, picked);
    ASSERT_EQ(SimplePath::Success, row.path.pickVertex({5, 0}, 5.5, picked));
    EXPECT_EQ(row.t[1].anchor, picked); // two anchors in reach: the later triple
    ASSERT_EQ(SimplePath::Success, row.path.pickVertex({10, 0.5}, 1.0, picked));
    EXPECT_EQ(row.t[1].anchor, picked);
    ASSERT_EQ(SimplePath::Success, row.path.pickVertex({10, 0}, 2.5, picked));

    // Handles: incoming before outgoing within a triple, later triples before earlier ones.
    ASSERT_EQ(SimplePath::Success, row.path.pickVertex({10, -3.5}, 1.6, picked));
    EXPECT_EQ(row.t[1].last, picked);
    ASSERT_EQ(SimplePath::Success, row.path.pickVertex({15, 4}, 5.5, picked));
    EXPECT_EQ(row.t[2].first, picked);

    // Strictly inside the tolerance: a vertex exactly at the tolerance is missed.
    SimplePathVertex* const untouched = row.t[0].first;
    picked = untouched;
    EXPECT_EQ(SimplePath::Failure, row.path.pickVertex({10, -4}, 2.0, picked));
    EXPECT_EQ(untouched, picked);
    EXPECT_EQ(SimplePath::Failure, row.path.pickVertex({30, 0}, 5.0, picked));
    EXPECT_EQ(SimplePath::Failure, row.path.pickVertex({std::nan(""), 0}, 5.0, picked));
    EXPECT_EQ(SimplePath::Failure, SimplePath().pickVertex({0, 0}, 5.0, picked));
    EXPECT_EQ(untouched, picked);
}

TEST(PickVertex, PretransformedFormsCompareMappedLocations) {
    Row row(0);
    support::Bend const bend; // (10, 0) goes to (10, 2), (10, 2) to (10.04, 4), (20, 0) to (20, 8)
    SimplePathVertex* picked = nullptr;
    EXPECT_EQ(SimplePath::Failure, row.path.pretransformPickVertex({20, 0}, 0.5, bend, picked));
    ASSERT_EQ(SimplePath::Success, row.path.pretransformPickVertex({10, 2}, 0.5, bend, picked));
    EXPECT_EQ(row.t[1].anchor, picked);
    ASSERT_EQ(SimplePath::Success, row.path.pretransformPickVertex({10.04, 4}, 0.5, bend, picked));
    EXPECT_EQ(row.t[1].first, picked);
    ASSERT_EQ(SimplePath::Success, row.path.pretransformPickVertex({10.04, 4}, 3.0, bend, picked));
    EXPECT_EQ(row.t[1].anchor, picked);

    EXPECT_EQ(SimplePath::Failure, row.path.pretransformPickAnchor({10.04, 4}, 0.5, bend, picked));
    ASSERT_EQ(SimplePath::Success, row.path.pretransformPickAnchor({0, 0.4}, 0.5, bend, picked));
    EXPECT_EQ(row.t[0].anchor, picked);
}

TEST(PickPosition, SegmentsBeforeAnchorsLastSegmentFirst) {
    Row row(0);
    SimplePathPosition position;
    // Near the anchor at (10, 0): the later segment, which starts there, answers first.
    ASSERT_EQ(SimplePath::Success, row.path.pickPosition({9.8, 0.1}, 1.0, position));
    EXPECT_EQ(1, position.getIndex());
    EXPECT_GE(position.getParameter(), 0.0);
    EXPECT_LT(position.getParameter(), 0.05);
    // Only segment 0 within reach.
    ASSERT_EQ(SimplePath::Success, row.path.pickPosition({5, 1.5}, 0.5, position));
    EXPECT_EQ(0, position.getIndex());
    DPoint on;
    row.path.locatePosition(position, on);
    EXPECT_LT(distance(on, {5, 1.5}), 0.5);

    // The end of the closing segment is reported as the closing anchor (n, 0.0).
    Row closed(1);
    ASSERT_EQ(SimplePath::Success, closed.path.pickPosition({0, 0}, 0.5, position));
    EXPECT_EQ(positionOf(closed.path, 3, 0.0), position);

    SimplePathPosition const untouched = positionOf(row.path, 7, 0.5);
    position = untouched;
    EXPECT_EQ(SimplePath::Failure, row.path.pickPosition({5, 8}, 1.0, position));
    EXPECT_EQ(SimplePath::Failure, row.path.pickPosition({5, std::nan("")}, 1.0, position));
    EXPECT_EQ(SimplePath::Failure, SimplePath().pickPosition({0, 0}, 1.0, position));
    EXPECT_EQ(untouched, position);

    SimplePath single; // one triple: the anchor only
    SimplePathVertex* anchor = nullptr;
    single.addSingle(DPoint(3, 3), anchor);
    ASSERT_EQ(SimplePath::Success, single.pickPosition({3.5, 3}, 1.0, position));
    EXPECT_EQ(positionOf(single, 0, 0.0), position);
    EXPECT_EQ(SimplePath::Failure, single.pickPosition({4, 3}, 1.0, position));
}

TEST(PickPosition, PretransformedOnTheBentCurve) {
    Row row(0);
    support::Bend const bend;
    SimplePathPosition position;
    DPoint mappedPoint;
    ASSERT_EQ(SimplePath::Success,
              row.path.pretransformLocatePosition(bend, positionOf(row.path, 1, 0.6), mappedPoint));
    ASSERT_EQ(SimplePath::Success, row.path.pretransformPickPosition(mappedPoint, 0.01, bend, position));
    EXPECT_EQ(1, position.getIndex());
    EXPECT_NEAR(0.6, position.getParameter(), 1e-6);
    DPoint plain;
    row.path.locatePosition(positionOf(row.path, 1, 0.6), plain);
    EXPECT_EQ(SimplePath::Failure, row.path.pretransformPickPosition(plain, 0.01, bend, position));

    SimplePath single;
    SimplePathVertex* anchor = nullptr;
    single.addSingle(DPoint(10, 0), anchor);
    ASSERT_EQ(SimplePath::Success, single.pretransformPickPosition({10, 2}, 0.1, bend, position));
    EXPECT_EQ(positionOf(single, 0, 0.0), position);
}
