#include "simplepath/operations/SplitSimplePathVertexOperation.h"

#include "simplepath/operations/detail/OperationSupport.h"

using namespace operation_support;

namespace {

DPoint positionLocation(SimplePath const* path, SimplePathPosition const& position) {
    DPoint out;
    if (path != nullptr) {
        (void)path->getSimplePathPositionLocation(position, out); // off the path: the default point
    }
    return out;
}

} // namespace

int SplitSimplePathVertexOperation::SplitVOpInformation::getType() const {
    return 15;
}

SplitSimplePathVertexOperation::SplitSimplePathVertexOperation(PHashablePointer<SimplePath> editedPath,
                                                               SimplePathPosition const& where,
                                                               PHashablePointer<SimplePath> first,
                                                               PHashablePointer<SimplePath> second)
    : path(editedPath), position(where), firstPiece(first), secondPiece(second) {}

SplitSimplePathVertexOperation::SplitSimplePathVertexOperation(SplitSimplePathVertexOperation const& other)
    : SimplePathOperation(other), path(other.path), position(other.position),
      firstPiece(other.madeFirst ? PHashablePointer<SimplePath>() : other.firstPiece),
      secondPiece(other.madeSecond ? PHashablePointer<SimplePath>() : other.secondPiece) {}

SplitSimplePathVertexOperation::~SplitSimplePathVertexOperation() {
    releaseMementos();
    deleteAll(unlinked);
    if (applied == Applied::No) {
        delete anchorA;
        delete handleA;
        delete handleB;
    }
    // Opening a closed path leaves the second anchor copy unused.
    if (applied != Applied::Open) {
        delete anchorB;
    }
    if (createdFirst) {
        delete firstPiece.getPointer();
    }
    if (createdSecond) {
        delete secondPiece.getPointer();
    }
}

void SplitSimplePathVertexOperation::releaseMementos() {
    delete memento;
    delete firstMemento;
    delete secondMemento;
    memento = firstMemento = secondMemento = nullptr;
}

SimplePathOperation::Result
SplitSimplePathVertexOperation::executeOperation(std::list<PHashablePointer<SimplePath>>& affectedPaths,
                                                 SimplePathChangeInstruction& change) {
    if (applied != Applied::No) {
        return static_cast<Result>(status = EditFailed);
    }
    if (firstPiece == nullptr) {
        firstPiece = new (std::nothrow) SimplePath();
        createdFirst = madeFirst = firstPiece != nullptr;
    }
    if (secondPiece == nullptr) {
        secondPiece = new (std::nothrow) SimplePath();
        createdSecond = madeSecond = secondPiece != nullptr;
    }
    releaseMementos();
    if (!takeMemento(path, memento) || !takeMemento(firstPiece, firstMemento) ||
        !takeMemento(secondPiece, secondMemento)) {
        return static_cast<Result>(status = MementoFailed);
    }
    SimplePathVertexTriple triple;
    int index = -1;
    if (path->getNearestAnchor(position, vertex) != SimplePath::Success || vertex == nullptr ||
        path->getVertexInfo(vertex, triple, index) != SimplePath::Success) {
        // Deliberately reported like a failed memento.
        return static_cast<Result>(status = MementoFailed);
    }
    if (anchorA == nullptr) {
        anchorA = vertex->copy();
        handleA = triple.first->copy();
        anchorB = vertex->copy();
        handleB = triple.last->copy();
    }
    if (triple.anchor != vertex) {
        return static_cast<Result>(status = VertexMismatch);
    }
    bool const wasClosed = path->isClosedSimplePath() != 0;
    DPoint const at = positionLocation(path, position);
    try {
        unlinked.reserve(unlinked.size() + 1);
    } catch (std::bad_alloc const&) {
        return static_cast<Result>(status = EditFailed);
    }
    if (path->splitVertex(vertex, change, firstPiece, secondPiece, anchorA, handleA, anchorB, handleB) !=
        SimplePath::Success) {
        return static_cast<Result>(status = EditFailed);
    }
    if (wasClosed) {
        applied = Applied::Closed;
    } else {
        // The pieces have been reported added: they are the host's now. The old anchor left every path.
        applied = Applied::Open;
        createdFirst = createdSecond = false;
        unlinked.push_back(vertex);
    }
    positionBefore = at;
    affectedPaths.push_back(path);
    return static_cast<Result>(status = Success);
}

void SplitSimplePathVertexOperation::undoOperation() {
    // The pieces are emptied first, then the path takes its own vertices back.
    restoreMemento(firstPiece, firstMemento);
    restoreMemento(secondPiece, secondMemento);
    dropNamed(unlinked, memento);
    restoreMemento(path, memento);
    applied = Applied::No;
}

int SplitSimplePathVertexOperation::RetreiveSegIndependentInfo(SegmentIndependentInformation*& info) {
    return retrieve<SplitVOpInformation>(info, [&](SplitVOpInformation& record) {
        record.positionLocation = applied != Applied::No ? positionBefore : positionLocation(path, position);
        record.pieces = 0;
        record.firstPieceLocation = record.secondPieceLocation = DPoint();
        if (firstPiece != nullptr && !madeFirst) {
            record.firstPieceLocation = referenceLocation(firstPiece);
            record.pieces |= 1;
        }
        if (secondPiece != nullptr && !madeSecond) {
            record.secondPieceLocation = referenceLocation(secondPiece);
            record.pieces |= 2;
        }
        record.position = position;
    });
}

int SplitSimplePathVertexOperation::ApplySegIndependentInfo(SegmentIndependentInformation*& info) {
    auto const* record = applicableRecord<SplitVOpInformation>(info);
    PHashablePointer<SimplePath> foundPath;
    SimplePathVertex* foundVertex = nullptr;
    if (memento != nullptr || anchorA != nullptr || record == nullptr ||
        !pick(*record, record->positionLocation, foundPath, foundVertex)) {
        return 0;
    }
    path = foundPath;
    position = record->position;
    return 1;
}
