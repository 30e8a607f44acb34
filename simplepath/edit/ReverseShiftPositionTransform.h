#pragma once

#include "simplepath/edit/SimplePathPositionTransform.h"

// Moves a path's positions onto another path that holds the source's `sourceLength` triples in
// reverse order, starting `offset` places in. An anchor (t exactly 0.0) at i lands on anchor
// offset + n - 1 - i; a point inside segment i lands inside the mirrored segment offset + n - 2 - i at
// parameter 1 - t (the reversed cubic runs the same curve backwards).
class ReverseShiftPositionTransform : public SimplePathPositionTransform {
  public:
    ReverseShiftPositionTransform(PHashablePointer<SimplePath> const& source, int sourceLength,
                                  PHashablePointer<SimplePath> const& destination, int offset);

    PathPosition map(PathPosition const& pair) const override;

  private:
    PHashablePointer<SimplePath> source;
    int sourceLength;
    PHashablePointer<SimplePath> destination;
    int offset;
};
