#pragma once

#include "simplepath/foundation/PHashablePointer.h"
#include "simplepath/interaction/SimplePathDrawer.h"
#include "simplepath/interaction/SimplePathVertexPickAction.h"
#include "simplepath/interaction/SnapKit.h"
#include "simplepath/interfaces/ArbTrans.h"
#include "simplepath/interfaces/DPoint.h"
#include "simplepath/interfaces/DVector.h"
#include "simplepath/path/SimplePathVertexTriple.h"

class SimplePath;
class SimplePathVertex;

// The state of one vertex being dragged, from pointer-down to pointer-up. The picked vertex may be an
// anchor, which moves its whole triple, or a handle, which moves alone while the opposite handle follows
// the vertex's mode. The context reads the path once, when it is made, and afterwards works only on its
// own copies of the locations: the path is never changed (commit yields an action for the operation
// factory), and a drag costs the same on a path of any length.
//
// A picked vertex that is not on the path (or a null path) leaves the context inert: it ignores moves,
// draws nothing, and commits the action of an empty triple.
class SimplePathVertexPickContext {
  public:
    using VertexTripleMode = SimplePathVertexTriple::VertexTripleMode;

    // `transform` maps the path's coordinates into the drawer's; it is borrowed, not owned.
    SimplePathVertexPickContext(PHashablePointer<SimplePath> path, SimplePathVertex* picked,
                                DPoint const& pickPoint);
    SimplePathVertexPickContext(PHashablePointer<SimplePath> path, SimplePathVertex* picked,
                                DPoint const& pickPoint, ArbTrans<DPoint>* transform);
    SimplePathVertexPickContext(SimplePathVertexPickContext const&) = default;
    SimplePathVertexPickContext& operator=(SimplePathVertexPickContext const&) = default;

    // The pointer is at p: snapped when a snap kit is active, then offset by p - pick point.
    void move(DPoint const& p);
    // Moves the picked vertex by d from where it started (displacements never accumulate). A dragged
    // handle carries the opposite one along: Smooth turns it to stay in line on the far side with its own
    // length (left alone while the dragged handle is within kMinHandleLength of the anchor, where the
    // direction means nothing), Symmetric mirrors it, Cusp leaves it.
    void offset(DVector const& d);

    // An angle snap about the previous anchor when the anchor is picked (the first anchor of a path,
    // open or closed, takes the last one), or about the editing anchor when a handle is picked.
    void createSnapKit();
    void deleteSnapKit() { snapKit_ = SnapKit(); }
    int isSnapKitActive() const { return snapKit_; }
    SnapKit const& getSnapKit() const { return snapKit_; }

    // Breaks a smooth or symmetric vertex while one of its handles is dragged; an anchor drag keeps its mode.
    void setCuspMode();

    // The editing locations, mapped through the transform when there is one.
    void getEditingTriple(DPoint& before, DPoint& anchor, DPoint& after) const;
    // The path, the picked triple's vertices and its editing locations (not mapped); returns the editing
    // mode.
    VertexTripleMode getPickedTriple(PHashablePointer<SimplePath>& path, SimplePathVertex*& before,
                                     SimplePathVertex*& anchor, SimplePathVertex*& after, DPoint& beforeAt,
                                     DPoint& anchorAt, DPoint& afterAt);

    // The triple as picked, with its mode then, and the locations and mode it is to take.
    SimplePathVertexPickAction commit();
    // A fresh context on the same path, vertex and pick point, for dragging on after the action was
    // applied; null when nothing moved. The transform and the snap kit are not carried over. The caller
    // owns the result.
    SimplePathVertexPickContext const* createSimilar() const;

    // The start shape of the segments the drag changes, never mapped; the caller owns the rep.
    SimplePathDrawer::CurveRep* createOriginalCurveRep(SimplePathDrawer& drawer) const;

    // The rubber band: the changed segments through the transform, then the edited triple with its
    // handles, or the curve's vertices. The mode passed is the vertex's mode at pick time.
    virtual void xorDraw(SimplePathDrawer& drawer, int withHandles) const;
    // What the drag leaves alone: the path up to the picked triple, and the picked triple's unchanged side.
    virtual void permDraw(SimplePathDrawer& drawer) const;
    // Virtual so that a host may delete what createSimilar gives it (or a context of its own derived
    // type) safely; declared after the drawing members, which keep the first two slots.
    virtual ~SimplePathVertexPickContext() = default;

    // Below this length a dragged handle gives no direction for the opposite handle of a smooth vertex.
    static constexpr double kMinHandleLength = 0.001;

  protected:
    // The changed segments from the editing locations, wrapped in the transform when asked and there is
    // one; the caller owns the rep.
    SimplePathDrawer::CurveRep* createCurveRep(SimplePathDrawer& drawer, int useTransform) const;

  private:
    enum class Picked { Before, Anchor, After };
    Picked pickedRole() const;
    bool previousAffected() const;
    bool nextAffected() const;
    // Adds the changed segments: the previous neighbour, the triple, the next neighbour.
    void addAffected(SimplePathDrawer::CurveRep& rep, DPoint const& before, DPoint const& anchor,
                     DPoint const& after) const;
    void handleRule(DPoint const& startThis, DPoint& editThis, double& lengthThis, DPoint& editOpposite,
                    double& lengthOpposite, DVector const& d);

    PHashablePointer<SimplePath> path_;
    SimplePathVertex* picked_ = nullptr;
    DPoint pickPoint_;
    int found_ = 0;
    SimplePathVertex* beforeVertex_ = nullptr;
    SimplePathVertex* anchorVertex_ = nullptr;
    SimplePathVertex* afterVertex_ = nullptr;
    VertexTripleMode mode_ = SimplePathVertexTriple::Cusp;
    DPoint startBefore_;
    DPoint startAnchor_;
    DPoint startAfter_;
    double startBeforeLength_ = 0.0;
    double startAfterLength_ = 0.0;
    DPoint editBefore_;
    DPoint editAnchor_;
    DPoint editAfter_;
    VertexTripleMode editMode_ = SimplePathVertexTriple::Cusp;
    double editBeforeLength_ = 0.0;
    double editAfterLength_ = 0.0;
    int hasPrevious_ = 0;
    DPoint previousAnchor_;
    DPoint previousAfter_;
    int hasNext_ = 0;
    DPoint nextAnchor_;
    DPoint nextBefore_;
    SnapKit snapKit_;
    ArbTrans<DPoint>* transform_ = nullptr;
};
