#pragma once

#include <cmath>
#include <set>
#include <vector>

#include <gtest/gtest.h>

#include "simplepath/edit/SimplePathChangeInstruction.h"
#include "simplepath/path/SimplePath.h"
#include "support/PathHelpers.h"

namespace editing {

using Mode = SimplePathVertexTriple::VertexTripleMode;
using Loc = SimplePathLocationTriple;

inline SimplePath makePath(std::vector<Loc> const& triples, int closed = 0) {
    SimplePath path;
    for (Loc const& t : triples) {
        appendTriple(path, t.first, t.anchor, t.last, t.mode);
    }
    path.setStrictClosed(closed);
    return path;
}

// n curved triples: anchors at (10 i, 0 or 4), handles leaning so that no segment is straight and no
// two segments are alike.
inline SimplePath wiggly(int n, int closed = 0) {
    std::vector<Loc> triples;
    for (int i = 0; i < n; ++i) {
        DPoint const a(10.0 * i, (i % 2) * 4.0);
        triples.emplace_back(a + DVector(-3.0, 1.0 + 0.1 * i), a, a + DVector(3.0, -1.0 - 0.2 * i),
                             Mode::Cusp);
    }
    return makePath(triples, closed);
}

// The curve point at (i, t), evaluated independently of the library by de Casteljau in long double.
inline DPoint pointAt(SimplePath const& path, int i, double t) {
    int const n = path.numTriples();
    auto const& list = path.getTripleList();
    SimplePathVertexTriple const& a = list[i % n];
    SimplePathVertexTriple const& b = list[(i + 1) % n];
    if (t == 0.0) {
        return a.anchor->getLocation();
    }
    DPoint const p[4] = {a.anchor->getLocation(), a.last->getLocation(), b.first->getLocation(),
                         b.anchor->getLocation()};
    long double x[4], y[4];
    for (int k = 0; k < 4; ++k) {
        x[k] = p[k].x;
        y[k] = p[k].y;
    }
    for (int level = 3; level > 0; --level) {
        for (int k = 0; k < level; ++k) {
            x[k] = x[k] + (x[k + 1] - x[k]) * t;
            y[k] = y[k] + (y[k + 1] - y[k]) * t;
        }
    }
    return DPoint(static_cast<double>(x[0]), static_cast<double>(y[0]));
}

inline std::set<SimplePathVertex*> verticesOf(SimplePath const& path) {
    std::set<SimplePathVertex*> out;
    for (SimplePathVertexTriple const& t : path.getTripleList()) {
        out.insert({t.first, t.anchor, t.last});
    }
    return out;
}

inline std::set<SimplePathVertex*> added(SimplePathChangeInstruction const& change) {
    std::set<SimplePathVertex*> out;
    change.simplePathVerticesAdded(out);
    return out;
}

inline std::set<SimplePathVertex*> removed(SimplePathChangeInstruction const& change) {
    std::set<SimplePathVertex*> out;
    change.simplePathVerticesRemoved(out);
    return out;
}

// Removed vertices are unlinked, not freed; the holder of the change instruction frees them.
inline void freeRemoved(SimplePathChangeInstruction const& change) {
    for (SimplePathVertex* v : removed(change)) {
        delete v;
    }
}

inline void expectNear(DPoint const& expected, DPoint const& actual, double tolerance = 1e-12) {
    EXPECT_NEAR(expected.x, actual.x, tolerance);
    EXPECT_NEAR(expected.y, actual.y, tolerance);
}

} // namespace editing
