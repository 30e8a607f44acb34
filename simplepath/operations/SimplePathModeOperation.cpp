#include "simplepath/operations/SimplePathModeOperation.h"

#include "simplepath/operations/detail/OperationSupport.h"

using namespace operation_support;

SimplePathModeOperation::SimplePathModeOperation(PHashablePointer<SimplePath> editedPath,
                                                 SimplePathVertex* editedVertex)
    : path(editedPath), vertex(editedVertex) {}

// A copy names the same vertex but holds no memento: it starts un-executed.
SimplePathModeOperation::SimplePathModeOperation(SimplePathModeOperation const& other)
    : SimplePathOperation(other), path(other.path), vertex(other.vertex) {}

SimplePathModeOperation::~SimplePathModeOperation() {
    delete memento;
}

SimplePathOperation::Result
SimplePathModeOperation::executeOperation(std::list<PHashablePointer<SimplePath>>& affectedPaths,
                                          SimplePathChangeInstruction& change) {
    Result const begun = beginEdit(applied, path, memento);
    if (begun != Success) {
        return begun;
    }
    SimplePathVertex* which = vertex;
    DPoint const before = locationOf(vertex);
    if (vertex == nullptr || setMode(*path, which, change) != SimplePath::Success) {
        return EditFailed;
    }
    vertexBefore = before;
    applied = true;
    affectedPaths.push_back(path);
    return Success;
}

void SimplePathModeOperation::undoOperation() {
    restoreMemento(path, memento);
    applied = false;
}

int SimplePathModeOperation::RetreiveSegIndependentInfo(SegmentIndependentInformation*& info) {
    if (info != nullptr && info->getType() != tag()) {
        return 0;
    }
    ModeOpInformation* record = nullptr;
    int result = 1;
    if (info == nullptr) {
        record = newRecord();
        if (record == nullptr) {
            return 0;
        }
        info = record;
        result = 2;
    } else {
        record = dynamic_cast<ModeOpInformation*>(info);
        if (record == nullptr) {
            return 0;
        }
    }
    record->vertexLocation = applied ? vertexBefore : locationOf(vertex);
    return result;
}

int SimplePathModeOperation::ApplySegIndependentInfo(SegmentIndependentInformation*& info) {
    if (info == nullptr || info->pathSeg == nullptr || info->getType() != tag()) {
        return 0;
    }
    auto const* record = dynamic_cast<ModeOpInformation const*>(info);
    return record != nullptr && retarget(*record, record->vertexLocation, memento, path, vertex) ? 1 : 0;
}
