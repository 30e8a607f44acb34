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
    releaseMementos(mementos);
}

SimplePathOperation::Result
CurvedSliceSimplePathOperation::executeOperation(std::list<PHashablePointer<SimplePath>>& affectedPaths,
                                                 SimplePathChangeInstruction& change) {
    if (replaced.empty() || pieces.empty() || !mementos.empty()) {
        return EditFailed;
    }
    for (PHashablePointer<SimplePath> const& path : replaced) {
        if (!keepMemento(path, mementos)) {
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
    restoreMementos(replaced, mementos);
}
