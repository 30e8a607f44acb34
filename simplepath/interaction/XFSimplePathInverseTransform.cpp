#include "simplepath/interaction/detail/XFSimplePathInverseTransform.h"

#include "simplepath/interfaces/PBoxForm.h"
#include "simplepath/interfaces/PBoxPoint.h"

DPoint XFSimplePathInverseTransform::transform(DPoint const& p) const {
    if (boxForm_ == nullptr) {
        return p;
    }
    PBoxPoint q(p);
    boxForm_->xforminv(q);
    return DPoint(q.x, q.y);
}

DPoint XFSimplePathInverseTransform::reverseTransform(DPoint const& p) const {
    if (boxForm_ == nullptr) {
        return p;
    }
    PBoxPoint q(p);
    boxForm_->xform(q);
    return DPoint(q.x, q.y);
}
