#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "simplepath/edit/CompositeTransform.h"
#include "simplepath/edit/NullTransform.h"
#include "simplepath/edit/SimplePathChangeInstruction.h"
#include "simplepath/edit/SimplePathVertexOpTransforms.h"
#include "simplepath/path/SimplePath.h"
#include "support/PositionPairs.h"

namespace {

using support::pairOn;

SimplePath a, first, second;

std::pair<int, double> on(SimplePath* path, support::PathPosition const& pair) {
    EXPECT_EQ(path, pair.first.pointer);
    return {pair.second.getIndex(), pair.second.getParameter()};
}

SimplePathChangeInstruction deleting(int closed, int k, int n) {
    SimplePathChangeInstruction change;
    change.insertPositionTransform(SimplePathVertexOpTransforms::createDeleteAnchorTransform(
        &a, closed, SimplePathTripleList::Iterator(), k, n));
    return change;
}

} // namespace

TEST(VertexOpTransforms, InsertingAndSplittingMoveHeldPositions) {
    SimplePathPosition at;
    at.setValues(2, 0.25);
    SimplePathChangeInstruction insert;
    insert.insertPositionTransform(SimplePathVertexOpTransforms::createAddAnchorAtPositionTransform(&a, at));
    EXPECT_EQ(3, insert.translate(pairOn(&a, 2, 0.5)).second.getIndex());
    EXPECT_DOUBLE_EQ(1.0 / 3.0, insert.translate(pairOn(&a, 2, 0.5)).second.getParameter());
    EXPECT_EQ((std::pair<int, double>{2, 0.8}), on(&a, insert.translate(pairOn(&a, 2, 0.2))));
    EXPECT_EQ((std::pair<int, double>{6, 0.3}), on(&a, insert.translate(pairOn(&a, 5, 0.3))));

    SimplePathChangeInstruction insertTriple;
    insertTriple.insertPositionTransform(
        SimplePathVertexOpTransforms::createSimplePathInsertVerticesTransform(&a, 1));
    EXPECT_EQ((std::pair<int, double>{2, 0.5}), on(&a, insertTriple.translate(pairOn(&a, 1, 0.5))));

    SimplePathChangeInstruction split;
    split.insertPositionTransform(
        SimplePathVertexOpTransforms::createSplitAnchorTransform(&a, 2, &first, &second));
    EXPECT_EQ((std::pair<int, double>{2, 0.0}), on(&first, split.translate(pairOn(&a, 2, 0.0))));
    EXPECT_EQ((std::pair<int, double>{0, 0.1}), on(&second, split.translate(pairOn(&a, 2, 0.1))));

    // A closed path of four opened at anchor 2 starts there: shift n - k = 2.
    SimplePathChangeInstruction open;
    EXPECT_TRUE(
        open.insertPositionTransform(SimplePathVertexOpTransforms::createSplitClosedPathTransform(&a, 2, 4)));
    EXPECT_EQ((std::pair<int, double>{0, 0.0}), on(&a, open.translate(pairOn(&a, 2, 0.0))));
    EXPECT_EQ((std::pair<int, double>{3, 0.5}), on(&a, open.translate(pairOn(&a, 1, 0.5))));
    EXPECT_EQ((std::pair<int, double>{2, 0.0}), on(&a, open.translate(pairOn(&a, 0, 0.0))));

    SimplePathRemap remap;
    remap.insert(&a, &second);
    auto* remapTransform = SimplePathVertexOpTransforms::createSimplePathRefRemapTransform(remap);
    remap.insert(&second, &first);
    EXPECT_EQ(&second, remapTransform->map(pairOn(&a, 1, 0.5)).first.pointer);
    EXPECT_EQ(&second, remapTransform->map(pairOn(&second, 1, 0.5)).first.pointer);
    delete remapTransform;
}

TEST(VertexOpTransforms, ClosedSplitWithoutSegmentsIsRefused) {
    EXPECT_EQ(nullptr, SimplePathVertexOpTransforms::createSplitClosedPathTransform(&a, 3, 0));
    SimplePathChangeInstruction change;
    EXPECT_FALSE(change.insertPositionTransform(
        SimplePathVertexOpTransforms::createSplitClosedPathTransform(&a, 0, 0)));
    EXPECT_EQ(0u, change.numPositionTransforms());
}

