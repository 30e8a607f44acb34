#pragma once

#include <cstdint>

#include "simplepath/interfaces/DPoint.h"

class SimplePathVertex;

// One vertex of a path: an anchor with its incoming handle (`first`, on the side of the previous
// segment) and its outgoing handle (`last`, on the side of the next segment), plus the handle mode.
// A triple only refers to its vertices; the path that holds it owns them, and copying a triple copies
// the three pointers.
struct SimplePathVertexTriple {
    // How the two handles of an anchor relate. A straight vertex has no value of its own: it is a Cusp
    // vertex whose handles sit on the anchor. Other values may be stored and are carried along.
    enum VertexTripleMode : std::int32_t {
        Smooth = 0,    // both handles on one line through the anchor, lengths independent
        Cusp = 1,      // independent handles; the default
        Symmetric = 2, // both handles on one line through the anchor, opposite and of equal length
    };

    SimplePathVertex* first = nullptr;
    SimplePathVertex* anchor = nullptr;
    SimplePathVertex* last = nullptr;
    VertexTripleMode mode = Cusp;

    SimplePathVertexTriple() = default;
    SimplePathVertexTriple(SimplePathVertex* firstVertex, SimplePathVertex* anchorVertex,
                           SimplePathVertex* lastVertex, VertexTripleMode tripleMode)
        : first(firstVertex), anchor(anchorVertex), last(lastVertex), mode(tripleMode) {}

    // Identity of the vertex objects and equal modes; locations play no part.
    bool operator==(SimplePathVertexTriple const& other) const {
        return first == other.first && anchor == other.anchor && last == other.last && mode == other.mode;
    }
    bool operator!=(SimplePathVertexTriple const& other) const { return !(*this == other); }

    // Orders by the addresses of `first`, then of `anchor`; triples that differ only in `last` are
    // unordered (neither is less), and triples with all three vertices equal are ordered by mode.
    bool operator<(SimplePathVertexTriple const& other) const;
    // The mirror image of operator<, with the same blind spot for `last`.
    bool operator>(SimplePathVertexTriple const& other) const;

    // Swaps the two handles, as when the direction of the path is reversed.
    void reverse();

    // Smooth when the two handle vectors are exactly parallel (cross product exactly zero, retracted
    // handles included), Cusp otherwise. No tolerance, and never Symmetric.
    static VertexTripleMode inferTripleMode(DPoint const& first, DPoint const& anchor, DPoint const& last);
};

// Deletes the three vertex objects a triple refers to (null ones are skipped), first, anchor, last. For
// the owner of the triple only: the triple itself is left holding dangling pointers.
void deleteTripleVertices(SimplePathVertexTriple const& triple);

static_assert(sizeof(void*) != 8 || sizeof(SimplePathVertexTriple) == 32, "a triple packs into 32 bytes");
