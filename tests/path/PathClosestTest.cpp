// The closest position to a point and the crossings of a line.

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

struct Closest {
    SimplePathPosition position;
    double squaredDistance;
};

// The rule solved on every segment, without any pruning: the end anchor first, then each segment from
// the last to the first replacing the candidate when no farther.
Closest bruteForceClosest(SimplePath const& path, DPoint const& point) {
    int const n = path.numTriples();
    int const segments = support::segmentCount(path);
    SimplePathVertexTriple end;
    path.getTriple(path.isClosedSimplePath() ? 0 : n - 1, end);
    Closest best{positionOf(path, segments, 0.0), squaredDistance(end.anchor->getLocation(), point)};
    for (int s = segments - 1; s >= 0; --s) {
        PBezier const b = segmentOf(path, s);
        double const t = std::clamp(b.findNearestPointTValue(point), 0.0, 1.0);
        double const d = squaredDistance(b.bValue(t), point);
        if (best.squaredDistance >= d) {
            best = {positionOf(path, s, t), d};
        }
    }
    return best;
}

// The rule without pruning: end anchor, then every segment's crossings, last segment first.
std::list<SimplePathPosition> bruteForceCrossings(SimplePath const& path, DPoint a, DPoint b,
                                                  ArbTrans<DPoint> const& t) {
    std::list<SimplePathPosition> out;
    int const n = path.numTriples();
    DVector const d = b - a;
    SimplePathVertexTriple end;
    path.getTriple(path.isClosedSimplePath() ? 0 : n - 1, end);
    if (std::fabs(d.cross(t.transform(end.anchor->getLocation()) - a)) < d.length()) {
        out.push_back(positionOf(path, path.isClosedSimplePath() ? 0 : n - 1, 0.0));
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

std::list<SimplePathPosition> positions(SimplePath const& path,
                                        std::vector<std::pair<int, double>> const& values) {
    std::list<SimplePathPosition> out;
    for (auto const& [index, parameter] : values) {
        out.push_back(positionOf(path, index, parameter));
    }
    return out;
}

// (0,0) -> (10,10) -> (20,0) -> (30,10), straight segments.
void buildZigzag(SimplePath& path, int closedFlag) {
    std::vector<support::TriplePoints> triples;
    for (DPoint p : {DPoint(0, 0), DPoint(10, 10), DPoint(20, 0), DPoint(30, 10)}) {
        triples.push_back({p, p, p});
    }
    support::buildPath(path, triples, closedFlag);
}

} // namespace

TEST(ClosestPosition, ShortcutsAndTheTieRule) {
    SimplePath empty;
    SimplePathPosition position;
    double d2 = -1;
    EXPECT_EQ(SimplePath::Failure, empty.findClosestPosition({1, 1}, position, d2));

    SimplePath single;
    SimplePathVertex* anchor = nullptr;
    single.addSingle(DPoint(50, 50), anchor);
    ASSERT_EQ(SimplePath::Success, single.findClosestPosition({-3, 7}, position, d2));
    EXPECT_EQ(positionOf(single, 0, 0.0), position);
    EXPECT_EQ(0.0, d2);

    SimplePath open;
    buildZigzag(open, 0);
    ASSERT_EQ(SimplePath::Success, open.findClosestPosition({10, 10}, position, d2)); // an interior anchor
    EXPECT_EQ(positionOf(open, 0, 1.0), position);
    EXPECT_EQ(0.0, d2);
    ASSERT_EQ(SimplePath::Success, open.findClosestPosition({31, 11}, position, d2)); // beyond the end
    EXPECT_EQ(positionOf(open, 2, 1.0), position);
    EXPECT_EQ(2.0, d2);
    ASSERT_EQ(SimplePath::Success, open.findClosestPosition({15, 5}, position)); // on the curve
    ASSERT_EQ(1, position.getIndex());
    EXPECT_NEAR(0.5, position.getParameter(), 1e-12);
    ASSERT_EQ(SimplePath::Success, open.findClosestPosition({15, 20}, position, d2)); // nearest an anchor
    EXPECT_EQ(positionOf(open, 0, 1.0), position);
    EXPECT_EQ(125.0, d2);

    SimplePath closed;
    buildZigzag(closed, 1);
    ASSERT_EQ(SimplePath::Success, closed.findClosestPosition({0, 0}, position, d2)); // the start anchor
    EXPECT_EQ(positionOf(closed, 0, 0.0), position);
    ASSERT_EQ(SimplePath::Success, closed.findClosestPosition({6, 2.5}, position, d2));
    EXPECT_EQ(3, position.getIndex()); // the closing segment runs through (6, 2)
    EXPECT_NEAR(0.225, d2, 1e-9);
}

TEST(ClosestPosition, EqualsTheRuleSolvedOnEverySegmentAndTheTrueMinimum) {
    for (std::uint64_t seed = 1; seed <= 4; ++seed) {
        SimplePath path;
        support::buildWigglyBlob(path, 60, seed, 200.0);
        path.setStrictClosed(seed % 2 == 0 ? 0 : 1);
        support::UnitRandom random(seed * 7);
        for (int k = 0; k < 24; ++k) {
            DPoint point(random.between(-110, 110), random.between(-110, 110));
            if (k % 8 == 0) { // exactly on the curve, at an anchor or a segment point
                SimplePathPosition const on = positionOf(path, k % 50, k % 16 == 0 ? 0.0 : 0.37);
                path.locatePosition(on, point);
            }
            SimplePathPosition position;
            double d2 = -1;
            ASSERT_EQ(SimplePath::Success, path.findClosestPosition(point, position, d2));
            Closest const expected = bruteForceClosest(path, point);
            EXPECT_EQ(expected.squaredDistance, d2);
            EXPECT_EQ(expected.position, position);

            support::LD reference = 1e300L;
            for (int s = 0; s < support::segmentCount(path); ++s) {
                PBezier const b = segmentOf(path, s);
                reference =
                    std::min(reference,
                             support::minimumOver(
                                 [&](support::LD t) { return support::squaredDistanceTo(b, t, point); }, 40));
            }
            // Distance accuracy: 1e-12 of the curve's size (200) above the true minimum.
            EXPECT_LE(std::sqrt(d2), std::sqrt(double(reference)) + 2e-10);
            DPoint located;
            ASSERT_EQ(SimplePath::Success, path.locatePosition(position, located));
            EXPECT_EQ(d2, squaredDistance(located, point));
        }
    }
}

TEST(ClosestPosition, BadInputNeitherCrashesNorHangs) {
    SimplePath path;
    support::buildWigglyBlob(path, 20, 3);
    SimplePathPosition position;
    double d2 = 0;
    ASSERT_EQ(SimplePath::Success, path.findClosestPosition({kNaN, 0}, position, d2));
    EXPECT_EQ(positionOf(path, 20, 0.0), position); // nothing compares below NaN: the end anchor stays
    EXPECT_TRUE(std::isnan(d2));
    EXPECT_EQ(SimplePath::Success, path.findClosestPosition({kInf, 1e300}, position, d2));
    EXPECT_EQ(SimplePath::Success,
              path.pretransformFindClosestPosition({kNaN, 0}, support::Bend(), position, d2));

    SimplePath broken; // a vertex at NaN and one at infinity
    support::buildPath(broken,
                       std::vector<support::TriplePoints>{{{0, 0}, {0, 0}, {kNaN, 1}},
                                                          {{5, 5}, {5, 5}, {5, 5}},
                                                          {{9, 9}, {kInf, 0}, {9, 9}}},
                       1);
    EXPECT_EQ(SimplePath::Success, broken.findClosestPosition({1, 1}, position, d2));
    EXPECT_EQ(SimplePath::Success,
              broken.pretransformFindClosestPosition({1, 1}, support::Bend(), position, d2));
    double minX, minY, maxX, maxY;
    EXPECT_EQ(SimplePath::Success, broken.getMinMax(minX, minY, maxX, maxY));
    DPoint top, bottom;
    EXPECT_EQ(SimplePath::Success, broken.getTopBottom(top, bottom));
    broken.pretransformLength(support::Bend(), d2);
    broken.pretransformInBox(support::Bend(), {0, 0}, {10, 10});
    std::list<SimplePathPosition> crossings;
    EXPECT_EQ(SimplePath::Success,
              broken.pretransformFindIntersections({0, 1}, {1, 0}, support::Bend(), crossings));
    EXPECT_EQ(SimplePath::Success, broken.pickPosition({5, 5}, 1.0, position));
}

TEST(SampledClosestPosition, NearestOfElevenAccumulatedSamplesOnTheMappedCurve) {
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
        // The rule by hand: end anchor, then all samples, last segment first, ties to the later one.
        SimplePathVertexTriple first;
        path.getTriple(0, first);
        SimplePathPosition expected = positionOf(path, 16, 0.0);
        double best = squaredDistance(t.transform(first.anchor->getLocation()), point);
        for (int s = 15; s >= 0; --s) {
            PBezier const b = segmentOf(path, s, t);
            for (double u : samples) {
                double const d = squaredDistance(b.bValue(u), point);
                if (d <= best) {
                    expected = positionOf(path, s, u);
                    best = d;
                }
            }
        }
        SimplePathPosition position;
        double d2 = -1;
        ASSERT_EQ(SimplePath::Success, path.pretransformFindClosestPosition(point, t, position, d2));
        EXPECT_EQ(expected, position);
        EXPECT_EQ(best, d2);
        EXPECT_NE(samples.end(), std::find(samples.begin(), samples.end(), position.getParameter()));
        SimplePathPosition twoArgument;
        path.pretransformFindClosestPosition(point, t, twoArgument);
        EXPECT_EQ(position, twoArgument);
    }

    SimplePath single;
    SimplePathVertex* anchor = nullptr;
    single.addSingle(DPoint(3, 3), anchor);
    SimplePathPosition position;
    double d2 = 12.5;
    ASSERT_EQ(SimplePath::Success, single.pretransformFindClosestPosition({9, 9}, bend, position, d2));
    EXPECT_EQ(positionOf(single, 0, 0.0), position);
    EXPECT_EQ(12.5, d2); // left as the caller set it
    EXPECT_EQ(SimplePath::Failure, SimplePath().pretransformFindClosestPosition({9, 9}, bend, position, d2));
}

