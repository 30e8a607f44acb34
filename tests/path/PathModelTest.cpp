// The path model: who owns vertices, the orderings of triples and positions, the triple list and the
// reading members of a path.

#include <gtest/gtest.h>

#include <cmath>
#include <list>
#include <set>
#include <vector>

#include "simplepath/edit/SimplePathChangeInstruction.h"
#include "simplepath/path/SimplePath.h"
#include "simplepath/path/SimplePathDPointVertex.h"
#include "support/PathQueryHelpers.h"

using support::positionOf;

namespace {

using Mode = SimplePathVertexTriple::VertexTripleMode;
constexpr Mode kSmooth = SimplePathVertexTriple::Smooth;
constexpr Mode kCusp = SimplePathVertexTriple::Cusp;
constexpr Mode kSymmetric = SimplePathVertexTriple::Symmetric;

// Triple i: anchor (10 i, 0), handles 1 unit to either side.
SimplePath makeLine(int n, int closed = 0) {
    SimplePath path;
    SimplePathVertex *f = nullptr, *a = nullptr, *l = nullptr;
    for (int i = 0; i < n; ++i) {
        path.addTriple({10.0 * i - 1, 0}, f, {10.0 * i, 0}, a, {10.0 * i + 1, 0}, l, kCusp);
    }
    path.setStrictClosed(closed);
    return path;
}

SimplePathVertexTriple tripleOf(SimplePath const& path, int index) {
    SimplePathVertexTriple t;
    EXPECT_EQ(SimplePath::Success, path.getTriple(index, t));
    return t;
}

} // namespace

TEST(Vertex, SharedBlockOutlivesAnyDeletionOrder) {
    SimplePathVertex *first = nullptr, *anchor = nullptr, *last = nullptr;
    ASSERT_TRUE(SimplePathDPointVertex::createTriple({1, 2}, {3, 4}, {5, 6}, first, anchor, last));
    EXPECT_EQ(DPoint(5, 6),
              static_cast<GenericPoint const*>(static_cast<SimplePathDPointVertex*>(last))->getLocation());
    SimplePathVertex* const copy = anchor->copy();
    delete anchor; // under the sanitizer build a premature free of the block fails the run
    delete last;
    EXPECT_EQ(DPoint(1, 2), first->getLocation());
    EXPECT_EQ(DPoint(3, 4), copy->getLocation());
    delete first;
    delete copy;
}

TEST(Ordering, TriplesIgnoreLastAndLocationTriplesLookOnlyAtFirstAndMode) {
    SimplePathDPointVertex v[3]; // an array: addresses grow with the index
    SimplePathVertexTriple const a(&v[0], &v[1], &v[1], kCusp), otherLast(&v[0], &v[1], &v[2], kCusp);
    EXPECT_FALSE(a < otherLast || otherLast < a || a > otherLast || otherLast > a || a == otherLast);
    EXPECT_TRUE(a < SimplePathVertexTriple(&v[1], &v[0], &v[0], kCusp)); // first before anchor
    EXPECT_TRUE(SimplePathVertexTriple(&v[1], &v[0], &v[0], kCusp) > a);
    EXPECT_TRUE(a < SimplePathVertexTriple(&v[0], &v[2], &v[0], kCusp));
    EXPECT_TRUE(SimplePathVertexTriple(&v[0], &v[1], &v[1], static_cast<Mode>(-4)) < a); // signed modes
    SimplePathVertexTriple reversed = otherLast;
    reversed.reverse();
    EXPECT_EQ(SimplePathVertexTriple(&v[2], &v[1], &v[0], kCusp), reversed);

    SimplePathLocationTriple const l({1, 1}, {2, 2}, {3, 3}, kCusp),
        otherAnchor({1, 1}, {9, 9}, {3, 3}, kCusp);
    EXPECT_FALSE(l < otherAnchor || otherAnchor < l || l > otherAnchor || l == otherAnchor);
    EXPECT_TRUE(SimplePathLocationTriple({1, 1}, {9, 9}, {9, 9}, kSmooth) < l);
    EXPECT_TRUE(l > SimplePathLocationTriple({1, 0}, {2, 2}, {3, 3}, kSymmetric)); // first before mode

    // Inferred modes: exact cross product, never Symmetric; retracted handles infer Smooth.
    auto const infer = SimplePathVertexTriple::inferTripleMode;
    EXPECT_EQ(kSmooth, infer({-2, 0}, {0, 0}, {2, 0}));
    EXPECT_EQ(kSmooth, infer({5, 5}, {5, 5}, {5, 5}));
    EXPECT_EQ(kCusp, infer({-1, 0}, {0, 0}, {1, 1e-300}));
    EXPECT_EQ(kCusp, infer({-1, 0}, {0, 0}, {std::nan(""), 1}));

    SimplePath path; // positions: path order, exact, made without any check
    EXPECT_EQ(positionOf(path, -1, 0.0), SimplePathPosition());
    SimplePathPosition const p = positionOf(path, 1, 0.75), q = positionOf(path, 2, 0.25);
    EXPECT_TRUE(p < q && q > p && !(q < q) && q < positionOf(path, 2, 0.5));
    EXPECT_NE(q, positionOf(path, 2, std::nextafter(0.25, 1.0)));
    EXPECT_EQ(-7, positionOf(path, -7, 3.5).getIndex());
}

