#pragma once

#include <list>
#include <vector>

#include "simplepath/foundation/PHashablePointer.h"
#include "simplepath/interfaces/ArbTrans.h"
#include "simplepath/interfaces/DPoint.h"
#include "simplepath/interfaces/DVector.h"
#include "simplepath/interfaces/IPoint.h"
#include "simplepath/interfaces/P2DTrans.h"
#include "simplepath/interfaces/PBezier.h"
#include "simplepath/path/SimplePathDPointVertex.h"
#include "simplepath/path/SimplePathLocationTriple.h"
#include "simplepath/path/SimplePathPosition.h"
#include "simplepath/path/SimplePathTripleList.h"
#include "simplepath/path/SimplePathVertex.h"
#include "simplepath/path/SimplePathVertexStorage.h"
#include "simplepath/path/SimplePathVertexTriple.h"

class SimplePathChangeInstruction;
class SimplePathDrawer;
class SimplePathDrawerCurveRep;
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
// anchor back to itself. The bounds, top and bottom, box test, closest-position, strict locate and
// curve-picking queries take any one-triple path, closed or not, as its anchor alone; length and line
// crossings follow the closing segment.
class SimplePath {
  public:
    // [[nodiscard]]: a result dropped on the floor is a failure nobody sees; a caller that truly does
    // not care casts it to void and says why.
    enum [[nodiscard]] Result{
        Success = 0,
        Failure = 1,
    };

    // ---- Life cycle (path/SimplePath.cpp) ----
    SimplePath() = default;
    // Deep copy: every vertex is duplicated, modes and the closed flag are copied.
    SimplePath(SimplePath const& other);
    // Deletes the current vertices, then deep-copies; assigning a path to itself changes nothing.
    SimplePath& operator=(SimplePath const& other);
    // Moves take the triples and their vertices without copying; the source is left empty.
    SimplePath(SimplePath&& other) noexcept;
    SimplePath& operator=(SimplePath&& other) noexcept;
    ~SimplePath() = default;

    // ---- Reading the model (path/SimplePath.cpp) ----
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

    // ---- Positions (path/SimplePath.cpp) ----
    // Stores (index, parameter) unchecked; the public way to make a position.
    Result makePosition(int index, double parameter, SimplePathPosition& out) const {
        out = SimplePathPosition(index, parameter);
        return Success;
    }
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

    // ---- Geometric queries: the point at a position (path/SimplePath+Locate.cpp) ----
    // Members named pretransform... map every control point through the transform first and evaluate
    // the curve from the mapped points, so that a non-affine transform bends the curve. Positions they
    // return still refer to this path's own segments.

    // The point at a position. Forgiving: a parameter within 1e-9 of 1.0 counts as 1.0, and a parameter
    // above 1.0 carries once into the next segment. Index n (closed) or n-1 (open) with parameter 0.0 is
    // the end anchor. A parameter that is not a finite number fails.
    // The common case, a place strictly inside a segment of a path of the library's own vertices, is
    // answered inline; the rest (anchors, snapping, carrying, refusals) by locateElsewhere.
    Result locatePosition(SimplePathPosition const& position, DPoint& out) const {
        int const index = position.getIndex();
        double const t = position.getParameter();
        int const n = tripleList.length();
        if (t > 0.0 && t < 1.0 && index >= 0 && index < (closed != 0 ? n : n - 1) &&
            tripleList.holdsPlainVertices()) {
            SimplePathVertexTriple const& from = tripleList[index];
            SimplePathVertexTriple const& to = tripleList[index + 1 == n ? 0 : index + 1];
            auto const at = [](SimplePathVertex const* v) -> DPoint const& {
                return static_cast<SimplePathDPointVertex const*>(v)->storedLocation();
            };
            out = PBezier(at(from.anchor), at(from.last), at(to.first), at(to.anchor)).bValue(t);
            return Success;
        }
        return locateElsewhere(position, out);
    }
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

    // ---- Geometric queries: extent, length, nearest point, crossings (path/SimplePath+Queries.cpp) ----
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

