#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <new>
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

    // `pair` carried through each transform of [first, last) in order, each applied to the previous
    // result. The iterators dereference to anything that points to a transform.
    template <class Iterator>
    static PathPosition mapThrough(Iterator first, Iterator last, PathPosition const& pair);

  protected:
    // The pair (path, (index, parameter)). Index arithmetic is done in 64 bits by the transforms and
    // narrowed here, wrapping as 32-bit arithmetic would, so hostile indices never overflow.
    static PathPosition at(PHashablePointer<SimplePath> const& path, std::int64_t index, double parameter) {
        PathPosition result(path, SimplePathPosition());
        result.second.setValues(static_cast<int>(static_cast<std::uint32_t>(index)), parameter);
        return result;
    }
};

template <class Iterator>
SimplePathPositionTransform::PathPosition
SimplePathPositionTransform::mapThrough(Iterator first, Iterator last, PathPosition const& pair) {
    if (first == last) {
        return pair;
    }
    Iterator const lastStep = std::prev(last);
    if (first == lastStep) {
        return (*first)->map(pair);
    }
    // Each step's result is built straight into one of two slots (a returned prvalue initialises the
    // object in place), read there by the next step, and the last step builds the caller's result.
    // Assigning every result to one running variable instead copies 32 bytes per step, and reloading
    // those just-stored fields as one wide value stalls the pipeline: that cost more than the mappings.
    struct Slot {
        alignas(PathPosition) unsigned char bytes[sizeof(PathPosition)];
    };
    struct DestroyAtExit {
        PathPosition*& pair;
        ~DestroyAtExit() { pair->~PathPosition(); }
    };
    Slot slots[2];
    PathPosition* current = ::new (slots[0].bytes) PathPosition((*first)->map(pair));
    DestroyAtExit const guard{current};
    std::size_t step = 1;
    for (++first; first != lastStep; ++first, ++step) {
        PathPosition* const next = ::new (slots[step % 2].bytes) PathPosition((*first)->map(*current));
        current->~PathPosition();
        current = next;
    }
    return (*lastStep)->map(*current);
}
