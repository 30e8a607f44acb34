#include "simplepath/operations/setStraightModeOperation.h"

#include <new>

int setStraightModeOperation::ModeStrOpInformation::getType() const {
    return 14;
}

setStraightModeOperation::setStraightModeOperation(PHashablePointer<SimplePath> path,
                                                   SimplePathVertex* vertex)
    : SimplePathModeOperation(path, vertex) {}

SimplePath::Result setStraightModeOperation::setMode(SimplePath& target, SimplePathVertex*& which,
                                                     SimplePathChangeInstruction& change) const {
    return target.setStraightMode(which, change);
}

SimplePathModeOperation::ModeOpInformation* setStraightModeOperation::newRecord() const {
    return new (std::nothrow) ModeStrOpInformation();
}

int setStraightModeOperation::tag() const {
    return 14;
}
