#include <gtest/gtest.h>

#include <list>
#include <set>
#include <vector>

#include "simplepath/edit/SimplePathChangeInstruction.h"
#include "simplepath/path/SimplePath.h"

namespace {

std::vector<SimplePathLocationTriple> locationsOf(SimplePath const& path) {
    std::list<SimplePathLocationTriple> list;
    path.getLocationTripleList(list);
    return {list.begin(), list.end()};
}

SimplePathLocationTriple retracted(double x, double y) {
    return {{x, y}, {x, y}, {x, y}, SimplePathVertexTriple::Cusp};
}

} // namespace

TEST(Construction, SingleAndPointsMakeRetractedCuspTriples) {
    SimplePath path;
    SimplePathVertex* anchor = nullptr;
    ASSERT_EQ(SimplePath::Success, path.addSingle(DPoint(1.5, 2), anchor));
    ASSERT_EQ(SimplePath::Success, path.addSingle(IPoint(3, -4), anchor));
    EXPECT_EQ(DPoint(3, -4), anchor->getLocation());
    SimplePathVertexTriple t;
    path.getTriple(1, t);
    EXPECT_EQ(anchor, t.anchor);
    EXPECT_NE(t.first, t.anchor);
    EXPECT_NE(t.last, t.anchor);

    path.setStrictClosed(3);
    EXPECT_EQ(SimplePath::Success, path.addPoints(std::list<DPoint>{{5, 5}, {6, 6}}));
    EXPECT_EQ(SimplePath::Success, path.addPoints(std::vector<DPoint>{{7, 7}}));
    EXPECT_EQ(SimplePath::Success, path.addPoints(std::vector<DPoint>{}));
    EXPECT_EQ(3, path.isClosedSimplePath());
    EXPECT_EQ((std::vector<SimplePathLocationTriple>{retracted(1.5, 2), retracted(3, -4), retracted(5, 5),
                                                     retracted(6, 6), retracted(7, 7)}),
              locationsOf(path));
}

TEST(Construction, AddTripleKeepsTheModeAsGiven) {
    SimplePath path;
    SimplePathVertex *f = nullptr, *a = nullptr, *l = nullptr;
    ASSERT_EQ(SimplePath::Success,
              path.addTriple({0, 1}, f, {2, 3}, a, {4, 5}, l, SimplePathVertexTriple::Symmetric));
    auto const odd = static_cast<SimplePathVertexTriple::VertexTripleMode>(7);
    ASSERT_EQ(SimplePath::Success, path.addTriple({0, 0}, f, {0, 0}, a, {1, 1}, l, odd));
    SimplePathVertexTriple t;
    path.getTriple(1, t);
    EXPECT_EQ(SimplePathVertexTriple(f, a, l, odd), t);
    EXPECT_EQ((SimplePathLocationTriple{{0, 1}, {2, 3}, {4, 5}, SimplePathVertexTriple::Symmetric}),
              locationsOf(path)[0]);
}

TEST(Construction, InsertTripleIndexRules) {
    SimplePath path;
    path.addPoints(std::vector<DPoint>{{0, 0}, {1, 0}});
    SimplePathVertex *f = nullptr, *a = nullptr, *l = nullptr;

    ASSERT_EQ(SimplePath::Success,
              path.insertTriple({2, 0}, f, {2, 0}, a, {2, 0}, l, SimplePathVertexTriple::Cusp, 2));
    ASSERT_EQ(SimplePath::Success,
              path.insertTriple({-1, 0}, f, {-1, 0}, a, {-1, 0}, l, SimplePathVertexTriple::Cusp, -3));
    SimplePathVertex* const front = a;
    ASSERT_EQ(SimplePath::Success,
              path.insertTriple({9, 9}, f, {9, 9}, a, {9, 9}, l, SimplePathVertexTriple::Smooth, 2));
    EXPECT_EQ((std::vector<SimplePathLocationTriple>{retracted(-1, 0),
                                                     retracted(0, 0),
                                                     {{9, 9}, {9, 9}, {9, 9}, SimplePathVertexTriple::Smooth},
                                                     retracted(1, 0),
                                                     retracted(2, 0)}),
              locationsOf(path));
    SimplePathVertexTriple t;
    path.getTriple(0, t);
    EXPECT_EQ(front, t.anchor);

    // One past the end is refused and the out-arguments are left alone.
    SimplePathVertex* const untouched = a;
    EXPECT_EQ(SimplePath::Failure,
              path.insertTriple({0, 0}, f, {0, 0}, a, {0, 0}, l, SimplePathVertexTriple::Cusp, 6));
    EXPECT_EQ(untouched, a);
    EXPECT_EQ(5, path.numTriples());
}

