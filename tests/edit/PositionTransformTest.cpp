#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>
#include <list>
#include <vector>

#include "simplepath/edit/AbsorbSegmentTransform.h"
#include "simplepath/edit/CombineAdjacentSegmentsTransform.h"
#include "simplepath/edit/CompositeTransform.h"
#include "simplepath/edit/InsertAnchorsTransform.h"
#include "simplepath/edit/NullTransform.h"
#include "simplepath/edit/ReverseShiftPositionTransform.h"
#include "simplepath/edit/RotateTransform.h"
#include "simplepath/edit/ShiftPositionTransform.h"
#include "simplepath/edit/SimplePathRefRemapTransform.h"
#include "simplepath/edit/SplitAnchorTransform.h"
#include "simplepath/edit/SplitSegmentTransform.h"
#include "simplepath/path/SimplePath.h"
#include "support/PositionPairs.h"

namespace {

using support::pairOn;

// Paths are only compared by address here; their contents do not matter.
SimplePath a, b, c, other;

struct Row {
    int index;
    double parameter;
    SimplePath* expectedPath;
    int expectedIndex;
    double expectedParameter;
};

// Checks each row on path `from`; parameters must match to within `tolerance` (0: exactly). Also checks
// that pairs on a path the transform does not name come back untouched.
void expectRows(SimplePathPositionTransform const& transform, SimplePath* from, std::vector<Row> const& rows,
                double tolerance = 0.0) {
    for (Row const& row : rows) {
        SCOPED_TRACE(::testing::Message() << "(" << row.index << ", " << row.parameter << ")");
        auto const mapped = transform.map(pairOn(from, row.index, row.parameter));
        EXPECT_EQ(row.expectedPath, mapped.first.pointer);
        EXPECT_EQ(row.expectedIndex, mapped.second.getIndex());
        if (tolerance == 0.0) {
            EXPECT_EQ(row.expectedParameter, mapped.second.getParameter());
        } else {
            EXPECT_NEAR(row.expectedParameter, mapped.second.getParameter(), tolerance);
        }
        auto const elsewhere = transform.map(pairOn(&other, row.index, row.parameter));
        EXPECT_EQ(&other, elsewhere.first.pointer);
        EXPECT_EQ(row.index, elsewhere.second.getIndex());
        EXPECT_EQ(row.parameter, elsewhere.second.getParameter());
    }
}

} // namespace

TEST(PositionTransform, NullTransformKeepsEveryPair) {
    expectRows(NullTransform(), &a, {{0, 0.0, &a, 0, 0.0}, {3, 0.75, &a, 3, 0.75}, {-1, 0.0, &a, -1, 0.0}});
}

TEST(PositionTransform, ShiftMovesOntoDestination) {
    expectRows(ShiftPositionTransform(&a, &b, 3), &a,
               {{0, 0.0, &b, 3, 0.0}, {2, 0.5, &b, 5, 0.5}, {-1, 0.0, &b, 2, 0.0}});
    // Shifting within one path, as when the first anchor of an open path is deleted.
    expectRows(ShiftPositionTransform(&a, &a, -1), &a, {{1, 0.25, &a, 0, 0.25}, {0, 0.0, &a, -1, 0.0}});
    // The destination's pairs are not shifted again: only the source is matched.
    expectRows(ShiftPositionTransform(&a, &b, 3), &b, {{1, 0.5, &b, 1, 0.5}});
}

TEST(PositionTransform, ReverseShiftMirrorsAnchorsAndSegments) {
    // Four triples reversed into an empty path: anchor i -> 3 - i, segment i -> 2 - i at 1 - t.
    expectRows(ReverseShiftPositionTransform(&a, 4, &b, 0), &a,
               {{1, 0.25, &b, 1, 0.75},
                {1, 0.0, &b, 2, 0.0},
                {0, 0.0, &b, 3, 0.0},
                {3, 0.0, &b, 0, 0.0},
                {0, 0.5, &b, 2, 0.5},
                {2, 0.9, &b, 0, 1.0 - 0.9},
                // Only an exact 0.0 is an anchor; -0.0 equals it, the smallest denormal does not.
                {2, -0.0, &b, 1, 0.0},
                {2, 5e-324, &b, 0, 1.0}});
    // Appended behind five triples already in the destination.
    expectRows(ReverseShiftPositionTransform(&a, 4, &b, 5), &a,
               {{1, 0.25, &b, 6, 0.75}, {3, 0.0, &b, 5, 0.0}});
}

