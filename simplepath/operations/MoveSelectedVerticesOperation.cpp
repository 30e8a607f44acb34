#include "simplepath/operations/MoveSelectedVerticesOperation.h"

#include "simplepath/operations/detail/OperationSupport.h"

using namespace operation_support;

int MoveSelectedVerticesOperation::MoveSelVertsOpInformation::getType() const {
    return 3;
}

MoveSelectedVerticesOperation::MoveSelectedVerticesOperation(PHashablePointer<SimplePath> editedPath,
                                                             SimplePathVertex* movedVertex, DVector const& by)
    : path(editedPath), vertex(movedVertex), offset(by) {}

MoveSelectedVerticesOperation::MoveSelectedVerticesOperation(MoveSelectedVerticesOperation const& other)
    : SimplePathOperation(other), path(other.path), vertex(other.vertex), offset(other.offset) {}

MoveSelectedVerticesOperation::~MoveSelectedVerticesOperation() {
    delete memento;
}

SimplePathOperation::Result
MoveSelectedVerticesOperation::executeOperation(std::list<PHashablePointer<SimplePath>>& affectedPaths,
                                                SimplePathChangeInstruction& change) {
    SimplePathVertexTriple triple;
    Result const begun = beginTripleEdit(applied, path, memento, vertex, triple);
    if (begun != Success) {
        return begun;
    }
    DPoint const before = vertex->getLocation();
    SimplePathLocationTriple const to(triple.first->getLocation() + offset,
                                      triple.anchor->getLocation() + offset,
                                      triple.last->getLocation() + offset, triple.mode);
    if (!writeTriple(*path, triple, to, change)) {
        return EditFailed;
    }
    vertexBefore = before;
    applied = true;
    affectedPaths.push_back(path);
    return Success;
}

void MoveSelectedVerticesOperation::undoOperation() {
    restoreMemento(path, memento);
    applied = false;
}

int MoveSelectedVerticesOperation::RetreiveSegIndependentInfo(SegmentIndependentInformation*& info) {
    return retrieve<MoveSelVertsOpInformation>(info, [&](MoveSelVertsOpInformation& record) {
        record.vertexLocation = applied ? vertexBefore : locationOf(vertex);
        record.offset = offset;
    });
}

int MoveSelectedVerticesOperation::ApplySegIndependentInfo(SegmentIndependentInformation*& info) {
    auto const* record = applicableRecord<MoveSelVertsOpInformation>(info);
    if (record == nullptr || !retarget(*record, record->vertexLocation, memento, path, vertex)) {
        return 0;
    }
    offset = record->offset;
    return 1;
}
