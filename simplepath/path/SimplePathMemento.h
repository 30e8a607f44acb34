#pragma once

#include <utility>
#include <vector>

#include "simplepath/path/MementoTriple.h"

// The complete vertex state of one path at one moment: which vertex objects it held, in which order,
// where each stood, each triple's mode, and the closed flag. SimplePath::createMemento makes one and
// SimplePath::undo puts it back.
//
// Ownership. Whoever asked for the memento owns it and deletes it; deleting it frees only its own
// storage. The vertices it names stay the path's business: a memento is good only while they are all
// alive, and the path does not keep removed vertices alive on its behalf.
class SimplePathMemento {
  public:
    SimplePathMemento(SimplePathMemento const&) = delete;
    SimplePathMemento& operator=(SimplePathMemento const&) = delete;
    ~SimplePathMemento() = default;

    // One entry per triple, in path order.
    std::vector<MementoTriple> const& getTriples() const { return triples; }
    int getClosed() const { return closed; }

  private:
    friend class SimplePath;
    SimplePathMemento(std::vector<MementoTriple>&& pathTriples, int closedFlag)
        : triples(std::move(pathTriples)), closed(closedFlag) {}

    std::vector<MementoTriple> triples;
    int closed = 0;
};
