#pragma once

#include <list>
#include <memory>
#include <set>

#include "simplepath/foundation/PHashablePointer.h"

class SimplePath;
class SimplePathVertex;

// What an edit did: which vertices and paths it added and removed. Primitives fill one in as they
// go; the caller reads it afterwards to bring its own references up to date.
//
// The instruction lists vertices and paths without owning them: whoever holds it decides what
// becomes of removed vertices. Vertices are kept as sets (each once); paths in insertion order.
class SimplePathChangeInstruction {
  public:
    SimplePathChangeInstruction();
    SimplePathChangeInstruction(SimplePathChangeInstruction const& other);
    SimplePathChangeInstruction& operator=(SimplePathChangeInstruction const&) = delete;
    ~SimplePathChangeInstruction();

    void insertAdded(SimplePathVertex* vertex);
    void insertRemoved(SimplePathVertex* vertex);
    void insertAdded(PHashablePointer<SimplePath> const& path);
    void insertRemoved(PHashablePointer<SimplePath> const& path);

    // Each adds what was recorded to `out`, which is not cleared first.
    void simplePathVerticesAdded(std::set<SimplePathVertex*>& out) const;
    void simplePathVerticesRemoved(std::set<SimplePathVertex*>& out) const;
    void simplePathsAdded(std::list<PHashablePointer<SimplePath>>& out) const;
    void simplePathsRemoved(std::list<PHashablePointer<SimplePath>>& out) const;

  private:
    struct Records;
    std::unique_ptr<Records> records;
};
