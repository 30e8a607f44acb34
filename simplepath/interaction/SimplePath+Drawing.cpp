// SimplePath members: drawing through the host's drawer
#include "simplepath/interaction/SimplePathDrawer.h"
#include "simplepath/path/SimplePath.h"

#include <new>

namespace {

// Allocates `count` modes for the caller (array delete), or null when memory is exhausted.
SimplePathVertexTriple::VertexTripleMode* newModeArray(int count) {
    return new (std::nothrow) SimplePathVertexTriple::VertexTripleMode[static_cast<std::size_t>(count)];
}

void addTripleTo(SimplePathDrawerCurveRep& rep, SimplePathVertexTriple const& triple) {
    rep.addTriple(triple.first->getLocation(), triple.anchor->getLocation(), triple.last->getLocation());
}

} // namespace

void SimplePath::initializeDrawerCurveRep(SimplePathDrawerCurveRep& rep,
                                          SimplePathVertexTriple::VertexTripleMode** modes) const {
    SimplePathVertexTriple::VertexTripleMode* array = nullptr;
    if (modes != nullptr) {
        array = newModeArray(numTriples());
        *modes = array;
    }
    int i = 0;
    for (SimplePathVertexTriple const& triple : tripleList) {
        addTripleTo(rep, triple);
        if (array != nullptr) {
            array[i] = triple.mode;
        }
        ++i;
    }
    if (closed != 0) {
        rep.setClosed();
    } else {
        rep.setOpen();
    }
}

void SimplePath::initializeDrawerCurveRep(SimplePathDrawerCurveRep& rep, int from, int to,
                                          SimplePathVertexTriple::VertexTripleMode** modes) const {
    int const n = numTriples();
    auto clamp = [n](int index) {
        if (index < 0) {
            index = 0;
        }
        return index >= n ? n - 1 : index;
    };
    from = clamp(from);
    to = clamp(to);
    // An empty path, or a range that is empty after clamping, fills nothing and allocates nothing; the
    // caller's pointer is still set, so that it can always be freed.
    if (n == 0 || from > to) {
        if (modes != nullptr) {
            *modes = nullptr;
        }
        return;
    }
    SimplePathVertexTriple::VertexTripleMode* array = nullptr;
    if (modes != nullptr) {
        array = newModeArray(to - from + 1);
        *modes = array;
    }
    // A piece, not a path: no wrap through the end of a closed path and no open or closed flag, which
    // the caller sets as the piece needs.
    for (int i = from; i <= to; ++i) {
        SimplePathVertexTriple const& triple = tripleList[i];
        addTripleTo(rep, triple);
        if (array != nullptr) {
            array[i - from] = triple.mode;
        }
    }
}

void SimplePath::permanentDrawCurve(SimplePathDrawer& drawer) const {
    SimplePathDrawerCurveRep* const rep = drawer.makeCurveRep();
    if (rep == nullptr) {
        return;
    }
    initializeDrawerCurveRep(*rep, nullptr);
    drawer.drawPermanentCurve(rep);
    delete rep;
}
