#include "simplepath/operations/SimplePathWholePathOperation.h"

#include "simplepath/operations/detail/OperationSupport.h"

using namespace operation_support;

SimplePathWholePathOperation::SimplePathWholePathOperation(PHashablePointer<SimplePath> edited)
    : path(edited) {}

SimplePathWholePathOperation::SimplePathWholePathOperation(SimplePathWholePathOperation const& other)
    : SimplePathUnrecordedOperation(other), path(other.path) {}

SimplePathWholePathOperation::~SimplePathWholePathOperation() {
    delete memento;
    deleteAll(unlinked);
}

SimplePathOperation::Result
SimplePathWholePathOperation::executeOperation(std::list<PHashablePointer<SimplePath>>& affectedPaths,
                                               SimplePathChangeInstruction& change) {
    // A redo without the undo in between would take a second memento over the first: refused.
    if (memento != nullptr) {
        return EditFailed;
    }
    if (!takeMemento(path, memento)) {
        return MementoFailed;
    }
    if (!edit(*path, change)) {
        return EditFailed;
    }
    affectedPaths.push_back(path);
    return Success;
}

void SimplePathWholePathOperation::undoOperation() {
    dropNamed(unlinked, memento);
    restoreMemento(path, memento);
}
