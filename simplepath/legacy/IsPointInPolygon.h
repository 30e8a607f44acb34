#pragma once

#include "simplepath/interfaces/CRect.h"

// The even-odd test of an integer point against a closed integer polygon of count vertices (the last
// vertex joins the first). Returns 1 inside, 0 outside. A point on an edge or vertex counts as inside.
// When bounds is given, a point outside it (its edges belong to it) is rejected before any edge is
// looked at; pass the polygon's GetPolygonRect, or null to skip the shortcut. Fewer than 3 vertices or
// a null array enclose nothing. Exact: the orientation tests run in 128-bit integer arithmetic, so any
// 32-bit coordinates are safe.
int IsPointInPolygon(tagPOINT const* points, int count, tagPOINT const& point, tagRECT const* bounds);
