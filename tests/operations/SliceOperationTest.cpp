// The slice on seeded random paths, open and closed, straight and curved, cut at anchors and (through an
// add-vertex member of the same group) inside segments. The pieces must draw the inputs plus the cut
// twice, matched one for one against a reference built here (de Casteljau splits, dense sampling within
// 1e-9 of the drawing's size); held positions follow onto the pieces; undo and redo are exact.

#include <algorithm>
#include <cmath>
#include <list>
#include <memory>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "OperationHost.h"
#include "simplepath/operations/SimplePathMetaOperation.h"
#include "simplepath/operations/SimplePathOperationFactory.h"
#include "simplepath/operations/SliceSimplePathOperation.h"

using namespace ops_test;

namespace {

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
    double const b[] = {s * s * s, 3.0 * s * s * t, 3.0 * s * t * t, t * t * t};
    return DPoint(b[0] * c[0].x + b[1] * c[1].x + b[2] * c[2].x + b[3] * c[3].x,
                  b[0] * c[0].y + b[1] * c[1].y + b[2] * c[2].y + b[3] * c[3].y);
}

// The two halves of a de Casteljau split at t.
std::pair<Cubic, Cubic> splitCubic(Cubic const& c, double t) {
    DPoint const a = lerp(c[0], c[1], t), b = lerp(c[1], c[2], t), d = lerp(c[2], c[3], t);
    DPoint const ab = lerp(a, b, t), bd = lerp(b, d, t), m = lerp(ab, bd, t);
    return {Cubic(c[0], a, ab, m), Cubic(m, bd, d, c[3])};
}

std::vector<Cubic> segmentsOf(SimplePath const& path) {
    std::vector<Cubic> out;
    for (int i = 0; i < support::segmentCount(path); ++i) {
        out.push_back(support::segmentOf(path, i));
    }
    return out;
}

double toChord(DPoint const& p, Cubic const& c) {
    DPoint const &a = c[0], &b = c[3];
    double const len2 = (b.x - a.x) * (b.x - a.x) + (b.y - a.y) * (b.y - a.y);
    double const t = len2 > 0.0 ? ((p.x - a.x) * (b.x - a.x) + (p.y - a.y) * (b.y - a.y)) / len2 : 0.0;
    return dist(p, lerp(a, b, std::min(1.0, std::max(0.0, t))));
}

bool isStraight(Cubic const& c, double tol) {
    return toChord(c[1], c) <= tol && toChord(c[2], c) <= tol;
}

constexpr int kSamples = 64;

