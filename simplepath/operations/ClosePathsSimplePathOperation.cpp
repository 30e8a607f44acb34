#include "simplepath/operations/ClosePathsSimplePathOperation.h"

#include "simplepath/operations/detail/OperationSupport.h"

using namespace operation_support;

ClosePathsSimplePathOperation::ClosePathsSimplePathOperation(
    std::list<PHashablePointer<SimplePath>> const& toClose)
    : paths(toClose) {}

ClosePathsSimplePathOperation::ClosePathsSimplePathOperation(ClosePathsSimplePathOperation const& other)
    : SimplePathUnrecordedOperation(other), paths(other.paths) {}

ClosePathsSimplePathOperation::~ClosePathsSimplePathOperation() {
    releaseMementos();
}

void ClosePathsSimplePathOperation::releaseMementos() {
    for (SimplePathMemento* m : mementos) {
        delete m;
    }
    mementos.clear();
}

SimplePathOperation::Result
ClosePathsSimplePathOperation::executeOperation(std::list<PHashablePointer<SimplePath>>& affectedPaths,
                                                SimplePathChangeInstruction& change) {
    if (paths.empty() || !mementos.empty()) {
        return EditFailed;
    }
    for (PHashablePointer<SimplePath> const& path : paths) {
        SimplePathMemento* memento = nullptr;
        if (!takeMemento(path, memento)) {
            return MementoFailed;
        }
        try {
            mementos.push_back(memento);
        } catch (std::bad_alloc const&) {
            delete memento;
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
    auto memento = mementos.begin();
    for (auto path = paths.begin(); path != paths.end() && memento != mementos.end(); ++path, ++memento) {
        if (*path != nullptr) {
            (void)(*path)->undo(*memento); // fails only without memory: the path stays as it is
        }
    }
    releaseMementos();
}
