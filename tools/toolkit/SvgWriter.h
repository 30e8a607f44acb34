#pragma once

#include "toolkit/CubicChain.h"
#include "toolkit/PathDataWriter.h"
#include "toolkit/SvgDocument.h"

#include <array>
#include <limits>
#include <string>
#include <vector>

namespace sptool {

// One vertex of a path as `render` draws it: the anchor, its incoming and outgoing handles and its mode
// (0 smooth, 1 cusp, 2 symmetric, as the library numbers them).
struct RenderVertex {
    DPoint anchor;
    DPoint in;
    DPoint out;
    int mode = 1;
};

// A path as `render` draws it. Segment i runs from vertex i's anchor through its outgoing handle and the
// next vertex's incoming handle to the next anchor; a closed path also runs from the last back to the first.
struct RenderPath {
    std::vector<RenderVertex> vertices;
    bool closed = false;
};

// The cubic chain the vertices describe.
CubicChain chainOfVertices(RenderPath const& path);

// The smallest box around what a drawing shows, grown point by point.
struct DrawingBox {
    double minX = std::numeric_limits<double>::infinity();
    double minY = std::numeric_limits<double>::infinity();
    double maxX = -std::numeric_limits<double>::infinity();
    double maxY = -std::numeric_limits<double>::infinity();

    void add(DPoint const& p);
    void add(CubicChain const& chain);
    void add(RenderVertex const& v);
    void add(RenderPath const& path);
    bool empty() const { return !(minX <= maxX && minY <= maxY); }
};

// The viewBox to draw in: the input's, or the box with a margin of 5% of its larger side (at least 1).
std::array<double, 4> drawingBox(SvgFrame const& frame, DrawingBox const& box);

// A coordinate of the drawn decorations, to four decimals.
std::string number(double value);

// The XML declaration and the opening <svg> element with the frame's size and the given viewBox.
std::string documentStart(SvgFrame const& frame, std::array<double, 4> const& viewBox);

// A standalone SVG document with one <path> per chain, outlined, in the input's frame: its viewBox, width
// and height when it had them, otherwise a viewBox around the chains' control points with a margin.
std::string writeSvgDocument(SvgFrame const& frame, std::vector<CubicChain> const& chains,
                             NumberFormat format = {});

} // namespace sptool
