// The closest position to a point and the crossings of a line, each checked against the rule solved on
// every segment without pruning.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <list>
#include <vector>

#include "simplepath/interfaces/P2DMatrix.h"
#include "simplepath/path/SimplePath.h"
#include "support/BezierReference.h"
#include "support/PathQueryHelpers.h"
#include "support/WigglyPath.h"

using support::positionOf;
using support::segmentOf;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

// The anchor that ends the path: triple 0's on a closed path, the last triple's on an open one.
DPoint endAnchor(SimplePath const& path, ArbTrans<DPoint> const& t) {
    SimplePathVertexTriple end;
    EXPECT_EQ(SimplePath::Success,
              path.getTriple(path.isClosedSimplePath() ? 0 : path.numTriples() - 1, end));
    return t.transform(end.anchor->getLocation());
}

// The end anchor first, then each segment from the last to the first, replacing when no farther.
SimplePathPosition bruteForceClosest(SimplePath const& path, DPoint const& point, double& best) {
    int const segments = support::segmentCount(path);
    SimplePathPosition position = positionOf(path, segments, 0.0);
    best = squaredDistance(endAnchor(path, IdTrans<DPoint>()), point);
    for (int s = segments - 1; s >= 0; --s) {
        PBezier const b = segmentOf(path, s);
        double const t = std::clamp(b.findNearestPointTValue(point), 0.0, 1.0);
        if (best >= squaredDistance(b.bValue(t), point)) {
            best = squaredDistance(b.bValue(t), point);
            position = positionOf(path, s, t);
        }
    }
    return position;
}

// The end anchor when within 1 of the line, then every segment's crossings below 1.0, last segment first.
std::list<SimplePathPosition> bruteForceCrossings(SimplePath const& path, DPoint a, DPoint b,
                                                  ArbTrans<DPoint> const& t) {
    std::list<SimplePathPosition> out;
    DVector const d = b - a;
    if (std::fabs(d.cross(endAnchor(path, t) - a)) < d.length()) {
        out.push_back(positionOf(path, path.isClosedSimplePath() ? 0 : path.numTriples() - 1, 0.0));
    }
    P2DMatrix<double> const toAxis = P2DMatrix<double>(a, d, d.ortho()).inverse();
    for (int s = support::segmentCount(path) - 1; s >= 0; --s) {
        PBezier const m = segmentOf(path, s, t);
        std::vector<double> params;
        intersectBezierWithXAxis(PBezier(toAxis * m[0], toAxis * m[1], toAxis * m[2], toAxis * m[3]), params);
        for (double u : params) {
            if (u < 1.0) {
                out.push_back(positionOf(path, s, u));
            }
        }
    }
    return out;
}

// (0,0) -> (10,10) -> (20,0) -> (30,10), straight segments.
SimplePath zigzag(int closedFlag) {
    return support::polyline({{0, 0}, {10, 10}, {20, 0}, {30, 10}}, closedFlag);
}

} // namespace

TEST(ClosestPosition, ShortcutsAndTheTieRule) {
    struct Case {
        int closed;
        DPoint point;
        int index;
        double parameter, squaredDistance;
    };
    Case const cases[] = {
        {0, {10, 10}, 0, 1.0, 0.0}, // an interior anchor: the end of the segment before it
        {0, {31, 11}, 2, 1.0, 2.0}, // beyond the end
        {0, {15, 20}, 0, 1.0, 125}, // equally near two segments: the lower index
        {1, {0, 0}, 0, 0.0, 0.0},   // the start of a closed path, not its end (4, 0.0)
    };
    for (Case const& c : cases) {
        SimplePath const path = zigzag(c.closed);
        SimplePathPosition position;
        double d2 = -1;
        ASSERT_EQ(SimplePath::Success, path.findClosestPosition(c.point, position, d2));
        EXPECT_EQ(positionOf(path, c.index, c.parameter), position) << c.point.x << " " << c.point.y;
        EXPECT_EQ(c.squaredDistance, d2) << c.point.x << " " << c.point.y;
    }
    SimplePathPosition position;
    double d2 = -1;
    EXPECT_EQ(SimplePath::Failure, SimplePath().findClosestPosition({1, 1}, position, d2));
    SimplePath single;
    SimplePathVertex* anchor = nullptr;
    EXPECT_EQ(SimplePath::Success, single.addSingle(DPoint(50, 50), anchor));
    ASSERT_EQ(SimplePath::Success, single.findClosestPosition({-3, 7}, position, d2));
    EXPECT_EQ(positionOf(single, 0, 0.0), position);
    EXPECT_EQ(0.0, d2); // whatever the point
}

