#pragma once

#include "simplepath/interfaces/DPoint.h"
#include "simplepath/legacy/BPoint.h"

// One anchor of a legacy curve chain with its before- and after-handle, and the edits the family makes
// to a single anchor. It is a BPOINT, so arrays and segments take it wherever they take a BPOINT.
class CBezierPoint : public BPOINT {
  public:
    CBezierPoint() = default;
    CBezierPoint(BPOINT const& point) : BPOINT(point) {}

    // 1 when both handles are at least 0.1 from the anchor and the anchor lies within 0.1 of the line
    // through the two handles (the curve turns through the anchor without a corner); else 0.
    int IsSmooth() const;

    // Subtract (dx, dy) from all three points: the point moves by minus the offset given. Every caller
    // in the family passes the offset the other way round, so the sign stays as it is.
    void Move(double dx, double dy);
    void Move(DPoint d);

    // Turns all three points about (cx, cy) by angle radians, counter-clockwise with y up:
    // (x, y) -> (x cos a - y sin a, x sin a + y cos a) relative to the centre.
    void Rotate(double cx, double cy, double angle);

    // Makes the anchor smooth from its neighbouring anchors, as a Catmull-Rom spline does: both handles
    // are laid along the direction from previous to next, the before-handle |anchor - previous| / 3 back
    // from the anchor, the after-handle |next - anchor| / 3 ahead of it. When previous and next coincide
    // there is no direction and the point is left as it was.
    void Smooth(DPoint previous, DPoint next);

    // Scales all three points about origin by sx horizontally and sy vertically.
    void Stretch(DPoint origin, double sx, double sy);
};
