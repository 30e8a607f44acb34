// The tool run as a process on a closed path of one vertex, M0 0C10 10 20 0 0 0Z, whose one segment loops
// from the vertex back to itself: every report of geometry follows the loop, checked against the curve
// sampled densely in long double, x(t) = 30t(1 - t^2) and y(t) = 30t(1 - t)^2.
#include "tools/RunTool.h"

#include <nlohmann/json.hpp>

#include <algorithm>
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

json runJson(std::vector<std::string> args) {
    Outcome const r = run(with({"--json", "--d", kLoop}, args));
    EXPECT_EQ(r.code, 0) << r.err;
    return json::parse(r.out, nullptr, false);
}

LD distanceTo(LPoint const& p, double x, double y) {
    return std::hypot(p.x - x, p.y - y);
}

// The answer names a position on the loop's one segment, and its point is the loop's point there.
void expectOnTheLoop(json const& hit) {
    ASSERT_EQ(hit["position"]["segment"], 0) << hit;
    LD const t = hit["position"]["t"].get<double>();
    EXPECT_TRUE(t >= 0 && t <= 1) << hit;
    EXPECT_LT(distanceTo(loopAt(t), hit["point"][0].get<double>(), hit["point"][1].get<double>()), 1e-9)
        << hit;
}

} // namespace

TEST_F(ToolProcess, InfoAndNearestOnALoopOfOneVertexFollowTheLoop) {
    LD minX = 0, minY = 0, maxX = 0, maxY = 0, length = 0;
    LPoint previous = loopAt(0);
    for (int i = 1; i <= kSamples; ++i) {
        LPoint const p = loopAt(LD(i) / kSamples);
        minX = std::min(minX, p.x), maxX = std::max(maxX, p.x);
        minY = std::min(minY, p.y), maxY = std::max(maxY, p.y);
        length += std::hypot(p.x - previous.x, p.y - previous.y);
        previous = p;
    }
    json path = runJson({"info"})["paths"][0];
    EXPECT_EQ(path["vertices"], 1);
    LD const bounds[] = {minX, minY, maxX, maxY};
    for (int k = 0; k < 4; ++k) {
        EXPECT_NEAR(path["bounds"][k].get<double>(), double(bounds[k]), 1e-9) << k;
    }
    EXPECT_NEAR(path["length"].get<double>(), double(length), 1e-8);

    // The nearest point, from inside the loop, outside it and beyond its far end.
    for (auto const& probe : std::vector<std::vector<double>>{{10, 5}, {9, -3}, {-2, 2}}) {
        json hit = runJson({"nearest", std::to_string(probe[0]), std::to_string(probe[1])});
        expectOnTheLoop(hit);
        LD best = 1e300;
        for (int i = 0; i <= kSamples; ++i) {
            best = std::min(best, distanceTo(loopAt(LD(i) / kSamples), probe[0], probe[1]));
        }
        EXPECT_NEAR(hit["distance"].get<double>(), double(best), 1e-6) << hit;
    }
}
