#pragma once

#include "simplepath/interfaces/DVector.h"
#include "simplepath/operations/SimplePathWholePathOperation.h"

// Moves every point of a path by one offset, undoably.
class SimplePathTranslateOperation : public SimplePathWholePathOperation {
  public:
    SimplePathTranslateOperation(PHashablePointer<SimplePath> path, DVector const& offset);

    DVector getOffset() const { return offset; }

  protected:
    bool edit(SimplePath& target, SimplePathChangeInstruction& change) override;

  private:
    DVector offset;
};