TEST(PositionTransform, RotateWrapsIntoRangeWhateverTheSign) {
    expectRows(RotateTransform(&a, 1, 4), &a,
               {{0, 0.3, &a, 1, 0.3}, {3, 0.3, &a, 0, 0.3}, {4, 0.0, &a, 1, 0.0}, {-6, 0.5, &a, 3, 0.5}});
    // Negative shifts and dividends: a plain % would give negative segments here.
    expectRows(RotateTransform(&a, -1, 4), &a, {{0, 0.5, &a, 3, 0.5}, {2, 0.0, &a, 1, 0.0}});
    expectRows(RotateTransform(&a, -9, 4), &a, {{0, 0.5, &a, 3, 0.5}, {1, 0.0, &a, 0, 0.0}});
    expectRows(RotateTransform(&a, 2, 5), &a, {{3, 0.5, &a, 0, 0.5}, {-3, 0.5, &a, 4, 0.5}});
    // Extreme indices neither overflow nor leave the range.
    expectRows(RotateTransform(&a, 1, 4), &a, {{INT_MAX, 0.5, &a, 0, 0.5}, {INT_MIN, 0.5, &a, 1, 0.5}});
    expectRows(RotateTransform(&a, INT_MIN, -1), &a, {{0, 0.5, &a, 0, 0.5}});
}

TEST(PositionTransform, RotateWithoutSegmentsIsRefusedNotDivided) {
    RotateTransform const refused(&a, 1, 0);
    EXPECT_FALSE(refused.isValid());
    EXPECT_TRUE(RotateTransform(&a, 1, 4).isValid());
    expectRows(refused, &a, {{2, 0.5, &a, 2, 0.5}, {0, 0.0, &a, 0, 0.0}});
}

TEST(PositionTransform, InsertAnchorsMovesInteriorAndLaterSegments) {
    expectRows(InsertAnchorsTransform(&a, 2), &a,
               {{2, 0.0, &a, 2, 0.0},
                {2, 0.5, &a, 3, 0.5},
                {2, 5e-324, &a, 3, 5e-324},
                {3, 0.0, &a, 4, 0.0},
                {1, 0.9, &a, 1, 0.9},
                {-1, 0.0, &a, -1, 0.0}});
}

TEST(PositionTransform, SplitSegmentRescalesOntoThePieces) {
    expectRows(SplitSegmentTransform(&a, 2, 0.25), &a,
               {{2, 0.5, &a, 3, 1.0 / 3.0},
                {2, 0.2, &a, 2, 0.8},
                {2, 0.25, &a, 3, 0.0},
                {2, 0.0, &a, 2, 0.0},
                {2, 1e-300, &a, 2, 4e-300},
                {5, 0.3, &a, 6, 0.3},
                {3, 0.0, &a, 4, 0.0},
                {1, 0.7, &a, 1, 0.7}},
               1e-15);
}

TEST(PositionTransform, SplitSegmentNearTheStartGoesToTheNewAnchor) {
    // Below 1e-6 every interior point of the cut segment lands on the new anchor; the old anchor stays.
    expectRows(SplitSegmentTransform(&a, 2, 0.99e-6), &a,
               {{2, 0.5, &a, 3, 0.0}, {2, 0.5e-6, &a, 3, 0.0}, {2, 0.0, &a, 2, 0.0}, {4, 0.5, &a, 5, 0.5}});
    expectRows(SplitSegmentTransform(&a, 2, -0.5), &a, {{2, 0.5, &a, 3, 0.0}});
    // At 1e-6 itself the segment is rescaled.
    expectRows(SplitSegmentTransform(&a, 2, 1e-6), &a, {{2, 0.5e-6, &a, 2, 0.5}, {2, 0.5, &a, 3, 0.4999995}},
               1e-12);
}

TEST(PositionTransform, SplitSegmentNearTheEndLeavesTheTailAlone) {
    // 1 - s within 1e-9 of zero: a point at or after the cut is returned unchanged, not divided by ~0.
    expectRows(SplitSegmentTransform(&a, 2, 1.0 - 0.9e-9), &a,
               {{2, 1.0 - 0.5e-9, &a, 2, 1.0 - 0.5e-9},
                {2, 0.5, &a, 2, 0.5 / (1.0 - 0.9e-9)},
                {3, 0.5, &a, 4, 0.5}});
    expectRows(SplitSegmentTransform(&a, 2, 1.0), &a, {{2, 1.0, &a, 2, 1.0}, {2, 0.5, &a, 2, 0.5}});
    // Just outside the tolerance the tail is rescaled: halfway along the remaining 1.1e-9.
    expectRows(SplitSegmentTransform(&a, 2, 1.0 - 1.1e-9), &a, {{2, 1.0 - 0.55e-9, &a, 3, 0.5}}, 1e-6);
}

TEST(PositionTransform, SplitSegmentLeavesNonNumbersWhereTheyAre) {
    double const nan = std::numeric_limits<double>::quiet_NaN();
    auto const mapped = SplitSegmentTransform(&a, 2, 0.25).map(pairOn(&a, 2, nan));
    EXPECT_EQ(2, mapped.second.getIndex());
    EXPECT_TRUE(std::isnan(mapped.second.getParameter()));
    auto const cutAtNan = SplitSegmentTransform(&a, 2, nan).map(pairOn(&a, 2, 0.5));
    EXPECT_EQ(2, cutAtNan.second.getIndex());
    EXPECT_EQ(0.5, cutAtNan.second.getParameter());
}

