// The slice is built from the path's own split and join primitives so that every step is recorded in
// the change instruction (held positions follow the vertices onto the pieces) and every vertex object
// of the inputs ends up in exactly one piece or, if the edit removed it, with the operation. Open paths
// are first closed through a temporary closing vertex, so that every variant reduces to cutting closed
// outlines; the closing vertex and its copy are deleted again at the end, together with the two
// segments they gave, which the cut never reaches.

#include "simplepath/operations/SliceSimplePathOperation.h"

#include <algorithm>
#include <new>
#include <utility>

#include "simplepath/edit/SimplePathChangeInstruction.h"
#include "simplepath/operations/detail/OperationSupport.h"

using namespace operation_support;

namespace {

// The sign of the turn p -> q -> r: +1 left, -1 right, 0 in line.
int turn(DPoint const& p, DPoint const& q, DPoint const& r) {
    double const cross = (q.x - p.x) * (r.y - p.y) - (q.y - p.y) * (r.x - p.x);
    return (cross > 0.0) - (cross < 0.0);
}

// True when the segments pq and rs cross at a point inside both. Touching ends, shared ends and
// segments in line do not count: connecting segments that merely meet are acceptable.
bool crossProperly(DPoint const& p, DPoint const& q, DPoint const& r, DPoint const& s) {
    return turn(p, q, r) * turn(p, q, s) < 0 && turn(r, s, p) * turn(r, s, q) < 0;
}

SimplePathVertexTriple tripleAt(SimplePath const& path, int index) {
    SimplePathVertexTriple triple;
    (void)path.getTriple(index, triple); // every caller passes an index of an existing triple
    return triple;
}

void addUnique(std::vector<SimplePathVertex*>& list, SimplePathVertex* vertex) {
    if (vertex != nullptr && std::find(list.begin(), list.end(), vertex) == list.end()) {
        list.push_back(vertex);
    }
}

} // namespace

SliceSimplePathOperation::SliceSimplePathOperation(PHashablePointer<SimplePath> path1,
                                                   SimplePathPosition const& position1,
                                                   PHashablePointer<SimplePath> path2,
                                                   SimplePathPosition const& position2)
    : firstPath(path1), secondPath(path2), firstPosition(position1), secondPosition(position2) {}

SliceSimplePathOperation::~SliceSimplePathOperation() {
    releaseMementos();
    if (applied) {
        deleteAll(unlinked);
        deleteAll(spare);
    } else {
        std::vector<SimplePathVertex*> ours = copyVertices();
        deleteAll(ours);
    }
    for (int i = 0; i < 3; ++i) {
        if (ownResult[i]) {
            delete results[i].getPointer();
        }
    }
}

std::vector<SimplePathVertex*> SliceSimplePathOperation::copyVertices() const {
    std::vector<SimplePathVertex*> out;
    for (Copies const& c : copies) {
        for (SimplePathVertex* v : {c.anchorA, c.handleA, c.anchorB, c.handleB}) {
            addUnique(out, v);
        }
    }
    return out;
}

void SliceSimplePathOperation::releaseMementos() {
    delete firstMemento;
    delete secondMemento;
    firstMemento = secondMemento = nullptr;
    for (SimplePathMemento*& m : resultMementos) {
        delete m;
        m = nullptr;
    }
}

PHashablePointer<SimplePath> SliceSimplePathOperation::getResultPath(int index) const {
    return index >= 0 && index < 3 ? results[index] : PHashablePointer<SimplePath>();
}

