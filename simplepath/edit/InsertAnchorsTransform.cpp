#include "simplepath/edit/InsertAnchorsTransform.h"

InsertAnchorsTransform::InsertAnchorsTransform(PHashablePointer<SimplePath> const& path, int segment)
    : path(path), segment(segment) {}

InsertAnchorsTransform::PathPosition InsertAnchorsTransform::map(PathPosition const& pair) const {
    if (pair.first != path) {
        return pair;
    }
    int const i = pair.second.getIndex();
    double const t = pair.second.getParameter();
    if ((i == segment && t != 0.0) || i > segment) {
        return at(path, std::int64_t{i} + 1, t);
    }
    return pair;
}
