#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "EditingHelpers.h"
#include "simplepath/interfaces/ArbTrans.h"

using namespace editing;

namespace {

double const kNaN = std::numeric_limits<double>::quiet_NaN();

SimplePathPosition at(SimplePath const& path, int index, double t) {
    SimplePathPosition p;
    path.makePosition(index, t, p);
    return p;
}

bool retracted(SimplePathVertexTriple const& t) {
    return t.first->getLocation() == t.anchor->getLocation() &&
           t.last->getLocation() == t.anchor->getLocation();
}

} // namespace

// createVertexTriple calls a segment straight when its handles are within 1e-7 of their anchors; the
// insertion itself only when they lie exactly there.
TEST(VertexInsertion, StraightSegmentTestsDifferInTolerance) {
    struct Row {
        double handleOffset;
        bool createdStraight;
        bool insertedStraight;
    } const rows[] = {{0.0, true, true}, {1e-8, true, false}, {1e-3, false, false}};
    for (Row const& row : rows) {
        SCOPED_TRACE(row.handleOffset);
        SimplePath path = makePath({{{0, 0}, {0, 0}, {row.handleOffset, 0}, Mode::Cusp},
                                    {{10 - row.handleOffset, 0}, {10, 0}, {10, 0}, Mode::Cusp}});
        SimplePathVertexTriple made;
        path.createVertexTriple(at(path, 0, 0.25), made);
        ASSERT_NE(nullptr, made.anchor);
        EXPECT_EQ(row.createdStraight, retracted(made));
        EXPECT_EQ(Mode::Smooth, made.mode);
        delete made.first;
        delete made.anchor;
        delete made.last;

        SimplePathChangeInstruction change;
        ASSERT_EQ(SimplePath::Success, path.addVertexAtPosition(at(path, 0, 0.25), change));
        auto const& list = path.getTripleList();
        EXPECT_EQ(row.insertedStraight, retracted(list[1]));
        if (row.insertedStraight) {
            EXPECT_EQ(DPoint(1.5625, 0), list[1].anchor->getLocation()); // B(0.25) of the cubic
            EXPECT_TRUE(retracted(list[0]) && retracted(list[2]));
        }
    }
}

// Where the new triple lands, and that the transform and exactly its three vertices are recorded.
TEST(VertexInsertion, PlacesTheNewTripleAndRecordsIt) {
    struct Row {
        int n, closed, index;
        double t;
        int newIndex;
    } const rows[] = {
        {4, 0, 1, 0.5, 2}, // inner segment: before B
        {4, 1, 3, 0.5, 4}, // closing segment: appended at the end
        {4, 0, 3, 0.0, 3}, // last vertex of an open path: duplicate second to last
        {1, 1, 0, 0.5, 1}, // one-vertex closed path: its segment runs back to itself
    };
    for (Row const& row : rows) {
        SCOPED_TRACE(row.index + 10 * row.closed);
        SimplePath path = wiggly(row.n, row.closed);
        SimplePathVertexTriple const lastBefore = path.getTripleList()[row.n - 1];
        SimplePathChangeInstruction change;
        ASSERT_EQ(SimplePath::Success, path.addVertexAtPosition(at(path, row.index, row.t), change));
        ASSERT_EQ(row.n + 1, path.numTriples());
        SimplePathVertexTriple const made = path.getTripleList()[row.newIndex];
        EXPECT_EQ((std::set<SimplePathVertex*>{made.first, made.anchor, made.last}), added(change));
        EXPECT_EQ(Mode::Smooth, made.mode);
        EXPECT_EQ(1u, change.numPositionTransforms());
        if (row.t == 0.0) {
            // The copies sit where the last vertex sits; the last triple itself stays last.
            EXPECT_EQ(lastBefore, path.getTripleList()[row.n]);
            EXPECT_EQ(lastBefore.anchor->getLocation(), made.anchor->getLocation());
            EXPECT_EQ(lastBefore.first->getLocation(), made.first->getLocation());
            EXPECT_EQ(lastBefore.last->getLocation(), made.last->getLocation());
        }
    }
}

