#include "simplepath/interaction/XYScaleSimplePathTransform.h"

#include "simplepath/interfaces/Tolerance.h"

DPoint XYScaleSimplePathTransform::reverseTransform(DPoint const& p) const {
    if (IS_ZERO(sx_, kDegenerateScale) || IS_ZERO(sy_, kDegenerateScale)) {
        return p;
    }
    return DPoint(p.x / sx_, p.y / sy_);
}

// The owning handle of a scale is compiled once, here.
template class PHandle<XYScaleSimplePathTransform>;
