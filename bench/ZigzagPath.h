#pragma once

#include "simplepath/path/SimplePath.h"

// The path most benchmarks edit: n smooth triples 10 units apart along y, every other anchor 4 units
// higher, each with handles 3 units to either side.
inline void fillZigzag(SimplePath& path, int n, double y = 0.0, int closed = 0) {
    SimplePathVertex* f = nullptr;
    SimplePathVertex* a = nullptr;
    SimplePathVertex* l = nullptr;
    for (int i = 0; i < n; ++i) {
        double const x = 10.0 * i;
        double const yi = y + (i % 2) * 4.0;
        // Appending fails only when memory is exhausted, which a benchmark does not survive anyway.
        (void)path.addTriple({x - 3, yi + 1}, f, {x, yi}, a, {x + 3, yi - 1}, l,
                             SimplePathVertexTriple::Smooth);
    }
    path.setStrictClosed(closed);
}
