#pragma once

#include <limits>

// The library's named tolerances. Each is written once, here, with the reason for its value; the
// public headers describe the same values in words where a caller needs them.
namespace simplepath_tolerance {

// How close a segment parameter must come to an end of [0, 1] to count as that end. Parameters come
// from divisions and sums of a few operations in [0, 1], whose rounding stays near 1e-16; 1e-9 is far
// above that, yet far below any parameter step a caller means (a millionth of a segment is already
// below a device pixel on any drawing the library handles).
constexpr double kParameterSnap = 1e-9;

// A cut this close to a segment's start is a cut at the start itself: dividing the rest of the segment
// by a piece this short would blow the mapped parameters up beyond what the curve can resolve.
constexpr double kCutAtSegmentStart = 1e-6;

// Handles this close to their anchors (in drawing units) make a segment straight when a vertex is
// inserted into it: the insertion then places all three new vertices on the curve point instead of
// splitting handles that are only rounding noise.
constexpr double kRetractedHandle = 1e-7;

// Two handle offsets closer than this (in drawing units) point nowhere distinct: the mode setters then
// take the direction from the neighbouring anchors instead.
constexpr double kCoincidentHandles = 1e-9;

// The widening of a bound computed from control coordinates: 64 ulps of the largest magnitude. The de
// Casteljau and power-basis evaluations of a cubic round with an error of a few ulps per operation,
// about a dozen operations deep, so 64 ulps keeps every computed curve point inside the widened bound.
constexpr double kRoundingGuard = 64.0 * std::numeric_limits<double>::epsilon();

// The legacy curve family's one tolerance, for lengths, slopes and angles alike: a magnitude strictly
// below it counts as zero. Its hosts draw in units of a point or a pixel, where 1e-8 is far below
// anything visible and far above the rounding of the coordinates they use (below 1e5 in magnitude).
constexpr double kLegacyFuzz = 1e-8;

} // namespace simplepath_tolerance
