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

// Until the path has editing members of its own, these tests rearrange triples through the list
// directly. The list belongs to a non-const path, so writing through it is well defined.
SimplePathTripleList& listOf(SimplePath& path) {
    return const_cast<SimplePathTripleList&>(path.getTripleList());
}

std::vector<SimplePathVertexTriple> triplesOf(SimplePath const& path) {
    return {path.getTripleList().begin(), path.getTripleList().end()};
}

SimplePath makePath(int n) {
    SimplePath path;
    for (int i = 0; i < n; ++i) {
        double const x = 10.0 * i;
        appendTriple(path, {x - 1, 1}, {x, 0}, {x + 1, -1}, static_cast<Mode>(i % 3));
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
    ASSERT_NE(nullptr, memento);
    EXPECT_EQ(5, memento->getClosed());
    auto const locations = locationsOf(path);
    auto location = locations.begin();
    ASSERT_EQ(3u, memento->getTriples().size());
    for (int i = 0; i < 3; ++i, ++location) {
        SimplePathVertexTriple const triple = path.getTripleList()[i];
        EXPECT_EQ(MementoTriple(triple.first, location->first, triple.anchor, location->anchor, triple.last,
                                location->last, triple.mode),
                  memento->getTriples()[static_cast<std::size_t>(i)]);
    }

    EXPECT_EQ(SimplePath::Failure, path.createMemento(nullptr));
    EXPECT_EQ(SimplePath::Failure, path.undo(nullptr));
    EXPECT_EQ(3, path.numTriples());

    SimplePath empty;
    auto const none = mementoOf(empty);
    ASSERT_NE(nullptr, none);
    EXPECT_TRUE(none->getTriples().empty());
}

TEST(PathMemento, UndoRestoresTheVeryVerticesAfterMovesInsertsAndDeletes) {
    SimplePath path = makePath(5);
    auto const before = triplesOf(path);
    auto const beforeLocations = locationsOf(path);
    auto const memento = mementoOf(path);

    // Move every vertex, change modes and the closed flag.
    std::list<SimplePathLocationTriple> moved;
    for (SimplePathLocationTriple entry : beforeLocations) {
        entry.anchor = {entry.anchor.x + 0.5, -7.0};
        entry.last = entry.anchor;
        moved.push_back(entry);
    }
    ASSERT_EQ(SimplePath::Success, path.setLocationTripleList(moved));
    listOf(path).setTripleMode(listOf(path).iteratorAt(1), SimplePathVertexTriple::Symmetric);
    path.setStrictClosed(1);
    // Delete triple 2 (its vertices stay alive: the memento still names them), turn the start of the
    // path, and insert a new triple at the front.
    listOf(path).remove(listOf(path).iteratorAt(2));
    listOf(path).cut_and_append(listOf(path).begin());
    SimplePathVertex* f = nullptr;
    SimplePathVertex* a = nullptr;
    SimplePathVertex* l = nullptr;
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

    // A memento can be put back more than once, also onto an emptied path.
    listOf(path).removeAll();
    ASSERT_EQ(SimplePath::Success, path.undo(memento.get()));
    EXPECT_EQ(before, triplesOf(path));
    EXPECT_EQ(beforeLocations, locationsOf(path));
}

TEST(PathMemento, TripleComparisons) {
    SimplePath path = makePath(2);
    auto const memento = mementoOf(path);
    MementoTriple const a = memento->getTriples()[0];
    MementoTriple const b = memento->getTriples()[1];
    EXPECT_EQ(a, a);
    EXPECT_NE(a, b);
    EXPECT_TRUE((a < b) != (b < a));
    EXPECT_EQ(a<b, b> a);
    EXPECT_FALSE(a < a);
    EXPECT_FALSE(a > a);

    // Every field takes part in equality and in the order, the outgoing handle included.
    std::vector<MementoTriple> variants(8, a);
    variants[1].first = b.first;
    variants[2].firstLocation.y += 1.0;
    variants[3].anchor = b.anchor;
    variants[4].anchorLocation.x -= 1.0;
    variants[5].last = b.last;
    variants[6].lastLocation.x += 1.0;
    variants[7].mode = static_cast<Mode>(a.mode + 1);
    for (std::size_t i = 1; i < variants.size(); ++i) {
        EXPECT_NE(a, variants[i]) << i;
        EXPECT_TRUE((a < variants[i]) != (variants[i] < a)) << i;
        EXPECT_EQ(a<variants[i], variants[i]> a) << i;
    }
    std::sort(variants.begin(), variants.end());
    EXPECT_EQ(variants.end(), std::adjacent_find(variants.begin(), variants.end())) << "all distinct";

    MementoTriple const defaulted;
    EXPECT_EQ(nullptr, defaulted.anchor);
    EXPECT_EQ(SimplePathVertexTriple::Cusp, defaulted.mode);
}
