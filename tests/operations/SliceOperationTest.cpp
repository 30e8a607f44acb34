// The slice on seeded random paths, open and closed, straight and curved, cut at anchors and (through
// an add-vertex member of the same group) inside segments. The pieces must draw exactly the input
// outlines plus the straight cut twice: every segment of the pieces is matched, one for one, against an
// independent reference built here (the input segments, those cut inside split by de Casteljau, and
// the cut), by sampling both densely within 1e-9 of the drawing's size. Held positions must follow onto
// the pieces, undo must give back the inputs exactly and redo the same pieces in the same objects.

#include <algorithm>
#include <cmath>
#include <list>
#include <memory>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "OperationHost.h"
#include "simplepath/edit/SimplePathChangeInstruction.h"
#include "simplepath/operations/SimplePathMetaOperation.h"
#include "simplepath/operations/SimplePathOperationFactory.h"
#include "simplepath/operations/SliceSimplePathOperation.h"

using namespace ops_test;

namespace {

using Paths = std::list<PHashablePointer<SimplePath>>;

using Cubic = PBezier;

DPoint lerp(DPoint const& a, DPoint const& b, double t) {
    return DPoint(a.x + t * (b.x - a.x), a.y + t * (b.y - a.y));
}

double dist(DPoint const& a, DPoint const& b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

// Bernstein form, evaluated directly (not by the library's evaluator).
DPoint evaluate(Cubic const& c, double t) {
    double const s = 1.0 - t;
    double const b0 = s * s * s;
    double const b1 = 3.0 * s * s * t;
    double const b2 = 3.0 * s * t * t;
    double const b3 = t * t * t;
    return DPoint(b0 * c[0].x + b1 * c[1].x + b2 * c[2].x + b3 * c[3].x,
                  b0 * c[0].y + b1 * c[1].y + b2 * c[2].y + b3 * c[3].y);
}

// The two halves of a de Casteljau split at t.
std::pair<Cubic, Cubic> splitCubic(Cubic const& c, double t) {
    DPoint const a = lerp(c[0], c[1], t);
    DPoint const b = lerp(c[1], c[2], t);
    DPoint const d = lerp(c[2], c[3], t);
    DPoint const ab = lerp(a, b, t);
    DPoint const bd = lerp(b, d, t);
    DPoint const m = lerp(ab, bd, t);
    return {Cubic(c[0], a, ab, m), Cubic(m, bd, d, c[3])};
}

std::vector<Cubic> segmentsOf(SimplePath const& path) {
    std::vector<Cubic> out;
    for (int i = 0; i < support::segmentCount(path); ++i) {
        out.push_back(support::segmentOf(path, i));
    }
    return out;
}

double toSegment(DPoint const& p, DPoint const& a, DPoint const& b) {
    double const len2 = (b.x - a.x) * (b.x - a.x) + (b.y - a.y) * (b.y - a.y);
    double t = len2 > 0.0 ? ((p.x - a.x) * (b.x - a.x) + (p.y - a.y) * (b.y - a.y)) / len2 : 0.0;
    t = std::min(1.0, std::max(0.0, t));
    return dist(p, lerp(a, b, t));
}

bool isStraight(Cubic const& c, double tol) {
    return toSegment(c[1], c[0], c[3]) <= tol && toSegment(c[2], c[0], c[3]) <= tol;
}

bool isPoint(Cubic const& c, double tol) {
    return dist(c[0], c[1]) <= tol && dist(c[0], c[2]) <= tol && dist(c[0], c[3]) <= tol;
}

constexpr int kSamples = 64;

// Same drawn curve: a curved segment point for point at equal parameters (either direction); a straight
// one by its ends and every sample lying on the reference chord, since a straight line may be
// parameterised differently once a vertex has been added on it.
bool sameCurve(Cubic const& piece, Cubic const& ref, double tol) {
    if (isStraight(ref, tol)) {
        if (!isStraight(piece, tol)) {
            return false;
        }
        bool const ends = (dist(piece[0], ref[0]) <= tol && dist(piece[3], ref[3]) <= tol) ||
                          (dist(piece[0], ref[3]) <= tol && dist(piece[3], ref[0]) <= tol);
        if (!ends) {
            return false;
        }
        for (int k = 0; k <= kSamples; ++k) {
            if (toSegment(evaluate(piece, double(k) / kSamples), ref[0], ref[3]) > tol) {
                return false;
            }
        }
        return true;
    }
    for (bool reversed : {false, true}) {
        bool all = true;
        for (int k = 0; k <= kSamples && all; ++k) {
            double const t = double(k) / kSamples;
            all = dist(evaluate(piece, t), evaluate(ref, reversed ? 1.0 - t : t)) <= tol;
        }
        if (all) {
            return true;
        }
    }
    return false;
}

// Matches every segment of the pieces with one reference segment, each used once; zero-length segments
// (two ends merged at one place) draw nothing and are left out on both sides.
void expectSameDrawing(std::vector<Cubic> pieces, std::vector<Cubic> reference, double tol) {
    auto const dot = [tol](Cubic const& c) { return isPoint(c, tol); };
    pieces.erase(std::remove_if(pieces.begin(), pieces.end(), dot), pieces.end());
    reference.erase(std::remove_if(reference.begin(), reference.end(), dot), reference.end());
    EXPECT_EQ(pieces.size(), reference.size());
    std::vector<bool> used(reference.size(), false);
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        bool found = false;
        for (std::size_t j = 0; j < reference.size() && !found; ++j) {
            if (!used[j] && sameCurve(pieces[i], reference[j], tol)) {
                used[j] = found = true;
            }
        }
        EXPECT_TRUE(found) << "piece segment " << i << " draws nothing of the input";
    }
}

// One kind of slice: one path cut or two, whether each is closed, and the pieces' closed flags in order.
struct Kind {
    bool same;
    bool closed1;
    bool closed2;
    std::vector<int> closedPieces;
};

struct Cut {
    SimplePath* path = nullptr;
    int segment = 0; // the anchor index when `inside` is false
    double t = 0.0;
    DPoint at;
};

class RandomSlice {
  public:
    RandomSlice(unsigned seed, Kind const& kind, bool inside) : rng(seed), kind(kind), inside(inside) {}

