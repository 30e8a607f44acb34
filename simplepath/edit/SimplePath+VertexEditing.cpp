// SimplePath members: vertex editing, inserting, deleting and moving vertices in place, and
// initialize, which records the vertices it makes.

#include <cmath>
#include <new>

#include "simplepath/edit/SimplePathChangeInstruction.h"
#include "simplepath/edit/SimplePathVertexOpTransforms.h"
#include "simplepath/interfaces/PBezier.h"
#include "simplepath/interfaces/Tolerance.h"
#include "simplepath/interfaces/detail/Tolerances.h"
#include "simplepath/path/SimplePath.h"
#include "simplepath/path/SimplePathDPointVertex.h"

namespace {

// The cubic of the segment from triple `a` to triple `b`.
PBezier segmentBetween(SimplePathVertexTriple const& a, SimplePathVertexTriple const& b) {
    return PBezier(a.anchor->getLocation(), a.last->getLocation(), b.first->getLocation(),
                   b.anchor->getLocation());
}

void recordAdded(SimplePathChangeInstruction& change, SimplePathVertexTriple const& triple) {
    change.insertAdded(triple.first);
    change.insertAdded(triple.anchor);
    change.insertAdded(triple.last);
}

// Copies of the three vertices, or false with nothing left allocated when memory runs out.
bool copyTriple(SimplePathVertexTriple const& source, SimplePathVertexTriple& out) {
    SimplePathVertexTriple copy(source.first->copy(), source.anchor->copy(), source.last->copy(),
                                SimplePathVertexTriple::Smooth);
    if (copy.first == nullptr || copy.anchor == nullptr || copy.last == nullptr) {
        deleteTripleVertices(copy);
        return false;
    }
    out = copy;
    return true;
}

} // namespace

int SimplePath::findAnchor(SimplePathVertex const* anchor) const {
    if (anchor == nullptr) {
        return -1;
    }
    int index = 0;
    for (SimplePathVertexTriple const& triple : tripleList) {
        if (triple.anchor == anchor) {
            return index;
        }
        ++index;
    }
    return -1;
}

void SimplePath::createVertexTriple(SimplePathPosition const& position, SimplePathVertexTriple& out) const {
    int const index = position.index;
    double const t = position.parameter;
    int const n = numTriples();
    SimplePathVertexTriple a;
    SimplePathVertexTriple b;
    if (getTriple(index, a) != Success ||
        getTriple(closed != 0 && index == n - 1 ? 0 : index + 1, b) != Success || !std::isfinite(t)) {
        return;
    }
    PBezier const segment = segmentBetween(a, b);
    DPoint first;
    DPoint anchor;
    DPoint last;
    // Handles within 1e-7 of their anchors count as a straight segment here (the insertion itself tests
    // exactly): the new vertex then gets no handles of its own.
    if (isEqual(segment[0], segment[1], simplepath_tolerance::kRetractedHandle) &&
        isEqual(segment[2], segment[3], simplepath_tolerance::kRetractedHandle)) {
        first = anchor = last = segment.bValue(t);
    } else {
        PBezier left;
        PBezier right;
        segment.split(t, left, right);
        first = left[2];
        anchor = left[3];
        last = right[1];
    }
    SimplePathVertexTriple made(nullptr, nullptr, nullptr, SimplePathVertexTriple::Smooth);
    if (SimplePathDPointVertex::createTriple(first, anchor, last, made.first, made.anchor, made.last)) {
        out = made;
    }
}

SimplePath::Result SimplePath::addVertexAtPosition(SimplePathPosition const& position,
                                                   SimplePathChangeInstruction& change) {
    return insertAtPosition(position, nullptr, change);
}

SimplePath::Result SimplePath::addVertexAtPositionEx(SimplePathPosition const& position,
                                                     SimplePathVertexTriple const& triple,
                                                     SimplePathChangeInstruction& change) {
    return insertAtPosition(position, &triple, change);
}

