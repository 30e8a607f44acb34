#include "simplepath/edit/ShiftPositionTransform.h"

ShiftPositionTransform::ShiftPositionTransform(PHashablePointer<SimplePath> const& source,
                                               PHashablePointer<SimplePath> const& destination, int offset)
    : source(source), destination(destination), offset(offset) {}

ShiftPositionTransform::PathPosition ShiftPositionTransform::map(PathPosition const& pair) const {
    if (pair.first != source) {
        return pair;
    }
    return at(destination, std::int64_t{pair.second.getIndex()} + offset, pair.second.getParameter());
}
