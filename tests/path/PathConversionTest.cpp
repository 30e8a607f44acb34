#include <gtest/gtest.h>

#include <list>
#include <vector>

#include "simplepath/path/SimplePath.h"
#include "simplepath/path/SimplePathConversion.h"

namespace {

using Mode = SimplePathVertexTriple::VertexTripleMode;

// Bends the plane (not affine), so a point that skipped the mapping would show.
class Bend : public ArbTrans<DPoint> {
  public:
    DPoint transform(DPoint const& p) const override { return {p.x, p.y + p.x * p.x}; }
    DPoint reverseTransform(DPoint const& p) const override { return {p.x, p.y - p.x * p.x}; }
};

// Triple i: anchor (10 i, i), incoming handle 1 left of it, outgoing 2 right of it, Smooth.
SimplePath makePath(int n, int closed) {
    SimplePath path;
    SimplePathVertex *f = nullptr, *a = nullptr, *l = nullptr;
    for (int i = 0; i < n; ++i) {
        double const x = 10.0 * i;
        double const y = i;
        path.addTriple({x - 1, y}, f, {x, y}, a, {x + 2, y}, l, SimplePathVertexTriple::Smooth);
    }
    path.setStrictClosed(closed);
    return path;
}

std::vector<PBezier> segmentsOf(PBezierCurve const& curve) {
    return {curve.getSegments().begin(), curve.getSegments().end()};
}

std::vector<SimplePathLocationTriple> locationsOf(SimplePath const& path) {
    std::list<SimplePathLocationTriple> list;
    path.getLocationTripleList(list);
    return {list.begin(), list.end()};
}

PBezierCurve curveOf(std::vector<PBezier> const& segments, int closed = 0) {
    PBezierCurve curve;
    for (PBezier const& b : segments) {
        curve.getSegments().add(b);
    }
    curve.setStrictIsClosed(closed);
    return curve;
}

} // namespace

TEST(PathToCurve, ShortPathsGiveOneDegenerateSegment) {
    PBezierCurve curve;
    EXPECT_EQ(0, createBezierCurve(SimplePath(), curve));
    EXPECT_EQ((std::vector<PBezier>{PBezier()}), segmentsOf(curve));

    SimplePath single = makePath(1, 1);
    PBezierCurve bent;
    EXPECT_EQ(0, createBezierCurve(single, Bend(), bent));
    DPoint const p(0, 0);
    EXPECT_EQ((std::vector<PBezier>{PBezier(p, p, p, p)}), segmentsOf(bent));
    EXPECT_EQ(0, bent.strictIsClosed());
}

TEST(PathToCurve, SegmentsInPathOrderThroughTheTransform) {
    Bend const bend;
    auto const m = [&](double x, double y) { return bend.transform(DPoint(x, y)); };

    PBezierCurve open;
    ASSERT_EQ(0, createBezierCurve(makePath(3, 0), bend, open));
    EXPECT_EQ((std::vector<PBezier>{PBezier(m(0, 0), m(2, 0), m(9, 1), m(10, 1)),
                                    PBezier(m(10, 1), m(12, 1), m(19, 2), m(20, 2))}),
              segmentsOf(open));
    EXPECT_EQ(0, open.strictIsClosed());

    // The closing segment comes last, and segments already in the curve stay behind the new ones.
    PBezierCurve closed = curveOf({PBezier({7, 7}, {7, 7}, {7, 7}, {7, 7})});
    ASSERT_EQ(0, createBezierCurve(makePath(3, 1), bend, closed));
    std::vector<PBezier> const segments = segmentsOf(closed);
    ASSERT_EQ(4u, segments.size());
    EXPECT_EQ(PBezier(m(20, 2), m(22, 2), m(-1, 0), m(0, 0)), segments[2]);
    EXPECT_EQ(PBezier({7, 7}, {7, 7}, {7, 7}, {7, 7}), segments[3]);
    EXPECT_EQ(1, closed.strictIsClosed());
}

TEST(CurveToPath, OpenCurveGetsRetractedOuterHandles) {
    PBezierCurve const curve =
        curveOf({PBezier({0, 0}, {1, 1}, {2, 1}, {3, 0}), PBezier({3, 0}, {4, -1}, {5, -1}, {6, 0})});
    SimplePath path;
    PHashablePointer<SimplePath> handle(&path);
    ASSERT_EQ(0, createSimplePath(curve, handle));
    auto const cusp = SimplePathVertexTriple::Cusp;
    EXPECT_EQ((std::vector<SimplePathLocationTriple>{{{0, 0}, {0, 0}, {1, 1}, cusp},
                                                     {{2, 1}, {3, 0}, {4, -1}, cusp},
                                                     {{5, -1}, {6, 0}, {6, 0}, cusp}}),
              locationsOf(path));
    EXPECT_EQ(0, path.isClosedSimplePath());

    SimplePath forced;
    PHashablePointer<SimplePath> forcedHandle(&forced);
    ASSERT_EQ(0, createSimplePath(curve, forcedHandle, 1));
    EXPECT_EQ((std::vector<SimplePathLocationTriple>{{{5, -1}, {0, 0}, {1, 1}, cusp},
                                                     {{2, 1}, {3, 0}, {4, -1}, cusp}}),
              locationsOf(forced));
    EXPECT_EQ(1, forced.isClosedSimplePath());

    PHashablePointer<SimplePath> missing;
    EXPECT_EQ(kSimplePathGenericFailure, createSimplePath(curve, missing));
    EXPECT_EQ(0, createSimplePath(PBezierCurve(), handle));
    EXPECT_EQ(3, path.numTriples());
}

