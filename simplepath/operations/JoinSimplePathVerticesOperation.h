#pragma once

#include <vector>

#include "simplepath/operations/SimplePathOperation.h"

class SimplePathMemento;

// Joins an end anchor of one open path to an end anchor of another, undoably. The joined path is a new
// path object that the operation creates on its first execution; it becomes the host's once a change
// instruction has reported it added, and the operation refills the same object on every redo. Undo
// empties it again and gives both inputs back their triples.
class JoinSimplePathVerticesOperation : public SimplePathOperation {
  public:
    // Tag 10: where the two vertices stood before the join. Rebuilding picks each and takes the path it
    // was found in. Two ends at exactly one place cannot be told apart by location: such a record
    // rebuilds into a join of a vertex with itself.
    class JoinOpInformation : public SegmentIndependentInformation {
      public:
        int getType() const override;
        DPoint firstLocation;
        DPoint secondLocation;
    };

    JoinSimplePathVerticesOperation(PHashablePointer<SimplePath> path, SimplePathVertex* first,
                                    SimplePathVertex* second, PHashablePointer<SimplePath> secondPath);
    // A copy starts un-executed and makes its own joined path.
    JoinSimplePathVerticesOperation(JoinSimplePathVerticesOperation const& other);
    JoinSimplePathVerticesOperation& operator=(JoinSimplePathVerticesOperation const&) = delete;
    ~JoinSimplePathVerticesOperation() override;

    Result executeOperation(std::list<PHashablePointer<SimplePath>>& affectedPaths,
                            SimplePathChangeInstruction& change) override;
    int RetreiveSegIndependentInfo(SegmentIndependentInformation*& info) override;
    int ApplySegIndependentInfo(SegmentIndependentInformation*& info) override;
    void undoOperation() override;

    // The joined path, null before the first execution.
    PHashablePointer<SimplePath> getJoinedPath() const { return joined; }

  private:
    void releaseMementos();

    PHashablePointer<SimplePath> path;
    SimplePathVertex* first = nullptr;
    SimplePathVertex* second = nullptr;
    PHashablePointer<SimplePath> secondPath;
    PHashablePointer<SimplePath> joined;
    bool joinedReported = false; // the host owns `joined`
    SimplePathMemento* memento = nullptr;
    SimplePathMemento* secondMemento = nullptr;
    SimplePathMemento* joinedMemento = nullptr;
    bool applied = false;
    DPoint firstBefore;
    DPoint secondBefore;
    std::vector<SimplePathVertex*> unlinked; // the merged-away end's triple, while the join is in effect
};
