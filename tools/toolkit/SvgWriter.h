#pragma once

#include "toolkit/CubicChain.h"
#include "toolkit/PathDataWriter.h"
#include "toolkit/SvgDocument.h"

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

// A standalone SVG document with one <path> per chain, outlined, in the input's frame: its viewBox, width
// and height when it had them, otherwise a viewBox around the chains' control points with a margin.
std::string writeSvgDocument(SvgFrame const& frame, std::vector<CubicChain> const& chains,
                             NumberFormat format = {});

// An SVG drawing of the paths for inspection: outlines, the handles as thin lines from their anchors with
// a dot at the end (retracted handles are not drawn), and the anchors as markers whose shape tells the
// mode: a circle for smooth, a square for cusp, a diamond for symmetric. Marker sizes follow the size of
// the frame. The frame is the input's viewBox if it had one, else the bounds of every point drawn.
std::string writeRenderDrawing(SvgFrame const& frame, std::vector<RenderPath> const& paths);

} // namespace sptool
