// The point at a position: the forgiving locatePosition, the strict pretransformed form and the fast
// session.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <utility>
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

// Two curved segments: (0,0) -> (10,0) -> (20,10).
void buildTwoSegments(SimplePath& path, int closedFlag) {
    support::buildPath(path,
                       std::vector<support::TriplePoints>{{{0, 0}, {0, 0}, {3, 4}},
                                                          {{7, 4}, {10, 0}, {13, -4}},
                                                          {{18, 2}, {20, 10}, {20, 10}}},
                       closedFlag);
}

void expectNear(support::LPoint const& expected, DPoint const& actual) {
    EXPECT_NEAR(static_cast<double>(expected.x), actual.x, 1e-12);
    EXPECT_NEAR(static_cast<double>(expected.y), actual.y, 1e-12);
}

::testing::AssertionResult locates(SimplePath const& path, int index, double parameter, DPoint& out) {
    if (path.locatePosition(positionOf(path, index, parameter), out) == SimplePath::Success) {
        return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure() << "(" << index << ", " << parameter << ") failed";
}

} // namespace

TEST(Locate, EvaluatesSegmentsAndAnchors) {
    SimplePath path;
    buildTwoSegments(path, 0);
    DPoint p;
    ASSERT_TRUE(locates(path, 0, 0.3, p));
    expectNear(support::evaluate(segmentOf(path, 0), 0.3L), p);
    ASSERT_TRUE(locates(path, 1, 0.75, p));
    expectNear(support::evaluate(segmentOf(path, 1), 0.75L), p);
    ASSERT_TRUE(locates(path, 1, 0.0, p));
    EXPECT_EQ(DPoint(10, 0), p);
    ASSERT_TRUE(locates(path, 0, 1.0, p)); // evaluated on segment 0, not carried
    EXPECT_EQ(DPoint(10, 0), p);
    ASSERT_TRUE(locates(path, 2, 0.0, p)); // the end of an open path
    EXPECT_EQ(DPoint(20, 10), p);

    DPoint viaAlias;
    ASSERT_EQ(SimplePath::Success, path.getSimplePathPositionLocation(positionOf(path, 1, 0.75), viaAlias));
    ASSERT_TRUE(locates(path, 1, 0.75, p));
    EXPECT_EQ(p, viaAlias);
}

TEST(Locate, NormalisesNearOneAndCarriesOnce) {
    SimplePath path;
    buildTwoSegments(path, 0);
    DPoint p;
    ASSERT_TRUE(locates(path, 0, 1.0000000001, p));
    EXPECT_EQ(DPoint(10, 0), p);
    ASSERT_TRUE(locates(path, 0, 1.5, p));
    expectNear(support::evaluate(segmentOf(path, 1), 0.5L), p);
    ASSERT_TRUE(locates(path, 2, 1e-10, p)); // the end index forgives rounding too
    EXPECT_EQ(DPoint(20, 10), p);
    ASSERT_TRUE(locates(path, 1, 1.0000000001, p));
    EXPECT_EQ(DPoint(20, 10), p);

    DPoint const untouched(-7, -7);
    p = untouched;
    EXPECT_FALSE(locates(path, 1, 1.5, p));        // carries onto the end index with a parameter
    EXPECT_FALSE(locates(path, 1, 1.00000001, p)); // beyond the 1e-9 rounding allowance
    EXPECT_FALSE(locates(path, 0, -0.1, p));
    EXPECT_FALSE(locates(path, 0, -1e-15, p));
    EXPECT_FALSE(locates(path, 2, 0.5, p));
    EXPECT_FALSE(locates(path, 3, 0.0, p));
    EXPECT_FALSE(locates(path, -1, 0.5, p));
    EXPECT_FALSE(locates(path, -1, 0.0, p));
    EXPECT_FALSE(locates(path, 2147483647, 0.0, p));
    EXPECT_FALSE(locates(path, -2147483647 - 1, 0.0, p));
    EXPECT_FALSE(locates(path, 0, kNaN, p));
    EXPECT_FALSE(locates(path, 0, kInf, p));
    EXPECT_FALSE(locates(path, 0, -kInf, p));
    EXPECT_EQ(untouched, p);
}

