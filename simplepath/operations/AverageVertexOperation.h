#pragma once

#include "simplepath/interfaces/PBoxForm.h"
#include "simplepath/operations/SimplePathOperation.h"

class SimplePathMemento;

// Aligns one vertex with reference points, measured in the space of a box form: the anchor takes its x
// and its y each from one of three reference points or from itself, and both handles move with it so
// that the vertex keeps its shape.
//
// The reference points are mapped into box-form space in place, in the operation itself, and are not
// mapped back: after an execution the operation holds them mapped, so a record retrieved afterwards
// carries the mapped points and a second execution (a redo) maps them once more. Hosts rely on this
// exact behaviour; keep it.
class AverageVertexOperation : public SimplePathOperation {
  public:
    // Which coordinate comes from where: one x bit combined with one y bit.
    enum AlignmentBits : short {
        XFromP2 = 0x10,
        XFromP1 = 0x20,
        XFromP0 = 0x40,
        XFromAnchor = 0x80,
        YFromP2 = 0x100,
        YFromP1 = 0x200,
        YFromP0 = 0x400,
        YFromAnchor = 0x800,
    };

    // Tag 5: where the vertex stood, the three reference points as the operation holds them, the code
    // and the box form.
    class AveOpInformation : public SegmentIndependentInformation {
      public:
        int getType() const override;
        DPoint vertexLocation;
        DPoint p0;
        DPoint p1;
        DPoint p2;
        short int alignment = 0;
        PBoxForm boxForm;
    };

    AverageVertexOperation(PHashablePointer<SimplePath> path, SimplePathVertex* vertex, DPoint const& p0,
                           DPoint const& p1, DPoint const& p2, short int alignment, PBoxForm const& boxForm);
    AverageVertexOperation(AverageVertexOperation const& other);
    AverageVertexOperation& operator=(AverageVertexOperation const&) = delete;
    ~AverageVertexOperation() override;

    Result executeOperation(std::list<PHashablePointer<SimplePath>>& affectedPaths,
                            SimplePathChangeInstruction& change) override;
    int RetreiveSegIndependentInfo(SegmentIndependentInformation*& info) override;
    int ApplySegIndependentInfo(SegmentIndependentInformation*& info) override;
    void undoOperation() override;

    // The anchor in box-form space for an alignment code, given the anchor and the reference points in
    // that space. Exactly the sixteen codes with one x bit and one y bit are recognised; any other code
    // gives the default point.
    static DPoint alignedAnchor(short int alignment, DPoint const& anchor, DPoint const& p0, DPoint const& p1,
                                DPoint const& p2);

  private:
    PHashablePointer<SimplePath> path;
    SimplePathVertex* vertex = nullptr;
    DPoint p0;
    DPoint p1;
    DPoint p2;
    short int alignment = 0;
    PBoxForm boxForm;
    SimplePathMemento* memento = nullptr;
    bool applied = false;
    DPoint vertexBefore;
};
