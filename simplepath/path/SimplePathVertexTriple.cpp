#include "simplepath/path/SimplePathVertexTriple.h"

#include "simplepath/path/SimplePathVertex.h"

#include <cstdint>
#include <utility>

namespace {
std::uintptr_t address(SimplePathVertex const* v) {
    return reinterpret_cast<std::uintptr_t>(v);
}
} // namespace

bool SimplePathVertexTriple::operator<(SimplePathVertexTriple const& other) const {
    if (first != other.first) {
        return address(first) < address(other.first);
    }
    if (anchor != other.anchor) {
        return address(anchor) < address(other.anchor);
    }
    if (last != other.last) {
        return false;
    }
    return static_cast<std::int32_t>(mode) < static_cast<std::int32_t>(other.mode);
}

bool SimplePathVertexTriple::operator>(SimplePathVertexTriple const& other) const {
    if (first != other.first) {
        return address(first) > address(other.first);
    }
    if (anchor != other.anchor) {
        return address(anchor) > address(other.anchor);
    }
    if (last != other.last) {
        return false;
    }
    return static_cast<std::int32_t>(mode) > static_cast<std::int32_t>(other.mode);
}

void SimplePathVertexTriple::reverse() {
    std::swap(first, last);
}

SimplePathVertexTriple::VertexTripleMode
SimplePathVertexTriple::inferTripleMode(DPoint const& first, DPoint const& anchor, DPoint const& last) {
    DVector const in = first - anchor;
    DVector const out = last - anchor;
    // A NaN cross product is "not exactly zero" as well, so broken coordinates come out as Cusp.
    return in.cross(out) != 0.0 ? Cusp : Smooth;
}

void deleteTripleVertices(SimplePathVertexTriple const& triple) {
    delete triple.first;
    delete triple.anchor;
    delete triple.last;
}
