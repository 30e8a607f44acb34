#pragma once

#include <list>
#include <vector>

#include "simplepath/foundation/PHashablePointer.h"
#include "simplepath/interfaces/ArbTrans.h"
#include "simplepath/interfaces/DPoint.h"
#include "simplepath/interfaces/IPoint.h"
#include "simplepath/path/SimplePathLocationTriple.h"
#include "simplepath/path/SimplePathPosition.h"
#include "simplepath/path/SimplePathTripleList.h"
#include "simplepath/path/SimplePathVertex.h"
#include "simplepath/path/SimplePathVertexTriple.h"

class SimplePathChangeInstruction;
class SimplePathMemento;

struct SimplePathFastSession;

// One editable outline: an open or closed chain of vertex triples joined by cubic Bezier segments.
//
// Segment i runs from the anchor of triple i through its outgoing handle and the incoming handle of
// triple i+1 to the anchor of triple i+1. An open path of n triples has n-1 segments; a closed one has
// n, the last running from triple n-1 back to triple 0. The incoming handle of an open path's first
// triple and the outgoing handle of its last exist but shape nothing.
//
// Ownership. The path owns every vertex its triples refer to and deletes them when it dies or is
// assigned to; each vertex belongs to exactly one triple of one path. Copies are deep: a copied path
// owns new vertices at the same locations.
//
// The empty path is valid, and may still carry a closed flag; members that need triples report it as
// Failure. A one-triple path is a single vertex: open, it has no segment; closed, one segment from the
// anchor back to itself.
class SimplePath {
  public:
    enum Result {
        Success = 0,
        Failure = 1,
    };

    // ---- Life cycle ----
    SimplePath() = default;
    // Deep copy: every vertex is duplicated, modes and the closed flag are copied.
    SimplePath(SimplePath const& other);
    // Deletes the current vertices, then deep-copies; assigning a path to itself changes nothing.
    SimplePath& operator=(SimplePath const& other);
    // Moves take the triples and their vertices without copying; the source is left empty.
    SimplePath(SimplePath&& other) noexcept;
    SimplePath& operator=(SimplePath&& other) noexcept;
    ~SimplePath() = default;

    // ---- Reading the model ----
    int numTriples() const { return tripleList.length(); }
    // The closed flag exactly as stored (not normalised to 0 or 1).
    int isClosedSimplePath() const { return closed; }
    SimplePathTripleList const& getTripleList() const { return tripleList; }
    Result getTriple(int index, SimplePathVertexTriple& out) const;

    // Finds the first triple, front to back, holding `vertex` as its first, anchor or last vertex
    // (by address). A handle finds the triple of its anchor.
    Result getVertexInfo(SimplePathVertex* vertex, SimplePathVertex*& first, SimplePathVertex*& anchor,
                         SimplePathVertex*& last, SimplePathVertexTriple::VertexTripleMode& mode) const;
    Result getVertexInfo(SimplePathVertex* vertex, SimplePathVertexTriple& triple, int& index) const;
    // isFirst / isLast are 1 only for the first / last triple of an open path.
    Result getVertexInfo(SimplePathVertex* vertex, SimplePathVertexTriple& triple, int& isFirst,
                         int& isLast) const;

    // Appends the current locations and modes, one entry per triple in path order; the closed flag is
    // not part of it. The list is not cleared first.
    Result getLocationTripleList(std::list<SimplePathLocationTriple>& out) const;

    // ---- Positions ----
    // Stores (index, parameter) unchecked; the public way to make a position.
    Result makePosition(int index, double parameter, SimplePathPosition& out) const;
    // Empty paths store the invalid position (-1, 0.0) and fail.
    Result getBeginPosition(SimplePathPosition& out) const;
    Result getArbitraryPosition(SimplePathPosition& out) const;
    Result getEndPosition(SimplePathPosition& out) const;
    Result getLastTriplePosition(SimplePathPosition& out) const;
    // The position of the triple whose anchor is `vertex` (handles do not count).
    Result getAnchorPosition(SimplePathVertex* vertex, SimplePathPosition& out) const;
    // Appends (i, 0.0) for every triple; the Ex form adds (n, 0.0) for the closing anchor of a closed path.
    Result getAnchorPositions(std::list<SimplePathPosition>& out) const;
    Result getAnchorPositionsEx(std::list<SimplePathPosition>& out) const;
    // The anchor nearer along the segment: the segment's start below parameter 0.5, its end from 0.5 on.
    // Any index outside the triples, open path or closed, falls back to the first anchor.
    Result getNearestAnchor(SimplePathPosition const& position, SimplePathVertex*& anchor, int& index) const;
    Result getNearestAnchor(SimplePathPosition const& position, SimplePathVertex*& anchor) const;