TEST(Locate, ClosedPathsEndWhereTheyStart) {
    SimplePath path;
    buildTwoSegments(path, 1);
    DPoint p;
    ASSERT_TRUE(locates(path, 3, 0.0, p));
    EXPECT_EQ(DPoint(0, 0), p);
    ASSERT_TRUE(locates(path, 2, 0.5, p)); // the closing segment
    expectNear(support::evaluate(segmentOf(path, 2), 0.5L), p);
    ASSERT_TRUE(locates(path, 1, 1.5, p)); // carried into the closing segment
    expectNear(support::evaluate(segmentOf(path, 2), 0.5L), p);
    EXPECT_FALSE(locates(path, 3, 0.5, p));
    EXPECT_FALSE(locates(path, 2, 1.5, p));

    SimplePath empty;
    EXPECT_FALSE(locates(empty, 0, 0.0, p));
    empty.setStrictClosed(1);
    EXPECT_FALSE(locates(empty, 0, 0.0, p));

    SimplePath single;
    SimplePathVertex* anchor = nullptr;
    single.addSingle(DPoint(4, 5), anchor);
    ASSERT_TRUE(locates(single, 0, 0.0, p));
    EXPECT_EQ(DPoint(4, 5), p);
    EXPECT_FALSE(locates(single, 0, 0.5, p));
}

TEST(PretransformLocate, IsStrictAndEvaluatesMappedControlPoints) {
    SimplePath path;
    buildTwoSegments(path, 0);
    support::Bend const bend;
    DPoint p;
    ASSERT_EQ(SimplePath::Success, path.pretransformLocatePosition(bend, positionOf(path, 1, 0.25), p));
    expectNear(support::evaluate(segmentOf(path, 1, bend), 0.25L), p);
    DPoint onPlainCurve;
    path.locatePosition(positionOf(path, 1, 0.25), onPlainCurve);
    EXPECT_GT(distance(bend.transform(onPlainCurve), p), 0.1); // the curve is bent, not its points moved

    ASSERT_EQ(SimplePath::Success, path.pretransformLocatePosition(bend, positionOf(path, 0, 1.0), p));
    EXPECT_EQ(bend.transform(DPoint(10, 0)), p);
    ASSERT_EQ(SimplePath::Success, path.pretransformLocatePosition(bend, positionOf(path, 2, 0.0), p));
    EXPECT_EQ(bend.transform(DPoint(20, 10)), p);

    for (auto const& [index, parameter] : std::vector<std::pair<int, double>>{
             {0, 1.0000000001}, {0, 1.5}, {0, -0.1}, {2, 1e-10}, {3, 0.0}, {-1, 0.5}, {0, kNaN}, {0, kInf}}) {
        EXPECT_EQ(SimplePath::Failure,
                  path.pretransformLocatePosition(bend, positionOf(path, index, parameter), p))
            << index << ", " << parameter;
    }
    EXPECT_EQ(SimplePath::Success,
              path.locatePosition(positionOf(path, 0, 1.0000000001), p)); // forgiven there

    SimplePath closedPath;
    buildTwoSegments(closedPath, 1);
    ASSERT_EQ(SimplePath::Success,
              closedPath.pretransformLocatePosition(bend, positionOf(closedPath, 3, 0.0), p));
    EXPECT_EQ(bend.transform(DPoint(0, 0)), p);

    SimplePath single;
    SimplePathVertex* anchor = nullptr;
    single.addSingle(DPoint(4, 5), anchor);
    for (double parameter : {0.0, 0.7, 5.0, kNaN}) {
        ASSERT_EQ(SimplePath::Success,
                  single.pretransformLocatePosition(bend, positionOf(single, 9, parameter), p));
        EXPECT_EQ(bend.transform(DPoint(4, 5)), p);
    }
    EXPECT_EQ(SimplePath::Failure,
              SimplePath().pretransformLocatePosition(bend, positionOf(single, 0, 0.0), p));
}

