#include <gtest/gtest.h>

#include <functional>
#include <list>
#include <vector>

#include "EditingHelpers.h"
#include "simplepath/path/SimplePathDPointVertex.h"

using namespace editing;

namespace {

using Paths = std::list<PHashablePointer<SimplePath>>;

std::set<SimplePathVertex*> verticesOf(std::vector<SimplePath const*> const& paths,
                                       std::size_t* count = nullptr) {
    std::set<SimplePathVertex*> out;
    std::size_t total = 0;
    for (SimplePath const* path : paths) {
        auto const some = editing::verticesOf(*path);
        out.insert(some.begin(), some.end());
        total += 3 * static_cast<std::size_t>(path->numTriples());
    }
    if (count != nullptr) {
        *count = total;
    }
    return out;
}

// Every vertex sits in exactly one triple of one path afterwards, or was reported removed; the only
// vertices that appeared are those reported added.
void expectExactOwnership(std::set<SimplePathVertex*> before, std::vector<SimplePath const*> const& after,
                          SimplePathChangeInstruction const& change) {
    std::size_t count = 0;
    auto held = verticesOf(after, &count);
    EXPECT_EQ(count, held.size()) << "a vertex sits in two triples";
    for (SimplePathVertex* v : removed(change)) {
        EXPECT_EQ(0u, held.count(v)) << "a removed vertex is still held";
        held.insert(v);
    }
    auto const fresh = added(change);
    before.insert(fresh.begin(), fresh.end());
    EXPECT_EQ(before, held);
}

Paths translated(SimplePathChangeInstruction const& change, SimplePath* path) {
    Paths out;
    change.translate(path, out);
    return out;
}

} // namespace

TEST(SplitVertex, OpenPathFallsApartAtTheAnchor) {
    for (int k : {0, 2, 3}) {
        SCOPED_TRACE(k);
        SimplePath path = wiggly(4);
        SimplePath first;
        SimplePath second;
        PHashablePointer<SimplePath> firstPath(&first);
        PHashablePointer<SimplePath> secondPath(&second);
        SimplePathVertexTriple const split = path.getTripleList()[k];
        auto const before = verticesOf(path);
        SimplePathChangeInstruction change;
        ASSERT_EQ(SimplePath::Success, path.splitVertex(split.anchor, change, firstPath, secondPath));

        EXPECT_EQ(0, path.numTriples());
        ASSERT_EQ(k + 1, first.numTriples());
        ASSERT_EQ(4 - k, second.numTriples());
        SimplePathVertexTriple const end = first.getTripleList()[k];
        SimplePathVertexTriple const start = second.getTripleList()[0];
        EXPECT_EQ(split.first, end.first);
        EXPECT_EQ(split.last, start.last);
        EXPECT_EQ(split.first->getLocation(), end.last->getLocation()); // the idle handle's deliberate place
        EXPECT_EQ(split.last->getLocation(), start.first->getLocation());
        EXPECT_EQ(split.anchor->getLocation(), end.anchor->getLocation());
        EXPECT_EQ(split.anchor->getLocation(), start.anchor->getLocation());
        EXPECT_EQ((std::set<SimplePathVertex*>{split.anchor}), removed(change));
        EXPECT_EQ((std::set<SimplePathVertex*>{end.anchor, end.last, start.first, start.anchor}),
                  added(change));
        expectExactOwnership(before, {&path, &first, &second}, change);

        Paths paths;
        change.simplePathsRemoved(paths);
        EXPECT_EQ(Paths{&path}, paths);
        paths.clear();
        change.simplePathsAdded(paths);
        EXPECT_EQ((Paths{&first, &second}), paths);
        EXPECT_EQ((Paths{&first, &second}), translated(change, &path));
        EXPECT_EQ(1u, change.numPositionTransforms());
        freeRemoved(change);
    }
}

TEST(SplitVertex, ClosedPathOpensAtTheAnchor) {
    SimplePath path = wiggly(4, 1);
    auto const& list = path.getTripleList();
    std::vector<SimplePathVertexTriple> const order(list.begin(), list.end());
    SimplePath unused;
    PHashablePointer<SimplePath> piece(&unused);
    SimplePathChangeInstruction change;
    ASSERT_EQ(SimplePath::Success, path.splitVertex(order[2].anchor, change, piece, piece));

    EXPECT_EQ(0, path.isClosedSimplePath());
    ASSERT_EQ(5, path.numTriples());
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(order[static_cast<std::size_t>((i + 2) % 4)], list[i]);
    }
    EXPECT_EQ(locationsOf(path)[0], locationsOf(path)[4]);
    EXPECT_TRUE(verticesOf(path).count(list[4].anchor) == 1 && list[4].anchor != order[2].anchor);
    EXPECT_EQ(0, unused.numTriples());
    // Only the rotation is recorded: not even the duplicate's new vertices.
    EXPECT_EQ(1u, change.numPositionTransforms());
    EXPECT_TRUE(added(change).empty() && removed(change).empty());
    EXPECT_EQ(Paths{&path}, translated(change, &path));
}

