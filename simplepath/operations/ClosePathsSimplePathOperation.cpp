#include "simplepath/operations/ClosePathsSimplePathOperation.h"

#include "simplepath/operations/detail/OperationSupport.h"

using namespace operation_support;

ClosePathsSimplePathOperation::ClosePathsSimplePathOperation(
    std::list<PHashablePointer<SimplePath>> const& toClose)
    : paths(toClose) {}

ClosePathsSimplePathOperation::ClosePathsSimplePathOperation(ClosePathsSimplePathOperation const& other)
    : SimplePathUnrecordedOperation(other), paths(other.paths) {}

ClosePathsSimplePathOperation::~ClosePathsSimplePathOperation() {
    releaseMementos(mementos);
}

SimplePathOperation::Result
ClosePathsSimplePathOperation::executeOperation(std::list<PHashablePointer<SimplePath>>& affectedPaths,
                                                SimplePathChangeInstruction& change) {
    if (paths.empty() || !mementos.empty()) {
        return EditFailed;
    }
    for (PHashablePointer<SimplePath> const& path : paths) {
        if (!keepMemento(path, mementos)) {
            return MementoFailed;
        }
        if (path->setClosed(change) != SimplePath::Success) {
            return EditFailed;
        }
        affectedPaths.push_back(path);
    }
    return Success;
}

void ClosePathsSimplePathOperation::undoOperation() {
    restoreMementos(paths, mementos);
}
