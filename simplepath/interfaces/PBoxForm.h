#pragma once

#include "simplepath/interfaces/DPoint.h"
#include "simplepath/interfaces/PBezier.h"
#include "simplepath/interfaces/PBoxPoint.h"

// An envelope: maps an axis-aligned source box onto a four-sided region by the bilinearly blended Coons
// patch of the region's sides. With u, v the point's relative position in the box (outside [0, 1] for points
// outside it), S(u, v) = (1-v) B(u) + v T(u) + (1-u) L(v) + u R(v) minus the bilinear blend of the corners,
// where B runs c00 -> c10, T runs c01 -> c11, L runs c00 -> c01 and R runs c10 -> c11. With straight sides
// the patch is the bilinear map of the corners.
//
// A box of zero width (or height) maps every x (or y) to u = 0 (v = 0); the inverse then gives min.x (min.y).
class PBoxForm {
  public:
    // The unit box onto itself.
    PBoxForm();
    // Straight sides between the four corners.
    PBoxForm(DPoint const& min, DPoint const& max, DPoint const& c00, DPoint const& c10, DPoint const& c01,
             DPoint const& c11);
    // Curved sides; the corners are taken from bottom's and top's ends (left and right must meet them).
    PBoxForm(DPoint const& min, DPoint const& max, PBezier const& bottom, PBezier const& top,
             PBezier const& left, PBezier const& right);

    // Box -> envelope, in place.
    void xform(PBoxPoint& p) const;
    // Envelope -> box, in place: Newton's method on (u, v), see the definition.
    void xforminv(PBoxPoint& p) const;
    DPoint xform(DPoint const& p) const;
    DPoint xforminv(DPoint const& p) const;

  private:
    // The patch at (u, v), with its partial derivatives when asked.
    DPoint patch(double u, double v, DVector* du, DVector* dv) const;
    DPoint bilinear(double u, double v, DVector* du, DVector* dv) const;
    template <class Map> void newton(Map const& map, DPoint const& target, double& u, double& v) const;

    DPoint min_;
    DPoint max_;
    DPoint c00_, c10_, c01_, c11_;
    PBezier bottom_, top_, left_, right_;
    bool curved_ = false;
};
