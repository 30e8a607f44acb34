#include "simplepath/operations/JoinSimplePathVerticesOperation.h"

#include "simplepath/operations/detail/OperationSupport.h"

using namespace operation_support;

namespace {

// The anchor is an end of its open path: the first or last triple's anchor.
bool isEnd(SimplePath const& path, SimplePathVertex* vertex, SimplePathVertexTriple& triple) {
    int isFirst = 0;
    int isLast = 0;
    return path.getVertexInfo(vertex, triple, isFirst, isLast) == SimplePath::Success &&
           triple.anchor == vertex && (isFirst != 0 || isLast != 0);
}

} // namespace

int JoinSimplePathVerticesOperation::JoinOpInformation::getType() const {
    return 10;
}

JoinSimplePathVerticesOperation::JoinSimplePathVerticesOperation(PHashablePointer<SimplePath> firstPath,
                                                                 SimplePathVertex* firstVertex,
                                                                 SimplePathVertex* secondVertex,
                                                                 PHashablePointer<SimplePath> otherPath)
    : path(firstPath), first(firstVertex), second(secondVertex), secondPath(otherPath) {}

JoinSimplePathVerticesOperation::JoinSimplePathVerticesOperation(JoinSimplePathVerticesOperation const& other)
    : SimplePathOperation(other), path(other.path), first(other.first), second(other.second),
      secondPath(other.secondPath) {}

JoinSimplePathVerticesOperation::~JoinSimplePathVerticesOperation() {
    releaseMementos();
    deleteAll(unlinked);
    if (!joinedReported) {
        delete joined.getPointer();
    }
}

void JoinSimplePathVerticesOperation::releaseMementos() {
    delete memento;
    delete secondMemento;
    delete joinedMemento;
    memento = secondMemento = joinedMemento = nullptr;
}

SimplePathOperation::Result
JoinSimplePathVerticesOperation::executeOperation(std::list<PHashablePointer<SimplePath>>& affectedPaths,
                                                  SimplePathChangeInstruction& change) {
    if (applied) {
        return EditFailed;
    }
    if (path == nullptr || secondPath == nullptr) {
        return EditFailed;
    }
    if (path->isClosedSimplePath() != 0 || secondPath->isClosedSimplePath() != 0) {
        return NotJoinable;
    }
    if (first == second) {
        return SameVertex;
    }
    SimplePathVertexTriple firstTriple;
    SimplePathVertexTriple secondTriple;
    int index = -1;
    if (first == nullptr || second == nullptr ||
        path->getVertexInfo(first, firstTriple, index) != SimplePath::Success ||
        secondPath->getVertexInfo(second, secondTriple, index) != SimplePath::Success) {
        return EditFailed;
    }
    if (!isEnd(*path, first, firstTriple) || !isEnd(*secondPath, second, secondTriple)) {
        return NotJoinable;
    }
    if (joined == nullptr) {
        joined = new (std::nothrow) SimplePath();
        if (joined == nullptr) {
            return MementoFailed;
        }
    }
    releaseMementos();
    if (!takeMemento(path, memento) || !takeMemento(secondPath, secondMemento) ||
        !takeMemento(joined, joinedMemento)) {
        return MementoFailed;
    }
    DPoint const firstAt = first->getLocation();
    DPoint const secondAt = second->getLocation();
    std::vector<SimplePathVertex*> merged;
    try {
        merged = {secondTriple.first, secondTriple.anchor, secondTriple.last};
        unlinked.reserve(unlinked.size() + merged.size());
    } catch (std::bad_alloc const&) {
        return MementoFailed;
    }
    SimplePath::Result const done = SimplePath::join(path, first, secondPath, second, change, joined);
    // Once the join has got going it has reported the joined path, even should it fail later.
    if (joined->numTriples() > 0) {
        joinedReported = true;
    }
    if (done != SimplePath::Success) {
        return MementoFailed; // deliberately: hosts treat a failed join like a failed memento
    }
    int isFirst = 0;
    int isLast = 0;
    if (joined->getVertexInfo(second, secondTriple, isFirst, isLast) != SimplePath::Success) {
        // The two ends lay at one place and were merged: the second end's triple left every path.
        unlinked.insert(unlinked.end(), merged.begin(), merged.end());
    }
    firstBefore = firstAt;
    secondBefore = secondAt;
    applied = true;
    affectedPaths.push_back(path);
    affectedPaths.push_back(secondPath);
    return Success;
}

void JoinSimplePathVerticesOperation::undoOperation() {
    // The joined path is emptied first (its memento is of the path as it was before: normally empty),
    // so that no vertex is held by two paths at any time after the restores.
    restoreMemento(joined, joinedMemento);
    dropNamed(unlinked, memento);
    dropNamed(unlinked, secondMemento);
    restoreMemento(path, memento);
    restoreMemento(secondPath, secondMemento);
    applied = false;
}

int JoinSimplePathVerticesOperation::RetreiveSegIndependentInfo(SegmentIndependentInformation*& info) {
    return retrieve<JoinOpInformation>(info, [&](JoinOpInformation& record) {
        record.firstLocation = applied ? firstBefore : locationOf(first);
        record.secondLocation = applied ? secondBefore : locationOf(second);
    });
}

int JoinSimplePathVerticesOperation::ApplySegIndependentInfo(SegmentIndependentInformation*& info) {
    auto const* record = applicableRecord<JoinOpInformation>(info);
    PHashablePointer<SimplePath> firstPath;
    SimplePathVertex* firstVertex = nullptr;
    PHashablePointer<SimplePath> otherPath;
    SimplePathVertex* secondVertex = nullptr;
    if (memento != nullptr || joined != nullptr || record == nullptr ||
        !pick(*record, record->firstLocation, firstPath, firstVertex) || firstVertex == nullptr ||
        !pick(*record, record->secondLocation, otherPath, secondVertex) || secondVertex == nullptr) {
        return 0;
    }
    path = firstPath;
    first = firstVertex;
    second = secondVertex;
    secondPath = otherPath;
    return 1;
}
