#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <vector>

#include "EditingHelpers.h"
#include "simplepath/interfaces/ArbTrans.h"
#include "simplepath/path/SimplePathDPointVertex.h"

using namespace editing;

namespace {

double const kNaN = std::numeric_limits<double>::quiet_NaN();

bool retracted(SimplePathVertexTriple const& t) {
    return t.first->getLocation() == t.anchor->getLocation() &&
           t.last->getLocation() == t.anchor->getLocation();
}

void expectNear(Loc const& expected, Loc const& got, double tolerance = 1e-12) {
    EXPECT_NEAR(distance(expected.first, got.first) + distance(expected.anchor, got.anchor) +
                    distance(expected.last, got.last),
                0.0, tolerance);
    EXPECT_EQ(expected.mode, got.mode);
}

using Setter = SimplePath::Result (SimplePath::*)(SimplePathVertex*&, SimplePathChangeInstruction&);
Setter const Smooth = &SimplePath::setSmoothMode, Symmetric = &SimplePath::setSymmetricMode,
             Cusp = &SimplePath::setCuspMode, Straight = &SimplePath::setStraightMode;

} // namespace

// createVertexTriple calls a segment straight when its handles are within 1e-7 of their anchors; the
// insertion itself only when they lie exactly there.
TEST(VertexInsertion, StraightSegmentTestsDifferInTolerance) {
    SimplePath path =
        makePath({{{0, 0}, {0, 0}, {1e-8, 0}, Mode::Cusp}, {{10 - 1e-8, 0}, {10, 0}, {10, 0}, Mode::Cusp}});
    SimplePathVertexTriple made;
    path.createVertexTriple(at(path, 0, 0.25), made);
    EXPECT_TRUE(retracted(made));
    delete made.first, delete made.anchor, delete made.last;
    SimplePathChangeInstruction change;
    ASSERT_EQ(SimplePath::Success, path.addVertexAtPosition(at(path, 0, 0.25), change));
    EXPECT_FALSE(retracted(path.getTripleList()[1]));
}

// Where the new triple lands, that the transform and exactly its three vertices are recorded, and that
// the drawn shape is kept: every held position names the same point afterwards. The Ex form inserts the
// caller's triple (made by createVertexTriple) and reshapes the neighbours as the plain form does.
TEST(VertexInsertion, PlacesTheNewTripleKeepingTheShape) {
    struct Row {
        int n, closed, index;
        double t;
        int newIndex;
        bool ex;
    } const rows[] = {{4, 0, 1, 0.3, 2, false}, // inner segment: before B
                      {4, 1, 3, 0.6, 4, false}, // closing segment: appended at the end
                      {4, 0, 3, 0.0, 3, false}, // last vertex of an open path: duplicate second to last
                      {1, 1, 0, 0.5, 1, false}, // one-vertex closed path: its segment runs back to itself
                      {4, 1, 3, 0.6, 4, true}}; // the Ex form
    for (Row const& row : rows) {
        SCOPED_TRACE(&row - rows);
        SimplePath path = wiggly(row.n, row.closed);
        SimplePathVertexTriple const lastBefore = path.getTripleList()[row.n - 1];
        auto const held = holdPositions({&path});
        SimplePathVertexTriple mine;
        if (row.ex) {
            path.createVertexTriple(at(path, row.index, row.t), mine);
        }
        SimplePathChangeInstruction change;
        ASSERT_EQ(SimplePath::Success,
                  row.ex ? path.addVertexAtPositionEx(at(path, row.index, row.t), mine, change)
                         : path.addVertexAtPosition(at(path, row.index, row.t), change));
        ASSERT_EQ(row.n + 1, path.numTriples());
        expectFollow(held, change);
        SimplePathVertexTriple const made = path.getTripleList()[row.newIndex];
        EXPECT_EQ((Vertices{made.first, made.anchor, made.last}), added(change));
        EXPECT_EQ(Mode::Smooth, made.mode);
        EXPECT_EQ(1u, change.numPositionTransforms());
        EXPECT_TRUE(!row.ex || mine == made);
        if (row.t == 0.0) { // copies of the last triple; the last triple itself stays last
            EXPECT_EQ(lastBefore, path.getTripleList()[row.n]);
            EXPECT_EQ(lastBefore.anchor->getLocation(), made.anchor->getLocation());
        }
    }
}

