#include "simplepath/foundation/PList.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

std::vector<int> items(PList<int> const& list) {
    std::vector<int> out;
    for (int v : list) {
        out.push_back(v);
    }
    return out;
}

PList<int> listOf(std::initializer_list<int> values) {
    PList<int> list;
    for (int v : values) {
        list.add(v);
    }
    return list;
}

TEST(PList, IndicesWrapAroundTheCircle) {
    PList<int> list = listOf({10, 11, 12});
    EXPECT_EQ(list[5], 12);
    EXPECT_EQ(list[3], 10);
    EXPECT_EQ(list.head->prev->value, 12);
    EXPECT_EQ(list.find(11), 1);
    EXPECT_EQ(list.find(99), -1);
}

TEST(PList, InsertMoveAndRemoveKeepTheCircleConsistent) {
    PList<int> list = listOf({1, 2, 3});
    list.insert(0, 0);
    list.insert(9, 2);
    EXPECT_EQ(items(list), (std::vector<int>{0, 1, 9, 2, 3}));
    EXPECT_EQ(list.move(0, 0), 0);
    EXPECT_EQ(list.move(0, 7), 0);
    EXPECT_EQ(list.move(4, 0), 1);
    EXPECT_EQ(items(list), (std::vector<int>{3, 0, 1, 9, 2}));
    list.remove(0);
    EXPECT_EQ(list.head->value, 0);
    auto it = list.it(1);
    list.remove(it);
    EXPECT_EQ(*it, 9);
    EXPECT_EQ(items(list), (std::vector<int>{0, 9, 2}));
    std::vector<int> backwards(list.rbegin(), list.rend());
    EXPECT_EQ(backwards, (std::vector<int>{2, 9, 0}));
    list.empty();
    EXPECT_EQ(list.length(), 0);
    EXPECT_EQ(list.head, nullptr);
    list.insert(5, 3);
    EXPECT_EQ(items(list), (std::vector<int>{5}));
}

TEST(PList, JoinAndInjectMoveNodesAndEmptyTheSource) {
    PList<int> a = listOf({1, 2});
    PList<int> b = listOf({3, 4});
    a += b;
    EXPECT_EQ(items(a), (std::vector<int>{1, 2, 3, 4}));
    EXPECT_EQ(b.length(), 0);
    PList<int> c = listOf({7, 8});
    a.inject(c, 0);
    EXPECT_EQ(items(a), (std::vector<int>{7, 8, 1, 2, 3, 4}));
    PList<int> d = listOf({5});
    a.inject(d, 3);
    EXPECT_EQ(items(a), (std::vector<int>{7, 8, 1, 5, 2, 3, 4}));
    PList<int> empty;
    PList<int> e = listOf({6});
    empty.inject(e, 4);
    EXPECT_EQ(items(empty), (std::vector<int>{6}));
    EXPECT_EQ(empty.head->next, empty.head);
}

TEST(PList, CopiesCompareEqualAndAreIndependent) {
    PList<int> a = listOf({1, 2, 3});
    PList<int> b(a);
    EXPECT_EQ(a, b);
    b[1] = 5;
    EXPECT_NE(a, b);
    EXPECT_EQ(PList<int>(), PList<int>());
    int sum = 0;
    a.forEach([](int v, void* ctx) { *static_cast<int*>(ctx) += v; }, &sum);
    EXPECT_EQ(sum, 6);
    int* found = a.firstThat([](int v, void*) { return v > 1 ? 1 : 0; }, nullptr);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(*found, 2);
}

} // namespace
