#include "simplepath/operations/SimplePathVertexPickOperation.h"

#include "simplepath/operations/detail/OperationSupport.h"

using namespace operation_support;

int SimplePathVertexPickOperation::PickOpInformation::getType() const {
    return 1;
}

SimplePathVertexPickOperation::SimplePathVertexPickOperation(PHashablePointer<SimplePath> editedPath,
                                                             SimplePathVertexPickAction const& committed)
    : path(editedPath), action(committed) {}

SimplePathVertexPickOperation::SimplePathVertexPickOperation(SimplePathVertexPickOperation const& other)
    : SimplePathOperation(other), path(other.path), action(other.action) {}

SimplePathVertexPickOperation::~SimplePathVertexPickOperation() {
    delete memento;
}

SimplePathOperation::Result
SimplePathVertexPickOperation::executeOperation(std::list<PHashablePointer<SimplePath>>& affectedPaths,
                                                SimplePathChangeInstruction& change) {
    Result const begun = beginEdit(applied, path, memento);
    if (begun != Success) {
        return begun;
    }
    SimplePathVertexTriple const& triple = action.getVertexTriple();
    SimplePathLocationTriple const& to = action.getLocationTriple();
    if (triple.first == nullptr || triple.anchor == nullptr || triple.last == nullptr) {
        return EditFailed;
    }
    SimplePathLocationTriple const was(triple.first->getLocation(), triple.anchor->getLocation(),
                                       triple.last->getLocation(), triple.mode);
    if (!writeTriple(*path, triple, to, change)) {
        return EditFailed;
    }
    before = was;
    applied = true;
    affectedPaths.push_back(path);
    return Success;
}

void SimplePathVertexPickOperation::undoOperation() {
    restoreMemento(path, memento);
    applied = false;
}

int SimplePathVertexPickOperation::RetreiveSegIndependentInfo(SegmentIndependentInformation*& info) {
    return retrieve<PickOpInformation>(info, [&](PickOpInformation& record) {
        SimplePathVertexTriple const& triple = action.getVertexTriple();
        record.firstLocation = applied ? before.first : locationOf(triple.first);
        record.anchorLocation = applied ? before.anchor : locationOf(triple.anchor);
        record.lastLocation = applied ? before.last : locationOf(triple.last);
        record.target = action.getLocationTriple();
    });
}

int SimplePathVertexPickOperation::ApplySegIndependentInfo(SegmentIndependentInformation*& info) {
    auto const* record = applicableRecord<PickOpInformation>(info);
    PHashablePointer<SimplePath> foundPath;
    SimplePathVertex* foundVertex = nullptr;
    SimplePathVertexTriple triple;
    int index = -1;
    if (memento != nullptr || record == nullptr ||
        !pick(*record, record->anchorLocation, foundPath, foundVertex) || foundVertex == nullptr ||
        foundPath->getVertexInfo(foundVertex, triple, index) != SimplePath::Success) {
        return 0;
    }
    path = foundPath;
    action = SimplePathVertexPickAction(triple, record->target);
    return 1;
}
