// Carrying held positions across an edit: a million (path, position) pairs through a chain of ten
// recorded transforms, the way a host brings a large selection up to date after a compound edit.

#include <benchmark/benchmark.h>

#include <list>
#include <memory>
#include <utility>

#include "simplepath/edit/AbsorbSegmentTransform.h"
#include "simplepath/edit/CombineAdjacentSegmentsTransform.h"
#include "simplepath/edit/InsertAnchorsTransform.h"
#include "simplepath/edit/RotateTransform.h"
#include "simplepath/edit/ShiftPositionTransform.h"
#include "simplepath/edit/SimplePathChangeInstruction.h"
#include "simplepath/edit/SplitSegmentTransform.h"
#include "simplepath/path/SimplePath.h"

namespace {

using PathPosition = std::pair<PHashablePointer<SimplePath>, SimplePathPosition>;

// Ten transforms on `path`, the kinds vertex edits record, so that every pair is touched by each.
void recordChain(SimplePathChangeInstruction& change, SimplePath* path, int segments) {
    change.insertPositionTransform(new SplitSegmentTransform(path, segments / 2, 0.3));
    change.insertPositionTransform(new CombineAdjacentSegmentsTransform(path, segments / 3, 0.5));
    change.insertPositionTransform(new RotateTransform(path, 7, segments));
    change.insertPositionTransform(new InsertAnchorsTransform(path, segments / 4));
    change.insertPositionTransform(new SplitSegmentTransform(path, 10, 0.75));
    change.insertPositionTransform(new AbsorbSegmentTransform(path, segments - 2, segments - 2));
    change.insertPositionTransform(new RotateTransform(path, -3, segments));
    change.insertPositionTransform(new CombineAdjacentSegmentsTransform(path, 5, 0.5));
    change.insertPositionTransform(new ShiftPositionTransform(path, path, 2));
    change.insertPositionTransform(new ShiftPositionTransform(path, path, -2));
}

std::list<PathPosition> makePairs(SimplePath* path, SimplePath* elsewhere, int count, int segments) {
    std::list<PathPosition> pairs;
    for (int i = 0; i < count; ++i) {
        SimplePathPosition position;
        position.setValues(i % segments, (i % 7) / 7.0);
        pairs.emplace_back(i % 4 == 3 ? elsewhere : path, position); // a quarter on another path
    }
    return pairs;
}

// translate(list) over a million pairs. The pairs are rebuilt outside the timing so every run
// translates the same input.
void BM_TranslateMillionPairsTenTransforms(benchmark::State& state) {
    int const count = static_cast<int>(state.range(0));
    int const segments = 1000;
    SimplePath path, elsewhere;
    SimplePathChangeInstruction change;
    recordChain(change, &path, segments);
    std::list<PathPosition> const source = makePairs(&path, &elsewhere, count, segments);
    for (auto _ : state) {
        state.PauseTiming();
        std::list<PathPosition> pairs = source;
        state.ResumeTiming();
        change.translate(pairs);
        benchmark::DoNotOptimize(pairs.front());
        state.PauseTiming();
        pairs.clear();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(BM_TranslateMillionPairsTenTransforms)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

// The single-pair form, for the cost of one pair through the chain without list traffic.
void BM_TranslateOnePairTenTransforms(benchmark::State& state) {
    SimplePath path;
    SimplePathChangeInstruction change;
    recordChain(change, &path, 1000);
    SimplePathPosition position;
    position.setValues(499, 0.6);
    PathPosition const pair(&path, position);
    for (auto _ : state) {
        benchmark::DoNotOptimize(change.translate(pair));
    }
}
BENCHMARK(BM_TranslateOnePairTenTransforms);

} // namespace