// Same drawn curve: a curved segment point for point at equal parameters (either direction); a straight
// one by its ends and every sample lying on the reference chord, since a straight line may be
// parameterised differently once a vertex has been added on it.
bool sameCurve(Cubic const& piece, Cubic const& ref, double tol) {
    bool const straight = isStraight(ref, tol);
    if (straight && !isStraight(piece, tol)) {
        return false;
    }
    for (bool reversed : {false, true}) {
        bool all = true;
        for (int k = 0; k <= kSamples && all; ++k) {
            double const t = double(k) / kSamples, u = reversed ? 1.0 - t : t;
            all = straight ? (k % kSamples != 0 || dist(evaluate(piece, t), evaluate(ref, u)) <= tol) &&
                                 toChord(evaluate(piece, t), ref) <= tol
                           : dist(evaluate(piece, t), evaluate(ref, u)) <= tol;
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
    auto const dot = [tol](Cubic const& c) { return isStraight(c, tol) && dist(c[0], c[3]) <= tol; };
    pieces.erase(std::remove_if(pieces.begin(), pieces.end(), dot), pieces.end());
    reference.erase(std::remove_if(reference.begin(), reference.end(), dot), reference.end());
    EXPECT_EQ(pieces.size(), reference.size());
    std::vector<bool> used(reference.size(), false);
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        bool found = false;
        for (std::size_t j = 0; j < reference.size() && !found; ++j) {
            found = !used[j] && sameCurve(pieces[i], reference[j], tol);
            used[j] = used[j] || found;
        }
        EXPECT_TRUE(found) << "piece segment " << i << " draws nothing of the input";
    }
}

// One kind of slice: one path cut or two, whether each is closed, and the pieces' closed flags in order.
struct Kind {
    bool same, closed1, closed2;
    std::vector<int> closedPieces;
};

struct Cut {
    SimplePath* path;
    int segment; // the anchor index when cutting at anchors
    double t;
    DPoint at;
};

void randomSlice(unsigned seed, Kind const& kind, bool inside) {
    std::mt19937 rng(seed);
    auto between = [&](int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(rng); };
    auto uniform = [&](double lo, double hi) { return std::uniform_real_distribution<double>(lo, hi)(rng); };
    // Declared first, destroyed last: the group and the pieces go before the inputs.
    std::vector<std::unique_ptr<SimplePath>> pool;
    auto randomPath = [&](int n, bool closed, DPoint const& origin) {
        std::vector<SimplePathLocationTriple> triples;
        bool const straight = uniform(0, 1) < 0.3;
        for (int i = 0; i < n; ++i) {
            DPoint const a(origin.x + 20.0 * std::cos(0.9 * i) + uniform(-6, 6),
                           origin.y + 20.0 * std::sin(0.9 * i) + uniform(-6, 6));
            DVector const h(uniform(-8, 8), uniform(-8, 8));
            if (straight || uniform(0, 1) < 0.15) {
                triples.emplace_back(a, a, a, SimplePathVertexTriple::Cusp);
            } else {
                triples.emplace_back(
                    a - h, a, uniform(0, 1) < 0.5 ? a + h : a + DVector(uniform(-8, 8), uniform(-8, 8)),
                    uniform(0, 1) < 0.5 ? SimplePathVertexTriple::Smooth : SimplePathVertexTriple::Cusp);
            }
        }
        return addPath(pool, triples, closed ? 1 : 0);
    };
    bool const same = kind.same;
    SimplePath* const p1 =
        randomPath(same ? between(inside ? 1 : 2, 6) + (kind.closed1 ? 0 : 1) : between(1, 5), kind.closed1,
                   DPoint(0.0, 0.0));
    SimplePath* const p2 =
        same ? p1 : randomPath(between(1, 5), kind.closed2, DPoint(uniform(-40, 80), uniform(-40, 80)));
    if (inside && (support::segmentCount(*p1) < 1 + (same ? 1 : 0) || support::segmentCount(*p2) < 1)) {
        return; // nothing to cut inside
    }
    // A cut point: an anchor, or a point inside a segment, other than `avoid`.
    auto pick = [&](SimplePath* p, int avoid) {
        Cut c{p, avoid, inside ? uniform(0.15, 0.85) : 0.0, {}};
        while (c.segment == avoid) {
            c.segment = between(0, (inside ? support::segmentCount(*p) : p->numTriples()) - 1);
        }
        c.at =
            inside ? evaluate(segmentsOf(*p)[c.segment], c.t) : tripleAt(*p, c.segment).anchor->getLocation();
        return c;
    };
    Cut const one = pick(p1, -1);
    Cut const two = pick(p2, same ? one.segment : -1);
    auto isCut = [&](SimplePath* p, int i) {
        return inside && ((one.path == p && one.segment == i) || (two.path == p && two.segment == i));
    };

    // The reference drawing and the held positions, from the inputs as they are now.
    double size = 1.0;
    std::vector<Cubic> reference(2, Cubic(one.at, one.at, two.at, two.at));
    std::vector<std::pair<std::pair<PHashablePointer<SimplePath>, SimplePathPosition>, DPoint>> held;
    for (auto const& input : pool) {
        SimplePath* const p = input.get();
        std::vector<Cubic> const segs = segmentsOf(*p);
        for (int i = 0; i < int(segs.size()); ++i) {
            for (int k = 0; k < 4; ++k) {
                size = std::max({size, std::fabs(segs[i][k].x), std::fabs(segs[i][k].y)});
            }
            Cut const& c = one.path == p && one.segment == i ? one : two;
            if (isCut(p, i)) {
                auto const halves = splitCubic(segs[i], c.t);
                reference.insert(reference.end(), {halves.first, halves.second});
            } else {
                reference.push_back(segs[i]);
            }
        }
        // A vertex added inside a segment carries that segment's positions by its own rule.
        for (int k = 0; k < 6 && !segs.empty(); ++k) {
            int const i = between(0, int(segs.size()) - 1);
            double const t = uniform(0.0, 0.99);
            if (!isCut(p, i)) {
                held.push_back({{p, positionOf(*p, i, t)}, evaluate(segs[i], t)});
            }
        }
    }

    // The slice alone, or adds at the cut points first, the later point first so the earlier one keeps its
    // segment number; after the adds a cut point is the anchor after its segment, one further on for the
    // later of two cuts on one path.
    std::vector<std::unique_ptr<SimplePath>> adopted; // result paths reported added: the host's
    auto group = std::make_unique<SimplePathMetaOperation>();
    bool const swap = same && one.segment < two.segment;
    for (Cut const* c : {swap ? &two : &one, swap ? &one : &two}) {
        if (inside) {
            group->addOperation(SimplePathOperationFactory::createAddVertexAtPositionOperation(
                c->path, positionOf(*c->path, c->segment, c->t), false));
        }
    }
    int const low = std::min(one.segment, two.segment);
    auto anchorAt = [&](Cut const& c) {
        return positionOf(*c.path, inside ? c.segment + 1 + (same && c.segment != low ? 1 : 0) : c.segment,
                          0.0);
    };
    auto* slice = static_cast<SliceSimplePathOperation*>(
        SimplePathOperationFactory::createSlicePathOperation(p1, anchorAt(one), p2, anchorAt(two)));
    group->addOperation(slice);
    std::vector<SimplePath*> everything(pool.size());
    std::transform(pool.begin(), pool.end(), everything.begin(), [](auto const& p) { return p.get(); });
    std::size_t const inputs = everything.size();

    DrawingState const before = drawingState(everything);
    Outcome const run = execute(*group);
    ASSERT_EQ(run.result, SimplePathOperation::Success);
    for (int i = 0; i < 3; ++i) { // redo must refill these same objects: the states name them
        if (slice->getResultPath(i).pointer != nullptr) {
            everything.push_back(slice->getResultPath(i).pointer);
        }
    }
    std::list<PHashablePointer<SimplePath>> added;
    run.change->simplePathsAdded(added);
    std::transform(added.begin(), added.end(), std::back_inserter(adopted),
                   [](auto const& p) { return std::unique_ptr<SimplePath>(p.pointer); });
    EXPECT_TRUE(eachVertexOnce(everything));

    // Every input and every piece is reported affected.
    std::vector<SimplePath*> pieces;
    std::vector<Cubic> drawn;
    std::vector<int> closedFlags;
    for (std::size_t i = 0; i < everything.size(); ++i) {
        SimplePath* const p = everything[i];
        if (p->numTriples() > 0) {
            pieces.push_back(p);
            std::vector<Cubic> const segs = segmentsOf(*p);
            drawn.insert(drawn.end(), segs.begin(), segs.end());
            closedFlags.push_back(p->isClosedSimplePath() != 0 ? 1 : 0);
        }
        if (i < inputs || p->numTriples() > 0) {
            EXPECT_NE(std::count(run.affected.begin(), run.affected.end(), PHashablePointer<SimplePath>(p)),
                      0);
        }
    }
    expectSameDrawing(drawn, reference, 1e-9 * size);
    std::sort(closedFlags.begin(), closedFlags.end());
    EXPECT_EQ(kind.closedPieces, closedFlags);

    // Held positions follow onto the piece that now draws their point.
    for (auto const& [position, spot] : held) {
        auto const moved = run.change->translate(position);
        ASSERT_NE(std::find(pieces.begin(), pieces.end(), moved.first.getPointer()), pieces.end());
        DPoint there;
        EXPECT_EQ(moved.first->locatePosition(moved.second, there), SimplePath::Success);
        EXPECT_LE(dist(there, spot), 1e-6 * size);
    }

    DrawingState const after = drawingState(everything);
    group->undoOperation();
    EXPECT_EQ(drawingState(everything), before);
    EXPECT_TRUE(eachVertexOnce(everything));
    ASSERT_EQ(execute(*group).result, SimplePathOperation::Success);
    EXPECT_EQ(drawingState(everything), after);
    // Undone once more and dropped: the inputs own their vertices again, the result paths are empty.
    group->undoOperation();
    EXPECT_EQ(drawingState(everything), before);
}

// One closed path cut gives two closed pieces; one open path the closed middle and the outer parts
// joined over the cut; two closed paths one outline; an open and a closed path, in either order, one
// open path; two open paths swap their tails.
TEST(SliceOperation, ThePiecesDrawTheInputsAndTheCutTwice) {
    Kind const kinds[] = {{true, true, true, {1, 1}}, {true, false, false, {0, 1}},
                          {false, true, true, {1}},   {false, false, true, {0}},
                          {false, true, false, {0}},  {false, false, false, {0, 0}}};
    for (Kind const& kind : kinds) {
        for (unsigned seed = 1; seed <= 100 && !HasFailure(); ++seed) {
            for (bool inside : {false, true}) {
                SCOPED_TRACE(testing::Message() << "kind " << (&kind - kinds) << " seed " << seed
                                                << (inside ? " inside segments" : " at anchors"));
                randomSlice(seed, kind, inside);
            }
        }
    }
}

} // namespace
