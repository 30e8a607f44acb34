// SimplePath members: taking and restoring mementos, behind memento-based undo.

#include "simplepath/path/SimplePathMemento.h"

#include <new>

#include "simplepath/path/SimplePath.h"

namespace {

DPoint locationOf(SimplePathVertex const* vertex) {
    return vertex != nullptr ? vertex->getLocation() : DPoint();
}

} // namespace

SimplePath::Result SimplePath::createMemento(SimplePathMemento** out) const {
    if (out == nullptr) {
        return Failure;
    }
    try {
        // One contiguous block sized once: taking a memento is a single pass of copies.
        std::vector<MementoTriple> triples;
        triples.reserve(static_cast<std::size_t>(numTriples()));
        for (SimplePathVertexTriple const& triple : tripleList) {
            triples.emplace_back(triple.first, locationOf(triple.first), triple.anchor,
                                 locationOf(triple.anchor), triple.last, locationOf(triple.last),
                                 triple.mode);
        }
        *out = new SimplePathMemento(std::move(triples), closed);
    } catch (std::bad_alloc const&) {
        return Failure;
    }
    return Success;
}

SimplePath::Result SimplePath::undo(SimplePathMemento* memento) {
    if (memento == nullptr) {
        return Failure;
    }
    std::vector<MementoTriple> const& saved = memento->triples;
    // Reserving before anything changes means that running out of memory leaves the path as it was,
    // and that the appends below cannot throw.
    try {
        tripleList.reserve(static_cast<int>(saved.size()));
    } catch (std::bad_alloc const&) {
        return Failure;
    }
    tripleList.removeAll();
    closed = memento->closed;
    for (MementoTriple const& entry : saved) {
        tripleList.push_back(SimplePathVertexTriple(entry.first, entry.anchor, entry.last, entry.mode));
        // First, anchor, last: the order in which a triple's vertices are always moved.
        if (entry.first != nullptr) {
            entry.first->setLocation(entry.firstLocation);
        }
        if (entry.anchor != nullptr) {
            entry.anchor->setLocation(entry.anchorLocation);
        }
        if (entry.last != nullptr) {
            entry.last->setLocation(entry.lastLocation);
        }
    }
    return Success;
}
