#pragma once

#include "toolkit/SvgCurveRep.h"
#include "toolkit/SvgDocument.h"
#include "toolkit/SvgWriter.h"

#include "simplepath/interaction/SimplePathDrawer.h"
#include "simplepath/path/SimplePath.h"

#include <memory>
#include <string>
#include <vector>

namespace sptool {

// A host drawer that collects what the library draws and writes it as one SVG document: permanent curves
// as outlines, feedback curves in the style chosen before drawing them, vertices as markers whose shape
// tells the mode (circle smooth, square cusp, diamond symmetric, a plain dot when the mode is not known;
// markers shrink where anchors crowd closer than a marker's size, so that each stays apart),
// handles as thin lines with a dot at the end, an edited triple with its handles, and highlighted points
// (a snap origin) as a ringed cross.
class SvgDrawer : public SimplePathDrawer {
  public:
    // The look of the curves drawCurve receives.
    enum class Style {
        Kept,       // the part of a path that a drag leaves alone
        Original,   // the shape a drag started from
        RubberBand, // the shape under the pointer
    };
    // How many entries of a mode array drawCurveVertices may read. The library passes one array per
    // call and no count (its two ints are always 1 and 0), so the host, which knows what it asked the
    // library to draw, says whether an array has an entry per triple or is a single mode.
    enum class Modes { PerTriple, Single };

    void setStyle(Style style) { style_ = style; }
    void setModes(Modes modes) { modes_ = modes; }

    CurveRep* makeCurveRep() override;
    void drawCurve(CurveRep* rep) override;
    // A single mode marks no vertex: it may belong to any one of them. The two ints are not used.
    void drawCurveVertices(CurveRep* rep, VertexTripleMode* modes, int first, int second) override;
    void drawEditedTriple(DPoint const& before, DPoint const& anchor, DPoint const& after,
                          VertexTripleMode* mode) override;
    void drawPermanentCurve(CurveRep* rep) override;
    void drawHighlightedVertex(DPoint const& point) override;

    // The document: in the input's frame if it had a viewBox, else around every point drawn.
    std::string document(SvgFrame const& frame) const;

  private:
    struct StyledPath {
        Style style;
        RenderPath path;
    };
    Style style_ = Style::Kept;
    Modes modes_ = Modes::PerTriple;
    std::vector<RenderPath> permanent_;
    std::vector<StyledPath> curves_;
    // A vertex with the distance to the nearer of its neighbouring anchors along its path (infinite when
    // it has none), which bounds the size of its marker.
    struct SpacedVertex {
        RenderVertex vertex;
        double room;
    };
    std::vector<SpacedVertex> vertices_;
    std::vector<RenderVertex> edited_;
    std::vector<DPoint> highlighted_;
};

// The `render` drawing of paths: each path drawn whole as a permanent curve, then its vertices with
// their modes, all through the SVG drawer. Handles are thin lines from their anchors with a dot at the end
// (retracted handles are not drawn); anchors are markers whose shape tells the mode: a circle for smooth,
// a square for cusp, a diamond for symmetric.
std::string renderDrawing(SvgFrame const& frame, std::vector<std::unique_ptr<SimplePath>> const& paths);

} // namespace sptool
