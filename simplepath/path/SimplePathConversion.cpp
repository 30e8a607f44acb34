#include "simplepath/path/SimplePathConversion.h"

#include <new>

#include "simplepath/path/SimplePath.h"

namespace {

SimplePath::Result appendTriple(SimplePath& path, DPoint const& first, DPoint const& anchor,
                                DPoint const& last, SimplePathVertexTriple::VertexTripleMode mode) {
    SimplePathVertex* f = nullptr;
    SimplePathVertex* a = nullptr;
    SimplePathVertex* l = nullptr;
    return path.addTriple(first, f, anchor, a, last, l, mode);
}

SimplePathVertexTriple::VertexTripleMode inferred(DPoint const& first, DPoint const& anchor,
                                                  DPoint const& last) {
    return SimplePathVertexTriple::inferTripleMode(first, anchor, last);
}

} // namespace

long createBezierCurve(SimplePath const& path, ArbTrans<DPoint> const& transform, PBezierCurve& curve) {
    PList<PBezier>& segments = curve.getSegments();
    SimplePathTripleList const& triples = path.getTripleList();
    int const n = triples.length();
    auto const map = [&transform](SimplePathVertex const* v) {
        return transform.transform(v->getLocation());
    };
    if (n < 2) {
        DPoint const point = transform.transform(n == 1 ? triples[0].anchor->getLocation() : DPoint());
        // The closed flag is not copied here: there is no segment it could refer to.
        segments.add(PBezier(point, point, point, point));
        return 0;
    }
    // The segment that ends a walk step runs into (a, b): for a closed path the closing segment runs
    // into triple 0; an open path's last triple only ends the segment before it.
    bool const closed = path.isClosedSimplePath() != 0;
    SimplePathVertexTriple const& closing = closed ? triples[0] : triples[n - 1];
    DPoint a = map(closing.first);
    DPoint b = map(closing.anchor);
    // Walking backwards and inserting at the front leaves the segments in path order, ahead of
    // whatever the curve held before.
    for (int i = closed ? n - 1 : n - 2; i >= 0; --i) {
        SimplePathVertexTriple const& t = triples[i];
        DPoint const anchor = map(t.anchor);
        segments.insert(PBezier(anchor, map(t.last), a, b), 0);
        a = map(t.first);
        b = anchor;
    }
    curve.setStrictIsClosed(path.isClosedSimplePath());
    return 0;
}

long createBezierCurve(SimplePath const& path, PBezierCurve& curve) {
    return createBezierCurve(path, IdTrans<DPoint>(), curve);
}

long createSimplePath(PBezierCurve const& curve, PHashablePointer<SimplePath>& pathPointer, int forceClosed) {
    if (pathPointer == nullptr) {
        return kSimplePathGenericFailure;
    }
    PList<PBezier> const& segments = curve.getSegments();
    if (segments.length() == 0) {
        return 0;
    }
    SimplePath& path = *pathPointer;
    bool const closed = curve.strictIsClosed() != 0 || forceClosed != 0;
    PBezier prev = *segments.rbegin();
    bool firstSegment = true;
    for (PBezier const& cur : segments) {
        // An open curve's first anchor has nothing coming in: its incoming handle is retracted.
        DPoint const& incoming = firstSegment && !closed ? cur[0] : prev[2];
        // Only an exhausted heap fails an append; these conversion codes report only a missing path.
        (void)appendTriple(path, incoming, cur[0], cur[1], SimplePathVertexTriple::Cusp);
        prev = cur;
        firstSegment = false;
    }
    if (closed) {
        path.setStrictClosed(1);
    } else {
        // Only an exhausted heap fails an append; these conversion codes report only a missing path.
        (void)appendTriple(path, prev[2], prev[3], prev[3], SimplePathVertexTriple::Cusp);
    }
    return 0;
}

long createSimplePath(PBezierCurve const& curve, PHashablePointer<SimplePath>& path) {
    return createSimplePath(curve, path, 0);
}

long createSimplePaths(PList<PBezierCurve>& curves, std::list<PHashablePointer<SimplePath>>& paths,
                       int forceClosed) {
    for (PBezierCurve const& curve : curves) {
        PList<PBezier> const& segments = curve.getSegments();
        long const m = segments.length();
        if (m == 0) {
            continue;
        }
        auto* const path = new (std::nothrow) SimplePath;
        if (path == nullptr) {
            return kSimplePathGenericFailure;
        }
        PBezier const& head = *segments.begin();
        PBezier const& tail = *segments.rbegin();
        PBezier const* prev = &tail;
        bool firstSegment = true;
        for (PBezier const& cur : segments) {
            DPoint const& incoming = firstSegment && forceClosed == 0 ? head[0] : (*prev)[2];
            // Only an exhausted heap fails an append; these conversion codes report only a missing path.
            (void)appendTriple(*path, incoming, cur[0], cur[1], inferred(incoming, cur[0], cur[1]));
            prev = &cur;
            firstSegment = false;
        }
        // The curve closes on itself when its start equals the last segment's second control point, not
        // its end point. A curve that merely returns to its start point stays open, with its first and
        // last anchors coinciding.
        bool const closesOnItself = forceClosed == 0 && m != 1 && head[0] == tail[2];
        if (forceClosed == 0 && !closesOnItself) {
            // Only an exhausted heap fails an append; these conversion codes report only a missing path.
            (void)appendTriple(*path, tail[2], tail[3], tail[3], inferred(tail[2], tail[3], tail[3]));
        }
        if (forceClosed != 0 || closesOnItself) {
            path->setStrictClosed(1);
        }
        paths.push_back(path);
    }
    return 0;
}
