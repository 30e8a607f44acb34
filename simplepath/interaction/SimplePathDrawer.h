#pragma once

#include "simplepath/interaction/SimplePathDrawerCurveRep.h"
#include "simplepath/interfaces/DPoint.h"
#include "simplepath/path/SimplePathVertexTriple.h"

// What the library needs from a host that shows paths. The library draws nothing itself: it asks the
// drawer for an empty curve rep, fills it and hands it back to one of the drawing members, then deletes
// it. Modes travel as a pointer to the first of one or more modes; the two ints of drawCurveVertices
// are the host's to interpret (the library always passes 1 and 0), and so is how anything looks.
class SimplePathDrawer {
  public:
    using CurveRep = SimplePathDrawerCurveRep;
    using VertexTripleMode = SimplePathVertexTriple::VertexTripleMode;

    SimplePathDrawer() = default;
    SimplePathDrawer(SimplePathDrawer const&) = default;
    SimplePathDrawer& operator=(SimplePathDrawer const&) = default;
    virtual ~SimplePathDrawer() = default;

    // A new, empty curve rep that the caller owns, or null when the drawer cannot draw now.
    virtual CurveRep* makeCurveRep() = 0;
    // A filled curve, as feedback (the rubber band of a drag).
    virtual void drawCurve(CurveRep* rep) = 0;
    // The vertices of a filled curve, marked by their modes.
    virtual void drawCurveVertices(CurveRep* rep, VertexTripleMode* modes, int first, int second) = 0;
    // One vertex with both handles while it is being edited.
    virtual void drawEditedTriple(DPoint const& before, DPoint const& anchor, DPoint const& after,
                                  VertexTripleMode* mode) = 0;
    // A filled curve as the path's own, lasting image.
    virtual void drawPermanentCurve(CurveRep* rep) = 0;

    // Optional: a marked point (a snap origin), and brackets around one frame of drawing.
    virtual void drawHighlightedVertex(DPoint const& point);
    virtual void beginDrawing();
    virtual void endDrawing();
};
