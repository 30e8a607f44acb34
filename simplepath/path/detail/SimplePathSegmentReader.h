#pragma once

#include <typeinfo>

#include "simplepath/interfaces/ArbTrans.h"
#include "simplepath/interfaces/DPoint.h"
#include "simplepath/interfaces/PBezier.h"
#include "simplepath/interfaces/detail/Tolerances.h"
#include "simplepath/path/SimplePathDPointVertex.h"
#include "simplepath/path/SimplePathTripleList.h"
#include "simplepath/path/SimplePathVertex.h"

// Reads the control points of a path's segments, either as stored or mapped through a point
// transform, for the query members of SimplePath. Not part of the library's interface.
//
// Segment s of a path of n triples is the cubic (anchor s, last s, first j, anchor j) with j = s + 1,
// or j = 0 for the closing segment of a closed path. A handle pointer that is null reads as a retracted
// handle (the anchor's location) and a null anchor as the origin, so hand-built triples cannot crash
// a query.
//
// Reading: when the list holds only the library's own vertices (SimplePathTripleList::holdsPlainVertices)
// their stored locations are read directly, with no type test or null test per vertex; otherwise each
// vertex goes through locationOf.
//
// Mapping: the identity transform is recognised by its exact type and skipped, which saves a virtual
// call per control point in the commonest case; a class derived from IdTrans may map differently and
// is therefore called like any other transform.
class SimplePathSegmentReader {
  public:
    // `transform` may be null: the stored locations are used.
    SimplePathSegmentReader(SimplePathTripleList const& triples, int closedFlag,
                            ArbTrans<DPoint> const* transform = nullptr)
        : list(triples), count(triples.length()), closed(closedFlag != 0),
          plain(triples.holdsPlainVertices()),
          map(transform != nullptr && typeid(*transform) != typeid(IdTrans<DPoint>) ? transform : nullptr) {}

    int numTriples() const { return count; }
    bool isClosed() const { return closed; }
    // n - 1 for an open path, n for a closed one (0 for an empty path either way).
    int segmentCount() const { return count == 0 ? 0 : (closed ? count : count - 1); }
    // The triple where segment s ends.
    int nextTriple(int s) const { return s + 1 == count ? 0 : s + 1; }
    // The triple whose anchor ends the path: triple 0 again when closed, the last one when open.
    int endTriple() const { return closed ? 0 : count - 1; }

    // False for the identity, whose mapping is skipped.
    bool mapsPoints() const { return map != nullptr; }
    DPoint mapped(DPoint const& p) const { return map == nullptr ? p : map->transform(p); }
    DPoint anchor(int i) const { return mapped(plain ? Plain::anchor(list[i]) : anchorLocation(list[i])); }

    // Segment s with mapped control points; s must be in [0, segmentCount()).
    PBezier segment(int s) const { return segment(list[s], list[nextTriple(s)]); }
    // The mapped segment from the anchor of `from` to the anchor of `to`.
    PBezier segment(SimplePathVertexTriple const& from, SimplePathVertexTriple const& to) const {
        if (plain) {
            return {mapped(Plain::anchor(from)), mapped(Plain::handle(from.last, {})),
                    mapped(Plain::handle(to.first, {})), mapped(Plain::anchor(to))};
        }
        DPoint const a0 = anchorLocation(from);
        DPoint const a1 = anchorLocation(to);
        return {mapped(a0), mapped(handleLocation(from.last, a0)), mapped(handleLocation(to.first, a1)),
                mapped(a1)};
    }

    // Calls visit(s, segment) for every segment from the first to the last (the closing one of a closed
    // path last) until visit returns false. The shared anchor of neighbours is read and mapped once.
    template <class Visit> void forward(Visit&& visit) const {
        if (plain) {
            forwardReading<Plain>(visit);
        } else {
            forwardReading<Checked>(visit);
        }
    }

