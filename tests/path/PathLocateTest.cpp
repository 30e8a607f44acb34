// The point at a position: the forgiving locatePosition, the strict pretransformed form and the fast
// session.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "simplepath/path/SimplePath.h"
#include "simplepath/path/SimplePathFastSession.h"
#include "support/BezierReference.h"
#include "support/PathQueryHelpers.h"
#include "support/WigglyPath.h"

using support::positionOf;
using support::segmentOf;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

// Two curved segments (0,0) -> (10,0) -> (20,10), and a closing one when closed.
SimplePath twoSegments(int closedFlag) {
    SimplePath path;
    support::buildPath(path,
                       std::vector<support::TriplePoints>{{{0, 0}, {0, 0}, {3, 4}},
                                                          {{7, 4}, {10, 0}, {13, -4}},
                                                          {{18, 2}, {20, 10}, {20, 10}}},
                       closedFlag);
    return path;
}

// Segment s at u, exactly the control point at u = 0 or 1, else the long double reference.
void expectOn(PBezier const& segment, double u, DPoint const& actual) {
    if (u == 0.0 || u == 1.0) {
        EXPECT_EQ(segment[u == 0.0 ? 0 : 3], actual);
        return;
    }
    support::LPoint const expected = support::evaluate(segment, u);
    EXPECT_NEAR(static_cast<double>(expected.x), actual.x, 1e-12);
    EXPECT_NEAR(static_cast<double>(expected.y), actual.y, 1e-12);
}

} // namespace

TEST(Locate, PlainFormForgivesRoundingAndCarriesOncePretransformedFormNothing) {
    struct Case {
        int closed, index;
        double parameter;
        int segment; // -1: both forms fail
        double u;
        bool strictToo; // the pretransformed form succeeds as well
    };
    // Both forms: the exact anchors, evaluation on the segment at 1.0 (no carrying), the closing anchor of
    // a closed path. The plain form only: rounding within 1e-9 and one carry. Neither: the rest.
    Case const cases[] = {{0, 0, 0.3, 0, 0.3, true},           {0, 1, 0.0, 1, 0.0, true},
                          {0, 0, 1.0, 0, 1.0, true},           {0, 2, 0.0, 1, 1.0, true},
                          {1, 3, 0.0, 2, 1.0, true},           {1, 2, 0.5, 2, 0.5, true},
                          {0, 0, 1.0000000001, 0, 1.0, false}, {0, 0, 1.5, 1, 0.5, false},
                          {0, 2, 1e-10, 1, 1.0, false},        {0, 1, 1.0000000001, 1, 1.0, false},
                          {1, 1, 1.5, 2, 0.5, false},          {0, 1, 1.5, -1, 0, false},
                          {0, 1, 1.00000001, -1, 0, false},    {0, 0, -1e-15, -1, 0, false},
                          {0, 2, 0.5, -1, 0, false},           {0, 3, 0.0, -1, 0, false},
                          {0, -1, 0.0, -1, 0, false},          {0, -2147483647 - 1, 0, -1, 0, false},
                          {0, 0, kNaN, -1, 0, false},          {0, 0, kInf, -1, 0, false},
                          {1, 3, 0.5, -1, 0, false},           {1, 2, 1.5, -1, 0, false}};
    support::Bend const bend;
    for (Case const& c : cases) {
        SimplePath const path = twoSegments(c.closed);
        SimplePathPosition const position = positionOf(path, c.index, c.parameter);
        DPoint const untouched(-7, -7);
        DPoint plain = untouched, mapped = untouched;
        SimplePath::Result const plainResult = path.locatePosition(position, plain);
        SimplePath::Result const mappedResult = path.pretransformLocatePosition(bend, position, mapped);
        SCOPED_TRACE(testing::Message() << c.closed << ": " << c.index << ", " << c.parameter);
        EXPECT_EQ(c.segment >= 0 ? SimplePath::Success : SimplePath::Failure, plainResult);
        EXPECT_EQ(c.strictToo ? SimplePath::Success : SimplePath::Failure, mappedResult);
        if (c.segment < 0) {
            EXPECT_EQ(untouched, plain);
            continue;
        }
        expectOn(segmentOf(path, c.segment), c.u, plain);
        if (c.strictToo) {
            expectOn(segmentOf(path, c.segment, bend), c.u, mapped);
        }
    }
    SimplePath const path = twoSegments(0);
    DPoint plain, mapped, viaAlias;
    EXPECT_EQ(SimplePath::Success, path.locatePosition(positionOf(path, 1, 0.25), plain));
    EXPECT_EQ(SimplePath::Success, path.pretransformLocatePosition(bend, positionOf(path, 1, 0.25), mapped));
    EXPECT_GT(distance(bend.transform(plain), mapped), 0.1); // the curve is bent, not its points moved
    ASSERT_EQ(SimplePath::Success, path.getSimplePathPositionLocation(positionOf(path, 1, 0.25), viaAlias));
    EXPECT_EQ(plain, viaAlias);
}

