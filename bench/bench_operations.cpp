// Executing and undoing each vertex operation on a 10,000-triple path, against the floor every
// operation stands on: taking a memento of that path and restoring it. An operation should cost no more
// than twice that floor; the rest of its work (finding the vertex, the edit itself) is small beside it.
// Each iteration runs execute then undo on one operation, so after the first iteration every execution
// is a redo, reusing the vertices and paths the first one made.

#include <benchmark/benchmark.h>

#include <functional>
#include <list>
#include <memory>

#include "simplepath/edit/SimplePathChangeInstruction.h"
#include "simplepath/operations/SimplePathOperationFactory.h"
#include "simplepath/path/SimplePath.h"
#include "simplepath/path/SimplePathMemento.h"

#include "bench/ZigzagPath.h"

namespace {

constexpr int kTriples = 10000;
constexpr int kMiddle = kTriples / 2;

void BM_MementoAndUndo(benchmark::State& state) {
    SimplePath path;
    fillZigzag(path, kTriples, 0.0, 0);
    for (auto _ : state) {
        SimplePathMemento* memento = nullptr;
        (void)path.createMemento(&memento);
        (void)path.undo(memento);
        delete memento;
        benchmark::DoNotOptimize(memento);
    }
}
BENCHMARK(BM_MementoAndUndo)->Unit(benchmark::kMicrosecond);

using Maker = std::function<SimplePathOperation*(SimplePath&, SimplePath&)>;

void executeAndUndo(benchmark::State& state, Maker const& make, int closed = 0) {
    SimplePath path;
    fillZigzag(path, kTriples, 0.0, closed);
    SimplePath other; // a short second path, for the join
    fillZigzag(other, 2, 100.0, 0);
    std::unique_ptr<SimplePathOperation> op(make(path, other));
    std::unique_ptr<SimplePath> made[3];
    for (auto _ : state) {
        std::list<PHashablePointer<SimplePath>> affected;
        SimplePathChangeInstruction change;
        if (op->executeOperation(affected, change) != SimplePathOperation::Success) {
            state.SkipWithError("the operation failed");
            break;
        }
        op->undoOperation();
        // Paths the first execution reported added become the host's (they stay empty after undo).
        std::list<PHashablePointer<SimplePath>> added;
        change.simplePathsAdded(added);
        int k = 0;
        for (auto const& p : added) {
            if (made[k] == nullptr) {
                made[k].reset(p.pointer);
            }
            ++k;
        }
    }
    op.reset();
}

SimplePathVertexTriple middle(SimplePath const& path) {
    return path.getTripleList()[kMiddle];
}

SimplePathPosition at(SimplePath const& path, int index, double t) {
    SimplePathPosition position;
    (void)path.makePosition(index, t, position);
    return position;
}

using F = SimplePathOperationFactory;

void BM_SetCusp(benchmark::State& s) {
    executeAndUndo(s, [](SimplePath& p, SimplePath&) {
        return F::createSetCuspModeOperation(&p, middle(p).anchor, false);
    });
}
void BM_SetSmooth(benchmark::State& s) {
    executeAndUndo(s, [](SimplePath& p, SimplePath&) {
        return F::createSetSmoothModeOperation(&p, middle(p).last, false);
    });
}
void BM_SetSymmetric(benchmark::State& s) {
    executeAndUndo(s, [](SimplePath& p, SimplePath&) {
        return F::createSetSymmetricModeOperation(&p, middle(p).anchor, false);
    });
}
void BM_SetStraight(benchmark::State& s) {
    executeAndUndo(s, [](SimplePath& p, SimplePath&) {
        return F::createSetStraightModeOperation(&p, middle(p).anchor, false);
    });
}
void BM_MoveSelected(benchmark::State& s) {
    executeAndUndo(s, [](SimplePath& p, SimplePath&) {
        return F::createMoveSelectedVerticesOperation(&p, middle(p).anchor, DVector(1, 2), false);
    });
}
void BM_Average(benchmark::State& s) {
    executeAndUndo(s, [](SimplePath& p, SimplePath&) {
        return F::createAverageVertexOperation(&p, middle(p).anchor, {}, {5, 5}, {}, 0x20 | 0x800, PBoxForm(),
                                               false);
    });
}
void BM_DeleteAnchor(benchmark::State& s) {
    executeAndUndo(s, [](SimplePath& p, SimplePath&) {
        return F::createDeleteVertexOperation(&p, middle(p).anchor, false);
    });
}
void BM_DeleteHandle(benchmark::State& s) {
    executeAndUndo(s, [](SimplePath& p, SimplePath&) {
        return F::createDeleteVertexOperation(&p, middle(p).first, false);
    });
}
void BM_Change(benchmark::State& s) {
    executeAndUndo(s, [](SimplePath& p, SimplePath&) {
        return F::createChangeVertexOperation(&p, middle(p),
                                              SimplePathLocationTriple({1, 1}, {2, 2}, {3, 3}, {}), false);
    });
}
void BM_Pick(benchmark::State& s) {
    executeAndUndo(s, [](SimplePath& p, SimplePath&) {
        return F::createVertexPickOperation(
            &p, SimplePathVertexPickAction(middle(p), SimplePathLocationTriple({1, 1}, {2, 2}, {3, 3}, {})),
            false);
    });
}
void BM_Add(benchmark::State& s) {
    executeAndUndo(s, [](SimplePath& p, SimplePath&) {
        return F::createAddVertexAtPositionOperation(&p, at(p, kMiddle, 0.5), false);
    });
}
void BM_Insert(benchmark::State& s) {
    executeAndUndo(s, [](SimplePath& p, SimplePath&) {
        return F::createInsertVerticesOperation(&p, {SimplePathLocationTriple({1, 1}, {2, 2}, {3, 3}, {})},
                                                kMiddle, false);
    });
}
void BM_SplitOpen(benchmark::State& s) {
    executeAndUndo(s, [](SimplePath& p, SimplePath&) {
        return F::createSplitVertexOperation(&p, at(p, kMiddle, 0.0), nullptr, nullptr, false);
    });
}
void BM_SplitClosed(benchmark::State& s) {
    executeAndUndo(
        s,
        [](SimplePath& p, SimplePath&) {
            return F::createSplitVertexOperation(&p, at(p, kMiddle, 0.0), nullptr, nullptr, false);
        },
        1);
}
void BM_Join(benchmark::State& s) {
    executeAndUndo(s, [](SimplePath& p, SimplePath& q) {
        return F::createJoinVerticesOperation(&p, p.getTripleList()[kTriples - 1].anchor,
                                              q.getTripleList()[0].anchor, &q, false);
    });
}

BENCHMARK(BM_SetCusp)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_SetSmooth)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_SetSymmetric)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_SetStraight)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_MoveSelected)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Average)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_DeleteAnchor)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_DeleteHandle)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Change)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Pick)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Add)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Insert)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_SplitOpen)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_SplitClosed)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Join)->Unit(benchmark::kMicrosecond);

} // namespace
