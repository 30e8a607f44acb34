// SimplePath members: split and join, cutting a path at an anchor and joining two open paths end to
// end.
//
// Ownership. Triples move between paths as pointers: a vertex changes owner, it is never copied and
// never freed here. Only the duplicate of a split anchor is new; the old anchor object of an open split
// leaves every path and is reported removed for the holder of the change instruction to dispose of.

#include <new>
#include <utility>

#include "simplepath/edit/ReverseShiftPositionTransform.h"
#include "simplepath/edit/ShiftPositionTransform.h"
#include "simplepath/edit/SimplePathChangeInstruction.h"
#include "simplepath/edit/SimplePathVertexOpTransforms.h"
#include "simplepath/path/SimplePath.h"

namespace {

// The vertices that stand for the split anchor: the caller's, or copies that are freed again unless
// the split goes ahead.
struct SplitVertices {
    SimplePathVertex* anchorA = nullptr;
    SimplePathVertex* handleA = nullptr;
    SimplePathVertex* anchorB = nullptr;
    SimplePathVertex* handleB = nullptr;
    bool owned = false;

    SplitVertices(SimplePathVertex* givenAnchorA, SimplePathVertex* givenHandleA,
                  SimplePathVertex* givenAnchorB, SimplePathVertex* givenHandleB)
        : anchorA(givenAnchorA), handleA(givenHandleA), anchorB(givenAnchorB), handleB(givenHandleB) {}
    SplitVertices(SplitVertices const&) = delete;
    SplitVertices& operator=(SplitVertices const&) = delete;
    ~SplitVertices() {
        if (owned) {
            delete anchorA;
            delete handleA;
            delete anchorB;
            delete handleB;
        }
    }

    // Copies of the split triple when the caller gave no anchor; false when a needed vertex is missing.
    bool complete(SimplePathVertexTriple const& split, bool needAnchorB) {
        if (anchorA == nullptr) {
            owned = true;
            anchorA = split.anchor->copy();
            handleA = split.first->copy();
            handleB = split.last->copy();
            anchorB = needAnchorB ? split.anchor->copy() : nullptr;
        }
        return anchorA != nullptr && handleA != nullptr && handleB != nullptr &&
               (anchorB != nullptr || !needAnchorB);
    }
    // The path has taken the vertices.
    void handOver() { owned = false; }
};

// Moves the handle `which` (first or last) of triple `index` onto its anchor.
enum class Handle { Incoming, Outgoing };
void retract(SimplePathTripleList& list, int index, Handle which) {
    auto const position = list.iteratorAt(index);
    DPoint const a = position->anchor->getLocation();
    if (which == Handle::Incoming) {
        list.setTripleLocations(position, a, a, position->last->getLocation());
    } else {
        list.setTripleLocations(position, position->first->getLocation(), a, a);
    }
}

// Moves every triple of `from` onto the end of `into`, in order or reversed (last first, each with its
// handles swapped), and returns the transform that carries `source`'s positions along.
SimplePathPositionTransform* appendPiece(SimplePathTripleList& from,
                                         PHashablePointer<SimplePath> const& source, bool reversed,
                                         SimplePathTripleList& into,
                                         PHashablePointer<SimplePath> const& destination) {
    int const n = from.length();
    int const offset = into.length();
    for (int i = 0; i < n; ++i) {
        SimplePathVertexTriple triple = from[reversed ? n - 1 - i : i];
        if (reversed) {
            triple.reverse();
        }
        into.push_back(triple);
    }
    from.removeAll();
    if (reversed) {
        return new ReverseShiftPositionTransform(source, n, destination, offset);
    }
    return new ShiftPositionTransform(source, destination, offset);
}

// Reverses triples [from, to) in place; three reversals rotate a path's start in linear time.
void reverseRange(SimplePathTripleList& list, int from, int to) {
    for (--to; from < to; ++from, --to) {
        SimplePathVertexTriple const front = list[from];
        list.setTriple(list.iteratorAt(from), list[to]);
        list.setTriple(list.iteratorAt(to), front);
    }
}

} // namespace

SimplePath::Result SimplePath::splitVertex(SimplePathVertex* const& vertex,
                                           SimplePathChangeInstruction& change,
                                           PHashablePointer<SimplePath>& firstPath,
                                           PHashablePointer<SimplePath>& secondPath,
                                           SimplePathVertex* anchorA, SimplePathVertex* handleA,
                                           SimplePathVertex* anchorB, SimplePathVertex* handleB) {
    int const k = findAnchor(vertex);
    if (k < 0) {
        return Failure;
    }
    int const n = numTriples();
    SimplePathVertexTriple const split = tripleList[k];
    SplitVertices given(anchorA, handleA, anchorB, handleB);

    if (closed != 0) {
        // Opened at anchor k: the path is turned to start there and a duplicate of the anchor ends it.
        if (!given.complete(split, false)) {
            return Failure;
        }
        try {
            tripleList.reserve(n + 1);
        } catch (std::bad_alloc const&) {
            return Failure;
        }
        auto* const rotation = SimplePathVertexOpTransforms::createSplitClosedPathTransform(this, n - k, n);
        reverseRange(tripleList, 0, k);
        reverseRange(tripleList, k, n);
        reverseRange(tripleList, 0, n);
        tripleList.push_back(SimplePathVertexTriple(given.handleA, given.anchorA, given.handleB, split.mode));
        given.handOver();
        closed = 0;
        change.insertPositionTransform(rotation);
        return Success;
    }

    SimplePath* const first = firstPath;
    SimplePath* const second = secondPath;
    if (first == nullptr || second == nullptr || first == this || second == this || first == second) {
        return Failure;
    }
    if (!given.complete(split, true)) {
        return Failure;
    }
    try {
        first->tripleList.reserve(first->numTriples() + k + 1);
        second->tripleList.reserve(second->numTriples() + n - k);
    } catch (std::bad_alloc const&) {
        return Failure;
    }
    auto* const cut =
        SimplePathVertexOpTransforms::createSplitAnchorTransform(this, k, firstPath, secondPath);

    for (int i = 0; i < k; ++i) {
        first->tripleList.push_back(tripleList[i]);
    }
    // The first piece keeps the split triple's incoming handle; its new end anchor's idle outgoing handle
    // is the copy of that incoming handle, so both lie at one place.
    first->tripleList.push_back(
        SimplePathVertexTriple(split.first, given.anchorA, given.handleA, split.mode));
    second->tripleList.push_back(
        SimplePathVertexTriple(given.handleB, given.anchorB, split.last, split.mode));
    for (int i = k + 1; i < n; ++i) {
        second->tripleList.push_back(tripleList[i]);
    }
    given.handOver();
    change.insertRemoved(split.anchor);
    change.insertAdded(given.anchorA);
    change.insertAdded(given.handleA);
    change.insertAdded(given.handleB);
    change.insertAdded(given.anchorB);
    tripleList.removeAll();

    change.insertPositionTransform(cut);
    change.insertRemoved(PHashablePointer<SimplePath>(this));
    change.insertAdded(firstPath);
    change.insertAdded(secondPath);
    change.insertRefMap(this, firstPath);
    change.insertRefMap(this, secondPath);
    return Success;
}

