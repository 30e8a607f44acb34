#include "simplepath/interaction/SimplePathVertexPickContext.h"

#include "simplepath/interaction/TransformedCurveRep.h"
#include "simplepath/path/SimplePath.h"

#include <new>

SimplePathVertexPickContext::SimplePathVertexPickContext(PHashablePointer<SimplePath> path,
                                                         SimplePathVertex* picked, DPoint const& pickPoint)
    : SimplePathVertexPickContext(path, picked, pickPoint, nullptr) {}

SimplePathVertexPickContext::SimplePathVertexPickContext(PHashablePointer<SimplePath> path,
                                                         SimplePathVertex* picked, DPoint const& pickPoint,
                                                         ArbTrans<DPoint>* transform)
    : path_(path), picked_(picked), pickPoint_(pickPoint), transform_(transform) {
    if (path_ == nullptr || picked_ == nullptr) {
        return;
    }
    SimplePathTripleList const& triples = path_->getTripleList();
    int const n = triples.length();
    int index = 0;
    while (index < n && triples[index].first != picked_ && triples[index].anchor != picked_ &&
           triples[index].last != picked_) {
        ++index;
    }
    if (index == n) {
        return;
    }
    SimplePathVertexTriple const& triple = triples[index];
    beforeVertex_ = triple.first;
    anchorVertex_ = triple.anchor;
    afterVertex_ = triple.last;
    mode_ = triple.mode;
    startBefore_ = beforeVertex_->getLocation();
    startAnchor_ = anchorVertex_->getLocation();
    startAfter_ = afterVertex_->getLocation();
    startBeforeLength_ = (startBefore_ - startAnchor_).length();
    startAfterLength_ = (startAfter_ - startAnchor_).length();
    editBefore_ = startBefore_;
    editAnchor_ = startAnchor_;
    editAfter_ = startAfter_;
    editMode_ = mode_;
    editBeforeLength_ = startBeforeLength_;
    editAfterLength_ = startAfterLength_;

    bool const closed = path_->isClosedSimplePath() != 0;
    if (index > 0 || closed) {
        SimplePathVertexTriple const& previous = triples[index > 0 ? index - 1 : n - 1];
        hasPrevious_ = 1;
        previousAnchor_ = previous.anchor->getLocation();
        previousAfter_ = previous.last->getLocation();
    }
    if (index < n - 1 || closed) {
        SimplePathVertexTriple const& next = triples[index < n - 1 ? index + 1 : 0];
        hasNext_ = 1;
        nextAnchor_ = next.anchor->getLocation();
        nextBefore_ = next.first->getLocation();
    }
    found_ = 1;
}

SimplePathVertexPickContext::Picked SimplePathVertexPickContext::pickedRole() const {
    if (picked_ == anchorVertex_) {
        return Picked::Anchor;
    }
    return picked_ == beforeVertex_ ? Picked::Before : Picked::After;
}

void SimplePathVertexPickContext::move(DPoint const& p) {
    if (found_ == 0) {
        return;
    }
    offset(snapKit_.dragging(p) - pickPoint_);
}

void SimplePathVertexPickContext::offset(DVector const& d) {
    if (found_ == 0) {
        return;
    }
    switch (pickedRole()) {
    case Picked::Anchor:
        editBefore_ = startBefore_ + d;
        editAnchor_ = startAnchor_ + d;
        editAfter_ = startAfter_ + d;
        break;
    case Picked::Before:
        handleRule(startBefore_, editBefore_, editBeforeLength_, editAfter_, editAfterLength_, d);
        break;
    case Picked::After:
        handleRule(startAfter_, editAfter_, editAfterLength_, editBefore_, editBeforeLength_, d);
        break;
    }
}

void SimplePathVertexPickContext::handleRule(DPoint const& startThis, DPoint& editThis, double& lengthThis,
                                             DPoint& editOpposite, double& lengthOpposite, DVector const& d) {
    editThis = startThis + d;
    DVector const v = editThis - editAnchor_;
    double const length = v.length();
    lengthThis = length;
    if (editMode_ == SimplePathVertexTriple::Smooth) {
        if (length > kMinHandleLength) {
            editOpposite = editAnchor_ + v * (-lengthOpposite / length);
        }
    } else if (editMode_ == SimplePathVertexTriple::Symmetric) {
        editOpposite = editAnchor_ - v;
        lengthOpposite = length;
    }
}

