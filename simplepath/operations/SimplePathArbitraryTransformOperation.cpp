#include "simplepath/operations/SimplePathArbitraryTransformOperation.h"

#include "simplepath/path/SimplePath.h"

SimplePathArbitraryTransformOperation::SimplePathArbitraryTransformOperation(
    PHashablePointer<SimplePath> path, ArbTrans<DPoint>* mapping)
    : SimplePathWholePathOperation(path), transform(mapping) {}

bool SimplePathArbitraryTransformOperation::edit(SimplePath& target, SimplePathChangeInstruction&) {
    return transform != nullptr && target.transform(*transform) == SimplePath::Success;
}
