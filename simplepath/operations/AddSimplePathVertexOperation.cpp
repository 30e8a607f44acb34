#include "simplepath/operations/AddSimplePathVertexOperation.h"

#include "simplepath/operations/detail/OperationSupport.h"

using namespace operation_support;

namespace {

DPoint positionLocation(SimplePath const* path, SimplePathPosition const& position) {
    DPoint out;
    if (path != nullptr) {
        (void)path->locatePosition(position, out); // a position off the path names the default point
    }
    return out;
}

} // namespace

int AddSimplePathVertexOperation::AddVertInformation::getType() const {
    return 4;
}

AddSimplePathVertexOperation::AddSimplePathVertexOperation(PHashablePointer<SimplePath> editedPath,
                                                           SimplePathPosition const& where)
    : path(editedPath), position(where) {}

AddSimplePathVertexOperation::AddSimplePathVertexOperation(AddSimplePathVertexOperation const& other)
    : SimplePathOperation(other), path(other.path), position(other.position) {}

AddSimplePathVertexOperation::~AddSimplePathVertexOperation() {
    delete memento;
    if (!inserted) {
        deleteTripleVertices(newTriple);
    }
}

SimplePathOperation::Result
AddSimplePathVertexOperation::executeOperation(std::list<PHashablePointer<SimplePath>>& affectedPaths,
                                               SimplePathChangeInstruction& change) {
    if (inserted) {
        return EditFailed;
    }
    if (newTriple.anchor == nullptr && path != nullptr) {
        path->createVertexTriple(position, newTriple);
    }
    // A position that names no segment yields no triple, and there is nothing to insert.
    if (newTriple.first == nullptr || newTriple.anchor == nullptr || newTriple.last == nullptr) {
        return EditFailed;
    }
    if (!takeMemento(path, memento)) {
        return MementoFailed;
    }
    DPoint const at = positionLocation(path, position);
    DPoint const reference = referenceLocation(path);
    if (path->addVertexAtPositionEx(position, newTriple, change) != SimplePath::Success) {
        return EditFailed;
    }
    positionBefore = at;
    referenceBefore = reference;
    inserted = true;
    affectedPaths.push_back(path);
    return Success;
}

void AddSimplePathVertexOperation::undoOperation() {
    if (memento == nullptr) {
        return;
    }
    // The restored path no longer holds the new triple: it is this operation's again.
    restoreMemento(path, memento);
    inserted = false;
}

int AddSimplePathVertexOperation::RetreiveSegIndependentInfo(SegmentIndependentInformation*& info) {
    return retrieve<AddVertInformation>(info, [&](AddVertInformation& record) {
        record.positionLocation = inserted ? positionBefore : positionLocation(path, position);
        record.referenceLocation = inserted ? referenceBefore : referenceLocation(path);
        record.position = position;
    });
}

int AddSimplePathVertexOperation::ApplySegIndependentInfo(SegmentIndependentInformation*& info) {
    auto const* record = applicableRecord<AddVertInformation>(info);
    PHashablePointer<SimplePath> foundPath;
    SimplePathVertex* foundVertex = nullptr;
    // A triple already built belongs to the old position: the operation cannot be re-aimed then.
    if (memento != nullptr || newTriple.anchor != nullptr || record == nullptr ||
        !pick(*record, record->referenceLocation, foundPath, foundVertex)) {
        return 0;
    }
    path = foundPath;
    position = record->position;
    return 1;
}
