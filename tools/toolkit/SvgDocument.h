#pragma once

#include "toolkit/CubicChain.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace sptool {

// The canvas of an SVG document, kept so that output lands in the same coordinate frame.
struct SvgFrame {
    bool hasViewBox = false;
    std::array<double, 4> viewBox{}; // min x, min y, width, height
    std::string width;               // as written, units included; empty when absent
    std::string height;
};

// The outlines of a document, one chain per subpath, in document order, in the coordinates of the root.
struct SvgDocument {
    SvgFrame frame;
    std::vector<CubicChain> chains;
};

struct SvgReadResult {
    SvgDocument document;
    std::string error; // one line, empty on success

    bool ok() const { return error.empty(); }
};

// Reads the outlines of an SVG document with an XML parser: the `d` of every <path>, and the basic shapes
// (rect, circle, ellipse, line, polyline, polygon) as the path data they stand for, at any depth of
// groups. The `transform` attributes of the element and of all its ancestors are applied (affine maps
// carry cubics to cubics exactly; arcs are converted with a tolerance divided by the transform's stretch
// so they stay within kArcTolerance after it). Content that is not drawn where it stands (defs, symbols,
// markers, patterns, clip paths, masks) is skipped, and so are <use> references, text and images.
// Element names are compared without namespace prefix. Fails on malformed XML, a root other than <svg>,
// malformed path data or transforms (naming the element and offset), or coordinates that a transform
// carries beyond the range of doubles.
SvgReadResult readSvgDocument(std::string_view xml);

// True when the text starts like an XML document (after a byte order mark and whitespace, a '<').
bool looksLikeXml(std::string_view text);

} // namespace sptool
