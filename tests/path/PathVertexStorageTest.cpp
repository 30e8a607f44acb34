// Where a path keeps its vertices: in path order, each vertex still an object of its own that may be
// deleted alone and outlive its path, and a host's own vertex classes read through their accessor.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <thread>
#include <vector>

#include "simplepath/path/SimplePath.h"
#include "simplepath/path/SimplePathDPointVertex.h"

namespace {

constexpr auto kCusp = SimplePathVertexTriple::Cusp;

SimplePath makeZigzag(int n, int closed) {
    SimplePath path;
    SimplePathVertex *f = nullptr, *a = nullptr, *l = nullptr;
    for (int i = 0; i < n; ++i) {
        double const x = 10.0 * i;
        double const y = (i % 2) * 10.0;
        EXPECT_EQ(SimplePath::Success,
                  path.addTriple({x - 3, y + 4}, f, {x, y}, a, {x + 3, y - 4}, l, kCusp));
    }
    path.setStrictClosed(closed);
    return path;
}

std::uintptr_t addressOf(SimplePathVertex const* vertex) {
    return reinterpret_cast<std::uintptr_t>(vertex);
}

// How often the next vertex in path order (first, anchor, last, then the next triple's first) is not
// the next object in memory.
int breaksInPathOrder(SimplePath const& path) {
    std::vector<SimplePathVertex const*> order;
    for (SimplePathVertexTriple const& t : path.getTripleList()) {
        order.insert(order.end(), {t.first, t.anchor, t.last});
    }
    int breaks = 0;
    for (std::size_t i = 1; i < order.size(); ++i) {
        std::uintptr_t const step = addressOf(order[i]) - addressOf(order[i - 1]);
        breaks += step != addressOf(order[1]) - addressOf(order[0]) ? 1 : 0;
    }
    return breaks;
}

// A host's vertex that reports its stored point moved by `shift`: a walk that read the stored location
// directly instead of asking the vertex would give away the difference.
class ShiftedVertex : public SimplePathDPointVertex {
  public:
    ShiftedVertex(DPoint const& at, double by) : SimplePathDPointVertex(at), shift(by) {}
    DPoint getLocation() const override {
        DPoint const p = SimplePathDPointVertex::getLocation();
        return {p.x + shift, p.y};
    }
    SimplePathVertex* copy() const override { return new ShiftedVertex(storedLocation(), shift); }

  private:
    double shift;
};

} // namespace

TEST(VertexStorage, BuiltPathsAreLaidOutInPathOrderAndCopiesInOneRun) {
    SimplePath const built = makeZigzag(5000, 1);
    // Growth by doubling slabs up to their largest size: one break per slab.
    EXPECT_LE(breaksInPathOrder(built), 12);
    SimplePath const copy(built);
    EXPECT_EQ(0, breaksInPathOrder(copy));
    SimplePath assigned = makeZigzag(3, 0);
    assigned = built;
    EXPECT_EQ(0, breaksInPathOrder(assigned));
}

// Under the sanitizer build a leak, a double free or a premature free here fails the run.
TEST(VertexStorage, VerticesDieAloneInAnyOrderAnywhereAndMayOutliveTheirPath) {
    std::mt19937 random(7);
    std::vector<SimplePathVertex*> kept;
    {
        SimplePath path = makeZigzag(300, 0);
        // Take every third triple out of the path, vertices and all, and drop some of them at once.
        auto& list = const_cast<SimplePathTripleList&>(path.getTripleList());
        for (int i = list.length() - 1; i >= 0; i -= 3) {
            SimplePathVertexTriple const t = list[i];
            list.remove(list.iteratorAt(i));
            kept.insert(kept.end(), {t.first, t.anchor, t.last});
        }
        std::shuffle(kept.begin(), kept.end(), random);
        for (int i = 0; i < 60; ++i) {
            delete kept.back();
            kept.pop_back();
        }
        SimplePath moved(std::move(path)); // the slabs stay where they are
        EXPECT_EQ(200, moved.numTriples());
    }
    // The path is gone; its slabs live on for the vertices taken out of it, which another thread may
    // delete (its slabs then end up in that thread's cache, emptied when the thread ends).
    std::shuffle(kept.begin(), kept.end(), random);
    std::thread other([&kept] {
        for (SimplePathVertex* vertex : kept) {
            DPoint const p = vertex->getLocation();
            EXPECT_EQ(0.0, std::fmod(std::fabs(p.x), 1.0));
            delete vertex;
        }
    });
    other.join();
}

TEST(VertexStorage, VerticesOfAHostClassAreAskedForTheirLocation) {
    SimplePath path = makeZigzag(4, 0);
    SimplePathPosition middle;
    ASSERT_EQ(SimplePath::Success, path.makePosition(1, 0.5, middle));
    DPoint before;
    ASSERT_EQ(SimplePath::Success, path.locatePosition(middle, before));

    // Replace triple 2 by host vertices at the same stored places, reporting themselves 100 units right.
    SimplePathVertexTriple const old = path.getTripleList()[2];
    SimplePathVertexTriple const host(new ShiftedVertex(old.first->getLocation(), 100),
                                      new ShiftedVertex(old.anchor->getLocation(), 100),
                                      new ShiftedVertex(old.last->getLocation(), 100), kCusp);
    auto& list = const_cast<SimplePathTripleList&>(path.getTripleList());
    list.setTriple(list.iteratorAt(2), host);
    deleteTripleVertices(old);

    // Segment 1 ends at triple 2: its midpoint moves by the weight of the last two control points.
    DPoint after;
    ASSERT_EQ(SimplePath::Success, path.locatePosition(middle, after));
    EXPECT_DOUBLE_EQ(before.x + 50.0, after.x);
    EXPECT_DOUBLE_EQ(before.y, after.y);
    double minX = 0, minY = 0, maxX = 0, maxY = 0;
    ASSERT_EQ(SimplePath::Success, path.getMinMax(minX, minY, maxX, maxY));
    EXPECT_GT(maxX, 120.0); // the host anchor, stored at 20, reports 120
    EXPECT_LT(maxX, 123.0);

    // A copy asks the host vertices to copy themselves and keeps answering the same.
    SimplePath const copy(path);
    DPoint copied;
    ASSERT_EQ(SimplePath::Success, copy.locatePosition(middle, copied));
    EXPECT_EQ(after, copied);
}
