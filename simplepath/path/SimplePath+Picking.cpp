// SimplePath members: hit testing, the vertex or the position of the curve under a point.

#include "simplepath/path/SimplePath.h"
#include "simplepath/path/detail/SimplePathSegmentReader.h"

namespace {

enum class Pass { AnchorsOnly, AnchorsThenHandles };

// The hit test shared by the vertex and position picks: a vertex is hit when its (mapped) location lies
// strictly closer to the point than the tolerance. The answer is that of two passes, each from the last
// triple to the first: the anchors, then (when asked) the handles, the incoming before the outgoing one of
// each triple. It is found in one walk: an anchor hit ends it at once, and the first handle hit is kept
// in case no anchor is hit further down. Null vertices are never picked.
template <class Locate>
SimplePathVertex* pickWalk(SimplePathTripleList const& list, Locate const& locate, DPoint const& point,
                           double tolerance, Pass pass) {
    double const limit = tolerance * tolerance;
    auto const hit = [&](SimplePathVertex const* v) {
        return v != nullptr && squaredDistance(locate(v), point) < limit;
    };
    SimplePathVertex* handle = nullptr;
    bool wantHandle = pass == Pass::AnchorsThenHandles;
    for (int i = list.length() - 1; i >= 0; --i) {
        SimplePathVertexTriple const& triple = list[i];
        if (hit(triple.anchor)) {
            return triple.anchor;
        }
        if (wantHandle) {
            handle = hit(triple.first) ? triple.first : (hit(triple.last) ? triple.last : nullptr);
            wantHandle = handle == nullptr;
        }
    }
    return handle;
}

SimplePathVertex* pickIn(SimplePathTripleList const& list, SimplePathSegmentReader const& reader,
                         DPoint const& point, double tolerance, Pass pass) {
    if (!reader.mapsPoints()) {
        return pickWalk(list, SimplePathSegmentReader::locationOf, point, tolerance, pass);
    }
    auto const mapped = [&reader](SimplePathVertex const* v) {
        return reader.mapped(SimplePathSegmentReader::locationOf(v));
    };
    return pickWalk(list, mapped, point, tolerance, pass);
}

SimplePath::Result store(SimplePathVertex* picked, SimplePathVertex*& vertex) {
    if (picked == nullptr) {
        return SimplePath::Failure;
    }
    vertex = picked;
    return SimplePath::Success;
}

} // namespace

SimplePath::Result SimplePath::pickVertex(DPoint const& point, double tolerance,
                                          SimplePathVertex*& vertex) const {
    SimplePathSegmentReader const reader(tripleList, closed);
    return store(pickIn(tripleList, reader, point, tolerance, Pass::AnchorsThenHandles), vertex);
}

SimplePath::Result SimplePath::pretransformPickVertex(DPoint const& point, double tolerance,
                                                      ArbTrans<DPoint> const& transform,
                                                      SimplePathVertex*& vertex) const {
    SimplePathSegmentReader const reader(tripleList, closed, &transform);
    return store(pickIn(tripleList, reader, point, tolerance, Pass::AnchorsThenHandles), vertex);
}

SimplePath::Result SimplePath::pretransformPickAnchor(DPoint const& point, double tolerance,
                                                      ArbTrans<DPoint> const& transform,
                                                      SimplePathVertex*& vertex) const {
    SimplePathSegmentReader const reader(tripleList, closed, &transform);
    return store(pickIn(tripleList, reader, point, tolerance, Pass::AnchorsOnly), vertex);
}

SimplePath::Result SimplePath::pickPosition(DPoint const& point, double tolerance,
                                            SimplePathPosition& position) const {
    return pretransformPickPosition(point, tolerance, IdTrans<DPoint>(), position);
}

// The segments are tried before the anchors, from the last segment (the closing one of a closed path)
// to the first, each by PBezier::findParameter started at 0.5: a parameter in [0, 1) is the answer, and
// exactly 1.0 is reported as the anchor where the segment ends. Only when no segment is within the
// tolerance are the anchors tried, from the last to the first.
SimplePath::Result SimplePath::pretransformPickPosition(DPoint const& point, double tolerance,
                                                        ArbTrans<DPoint> const& transform,
                                                        SimplePathPosition& position) const {
    SimplePathSegmentReader const reader(tripleList, closed, &transform);
    int const n = reader.numTriples();
    if (n == 0) {
        return Failure;
    }
    if (n > 1) {
        bool found = false;
        reader.backward([&](int s, PBezier const& b) {
            double const t = b.findParameter(point, 0.5, tolerance);
            if (t >= 0.0 && t < 1.0) {
                position = SimplePathPosition(s, t);
                found = true;
            } else if (t == 1.0) {
                position = SimplePathPosition(s + 1, 0.0);
                found = true;
            }
            return !found;
        });
        if (found) {
            return Success;
        }
    }
    SimplePathVertex* const anchor = pickIn(tripleList, reader, point, tolerance, Pass::AnchorsOnly);
    if (anchor == nullptr) {
        return Failure;
    }
    int index = n - 1;
    while (tripleList[index].anchor != anchor) {
        --index;
    }
    position = SimplePathPosition(index, 0.0);
    return Success;
}
