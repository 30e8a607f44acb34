#include "toolkit/CubicChain.h"

namespace sptool {

DPoint cubicPoint(DPoint const& p0, CubicSegment const& segment, double t) {
    double const u = 1.0 - t;
    double const b0 = u * u * u;
    double const b1 = 3.0 * u * u * t;
    double const b2 = 3.0 * u * t * t;
    double const b3 = t * t * t;
    return {b0 * p0.x + b1 * segment[0].x + b2 * segment[1].x + b3 * segment[2].x,
            b0 * p0.y + b1 * segment[0].y + b2 * segment[1].y + b3 * segment[2].y};
}

} // namespace sptool
