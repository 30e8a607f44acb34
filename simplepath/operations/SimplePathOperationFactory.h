#pragma once

#include <list>

#include "simplepath/interaction/SimplePathVertexPickAction.h"
#include "simplepath/interfaces/ArbTrans.h"
#include "simplepath/interfaces/DVector.h"
#include "simplepath/interfaces/P2DTrans.h"
#include "simplepath/interfaces/PBoxForm.h"
#include "simplepath/operations/SimplePathOperation.h"
#include "simplepath/path/SimplePathLocationTriple.h"
#include "simplepath/path/SimplePathPosition.h"
#include "simplepath/path/SimplePathVertexTriple.h"

// Makes every operation. Each member returns a new operation that the caller owns, or null.
//
// The trailing `shell` flag asks for an empty operation that ApplySegIndependentInfo will fill: when it
// is false, a null path handle or (where the member takes one) a null vertex gives null; when it is
// true the operation is built from whatever was passed, nulls included.
class SimplePathOperationFactory {
  public:
    static SimplePathOperation* createVertexPickOperation(PHashablePointer<SimplePath> path,
                                                          SimplePathVertexPickAction const& action,
                                                          bool shell);
    static SimplePathOperation* createMoveSelectedVerticesOperation(PHashablePointer<SimplePath> path,
                                                                    SimplePathVertex* vertex,
                                                                    DVector const& offset, bool shell);
    static SimplePathOperation* createAddVertexAtPositionOperation(PHashablePointer<SimplePath> path,
                                                                   SimplePathPosition const& position,
                                                                   bool shell);
    static SimplePathOperation* createAverageVertexOperation(PHashablePointer<SimplePath> path,
                                                             SimplePathVertex* vertex, DPoint const& p0,
                                                             DPoint const& p1, DPoint const& p2,
                                                             short int alignment, PBoxForm const& boxForm,
                                                             bool shell);
    static SimplePathOperation* createChangeVertexOperation(PHashablePointer<SimplePath> path,
                                                            SimplePathVertexTriple current,
                                                            SimplePathLocationTriple target, bool shell);
    static SimplePathOperation* createInsertVerticesOperation(PHashablePointer<SimplePath> path,
                                                              std::list<SimplePathLocationTriple> triples,
                                                              int index, bool shell);
    static SimplePathOperation* createDeleteVertexOperation(PHashablePointer<SimplePath> path,
                                                            SimplePathVertex* vertex, bool shell);
    static SimplePathOperation* createJoinVerticesOperation(PHashablePointer<SimplePath> path,
                                                            SimplePathVertex* first, SimplePathVertex* second,
                                                            PHashablePointer<SimplePath> secondPath,
                                                            bool shell);
    static SimplePathOperation* createSetCuspModeOperation(PHashablePointer<SimplePath> path,
                                                           SimplePathVertex* vertex, bool shell);
    static SimplePathOperation* createSetSmoothModeOperation(PHashablePointer<SimplePath> path,
                                                             SimplePathVertex* vertex, bool shell);
    static SimplePathOperation* createSetSymmetricModeOperation(PHashablePointer<SimplePath> path,
                                                                SimplePathVertex* vertex, bool shell);
    static SimplePathOperation* createSetStraightModeOperation(PHashablePointer<SimplePath> path,
                                                               SimplePathVertex* vertex, bool shell);
    // Cuts at the anchor nearest the position into the given pieces (null: made on execution).
    static SimplePathOperation* createSplitVertexOperation(PHashablePointer<SimplePath> path,
                                                           SimplePathPosition const& position,
                                                           PHashablePointer<SimplePath> firstPiece,
                                                           PHashablePointer<SimplePath> secondPiece,
                                                           bool shell);
    // Cuts at the vertex's anchor position with pieces made on execution. Null for a null path or
    // vertex, an end anchor of an open path, or a vertex that is not an anchor of the path.
    static SimplePathOperation* createSplitVertexOperation(PHashablePointer<SimplePath> path,
                                                           SimplePathVertex* vertex);
    // Slices one path at two positions, or two paths at one position each (the second path may be the
    // first). Never null for memory that can be had; bad paths and positions are answered on execution.
    static SimplePathOperation* createSlicePathOperation(PHashablePointer<SimplePath> path,
                                                         SimplePathPosition const& firstPosition,
                                                         PHashablePointer<SimplePath> secondPath,
                                                         SimplePathPosition const& secondPosition);
    // Records a cut the host made itself: the first list's paths are replaced by the second's pieces.
    static SimplePathOperation*
    createCurvedSlicePathOperation(std::list<PHashablePointer<SimplePath>> replaced,
                                   std::list<PHashablePointer<SimplePath>> pieces);
    // Closes the listed paths (the list is copied).
    static SimplePathOperation* createClosePathsOperation(std::list<PHashablePointer<SimplePath>>& paths);
    // Deletes a whole path; null for a null path.
    static SimplePathOperation* createDeleteOperation(PHashablePointer<SimplePath> path);
    // Maps the path through `transform` about `reference`.
    static SimplePathOperation* createTransformOperation(PHashablePointer<SimplePath> path,
                                                         P2DTrans const& transform, DPoint const& reference);
    // Maps the path through a borrowed point transform; a null one fails on execution.
    static SimplePathOperation* createTransformOperation(PHashablePointer<SimplePath> path,
                                                         ArbTrans<DPoint>* transform);
    static SimplePathOperation* createTranslateOperation(PHashablePointer<SimplePath> path,
                                                         DVector const& offset);
    // Rebuilds the operation a record describes, resolving its locations through the record's pick
    // function. Null for a null record, an unknown tag, or a record that cannot be resolved.
    static SimplePathOperation*
    createOperationFromSII(SimplePathOperation::SegmentIndependentInformation* info);
};