TEST(TripleList, EditsKeepOrderAndTheDestructorDeletesWhatRemains) {
    SimplePathDPointVertex v[4];
    auto const triple = [&](int i) { return SimplePathVertexTriple(&v[i], &v[i], &v[i], kCusp); };
    SimplePathTripleList list;
    list.push_back(triple(1));
    list.push_back(triple(3));
    list.push_front(triple(0));
    EXPECT_EQ(&v[2], list.insert(list.iteratorAt(2), triple(2))->anchor);
    list.cut_and_append(list.begin()); // one step of turning a closed path's start: 1 2 3 0
    EXPECT_EQ(&v[3], list.remove(list.iteratorAt(1))->anchor);
    std::vector<SimplePathVertex*> backwards;
    for (auto r = list.rbegin(); r != list.rend(); ++r) {
        backwards.push_back(r->anchor);
    }
    EXPECT_EQ((std::vector<SimplePathVertex*>{&v[0], &v[3], &v[1]}), backwards);
    list.removeAll(); // the vertices are the array's: removing must not delete them

    auto* owning = new SimplePathTripleList; // a leak or double free here fails the sanitizer build
    SimplePathVertexTriple t;
    ASSERT_TRUE(SimplePathDPointVertex::createTriple({0, 0}, {1, 1}, {2, 2}, t.first, t.anchor, t.last));
    owning->push_back(t);
    owning->push_back(SimplePathVertexTriple(nullptr, new SimplePathDPointVertex({4, 4}), nullptr, kCusp));
    owning->setTripleLocations(owning->begin(), {5, 5}, {6, 6}, {7, 7});
    EXPECT_EQ(DPoint(6, 6), (*owning)[0].anchor->getLocation());
    delete owning;
}

TEST(Path, EmptyPathFailsWithTheInvalidPosition) {
    SimplePath path;
    path.setStrictClosed(1); // emptiness does not clear the flag
    for (auto member : {&SimplePath::getBeginPosition, &SimplePath::getArbitraryPosition,
                        &SimplePath::getEndPosition, &SimplePath::getLastTriplePosition}) {
        SimplePathPosition p = positionOf(path, 4, 0.5);
        EXPECT_EQ(SimplePath::Failure, (path.*member)(p));
        EXPECT_EQ(SimplePathPosition(), p);
    }
    std::list<SimplePathLocationTriple> locations;
    EXPECT_EQ(SimplePath::Success, path.getLocationTripleList(locations));
    EXPECT_TRUE(locations.empty());
    SimplePathDPointVertex stranger;
    SimplePathVertex* anchor = &stranger;
    EXPECT_EQ(SimplePath::Failure, path.getNearestAnchor(positionOf(path, 0, 0.0), anchor));
    EXPECT_EQ(&stranger, anchor);
}

TEST(Path, EndAndAnchorPositionsFollowTheClosedFlag) {
    for (int closed : {0, 1}) {
        SimplePath path = makeLine(3, closed);
        SimplePathPosition p;
        EXPECT_EQ(SimplePath::Success, path.getEndPosition(p));
        EXPECT_EQ(positionOf(path, closed ? 3 : 2, 0.0), p);
        EXPECT_EQ(SimplePath::Success, path.getLastTriplePosition(p));
        EXPECT_EQ(positionOf(path, 2, 0.0), p);
        std::list<SimplePathPosition> plain, ex{positionOf(path, 9, 0.0)}; // appended to, not cleared
        path.getAnchorPositions(plain);
        path.getAnchorPositionsEx(ex);
        EXPECT_EQ(3u, plain.size());
        ex.pop_front();
        int expected = 0;
        for (SimplePathPosition const& q : ex) {
            EXPECT_EQ(positionOf(path, expected++, 0.0), q);
        }
        EXPECT_EQ(closed ? 4 : 3, expected);
    }
}