TEST(VertexOpTransforms, DeleteAnchorExamples) {
    // Inner anchor 3: the segments on either side share the new one half and half.
    SimplePathChangeInstruction const inner = deleting(0, 3, 6);
    EXPECT_EQ((std::pair<int, double>{2, 0.2}), on(&a, inner.translate(pairOn(&a, 2, 0.4))));
    EXPECT_EQ((std::pair<int, double>{2, 0.7}), on(&a, inner.translate(pairOn(&a, 3, 0.4))));

    // The single vertex of a closed path: nothing survives, and no rotation over zero segments is made.
    SimplePathPositionTransform* lone = SimplePathVertexOpTransforms::createDeleteAnchorTransform(
        &a, 1, SimplePathTripleList::Iterator(), 0, 1);
    EXPECT_NE(nullptr, dynamic_cast<NullTransform*>(lone));
    delete lone;
    // An index outside the path deletes nothing and moves nothing.
    for (int k : {-1, 4, 7}) {
        EXPECT_EQ((std::pair<int, double>{2, 0.4}), on(&a, deleting(1, k, 4).translate(pairOn(&a, 2, 0.4))));
    }
    // The first anchor of a path is handled by a three- or two-step composite.
    SimplePathPositionTransform* closedFirst = SimplePathVertexOpTransforms::createDeleteAnchorTransform(
        &a, 1, SimplePathTripleList::Iterator(), 0, 4);
    ASSERT_NE(nullptr, dynamic_cast<CompositeTransform*>(closedFirst));
    EXPECT_EQ(3u, dynamic_cast<CompositeTransform*>(closedFirst)->size());
    delete closedFirst;
}

// Independent check of all four deletion cases: anchors are tracked by identity through the deletion
// (the surviving triples keep their order), and every held position must end up on the same anchors,
// or the same segment between them, on the shorter path.
TEST(VertexOpTransforms, DeleteAnchorKeepsPositionsOnTheirAnchorsAndSegments) {
    double const t = 0.4;
    for (int closed : {0, 1}) {
        for (int n = closed ? 2 : 1; n <= 6; ++n) {
            for (int k = 0; k < n; ++k) {
                SCOPED_TRACE(::testing::Message() << "closed " << closed << ", n " << n << ", k " << k);
                SimplePathChangeInstruction const change = deleting(closed, k, n);
                std::vector<int> anchors; // old anchor numbers in the new path's order
                for (int j = 0; j < n; ++j) {
                    if (j != k) {
                        anchors.push_back(j);
                    }
                }
                auto newIndex = [&](int j) {
                    return static_cast<int>(std::find(anchors.begin(), anchors.end(), j) - anchors.begin());
                };
                int const before = (k + n - 1) % n; // the anchor before the deleted one (closed, or inner)
                bool const inner = closed || (k > 0 && k < n - 1);
                auto anchorGoesTo = [&](int j) -> std::pair<int, double> {
                    if (j != k) {
                        return {newIndex(j), 0.0};
                    }
                    if (inner) {
                        return {newIndex(before), 0.5};
                    }
                    return {k == 0 ? 0 : n - 2, 0.0}; // an end anchor falls onto its neighbour
                };
                for (int j = 0; j < n; ++j) {
                    EXPECT_EQ(anchorGoesTo(j), on(&a, change.translate(pairOn(&a, j, 0.0))))
                        << "anchor " << j;
                }
                if (closed) { // the end position is anchor 0 reached again
                    std::pair<int, double> end = anchorGoesTo(0);
                    if (k != 0) {
                        end.first = n - 1;
                    }
                    EXPECT_EQ(end, on(&a, change.translate(pairOn(&a, n, 0.0))));
                }
                int const segments = closed ? n : n - 1;
                for (int i = 0; i < segments; ++i) {
                    int const next = (i + 1) % n;
                    std::pair<int, double> expected{newIndex(i), t};
                    if (i == k || next == k) {
                        if (inner) {
                            expected = {newIndex(before), next == k ? t * 0.5 : 0.5 + t * 0.5};
                        } else {
                            expected = anchorGoesTo(k);
                        }
                    }
                    auto const got = on(&a, change.translate(pairOn(&a, i, t)));
                    EXPECT_EQ(expected.first, got.first) << "segment " << i;
                    EXPECT_DOUBLE_EQ(expected.second, got.second) << "segment " << i;
                }
            }
        }
    }
}
