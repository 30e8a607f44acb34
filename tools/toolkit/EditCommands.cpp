// The commands that change the drawing: insert, delete, mode, split, join, drag and transform. They print
// nothing; the drawing they arrive at is what later commands see and what the call finally writes.
#include "toolkit/Hooks.h"
#include "toolkit/MeasuredPath.h"
#include "toolkit/Targets.h"

#include "simplepath/edit/SimplePathChangeInstruction.h"
#include "simplepath/interfaces/DVector.h"
#include "simplepath/interfaces/P2DTrans.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>

namespace sptool {

namespace {

bool holds(std::list<PHashablePointer<SimplePath>> const& paths, SimplePath const* path) {
    return std::find(paths.begin(), paths.end(), path) != paths.end();
}

// Brings the session's path list up to date after an edit that replaced paths: the paths the edit added
// (taken from `made`, the new paths handed to it) stand where the first path it removed stood, the removed
// paths are dropped, and so are the vertices it removed from the drawing, which nothing holds any more.
// Paths in `made` that the edit did not use are freed with it.
void applyChanges(Session& session, SimplePathChangeInstruction const& change,
                  std::vector<std::unique_ptr<SimplePath>> made = {}) {
    std::list<PHashablePointer<SimplePath>> removed;
    std::list<PHashablePointer<SimplePath>> added;
    change.simplePathsRemoved(removed);
    change.simplePathsAdded(added);
    auto& paths = session.paths;
    auto const first =
        std::find_if(paths.begin(), paths.end(), [&](auto const& p) { return holds(removed, p.get()); });
    std::size_t at = static_cast<std::size_t>(first - paths.begin());
    paths.erase(
        std::remove_if(paths.begin(), paths.end(), [&](auto const& p) { return holds(removed, p.get()); }),
        paths.end());
    at = std::min(at, paths.size());
    for (PHashablePointer<SimplePath> const& p : added) {
        auto const fresh =
            std::find_if(made.begin(), made.end(), [&](auto const& m) { return m.get() == p.pointer; });
        if (fresh != made.end()) {
            paths.insert(paths.begin() + static_cast<std::ptrdiff_t>(at++), std::move(*fresh));
        }
    }
    std::set<SimplePathVertex*> gone;
    std::set<SimplePathVertex*> kept;
    change.simplePathVerticesRemoved(gone);
    change.simplePathVerticesAdded(kept);
    for (SimplePathVertex* vertex : gone) {
        if (kept.count(vertex) == 0) {
            delete vertex;
        }
    }
}

SimplePath& pathOf(Session& session, std::size_t index) {
    return *session.paths[index];
}

} // namespace

int runInsert(Session& session, InsertStep const& step) {
    PositionTarget target;
    if (int const code = resolvePosition(session, step.at, target); code != kExitOk) {
        return code;
    }
    SimplePathChangeInstruction change;
    if (pathOf(session, target.path).addVertexAtPosition(target.position, change) != SimplePath::Success) {
        return session.fail("insert: cannot add a vertex there");
    }
    applyChanges(session, change);
    return kExitOk;
}

int runDelete(Session& session, DeleteStep const& step) {
    VertexTarget target;
    if (int const code = resolveVertex(session, step.vertex, target); code != kExitOk) {
        return code;
    }
    SimplePathChangeInstruction change;
    SimplePath& path = pathOf(session, target.path);
    if (path.deleteVertex(target.anchor, change) != SimplePath::Success) {
        return session.fail("delete: cannot delete that vertex");
    }
    applyChanges(session, change);
    // A path whose last vertex went draws nothing; dropping it keeps the indices of this call and of the
    // drawing it writes the same.
    if (path.numTriples() == 0) {
        session.paths.erase(session.paths.begin() + static_cast<std::ptrdiff_t>(target.path));
    }
    return kExitOk;
}

int runMode(Session& session, ModeStep const& step) {
    VertexTarget target;
    if (int const code = resolveVertex(session, step.vertex, target); code != kExitOk) {
        return code;
    }
    SimplePathChangeInstruction change;
    SimplePath& path = pathOf(session, target.path);
    SimplePathVertex* vertex = target.anchor;
    SimplePath::Result result = SimplePath::Failure;
    switch (step.mode) {
    case VertexMode::Smooth:
        result = path.setSmoothMode(vertex, change);
        break;
    case VertexMode::Cusp:
        result = path.setCuspMode(vertex, change);
        break;
    case VertexMode::Symmetric:
        result = path.setSymmetricMode(vertex, change);
        break;
    case VertexMode::Straight:
        result = path.setStraightMode(vertex, change);
        break;
    }
    return result == SimplePath::Success ? kExitOk : session.fail("mode: cannot change that vertex");
}

int runSplit(Session& session, SplitStep const& step) {
    VertexTarget target;
    if (int const code = resolveVertex(session, step.vertex, target); code != kExitOk) {
        return code;
    }
    // An open path falls apart into two new paths; a closed one is opened in place.
    std::vector<std::unique_ptr<SimplePath>> made;
    made.push_back(std::make_unique<SimplePath>());
    made.push_back(std::make_unique<SimplePath>());
    PHashablePointer<SimplePath> first(made[0].get());
    PHashablePointer<SimplePath> second(made[1].get());
    SimplePathVertex* const none = nullptr;
    SimplePathChangeInstruction change;
    if (pathOf(session, target.path)
            .splitVertex(target.anchor, change, first, second, none, none, none, none) !=
        SimplePath::Success) {
        return session.fail("split: cannot split at that vertex");
    }
    applyChanges(session, change, std::move(made));
    return kExitOk;
}

namespace {

struct EndTarget {
    std::size_t path = 0;
    SimplePathVertex* anchor = nullptr;
};

SimplePathVertex* endAnchor(SimplePath const& path, bool atStart) {
    SimplePathVertexTriple triple;
    // Fails only for an empty path, whose end anchor is then null.
    (void)path.getTriple(atStart ? 0 : path.numTriples() - 1, triple);
    return triple.anchor;
}

int resolveEnd(Session& session, PathEnd const& end, EndTarget& out) {
    std::vector<std::size_t> paths;
    int const code = pathsToSearch(session, end.path, paths);
    if (code != kExitOk) {
        return code;
    }
    SimplePath const& path = pathOf(session, paths.front());
    if (path.isClosedSimplePath() != 0) {
        return session.fail("join: path " + std::to_string(end.path) + " is closed, so it has no ends");
    }
    out = {paths.front(), endAnchor(path, end.atStart)};
    return kExitOk;
}

// The end anchor of an open path nearest to `point`, strictly within `tolerance`.
int findEnd(Session& session, DPoint const& point, double tolerance, EndTarget& out) {
    int const code = checkFinite(session, point);
    if (code != kExitOk) {
        return code;
    }
    double best = std::numeric_limits<double>::infinity();
    for (std::size_t p = 0; p < session.paths.size(); ++p) {
        SimplePath const& path = pathOf(session, p);
        if (path.isClosedSimplePath() != 0 || path.numTriples() == 0) {
            continue;
        }
        for (bool atStart : {true, false}) {
            SimplePathVertex* const anchor = endAnchor(path, atStart);
            double const d = distance(anchor->getLocation(), point);
            if (d < tolerance && d < best) {
                best = d;
                out = {p, anchor};
            }
        }
    }
    if (best == std::numeric_limits<double>::infinity()) {
        return nothingWithin(session, "end of an open path", tolerance, point);
    }
    return kExitOk;
}

} // namespace

int runJoin(Session& session, JoinStep const& step) {
    EndTarget ends[2];
    for (std::size_t i = 0; i < 2; ++i) {
        int const code = step.ends ? resolveEnd(session, (*step.ends)[i], ends[i])
                                   : findEnd(session, (*step.near)[i], step.tolerance, ends[i]);
        if (code != kExitOk) {
            return code;
        }
    }
    if (ends[0].path == ends[1].path) {
        return session.fail("join: both ends are on path " + std::to_string(ends[0].path) +
                            "; join takes the ends of two different paths");
    }
    // The first path of a join needs two vertices; a lone vertex is joined on as the second instead.
    if (pathOf(session, ends[0].path).numTriples() < 2) {
        std::swap(ends[0], ends[1]);
    }
    std::vector<std::unique_ptr<SimplePath>> made;
    made.push_back(std::make_unique<SimplePath>());
    PHashablePointer<SimplePath> first(session.paths[ends[0].path].get());
    PHashablePointer<SimplePath> second(session.paths[ends[1].path].get());
    PHashablePointer<SimplePath> result(made[0].get());
    SimplePathChangeInstruction change;
    SimplePath::Result const joined =
        SimplePath::join(first, ends[0].anchor, second, ends[1].anchor, change, result);
    applyChanges(session, change, std::move(made));
    return joined == SimplePath::Success ? kExitOk : session.fail("join: cannot join those two ends");
}

int runDrag(Session& session, DragStep const& step) {
    PositionTarget target;
    int code = resolvePosition(session, step.from, target);
    if (code != kExitOk || (code = checkFinite(session, step.to)) != kExitOk) {
        return code;
    }
    if (pathOf(session, target.path).dragToPoint(target.position, step.to) != SimplePath::Success) {
        return session.fail("drag: cannot drag that point");
    }
    return kExitOk;
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
    for (std::size_t p : paths) {
        SimplePath& path = pathOf(session, p);
        if (step.kind != TransformKind::Translate) {
            // Mapping every point always succeeds.
            (void)path.transform(linear, center);
        }
        if (shift != DVector()) {
            // Mapping every point always succeeds.
            (void)path.translate(shift);
        }
    }
    return kExitOk;
}

} // namespace sptool
