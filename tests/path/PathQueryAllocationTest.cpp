// The queries allocate nothing per segment: on a path of a thousand segments the counted allocations are
// those of the output alone (and of one scratch vector where a query needs one).

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <list>
#include <new>

#include "simplepath/path/SimplePath.h"
#include "simplepath/path/SimplePathSpatialIndex.h"
#include "support/PathQueryHelpers.h"
#include "support/WigglyPath.h"

namespace {
std::atomic<long> allocations{0};
} // namespace

// Counting replacements of the plain and nothrow forms of the global allocation functions for this test
// program (with their matching deletes, so that a sanitizer sees every pair made by the same allocator).
void* operator new(std::size_t size) {
    allocations.fetch_add(1, std::memory_order_relaxed);
    if (void* p = std::malloc(size == 0 ? 1 : size)) {
        return p;
    }
    throw std::bad_alloc();
}
void* operator new(std::size_t size, std::nothrow_t const&) noexcept {
    allocations.fetch_add(1, std::memory_order_relaxed);
    return std::malloc(size == 0 ? 1 : size);
}
void operator delete(void* p) noexcept {
    std::free(p);
}
void operator delete(void* p, std::size_t) noexcept {
    std::free(p);
}

namespace {

template <class Query> long allocationsOf(Query const& query) {
    long const before = allocations.load();
    query();
    return allocations.load() - before;
}

} // namespace

TEST(QueryAllocations, NoneInTheWalks) {
    SimplePath path;
    support::buildWigglyBlob(path, 1000, 17);
    support::Bend const bend;
    IdTrans<DPoint> const id;
    DPoint p;
    SimplePathPosition position;
    SimplePathVertex* vertex = nullptr;
    double a, b, c, d;
    DPoint top, bottom;
    EXPECT_GT(allocationsOf([&] { SimplePath copy(path); }), 0); // the counter is live
    EXPECT_EQ(0, allocationsOf([&] { (void)path.locatePosition(support::positionOf(path, 500, 0.3), p); }));
    EXPECT_EQ(0, allocationsOf([&] {
                  (void)path.pretransformLocatePosition(bend, support::positionOf(path, 5, 0.3), p);
              }));
    EXPECT_EQ(0, allocationsOf([&] { (void)path.getMinMax(a, b, c, d); }));
    EXPECT_EQ(0, allocationsOf([&] { (void)path.pretransformGetMinMaxEx(bend, a, b, c, d); }));
    EXPECT_EQ(0, allocationsOf([&] { (void)path.getTopBottom(top, bottom); }));
    EXPECT_EQ(0, allocationsOf([&] { path.pretransformLength(bend, a); }));
    EXPECT_EQ(0, allocationsOf([&] { (void)path.findClosestPosition({3, 4}, position, a); }));
    EXPECT_EQ(0, allocationsOf([&] { (void)path.pretransformFindClosestPosition({3, 4}, bend, position); }));
    EXPECT_EQ(0, allocationsOf([&] { (void)path.pickVertex({3, 4}, 1.0, vertex); }));
    EXPECT_EQ(0, allocationsOf([&] { (void)path.pretransformPickVertex({3, 4}, 1.0, bend, vertex); }));
    EXPECT_EQ(0, allocationsOf([&] { (void)path.pickPosition({3, 4}, 1.0, position); }));
    // One scratch vector for the flattening points.
    EXPECT_LE(allocationsOf([&] { path.pretransformInBox(id, {-1, -1}, {1, 1}); }), 1);
    // One scratch vector for the crossing parameters, and one list node per crossing found.
    std::list<SimplePathPosition> crossings;
    long const made = allocationsOf([&] {
        (void)path.pretransformFindIntersections({-2000, 1}, {2000, 3}, id, crossings);
    });
    EXPECT_GE(crossings.size(), 2u);
    EXPECT_LE(made, 1 + static_cast<long>(crossings.size()));
}

TEST(QueryAllocations, NoneInTheIndexedQueriesOrTheRefit) {
    SimplePath path;
    support::buildWigglyBlob(path, 1000, 17);
    SimplePathSpatialIndex index;
    ASSERT_EQ(SimplePath::Success, index.build(path));
    SimplePathPosition position;
    SimplePathVertex* vertex = nullptr;
    double d = 0.0;
    EXPECT_EQ(0, allocationsOf([&] { index.isCurrent(); }));
    EXPECT_EQ(0, allocationsOf([&] { (void)index.findClosestPosition({3, 4}, position, d); }));
    EXPECT_EQ(0, allocationsOf([&] { (void)index.pickVertex({3, 4}, 50.0, vertex); }));
    EXPECT_EQ(0, allocationsOf([&] { (void)index.pickPosition({3, 4}, 50.0, position); }));
    EXPECT_LE(allocationsOf([&] { index.inBox({-900, -900}, {900, 900}); }), 1);
    std::list<SimplePathPosition> crossings;
    long const made = allocationsOf([&] { (void)index.findIntersections({-2000, 1}, {2000, 3}, crossings); });
    EXPECT_GE(crossings.size(), 2u);
    EXPECT_LE(made, 1 + static_cast<long>(crossings.size()));
    ASSERT_EQ(SimplePath::Success, path.translate(DVector(1.0, 2.0)));
    EXPECT_FALSE(index.isCurrent());
    EXPECT_EQ(0, allocationsOf([&] { EXPECT_EQ(SimplePath::Success, index.refit()); }));
    EXPECT_TRUE(index.isCurrent());
}
