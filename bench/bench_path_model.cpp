// Building, copying and destroying paths: the costs every other path operation sits on.

#include <benchmark/benchmark.h>

#include <memory>

#include "simplepath/path/SimplePath.h"

namespace {

void buildPath(SimplePath& path, int n) {
    SimplePathVertex *f = nullptr, *a = nullptr, *l = nullptr;
    for (int i = 0; i < n; ++i) {
        double const x = i;
        // Timed for speed only; the unit tests check what this call answers.
        (void)path.addTriple({x - 0.25, 1.0}, f, {x, 0.0}, a, {x + 0.25, -1.0}, l,
                             SimplePathVertexTriple::Smooth);
    }
}

// addTriple one triple at a time into an empty path (the path is freed outside the timing).
void BM_BuildTripleByTriple(benchmark::State& state) {
    int const n = static_cast<int>(state.range(0));
    for (auto _ : state) {
        auto path = std::make_unique<SimplePath>();
        buildPath(*path, n);
        benchmark::DoNotOptimize(path.get());
        state.PauseTiming();
        path.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * n);
}

// The deep copy constructor (the copy is freed outside the timing).
void BM_DeepCopy(benchmark::State& state) {
    int const n = static_cast<int>(state.range(0));
    SimplePath source;
    buildPath(source, n);
    for (auto _ : state) {
        auto copy = std::make_unique<SimplePath>(source);
        benchmark::DoNotOptimize(copy.get());
        state.PauseTiming();
        copy.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * n);
}

// The destructor, which deletes every vertex.
void BM_Destroy(benchmark::State& state) {
    int const n = static_cast<int>(state.range(0));
    SimplePath source;
    buildPath(source, n);
    for (auto _ : state) {
        state.PauseTiming();
        auto copy = std::make_unique<SimplePath>(source);
        state.ResumeTiming();
        copy.reset();
    }
    state.SetItemsProcessed(state.iterations() * n);
}

} // namespace

BENCHMARK(BM_BuildTripleByTriple)->Arg(1000)->Arg(100000);
BENCHMARK(BM_DeepCopy)->Arg(1000)->Arg(100000);
BENCHMARK(BM_Destroy)->Arg(1000)->Arg(100000);
