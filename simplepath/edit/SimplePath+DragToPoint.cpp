// SimplePath members: dragToPoint, reshaping one segment through a point with the legacy curve's drag.

#include <cmath>
#include <list>
#include <new>
#include <vector>

#include "simplepath/legacy/CBezier.h"
#include "simplepath/path/SimplePath.h"

// The path goes out to an array of legacy Bezier points (before-handle, anchor, after-handle), one per
// triple; a closed path gets a copy of its first point at the end so that the closing segment has an
// entry after it, and its before-handle carries the closing segment's P2. The segment is dragged there
// and the whole path rebuilt from the array: new vertices, modes inferred from the handle directions.
// The rebuilt path is made before the old one is let go, so a failure leaves the path as it was.
SimplePath::Result SimplePath::dragToPoint(SimplePathPosition const& position, DPoint const& target) {
    int index = 0;
    double t = 0.0;
    position.getValues(index, t);
    if (!std::isfinite(target.x) || !std::isfinite(target.y)) {
        return Failure;
    }
    std::list<SimplePathLocationTriple> locations;
    std::vector<BPOINT> points;
    DPoint located;
    try {
        // Reading the locations always succeeds.
        (void)getLocationTripleList(locations);
        points.reserve(locations.size() + 1);
        for (SimplePathLocationTriple const& entry : locations) {
            points.push_back(BPOINT{entry.first, entry.anchor, entry.last});
        }
        bool const extended =
            closed != 0 && points.size() >= 2 && points.front().anchor != points.back().anchor;
        if (extended) {
            points.push_back(points.front());
        }
        if (index < 0 || static_cast<std::size_t>(index) + 1 >= points.size() ||
            getSimplePathPositionLocation(position, located) != Success) {
            return Failure;
        }

        CBezier segment(points[static_cast<std::size_t>(index)], points[static_cast<std::size_t>(index) + 1]);
        segment.DragToPoint(segment.GetNearestCurvePointT(located), target);
        segment.GetBPoints(points[static_cast<std::size_t>(index)],
                           points[static_cast<std::size_t>(index) + 1]);
        // A drag at an end of the segment moves that anchor; the closing copy and the first entry are one
        // anchor, so whichever moved carries the other along and the path comes back closed.
        if (extended && index == 0) {
            points.back().anchor = points.front().anchor;
        } else if (extended && static_cast<std::size_t>(index) + 2 == points.size()) {
            points.front().anchor = points.back().anchor;
        }

        bool const closeIt = points.size() > 1 && points.front().anchor == points.back().anchor;
        std::size_t const count = closeIt ? points.size() - 1 : points.size();
        SimplePath rebuilt;
        rebuilt.tripleList.reserve(static_cast<int>(count));
        SimplePathVertex* first = nullptr;
        SimplePathVertex* anchor = nullptr;
        SimplePathVertex* last = nullptr;
        for (std::size_t k = 0; k < count; ++k) {
            BPOINT const& p = points[k];
            DPoint const before = closeIt && k == 0 ? points.back().before : p.before;
            if (rebuilt.addTriple(before, first, p.anchor, anchor, p.after, last,
                                  SimplePathVertexTriple::inferTripleMode(before, p.anchor, p.after)) !=
                Success) {
                return Failure;
            }
        }
        rebuilt.closed = closeIt ? 1 : closed;
        *this = std::move(rebuilt);
    } catch (std::bad_alloc const&) {
        return Failure;
    }
    return Success;
}
