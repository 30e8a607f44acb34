#pragma once

#include "simplepath/interfaces/DPoint.h"

class SimplePath;
class SimplePathTripleList;

// The abstract base of every vertex of a path: an anchor or one of its two control handles.
//
// A vertex is identified by its address. Every lookup (vertex info, anchor positions, editing,
// picking, change records) compares pointers, never locations, so two vertices at the same place are
// still two vertices. Only the path and its triple list may move a vertex; everybody else reads it.
class SimplePathVertex {
  public:
    SimplePathVertex() = default;
    SimplePathVertex(SimplePathVertex const&) = default;
    SimplePathVertex& operator=(SimplePathVertex const&) = default;
    // The path deletes its vertices through this destructor.
    virtual ~SimplePathVertex();

    virtual DPoint getLocation() const = 0;
    // A new vertex at the same location; the caller owns it.
    virtual SimplePathVertex* copy() const = 0;

  private:
    friend class SimplePath;
    friend class SimplePathTripleList;
    virtual void setLocation(DPoint const& location) = 0;
};
