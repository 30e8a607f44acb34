#include "simplepath/operations/ChangeSimplePathVertexOperation.h"

#include "simplepath/operations/detail/OperationSupport.h"

using namespace operation_support;

int ChangeSimplePathVertexOperation::ChangeVOpInformation::getType() const {
    return 6;
}

ChangeSimplePathVertexOperation::ChangeSimplePathVertexOperation(PHashablePointer<SimplePath> editedPath,
                                                                 SimplePathVertexTriple const& asItIs,
                                                                 SimplePathLocationTriple const& asItShallBe)
    : path(editedPath), current(asItIs), target(asItShallBe) {}

ChangeSimplePathVertexOperation::ChangeSimplePathVertexOperation(ChangeSimplePathVertexOperation const& other)
    : SimplePathOperation(other), path(other.path), current(other.current), target(other.target) {}

ChangeSimplePathVertexOperation::~ChangeSimplePathVertexOperation() {
    delete memento;
}

SimplePathOperation::Result
ChangeSimplePathVertexOperation::executeOperation(std::list<PHashablePointer<SimplePath>>& affectedPaths,
                                                  SimplePathChangeInstruction& change) {
    Result const begun = beginEdit(applied, path, memento);
    if (begun != Success) {
        return begun;
    }
    if (current.anchor == nullptr) {
        return EditFailed;
    }
    DPoint const before = current.anchor->getLocation();
    if (!writeTriple(*path, current, target, change)) {
        return EditFailed;
    }
    anchorBefore = before;
    applied = true;
    affectedPaths.push_back(path);
    return Success;
}

void ChangeSimplePathVertexOperation::undoOperation() {
    restoreMemento(path, memento);
    applied = false;
}

int ChangeSimplePathVertexOperation::RetreiveSegIndependentInfo(SegmentIndependentInformation*& info) {
    return retrieve<ChangeVOpInformation>(info, [&](ChangeVOpInformation& record) {
        record.vertexLocation = applied ? anchorBefore : locationOf(current.anchor);
        record.target = target;
    });
}

int ChangeSimplePathVertexOperation::ApplySegIndependentInfo(SegmentIndependentInformation*& info) {
    auto const* record = applicableRecord<ChangeVOpInformation>(info);
    PHashablePointer<SimplePath> foundPath;
    SimplePathVertex* foundVertex = nullptr;
    SimplePathVertexTriple triple;
    int index = -1;
    if (memento != nullptr || record == nullptr ||
        !pick(*record, record->vertexLocation, foundPath, foundVertex) || foundVertex == nullptr ||
        foundPath->getVertexInfo(foundVertex, triple, index) != SimplePath::Success) {
        return 0;
    }
    path = foundPath;
    current = triple;
    target = record->target;
    return 1;
}