// Insertion splits the segment's cubic by de Casteljau at t: the left half's P1 becomes A's outgoing
// handle, the right half's P2 B's incoming handle, and the new vertex takes L2, the shared point and R1.
// The two halves trace exactly the original curve, so the drawn path is unchanged up to the rounding of
// the split (a few ulps of the control points). Cost: the later triples move once; nothing else is
// walked or copied.
SimplePath::Result SimplePath::insertAtPosition(SimplePathPosition const& position,
                                                SimplePathVertexTriple const* given,
                                                SimplePathChangeInstruction& change) {
    // Recorded before anything is checked, so it stays even when the insertion fails.
    change.insertPositionTransform(
        SimplePathVertexOpTransforms::createAddAnchorAtPositionTransform(this, position));

    int const n = numTriples();
    int const index = position.index;
    double const t = position.parameter;
    if (index < 0 || index >= n) {
        return Failure;
    }
    if (given != nullptr && (given->first == nullptr || given->anchor == nullptr || given->last == nullptr)) {
        return Failure;
    }
    bool const atLast = index == n - 1;
    if (atLast && closed == 0) {
        // The last vertex of an open path has no segment after it: only its anchor may be named, and
        // the vertex is duplicated in front of itself.
        if (t != 0.0) {
            return Failure;
        }
        SimplePathVertexTriple inserted;
        if (given != nullptr) {
            inserted = *given;
        } else if (!copyTriple(tripleList[index], inserted)) {
            return Failure;
        }
        try {
            tripleList.insert(tripleList.iteratorAt(index), inserted);
        } catch (std::bad_alloc const&) {
            if (given == nullptr) {
                deleteTripleVertices(inserted);
            }
            return Failure;
        }
        recordAdded(change, inserted);
        return Success;
    }
    if (!(t >= 0.0 && t <= 1.0)) {
        return Failure;
    }

    // The closing segment of a closed path ends at triple 0; the new triple then goes to the end.
    int const bIndex = atLast ? 0 : index + 1;
    PBezier const segment = segmentBetween(tripleList[index], tripleList[bIndex]);
    PBezier left;
    PBezier right;
    // Exact test, unlike createVertexTriple's 1e-7: only handles lying exactly on their anchors make a
    // straight segment whose new vertex and neighbours keep their handles retracted.
    if (segment[0] == segment[1] && segment[2] == segment[3]) {
        DPoint const m = segment.bValue(t);
        left = PBezier(segment[0], segment[0], m, m);
        right = PBezier(m, m, segment[3], segment[3]);
    } else {
        segment.split(t, left, right);
    }

    int const at = atLast ? n : index + 1;
    SimplePathVertexTriple inserted;
    if (given != nullptr) {
        try {
            tripleList.insert(tripleList.iteratorAt(at), *given);
        } catch (std::bad_alloc const&) {
            return Failure;
        }
        inserted = *given;
    } else if (!insertNewTriple(at, left[2], right[0], right[1], SimplePathVertexTriple::Smooth, inserted)) {
        return Failure;
    }

    // B moved one place on unless it is triple 0. A and B are one triple on a closed one-vertex path, so
    // B is read after A has been written.
    int const newB = atLast ? 0 : index + 2;
    auto const a = tripleList.iteratorAt(index);
    tripleList.setTripleLocations(a, a->first->getLocation(), a->anchor->getLocation(), left[1]);
    auto const b = tripleList.iteratorAt(newB);
    tripleList.setTripleLocations(b, right[2], b->anchor->getLocation(), b->last->getLocation());

    recordAdded(change, inserted);
    return Success;
}

SimplePath::Result SimplePath::deleteVertex(SimplePathVertex* const& anchor,
                                            SimplePathChangeInstruction& change) {
    int const k = findAnchor(anchor);
    if (k < 0) {
        return Failure;
    }
    auto const position = tripleList.iteratorAt(k);
    change.insertPositionTransform(
        SimplePathVertexOpTransforms::createDeleteAnchorTransform(this, closed, position, k, numTriples()));
    SimplePathVertexTriple const removed = *position;
    change.insertRemoved(removed.first);
    change.insertRemoved(removed.anchor);
    change.insertRemoved(removed.last);
    tripleList.remove(position);
    return Success;
}

SimplePath::Result SimplePath::changeTriple(SimplePathVertex* in, DPoint const& inLocation,
                                            SimplePathVertex* anchor, DPoint const& anchorLocation,
                                            SimplePathVertex* out, DPoint const& outLocation,
                                            SimplePathVertexTriple::VertexTripleMode mode,
                                            SimplePathChangeInstruction&, int) {
    int const index = findAnchor(anchor);
    if (index < 0) {
        return Failure;
    }
    auto const position = tripleList.iteratorAt(index);
    if (position->first != in || position->last != out) {
        return Failure;
    }
    tripleList.setTripleLocations(position, inLocation, anchorLocation, outLocation);
    tripleList.setTripleMode(position, mode);
    return Success;
}

SimplePath::Result SimplePath::transform(ArbTrans<DPoint> const& mapping) {
    for (auto position = tripleList.begin(); position != tripleList.end(); ++position) {
        tripleList.setTripleLocations(position, mapping.transform(position->first->getLocation()),
                                      mapping.transform(position->anchor->getLocation()),
                                      mapping.transform(position->last->getLocation()));
        // Aligned modes are kept even when a non-affine mapping bends the handles out of line.
        if (position->mode != SimplePathVertexTriple::Smooth &&
            position->mode != SimplePathVertexTriple::Symmetric) {
            tripleList.setTripleMode(position, SimplePathVertexTriple::Cusp);
        }
    }
    return Success;
}

SimplePath::Result SimplePath::transform(P2DTrans const& m, DPoint const& centre) {
    auto const map = [&](SimplePathVertex const* vertex) {
        return centre + m * (vertex->getLocation() - centre);
    };
    for (auto position = tripleList.begin(); position != tripleList.end(); ++position) {
        tripleList.setTripleLocations(position, map(position->first), map(position->anchor),
                                      map(position->last));
    }
    return Success;
}

SimplePath::Result SimplePath::translate(DVector const& offset) {
    for (auto position = tripleList.begin(); position != tripleList.end(); ++position) {
        tripleList.setTripleLocations(position, position->first->getLocation() + offset,
                                      position->anchor->getLocation() + offset,
                                      position->last->getLocation() + offset);
    }
    return Success;
}

void SimplePath::scale(double xFactor, double yFactor) {
    P2DTrans m;
    m.xScale(xFactor).yScale(yFactor);
    // Mapping through a matrix always succeeds; scale has nothing to report.
    (void)transform(m, DPoint(0.0, 0.0));
}

SimplePath::Result SimplePath::initialize(std::list<SimplePathLocationTriple> const& triples, int closedFlag,
                                          SimplePathChangeInstruction& change) {
    closed = closedFlag;
    tripleList.reserve(numTriples() + static_cast<int>(triples.size()));
    SimplePathVertexTriple made;
    for (SimplePathLocationTriple const& entry : triples) {
        if (!insertNewTriple(numTriples(), entry.first, entry.anchor, entry.last, entry.mode, made)) {
            return Failure;
        }
        change.insertAdded(made.first);
        change.insertAdded(made.anchor);
        change.insertAdded(made.last);
    }
    return Success;
}
