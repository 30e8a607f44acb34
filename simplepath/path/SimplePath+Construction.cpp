// SimplePath members: construction, filling a path with new vertices and the ready-made circle.

#include <new>

#include "simplepath/path/SimplePath.h"
#include "simplepath/path/SimplePathDPointVertex.h"

bool SimplePath::insertNewTriple(int index, DPoint const& first, DPoint const& anchor, DPoint const& last,
                                 SimplePathVertexTriple::VertexTripleMode mode,
                                 SimplePathVertexTriple& made) {
    SimplePathVertexTriple triple(nullptr, nullptr, nullptr, mode);
    if (!vertexStorage.createTriple(first, anchor, last, triple)) {
        return false;
    }
    try {
        if (index >= numTriples()) {
            tripleList.appendMade(triple);
        } else {
            tripleList.insert(tripleList.iteratorAt(index), triple);
        }
    } catch (std::bad_alloc const&) {
        deleteTripleVertices(triple);
        return false;
    }
    made = triple;
    return true;
}

SimplePath::Result SimplePath::addSingle(DPoint const& point, SimplePathVertex*& anchor) {
    SimplePathVertexTriple made;
    if (!insertNewTriple(numTriples(), point, point, point, SimplePathVertexTriple::Cusp, made)) {
        return Failure;
    }
    anchor = made.anchor;
    return Success;
}

SimplePath::Result SimplePath::addSingle(IPoint const& point, SimplePathVertex*& anchor) {
    return addSingle(DPoint(point.x, point.y), anchor);
}

template <class Points> SimplePath::Result SimplePath::appendRetractedTriples(Points const& points) {
    // Running out of memory part way leaves the triples made so far; the result is Success regardless.
    SimplePathVertexTriple made;
    for (DPoint const& point : points) {
        insertNewTriple(numTriples(), point, point, point, SimplePathVertexTriple::Cusp, made);
    }
    return Success;
}

SimplePath::Result SimplePath::addPoints(std::list<DPoint> const& points) {
    return appendRetractedTriples(points);
}

SimplePath::Result SimplePath::addPoints(std::vector<DPoint> const& points) {
    tripleList.reserve(numTriples() + static_cast<int>(points.size()));
    return appendRetractedTriples(points);
}

SimplePath::Result SimplePath::addTriple(DPoint const& first, SimplePathVertex*& firstVertex,
                                         DPoint const& anchor, SimplePathVertex*& anchorVertex,
                                         DPoint const& last, SimplePathVertex*& lastVertex,
                                         SimplePathVertexTriple::VertexTripleMode mode) {
    SimplePathVertexTriple made;
    if (!insertNewTriple(numTriples(), first, anchor, last, mode, made)) {
        return Failure;
    }
    firstVertex = made.first;
    anchorVertex = made.anchor;
    lastVertex = made.last;
    return Success;
}

SimplePath::Result SimplePath::insertTriple(DPoint const& first, SimplePathVertex*& firstVertex,
                                            DPoint const& anchor, SimplePathVertex*& anchorVertex,
                                            DPoint const& last, SimplePathVertex*& lastVertex,
                                            SimplePathVertexTriple::VertexTripleMode mode, int index) {
    if (index > numTriples()) {
        return Failure;
    }
    // A negative index means the front, deliberately: the walk to the index never starts.
    int const at = index < 0 ? 0 : index;
    SimplePathVertexTriple made;
    if (!insertNewTriple(at, first, anchor, last, mode, made)) {
        return Failure;
    }
    firstVertex = made.first;
    anchorVertex = made.anchor;
    lastVertex = made.last;
    return Success;
}

SimplePath::Result SimplePath::setLocationTripleList(std::list<SimplePathLocationTriple> const& triples) {
    if (triples.size() != static_cast<std::size_t>(numTriples())) {
        return Failure;
    }
    // The entries' modes are ignored on purpose: this moves vertices, it does not re-type them.
    auto position = tripleList.begin();
    for (SimplePathLocationTriple const& entry : triples) {
        tripleList.setTripleLocations(position, entry.first, entry.anchor, entry.last);
        ++position;
    }
    return Success;
}

SimplePath* SimplePath::createCircleSP(DPoint& center, double radius) {
    auto* const path = new (std::nothrow) SimplePath;
    if (path == nullptr) {
        return nullptr;
    }
    // The handle length is 0.54 r, this library's own circle constant (not the usual 0.5523 r): the
    // outline bulges a little less than a true circle between the four anchors.
    double const h = 0.27 * radius * 2.0;
    double const mx = center.x;
    double const my = center.y;
    struct Corner {
        DPoint first, anchor, last;
    };
    Corner const corners[4] = {
        {{mx - h, my + radius}, {mx, my + radius}, {mx + h, my + radius}},
        {{mx + radius, my + h}, {mx + radius, my}, {mx + radius, my - h}},
        {{mx + h, my - radius}, {mx, my - radius}, {mx - h, my - radius}},
        {{mx - radius, my - h}, {mx - radius, my}, {mx - radius, my + h}},
    };
    path->tripleList.reserve(4);
    SimplePathVertex* first = nullptr;
    SimplePathVertex* anchor = nullptr;
    SimplePathVertex* last = nullptr;
    for (Corner const& c : corners) {
        // Only an exhausted heap fails an append; the circle then lacks the triples that could not be made.
        (void)path->addTriple(c.first, first, c.anchor, anchor, c.last, last, SimplePathVertexTriple::Smooth);
    }
    path->setStrictClosed(1);
    return path;
}
