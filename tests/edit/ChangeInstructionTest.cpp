#include <gtest/gtest.h>

#include <list>
#include <memory>

#include "EditingHelpers.h"
#include "simplepath/edit/AbsorbSegmentTransform.h"
#include "simplepath/edit/ShiftPositionTransform.h"
#include "support/PositionPairs.h"

namespace {

using namespace editing;
using support::pairOn;

SimplePath a, b, c, d;

std::pair<int, double> on(SimplePath* path, support::PathPosition const& pair) {
    EXPECT_EQ(path, pair.first.pointer);
    return {pair.second.getIndex(), pair.second.getParameter()};
}

} // namespace

TEST(ChangeInstruction, TransformsApplyInRecordingOrder) {
    // Shift, then absorb the shifted segment; the other order absorbs nothing.
    SimplePathChangeInstruction shiftFirst, absorbFirst;
    shiftFirst.insertPositionTransform(new ShiftPositionTransform(&a, &a, 1));
    shiftFirst.insertPositionTransform(new AbsorbSegmentTransform(&a, 1, 5));
    absorbFirst.insertPositionTransform(new AbsorbSegmentTransform(&a, 1, 5));
    absorbFirst.insertPositionTransform(new ShiftPositionTransform(&a, &a, 1));
    EXPECT_EQ((std::pair<int, double>{5, 0.0}), on(&a, shiftFirst.translate(pairOn(&a, 0, 0.5))));
    EXPECT_EQ((std::pair<int, double>{1, 0.5}), on(&a, absorbFirst.translate(pairOn(&a, 0, 0.5))));

    // The list form moves every pair in place through the whole chain.
    std::list<support::PathPosition> pairs{pairOn(&a, 0, 0.5)};
    shiftFirst.translate(pairs);
    EXPECT_EQ((std::pair<int, double>{5, 0.0}), on(&a, pairs.back()));
}

TEST(ChangeInstruction, PathsFollowTheirReplacements) {
    SimplePathChangeInstruction change;
    change.insertRemoved(PHashablePointer<SimplePath>(&a));
    change.insertRemoved(PHashablePointer<SimplePath>(&b));
    change.insertRefMap(&b, &d);
    change.insertRefMap(&b, &c);
    EXPECT_TRUE(translated(change, &a).empty()); // removed without a replacement
    EXPECT_EQ((Paths{&d, &c}), translated(change, &b));
    EXPECT_EQ(Paths{&c}, translated(change, &c));
}

// Copies share the recorded transforms and each is freed once, by the last holder; recording into a copy
// leaves the original as it was.
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
        EXPECT_EQ(112, copyOfCopy.translate(pairOn(&a, 0, 0.5)).second.getIndex());
    }
    EXPECT_EQ(3, deleted);
}
