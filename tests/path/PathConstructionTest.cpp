// Filling a path (points, triples, location lists, the circle) and converting between paths and
// Bezier curves.

#include <gtest/gtest.h>

#include <list>
#include <set>
#include <vector>

#include "simplepath/edit/SimplePathChangeInstruction.h"
#include "simplepath/path/SimplePath.h"
#include "simplepath/path/SimplePathConversion.h"
#include "support/PathHelpers.h"
#include "support/PathQueryHelpers.h"

namespace {

using Locations = std::vector<SimplePathLocationTriple>;
using Mode = SimplePathVertexTriple::VertexTripleMode;
constexpr Mode kSmooth = SimplePathVertexTriple::Smooth;
constexpr Mode kCusp = SimplePathVertexTriple::Cusp;
constexpr Mode kSymmetric = SimplePathVertexTriple::Symmetric;

// A location triple from its six coordinates: incoming handle, anchor, outgoing handle.
SimplePathLocationTriple lt(double fx, double fy, double ax, double ay, double lx, double ly,
                            Mode mode = kCusp) {
    return {{fx, fy}, {ax, ay}, {lx, ly}, mode};
}
SimplePathLocationTriple at(double x, double y, Mode mode = kCusp) {
    return lt(x, y, x, y, x, y, mode);
}

// Triple i: anchor (10 i, i), incoming handle 1 left of it, outgoing 2 right of it, Smooth.
SimplePath makePath(int n, int closed) {
    SimplePath path;
    for (int i = 0; i < n; ++i) {
        EXPECT_EQ(SimplePath::Success, appendTriple(path, {10.0 * i - 1, 1.0 * i}, {10.0 * i, 1.0 * i},
                                                    {10.0 * i + 2, 1.0 * i}, kSmooth));
    }
    path.setStrictClosed(closed);
    return path;
}

PBezierCurve curveOf(std::vector<PBezier> const& segments, int closed = 0) {
    PBezierCurve curve;
    for (PBezier const& b : segments) {
        curve.getSegments().add(b);
    }
    curve.setStrictIsClosed(closed);
    return curve;
}

PBezier cubic(double x0, double y0, double x1, double y1, double x2, double y2, double x3, double y3) {
    return PBezier({x0, y0}, {x1, y1}, {x2, y2}, {x3, y3});
}

} // namespace

TEST(Construction, AddingAndInsertingKeepModesAndFlagAsGiven) {
    SimplePath path;
    path.setStrictClosed(3);
    SimplePathVertex* anchor = nullptr;
    ASSERT_EQ(SimplePath::Success, path.addSingle(DPoint(1.5, 2), anchor));
    ASSERT_EQ(SimplePath::Success, path.addSingle(IPoint(3, -4), anchor));
    EXPECT_EQ(anchor, path.getTripleList()[1].anchor);
    EXPECT_NE(path.getTripleList()[1].first, anchor); // three vertices, not one shared
    EXPECT_EQ(SimplePath::Success, path.addPoints(std::list<DPoint>{{5, 5}, {6, 6}}));
    EXPECT_EQ(SimplePath::Success, path.addPoints(std::vector<DPoint>{{7, 7}}));
    SimplePathVertex *f = nullptr, *a = nullptr, *l = nullptr;
    ASSERT_EQ(SimplePath::Success, path.insertTriple({2, 0}, f, {2, 0}, a, {2, 0}, l, kCusp, 5)); // n appends
    ASSERT_EQ(SimplePath::Success, path.insertTriple({0, 1}, f, {2, 3}, a, {4, 5}, l, kSymmetric, -3));
    EXPECT_EQ(a, path.getTripleList()[0].anchor); // a negative index inserts at the front
    ASSERT_EQ(SimplePath::Success, path.insertTriple({9, 9}, f, {9, 9}, a, {9, 9}, l, kSmooth, 2));
    SimplePathVertex* const untouched = a;
    EXPECT_EQ(SimplePath::Failure, path.insertTriple({0, 0}, f, {0, 0}, a, {0, 0}, l, kCusp, 9));
    EXPECT_EQ(untouched, a);
    EXPECT_EQ(3, path.isClosedSimplePath());
    EXPECT_EQ((Locations{lt(0, 1, 2, 3, 4, 5, kSymmetric), at(1.5, 2), at(9, 9, kSmooth), at(3, -4), at(5, 5),
                         at(6, 6), at(7, 7), at(2, 0)}),
              locationsOf(path));
}

