#pragma once

#include "simplepath/edit/SimplePathPositionTransform.h"

// Leaves every pair as it is: recorded where an edit moves no position that could still be held.
class NullTransform : public SimplePathPositionTransform {
  public:
    NullTransform() = default;

    PathPosition map(PathPosition const& pair) const override;
};
