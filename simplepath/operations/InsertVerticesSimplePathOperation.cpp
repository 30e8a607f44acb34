#include "simplepath/operations/InsertVerticesSimplePathOperation.h"

#include "simplepath/edit/SimplePathChangeInstruction.h"
#include "simplepath/edit/SimplePathVertexOpTransforms.h"
#include "simplepath/operations/detail/OperationSupport.h"

using namespace operation_support;

int InsertVerticesSimplePathOperation::InsertOpInformation::getType() const {
    return 7;
}

InsertVerticesSimplePathOperation::InsertVerticesSimplePathOperation(
    PHashablePointer<SimplePath> editedPath, std::list<SimplePathLocationTriple> const& inserted, int at)
    : path(editedPath), triples(inserted), index(at) {}

InsertVerticesSimplePathOperation::InsertVerticesSimplePathOperation(
    InsertVerticesSimplePathOperation const& other)
    : SimplePathOperation(other), path(other.path), triples(other.triples), index(other.index) {}

InsertVerticesSimplePathOperation::~InsertVerticesSimplePathOperation() {
    delete memento;
    if (!inserted) {
        for (SimplePathVertexTriple const& triple : made) {
            deleteTripleVertices(triple);
        }
    }
}

SimplePathOperation::Result
InsertVerticesSimplePathOperation::executeOperation(std::list<PHashablePointer<SimplePath>>& affectedPaths,
                                                    SimplePathChangeInstruction& change) {
    Result const begun = beginEdit(inserted, path, memento);
    if (begun != Success) {
        return begun;
    }
    int const at = index < 0 ? 0 : index;
    if (at > path->numTriples()) {
        return EditFailed;
    }
    for (SimplePathLocationTriple const& t : triples) {
        if (!isFinite(t.first) || !isFinite(t.anchor) || !isFinite(t.last)) {
            return EditFailed;
        }
    }
    DPoint const reference = referenceLocation(path);
    bool const firstTime = made.empty() && !triples.empty();
    int k = at;
    if (firstTime) {
        try {
            made.reserve(triples.size());
        } catch (std::bad_alloc const&) {
            return EditFailed;
        }
        for (SimplePathLocationTriple const& t : triples) {
            SimplePathVertexTriple triple(nullptr, nullptr, nullptr, t.mode);
            if (path->insertTriple(t.first, triple.first, t.anchor, triple.anchor, t.last, triple.last,
                                   t.mode, k) != SimplePath::Success) {
                // Out of memory part way: back to the start, without the triples made so far.
                (void)path->undo(memento); // back to the start, as far as memory allows
                for (SimplePathVertexTriple const& done : made) {
                    deleteTripleVertices(done);
                }
                made.clear();
                return EditFailed;
            }
            made.push_back(triple);
            ++k;
        }
    } else {
        for (SimplePathVertexTriple const& triple : made) {
            if (path->adoptTriple(triple, k) != SimplePath::Success) {
                (void)path->undo(memento); // back to the start, as far as memory allows
                return EditFailed;
            }
            ++k;
        }
    }
    // Each inserted triple splits the segment it lands in: positions from its place on move up by one.
    for (int j = 0; j < static_cast<int>(made.size()); ++j) {
        change.insertPositionTransform(
            SimplePathVertexOpTransforms::createSimplePathInsertVerticesTransform(path, at + j - 1));
    }
    for (SimplePathVertexTriple const& triple : made) {
        change.insertAdded(triple.first);
        change.insertAdded(triple.anchor);
        change.insertAdded(triple.last);
    }
    referenceBefore = reference;
    inserted = true;
    affectedPaths.push_back(path);
    return Success;
}

void InsertVerticesSimplePathOperation::undoOperation() {
    if (memento == nullptr) {
        return;
    }
    restoreMemento(path, memento);
    inserted = false;
}

int InsertVerticesSimplePathOperation::RetreiveSegIndependentInfo(SegmentIndependentInformation*& info) {
    return retrieve<InsertOpInformation>(info, [&](InsertOpInformation& record) {
        record.referenceLocation = inserted ? referenceBefore : referenceLocation(path);
        record.index = index;
        record.triples = triples;
    });
}

int InsertVerticesSimplePathOperation::ApplySegIndependentInfo(SegmentIndependentInformation*& info) {
    auto const* record = applicableRecord<InsertOpInformation>(info);
    PHashablePointer<SimplePath> foundPath;
    SimplePathVertex* foundVertex = nullptr;
    if (memento != nullptr || !made.empty() || record == nullptr ||
        !pick(*record, record->referenceLocation, foundPath, foundVertex)) {
        return 0;
    }
    try {
        triples = record->triples;
    } catch (std::bad_alloc const&) {
        return 0;
    }
    path = foundPath;
    index = record->index;
    return 1;
}
