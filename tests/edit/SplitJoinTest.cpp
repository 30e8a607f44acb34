#include <gtest/gtest.h>

#include <list>
#include <vector>

#include "EditingHelpers.h"

using namespace editing;

// An open path falls apart at the anchor: the split triple's own handles stay with the pieces; the
// duplicated anchor and the idle handles are copies made by the path, lying on the split triple's own
// handles, deliberately. A closed path is rotated to start at the anchor and opened there, ending in a
// duplicate of it; only the rotation is recorded. (The caller's own vertices are taken by the redo of the
// split operation.)
TEST(SplitVertex, OpenPathFallsApartClosedPathOpensAtTheAnchor) {
    for (int k : {0, 2, 3, 10, 12}) { // closed from 10 on
        SCOPED_TRACE(k);
        bool const closed = k >= 10;
        int const cut = k % 10;
        SimplePath path = wiggly(4, closed), first, second;
        PHashablePointer<SimplePath> firstPath(&first), secondPath(&second);
        std::vector<SimplePathVertexTriple> const order(path.getTripleList().begin(),
                                                        path.getTripleList().end());
        SimplePathVertexTriple const split = order[static_cast<std::size_t>(cut)];
        auto const held = holdPositions({&path});
        auto const before = verticesOf({&path});
        SimplePathChangeInstruction change;
        ASSERT_EQ(SimplePath::Success, path.splitVertex(split.anchor, change, firstPath, secondPath));
        EXPECT_EQ(1u, change.numPositionTransforms());
        expectFollow(held, change);
        if (closed) {
            EXPECT_EQ(0, path.isClosedSimplePath());
            ASSERT_EQ(5, path.numTriples());
            for (int i = 0; i < 4; ++i) {
                EXPECT_EQ(order[static_cast<std::size_t>((i + cut) % 4)], path.getTripleList()[i]);
            }
            EXPECT_EQ(locationsOf(path)[0], locationsOf(path)[4]);
            EXPECT_EQ(15u, verticesOf({&path}).size()); // the duplicate is made of new vertices
            EXPECT_EQ(0, first.numTriples() + second.numTriples());
            EXPECT_TRUE(added(change).empty() && removed(change).empty());
            EXPECT_EQ(Paths{&path}, translated(change, &path));
            continue;
        }
        ASSERT_EQ(cut + 1, first.numTriples());
        ASSERT_EQ(4 - cut, second.numTriples());
        SimplePathVertexTriple const end = first.getTripleList()[cut], start = second.getTripleList()[0];
        EXPECT_EQ(SimplePathVertexTriple(split.first, end.anchor, end.last, split.mode), end);
        EXPECT_EQ(SimplePathVertexTriple(start.first, start.anchor, split.last, split.mode), start);
        EXPECT_EQ(split.first->getLocation(), end.last->getLocation());
        EXPECT_EQ(split.last->getLocation(), start.first->getLocation());
        EXPECT_EQ((Vertices{split.anchor}), removed(change));
        expectExactOwnership(before, {&path, &first, &second}, change);
        EXPECT_EQ(Paths{&path}, removedPaths(change));
        EXPECT_EQ((Paths{&first, &second}), translated(change, &path));
        freeRemoved(change);
    }
}

