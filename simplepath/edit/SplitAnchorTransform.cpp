#include "simplepath/edit/SplitAnchorTransform.h"

#include "simplepath/interfaces/Tolerance.h"
#include "simplepath/interfaces/detail/Tolerances.h"

SplitAnchorTransform::SplitAnchorTransform(PHashablePointer<SimplePath> const& path, int anchor,
                                           PHashablePointer<SimplePath> const& firstPath,
                                           PHashablePointer<SimplePath> const& secondPath)
    : path(path), anchor(anchor), firstPath(firstPath), secondPath(secondPath) {}

SplitAnchorTransform::PathPosition SplitAnchorTransform::map(PathPosition const& pair) const {
    if (pair.first != path) {
        return pair;
    }
    int const i = pair.second.getIndex();
    double const t = pair.second.getParameter();
    bool const atCutAnchor = i == anchor && IS_EQUAL(t, 0.0, simplepath_tolerance::kParameterSnap);
    if (i >= anchor && !atCutAnchor) {
        return at(secondPath, std::int64_t{i} - anchor, t);
    }
    return PathPosition(firstPath, pair.second);
}
