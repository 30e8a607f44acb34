#include "simplepath/interaction/TransformedCurveRep.h"

TransformedCurveRep::~TransformedCurveRep() {
    delete inner_;
    inner_ = nullptr;
}

void TransformedCurveRep::addTriple(DPoint const& before, DPoint const& anchor, DPoint const& after) {
    DPoint const mappedBefore = transform_->transform(before);
    DPoint const mappedAnchor = transform_->transform(anchor);
    DPoint const mappedAfter = transform_->transform(after);
    if (inner_ != nullptr) {
        inner_->addTriple(mappedBefore, mappedAnchor, mappedAfter);
    }
}

void TransformedCurveRep::popBackTriple() {
    if (inner_ != nullptr) {
        inner_->popBackTriple();
    }
}

void TransformedCurveRep::setOpen() {
    if (inner_ != nullptr) {
        inner_->setOpen();
    }
}

void TransformedCurveRep::setClosed() {
    if (inner_ != nullptr) {
        inner_->setClosed();
    }
}
