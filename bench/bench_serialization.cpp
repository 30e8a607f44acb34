// Writing and reading path streams, and taking and restoring mementos, against plain memory copies of
// the same number of bytes.

#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "simplepath/interfaces/BinaryDeserializer.h"
#include "simplepath/interfaces/BinarySerializer.h"
#include "simplepath/path/SimplePath.h"
#include "simplepath/path/SimplePathMemento.h"
#include "simplepath/path/SimplePathSerializer.h"

namespace {

// A wavy open path: every fourth vertex has retracted handles (a short record), the rest full ones.
void buildPath(SimplePath& path, int n) {
    SimplePathVertex *f = nullptr, *a = nullptr, *l = nullptr;
    for (int i = 0; i < n; ++i) {
        double const x = i * 0.731;
        double const y = (i % 7) * 1.25;
        double const h = i % 4 == 0 ? 0.0 : 0.3;
        path.addTriple({x - h, y + h}, f, {x, y}, a, {x + h, y - h}, l,
                       static_cast<SimplePathVertexTriple::VertexTripleMode>(i % 3));
    }
}

std::string streamOf(SimplePath& path) {
    std::ostringstream out;
    BinarySerializer serializer(out);
    SimplePathSerializer::write(&path, serializer);
    return out.str();
}

void BM_WriteStream(benchmark::State& state) {
    SimplePath path;
    buildPath(path, static_cast<int>(state.range(0)));
    std::size_t const bytes = streamOf(path).size();
    for (auto _ : state) {
        std::ostringstream out;
        BinarySerializer serializer(out);
        benchmark::DoNotOptimize(SimplePathSerializer::write(&path, serializer));
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes));
}

// readNew into a new path, which is freed outside the timing.
void BM_ReadStream(benchmark::State& state) {
    SimplePath source;
    buildPath(source, static_cast<int>(state.range(0)));
    std::string const bytes = streamOf(source);
    for (auto _ : state) {
        std::istringstream in(bytes);
        BinaryDeserializer deserializer(in);
        PHashablePointer<SimplePath> path;
        benchmark::DoNotOptimize(SimplePathSerializer::readNew(deserializer, path));
        state.PauseTiming();
        delete path.getPointer();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes.size()));
}

void BM_CreateMemento(benchmark::State& state) {
    SimplePath path;
    buildPath(path, static_cast<int>(state.range(0)));
    for (auto _ : state) {
        SimplePathMemento* memento = nullptr;
        benchmark::DoNotOptimize(path.createMemento(&memento));
        delete memento;
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetBytesProcessed(state.iterations() * state.range(0) *
                            static_cast<std::int64_t>(sizeof(MementoTriple)));
}

void BM_UndoMemento(benchmark::State& state) {
    SimplePath path;
    buildPath(path, static_cast<int>(state.range(0)));
    SimplePathMemento* memento = nullptr;
    path.createMemento(&memento);
    std::unique_ptr<SimplePathMemento> const owned(memento);
    for (auto _ : state) {
        benchmark::DoNotOptimize(path.undo(memento));
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetBytesProcessed(state.iterations() * state.range(0) *
                            static_cast<std::int64_t>(sizeof(MementoTriple)));
}

// The yardstick: copying one memento's worth of bytes (80 per vertex) with memcpy.
void BM_MemcpyMementoSize(benchmark::State& state) {
    std::size_t const bytes = static_cast<std::size_t>(state.range(0)) * sizeof(MementoTriple);
    std::vector<char> from(bytes, 1);
    std::vector<char> to(bytes, 0);
    for (auto _ : state) {
        std::memcpy(to.data(), from.data(), bytes);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes));
}

BENCHMARK(BM_WriteStream)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadStream)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CreateMemento)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_UndoMemento)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_MemcpyMementoSize)->Arg(100000)->Unit(benchmark::kMillisecond);

} // namespace
