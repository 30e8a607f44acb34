#pragma once

#include "simplepath/interfaces/CArray.h"
#include "simplepath/interfaces/CRect.h"
#include "simplepath/interfaces/DPoint.h"
#include "simplepath/legacy/BPoint.h"
#include "simplepath/legacy/DRECT.h"

// Straight-line and point-array helpers of the legacy family. Every tolerance here is 1e-8: a magnitude
// strictly below it counts as zero.

// The foot of the perpendicular from (px, py) onto the infinite line through (x1, y1) and (x2, y2),
// from the line's normalised implicit form. Two line points less than 1e-8 apart give (x1, y1).
DPoint GetDistancePoint(double x1, double y1, double x2, double y2, double px, double py);

// Intersects the infinite line P1-P2 with the infinite line P3-P4, working in slopes relative to P2.
// Returns 1 and writes the point when found, else 0. Both outputs are zeroed first; when both lines are
// vertical the x output is left holding x3 - x2. Lines count as parallel when their slopes differ by
// less than 1e-8 (a slope test, not an angle test). Null outputs give 0 and write nothing.
int GetLinesIntersection(double x1, double y1, double x2, double y2, double x3, double y3, double x4,
                         double y4, double* outX, double* outY);

// 1 when (px, py) lies in the box spanned by the two points widened by 1e-8 on every side, else 0.
int IsPointInLineRange(double x1, double y1, double x2, double y2, double px, double py);

// The integer bounding rectangle of the points; (0, 0, 0, 0) for none (or a null array).
CRect GetPolygonRect(tagPOINT* points, int count);

// Bounds of a polyline's points; an empty array gives (0, 0, 0, 0). The DRECT forms fill left, top,
// right, bottom with minX, minY, maxX, maxY. The BPOINT form bounds the anchors only: handles are ignored.
void GetPolylineBounds(CArray<DPoint, DPoint> const& points, double& minX, double& minY, double& maxX,
                       double& maxY);
void GetPolylineBounds(CArray<DPoint, DPoint> const& points, DRECT& bounds);
void GetPolylineBounds(CArray<BPOINT, BPOINT> const& points, DRECT& bounds);
