#pragma once

#include "simplepath/interfaces/DPoint.h"

#include <cstdint>

// Constrains a dragged point relative to a snap origin: to the origin's horizontal or vertical line, or
// to the nearest of the 24 directions in steps of 15 degrees. A plain value.
class SnapKit {
  public:
    enum SnapMode : std::int32_t {
        NoSnap = 0,
        AngleSnap = 1,
        HorizontalSnap = 2,
        VerticalSnap = 3,
    };

    // Radians per degree as stored by the angle snap. It is not pi/180 (it differs in the eleventh
    // digit), and it is kept so: directions at exactly half a step resolve as they always have.
    static constexpr double kRadiansPerDegree = 0.017453292522222223;
    // The angle steps and the half-width of the sector that snaps onto each.
    static constexpr double kAngleStep = 15.0;
    static constexpr double kHalfStep = 7.5;
    // How far the snapped direction is followed: the ray from the origin is a segment this long.
    static constexpr double kRayLength = 1e10;

    SnapKit() = default;
    SnapKit(DPoint const& origin, SnapMode mode) : mode_(mode), origin_(origin) {}

    // The constrained point. Horizontal and vertical snaps replace one coordinate by the origin's. The
    // angle snap projects p onto the ray from the origin in the nearest 15-degree direction (a point
    // behind the origin gives the origin); along the axes the result lies exactly on the origin's line.
    // Directions from 352.5 degrees up to a full turn are not snapped at all: that sector belongs to no
    // step, by long-standing behaviour. Any other mode returns p.
    DPoint dragging(DPoint const& p) const;

    SnapMode getSnapMode() const { return mode_; }
    DPoint const& getPO() const { return origin_; }
    void setPO(DPoint const& origin) { origin_ = origin; }
    // Active unless the mode is NoSnap.
    operator int() const { return mode_ != NoSnap ? 1 : 0; }

  private:
    DPoint angleSnap(DPoint const& p) const;

    SnapMode mode_ = NoSnap;
    DPoint origin_;
};