void SimplePathVertexPickContext::createSnapKit() {
    if (path_ == nullptr || picked_ == nullptr) {
        return;
    }
    SimplePathTripleList const& triples = path_->getTripleList();
    int const n = triples.length();
    for (int i = 0; i < n; ++i) {
        SimplePathVertexTriple const& triple = triples[i];
        if (triple.anchor == picked_) {
            // The previous anchor, wrapping to the last one from the first even on an open path.
            snapKit_ = SnapKit(triples[i > 0 ? i - 1 : n - 1].anchor->getLocation(), SnapKit::AngleSnap);
            return;
        }
        if (triple.first == picked_ || triple.last == picked_) {
            snapKit_ = SnapKit(editAnchor_, SnapKit::AngleSnap);
            return;
        }
    }
}

void SimplePathVertexPickContext::setCuspMode() {
    if (found_ != 0 && pickedRole() != Picked::Anchor) {
        editMode_ = SimplePathVertexTriple::Cusp;
    }
}

void SimplePathVertexPickContext::getEditingTriple(DPoint& before, DPoint& anchor, DPoint& after) const {
    if (transform_ != nullptr) {
        before = transform_->transform(editBefore_);
        anchor = transform_->transform(editAnchor_);
        after = transform_->transform(editAfter_);
        return;
    }
    before = editBefore_;
    anchor = editAnchor_;
    after = editAfter_;
}

SimplePathVertexPickContext::VertexTripleMode
SimplePathVertexPickContext::getPickedTriple(PHashablePointer<SimplePath>& path, SimplePathVertex*& before,
                                             SimplePathVertex*& anchor, SimplePathVertex*& after,
                                             DPoint& beforeAt, DPoint& anchorAt, DPoint& afterAt) {
    path = path_;
    before = beforeVertex_;
    anchor = anchorVertex_;
    after = afterVertex_;
    beforeAt = editBefore_;
    anchorAt = editAnchor_;
    afterAt = editAfter_;
    return editMode_;
}

SimplePathVertexPickAction SimplePathVertexPickContext::commit() {
    return SimplePathVertexPickAction(
        SimplePathVertexTriple(beforeVertex_, anchorVertex_, afterVertex_, mode_),
        SimplePathLocationTriple(editBefore_, editAnchor_, editAfter_, editMode_));
}

SimplePathVertexPickContext const* SimplePathVertexPickContext::createSimilar() const {
    if (editBefore_ == startBefore_ && editAnchor_ == startAnchor_ && editAfter_ == startAfter_) {
        return nullptr;
    }
    return new (std::nothrow) SimplePathVertexPickContext(path_, picked_, pickPoint_);
}

// Dragging one handle of a cusp vertex (still a cusp) leaves the segment on the other side alone.
bool SimplePathVertexPickContext::previousAffected() const {
    return hasPrevious_ != 0 && !(picked_ == afterVertex_ && mode_ == SimplePathVertexTriple::Cusp &&
                                  editMode_ == SimplePathVertexTriple::Cusp);
}

bool SimplePathVertexPickContext::nextAffected() const {
    return hasNext_ != 0 && !(picked_ == beforeVertex_ && mode_ == SimplePathVertexTriple::Cusp &&
                              editMode_ == SimplePathVertexTriple::Cusp);
}

void SimplePathVertexPickContext::addAffected(SimplePathDrawer::CurveRep& rep, DPoint const& before,
                                              DPoint const& anchor, DPoint const& after) const {
    // The neighbours' far handles are collapsed onto their anchors: only the changed segments are drawn.
    if (previousAffected()) {
        rep.addTriple(previousAnchor_, previousAnchor_, previousAfter_);
    }
    rep.addTriple(before, anchor, after);
    if (nextAffected()) {
        rep.addTriple(nextBefore_, nextAnchor_, nextAnchor_);
    }
    rep.setOpen();
}

