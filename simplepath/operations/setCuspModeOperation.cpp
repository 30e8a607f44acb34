#include "simplepath/operations/setCuspModeOperation.h"

#include <new>

int setCuspModeOperation::ModeCOpInformation::getType() const {
    return 11;
}

setCuspModeOperation::setCuspModeOperation(PHashablePointer<SimplePath> path, SimplePathVertex* vertex)
    : SimplePathModeOperation(path, vertex) {}

SimplePath::Result setCuspModeOperation::setMode(SimplePath& target, SimplePathVertex*& which,
                                                 SimplePathChangeInstruction& change) const {
    return target.setCuspMode(which, change);
}

SimplePathModeOperation::ModeOpInformation* setCuspModeOperation::newRecord() const {
    return new (std::nothrow) ModeCOpInformation();
}

int setCuspModeOperation::tag() const {
    return 11;
}
