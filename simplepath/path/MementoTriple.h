#pragma once

#include "simplepath/interfaces/DPoint.h"
#include "simplepath/path/SimplePathVertexTriple.h"

class SimplePathVertex;

// One vertex of a path as a memento keeps it: the three vertex objects of the triple, where each of
// them stood, and the mode. The pointers are borrowed, never owned.
struct MementoTriple {
    SimplePathVertex* first = nullptr;
    DPoint firstLocation;
    SimplePathVertex* anchor = nullptr;
    DPoint anchorLocation;
    SimplePathVertex* last = nullptr;
    DPoint lastLocation;
    SimplePathVertexTriple::VertexTripleMode mode = SimplePathVertexTriple::Cusp;

    MementoTriple() = default;
    MementoTriple(SimplePathVertex* firstVertex, DPoint const& firstPoint, SimplePathVertex* anchorVertex,
                  DPoint const& anchorPoint, SimplePathVertex* lastVertex, DPoint const& lastPoint,
                  SimplePathVertexTriple::VertexTripleMode tripleMode)
        : first(firstVertex), firstLocation(firstPoint), anchor(anchorVertex), anchorLocation(anchorPoint),
          last(lastVertex), lastLocation(lastPoint), mode(tripleMode) {}

    // All seven values equal: the same vertex objects at the same places, with the same mode.
    bool operator==(MementoTriple const& other) const;
    bool operator!=(MementoTriple const& other) const { return !(*this == other); }

    // A strict total order over the seven values: the vertex addresses (first, anchor, last, taken as
    // unsigned numbers), then the locations in the same order (x before y), then the mode. Unlike the
    // order of vertex triples it has no blind spot, so mementos' triples can be sorted and searched.
    // Locations holding NaN make the order partial, as with any double comparison.
    bool operator<(MementoTriple const& other) const;
    bool operator>(MementoTriple const& other) const { return other < *this; }
};
