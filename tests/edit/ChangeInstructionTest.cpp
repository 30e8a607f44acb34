#include <gtest/gtest.h>

#include <list>
#include <memory>

#include "EditingHelpers.h"
#include "support/PositionPairs.h"

namespace {

using namespace editing;
using support::pairOn;

SimplePath a;

} // namespace

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
    EXPECT_TRUE(translated(change, &a).empty());
}
