// Indexed against linear queries on the same closed, wiggly paths of 10,000 and 100,000 segments, in one
// process, so that their ratio comes from one run: the closest position, the crossings with a line, the
// vertex and the position under a point, the box test; and what the index costs: building it, refitting it
// after the path moved. Times are per query (or per build / refit).

#include <benchmark/benchmark.h>

#include <cmath>
#include <list>
#include <map>
#include <memory>
#include <vector>

#include "simplepath/interfaces/PBezier.h"
#include "simplepath/path/SimplePath.h"
#include "simplepath/path/SimplePathSpatialIndex.h"
#include "tests/support/WigglyPath.h"

namespace {

SimplePath& blob(int segments) {
    static std::map<int, std::unique_ptr<SimplePath>> made;
    std::unique_ptr<SimplePath>& path = made[segments];
    if (!path) {
        path = std::make_unique<SimplePath>();
        support::buildWigglyBlob(*path, segments, 2024);
    }
    return *path;
}

SimplePathSpatialIndex const& indexOf(int segments) {
    static std::map<int, std::unique_ptr<SimplePathSpatialIndex>> made;
    std::unique_ptr<SimplePathSpatialIndex>& index = made[segments];
    if (!index) {
        index = std::make_unique<SimplePathSpatialIndex>();
        (void)index->build(blob(segments));
    }
    return *index;
}

constexpr int kQueries = 256;

// Points spread uniformly over the path's bounds, inside and outside the outline.
std::vector<DPoint> scatter(SimplePath const& path, std::uint64_t seed) {
    double minX, minY, maxX, maxY;
    (void)path.getMinMax(minX, minY, maxX, maxY);
    support::UnitRandom random(seed);
    std::vector<DPoint> points;
    for (int i = 0; i < kQueries; ++i) {
        points.emplace_back(random.between(minX, maxX), random.between(minY, maxY));
    }
    return points;
}

// Points on the curve, slightly off it: what a cursor over the outline gives to the picks.
std::vector<DPoint> nearCurve(SimplePath const& path, std::uint64_t seed) {
    support::UnitRandom random(seed);
    std::vector<DPoint> points;
    int const n = path.numTriples();
    for (int i = 0; i < kQueries; ++i) {
        SimplePathPosition position;
        (void)path.makePosition(static_cast<int>(random.next() * n), random.next(), position);
        DPoint p;
        (void)path.locatePosition(position, p);
        points.push_back(p + DVector(random.between(-0.05, 0.05), random.between(-0.05, 0.05)));
    }
    return points;
}

// Lines 6,000 units long through random points of the blob (2,000 across) at random angles.
struct Line {
    DPoint a, b;
};
std::vector<Line> lines(std::uint64_t seed) {
    support::UnitRandom random(seed);
    std::vector<Line> out;
    for (int i = 0; i < kQueries; ++i) {
        DPoint const c(random.between(-800.0, 800.0), random.between(-800.0, 800.0));
        double const angle = random.between(0.0, 3.141592653589793);
        DVector const half(3000.0 * std::cos(angle), 3000.0 * std::sin(angle));
        out.push_back({c - half, c + half});
    }
    return out;
}

template <bool Indexed> void BM_Nearest(benchmark::State& state) {
    int const n = static_cast<int>(state.range(0));
    SimplePath const& path = blob(n);
    SimplePathSpatialIndex const& index = indexOf(n);
    std::vector<DPoint> const points = scatter(path, 1);
    std::size_t i = 0;
    for (auto _ : state) {
        SimplePathPosition position;
        double d2 = 0.0;
        if (Indexed) {
            (void)index.findClosestPosition(points[i++ % kQueries], position, d2);
        } else {
            (void)path.findClosestPosition(points[i++ % kQueries], position, d2);
        }
        benchmark::DoNotOptimize(d2);
    }
}

template <bool Indexed> void BM_Intersections(benchmark::State& state) {
    int const n = static_cast<int>(state.range(0));
    SimplePath const& path = blob(n);
    SimplePathSpatialIndex const& index = indexOf(n);
    std::vector<Line> const all = lines(2);
    IdTrans<DPoint> const id;
    std::size_t i = 0;
    for (auto _ : state) {
        std::list<SimplePathPosition> crossings;
        Line const& line = all[i++ % kQueries];
        if (Indexed) {
            (void)index.findIntersections(line.a, line.b, crossings);
        } else {
            (void)path.pretransformFindIntersections(line.a, line.b, id, crossings);
        }
        benchmark::DoNotOptimize(crossings);
    }
}

template <bool Indexed> void BM_PickVertex(benchmark::State& state) {
    int const n = static_cast<int>(state.range(0));
    SimplePath const& path = blob(n);
    SimplePathSpatialIndex const& index = indexOf(n);
    std::vector<DPoint> const points = nearCurve(path, 3);
    std::size_t i = 0;
    for (auto _ : state) {
        SimplePathVertex* vertex = nullptr;
        if (Indexed) {
            (void)index.pickVertex(points[i++ % kQueries], 0.1, vertex);
        } else {
            (void)path.pickVertex(points[i++ % kQueries], 0.1, vertex);
        }
        benchmark::DoNotOptimize(vertex);
    }
}

template <bool Indexed> void BM_PickPosition(benchmark::State& state) {
    int const n = static_cast<int>(state.range(0));
    SimplePath const& path = blob(n);
    SimplePathSpatialIndex const& index = indexOf(n);
    std::vector<DPoint> const points = nearCurve(path, 4);
    std::size_t i = 0;
    for (auto _ : state) {
        SimplePathPosition position;
        if (Indexed) {
            (void)index.pickPosition(points[i++ % kQueries], 0.1, position);
        } else {
            (void)path.pickPosition(points[i++ % kQueries], 0.1, position);
        }
        benchmark::DoNotOptimize(position);
    }
}

// A 20-unit box somewhere in the blob's bounds (about 1,000 across): mostly empty, sometimes crossed.
template <bool Indexed> void BM_InBox(benchmark::State& state) {
    int const n = static_cast<int>(state.range(0));
    SimplePath const& path = blob(n);
    SimplePathSpatialIndex const& index = indexOf(n);
    std::vector<DPoint> const points = scatter(path, 5);
    IdTrans<DPoint> const id;
    std::size_t i = 0;
    for (auto _ : state) {
        DPoint const p = points[i++ % kQueries];
        DPoint const lo(p.x - 10.0, p.y - 10.0), hi(p.x + 10.0, p.y + 10.0);
        int const found = Indexed ? index.inBox(lo, hi) : path.pretransformInBox(id, lo, hi);
        benchmark::DoNotOptimize(found);
    }
}

void BM_IndexBuild(benchmark::State& state) {
    SimplePath const& path = blob(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        SimplePathSpatialIndex index;
        (void)index.build(path);
        benchmark::DoNotOptimize(index);
    }
}

// The path is moved (which makes the index stale) outside the timing; the refit recomputes every box in
// the storage it has.
void BM_IndexRefit(benchmark::State& state) {
    SimplePath& path = blob(static_cast<int>(state.range(0)));
    SimplePathSpatialIndex index;
    (void)index.build(path);
    double step = 1e-3;
    for (auto _ : state) {
        state.PauseTiming();
        (void)path.translate(DVector(step, 0.0));
        step = -step;
        state.ResumeTiming();
        (void)index.refit();
        benchmark::DoNotOptimize(index);
    }
    // Leaves the shared path where it was.
    if (step < 0.0) {
        (void)path.translate(DVector(-1e-3, 0.0));
    }
}

void sizes(benchmark::internal::Benchmark* b) {
    b->Arg(10000)->Arg(100000)->Unit(benchmark::kMicrosecond);
}

} // namespace

