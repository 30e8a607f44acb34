#pragma once

#include <list>
#include <vector>

#include "simplepath/path/SimplePath.h"

// Small helpers for tests that build paths and compare their shapes.

// Appends one triple at the given locations; the new vertices are not needed.
inline SimplePath::Result appendTriple(SimplePath& path, DPoint const& first, DPoint const& anchor,
                                       DPoint const& last, SimplePathVertexTriple::VertexTripleMode mode) {
    SimplePathVertex* f = nullptr;
    SimplePathVertex* a = nullptr;
    SimplePathVertex* l = nullptr;
    return path.addTriple(first, f, anchor, a, last, l, mode);
}

// The current locations and modes of the path's triples, in path order.
inline std::vector<SimplePathLocationTriple> locationsOf(SimplePath const& path) {
    std::list<SimplePathLocationTriple> list;
    EXPECT_EQ(SimplePath::Success, path.getLocationTripleList(list));
    return {list.begin(), list.end()};
}