// First execution: the copies of each cut anchor and the three result paths, kept for every redo.
bool SliceSimplePathOperation::prepare(Side const& one, Side const& two) {
    for (Side const& side : {one, two}) {
        SimplePathVertex* in = nullptr;
        SimplePathVertex* anchor = nullptr;
        SimplePathVertex* out = nullptr;
        SimplePathVertexTriple::VertexTripleMode mode = SimplePathVertexTriple::Cusp;
        if (side.path->getVertexInfo(side.anchor, in, anchor, out, mode) != SimplePath::Success) {
            return false;
        }
        Copies& c = *side.copies;
        c.anchorA = side.anchor->copy();
        c.anchorB = side.anchor->copy();
        c.handleA = in != nullptr ? in->copy() : nullptr;
        c.handleB = out != nullptr ? out->copy() : nullptr;
        if (c.anchorA == nullptr || c.anchorB == nullptr || c.handleA == nullptr || c.handleB == nullptr) {
            return false;
        }
    }
    for (int i = 0; i < 3; ++i) {
        results[i] = new (std::nothrow) SimplePath();
        ownResult[i] = results[i] != nullptr;
        if (results[i] == nullptr) {
            return false;
        }
    }
    return true;
}

SimplePathOperation::Result
SliceSimplePathOperation::executeOperation(std::list<PHashablePointer<SimplePath>>& affectedPaths,
                                           SimplePathChangeInstruction& change) {
    if (applied) {
        return EditFailed; // a redo needs the undo in between
    }
    if (firstPath == nullptr || secondPath == nullptr) {
        return MementoFailed;
    }
    bool const samePath = firstPath == secondPath;
    if (samePath && firstPosition == secondPosition) {
        return DegenerateSlice;
    }
    Side one{firstPath, nullptr, &copies[0]};
    Side two{secondPath, nullptr, &copies[1]};
    if (firstPath->getNearestAnchor(firstPosition, one.anchor) != SimplePath::Success ||
        secondPath->getNearestAnchor(secondPosition, two.anchor) != SimplePath::Success) {
        return EditFailed;
    }
    if (samePath && one.anchor == two.anchor) {
        return DegenerateSlice; // both positions lead to one anchor: there is nothing to cut between
    }
    if (results[0] == nullptr && !prepare(one, two)) {
        return EditFailed;
    }
    releaseMementos();
    if (!takeMemento(firstPath, firstMemento) || (!samePath && !takeMemento(secondPath, secondMemento))) {
        return MementoFailed;
    }
    for (int i = 0; i < 3; ++i) {
        if (!takeMemento(results[i], resultMementos[i])) {
            return MementoFailed;
        }
    }
    applied = true;
    seen.clear();
    touched.clear();
    firstPiece = secondPiece = PHashablePointer<SimplePath>();
    Result result = EditFailed;
    try {
        note();
        result = cut(one, two, change);
        note();
        settle();
    } catch (std::bad_alloc const&) {
        result = EditFailed;
    }
    if (result == Success) {
        affectedPaths.insert(affectedPaths.end(), touched.begin(), touched.end());
    }
    return result;
}

SimplePathOperation::Result SliceSimplePathOperation::cut(Side one, Side two,
                                                          SimplePathChangeInstruction& change) {
    if (one.path == two.path) {
        touch(one.path);
        return one.path->isClosedSimplePath() != 0 ? cutClosed(one, two, change) : cutOpen(one, two, change);
    }
    int const code =
        (one.path->isClosedSimplePath() != 0 ? 1 : 0) + (two.path->isClosedSimplePath() != 0 ? 2 : 0);
    if (code == 1) {
        std::swap(one, two); // the closed path is always taken second
    }
    touch(one.path);
    touch(two.path);
    switch (code) {
    case 0:
        return cutBothOpen(one, two, change);
    case 3:
        return cutBothClosed(one, two, change);
    default:
        return cutOpenWithClosed(one, two, change);
    }
}

// Cuts at the side's anchor with its remembered copies (made where the anchor and its handles stood at
// the first execution; every redo starts from that same state). A closed path opens in place; an open
// one falls apart into result paths 1 and 2.
bool SliceSimplePathOperation::splitAt(Side const& side, SimplePathChangeInstruction& change) {
    Copies const& c = *side.copies;
    bool const open = side.path->isClosedSimplePath() == 0;
    SimplePathVertex* const anchor = side.anchor;
    seen.push_back(anchor); // an open path gives up the anchor it is cut at
    bool const done = side.path->splitVertex(anchor, change, results[1], results[2], c.anchorA, c.handleA,
                                             c.anchorB, c.handleB) == SimplePath::Success;
    if (done && open) {
        ownResult[1] = ownResult[2] = false;
        touch(results[1]);
        touch(results[2]);
    }
    note();
    return done;
}

