// The query and edit commands, run as a process on small drawings whose answers are known by hand.
#include "tools/RunTool.h"

#include <nlohmann/json.hpp>

using namespace sptool::testing;
using nlohmann::json;

namespace {

json report(std::string const& data, std::vector<std::string> const& commands) {
    std::vector<std::string> args = {"--d", data, "--json"};
    args.insert(args.end(), commands.begin(), commands.end());
    Outcome const r = run(args);
    EXPECT_EQ(r.code, 0) << r.err;
    return json::parse(r.out, nullptr, false);
}

char const* const kTriangleAndArch = "M0 0L10 0L10 10Z M20 0C20 10 30 10 30 0";

} // namespace

TEST_F(ToolProcess, InfoReportsEachPathsShape) {
    json const info = report(kTriangleAndArch, {"info"});
    ASSERT_EQ(info["paths"].size(), 2u);
    json const& triangle = info["paths"][0];
    EXPECT_EQ(triangle["vertices"], 3);
    EXPECT_EQ(triangle["closed"], true);
    EXPECT_EQ(triangle["bounds"], json({0, 0, 10, 10}));
    EXPECT_NEAR(triangle["length"].get<double>(), 20.0 + std::sqrt(200.0), 1e-9);
    EXPECT_EQ(triangle["top"], json({10, 10}));
    EXPECT_EQ(triangle["bottom"], json({0, 0}));
    // The arch peaks at its middle: 3/4 of its control height. Its bounds are the curve's, not its handles'.
    json const& arch = info["paths"][1];
    EXPECT_EQ(arch["closed"], false);
    EXPECT_EQ(arch["modes"], json({"smooth", "smooth"}));
    EXPECT_EQ(arch["bounds"], json({20, 0, 30, 7.5}));
    EXPECT_EQ(arch["top"], json({25, 7.5}));

    Outcome const text = run({"--d", "M0 0L3 4", "info"});
    EXPECT_EQ(text.out, "path 0: 2 vertices, open\n  modes: 2 smooth\n  bounds: 0 0 to 3 4\n"
                        "  top: 3 4, bottom: 0 0\n  length: 5\n");
}

TEST_F(ToolProcess, NearestIntersectAndPickFindTheCurveUnderAPoint) {
    EXPECT_EQ(run({"--d", kTriangleAndArch, "nearest", "4", "-3", "--decimals", "3"}).out,
              "path 0 at 0:0.433, point 4 0, distance 3\n");
    EXPECT_EQ(run({"--d", kTriangleAndArch, "nearest", "20", "-5", "--path", "1"}).out,
              "path 1 at 0:0, point 20 0, distance 5\n");

    // The vertical line x = 5 crosses the triangle's base and its hypotenuse, and nothing of the arch.
    EXPECT_EQ(run({"--d", kTriangleAndArch, "intersect", "5", "-5", "5", "20"}).out,
              "2 crossings\npath 0 at 0:0.5, point 5 0\npath 0 at 2:0.5, point 5 5\n");

    // Anchors win over handles and handles over the curve; nothing near gives an empty answer, not an error.
    json const anchor = report(kTriangleAndArch, {"pick", "10.5", "0.5"});
    EXPECT_EQ(anchor,
              json({{"hit", "vertex"}, {"path", 0}, {"vertex", 1}, {"part", "anchor"}, {"point", {10, 0}}}));
    json const handle = report(kTriangleAndArch, {"pick", "20", "9.5"});
    EXPECT_EQ(handle["part"], "outgoing handle");
    json const curve = report(kTriangleAndArch, {"pick", "5", "0.5"});
    EXPECT_EQ(curve["hit"], "curve");
    EXPECT_NEAR(curve["position"]["t"].get<double>(), 0.5, 1e-3);
    EXPECT_EQ(run({"--d", kTriangleAndArch, "pick", "50", "50", "--tolerance", "2"}).out,
              "nothing within 2 of 50 50\n");
}
