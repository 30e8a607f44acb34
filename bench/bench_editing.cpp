// Inserting and deleting one vertex in the middle of a long path. Both should cost about what moving the
// later half of the triples costs (shown by the memmove baseline), growing linearly with the path.

#include <benchmark/benchmark.h>

#include <cstring>
#include <set>
#include <vector>

#include "simplepath/edit/SimplePathChangeInstruction.h"
#include "simplepath/path/SimplePath.h"

#include "bench/ZigzagPath.h"

namespace {

void freeRemoved(SimplePathChangeInstruction const& change) {
    std::set<SimplePathVertex*> removed;
    change.simplePathVerticesRemoved(removed);
    for (SimplePathVertex* v : removed) {
        delete v;
    }
}

// One vertex inserted at (n/2, 0.5) and deleted again; `timeInsert` chooses which of the two is timed.
void insertAndDelete(benchmark::State& state, bool timeInsert) {
    int const n = static_cast<int>(state.range(0));
    SimplePath path;
    fillZigzag(path, n);
    SimplePathPosition middle;
    // Timed for speed only; the unit tests check what this call answers.
    (void)path.makePosition(n / 2, 0.5, middle);
    for (auto _ : state) {
        if (!timeInsert) {
            state.PauseTiming();
        }
        SimplePathChangeInstruction insert;
        // Timed for speed only; the unit tests check what this call answers.
        (void)path.addVertexAtPosition(middle, insert);
        SimplePathVertex* const anchor = path.getTripleList()[n / 2 + 1].anchor;
        if (timeInsert) {
            state.PauseTiming();
        } else {
            state.ResumeTiming();
        }
        SimplePathChangeInstruction remove;
        // Timed for speed only; the unit tests check what this call answers.
        (void)path.deleteVertex(anchor, remove); // finding the anchor by address is part of the deletion
        freeRemoved(remove);
        if (timeInsert) {
            state.ResumeTiming();
        }
    }
}

void BM_InsertInMiddle(benchmark::State& state) {
    insertAndDelete(state, true);
}
void BM_DeleteInMiddle(benchmark::State& state) {
    insertAndDelete(state, false);
}

// The floor: moving the later half of n 32-byte triples by one place.
void BM_MoveHalfTheTriples(benchmark::State& state) {
    auto const n = static_cast<std::size_t>(state.range(0));
    std::vector<SimplePathVertexTriple> triples(n + 1);
    for (auto _ : state) {
        std::memmove(&triples[n / 2 + 1], &triples[n / 2], (n - n / 2) * sizeof(SimplePathVertexTriple));
        benchmark::ClobberMemory();
    }
}

} // namespace

BENCHMARK(BM_InsertInMiddle)->Arg(1000)->Arg(10000)->Arg(100000);
BENCHMARK(BM_DeleteInMiddle)->Arg(1000)->Arg(10000)->Arg(100000);
BENCHMARK(BM_MoveHalfTheTriples)->Arg(1000)->Arg(10000)->Arg(100000);
