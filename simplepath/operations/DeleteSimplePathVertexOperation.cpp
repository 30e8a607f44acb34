#include "simplepath/operations/DeleteSimplePathVertexOperation.h"

#include "simplepath/operations/detail/OperationSupport.h"

using namespace operation_support;

int DeleteSimplePathVertexOperation::DeleteVOpInformation::getType() const {
    return 9;
}

DeleteSimplePathVertexOperation::DeleteSimplePathVertexOperation(PHashablePointer<SimplePath> editedPath,
                                                                 SimplePathVertex* deleted)
    : path(editedPath), vertex(deleted) {}

DeleteSimplePathVertexOperation::DeleteSimplePathVertexOperation(DeleteSimplePathVertexOperation const& other)
    : SimplePathOperation(other), path(other.path), vertex(other.vertex) {}

DeleteSimplePathVertexOperation::~DeleteSimplePathVertexOperation() {
    delete memento;
    deleteAll(unlinked);
}

SimplePathOperation::Result
DeleteSimplePathVertexOperation::executeOperation(std::list<PHashablePointer<SimplePath>>& affectedPaths,
                                                  SimplePathChangeInstruction& change) {
    SimplePathVertexTriple triple;
    Result const begun = beginTripleEdit(applied, path, memento, vertex, triple);
    if (begun != Success) {
        return begun;
    }
    auto [first, anchor, last, mode] = triple;
    DPoint const before = vertex->getLocation();
    if (vertex == anchor) {
        std::vector<SimplePathVertex*> leaving;
        SimplePath::Result done = SimplePath::Failure;
        try {
            if (path->numTriples() < 3) {
                leaving.reserve(3 * static_cast<std::size_t>(path->numTriples()));
                for (SimplePathVertexTriple const& t : path->getTripleList()) {
                    leaving.insert(leaving.end(), {t.first, t.anchor, t.last});
                }
                unlinked.reserve(unlinked.size() + leaving.size());
                done = SimplePath::deleteSimplePath(path, change);
            } else {
                leaving = {first, anchor, last};
                unlinked.reserve(unlinked.size() + leaving.size());
                done = path->deleteVertex(anchor, change);
            }
        } catch (std::bad_alloc const&) {
            return EditFailed;
        }
        if (done != SimplePath::Success) {
            return EditFailed;
        }
        unlinked.insert(unlinked.end(), leaving.begin(), leaving.end());
    } else if (vertex == first || vertex == last) {
        // The handle is retracted onto its anchor; its vertex object stays in the triple.
        DPoint const a = anchor->getLocation();
        DPoint const firstTo = vertex == first ? a : first->getLocation();
        DPoint const lastTo = vertex == last ? a : last->getLocation();
        if (path->changeTriple(first, firstTo, anchor, a, last, lastTo, mode, change, 1) !=
            SimplePath::Success) {
            return EditFailed;
        }
    } else {
        return EditFailed;
    }
    vertexBefore = before;
    applied = true;
    affectedPaths.push_back(path);
    return Success;
}

void DeleteSimplePathVertexOperation::undoOperation() {
    // The restored path holds the unlinked vertices again: they are no longer this operation's.
    dropNamed(unlinked, memento);
    restoreMemento(path, memento);
    applied = false;
}

int DeleteSimplePathVertexOperation::RetreiveSegIndependentInfo(SegmentIndependentInformation*& info) {
    return retrieve<DeleteVOpInformation>(info, [&](DeleteVOpInformation& record) {
        record.vertexLocation = applied ? vertexBefore : locationOf(vertex);
    });
}

int DeleteSimplePathVertexOperation::ApplySegIndependentInfo(SegmentIndependentInformation*& info) {
    auto const* record = applicableRecord<DeleteVOpInformation>(info);
    if (record == nullptr || !retarget(*record, record->vertexLocation, memento, path, vertex)) {
        return 0;
    }
    return 1;
}