TEST(Construction, InitializeAndSetLocationTripleList) {
    SimplePath path;
    EXPECT_EQ(SimplePath::Success, path.addPoints(std::vector<DPoint>{{-5, -5}}));
    SimplePathChangeInstruction change;
    std::list<SimplePathLocationTriple> const input{lt(0, 1, 0, 2, 0, 3, kSmooth),
                                                    lt(1, 1, 1, 2, 1, 3, kSymmetric)};
    ASSERT_EQ(SimplePath::Success, path.initialize(input, 7, change));
    EXPECT_EQ(7, path.isClosedSimplePath());
    EXPECT_EQ((Locations{at(-5, -5), input.front(), input.back()}), locationsOf(path)); // kept, then appended
    std::set<SimplePathVertex*> added, expected;
    change.simplePathVerticesAdded(added);
    for (int i = 1; i < 3; ++i) {
        SimplePathVertexTriple const& t = path.getTripleList()[i];
        expected.insert({t.first, t.anchor, t.last});
    }
    EXPECT_EQ(expected, added);

    // Moving keeps the vertex objects and their modes, whatever modes the entries carry.
    SimplePathVertexTriple const before = path.getTripleList()[1];
    ASSERT_EQ(SimplePath::Success, path.setLocationTripleList({at(5, 0, kSymmetric), at(6, 0), at(7, 0)}));
    EXPECT_EQ(before, path.getTripleList()[1]);
    Locations const result{at(5, 0), at(6, 0, kSmooth), at(7, 0, kSymmetric)};
    EXPECT_EQ(result, locationsOf(path));
    EXPECT_EQ(SimplePath::Failure, path.setLocationTripleList({at(3, 3)}));
    EXPECT_EQ(result, locationsOf(path));
}

TEST(Construction, CircleUsesItsOwnHandleLength) {
    DPoint center(100, -50);
    SimplePath* circle = SimplePath::createCircleSP(center, 10.0);
    ASSERT_NE(nullptr, circle);
    EXPECT_EQ(1, circle->isClosedSimplePath());
    double const h = 0.27 * 10.0 * 2.0; // 5.4, not the usual 5.52
    EXPECT_EQ((Locations{lt(100 - h, -40, 100, -40, 100 + h, -40, kSmooth),
                         lt(110, -50 + h, 110, -50, 110, -50 - h, kSmooth),
                         lt(100 + h, -60, 100, -60, 100 - h, -60, kSmooth),
                         lt(90, -50 - h, 90, -50, 90, -50 + h, kSmooth)}),
              locationsOf(*circle));
    delete circle;
}

TEST(PathToCurve, SegmentsInPathOrderThroughTheTransform) {
    support::Bend const bend;
    auto const m = [&](double x, double y) { return bend.transform(DPoint(x, y)); };
    auto const segmentsOf = [](PBezierCurve const& curve) {
        return std::vector<PBezier>(curve.getSegments().begin(), curve.getSegments().end());
    };
    PBezierCurve empty, single, open;
    EXPECT_EQ(0, createBezierCurve(SimplePath(), empty)); // short paths: one degenerate segment
    EXPECT_EQ((std::vector<PBezier>{PBezier()}), segmentsOf(empty));
    EXPECT_EQ(0, createBezierCurve(makePath(1, 1), bend, single));
    EXPECT_EQ((std::vector<PBezier>{PBezier(m(0, 0), m(0, 0), m(0, 0), m(0, 0))}), segmentsOf(single));
    EXPECT_EQ(0, single.strictIsClosed());
    ASSERT_EQ(0, createBezierCurve(makePath(3, 0), bend, open));
    EXPECT_EQ((std::vector<PBezier>{PBezier(m(0, 0), m(2, 0), m(9, 1), m(10, 1)),
                                    PBezier(m(10, 1), m(12, 1), m(19, 2), m(20, 2))}),
              segmentsOf(open));
    EXPECT_EQ(0, open.strictIsClosed());
    // The closing segment comes last, and segments already in the curve stay behind the new ones.
    PBezierCurve closed = curveOf({cubic(7, 7, 7, 7, 7, 7, 7, 7)});
    ASSERT_EQ(0, createBezierCurve(makePath(3, 1), bend, closed));
    std::vector<PBezier> const segments = segmentsOf(closed);
    ASSERT_EQ(4u, segments.size());
    EXPECT_EQ(PBezier(m(20, 2), m(22, 2), m(-1, 0), m(0, 0)), segments[2]);
    EXPECT_EQ(cubic(7, 7, 7, 7, 7, 7, 7, 7), segments[3]);
    EXPECT_EQ(1, closed.strictIsClosed());
}

