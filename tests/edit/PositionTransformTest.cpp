#include <gtest/gtest.h>

#include <climits>
#include <list>
#include <memory>
#include <vector>

#include "simplepath/edit/CombineAdjacentSegmentsTransform.h"
#include "simplepath/edit/InsertAnchorsTransform.h"
#include "simplepath/edit/ReverseShiftPositionTransform.h"
#include "simplepath/edit/RotateTransform.h"
#include "simplepath/edit/SimplePathChangeInstruction.h"
#include "simplepath/edit/SimplePathVertexOpTransforms.h"
#include "simplepath/edit/SplitAnchorTransform.h"
#include "simplepath/edit/SplitSegmentTransform.h"
#include "simplepath/path/SimplePath.h"
#include "support/PositionPairs.h"

namespace {

using support::pairOn;

// Paths are only compared by address here; their contents do not matter.
SimplePath a, b, c, other;

struct Case {
    int index;
    double t;
    SimplePath* path;
    int expectedIndex;
    double expectedT;
};

// Maps each case's pair on path `a`; parameters that must stay exactly zero, or exactly non-zero, are told
// apart by the index or by DOUBLE_EQ's few-ulp window. Pairs on another path must pass untouched.
void check(SimplePathPositionTransform const& transform, std::vector<Case> const& cases) {
    for (Case const& c : cases) {
        SCOPED_TRACE(::testing::Message() << "(" << c.index << ", " << c.t << ")");
        auto const mapped = transform.map(pairOn(&a, c.index, c.t));
        EXPECT_TRUE(c.path == mapped.first.pointer && c.expectedIndex == mapped.second.getIndex());
        EXPECT_DOUBLE_EQ(c.expectedT, mapped.second.getParameter());
        EXPECT_EQ(c.index, transform.map(pairOn(&other, c.index, c.t)).second.getIndex());
    }
}

void checkDeleting(int closed, int k, int n, std::vector<Case> const& cases) {
    SCOPED_TRACE(::testing::Message() << "deleting " << k << " of " << n << (closed ? " closed" : " open"));
    std::unique_ptr<SimplePathPositionTransform> const transform(
        SimplePathVertexOpTransforms::createDeleteAnchorTransform(&a, closed,
                                                                  SimplePathTripleList::Iterator(), k, n));
    check(*transform, cases);
}

} // namespace

TEST(PositionTransform, MappingRules) {
    // Segment i -> m + n - 2 - i at 1 - t, anchor i -> m + n - 1 - i; only an exact zero is an anchor.
    check(ReverseShiftPositionTransform(&a, 4, &b, 5), {{1, 0.25, &b, 6, 0.75}, {1, 0.0, &b, 7, 0.0}});
    // Remainders are made non-negative, and the sum does not overflow.
    check(RotateTransform(&a, 1, 4), {{-6, 0.5, &a, 3, 0.5}, {INT_MAX, 0.5, &a, 0, 0.5}});
    check(InsertAnchorsTransform(&a, 2), {{2, 0.0, &a, 2, 0.0}, {2, 5e-324, &a, 3, 5e-324}});
    // A cut below 1e-6 sends the whole segment onto the new anchor; within 1e-9 of 1 the tail is kept,
    // not divided by ~0.
    check(SplitSegmentTransform(&a, 2, 0.25), {{2, 0.25, &a, 3, 0.0}, {2, 1e-300, &a, 2, 4e-300}});
    check(SplitSegmentTransform(&a, 2, 0.99e-6), {{2, 0.5, &a, 3, 0.0}});
    double const e30 = 1.0 / (1 << 30);
    check(SplitSegmentTransform(&a, 2, 1.0 - e30), {{2, 1.0 - e30 / 2, &a, 2, 1.0 - e30 / 2}});
    check(CombineAdjacentSegmentsTransform(&a, 1, 0.25), {{1, 0.4, &a, 0, 0.55}});
    // Within 1e-9 of the cut anchor a parameter still counts as the anchor, and is kept as it is.
    check(SplitAnchorTransform(&a, 2, &b, &c), {{2, 1e-9, &b, 2, 1e-9}, {2, 2e-9, &c, 0, 2e-9}});

    SimplePathRemap remap;
    remap.insert(&a, &c);
    remap.insert(&a, &b);
    std::unique_ptr<SimplePathPositionTransform> const remapped(
        SimplePathVertexOpTransforms::createSimplePathRefRemapTransform(remap));
    remap.insert(&other, &a);                 // the transform holds its own copy
    check(*remapped, {{1, 0.5, &c, 1, 0.5}}); // the first replacement recorded
}

// Deleting an inner anchor merges its two segments, each old one taking half of the new; an open path's
// end segments collapse onto the new end anchor; a closed path's first anchor is rotated to the middle,
// merged there and rotated back; the only anchor of a closed path must not rotate over zero segments.
TEST(PositionTransform, DeleteAnchorRules) {
    checkDeleting(0, 3, 6, {{2, 0.4, &a, 2, 0.2}, {3, 0.4, &a, 2, 0.7}, {4, 0.1, &a, 3, 0.1}});
    checkDeleting(0, 0, 4, {{0, 0.5, &a, 0, 0.0}, {2, 0.5, &a, 1, 0.5}});
    checkDeleting(1, 0, 4, {{3, 0.4, &a, 2, 0.2}, {0, 0.4, &a, 2, 0.7}, {1, 0.5, &a, 0, 0.5}});
    checkDeleting(1, 0, 1, {{0, 0.5, &a, 0, 0.5}});
    // A rotation over no segments is refused.
    EXPECT_FALSE(RotateTransform(&a, 1, 0).isValid());
    check(RotateTransform(&a, 1, 0), {{2, 0.5, &a, 2, 0.5}});
    EXPECT_EQ(nullptr, SimplePathVertexOpTransforms::createSplitClosedPathTransform(&a, 3, 0));
}

// Copies share the recorded transforms and each is freed once, by the last holder; recording into a copy
// leaves the original as it was. A removed path without a replacement translates to nothing.
TEST(ChangeInstruction, CopiesShareTransformsAndFreeEachOnce) {
    int deleted = 0;
    auto* twice = new support::CountedTransform(&deleted, 1);
    auto original = std::make_unique<SimplePathChangeInstruction>();
    EXPECT_FALSE(original->insertPositionTransform(nullptr));
    EXPECT_TRUE(original->insertPositionTransform(twice));
    EXPECT_TRUE(original->insertPositionTransform(new support::CountedTransform(&deleted, 10)));
    EXPECT_TRUE(original->insertPositionTransform(twice)); // applied again, owned once
    {
        SimplePathChangeInstruction copy(*original);
        copy.insertPositionTransform(new support::CountedTransform(&deleted, 100));
        EXPECT_EQ(112, copy.translate(pairOn(&a, 0, 0.5)).second.getIndex());
        EXPECT_EQ(12, original->translate(pairOn(&a, 0, 0.5)).second.getIndex());
        original.reset();
        EXPECT_EQ(0, deleted);
        SimplePathChangeInstruction const copyOfCopy(copy);
        std::list<support::PathPosition> pairs{pairOn(&a, 0, 0.5)}; // the list form, in place
        copyOfCopy.translate(pairs);
        EXPECT_EQ(112, pairs.front().second.getIndex());
    }
    EXPECT_EQ(3, deleted);
    SimplePathChangeInstruction change;
    change.insertRemoved(PHashablePointer<SimplePath>(&a));
    std::list<PHashablePointer<SimplePath>> out(1);
    change.translate(PHashablePointer<SimplePath>(&a), out);
    EXPECT_TRUE(out.empty());
}
