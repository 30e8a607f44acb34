// Bounds, top and bottom, length, the box test and the position metric.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <limits>
#include <memory>
#include <vector>

#include "simplepath/path/SimplePath.h"
#include "support/BezierReference.h"
#include "support/PathQueryHelpers.h"
#include "support/WigglyPath.h"

using support::LD;
using support::positionOf;
using support::segmentOf;

namespace {

constexpr double kIntMax = 2147483647.0;
constexpr double kDoubleMax = 1.7976931348623157e308;

struct Box {
    double minX, minY, maxX, maxY;
};

// The curve's extent from dense sampling refined in long double, segment by segment.
Box referenceExtent(SimplePath const& path, ArbTrans<DPoint> const& t) {
    LD lo[2] = {1e300L, 1e300L}, hi[2] = {-1e300L, -1e300L};
    for (int s = 0; s < support::segmentCount(path); ++s) {
        PBezier const b = segmentOf(path, s, t);
        for (int axis = 0; axis < 2; ++axis) {
            auto const along = [&b, axis](LD sign) {
                return [&b, axis, sign](LD u) {
                    support::LPoint const p = support::evaluate(b, u);
                    return sign * (axis == 0 ? p.x : p.y);
                };
            };
            lo[axis] = std::min(lo[axis], support::minimumOver(along(1), 100));
            hi[axis] = std::max(hi[axis], -support::minimumOver(along(-1), 100));
        }
    }
    return {double(lo[0]), double(lo[1]), double(hi[0]), double(hi[1])};
}

void expectExtent(Box const& expected, Box const& actual, double tolerance) {
    EXPECT_NEAR(expected.minX, actual.minX, tolerance);
    EXPECT_NEAR(expected.minY, actual.minY, tolerance);
    EXPECT_NEAR(expected.maxX, actual.maxX, tolerance);
    EXPECT_NEAR(expected.maxY, actual.maxY, tolerance);
}

SimplePath pathOf(std::vector<support::TriplePoints> const& triples, int closedFlag) {
    SimplePath path;
    support::buildPath(path, triples, closedFlag);
    return path;
}

} // namespace

TEST(Extent, SentinelsOnEmptyPathsAndTheAnchorOfASingleTriple) {
    SimplePath const empty;
    support::Bend const bend;
    Box b{1, 1, 1, 1};
    EXPECT_EQ(SimplePath::Failure, empty.getMinMax(b.minX, b.minY, b.maxX, b.maxY));
    expectExtent({kIntMax, kIntMax, -kIntMax, -kIntMax}, b, 0.0);
    EXPECT_EQ(SimplePath::Failure, empty.pretransformGetMinMax(bend, b.minX, b.minY, b.maxX, b.maxY));
    expectExtent({kIntMax, kIntMax, -kIntMax, -kIntMax}, b, 0.0);
    EXPECT_EQ(SimplePath::Failure, empty.pretransformGetMinMaxEx(bend, b.minX, b.minY, b.maxX, b.maxY));
    expectExtent({kDoubleMax, kDoubleMax, -kDoubleMax, -kDoubleMax}, b, 0.0);
    DPoint top(1, 1), bottom(1, 1);
    EXPECT_EQ(SimplePath::Failure, empty.getTopBottom(top, bottom));
    EXPECT_EQ(DPoint(-kIntMax, -kIntMax), top);
    EXPECT_EQ(DPoint(kIntMax, kIntMax), bottom);

    SimplePath const single = pathOf({{{-50, 9}, {3, 4}, {80, -70}}}, 1); // far handles shape nothing
    ASSERT_EQ(SimplePath::Success, single.getMinMax(b.minX, b.minY, b.maxX, b.maxY));
    expectExtent({3, 4, 3, 4}, b, 0.0);
    DPoint const mapped = bend.transform(DPoint(3, 4));
    ASSERT_EQ(SimplePath::Success, single.pretransformGetMinMaxEx(bend, b.minX, b.minY, b.maxX, b.maxY));
    expectExtent({mapped.x, mapped.y, mapped.x, mapped.y}, b, 0.0);
    ASSERT_EQ(SimplePath::Success, single.getTopBottom(top, bottom));
    EXPECT_EQ(DPoint(3, 4), top);
    EXPECT_EQ(DPoint(3, 4), bottom);
}

