#include "toolkit/MeasuredPath.h"

#include <new>

namespace sptool {

namespace {

// The midpoint, halving each end first so that coordinates near the top of the double range cannot
// overflow in the sum.
DPoint middle(DPoint const& a, DPoint const& b) {
    return {0.5 * a.x + 0.5 * b.x, 0.5 * a.y + 0.5 * b.y};
}

} // namespace

MeasuredPath::MeasuredPath(SimplePath const& path) : original_(path) {
    SimplePathVertexTriple triple;
    if (path.numTriples() != 1 || path.isClosedSimplePath() == 0 ||
        path.getTriple(0, triple) != SimplePath::Success) {
        return;
    }
    // The loop runs anchor, outgoing handle, incoming handle, anchor again.
    DPoint const p0 = triple.anchor->getLocation(), p1 = triple.last->getLocation(),
                 p2 = triple.first->getLocation();
    DPoint const q0 = middle(p0, p1), q1 = middle(p1, p2), q2 = middle(p2, p0);
    DPoint const r0 = middle(q0, q1), r1 = middle(q1, q2);
    DPoint const s = middle(r0, r1);
    std::unique_ptr<SimplePath> split(new (std::nothrow) SimplePath);
    SimplePathVertex *first = nullptr, *anchor = nullptr, *last = nullptr;
    // Should memory run out, the path is measured as it is.
    if (split && split->addTriple(q2, first, p0, anchor, q0, last, triple.mode) == SimplePath::Success &&
        split->addTriple(r0, first, s, anchor, r1, last, SimplePathVertexTriple::Smooth) ==
            SimplePath::Success) {
        split->setStrictClosed(1);
        split_ = std::move(split);
    }
}

MeasuredPath::~MeasuredPath() = default;

SimplePathPosition MeasuredPath::original(SimplePathPosition const& position) const {
    if (!split_ || position.getIndex() < 0) {
        return position;
    }
    SimplePathPosition back;
    int const index = position.getIndex();
    double const t = position.getParameter();
    if (index >= 2) {
        back.setValues(1, 0.0);
    } else {
        back.setValues(0, index == 1 ? 0.5 + 0.5 * t : 0.5 * t);
    }
    return back;
}

} // namespace sptool
