#include "simplepath/path/SimplePathDPointVertex.h"

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

// Memory layout. The word just before every vertex names the block the vertex lives in: null for a
// vertex allocated on its own, otherwise the shared block of a triple, whose count says how many of
// its vertices are still alive. The count is atomic because the vertices of one triple may be moved
// into different paths that are then used (and destroyed) on different threads.
struct SharedBlock {
    std::atomic<std::uint32_t> live{0};
};

struct Slot {
    SharedBlock* block;
    alignas(SimplePathDPointVertex) unsigned char storage[sizeof(SimplePathDPointVertex)];
};

struct TripleBlock {
    SharedBlock shared;
    Slot slots[3];
};

static_assert(alignof(SimplePathDPointVertex) <= alignof(SharedBlock*),
              "a vertex must sit right after its block word");
static_assert(offsetof(Slot, storage) == sizeof(SharedBlock*), "no padding between block word and vertex");

// A vertex allocated on its own gets a header of a full fundamental alignment, so that classes derived
// from SimplePathDPointVertex stay as aligned as the heap would make them.
constexpr std::size_t kStandaloneHeader = alignof(std::max_align_t);

SharedBlock* blockOf(void* vertex) {
    SharedBlock* block = nullptr;
    std::memcpy(&block, static_cast<unsigned char*>(vertex) - sizeof(SharedBlock*), sizeof block);
    return block;
}

void* allocateStandalone(std::size_t size) noexcept {
    auto* const memory = static_cast<unsigned char*>(std::malloc(kStandaloneHeader + size));
    if (memory == nullptr) {
        return nullptr;
    }
    SharedBlock* const none = nullptr;
    std::memcpy(memory + kStandaloneHeader - sizeof none, &none, sizeof none);
    return memory + kStandaloneHeader;
}

void release(void* vertex) noexcept {
    if (vertex == nullptr) {
        return;
    }
    SharedBlock* const block = blockOf(vertex);
    if (block == nullptr) {
        std::free(static_cast<unsigned char*>(vertex) - kStandaloneHeader);
        return;
    }
    // The last survivor needs no atomic read-modify-write: nobody else can reach the block any more.
    if (block->live.load(std::memory_order_acquire) == 1 ||
        block->live.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        auto* const whole = reinterpret_cast<TripleBlock*>(block);
        whole->~TripleBlock();
        std::free(whole);
    }
}

} // namespace

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
    void* const memory = std::malloc(sizeof(TripleBlock));
    if (memory == nullptr) {
        return false;
    }
    auto* const whole = new (memory) TripleBlock;
    whole->shared.live.store(3, std::memory_order_relaxed);
    for (Slot& slot : whole->slots) {
        slot.block = &whole->shared;
    }
    firstVertex = ::new (whole->slots[0].storage) SimplePathDPointVertex(first);
    anchorVertex = ::new (whole->slots[1].storage) SimplePathDPointVertex(anchor);
    lastVertex = ::new (whole->slots[2].storage) SimplePathDPointVertex(last);
    return true;
}

void* SimplePathDPointVertex::operator new(std::size_t size) {
    void* const memory = allocateStandalone(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void* SimplePathDPointVertex::operator new(std::size_t size, std::nothrow_t const&) noexcept {
    return allocateStandalone(size);
}

void SimplePathDPointVertex::operator delete(void* memory) noexcept {
    release(memory);
}

void SimplePathDPointVertex::operator delete(void* memory, std::nothrow_t const&) noexcept {
    release(memory);
}