    // The same from the last segment down to the first.
    template <class Visit> void backward(Visit&& visit) const {
        if (plain) {
            backwardReading<Plain>(visit);
        } else {
            backwardReading<Checked>(visit);
        }
    }

    // Calls visit(s, segment), in path order, for every segment whose two mapped handles pass
    // need(lastOfStart, firstOfEnd); the anchors are read only for those. Meant for walks in which the
    // anchors are already accounted for and most segments can be ruled out by their handles alone.
    template <class Need, class Visit> void forwardByHandles(Need&& need, Visit&& visit) const {
        if (map == nullptr) {
            forwardByHandlesWith([](DPoint const& p) { return p; }, need, visit);
        } else {
            forwardByHandlesWith([this](DPoint const& p) { return map->transform(p); }, need, visit);
        }
    }

    // Calls visit(i, mappedAnchor) for every triple's anchor, front to back.
    template <class Visit> void anchors(Visit&& visit) const {
        for (int i = 0; i < count; ++i) {
            visit(i, anchor(i));
        }
    }

    // The location of a vertex of this list (not null).
    DPoint location(SimplePathVertex const* vertex) const {
        return plain ? Plain::location(vertex) : locationOf(vertex);
    }

    static DPoint anchorLocation(SimplePathVertexTriple const& triple) {
        return triple.anchor == nullptr ? DPoint() : locationOf(triple.anchor);
    }
    static DPoint handleLocation(SimplePathVertex const* handle, DPoint const& anchorAt) {
        return handle == nullptr ? anchorAt : locationOf(handle);
    }
    // The library's own vertices are read directly: an indirect call per control point costs more than
    // the rest of a long walk together. Any other vertex class answers through getLocation.
    static DPoint locationOf(SimplePathVertex const* vertex) {
        std::type_info const& type = typeid(*vertex);
        if (&type == &typeid(SimplePathDPointVertex) || type == typeid(SimplePathDPointVertex)) {
            return static_cast<SimplePathDPointVertex const*>(vertex)->storedLocation();
        }
        return vertex->getLocation();
    }

  private:
    // How a walk reads locations: Plain for a list of the library's own vertices only, Checked otherwise.
    struct Plain {
        static DPoint const& location(SimplePathVertex const* vertex) {
            return static_cast<SimplePathDPointVertex const*>(vertex)->storedLocation();
        }
        static DPoint anchor(SimplePathVertexTriple const& triple) { return location(triple.anchor); }
        static DPoint handle(SimplePathVertex const* handle, DPoint const&) { return location(handle); }
    };
    struct Checked {
        static DPoint anchor(SimplePathVertexTriple const& triple) { return anchorLocation(triple); }
        static DPoint handle(SimplePathVertex const* handle, DPoint const& anchorAt) {
            return handleLocation(handle, anchorAt);
        }
    };

    template <class Read, class Visit> void forwardReading(Visit& visit) const {
        if (map == nullptr) {
            forwardWith<Read>([](DPoint const& p) { return p; }, visit);
        } else {
            forwardWith<Read>([this](DPoint const& p) { return map->transform(p); }, visit);
        }
    }
    template <class Read, class Visit> void backwardReading(Visit& visit) const {
        if (map == nullptr) {
            backwardWith<Read>([](DPoint const& p) { return p; }, visit);
        } else {
            backwardWith<Read>([this](DPoint const& p) { return map->transform(p); }, visit);
        }
    }

    // The walks proper, with the reading and the mapping fixed at compile time so that the common case
    // costs nothing in the loop.
    template <class Read, class Map, class Visit> void forwardWith(Map const& mapPoint, Visit& visit) const {
        int const segments = segmentCount();
        if (segments <= 0) {
            return;
        }
        DPoint raw = Read::anchor(list[0]);
        DPoint start = mapPoint(raw);
        for (int s = 0; s < segments; ++s) {
            SimplePathVertexTriple const& from = list[s];
            SimplePathVertexTriple const& to = list[nextTriple(s)];
            DPoint const rawEnd = Read::anchor(to);
            DPoint const end = mapPoint(rawEnd);
            PBezier const bezier(start, mapPoint(Read::handle(from.last, raw)),
                                 mapPoint(Read::handle(to.first, rawEnd)), end);
            if (!visit(s, bezier)) {
                return;
            }
            raw = rawEnd;
            start = end;
        }
    }

