#pragma once

#include "simplepath/edit/SimplePathPositionTransform.h"

// Renumbers the segments of a closed path of `count` segments whose start moved: segment i becomes
// ((i + shift) mod count + count) mod count, the remainders taken with the sign of the dividend (as
// C++'s %) and then made non-negative. Parameters are kept.
//
// A count of 0 describes no path and must not be used. Such a transform is refused rather than made
// to divide by zero: `isValid()` reports false and `map` returns every pair unchanged. The factory
// never makes one (SimplePathVertexOpTransforms returns null instead).
class RotateTransform : public SimplePathPositionTransform {
  public:
    RotateTransform(PHashablePointer<SimplePath> const& path, int shift, int count);

    bool isValid() const { return count != 0; }

    PathPosition map(PathPosition const& pair) const override;

  private:
    PHashablePointer<SimplePath> path;
    int shift;
    int count;
};
