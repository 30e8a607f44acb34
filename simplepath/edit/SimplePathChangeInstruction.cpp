#include "simplepath/edit/SimplePathChangeInstruction.h"

#include <utility>

struct SimplePathChangeInstruction::Records {
    std::set<SimplePathVertex*> verticesAdded;
    std::set<SimplePathVertex*> verticesRemoved;
    std::list<PHashablePointer<SimplePath>> pathsAdded;
    std::list<PHashablePointer<SimplePath>> pathsRemoved;
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
