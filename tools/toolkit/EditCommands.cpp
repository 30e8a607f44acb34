// Drag and transform: each finds its target and works out its mapping here, then runs as undoable
// operations (OperationCommands.cpp). They print nothing; the drawing they arrive at is what later
// commands see and what the call finally writes.
#include "toolkit/Hooks.h"
#include "toolkit/MeasuredPath.h"
#include "toolkit/OperationCommands.h"
#include "toolkit/Targets.h"

#include "simplepath/interfaces/DVector.h"
#include "simplepath/interfaces/P2DTrans.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace sptool {

namespace {

SimplePath& pathOf(Session& session, std::size_t index) {
    return *session.paths[index];
}

} // namespace

int runDrag(Session& session, DragStep const& step) {
    PositionTarget target;
    int code = resolvePosition(session, step.from, target);
    if (code != kExitOk || (code = checkFinite(session, step.to)) != kExitOk) {
        return code;
    }
    return runDragOperation(session, target.path, target.position, step.to);
}

int runTransform(Session& session, TransformStep const& step) {
    std::vector<std::size_t> paths;
    int code = pathsToSearch(session, step.path, paths);
    if (code != kExitOk) {
        return code;
    }
    for (double v : step.values) {
        if (!std::isfinite(v)) {
            return session.fail("transform: its numbers must be finite");
        }
    }
    DPoint center;
    if (step.center) {
        if ((code = checkFinite(session, *step.center)) != kExitOk) {
            return code;
        }
        center = *step.center;
    } else {
        // The centre of the box around every curve that moves.
        double minX = std::numeric_limits<double>::infinity(), minY = minX;
        double maxX = -minX, maxY = -minX;
        for (std::size_t p : paths) {
            double x0 = 0, y0 = 0, x1 = 0, y1 = 0;
            if (MeasuredPath(pathOf(session, p)).path().getMinMax(x0, y0, x1, y1) == SimplePath::Success) {
                minX = std::min(minX, x0);
                minY = std::min(minY, y0);
                maxX = std::max(maxX, x1);
                maxY = std::max(maxY, y1);
            }
        }
        if (minX <= maxX) {
            center = DPoint((minX + maxX) / 2.0, (minY + maxY) / 2.0);
        }
    }
    std::vector<double> const& v = step.values;
    P2DTrans linear;
    DVector shift;
    switch (step.kind) {
    case TransformKind::Translate:
        shift = DVector(v[0], v[1]);
        break;
    case TransformKind::Scale:
        linear.xScale(v[0]).yScale(v[1]);
        break;
    case TransformKind::Rotate:
        linear.rotate(v[0] * 3.14159265358979323846 / 180.0);
        break;
    case TransformKind::Matrix:
        // SVG's matrix(a b c d e f): the linear part about the centre, then the shift (e, f).
        linear = P2DTrans(v[0], v[2], v[1], v[3]);
        shift = DVector(v[4], v[5]);
        break;
    }
    return runTransformOperation(session, paths, linear, center, shift,
                                 step.kind == TransformKind::Translate);
}

} // namespace sptool
