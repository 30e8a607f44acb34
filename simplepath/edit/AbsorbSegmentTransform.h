#pragma once

#include "simplepath/edit/SimplePathPositionTransform.h"

// Segment k vanished (an end anchor was deleted): every point of it, and the anchor at its far end
// (k + 1, 0.0), collapses onto the anchor `target`, as (target, 0.0). Everything else stays.
class AbsorbSegmentTransform : public SimplePathPositionTransform {
  public:
    AbsorbSegmentTransform(PHashablePointer<SimplePath> const& path, int segment, int target);

    PathPosition map(PathPosition const& pair) const override;

  private:
    PHashablePointer<SimplePath> path;
    int segment;
    int target;
};
