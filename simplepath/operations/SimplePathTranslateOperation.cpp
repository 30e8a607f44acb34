#include "simplepath/operations/SimplePathTranslateOperation.h"

#include "simplepath/path/SimplePath.h"

SimplePathTranslateOperation::SimplePathTranslateOperation(PHashablePointer<SimplePath> path,
                                                           DVector const& by)
    : SimplePathWholePathOperation(path), offset(by) {}

bool SimplePathTranslateOperation::edit(SimplePath& target, SimplePathChangeInstruction&) {
    return target.translate(offset) == SimplePath::Success;
}
