#pragma once

#include "simplepath/foundation/PHandle.h"
#include "simplepath/interfaces/ArbTrans.h"
#include "simplepath/interfaces/DPoint.h"

// A shift of the plane by (dx, dy); its reverse shifts back. Non-finite offsets or points give
// non-finite results, never a trap.
class XYOffsetSimplePathTransform : public ArbTrans<DPoint> {
  public:
    XYOffsetSimplePathTransform(double dx, double dy) : dx_(dx), dy_(dy) {}
    XYOffsetSimplePathTransform(XYOffsetSimplePathTransform const&) = default;
    XYOffsetSimplePathTransform& operator=(XYOffsetSimplePathTransform const&) = default;
    ~XYOffsetSimplePathTransform() override = default;

    DPoint transform(DPoint const& p) const override { return DPoint(p.x + dx_, p.y + dy_); }
    DPoint reverseTransform(DPoint const& p) const override { return DPoint(p.x - dx_, p.y - dy_); }

  private:
    double dx_;
    double dy_;
};

extern template class PHandle<XYOffsetSimplePathTransform>;
