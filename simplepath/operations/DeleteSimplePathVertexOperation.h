#pragma once

#include <vector>

#include "simplepath/operations/SimplePathOperation.h"

class SimplePathMemento;

// Deletes one vertex, undoably. An anchor goes with its triple, and with the whole path when the path
// has fewer than three triples (a path of one segment or none is no longer worth keeping). A handle is
// retracted onto its anchor instead.
//
// The vertex objects the edit takes out of the path stay with the operation while the edit is in
// effect (an undo puts them back) and are freed with the operation.
class DeleteSimplePathVertexOperation : public SimplePathOperation {
  public:
    // Tag 9: where the vertex stood before the deletion.
    class DeleteVOpInformation : public SegmentIndependentInformation {
      public:
        int getType() const override;
        DPoint vertexLocation;
    };

    DeleteSimplePathVertexOperation(PHashablePointer<SimplePath> path, SimplePathVertex* vertex);
    DeleteSimplePathVertexOperation(DeleteSimplePathVertexOperation const& other);
    DeleteSimplePathVertexOperation& operator=(DeleteSimplePathVertexOperation const&) = delete;
    ~DeleteSimplePathVertexOperation() override;

    Result executeOperation(std::list<PHashablePointer<SimplePath>>& affectedPaths,
                            SimplePathChangeInstruction& change) override;
    int RetreiveSegIndependentInfo(SegmentIndependentInformation*& info) override;
    int ApplySegIndependentInfo(SegmentIndependentInformation*& info) override;
    void undoOperation() override;

  private:
    PHashablePointer<SimplePath> path;
    SimplePathVertex* vertex = nullptr;
    SimplePathMemento* memento = nullptr;
    bool applied = false;
    DPoint vertexBefore;
    std::vector<SimplePathVertex*> unlinked; // taken out of the path by this operation, in no path now
};