TEST(ModeSetting, FormulasConstantsAndNeighbours) {
    // Every triple starts Symmetric: each setter must write the mode it stands for.
    double const r = std::sqrt(20.0);
    Loc const bent{{0, 2}, {0, 0}, {4, 0}, Mode::Symmetric}; // handle lengths 2 and 4, at right angles
    Loc const shut{{10, 0}, {10, 0}, {10, 0}, Mode::Symmetric};
    Loc const before{{-2, 0}, {0, 0}, {2, 2}, Mode::Symmetric};
    Loc const after{{18, 4}, {20, 0}, {22, 0}, Mode::Symmetric};
    struct Row {
        std::vector<Loc> triples;
        int closed, index, which; // which: 0 incoming handle, 1 anchor, 2 outgoing handle
        Setter setter;
        Loc expected;
    } const rows[] = {
        // Extended handles: smooth keeps each length, symmetric gives both the mean.
        {{bent}, 0, 0, 1, Smooth, {{-8 / r, 4 / r}, {0, 0}, {16 / r, -8 / r}, Mode::Smooth}},
        {{bent}, 0, 0, 2, Symmetric, {{-12 / r, 6 / r}, {0, 0}, {12 / r, -6 / r}, Mode::Symmetric}},
        // Retracted handles: a quarter of the chord between the neighbours' handles, or anchor -+ (1, 0).
        {{before, shut, after}, 0, 1, 1, Smooth, {{6, -0.5}, {10, 0}, {14, 0.5}, Mode::Smooth}},
        {{shut}, 1, 0, 1, Symmetric, {{9, 0}, {10, 0}, {11, 0}, Mode::Symmetric}},
        // Cusp pulls retracted handles halfway to the neighbours' handles, mirroring at an open end.
        {{before, shut, after}, 0, 1, 0, Cusp, {{6, 1}, {10, 0}, {14, 2}, Mode::Cusp}},
        {{before, shut}, 0, 1, 1, Cusp, {{6, 1}, {10, 0}, {14, -1}, Mode::Cusp}},
        {{before, after}, 0, 1, 2, Straight, {{20, 0}, {20, 0}, {20, 0}, Mode::Cusp}},
    };
    for (Row const& row : rows) {
        SCOPED_TRACE(&row - rows);
        SimplePath path = makePath(row.triples, row.closed);
        SimplePathVertexTriple const t = path.getTripleList()[row.index];
        SimplePathVertex* pick[] = {t.first, t.anchor, t.last};
        SimplePathChangeInstruction change;
        ASSERT_EQ(SimplePath::Success, (path.*row.setter)(pick[row.which], change));
        expectNear(row.expected, locationsOf(path)[static_cast<std::size_t>(row.index)]);
    }
}

// Bending the plane, (x, y) -> (x + y^2, y), brings aligned handles out of line, yet the modes stay; an
// unknown mode becomes Cusp there, but not under a scale. (Dragging a segment is left to the tool's tests.)
TEST(PathTransforms, KeepAlignedModesAndOnlyABendDropsAnUnknownOne) {
    struct Bend : ArbTrans<DPoint> {
        DPoint transform(DPoint const& p) const override { return {p.x + p.y * p.y, p.y}; }
        DPoint reverseTransform(DPoint const& p) const override { return {p.x - p.y * p.y, p.y}; }
    };
    std::vector<Loc> const triples = {{{-1, -1}, {0, 0}, {1, 1}, Mode::Smooth},
                                      {{29, 1}, {30, 0}, {31, 2}, static_cast<Mode>(7)}};
    SimplePath bent = makePath(triples), scaled = makePath(triples);
    ASSERT_EQ(SimplePath::Success, bent.transform(Bend()));
    scaled.scale(2, 3);
    EXPECT_EQ((Loc{{0, -1}, {0, 0}, {2, 1}, Mode::Smooth}), locationsOf(bent)[0]);
    EXPECT_EQ(Mode::Cusp, locationsOf(bent)[1].mode);
    EXPECT_EQ((Loc{{58, 3}, {60, 0}, {62, 6}, static_cast<Mode>(7)}), locationsOf(scaled)[1]);
}