TEST(FastSession, MatchesThePlainQueriesAndFallsBackWhenStale) {
    SimplePath path;
    support::buildWigglyBlob(path, 40, 11);
    support::Bend const bend;
    SimplePathFastSession* session = path.startFastSession();
    ASSERT_NE(nullptr, session);
    EXPECT_EQ(40u, session->tripleIterators.length());

    support::UnitRandom random(5);
    for (int k = 0; k < 200; ++k) {
        int const index = static_cast<int>(random.between(-2, 43));
        double const parameter = k % 7 == 0 ? 0.0 : random.between(-0.2, 1.2);
        SimplePathPosition const position = positionOf(path, index, parameter);
        DPoint fast(1, 1), plain(2, 2);
        EXPECT_EQ(path.pretransformLocatePosition(bend, position, plain),
                  path.fastPretransformLocatePosition(session, bend, position, fast));
        EXPECT_EQ(plain.x == 2 ? DPoint(1, 1) : plain, fast);
    }
    SimplePathVertexTriple viaSession, viaPath;
    ASSERT_EQ(SimplePath::Success, path.fastGetTriple(session, 39, viaSession));
    path.getTriple(39, viaPath);
    EXPECT_EQ(viaPath, viaSession);
    EXPECT_EQ(SimplePath::Failure, path.fastGetTriple(session, 40, viaSession));
    EXPECT_EQ(SimplePath::Failure, path.fastGetTriple(session, -1, viaSession));
    ASSERT_EQ(SimplePath::Success, path.fastGetTriple(nullptr, 3, viaSession));
    path.getTriple(3, viaPath);
    EXPECT_EQ(viaPath, viaSession);

    // Adding triples moves the list's storage and changes the count: the session is no longer used,
    // and the answers stay right (also for the new triple, which the session never saw).
    for (int k = 0; k < 100; ++k) {
        SimplePathVertex* anchor = nullptr;
        path.addSingle(DPoint(k, -k), anchor);
    }
    ASSERT_EQ(SimplePath::Success, path.fastGetTriple(session, 120, viaSession));
    path.getTriple(120, viaPath);
    EXPECT_EQ(viaPath, viaSession);
    DPoint fast, plain;
    SimplePathPosition const late = positionOf(path, 130, 0.5);
    ASSERT_EQ(SimplePath::Success, path.fastPretransformLocatePosition(session, bend, late, fast));
    path.pretransformLocatePosition(bend, late, plain);
    EXPECT_EQ(plain, fast);
    path.stopFastSession(session);
    path.stopFastSession(nullptr);

    // A path given other triples of the same count in other storage: the session's iterators point into
    // freed memory and must not be used.
    SimplePath moved;
    support::buildWigglyBlob(moved, 40, 12);
    SimplePath target;
    support::buildWigglyBlob(target, 40, 11);
    SimplePathFastSession* kept = target.startFastSession();
    target = std::move(moved);
    ASSERT_EQ(SimplePath::Success, target.fastGetTriple(kept, 7, viaSession));
    target.getTriple(7, viaPath);
    EXPECT_EQ(viaPath, viaSession);
    ASSERT_EQ(SimplePath::Success,
              target.fastPretransformLocatePosition(kept, bend, positionOf(target, 7, 0.5), fast));
    target.pretransformLocatePosition(bend, positionOf(target, 7, 0.5), plain);
    EXPECT_EQ(plain, fast);
    target.stopFastSession(kept);

    SimplePath empty;
    SimplePathFastSession* emptySession = empty.startFastSession();
    ASSERT_NE(nullptr, emptySession);
    EXPECT_EQ(SimplePath::Failure, empty.fastGetTriple(emptySession, 0, viaSession));
    EXPECT_EQ(SimplePath::Failure,
              empty.fastPretransformLocatePosition(emptySession, bend, positionOf(empty, 0, 0.0), fast));
    empty.stopFastSession(emptySession);
}
