#pragma once

#include "simplepath/interfaces/ArbTrans.h"
#include "simplepath/interfaces/DPoint.h"
#include "simplepath/operations/SimplePathWholePathOperation.h"

// Maps every point of a path through any point transform, undoably. The transform is borrowed: the
// caller keeps it alive as long as the operation and frees it. A null transform is found only once the
// memento has been taken, on purpose: the call fails with EditFailed and an undo is still answered.
class SimplePathArbitraryTransformOperation : public SimplePathWholePathOperation {
  public:
    SimplePathArbitraryTransformOperation(PHashablePointer<SimplePath> path, ArbTrans<DPoint>* transform);

  protected:
    bool edit(SimplePath& target, SimplePathChangeInstruction& change) override;

  private:
    ArbTrans<DPoint>* transform;
};
