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
};
std::atomic<int> Counted::alive{0};

TEST(PHandle, SharesTheObjectUntilTheLastHandleAndDetachesOnlyFromTheSoleOwner) {
    {
        PHandle<Counted> a(new Counted), c;
        c = PHandle<Counted>(a);
        c = static_cast<PHandle<Counted> const&>(c); // self-assignment changes nothing
        EXPECT_EQ(a.refCount->value(), 2);
        EXPECT_FALSE(a < c || c < a);
        EXPECT_EQ(a.detach(), nullptr);
        c = PHandle<Counted>();
        Counted* const object = a.detach();
        EXPECT_TRUE(a.isNull());
        EXPECT_EQ(Counted::alive, 1);
        delete object;
        PHandle<Counted> last(new Counted);
    }
    EXPECT_EQ(Counted::alive, 0);
    // Null handles are equal, yet ordered by their blocks, deliberately.
    PHandle<Counted> null1, null2;
    EXPECT_TRUE(null1 == null2 && (null1 < null2) != (null2 < null1));
}

// Copies and destroys handles to one object from several threads; the sanitizer build checks that the
// object is deleted exactly once.
TEST(PHandle, ConcurrentCopiesNeverLeakOrDoubleDelete) {
    for (int round = 0; round < 20; ++round) {
        std::vector<std::thread> threads;
        {
            PHandle<Counted> shared(new Counted);
            for (int t = 0; t < 4; ++t) {
                threads.emplace_back([copy = shared] {
                    for (int i = 0; i < 1000; ++i) {
                        PHandle<Counted> other(copy);
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
    { PHashablePointer<Counted> gone(object); }
    EXPECT_EQ(Counted::alive, 1) << "a pointer going away leaves the object alone";
    std::unordered_set<PHashablePointer<Counted>> set{a, PHashablePointer<Counted>(object)};
    EXPECT_EQ(set.size(), 1u);
    EXPECT_TRUE(PHashablePointer<Counted>() < a);
    delete object;
}

} // namespace