// The add-anchor transform is recorded before anything is checked, so it stays after a failure; the
// path itself is untouched.
TEST(VertexInsertion, BadPositionsFailWithOnlyTheTransformRecorded) {
    struct Row {
        int closed, index;
        double t;
    } const rows[] = {{0, -1, 0.5}, {0, 3, 0.5},  {0, 3, kNaN}, {0, 4, 0.0}, {1, 4, 0.0},
                      {0, 0, kNaN}, {1, 3, kNaN}, {0, 1, 1.5},  {0, 1, -0.5}};
    for (Row const& row : rows) {
        SCOPED_TRACE(row.index * 10 + row.closed);
        SimplePath path = wiggly(4, row.closed);
        auto const before = locationsOf(path);
        auto const vertices = verticesOf(path);
        SimplePathChangeInstruction change;
        EXPECT_EQ(SimplePath::Failure, path.addVertexAtPosition(at(path, row.index, row.t), change));
        EXPECT_EQ(before, locationsOf(path));
        EXPECT_EQ(vertices, verticesOf(path));
        EXPECT_EQ(1u, change.numPositionTransforms());
        EXPECT_TRUE(added(change).empty());
    }
}

// The Ex form inserts the caller's vertex objects and reshapes the neighbours as the plain form does.
TEST(VertexInsertion, ExInsertsTheCallersTriple) {
    SimplePath plain = wiggly(3);
    SimplePath ex = wiggly(3);
    SimplePathChangeInstruction plainChange;
    SimplePathChangeInstruction exChange;
    SimplePathVertexTriple made;
    ex.createVertexTriple(at(ex, 1, 0.3), made);
    ASSERT_EQ(SimplePath::Success, plain.addVertexAtPosition(at(plain, 1, 0.3), plainChange));
    ASSERT_EQ(SimplePath::Success, ex.addVertexAtPositionEx(at(ex, 1, 0.3), made, exChange));
    EXPECT_EQ(made, ex.getTripleList()[2]);
    EXPECT_EQ(locationsOf(plain), locationsOf(ex));
    EXPECT_EQ((std::set<SimplePathVertex*>{made.first, made.anchor, made.last}), added(exChange));
}

TEST(VertexDeletion, RemovesOnlyAnAnchorsTriple) {
    SimplePath path = wiggly(4);
    SimplePath other = wiggly(4);
    auto const& list = path.getTripleList();
    SimplePathChangeInstruction change;
    // A handle, or another path's anchor, names no triple of this path to delete.
    for (SimplePathVertex* wrong : {list[1].first, list[1].last, other.getTripleList()[1].anchor}) {
        EXPECT_EQ(SimplePath::Failure, path.deleteVertex(wrong, change));
    }
    EXPECT_EQ(0u, change.numPositionTransforms());

    auto const before = locationsOf(path);
    SimplePathVertexTriple const doomed = list[1];
    ASSERT_EQ(SimplePath::Success, path.deleteVertex(doomed.anchor, change));
    EXPECT_EQ((std::set<SimplePathVertex*>{doomed.first, doomed.anchor, doomed.last}), removed(change));
    EXPECT_EQ(1u, change.numPositionTransforms());
    auto const after = locationsOf(path);
    ASSERT_EQ(3u, after.size());
    EXPECT_EQ(before[0], after[0]); // neighbours keep their handles
    EXPECT_EQ(before[2], after[1]);
    freeRemoved(change);

    SimplePath single = wiggly(1);
    SimplePathChangeInstruction last;
    ASSERT_EQ(SimplePath::Success, single.deleteVertex(single.getTripleList()[0].anchor, last));
    EXPECT_EQ(0, single.numTriples());
    freeRemoved(last);
}

namespace {

enum class Setter { Smooth, Symmetric, Cusp, Straight };

SimplePath::Result apply(Setter setter, SimplePath& path, SimplePathVertex* vertex) {
    SimplePathChangeInstruction change;
    switch (setter) {
    case Setter::Smooth:
        return path.setSmoothMode(vertex, change);
    case Setter::Symmetric:
        return path.setSymmetricMode(vertex, change);
    case Setter::Cusp:
        return path.setCuspMode(vertex, change);
    case Setter::Straight:
        return path.setStraightMode(vertex, change);
    }
    return SimplePath::Failure;
}

} // namespace

