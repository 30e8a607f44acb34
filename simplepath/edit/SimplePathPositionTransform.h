#pragma once

#include <cstdint>
#include <utility>

#include "simplepath/foundation/PHashablePointer.h"
#include "simplepath/path/SimplePathPosition.h"

class SimplePath;

// One step of carrying a (path, position) pair across an edit. Editing primitives make one per
// renumbering they cause and hand it to a change instruction, which replays them in order.
//
// A transform is immutable once built: `map` is const and keeps no state, so one transform may be
// shared by several change instructions and applied any number of times. Every transform that names
// a path leaves pairs on any other path exactly as they are.
class SimplePathPositionTransform {
  public:
    using PathPosition = std::pair<PHashablePointer<SimplePath>, SimplePathPosition>;

    SimplePathPositionTransform() = default;
    SimplePathPositionTransform(SimplePathPositionTransform const&) = delete;
    SimplePathPositionTransform& operator=(SimplePathPositionTransform const&) = delete;
    virtual ~SimplePathPositionTransform();

    virtual std::pair<PHashablePointer<SimplePath>, SimplePathPosition>
    map(std::pair<PHashablePointer<SimplePath>, SimplePathPosition> const& pair) const = 0;

  protected:
    // The pair (path, (index, parameter)). Index arithmetic is done in 64 bits by the transforms and
    // narrowed here, wrapping as 32-bit arithmetic would, so hostile indices never overflow.
    static PathPosition at(PHashablePointer<SimplePath> const& path, std::int64_t index, double parameter) {
        PathPosition result(path, SimplePathPosition());
        result.second.setValues(static_cast<int>(static_cast<std::uint32_t>(index)), parameter);
        return result;
    }
};
