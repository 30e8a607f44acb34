#include "simplepath/path/SimplePathDPointVertex.h"

#include "simplepath/path/SimplePathVertexStorage.h"

SimplePathDPointVertex::SimplePathDPointVertex(DPoint const& where) : location(where) {}

SimplePathDPointVertex::SimplePathDPointVertex(SimplePathDPointVertex const& other)
    : SimplePathVertex(other), GenericPoint(other), location(other.location) {}

SimplePathDPointVertex& SimplePathDPointVertex::operator=(SimplePathDPointVertex const& other) {
    location = other.location;
    return *this;
}

SimplePathDPointVertex::~SimplePathDPointVertex() = default;

DPoint SimplePathDPointVertex::getLocation() const {
    return location;
}

SimplePathVertex* SimplePathDPointVertex::copy() const {
    return new (std::nothrow) SimplePathDPointVertex(location);
}

void SimplePathDPointVertex::setLocation(DPoint const& where) {
    location = where;
}

bool SimplePathDPointVertex::createTriple(DPoint const& first, DPoint const& anchor, DPoint const& last,
                                          SimplePathVertex*& firstVertex, SimplePathVertex*& anchorVertex,
                                          SimplePathVertex*& lastVertex) noexcept {
    SimplePathVertexTriple made;
    if (!SimplePathVertexStorage::createLooseTriple(first, anchor, last, made)) {
        return false;
    }
    firstVertex = made.first;
    anchorVertex = made.anchor;
    lastVertex = made.last;
    return true;
}

void* SimplePathDPointVertex::operator new(std::size_t size) {
    void* const memory = SimplePathVertexStorage::allocateLoose(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void* SimplePathDPointVertex::operator new(std::size_t size, std::nothrow_t const&) noexcept {
    return SimplePathVertexStorage::allocateLoose(size);
}

void SimplePathDPointVertex::operator delete(void* memory) noexcept {
    SimplePathVertexStorage::release(memory);
}

void SimplePathDPointVertex::operator delete(void* memory, std::nothrow_t const&) noexcept {
    SimplePathVertexStorage::release(memory);
}
