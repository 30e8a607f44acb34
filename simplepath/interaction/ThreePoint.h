#pragma once

#include "simplepath/interfaces/DPoint.h"

// One triple's locations as the multiple pick context draws them: incoming handle, anchor, outgoing
// handle, and whether the triple stays where it is (fixed) or moves with the drag.
struct ThreePoint {
    DPoint before;
    DPoint anchor;
    DPoint after;
    int fixed = 0;

    ThreePoint() = default;
    ThreePoint(DPoint const& beforeAt, DPoint const& anchorAt, DPoint const& afterAt, int isFixed)
        : before(beforeAt), anchor(anchorAt), after(afterAt), fixed(isFixed) {}

    bool operator==(ThreePoint const& other) const;
    bool operator!=(ThreePoint const& other) const { return !(*this == other); }
    // Lexicographic: incoming handle, anchor, outgoing handle (each x, then y), then fixed.
    bool operator<(ThreePoint const& other) const;
    bool operator>(ThreePoint const& other) const { return other < *this; }
};