TEST(CurveToPath, ClosedPathRoundTripsExceptModes) {
    SimplePath const source = makePath(4, 1);
    PBezierCurve curve;
    createBezierCurve(source, curve);
    SimplePath back;
    PHashablePointer<SimplePath> handle(&back);
    ASSERT_EQ(0, createSimplePath(curve, handle));
    EXPECT_EQ(1, back.isClosedSimplePath());
    std::vector<SimplePathLocationTriple> expected = locationsOf(source);
    for (SimplePathLocationTriple& t : expected) {
        t.mode = SimplePathVertexTriple::Cusp; // nothing is inferred on this route
    }
    EXPECT_EQ(expected, locationsOf(back));
}

TEST(CurvesToPaths, ClosingTestUsesSecondControlPointAndModesAreInferred) {
    PList<PBezierCurve> curves;
    // Its last P2 equals its start: closed, no final triple.
    curves.add(curveOf({PBezier({0, 0}, {1, 0}, {2, 2}, {3, 3}), PBezier({3, 3}, {4, 4}, {0, 0}, {9, 9})}));
    curves.add(PBezierCurve()); // skipped
    // Returns to its start point, but its last P2 does not: open, first and last anchors coincide.
    // Its own closed flag is ignored.
    curves.add(
        curveOf({PBezier({0, 0}, {0, 1}, {2, 2}, {3, 3}), PBezier({3, 3}, {4, 4}, {1, 0}, {0, 0})}, 1));
    // A single segment never closes on itself.
    curves.add(curveOf({PBezier({5, 5}, {6, 6}, {5, 5}, {5, 5})}));

    std::list<PHashablePointer<SimplePath>> paths{nullptr};
    ASSERT_EQ(0, createSimplePaths(curves, paths, 0));
    ASSERT_EQ(4u, paths.size());
    EXPECT_EQ(nullptr, paths.front());
    paths.pop_front();
    std::vector<SimplePath*> made(paths.begin(), paths.end());

    auto const smooth = SimplePathVertexTriple::Smooth;
    auto const cusp = SimplePathVertexTriple::Cusp;
    EXPECT_EQ(1, made[0]->isClosedSimplePath());
    EXPECT_EQ((std::vector<SimplePathLocationTriple>{{{0, 0}, {0, 0}, {1, 0}, smooth}, // retracted incoming
                                                     {{2, 2}, {3, 3}, {4, 4}, smooth}}),
              locationsOf(*made[0]));

    EXPECT_EQ(0, made[1]->isClosedSimplePath());
    std::vector<SimplePathLocationTriple> const open = locationsOf(*made[1]);
    ASSERT_EQ(3u, open.size());
    EXPECT_EQ((SimplePathLocationTriple{{2, 2}, {3, 3}, {4, 4}, smooth}), open[1]);
    EXPECT_EQ((SimplePathLocationTriple{{1, 0}, {0, 0}, {0, 0}, smooth}), open[2]);
    EXPECT_EQ(open[0].anchor, open[2].anchor);

    EXPECT_EQ(0, made[2]->isClosedSimplePath());
    EXPECT_EQ(2, made[2]->numTriples());

    // Forced closed: the first triple takes its incoming handle from the last segment.
    std::list<PHashablePointer<SimplePath>> forced;
    PList<PBezierCurve> one;
    one.add(curveOf({PBezier({0, 0}, {1, 1}, {2, 1}, {3, 0}), PBezier({3, 0}, {4, 0}, {-1, 1}, {0, 0})}));
    ASSERT_EQ(0, createSimplePaths(one, forced, 1));
    ASSERT_EQ(1u, forced.size());
    EXPECT_EQ(1, forced.front()->isClosedSimplePath());
    EXPECT_EQ((std::vector<SimplePathLocationTriple>{{{-1, 1}, {0, 0}, {1, 1}, cusp},
                                                     {{2, 1}, {3, 0}, {4, 0}, cusp}}),
              locationsOf(*forced.front()));

    for (SimplePath* p : made) {
        delete p;
    }
    delete forced.front().getPointer();
}