TEST(AdoptTriple, TakesTheVerticesAsTheyStandAndRefusesWhatWouldHaveTwoOwners) {
    SimplePath path = wiggly(3);
    SimplePathVertexTriple const made(new SimplePathDPointVertex(DPoint(1, 2)),
                                      new SimplePathDPointVertex(DPoint(3, 4)),
                                      new SimplePathDPointVertex(DPoint(5, 6)), Mode::Symmetric);
    SimplePathVertexTriple const held = path.getTripleList()[1];
    EXPECT_EQ(SimplePath::Failure, path.adoptTriple(made, 4));
    for (SimplePathVertex* anchor : {held.anchor, static_cast<SimplePathVertex*>(nullptr), made.first}) {
        EXPECT_EQ(SimplePath::Failure,
                  path.adoptTriple(SimplePathVertexTriple(made.first, anchor, made.last, Mode::Cusp), 0));
    }
    ASSERT_EQ(SimplePath::Success, path.adoptTriple(made, -5)); // the front
    EXPECT_EQ(made, path.getTripleList()[0]);
    EXPECT_EQ(SimplePath::Failure, path.adoptTriple(made, 2)); // already held
    EXPECT_EQ(4, path.numTriples());
}

// Vertices that name no suitable triple (a handle or a foreign anchor, three vertices of different
// triples), positions off the path, a target that is not a number, and joins of what cannot be joined:
// each call fails and leaves the paths and the change instruction as they were. A failed insertion is the
// exception: it records its position transform first of all, so that stays.
TEST(VertexEditing, BadArgumentsFailAndChangeNothing) {
    SimplePath path = wiggly(4), other = wiggly(4), first, closed = wiggly(3, 1);
    PHashablePointer<SimplePath> firstPath(&first), none, p(&path), o(&other), c(&closed);
    SimplePathVertexTriple const t0 = path.getTripleList()[0], t1 = path.getTripleList()[1];
    SimplePathVertex* foreign = other.getTripleList()[1].anchor;
    SimplePathVertex* const end = path.getTripleList()[3].anchor;
    SimplePathVertex* const otherEnd = other.getTripleList()[0].anchor;
    auto const vertices = verticesOf({&path, &other, &closed});
    SimplePathChangeInstruction change, inserting;
    DPoint const q(1, 2);
    std::vector<std::function<SimplePath::Result()>> calls = {
        [&] { return path.addVertexAtPosition(at(path, -1, 0.5), inserting); },
        [&] { return path.addVertexAtPosition(at(path, 3, 0.5), inserting); }, // off the last anchor
        [&] { return path.addVertexAtPosition(at(path, 0, kNaN), inserting); },
        [&] { return path.deleteVertex(t1.first, change); },
        [&] { return path.changeTriple(t1.first, q, t1.anchor, q, t0.last, q, Mode::Smooth, change); },
        [&] { return path.splitVertex(t1.last, change, firstPath, firstPath); },
        [&] { return path.splitVertex(nullptr, change, firstPath, firstPath); },
        [&] { return path.splitVertex(t1.anchor, change, firstPath, none); },
        [&] { return path.dragToPoint(at(path, 1, 0.5), DPoint(kNaN, 0)); },
        [&] { return path.dragToPoint(at(path, 3, 0.0), q); }, // the last anchor starts no segment
        [&] { return SimplePath::join(c, closed.getTripleList()[0].anchor, o, otherEnd, change, firstPath); },
        [&] { return SimplePath::join(p, end, p, t0.anchor, change, firstPath); }, // a path with itself
        [&] { return SimplePath::join(p, end, o, otherEnd, change, o); }};         // into an input
    for (Setter setter : {Smooth, Symmetric, Cusp, Straight}) {
        calls.push_back([&, setter] { return (path.*setter)(foreign, change); });
    }
    for (std::size_t i = 0; i < calls.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(SimplePath::Failure, calls[i]());
        EXPECT_TRUE(locationsOf(path) == locationsOf(wiggly(4)) && locationsOf(other) == locationsOf(path));
        EXPECT_EQ(locationsOf(wiggly(3, 1)), locationsOf(closed));
        EXPECT_EQ(vertices, verticesOf({&path, &other, &closed}));
        EXPECT_EQ(0, first.numTriples());
        Paths gone;
        change.simplePathsRemoved(gone);
        EXPECT_TRUE(gone.empty() && added(change).empty() && removed(change).empty());
        EXPECT_EQ(0u, change.numPositionTransforms());
    }
    EXPECT_EQ(3u, inserting.numPositionTransforms()); // one for each failed insertion
    EXPECT_TRUE(added(inserting).empty());
}
