#pragma once

#include "simplepath/foundation/PHashablePointer.h"
#include "simplepath/interaction/SimplePathDrawer.h"
#include "simplepath/interaction/SimplePathVertexPickAction.h"
#include "simplepath/interaction/SnapKit.h"
#include "simplepath/interaction/ThreePoint.h"
#include "simplepath/interfaces/DPoint.h"
#include "simplepath/interfaces/DVector.h"
#include "simplepath/path/SimplePathVertexTriple.h"

#include <list>
#include <utility>
#include <vector>

class SimplePath;
class SimplePathVertex;

// The state of a drag that moves a selection: the user drags one anchor and every selected vertex, on
// any of the selected paths, moves by the same displacement, whole triples at a time. Like the single
// context it reads the paths once, when it is made, and never changes them.
//
// The rubber band is drawn as runs, one curve each. A run is a maximal chain of consecutive triples of
// one path that hold a selected vertex, in triple order, framed by the unmoved neighbours on both sides
// (the previous triple's anchor and outgoing handle in front, the next triple's incoming handle and
// anchor after) so that the segments joining moved and unmoved parts are drawn too. On a closed path a
// chain may wrap through the end and stays one run; a closed path whose triples are all selected is one
// closed run without neighbours.
class SimplePathMultipleVertexPickContext {
  public:
    using VertexTripleMode = SimplePathVertexTriple::VertexTripleMode;
    using Selection = std::list<std::pair<SimplePathVertex*, PHashablePointer<SimplePath>>>;

    // `selection` holds every selected vertex with the path it lies on. Entries whose vertex is not on
    // their path, or whose path is null, are left out.
    SimplePathMultipleVertexPickContext(PHashablePointer<SimplePath> path, SimplePathVertex* picked,
                                        DPoint const& pickPoint, Selection const& selection);

    // The pointer is at p: snapped when a snap kit is active, then offset by p - pick point.
    void move(DPoint const& p);
    // Moves the picked triple whole by d from where it started; the selection follows when drawn.
    void offset(DVector const& d);

    // An angle snap about the picked anchor itself; 1 when the picked vertex is an anchor of the path,
    // else 0 with the kit unchanged.
    int createSnapKit();
    void deleteSnapKit() { snapKit_ = SnapKit(); }
    int isSnapKitActive() const { return snapKit_; }
    SnapKit const& getSnapKit() const { return snapKit_; }

    // The picked triple and its editing locations, both reported as Cusp whatever the vertex's mode.
    SimplePathVertexPickAction commit();

    // Each run as one curve, moved triples shifted by the drag, then its vertices with their modes.
    void xorDraw(SimplePathDrawer& drawer);

    // One chain of triples drawn as one curve, and whether that curve closes.
    using Run = std::pair<std::vector<ThreePoint>, int>;
    // The runs as built, and the modes of their entries one to one, in run order; for hosts and tests
    // that want to inspect them.
    std::vector<Run> const& getRuns() const { return runs_; }
    std::vector<VertexTripleMode> const& getModes() const { return modes_; }

  private:
    void addRunsOf(PHashablePointer<SimplePath> const& path, std::vector<SimplePathVertex*> const& selected);

    PHashablePointer<SimplePath> path_;
    SimplePathVertex* picked_ = nullptr;
    DPoint pickPoint_;
    int found_ = 0;
    SimplePathVertex* beforeVertex_ = nullptr;
    SimplePathVertex* anchorVertex_ = nullptr;
    SimplePathVertex* afterVertex_ = nullptr;
    DPoint startBefore_;
    DPoint startAnchor_;
    DPoint startAfter_;
    DPoint editBefore_;
    DPoint editAnchor_;
    DPoint editAfter_;
    // Stored contiguously: a redraw walks every entry at pointer rate.
    std::vector<VertexTripleMode> modes_;
    SnapKit snapKit_;
    std::vector<Run> runs_;
};
