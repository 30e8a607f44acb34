#pragma once

#include "simplepath/interfaces/DPoint.h"
#include "simplepath/path/SimplePathVertexTriple.h"

// The vertex-free description of one triple: the three locations and the mode. Paths are built from
// lists of these and export their shape as such lists.
struct SimplePathLocationTriple {
    DPoint first;
    DPoint anchor;
    DPoint last;
    SimplePathVertexTriple::VertexTripleMode mode = SimplePathVertexTriple::Cusp;

    SimplePathLocationTriple() = default;
    SimplePathLocationTriple(DPoint const& firstPoint, DPoint const& anchorPoint, DPoint const& lastPoint,
                             SimplePathVertexTriple::VertexTripleMode const& tripleMode)
        : first(firstPoint), anchor(anchorPoint), last(lastPoint), mode(tripleMode) {}

    bool operator==(SimplePathLocationTriple const& other) const;
    bool operator!=(SimplePathLocationTriple const& other) const { return !(*this == other); }

    // Ordered by the incoming handle's location and, where those are equal, by mode. The anchor and
    // the outgoing handle take no part, so triples that differ only there are unordered yet unequal.
    bool operator<(SimplePathLocationTriple const& other) const;
    bool operator>(SimplePathLocationTriple const& other) const;
};
