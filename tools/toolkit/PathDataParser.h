#pragma once

#include "toolkit/CubicChain.h"
#include "toolkit/EllipticalArc.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sptool {

// Where SVG path data stopped making sense: the byte offset of the offending character (the length of the
// data when it ended too early), what the grammar expected there and what it found instead.
struct PathDataError {
    std::size_t offset = 0;
    std::string expected;
    std::string found;
    std::string problem; // set instead of the other two when well-formed data cannot be used

    // "at offset 12: expected a number, found 'x'", or "at offset 12: <problem>"
    std::string message() const;
};

struct PathDataResult {
    std::vector<CubicChain> chains;
    std::optional<PathDataError> error;

    bool ok() const { return !error.has_value(); }
};

// Reads the `d` attribute of an SVG path: every command in absolute and relative form (M L H V C S Q T A Z),
// implicit repetition of a command by further argument groups (after a moveto, lineto), and the SVG
// number grammar ("1.5.5" is two numbers, "-1-2" too, "1e-3", flags written without separators).
//
// Each subpath becomes one chain of cubics: lines get their controls on their ends, quadratics are raised
// to the cubic that draws the same curve (controls at 2/3 of the way to the quadratic control, which is
// exact), arcs are converted within `arcTolerance` (see appendArcCubics). Closing a subpath whose end is
// not its start adds the closing line. A subpath without segments ("M1 1" alone, "M1 1Z") is dropped.
// A number too small for a double reads as 0; one too large, or relative coordinates that add up beyond
// the range of doubles, are an error naming the command where it happened.
// Empty or blank data gives no chains and no error.
//
// On malformed data the result carries the error and the chains completed before it.
PathDataResult parsePathData(std::string_view data, double arcTolerance = kArcTolerance);

// The same, handing each chain to `sink` as soon as its subpath ends instead of gathering them, so that
// a caller can deal with a million subpaths one at a time. Returns the error, if any, after the chains
// completed before it have been handed over.
using ChainSink = std::function<void(CubicChain&&)>;
std::optional<PathDataError> parsePathData(std::string_view data, ChainSink const& sink,
                                           double arcTolerance = kArcTolerance);

// The cubic segment that draws the quadratic from p0 through control q to p2, exactly.
CubicSegment raiseQuadratic(DPoint const& p0, DPoint const& q, DPoint const& p2);

} // namespace sptool