TEST(ModeSetting, FormulasConstantsAndNeighbours) {
    double const r = std::sqrt(20.0);
    Loc const bent{{0, 2}, {0, 0}, {4, 0}, Mode::Cusp};    // handle lengths 2 and 4, at right angles
    Loc const inLine{{-2, 0}, {0, 0}, {4, 0}, Mode::Cusp}; // lengths 2 and 4, opposite
    Loc const closedUp{{10, 0}, {10, 0}, {10, 0}, Mode::Cusp};
    Loc const before{{-2, 0}, {0, 0}, {2, 2}, Mode::Cusp};
    Loc const after{{18, 4}, {20, 0}, {22, 0}, Mode::Cusp};
    struct Row {
        char const* name;
        std::vector<Loc> triples;
        int closed, index, which; // which: 0 incoming handle, 1 anchor, 2 outgoing handle
        Setter setter;
        Loc expected;
    } const rows[] = {
        {"smooth keeps lengths",
         {bent},
         0,
         0,
         1,
         Setter::Smooth,
         {{-8 / r, 4 / r}, {0, 0}, {16 / r, -8 / r}, Mode::Smooth}},
        {"symmetric takes the mean",
         {bent},
         0,
         0,
         2,
         Setter::Symmetric,
         {{-12 / r, 6 / r}, {0, 0}, {12 / r, -6 / r}, Mode::Symmetric}},
        {"symmetric 2 and 4 give 3",
         {inLine},
         0,
         0,
         0,
         Setter::Symmetric,
         {{-3, 0}, {0, 0}, {3, 0}, Mode::Symmetric}},
        {"smooth from the chord",
         {before, closedUp, after},
         0,
         1,
         1,
         Setter::Smooth,
         {{6, -0.5}, {10, 0}, {14, 0.5}, Mode::Smooth}},
        {"smooth from the one neighbour",
         {closedUp, after},
         0,
         0,
         2,
         Setter::Smooth,
         {{8, -1}, {10, 0}, {12, 1}, Mode::Smooth}},
        {"smooth closed wraps to the last",
         {closedUp, after, before},
         1,
         0,
         1,
         Setter::Smooth,
         {{6, -0.5}, {10, 0}, {14, 0.5}, Mode::Smooth}},
        {"symmetric alone",
         {closedUp},
         1,
         0,
         1,
         Setter::Symmetric,
         {{9, 0}, {10, 0}, {11, 0}, Mode::Symmetric}},
        {"cusp extended only the mode", {bent}, 0, 0, 1, Setter::Cusp, {{0, 2}, {0, 0}, {4, 0}, Mode::Cusp}},
        {"cusp halfway to both",
         {before, closedUp, after},
         0,
         1,
         0,
         Setter::Cusp,
         {{6, 1}, {10, 0}, {14, 2}, Mode::Cusp}},
        {"cusp open start mirrors",
         {closedUp, after},
         0,
         0,
         1,
         Setter::Cusp,
         {{6, -2}, {10, 0}, {14, 2}, Mode::Cusp}},
        {"cusp open end mirrors",
         {before, closedUp},
         0,
         1,
         1,
         Setter::Cusp,
         {{6, 1}, {10, 0}, {14, -1}, Mode::Cusp}},
        {"cusp alone", {closedUp}, 0, 0, 1, Setter::Cusp, {{9, 0}, {10, 0}, {11, 0}, Mode::Cusp}},
        {"straight", {before, after}, 0, 1, 2, Setter::Straight, {{20, 0}, {20, 0}, {20, 0}, Mode::Cusp}},
    };
    for (Row const& row : rows) {
        SCOPED_TRACE(row.name);
        std::vector<Loc> triples = row.triples;
        for (Loc& t : triples) {
            t.mode = Mode::Symmetric; // every setter writes the mode it stands for
        }
        SimplePath path = makePath(triples, row.closed);
        SimplePathVertexTriple const t = path.getTripleList()[row.index];
        SimplePathVertex* const pick[] = {t.first, t.anchor, t.last};
        ASSERT_EQ(SimplePath::Success, apply(row.setter, path, pick[row.which]));
        Loc const got = locationsOf(path)[static_cast<std::size_t>(row.index)];
        expectNear(row.expected.first, got.first);
        expectNear(row.expected.anchor, got.anchor);
        expectNear(row.expected.last, got.last);
        EXPECT_EQ(row.expected.mode, got.mode);
    }
    SimplePath path = wiggly(2);
    SimplePath other = wiggly(2);
    for (Setter setter : {Setter::Smooth, Setter::Symmetric, Setter::Cusp, Setter::Straight}) {
        EXPECT_EQ(SimplePath::Failure, apply(setter, path, other.getTripleList()[0].anchor));
    }
    EXPECT_EQ(locationsOf(wiggly(2)), locationsOf(path));
}