TEST(ClosestPosition, EqualsTheRuleOnEverySegmentAndTheTrueMinimum) {
    for (std::uint64_t seed = 1; seed <= 4; ++seed) {
        SimplePath path;
        support::buildWigglyBlob(path, 60, seed, 200.0);
        path.setStrictClosed(seed % 2 == 0 ? 0 : 1);
        support::UnitRandom random(seed * 7);
        for (int k = 0; k < 24; ++k) {
            DPoint point(random.between(-110, 110), random.between(-110, 110));
            if (k % 8 == 0) { // exactly on the curve, at an anchor or a segment point
                EXPECT_EQ(SimplePath::Success,
                          path.locatePosition(positionOf(path, k % 50, k % 16 == 0 ? 0.0 : 0.37), point));
            }
            SimplePathPosition position;
            double d2 = -1, expected = -2;
            ASSERT_EQ(SimplePath::Success, path.findClosestPosition(point, position, d2));
            EXPECT_EQ(bruteForceClosest(path, point, expected), position);
            EXPECT_EQ(expected, d2);
            support::LD reference = 1e300L;
            for (int s = 0; s < support::segmentCount(path); ++s) {
                PBezier const b = segmentOf(path, s);
                auto const f = [&](support::LD t) { return support::squaredDistanceTo(b, t, point); };
                reference = std::min(reference, support::minimumOver(f, 40));
            }
            // Distance accuracy: 1e-12 of the curve's size (200) above the true minimum.
            EXPECT_LE(std::sqrt(d2), std::sqrt(double(reference)) + 2e-10);
            DPoint located;
            ASSERT_EQ(SimplePath::Success, path.locatePosition(position, located));
            EXPECT_EQ(d2, squaredDistance(located, point));
        }
    }
}

TEST(ClosestPosition, SampledFormTakesTheNearestOfElevenAccumulatedSamplesOnTheMappedCurve) {
    std::vector<double> samples;
    for (double t = 0.0; t < 1.0; t += 0.1) {
        samples.push_back(t);
    }
    ASSERT_EQ(11u, samples.size());
    support::Bend const bend;
    IdTrans<DPoint> const id;
    SimplePath path;
    support::buildWigglyBlob(path, 16, 9, 50.0);
    support::UnitRandom random(3);
    for (int k = 0; k < 30; ++k) {
        DPoint const point(random.between(-40, 40), random.between(-40, 40));
        ArbTrans<DPoint> const& t = k % 2 == 0 ? static_cast<ArbTrans<DPoint> const&>(bend) : id;
        SimplePathPosition expected = positionOf(path, 16, 0.0);
        double best = squaredDistance(endAnchor(path, t), point);
        for (int s = 15; s >= 0; --s) { // ties go to the later sample and the lower segment
            PBezier const b = segmentOf(path, s, t);
            for (double u : samples) {
                if (squaredDistance(b.bValue(u), point) <= best) {
                    expected = positionOf(path, s, u);
                    best = squaredDistance(b.bValue(u), point);
                }
            }
        }
        SimplePathPosition position, twoArgument;
        double d2 = -1;
        ASSERT_EQ(SimplePath::Success, path.pretransformFindClosestPosition(point, t, position, d2));
        EXPECT_EQ(expected, position);
        EXPECT_EQ(best, d2);
        EXPECT_EQ(SimplePath::Success, path.pretransformFindClosestPosition(point, t, twoArgument));
        EXPECT_EQ(position, twoArgument);
    }
    SimplePath single;
    SimplePathVertex* anchor = nullptr;
    EXPECT_EQ(SimplePath::Success, single.addSingle(DPoint(3, 3), anchor));
    SimplePathPosition position;
    double d2 = 12.5;
    ASSERT_EQ(SimplePath::Success, single.pretransformFindClosestPosition({9, 9}, bend, position, d2));
    EXPECT_EQ(positionOf(single, 0, 0.0), position);
    EXPECT_EQ(12.5, d2); // left as the caller set it
    EXPECT_EQ(SimplePath::Failure, SimplePath().pretransformFindClosestPosition({9, 9}, bend, position, d2));
}

