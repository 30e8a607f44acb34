#pragma once

#include "simplepath/interfaces/DPoint.h"
#include "simplepath/interfaces/P2DTrans.h"
#include "simplepath/operations/SimplePathWholePathOperation.h"

// Maps every point of a path through an affine transform about a reference point, undoably: each
// point p goes to reference + m (p - reference). Vertex modes are kept.
class SimplePathAffineTransformOperation : public SimplePathWholePathOperation {
  public:
    SimplePathAffineTransformOperation(PHashablePointer<SimplePath> path, P2DTrans const& transform,
                                       DPoint const& reference);

  protected:
    bool edit(SimplePath& target, SimplePathChangeInstruction& change) override;

  private:
    P2DTrans transform;
    DPoint reference;
};
