#include "toolkit/Targets.h"

#include "toolkit/MeasuredPath.h"

#include <cmath>

namespace sptool {

int segmentCount(SimplePath const& path) {
    int const n = path.numTriples();
    return path.isClosedSimplePath() != 0 ? n : std::max(0, n - 1);
}

std::string describePoint(Session const& session, DPoint const& point) {
    std::string text = "(";
    appendNumber(text, point.x, session.numberFormat());
    text += ", ";
    appendNumber(text, point.y, session.numberFormat());
    return text + ")";
}

int checkFinite(Session& session, DPoint const& point) {
    return std::isfinite(point.x) && std::isfinite(point.y)
               ? kExitOk
               : session.fail("coordinates must be finite numbers");
}

namespace {

std::string counted(std::size_t n, char const* one, char const* many) {
    return std::to_string(n) + " " + (n == 1 ? one : many);
}

int checkPath(Session& session, int index) {
    if (index < 0 || static_cast<std::size_t>(index) >= session.paths.size()) {
        return session.fail("path " + std::to_string(index) + " is out of range: the drawing has " +
                            counted(session.paths.size(), "path", "paths"));
    }
    return kExitOk;
}

} // namespace

int pathsToSearch(Session& session, std::optional<int> path, std::vector<std::size_t>& out) {
    out.clear();
    if (path) {
        int const code = checkPath(session, *path);
        if (code == kExitOk) {
            out.push_back(static_cast<std::size_t>(*path));
        }
        return code;
    }
    for (std::size_t i = session.paths.size(); i-- > 0;) {
        out.push_back(i);
    }
    return kExitOk;
}

int pathsNear(Session& session, std::optional<int> path, DPoint const& point, std::vector<std::size_t>& out) {
    int const code = pathsToSearch(session, path, out);
    return code != kExitOk ? code : checkFinite(session, point);
}

int nothingWithin(Session& session, std::string const& what, double tolerance, DPoint const& point) {
    std::string within;
    appendNumber(within, tolerance, session.numberFormat());
    return session.fail("no " + what + " within " + within + " of " + describePoint(session, point));
}

namespace {

// The path an index target names: --path, or path 0 when none is given.
int indexedPath(Session& session, Target const& target, std::size_t& path) {
    if (int const code = checkPath(session, target.path.value_or(0)); code != kExitOk) {
        return code;
    }
    path = static_cast<std::size_t>(target.path.value_or(0));
    return kExitOk;
}

} // namespace

int resolveVertex(Session& session, Target const& target, VertexTarget& out) {
    if (target.vertex) {
        if (int const code = indexedPath(session, target, out.path); code != kExitOk) {
            return code;
        }
        SimplePath const& path = *session.paths[out.path];
        SimplePathVertexTriple triple;
        if (path.getTriple(*target.vertex, triple) != SimplePath::Success) {
            return session.fail("vertex " + std::to_string(*target.vertex) + " is out of range: path " +
                                std::to_string(out.path) + " has " +
                                counted(static_cast<std::size_t>(path.numTriples()), "vertex", "vertices"));
        }
        out.index = *target.vertex;
        out.anchor = triple.anchor;
        return kExitOk;
    }
    std::vector<std::size_t> paths;
    if (int const code = pathsNear(session, target.path, *target.near, paths); code != kExitOk) {
        return code;
    }
    for (std::size_t p : paths) {
        SimplePath const& path = *session.paths[p];
        SimplePathVertex* hit = nullptr;
        SimplePathVertexTriple triple;
        if (path.pickVertex(*target.near, target.tolerance, hit) == SimplePath::Success &&
            path.getVertexInfo(hit, triple, out.index) == SimplePath::Success) {
            out.path = p;
            out.anchor = triple.anchor;
            return kExitOk;
        }
    }
    return nothingWithin(session, "vertex", target.tolerance, *target.near);
}

int resolvePosition(Session& session, Target const& target, PositionTarget& out) {
    if (target.position) {
        if (int const code = indexedPath(session, target, out.path); code != kExitOk) {
            return code;
        }
        int const segments = segmentCount(*session.paths[out.path]);
        if (target.position->segment < 0 || target.position->segment >= segments) {
            return session.fail("segment " + std::to_string(target.position->segment) +
                                " is out of range: path " + std::to_string(out.path) + " has " +
                                counted(static_cast<std::size_t>(segments), "segment", "segments"));
        }
        out.position.setValues(target.position->segment, target.position->t);
        return kExitOk;
    }
    std::vector<std::size_t> paths;
    if (int const code = pathsNear(session, target.path, *target.near, paths); code != kExitOk) {
        return code;
    }
    for (std::size_t p : paths) {
        SimplePath const& path = *session.paths[p];
        MeasuredPath const measured(path);
        int const segments = segmentCount(path);
        if (segments > 0 && measured.path().pickPosition(*target.near, target.tolerance, out.position) ==
                                SimplePath::Success) {
            out.path = p;
            out.position = measured.original(out.position);
            if (out.position.getIndex() >= segments) {
                out.position.setValues(segments - 1, 1.0);
            }
            return kExitOk;
        }
    }
    return nothingWithin(session, "curve", target.tolerance, *target.near);
}

} // namespace sptool
