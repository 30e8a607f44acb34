#include "simplepath/edit/CombineAdjacentSegmentsTransform.h"

CombineAdjacentSegmentsTransform::CombineAdjacentSegmentsTransform(PHashablePointer<SimplePath> const& path,
                                                                   int segment, double parameter)
    : path(path), segment(segment), parameter(parameter) {}

CombineAdjacentSegmentsTransform::PathPosition
CombineAdjacentSegmentsTransform::map(PathPosition const& pair) const {
    if (pair.first != path) {
        return pair;
    }
    std::int64_t const i = pair.second.getIndex();
    std::int64_t const k = segment;
    double const t = pair.second.getParameter();
    double const s = parameter;
    if (i == k - 1) {
        return at(path, k - 1, t * s);
    }
    if (i == k) {
        return at(path, k - 1, s + t * (1.0 - s));
    }
    if (i > k) {
        return at(path, i - 1, t);
    }
    return pair;
}
