#include "simplepath/operations/CurvedSliceSimplePathOperation.h"

#include "simplepath/edit/SimplePathChangeInstruction.h"
#include "simplepath/edit/SimplePathRemap.h"
#include "simplepath/edit/SimplePathVertexOpTransforms.h"
#include "simplepath/operations/detail/OperationSupport.h"

using namespace operation_support;

CurvedSliceSimplePathOperation::CurvedSliceSimplePathOperation(std::list<PHashablePointer<SimplePath>> old,
                                                               std::list<PHashablePointer<SimplePath>> made)
    : replaced(std::move(old)), pieces(std::move(made)) {}

CurvedSliceSimplePathOperation::CurvedSliceSimplePathOperation(CurvedSliceSimplePathOperation const& other)
    : SimplePathUnrecordedOperation(other), replaced(other.replaced), pieces(other.pieces) {}

CurvedSliceSimplePathOperation::~CurvedSliceSimplePathOperation() {
    releaseMementos();
}

void CurvedSliceSimplePathOperation::releaseMementos() {
    for (SimplePathMemento* m : mementos) {
        delete m;
    }
    mementos.clear();
}

SimplePathOperation::Result
CurvedSliceSimplePathOperation::executeOperation(std::list<PHashablePointer<SimplePath>>& affectedPaths,
                                                 SimplePathChangeInstruction& change) {
    if (replaced.empty() || pieces.empty() || !mementos.empty()) {
        return EditFailed;
    }
    for (PHashablePointer<SimplePath> const& path : replaced) {
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
        change.insertRemoved(path);
        affectedPaths.push_back(path);
    }
    PHashablePointer<SimplePath> const& first = replaced.front();
    SimplePathRemap remap;
    for (PHashablePointer<SimplePath> const& piece : pieces) {
        change.insertAdded(piece);
        change.insertRefMap(first, piece);
        remap.insert(first, piece);
    }
    change.insertPositionTransform(SimplePathVertexOpTransforms::createSimplePathRefRemapTransform(remap));
    return Success;
}

void CurvedSliceSimplePathOperation::undoOperation() {
    auto memento = mementos.begin();
    for (auto path = replaced.begin(); path != replaced.end() && memento != mementos.end();
         ++path, ++memento) {
        if (*path != nullptr) {
            (void)(*path)->undo(*memento); // fails only without memory: the path stays as it is
        }
    }
    releaseMementos();
}
