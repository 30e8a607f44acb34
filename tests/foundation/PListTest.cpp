#include "simplepath/foundation/PList.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using Items = std::vector<int>;

PList<int> listOf(Items const& values) {
    PList<int> list;
    for (int v : values) {
        list.add(v);
    }
    return list;
}

// Indices wrap around the circle; joining and injecting move the nodes and empty the source.
TEST(PList, EditsKeepTheCircleConsistent) {
    PList<int> list = listOf({1, 2, 3});
    EXPECT_EQ(list[5], 3);
    list.insert(0, 0);
    EXPECT_EQ(list.move(0, 7), 0); // out of range: refused
    auto it = list.it(1);
    list.remove(it);
    EXPECT_EQ(*it, 2);
    EXPECT_EQ(Items(list.rbegin(), list.rend()), (Items{3, 2, 0}));
    PList<int> a = listOf({1, 2}), c = listOf({7, 8});
    a += list;
    a.inject(c, 1);
    EXPECT_EQ(Items(a.begin(), a.end()), (Items{1, 7, 8, 2, 0, 2, 3}));
    EXPECT_EQ(list.length() + c.length(), 0);
    EXPECT_EQ(a.head->prev->value, 3);
}

} // namespace
