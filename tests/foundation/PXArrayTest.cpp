#include "simplepath/foundation/PXArray.h"

#include <gtest/gtest.h>

namespace {

// The step policy takes the next multiple strictly above; doubling starts at 32, halves down to fit and
// stops at 2^30 even when more is needed.
TEST(PXArray, GrowthPolicies) {
    auto grow = [](std::uint64_t alloc, std::uint64_t step, std::uint64_t needed) {
        PXArray<int> a;
        a.setAllocSize(alloc);
        a.setStep(step);
        return a.getGrowSize(needed);
    };
    EXPECT_EQ(grow(0, 0, 1), 32u);
    EXPECT_EQ(grow(64, 0, 10), 16u);
    EXPECT_EQ(grow(0, 10, 10), 20u);
    EXPECT_EQ(grow(0, 0, (std::uint64_t(1) << 31) + 5), std::uint64_t(1) << 30);
}

// Non-const access extends the array; const access reads any slot below the allocation (filled with the
// empty value), deliberately. Find reports its two errors.
TEST(PXArray, AccessInsertDeleteClearAndFind) {
    int const items[] = {1, 2, 3, 4};
    PXArray<int> a(items, 4);
    a.setEmpty(0);
    EXPECT_EQ(static_cast<PXArray<int> const&>(a)[std::uint64_t(100)], 0);
    a.ins(8, 5); // past the end: length jumps to 9
    EXPECT_EQ(a[7], 0);
    a.del(8);
    a.del(50);
    EXPECT_EQ(a.length(), 8u);
    a.clear();
    EXPECT_GT(a.allocLength(), 0u) << "clear keeps storage once a filler is set";
    auto none = PXArray<int>().find(3, false);
    ASSERT_FALSE(none.has_value());
    EXPECT_EQ(none.error().message(), "Null value found when expecting allocated memory.");
    a.add(3), a.add(4), a.add(3);
    EXPECT_EQ(a.find(3, true).value(), 2u);
    EXPECT_EQ(a.find(8, false).error().message(), "Unknown Error Code.");
}

} // namespace
