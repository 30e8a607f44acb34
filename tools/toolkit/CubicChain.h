#pragma once

#include "simplepath/interfaces/DPoint.h"

#include <array>
#include <vector>

namespace sptool {

// One cubic segment after the current point: the two control points and the end point.
using CubicSegment = std::array<DPoint, 3>;

// One subpath as the tool reads and writes it: a start point and the cubic segments that follow it, each
// beginning where the previous one ended. A straight segment has its controls on its ends (first control
// equal to the segment's start, second equal to its end). A closed chain always ends on its start point:
// when the drawing closed the subpath with a gap, the closing line is stored as the last segment.
struct CubicChain {
    DPoint start;
    std::vector<CubicSegment> segments;
    bool closed = false;
};

// The point at parameter t of the cubic (p0, c1, c2, p3), by the Bernstein form.
DPoint cubicPoint(DPoint const& p0, CubicSegment const& segment, double t);

// The start point of segment i of a chain.
inline DPoint segmentStart(CubicChain const& chain, std::size_t i) {
    return i == 0 ? chain.start : chain.segments[i - 1][2];
}

// True when the segment's controls lie on its ends, so it draws a straight line.
inline bool isStraight(DPoint const& p0, CubicSegment const& segment) {
    return segment[0] == p0 && segment[1] == segment[2];
}

} // namespace sptool
