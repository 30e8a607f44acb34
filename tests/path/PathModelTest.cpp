#include <gtest/gtest.h>

#include <cmath>
#include <list>
#include <set>
#include <vector>

#include "simplepath/edit/SimplePathChangeInstruction.h"
#include "simplepath/path/SimplePath.h"
#include "simplepath/path/SimplePathDPointVertex.h"

namespace {

using Mode = SimplePathVertexTriple::VertexTripleMode;

// An open path of `n` triples whose anchors sit at (10 i, 0), handles 1 unit to either side.
SimplePath makeLine(int n, int closed = 0) {
    SimplePath path;
    SimplePathVertex* f = nullptr;
    SimplePathVertex* a = nullptr;
    SimplePathVertex* l = nullptr;
    for (int i = 0; i < n; ++i) {
        double const x = 10.0 * i;
        EXPECT_EQ(SimplePath::Success,
                  path.addTriple({x - 1, 0}, f, {x, 0}, a, {x + 1, 0}, l, SimplePathVertexTriple::Cusp));
    }
    path.setStrictClosed(closed);
    return path;
}

std::pair<int, double> values(SimplePathPosition const& p) {
    std::pair<int, double> v;
    p.getValues(v.first, v.second);
    return v;
}

// A host vertex class that notes the order in which copies are asked for.
class LoggingVertex : public SimplePathVertex {
  public:
    LoggingVertex(DPoint where, char tag, std::vector<char>* copies)
        : location(where), name(tag), log(copies) {}
    DPoint getLocation() const override { return location; }
    SimplePathVertex* copy() const override {
        log->push_back(name);
        return new LoggingVertex(location, name, log);
    }

  private:
    void setLocation(DPoint const& where) override { location = where; }
    DPoint location;
    char name;
    std::vector<char>* log;
};

} // namespace

TEST(Vertex, CopyAndDeleteInAnyOrder) {
    SimplePathVertex* first = nullptr;
    SimplePathVertex* anchor = nullptr;
    SimplePathVertex* last = nullptr;
    ASSERT_TRUE(SimplePathDPointVertex::createTriple({1, 2}, {3, 4}, {5, 6}, first, anchor, last));
    EXPECT_NE(first, anchor);
    EXPECT_EQ(DPoint(3, 4), anchor->getLocation());
    GenericPoint const* asPoint = static_cast<SimplePathDPointVertex*>(last);
    EXPECT_EQ(DPoint(5, 6), asPoint->getLocation());

    SimplePathVertex* const copy = anchor->copy();
    EXPECT_NE(copy, anchor);
    EXPECT_EQ(anchor->getLocation(), copy->getLocation());
    // The shared block must survive until its last vertex is gone, whatever the order.
    delete anchor;
    EXPECT_EQ(DPoint(1, 2), first->getLocation());
    delete last;
    EXPECT_EQ(DPoint(1, 2), first->getLocation());
    delete first;
    delete copy;

    SimplePathDPointVertex plain;
    EXPECT_EQ(DPoint(), plain.getLocation());
}

TEST(VertexTriple, OrderingIgnoresLastButNotMode) {
    SimplePathDPointVertex v[4];
    SimplePathVertexTriple const a(&v[0], &v[1], &v[2], SimplePathVertexTriple::Cusp);
    SimplePathVertexTriple const onlyLastDiffers(&v[0], &v[1], &v[3], SimplePathVertexTriple::Cusp);
    EXPECT_FALSE(a < onlyLastDiffers);
    EXPECT_FALSE(onlyLastDiffers < a);
    EXPECT_FALSE(a > onlyLastDiffers);
    EXPECT_FALSE(onlyLastDiffers > a);
    EXPECT_NE(a, onlyLastDiffers);

    // `first` decides before `anchor`; v is an array, so addresses grow with the index.
    SimplePathVertexTriple const laterFirst(&v[1], &v[0], &v[2], SimplePathVertexTriple::Cusp);
    EXPECT_TRUE(a < laterFirst);
    EXPECT_TRUE(laterFirst > a);
    SimplePathVertexTriple const laterAnchor(&v[0], &v[2], &v[2], SimplePathVertexTriple::Cusp);
    EXPECT_TRUE(a < laterAnchor);

    // Same three vertices: the mode orders, as a signed number.
    SimplePathVertexTriple const smooth(&v[0], &v[1], &v[2], SimplePathVertexTriple::Smooth);
    SimplePathVertexTriple const odd(&v[0], &v[1], &v[2], static_cast<Mode>(-4));
    EXPECT_TRUE(smooth < a);
    EXPECT_TRUE(a > smooth);
    EXPECT_TRUE(odd < smooth);
    EXPECT_EQ(a, SimplePathVertexTriple(&v[0], &v[1], &v[2], SimplePathVertexTriple::Cusp));

    SimplePathVertexTriple r = a;
    r.reverse();
    EXPECT_EQ(SimplePathVertexTriple(&v[2], &v[1], &v[0], SimplePathVertexTriple::Cusp), r);

    SimplePathVertexTriple const empty;
    EXPECT_EQ(nullptr, empty.anchor);
    EXPECT_EQ(SimplePathVertexTriple::Cusp, empty.mode);
}

