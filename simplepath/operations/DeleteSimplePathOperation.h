#pragma once

#include "simplepath/operations/SimplePathWholePathOperation.h"

// Deletes a whole path, undoably: every triple leaves it and the path is reported removed. The path
// object stays, empty, for its owner; its vertex objects stay with the operation while the deletion is
// in effect (an undo puts them back) and are freed with the operation.
class DeleteSimplePathOperation : public SimplePathWholePathOperation {
  public:
    explicit DeleteSimplePathOperation(PHashablePointer<SimplePath> path);

  protected:
    bool edit(SimplePath& target, SimplePathChangeInstruction& change) override;
};
