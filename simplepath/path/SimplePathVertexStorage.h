#pragma once

#include <cstddef>

#include "simplepath/interfaces/DPoint.h"
#include "simplepath/path/SimplePathVertexTriple.h"

// Where a path's own vertices live: runs of memory ("slabs") that hold the three vertices of many
// triples one after another, handed out in the order the path asks for them, so that a path built or
// copied front to back has its vertices in path order, 120 bytes per triple, and a walk along the path
// reads memory straight ahead instead of one heap block per triple.
//
// Every vertex stays an object of its own: it has its own address, is reached through its virtual
// slots and may be deleted alone with a plain `delete`, in any order and on any thread, also after it
// has moved to another path. A slab counts the vertices it still holds and goes back to the heap when
// the last of them is deleted and no path will hand out its remaining slots any more. The price is
// that a slab outlives most of its vertices if one of them is kept: a path that keeps one vertex of a
// thousand keeps the slab of the thousand.
//
// Growth. A path that grows one triple at a time gets slabs of 4, 8, 16, ... triples up to
// kMaxGrowthTriples, so that a small path wastes little and a big one asks the heap rarely; a path
// that knows its size (a copy) reserves one slab for all of it.
//
// One storage belongs to one path and is used by that path's changing members only, so it needs no
// lock; the counts inside the slabs are atomic because vertices may die elsewhere.
class SimplePathVertexStorage {
  public:
    SimplePathVertexStorage() = default;
    SimplePathVertexStorage(SimplePathVertexStorage const&) = delete;
    SimplePathVertexStorage& operator=(SimplePathVertexStorage const&) = delete;
    // Gives back the slots that were never handed out.
    ~SimplePathVertexStorage();

    void swap(SimplePathVertexStorage& other) noexcept;

    // Makes room for `count` more triples in one slab, so that the next `count` triples made here lie
    // one after another. Does nothing when the current slab has the room; when memory is short the
    // triples are simply made in smaller slabs later.
    void reserve(int count) noexcept;

    // Makes the three vertices of one triple at the given locations and stores them in `out` (the mode
    // is left alone). Returns false, changing nothing, when memory is exhausted.
    bool createTriple(DPoint const& first, DPoint const& anchor, DPoint const& last,
                      SimplePathVertexTriple& out) noexcept;

    // Makes the three vertices of one triple in a slab of their own, for a triple that belongs to no
    // path yet. Returns false, changing nothing, when memory is exhausted.
    static bool createLooseTriple(DPoint const& first, DPoint const& anchor, DPoint const& last,
                                  SimplePathVertexTriple& out) noexcept;

    // Deletes the vertices of the triples [begin, end), front to back and within a triple first, anchor,
    // last, skipping null pointers: the same as deleting each one, but the vertices made here are given
    // back to their slab a run at a time instead of one by one.
    static void deleteVertices(SimplePathVertexTriple const* begin,
                               SimplePathVertexTriple const* end) noexcept;

    // The largest slab a path growing one triple at a time gets (about 120 KB, below the size from which
    // the heap maps memory from the system afresh for every block).
    static constexpr int kMaxGrowthTriples = 1024;

  private:
    friend class SimplePathDPointVertex;
    // Memory for one vertex of `size` bytes outside any slab (`new SimplePathDPointVertex`, copy()).
    static void* allocateLoose(std::size_t size) noexcept;
    // Gives back the memory of one vertex, wherever it lives.
    static void release(void* vertex) noexcept;
    void retire() noexcept;
    bool open(int triples) noexcept;

    unsigned char* slab = nullptr; // the slab triples are handed out from, or null
    int used = 0;                  // triples handed out from it
    int capacity = 0;              // triples it holds
    int nextGrowth = 4;            // triples in the next slab opened by growth
};
