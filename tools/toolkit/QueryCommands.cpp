// The commands that report on the drawing without changing it: info, nearest, intersect and pick. Each
// prints plain lines, or one JSON document with --json.
#include "toolkit/Hooks.h"
#include "toolkit/Targets.h"

#include "simplepath/interfaces/ArbTrans.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <list>

namespace sptool {

namespace {

using nlohmann::json;

// Numbers as --decimals asks for them, both in text and in JSON; without it, text is rounded to a readable
// number of decimals and JSON keeps every digit.
struct Report {
    Session& session;

    std::string num(double value) const {
        std::string text;
        NumberFormat format = session.numberFormat();
        format.readable = true;
        appendNumber(text, value, format);
        return text;
    }
    std::string point(DPoint const& p) const { return num(p.x) + " " + num(p.y); }
    std::string position(SimplePathPosition const& p) const {
        return std::to_string(p.getIndex()) + ":" + num(p.getParameter());
    }
    double value(double v) const {
        if (session.options.decimals < 0) {
            return v;
        }
        double const scale = std::pow(10.0, session.options.decimals);
        return std::round(v * scale) / scale;
    }
    json pointJson(DPoint const& p) const { return json::array({value(p.x), value(p.y)}); }
    json positionJson(SimplePathPosition const& p) const {
        return {{"segment", p.getIndex()}, {"t", value(p.getParameter())}};
    }
    // Reports go where the whole call's -o says, else to standard output.
    int print(json const& document) const { return session.emit("", document.dump(2) + "\n"); }
    int print(std::string const& text) const { return session.emit("", text); }
};

char const* modeName(SimplePathVertexTriple::VertexTripleMode mode) {
    switch (mode) {
    case SimplePathVertexTriple::Smooth:
        return "smooth";
    case SimplePathVertexTriple::Symmetric:
        return "symmetric";
    default:
        return "cusp";
    }
}

// Multiplies by a power of two, which is exact: a drawing measured at a smaller scale and scaled back.
class PowerOfTwoScale : public ArbTrans<DPoint> {
  public:
    explicit PowerOfTwoScale(int exponent) : exponent_(exponent) {}
    DPoint transform(DPoint const& p) const override {
        return {std::ldexp(p.x, exponent_), std::ldexp(p.y, exponent_)};
    }
    DPoint reverseTransform(DPoint const& p) const override {
        return {std::ldexp(p.x, -exponent_), std::ldexp(p.y, -exponent_)};
    }