    // ---- Geometric queries: picking (path/SimplePath+Picking.cpp) ----
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

    // A signed distance from b to a counted in segments (path/SimplePath+Queries.cpp); on a closed path the
    // shorter way round, the wrapped way on a tie.
    double getInterPositionMetric(SimplePathPosition const& a, SimplePathPosition const& b) const;

    // ---- Closed flag (path/SimplePath.cpp) ----
    // Closes the path without touching its triples; nothing is recorded in `change`.
    Result setClosed(SimplePathChangeInstruction& change);
    // Stores the flag as given: 0 opens the path, any other value closes it and is kept as is.
    void setStrictClosed(int value) { closed = value; }

    // ---- Construction (path/SimplePath+Construction.cpp) ----
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
    // Stores `closedFlag`, then appends one triple per entry, recording its new vertices as added. Being
    // a recording member, it lives with the vertex editing (edit/SimplePath+VertexEditing.cpp).
    Result initialize(std::list<SimplePathLocationTriple> const& triples, int closedFlag,
                      SimplePathChangeInstruction& change);
    // Moves the existing vertices to the entries' locations, pairing entries and triples in order.
    // The entries' modes are ignored: every triple keeps its mode. A list of another length fails.
    Result setLocationTripleList(std::list<SimplePathLocationTriple> const& triples);
    // A closed four-triple circle, Smooth everywhere, starting at the top; the caller owns it.
    static SimplePath* createCircleSP(DPoint& center, double radius);

    // ---- Mementos (path/SimplePath+Mementos.cpp) ----
    // Records which vertex objects the path holds, in order, where each stands, the modes and the
    // closed flag, and stores a new memento through `out` for the caller to own and delete. Fails,
    // storing nothing, when `out` is null or memory is exhausted.
    Result createMemento(SimplePathMemento** out) const;
    // Puts back the very vertex objects the memento names, in its order, moves them to the recorded
    // locations and restores the modes and the closed flag. Vertices the path holds now but the memento
    // does not name leave the path without being deleted: their maker still owns them. Fails, with the
    // path untouched, only for a null memento or when memory is exhausted.
    Result undo(SimplePathMemento* memento);

    // ---- Vertex editing (edit/SimplePath+VertexEditing.cpp) ----
    // Members that renumber vertices record what they did in `change`, so that positions and vertex
    // pointers held elsewhere can follow; the others leave it untouched. Removed vertices are unlinked,
    // not deleted: whoever holds the change instruction decides their fate.

    // The triple an insertion at `position` would create, without touching the path: the de Casteljau
    // halves of the segment (a straight segment, handles within 1e-7 of their anchors, gives three
    // vertices at the curve point), mode Smooth. The new vertices belong to the caller. An unreadable
    // segment or a parameter that is not a finite number leaves `out` untouched.
    void createVertexTriple(SimplePathPosition const& position, SimplePathVertexTriple& out) const;
    // Inserts a new Smooth vertex at `position`, reshaping the two neighbouring handles so that the drawn
    // curve stays the same. The add-anchor transform is recorded first, and stays recorded even when the
    // call then fails. At the last vertex of an open path (parameter exactly 0) the vertex is duplicated
    // and the duplicate placed second to last.
    Result addVertexAtPosition(SimplePathPosition const& position, SimplePathChangeInstruction& change);
    // The same, inserting the caller's own triple (normally from createVertexTriple at the same position)
    // as it is; the path takes ownership of its vertices, which stay the caller's should the call fail.
    Result addVertexAtPositionEx(SimplePathPosition const& position, SimplePathVertexTriple const& triple,
                                 SimplePathChangeInstruction& change);
    // Removes the triple whose anchor is `anchor` (handles do not match). The last remaining vertex may be
    // deleted. The neighbours' handles stay where they are.
    Result deleteVertex(SimplePathVertex* const& anchor, SimplePathChangeInstruction& change);