TEST(Extent, IsTheCurvesNotTheHandlesAndPruningChangesNothing) {
    Box b;
    SimplePath const arch = pathOf({{{0, 0}, {0, 0}, {0, 100}}, {{100, 100}, {100, 0}, {100, 0}}}, 0);
    ASSERT_EQ(SimplePath::Success, arch.getMinMax(b.minX, b.minY, b.maxX, b.maxY));
    expectExtent({0, 0, 100, 75}, b, 1e-12); // the handles rise to 100
    DPoint top, bottom;
    ASSERT_EQ(SimplePath::Success, arch.getTopBottom(top, bottom));
    EXPECT_NEAR(50.0, top.x, 1e-9);
    EXPECT_NEAR(75.0, top.y, 1e-12);
    SimplePath const zigzag = support::polyline({{0, 0}, {1, 5}, {2, 0}, {3, 5}, {4, 0}}, 0);
    ASSERT_EQ(SimplePath::Success, zigzag.getTopBottom(top, bottom));
    EXPECT_EQ(DPoint(1, 5), top); // the earliest segment wins ties
    EXPECT_EQ(DPoint(0, 0), bottom);
    // Guards "Top and bottom: prune by the whole control box again, since the top may be an anchor whose
    // handles both point down": the top and bottom are cusp anchors whose handles all point inwards.
    SimplePath const peak =
        pathOf({{{0, 0}, {0, 0}, {3, 3}}, {{7, 9}, {10, 10}, {13, 9}}, {{17, 3}, {20, 0}, {20, 0}}}, 0);
    ASSERT_EQ(SimplePath::Success, peak.getTopBottom(top, bottom));
    EXPECT_EQ(DPoint(10, 10), top);
    EXPECT_EQ(DPoint(0, 0), bottom);
    DPoint center(5, -3);
    std::unique_ptr<SimplePath> const circle(SimplePath::createCircleSP(center, 10));
    ASSERT_EQ(SimplePath::Success, circle->getMinMax(b.minX, b.minY, b.maxX, b.maxY));
    expectExtent({-5, -13, 15, 7}, b, 1e-12);

    // Random paths, plain and through a non-affine transform: exactly the fold of every segment's
    // extremes, and within 1e-12 of the sampled reference. Also the top and bottom, earliest winning ties.
    support::Bend const bend;
    IdTrans<DPoint> const id;
    for (std::uint64_t seed = 1; seed <= 6; ++seed) {
        SimplePath path;
        support::buildWigglyBlob(path, 60, seed, seed % 2 == 0 ? 20.0 : 3.0);
        path.setStrictClosed(seed % 3 == 0 ? 0 : 1);
        for (ArbTrans<DPoint> const* t : std::initializer_list<ArbTrans<DPoint> const*>{&id, &bend}) {
            Box folded{kIntMax, kIntMax, -kIntMax, -kIntMax};
            for (int s = 0; s < support::segmentCount(path); ++s) {
                segmentOf(path, s, *t).localMinMax(folded.minX, folded.minY, folded.maxX, folded.maxY);
            }
            ASSERT_EQ(SimplePath::Success, path.pretransformGetMinMax(*t, b.minX, b.minY, b.maxX, b.maxY));
            expectExtent(folded, b, 0.0);
            expectExtent(referenceExtent(path, *t), b, t == &id ? 1e-12 : 1e-11);
            ASSERT_EQ(SimplePath::Success, path.pretransformGetMinMaxEx(*t, b.minX, b.minY, b.maxX, b.maxY));
            expectExtent(folded, b, 0.0);
        }
        DPoint expectedTop(-kIntMax, -kIntMax), expectedBottom(kIntMax, kIntMax);
        for (int s = 0; s < support::segmentCount(path); ++s) {
            segmentOf(path, s).localTopBottom(top, bottom);
            expectedTop = top.y > expectedTop.y ? top : expectedTop;
            expectedBottom = bottom.y < expectedBottom.y ? bottom : expectedBottom;
        }
        ASSERT_EQ(SimplePath::Success, path.getTopBottom(top, bottom));
        EXPECT_EQ(expectedTop, top);
        EXPECT_EQ(expectedBottom, bottom);
    }
}

