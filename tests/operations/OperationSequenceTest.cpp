// Seeded random vertex operations, undos and redos on random open and closed paths, against a model of
// exact drawing states: undo gives back the state before, redo the state first produced, a failure
// changes nothing, and each vertex object sits in one place of one path. Under the sanitizers the same
// sequences catch leaks and double frees.

#include <algorithm>
#include <limits>
#include <list>
#include <memory>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "OperationHost.h"
#include "simplepath/operations/SimplePathOperationFactory.h"

using namespace ops_test;

namespace {

struct Entry {
    std::unique_ptr<SimplePathOperation> op;
    DrawingState before, after;
};

struct Sequence {
    explicit Sequence(unsigned seed) : rng(seed) {
        int const paths = between(1, 3);
        for (int k = 0; k < paths; ++k) {
            std::vector<SimplePathLocationTriple> triples;
            int const n = between(1, 7);
            for (int i = 0; i < n; ++i) {
                triples.push_back(randomTriple(DPoint(10.0 * i + between(0, 3), 200.0 * k + between(0, 20))));
            }
            addPath(pool, triples, chance(0.4) ? 1 : 0);
        }
    }

    void run(int steps) {
        for (int step = 0; step < steps && !testing::Test::HasFailure(); ++step) {
            SCOPED_TRACE(testing::Message() << "step " << step);
            double const roll = uniform(0.0, 1.0);
            if (roll < 0.25 && !done.empty()) {
                replay(done, undone, true);
            } else if (roll < 0.4 && !undone.empty()) {
                replay(undone, done, false);
            } else if (!executeNew() && !done.empty()) {
                replay(done, undone, true);
            }
        }
    }

    int executions = 0;
    int failures = 0;

    int between(int low, int high) { return std::uniform_int_distribution<int>(low, high)(rng); }
    double uniform(double low, double high) { return std::uniform_real_distribution<double>(low, high)(rng); }
    bool chance(double p) { return uniform(0.0, 1.0) < p; }

    SimplePathLocationTriple randomTriple(DPoint const& anchor) {
        auto const mode = static_cast<Mode>(chance(0.25) ? 7 : between(0, 2)); // 7: no mode
        if (chance(0.25)) {
            return SimplePathLocationTriple(anchor, anchor, anchor, mode);
        }
        return SimplePathLocationTriple(anchor + DVector(between(-4, -1), between(-3, 3)), anchor,
                                        anchor + DVector(between(1, 4), between(-3, 3)), mode);
    }

    SimplePath* randomPath() {
        std::vector<SimplePath*> live;
        for (auto const& p : pool) {
            if (p->numTriples() > 0) {
                live.push_back(p.get());
            }
        }
        return live.empty() ? nullptr
                            : live[static_cast<std::size_t>(between(0, static_cast<int>(live.size()) - 1))];
    }

    SimplePathVertexTriple tripleOf(SimplePath const& p) {
        return tripleAt(p, between(0, p.numTriples() - 1));
    }
    static DPoint at(SimplePathVertex const* v) { return v->getLocation(); }

    SimplePathVertex* randomVertex(SimplePath const& path, bool anchorOnly = false) {
        SimplePathVertexTriple const t = tripleOf(path);
        int const which = anchorOnly ? 1 : between(0, 2);
        return which == 0 ? t.first : which == 1 ? t.anchor : t.last;
    }

    SimplePathPosition randomPosition(SimplePath const& path) {
        int const segments = path.numTriples() - (path.isClosedSimplePath() != 0 ? 0 : 1);
        int const index = chance(0.05) ? between(-2, segments + 3) : between(0, std::max(segments, 1) - 1);
        double const t = chance(0.3)    ? 0.0
                         : chance(0.02) ? std::numeric_limits<double>::quiet_NaN()
                                        : uniform(0.0, 1.0);
        return positionOf(path, index, t);
    }

    DPoint randomPoint() { return DPoint(uniform(-50.0, 250.0), uniform(-50.0, 450.0)); }