TEST(VertexTriple, InferModeIsExactAndNeverSymmetric) {
    auto const infer = SimplePathVertexTriple::inferTripleMode;
    EXPECT_EQ(SimplePathVertexTriple::Smooth, infer({-1, -1}, {0, 0}, {3, 3}));
    EXPECT_EQ(SimplePathVertexTriple::Smooth, infer({-2, 0}, {0, 0}, {2, 0})); // would be symmetric
    EXPECT_EQ(SimplePathVertexTriple::Smooth, infer({5, 5}, {5, 5}, {5, 5}));  // retracted handles
    EXPECT_EQ(SimplePathVertexTriple::Smooth, infer({1, 0}, {0, 0}, {2, 0}));  // same side, still parallel
    EXPECT_EQ(SimplePathVertexTriple::Cusp, infer({-1, 0}, {0, 0}, {1, 1e-300}));
    EXPECT_EQ(SimplePathVertexTriple::Cusp, infer({-1, 0}, {0, 0}, {std::nan(""), 1}));
}

TEST(LocationTriple, OrderLooksOnlyAtFirstAndMode) {
    SimplePathLocationTriple const a({1, 1}, {2, 2}, {3, 3}, SimplePathVertexTriple::Cusp);
    SimplePathLocationTriple const otherAnchor({1, 1}, {9, 9}, {3, 3}, SimplePathVertexTriple::Cusp);
    EXPECT_FALSE(a < otherAnchor);
    EXPECT_FALSE(otherAnchor < a);
    EXPECT_FALSE(a > otherAnchor);
    EXPECT_FALSE(a == otherAnchor);
    EXPECT_TRUE(a != otherAnchor);

    SimplePathLocationTriple const smooth({1, 1}, {9, 9}, {9, 9}, SimplePathVertexTriple::Smooth);
    EXPECT_TRUE(smooth < a);
    EXPECT_TRUE(a > smooth);
    // `first` decides before mode, x before y.
    SimplePathLocationTriple const lowerFirst({1, 0}, {2, 2}, {3, 3}, SimplePathVertexTriple::Symmetric);
    EXPECT_TRUE(lowerFirst < a);
    EXPECT_TRUE(a > lowerFirst);
    EXPECT_EQ(a, SimplePathLocationTriple({1, 1}, {2, 2}, {3, 3}, SimplePathVertexTriple::Cusp));
    EXPECT_EQ(SimplePathVertexTriple::Cusp, SimplePathLocationTriple().mode);
}

TEST(Position, DefaultIsInvalidAndOrderIsPathOrder) {
    SimplePathPosition p;
    EXPECT_EQ(std::make_pair(-1, 0.0), values(p));
    SimplePath path;
    SimplePathPosition a, b, c;
    path.makePosition(1, 0.75, a);
    path.makePosition(2, 0.25, b);
    path.makePosition(2, 0.5, c);
    EXPECT_TRUE(a < b && b < c && a < c);
    EXPECT_TRUE(c > b && b > a);
    EXPECT_FALSE(b < b);
    p.setValues(2, 0.25);
    EXPECT_EQ(b, p);
    p.setValues(2, std::nextafter(0.25, 1.0));
    EXPECT_NE(b, p); // exact, no tolerance
    // makePosition checks nothing.
    path.makePosition(-7, 3.5, p);
    EXPECT_EQ(std::make_pair(-7, 3.5), values(p));
}