    template <class Read, class Map, class Visit> void backwardWith(Map const& mapPoint, Visit& visit) const {
        int const segments = segmentCount();
        if (segments <= 0) {
            return;
        }
        DPoint raw = Read::anchor(list[nextTriple(segments - 1)]);
        DPoint end = mapPoint(raw);
        for (int s = segments - 1; s >= 0; --s) {
            SimplePathVertexTriple const& from = list[s];
            SimplePathVertexTriple const& to = list[nextTriple(s)];
            DPoint const rawStart = Read::anchor(from);
            DPoint const start = mapPoint(rawStart);
            PBezier const bezier(start, mapPoint(Read::handle(from.last, rawStart)),
                                 mapPoint(Read::handle(to.first, raw)), end);
            if (!visit(s, bezier)) {
                return;
            }
            raw = rawStart;
            end = start;
        }
    }

    template <class Map, class Need, class Visit>
    void forwardByHandlesWith(Map const& mapPoint, Need& need, Visit& visit) const {
        int const segments = segmentCount();
        for (int s = 0; s < segments; ++s) {
            SimplePathVertexTriple const& from = list[s];
            SimplePathVertexTriple const& to = list[nextTriple(s)];
            if (from.last == nullptr || to.first == nullptr ||
                need(mapPoint(location(from.last)), mapPoint(location(to.first)))) {
                visit(s, segment(s));
            }
        }
    }

    SimplePathTripleList const& list;
    int count;
    bool closed;
    bool plain;
    ArbTrans<DPoint> const* map;
};

// The control points' bounding box, the cheap outer bound of a segment: the curve lies in the convex
// hull of its control points, and its evaluated points leave that box by no more than the rounding of
// the Bernstein sum, a few ulps of the largest coordinate. The box is widened by a margin that covers
// that rounding many times over, so the bounds below hold for computed points, not only for exact ones.
struct SimplePathControlBox {
    double minX, minY, maxX, maxY;

    explicit SimplePathControlBox(PBezier const& b) : minX(b[0].x), minY(b[0].y), maxX(b[0].x), maxY(b[0].y) {
        for (int i = 1; i < 4; ++i) {
            minX = b[i].x < minX ? b[i].x : minX;
            maxX = b[i].x > maxX ? b[i].x : maxX;
            minY = b[i].y < minY ? b[i].y : minY;
            maxY = b[i].y > maxY ? b[i].y : maxY;
        }
        double const ax = -minX > maxX ? -minX : maxX;
        double const ay = -minY > maxY ? -minY : maxY;
        double const slack = simplepath_tolerance::kRoundingGuard * (ax > ay ? ax : ay);
        minX -= slack;
        minY -= slack;
        maxX += slack;
        maxY += slack;
    }

    // A lower bound of the squared distance from p to any evaluated point of the curve, as the caller
    // computes it (coordinate differences squared and summed). A NaN anywhere gives a gap of zero, so a
    // caller skipping on `bound > best` never skips because of bad input.
    double squaredDistanceBound(DPoint const& p) const {
        double const dx = gap(minX - p.x, p.x - maxX);
        double const dy = gap(minY - p.y, p.y - maxY);
        return dx * dx + dy * dy;
    }

    // Whether some point strictly inside the open box (lo, hi) may lie on the curve.
    bool mayMeetOpenBox(DPoint const& lo, DPoint const& hi) const {
        return !(maxX <= lo.x || maxY <= lo.y || minX >= hi.x || minY >= hi.y);
    }

  private:
    static double gap(double below, double above) {
        return below > 0.0 ? below : (above > 0.0 ? above : 0.0);
    }
};
