// Seeded random vertex operations, undos and redos on random open and closed paths, against a model of
// exact drawing states: undo gives back the state before, redo the state first produced, a failure
// changes nothing, and each vertex object sits in one place of one path. Under the sanitizers the same
// sequences catch leaks and double frees of the vertices and paths operations take out, make and reuse.

#include <cmath>
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

using Mode = SimplePathVertexTriple::VertexTripleMode;

struct Entry {
    std::unique_ptr<SimplePathOperation> op;
    DrawingState before;
    DrawingState after;
};

class Sequence {
  public:
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
                undo();
            } else if (roll < 0.4 && !undone.empty()) {
                redo();
            } else if (!executeNew() && !done.empty()) {
                undo();
            }
        }
    }

    int executions = 0;
    int failures = 0;

  private:
    int between(int low, int high) { return std::uniform_int_distribution<int>(low, high)(rng); }
    double uniform(double low, double high) { return std::uniform_real_distribution<double>(low, high)(rng); }
    bool chance(double p) { return uniform(0.0, 1.0) < p; }

    SimplePathLocationTriple randomTriple(DPoint const& anchor) {
        static Mode const modes[] = {Mode::Smooth, Mode::Cusp, Mode::Symmetric, static_cast<Mode>(7)};
        Mode const mode = modes[between(0, 3)];
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

    SimplePathVertexTriple tripleOf(SimplePath const& path) {
        return tripleAt(path, between(0, path.numTriples() - 1));
    }

    SimplePathVertex* randomVertex(SimplePath const& path, bool anchorOnly = false) {
        SimplePathVertexTriple const t = tripleOf(path);
        int const which = anchorOnly ? 1 : between(0, 2);
        return which == 0 ? t.first : which == 1 ? t.anchor : t.last;
    }

    SimplePathVertex* endAnchor(SimplePath const& path) {
        if (chance(0.1)) {
            return randomVertex(path); // mostly not an end
        }
        return tripleAt(path, chance(0.5) ? 0 : path.numTriples() - 1).anchor;
    }

    SimplePathPosition randomPosition(SimplePath const& path) {
        int const segments = path.numTriples() - (path.isClosedSimplePath() != 0 ? 0 : 1);
        int const index = chance(0.05) ? between(-2, segments + 3) : between(0, std::max(segments, 1) - 1);
        double t = chance(0.3) ? 0.0 : uniform(0.0, 1.0);
        if (chance(0.02)) {
            t = std::numeric_limits<double>::quiet_NaN();
        }
        return positionOf(path, index, t);
    }

    DPoint randomPoint() { return DPoint(uniform(-50.0, 250.0), uniform(-50.0, 450.0)); }

    SimplePathOperation* makeOperation(SimplePath* path) {
        using F = SimplePathOperationFactory;
        // Now and then a vertex of another path: the operation must refuse it.
        SimplePath* const other = chance(0.05) ? randomPath() : path;
        bool const growing = path->numTriples() < 40;
        using ByVertex = SimplePathOperation* (*)(PHashablePointer<SimplePath>, SimplePathVertex*, bool);
        static ByVertex const byVertex[] = {&F::createSetCuspModeOperation, &F::createSetSmoothModeOperation,
                                            &F::createSetSymmetricModeOperation,
                                            &F::createSetStraightModeOperation,
                                            &F::createDeleteVertexOperation};
        int const kind = between(0, 12);
        if (kind < 5) {
            return byVertex[kind](path, randomVertex(*other), false);
        }
        switch (kind) {
        case 5:
            return F::createMoveSelectedVerticesOperation(path, randomVertex(*other),
                                                          DVector(between(-5, 5), between(-5, 5)), false);
        case 6: {
            // Reference points on the identity box form's corners, which it maps exactly onto themselves,
            // so that a redo (which maps them again) repeats the first execution bit for bit.
            static short const codes[] = {272,  288,  320,  384,  528,  544,  576, 640, 1040, 1056,
                                          1088, 1152, 2064, 2080, 2112, 2176, 0,   48,  2304};
            short const code = codes[between(0, 18)];
            return F::createAverageVertexOperation(path, randomVertex(*other), DPoint(0.0, 0.0),
                                                   DPoint(1.0, 0.0), DPoint(1.0, 1.0), code, PBoxForm(),
                                                   false);
        }
        case 7: {
            SimplePathLocationTriple target(randomPoint(), randomPoint(), randomPoint(),
                                            static_cast<Mode>(between(0, 2)));
            if (chance(0.05)) {
                target.anchor.x = std::numeric_limits<double>::infinity();
            }
            return F::createChangeVertexOperation(path, tripleOf(*other), target, false);
        }
        case 8: {
            SimplePathVertexTriple const t = tripleOf(*other);
            DVector const drag(between(-6, 6), between(-6, 6));
            SimplePathLocationTriple const target(
                t.first->getLocation() + drag, t.anchor->getLocation() + drag, t.last->getLocation(), t.mode);
            return F::createVertexPickOperation(path, SimplePathVertexPickAction(t, target), false);
        }
        case 9:
            if (growing) {
                return F::createAddVertexAtPositionOperation(path, randomPosition(*path), false);
            }
            return F::createDeleteVertexOperation(path, randomVertex(*path, true), false);
        case 10: {
            if (!growing) {
                return F::createSetStraightModeOperation(path, randomVertex(*path), false);
            }
            std::list<SimplePathLocationTriple> triples;
            for (int i = between(0, 3); i > 0; --i) {
                triples.push_back(randomTriple(randomPoint()));
            }
            return F::createInsertVerticesOperation(path, triples, between(-1, path->numTriples() + 1),
                                                    false);
        }
        case 11:
            if (chance(0.3)) {
                return F::createSplitVertexOperation(path, randomVertex(*path, true));
            }
            return F::createSplitVertexOperation(path, randomPosition(*path), nullptr, nullptr, false);
        default: {
            SimplePath* const second = randomPath();
            return F::createJoinVerticesOperation(path, endAnchor(*path), endAnchor(*second), second, false);
        }
        }
    }

    // The host takes over every path a change instruction reports added.
    void adoptReported(SimplePathChangeInstruction const& change) {
        std::list<PHashablePointer<SimplePath>> added;
        change.simplePathsAdded(added);
        for (auto const& p : added) {
            bool const known =
                std::any_of(pool.begin(), pool.end(), [&](auto const& q) { return q.get() == p; });
            if (!known) {
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
        undone.clear(); // a new edit ends the redo history; those operations are undone and free their own
        done.push_back({std::move(op), before, drawingState(pool)});
        if (done.size() > 24) {
            done.erase(done.begin()); // the oldest leaves the history with its edit in effect
        }
        return true;
    }

    void undo() {
        Entry entry = std::move(done.back());
        done.pop_back();
        entry.op->undoOperation();
        EXPECT_EQ(entry.before, drawingState(pool));
        entry.op->undoOperation(); // a second undo changes nothing
        EXPECT_EQ(entry.before, drawingState(pool));
        EXPECT_TRUE(eachVertexOnce(pool));
        undone.push_back(std::move(entry));
    }

    void redo() {
        Entry entry = std::move(undone.back());
        undone.pop_back();
        Outcome const run = execute(*entry.op);
        EXPECT_EQ(SimplePathOperation::Success, run.result);
        adoptReported(*run.change);
        EXPECT_EQ(entry.after, drawingState(pool));
        EXPECT_TRUE(eachVertexOnce(pool));
        done.push_back(std::move(entry));
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
