// The commands that report on the drawing without changing it: info, nearest, intersect and pick. Each
// prints plain lines, or one JSON document with --json.
#include "toolkit/Hooks.h"
#include "toolkit/MeasuredPath.h"
#include "toolkit/PathStream.h"
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
    // Called on paths with vertices only, whose bounds always succeed.
    (void)path.getMinMax(m.minX, m.minY, m.maxX, m.maxY);
    path.pretransformLength(IdTrans<DPoint>(), m.length);
    double const extent =
        std::max({std::fabs(m.minX), std::fabs(m.minY), std::fabs(m.maxX), std::fabs(m.maxY)});
    if (std::isfinite(extent) && extent > 1e150) {
        int exponent = 0;
        std::frexp(extent, &exponent);
        PowerOfTwoScale const down(-exponent);
        (void)path.pretransformGetMinMax(down, m.minX, m.minY, m.maxX, m.maxY);
        path.pretransformLength(down, m.length);
        for (double* v : {&m.minX, &m.minY, &m.maxX, &m.maxY, &m.length}) {
            *v = std::ldexp(*v, exponent);
        }
    }
    return m;
}

DPoint located(SimplePath const& path, SimplePathPosition const& position) {
    DPoint point;
    // A position the path cannot locate reports the origin, as the command always has.
    (void)path.locatePosition(position, point);
    return point;
}

} // namespace

InfoWriter::InfoWriter(Session& session) : session_(session), out_(session, "") {
    if (session.options.json) {
        out_.write("{\n  \"source\": " + json(session.source).dump() + ",\n  \"paths\": [");
    }
}

InfoWriter::~InfoWriter() = default;

// One path's entry, written as soon as it is measured. The JSON document is streamed the same way: its
// entries are written one at a time between the opening and the closing of the "paths" array, by hand
// (a JSON value per path costs more than measuring the path). Numbers keep every digit unless --decimals
// asks otherwise; they are finite, which the length check below and the reading of the input ensure.
int InfoWriter::add(SimplePath const& path) {
    std::size_t const i = count_++;
    Report const report{session_};
    bool const json = session_.options.json;
    bool const closed = path.isClosedSimplePath() != 0;
    SimplePathTripleList const& triples = path.getTripleList();
    int const n = triples.length();
    std::string& text = scratch_;
    text.clear();
    int counts[3] = {0, 0, 0};
    if (json) {
        text += i == 0 ? "\n    {\"index\": " : ",\n    {\"index\": ";
        text += std::to_string(i) + ", \"vertices\": " + std::to_string(n) +
                ", \"closed\": " + (closed ? "true" : "false") + ", \"modes\": [";
    } else {
        text += "path " + std::to_string(i) + ": " + std::to_string(n) + " vertices, " +
                (closed ? "closed" : "open") + "\n";
    }
    for (int k = 0; k < n; ++k) {
        SimplePathVertexTriple::VertexTripleMode const mode = triples.get(k).mode;
        if (json) {
            text += k == 0 ? "\"" : ", \"";
            text += modeName(mode);
            text += '"';
        }
        ++counts[mode == SimplePathVertexTriple::Smooth      ? 0
                 : mode == SimplePathVertexTriple::Symmetric ? 2
                                                             : 1];
    }
    if (json) {
        text += ']';
    }
    if (n > 0) {
        MeasuredPath const measured(path);
        Measures const m = measure(measured.path());
        DPoint top, bottom;
        (void)measured.path().getTopBottom(top, bottom); // the path has vertices, so this succeeds
        if (!std::isfinite(m.length)) {
            return session_.fail("info: the length of path " + std::to_string(i) +
                                 " overflows the range of double precision");
        }
        if (json) {
            auto const number = [&](double v) { appendNumber(text, report.value(v), NumberFormat{}); };
            auto const pair = [&](double x, double y) {
                text += '[';
                number(x);
                text += ", ";
                number(y);
                text += ']';
            };
            text += ", \"bounds\": [";
            number(m.minX);
            text += ", ";
            number(m.minY);
            text += ", ";
            number(m.maxX);
            text += ", ";
            number(m.maxY);
            text += "], \"top\": ";
            pair(top.x, top.y);
            text += ", \"bottom\": ";
            pair(bottom.x, bottom.y);
            text += ", \"length\": ";
            number(m.length);
        } else {
            std::string modeText;
            char const* const names[] = {"smooth", "cusp", "symmetric"};
            for (int k = 0; k < 3; ++k) {
                if (counts[k] > 0) {
                    modeText += (modeText.empty() ? "" : ", ") + std::to_string(counts[k]) + " " + names[k];
                }
            }
            text += "  modes: " + modeText + "\n  bounds: " + report.point(DPoint(m.minX, m.minY)) + " to " +
                    report.point(DPoint(m.maxX, m.maxY)) + "\n  top: " + report.point(top) +
                    ", bottom: " + report.point(bottom) + "\n  length: " + report.num(m.length) + "\n";
        }
    }
    if (json) {
        text += '}';
    }
    out_.write(text);
    return kExitOk;
}

int InfoWriter::finish() {
    if (session_.options.json) {
        out_.write(count_ == 0 ? "]\n}\n" : "\n  ]\n}\n");
    }
    return out_.finish();
}

int runInfo(Session& session, InfoStep const&) {
    InfoWriter writer(session);
    for (std::unique_ptr<SimplePath> const& path : session.paths) {
        if (int const code = writer.add(*path); code != kExitOk) {
            return code;
        }
    }
    return writer.finish();
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
        MeasuredPath const measured(*session.paths[*it]);
        SimplePathPosition position;
        double squared = 0.0;
        if (measured.path().findClosestPosition(step.point, position, squared) == SimplePath::Success &&
            (!best || squared < bestSquared)) {
            best = *it;
            bestPosition = measured.original(position);
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
        MeasuredPath const measured(path);
        std::list<SimplePathPosition> found;
        if (path.numTriples() == 0 ||
            measured.path().pretransformFindIntersections(step.from, step.to, IdTrans<DPoint>(), found) !=
                SimplePath::Success) {
            continue;
        }
        for (SimplePathPosition& position : found) {
            position = measured.original(position);
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
        MeasuredPath const measured(path);
        SimplePathPosition position;
        if (measured.path().pickPosition(step.point, step.tolerance, position) == SimplePath::Success) {
            position = measured.original(position);
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
