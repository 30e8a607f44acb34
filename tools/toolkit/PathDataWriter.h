#pragma once

#include "toolkit/CubicChain.h"

#include <string>
#include <vector>

namespace sptool {

// How numbers are written: by default the shortest text that reads back as the same double, so path data
// written and read again gives bit-identical chains; with `decimals` >= 0, rounded to that many digits
// after the point, trailing zeros dropped.
//
// `readable` is for reports that people read: without `decimals`, numbers are rounded to six decimals
// (trailing zeros dropped), except that magnitudes of 1e15 and more keep the shortest exact form.
struct NumberFormat {
    int decimals = -1;
    bool readable = false;
};

// The decimals of a readable report when --decimals is not given.
constexpr int kReadableDecimals = 6;

// Appends one number; negative zero is written as 0. The value must be finite.
void appendNumber(std::string& out, double value, NumberFormat format = {});

// Compact SVG path data for the chains, one subpath each: "M x y", then "L x y" for straight segments and
// "C x1 y1 x2 y2 x y" for curved ones, and "Z" for closed chains, whose closing line is left to the Z.
// Numbers are separated by one space, or by nothing before a minus sign. Coordinates must be finite.
std::string writePathData(std::vector<CubicChain> const& chains, NumberFormat format = {});
std::string writePathData(CubicChain const& chain, NumberFormat format = {});

} // namespace sptool
