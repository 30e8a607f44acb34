// Capturing a path's vertex state and putting it back.

#include <gtest/gtest.h>

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
        EXPECT_EQ(SimplePath::Success, appendTriple(path, {10.0 * i - 1, 1}, {10.0 * i, 0},
                                                    {10.0 * i + 1, -1}, static_cast<Mode>(i % 3)));
    }
    return path;
}

std::unique_ptr<SimplePathMemento> mementoOf(SimplePath const& path) {
    SimplePathMemento* memento = nullptr;
    EXPECT_EQ(SimplePath::Success, path.createMemento(&memento));
    return std::unique_ptr<SimplePathMemento>(memento);
}

} // namespace

TEST(PathMemento, UndoRestoresTheVeryVerticesAfterMovesInsertsAndDeletes) {
    SimplePath path = makePath(5);
    path.setStrictClosed(5);
    auto const before = triplesOf(path);
    auto const beforeLocations = locationsOf(path);
    auto const memento = mementoOf(path);

    std::list<SimplePathLocationTriple> moved(beforeLocations.begin(), beforeLocations.end());
    for (SimplePathLocationTriple& entry : moved) {
        entry.anchor = entry.last = {entry.anchor.x + 0.5, -7.0};
    }
    ASSERT_EQ(SimplePath::Success, path.setLocationTripleList(moved));
    listOf(path).setTripleMode(listOf(path).iteratorAt(1), SimplePathVertexTriple::Symmetric);
    path.setStrictClosed(0);
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
    EXPECT_EQ(5, path.isClosedSimplePath());
    // The inserted triple left the path without being deleted; its maker still owns it.
    SimplePathPosition unused;
    EXPECT_EQ(SimplePath::Failure, path.getAnchorPosition(a, unused));
    delete f;
    delete a;
    delete l;

    EXPECT_EQ(SimplePath::Failure, path.createMemento(nullptr));
    EXPECT_EQ(SimplePath::Failure, path.undo(nullptr));
    listOf(path).removeAll(); // a memento can be put back more than once, also onto an emptied path
    ASSERT_EQ(SimplePath::Success, path.undo(memento.get()));
    EXPECT_EQ(before, triplesOf(path));
    EXPECT_EQ(beforeLocations, locationsOf(path));
}