    // ---- Whole triples and whole paths (edit/SimplePath+AdoptTriple.cpp, edit/SimplePath+DeletePath.cpp)
    // ---- Takes the caller's triple as it stands (its vertex objects, their locations and its mode) into the
    // path as triple `index`: n appends, a negative index inserts at the front. The path owns the vertices
    // afterwards. Fails, leaving them the caller's, for a null vertex, an index beyond n or a vertex the
    // path already holds. Nothing is recorded: the caller knows what it inserted.
    Result adoptTriple(SimplePathVertexTriple const& triple, int index);
    // Takes every triple out of the path, reporting their vertices and then the path itself as removed.
    // The vertices are unlinked, not freed, and the path object stays, empty (with its closed flag), for
    // its owner: an undo refills it from a memento. A null handle fails.
    static Result deleteSimplePath(PHashablePointer<SimplePath> const& path,
                                   SimplePathChangeInstruction& change);

    // ---- Mode setting (edit/SimplePath+ModeSetting.cpp) ----
    // Mode setters accept any of a triple's three vertices; `change` is accepted for a uniform signature.
    // Smooth: both handles turned onto one line through the anchor, each keeping its length.
    Result setSmoothMode(SimplePathVertex*& vertex, SimplePathChangeInstruction& change);
    // Symmetric: as Smooth, both handles taking the mean of their lengths.
    Result setSymmetricMode(SimplePathVertex*& vertex, SimplePathChangeInstruction& change);
    // Cusp: only the mode changes, unless both handles sit on the anchor; they are then pulled out.
    Result setCuspMode(SimplePathVertex*& vertex, SimplePathChangeInstruction& change);
    // Straight: both handles retracted onto the anchor, mode Cusp.
    Result setStraightMode(SimplePathVertex*& vertex, SimplePathChangeInstruction& change);
    // ---- Vertex editing, continued (edit/SimplePath+VertexEditing.cpp) ----
    // Moves the three vertices of the triple made of exactly `in`, `anchor` and `out` and sets its mode.
    // `flag` is accepted from callers that pass one; it changes nothing.
    Result changeTriple(SimplePathVertex* in, DPoint const& inLocation, SimplePathVertex* anchor,
                        DPoint const& anchorLocation, SimplePathVertex* out, DPoint const& outLocation,
                        SimplePathVertexTriple::VertexTripleMode mode, SimplePathChangeInstruction& change,
                        int flag = 0);
    // ---- Drag to point (edit/SimplePath+DragToPoint.cpp) ----
    // Reshapes the segment of `position` so that the curve passes through `target`. The whole path is
    // rebuilt: every vertex object is replaced (old pointers dangle) and every mode is re-inferred from
    // the handle directions.
    Result dragToPoint(SimplePathPosition const& position, DPoint const& target);

    // ---- Mapping every point (edit/SimplePath+VertexEditing.cpp) ----
    // Maps every point through the transform. Smooth and Symmetric vertices keep their mode even if the
    // transform bends their handles out of line; any other mode becomes Cusp.
    Result transform(ArbTrans<DPoint> const& mapping);
    // Maps every point p to centre + m * (p - centre); modes are kept.
    Result transform(P2DTrans const& m, DPoint const& centre);
    Result translate(DVector const& offset);
    // Scales every point about the origin.
    void scale(double xFactor, double yFactor);

    // ---- Split and join (edit/SimplePath+SplitJoin.cpp) ----
    // Cuts the path at its anchor `vertex`. An open path falls apart: the triples up to the anchor go to
    // `firstPath`, those from it on to `secondPath`, each piece ending in its own copy of the anchor
    // (`anchorA` with handle `handleA` for the first, `anchorB` with `handleB` for the second, or fresh
    // copies when `anchorA` is null); this path is left empty and `vertex` is reported removed. A closed
    // path is opened at the anchor instead and starts and ends there; the pieces are not used and the
    // given `anchorB` is ignored (it stays the caller's).
    Result splitVertex(SimplePathVertex* const& vertex, SimplePathChangeInstruction& change,
                       PHashablePointer<SimplePath>& firstPath, PHashablePointer<SimplePath>& secondPath,
                       SimplePathVertex* anchorA = nullptr, SimplePathVertex* handleA = nullptr,
                       SimplePathVertex* anchorB = nullptr, SimplePathVertex* handleB = nullptr);
    // Builds into `result` one open path running through `path1` to its end anchor `vertex1`, then by a
    // straight segment to `path2`'s end anchor `vertex2` and through `path2`; each input is reversed as
    // needed and left empty. Anchors at exactly the same place are merged into one vertex. Both inputs
    // must be open, distinct and different from `result`, and `path1` must have two triples or more.
    static Result join(PHashablePointer<SimplePath>& path1, SimplePathVertex* const& vertex1,
                       PHashablePointer<SimplePath>& path2, SimplePathVertex* const& vertex2,
                       SimplePathChangeInstruction& change, PHashablePointer<SimplePath>& result);

