// Executing and undoing a slice on 10,000-triple paths, in each variant, against the floor of taking
// and restoring a memento of one such path. A slice takes mementos of its inputs and result paths, runs
// two to six split, join and delete primitives and walks the involved paths after each step to learn
// which vertex objects it must keep; it should stay within a small multiple of the floor. Each
// iteration runs execute then undo, so every execution after the first is a redo.

#include <benchmark/benchmark.h>

#include <list>
#include <memory>

#include "simplepath/edit/SimplePathChangeInstruction.h"
#include "simplepath/operations/SimplePathOperationFactory.h"
#include "simplepath/path/SimplePath.h"
#include "simplepath/path/SimplePathMemento.h"

#include "bench/ZigzagPath.h"

namespace {

constexpr int kTriples = 10000;

void BM_SliceFloor_MementoAndUndo(benchmark::State& state) {
    SimplePath path;
    fillZigzag(path, kTriples, 0.0, 1);
    for (auto _ : state) {
        SimplePathMemento* memento = nullptr;
        (void)path.createMemento(&memento);
        (void)path.undo(memento);
        delete memento;
        benchmark::DoNotOptimize(memento);
    }
}
BENCHMARK(BM_SliceFloor_MementoAndUndo)->Unit(benchmark::kMicrosecond);

// state.range(0): 0 one path, 1 two paths; state.range(1): closed flag of the first path, (2) of the
// second.
void BM_SliceExecuteAndUndo(benchmark::State& state) {
    bool const two = state.range(0) != 0;
    SimplePath first;
    SimplePath second;
    fillZigzag(first, kTriples, 0.0, static_cast<int>(state.range(1)));
    fillZigzag(second, kTriples, 500.0, static_cast<int>(state.range(2)));
    SimplePathPosition p1;
    SimplePathPosition p2;
    (void)first.makePosition(kTriples / 3, 0.0, p1);
    (void)(two ? second : first).makePosition(2 * kTriples / 3, 0.0, p2);
    std::unique_ptr<SimplePathOperation> op(
        SimplePathOperationFactory::createSlicePathOperation(&first, p1, two ? &second : &first, p2));
    std::list<PHashablePointer<SimplePath>> made;
    for (auto _ : state) {
        std::list<PHashablePointer<SimplePath>> affected;
        SimplePathChangeInstruction change;
        if (op->executeOperation(affected, change) != SimplePathOperation::Success) {
            state.SkipWithError("slice failed");
            break;
        }
        if (made.empty()) {
            change.simplePathsAdded(made);
        }
        op->undoOperation();
    }
    op.reset();
    for (auto const& p : made) {
        delete p.pointer;
    }
}
BENCHMARK(BM_SliceExecuteAndUndo)
    ->ArgNames({"two", "closed1", "closed2"})
    ->Args({0, 1, 1})
    ->Args({0, 0, 0})
    ->Args({1, 1, 1})
    ->Args({1, 0, 1})
    ->Args({1, 0, 0})
    ->Unit(benchmark::kMicrosecond);

} // namespace