// Appends a temporary vertex, handles retracted, halfway between the path's end anchors, and closes the
// path through it. The two segments it makes are removed with it later.
bool SliceSimplePathOperation::addClosingPoint(SimplePath& path, SimplePathVertex*& anchor,
                                               SimplePathChangeInstruction& change) {
    int const n = path.numTriples();
    if (n < 1) {
        return false;
    }
    DPoint const a = tripleAt(path, 0).anchor->getLocation();
    DPoint const b = tripleAt(path, n - 1).anchor->getLocation();
    DPoint const at(0.5 * (a.x + b.x), 0.5 * (a.y + b.y));
    SimplePathVertex* first = nullptr;
    SimplePathVertex* last = nullptr;
    bool const done = path.addTriple(at, first, at, anchor, at, last, SimplePathVertexTriple::Cusp) ==
                          SimplePath::Success &&
                      path.setClosed(change) == SimplePath::Success;
    note();
    return done;
}

// Deletes the first or the last triple of the path.
bool SliceSimplePathOperation::deleteEnd(SimplePath& path, bool last, SimplePathChangeInstruction& change) {
    int const n = path.numTriples();
    if (n < 1) {
        return false;
    }
    SimplePathVertex* const anchor = tripleAt(path, last ? n - 1 : 0).anchor;
    bool const done = path.deleteVertex(anchor, change) == SimplePath::Success;
    note();
    return done;
}

// Opens the closed path at the temporary closing vertex and deletes it and its copy, which then stand
// at the two ends.
bool SliceSimplePathOperation::reopenAt(PHashablePointer<SimplePath> const& path, SimplePathVertex* anchor,
                                        SimplePathChangeInstruction& change) {
    PHashablePointer<SimplePath> none1;
    PHashablePointer<SimplePath> none2;
    if (path == nullptr || path->isClosedSimplePath() == 0 ||
        path->splitVertex(anchor, change, none1, none2) != SimplePath::Success) {
        return false;
    }
    note();
    return deleteEnd(*path, false, change) && deleteEnd(*path, true, change);
}

// Retracts the handles on either side of the closing segment, so that it is the straight cut, makes
// the two cut ends corners, and closes the piece.
bool SliceSimplePathOperation::closeOverCut(SimplePath& piece, SimplePathChangeInstruction& change) {
    int const n = piece.numTriples();
    if (n < 1) {
        return false;
    }
    SimplePathVertexTriple const last = tripleAt(piece, n - 1);
    DPoint const lastAnchor = last.anchor->getLocation();
    if (piece.changeTriple(last.first, last.first->getLocation(), last.anchor, lastAnchor, last.last,
                           lastAnchor, SimplePathVertexTriple::Cusp, change) != SimplePath::Success) {
        return false;
    }
    SimplePathVertexTriple const first = tripleAt(piece, 0);
    DPoint const firstAnchor = first.anchor->getLocation();
    if (piece.changeTriple(first.first, firstAnchor, first.anchor, firstAnchor, first.last,
                           first.last->getLocation(), SimplePathVertexTriple::Cusp,
                           change) != SimplePath::Success) {
        return false;
    }
    return piece.setClosed(change) == SimplePath::Success;
}

// One closed path: opened at the first anchor, it then falls apart at the second into result paths 1
// and 2, and each piece is closed over the cut.
SimplePathOperation::Result SliceSimplePathOperation::cutClosed(Side const& one, Side const& two,
                                                                SimplePathChangeInstruction& change) {
    if (!splitAt(one, change) || !splitAt(two, change)) {
        return EditFailed;
    }
    if (!closeOverCut(*results[1], change) || !closeOverCut(*results[2], change)) {
        return EditFailed;
    }
    firstPiece = results[1];
    secondPiece = results[2];
    return Success;
}

