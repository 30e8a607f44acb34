#include "simplepath/operations/SimplePathOperationFactory.h"

#include <memory>
#include <new>
#include <utility>

#include "simplepath/operations/AddSimplePathVertexOperation.h"
#include "simplepath/operations/AverageVertexOperation.h"
#include "simplepath/operations/ChangeSimplePathVertexOperation.h"
#include "simplepath/operations/DeleteSimplePathVertexOperation.h"
#include "simplepath/operations/InsertVerticesSimplePathOperation.h"
#include "simplepath/operations/JoinSimplePathVerticesOperation.h"
#include "simplepath/operations/MoveSelectedVerticesOperation.h"
#include "simplepath/operations/SimplePathMetaOperation.h"
#include "simplepath/operations/SimplePathVertexPickOperation.h"
#include "simplepath/operations/SplitSimplePathVertexOperation.h"
#include "simplepath/operations/setCuspModeOperation.h"
#include "simplepath/operations/setSmoothModeOperation.h"
#include "simplepath/operations/setStraightModeOperation.h"
#include "simplepath/operations/setSymmetricModeOperation.h"
#include "simplepath/path/SimplePath.h"

namespace {

template <class Operation, class... Args> SimplePathOperation* make(Args&&... args) {
    try {
        return new Operation(std::forward<Args>(args)...);
    } catch (std::bad_alloc const&) {
        return nullptr;
    }
}

} // namespace

SimplePathOperation*
SimplePathOperationFactory::createVertexPickOperation(PHashablePointer<SimplePath> path,
                                                      SimplePathVertexPickAction const& action, bool shell) {
    if (!shell && path == nullptr) {
        return nullptr;
    }
    return make<SimplePathVertexPickOperation>(path, action);
}

SimplePathOperation* SimplePathOperationFactory::createMoveSelectedVerticesOperation(
    PHashablePointer<SimplePath> path, SimplePathVertex* vertex, DVector const& offset, bool shell) {
    if (!shell && (path == nullptr || vertex == nullptr)) {
        return nullptr;
    }
    return make<MoveSelectedVerticesOperation>(path, vertex, offset);
}

SimplePathOperation* SimplePathOperationFactory::createAddVertexAtPositionOperation(
    PHashablePointer<SimplePath> path, SimplePathPosition const& position, bool shell) {
    if (!shell && path == nullptr) {
        return nullptr;
    }
    return make<AddSimplePathVertexOperation>(path, position);
}

SimplePathOperation* SimplePathOperationFactory::createAverageVertexOperation(
    PHashablePointer<SimplePath> path, SimplePathVertex* vertex, DPoint const& p0, DPoint const& p1,
    DPoint const& p2, short int alignment, PBoxForm const& boxForm, bool shell) {
    if (!shell && (path == nullptr || vertex == nullptr)) {
        return nullptr;
    }
    return make<AverageVertexOperation>(path, vertex, p0, p1, p2, alignment, boxForm);
}

SimplePathOperation*
SimplePathOperationFactory::createChangeVertexOperation(PHashablePointer<SimplePath> path,
                                                        SimplePathVertexTriple current,
                                                        SimplePathLocationTriple target, bool shell) {
    if (!shell && path == nullptr) {
        return nullptr;
    }
    return make<ChangeSimplePathVertexOperation>(path, current, target);
}

SimplePathOperation* SimplePathOperationFactory::createInsertVerticesOperation(
    PHashablePointer<SimplePath> path, std::list<SimplePathLocationTriple> triples, int index, bool shell) {
    if (!shell && path == nullptr) {
        return nullptr;
    }
    return make<InsertVerticesSimplePathOperation>(path, triples, index);
}

SimplePathOperation*
SimplePathOperationFactory::createDeleteVertexOperation(PHashablePointer<SimplePath> path,
                                                        SimplePathVertex* vertex, bool shell) {
    if (!shell && (path == nullptr || vertex == nullptr)) {
        return nullptr;
    }
    return make<DeleteSimplePathVertexOperation>(path, vertex);
}

SimplePathOperation*
SimplePathOperationFactory::createJoinVerticesOperation(PHashablePointer<SimplePath> path,
                                                        SimplePathVertex* first, SimplePathVertex* second,
                                                        PHashablePointer<SimplePath> secondPath, bool shell) {
    if (!shell && (path == nullptr || first == nullptr || second == nullptr || secondPath == nullptr)) {
        return nullptr;
    }
    return make<JoinSimplePathVerticesOperation>(path, first, second, secondPath);
}

SimplePathOperation* SimplePathOperationFactory::createSetCuspModeOperation(PHashablePointer<SimplePath> path,
                                                                            SimplePathVertex* vertex,
                                                                            bool shell) {
    if (!shell && (path == nullptr || vertex == nullptr)) {
        return nullptr;
    }
    return make<setCuspModeOperation>(path, vertex);
}

