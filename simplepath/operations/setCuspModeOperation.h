#pragma once

#include "simplepath/operations/SimplePathModeOperation.h"

// Sets the handle mode of one vertex's triple, undoably. Cusp: only the mode changes, unless both handles sit
// on the anchor; they are then pulled out. The vertex may be the anchor or either handle of the triple.
class setCuspModeOperation : public SimplePathModeOperation {
  public:
    // Tag 11: the vertex's location.
    class ModeCOpInformation : public ModeOpInformation {
      public:
        int getType() const override;
    };

    setCuspModeOperation(PHashablePointer<SimplePath> path, SimplePathVertex* vertex);
    setCuspModeOperation(const setCuspModeOperation& other) = default;

  protected:
    SimplePath::Result setMode(SimplePath& target, SimplePathVertex*& which,
                               SimplePathChangeInstruction& change) const override;
    ModeOpInformation* newRecord() const override;
    int tag() const override;
};
