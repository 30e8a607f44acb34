#include "simplepath/edit/RotateTransform.h"

RotateTransform::RotateTransform(PHashablePointer<SimplePath> const& path, int shift, int count)
    : path(path), shift(shift), count(count) {}

RotateTransform::PathPosition RotateTransform::map(PathPosition const& pair) const {
    if (pair.first != path || count == 0) {
        return pair;
    }
    // 64-bit operands: i + shift cannot overflow, and neither can INT_MIN % -1.
    std::int64_t const n = count;
    std::int64_t const rotated = ((pair.second.getIndex() + std::int64_t{shift}) % n + n) % n;
    return at(path, rotated, pair.second.getParameter());
}
