#pragma once

#include <list>
#include <vector>

#include "simplepath/operations/SimplePathOperation.h"
#include "simplepath/path/SimplePathLocationTriple.h"
#include "simplepath/path/SimplePathVertexTriple.h"

class SimplePathMemento;

// Inserts a run of triples, given by locations and modes, so that the first becomes triple `index` of
// the path (a negative index means the front), undoably. The first execution makes new vertex objects;
// undo takes them back into the operation's keeping and a redo inserts the very same objects again.
class InsertVerticesSimplePathOperation : public SimplePathOperation {
  public:
    // Tag 7: where the path's reference point lay before the insertion (the path is found again there),
    // the index and the triples to insert.
    class InsertOpInformation : public SegmentIndependentInformation {
      public:
        int getType() const override;
        DPoint referenceLocation;
        int index = -1;
        std::list<SimplePathLocationTriple> triples;
    };

    InsertVerticesSimplePathOperation(PHashablePointer<SimplePath> path,
                                      std::list<SimplePathLocationTriple> const& triples, int index);
    // A copy starts un-executed and makes its own vertices.
    InsertVerticesSimplePathOperation(InsertVerticesSimplePathOperation const& other);
    InsertVerticesSimplePathOperation& operator=(InsertVerticesSimplePathOperation const&) = delete;
    ~InsertVerticesSimplePathOperation() override;

    Result executeOperation(std::list<PHashablePointer<SimplePath>>& affectedPaths,
                            SimplePathChangeInstruction& change) override;
    int RetreiveSegIndependentInfo(SegmentIndependentInformation*& info) override;
    int ApplySegIndependentInfo(SegmentIndependentInformation*& info) override;
    void undoOperation() override;

  private:
    PHashablePointer<SimplePath> path;
    std::list<SimplePathLocationTriple> triples;
    int index = -1;
    SimplePathMemento* memento = nullptr;
    std::vector<SimplePathVertexTriple> made; // the inserted triples, once made
    bool inserted = false;                    // the path holds `made`
    DPoint referenceBefore;
};