SimplePath::Result SimplePath::join(PHashablePointer<SimplePath>& path1, SimplePathVertex* const& vertex1,
                                    PHashablePointer<SimplePath>& path2, SimplePathVertex* const& vertex2,
                                    SimplePathChangeInstruction& change,
                                    PHashablePointer<SimplePath>& result) {
    SimplePath* const one = path1;
    SimplePath* const two = path2;
    SimplePath* const joined = result;
    // Copies: the caller may pass references into the very triple lists that are emptied below.
    SimplePathVertex* const end1 = vertex1;
    SimplePathVertex* const end2 = vertex2;
    if (one == nullptr || two == nullptr || joined == nullptr || one == two || joined == one ||
        joined == two) {
        return Failure;
    }
    if (areCompatible(path1, path2) == 0 || one->closed != 0 || two->closed != 0) {
        return Failure;
    }
    int const n1 = one->numTriples();
    int const n2 = two->numTriples();
    if (n1 < 2 || n2 < 1 || end1 == nullptr || end2 == nullptr) {
        return Failure;
    }
    bool const oneEndsThere = one->tripleList[n1 - 1].anchor == end1;
    if (!oneEndsThere && one->tripleList[0].anchor != end1) {
        return Failure;
    }
    bool const twoStartsThere = two->tripleList[0].anchor == end2;
    if (!twoStartsThere && two->tripleList[n2 - 1].anchor != end2) {
        return Failure;
    }
    try {
        joined->tripleList.reserve(joined->numTriples() + n1 + n2);
    } catch (std::bad_alloc const&) {
        return Failure;
    }

    change.insertRemoved(path1);
    change.insertRemoved(path2);
    change.insertAdded(result);
    change.insertRefMap(path1, result);
    change.insertRefMap(path2, result);

    // path1 runs into vertex1: in order when vertex1 is its last anchor, reversed otherwise. The handle
    // facing the new connecting segment is retracted, so that segment is straight.
    retract(one->tripleList, oneEndsThere ? n1 - 1 : 0, oneEndsThere ? Handle::Outgoing : Handle::Incoming);
    SimplePathPositionTransform* const carry1 =
        appendPiece(one->tripleList, path1, !oneEndsThere, joined->tripleList, result);

    // path2 runs on from vertex2. The handle vertex2 had towards the rest of path2 is remembered: should
    // the two ends merge, the merged anchor takes it over.
    SimplePathVertexTriple const& joint = two->tripleList[twoStartsThere ? 0 : n2 - 1];
    DPoint const farHandle = (twoStartsThere ? joint.last : joint.first)->getLocation();
    retract(two->tripleList, twoStartsThere ? 0 : n2 - 1,
            twoStartsThere ? Handle::Incoming : Handle::Outgoing);
    SimplePathPositionTransform* const carry2 =
        appendPiece(two->tripleList, path2, !twoStartsThere, joined->tripleList, result);

    change.insertPositionTransform(carry1);
    change.insertPositionTransform(carry2);

    if (distance(end1->getLocation(), end2->getLocation()) != 0.0) {
        return Success;
    }
    // The ends lie at exactly one place: vertex1 absorbs vertex2. When path1 was reversed the far handle
    // replaces vertex1's incoming handle (the one leading back into path1's piece), not its outgoing one;
    // that placement is kept on purpose.
    SimplePathVertex* in = nullptr;
    SimplePathVertex* anchor = nullptr;
    SimplePathVertex* out = nullptr;
    SimplePathVertexTriple::VertexTripleMode mode = SimplePathVertexTriple::Cusp;
    if (joined->getVertexInfo(end1, in, anchor, out, mode) != Success) {
        return Failure;
    }
    DPoint inLocation = in->getLocation();
    DPoint outLocation = out->getLocation();
    if (oneEndsThere) {
        outLocation = farHandle;
    } else {
        inLocation = farHandle;
    }
    if (joined->changeTriple(in, inLocation, anchor, anchor->getLocation(), out, outLocation, mode, change) !=
        Success) {
        return Failure;
    }
    return joined->deleteVertex(end2, change);
}
