// Geometric queries on closed, wiggly paths of 1,000 to 100,000 cubic segments (deterministic random
// blobs about 2,000 units across), queried at points scattered over the path's bounds. Times are per
// query.

#include <benchmark/benchmark.h>

#include <list>
#include <map>
#include <memory>
#include <vector>

#include "simplepath/path/SimplePath.h"
#include "tests/support/WigglyPath.h"

namespace {

SimplePath const& blob(int segments) {
    static std::map<int, std::unique_ptr<SimplePath>> made;
    std::unique_ptr<SimplePath>& path = made[segments];
    if (!path) {
        path = std::make_unique<SimplePath>();
        support::buildWigglyBlob(*path, segments, 2024);
    }
    return *path;
}

// Query points spread uniformly over the path's bounds.
std::vector<DPoint> scatter(SimplePath const& path, int count, std::uint64_t seed) {
    double minX, minY, maxX, maxY;
    // Timed for speed only; the unit tests check what this call answers.
    (void)path.getMinMax(minX, minY, maxX, maxY);
    support::UnitRandom random(seed);
    std::vector<DPoint> points;
    for (int i = 0; i < count; ++i) {
        points.emplace_back(random.between(minX, maxX), random.between(minY, maxY));
    }
    return points;
}

constexpr int kQueries = 256;

void BM_FindClosestPosition(benchmark::State& state) {
    SimplePath const& path = blob(static_cast<int>(state.range(0)));
    std::vector<DPoint> const points = scatter(path, kQueries, 1);
    std::size_t i = 0;
    for (auto _ : state) {
        SimplePathPosition position;
        double d2 = 0;
        // Timed for speed only; the unit tests check what this call answers.
        (void)path.findClosestPosition(points[i++ % kQueries], position, d2);
        benchmark::DoNotOptimize(d2);
    }
}

void BM_PretransformFindClosestPosition(benchmark::State& state) {
    SimplePath const& path = blob(static_cast<int>(state.range(0)));
    std::vector<DPoint> const points = scatter(path, kQueries, 1);
    IdTrans<DPoint> const id;
    std::size_t i = 0;
    for (auto _ : state) {
        SimplePathPosition position;
        double d2 = 0;
        // Timed for speed only; the unit tests check what this call answers.
        (void)path.pretransformFindClosestPosition(points[i++ % kQueries], id, position, d2);
        benchmark::DoNotOptimize(d2);
    }
}

void BM_GetMinMax(benchmark::State& state) {
    SimplePath const& path = blob(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        double minX, minY, maxX, maxY;
        // Timed for speed only; the unit tests check what this call answers.
        (void)path.getMinMax(minX, minY, maxX, maxY);
        benchmark::DoNotOptimize(minX);
        benchmark::DoNotOptimize(maxY);
    }
}

void BM_GetTopBottom(benchmark::State& state) {
    SimplePath const& path = blob(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        DPoint top, bottom;
        // Timed for speed only; the unit tests check what this call answers.
        (void)path.getTopBottom(top, bottom);
        benchmark::DoNotOptimize(top);
    }
}

// One line through two scattered points; the crossings are appended to a list emptied each time.
void BM_FindIntersectionsIdentity(benchmark::State& state) {
    SimplePath const& path = blob(static_cast<int>(state.range(0)));
    std::vector<DPoint> const points = scatter(path, kQueries + 1, 2);
    IdTrans<DPoint> const id;
    std::list<SimplePathPosition> out;
    std::size_t i = 0;
    std::size_t crossings = 0;
    for (auto _ : state) {
        out.clear();
        std::size_t const k = i++ % kQueries;
        // Timed for speed only; the unit tests check what this call answers.
        (void)path.pretransformFindIntersections(points[k], points[k + 1], id, out);
        crossings += out.size();
    }
    state.counters["crossings"] = benchmark::Counter(static_cast<double>(crossings) / state.iterations());
}

void BM_PretransformLength(benchmark::State& state) {
    SimplePath const& path = blob(static_cast<int>(state.range(0)));
    IdTrans<DPoint> const id;
    for (auto _ : state) {
        double length = 0;
        path.pretransformLength(id, length);
        benchmark::DoNotOptimize(length);
    }
}

// Mostly misses (tolerance 0.5 on a 2,000-unit blob), so both passes run over every triple.
void BM_PickVertex(benchmark::State& state) {
    SimplePath const& path = blob(static_cast<int>(state.range(0)));
    std::vector<DPoint> const points = scatter(path, kQueries, 3);
    std::size_t i = 0;
    for (auto _ : state) {
        SimplePathVertex* vertex = nullptr;
        benchmark::DoNotOptimize(path.pickVertex(points[i++ % kQueries], 0.5, vertex));
    }
}

void BM_PickPosition(benchmark::State& state) {
    SimplePath const& path = blob(static_cast<int>(state.range(0)));
    std::vector<DPoint> const points = scatter(path, kQueries, 3);
    std::size_t i = 0;
    for (auto _ : state) {
        SimplePathPosition position;
        benchmark::DoNotOptimize(path.pickPosition(points[i++ % kQueries], 0.5, position));
    }
}

// Random positions (segment and parameter) on the path.
void BM_LocatePosition(benchmark::State& state) {
    SimplePath const& path = blob(static_cast<int>(state.range(0)));
    support::UnitRandom random(4);
    constexpr int kPositions = 4096;
    std::vector<SimplePathPosition> positions(kPositions);
    for (SimplePathPosition& p : positions) {
        // Timed for speed only; the unit tests check what this call answers.
        (void)path.makePosition(static_cast<int>(random.next() * path.numTriples()), random.next(), p);
    }
    std::size_t i = 0;
    for (auto _ : state) {
        DPoint out;
        // Timed for speed only; the unit tests check what this call answers.
        (void)path.locatePosition(positions[i++ % kPositions], out);
        benchmark::DoNotOptimize(out);
    }
}

} // namespace

BENCHMARK(BM_FindClosestPosition)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_PretransformFindClosestPosition)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_GetMinMax)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_GetTopBottom)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_FindIntersectionsIdentity)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_PretransformLength)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_PickVertex)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_PickPosition)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_LocatePosition)->Arg(1000)->Arg(100000);
