#pragma once

#include "toolkit/CubicChain.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace sptool::testing {

// The largest distance between corresponding points of two chains sampled at the same parameters, or
// infinity when their shapes differ (segment counts, closed flags).
inline double sampledDistance(CubicChain const& a, CubicChain const& b, int samplesPerSegment = 32) {
    if (a.segments.size() != b.segments.size() || a.closed != b.closed) {
        return std::numeric_limits<double>::infinity();
    }
    double worst = distance(a.start, b.start);
    for (std::size_t i = 0; i < a.segments.size(); ++i) {
        for (int k = 0; k <= samplesPerSegment; ++k) {
            double const t = static_cast<double>(k) / samplesPerSegment;
            worst = std::max(worst, distance(cubicPoint(segmentStart(a, i), a.segments[i], t),
                                             cubicPoint(segmentStart(b, i), b.segments[i], t)));
        }
    }
    return worst;
}

inline double sampledDistance(std::vector<CubicChain> const& a, std::vector<CubicChain> const& b) {
    if (a.size() != b.size()) {
        return std::numeric_limits<double>::infinity();
    }
    double worst = 0.0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        worst = std::max(worst, sampledDistance(a[i], b[i]));
    }
    return worst;
}

} // namespace sptool::testing
