#include "simplepath/operations/SimplePathAffineTransformOperation.h"

#include "simplepath/path/SimplePath.h"

SimplePathAffineTransformOperation::SimplePathAffineTransformOperation(PHashablePointer<SimplePath> path,
                                                                       P2DTrans const& m,
                                                                       DPoint const& centre)
    : SimplePathWholePathOperation(path), transform(m), reference(centre) {}

bool SimplePathAffineTransformOperation::edit(SimplePath& target, SimplePathChangeInstruction&) {
    return target.transform(transform, reference) == SimplePath::Success;
}
