#pragma once

#include <list>

#include "simplepath/operations/SimplePathUnrecordedOperation.h"

class SimplePathMemento;

// Closes a list of paths, undoably, in list order. Paths that are closed already stay closed (and are
// still listed as affected).
class ClosePathsSimplePathOperation : public SimplePathUnrecordedOperation {
  public:
    explicit ClosePathsSimplePathOperation(std::list<PHashablePointer<SimplePath>> const& paths);
    // A copy starts un-executed on the same paths.
    ClosePathsSimplePathOperation(ClosePathsSimplePathOperation const& other);
    ClosePathsSimplePathOperation& operator=(ClosePathsSimplePathOperation const&) = delete;
    ~ClosePathsSimplePathOperation() override;

    // An empty list fails with EditFailed. A failing memento ends the walk with MementoFailed, a
    // failing close with EditFailed; the paths closed before stay closed until undo.
    Result executeOperation(std::list<PHashablePointer<SimplePath>>& affectedPaths,
                            SimplePathChangeInstruction& change) override;
    // Restores the paths from their mementos side by side from the front, then releases the mementos.
    void undoOperation() override;

  private:
    std::list<PHashablePointer<SimplePath>> paths;
    std::list<SimplePathMemento*> mementos;
};
