#include "simplepath/foundation/PHandle.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace {

struct Counted {
    static std::atomic<int> alive;
    Counted() { ++alive; }
    virtual ~Counted() { --alive; }
};
std::atomic<int> Counted::alive{0};

// Handles share the object until the last goes; only the sole owner may detach it. Copies made and dropped
// from several threads must delete it exactly once (the sanitizer build checks).
TEST(PHandle, SharesTheObjectUntilTheLastHandleEvenAcrossThreads) {
    PHandle<Counted> a(new Counted), c(a);
    c = static_cast<PHandle<Counted> const&>(c); // self-assignment changes nothing
    EXPECT_EQ(a.refCount->value(), 2);
    EXPECT_EQ(a.detach(), nullptr);
    c = PHandle<Counted>();
    delete a.detach();
    EXPECT_TRUE(a.isNull() && Counted::alive == 0);
    // Null handles are equal, yet ordered by their blocks, deliberately.
    PHandle<Counted> null1, null2;
    EXPECT_TRUE(null1 == null2 && (null1 < null2) != (null2 < null1));
    for (int round = 0; round < 20; ++round) {
        std::vector<std::thread> threads;
        PHandle<Counted> shared(new Counted);
        for (int t = 0; t < 4; ++t) {
            threads.emplace_back([copy = shared] {
                for (int i = 0; i < 1000; ++i) {
                    PHandle<Counted>{copy};
                }
            });
        }
        shared = PHandle<Counted>();
        for (auto& thread : threads) {
            thread.join();
        }
        EXPECT_EQ(Counted::alive, 0);
    }
}

} // namespace
