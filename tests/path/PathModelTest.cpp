// The path model: who owns vertices, the orderings of triples and positions, and the reading members.

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <list>
#include <set>

#include "simplepath/edit/SimplePathChangeInstruction.h"
#include "simplepath/path/SimplePath.h"
#include "simplepath/path/SimplePathDPointVertex.h"
#include "support/PathQueryHelpers.h"

using support::positionOf;

namespace {

using Mode = SimplePathVertexTriple::VertexTripleMode;
constexpr Mode kSmooth = SimplePathVertexTriple::Smooth;
constexpr Mode kCusp = SimplePathVertexTriple::Cusp;

// Triple i: anchor (10 i, 0), handles 1 unit to either side.
SimplePath makeLine(int n, int closed = 0) {
    SimplePath path;
    SimplePathVertex *f = nullptr, *a = nullptr, *l = nullptr;
    for (int i = 0; i < n; ++i) {
        EXPECT_EQ(SimplePath::Success,
                  path.addTriple({10.0 * i - 1, 0}, f, {10.0 * i, 0}, a, {10.0 * i + 1, 0}, l, kCusp));
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

// Under the sanitizer build a leak, a double free or a premature free anywhere here fails the run.
TEST(Ownership, VerticesTriplesAndDeepCopies) {
    SimplePathVertex *first = nullptr, *anchor = nullptr, *last = nullptr;
    ASSERT_TRUE(SimplePathDPointVertex::createTriple({1, 2}, {3, 4}, {5, 6}, first, anchor, last));
    SimplePathVertex* const copy = anchor->copy();
    delete anchor; // the three share a block that lives until the last of them is deleted
    delete last;
    EXPECT_EQ(DPoint(1, 2), first->getLocation());
    EXPECT_EQ(DPoint(3, 4), copy->getLocation());
    delete first;
    delete copy;

    // A path deletes its vertices, skipping null ones; a copy owns new vertices at the same places.
    SimplePath source = makeLine(2, 1);
    const_cast<SimplePathTripleList&>(source.getTripleList())
        .push_back(SimplePathVertexTriple(nullptr, new SimplePathDPointVertex({5, 5}), nullptr, kSmooth));
    auto* copied = new SimplePath(source);
    EXPECT_EQ(1, copied->isClosedSimplePath());
    for (int i = 0; i < 2; ++i) {
        for (auto member : {&SimplePathVertexTriple::first, &SimplePathVertexTriple::anchor,
                            &SimplePathVertexTriple::last}) {
            EXPECT_NE(tripleOf(source, i).*member, tripleOf(*copied, i).*member);
            EXPECT_EQ((tripleOf(source, i).*member)->getLocation(),
                      (tripleOf(*copied, i).*member)->getLocation());
        }
    }
    EXPECT_EQ(nullptr, tripleOf(*copied, 2).first);
    EXPECT_EQ(kSmooth, tripleOf(*copied, 2).mode);
    delete copied;
    EXPECT_EQ(DPoint(10, 0), tripleOf(source, 1).anchor->getLocation()); // the source survives
    SimplePath target = makeLine(5); // assignment frees what the target had
    target = source;
    EXPECT_EQ(3, target.numTriples());
    SimplePathVertexTriple const before = tripleOf(source, 0);
    SimplePath const& alias = source;
    source = alias;
    EXPECT_EQ(before, tripleOf(source, 0));
}

TEST(TripleList, InsertRemoveAndTurningTheStartKeepOrder) {
    SimplePathDPointVertex v[4];
    auto const triple = [&](int i) { return SimplePathVertexTriple(&v[i], &v[i], &v[i], kCusp); };
    SimplePathTripleList list; // holds the array's vertices: emptied, never deleting, before it dies
    list.push_back(triple(1));
    list.push_back(triple(3));
    list.push_front(triple(0));
    EXPECT_EQ(&v[2], list.insert(list.iteratorAt(2), triple(2))->anchor); // 0 1 2 3
    list.cut_and_append(list.begin());                                    // 1 2 3 0
    EXPECT_EQ(&v[3], list.remove(list.iteratorAt(1))->anchor);            // 1 3 0
    EXPECT_TRUE(list[0].anchor == &v[1] && list[1].anchor == &v[3] && list.rbegin()->anchor == &v[0]);
    list.removeAll();
}

TEST(Ordering, TriplesIgnoreLastLocationTriplesLookOnlyAtFirstAndModeInferenceIsExact) {
    SimplePathDPointVertex v[3]; // an array: addresses grow with the index
    SimplePathVertexTriple const a(&v[0], &v[1], &v[1], kCusp), otherLast(&v[0], &v[1], &v[2], kCusp);
    EXPECT_FALSE(a < otherLast || otherLast < a || a > otherLast || otherLast > a || a == otherLast);
    EXPECT_TRUE(a < SimplePathVertexTriple(&v[1], &v[0], &v[0], kCusp)); // first before anchor
    EXPECT_TRUE(SimplePathVertexTriple(&v[1], &v[0], &v[0], kCusp) > a);
    EXPECT_TRUE(SimplePathVertexTriple(&v[0], &v[1], &v[1], static_cast<Mode>(-4)) < a); // signed modes

    SimplePathLocationTriple const l({1, 1}, {2, 2}, {3, 3}, kCusp),
        otherAnchor({1, 1}, {9, 9}, {3, 3}, kCusp);
    EXPECT_FALSE(l < otherAnchor || otherAnchor < l || l > otherAnchor || l == otherAnchor);
    EXPECT_TRUE(SimplePathLocationTriple({1, 1}, {9, 9}, {9, 9}, kSmooth) < l);
    EXPECT_TRUE(l > SimplePathLocationTriple({1, 0}, {2, 2}, {3, 3}, kSmooth)); // first before mode

    auto const infer = SimplePathVertexTriple::inferTripleMode; // exact cross product, never Symmetric
    EXPECT_EQ(kSmooth, infer({-2, 0}, {0, 0}, {2, 0}));
    EXPECT_EQ(kSmooth, infer({5, 5}, {5, 5}, {5, 5}));
    EXPECT_EQ(kCusp, infer({-1, 0}, {0, 0}, {1, 1e-300}));

    SimplePath path; // positions: path order, exact, made without any check
    EXPECT_EQ(positionOf(path, -1, 0.0), SimplePathPosition());
    EXPECT_TRUE(positionOf(path, 1, 0.75) < positionOf(path, 2, 0.25) &&
                positionOf(path, 2, 0.5) > positionOf(path, 2, 0.25));
    EXPECT_NE(positionOf(path, 2, 0.25), positionOf(path, 2, std::nextafter(0.25, 1.0)));
}

TEST(Path, EndsAndAnchorPositionsFollowTheClosedFlag) {
    SimplePath empty;
    empty.setStrictClosed(1); // emptiness does not clear the flag
    for (auto member : {&SimplePath::getBeginPosition, &SimplePath::getArbitraryPosition,
                        &SimplePath::getEndPosition, &SimplePath::getLastTriplePosition}) {
        SimplePathPosition p = positionOf(empty, 4, 0.5);
        EXPECT_EQ(SimplePath::Failure, (empty.*member)(p));
        EXPECT_EQ(SimplePathPosition(), p);
    }
    for (int closed : {0, 1}) {
        SimplePath path = makeLine(3, closed);
        SimplePathPosition end, last;
        EXPECT_EQ(SimplePath::Success, path.getEndPosition(end));
        EXPECT_EQ(positionOf(path, closed ? 3 : 2, 0.0), end);
        EXPECT_EQ(SimplePath::Success, path.getLastTriplePosition(last));
        EXPECT_EQ(positionOf(path, 2, 0.0), last);
        std::list<SimplePathPosition> ex{positionOf(path, 9, 0.0)}, expected{positionOf(path, 9, 0.0)};
        EXPECT_EQ(SimplePath::Success, path.getAnchorPositionsEx(ex)); // appended to, not cleared
        for (int i = 0; i < (closed ? 4 : 3); ++i) {
            expected.push_back(positionOf(path, i, 0.0));
        }
        EXPECT_EQ(expected, ex);
    }
    SimplePath path = makeLine(2);
    path.setStrictClosed(5);
    EXPECT_EQ(5, path.isClosedSimplePath());
    SimplePathChangeInstruction change;
    EXPECT_EQ(SimplePath::Success, path.setClosed(change));
    EXPECT_EQ(1, path.isClosedSimplePath());
    std::set<SimplePathVertex*> added;
    change.simplePathVerticesAdded(added);
    EXPECT_TRUE(added.empty());
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
    EXPECT_EQ(SimplePath::Failure, path.getVertexInfo(nullptr, found, index));
    EXPECT_EQ(SimplePath::Failure, path.getTriple(3, found));
    EXPECT_EQ(SimplePath::Failure, path.getTriple(-1, found));
    // isFirst and isLast, as a two-digit number, for (triples, closed, index).
    std::array<int, 4> const cases[] = {
        {3, 0, 0, 10}, {3, 0, 2, 1}, {3, 1, 2, 0}, {1, 0, 0, 11}, {1, 1, 0, 0}};
    for (auto [n, closed, i, flags] : cases) {
        SimplePath const line = makeLine(n, closed);
        int isFirst = -1, isLast = -1;
        ASSERT_EQ(SimplePath::Success, line.getVertexInfo(tripleOf(line, i).last, found, isFirst, isLast));
        EXPECT_EQ(flags, isFirst * 10 + isLast) << n << " " << closed << " " << i;
    }
}

TEST(Path, NearestAnchorRoundsHalfUpAndWrapsToTheFirst) {
    struct Case {
        int closed, index;
        double parameter;
        int expected;
    };
    for (Case c : {Case{0, 1, 0.5, 2}, Case{0, 1, 0.49, 1}, Case{1, 2, 0.7, 0}, Case{0, 2, 0.7, 0},
                   Case{0, -5, 0.2, 0}, Case{0, 1, std::nan(""), 1}}) {
        SimplePath path = makeLine(3, c.closed);
        SimplePathVertex* anchor = nullptr;
        int index = -1;
        ASSERT_EQ(SimplePath::Success,
                  path.getNearestAnchor(positionOf(path, c.index, c.parameter), anchor, index));
        EXPECT_EQ(c.expected, index) << c.closed << " " << c.index << " " << c.parameter;
        EXPECT_EQ(tripleOf(path, c.expected).anchor, anchor);
    }
    SimplePath empty;
    SimplePathVertex* anchor = nullptr;
    EXPECT_EQ(SimplePath::Failure, empty.getNearestAnchor(positionOf(empty, 0, 0.0), anchor));
}