TEST(PositionTransform, CombineAdjacentSegmentsSharesTheRange) {
    expectRows(CombineAdjacentSegmentsTransform(&a, 3, 0.5), &a,
               {{2, 0.4, &a, 2, 0.2},
                {3, 0.4, &a, 2, 0.7},
                {3, 0.0, &a, 2, 0.5},
                {2, 0.0, &a, 2, 0.0},
                {4, 0.1, &a, 3, 0.1},
                {1, 0.3, &a, 1, 0.3}});
    expectRows(CombineAdjacentSegmentsTransform(&a, 1, 0.25), &a,
               {{0, 0.4, &a, 0, 0.1}, {1, 0.4, &a, 0, 0.55}, {2, 0.0, &a, 1, 0.0}}, 1e-15);
}

TEST(PositionTransform, AbsorbSegmentCollapsesOntoTheTarget) {
    expectRows(AbsorbSegmentTransform(&a, 2, 2), &a,
               {{2, 0.3, &a, 2, 0.0},
                {2, 0.0, &a, 2, 0.0},
                {3, 0.0, &a, 2, 0.0},
                {3, 5e-324, &a, 3, 5e-324},
                {1, 0.5, &a, 1, 0.5},
                {4, 0.0, &a, 4, 0.0}});
    expectRows(AbsorbSegmentTransform(&a, 0, 1), &a,
               {{0, 0.0, &a, 1, 0.0}, {0, 0.5, &a, 1, 0.0}, {1, 0.0, &a, 1, 0.0}});
}

TEST(PositionTransform, SplitAnchorSendsTheTailToTheSecondPath) {
    expectRows(SplitAnchorTransform(&a, 2, &b, &c), &a,
               {{2, 0.0, &b, 2, 0.0},
                {2, 0.1, &c, 0, 0.1},
                {1, 0.7, &b, 1, 0.7},
                {3, 0.0, &c, 1, 0.0},
                {4, 0.3, &c, 2, 0.3},
                // Within 1e-9 of the cut anchor a parameter still counts as the anchor (and is kept).
                {2, 1e-9, &b, 2, 1e-9},
                {2, -0.5e-9, &b, 2, -0.5e-9},
                {2, 2e-9, &c, 0, 2e-9}});
}

TEST(PositionTransform, RefRemapTakesTheFirstReplacementRecorded) {
    SimplePathRemap remap;
    remap.insert(&a, &c);
    remap.insert(&b, &other);
    remap.insert(&a, &b);
    SimplePathRefRemapTransform const transform(remap);
    remap.insert(&c, &a); // the transform holds its own copy
    auto const moved = transform.map(pairOn(&a, 1, 0.5));
    EXPECT_EQ(&c, moved.first.pointer);
    EXPECT_EQ(1, moved.second.getIndex());
    EXPECT_EQ(0.5, moved.second.getParameter());
    EXPECT_EQ(&other, transform.map(pairOn(&b, 0, 0.0)).first.pointer);
    EXPECT_EQ(&c, transform.map(pairOn(&c, 0, 0.0)).first.pointer);
}

TEST(PositionTransform, CompositeAppliesMembersInListOrder) {
    // Shift, then absorb the shifted segment; the other order absorbs nothing.
    CompositeTransform const shiftFirst(
        {new ShiftPositionTransform(&a, &a, 1), new AbsorbSegmentTransform(&a, 1, 5)});
    CompositeTransform const absorbFirst(
        {new AbsorbSegmentTransform(&a, 1, 5), new ShiftPositionTransform(&a, &a, 1)});
    expectRows(shiftFirst, &a, {{0, 0.5, &a, 5, 0.0}});
    expectRows(absorbFirst, &a, {{0, 0.5, &a, 1, 0.5}});
    // Each member sees the previous result, including a change of path.
    CompositeTransform const hop(
        {new ShiftPositionTransform(&a, &b, 2), new ShiftPositionTransform(&b, &c, 10)});
    expectRows(hop, &a, {{1, 0.5, &c, 13, 0.5}});
    expectRows(CompositeTransform({}), &a, {{1, 0.5, &a, 1, 0.5}});
}

TEST(PositionTransform, CompositeDeletesEachMemberOnce) {
    int deleted = 0;
    auto* repeated = new support::CountedTransform(&deleted, 1);
    {
        CompositeTransform const composite(
            {repeated, nullptr, new support::CountedTransform(&deleted, 10), repeated});
        EXPECT_EQ(3u, composite.size());
        EXPECT_EQ(12, composite.map(pairOn(&a, 0, 0.5)).second.getIndex());
    }
    EXPECT_EQ(2, deleted);
}