TEST(CurveToPath, OpenCurvesGetRetractedOuterHandlesAndEveryModeIsCusp) {
    std::vector<PBezier> const segments{cubic(0, 0, 1, 1, 2, 1, 3, 0), cubic(3, 0, 4, -1, 5, -1, 6, 0)};
    SimplePath open, forced, closed;
    PHashablePointer<SimplePath> openHandle(&open), forcedHandle(&forced), closedHandle(&closed), missing;
    ASSERT_EQ(0, createSimplePath(curveOf(segments), openHandle));
    EXPECT_EQ((Locations{lt(0, 0, 0, 0, 1, 1), lt(2, 1, 3, 0, 4, -1), lt(5, -1, 6, 0, 6, 0)}),
              locationsOf(open));
    EXPECT_EQ(0, open.isClosedSimplePath());
    ASSERT_EQ(0, createSimplePath(curveOf(segments), forcedHandle, 1));
    ASSERT_EQ(0, createSimplePath(curveOf(segments, 1), closedHandle));
    for (SimplePath const* path : {&forced, &closed}) {
        EXPECT_EQ((Locations{lt(5, -1, 0, 0, 1, 1), lt(2, 1, 3, 0, 4, -1)}), locationsOf(*path));
        EXPECT_EQ(1, path->isClosedSimplePath());
    }
    EXPECT_EQ(kSimplePathGenericFailure, createSimplePath(curveOf(segments), missing));
    EXPECT_EQ(0, createSimplePath(PBezierCurve(), openHandle)); // no segment: nothing to read, nothing added
    EXPECT_EQ(3, open.numTriples());
}

TEST(CurvesToPaths, ClosingTestUsesSecondControlPointAndModesAreInferred) {
    PList<PBezierCurve> curves;
    // Its last P2 equals its start: closed, no final triple.
    curves.add(curveOf({cubic(0, 0, 1, 0, 2, 2, 3, 3), cubic(3, 3, 4, 4, 0, 0, 9, 9)}));
    curves.add(PBezierCurve()); // skipped
    // Its last P3 returns to its start but its P2 does not: open. Its own closed flag is ignored.
    curves.add(curveOf({cubic(0, 0, 0, 1, 2, 2, 3, 3), cubic(3, 3, 4, 4, 1, 0, 0, 0)}, 1));
    curves.add(curveOf({cubic(5, 5, 6, 6, 5, 5, 5, 5)})); // one segment never closes itself
    std::list<PHashablePointer<SimplePath>> paths{nullptr};
    ASSERT_EQ(0, createSimplePaths(curves, paths, 0));
    ASSERT_EQ(4u, paths.size());
    paths.pop_front();
    std::vector<SimplePath*> const made(paths.begin(), paths.end());
    EXPECT_EQ((Locations{lt(0, 0, 0, 0, 1, 0, kSmooth), lt(2, 2, 3, 3, 4, 4, kSmooth)}),
              locationsOf(*made[0]));
    EXPECT_EQ((Locations{lt(0, 0, 0, 0, 0, 1, kSmooth), lt(2, 2, 3, 3, 4, 4, kSmooth),
                         lt(1, 0, 0, 0, 0, 0, kSmooth)}),
              locationsOf(*made[1]));
    EXPECT_EQ(2, made[2]->numTriples());
    EXPECT_EQ(100, made[0]->isClosedSimplePath() * 100 + made[1]->isClosedSimplePath() * 10 +
                       made[2]->isClosedSimplePath());
    // Forced closed: the first triple takes its incoming handle from the last segment; Cusps inferred.
    PList<PBezierCurve> one;
    one.add(curveOf({cubic(0, 0, 1, 1, 2, 1, 3, 0), cubic(3, 0, 4, 0, -1, 1, 0, 0)}));
    ASSERT_EQ(0, createSimplePaths(one, paths, 1));
    EXPECT_EQ(1, paths.back()->isClosedSimplePath());
    EXPECT_EQ((Locations{lt(-1, 1, 0, 0, 1, 1), lt(2, 1, 3, 0, 4, 0)}), locationsOf(*paths.back()));
    for (PHashablePointer<SimplePath> const& p : paths) {
        delete p.getPointer();
    }
}