TEST(Locate, EmptyAndSingleTriplePaths) {
    SimplePath empty, single;
    support::Bend const bend;
    DPoint p;
    EXPECT_EQ(SimplePath::Failure, empty.pretransformLocatePosition(bend, positionOf(empty, 0, 0), p));
    empty.setStrictClosed(1); // the closing anchor would be triple 0's, and there is none
    EXPECT_EQ(SimplePath::Failure, empty.locatePosition(positionOf(empty, 0, 0.0), p));
    SimplePathVertex* anchor = nullptr;
    EXPECT_EQ(SimplePath::Success, single.addSingle(DPoint(4, 5), anchor));
    ASSERT_EQ(SimplePath::Success, single.locatePosition(positionOf(single, 0, 0.0), p));
    EXPECT_EQ(DPoint(4, 5), p);
    EXPECT_EQ(SimplePath::Failure, single.locatePosition(positionOf(single, 0, 0.5), p));
    for (double parameter : {0.7, kNaN}) { // the pretransformed form gives the anchor, whatever the position
        ASSERT_EQ(SimplePath::Success,
                  single.pretransformLocatePosition(bend, positionOf(single, 9, parameter), p));
        EXPECT_EQ(bend.transform(DPoint(4, 5)), p);
    }
}

TEST(FastSession, AgreesWithThePlainQueriesAndFallsBackWhenStale) {
    support::Bend const bend;
    auto const agree = [&](SimplePath const& path, SimplePathFastSession* session, int index,
                           double parameter) {
        SimplePathPosition const position = positionOf(path, index, parameter);
        DPoint fast(1, 1), plain(1, 1);
        SimplePathVertexTriple viaSession, viaPath;
        EXPECT_EQ(path.pretransformLocatePosition(bend, position, plain),
                  path.fastPretransformLocatePosition(session, bend, position, fast));
        EXPECT_EQ(path.getTriple(index, viaPath), path.fastGetTriple(session, index, viaSession));
        EXPECT_TRUE(plain == fast && viaPath == viaSession) << index << ", " << parameter;
    };
    SimplePath path, target, moved;
    support::buildWigglyBlob(path, 40, 11);
    SimplePathFastSession* session = path.startFastSession();
    ASSERT_NE(nullptr, session);
    support::UnitRandom random(5);
    for (int k = 0; k < 200; ++k) {
        agree(path, session, static_cast<int>(random.between(-2, 43)),
              k % 7 == 0 ? 0.0 : random.between(-0.2, 1.2));
    }
    agree(path, nullptr, 3, 0.5);
    for (int k = 0; k < 100; ++k) { // the count changes (and the storage moves): the session is not used
        SimplePathVertex* anchor = nullptr;
        EXPECT_EQ(SimplePath::Success, path.addSingle(DPoint(k, -k), anchor));
    }
    agree(path, session, 130, 0.5);
    path.stopFastSession(session);
    path.stopFastSession(nullptr);
    // Other triples of the same count in other storage: the session's iterators must not be used.
    support::buildWigglyBlob(target, 40, 11);
    support::buildWigglyBlob(moved, 40, 12);
    session = target.startFastSession();
    target = std::move(moved);
    agree(target, session, 7, 0.5);
    target.stopFastSession(session);
    session = moved.startFastSession(); // the moved-from path is empty
    agree(moved, session, 0, 0.0);
    moved.stopFastSession(session);
}