    void run() {
        bool const same = kind.same;
        bool const closed1 = kind.closed1;
        SimplePath* const p1 = randomPath(
            same ? between(inside ? 1 : 2, 6) + (closed1 ? 0 : 1) : between(1, 5), closed1, DPoint(0.0, 0.0));
        SimplePath* const p2 =
            same ? p1 : randomPath(between(1, 5), kind.closed2, DPoint(uniform(-40, 80), uniform(-40, 80)));
        if (inside && (support::segmentCount(*p1) < 1 || support::segmentCount(*p2) < 1 ||
                       (same && support::segmentCount(*p1) < 2))) {
            return; // nothing to cut inside
        }
        Cut one = pick(p1, -1);
        Cut two = pick(p2, same ? one.segment : -1);

        // The reference drawing and the held positions, from the inputs as they are now.
        double size = 0.0;
        std::vector<Cubic> reference;
        for (SimplePath* p : inputs()) {
            std::vector<Cubic> segs = segmentsOf(*p);
            for (int i = int(segs.size()) - 1; i >= 0; --i) {
                for (Cut const* c : {&one, &two}) {
                    if (inside && c->path == p && c->segment == i) {
                        auto const halves = splitCubic(segs[i], c->t);
                        segs[i] = halves.second;
                        segs.insert(segs.begin() + i, halves.first);
                    }
                }
            }
            reference.insert(reference.end(), segs.begin(), segs.end());
            for (Cubic const& c : segmentsOf(*p)) {
                for (int k = 0; k < 4; ++k) {
                    size = std::max({size, std::fabs(c[k].x), std::fabs(c[k].y)});
                }
            }
        }
        double const tol = 1e-9 * std::max(size, 1.0);
        Cubic const cutSegment(one.at, one.at, two.at, two.at);
        reference.push_back(cutSegment);
        reference.push_back(cutSegment);

        std::list<std::pair<PHashablePointer<SimplePath>, SimplePathPosition>> held;
        std::vector<DPoint> heldAt;
        for (SimplePath* p : inputs()) {
            std::vector<Cubic> const segs = segmentsOf(*p);
            for (int k = 0; k < 6 && !segs.empty(); ++k) {
                int const i = between(0, int(segs.size()) - 1);
                double const t = uniform(0.0, 0.99);
                // A vertex added inside a segment carries that segment's positions by its own rule,
                // which is not the slice's to answer for.
                if (inside && ((one.path == p && one.segment == i) || (two.path == p && two.segment == i))) {
                    continue;
                }
                held.emplace_back(p, positionOf(*p, i, t));
                heldAt.push_back(evaluate(segs[i], t));
            }
        }

        // The operation: the slice alone, or adds at the cut points first, the later point first so the
        // earlier one keeps its segment number.
        auto group = std::make_unique<SimplePathMetaOperation>();
        if (inside) {
            std::vector<Cut*> order{&one, &two};
            if (same && one.segment < two.segment) {
                std::swap(order[0], order[1]);
            }
            for (Cut* c : order) {
                group->addOperation(SimplePathOperationFactory::createAddVertexAtPositionOperation(
                    c->path, positionOf(*c->path, c->segment, c->t), false));
            }
        }
        // After the adds a cut point is the anchor after its segment, one further on for the later of two
        // cuts on one path.
        int const low = std::min(one.segment, two.segment);
        auto anchorAt = [&](Cut const& c) {
            return positionOf(*c.path,
                              inside ? c.segment + 1 + (same && c.segment != low ? 1 : 0) : c.segment, 0.0);
        };
        auto* slice = static_cast<SliceSimplePathOperation*>(
            SimplePathOperationFactory::createSlicePathOperation(p1, anchorAt(one), p2, anchorAt(two)));
        group->addOperation(slice);

        DrawingState const before = drawingState(everything());
        Outcome const run = execute(*group);
        ASSERT_EQ(run.result, SimplePathOperation::Success);
        Paths const& affected = run.affected;
        SimplePathChangeInstruction const& change = *run.change;
        for (int i = 0; i < 3; ++i) {
            results.push_back(slice->getResultPath(i).pointer);
        }
        // The result paths reported added are the host's from now on; the others stay the operation's.
        change.simplePathsAdded(reported);
        EXPECT_TRUE(eachVertexOnce(everything()));

        // Every input and every piece is reported affected.
        std::vector<SimplePath*> pieces;
        std::vector<Cubic> drawn;
        std::vector<int> closedFlags;
        std::vector<SimplePath*> const all = everything();
        for (std::size_t i = 0; i < all.size(); ++i) {
            SimplePath* const p = all[i];
            bool const input = i < pool.size();
            if (p->numTriples() > 0) {
                pieces.push_back(p);
                std::vector<Cubic> const segs = segmentsOf(*p);
                drawn.insert(drawn.end(), segs.begin(), segs.end());
                closedFlags.push_back(p->isClosedSimplePath() != 0 ? 1 : 0);
            }
            if (input || p->numTriples() > 0) {
                EXPECT_NE(std::find(affected.begin(), affected.end(), PHashablePointer<SimplePath>(p)),
                          affected.end());
            }
        }
        expectSameDrawing(drawn, reference, tol);
        std::sort(closedFlags.begin(), closedFlags.end());
        EXPECT_EQ(kind.closedPieces, closedFlags);

        // Held positions follow onto the piece that now draws their point.
        auto spot = heldAt.begin();
        for (auto const& pair : held) {
            auto const moved = change.translate(pair);
            ASSERT_NE(moved.first, nullptr);
            EXPECT_NE(std::find(pieces.begin(), pieces.end(), moved.first.getPointer()), pieces.end())
                << "a held position was carried onto a path without triples";
            DPoint there;
            EXPECT_EQ(moved.first->locatePosition(moved.second, there), SimplePath::Success);
            EXPECT_LE(dist(there, *spot), 1e-6 * std::max(size, 1.0));
            ++spot;
        }

        DrawingState const after = drawingState(everything());
        group->undoOperation();
        EXPECT_EQ(drawingState(everything()), before);
        EXPECT_TRUE(eachVertexOnce(everything()));
        ASSERT_EQ(execute(*group).result, SimplePathOperation::Success);
        EXPECT_EQ(drawingState(everything()), after);
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(slice->getResultPath(i).pointer, results[i]);
        }
        // Undone once more and dropped: the inputs own their vertices again, the result paths are empty.
        group->undoOperation();
        EXPECT_EQ(drawingState(everything()), before);
    }

