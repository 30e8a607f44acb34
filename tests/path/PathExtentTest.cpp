// Bounds, top and bottom, length, the box test and the position metric.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
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

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

struct Box {
    double minX, minY, maxX, maxY;
};

// The curve's extent from dense sampling refined in long double, segment by segment.
Box referenceExtent(SimplePath const& path, ArbTrans<DPoint> const& t) {
    LD lo[2] = {1e300L, 1e300L}, hi[2] = {-1e300L, -1e300L};
    for (int s = 0; s < support::segmentCount(path); ++s) {
        PBezier const b = segmentOf(path, s, t);
        auto coordinate = [&](int axis, LD sign) {
            return [&b, axis, sign](LD u) {
                support::LPoint const p = support::evaluate(b, u);
                return sign * (axis == 0 ? p.x : p.y);
            };
        };
        for (int axis = 0; axis < 2; ++axis) {
            lo[axis] = std::min(lo[axis], support::minimumOver(coordinate(axis, 1), 100));
            hi[axis] = std::max(hi[axis], -support::minimumOver(coordinate(axis, -1), 100));
        }
    }
    return {double(lo[0]), double(lo[1]), double(hi[0]), double(hi[1])};
}

void expectExtent(Box const& expected, double minX, double minY, double maxX, double maxY, double tolerance) {
    EXPECT_NEAR(expected.minX, minX, tolerance);
    EXPECT_NEAR(expected.minY, minY, tolerance);
    EXPECT_NEAR(expected.maxX, maxX, tolerance);
    EXPECT_NEAR(expected.maxY, maxY, tolerance);
}

} // namespace

TEST(Extent, SentinelsOnEmptyPathsAndTheAnchorOfASingleTriple) {
    SimplePath empty;
    IdTrans<DPoint> const id;
    double minX = 1, minY = 1, maxX = 1, maxY = 1;
    EXPECT_EQ(SimplePath::Failure, empty.getMinMax(minX, minY, maxX, maxY));
    EXPECT_EQ(2147483647.0, minX);
    EXPECT_EQ(2147483647.0, minY);
    EXPECT_EQ(-2147483647.0, maxX);
    EXPECT_EQ(-2147483647.0, maxY);
    EXPECT_EQ(SimplePath::Failure, empty.pretransformGetMinMax(id, minX, minY, maxX, maxY));
    EXPECT_EQ(2147483647.0, minX);
    EXPECT_EQ(-2147483647.0, maxY);
    EXPECT_EQ(SimplePath::Failure, empty.pretransformGetMinMaxEx(id, minX, minY, maxX, maxY));
    EXPECT_EQ(1.7976931348623157e308, minX);
    EXPECT_EQ(1.7976931348623157e308, minY);
    EXPECT_EQ(-1.7976931348623157e308, maxX);
    EXPECT_EQ(-1.7976931348623157e308, maxY);
    DPoint top(1, 1), bottom(1, 1);
    EXPECT_EQ(SimplePath::Failure, empty.getTopBottom(top, bottom));
    EXPECT_EQ(DPoint(-2147483647.0, -2147483647.0), top);
    EXPECT_EQ(DPoint(2147483647.0, 2147483647.0), bottom);

    SimplePath single; // handles far out shape nothing, open or closed
    support::buildPath(single, std::vector<support::TriplePoints>{{{-50, 9}, {3, 4}, {80, -70}}}, 1);
    ASSERT_EQ(SimplePath::Success, single.getMinMax(minX, minY, maxX, maxY));
    expectExtent({3, 4, 3, 4}, minX, minY, maxX, maxY, 0.0);
    support::Bend const bend;
    DPoint const mapped = bend.transform(DPoint(3, 4));
    ASSERT_EQ(SimplePath::Success, single.pretransformGetMinMaxEx(bend, minX, minY, maxX, maxY));
    expectExtent({mapped.x, mapped.y, mapped.x, mapped.y}, minX, minY, maxX, maxY, 0.0);
    ASSERT_EQ(SimplePath::Success, single.getTopBottom(top, bottom));
    EXPECT_EQ(DPoint(3, 4), top);
    EXPECT_EQ(DPoint(3, 4), bottom);
}

