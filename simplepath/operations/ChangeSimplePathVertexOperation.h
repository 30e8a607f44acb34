#pragma once

#include "simplepath/operations/SimplePathOperation.h"
#include "simplepath/path/SimplePathLocationTriple.h"
#include "simplepath/path/SimplePathVertexTriple.h"

class SimplePathMemento;

// Gives one triple new locations and a new mode, undoably: the triple as it is (its three vertex
// objects) and the locations and mode it shall have.
class ChangeSimplePathVertexOperation : public SimplePathOperation {
  public:
    // Tag 6: where the triple's anchor stood before the change, and the target. Rebuilding picks the
    // anchor's location and takes the whole triple of whatever vertex is found there.
    class ChangeVOpInformation : public SegmentIndependentInformation {
      public:
        int getType() const override;
        DPoint vertexLocation;
        SimplePathLocationTriple target;
    };

    ChangeSimplePathVertexOperation(PHashablePointer<SimplePath> path, SimplePathVertexTriple const& current,
                                    SimplePathLocationTriple const& target);
    ChangeSimplePathVertexOperation(ChangeSimplePathVertexOperation const& other);
    ChangeSimplePathVertexOperation& operator=(ChangeSimplePathVertexOperation const&) = delete;
    ~ChangeSimplePathVertexOperation() override;

    Result executeOperation(std::list<PHashablePointer<SimplePath>>& affectedPaths,
                            SimplePathChangeInstruction& change) override;
    int RetreiveSegIndependentInfo(SegmentIndependentInformation*& info) override;
    int ApplySegIndependentInfo(SegmentIndependentInformation*& info) override;
    void undoOperation() override;

  private:
    PHashablePointer<SimplePath> path;
    SimplePathVertexTriple current;
    SimplePathLocationTriple target;
    SimplePathMemento* memento = nullptr;
    bool applied = false;
    DPoint anchorBefore;
};
