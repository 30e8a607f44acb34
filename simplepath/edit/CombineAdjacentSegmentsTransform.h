#pragma once

#include "simplepath/edit/SimplePathPositionTransform.h"

// The anchor between segments k - 1 and k was removed and the two segments became one, numbered
// k - 1. The old segment k - 1 takes the new parameter range [0, s], the old segment k the range
// [s, 1], each mapped linearly: (k - 1, t) -> (k - 1, t s), (k, t) -> (k - 1, s + t (1 - s)). Later
// segments move down by one; earlier ones stay.
class CombineAdjacentSegmentsTransform : public SimplePathPositionTransform {
  public:
    CombineAdjacentSegmentsTransform(PHashablePointer<SimplePath> const& path, int segment, double parameter);

    PathPosition map(PathPosition const& pair) const override;

  private:
    PHashablePointer<SimplePath> path;
    int segment;
    double parameter;
};
