#pragma once

#include <list>

#include "simplepath/foundation/PHashablePointer.h"
#include "simplepath/foundation/PList.h"
#include "simplepath/interfaces/ArbTrans.h"
#include "simplepath/interfaces/DPoint.h"
#include "simplepath/interfaces/PBezierCurve.h"

class SimplePath;

// Conversion between paths and chains of Bezier segments. Each returns 0, or
// kSimplePathGenericFailure when a path cannot be allocated or is missing.
constexpr long kSimplePathGenericFailure = 0x80004005L;

// Puts the path's segments, in path order, in front of the curve's segments and copies the closed flag
// into the curve; every control point is first mapped through `transform`. A path of fewer than two
// triples instead appends one degenerate segment at its only anchor (at the origin when it is empty)
// and leaves the curve's flag alone.
long createBezierCurve(SimplePath const& path, ArbTrans<DPoint> const& transform, PBezierCurve& curve);
long createBezierCurve(SimplePath const& path, PBezierCurve& curve);

// Appends one Cusp triple per segment joint to the path `path` refers to; consecutive segments are
// taken to join, so only the last segment's end point is read. The path is closed when the curve says
// so or `forceClosed` is set; an open curve gets retracted outer handles at both ends.
long createSimplePath(PBezierCurve const& curve, PHashablePointer<SimplePath>& path, int forceClosed);
long createSimplePath(PBezierCurve const& curve, PHashablePointer<SimplePath>& path);

// Makes one new path per non-empty curve and appends it to `paths` (the caller owns them). Unlike
// createSimplePath, each triple's mode is inferred from its handles and the curve's own closed flag
// is ignored: a curve is closed when `forceClosed` is set or when its first point equals the second
// control point of its last segment.
long createSimplePaths(PList<PBezierCurve>& curves, std::list<PHashablePointer<SimplePath>>& paths,
                       int forceClosed);
