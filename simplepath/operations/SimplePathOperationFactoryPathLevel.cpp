// The factory members that make the path-level operations. They take no shell flag: these operations
// are never rebuilt from records.

#include <new>
#include <utility>

#include "simplepath/operations/ClosePathsSimplePathOperation.h"
#include "simplepath/operations/CurvedSliceSimplePathOperation.h"
#include "simplepath/operations/DeleteSimplePathOperation.h"
#include "simplepath/operations/SimplePathAffineTransformOperation.h"
#include "simplepath/operations/SimplePathArbitraryTransformOperation.h"
#include "simplepath/operations/SimplePathOperationFactory.h"
#include "simplepath/operations/SimplePathTranslateOperation.h"
#include "simplepath/operations/SliceSimplePathOperation.h"

namespace {

template <class Operation, class... Args> SimplePathOperation* makePathLevel(Args&&... args) {
    try {
        return new Operation(std::forward<Args>(args)...);
    } catch (std::bad_alloc const&) {
        return nullptr;
    }
}

} // namespace

SimplePathOperation* SimplePathOperationFactory::createSlicePathOperation(
    PHashablePointer<SimplePath> path, SimplePathPosition const& firstPosition,
    PHashablePointer<SimplePath> secondPath, SimplePathPosition const& secondPosition) {
    return makePathLevel<SliceSimplePathOperation>(path, firstPosition, secondPath, secondPosition);
}

SimplePathOperation*
SimplePathOperationFactory::createCurvedSlicePathOperation(std::list<PHashablePointer<SimplePath>> replaced,
                                                           std::list<PHashablePointer<SimplePath>> pieces) {
    return makePathLevel<CurvedSliceSimplePathOperation>(std::move(replaced), std::move(pieces));
}

SimplePathOperation*
SimplePathOperationFactory::createClosePathsOperation(std::list<PHashablePointer<SimplePath>>& paths) {
    return makePathLevel<ClosePathsSimplePathOperation>(paths);
}

SimplePathOperation* SimplePathOperationFactory::createDeleteOperation(PHashablePointer<SimplePath> path) {
    if (path == nullptr) {
        return nullptr;
    }
    return makePathLevel<DeleteSimplePathOperation>(path);
}

SimplePathOperation* SimplePathOperationFactory::createTransformOperation(PHashablePointer<SimplePath> path,
                                                                          P2DTrans const& transform,
                                                                          DPoint const& reference) {
    return makePathLevel<SimplePathAffineTransformOperation>(path, transform, reference);
}

SimplePathOperation* SimplePathOperationFactory::createTransformOperation(PHashablePointer<SimplePath> path,
                                                                          ArbTrans<DPoint>* transform) {
    return makePathLevel<SimplePathArbitraryTransformOperation>(path, transform);
}

SimplePathOperation* SimplePathOperationFactory::createTranslateOperation(PHashablePointer<SimplePath> path,
                                                                          DVector const& offset) {
    return makePathLevel<SimplePathTranslateOperation>(path, offset);
}