// One open path: closed through a temporary vertex after its last anchor and cut as a closed path. The
// piece beyond the second anchor holds the temporary vertex; reopened there, it is the two outer parts
// joined by the cut.
SimplePathOperation::Result SliceSimplePathOperation::cutOpen(Side one, Side two,
                                                              SimplePathChangeInstruction& change) {
    SimplePathPosition at1;
    SimplePathPosition at2;
    if (one.path->getAnchorPosition(one.anchor, at1) != SimplePath::Success ||
        one.path->getAnchorPosition(two.anchor, at2) != SimplePath::Success) {
        return EditFailed;
    }
    if (at2 < at1) {
        std::swap(one, two);
    }
    SimplePathVertex* closing = nullptr;
    if (!addClosingPoint(*one.path, closing, change) || cutClosed(one, two, change) != Success) {
        return EditFailed;
    }
    SimplePathVertexTriple triple;
    int index = -1;
    PHashablePointer<SimplePath> holder;
    if (results[1]->getVertexInfo(closing, triple, index) == SimplePath::Success) {
        holder = results[1];
    } else if (results[2]->getVertexInfo(closing, triple, index) == SimplePath::Success) {
        holder = results[2];
    } else {
        return EditFailed;
    }
    return reopenAt(holder, closing, change) ? Success : EditFailed;
}

// Two closed paths, each opened at its anchor and joined into result path 0 over the cut; the join
// order is the one whose two connecting segments do not cross.
SimplePathOperation::Result SliceSimplePathOperation::cutBothClosed(Side const& one, Side const& two,
                                                                    SimplePathChangeInstruction& change) {
    if (!splitAt(one, change) || !splitAt(two, change)) {
        return EditFailed;
    }
    int const n1 = one.path->numTriples();
    int const n2 = two.path->numTriples();
    if (n1 < 2 || n2 < 1) {
        return EditFailed;
    }
    SimplePathVertex* const start1 = tripleAt(*one.path, 0).anchor;
    SimplePathVertex* const end1 = tripleAt(*one.path, n1 - 1).anchor;
    SimplePathVertex* const start2 = tripleAt(*two.path, 0).anchor;
    SimplePathVertex* const end2 = tripleAt(*two.path, n2 - 1).anchor;
    // Joining the first path's end to the second's start connects end1-start2 and, on closing,
    // end2-start1. Where those two cross, the second path is taken the other way round.
    bool const reverse =
        crossProperly(end1->getLocation(), start2->getLocation(), end2->getLocation(), start1->getLocation());
    PHashablePointer<SimplePath> path1 = one.path;
    PHashablePointer<SimplePath> path2 = two.path;
    SimplePathVertex* const to = reverse ? end2 : start2;
    if (SimplePath::join(path1, end1, path2, to, change, results[0]) != SimplePath::Success) {
        note();
        return EditFailed;
    }
    ownResult[0] = false;
    touch(results[0]);
    note();
    return closeOverCut(*results[0], change) ? Success : EditFailed;
}

SimplePathOperation::Result SliceSimplePathOperation::cutOpenWithClosed(Side const& one, Side const& two,
                                                                        SimplePathChangeInstruction& change) {
    SimplePathVertex* closing = nullptr;
    if (!addClosingPoint(*one.path, closing, change) || cutBothClosed(one, two, change) != Success) {
        return EditFailed;
    }
    return reopenAt(results[0], closing, change) ? Success : EditFailed;
}

