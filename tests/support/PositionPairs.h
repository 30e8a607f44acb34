#pragma once

#include <cstdint>
#include <utility>

#include "simplepath/edit/SimplePathPositionTransform.h"
#include "simplepath/foundation/PHashablePointer.h"
#include "simplepath/path/SimplePathPosition.h"

namespace support {

using PathPosition = std::pair<PHashablePointer<SimplePath>, SimplePathPosition>;

inline PathPosition pairOn(SimplePath* path, int index, double parameter) {
    SimplePathPosition position;
    position.setValues(index, parameter);
    return {PHashablePointer<SimplePath>(path), position};
}

// Moves every pair `step` segments on, whatever its path, and counts its own deletion.
class CountedTransform : public SimplePathPositionTransform {
  public:
    CountedTransform(int* deletions, int step) : deletions(deletions), step(step) {}
    ~CountedTransform() override { ++*deletions; }

    PathPosition map(PathPosition const& pair) const override {
        return pairOn(pair.first.pointer, pair.second.getIndex() + step, pair.second.getParameter());
    }

  private:
    int* deletions;
    int step;
};

} // namespace support