TEST(Construction, InitializeStoresFlagAndRecordsNewVertices) {
    SimplePath path;
    path.addPoints(std::vector<DPoint>{{-5, -5}});
    SimplePathChangeInstruction change;
    std::list<SimplePathLocationTriple> const input{
        {{0, 1}, {0, 2}, {0, 3}, SimplePathVertexTriple::Smooth},
        {{1, 1}, {1, 2}, {1, 3}, SimplePathVertexTriple::Symmetric}};
    ASSERT_EQ(SimplePath::Success, path.initialize(input, 7, change));
    EXPECT_EQ(7, path.isClosedSimplePath());
    std::vector<SimplePathLocationTriple> const result = locationsOf(path);
    ASSERT_EQ(3u, result.size());
    EXPECT_EQ(retracted(-5, -5), result[0]); // existing triples are kept
    EXPECT_EQ(input.front(), result[1]);
    EXPECT_EQ(input.back(), result[2]);

    std::set<SimplePathVertex*> added;
    change.simplePathVerticesAdded(added);
    std::set<SimplePathVertex*> expected;
    for (int i = 1; i < 3; ++i) {
        SimplePathVertexTriple t;
        path.getTriple(i, t);
        expected.insert({t.first, t.anchor, t.last});
    }
    EXPECT_EQ(expected, added);
    std::set<SimplePathVertex*> removed;
    change.simplePathVerticesRemoved(removed);
    EXPECT_TRUE(removed.empty());
}

TEST(Construction, SetLocationTripleListMovesVerticesAndKeepsModes) {
    SimplePath path;
    SimplePathVertex *f = nullptr, *a = nullptr, *l = nullptr;
    path.addTriple({0, 0}, f, {0, 0}, a, {0, 0}, l, SimplePathVertexTriple::Symmetric);
    path.addTriple({1, 0}, f, {1, 0}, a, {1, 0}, l, SimplePathVertexTriple::Cusp);
    SimplePathVertexTriple before;
    path.getTriple(0, before);

    std::list<SimplePathLocationTriple> const moved{
        {{5, 0}, {6, 0}, {7, 0}, SimplePathVertexTriple::Cusp},
        {{8, 0}, {9, 0}, {10, 0}, SimplePathVertexTriple::Smooth}};
    ASSERT_EQ(SimplePath::Success, path.setLocationTripleList(moved));
    SimplePathVertexTriple after;
    path.getTriple(0, after);
    EXPECT_EQ(before, after); // same vertex objects, same mode
    std::vector<SimplePathLocationTriple> const result = locationsOf(path);
    EXPECT_EQ((SimplePathLocationTriple{{5, 0}, {6, 0}, {7, 0}, SimplePathVertexTriple::Symmetric}),
              result[0]);
    EXPECT_EQ((SimplePathLocationTriple{{8, 0}, {9, 0}, {10, 0}, SimplePathVertexTriple::Cusp}), result[1]);

    std::list<SimplePathLocationTriple> const tooShort{retracted(3, 3)};
    EXPECT_EQ(SimplePath::Failure, path.setLocationTripleList(tooShort));
    EXPECT_EQ(result, locationsOf(path));
}

TEST(Construction, CircleUsesItsOwnHandleLength) {
    DPoint center(0, 0);
    SimplePath* circle = SimplePath::createCircleSP(center, 10.0);
    ASSERT_NE(nullptr, circle);
    EXPECT_EQ(1, circle->isClosedSimplePath());
    double const h = 0.27 * 10.0 * 2.0; // 5.4, not the usual 5.52
    auto const smooth = SimplePathVertexTriple::Smooth;
    EXPECT_EQ((std::vector<SimplePathLocationTriple>{{{-h, 10}, {0, 10}, {h, 10}, smooth},
                                                     {{10, h}, {10, 0}, {10, -h}, smooth},
                                                     {{h, -10}, {0, -10}, {-h, -10}, smooth},
                                                     {{-10, -h}, {-10, 0}, {-10, h}, smooth}}),
              locationsOf(*circle));
    delete circle;

    DPoint offCenter(100, -50);
    SimplePath* moved = SimplePath::createCircleSP(offCenter, 2.0);
    EXPECT_EQ(DPoint(100 + 1.08, -48), locationsOf(*moved)[0].last);
    delete moved;
}

TEST(ChangeInstruction, RecordsVerticesAsSetsAndPathsInOrder) {
    SimplePathChangeInstruction change;
    SimplePath a, b;
    SimplePathVertex* v = nullptr;
    a.addSingle(DPoint(0, 0), v);
    change.insertAdded(v);
    change.insertAdded(v);
    change.insertRemoved(v);
    change.insertAdded(&b);
    change.insertAdded(&a);
    change.insertRemoved(&a);

    SimplePathChangeInstruction const copy(change);
    std::set<SimplePathVertex*> added{nullptr};
    copy.simplePathVerticesAdded(added);
    EXPECT_EQ((std::set<SimplePathVertex*>{nullptr, v}), added); // appended to, not cleared
    std::list<PHashablePointer<SimplePath>> paths;
    copy.simplePathsAdded(paths);
    copy.simplePathsRemoved(paths);
    EXPECT_EQ((std::list<PHashablePointer<SimplePath>>{&b, &a, &a}), paths);
}