    // ---- Drawing through the host's drawer (interaction/SimplePath+Drawing.cpp) ----
    // Fills `rep` with every triple in path order (incoming handle, anchor, outgoing handle), then marks
    // it closed or open as the path is. With `modes` given, a new array of one mode per triple is stored
    // there for the caller to free (array delete); null if memory is exhausted.
    void initializeDrawerCurveRep(SimplePathDrawerCurveRep& rep,
                                  SimplePathVertexTriple::VertexTripleMode** modes) const;
    // Fills `rep` with triples from..to inclusive, each clamped into [0, n-1], without wrapping through
    // the end of a closed path and without marking the piece open or closed. The mode array has one
    // entry per triple added. An empty range after clamping (or an empty path) adds nothing and stores
    // a null array.
    void initializeDrawerCurveRep(SimplePathDrawerCurveRep& rep, int from, int to,
                                  SimplePathVertexTriple::VertexTripleMode** modes) const;
    // Draws the whole path as its permanent image through one curve rep, which is deleted afterwards. A
    // drawer that gives no rep draws nothing.
    void permanentDrawCurve(SimplePathDrawer& drawer) const;

  private:
    // ---- Helpers (path/SimplePath.cpp unless named) ----
    // Deep-copies `source` triple by triple onto the end of this path's list.
    void appendCopiesOf(SimplePathTripleList const& source);
    // locatePosition for everything but the common case it answers inline (path/SimplePath+Locate.cpp).
    Result locateElsewhere(SimplePathPosition const& position, DPoint& out) const;
    // Deletes every vertex and empties the list; the closed flag stays.
    void deleteAllTriples();
    // The index of the first triple holding `vertex` as first, anchor or last, or -1.
    int findTriple(SimplePathVertex const* vertex) const;
    // Construction helpers (path/SimplePath+Construction.cpp).
    // Makes three new vertices and inserts them as one triple before triple `index` (n appends).
    // Returns false, with the path unchanged and nothing leaked, when memory is exhausted.
    bool insertNewTriple(int index, DPoint const& first, DPoint const& anchor, DPoint const& last,
                         SimplePathVertexTriple::VertexTripleMode mode, SimplePathVertexTriple& made);
    template <class Points> Result appendRetractedTriples(Points const& points);
    // Editing helpers (edit/SimplePath+VertexEditing.cpp, edit/SimplePath+ModeSetting.cpp). The index of the
    // triple whose anchor is `anchor`, or -1.
    int findAnchor(SimplePathVertex const* anchor) const;
    // The neighbouring triples of triple `index`, or -1 where there is none (open ends, one triple).
    int previousTriple(int index) const;
    int nextTriple(int index) const;
    // The shared part of addVertexAtPosition and addVertexAtPositionEx.
    Result insertAtPosition(SimplePathPosition const& position, SimplePathVertexTriple const* given,
                            SimplePathChangeInstruction& change);
    // Turns both handles of the triple holding `vertex` onto one line through its anchor (the Smooth and
    // Symmetric setters).
    Result alignHandles(SimplePathVertex* vertex, bool symmetric);

    SimplePathTripleList tripleList;
    int closed = 0;
    // Where the vertices this path makes are allocated (path order, few heap blocks).
    SimplePathVertexStorage vertexStorage;
};