SimplePathOperation*
SimplePathOperationFactory::createSetSmoothModeOperation(PHashablePointer<SimplePath> path,
                                                         SimplePathVertex* vertex, bool shell) {
    if (!shell && (path == nullptr || vertex == nullptr)) {
        return nullptr;
    }
    return make<setSmoothModeOperation>(path, vertex);
}

SimplePathOperation*
SimplePathOperationFactory::createSetSymmetricModeOperation(PHashablePointer<SimplePath> path,
                                                            SimplePathVertex* vertex, bool shell) {
    if (!shell && (path == nullptr || vertex == nullptr)) {
        return nullptr;
    }
    return make<setSymmetricModeOperation>(path, vertex);
}

SimplePathOperation*
SimplePathOperationFactory::createSetStraightModeOperation(PHashablePointer<SimplePath> path,
                                                           SimplePathVertex* vertex, bool shell) {
    if (!shell && (path == nullptr || vertex == nullptr)) {
        return nullptr;
    }
    return make<setStraightModeOperation>(path, vertex);
}

SimplePathOperation* SimplePathOperationFactory::createSplitVertexOperation(
    PHashablePointer<SimplePath> path, SimplePathPosition const& position,
    PHashablePointer<SimplePath> firstPiece, PHashablePointer<SimplePath> secondPiece, bool shell) {
    if (!shell && path == nullptr) {
        return nullptr;
    }
    return make<SplitSimplePathVertexOperation>(path, position, firstPiece, secondPiece);
}

SimplePathOperation* SimplePathOperationFactory::createSplitVertexOperation(PHashablePointer<SimplePath> path,
                                                                            SimplePathVertex* vertex) {
    if (path == nullptr || vertex == nullptr) {
        return nullptr;
    }
    SimplePathVertexTriple triple;
    int isFirst = 0;
    int isLast = 0;
    SimplePathPosition position;
    // An end of an open path has nothing to cut off.
    if (path->getVertexInfo(vertex, triple, isFirst, isLast) != SimplePath::Success ||
        (triple.anchor == vertex && (isFirst != 0 || isLast != 0)) ||
        path->getAnchorPosition(vertex, position) != SimplePath::Success) {
        return nullptr;
    }
    return make<SplitSimplePathVertexOperation>(path, position, PHashablePointer<SimplePath>(),
                                                PHashablePointer<SimplePath>());
}

SimplePathOperation*
SimplePathOperationFactory::createOperationFromSII(SimplePathOperation::SegmentIndependentInformation* info) {
    if (info == nullptr) {
        return nullptr;
    }
    PHashablePointer<SimplePath> const none;
    SimplePathVertex* const noVertex = nullptr;
    SimplePathOperation* shell = nullptr;
    switch (info->getType()) {
    case 1:
        shell = createVertexPickOperation(
            none, SimplePathVertexPickAction(SimplePathVertexTriple(), SimplePathLocationTriple()), true);
        break;
    case 3:
        shell = createMoveSelectedVerticesOperation(none, noVertex, DVector(), true);
        break;
    case 4:
        shell = createAddVertexAtPositionOperation(none, SimplePathPosition(), true);
        break;
    case 5:
        shell =
            createAverageVertexOperation(none, noVertex, DPoint(), DPoint(), DPoint(), 0, PBoxForm(), true);
        break;
    case 6:
        shell = createChangeVertexOperation(none, SimplePathVertexTriple(), SimplePathLocationTriple(), true);
        break;
    case 7:
        shell = createInsertVerticesOperation(none, {}, -1, true);
        break;
    case 9:
        shell = createDeleteVertexOperation(none, noVertex, true);
        break;
    case 10:
        shell = createJoinVerticesOperation(none, noVertex, noVertex, none, true);
        break;
    case 11:
        shell = createSetCuspModeOperation(none, noVertex, true);
        break;
    case 12:
        shell = createSetSmoothModeOperation(none, noVertex, true);
        break;
    case 13:
        shell = createSetSymmetricModeOperation(none, noVertex, true);
        break;
    case 14:
        shell = createSetStraightModeOperation(none, noVertex, true);
        break;
    case 15:
        shell = createSplitVertexOperation(none, SimplePathPosition(), none, none, true);
        break;
    case 2:
        shell = new (std::nothrow) SimplePathMetaOperation();
        break;
    // 8 is unassigned.
    default:
        return nullptr;
    }
    std::unique_ptr<SimplePathOperation> rebuilt(shell);
    int const applied = rebuilt != nullptr ? rebuilt->ApplySegIndependentInfo(info) : 0;
    // A group is accepted whenever it was filled at all: members that could not be rebuilt are skipped.
    if (applied == 0 || (applied != 1 && info->getType() != 2)) {
        return nullptr; // a shell that could not be filled is not handed out
    }
    return rebuilt.release();
}
