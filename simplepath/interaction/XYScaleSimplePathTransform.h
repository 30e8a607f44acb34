#pragma once

#include "simplepath/foundation/PHandle.h"
#include "simplepath/interfaces/ArbTrans.h"
#include "simplepath/interfaces/DPoint.h"

// A scale of each axis about the origin. The reverse divides by the factors, unless either factor is
// zero within kDegenerateScale: a scale that flattens the plane onto a line cannot be undone, and then
// the reverse leaves every point where it is, deliberately even along the axis that could be undone,
// so that a flattened shape is never stretched along one axis only.
class XYScaleSimplePathTransform : public ArbTrans<DPoint> {
  public:
    // A factor whose magnitude is at most this counts as zero for the reverse mapping.
    static constexpr double kDegenerateScale = 1e-9;

    XYScaleSimplePathTransform(double sx, double sy) : sx_(sx), sy_(sy) {}
    XYScaleSimplePathTransform(XYScaleSimplePathTransform const&) = default;
    XYScaleSimplePathTransform& operator=(XYScaleSimplePathTransform const&) = default;
    ~XYScaleSimplePathTransform() override = default;

    DPoint transform(DPoint const& p) const override { return DPoint(p.x * sx_, p.y * sy_); }
    DPoint reverseTransform(DPoint const& p) const override;

  private:
    double sx_;
    double sy_;
};

extern template class PHandle<XYScaleSimplePathTransform>;
