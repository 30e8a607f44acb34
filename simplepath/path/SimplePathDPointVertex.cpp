#include "simplepath/path/SimplePathDPointVertex.h"

#include <atomic>
#include <cstdint>
#include <cstdlib>

namespace {

// Memory layout. Every vertex is preceded by one header word. Its low two bits say where the vertex
// lives: 0, 1 or 2 for its slot in the shared block of a triple, 3 for a vertex allocated on its own.
// The header of slot 0 also counts, in its upper bits, how many of the block's vertices are alive. The
// count is atomic because the vertices of one triple may be moved into different paths that are then
// used, and destroyed, on different threads; every header is atomic so that reading a vertex's slot
// never races with another vertex updating the count.
//
// A block is three slots of header and vertex, 120 bytes: small enough for the heap's fastest size
// classes, which keep freed blocks at hand for the next path instead of returning them to the system.
using Header = std::atomic<std::uint64_t>;

constexpr std::uint64_t kSlotMask = 3;
constexpr std::uint64_t kStandalone = 3;
constexpr std::uint64_t kOneLive = 4;

struct Slot {
    Header header;
    alignas(SimplePathDPointVertex) unsigned char storage[sizeof(SimplePathDPointVertex)];
};

struct TripleBlock {
    Slot slots[3];
};

static_assert(alignof(SimplePathDPointVertex) <= alignof(Header), "a vertex must sit right after its header");
static_assert(offsetof(Slot, storage) == sizeof(Header), "no padding between header and vertex");
static_assert(sizeof(Header) == sizeof(std::uint64_t) && Header::is_always_lock_free,
              "headers are plain words");

// A vertex allocated on its own gets a header of a full fundamental alignment, so that classes derived
// from SimplePathDPointVertex stay as aligned as the heap would make them.
constexpr std::size_t kStandaloneHeader = alignof(std::max_align_t);

Header& headerOf(void* vertex) {
    return *(reinterpret_cast<Header*>(vertex) - 1);
}

void* allocateStandalone(std::size_t size) noexcept {
    auto* const memory = static_cast<unsigned char*>(std::malloc(kStandaloneHeader + size));
    if (memory == nullptr) {
        return nullptr;
    }
    unsigned char* const vertex = memory + kStandaloneHeader;
    ::new (vertex - sizeof(Header)) Header(kStandalone);
    return vertex;
}

void release(void* vertex) noexcept {
    if (vertex == nullptr) {
        return;
    }
    std::uint64_t const slot = headerOf(vertex).load(std::memory_order_relaxed) & kSlotMask;
    if (slot == kStandalone) {
        std::free(static_cast<unsigned char*>(vertex) - kStandaloneHeader);
        return;
    }
    auto* const block = reinterpret_cast<TripleBlock*>(reinterpret_cast<Slot*>(&headerOf(vertex)) - slot);
    Header& count = block->slots[0].header;
    // The last survivor needs no atomic read-modify-write: nobody else can reach the block any more.
    if (count.load(std::memory_order_acquire) / kOneLive == 1 ||
        count.fetch_sub(kOneLive, std::memory_order_acq_rel) / kOneLive == 1) {
        block->~TripleBlock();
        std::free(block);
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
    auto* const block = ::new (memory) TripleBlock;
    block->slots[0].header.store(3 * kOneLive + 0, std::memory_order_relaxed);
    block->slots[1].header.store(1, std::memory_order_relaxed);
    block->slots[2].header.store(2, std::memory_order_relaxed);
    firstVertex = ::new (block->slots[0].storage) SimplePathDPointVertex(first);
    anchorVertex = ::new (block->slots[1].storage) SimplePathDPointVertex(anchor);
    lastVertex = ::new (block->slots[2].storage) SimplePathDPointVertex(last);
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
