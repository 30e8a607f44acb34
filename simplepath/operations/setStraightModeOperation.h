#pragma once

#include "simplepath/operations/SimplePathModeOperation.h"

// Sets the handle mode of one vertex's triple, undoably. Straight: both handles retracted onto the anchor,
// mode Cusp. The vertex may be the anchor or either handle of the triple.
class setStraightModeOperation : public SimplePathModeOperation {
  public:
    // Tag 14: the vertex's location.
    class ModeStrOpInformation : public ModeOpInformation {
      public:
        int getType() const override;
    };

    setStraightModeOperation(PHashablePointer<SimplePath> path, SimplePathVertex* vertex);
    setStraightModeOperation(const setStraightModeOperation& other) = default;

  protected:
    SimplePath::Result setMode(SimplePath& target, SimplePathVertex*& which,
                               SimplePathChangeInstruction& change) const override;
    ModeOpInformation* newRecord() const override;
    int tag() const override;
};
