#include "simplepath/interaction/CompositeSimplePathTransform.h"

void CompositeSimplePathTransform::append(ArbTrans<DPoint>& member) {
    members_.push_back(Member(&member));
}

void CompositeSimplePathTransform::prepend(ArbTrans<DPoint>& member) {
    members_.push_front(Member(&member));
}

DPoint CompositeSimplePathTransform::transform(DPoint const& p) const {
    DPoint q = p;
    for (Member const& member : members_) {
        if (member.isValid()) {
            q = member->transform(q);
        }
    }
    return q;
}

DPoint CompositeSimplePathTransform::reverseTransform(DPoint const& p) const {
    DPoint q = p;
    for (auto it = members_.rbegin(); it != members_.rend(); ++it) {
        if (it->isValid()) {
            q = (*it)->reverseTransform(q);
        }
    }
    return q;
}
