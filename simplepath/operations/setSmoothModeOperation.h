#pragma once

#include "simplepath/operations/SimplePathModeOperation.h"

// Sets the handle mode of one vertex's triple, undoably. Smooth: both handles turned onto one line through
// the anchor, each keeping its length. The vertex may be the anchor or either handle of the triple.
class setSmoothModeOperation : public SimplePathModeOperation {
  public:
    // Tag 12: the vertex's location.
    class ModeSmoOpInformation : public ModeOpInformation {
      public:
        int getType() const override;
    };

    setSmoothModeOperation(PHashablePointer<SimplePath> path, SimplePathVertex* vertex);
    setSmoothModeOperation(const setSmoothModeOperation& other) = default;

  protected:
    SimplePath::Result setMode(SimplePath& target, SimplePathVertex*& which,
                               SimplePathChangeInstruction& change) const override;
    ModeOpInformation* newRecord() const override;
    int tag() const override;
};
