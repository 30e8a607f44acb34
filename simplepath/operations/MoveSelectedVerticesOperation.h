#pragma once

#include "simplepath/interfaces/DVector.h"
#include "simplepath/operations/SimplePathOperation.h"

class SimplePathMemento;

// Moves the whole triple of one vertex (anchor and both handles) by an offset, undoably: the step a
// host runs for every selected vertex when a selection is dragged.
class MoveSelectedVerticesOperation : public SimplePathOperation {
  public:
    // Tag 3: where the vertex stood before the move, and the offset.
    class MoveSelVertsOpInformation : public SegmentIndependentInformation {
      public:
        int getType() const override;
        DPoint vertexLocation;
        DVector offset;
    };

    MoveSelectedVerticesOperation(PHashablePointer<SimplePath> path, SimplePathVertex* vertex,
                                  DVector const& offset);
    MoveSelectedVerticesOperation(MoveSelectedVerticesOperation const& other);
    MoveSelectedVerticesOperation& operator=(MoveSelectedVerticesOperation const&) = delete;
    ~MoveSelectedVerticesOperation() override;

    Result executeOperation(std::list<PHashablePointer<SimplePath>>& affectedPaths,
                            SimplePathChangeInstruction& change) override;
    int RetreiveSegIndependentInfo(SegmentIndependentInformation*& info) override;
    int ApplySegIndependentInfo(SegmentIndependentInformation*& info) override;
    void undoOperation() override;

  private:
    PHashablePointer<SimplePath> path;
    SimplePathVertex* vertex = nullptr;
    DVector offset;
    SimplePathMemento* memento = nullptr;
    bool applied = false;
    DPoint vertexBefore;
};