    SimplePathOperation* makeOperation(SimplePath* path) {
        // Now and then a vertex of another path: the operation must refuse it.
        SimplePath* const other = chance(0.05) ? randomPath() : path;
        using ByVertex = SimplePathOperation* (*)(PHashablePointer<SimplePath>, SimplePathVertex*, bool);
        static ByVertex const byVertex[] = {&F::createSetCuspModeOperation, &F::createSetSmoothModeOperation,
                                            &F::createSetSymmetricModeOperation,
                                            &F::createSetStraightModeOperation,
                                            &F::createDeleteVertexOperation};
        int const kind = between(0, 15);
        if (kind < 5 || ((kind == 9 || kind == 10) && path->numTriples() > 40)) { // no endless growth
            return byVertex[kind % 5](path, randomVertex(*other), false);
        }
        std::list<PHashablePointer<SimplePath>> listed{path};
        switch (kind) { // whole paths, now and then
        case 13:
            return F::createTranslateOperation(path, DVector(between(-5, 5), between(-5, 5)));
        case 14:
            return chance(0.3) ? F::createDeleteOperation(path) : F::createClosePathsOperation(listed);
        }
        switch (kind) {
        case 5:
            return F::createMoveSelectedVerticesOperation(path, randomVertex(*other),
                                                          DVector(between(-5, 5), between(-5, 5)), false);
        case 6: {
            // Reference points on the identity box form's corners, which it maps exactly onto themselves,
            // so that a redo (which maps them again) repeats the first execution bit for bit. Now and
            // then a code without its y source, which is refused.
            auto const code =
                static_cast<short>((0x10 << between(0, 3)) | (chance(0.9) ? 0x100 << between(0, 3) : 0));
            return F::createAverageVertexOperation(path, randomVertex(*other), DPoint(0.0, 0.0),
                                                   DPoint(1.0, 0.0), DPoint(1.0, 1.0), code, PBoxForm(),
                                                   false);
        }
        case 7: { // now and then to an infinite anchor
            DPoint const anchor =
                chance(0.05) ? DPoint(std::numeric_limits<double>::infinity(), 0.0) : randomPoint();
            SimplePathLocationTriple const target(randomPoint(), anchor, randomPoint(),
                                                  static_cast<Mode>(between(0, 2)));
            return F::createChangeVertexOperation(path, tripleOf(*other), target, false);
        }
        case 8: {
            SimplePathVertexTriple const t = tripleOf(*other);
            DVector const drag(between(-6, 6), between(-6, 6));
            return F::createVertexPickOperation(
                path,
                SimplePathVertexPickAction(t, {at(t.first) + drag, at(t.anchor) + drag, at(t.last), t.mode}),
                false);
        }
        case 9:
            return F::createAddVertexAtPositionOperation(path, randomPosition(*path), false);
        case 10: {
            std::list<SimplePathLocationTriple> triples;
            for (int i = between(0, 3); i > 0; --i) {
                triples.push_back(randomTriple(randomPoint()));
            }
            return F::createInsertVerticesOperation(path, triples, between(-1, path->numTriples() + 1),
                                                    false);
        }
        case 11:
            return chance(0.3)
                       ? F::createSplitVertexOperation(path, randomVertex(*path, true))
                       : F::createSplitVertexOperation(path, randomPosition(*path), nullptr, nullptr, false);
        default: {
            SimplePath* const second = randomPath();
            // Mostly end anchors; now and then any vertex, which is not joinable.
            auto end = [&](SimplePath const& p) {
                return chance(0.1) ? randomVertex(p)
                                   : tripleAt(p, chance(0.5) ? 0 : p.numTriples() - 1).anchor;
            };
            return F::createJoinVerticesOperation(path, end(*path), end(*second), second, false);
        }
        }
    }

    // The host takes over every path a change instruction reports added.
    void adoptReported(SimplePathChangeInstruction const& change) {
        std::list<PHashablePointer<SimplePath>> added;
        change.simplePathsAdded(added);
        for (auto const& p : added) {
            if (std::none_of(pool.begin(), pool.end(), [&](auto const& q) { return q.get() == p; })) {
                pool.emplace_back(p.pointer);
            }
        }
    }

    bool executeNew() {
        SimplePath* const path = randomPath();
        if (path == nullptr) {
            return false;
        }
        std::unique_ptr<SimplePathOperation> op(makeOperation(path));
        if (op == nullptr) {
            return true; // the factory refused (an end anchor cannot be split)
        }
        DrawingState const before = drawingState(pool);
        Outcome const run = execute(*op);
        adoptReported(*run.change);
        EXPECT_TRUE(eachVertexOnce(pool));
        ++executions;
        if (run.result != SimplePathOperation::Success) {
            ++failures;
            EXPECT_TRUE(run.affected.empty());
            EXPECT_EQ(before, drawingState(pool)) << "a failed operation changed the drawing";
            op->undoOperation(); // restores the memento a failed execution keeps: the same state
            EXPECT_EQ(before, drawingState(pool));
            return true;
        }
        EXPECT_FALSE(run.affected.empty());
        std::list<PHashablePointer<SimplePath>> removed; // a path the edit emptied is reported removed
        run.change->simplePathsRemoved(removed);
        for (auto const& [p, state] : before) {
            EXPECT_TRUE(p->numTriples() > 0 || std::count(removed.begin(), removed.end(), p) > 0);
        }
        undone.clear(); // a new edit ends the redo history; those operations are undone and free their own
        done.push_back({std::move(op), before, drawingState(pool)});
        if (done.size() > 24) {
            done.erase(done.begin()); // the oldest leaves the history with its edit in effect
        }
        return true;
    }

    // Undo (twice: the second changes nothing) gives back the state before; redo the state first made.
    void replay(std::vector<Entry>& from, std::vector<Entry>& to, bool undo) {
        Entry entry = std::move(from.back());
        from.pop_back();
        for (int k = 0; k < (undo ? 2 : 0); ++k) {
            entry.op->undoOperation();
        }
        if (!undo) {
            Outcome const run = execute(*entry.op);
            EXPECT_EQ(SimplePathOperation::Success, run.result);
            adoptReported(*run.change);
        }
        EXPECT_EQ(undo ? entry.before : entry.after, drawingState(pool));
        EXPECT_TRUE(eachVertexOnce(pool));
        to.push_back(std::move(entry));
    }

    std::mt19937 rng;
    // Declared first, destroyed last: the operations go before the paths they point to.
    std::vector<std::unique_ptr<SimplePath>> pool;
    std::vector<Entry> done;
    std::vector<Entry> undone;
};

TEST(OperationSequence, UndoAndRedoFollowTheModelThroughRandomEdits) {
    int executions = 0;
    int failures = 0;
    for (unsigned seed = 1; seed <= 8 && !HasFailure(); ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Sequence sequence(seed);
        sequence.run(600);
        executions += sequence.executions;
        failures += sequence.failures;
    }
    // The sequences must exercise both outcomes, or they test less than they claim.
    EXPECT_GT(executions, 2000);
    EXPECT_GT(failures, 50);
    EXPECT_GT(executions - failures, 1000);
}

} // namespace
