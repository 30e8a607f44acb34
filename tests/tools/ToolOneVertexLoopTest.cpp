// The tool run as a process on a closed path of one vertex, M0 0C10 10 20 0 0 0Z, whose one segment loops
// from the vertex back to itself: every report of geometry follows the loop, checked against the curve
// sampled densely in long double, x(t) = 30t(1 - t^2) and y(t) = 30t(1 - t)^2.
#include "tools/RunTool.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

using namespace sptool::testing;

namespace {

using LD = long double;
using nlohmann::json;

char const* const kLoop = "M0 0C10 10 20 0 0 0Z";
constexpr int kSamples = 1000000;

struct LPoint {
    LD x, y;
};
LPoint loopAt(LD t) {
    return {30 * t * (1 - t * t), 30 * t * (1 - t) * (1 - t)};
}

json runJson(std::vector<std::string> args, std::string const& input = "") {
    args.insert(args.begin(), "--json");
    Outcome const r = run(args, input);
    EXPECT_EQ(r.code, 0) << r.err;
    return json::parse(r.out, nullptr, false);
}

LD distanceTo(LPoint const& p, double x, double y) {
    return std::hypot(p.x - x, p.y - y);
}

// The smallest distance from the point to the sampled loop.
LD nearestSample(double x, double y) {
    LD best = distanceTo(loopAt(0), x, y);
    for (int i = 1; i <= kSamples; ++i) {
        best = std::min(best, distanceTo(loopAt(LD(i) / kSamples), x, y));
    }
    return best;
}

// The answer names a position on the loop's one segment, and its point is the loop's point there.
void expectOnTheLoop(json hit) {
    ASSERT_EQ(hit["position"]["segment"], 0) << hit;
    LD const t = hit["position"]["t"].get<double>();
    EXPECT_TRUE(t >= 0 && t <= 1) << hit;
    EXPECT_LT(distanceTo(loopAt(t), hit["point"][0].get<double>(), hit["point"][1].get<double>()), 1e-9)
        << hit;
}

} // namespace

TEST_F(ToolProcess, InfoOfALoopOfOneVertexMeasuresTheLoop) {
    LD minX = 0, minY = 0, maxX = 0, maxY = 0, length = 0;
    LPoint top = loopAt(0), previous = loopAt(0);
    for (int i = 1; i <= kSamples; ++i) {
        LPoint const p = loopAt(LD(i) / kSamples);
        minX = std::min(minX, p.x), maxX = std::max(maxX, p.x);
        minY = std::min(minY, p.y), maxY = std::max(maxY, p.y);
        top = p.y > top.y ? p : top;
        length += std::hypot(p.x - previous.x, p.y - previous.y);
        previous = p;
    }
    // Path data is measured one subpath at a time, an SVG document whole: both report the same.
    json streamed = runJson({"--d", kLoop, "info"});
    json whole = runJson({"-", "info"}, std::string("<svg xmlns='http://www.w3.org/2000/svg'><path d='") +
                                            kLoop + "'/></svg>");
    ASSERT_EQ(streamed["paths"].size(), 1u) << streamed;
    EXPECT_EQ(streamed["paths"], whole["paths"]);
    json& path = streamed["paths"][0];
    EXPECT_EQ(path["vertices"], 1);
    LD const bounds[] = {minX, minY, maxX, maxY};
    for (int k = 0; k < 4; ++k) {
        EXPECT_NEAR(path["bounds"][k].get<double>(), double(bounds[k]), 1e-9) << k;
    }
    // The top is flat there, so its x is known only as well as the sampling finds it.
    EXPECT_NEAR(path["top"][0].get<double>(), double(top.x), 1e-4);
    EXPECT_NEAR(path["top"][1].get<double>(), double(top.y), 1e-9);
    EXPECT_EQ(path["bottom"], json::array({0.0, 0.0})); // the vertex is the lowest point
    EXPECT_NEAR(path["length"].get<double>(), double(length), 1e-8);

    // A vertex inserted near the middle of the loop lands on it, and the loop keeps its shape.
    LPoint const middle = loopAt(0.5);
    json after = runJson({"--d", kLoop, "insert", "--near", std::to_string(double(middle.x)),
                          std::to_string(double(middle.y)), "info"})["paths"][0];
    EXPECT_EQ(after["vertices"], 2);
    EXPECT_NEAR(after["length"].get<double>(), path["length"].get<double>(), 1e-9);
}

TEST_F(ToolProcess, NearestAndIntersectOnALoopOfOneVertexFindTheLoop) {
    // The nearest point, from inside the loop, outside it and beyond its far end.
    for (auto const& probe : std::vector<std::array<double, 2>>{{10, 5}, {9, -3}, {-2, 2}}) {
        json hit = runJson({"--d", kLoop, "nearest", std::to_string(probe[0]), std::to_string(probe[1])});
        expectOnTheLoop(hit);
        EXPECT_NEAR(hit["distance"].get<double>(), double(nearestSample(probe[0], probe[1])), 1e-6) << hit;
    }

    // The line y = 2 crosses the loop twice, where the sampled y(t) - 2 changes sign.
    std::vector<LD> roots;
    for (int i = 0; i < kSamples; ++i) {
        LD const a = LD(i) / kSamples, b = LD(i + 1) / kSamples;
        if ((loopAt(a).y - 2) * (loopAt(b).y - 2) < 0) {
            roots.push_back(a);
        }
    }
    ASSERT_EQ(roots.size(), 2u);
    json crossings = runJson({"--d", kLoop, "intersect", "-100", "2", "100", "2"})["crossings"];
    ASSERT_EQ(crossings.size(), 2u) << crossings;
    for (std::size_t k = 0; k < 2; ++k) {
        expectOnTheLoop(crossings[k]);
        EXPECT_NEAR(crossings[k]["point"][1].get<double>(), 2.0, 1e-9);
        EXPECT_NEAR(crossings[k]["position"]["t"].get<double>(), double(roots[k]), 2.0 / kSamples);
    }
}