TEST(Length, SumsTheMappedSegmentsToTheKernelsAccuracy) {
    support::Bend const bend;
    IdTrans<DPoint> const id;
    SimplePath path;
    support::buildWigglyBlob(path, 37, 4, 30.0); // the segments go to the kernel in sixteens: 16 + 16 + 5
    double lengths[2];
    for (ArbTrans<DPoint> const* t : std::initializer_list<ArbTrans<DPoint> const*>{&id, &bend}) {
        LD reference = 0;
        double oneByOne = 0;
        for (int s = 0; s < support::segmentCount(path); ++s) {
            reference += support::arcLength(segmentOf(path, s, *t));
            oneByOne += segmentOf(path, s, *t).length();
        }
        double& length = lengths[t == &id ? 0 : 1];
        path.pretransformLength(*t, length);
        EXPECT_NEAR(1.0, length / double(reference), 1e-12);
        EXPECT_EQ(oneByOne, length); // the same terms added in the same order
    }
    EXPECT_GT(std::fabs(lengths[1] - lengths[0]), 0.5);
    double length = -1;
    SimplePath().pretransformLength(id, length);
    EXPECT_EQ(0.0, length);
    SimplePath const single = pathOf({{{0, 0}, {1, 1}, {9, 9}}}, 0); // handles, but no segment
    single.pretransformLength(bend, length);
    EXPECT_EQ(0.0, length);
}

TEST(InBox, SampledPointsStrictlyInsideTheMappedBox) {
    DPoint center(0, 0);
    std::unique_ptr<SimplePath> const circle(SimplePath::createCircleSP(center, 100));
    support::Bend const bend;
    IdTrans<DPoint> const id;
    struct Case {
        ArbTrans<DPoint> const* t;
        DPoint boxMin, boxMax;
        int expected;
    };
    // Surrounded but not touched; holding the top of the outline; inverted; reached by the closing
    // segment only; above the circle, unless bent up into the box; NaN.
    double const nan = std::numeric_limits<double>::quiet_NaN();
    Case const cases[] = {{&id, {-50, -50}, {50, 50}, 0},     {&id, {-50, 90}, {50, 150}, 1},
                          {&id, {150, 150}, {-150, -150}, 0}, {&id, {-80, 60}, {-60, 80}, 1},
                          {&id, {-100, 150}, {100, 400}, 0},  {&bend, {-100, 150}, {100, 400}, 1},
                          {&id, {nan, -150}, {150, 150}, 0}};
    for (Case const& c : cases) {
        EXPECT_EQ(c.expected, circle->pretransformInBox(*c.t, c.boxMin, c.boxMax))
            << c.boxMin.x << " " << c.boxMin.y;
    }
    SimplePath const single = pathOf({{{1, 1}, {1, 1}, {1, 1}}}, 0);
    EXPECT_EQ(1, single.pretransformInBox(id, {0, 0}, {2, 2}));
    EXPECT_EQ(0, single.pretransformInBox(id, {1, 0}, {2, 2})); // on the edge is not inside
    EXPECT_EQ(0, SimplePath().pretransformInBox(id, {-1e9, -1e9}, {1e9, 1e9}));
}

TEST(InterPositionMetric, SignedSegmentsWithTheWrapWinningTies) {
    struct Case {
        int closed, fromIndex;
        double fromParameter;
        int toIndex;
        double toParameter, expected;
    };
    Case const cases[] = {{0, 0, 0.25, 3, 0.0, -2.75}, {0, 3, 0.0, 0, 0.25, 2.75}, {1, 0, 0.25, 3, 0.0, 1.25},
                          {1, 1, 0.0, 2, 0.5, -1.5},   {1, 0, 0.0, 2, 0.0, 2.0},   {1, 2, 0.0, 0, 0.0, -2.0}};
    SimplePath path; // four segments round when closed; half-way round either way is a tie
    support::buildWigglyBlob(path, 4, 1);
    for (Case const& c : cases) {
        path.setStrictClosed(c.closed);
        EXPECT_DOUBLE_EQ(c.expected,
                         path.getInterPositionMetric(positionOf(path, c.fromIndex, c.fromParameter),
                                                     positionOf(path, c.toIndex, c.toParameter)))
            << c.closed << " " << c.fromIndex << " " << c.toIndex;
    }
}
