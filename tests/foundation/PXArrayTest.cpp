#include "simplepath/foundation/PXArray.h"

#include <gtest/gtest.h>

namespace {

TEST(PXArray, GrowthPolicies) {
    PXArray<int> a;
    // The step policy takes the next multiple strictly above; doubling starts at 32, halves down to fit
    // and stops at 2^30 even when more is needed.
    struct Case {
        std::uint64_t alloc, step, needed, expected;
    } const cases[] = {
        {0, 0, 0, 0},    {0, 0, 1, 32},   {0, 0, 33, 64},
        {64, 0, 10, 16}, {64, 0, 64, 64}, {64, 0, 65, 128},
        {0, 10, 10, 20}, {0, 10, 9, 10},  {0, 0, (std::uint64_t(1) << 31) + 5, std::uint64_t(1) << 30}};
    for (Case const& c : cases) {
        a.setAllocSize(c.alloc);
        a.setStep(c.step);
        EXPECT_EQ(a.getGrowSize(c.needed), c.expected) << c.alloc << " " << c.step << " " << c.needed;
    }
}

// Non-const access extends the array; const access reads any slot below the allocation (filled with the
// empty value), deliberately.
TEST(PXArray, AccessInsertDeleteClearAndCopy) {
    int const items[] = {1, 2, 3, 4};
    PXArray<int> a(items, 4);
    a.setEmpty(0);
    PXArray<int> const& c = a;
    EXPECT_EQ(c[std::uint64_t(100)], 0);
    EXPECT_EQ(c[-1], 1);
    a.ins(1, 9);
    EXPECT_EQ(a[1], 9);
    EXPECT_EQ(a[4], 4);
    a.ins(8, 5); // past the end: length jumps to 9
    EXPECT_EQ(a.length(), 9u);
    EXPECT_EQ(a[7], 0);
    a.del(8);
    a.del(50);
    EXPECT_EQ(a.length(), 8u);
    PXArray<int> b(a);
    b[0] = 10;
    EXPECT_NE(a, b);
    b = a;
    EXPECT_EQ(a, b);
    a.setSize(2);
    EXPECT_EQ(c[3], 0);
    a[5L] = 42;
    EXPECT_EQ(a.length(), 6u);
    a.compact();
    EXPECT_EQ(a.allocLength(), 6u);
    a.clear();
    EXPECT_GT(a.allocLength(), 0u) << "clear keeps storage once a filler is set";
    PXArray<int> d(items, 1);
    d.clear();
    EXPECT_EQ(d.data, nullptr) << "without a filler clear frees the storage";
}

TEST(PXArray, FindReportsItsTwoErrors) {
    PXArray<int> a;
    auto none = a.find(3, false);
    ASSERT_FALSE(none.has_value());
    EXPECT_EQ(none.error().value(), 1002);
    EXPECT_EQ(none.error().message(), "Null value found when expecting allocated memory.");
    EXPECT_STREQ(none.error().category().name(), "Vector Files - Error");
    a.add(3), a.add(4), a.add(3);
    EXPECT_EQ(a.find(3, false).value(), 0u);
    EXPECT_EQ(a.find(3, true).value(), 2u);
    EXPECT_EQ(a.find(8, false).error().message(), "Unknown Error Code.");
    EXPECT_EQ(std::error_code(1000, detail::orlanErrorCategory()).message(),
              "Attempting to call functionality which is not implemented.");
}

} // namespace
