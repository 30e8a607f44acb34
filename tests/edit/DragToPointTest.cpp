#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "EditingHelpers.h"

using namespace editing;

namespace {

// The distance from `target` to segment i: a scan at 1/4000 steps, then golden-section refinement of
// the best bracket, evaluated in long double by pointAt.
double distanceToSegment(SimplePath const& path, int i, DPoint const& target) {
    auto const d = [&](double t) { return distance(pointAt(path, i, t), target); };
    int const steps = 4000;
    int best = 0;
    for (int k = 1; k <= steps; ++k) {
        if (d(static_cast<double>(k) / steps) < d(static_cast<double>(best) / steps)) {
            best = k;
        }
    }
    double lo = std::max(0.0, (best - 1.0) / steps);
    double hi = std::min(1.0, (best + 1.0) / steps);
    double const g = (std::sqrt(5.0) - 1.0) / 2.0;
    for (int k = 0; k < 200 && hi - lo > 1e-16; ++k) {
        double const a = hi - g * (hi - lo);
        double const b = lo + g * (hi - lo);
        if (d(a) < d(b)) {
            hi = b;
        } else {
            lo = a;
        }
    }
    return d((lo + hi) / 2.0);
}

SimplePathPosition at(SimplePath const& path, int index, double t) {
    SimplePathPosition p;
    path.makePosition(index, t, p);
    return p;
}

} // namespace

// The dragged segment passes through the target; every vertex object is new and every mode inferred
// afresh; the segments away from the drag keep their shape (a closed path's closing segment included).
TEST(DragToPoint, PassesThroughTheTargetAndRebuildsThePath) {
    struct Row {
        int closed, index;
        double t;
        DVector pull;
        std::vector<int> untouched; // triples whose three locations stay
    } const rows[] = {
        {0, 1, 0.4, {0.7, 2.1}, {0, 3}},
        {1, 3, 0.5, {-1.5, 3.0}, {1, 2}}, // the closing segment
        {1, 0, 0.7, {0.0, -2.5}, {2, 3}},
    };
    for (Row const& row : rows) {
        SCOPED_TRACE(row.index * 10 + row.closed);
        std::vector<Loc> triples = locationsOf(wiggly(4, row.closed));
        for (Loc& t : triples) {
            t.mode = Mode::Symmetric;
        }
        SimplePath path = makePath(triples, row.closed);
        auto const old = verticesOf(path);
        DPoint const target = pointAt(path, row.index, row.t) + row.pull;
        ASSERT_EQ(SimplePath::Success, path.dragToPoint(at(path, row.index, row.t), target));

        EXPECT_EQ(row.closed, path.isClosedSimplePath());
        ASSERT_EQ(4, path.numTriples());
        EXPECT_LT(distanceToSegment(path, row.index, target), 1e-9);
        for (SimplePathVertex* v : verticesOf(path)) {
            EXPECT_EQ(0u, old.count(v));
        }
        auto const now = locationsOf(path);
        for (Loc const& t : now) {
            EXPECT_EQ(SimplePathVertexTriple::inferTripleMode(t.first, t.anchor, t.last), t.mode);
        }
        if (row.closed != 0 && row.index != 3) {
            EXPECT_EQ(triples[0].first, now[0].first); // the closing segment keeps its incoming handle
        }
        for (int k : row.untouched) {
            Loc const& was = triples[static_cast<std::size_t>(k)];
            EXPECT_EQ((Loc{was.first, was.anchor, was.last, now[static_cast<std::size_t>(k)].mode}),
                      now[static_cast<std::size_t>(k)]);
        }
    }
}

// Dragging a closed path at its first anchor moves that anchor, and the path comes back closed with the
// same number of triples.
TEST(DragToPoint, ClosedPathStaysClosedWhenItsFirstAnchorMoves) {
    SimplePath path = wiggly(4, 1);
    DPoint const target(-3, -7);
    ASSERT_EQ(SimplePath::Success, path.dragToPoint(at(path, 0, 0.0), target));
    EXPECT_EQ(1, path.isClosedSimplePath());
    ASSERT_EQ(4, path.numTriples());
    EXPECT_EQ(target, locationsOf(path)[0].anchor);
}

TEST(DragToPoint, BadArgumentsLeaveThePathAsItWas) {
    double const nan = std::numeric_limits<double>::quiet_NaN();
    struct Row {
        int closed, index;
        double t;
        DPoint target;
    } const rows[] = {{0, 1, 0.5, {nan, 0}},
                      {0, 3, 0.0, {1, 1}},
                      {0, -1, 0.5, {1, 1}},
                      {1, 5, 0.0, {1, 1}},
                      {0, 1, nan, {1, 1}}};
    for (Row const& row : rows) {
        SCOPED_TRACE(row.index * 10 + row.closed);
        SimplePath path = wiggly(4, row.closed);
        auto const vertices = verticesOf(path);
        EXPECT_EQ(SimplePath::Failure, path.dragToPoint(at(path, row.index, row.t), row.target));
        EXPECT_EQ(vertices, verticesOf(path));
        EXPECT_EQ(locationsOf(wiggly(4, row.closed)), locationsOf(path));
    }
}
