// SimplePath members: mode setting, switching a vertex between the handle modes.

#include "simplepath/interfaces/detail/Tolerances.h"
#include "simplepath/path/SimplePath.h"

namespace {

DPoint midpoint(DPoint const& a, DPoint const& b) {
    return DPoint((a.x + b.x) / 2.0, (a.y + b.y) / 2.0);
}

} // namespace

int SimplePath::previousTriple(int index) const {
    int const n = numTriples();
    if (n < 2) {
        return -1;
    }
    if (index > 0) {
        return index - 1;
    }
    return closed != 0 ? n - 1 : -1;
}

int SimplePath::nextTriple(int index) const {
    int const n = numTriples();
    if (n < 2) {
        return -1;
    }
    if (index < n - 1) {
        return index + 1;
    }
    return closed != 0 ? 0 : -1;
}

// With handles that coincide there is no direction to keep, so one is taken from the neighbours: the
// chord from the previous outgoing handle to the next incoming one, a quarter of it on each side, or a
// unit step along x when that chord is empty. Otherwise both handles turn onto the line through the
// anchor parallel to the line from the old incoming handle to the old outgoing one.
SimplePath::Result SimplePath::alignHandles(SimplePathVertex* vertex, bool symmetric) {
    int const index = findTriple(vertex);
    if (index < 0) {
        return Failure;
    }
    auto const position = tripleList.iteratorAt(index);
    DPoint const a = position->anchor->getLocation();
    DVector const dIn = position->first->getLocation() - a;
    DVector const dOut = position->last->getLocation() - a;
    DPoint in;
    DPoint out;
    if ((dIn - dOut).length() < simplepath_tolerance::kCoincidentHandles) {
        DVector d;
        int const previous = previousTriple(index);
        int const next = nextTriple(index);
        if (previous >= 0) {
            d += a - tripleList[previous].last->getLocation();
        }
        if (next >= 0) {
            d += tripleList[next].first->getLocation() - a;
        }
        if (d == DVector()) {
            in = DPoint(a.x - 1.0, a.y);
            out = DPoint(a.x + 1.0, a.y);
        } else {
            in = a - d * 0.25;
            out = a + d * 0.25;
        }
    } else if (symmetric) {
        DVector const u = (dIn - dOut).normalized() * ((dIn.length() + dOut.length()) * 0.5);
        in = a + u;
        out = a - u;
    } else {
        in = a + (dIn - dOut).normalized() * dIn.length();
        out = a + (dOut - dIn).normalized() * dOut.length();
    }
    tripleList.setTripleLocations(position, in, a, out);
    tripleList.setTripleMode(position,
                             symmetric ? SimplePathVertexTriple::Symmetric : SimplePathVertexTriple::Smooth);
    return Success;
}

SimplePath::Result SimplePath::setSmoothMode(SimplePathVertex*& vertex, SimplePathChangeInstruction&) {
    return alignHandles(vertex, false);
}

SimplePath::Result SimplePath::setSymmetricMode(SimplePathVertex*& vertex, SimplePathChangeInstruction&) {
    return alignHandles(vertex, true);
}

SimplePath::Result SimplePath::setCuspMode(SimplePathVertex*& vertex, SimplePathChangeInstruction&) {
    int const index = findTriple(vertex);
    if (index < 0) {
        return Failure;
    }
    auto const position = tripleList.iteratorAt(index);
    tripleList.setTripleMode(position, SimplePathVertexTriple::Cusp);
    DPoint const a = position->anchor->getLocation();
    if (position->first->getLocation() != a || position->last->getLocation() != a) {
        return Success;
    }
    // Retracted handles are pulled halfway towards the neighbouring handles; an open end mirrors the
    // other side, and a lone vertex gets a unit step along x.
    DPoint in(a.x - 1.0, a.y);
    DPoint out(a.x + 1.0, a.y);
    if (numTriples() > 1) {
        int const previous = previousTriple(index);
        int const next = nextTriple(index);
        if (previous >= 0) {
            in = midpoint(a, tripleList[previous].last->getLocation());
        }
        if (next >= 0) {
            out = midpoint(a, tripleList[next].first->getLocation());
        }
        if (previous < 0) {
            in = a + (a - out);
        }
        if (next < 0) {
            out = a + (a - in);
        }
    }
    tripleList.setTripleLocations(position, in, a, out);
    return Success;
}

SimplePath::Result SimplePath::setStraightMode(SimplePathVertex*& vertex,
                                               SimplePathChangeInstruction& change) {
    int const index = findTriple(vertex);
    if (index < 0) {
        return Failure;
    }
    SimplePathVertexTriple const triple = tripleList[index];
    DPoint const a = triple.anchor->getLocation();
    return changeTriple(triple.first, a, triple.anchor, a, triple.last, a, SimplePathVertexTriple::Cusp,
                        change);
}