TEST(TripleList, EditingMembersKeepOrder) {
    SimplePathDPointVertex v[5];
    auto const triple = [&](int i) {
        return SimplePathVertexTriple(&v[i], &v[i], &v[i], SimplePathVertexTriple::Cusp);
    };
    SimplePathTripleList list;
    list.push_back(triple(1));
    list.push_back(triple(3));
    list.push_front(triple(0));
    auto it = list.insert(list.iteratorAt(2), triple(2));
    EXPECT_EQ(&v[2], it->anchor);
    list.push_back(triple(4));
    ASSERT_EQ(5, list.length());
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(&v[i], list.get(i).anchor);
    }

    std::vector<SimplePathVertex*> backwards;
    for (auto r = list.rbegin(); r != list.rend(); ++r) {
        backwards.push_back(r->anchor);
    }
    EXPECT_EQ((std::vector<SimplePathVertex*>{&v[4], &v[3], &v[2], &v[1], &v[0]}), backwards);

    // One step of turning the start: triple 0 goes to the end.
    list.cut_and_append(list.begin());
    EXPECT_EQ(&v[1], list[0].anchor);
    EXPECT_EQ(&v[0], list[4].anchor);

    it = list.remove(list.iteratorAt(1));
    EXPECT_EQ(&v[3], it->anchor);
    EXPECT_EQ(4, list.length());

    list.setTripleMode(list.begin(), SimplePathVertexTriple::Symmetric);
    EXPECT_EQ(SimplePathVertexTriple::Symmetric, list[0].mode);
    list.setTriple(list.begin(), triple(2));
    EXPECT_EQ(triple(2), list[0]);

    // A shallow copy shares the vertices; both are emptied before they die.
    SimplePathTripleList scratch(list);
    EXPECT_EQ(list[3], scratch[3]);
    scratch.removeAll();
    list.removeAll();
    EXPECT_EQ(0, list.length());
    EXPECT_TRUE(list.begin() == list.end());
}

TEST(TripleList, DestructorDeletesRemainingVertices) {
    // Under the sanitizer build a leak or double free here fails the run.
    auto* list = new SimplePathTripleList;
    SimplePathVertexTriple t;
    ASSERT_TRUE(SimplePathDPointVertex::createTriple({0, 0}, {1, 1}, {2, 2}, t.first, t.anchor, t.last));
    list->push_back(t);
    list->push_back(SimplePathVertexTriple(new SimplePathDPointVertex({3, 3}),
                                           new SimplePathDPointVertex({4, 4}), nullptr,
                                           SimplePathVertexTriple::Cusp));
    list->setTripleLocations(list->begin(), {5, 5}, {6, 6}, {7, 7});
    EXPECT_EQ(DPoint(6, 6), (*list)[0].anchor->getLocation());
    delete list;
}

TEST(Path, EmptyPathReportsFailureWithInvalidPositions) {
    SimplePath path;
    path.setStrictClosed(1); // emptiness does not clear the flag
    EXPECT_EQ(0, path.numTriples());
    SimplePathPosition p;
    path.makePosition(4, 0.5, p);
    EXPECT_EQ(SimplePath::Failure, path.getBeginPosition(p));
    EXPECT_EQ(std::make_pair(-1, 0.0), values(p));
    path.makePosition(4, 0.5, p);
    EXPECT_EQ(SimplePath::Failure, path.getEndPosition(p));
    EXPECT_EQ(std::make_pair(-1, 0.0), values(p));
    path.makePosition(4, 0.5, p);
    EXPECT_EQ(SimplePath::Failure, path.getLastTriplePosition(p));
    EXPECT_EQ(std::make_pair(-1, 0.0), values(p));
    path.makePosition(4, 0.5, p);
    EXPECT_EQ(SimplePath::Failure, path.getArbitraryPosition(p));

    std::list<SimplePathLocationTriple> locations;
    EXPECT_EQ(SimplePath::Success, path.getLocationTripleList(locations));
    EXPECT_TRUE(locations.empty());
    std::list<SimplePathPosition> anchors;
    EXPECT_EQ(SimplePath::Success, path.getAnchorPositionsEx(anchors));
    EXPECT_TRUE(anchors.empty());

    SimplePathDPointVertex stranger;
    SimplePathVertexTriple triple;
    int index = 42;
    EXPECT_EQ(SimplePath::Failure, path.getVertexInfo(&stranger, triple, index));
    EXPECT_EQ(42, index);
    SimplePathVertex* anchor = &stranger;
    EXPECT_EQ(SimplePath::Failure, path.getNearestAnchor(p, anchor));
    EXPECT_EQ(&stranger, anchor);
    EXPECT_EQ(SimplePath::Failure, path.getTriple(0, triple));
}

