#include "simplepath/path/SimplePathVertexStorage.h"

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <typeinfo>
#include <utility>

#include "simplepath/path/SimplePathDPointVertex.h"

namespace {

// Memory layout. Every vertex is preceded by one header word. A vertex made on its own has the header
// kLoose and sits kLooseHeader bytes into its heap block. A vertex in a slab sits in a slot: the header
// holds the slot's number k, shifted left by two, and the slab starts sizeof(Slab) + k * sizeof(Slot)
// bytes before the slot. A slab is its count of live slots followed by three slots per triple, first,
// anchor and last, 40 bytes each. Headers are written once, before the vertex is handed out, and only
// read afterwards; the count is the one word that changes.
constexpr std::uint64_t kLoose = 3;

// Every slot counts as live from the start. A vertex gives its slot back when it is deleted; the path
// gives back the slots it never handed out when it stops handing out from the slab.
struct Slab {
    std::atomic<std::uint64_t> live;
    std::uint64_t triples; // capacity, for the cache below
};

struct Slot {
    std::uint64_t header;
    alignas(SimplePathDPointVertex) unsigned char storage[sizeof(SimplePathDPointVertex)];
};

static_assert(alignof(SimplePathDPointVertex) <= alignof(std::uint64_t),
              "a vertex must sit right after its header");
static_assert(offsetof(Slot, storage) == sizeof(std::uint64_t), "no padding between header and vertex");
static_assert(sizeof(Slab) % alignof(Slot) == 0, "slots start aligned");
static_assert(std::atomic<std::uint64_t>::is_always_lock_free, "the count is a plain word");

// A vertex made on its own gets a header of a full fundamental alignment, so that classes derived from
// SimplePathDPointVertex stay as aligned as the heap would make them.
constexpr std::size_t kLooseHeader = alignof(std::max_align_t);

std::uint64_t& headerOf(void const* vertex) {
    return *(reinterpret_cast<std::uint64_t*>(const_cast<void*>(vertex)) - 1);
}

Slot* slotsOf(unsigned char* slab) {
    return reinterpret_cast<Slot*>(slab + sizeof(Slab));
}

Slab& slabOf(void const* vertex, std::uint64_t header) {
    auto* const slot = reinterpret_cast<unsigned char*>(&headerOf(vertex)) - (header >> 2) * sizeof(Slot);
    return *reinterpret_cast<Slab*>(slot - sizeof(Slab));
}

// A slab of `triples` triples whose slots are all counted as live: the slots not handed out yet are
// released in one step when their path stops handing them out.
// Freed slabs of the growth sizes (4, 8, ... kMaxGrowthTriples triples) are kept for the next path this
// thread builds, a few of each size, instead of going back to the heap. A path built and freed over and
// over would otherwise hand the heap a run of memory large enough for it to return to the system, and pay
// for every page again, first touch and all, on the next build. A thread keeps at most about 0.7 MB.
//
// The cache is plain data, so that it can still be reached while the thread's other objects are being
// destroyed; the keeper below empties it when the thread ends, and from then on slabs go straight to the
// heap.
constexpr int kSizeClasses = 9; // 4 << k triples
constexpr int kKeptPerClass = 4;
constexpr int kKeptLargest = 2;
static_assert(4 << (kSizeClasses - 1) == SimplePathVertexStorage::kMaxGrowthTriples,
              "one class per growth size");

struct SlabCache {
    unsigned char* kept[kSizeClasses][kKeptPerClass];
    int count[kSizeClasses];
    bool closed;
};
thread_local SlabCache cache{};

struct SlabCacheKeeper {
    ~SlabCacheKeeper() {
        for (int c = 0; c < kSizeClasses; ++c) {
            while (cache.count[c] > 0) {
                std::free(cache.kept[c][--cache.count[c]]);
            }
        }
        cache.closed = true;
    }
};
thread_local SlabCacheKeeper keeper;

// The size class of a slab of `triples` triples, or -1.
int sizeClassOf(std::uint64_t triples) {
    for (int c = 0; c < kSizeClasses; ++c) {
        if (triples == (std::uint64_t{4} << c)) {
            return c;
        }
    }
    return -1;
}

// A slab of `triples` triples whose slots are all counted as live: the slots not handed out yet are
// released in one step when their path stops handing them out.
unsigned char* newSlab(int triples) noexcept {
    std::size_t const slots = 3 * static_cast<std::size_t>(triples);
    int const sizeClass = sizeClassOf(static_cast<std::uint64_t>(triples));
    unsigned char* memory = nullptr;
    if (sizeClass >= 0 && cache.count[sizeClass] > 0) {
        memory = cache.kept[sizeClass][--cache.count[sizeClass]];
    } else {
        memory = static_cast<unsigned char*>(std::malloc(sizeof(Slab) + slots * sizeof(Slot)));
    }
    if (memory != nullptr) {
        ::new (memory) Slab{{slots}, static_cast<std::uint64_t>(triples)};
    }
    return memory;
}

// Takes `count` slots off the slab's live count; the last ones out free it.
void releaseSlots(Slab& slab, std::uint64_t count) noexcept {
    if (count != 0 && slab.live.fetch_sub(count, std::memory_order_acq_rel) == count) {
        int const sizeClass = sizeClassOf(slab.triples);
        slab.~Slab();
        if (sizeClass >= 0 && !cache.closed &&
            cache.count[sizeClass] < (sizeClass == kSizeClasses - 1 ? kKeptLargest : kKeptPerClass)) {
            (void)&keeper; // the first slab kept by a thread sets up the emptying of its cache
            cache.kept[sizeClass][cache.count[sizeClass]++] = reinterpret_cast<unsigned char*>(&slab);
            return;
        }
        std::free(&slab);
    }
}

// Constructs the triple `index` of the slab at the three locations.
void makeTriple(unsigned char* slab, int index, DPoint const& first, DPoint const& anchor, DPoint const& last,
                SimplePathVertexTriple& out) noexcept {
    std::uint64_t const k = 3 * static_cast<std::uint64_t>(index);
    Slot* const slots = slotsOf(slab) + k;
    slots[0].header = k << 2;
    slots[1].header = (k + 1) << 2;
    slots[2].header = (k + 2) << 2;
    out.first = ::new (slots[0].storage) SimplePathDPointVertex(first);
    out.anchor = ::new (slots[1].storage) SimplePathDPointVertex(anchor);
    out.last = ::new (slots[2].storage) SimplePathDPointVertex(last);
}

} // namespace

