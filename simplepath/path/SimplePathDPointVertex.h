#pragma once

#include <cstddef>
#include <new>

#include "simplepath/interfaces/DPoint.h"
#include "simplepath/path/GenericPoint.h"
#include "simplepath/path/SimplePathVertex.h"

// The concrete vertex: a point in the plane. Every vertex the library makes is one of these.
//
// Allocation. A path makes its vertices in its own storage (SimplePathVertexStorage), three to a
// triple and triple after triple; createTriple() places the three vertices of a lone triple in one heap
// block; a plain `new SimplePathDPointVertex` gets a block of its own. The class's operator delete knows
// all three, so each vertex is freed with a plain `delete`, in any order, even after the vertices of one
// block have ended up in different paths.
class SimplePathDPointVertex : public SimplePathVertex, public GenericPoint {
  public:
    SimplePathDPointVertex() = default;
    explicit SimplePathDPointVertex(DPoint const& location);
    SimplePathDPointVertex(SimplePathDPointVertex const& other);
    SimplePathDPointVertex& operator=(SimplePathDPointVertex const& other);
    ~SimplePathDPointVertex() override;

    DPoint getLocation() const override;
    // The location without a virtual call, for loops that read many vertices of this class.
    DPoint const& storedLocation() const { return location; }
    // A new vertex at the same location, or null when memory is exhausted.
    SimplePathVertex* copy() const override;

    // Makes the three vertices of one triple, which belongs to no path yet, in a single heap block. On
    // success stores them in the three outputs and returns true; when memory is exhausted returns false and
    // leaves the outputs.
    static bool createTriple(DPoint const& first, DPoint const& anchor, DPoint const& last,
                             SimplePathVertex*& firstVertex, SimplePathVertex*& anchorVertex,
                             SimplePathVertex*& lastVertex) noexcept;

    static void* operator new(std::size_t size);
    static void* operator new(std::size_t size, std::nothrow_t const&) noexcept;
    static void operator delete(void* memory) noexcept;
    static void operator delete(void* memory, std::nothrow_t const&) noexcept;

  private:
    friend class SimplePath;
    friend class SimplePathTripleList;
    void setLocation(DPoint const& location) override;

    DPoint location;
};
