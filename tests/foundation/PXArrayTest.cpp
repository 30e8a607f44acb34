#include "simplepath/foundation/PXArray.h"

#include <gtest/gtest.h>

namespace {

TEST(PXArray, DoublingPolicyStartsAt32AndShrinksByHalving) {
    PXArray<int> a;
    EXPECT_EQ(a.getGrowSize(0), 0u);
    EXPECT_EQ(a.getGrowSize(1), 32u);
    EXPECT_EQ(a.getGrowSize(33), 64u);
    a.setAllocSize(64);
    EXPECT_EQ(a.getGrowSize(10), 16u);
    EXPECT_EQ(a.getGrowSize(64), 64u);
    EXPECT_EQ(a.getGrowSize(65), 128u);
    // Doubling stops at 2^30 even when more is needed.
    EXPECT_EQ(a.getGrowSize((std::uint64_t(1) << 31) + 5), std::uint64_t(1) << 30);
}

TEST(PXArray, StepPolicyTakesTheNextMultipleStrictlyAbove) {
    PXArray<int> a;
    a.setStep(10);
    EXPECT_EQ(a.getGrowSize(10), 20u);
    EXPECT_EQ(a.getGrowSize(9), 10u);
    a.add(7);
    EXPECT_EQ(a.allocLength(), 10u);
    EXPECT_EQ(a.length(), 1u);
}

TEST(PXArray, NonConstAccessExtendsAndConstAccessReadsUpToAllocation) {
    PXArray<int> a;
    a.setEmpty(-1);
    a[5] = 42;
    EXPECT_EQ(a.length(), 6u);
    EXPECT_EQ(a.allocLength(), 32u);
    PXArray<int> const& c = a;
    EXPECT_EQ(c[0], -1);
    EXPECT_EQ(c[5], 42);
    // Below allocLength but beyond length still reads the slot (filled with empty here).
    EXPECT_EQ(c[20], -1);
    EXPECT_EQ(c[std::uint64_t(100)], -1);
    a[0] = 3;
    EXPECT_EQ(c[-1], 3);
    long const wide = 5;
    EXPECT_EQ(c[wide], 42);
}

TEST(PXArray, InsertDeleteAndTheEmptyFiller) {
    PXArray<int> a;
    a.setEmpty(0);
    for (int i = 1; i <= 4; ++i) {
        a.add(i);
    }
    a.ins(1, 9);
    ASSERT_EQ(a.length(), 5u);
    EXPECT_EQ(a[1], 9);
    EXPECT_EQ(a[4], 4);
    a.ins(8, 5); // past the end: length jumps to 9
    EXPECT_EQ(a.length(), 9u);
    EXPECT_EQ(a[7], 0);
    a.del(8);
    EXPECT_EQ(a.length(), 8u);
    EXPECT_EQ(static_cast<PXArray<int> const&>(a)[8], 0);
    a.del(50);
    EXPECT_EQ(a.length(), 8u);
    a.setSize(2);
    EXPECT_EQ(a.length(), 2u);
    EXPECT_EQ(static_cast<PXArray<int> const&>(a)[3], 0);
    a.clear();
    EXPECT_EQ(a.length(), 0u);
    EXPECT_GT(a.allocLength(), 0u) << "clear keeps storage once a filler is set";
    PXArray<int> b;
    b.add(1);
    b.clear();
    EXPECT_EQ(b.allocLength(), 0u) << "without a filler clear frees the storage";
}

TEST(PXArray, FindReportsItsTwoErrors) {
    PXArray<int> a;
    auto none = a.find(3, false);
    ASSERT_FALSE(none.has_value());
    EXPECT_EQ(none.error().value(), 1002);
    EXPECT_EQ(none.error().message(), "Null value found when expecting allocated memory.");
    EXPECT_STREQ(none.error().category().name(), "Vector Files - Error");
    a.add(3);
    a.add(4);
    a.add(3);
    EXPECT_EQ(a.find(3, false).value(), 0u);
    EXPECT_EQ(a.find(3, true).value(), 2u);
    auto missing = a.find(8, false);
    EXPECT_EQ(missing.error().value(), 1001);
    EXPECT_EQ(missing.error().message(), "Unknown Error Code.");
    EXPECT_EQ(std::error_code(1000, detail::orlanErrorCategory()).message(),
              "Attempting to call functionality which is not implemented.");
}

TEST(PXArray, CopiesAreDeepAndCompactShrinksToLength) {
    int const items[] = {1, 2, 3};
    PXArray<int> a(items, 3);
    PXArray<int> b(a);
    b[0] = 10;
    EXPECT_EQ(a[0], 1);
    EXPECT_NE(a, b);
    b = a;
    EXPECT_EQ(a, b);
    a.add(4);
    a.compact();
    EXPECT_EQ(a.allocLength(), 4u);
    a.setSize(0);
    a.compact();
    EXPECT_EQ(a.allocLength(), 0u);
    EXPECT_EQ(a.data, nullptr);
}

} // namespace
