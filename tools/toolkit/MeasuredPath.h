#pragma once

#include "simplepath/path/SimplePath.h"

#include <memory>

namespace sptool {

// The path the tool's queries run on in place of a drawing's path. The library's point queries (bounds,
// top and bottom, the box test, nearest position, the strict locate and curve picking) take any path of
// one vertex for its anchor alone, even a closed one whose single segment loops from the vertex back to
// itself. The tool reports the loop it draws: such a path is measured through an equal closed path of two
// vertices, its segment split at t = 0.5 by de Casteljau's construction. The halves trace the very same
// curve; each new control point is a midpoint of midpoints, rounded once per step (within a few units in
// the last place of the coordinates). Every other path is measured as it is, without a copy.
class MeasuredPath {
  public:
    explicit MeasuredPath(SimplePath const& path);
    ~MeasuredPath();
    MeasuredPath(MeasuredPath const&) = delete;
    MeasuredPath& operator=(MeasuredPath const&) = delete;

    // The path to run the queries on.
    SimplePath const& path() const { return split_ ? *split_ : original_; }
    // A position on path() as the same place on the drawing's path: on the split loop, (0, t) is
    // (0, t/2) and (1, t) is (0, 1/2 + t/2) of the original segment, and the end (2, 0.0) is its end
    // (1, 0.0).
    SimplePathPosition original(SimplePathPosition const& position) const;

  private:
    SimplePath const& original_;
    std::unique_ptr<SimplePath> split_; // null unless the path is a closed lone vertex
};

} // namespace sptool
