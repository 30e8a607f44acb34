#pragma once

#include "simplepath/operations/SimplePathOperation.h"
#include "simplepath/path/SimplePath.h"

class SimplePathMemento;

// What the four mode operations share: one vertex whose triple gets a new handle mode through one
// SimplePath mode setter. Each concrete operation names its setter, its tag and its record class.
class SimplePathModeOperation : public SimplePathOperation {
  public:
    // The record of a mode operation: where the vertex stood before the edit.
    class ModeOpInformation : public SegmentIndependentInformation {
      public:
        DPoint vertexLocation;
    };

    ~SimplePathModeOperation() override;

    Result executeOperation(std::list<PHashablePointer<SimplePath>>& affectedPaths,
                            SimplePathChangeInstruction& change) override;
    int RetreiveSegIndependentInfo(SegmentIndependentInformation*& info) override;
    int ApplySegIndependentInfo(SegmentIndependentInformation*& info) override;
    void undoOperation() override;

    PHashablePointer<SimplePath> getPath() const { return path; }
    SimplePathVertex* getVertex() const { return vertex; }

  protected:
    SimplePathModeOperation(PHashablePointer<SimplePath> editedPath, SimplePathVertex* editedVertex);
    SimplePathModeOperation(SimplePathModeOperation const& other);
    SimplePathModeOperation& operator=(SimplePathModeOperation const&) = delete;

    virtual SimplePath::Result setMode(SimplePath& target, SimplePathVertex*& which,
                                       SimplePathChangeInstruction& change) const = 0;
    // A new, empty record of the concrete class, or null when memory is exhausted.
    virtual ModeOpInformation* newRecord() const = 0;
    virtual int tag() const = 0;

  private:
    PHashablePointer<SimplePath> path;
    SimplePathVertex* vertex = nullptr;
    SimplePathMemento* memento = nullptr;
    bool applied = false;
    DPoint vertexBefore; // where the vertex stood when the edit in effect was made
};
