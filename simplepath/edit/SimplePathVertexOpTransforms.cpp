#include "simplepath/edit/SimplePathVertexOpTransforms.h"

#include <list>

#include "simplepath/edit/AbsorbSegmentTransform.h"
#include "simplepath/edit/CombineAdjacentSegmentsTransform.h"
#include "simplepath/edit/CompositeTransform.h"
#include "simplepath/edit/NullTransform.h"
#include "simplepath/edit/ShiftPositionTransform.h"

SplitSegmentTransform*
SimplePathVertexOpTransforms::createAddAnchorAtPositionTransform(PHashablePointer<SimplePath> const& path,
                                                                 SimplePathPosition const& position) {
    return new SplitSegmentTransform(path, position.getIndex(), position.getParameter());
}

InsertAnchorsTransform* SimplePathVertexOpTransforms::createSimplePathInsertVerticesTransform(
    PHashablePointer<SimplePath> const& path, int k) {
    return new InsertAnchorsTransform(path, k);
}

SplitAnchorTransform*
SimplePathVertexOpTransforms::createSplitAnchorTransform(PHashablePointer<SimplePath> const& path, int k,
                                                         PHashablePointer<SimplePath> const& firstPath,
                                                         PHashablePointer<SimplePath> const& secondPath) {
    return new SplitAnchorTransform(path, k, firstPath, secondPath);
}

RotateTransform*
SimplePathVertexOpTransforms::createSplitClosedPathTransform(PHashablePointer<SimplePath> const& path,
                                                             int shift, int n) {
    if (n == 0) {
        return nullptr;
    }
    return new RotateTransform(path, shift, n);
}

SimplePathRefRemapTransform*
SimplePathVertexOpTransforms::createSimplePathRefRemapTransform(SimplePathRemap const& remap) {
    return new SimplePathRefRemapTransform(remap);
}

SimplePathPositionTransform* SimplePathVertexOpTransforms::createDeleteAnchorTransform(
    PHashablePointer<SimplePath> const& path, int closed, SimplePathTripleList::Iterator /*triple*/, int k,
    int n) {
    if (k < 0 || k >= n) {
        return new NullTransform();
    }
    if (k > 0) {
        if (k == n - 1 && closed == 0) {
            return new AbsorbSegmentTransform(path, n - 2, n - 2);
        }
        // Fixed halves, not weighted by the lengths of the two segments.
        return new CombineAdjacentSegmentsTransform(path, k, 0.5);
    }
    if (closed != 0) {
        // Rotate so the closing segment and segment 0 sit at 0 and 1, merge them, rotate back so the
        // merged segment closes the shorter path. With one triple the path is left empty and the last
        // rotation would have no segments: nothing to carry.
        if (n < 2) {
            return new NullTransform();
        }
        return new CompositeTransform({new RotateTransform(path, 1, n),
                                       new CombineAdjacentSegmentsTransform(path, 1, 0.5),
                                       new RotateTransform(path, -1, n - 1)});
    }
    return new CompositeTransform(
        {new AbsorbSegmentTransform(path, 0, 1), new ShiftPositionTransform(path, path, -1)});
}