    // Every pair of paths may be joined or combined.
    static int areCompatible(PHashablePointer<SimplePath> const& a, PHashablePointer<SimplePath> const& b);

    // ---- Geometric queries ----
    // Members named pretransform... map every control point through the transform first and evaluate
    // the curve from the mapped points, so that a non-affine transform bends the curve. Positions they
    // return still refer to this path's own segments.

    // The point at a position. Forgiving: a parameter within 1e-9 of 1.0 counts as 1.0, and a parameter
    // above 1.0 carries once into the next segment. Index n (closed) or n-1 (open) with parameter 0.0 is
    // the end anchor. A parameter that is not a finite number fails.
    Result locatePosition(SimplePathPosition const& position, DPoint& out) const;
    Result getSimplePathPositionLocation(SimplePathPosition const& position, DPoint& out) const;
    // The point at a position of the mapped curve. Strict: no tolerance, no carrying. A one-triple path
    // gives its mapped anchor for any position.
    Result pretransformLocatePosition(ArbTrans<DPoint> const& transform, SimplePathPosition const& position,
                                      DPoint& out) const;

    // A session caches one iterator per triple for callers that locate many positions on an unchanged
    // path. Null when it cannot be allocated. Stop the session before editing the path.
    SimplePathFastSession* startFastSession();
    // Frees the session; null is ignored.
    void stopFastSession(SimplePathFastSession* session);
    // Triple `index` through the session, or through getTriple when the session is null or stale.
    Result fastGetTriple(SimplePathFastSession* session, int index, SimplePathVertexTriple& out) const;
    // The same result as pretransformLocatePosition.
    Result fastPretransformLocatePosition(SimplePathFastSession* session, ArbTrans<DPoint> const& transform,
                                          SimplePathPosition const& position, DPoint& out) const;

    // The exact extent of the curve (not of its handles). An empty path fails and leaves the outputs at
    // +2147483647.0 (minima) and -2147483647.0 (maxima); the Ex form uses the largest double instead.
    Result getMinMax(double& minX, double& minY, double& maxX, double& maxY) const;
    Result pretransformGetMinMax(ArbTrans<DPoint> const& transform, double& minX, double& minY, double& maxX,
                                 double& maxY) const;
    Result pretransformGetMinMaxEx(ArbTrans<DPoint> const& transform, double& minX, double& minY,
                                   double& maxX, double& maxY) const;
    // The curve points of greatest and of least y; among equal y the earliest segment's.
    Result getTopBottom(DPoint& top, DPoint& bottom) const;
    // The arc length of the mapped curve; 0.0 for a path without segments.
    void pretransformLength(ArbTrans<DPoint> const& transform, double& length) const;
    // 1 when a point of the mapped curve's flattening (tolerance 1.0) lies strictly inside the box.
    int pretransformInBox(ArbTrans<DPoint> const& transform, DPoint const& boxMin,
                          DPoint const& boxMax) const;

    // The position of the curve nearest the point, and its squared distance. Ties go to the lowest
    // segment, so an anchor hit exactly is reported as (s, 1.0) of the segment ending there. A one-triple
    // path answers (0, 0.0) at squared distance 0.0 whatever the point.
    Result findClosestPosition(DPoint const& point, SimplePathPosition& position) const;
    Result findClosestPosition(DPoint const& point, SimplePathPosition& position,
                               double& squaredDistance) const;
    // The same on the mapped curve by sampling each segment at t = 0.0, 0.1, ... (eleven samples).
    Result pretransformFindClosestPosition(DPoint const& point, ArbTrans<DPoint> const& transform,
                                           SimplePathPosition& position) const;
    Result pretransformFindClosestPosition(DPoint const& point, ArbTrans<DPoint> const& transform,
                                           SimplePathPosition& position, double& squaredDistance) const;
    // Appends the positions where the mapped curve crosses the infinite line through a and b: the end
    // anchor first when it lies within 1.0 of the line, then the segments from the last to the first.
    Result pretransformFindIntersections(DPoint const& a, DPoint const& b, ArbTrans<DPoint> const& transform,
                                         std::list<SimplePathPosition>& out) const;