TEST(Intersections, EndAnchorFirstThenSegmentsFromTheLast) {
    IdTrans<DPoint> const id;
    SimplePath open;
    buildZigzag(open, 0);
    std::list<SimplePathPosition> out{positionOf(open, 99, 0.0)}; // appended to, not cleared
    ASSERT_EQ(SimplePath::Success, open.pretransformFindIntersections({-100, 5}, {-90, 5}, id, out));
    EXPECT_EQ(positions(open, {{99, 0.0}, {2, 0.5}, {1, 0.5}, {0, 0.5}}), out);

    out.clear(); // through two anchors: the interior one once, as the start of its segment
    ASSERT_EQ(SimplePath::Success, open.pretransformFindIntersections({0, 10}, {1, 10}, id, out));
    EXPECT_EQ(positions(open, {{3, 0.0}, {1, 0.0}}), out);

    out.clear(); // the end anchor lies 0.5 from the line: reported though nothing crosses
    ASSERT_EQ(SimplePath::Success, open.pretransformFindIntersections({0, 10.5}, {1, 10.5}, id, out));
    EXPECT_EQ(positions(open, {{3, 0.0}}), out);

    SimplePath closed;
    buildZigzag(closed, 1);
    out.clear(); // the closing segment runs (30,10) -> (0,0); the end anchor of a closed path is (0, 0.0)
    ASSERT_EQ(SimplePath::Success, closed.pretransformFindIntersections({0, 0}, {0, 1}, id, out));
    EXPECT_EQ(positions(closed, {{0, 0.0}, {0, 0.0}}), out);
    out.clear();
    ASSERT_EQ(SimplePath::Success, closed.pretransformFindIntersections({0, 2}, {1, 2}, id, out));
    ASSERT_EQ(4u, out.size());
    EXPECT_EQ(3, out.front().getIndex());

    out.clear(); // a line with no direction meets nothing; bad input does not crash
    EXPECT_EQ(SimplePath::Success, closed.pretransformFindIntersections({5, 5}, {5, 5}, id, out));
    EXPECT_EQ(SimplePath::Success, closed.pretransformFindIntersections({kNaN, 5}, {5, 5}, id, out));
    EXPECT_EQ(SimplePath::Success, closed.pretransformFindIntersections({0, 5}, {kInf, 5}, id, out));
    EXPECT_TRUE(out.empty());
    EXPECT_EQ(SimplePath::Failure, SimplePath().pretransformFindIntersections({0, 0}, {1, 1}, id, out));
}

TEST(Intersections, PruningChangesNothingAndCrossingsLieOnTheLine) {
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
            EXPECT_GE(out.size(), k % 2 == 0 ? 0u : 2u); // a line through a blob's middle crosses it
            DVector const direction = (b - a).normalized();
            for (SimplePathPosition const& p : out) {
                DPoint on;
                ASSERT_EQ(SimplePath::Success, path.pretransformLocatePosition(t, p, on));
                EXPECT_LT(std::fabs(direction.cross(on - a)), 1.0);
                if (p.getParameter() != 0.0) {
                    EXPECT_LT(std::fabs(direction.cross(on - a)), 1e-9);
                }
            }
        }
    }
}
