#include "simplepath/foundation/PHandle.h"
#include "simplepath/foundation/PHashablePointer.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <unordered_set>
#include <vector>

namespace {

struct Counted {
    static std::atomic<int> alive;
    Counted() { ++alive; }
    virtual ~Counted() { --alive; }
    int value = 7;
};
std::atomic<int> Counted::alive{0};

TEST(PHandle, LastHandleDeletesTheObject) {
    {
        PHandle<Counted> a(new Counted);
        PHandle<Counted> b(a);
        PHandle<Counted> c;
        c = b;
        EXPECT_EQ(a->value, 7);
        EXPECT_EQ(a, c);
        EXPECT_EQ(a.refCount->value(), 3);
        PHandle<Counted> const& alias = c;
        c = alias; // self-assignment changes nothing
        EXPECT_EQ(a.refCount->value(), 3);
        EXPECT_EQ(Counted::alive, 1);
    }
    EXPECT_EQ(Counted::alive, 0);
}

TEST(PHandle, ComparesObjectsForEqualityButBlocksForOrder) {
    Counted* object = new Counted;
    PHandle<Counted> a(object);
    PHandle<Counted> b(a);
    PHandle<Counted> null1;
    PHandle<Counted> null2;
    EXPECT_TRUE(null1 == null2);
    EXPECT_TRUE(null1.isNull());
    EXPECT_FALSE(null1.isValid());
    EXPECT_FALSE(a < b);
    EXPECT_FALSE(b < a);
    EXPECT_TRUE((null1 < null2) != (null2 < null1));
}

TEST(PHandle, DetachOnlyFromTheSoleOwner) {
    PHandle<Counted> a(new Counted);
    {
        PHandle<Counted> copy(a);
        EXPECT_EQ(a.detach(), nullptr);
        EXPECT_TRUE(a.isValid());
    }
    Counted* const object = a.detach();
    ASSERT_NE(object, nullptr);
    EXPECT_TRUE(a.isNull());
    EXPECT_EQ(Counted::alive, 1);
    delete object;
    EXPECT_EQ(Counted::alive, 0);
}

// Copies and destroys handles to one object from several threads; the sanitizer build checks that the
// object is deleted exactly once and nothing leaks.
TEST(PHandle, ConcurrentCopiesNeverLeakOrDoubleDelete) {
    for (int round = 0; round < 20; ++round) {
        std::vector<std::thread> threads;
        {
            PHandle<Counted> shared(new Counted);
            for (int t = 0; t < 4; ++t) {
                threads.emplace_back([copy = shared]() mutable {
                    for (int i = 0; i < 500; ++i) {
                        PHandle<Counted> local(copy);
                        PHandle<Counted> other;
                        other = local;
                        EXPECT_EQ(other->value, 7);
                    }
                });
            }
        }
        for (auto& thread : threads) {
            thread.join();
        }
        EXPECT_EQ(Counted::alive, 0);
    }
}

TEST(PHashablePointer, IdentityHashAndNoOwnership) {
    Counted* object = new Counted;
    PHashablePointer<Counted> a(object);
    PHashablePointer<Counted> b(a);
    EXPECT_EQ(a, b);
    EXPECT_EQ(a, object);
    EXPECT_EQ(a.hash(), b.hash());
    auto const low = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(object));
    EXPECT_EQ(a.hash(), static_cast<int>(low * 1741u));
    { PHashablePointer<Counted> gone(object); }
    EXPECT_EQ(Counted::alive, 1) << "a pointer going away leaves the object alone";
    std::unordered_set<PHashablePointer<Counted>> set{a, b};
    EXPECT_EQ(set.size(), 1u);
    PHashablePointer<Counted> null;
    EXPECT_TRUE(null == nullptr);
    EXPECT_TRUE(null < a);
    delete object;
}

} // namespace