    // The vertex strictly within `tolerance` of the point: anchors first, then handles, each pass from
    // the last triple to the first.
    Result pickVertex(DPoint const& point, double tolerance, SimplePathVertex*& vertex) const;
    Result pretransformPickVertex(DPoint const& point, double tolerance, ArbTrans<DPoint> const& transform,
                                  SimplePathVertex*& vertex) const;
    Result pretransformPickAnchor(DPoint const& point, double tolerance, ArbTrans<DPoint> const& transform,
                                  SimplePathVertex*& vertex) const;
    // The position of the curve within `tolerance` of the point: segments first (last to first), then
    // anchors.
    Result pickPosition(DPoint const& point, double tolerance, SimplePathPosition& position) const;
    Result pretransformPickPosition(DPoint const& point, double tolerance, ArbTrans<DPoint> const& transform,
                                    SimplePathPosition& position) const;

    // A signed distance from b to a counted in segments; on a closed path the shorter way round, the
    // wrapped way on a tie.
    double getInterPositionMetric(SimplePathPosition const& a, SimplePathPosition const& b) const;

    // ---- Closed flag ----
    // Closes the path without touching its triples; nothing is recorded in `change`.
    Result setClosed(SimplePathChangeInstruction& change);
    // Stores the flag as given: 0 opens the path, any other value closes it and is kept as is.
    void setStrictClosed(int value) { closed = value; }

    // ---- Construction ----
    // New vertices are SimplePathDPointVertex objects owned by the path. Everything appends; nothing
    // clears the path first.

    // One triple with both handles retracted onto `point`, mode Cusp.
    Result addSingle(DPoint const& point, SimplePathVertex*& anchor);
    Result addSingle(IPoint const& point, SimplePathVertex*& anchor);
    // One Cusp triple with all three vertices at each point, in order. The closed flag is left alone.
    Result addPoints(std::list<DPoint> const& points);
    Result addPoints(std::vector<DPoint> const& points);
    // Appends a triple at the given locations with the mode as given.
    Result addTriple(DPoint const& first, SimplePathVertex*& firstVertex, DPoint const& anchor,
                     SimplePathVertex*& anchorVertex, DPoint const& last, SimplePathVertex*& lastVertex,
                     SimplePathVertexTriple::VertexTripleMode mode);
    // Inserts a triple so that it becomes triple `index`: index n appends, a negative index inserts at
    // the front, an index beyond n fails.
    Result insertTriple(DPoint const& first, SimplePathVertex*& firstVertex, DPoint const& anchor,
                        SimplePathVertex*& anchorVertex, DPoint const& last, SimplePathVertex*& lastVertex,
                        SimplePathVertexTriple::VertexTripleMode mode, int index);
    // Stores `closedFlag`, then appends one triple per entry, recording its new vertices as added.
    Result initialize(std::list<SimplePathLocationTriple> const& triples, int closedFlag,
                      SimplePathChangeInstruction& change);
    // Moves the existing vertices to the entries' locations, pairing entries and triples in order.
    // The entries' modes are ignored: every triple keeps its mode. A list of another length fails.
    Result setLocationTripleList(std::list<SimplePathLocationTriple> const& triples);
    // A closed four-triple circle, Smooth everywhere, starting at the top; the caller owns it.
    static SimplePath* createCircleSP(DPoint& center, double radius);

    // ---- Mementos ----
    // Records which vertex objects the path holds, in order, where each stands, the modes and the
    // closed flag, and stores a new memento through `out` for the caller to own and delete. Fails,
    // storing nothing, when `out` is null or memory is exhausted.
    Result createMemento(SimplePathMemento** out) const;
    // Puts back the very vertex objects the memento names, in its order, moves them to the recorded
    // locations and restores the modes and the closed flag. Vertices the path holds now but the memento
    // does not name leave the path without being deleted: their maker still owns them. Fails, with the
    // path untouched, only for a null memento or when memory is exhausted.
    Result undo(SimplePathMemento* memento);

  private:
    // Deep-copies `source` triple by triple onto the end of this path's list.
    void appendCopiesOf(SimplePathTripleList const& source);
    // Deletes every vertex and empties the list; the closed flag stays.
    void deleteAllTriples();
    // The index of the first triple holding `vertex` as first, anchor or last, or -1.
    int findTriple(SimplePathVertex const* vertex) const;
    // Makes three new vertices and inserts them as one triple before triple `index` (n appends).
    // Returns false, with the path unchanged and nothing leaked, when memory is exhausted.
    bool insertNewTriple(int index, DPoint const& first, DPoint const& anchor, DPoint const& last,
                         SimplePathVertexTriple::VertexTripleMode mode, SimplePathVertexTriple& made);
    template <class Points> Result appendRetractedTriples(Points const& points);

    SimplePathTripleList tripleList;
    int closed = 0;
};
