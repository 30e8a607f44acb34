#pragma once

#include "simplepath/edit/SimplePathPositionTransform.h"
#include "simplepath/edit/SimplePathRemap.h"

// Moves a pair onto the path that replaced its path, keeping the position: where the map holds two
// replacements the first one recorded is taken. Pairs on paths the map does not know stay as they are.
// The transform keeps its own copy of the map.
class SimplePathRefRemapTransform : public SimplePathPositionTransform {
  public:
    explicit SimplePathRefRemapTransform(SimplePathRemap const& remap);

    PathPosition map(PathPosition const& pair) const override;

  private:
    SimplePathRemap remap;
};