TEST(Extent, IsTheCurvesNotTheHandles) {
    SimplePath arch; // one segment whose handles rise to y = 100; the curve only to 75
    support::buildPath(
        arch,
        std::vector<support::TriplePoints>{{{0, 0}, {0, 0}, {0, 100}}, {{100, 100}, {100, 0}, {100, 0}}}, 0);
    double minX, minY, maxX, maxY;
    ASSERT_EQ(SimplePath::Success, arch.getMinMax(minX, minY, maxX, maxY));
    expectExtent({0, 0, 100, 75}, minX, minY, maxX, maxY, 1e-12);

    DPoint center(5, -3);
    std::unique_ptr<SimplePath> circle(SimplePath::createCircleSP(center, 10));
    ASSERT_EQ(SimplePath::Success, circle->getMinMax(minX, minY, maxX, maxY));
    expectExtent({-5, -13, 15, 7}, minX, minY, maxX, maxY, 1e-12);

    // Random wiggly paths, plain and through a non-affine transform, against the sampled reference.
    support::Bend const bend;
    IdTrans<DPoint> const id;
    for (std::uint64_t seed = 1; seed <= 3; ++seed) {
        SimplePath path;
        support::buildWigglyBlob(path, 30, seed, 20.0);
        ASSERT_EQ(SimplePath::Success, path.getMinMax(minX, minY, maxX, maxY));
        expectExtent(referenceExtent(path, id), minX, minY, maxX, maxY, 1e-12);
        ASSERT_EQ(SimplePath::Success, path.pretransformGetMinMax(bend, minX, minY, maxX, maxY));
        expectExtent(referenceExtent(path, bend), minX, minY, maxX, maxY, 1e-11);
        double exMinX, exMinY, exMaxX, exMaxY;
        ASSERT_EQ(SimplePath::Success, path.pretransformGetMinMaxEx(bend, exMinX, exMinY, exMaxX, exMaxY));
        EXPECT_EQ(minX, exMinX);
        EXPECT_EQ(maxY, exMaxY);
    }
}

TEST(TopBottom, ExtremesOfTheCurveEarliestSegmentWinningTies) {
    SimplePath zigzag; // peaks (1, 5) and (3, 5), troughs (0, 0), (2, 0), (4, 0)
    support::buildPath(zigzag,
                       std::vector<support::TriplePoints>{{{0, 0}, {0, 0}, {0, 0}},
                                                          {{1, 5}, {1, 5}, {1, 5}},
                                                          {{2, 0}, {2, 0}, {2, 0}},
                                                          {{3, 5}, {3, 5}, {3, 5}},
                                                          {{4, 0}, {4, 0}, {4, 0}}},
                       0);
    DPoint top, bottom;
    ASSERT_EQ(SimplePath::Success, zigzag.getTopBottom(top, bottom));
    EXPECT_EQ(DPoint(1, 5), top);
    EXPECT_EQ(DPoint(0, 0), bottom);

    SimplePath peak; // the top and bottom are cusp anchors whose handles all point inwards
    support::buildPath(peak,
                       std::vector<support::TriplePoints>{{{0, 0}, {0, 0}, {3, 3}},
                                                          {{7, 9}, {10, 10}, {13, 9}},
                                                          {{17, 3}, {20, 0}, {20, 0}}},
                       0);
    ASSERT_EQ(SimplePath::Success, peak.getTopBottom(top, bottom));
    EXPECT_EQ(DPoint(10, 10), top);
    EXPECT_EQ(DPoint(0, 0), bottom);

    SimplePath arch; // the top lies inside the segment, below the handles
    support::buildPath(
        arch,
        std::vector<support::TriplePoints>{{{0, 0}, {0, 0}, {0, 100}}, {{100, 100}, {100, 0}, {100, 0}}}, 1);
    ASSERT_EQ(SimplePath::Success, arch.getTopBottom(top, bottom));
    EXPECT_NEAR(50.0, top.x, 1e-9);
    EXPECT_NEAR(75.0, top.y, 1e-12);
    EXPECT_EQ(DPoint(0, 0), bottom);
}

TEST(Length, SumsTheMappedSegmentsToTheKernelsAccuracy) {
    support::Bend const bend;
    IdTrans<DPoint> const id;
    SimplePath path;
    support::buildWigglyBlob(path, 12, 4, 30.0);
    for (ArbTrans<DPoint> const* t :
         {static_cast<ArbTrans<DPoint> const*>(&id), static_cast<ArbTrans<DPoint> const*>(&bend)}) {
        LD reference = 0;
        for (int s = 0; s < support::segmentCount(path); ++s) {
            reference += support::arcLength(segmentOf(path, s, *t));
        }
        double length = -1;
        path.pretransformLength(*t, length);
        EXPECT_NEAR(1.0, length / double(reference), 1e-12);
    }
    double plain = 0, bent = 0;
    path.pretransformLength(id, plain);
    path.pretransformLength(bend, bent);
    EXPECT_GT(std::fabs(bent - plain), 0.5);

    double length = -1;
    SimplePath().pretransformLength(id, length);
    EXPECT_EQ(0.0, length);
    SimplePath single;
    SimplePathVertex* anchor = nullptr;
    single.addSingle(DPoint(1, 1), anchor);
    single.pretransformLength(bend, length);
    EXPECT_EQ(0.0, length);
}

