#include "simplepath/path/SimplePathTripleList.h"

#include <algorithm>
#include <typeinfo>
#include <utility>

#include "simplepath/path/SimplePathDPointVertex.h"
#include "simplepath/path/SimplePathVertex.h"
#include "simplepath/path/SimplePathVertexStorage.h"

bool SimplePathTripleList::isPlain(SimplePathVertexTriple const& triple) {
    auto const plainVertex = [](SimplePathVertex const* vertex) {
        return vertex != nullptr && typeid(*vertex) == typeid(SimplePathDPointVertex);
    };
    return plainVertex(triple.first) && plainVertex(triple.anchor) && plainVertex(triple.last);
}

SimplePathTripleList::SimplePathTripleList(SimplePathTripleList&& other) noexcept
    : triples(std::move(other.triples)), plain(other.plain) {
    other.triples.clear();
    other.plain = true;
    ++other.changes;
}

// The counter of the list that receives the triples moves past both counters, so that no earlier reading
// of either list can match it again.
SimplePathTripleList& SimplePathTripleList::operator=(SimplePathTripleList&& other) noexcept {
    if (this != &other) {
        triples.swap(other.triples);
        other.triples.clear();
        plain = other.plain;
        other.plain = true;
        changes = (changes > other.changes ? changes : other.changes) + 1;
        ++other.changes;
    }
    return *this;
}

SimplePathTripleList& SimplePathTripleList::operator=(SimplePathTripleList const& other) {
    if (this != &other) {
        triples = other.triples;
        plain = other.plain;
        changes = (changes > other.changes ? changes : other.changes) + 1;
    }
    return *this;
}

SimplePathTripleList::~SimplePathTripleList() {
    // Front to back, and within a triple first, anchor, last; null pointers are skipped.
    SimplePathVertexStorage::deleteVertices(triples.data(), triples.data() + triples.size());
}

void SimplePathTripleList::reserve(int count) {
    if (count > 0) {
        triples.reserve(static_cast<std::size_t>(count));
    }
}

void SimplePathTripleList::push_front(SimplePathVertexTriple const& triple) {
    triples.insert(triples.begin(), triple);
    notePlainness(triple);
    ++changes;
}

SimplePathTripleList::Iterator SimplePathTripleList::insert(Iterator position,
                                                            SimplePathVertexTriple const& triple) {
    auto const inserted = triples.insert(triples.begin() + offset(position), triple);
    notePlainness(triple);
    ++changes;
    return Iterator(triples.data() + (inserted - triples.begin()));
}

SimplePathTripleList::Iterator SimplePathTripleList::remove(Iterator position) {
    auto const next = triples.erase(triples.begin() + offset(position));
    if (triples.empty()) {
        plain = true;
    }
    ++changes;
    return Iterator(triples.data() + (next - triples.begin()));
}

void SimplePathTripleList::cut_and_append(Iterator position) {
    auto const at = triples.begin() + offset(position);
    std::rotate(at, at + 1, triples.end());
    ++changes;
}

void SimplePathTripleList::setTripleLocations(Iterator position, DPoint const& first, DPoint const& anchor,
                                              DPoint const& last) {
    position.at->first->setLocation(first);
    position.at->anchor->setLocation(anchor);
    position.at->last->setLocation(last);
    ++changes;
}
