#pragma once

#include <vector>

#include "simplepath/operations/SimplePathUnrecordedOperation.h"

class SimplePathMemento;

// The shared steps of the operations that edit one whole path (delete, translate, the transforms):
// take a memento (failure: MementoFailed), make the edit (failure: EditFailed, the memento kept so that
// undo restores), report the path. Undo restores the memento and releases it; without one it does
// nothing.
class SimplePathWholePathOperation : public SimplePathUnrecordedOperation {
  public:
    explicit SimplePathWholePathOperation(PHashablePointer<SimplePath> path);
    // A copy starts un-executed on the same path.
    SimplePathWholePathOperation(SimplePathWholePathOperation const& other);
    SimplePathWholePathOperation& operator=(SimplePathWholePathOperation const&) = delete;
    ~SimplePathWholePathOperation() override;

    Result executeOperation(std::list<PHashablePointer<SimplePath>>& affectedPaths,
                            SimplePathChangeInstruction& change) override;
    void undoOperation() override;

    PHashablePointer<SimplePath> getPath() const { return path; }

  protected:
    // The edit itself, on a path that is not null; true when it was made.
    virtual bool edit(SimplePath& target, SimplePathChangeInstruction& change) = 0;
    // Vertex objects the edit took out of every path: the operation's while the edit is in effect.
    std::vector<SimplePathVertex*> unlinked;

  private:
    PHashablePointer<SimplePath> path;
    SimplePathMemento* memento = nullptr;
};