TEST(Path, EndsAndAnchorPositionsFollowTheClosedFlag) {
    for (int closed : {0, 1}) {
        SimplePath path = makeLine(3, closed);
        SimplePathPosition p;
        EXPECT_EQ(SimplePath::Success, path.getBeginPosition(p));
        EXPECT_EQ(std::make_pair(0, 0.0), values(p));
        EXPECT_EQ(SimplePath::Success, path.getEndPosition(p));
        EXPECT_EQ(std::make_pair(closed ? 3 : 2, 0.0), values(p));
        EXPECT_EQ(SimplePath::Success, path.getLastTriplePosition(p));
        EXPECT_EQ(std::make_pair(2, 0.0), values(p));

        std::list<SimplePathPosition> plain, ex;
        path.getAnchorPositions(plain);
        path.getAnchorPositionsEx(ex);
        EXPECT_EQ(3u, plain.size());
        ASSERT_EQ(closed ? 4u : 3u, ex.size());
        int expected = 0;
        for (SimplePathPosition const& q : ex) {
            EXPECT_EQ(std::make_pair(expected++, 0.0), values(q));
        }
    }
}

TEST(Path, VertexLookupByIdentity) {
    SimplePath path = makeLine(3);
    SimplePathVertexTriple t1;
    ASSERT_EQ(SimplePath::Success, path.getTriple(1, t1));

    // A handle finds the whole triple of its anchor.
    SimplePathVertex *f = nullptr, *a = nullptr, *l = nullptr;
    Mode mode = SimplePathVertexTriple::Smooth;
    ASSERT_EQ(SimplePath::Success, path.getVertexInfo(t1.last, f, a, l, mode));
    EXPECT_EQ(t1, SimplePathVertexTriple(f, a, l, mode));
    SimplePathVertexTriple found;
    int index = -1;
    ASSERT_EQ(SimplePath::Success, path.getVertexInfo(t1.first, found, index));
    EXPECT_EQ(1, index);
    EXPECT_EQ(t1, found);

    // The anchor position ignores handles.
    SimplePathPosition p;
    EXPECT_EQ(SimplePath::Success, path.getAnchorPosition(t1.anchor, p));
    EXPECT_EQ(std::make_pair(1, 0.0), values(p));
    path.makePosition(9, 0.5, p);
    EXPECT_EQ(SimplePath::Failure, path.getAnchorPosition(t1.first, p));
    EXPECT_EQ(std::make_pair(9, 0.5), values(p));

    // A vertex at the same place in another path is a different vertex.
    SimplePath twin = makeLine(3);
    SimplePathVertexTriple other;
    twin.getTriple(1, other);
    EXPECT_EQ(SimplePath::Failure, path.getVertexInfo(other.anchor, found, index));
    EXPECT_EQ(1, index);
    EXPECT_EQ(SimplePath::Failure, path.getVertexInfo(nullptr, found, index));

    EXPECT_EQ(SimplePath::Failure, path.getTriple(3, found));
    EXPECT_EQ(SimplePath::Failure, path.getTriple(-1, found));
}

TEST(Path, FirstAndLastFlagsOnlyOnOpenPaths) {
    struct Case {
        int n, closed, index, isFirst, isLast;
    };
    for (Case c : {Case{3, 0, 0, 1, 0}, Case{3, 0, 2, 0, 1}, Case{3, 0, 1, 0, 0}, Case{3, 1, 0, 0, 0},
                   Case{3, 1, 2, 0, 0}, Case{1, 0, 0, 1, 1}, Case{1, 1, 0, 0, 0}}) {
        SimplePath path = makeLine(c.n, c.closed);
        SimplePathVertexTriple t;
        path.getTriple(c.index, t);
        int isFirst = -1, isLast = -1;
        ASSERT_EQ(SimplePath::Success, path.getVertexInfo(t.anchor, t, isFirst, isLast));
        EXPECT_EQ(c.isFirst, isFirst) << c.n << " " << c.closed << " " << c.index;
        EXPECT_EQ(c.isLast, isLast) << c.n << " " << c.closed << " " << c.index;
    }
}

