#include "simplepath/foundation/PList.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using Items = std::vector<int>;

Items items(PList<int> const& list) {
    return Items(list.begin(), list.end());
}

PList<int> listOf(Items const& values) {
    PList<int> list;
    for (int v : values) {
        list.add(v);
    }
    return list;
}

TEST(PList, EditsKeepTheCircleConsistent) {
    PList<int> list = listOf({1, 2, 3});
    EXPECT_EQ(list[5], 3);
    EXPECT_EQ(list.find(99), -1);
    list.insert(0, 0);
    list.insert(9, 2);
    EXPECT_EQ(list.move(0, 7), 0);
    EXPECT_EQ(list.move(4, 0), 1);
    EXPECT_EQ(items(list), (Items{3, 0, 1, 9, 2}));
    list.remove(0);
    auto it = list.it(1);
    list.remove(it);
    EXPECT_EQ(*it, 9);
    EXPECT_EQ(Items(list.rbegin(), list.rend()), (Items{2, 9, 0}));
    EXPECT_EQ(list.head->prev->value, 2);
    list.empty();
    EXPECT_EQ(list.head, nullptr);
    list.insert(5, 3);
    EXPECT_EQ(items(list), (Items{5}));

    // Joining and injecting move the nodes and empty the source.
    PList<int> a = listOf({1, 2}), b = listOf({3, 4}), c = listOf({7, 8}), d = listOf({5});
    a += b;
    EXPECT_EQ(b.length(), 0);
    a.inject(c, 0);
    a.inject(d, 3);
    EXPECT_EQ(items(a), (Items{7, 8, 1, 5, 2, 3, 4}));
    PList<int> empty, e = listOf({6});
    empty.inject(e, 4);
    EXPECT_EQ(empty.head->next, empty.head);

    PList<int> copy(a);
    EXPECT_EQ(a, copy);
    copy[1] = 5;
    EXPECT_NE(a, copy);
    int* found = a.firstThat([](int v, void*) { return v < 7 ? 1 : 0; }, nullptr);
    EXPECT_TRUE(found != nullptr && *found == 1);
}

} // namespace
