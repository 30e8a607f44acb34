#pragma once

#include <vector>

#include "simplepath/operations/SimplePathOperation.h"
#include "simplepath/path/SimplePathPosition.h"

class SimplePathMemento;

// Cuts a path at the anchor nearest a position, undoably. An open path falls apart into two pieces; a
// closed path is opened there. The pieces are path objects the caller passes in or, where it passes
// none, that the operation creates on its first execution; created pieces become the host's once a
// change instruction has reported them added. The duplicated anchor's vertices are copies made on the
// first execution and reused by every later one, so a redo refills the same objects with the same
// vertices, and undo only empties the pieces.
class SplitSimplePathVertexOperation : public SimplePathOperation {
  public:
    // Tag 15: where the position lay before the split (the path is found again there: at a vertex, or on
    // the curve), where each piece's reference point lay when the operation held pieces, and the position
    // itself. Rebuilding leaves the pieces to be made afresh: a replay cuts into new paths.
    class SplitVOpInformation : public SegmentIndependentInformation {
      public:
        int getType() const override;
        DPoint positionLocation;
        DPoint firstPieceLocation;
        DPoint secondPieceLocation;
        int pieces = 0; // bit 1: firstPieceLocation is set; bit 2: secondPieceLocation is set
        SimplePathPosition position;
    };

    SplitSimplePathVertexOperation(PHashablePointer<SimplePath> path, SimplePathPosition const& position,
                                   PHashablePointer<SimplePath> firstPiece,
                                   PHashablePointer<SimplePath> secondPiece);
    // A copy starts un-executed, with the pieces it was given but without created pieces or copies.
    SplitSimplePathVertexOperation(SplitSimplePathVertexOperation const& other);
    SplitSimplePathVertexOperation& operator=(SplitSimplePathVertexOperation const&) = delete;
    ~SplitSimplePathVertexOperation() override;

    Result executeOperation(std::list<PHashablePointer<SimplePath>>& affectedPaths,
                            SimplePathChangeInstruction& change) override;
    int RetreiveSegIndependentInfo(SegmentIndependentInformation*& info) override;
    int ApplySegIndependentInfo(SegmentIndependentInformation*& info) override;
    void undoOperation() override;

    PHashablePointer<SimplePath> getFirstPiece() const { return firstPiece; }
    PHashablePointer<SimplePath> getSecondPiece() const { return secondPiece; }
    // The result of the last step of the last execution.
    int getStatus() const { return status; }

  private:
    void releaseMementos();

    PHashablePointer<SimplePath> path;
    SimplePathPosition position;
    PHashablePointer<SimplePath> firstPiece;
    PHashablePointer<SimplePath> secondPiece;
    bool madeFirst = false; // made by this operation (not given by the caller)
    bool madeSecond = false;
    bool createdFirst = false; // made by this operation and not yet reported: still ours
    bool createdSecond = false;
    SimplePathVertex* vertex = nullptr; // the anchor cut at, found on each execution
    // The duplicated anchor's vertices: anchor and handle of the first piece's end, then of the second's.
    SimplePathVertex* anchorA = nullptr;
    SimplePathVertex* handleA = nullptr;
    SimplePathVertex* anchorB = nullptr;
    SimplePathVertex* handleB = nullptr;
    SimplePathMemento* memento = nullptr;
    SimplePathMemento* firstMemento = nullptr;
    SimplePathMemento* secondMemento = nullptr;
    int status = 0;
    enum class Applied { No, Open, Closed } applied = Applied::No;
    DPoint positionBefore;
    std::vector<SimplePathVertex*> unlinked; // the old anchor of an open split, while in effect
};