TEST(ChangeTriple, NeedsAllThreeVerticesOfOneTriple) {
    SimplePath path = wiggly(3);
    auto const t0 = path.getTripleList()[0];
    auto const t1 = path.getTripleList()[1];
    SimplePathChangeInstruction change;
    DPoint const p(1, 2);
    EXPECT_EQ(SimplePath::Failure,
              path.changeTriple(t1.first, p, t1.anchor, p, t0.last, p, Mode::Smooth, change));
    EXPECT_EQ(SimplePath::Failure,
              path.changeTriple(t1.last, p, t1.anchor, p, t1.first, p, Mode::Smooth, change));
    EXPECT_EQ(locationsOf(wiggly(3)), locationsOf(path));
    ASSERT_EQ(SimplePath::Success, path.changeTriple(t1.first, p, t1.anchor, p + DVector(1, 0), t1.last, p,
                                                     Mode::Smooth, change, 1));
    EXPECT_EQ((Loc{p, p + DVector(1, 0), p, Mode::Smooth}), locationsOf(path)[1]);
}

namespace {

// Bends the plane: (x, y) -> (x + y^2, y), so aligned handles come out of line.
class Bend : public ArbTrans<DPoint> {
  public:
    DPoint transform(DPoint const& p) const override { return {p.x + p.y * p.y, p.y}; }
    DPoint reverseTransform(DPoint const& p) const override { return {p.x - p.y * p.y, p.y}; }
};

} // namespace

TEST(PathTransforms, MapEveryPointAndKeepAlignedModes) {
    std::vector<Loc> const triples = {{{-1, -1}, {0, 0}, {1, 1}, Mode::Smooth},
                                      {{9, -1}, {10, 0}, {11, 1}, Mode::Symmetric},
                                      {{19, 1}, {20, 0}, {21, 2}, Mode::Cusp},
                                      {{29, 1}, {30, 0}, {31, 2}, static_cast<Mode>(7)}};
    SimplePath bent = makePath(triples);
    ASSERT_EQ(SimplePath::Success, bent.transform(Bend()));
    auto const got = locationsOf(bent);
    Mode const modes[] = {Mode::Smooth, Mode::Symmetric, Mode::Cusp, Mode::Cusp};
    for (std::size_t i = 0; i < triples.size(); ++i) {
        EXPECT_EQ(Bend().transform(triples[i].first), got[i].first);
        EXPECT_EQ(Bend().transform(triples[i].last), got[i].last);
        EXPECT_EQ(modes[i], got[i].mode);
    }

    // A quarter turn about (1, 1), a translation and a scale, all keeping every mode as it is.
    SimplePath moved = makePath(triples);
    P2DTrans turn;
    turn.rotate(std::acos(-1.0) / 2);
    ASSERT_EQ(SimplePath::Success, moved.transform(turn, DPoint(1, 1)));
    expectNear(DPoint(2, 0), locationsOf(moved)[0].anchor); // (0, 0) turned about (1, 1)
    expectNear(DPoint(2, 10), locationsOf(moved)[1].anchor);
    ASSERT_EQ(SimplePath::Success, moved.translate(DVector(-2, 0)));
    moved.scale(2, 3);
    expectNear(DPoint(0, 30), locationsOf(moved)[1].anchor);
    expectNear(DPoint(-4, 63), locationsOf(moved)[2].last);
    EXPECT_EQ(static_cast<Mode>(7), locationsOf(moved)[3].mode);
}
