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
    if (applied) {
        return EditFailed;
    }
    if (!takeMemento(path, memento)) {
        return MementoFailed;
    }
    SimplePathVertex* first = nullptr;
    SimplePathVertex* anchor = nullptr;
    SimplePathVertex* last = nullptr;
    SimplePathVertexTriple::VertexTripleMode mode = SimplePathVertexTriple::Cusp;
    if (vertex == nullptr || path->getVertexInfo(vertex, first, anchor, last, mode) != SimplePath::Success) {
        return EditFailed;
    }
    DPoint const firstTo = first->getLocation() + offset;
    DPoint const anchorTo = anchor->getLocation() + offset;
    DPoint const lastTo = last->getLocation() + offset;
    if (!isFinite(firstTo) || !isFinite(anchorTo) || !isFinite(lastTo)) {
        return EditFailed;
    }
    DPoint const before = vertex->getLocation();
    if (path->changeTriple(first, firstTo, anchor, anchorTo, last, lastTo, mode, change) !=
        SimplePath::Success) {
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
    PHashablePointer<SimplePath> foundPath;
    SimplePathVertex* foundVertex = nullptr;
    if (memento != nullptr || record == nullptr ||
        !pick(*record, record->vertexLocation, foundPath, foundVertex) || foundVertex == nullptr) {
        return 0;
    }
    path = foundPath;
    vertex = foundVertex;
    offset = record->offset;
    return 1;
}
