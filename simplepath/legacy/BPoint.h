#pragma once

#include "simplepath/interfaces/CArray.h"
#include "simplepath/interfaces/DPoint.h"

// One anchor of a legacy curve chain with its two handles: the handle the curve arrives along, the
// anchor, and the handle it leaves along, in that order. A chain of these is measured and flattened
// segment by segment (segment i runs from entry i's anchor along its after-handle to entry i + 1).
struct BPOINT {
    DPoint before;
    DPoint anchor;
    DPoint after;
};

// The working record of the recursive flattening: one cubic as eight doubles (x, y of each control
// point), the flattening tolerance, and the array the flattened points are appended to (not owned).
struct BEZIER {
    double x0 = 0.0;
    double y0 = 0.0;
    double x1 = 0.0;
    double y1 = 0.0;
    double x2 = 0.0;
    double y2 = 0.0;
    double x3 = 0.0;
    double y3 = 0.0;
    double tolerance = 0.0;
    CArray<DPoint, DPoint>* out = nullptr;
};