BENCHMARK_TEMPLATE(BM_Nearest, false)->Name("Nearest/linear")->Apply(sizes);
BENCHMARK_TEMPLATE(BM_Nearest, true)->Name("Nearest/indexed")->Apply(sizes);
BENCHMARK_TEMPLATE(BM_Intersections, false)->Name("Intersections/linear")->Apply(sizes);
BENCHMARK_TEMPLATE(BM_Intersections, true)->Name("Intersections/indexed")->Apply(sizes);
BENCHMARK_TEMPLATE(BM_PickVertex, false)->Name("PickVertex/linear")->Apply(sizes);
BENCHMARK_TEMPLATE(BM_PickVertex, true)->Name("PickVertex/indexed")->Apply(sizes);
BENCHMARK_TEMPLATE(BM_PickPosition, false)->Name("PickPosition/linear")->Apply(sizes);
BENCHMARK_TEMPLATE(BM_PickPosition, true)->Name("PickPosition/indexed")->Apply(sizes);
BENCHMARK_TEMPLATE(BM_InBox, false)->Name("InBox/linear")->Apply(sizes);
BENCHMARK_TEMPLATE(BM_InBox, true)->Name("InBox/indexed")->Apply(sizes);
BENCHMARK(BM_IndexBuild)->Name("Index/build")->Apply(sizes);
BENCHMARK(BM_IndexRefit)->Name("Index/refit")->Apply(sizes);