TEST(Path, NearestAnchorWrapsToTheFirstAnchor) {
    struct Case {
        int closed, index;
        double parameter;
        int expected;
    };
    for (Case c : {Case{0, 1, 0.5, 2}, Case{0, 1, 0.49, 1}, Case{1, 2, 0.7, 0}, Case{0, 2, 0.7, 0},
                   Case{0, -5, 0.2, 0}, Case{1, 3, 0.0, 0}, Case{0, 2147483647, 0.9, 0},
                   Case{0, 1, std::nan(""), 1}}) {
        SimplePath path = makeLine(3, c.closed);
        SimplePathPosition p;
        path.makePosition(c.index, c.parameter, p);
        SimplePathVertex* anchor = nullptr;
        int index = -1;
        ASSERT_EQ(SimplePath::Success, path.getNearestAnchor(p, anchor, index));
        EXPECT_EQ(c.expected, index) << c.closed << " " << c.index << " " << c.parameter;
        SimplePathVertexTriple t;
        path.getTriple(c.expected, t);
        EXPECT_EQ(t.anchor, anchor);
    }
}

TEST(Path, DeepCopyOwnsNewVertices) {
    SimplePath source = makeLine(3, 1);
    auto* copy = new SimplePath(source);
    ASSERT_EQ(3, copy->numTriples());
    EXPECT_EQ(1, copy->isClosedSimplePath());
    for (int i = 0; i < 3; ++i) {
        SimplePathVertexTriple s, c;
        source.getTriple(i, s);
        copy->getTriple(i, c);
        for (auto member : {&SimplePathVertexTriple::first, &SimplePathVertexTriple::anchor,
                            &SimplePathVertexTriple::last}) {
            EXPECT_NE(s.*member, c.*member);
            EXPECT_EQ((s.*member)->getLocation(), (c.*member)->getLocation());
        }
        EXPECT_EQ(s.mode, c.mode);
    }
    delete copy;
    std::list<SimplePathLocationTriple> after;
    source.getLocationTripleList(after);
    EXPECT_EQ(DPoint(20, 0), after.back().anchor);

    // Assignment replaces (and frees) what the target had; self-assignment changes nothing.
    SimplePath target = makeLine(5);
    SimplePathVertexTriple before;
    source.getTriple(0, before);
    target = source;
    EXPECT_EQ(3, target.numTriples());
    EXPECT_EQ(1, target.isClosedSimplePath());
    SimplePath const& alias = source;
    source = alias;
    SimplePathVertexTriple same;
    source.getTriple(0, same);
    EXPECT_EQ(before, same);

    SimplePath moved(std::move(target));
    EXPECT_EQ(3, moved.numTriples());
    EXPECT_EQ(0, target.numTriples()); // NOLINT(bugprone-use-after-move)
}

TEST(Path, DeepCopyUsesCopyOfForeignVerticesAnchorFirst) {
    std::vector<char> log;
    // Put a host's vertices into a path by swapping them in for the ones it made.
    SimplePath holder;
    SimplePathVertex* anchor = nullptr;
    holder.addSingle(DPoint(0, 0), anchor);
    SimplePathTripleList& list = const_cast<SimplePathTripleList&>(holder.getTripleList());
    SimplePathVertexTriple const mine = list[0];
    list.setTriple(list.begin(), SimplePathVertexTriple(new LoggingVertex({1, 0}, 'f', &log),
                                                        new LoggingVertex({2, 0}, 'a', &log), nullptr,
                                                        SimplePathVertexTriple::Smooth));
    delete mine.first;
    delete mine.anchor;
    delete mine.last;

    SimplePath copy(holder);
    EXPECT_EQ((std::vector<char>{'a', 'f'}), log);
    SimplePathVertexTriple t;
    copy.getTriple(0, t);
    EXPECT_EQ(nullptr, t.last);
    EXPECT_EQ(DPoint(2, 0), t.anchor->getLocation());
    EXPECT_EQ(SimplePathVertexTriple::Smooth, t.mode);
}

TEST(Path, ClosedFlagStoredAsGiven) {
    SimplePath path = makeLine(2);
    path.setStrictClosed(5);
    EXPECT_EQ(5, path.isClosedSimplePath());
    SimplePathChangeInstruction change;
    EXPECT_EQ(SimplePath::Success, path.setClosed(change));
    EXPECT_EQ(1, path.isClosedSimplePath());
    EXPECT_EQ(SimplePath::Success, path.setClosed(change));
    EXPECT_EQ(2, path.numTriples());
    std::set<SimplePathVertex*> added;
    change.simplePathVerticesAdded(added);
    EXPECT_TRUE(added.empty());
    path.setStrictClosed(0);
    EXPECT_EQ(0, path.isClosedSimplePath());
    EXPECT_EQ(1, SimplePath::areCompatible(&path, nullptr));
}
