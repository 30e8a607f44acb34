#include "simplepath/edit/AbsorbSegmentTransform.h"

AbsorbSegmentTransform::AbsorbSegmentTransform(PHashablePointer<SimplePath> const& path, int segment,
                                               int target)
    : path(path), segment(segment), target(target) {}

AbsorbSegmentTransform::PathPosition AbsorbSegmentTransform::map(PathPosition const& pair) const {
    if (pair.first != path) {
        return pair;
    }
    std::int64_t const i = pair.second.getIndex();
    std::int64_t const k = segment;
    if (i == k || (i == k + 1 && pair.second.getParameter() == 0.0)) {
        return at(path, target, 0.0);
    }
    return pair;
}
