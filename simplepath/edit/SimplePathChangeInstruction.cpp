#include "simplepath/edit/SimplePathChangeInstruction.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "simplepath/edit/SimplePathPositionTransform.h"

struct SimplePathChangeInstruction::Records {
    std::set<SimplePathVertex*> verticesAdded;
    std::set<SimplePathVertex*> verticesRemoved;
    std::list<PHashablePointer<SimplePath>> pathsAdded;
    std::list<PHashablePointer<SimplePath>> pathsRemoved;
    SimplePathRemap pathMap;
    // In recording order. Shared between copies of the instruction; transforms are immutable.
    std::vector<std::shared_ptr<SimplePathPositionTransform const>> transforms;
};

SimplePathChangeInstruction::SimplePathChangeInstruction() : records(std::make_unique<Records>()) {}

SimplePathChangeInstruction::SimplePathChangeInstruction(SimplePathChangeInstruction const& other)
    : records(std::make_unique<Records>(*other.records)) {}

SimplePathChangeInstruction::~SimplePathChangeInstruction() = default;

void SimplePathChangeInstruction::insertAdded(SimplePathVertex* vertex) {
    records->verticesAdded.insert(vertex);
}

void SimplePathChangeInstruction::insertRemoved(SimplePathVertex* vertex) {
    records->verticesRemoved.insert(vertex);
}

void SimplePathChangeInstruction::insertAdded(PHashablePointer<SimplePath> const& path) {
    records->pathsAdded.push_back(path);
}

void SimplePathChangeInstruction::insertRemoved(PHashablePointer<SimplePath> const& path) {
    records->pathsRemoved.push_back(path);
}

bool SimplePathChangeInstruction::insertPositionTransform(SimplePathPositionTransform* transform) {
    if (transform == nullptr) {
        return false;
    }
    auto& transforms = records->transforms;
    // Taking ownership of a transform we already own would free it twice: share the one owner instead.
    auto const owner = std::find_if(transforms.rbegin(), transforms.rend(),
                                    [transform](auto const& held) { return held.get() == transform; });
    if (owner != transforms.rend()) {
        transforms.push_back(*owner);
    } else {
        // Owned from here on, so it is freed even if the list cannot grow.
        std::shared_ptr<SimplePathPositionTransform const> owned(transform);
        transforms.push_back(std::move(owned));
    }
    return true;
}

void SimplePathChangeInstruction::insertRefMap(PHashablePointer<SimplePath> const& old,
                                               PHashablePointer<SimplePath> const& replacement) {
    records->pathMap.insert(old, replacement);
}

void SimplePathChangeInstruction::simplePathVerticesAdded(std::set<SimplePathVertex*>& out) const {
    out.insert(records->verticesAdded.begin(), records->verticesAdded.end());
}

void SimplePathChangeInstruction::simplePathVerticesRemoved(std::set<SimplePathVertex*>& out) const {
    out.insert(records->verticesRemoved.begin(), records->verticesRemoved.end());
}

void SimplePathChangeInstruction::simplePathsAdded(std::list<PHashablePointer<SimplePath>>& out) const {
    out.insert(out.end(), records->pathsAdded.begin(), records->pathsAdded.end());
}

void SimplePathChangeInstruction::simplePathsRemoved(std::list<PHashablePointer<SimplePath>>& out) const {
    out.insert(out.end(), records->pathsRemoved.begin(), records->pathsRemoved.end());
}

SimplePathRemap const& SimplePathChangeInstruction::getRefMap() const {
    return records->pathMap;
}

std::size_t SimplePathChangeInstruction::numPositionTransforms() const {
    return records->transforms.size();
}

SimplePathChangeInstruction::PathPosition
SimplePathChangeInstruction::translate(PathPosition const& pair) const {
    return SimplePathPositionTransform::mapThrough(records->transforms.begin(), records->transforms.end(),
                                                   pair);
}

void SimplePathChangeInstruction::translate(PHashablePointer<SimplePath> const& path,
                                            std::list<PHashablePointer<SimplePath>>& out) const {
    out.clear();
    if (records->pathMap.findAll(path, out)) {
        return;
    }
    auto const& removed = records->pathsRemoved;
    if (std::find(removed.begin(), removed.end(), path) == removed.end()) {
        out.push_back(path);
    }
}

void SimplePathChangeInstruction::translate(std::list<PathPosition>& pairs) const {
    for (PathPosition& pair : pairs) {
        pair = translate(pair);
    }
}
