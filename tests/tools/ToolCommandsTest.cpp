// The query and edit commands, run as a process on small drawings whose answers are known by hand.
#include "tools/RunTool.h"

#include <nlohmann/json.hpp>

using namespace sptool::testing;
using nlohmann::json;

namespace {

// The drawing's path data after the commands (the call ends on an edit, so it writes the drawing).
std::string edited(std::string const& data, std::vector<std::string> const& commands) {
    std::vector<std::string> args = {"--d", data};
    args.insert(args.end(), commands.begin(), commands.end());
    Outcome const r = run(args);
    EXPECT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(r.err, "");
    return r.out;
}

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

    // An open outline that returns to its start stays open.
    json const back = report("M0 0L10 0L0 0", {"info"});
    EXPECT_EQ(back["paths"][0]["closed"], false);
    EXPECT_EQ(back["paths"][0]["vertices"], 3);

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

TEST_F(ToolProcess, VertexEditsByIndexAndByPoint) {
    EXPECT_EQ(edited("M0 0L10 0", {"insert", "--at", "0:0.5"}), "M0 0L5 0 10 0\n");
    EXPECT_EQ(edited("M0 0L5 0L10 0", {"delete", "--near", "5", "0.2"}), "M0 0L10 0\n");
    // Straight pulls the handles onto the anchor; cusp pulls them out again towards the neighbours.
    EXPECT_EQ(edited("M0 0C0 5 10 5 10 0S20 -5 20 0", {"mode", "straight", "--vertex", "1"}),
              "M0 0C0 5 10 0 10 0 10 0 20-5 20 0\n");
    json const smooth = report("M0 0L10 0L10 10", {"mode", "symmetric", "--vertex", "1", "info"});
    EXPECT_EQ(smooth["paths"][0]["modes"], json({"smooth", "symmetric", "smooth"}));
    // Dragging the middle of a straight segment bends it through the target.
    json const dragged =
        report("M0 0L10 0", {"drag", "--at", "0:0.5", "--to", "5", "4", "nearest", "5", "4"});
    EXPECT_NEAR(dragged["distance"].get<double>(), 0.0, 1e-6);
}

TEST_F(ToolProcess, SplitAndJoinChangeThePathsAndTheirIndices) {
    EXPECT_EQ(edited("M0 0L5 0L10 0", {"split", "--vertex", "1"}), "M0 0L5 0\nM5 0L10 0\n");
    EXPECT_EQ(edited("M0 0L10 0L10 10Z", {"split", "--vertex", "1"}), "M10 0L10 10 0 0 10 0\n");
    // Ends that meet are merged into one vertex; ends apart get a straight segment between them.
    EXPECT_EQ(edited("M0 0L5 0M5 0L10 0", {"join", "0:end", "1:start"}), "M0 0L5 0 10 0\n");
    EXPECT_EQ(edited("M0 0L5 0M20 0L10 0", {"join", "--near", "5", "0", "10", "0"}), "M0 0L5 0 10 0 20 0\n");
    // Commands after a join see the joined path as path 0 and the untouched one after it.
    EXPECT_EQ(edited("M0 0L5 0M50 50L60 60M5 0L10 0",
                     {"join", "0:end", "2:start", "delete", "--path", "1", "--vertex", "0"}),
              "M0 0L5 0 10 0\nM60 60\n");
}

TEST_F(ToolProcess, TransformsMoveEveryPathAboutTheCentreOfTheirBounds) {
    EXPECT_EQ(edited("M0 0L10 0L10 10", {"transform", "translate", "1", "2"}), "M1 2L11 2 11 12\n");
    EXPECT_EQ(edited("M0 0L10 0L10 10", {"transform", "scale", "2"}), "M-5-5L15-5 15 15\n");
    EXPECT_EQ(edited("M0 0L10 0", {"--decimals", "9", "transform", "rotate", "90", "--center", "0", "0"}),
              "M0 0L0 10\n");
    EXPECT_EQ(
        edited("M0 0L10 0M0 5L1 5", {"transform", "matrix", "1", "0", "0", "1", "3", "4", "--path", "1"}),
        "M0 0L10 0\nM3 9L4 9\n");
}

TEST_F(ToolProcess, EditErrorsNameWhatIsMissing) {
    struct Case {
        std::vector<std::string> commands;
        std::string err;
    } const cases[] = {
        {{"delete", "--vertex", "3"}, "vertex 3 is out of range: path 0 has 3 vertices"},
        {{"mode", "cusp", "--path", "2", "--vertex", "0"}, "path 2 is out of range: the drawing has 2 paths"},
        {{"insert", "--at", "2:0.5", "--path", "1"}, "segment 2 is out of range: path 1 has 1 segment"},
        {{"drag", "--near", "50", "50", "--to", "0", "0"}, "no curve within 1 of (50, 50)"},
        {{"split", "--near", "50", "50", "--tolerance", "0.5"}, "no vertex within 0.5 of (50, 50)"},
        {{"join", "0:end", "1:start"}, "join: path 0 is closed, so it has no ends"},
        {{"join", "1:end", "1:start"},
         "join: both ends are on path 1; join takes the ends of two different paths"},
        {{"nearest", "1", "2", "--path", "-1"}, "path -1 is out of range: the drawing has 2 paths"},
    };
    for (Case const& c : cases) {
        std::vector<std::string> args = {"--d", kTriangleAndArch};
        args.insert(args.end(), c.commands.begin(), c.commands.end());
        Outcome const r = run(args);
        EXPECT_EQ(r.code, 1) << c.err;
        EXPECT_EQ(r.out, "");
        EXPECT_EQ(r.err, "simplepath: error: " + c.err + "\n");
    }
}