TEST(Path, VertexLookupIsByIdentity) {
    SimplePath path = makeLine(3);
    SimplePathVertexTriple const t1 = tripleOf(path, 1);
    SimplePathVertex *f = nullptr, *a = nullptr, *l = nullptr;
    Mode mode = kSmooth;
    ASSERT_EQ(SimplePath::Success, path.getVertexInfo(t1.last, f, a, l, mode)); // a handle finds its triple
    EXPECT_EQ(t1, SimplePathVertexTriple(f, a, l, mode));
    SimplePathVertexTriple found;
    int index = -1;
    ASSERT_EQ(SimplePath::Success, path.getVertexInfo(t1.first, found, index));
    EXPECT_EQ(1, index);
    SimplePathPosition p = positionOf(path, 9, 0.5);
    EXPECT_EQ(SimplePath::Failure, path.getAnchorPosition(t1.first, p)); // anchors only
    EXPECT_EQ(positionOf(path, 9, 0.5), p);
    EXPECT_EQ(SimplePath::Success, path.getAnchorPosition(t1.anchor, p));
    EXPECT_EQ(positionOf(path, 1, 0.0), p);
    SimplePath const twin = makeLine(3); // same places, other vertices
    EXPECT_EQ(SimplePath::Failure, path.getVertexInfo(tripleOf(twin, 1).anchor, found, index));
    EXPECT_EQ(1, index);
    EXPECT_EQ(SimplePath::Failure, path.getTriple(3, found));
    EXPECT_EQ(SimplePath::Failure, path.getTriple(-1, found));

    struct Case { // first and last flags, only on open paths
        int n, closed, index, isFirst, isLast;
    };
    for (Case c : {Case{3, 0, 0, 1, 0}, Case{3, 0, 2, 0, 1}, Case{3, 0, 1, 0, 0}, Case{3, 1, 0, 0, 0},
                   Case{3, 1, 2, 0, 0}, Case{1, 0, 0, 1, 1}, Case{1, 1, 0, 0, 0}}) {
        SimplePath const line = makeLine(c.n, c.closed);
        int isFirst = -1, isLast = -1;
        ASSERT_EQ(SimplePath::Success,
                  line.getVertexInfo(tripleOf(line, c.index).last, found, isFirst, isLast));
        EXPECT_EQ(c.isFirst * 10 + c.isLast, isFirst * 10 + isLast)
            << c.n << " " << c.closed << " " << c.index;
    }
}

TEST(Path, NearestAnchorRoundsHalfUpAndWrapsToTheFirst) {
    struct Case {
        int closed, index;
        double parameter;
        int expected;
    };
    for (Case c : {Case{0, 1, 0.5, 2}, Case{0, 1, 0.49, 1}, Case{1, 2, 0.7, 0}, Case{0, 2, 0.7, 0},
                   Case{0, -5, 0.2, 0}, Case{0, 2147483647, 0.9, 0}, Case{0, 1, std::nan(""), 1}}) {
        SimplePath path = makeLine(3, c.closed);
        SimplePathVertex* anchor = nullptr;
        int index = -1;
        ASSERT_EQ(SimplePath::Success,
                  path.getNearestAnchor(positionOf(path, c.index, c.parameter), anchor, index));
        EXPECT_EQ(c.expected, index) << c.closed << " " << c.index << " " << c.parameter;
        EXPECT_EQ(tripleOf(path, c.expected).anchor, anchor);
    }
}

TEST(Path, DeepCopyOwnsNewVertices) {
    SimplePath source = makeLine(3, 1);
    // A null handle stays null in the copy (and is skipped when the path deletes its vertices).
    const_cast<SimplePathTripleList&>(source.getTripleList())
        .push_back(SimplePathVertexTriple(nullptr, new SimplePathDPointVertex({5, 5}), nullptr, kSmooth));
    auto* copy = new SimplePath(source);
    EXPECT_EQ(1, copy->isClosedSimplePath());
    for (int i = 0; i < 3; ++i) {
        SimplePathVertexTriple const s = tripleOf(source, i), c = tripleOf(*copy, i);
        for (auto member : {&SimplePathVertexTriple::first, &SimplePathVertexTriple::anchor,
                            &SimplePathVertexTriple::last}) {
            EXPECT_NE(s.*member, c.*member);
            EXPECT_EQ((s.*member)->getLocation(), (c.*member)->getLocation());
        }
    }
    EXPECT_EQ(nullptr, tripleOf(*copy, 3).first);
    EXPECT_EQ(DPoint(5, 5), tripleOf(*copy, 3).anchor->getLocation());
    delete copy;
    EXPECT_EQ(DPoint(20, 0), tripleOf(source, 2).anchor->getLocation()); // the source survives
    SimplePath target = makeLine(5); // assignment frees what the target had
    target = source;
    EXPECT_EQ(4, target.numTriples());
    SimplePathVertexTriple const before = tripleOf(source, 0);
    SimplePath const& alias = source;
    source = alias;
    EXPECT_EQ(before, tripleOf(source, 0));
}

TEST(Path, ClosedFlagIsStoredAsGiven) {
    SimplePath path = makeLine(2);
    path.setStrictClosed(5);
    EXPECT_EQ(5, path.isClosedSimplePath());
    SimplePathChangeInstruction change;
    EXPECT_EQ(SimplePath::Success, path.setClosed(change));
    EXPECT_EQ(1, path.isClosedSimplePath());
    std::set<SimplePathVertex*> added;
    change.simplePathVerticesAdded(added);
    EXPECT_TRUE(added.empty());
    EXPECT_EQ(1, SimplePath::areCompatible(&path, nullptr));
}
