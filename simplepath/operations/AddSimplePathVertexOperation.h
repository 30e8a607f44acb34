#pragma once

#include "simplepath/operations/SimplePathOperation.h"
#include "simplepath/path/SimplePathPosition.h"
#include "simplepath/path/SimplePathVertexTriple.h"

class SimplePathMemento;

// Inserts a new vertex at a position, undoably, keeping the drawn curve as it was. The new triple is
// built on the first execution and reused by every later one, so a redo puts the very same vertex
// objects back. The operation owns that triple whenever it is not in the path.
class AddSimplePathVertexOperation : public SimplePathOperation {
  public:
    // Tag 4: where the position lay before the insertion, where the path's reference point lay (the
    // path is found again there), and the position itself, which is taken over unchanged.
    class AddVertInformation : public SegmentIndependentInformation {
      public:
        int getType() const override;
        DPoint positionLocation;
        DPoint referenceLocation;
        SimplePathPosition position;
    };

    AddSimplePathVertexOperation(PHashablePointer<SimplePath> path, SimplePathPosition const& position);
    // A copy starts un-executed and builds its own triple.
    AddSimplePathVertexOperation(AddSimplePathVertexOperation const& other);
    AddSimplePathVertexOperation& operator=(AddSimplePathVertexOperation const&) = delete;
    ~AddSimplePathVertexOperation() override;

    Result executeOperation(std::list<PHashablePointer<SimplePath>>& affectedPaths,
                            SimplePathChangeInstruction& change) override;
    int RetreiveSegIndependentInfo(SegmentIndependentInformation*& info) override;
    int ApplySegIndependentInfo(SegmentIndependentInformation*& info) override;
    void undoOperation() override;

    // The new vertex's triple: all null until the first execution builds it.
    SimplePathVertexTriple const& getNewTriple() const { return newTriple; }

  private:
    PHashablePointer<SimplePath> path;
    SimplePathPosition position;
    SimplePathVertexTriple newTriple;
    SimplePathMemento* memento = nullptr;
    bool inserted = false; // the path holds newTriple
    DPoint positionBefore;
    DPoint referenceBefore;
};
