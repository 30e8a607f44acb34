#pragma once

// Small helpers shared by the path query tests: a non-affine transform and the segments of a path read
// independently of the library's own segment walk.

#include <vector>

#include "simplepath/interfaces/ArbTrans.h"
#include "simplepath/interfaces/PBezier.h"
#include "simplepath/path/SimplePath.h"

namespace support {

// A non-affine mapping: straight lines come out bent, so a query that maps the curve's points instead
// of its control points gives a different answer.
class Bend : public ArbTrans<DPoint> {
  public:
    DPoint transform(DPoint const& p) const override {
        return {p.x + 0.01 * p.y * p.y, p.y + 0.02 * p.x * p.x};
    }
    DPoint reverseTransform(DPoint const& p) const override { return p; }
};

// A path of straight segments through the points, every handle retracted onto its anchor.
inline SimplePath polyline(std::vector<DPoint> const& points, int closedFlag) {
    SimplePath path;
    EXPECT_EQ(SimplePath::Success, path.addPoints(points));
    path.setStrictClosed(closedFlag);
    return path;
}

inline int segmentCount(SimplePath const& path) {
    int const n = path.numTriples();
    return n == 0 ? 0 : (path.isClosedSimplePath() ? n : n - 1);
}

// Segment s with every control point mapped through t.
inline PBezier segmentOf(SimplePath const& path, int s, ArbTrans<DPoint> const& t = IdTrans<DPoint>()) {
    SimplePathVertexTriple from, to;
    EXPECT_EQ(SimplePath::Success, path.getTriple(s, from));
    EXPECT_EQ(SimplePath::Success, path.getTriple((s + 1) % path.numTriples(), to));
    return {t.transform(from.anchor->getLocation()), t.transform(from.last->getLocation()),
            t.transform(to.first->getLocation()), t.transform(to.anchor->getLocation())};
}

inline SimplePathPosition positionOf(SimplePath const& path, int index, double parameter) {
    SimplePathPosition p;
    EXPECT_EQ(SimplePath::Success, path.makePosition(index, parameter, p));
    return p;
}

} // namespace support
