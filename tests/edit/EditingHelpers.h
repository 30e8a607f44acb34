#pragma once

#include <list>
#include <set>
#include <vector>

#include <gtest/gtest.h>

#include "simplepath/edit/SimplePathChangeInstruction.h"
#include "simplepath/path/SimplePath.h"
#include "support/BezierReference.h"
#include "support/PathHelpers.h"

namespace editing {

using Mode = SimplePathVertexTriple::VertexTripleMode;
using Loc = SimplePathLocationTriple;
using Vertices = std::set<SimplePathVertex*>;
using Paths = std::list<PHashablePointer<SimplePath>>;
using Pair = SimplePathChangeInstruction::PathPosition;

inline SimplePath makePath(std::vector<Loc> const& triples, int closed = 0) {
    SimplePath path;
    for (Loc const& t : triples) {
        EXPECT_EQ(SimplePath::Success, appendTriple(path, t.first, t.anchor, t.last, t.mode));
    }
    path.setStrictClosed(closed);
    return path;
}

// n curved triples: anchors at (10 i, 0 or 4), handles leaning so that no segment is straight and no
// two segments are alike.
inline SimplePath wiggly(int n, int closed = 0, Mode mode = Mode::Cusp) {
    std::vector<Loc> triples;
    for (int i = 0; i < n; ++i) {
        DPoint const a(10.0 * i, (i % 2) * 4.0);
        triples.emplace_back(a + DVector(-3.0, 1.0 + 0.1 * i), a, a + DVector(3.0, -1.0 - 0.2 * i), mode);
    }
    return makePath(triples, closed);
}

inline SimplePathPosition at(SimplePath const& path, int index, double t) {
    SimplePathPosition p;
    EXPECT_EQ(SimplePath::Success, path.makePosition(index, t, p));
    return p;
}

// The curve point at (i, t), from the Bernstein form in long double, independently of the library.
inline DPoint pointAt(SimplePath const& path, int i, double t) {
    SimplePathVertexTriple const& a = path.getTripleList()[i % path.numTriples()];
    SimplePathVertexTriple const& b = path.getTripleList()[(i + 1) % path.numTriples()];
    support::LPoint const p = support::evaluate(PBezier(a.anchor->getLocation(), a.last->getLocation(),
                                                        b.first->getLocation(), b.anchor->getLocation()),
                                                t);
    return DPoint(static_cast<double>(p.x), static_cast<double>(p.y));
}

// The vertices of the paths' triples, and how many places they fill.
inline Vertices verticesOf(std::vector<SimplePath const*> const& paths, std::size_t* slots = nullptr) {
    Vertices out;
    for (SimplePath const* path : paths) {
        for (SimplePathVertexTriple const& t : path->getTripleList()) {
            out.insert({t.first, t.anchor, t.last});
            if (slots != nullptr) {
                *slots += 3;
            }
        }
    }
    return out;
}

inline Vertices added(SimplePathChangeInstruction const& change) {
    Vertices out;
    change.simplePathVerticesAdded(out);
    return out;
}

inline Vertices removed(SimplePathChangeInstruction const& change) {
    Vertices out;
    change.simplePathVerticesRemoved(out);
    return out;
}

// Removed vertices are unlinked, not freed; the holder of the change instruction frees them.
inline void freeRemoved(SimplePathChangeInstruction const& change) {
    for (SimplePathVertex* v : removed(change)) {
        delete v;
    }
}

// Every vertex sits in exactly one triple of one path afterwards, or was reported removed; the only
// vertices that appeared are those reported added.
inline void expectExactOwnership(Vertices before, std::vector<SimplePath const*> const& after,
                                 SimplePathChangeInstruction const& change) {
    std::size_t slots = 0;
    Vertices held = verticesOf(after, &slots);
    EXPECT_EQ(slots, held.size()) << "a vertex sits in two triples";
    for (SimplePathVertex* v : removed(change)) {
        EXPECT_TRUE(held.insert(v).second) << "a removed vertex is still held";
    }
    Vertices const fresh = added(change);
    before.insert(fresh.begin(), fresh.end());
    EXPECT_EQ(before, held);
}

// A (path, position) pair held elsewhere, with the point it names; carried through the change
// instruction it must name the same point afterwards, wherever the edit kept it.
struct Held {
    Pair pair;
    DPoint point;
};

inline int segmentsOf(SimplePath const& path) {
    return path.numTriples() - (path.isClosedSimplePath() != 0 ? 0 : 1);
}

// Positions at quarter steps on every segment of each path, and the end anchor.
inline std::vector<Held> holdPositions(std::vector<SimplePath*> const& paths) {
    std::vector<Held> out;
    for (SimplePath* path : paths) {
        for (int i = 0; i < 4 * segmentsOf(*path) + 1; ++i) {
            out.push_back({{path, at(*path, i / 4, i % 4 * 0.25)}, pointAt(*path, i / 4, i % 4 * 0.25)});
        }
    }
    return out;
}

inline void expectFollow(std::vector<Held> const& held, SimplePathChangeInstruction const& change) {
    for (Held const& h : held) {
        Pair const moved = change.translate(h.pair);
        SCOPED_TRACE(testing::Message() << h.pair.second.getIndex() << ", " << h.pair.second.getParameter());
        ASSERT_GE(segmentsOf(*moved.first), moved.second.getIndex()); // (segments, 0.0) is the end anchor
        EXPECT_LT(
            distance(h.point, pointAt(*moved.first, moved.second.getIndex(), moved.second.getParameter())),
            1e-9);
    }
}

} // namespace editing