    ~RandomSlice() {
        for (SimplePath* r : results) {
            if (std::find(reported.begin(), reported.end(), PHashablePointer<SimplePath>(r)) !=
                reported.end()) {
                delete r;
            }
        }
    }

  private:
    std::vector<SimplePath*> inputs() const {
        std::vector<SimplePath*> out;
        for (auto const& p : pool) {
            out.push_back(p.get());
        }
        return out;
    }
    // The inputs, then the result paths.
    std::vector<SimplePath*> everything() const {
        std::vector<SimplePath*> out = inputs();
        std::copy_if(results.begin(), results.end(), std::back_inserter(out),
                     [](SimplePath* r) { return r; });
        return out;
    }

    // A cut point: an anchor, or a point inside a segment other than `avoid` (and, for an anchor, a
    // different anchor than `avoid`).
    Cut pick(SimplePath* p, int avoid) {
        Cut c;
        c.path = p;
        do {
            c.segment = between(0, (inside ? support::segmentCount(*p) : p->numTriples()) - 1);
        } while (c.segment == avoid);
        if (inside) {
            c.t = uniform(0.15, 0.85);
        }
        c.at =
            inside ? evaluate(segmentsOf(*p)[c.segment], c.t) : tripleAt(*p, c.segment).anchor->getLocation();
        return c;
    }