SimplePathVertexStorage::~SimplePathVertexStorage() {
    retire();
}

void SimplePathVertexStorage::swap(SimplePathVertexStorage& other) noexcept {
    std::swap(slab, other.slab);
    std::swap(used, other.used);
    std::swap(capacity, other.capacity);
    std::swap(nextGrowth, other.nextGrowth);
}

void SimplePathVertexStorage::retire() noexcept {
    if (slab != nullptr) {
        releaseSlots(*reinterpret_cast<Slab*>(slab), 3 * static_cast<std::uint64_t>(capacity - used));
        slab = nullptr;
        used = capacity = 0;
    }
}

bool SimplePathVertexStorage::open(int triples) noexcept {
    unsigned char* const made = newSlab(triples);
    if (made == nullptr) {
        return false;
    }
    retire();
    slab = made;
    capacity = triples;
    return true;
}

void SimplePathVertexStorage::reserve(int count) noexcept {
    if (count > capacity - used) {
        // Up to the largest growth size, a whole size class, so that the slab can be kept for reuse.
        int triples = 4;
        while (triples < count && triples < kMaxGrowthTriples) {
            triples *= 2;
        }
        (void)open(count > triples ? count : triples);
    }
}

bool SimplePathVertexStorage::createTriple(DPoint const& first, DPoint const& anchor, DPoint const& last,
                                           SimplePathVertexTriple& out) noexcept {
    if (used == capacity) {
        if (!open(nextGrowth)) {
            return false;
        }
        nextGrowth = nextGrowth < kMaxGrowthTriples ? 2 * nextGrowth : kMaxGrowthTriples;
    }
    makeTriple(slab, used++, first, anchor, last, out);
    return true;
}

bool SimplePathVertexStorage::createLooseTriple(DPoint const& first, DPoint const& anchor, DPoint const& last,
                                                SimplePathVertexTriple& out) noexcept {
    unsigned char* const made = newSlab(1);
    if (made == nullptr) {
        return false;
    }
    makeTriple(made, 0, first, anchor, last, out);
    return true;
}

void SimplePathVertexStorage::deleteVertices(SimplePathVertexTriple const* begin,
                                             SimplePathVertexTriple const* end) noexcept {
    // A run of vertices of one slab is counted and given back in one atomic step. The library's own
    // vertex class has nothing to undo in its destructor, so its storage is simply given back, which ends
    // the objects' lifetime; any other vertex is deleted through its virtual destructor as usual.
    Slab* run = nullptr;
    std::uint64_t pending = 0;
    auto const take = [&](SimplePathVertex* vertex) {
        if (vertex == nullptr) {
            return;
        }
        if (typeid(*vertex) == typeid(SimplePathDPointVertex)) {
            void const* const at = static_cast<SimplePathDPointVertex*>(vertex);
            std::uint64_t const header = headerOf(at);
            if (header != kLoose) {
                Slab* const home = &slabOf(at, header);
                if (home != run) {
                    if (run != nullptr) {
                        releaseSlots(*run, pending);
                    }
                    run = home;
                    pending = 0;
                }
                ++pending;
                return;
            }
        }
        delete vertex;
    };
    for (SimplePathVertexTriple const* triple = begin; triple != end; ++triple) {
        take(triple->first);
        take(triple->anchor);
        take(triple->last);
    }
    if (run != nullptr) {
        releaseSlots(*run, pending);
    }
}

void* SimplePathVertexStorage::allocateLoose(std::size_t size) noexcept {
    auto* const memory = static_cast<unsigned char*>(std::malloc(kLooseHeader + size));
    if (memory == nullptr) {
        return nullptr;
    }
    unsigned char* const vertex = memory + kLooseHeader;
    ::new (vertex - sizeof(std::uint64_t)) std::uint64_t(kLoose);
    return vertex;
}

void SimplePathVertexStorage::release(void* vertex) noexcept {
    if (vertex == nullptr) {
        return;
    }
    std::uint64_t const header = headerOf(vertex);
    if (header == kLoose) {
        std::free(static_cast<unsigned char*>(vertex) - kLooseHeader);
        return;
    }
    releaseSlots(slabOf(vertex, header), 1);
}