// Two open paths, each closed through its own temporary vertex and joined as closed paths. Reopened at
// the first temporary vertex, the joined path falls apart at the second into result paths 1 and 2,
// whose ends at that vertex are deleted: the head of each path runs over the cut into the other's tail.
SimplePathOperation::Result SliceSimplePathOperation::cutBothOpen(Side const& one, Side const& two,
                                                                  SimplePathChangeInstruction& change) {
    SimplePathVertex* closing1 = nullptr;
    SimplePathVertex* closing2 = nullptr;
    if (!addClosingPoint(*one.path, closing1, change) || !addClosingPoint(*two.path, closing2, change) ||
        cutBothClosed(one, two, change) != Success || !reopenAt(results[0], closing1, change)) {
        return EditFailed;
    }
    SimplePathVertex* const anchor = closing2;
    if (results[0]->splitVertex(anchor, change, results[1], results[2]) != SimplePath::Success) {
        note();
        return EditFailed;
    }
    ownResult[1] = ownResult[2] = false;
    touch(results[1]);
    touch(results[2]);
    note();
    return deleteEnd(*results[1], true, change) && deleteEnd(*results[2], false, change) ? Success
                                                                                         : EditFailed;
}

void SliceSimplePathOperation::touch(PHashablePointer<SimplePath> const& path) {
    if (std::find(touched.begin(), touched.end(), path) == touched.end()) {
        touched.push_back(path);
    }
}

// Collects the end triples of every involved path; called after each step. Whatever a step makes (the
// temporary closing vertex, the copies of a split anchor) first stands at an end of a path, and whatever
// a step removes stood at an end just before, except the anchor an open path is cut at, which splitAt
// notes itself. So every vertex the execution may leave behind is known without walking whole paths.
void SliceSimplePathOperation::note() {
    for (SimplePath* path : {firstPath.getPointer(), secondPath.getPointer(), results[0].getPointer(),
                             results[1].getPointer(), results[2].getPointer()}) {
        int const n = path != nullptr ? path->numTriples() : 0;
        for (int index : {0, n - 1}) {
            if (index >= 0 && index < n) {
                SimplePathVertexTriple const& t = path->getTripleList()[index];
                seen.insert(seen.end(), {t.first, t.anchor, t.last});
            }
        }
    }
}

// Sorts what the execution left: noted vertices that no path holds now are the operation's (removed by
// the edit), and so are the anchor copies no piece took. One pass over the paths marks the candidates
// still held.
void SliceSimplePathOperation::settle() {
    std::vector<SimplePathVertex*> const ours = copyVertices();
    seen.insert(seen.end(), ours.begin(), ours.end());
    std::sort(seen.begin(), seen.end());
    seen.erase(std::unique(seen.begin(), seen.end()), seen.end());
    std::vector<char> held(seen.size(), 0);
    for (SimplePath* path : {firstPath.getPointer(), secondPath.getPointer(), results[0].getPointer(),
                             results[1].getPointer(), results[2].getPointer()}) {
        if (path == nullptr || (path == secondPath.getPointer() && secondPath == firstPath)) {
            continue;
        }
        for (SimplePathVertexTriple const& t : path->getTripleList()) {
            for (SimplePathVertex* v : {t.first, t.anchor, t.last}) {
                auto const at = std::lower_bound(seen.begin(), seen.end(), v);
                if (at != seen.end() && *at == v) {
                    held[static_cast<std::size_t>(at - seen.begin())] = 1;
                }
            }
        }
    }
    unlinked.clear();
    spare.clear();
    for (std::size_t i = 0; i < seen.size(); ++i) {
        if (held[i] != 0 || seen[i] == nullptr) {
            continue;
        }
        bool const copy = std::find(ours.begin(), ours.end(), seen[i]) != ours.end();
        (copy ? spare : unlinked).push_back(seen[i]);
    }
    seen.clear();
}

void SliceSimplePathOperation::undoOperation() {
    if (!applied) {
        return;
    }
    // The result paths are emptied first; then the inputs take their own vertices back. What is left
    // of the removed vertices was made during the execution and is made afresh by a redo.
    for (int i = 0; i < 3; ++i) {
        restoreMemento(results[i], resultMementos[i]);
    }
    dropNamed(unlinked, firstMemento);
    dropNamed(unlinked, secondMemento);
    restoreMemento(secondPath, secondMemento);
    restoreMemento(firstPath, firstMemento);
    deleteAll(unlinked);
    spare.clear();
    touched.clear();
    firstPiece = secondPiece = PHashablePointer<SimplePath>();
    applied = false;
}