    SimplePath* randomPath(int n, bool closed, DPoint const& origin) {
        std::vector<SimplePathLocationTriple> triples;
        bool const straight = chance(0.3);
        for (int i = 0; i < n; ++i) {
            DPoint const a(origin.x + 20.0 * std::cos(0.9 * i) + uniform(-6, 6),
                           origin.y + 20.0 * std::sin(0.9 * i) + uniform(-6, 6));
            if (straight || chance(0.15)) {
                triples.emplace_back(a, a, a, SimplePathVertexTriple::Cusp);
            } else {
                DVector const h(uniform(-8, 8), uniform(-8, 8));
                triples.emplace_back(
                    a - h, a, chance(0.5) ? a + h : a + DVector(uniform(-8, 8), uniform(-8, 8)),
                    chance(0.5) ? SimplePathVertexTriple::Smooth : SimplePathVertexTriple::Cusp);
            }
        }
        return addPath(pool, triples, closed ? 1 : 0);
    }

    int between(int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(rng); }
    double uniform(double lo, double hi) { return std::uniform_real_distribution<double>(lo, hi)(rng); }
    bool chance(double p) { return uniform(0.0, 1.0) < p; }

    std::mt19937 rng;
    Kind const& kind;
    bool inside;
    std::vector<std::unique_ptr<SimplePath>> pool;
    std::vector<SimplePath*> results;
    Paths reported;
};

// One closed path cut gives two closed pieces; one open path the closed middle and the outer parts
// joined over the cut; two closed paths one outline; an open and a closed path, in either order, one
// open path; two open paths swap their tails.
TEST(SliceOperation, ThePiecesDrawTheInputsAndTheCutTwice) {
    Kind const kinds[] = {{true, true, true, {1, 1}}, {true, false, false, {0, 1}},
                          {false, true, true, {1}},   {false, false, true, {0}},
                          {false, true, false, {0}},  {false, false, false, {0, 0}}};
    for (Kind const& kind : kinds) {
        for (unsigned seed = 1; seed <= 150; ++seed) {
            for (bool inside : {false, true}) {
                SCOPED_TRACE(testing::Message() << "kind " << (&kind - kinds) << " seed " << seed
                                                << (inside ? " inside segments" : " at anchors"));
                RandomSlice(seed, kind, inside).run();
                if (HasFailure()) {
                    return;
                }
            }
        }
    }
}

} // namespace
