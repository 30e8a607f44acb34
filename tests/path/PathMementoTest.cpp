// Capturing a path's vertex state and putting it back.

#include <gtest/gtest.h>

#include <algorithm>
#include <list>
#include <memory>
#include <vector>

#include "simplepath/path/SimplePath.h"
#include "simplepath/path/SimplePathMemento.h"
#include "support/PathHelpers.h"

namespace {

using Mode = SimplePathVertexTriple::VertexTripleMode;

// The tests rearrange triples through the list of a non-const path, which is well defined.
SimplePathTripleList& listOf(SimplePath& path) {
    return const_cast<SimplePathTripleList&>(path.getTripleList());
}

std::vector<SimplePathVertexTriple> triplesOf(SimplePath const& path) {
    return {path.getTripleList().begin(), path.getTripleList().end()};
}

SimplePath makePath(int n) {
    SimplePath path;
    for (int i = 0; i < n; ++i) {
        appendTriple(path, {10.0 * i - 1, 1}, {10.0 * i, 0}, {10.0 * i + 1, -1}, static_cast<Mode>(i % 3));
    }
    return path;
}

std::unique_ptr<SimplePathMemento> mementoOf(SimplePath const& path) {
    SimplePathMemento* memento = nullptr;
    EXPECT_EQ(SimplePath::Success, path.createMemento(&memento));
    return std::unique_ptr<SimplePathMemento>(memento);
}

} // namespace

TEST(PathMemento, RecordsVerticesLocationsModesAndClosedFlag) {
    SimplePath path = makePath(3);
    path.setStrictClosed(5);
    auto const memento = mementoOf(path);
    EXPECT_EQ(5, memento->getClosed());
    auto const locations = locationsOf(path);
    ASSERT_EQ(3u, memento->getTriples().size());
    for (std::size_t i = 0; i < 3; ++i) {
        SimplePathVertexTriple const t = path.getTripleList()[static_cast<int>(i)];
        SimplePathLocationTriple const& l = locations[i];
        EXPECT_EQ(MementoTriple(t.first, l.first, t.anchor, l.anchor, t.last, l.last, t.mode),
                  memento->getTriples()[i]);
    }
    EXPECT_EQ(SimplePath::Failure, path.createMemento(nullptr));
    EXPECT_EQ(SimplePath::Failure, path.undo(nullptr));
    EXPECT_EQ(3, path.numTriples());
}

TEST(PathMemento, UndoRestoresTheVeryVerticesAfterMovesInsertsAndDeletes) {
    SimplePath path = makePath(5);
    auto const before = triplesOf(path);
    auto const beforeLocations = locationsOf(path);
    auto const memento = mementoOf(path);

    std::list<SimplePathLocationTriple> moved(beforeLocations.begin(), beforeLocations.end());
    for (SimplePathLocationTriple& entry : moved) {
        entry.anchor = entry.last = {entry.anchor.x + 0.5, -7.0};
    }
    ASSERT_EQ(SimplePath::Success, path.setLocationTripleList(moved));
    listOf(path).setTripleMode(listOf(path).iteratorAt(1), SimplePathVertexTriple::Symmetric);
    path.setStrictClosed(1);
    // Triple 2 leaves the path (its vertices stay alive: the memento names them), the start turns, and a
    // new triple goes in at the front.
    listOf(path).remove(listOf(path).iteratorAt(2));
    listOf(path).cut_and_append(listOf(path).begin());
    SimplePathVertex *f = nullptr, *a = nullptr, *l = nullptr;
    ASSERT_EQ(SimplePath::Success,
              path.insertTriple({1, 1}, f, {2, 2}, a, {3, 3}, l, SimplePathVertexTriple::Cusp, 0));

    ASSERT_EQ(SimplePath::Success, path.undo(memento.get()));
    EXPECT_EQ(before, triplesOf(path));
    EXPECT_EQ(beforeLocations, locationsOf(path));
    EXPECT_EQ(0, path.isClosedSimplePath());
    // The inserted triple left the path without being deleted; its maker still owns it.
    SimplePathPosition unused;
    EXPECT_EQ(SimplePath::Failure, path.getAnchorPosition(a, unused));
    delete f;
    delete a;
    delete l;

    listOf(path).removeAll(); // a memento can be put back more than once, also onto an emptied path
    ASSERT_EQ(SimplePath::Success, path.undo(memento.get()));
    EXPECT_EQ(before, triplesOf(path));
    EXPECT_EQ(beforeLocations, locationsOf(path));
}

TEST(PathMemento, EveryFieldTakesPartInEqualityAndOrder) {
    SimplePath path = makePath(2);
    auto const memento = mementoOf(path);
    MementoTriple const a = memento->getTriples()[0], b = memento->getTriples()[1];
    std::vector<MementoTriple> variants(8, a);
    variants[1].first = b.first;
    variants[2].firstLocation.y += 1.0;
    variants[3].anchor = b.anchor;
    variants[4].anchorLocation.x -= 1.0;
    variants[5].last = b.last;
    variants[6].lastLocation.x += 1.0;
    variants[7].mode = static_cast<Mode>(a.mode + 1);
    EXPECT_FALSE(a < a || a > a || a != a);
    for (std::size_t i = 1; i < variants.size(); ++i) {
        EXPECT_NE(a, variants[i]) << i;
        EXPECT_TRUE((a < variants[i]) != (variants[i] < a)) << i;
        EXPECT_EQ(a<variants[i], variants[i]> a) << i;
    }
    std::sort(variants.begin(), variants.end());
    EXPECT_EQ(variants.end(), std::adjacent_find(variants.begin(), variants.end())) << "all distinct";
}
