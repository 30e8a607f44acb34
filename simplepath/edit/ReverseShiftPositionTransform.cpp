#include "simplepath/edit/ReverseShiftPositionTransform.h"

ReverseShiftPositionTransform::ReverseShiftPositionTransform(PHashablePointer<SimplePath> const& source,
                                                             int sourceLength,
                                                             PHashablePointer<SimplePath> const& destination,
                                                             int offset)
    : source(source), sourceLength(sourceLength), destination(destination), offset(offset) {}

ReverseShiftPositionTransform::PathPosition
ReverseShiftPositionTransform::map(PathPosition const& pair) const {
    if (pair.first != source) {
        return pair;
    }
    std::int64_t const i = pair.second.getIndex();
    double const t = pair.second.getParameter();
    std::int64_t const mirror = std::int64_t{offset} + sourceLength - i;
    if (t == 0.0) {
        return at(destination, mirror - 1, 0.0);
    }
    return at(destination, mirror - 2, 1.0 - t);
}