TEST(SplitVertex, UsesTheCallersVertices) {
    auto const make = [] { return new SimplePathDPointVertex(DPoint(7, 7)); };
    for (int closed : {0, 1}) {
        SimplePath path = wiggly(3, closed);
        SimplePath first;
        SimplePath second;
        PHashablePointer<SimplePath> firstPath(&first);
        PHashablePointer<SimplePath> secondPath(&second);
        SimplePathVertex* const anchorA = make();
        SimplePathVertex* const handleA = make();
        SimplePathVertex* const anchorB = make();
        SimplePathVertex* const handleB = make();
        SimplePathVertexTriple const split = path.getTripleList()[1];
        SimplePathChangeInstruction change;
        ASSERT_EQ(SimplePath::Success, path.splitVertex(split.anchor, change, firstPath, secondPath, anchorA,
                                                        handleA, anchorB, handleB));
        if (closed == 0) {
            EXPECT_EQ(SimplePathVertexTriple(split.first, anchorA, handleA, split.mode),
                      first.getTripleList()[1]);
            EXPECT_EQ(SimplePathVertexTriple(handleB, anchorB, split.last, split.mode),
                      second.getTripleList()[0]);
            freeRemoved(change);
        } else {
            // The closing duplicate is built from anchorA and both handles; anchorB stays the caller's.
            EXPECT_EQ(SimplePathVertexTriple(handleA, anchorA, handleB, split.mode), path.getTripleList()[3]);
            delete anchorB;
        }
    }
}

TEST(SplitVertex, RefusesWhatIsNotAnAnchorOfThePath) {
    SimplePath path = wiggly(3);
    SimplePath other = wiggly(3);
    SimplePath first;
    PHashablePointer<SimplePath> firstPath(&first);
    PHashablePointer<SimplePath> none;
    SimplePathVertexTriple const t = path.getTripleList()[1];
    struct Row {
        SimplePathVertex* vertex;
        PHashablePointer<SimplePath>* second;
    } const rows[] = {{t.first, &firstPath},
                      {t.last, &firstPath},
                      {other.getTripleList()[1].anchor, &firstPath},
                      {nullptr, &firstPath},
                      {t.anchor, &none}};
    for (Row const& row : rows) {
        SimplePathChangeInstruction change;
        PHashablePointer<SimplePath> second = *row.second;
        EXPECT_EQ(SimplePath::Failure, path.splitVertex(row.vertex, change, firstPath, second));
        EXPECT_EQ(locationsOf(wiggly(3)), locationsOf(path));
        EXPECT_EQ(0, first.numTriples());
        EXPECT_EQ(0u, change.numPositionTransforms());
        EXPECT_TRUE(added(change).empty() && removed(change).empty());
    }
}

namespace {

struct Ends {
    bool oneAtEnd;   // vertex1 is path1's last anchor (else its first)
    bool twoAtStart; // vertex2 is path2's first anchor (else its last)
};

SimplePathVertex* endAnchor(SimplePath const& path, bool last) {
    return path.getTripleList()[last ? path.numTriples() - 1 : 0].anchor;
}

// Two open paths, the second shifted by `shift` so that its end anchors meet path1's where asked.
SimplePath secondPath(int n, DVector shift) {
    SimplePath path = wiggly(n);
    path.translate(shift);
    return path;
}

} // namespace

TEST(Join, FourEndCombinationsWithAStraightConnection) {
    Ends const rows[] = {{true, true}, {true, false}, {false, true}, {false, false}};
    for (Ends const& row : rows) {
        SCOPED_TRACE(row.oneAtEnd * 2 + row.twoAtStart);
        SimplePath a = wiggly(3);
        SimplePath b = secondPath(2, DVector(100, 50));
        SimplePath joined;
        auto const& la = a.getTripleList();
        auto const& lb = b.getTripleList();
        std::vector<SimplePathVertex*> expected;
        for (int i = 0; i < 3; ++i) {
            expected.push_back(la[row.oneAtEnd ? i : 2 - i].anchor);
        }
        for (int i = 0; i < 2; ++i) {
            expected.push_back(lb[row.twoAtStart ? i : 1 - i].anchor);
        }
        auto const before = verticesOf({&a, &b});
        PHashablePointer<SimplePath> p1(&a), p2(&b), result(&joined);
        SimplePathVertex* const v1 = endAnchor(a, row.oneAtEnd);
        SimplePathVertex* const v2 = endAnchor(b, !row.twoAtStart);
        SimplePathChangeInstruction change;
        ASSERT_EQ(SimplePath::Success, SimplePath::join(p1, v1, p2, v2, change, result));

        ASSERT_EQ(5, joined.numTriples());
        std::vector<SimplePathVertex*> got;
        for (SimplePathVertexTriple const& t : joined.getTripleList()) {
            got.push_back(t.anchor);
        }
        EXPECT_EQ(expected, got);
        auto const locations = locationsOf(joined);
        EXPECT_EQ(locations[2].anchor, locations[2].last); // the connecting segment is straight
        EXPECT_EQ(locations[3].anchor, locations[3].first);
        EXPECT_TRUE(a.numTriples() == 0 && b.numTriples() == 0);
        expectExactOwnership(before, {&a, &b, &joined}, change);
        EXPECT_TRUE(added(change).empty() && removed(change).empty());
        EXPECT_EQ(Paths{&joined}, translated(change, &a));
        EXPECT_EQ(Paths{&joined}, translated(change, &b));
        EXPECT_EQ(2u, change.numPositionTransforms());
    }
}

