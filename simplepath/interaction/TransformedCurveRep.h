#pragma once

#include "simplepath/interaction/SimplePathDrawer.h"
#include "simplepath/interfaces/ArbTrans.h"

// A curve rep that maps every point through a transform on its way into the host's rep, so that paths
// kept in one space draw in another (a view, an envelope). It owns the wrapped rep and deletes it once,
// when it dies; the transform is only borrowed and must outlive the wrapper. Without a wrapped rep it
// still maps every point (the transform sees the same calls either way) and drops the result.
class TransformedCurveRep : public SimplePathDrawer::CurveRep {
  public:
    TransformedCurveRep(SimplePathDrawer::CurveRep* inner, ArbTrans<DPoint>& transform)
        : inner_(inner), transform_(&transform) {}
    // A copy maps through the same transform but wraps nothing: the wrapped rep has one owner, and
    // there is no general way to duplicate a host's rep.
    TransformedCurveRep(TransformedCurveRep const& other)
        : SimplePathDrawerCurveRep(other), transform_(other.transform_) {}
    TransformedCurveRep& operator=(TransformedCurveRep const&) = delete;
    ~TransformedCurveRep() override;

    char const* getType() const override { return "TransformedCurveRep"; }
    void addTriple(DPoint const& before, DPoint const& anchor, DPoint const& after) override;
    void popBackTriple() override;
    void setOpen() override;
    void setClosed() override;
    // The wrapped rep itself, one level down (it is not asked for its own final rep).
    SimplePathDrawer::CurveRep* getFinalRep() const override { return inner_; }

  private:
    SimplePathDrawer::CurveRep* inner_ = nullptr;
    ArbTrans<DPoint>* transform_ = nullptr;
};
