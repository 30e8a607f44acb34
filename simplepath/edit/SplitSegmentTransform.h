#pragma once

#include "simplepath/edit/SimplePathPositionTransform.h"

// An anchor was inserted into segment k at parameter s, cutting it into (k, [0, s]) and (k + 1, [s, 1]).
// On the cut segment a parameter t is rescaled linearly onto the piece it falls in: t / s before the
// cut, (t - s) / (1 - s) after it. This is exact for the de Casteljau split, whose two pieces are the
// original cubic reparametrised linearly; nothing is re-projected onto the curve. Later segments move up
// by one. Rules, first match wins, for a pair (i, t) on the path:
//   i > k                 -> (i + 1, t)
//   i = k, t exactly 0.0  -> (k, 0.0)          the anchor before the cut stays
//   i = k, s < 1e-6       -> (k + 1, 0.0)      a cut at the very start: everything goes to the new anchor
//   i = k, t >= s         -> unchanged if 1 - s is zero within 1e-9, else (k + 1, (t - s) / (1 - s))
//   i = k, t < s          -> (k, t / s)
//   otherwise (earlier segments, or a NaN parameter) unchanged
class SplitSegmentTransform : public SimplePathPositionTransform {
  public:
    SplitSegmentTransform(PHashablePointer<SimplePath> const& path, int segment, double parameter);

    PathPosition map(PathPosition const& pair) const override;

  private:
    PHashablePointer<SimplePath> path;
    int segment;
    double parameter;
};
