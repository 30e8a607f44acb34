#pragma once

#include <cstddef>
#include <cstdint>
#include <list>
#include <vector>

#include "simplepath/interfaces/DPoint.h"
#include "simplepath/interfaces/PBezier.h"
#include "simplepath/path/SimplePath.h"
#include "simplepath/path/SimplePathPosition.h"
#include "simplepath/path/SimplePathVertex.h"

// A bounding-box hierarchy over one path, for a host that asks many geometric questions of a long path
// that does not change meanwhile: the closest position, the crossings with a line, the vertex or the
// position under the cursor, the box test. Each query gives exactly the answer of the SimplePath member
// of the same name (the untransformed one), but visits only the segments whose boxes can matter, so a
// query on a path of 100,000 segments touches a few dozen of them instead of all.
//
// Life cycle, as with SimplePathFastSession: the host builds the index explicitly for one path and keeps
// the path alive while the index refers to it. The index describes the path as it was at build() (or at
// the last refit()); isCurrent() tells in constant time whether the path has been changed since, through
// any of the library's members. A query on an index that is no longer current is answered by the path's
// own member, so it is slow but never wrong. After an edit that only moved vertices (same number of
// triples, same closed flag), refit() brings the index up to date without allocating; after any other
// edit, build() again.
//
// Structure. Leaf i holds a copy of the control points of segment i, in path order, and stands for their
// box (which holds the curve), widened by a rounding margin; the level above holds the boxes of runs of four
// consecutive leaves together with the vertices of their four triples, and so on up to one box for the
// whole path. The hierarchy follows path order rather than sorting the segments in space: a path is a chain
// of segments joined end to end, so a run of consecutive segments stays within the reach of its own control
// polygon, and runs make tight boxes on the outlines a design application draws. Path order also makes the
// building linear in the number of segments, with no sorting, and lets the queries that must answer in
// path order (the last hit wins in the picks, crossings are listed from the last segment to the first)
// walk the boxes in that order and stop at the first answer.
//
// A path that winds back over itself many times makes looser boxes and slower queries, never other
// answers. The index takes about 100 bytes per segment: the copied control points and one box per pair
// of boxes below.
//
// A NaN coordinate makes the boxes that hold it unbounded, so bad input is never pruned away: the query
// then falls back, in effect, to the linear walk over those segments, and answers as the member does.
//
// Not synchronised; one thread at a time, like the path itself. The queries allocate nothing besides
// their output (and one scratch vector where the member needs one).
class SimplePathSpatialIndex {
  public:
    SimplePathSpatialIndex() = default;

    // Describes `path` as it is now. Failure when memory is exhausted; the index is then empty.
    SimplePath::Result build(SimplePath const& path);
    // Brings the boxes up to date after vertices of the path were moved. Failure, with the index
    // unchanged, when it was never built or the path's number of triples or closed state has changed;
    // build() again then.
    SimplePath::Result refit();
    // Forgets the path; the storage is kept for the next build().
    void clear();

    // True when the index has been built and the path has not been changed since (constant time).
    bool isCurrent() const;
    // The path the index was built for, or null.
    SimplePath const* getPath() const { return path; }

    // The answers of the SimplePath members of the same names. An index that was never built fails
    // (the box test answers 0).
    SimplePath::Result findClosestPosition(DPoint const& point, SimplePathPosition& position) const;
    SimplePath::Result findClosestPosition(DPoint const& point, SimplePathPosition& position,
                                           double& squaredDistance) const;
    // SimplePath::pretransformFindIntersections with the identity transform.
    SimplePath::Result findIntersections(DPoint const& a, DPoint const& b,
                                         std::list<SimplePathPosition>& out) const;
    SimplePath::Result pickVertex(DPoint const& point, double tolerance, SimplePathVertex*& vertex) const;
    SimplePath::Result pickPosition(DPoint const& point, double tolerance,
                                    SimplePathPosition& position) const;
    // SimplePath::pretransformInBox with the identity transform.
    int inBox(DPoint const& boxMin, DPoint const& boxMax) const;

    // An axis-aligned box; empty when min > max.
    struct Box {
        double minX, minY, maxX, maxY;
    };

  private:
    // Level 0 has one entry per triple: the control box of the segment that starts there (empty for the
    // last triple of an open path); the segment's control points are copied to `curves`, so that a query
    // never reads the vertex objects except to pick one. Level k starts at levelStart[k] in `boxes`
    // (level 0 at the front) and holds levelCount[k] boxes; above level 0 each is
    // the union of kFanOut boxes of level k - 1 (the last one may have fewer); level 1 also takes in the
    // vertices of its triples, so that every vertex lies in the boxes above it.
    static constexpr int kMaxLevels = 40;
    // Boxes per box of the level above: four 32-byte boxes fill two cache lines, read together, and
    // halve the depth of a binary hierarchy, so a walk waits for memory half as often.
    static constexpr int kFanOut = 4;
    // A walk's stack: every step down pops one box and pushes at most kFanOut.
    static constexpr int kStackDepth = kMaxLevels * (kFanOut - 1) + 2;

    // Copies the control points and fills every level from the path's current vertices; the storage
    // must already be sized.
    void computeBoxes();
    Box box(int level, int index) const;
    // Asks the processor to start loading the parts of box `index` of `level` (a hint only).
    void prefetchParts(int level, int index) const;
    // Walks the hierarchy from the top in descending path order (the latest part of every box first),
    // entering the boxes that pass keep(box) and calling atBottom(i) for each box i of level `bottom`
    // reached, until atBottom returns false. Returns false when it was stopped.
    template <class Keep, class AtBottom>
    bool walkDescending(int bottom, Keep const& keep, AtBottom const& atBottom) const;

    SimplePath const* path = nullptr;
    std::uint64_t changeCount = 0;
    int triples = 0;
    bool closed = false;
    int levels = 0;
    int levelStart[kMaxLevels] = {};
    int levelCount[kMaxLevels] = {};
    std::vector<PBezier> curves;
    std::vector<Box> boxes;
};
