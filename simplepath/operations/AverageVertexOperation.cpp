#include "simplepath/operations/AverageVertexOperation.h"

#include "simplepath/operations/detail/OperationSupport.h"

using namespace operation_support;

int AverageVertexOperation::AveOpInformation::getType() const {
    return 5;
}

AverageVertexOperation::AverageVertexOperation(PHashablePointer<SimplePath> editedPath,
                                               SimplePathVertex* alignedVertex, DPoint const& reference0,
                                               DPoint const& reference1, DPoint const& reference2,
                                               short int code, PBoxForm const& form)
    : path(editedPath), vertex(alignedVertex), p0(reference0), p1(reference1), p2(reference2),
      alignment(code), boxForm(form) {}

AverageVertexOperation::AverageVertexOperation(AverageVertexOperation const& other)
    : SimplePathOperation(other), path(other.path), vertex(other.vertex), p0(other.p0), p1(other.p1),
      p2(other.p2), alignment(other.alignment), boxForm(other.boxForm) {}

AverageVertexOperation::~AverageVertexOperation() {
    delete memento;
}

DPoint AverageVertexOperation::alignedAnchor(short int code, DPoint const& anchor, DPoint const& q0,
                                             DPoint const& q1, DPoint const& q2) {
    double const* x = nullptr;
    double const* y = nullptr;
    switch (code & 0xF0) {
    case XFromP2:
        x = &q2.x;
        break;
    case XFromP1:
        x = &q1.x;
        break;
    case XFromP0:
        x = &q0.x;
        break;
    case XFromAnchor:
        x = &anchor.x;
        break;
    default:
        break;
    }
    switch (code & 0xF00) {
    case YFromP2:
        y = &q2.y;
        break;
    case YFromP1:
        y = &q1.y;
        break;
    case YFromP0:
        y = &q0.y;
        break;
    case YFromAnchor:
        y = &anchor.y;
        break;
    default:
        break;
    }
    // Bits outside the two groups, or a group with no bit or several, make the code unknown.
    if (x == nullptr || y == nullptr || (code & ~0xFF0) != 0) {
        return DPoint();
    }
    return DPoint(*x, *y);
}

SimplePathOperation::Result
AverageVertexOperation::executeOperation(std::list<PHashablePointer<SimplePath>>& affectedPaths,
                                         SimplePathChangeInstruction& change) {
    SimplePathVertexTriple triple;
    Result const begun = beginTripleEdit(applied, path, memento, vertex, triple);
    if (begun != Success) {
        return begun;
    }
    DPoint const before = vertex->getLocation();
    DPoint const a = boxForm.xform(triple.anchor->getLocation());
    DPoint const in = boxForm.xform(triple.first->getLocation());
    DPoint const out = boxForm.xform(triple.last->getLocation());
    // Mapped in place and kept mapped, deliberately (see the class comment).
    p0 = boxForm.xform(p0);
    p1 = boxForm.xform(p1);
    p2 = boxForm.xform(p2);

    DPoint const target = alignedAnchor(alignment, a, p0, p1, p2);
    DVector const shift = target - a;
    SimplePathLocationTriple const to(boxForm.xforminv(in + shift), boxForm.xforminv(target),
                                      boxForm.xforminv(out + shift), triple.mode);
    if (!writeTriple(*path, triple, to, change)) {
        return EditFailed;
    }
    vertexBefore = before;
    applied = true;
    affectedPaths.push_back(path);
    return Success;
}

void AverageVertexOperation::undoOperation() {
    restoreMemento(path, memento);
    applied = false;
}

int AverageVertexOperation::RetreiveSegIndependentInfo(SegmentIndependentInformation*& info) {
    return retrieve<AveOpInformation>(info, [&](AveOpInformation& record) {
        record.vertexLocation = applied ? vertexBefore : locationOf(vertex);
        record.p0 = p0;
        record.p1 = p1;
        record.p2 = p2;
        record.alignment = alignment;
        record.boxForm = boxForm;
    });
}

int AverageVertexOperation::ApplySegIndependentInfo(SegmentIndependentInformation*& info) {
    auto const* record = applicableRecord<AveOpInformation>(info);
    if (record == nullptr || !retarget(*record, record->vertexLocation, memento, path, vertex)) {
        return 0;
    }
    p0 = record->p0;
    p1 = record->p1;
    p2 = record->p2;
    alignment = record->alignment;
    boxForm = record->boxForm;
    return 1;
}
