#pragma once

#include "simplepath/edit/SimplePathPositionTransform.h"

// A new triple was inserted after triple `segment`: segments behind it move up by one, and a point
// inside segment `segment` (t not exactly 0.0) is taken to lie in the segment after the new anchor, at
// the same parameter. The anchor of `segment` itself and everything before it stay put.
class InsertAnchorsTransform : public SimplePathPositionTransform {
  public:
    InsertAnchorsTransform(PHashablePointer<SimplePath> const& path, int segment);

    PathPosition map(PathPosition const& pair) const override;

  private:
    PHashablePointer<SimplePath> path;
    int segment;
};
