#pragma once

#include <vector>

#include "simplepath/operations/SimplePathUnrecordedOperation.h"
#include "simplepath/path/SimplePathPosition.h"

class SimplePathMemento;

// Slices one path at two positions, or two paths at one position each, undoably. The cut is made at
// the anchor nearest each position (a host that wants a cut inside a segment first adds a vertex
// there) and runs straight between the two anchors.
//
// - One closed path: two closed pieces, each the outline from one anchor to the other closed by the
//   cut; both share it.
// - One open path: the part between the anchors closed by the cut, and one open piece made of the two
//   outer parts joined by the cut.
// - Two closed paths: one closed outline running round the first, over the cut, round the second and
//   back over the cut.
// - An open and a closed path (in either order; the closed one is always taken second): one open path
//   that, at its cut anchor, detours over the cut round the closed outline and back.
// - Two open paths: the head of each continues over the cut into the tail of the other.
//
// Whatever the variant, the pieces together draw the outlines cut at the two anchors plus the cut on
// each side it bounds, and nothing else. The pieces land in three result paths the operation creates
// on its first execution (the sliced paths are left empty); every execution reuses them and the same
// copies of the cut anchors, so a redo refills the same objects with the same vertices. Result paths
// become the host's once a change instruction has reported them added; the others die with the
// operation. Vertex objects the edit takes out of every path stay the operation's while it is in
// effect.
//
// Same path and equal positions, or positions whose nearest anchor is the same: DegenerateSlice,
// nothing changed. A null path: MementoFailed; an empty path or a failing primitive: EditFailed, with
// the mementos kept so that undo restores.
class SliceSimplePathOperation : public SimplePathUnrecordedOperation {
  public:
    SliceSimplePathOperation(PHashablePointer<SimplePath> firstPath, SimplePathPosition const& firstPosition,
                             PHashablePointer<SimplePath> secondPath,
                             SimplePathPosition const& secondPosition);
    SliceSimplePathOperation(SliceSimplePathOperation const&) = delete;
    SliceSimplePathOperation& operator=(SliceSimplePathOperation const&) = delete;
    ~SliceSimplePathOperation() override;

    Result executeOperation(std::list<PHashablePointer<SimplePath>>& affectedPaths,
                            SimplePathChangeInstruction& change) override;
    void undoOperation() override;

    // Result path 0 receives the joined outline of the two-path variants, 1 and 2 the pieces that fall
    // apart; null before the first execution.
    PHashablePointer<SimplePath> getResultPath(int index) const;
    // The pieces of a single-path slice: the first and the second closed piece (or, for an open path,
    // the closed middle and the open rest). Null until a single-path slice has run.
    PHashablePointer<SimplePath> getFirstPiece() const { return firstPiece; }
    PHashablePointer<SimplePath> getSecondPiece() const { return secondPiece; }

  private:
    // The vertices that stand for a cut anchor: the anchor copied twice and the copies of its handles.
    struct Copies {
        SimplePathVertex* anchorA = nullptr;
        SimplePathVertex* handleA = nullptr;
        SimplePathVertex* anchorB = nullptr;
        SimplePathVertex* handleB = nullptr;
    };
    // One side of the cut during an execution.
    struct Side {
        PHashablePointer<SimplePath> path;
        SimplePathVertex* anchor = nullptr;
        Copies* copies = nullptr;
    };

    bool prepare(Side const& one, Side const& two);
    Result cut(Side one, Side two, SimplePathChangeInstruction& change);
    Result cutClosed(Side const& one, Side const& two, SimplePathChangeInstruction& change);
    Result cutOpen(Side one, Side two, SimplePathChangeInstruction& change);
    Result cutBothClosed(Side const& one, Side const& two, SimplePathChangeInstruction& change);
    Result cutOpenWithClosed(Side const& one, Side const& two, SimplePathChangeInstruction& change);
    Result cutBothOpen(Side const& one, Side const& two, SimplePathChangeInstruction& change);

    bool splitAt(Side const& side, SimplePathChangeInstruction& change);
    bool addClosingPoint(SimplePath& path, SimplePathVertex*& anchor, SimplePathChangeInstruction& change);
    bool reopenAt(PHashablePointer<SimplePath> const& path, SimplePathVertex* anchor,
                  SimplePathChangeInstruction& change);
    bool deleteEnd(SimplePath& path, bool last, SimplePathChangeInstruction& change);
    bool closeOverCut(SimplePath& piece, SimplePathChangeInstruction& change);

    void touch(PHashablePointer<SimplePath> const& path);
    void note();
    void settle();
    std::vector<SimplePathVertex*> copyVertices() const;
    void releaseMementos();

    PHashablePointer<SimplePath> firstPath;
    PHashablePointer<SimplePath> secondPath;
    PHashablePointer<SimplePath> firstPiece;
    PHashablePointer<SimplePath> secondPiece;
    SimplePathPosition firstPosition;
    SimplePathPosition secondPosition;
    SimplePathMemento* firstMemento = nullptr;
    SimplePathMemento* secondMemento = nullptr;
    Copies copies[2];
    PHashablePointer<SimplePath> results[3];

    bool ownResult[3] = {false, false, false}; // made here and never reported added
    SimplePathMemento* resultMementos[3] = {nullptr, nullptr, nullptr};
    bool applied = false;
    std::vector<SimplePathVertex*> seen;     // vertices the execution may have left behind
    std::vector<SimplePathVertex*> unlinked; // taken out of every path by the edit in effect
    std::vector<SimplePathVertex*> spare;    // anchor copies the edit in effect left unused
    std::list<PHashablePointer<SimplePath>> touched;
};
