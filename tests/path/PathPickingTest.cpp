// Hit testing of vertices and positions.

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "simplepath/path/SimplePath.h"
#include "support/PathQueryHelpers.h"
#include "support/WigglyPath.h"

using support::positionOf;

namespace {

// Triples at (0, 0), (10, 0) and (20, 0); every handle 2 above its anchor but triple 1's outgoing one,
// 2 below.
SimplePath row(int closedFlag) {
    SimplePath path;
    support::buildPath(path,
                       std::vector<support::TriplePoints>{{{0, 2}, {0, 0}, {0, 2}},
                                                          {{10, 2}, {10, 0}, {10, -2}},
                                                          {{20, 2}, {20, 0}, {20, 2}}},
                       closedFlag);
    return path;
}

} // namespace

TEST(PickVertex, AnchorsBeforeHandlesLaterTriplesFirstStrictlyInside) {
    enum Kind { Plain, Mapped, MappedAnchor };
    struct Case {
        Kind kind;
        DPoint point;
        double tolerance;
        int triple; // -1: no hit
        SimplePathVertex* SimplePathVertexTriple::*member;
    };
    auto const a = &SimplePathVertexTriple::anchor, f = &SimplePathVertexTriple::first,
               l = &SimplePathVertexTriple::last;
    // Plain: the anchor wins over a nearer handle; of two anchors in reach the later triple; handles of the
    // later triple, incoming first; exactly at the tolerance is a miss. Bend takes (10, 0) to (10, 2),
    // (10, 2) to (10.04, 4) and (20, 0) to (20, 8).
    Case const cases[] = {{Plain, {10, 1.9}, 2.5, 1, a},
                          {Plain, {10, 3.0}, 2.0, 1, f},
                          {Plain, {5, 0}, 5.5, 1, a},
                          {Plain, {10, -3.5}, 1.6, 1, l},
                          {Plain, {15, 4}, 5.5, 2, f},
                          {Plain, {10, -4}, 2.0, -1, a},
                          {Plain, {std::nan(""), 0}, 5.0, -1, a},
                          {Mapped, {20, 0}, 0.5, -1, a},
                          {Mapped, {10, 2}, 0.5, 1, a},
                          {Mapped, {10.04, 4}, 0.5, 1, f},
                          {Mapped, {10.04, 4}, 3.0, 1, a},
                          {MappedAnchor, {10.04, 4}, 0.5, -1, a},
                          {MappedAnchor, {0, 0.4}, 0.5, 0, a}};
    SimplePath const path = row(0);
    support::Bend const bend;
    for (Case const& c : cases) {
        SimplePathVertex* const untouched = path.getTripleList()[0].last;
        SimplePathVertex* picked = untouched;
        SimplePath::Result const result =
            c.kind == Plain    ? path.pickVertex(c.point, c.tolerance, picked)
            : c.kind == Mapped ? path.pretransformPickVertex(c.point, c.tolerance, bend, picked)
                               : path.pretransformPickAnchor(c.point, c.tolerance, bend, picked);
        EXPECT_EQ(c.triple >= 0 ? SimplePath::Success : SimplePath::Failure, result)
            << c.point.x << " " << c.point.y;
        EXPECT_EQ(c.triple >= 0 ? path.getTripleList()[c.triple].*c.member : untouched, picked)
            << c.point.x << " " << c.point.y;
    }
    SimplePathVertex* picked = nullptr;
    EXPECT_EQ(SimplePath::Failure, SimplePath().pickVertex({0, 0}, 5.0, picked));
}

TEST(PickPosition, SegmentsBeforeAnchorsLastSegmentFirstOnThePlainOrBentCurve) {
    SimplePath const open = row(0);
    SimplePathPosition position;
    // Near the anchor at (10, 0): the later segment, which starts there, answers first.
    ASSERT_EQ(SimplePath::Success, open.pickPosition({9.8, 0.1}, 1.0, position));
    EXPECT_EQ(1, position.getIndex());
    EXPECT_GE(position.getParameter(), 0.0);
    EXPECT_LT(position.getParameter(), 0.05);
    ASSERT_EQ(SimplePath::Success, open.pickPosition({5, 1.5}, 0.5, position)); // only segment 0 in reach
    EXPECT_EQ(0, position.getIndex());
    DPoint on;
    EXPECT_EQ(SimplePath::Success, open.locatePosition(position, on));
    EXPECT_LT(distance(on, {5, 1.5}), 0.5);
    SimplePath const closed = row(1); // the end of the closing segment is the closing anchor (n, 0.0)
    ASSERT_EQ(SimplePath::Success, closed.pickPosition({0, 0}, 0.5, position));
    EXPECT_EQ(positionOf(closed, 3, 0.0), position);

    SimplePathPosition const untouched = positionOf(open, 7, 0.5);
    position = untouched;
    EXPECT_EQ(SimplePath::Failure, open.pickPosition({5, 8}, 1.0, position));
    EXPECT_EQ(SimplePath::Failure, open.pickPosition({5, std::nan("")}, 1.0, position));
    EXPECT_EQ(SimplePath::Failure, SimplePath().pickPosition({0, 0}, 1.0, position));
    EXPECT_EQ(untouched, position);

    SimplePath single; // one triple: the anchor only, strictly inside the tolerance
    SimplePathVertex* anchor = nullptr;
    EXPECT_EQ(SimplePath::Success, single.addSingle(DPoint(10, 0), anchor));
    ASSERT_EQ(SimplePath::Success, single.pickPosition({10.5, 0}, 1.0, position));
    EXPECT_EQ(positionOf(single, 0, 0.0), position);
    EXPECT_EQ(SimplePath::Failure, single.pickPosition({11, 0}, 1.0, position));
    position = untouched;
    ASSERT_EQ(SimplePath::Success, single.pretransformPickPosition({10, 2}, 0.1, support::Bend(), position));
    EXPECT_EQ(positionOf(single, 0, 0.0), position);

    // On the bent curve the point is taken in the mapped space: found there, not on the plain curve.
    support::Bend const bend;
    DPoint mapped, plain;
    EXPECT_EQ(SimplePath::Success, open.pretransformLocatePosition(bend, positionOf(open, 1, 0.6), mapped));
    ASSERT_EQ(SimplePath::Success, open.pretransformPickPosition(mapped, 0.01, bend, position));
    EXPECT_EQ(1, position.getIndex());
    EXPECT_NEAR(0.6, position.getParameter(), 1e-6);
    EXPECT_EQ(SimplePath::Success, open.locatePosition(positionOf(open, 1, 0.6), plain));
    EXPECT_EQ(SimplePath::Failure, open.pretransformPickPosition(plain, 0.01, bend, position));
}
