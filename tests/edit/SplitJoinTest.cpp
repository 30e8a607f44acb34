#include <gtest/gtest.h>

#include "EditingHelpers.h"

using namespace editing;

// Guards "Split and join read the given vertices once, before the triple lists they may point into
// change": the vertices are passed as references into the very lists that the split and the join empty.
// Both keep every vertex in exactly one place; the split keeps held positions on the drawn curve.
TEST(SplitJoin, VerticesGivenByReferenceIntoTheTripleListsAreReadFirst) {
    SimplePath path = wiggly(4), first, second;
    PHashablePointer<SimplePath> firstPath(&first), secondPath(&second);
    SimplePathVertexTriple const cutTriple = path.getTripleList()[1];
    SimplePathVertex* const cut = cutTriple.anchor;
    std::vector<Loc> const before = locationsOf(path);
    auto const held = holdPositions({&path});
    auto const vertices = verticesOf({&path});
    SimplePathChangeInstruction split;
    ASSERT_EQ(SimplePath::Success,
              path.splitVertex(path.getTripleList()[1].anchor, split, firstPath, secondPath));
    EXPECT_EQ((Vertices{cut}), removed(split));
    // The pieces keep the curve: the first ends at the cut with the incoming handle (its idle outgoing
    // handle at the same place), the second starts there with the outgoing handle.
    Loc const& at = before[1];
    EXPECT_EQ((std::vector<Loc>{before[0], Loc(at.first, at.anchor, at.first, at.mode)}), locationsOf(first));
    EXPECT_EQ((std::vector<Loc>{Loc(at.last, at.anchor, at.last, at.mode), before[2], before[3]}),
              locationsOf(second));
    // The handles that shape the pieces are the very vertices the path had.
    EXPECT_EQ(cutTriple.first, first.getTripleList()[1].first);
    EXPECT_EQ(cutTriple.last, second.getTripleList()[0].last);
    expectExactOwnership(vertices, {&path, &first, &second}, split);
    expectFollow(held, split);
    freeRemoved(split);

    SimplePath joined;
    PHashablePointer<SimplePath> result(&joined);
    EXPECT_EQ(SimplePath::Success, second.translate(DVector(5, 40)));
    SimplePathVertex *const end1 = first.getTripleList()[1].anchor, *const start2 =
                                                                        second.getTripleList()[0].anchor;
    auto const parts = verticesOf({&first, &second});
    SimplePathChangeInstruction join;
    ASSERT_EQ(SimplePath::Success, SimplePath::join(firstPath, first.getTripleList()[1].anchor, secondPath,
                                                    second.getTripleList()[0].anchor, join, result));
    ASSERT_EQ(5, joined.numTriples());
    EXPECT_EQ(end1, joined.getTripleList()[1].anchor);
    EXPECT_EQ(start2, joined.getTripleList()[2].anchor);
    expectExactOwnership(parts, {&first, &second, &joined}, join);
}

// Ends at exactly one place merge: vertex1 stays and takes vertex2's far handle, on its incoming side when
// path1 was reversed, deliberately; vertex2's triple is deleted.
TEST(Join, TouchingEndsMergeAndAReversedFirstPathTakesTheFarHandleIncoming) {
    SimplePath a = wiggly(3), b = wiggly(3), joined;
    SimplePathVertexTriple const keep = a.getTripleList()[0], gone = b.getTripleList()[0];
    DPoint const meet = keep.anchor->getLocation();
    EXPECT_EQ(SimplePath::Success, b.translate(meet - gone.anchor->getLocation()));
    PHashablePointer<SimplePath> p1(&a), p2(&b), result(&joined);
    SimplePathChangeInstruction change;
    ASSERT_EQ(SimplePath::Success, SimplePath::join(p1, keep.anchor, p2, gone.anchor, change, result));
    ASSERT_EQ(5, joined.numTriples());
    EXPECT_EQ((Loc{gone.last->getLocation(), meet, meet, keep.mode}), locationsOf(joined)[2]);
    EXPECT_EQ((Vertices{gone.first, gone.anchor, gone.last}), removed(change));
    freeRemoved(change);
}
