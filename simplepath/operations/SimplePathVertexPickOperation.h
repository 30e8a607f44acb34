#pragma once

#include "simplepath/interaction/SimplePathVertexPickAction.h"
#include "simplepath/operations/SimplePathOperation.h"

class SimplePathMemento;

// Commits a finished drag: the pick action's triple gets the locations and mode the drag ended with.
class SimplePathVertexPickOperation : public SimplePathOperation {
  public:
    // Tag 1: where the triple's three vertices stood before the drag was committed, and the action's
    // target locations and mode. Rebuilding picks the anchor's location and takes the found vertex's
    // triple (with its mode at that time) as the dragged one.
    class PickOpInformation : public SegmentIndependentInformation {
      public:
        int getType() const override;
        DPoint firstLocation;
        DPoint anchorLocation;
        DPoint lastLocation;
        SimplePathLocationTriple target;
    };

    SimplePathVertexPickOperation(PHashablePointer<SimplePath> path,
                                  SimplePathVertexPickAction const& action);
    SimplePathVertexPickOperation(SimplePathVertexPickOperation const& other);
    SimplePathVertexPickOperation& operator=(SimplePathVertexPickOperation const&) = delete;
    ~SimplePathVertexPickOperation() override;

    Result executeOperation(std::list<PHashablePointer<SimplePath>>& affectedPaths,
                            SimplePathChangeInstruction& change) override;
    int RetreiveSegIndependentInfo(SegmentIndependentInformation*& info) override;
    int ApplySegIndependentInfo(SegmentIndependentInformation*& info) override;
    void undoOperation() override;

    SimplePathVertexPickAction const& getAction() const { return action; }

  private:
    PHashablePointer<SimplePath> path;
    SimplePathVertexPickAction action;
    SimplePathMemento* memento = nullptr;
    bool applied = false;
    SimplePathLocationTriple before; // the triple's locations when the edit in effect was made
};
