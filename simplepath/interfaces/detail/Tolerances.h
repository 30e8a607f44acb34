#pragma once

#include <limits>

// The library's named tolerances. Each is written once, here, with the reason for its value; the
// public headers describe the same values in words where a caller needs them.
namespace simplepath_tolerance {

// How close a segment parameter must come to an end of [0, 1] to count as that end. Parameters come
// from a few divisions and sums of values in [0, 1], whose rounding stays near 1e-16; 1e-9 is far above
// that, and a billionth of a segment is far below any place a user can point at on it.
constexpr double kParameterSnap = 1e-9;

// A cut this close to a segment's start is a cut at the start itself: dividing the rest of the segment
// by a piece this short would blow the mapped parameters up beyond what the curve can resolve.
constexpr double kCutAtSegmentStart = 1e-6;

// Handles this close to their anchors (in drawing units) make a segment straight when a vertex is
// inserted into it: the insertion then places all three new vertices on the curve point instead of
// splitting handles that are only rounding noise.
constexpr double kRetractedHandle = 1e-7;

// Handles closer together than this (in drawing units) give no direction to line up along: the mode
// setters then take the direction from the neighbouring anchors instead.
constexpr double kCoincidentHandles = 1e-9;

// The rounding allowance of a value computed from control coordinates, as a factor of the largest
// magnitude involved: 64 ulps. Evaluating a cubic (de Casteljau or power basis) or the slope of its
// distance to a point rounds by a few ulps per operation, about a dozen operations deep, so 64 ulps keeps
// every computed curve point inside a bound widened by it, and a coefficient within it of zero has no
// trustworthy sign.
constexpr double kRoundingGuard = 64.0 * std::numeric_limits<double>::epsilon();

// The legacy curve family's one tolerance, for lengths, slopes and angles alike: a magnitude strictly
// below it counts as zero. Its hosts draw in units of a point or a pixel, where 1e-8 is far below
// anything visible and far above the rounding of coordinates of everyday drawing sizes.
constexpr double kLegacyFuzz = 1e-8;

} // namespace simplepath_tolerance
