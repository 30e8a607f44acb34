#pragma once

#include "simplepath/interfaces/P2DTrans.h"

#include <optional>
#include <string>
#include <string_view>

namespace sptool {

struct TransformResult {
    P2DTrans transform;
    std::string error; // empty on success: "at offset 7: expected '('"
};

// Reads an SVG transform list: matrix(a b c d e f), translate(x [y]), scale(x [y]), rotate(deg [cx cy]),
// skewX(deg), skewY(deg), separated by whitespace or commas. The functions apply right to left, as
// written in the attribute: "translate(10) scale(2)" scales first. An empty list is the identity.
TransformResult parseTransformList(std::string_view text);

// An upper bound of how much the transform stretches any distance (the Frobenius norm of its linear part).
double stretchBound(P2DTrans const& transform);

} // namespace sptool
