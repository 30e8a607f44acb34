#include "simplepath/edit/SplitSegmentTransform.h"

#include "simplepath/interfaces/Tolerance.h"
#include "simplepath/interfaces/detail/Tolerances.h"

SplitSegmentTransform::SplitSegmentTransform(PHashablePointer<SimplePath> const& path, int segment,
                                             double parameter)
    : path(path), segment(segment), parameter(parameter) {}

SplitSegmentTransform::PathPosition SplitSegmentTransform::map(PathPosition const& pair) const {
    if (pair.first != path) {
        return pair;
    }
    int const i = pair.second.getIndex();
    double const t = pair.second.getParameter();
    double const s = parameter;
    if (i > segment) {
        return at(path, std::int64_t{i} + 1, t);
    }
    if (i != segment) {
        return pair;
    }
    if (t == 0.0) {
        return at(path, i, 0.0);
    }
    if (s < simplepath_tolerance::kCutAtSegmentStart) {
        return at(path, std::int64_t{i} + 1, 0.0);
    }
    if (t >= s) {
        if (IS_ZERO(1.0 - s, simplepath_tolerance::kParameterSnap)) {
            return pair;
        }
        return at(path, std::int64_t{i} + 1, (t - s) / (1.0 - s));
    }
    if (t < s) {
        return at(path, i, t / s);
    }
    return pair;
}