TEST(ClosestPosition, NaNAndInfinityNeitherCrashNorHang) {
    SimplePath path;
    support::buildWigglyBlob(path, 20, 3);
    SimplePathPosition position;
    double d2 = 0;
    ASSERT_EQ(SimplePath::Success, path.findClosestPosition({kNaN, 0}, position, d2));
    EXPECT_EQ(positionOf(path, 20, 0.0), position); // nothing compares below NaN: the end anchor stays
    EXPECT_TRUE(std::isnan(d2));
    EXPECT_EQ(SimplePath::Success, path.findClosestPosition({kInf, 1e300}, position, d2));
    // A handle at NaN and an anchor at infinity, through every walk over the segments. Guards "Closest
    // position: a NaN gives the control box no gap, which never prunes".
    SimplePath broken;
    support::buildPath(broken,
                       std::vector<support::TriplePoints>{{{0, 0}, {0, 0}, {kNaN, 1}},
                                                          {{5, 5}, {5, 5}, {5, 5}},
                                                          {{9, 9}, {kInf, 0}, {9, 9}}},
                       1);
    support::Bend const bend;
    DPoint top, bottom;
    std::list<SimplePathPosition> crossings;
    EXPECT_EQ(SimplePath::Success, broken.findClosestPosition({1, 1}, position, d2));
    EXPECT_EQ(SimplePath::Success, broken.pretransformFindClosestPosition({kNaN, 1}, bend, position, d2));
    EXPECT_EQ(SimplePath::Success, broken.pretransformGetMinMax(bend, d2, d2, d2, d2));
    EXPECT_EQ(SimplePath::Success, broken.getTopBottom(top, bottom));
    EXPECT_EQ(SimplePath::Success, broken.pretransformFindIntersections({0, 1}, {1, 0}, bend, crossings));
    EXPECT_EQ(SimplePath::Success, broken.pickPosition({5, 5}, 1.0, position));
    broken.pretransformLength(bend, d2);
    broken.pretransformInBox(bend, {0, 0}, {10, 10});
}

TEST(Intersections, EndAnchorFirstThenSegmentsFromTheLast) {
    // Zigzag cases: crossings beyond a and b count; an interior anchor is reported once, as its segment's
    // start; the end anchor within 1 of the line is reported though nothing crosses there; a closed
    // path's end anchor is (0, 0.0); a line without direction, or with NaN or infinity, meets nothing.
    struct Case {
        int closed;
        DPoint a, b;
        std::vector<std::pair<int, double>> expected;
    };
    Case const cases[] = {{0, {-100, 5}, {-90, 5}, {{2, 0.5}, {1, 0.5}, {0, 0.5}}},
                          {0, {0, 10}, {1, 10}, {{3, 0.0}, {1, 0.0}}},
                          {0, {0, 10.5}, {1, 10.5}, {{3, 0.0}}},
                          {1, {0, 0}, {0, 1}, {{0, 0.0}, {0, 0.0}}},
                          {1, {5, 5}, {5, 5}, {}},
                          {1, {kNaN, 5}, {5, 5}, {}},
                          {1, {0, 5}, {kInf, 5}, {}}};
    IdTrans<DPoint> const id;
    for (Case const& c : cases) {
        SimplePath const path = zigzag(c.closed);
        std::list<SimplePathPosition> out{positionOf(path, 99, 0.0)}, expected{positionOf(path, 99, 0.0)};
        for (auto const& [index, parameter] : c.expected) {
            expected.push_back(positionOf(path, index, parameter));
        }
        ASSERT_EQ(SimplePath::Success, path.pretransformFindIntersections(c.a, c.b, id, out));
        EXPECT_EQ(expected, out) << c.a.x << " " << c.a.y; // appended to, not cleared
    }
    std::list<SimplePathPosition> out;
    EXPECT_EQ(SimplePath::Failure, SimplePath().pretransformFindIntersections({0, 0}, {1, 1}, id, out));
}

TEST(Intersections, EqualTheRuleOnEverySegmentAndLieOnTheLine) {
    support::Bend const bend;
    IdTrans<DPoint> const id;
    for (std::uint64_t seed = 1; seed <= 4; ++seed) {
        SimplePath path;
        support::buildWigglyBlob(path, 80, seed, 100.0);
        path.setStrictClosed(seed % 2 == 0 ? 0 : 1);
        support::UnitRandom random(seed);
        for (int k = 0; k < 10; ++k) {
            DPoint const a(random.between(-60, 60), random.between(-60, 60));
            DPoint const b(-a.x, -a.y); // a line through the blob's middle
            ArbTrans<DPoint> const& t = k % 2 == 0 ? static_cast<ArbTrans<DPoint> const&>(bend) : id;
            std::list<SimplePathPosition> out;
            ASSERT_EQ(SimplePath::Success, path.pretransformFindIntersections(a, b, t, out));
            EXPECT_EQ(bruteForceCrossings(path, a, b, t), out);
            EXPECT_GE(out.size(), k % 2 == 0 ? 0u : 2u);
            DVector const direction = (b - a).normalized();
            for (SimplePathPosition const& p : out) {
                DPoint on;
                ASSERT_EQ(SimplePath::Success, path.pretransformLocatePosition(t, p, on));
                EXPECT_LT(std::fabs(direction.cross(on - a)), p.getParameter() != 0.0 ? 1e-9 : 1.0);
            }
        }
    }
}
