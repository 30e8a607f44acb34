#pragma once

#include "simplepath/interaction/SimplePathDrawer.h"
#include "simplepath/interfaces/ArbTrans.h"

#include <vector>

// The editor's drawer. The page draws on a 2-D canvas, but crossing from WebAssembly into JavaScript once
// per library call would cost more than the drawing, so the drawer records what the library asks for in
// one flat list of numbers that the page replays onto the canvas in a single pass (see editor.js, replay).
//
// Record layout, all doubles:
//   Curve     1, style, closed, n, then n triples (before.x, before.y, anchor.x, anchor.y, after.x, after.y)
//   Vertices  2, style, n, then n entries (mode, the triple's six coordinates); mode -1 when unknown
//   Edited    3, mode, the six coordinates of the edited triple
//   Highlight 4, x, y (a snap origin)
//   Marker    5, kind, x, y (hover point 0, selected anchor 1, first point of a slice 2)
//   Box       6, x0, y0, x1, y1 (the selection rubber band)
// Points are in canvas pixels: a rep made while a mapping is set maps each point on its way in, and a
// rep made without one takes points already mapped (the pick contexts map through their own transform).
class CanvasDrawer : public SimplePathDrawer {
  public:
    enum Style { Permanent = 0, Kept = 1, RubberBand = 2, Ghost = 3 };
    enum Record {
        CurveRecord = 1,
        VerticesRecord = 2,
        EditedRecord = 3,
        HighlightRecord = 4,
        MarkerRecord = 5,
        BoxRecord = 6
    };

    // Later reps map through `mapping` (borrowed), or take points as they come when it is null.
    void setMapping(ArbTrans<DPoint>* mapping) { mapping_ = mapping; }
    void setStyle(Style style) { style_ = style; }
    // Whether a mode array handed to drawCurveVertices has an entry per triple or one for all of them.
    void setModesPerTriple(bool perTriple) { modesPerTriple_ = perTriple; }

    CurveRep* makeCurveRep() override;
    void drawCurve(CurveRep* rep) override;
    void drawCurveVertices(CurveRep* rep, VertexTripleMode* modes, int first, int second) override;
    void drawEditedTriple(DPoint const& before, DPoint const& anchor, DPoint const& after,
                          VertexTripleMode* mode) override;
    void drawPermanentCurve(CurveRep* rep) override;
    void drawHighlightedVertex(DPoint const& point) override;

    // Host records that are not the library's: markers and the selection box, in canvas pixels.
    void marker(int kind, DPoint const& p);
    void box(DPoint const& a, DPoint const& b);

    void clear() { records_.clear(); }
    std::vector<double> const& records() const { return records_; }

  private:
    void curve(CurveRep* rep, int style);
    DPoint mapped(DPoint const& p) const { return mapping_ != nullptr ? mapping_->transform(p) : p; }

    std::vector<double> records_;
    ArbTrans<DPoint>* mapping_ = nullptr;
    Style style_ = Permanent;
    bool modesPerTriple_ = true;
};
