#pragma once

#include "simplepath/operations/SimplePathModeOperation.h"

// Sets the handle mode of one vertex's triple, undoably. Symmetric: both handles on one line through the
// anchor, taking the mean of their lengths. The vertex may be the anchor or either handle of the triple.
class setSymmetricModeOperation : public SimplePathModeOperation {
  public:
    // Tag 13: the vertex's location.
    class ModeSymOpInformation : public ModeOpInformation {
      public:
        int getType() const override;
    };

    setSymmetricModeOperation(PHashablePointer<SimplePath> path, SimplePathVertex* vertex);
    setSymmetricModeOperation(const setSymmetricModeOperation& other) = default;

  protected:
    SimplePath::Result setMode(SimplePath& target, SimplePathVertex*& which,
                               SimplePathChangeInstruction& change) const override;
    ModeOpInformation* newRecord() const override;
    int tag() const override;
};