  private:
    int exponent_;
};

// Bounds and length of a path. The library's extreme and length solvers square coordinate differences,
// which overflows for curves near the top of the double range (1e150 and up) although their bounds and
// length are finite: such a path is measured scaled down by a power of two and the results are scaled
// back, both exactly.
struct Measures {
    double minX = 0, minY = 0, maxX = 0, maxY = 0, length = 0;
};

Measures measure(SimplePath const& path) {
    Measures m;
    path.getMinMax(m.minX, m.minY, m.maxX, m.maxY);
    path.pretransformLength(IdTrans<DPoint>(), m.length);
    double const extent =
        std::max({std::fabs(m.minX), std::fabs(m.minY), std::fabs(m.maxX), std::fabs(m.maxY)});
    if (std::isfinite(extent) && extent > 1e150) {
        int exponent = 0;
        std::frexp(extent, &exponent);
        PowerOfTwoScale const down(-exponent);
        path.pretransformGetMinMax(down, m.minX, m.minY, m.maxX, m.maxY);
        path.pretransformLength(down, m.length);
        for (double* v : {&m.minX, &m.minY, &m.maxX, &m.maxY, &m.length}) {
            *v = std::ldexp(*v, exponent);
        }
    }
    return m;
}

DPoint located(SimplePath const& path, SimplePathPosition const& position) {
    DPoint point;
    path.locatePosition(position, point);
    return point;
}

} // namespace

int runInfo(Session& session, InfoStep const&) {
    Report const report{session};
    json paths = json::array();
    std::string text;
    for (std::size_t i = 0; i < session.paths.size(); ++i) {
        SimplePath const& path = *session.paths[i];
        bool const closed = path.isClosedSimplePath() != 0;
        std::list<SimplePathLocationTriple> triples;
        path.getLocationTripleList(triples);
        json modes = json::array();
        int counts[3] = {0, 0, 0};
        for (SimplePathLocationTriple const& t : triples) {
            modes.push_back(modeName(t.mode));
            ++counts[t.mode == SimplePathVertexTriple::Smooth      ? 0
                     : t.mode == SimplePathVertexTriple::Symmetric ? 2
                                                                   : 1];
        }
        json entry = {{"index", i}, {"vertices", triples.size()}, {"closed", closed}, {"modes", modes}};
        text += "path " + std::to_string(i) + ": " + std::to_string(triples.size()) + " vertices, " +
                (closed ? "closed" : "open") + "\n";
        if (!triples.empty()) {
            Measures const m = measure(path);
            double const minX = m.minX, minY = m.minY, maxX = m.maxX, maxY = m.maxY, length = m.length;
            DPoint top, bottom;
            path.getTopBottom(top, bottom);
            if (!std::isfinite(length)) {
                return session.fail("info: the length of path " + std::to_string(i) +
                                    " overflows the range of double precision");
            }
            entry["bounds"] = {report.value(minX), report.value(minY), report.value(maxX),
                               report.value(maxY)};
            entry["top"] = report.pointJson(top);
            entry["bottom"] = report.pointJson(bottom);
            entry["length"] = report.value(length);
            std::string modeText;
            char const* const names[] = {"smooth", "cusp", "symmetric"};
            for (int m = 0; m < 3; ++m) {
                if (counts[m] > 0) {
                    modeText += (modeText.empty() ? "" : ", ") + std::to_string(counts[m]) + " " + names[m];
                }
            }
            text += "  modes: " + modeText + "\n  bounds: " + report.point(DPoint(minX, minY)) + " to " +
                    report.point(DPoint(maxX, maxY)) + "\n  top: " + report.point(top) +
                    ", bottom: " + report.point(bottom) + "\n  length: " + report.num(length) + "\n";
        }
        paths.push_back(std::move(entry));
    }
    if (session.options.json) {
        return report.print(json{{"source", session.source}, {"paths", paths}});
    }
    return report.print(text);
}

int runNearest(Session& session, NearestStep const& step) {
    Report const report{session};
    std::vector<std::size_t> paths;
    if (int const code = pathsNear(session, step.path, step.point, paths); code != kExitOk) {
        return code;
    }
    // Paths are searched last first; a later path takes the answer only when strictly nearer, so the
    // lowest path index wins ties.
    std::optional<std::size_t> best;
    SimplePathPosition bestPosition;
    double bestSquared = 0.0;
    for (auto it = paths.rbegin(); it != paths.rend(); ++it) {
        SimplePathPosition position;
        double squared = 0.0;
        if (session.paths[*it]->findClosestPosition(step.point, position, squared) == SimplePath::Success &&
            (!best || squared < bestSquared)) {
            best = *it;
            bestPosition = position;
            bestSquared = squared;
        }
    }
    if (!best) {
        return session.fail("nearest: the drawing has no vertices to measure from");
    }
    DPoint const point = located(*session.paths[*best], bestPosition);
    // From the point itself: the squared distance overflows long before the distance does.
    double const distance = std::hypot(point.x - step.point.x, point.y - step.point.y);
    if (!std::isfinite(distance)) {
        return session.fail("nearest: the distance overflows the range of double precision");
    }
    if (session.options.json) {
        return report.print(json{{"path", *best},
                                 {"position", report.positionJson(bestPosition)},
                                 {"point", report.pointJson(point)},
                                 {"distance", report.value(distance)}});
    }
    return report.print("path " + std::to_string(*best) + " at " + report.position(bestPosition) +
                        ", point " + report.point(point) + ", distance " + report.num(distance) + "\n");
}

int runIntersect(Session& session, IntersectStep const& step) {
    Report const report{session};
    std::vector<std::size_t> paths;
    int code = pathsToSearch(session, step.path, paths);
    if (code != kExitOk || (code = checkFinite(session, step.from)) != kExitOk ||
        (code = checkFinite(session, step.to)) != kExitOk) {
        return code;
    }
    if (step.from == step.to) {
        return session.fail("intersect: the two points are the same, so they give no line");
    }
    json hits = json::array();
    std::string text;
    std::size_t count = 0;
    for (auto it = paths.rbegin(); it != paths.rend(); ++it) {
        SimplePath const& path = *session.paths[*it];
        std::list<SimplePathPosition> found;
        if (path.numTriples() == 0 ||
            path.pretransformFindIntersections(step.from, step.to, IdTrans<DPoint>(), found) !=
                SimplePath::Success) {
            continue;
        }
        // Reported along the path, each crossing once (an end anchor on the line is also found as the
        // start of its segment).
        found.sort();
        found.unique();
        for (SimplePathPosition const& position : found) {
            DPoint const point = located(path, position);
            hits.push_back({{"path", *it},
                            {"position", report.positionJson(position)},
                            {"point", report.pointJson(point)}});
            text += "path " + std::to_string(*it) + " at " + report.position(position) + ", point " +
                    report.point(point) + "\n";
            ++count;
        }
    }
    if (session.options.json) {
        return report.print(json{{"crossings", hits}});
    }
    return report.print(std::to_string(count) + (count == 1 ? " crossing\n" : " crossings\n") + text);
}

int runPick(Session& session, PickStep const& step) {
    Report const report{session};
    std::vector<std::size_t> paths;
    if (int const code = pathsNear(session, step.path, step.point, paths); code != kExitOk) {
        return code;
    }
    // A vertex (anchor or handle) under the point wins over the curve, on the topmost path that has one.
    for (std::size_t p : paths) {
        SimplePath const& path = *session.paths[p];
        SimplePathVertex* vertex = nullptr;
        SimplePathVertexTriple triple;
        int index = 0;
        if (path.pickVertex(step.point, step.tolerance, vertex) == SimplePath::Success &&
            path.getVertexInfo(vertex, triple, index) == SimplePath::Success) {
            char const* const part = vertex == triple.anchor  ? "anchor"
                                     : vertex == triple.first ? "incoming handle"
                                                              : "outgoing handle";
            DPoint const point = vertex->getLocation();
            if (session.options.json) {
                return report.print(json{{"hit", "vertex"},
                                         {"path", p},
                                         {"vertex", index},
                                         {"part", part},
                                         {"point", report.pointJson(point)}});
            }
            return report.print("path " + std::to_string(p) + " vertex " + std::to_string(index) + " " +
                                part + ", point " + report.point(point) + "\n");
        }
    }
    for (std::size_t p : paths) {
        SimplePath const& path = *session.paths[p];
        SimplePathPosition position;
        if (path.pickPosition(step.point, step.tolerance, position) == SimplePath::Success) {
            DPoint const point = located(path, position);
            if (session.options.json) {
                return report.print(json{{"hit", "curve"},
                                         {"path", p},
                                         {"position", report.positionJson(position)},
                                         {"point", report.pointJson(point)}});
            }
            return report.print("path " + std::to_string(p) + " at " + report.position(position) +
                                ", point " + report.point(point) + "\n");
        }
    }
    if (session.options.json) {
        return report.print(json{{"hit", nullptr}});
    }
    return report.print("nothing within " + report.num(step.tolerance) + " of " + report.point(step.point) +
                        "\n");
}

} // namespace sptool