SimplePathDrawer::CurveRep* SimplePathVertexPickContext::createCurveRep(SimplePathDrawer& drawer,
                                                                        int useTransform) const {
    if (found_ == 0) {
        return nullptr;
    }
    SimplePathDrawer::CurveRep* rep = drawer.makeCurveRep();
    if (rep == nullptr) {
        return nullptr;
    }
    if (useTransform != 0 && transform_ != nullptr) {
        SimplePathDrawer::CurveRep* const wrapped = new (std::nothrow) TransformedCurveRep(rep, *transform_);
        if (wrapped == nullptr) {
            delete rep;
            return nullptr;
        }
        rep = wrapped;
    }
    addAffected(*rep, editBefore_, editAnchor_, editAfter_);
    return rep;
}

SimplePathDrawer::CurveRep*
SimplePathVertexPickContext::createOriginalCurveRep(SimplePathDrawer& drawer) const {
    if (found_ == 0) {
        return nullptr;
    }
    SimplePathDrawer::CurveRep* const rep = drawer.makeCurveRep();
    if (rep != nullptr) {
        addAffected(*rep, startBefore_, startAnchor_, startAfter_);
    }
    return rep;
}

void SimplePathVertexPickContext::xorDraw(SimplePathDrawer& drawer, int withHandles) const {
    if (found_ == 0) {
        return;
    }
    SimplePathDrawer::CurveRep* const rep = drawer.makeCurveRep();
    if (rep == nullptr) {
        return;
    }
    // The mode at pick time, not the editing mode. The drawer gets a copy, so it cannot change ours.
    VertexTripleMode mode = mode_;
    auto draw = [&](SimplePathDrawer::CurveRep* filled) {
        addAffected(*filled, editBefore_, editAnchor_, editAfter_);
        drawer.drawCurve(filled);
        if (withHandles != 0) {
            DPoint before, anchor, after;
            getEditingTriple(before, anchor, after);
            drawer.drawEditedTriple(before, anchor, after, &mode);
        } else {
            drawer.drawCurveVertices(filled, &mode, 1, 0);
        }
    };
    if (transform_ != nullptr) {
        // The wrapper lives on the stack (a drag redraws at pointer rate) and deletes the drawer's rep.
        TransformedCurveRep wrapped(rep, *transform_);
        draw(&wrapped);
    } else {
        draw(rep);
        delete rep;
    }
}

void SimplePathVertexPickContext::permDraw(SimplePathDrawer& drawer) const {
    if (found_ == 0) {
        return;
    }
    VertexTripleMode mode = mode_;
    auto finish = [&](SimplePathDrawer::CurveRep* rep, bool added) {
        rep->setOpen();
        if (added) {
            drawer.drawCurveVertices(rep, &mode, 1, 0);
            drawer.drawCurve(rep);
        }
        delete rep;
    };
    SimplePathTripleList const& triples = path_->getTripleList();
    int const n = triples.length();
    SimplePathDrawer::CurveRep* rep = drawer.makeCurveRep();
    if (rep == nullptr) {
        return;
    }
    // Everything before the picked triple, and its incoming side when the drag leaves that alone.
    bool added = false;
    int i = 0;
    for (; i < n; ++i) {
        SimplePathVertexTriple const& t = triples[i];
        if (t.anchor == anchorVertex_) {
            if (!previousAffected()) {
                rep->addTriple(t.first->getLocation(), t.anchor->getLocation(), t.anchor->getLocation());
                added = true;
            }
            break;
        }
        rep->addTriple(t.first->getLocation(), t.anchor->getLocation(), t.last->getLocation());
        added = true;
    }
    finish(rep, added);

    // The walk goes on from the picked triple and stops there: the second curve holds at most that
    // triple's outgoing side. The rest of the path is not redrawn here.
    rep = drawer.makeCurveRep();
    if (rep == nullptr) {
        return;
    }
    added = false;
    if (i < n && !nextAffected() && hasNext_ != 0) {
        SimplePathVertexTriple const& t = triples[i];
        rep->addTriple(t.anchor->getLocation(), t.anchor->getLocation(), t.last->getLocation());
        added = true;
    }
    finish(rep, added);
}
