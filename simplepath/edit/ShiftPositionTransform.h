#pragma once

#include "simplepath/edit/SimplePathPositionTransform.h"

// Moves a path's positions onto another path whose triples continue `offset` places further on:
// (source, (i, t)) becomes (destination, (i + offset, t)). Made when one path is appended to another.
class ShiftPositionTransform : public SimplePathPositionTransform {
  public:
    ShiftPositionTransform(PHashablePointer<SimplePath> const& source,
                           PHashablePointer<SimplePath> const& destination, int offset);

    PathPosition map(PathPosition const& pair) const override;

  private:
    PHashablePointer<SimplePath> source;
    PHashablePointer<SimplePath> destination;
    int offset;
};
