#pragma once

#include "simplepath/edit/SimplePathPositionTransform.h"

// An open path was cut at anchor k into two paths: the first keeps triples 0 .. k, the second starts
// with a duplicate of anchor k. Positions from anchor k on (a parameter within 1e-9 of 0.0 at index k
// counts as anchor k itself, which stays with the first path) move to the second path, renumbered from
// 0; the rest go to the first path unchanged in index and parameter.
class SplitAnchorTransform : public SimplePathPositionTransform {
  public:
    SplitAnchorTransform(PHashablePointer<SimplePath> const& path, int anchor,
                         PHashablePointer<SimplePath> const& firstPath,
                         PHashablePointer<SimplePath> const& secondPath);

    PathPosition map(PathPosition const& pair) const override;

  private:
    PHashablePointer<SimplePath> path;
    int anchor;
    PHashablePointer<SimplePath> firstPath;
    PHashablePointer<SimplePath> secondPath;
};
