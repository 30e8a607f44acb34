#pragma once

#include <list>
#include <vector>

#include "simplepath/foundation/PHashablePointer.h"
#include "simplepath/interfaces/DPoint.h"
#include "simplepath/interfaces/IPoint.h"
#include "simplepath/path/SimplePathLocationTriple.h"
#include "simplepath/path/SimplePathPosition.h"
#include "simplepath/path/SimplePathTripleList.h"
#include "simplepath/path/SimplePathVertex.h"
#include "simplepath/path/SimplePathVertexTriple.h"

class SimplePathChangeInstruction;
class SimplePathMemento;

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