// Anchors at exactly one place merge: vertex1 stays and takes vertex2's far handle, on its outgoing side
// when path1 ran into it in order, on its incoming side when path1 was reversed.
TEST(Join, ExactlyCoincidentEndsMerge) {
    for (bool oneAtEnd : {true, false}) {
        SCOPED_TRACE(oneAtEnd);
        SimplePath a = wiggly(3);
        DPoint const meet = endAnchor(a, oneAtEnd)->getLocation();
        SimplePath b = secondPath(2, meet - DPoint(0, 0)); // b starts exactly at the meeting point
        SimplePath joined;
        DPoint const far = b.getTripleList()[0].last->getLocation();
        SimplePathVertexTriple const gone = b.getTripleList()[0];
        SimplePathVertex* const v1 = endAnchor(a, oneAtEnd);
        SimplePathVertexTriple const keep = a.getTripleList()[oneAtEnd ? 2 : 0];
        auto const before = verticesOf({&a, &b});
        PHashablePointer<SimplePath> p1(&a), p2(&b), result(&joined);
        SimplePathChangeInstruction change;
        ASSERT_EQ(SimplePath::Success, SimplePath::join(p1, v1, p2, gone.anchor, change, result));

        ASSERT_EQ(4, joined.numTriples());
        Loc const merged = locationsOf(joined)[2];
        EXPECT_EQ(v1, joined.getTripleList()[2].anchor);
        if (oneAtEnd) {
            EXPECT_EQ((Loc{keep.first->getLocation(), meet, far, keep.mode}), merged);
        } else {
            EXPECT_EQ((Loc{far, meet, meet, keep.mode}), merged);
        }
        EXPECT_EQ((std::set<SimplePathVertex*>{gone.first, gone.anchor, gone.last}), removed(change));
        expectExactOwnership(before, {&a, &b, &joined}, change);
        EXPECT_EQ(3u, change.numPositionTransforms());
        freeRemoved(change);
    }

    // A gap of 1e-12 is a gap: two vertices and a straight segment between them.
    SimplePath a = wiggly(3);
    SimplePath b = secondPath(2, endAnchor(a, true)->getLocation() + DVector(1e-12, 0) - DPoint(0, 0));
    SimplePath joined;
    PHashablePointer<SimplePath> p1(&a), p2(&b), result(&joined);
    SimplePathChangeInstruction change;
    ASSERT_EQ(SimplePath::Success,
              SimplePath::join(p1, endAnchor(a, true), p2, endAnchor(b, false), change, result));
    EXPECT_EQ(5, joined.numTriples());
}

TEST(Join, PreconditionsChangeNothing) {
    SimplePath a = wiggly(3);
    SimplePath b = wiggly(3);
    SimplePath closedPath = wiggly(3, 1);
    SimplePath single = wiggly(1);
    SimplePath joined;
    auto const ends = [](SimplePath& p) { return endAnchor(p, true); };
    struct Row {
        char const* name;
        SimplePath* one;
        SimplePathVertex* v1;
        SimplePath* two;
        SimplePathVertex* v2;
        SimplePath* into;
    } const rows[] = {
        {"closed first", &closedPath, ends(closedPath), &b, ends(b), &joined},
        {"closed second", &a, ends(a), &closedPath, endAnchor(closedPath, false), &joined},
        {"one-vertex first", &single, ends(single), &b, ends(b), &joined},
        {"handle", &a, a.getTripleList()[2].last, &b, ends(b), &joined},
        {"middle anchor", &a, ends(a), &b, b.getTripleList()[1].anchor, &joined},
        {"vertex of another path", &a, ends(b), &b, ends(b), &joined},
        {"same path", &a, ends(a), &a, endAnchor(a, false), &joined},
        {"into an input", &a, ends(a), &b, ends(b), &b},
    };
    for (Row const& row : rows) {
        SCOPED_TRACE(row.name);
        PHashablePointer<SimplePath> p1(row.one), p2(row.two), result(row.into);
        SimplePathChangeInstruction change;
        EXPECT_EQ(SimplePath::Failure, SimplePath::join(p1, row.v1, p2, row.v2, change, result));
        EXPECT_EQ(locationsOf(wiggly(3)), locationsOf(a));
        EXPECT_EQ(locationsOf(wiggly(3)), locationsOf(b));
        EXPECT_EQ(0, joined.numTriples());
        Paths paths;
        change.simplePathsRemoved(paths);
        EXPECT_TRUE(paths.empty());
        EXPECT_EQ(0u, change.numPositionTransforms());
    }
}
