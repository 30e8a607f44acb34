#include "simplepath/interaction/XFSimplePathTransform.h"

#include "simplepath/interfaces/PBoxForm.h"
#include "simplepath/interfaces/PBoxPoint.h"

DPoint XFSimplePathTransform::transform(DPoint const& p) const {
    if (boxForm_ == nullptr) {
        return p;
    }
    PBoxPoint q(p);
    boxForm_->xform(q);
    return DPoint(q.x, q.y);
}

DPoint XFSimplePathTransform::reverseTransform(DPoint const& p) const {
    if (boxForm_ == nullptr) {
        return p;
    }
    PBoxPoint q(p);
    boxForm_->xforminv(q);
    return DPoint(q.x, q.y);
}