// Separate ends, even 1e-12 apart, are connected by a straight segment. Ends at exactly one place merge:
// vertex1 stays and takes vertex2's far handle, on its outgoing side when path1 ran into it in order, on
// its incoming side when path1 was reversed.
TEST(Join, EndsConnectStraightOrMergeWhenTheyMeetExactly) {
    for (int ends = 0; ends < 12; ++ends) {
        SCOPED_TRACE(ends);
        bool const oneAtEnd = ends & 1, twoAtStart = ends & 2, touching = ends / 4 == 1,
                   nearly = ends / 4 == 2;
        SimplePath a = wiggly(3), b = wiggly(3), joined;
        SimplePathVertexTriple const keep = a.getTripleList()[oneAtEnd ? 2 : 0],
                                     gone = b.getTripleList()[twoAtStart ? 0 : 2];
        DPoint const meet = keep.anchor->getLocation();
        DVector const apart(touching ? 0.0 : nearly ? 1e-12 : 5.0, touching || nearly ? 0.0 : 40.0);
        EXPECT_EQ(SimplePath::Success, b.translate(meet - gone.anchor->getLocation() + apart));
        DPoint const far = (twoAtStart ? gone.last : gone.first)->getLocation();
        PHashablePointer<SimplePath> p1(&a), p2(&b), result(&joined);
        auto const held = holdPositions({&a, &b});
        auto const before = verticesOf({&a, &b});
        SimplePathChangeInstruction change;
        ASSERT_EQ(SimplePath::Success, SimplePath::join(p1, keep.anchor, p2, gone.anchor, change, result));

        ASSERT_EQ(touching ? 5 : 6, joined.numTriples());
        auto const locations = locationsOf(joined);
        EXPECT_EQ(keep.anchor, joined.getTripleList()[2].anchor);
        if (touching) {
            Loc const merged = oneAtEnd ? Loc{keep.first->getLocation(), meet, far, keep.mode}
                                        : Loc{far, meet, meet, keep.mode};
            EXPECT_EQ(merged, locations[2]);
            EXPECT_EQ((Vertices{gone.first, gone.anchor, gone.last}), removed(change));
        } else { // the connecting segment is straight
            EXPECT_TRUE(locations[2].anchor == locations[2].last &&
                        locations[3].anchor == locations[3].first);
            EXPECT_TRUE(removed(change).empty());
        }
        EXPECT_TRUE(added(change).empty());
        expectExactOwnership(before, {&a, &b, &joined}, change);
        EXPECT_EQ(Paths{&joined}, translated(change, &a));
        EXPECT_EQ(Paths{&joined}, translated(change, &b));
        EXPECT_EQ(touching ? 3u : 2u, change.numPositionTransforms());
        // A merge folds path2's segment next to vertex2 into the (empty) connecting one, at half the
        // parameter range each: points of that segment, and vertex2's, move. When path1 was reversed the
        // merged anchor's incoming handle changes too, moving path1's segment next to it.
        expectFollow(held, change, [&](Pair const& pair) {
            int const i = pair.second.getIndex();
            bool const inside = pair.second.getParameter() != 0.0;
            return !touching || (pair.first == &b ? i != (twoAtStart ? 0
                                                          : inside   ? 1
                                                                     : 2)
                                                  : oneAtEnd || i != 0 || !inside);
        });
        freeRemoved(change);
    }
}

// Guards "Split and join read the given vertices once, before the triple lists they may point into
// change": the vertices are passed as references into the very lists that the split and the join empty.
TEST(SplitJoin, VerticesGivenByReferenceIntoTheTripleListsAreReadFirst) {
    SimplePath path = wiggly(4), first, second;
    PHashablePointer<SimplePath> firstPath(&first), secondPath(&second);
    SimplePathVertex* const cut = path.getTripleList()[1].anchor;
    SimplePathChangeInstruction split;
    ASSERT_EQ(SimplePath::Success,
              path.splitVertex(path.getTripleList()[1].anchor, split, firstPath, secondPath));
    EXPECT_EQ((Vertices{cut}), removed(split));
    freeRemoved(split);

    SimplePath joined;
    PHashablePointer<SimplePath> result(&joined);
    EXPECT_EQ(SimplePath::Success, second.translate(DVector(5, 40)));
    SimplePathVertex *const end1 = first.getTripleList()[1].anchor, *const start2 =
                                                                        second.getTripleList()[0].anchor;
    SimplePathChangeInstruction join;
    ASSERT_EQ(SimplePath::Success, SimplePath::join(firstPath, first.getTripleList()[1].anchor, secondPath,
                                                    second.getTripleList()[0].anchor, join, result));
    ASSERT_EQ(5, joined.numTriples());
    EXPECT_EQ(end1, joined.getTripleList()[1].anchor);
    EXPECT_EQ(start2, joined.getTripleList()[2].anchor);
}
