#pragma once

#include "simplepath/edit/InsertAnchorsTransform.h"
#include "simplepath/edit/RotateTransform.h"
#include "simplepath/edit/SimplePathRefRemapTransform.h"
#include "simplepath/edit/SplitAnchorTransform.h"
#include "simplepath/edit/SplitSegmentTransform.h"
#include "simplepath/path/SimplePathPosition.h"
#include "simplepath/path/SimplePathTripleList.h"

// Makes the position transform that describes each vertex edit. Every member returns a new transform
// that the caller owns until it hands it to a change instruction.
class SimplePathVertexOpTransforms {
  public:
    SimplePathVertexOpTransforms() = delete;

    // An anchor inserted at `position` (k, s): segment k is cut at s.
    static SplitSegmentTransform* createAddAnchorAtPositionTransform(PHashablePointer<SimplePath> const& path,
                                                                     SimplePathPosition const& position);
    // A triple inserted after triple k.
    static InsertAnchorsTransform*
    createSimplePathInsertVerticesTransform(PHashablePointer<SimplePath> const& path, int k);
    // An open path cut at anchor k into `firstPath` and `secondPath`.
    static SplitAnchorTransform* createSplitAnchorTransform(PHashablePointer<SimplePath> const& path, int k,
                                                            PHashablePointer<SimplePath> const& firstPath,
                                                            PHashablePointer<SimplePath> const& secondPath);
    // A closed path of n segments whose start moved by `shift` places (cutting a closed path open at
    // anchor k passes shift = n - k). Refuses n = 0, which describes no closed path: returns null.
    static RotateTransform* createSplitClosedPathTransform(PHashablePointer<SimplePath> const& path,
                                                           int shift, int n);
    // Pairs moved to the replacement paths; the transform keeps a copy of `remap`.
    static SimplePathRefRemapTransform* createSimplePathRefRemapTransform(SimplePathRemap const& remap);

    // Anchor k of a path of n triples (counted before the deletion) is deleted. `closed` is the path's
    // closed flag; `triple` addresses the triple being deleted and is not needed to build the transform.
    //   k > 0, open, k = n - 1: the last segment and the old last anchor go to the new last anchor;
    //   k > 0 otherwise: the two segments around the anchor become one, each taking half its range;
    //   k = 0, closed: the closing segment and segment 0 become the new closing segment;
    //   k = 0, open: the first segment goes to old anchor 1, which becomes anchor 0.
    // A NullTransform where no position can move or survive: k outside 0 .. n - 1 (nothing is deleted),
    // and the one vertex of a closed path (the path is left empty).
    static SimplePathPositionTransform* createDeleteAnchorTransform(PHashablePointer<SimplePath> const& path,
                                                                    int closed,
                                                                    SimplePathTripleList::Iterator triple,
                                                                    int k, int n);
};
