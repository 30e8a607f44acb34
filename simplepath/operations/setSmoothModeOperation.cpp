#include "simplepath/operations/setSmoothModeOperation.h"

#include <new>

int setSmoothModeOperation::ModeSmoOpInformation::getType() const {
    return 12;
}

setSmoothModeOperation::setSmoothModeOperation(PHashablePointer<SimplePath> path, SimplePathVertex* vertex)
    : SimplePathModeOperation(path, vertex) {}

SimplePath::Result setSmoothModeOperation::setMode(SimplePath& target, SimplePathVertex*& which,
                                                   SimplePathChangeInstruction& change) const {
    return target.setSmoothMode(which, change);
}

SimplePathModeOperation::ModeOpInformation* setSmoothModeOperation::newRecord() const {
    return new (std::nothrow) ModeSmoOpInformation();
}

int setSmoothModeOperation::tag() const {
    return 12;
}