TEST(InBox, SampledPointsStrictlyInsideTheMappedBox) {
    DPoint center(0, 0);
    std::unique_ptr<SimplePath> circle(SimplePath::createCircleSP(center, 100));
    IdTrans<DPoint> const id;
    EXPECT_EQ(0, circle->pretransformInBox(id, {-50, -50}, {50, 50})); // surrounded, not touched
    EXPECT_EQ(1, circle->pretransformInBox(id, {-50, 90}, {50, 150})); // holds the top of the outline
    EXPECT_EQ(1, circle->pretransformInBox(id, {-150, -150}, {150, 150}));
    EXPECT_EQ(0, circle->pretransformInBox(id, {150, 150}, {-150, -150})); // inverted: nothing inside
    // The closing segment (from the left back to the top) is the only one reaching this box.
    EXPECT_EQ(1, circle->pretransformInBox(id, {-80, 60}, {-60, 80}));
    support::Bend const bend;
    EXPECT_EQ(0, circle->pretransformInBox(id, {-100, 150}, {100, 400}));
    EXPECT_EQ(1, circle->pretransformInBox(bend, {-100, 150}, {100, 400})); // bent up into the box

    SimplePath single;
    SimplePathVertex* anchor = nullptr;
    single.addSingle(DPoint(1, 1), anchor);
    EXPECT_EQ(1, single.pretransformInBox(id, {0, 0}, {2, 2}));
    EXPECT_EQ(0, single.pretransformInBox(id, {1, 0}, {2, 2})); // on the edge is not inside
    EXPECT_EQ(0, single.pretransformInBox(id, {0, 0}, {2, 1}));
    EXPECT_EQ(0, SimplePath().pretransformInBox(id, {-1e9, -1e9}, {1e9, 1e9}));
    EXPECT_EQ(0, circle->pretransformInBox(id, {kNaN, -150}, {150, 150}));
}

TEST(InterPositionMetric, SignedSegmentsWithTheWrapWinningTies) {
    SimplePath open;
    support::buildWigglyBlob(open, 4, 1);
    open.setStrictClosed(0);
    EXPECT_DOUBLE_EQ(-2.75, open.getInterPositionMetric(positionOf(open, 0, 0.25), positionOf(open, 3, 0.0)));
    EXPECT_DOUBLE_EQ(2.75, open.getInterPositionMetric(positionOf(open, 3, 0.0), positionOf(open, 0, 0.25)));

    SimplePath closed; // four segments round
    support::buildWigglyBlob(closed, 4, 1);
    EXPECT_DOUBLE_EQ(1.25,
                     closed.getInterPositionMetric(positionOf(closed, 0, 0.25), positionOf(closed, 3, 0.0)));
    EXPECT_DOUBLE_EQ(-1.25,
                     closed.getInterPositionMetric(positionOf(closed, 3, 0.0), positionOf(closed, 0, 0.25)));
    EXPECT_DOUBLE_EQ(-1.5,
                     closed.getInterPositionMetric(positionOf(closed, 1, 0.0), positionOf(closed, 2, 0.5)));
    // Half-way round either way: the wrapped value.
    EXPECT_DOUBLE_EQ(2.0,
                     closed.getInterPositionMetric(positionOf(closed, 0, 0.0), positionOf(closed, 2, 0.0)));
    EXPECT_DOUBLE_EQ(-2.0,
                     closed.getInterPositionMetric(positionOf(closed, 2, 0.0), positionOf(closed, 0, 0.0)));
    EXPECT_DOUBLE_EQ(0.0,
                     closed.getInterPositionMetric(positionOf(closed, 1, 0.0), positionOf(closed, 1, 0.0)));
}

TEST(Extent, PruningChangesNothing) {
    support::Bend const bend;
    IdTrans<DPoint> const id;
    for (std::uint64_t seed = 1; seed <= 6; ++seed) {
        SimplePath path;
        support::buildWigglyBlob(path, 200, seed, seed % 2 == 0 ? 2000.0 : 3.0);
        path.setStrictClosed(seed % 3 == 0 ? 0 : 1);
        for (ArbTrans<DPoint> const* t :
             {static_cast<ArbTrans<DPoint> const*>(&id), static_cast<ArbTrans<DPoint> const*>(&bend)}) {
            double expected[4] = {2147483647.0, 2147483647.0, -2147483647.0, -2147483647.0};
            for (int s = 0; s < support::segmentCount(path); ++s) {
                segmentOf(path, s, *t).localMinMax(expected[0], expected[1], expected[2], expected[3]);
            }
            double minX, minY, maxX, maxY;
            ASSERT_EQ(SimplePath::Success, path.pretransformGetMinMax(*t, minX, minY, maxX, maxY));
            EXPECT_EQ(expected[0], minX);
            EXPECT_EQ(expected[1], minY);
            EXPECT_EQ(expected[2], maxX);
            EXPECT_EQ(expected[3], maxY);
        }
        DPoint expectedTop(-2147483647.0, -2147483647.0), expectedBottom(2147483647.0, 2147483647.0);
        for (int s = 0; s < support::segmentCount(path); ++s) {
            DPoint top, bottom;
            segmentOf(path, s).localTopBottom(top, bottom);
            expectedTop = top.y > expectedTop.y ? top : expectedTop;
            expectedBottom = bottom.y < expectedBottom.y ? bottom : expectedBottom;
        }
        DPoint top, bottom;
        ASSERT_EQ(SimplePath::Success, path.getTopBottom(top, bottom));
        EXPECT_EQ(expectedTop, top);
        EXPECT_EQ(expectedBottom, bottom);
    }
}
