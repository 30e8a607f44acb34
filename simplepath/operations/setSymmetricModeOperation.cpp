#include "simplepath/operations/setSymmetricModeOperation.h"

#include <new>

int setSymmetricModeOperation::ModeSymOpInformation::getType() const {
    return 13;
}

setSymmetricModeOperation::setSymmetricModeOperation(PHashablePointer<SimplePath> path,
                                                     SimplePathVertex* vertex)
    : SimplePathModeOperation(path, vertex) {}

SimplePath::Result setSymmetricModeOperation::setMode(SimplePath& target, SimplePathVertex*& which,
                                                      SimplePathChangeInstruction& change) const {
    return target.setSymmetricMode(which, change);
}

SimplePathModeOperation::ModeOpInformation* setSymmetricModeOperation::newRecord() const {
    return new (std::nothrow) ModeSymOpInformation();
}

int setSymmetricModeOperation::tag() const {
    return 13;
}
