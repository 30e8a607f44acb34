// Cases found by running the tool on real drawings, each run as a process with the input that showed it:
// path data that must read back to the same vertices, numbers at the edges of the double range, arcs at
// every scale and very deep nesting. Refused input is in the table of refusals.
#include "tools/RunTool.h"

#include <nlohmann/json.hpp>

#include <cmath>

using namespace sptool;
using namespace sptool::testing;

namespace {

nlohmann::json infoJson(std::vector<std::string> args, std::string const& input = "") {
    args.insert(args.end(), {"--json", "info"});
    Outcome const r = run(args, input);
    EXPECT_EQ(r.code, 0) << r.err;
    return nlohmann::json::parse(r.out, nullptr, false);
}

} // namespace

TEST_F(ToolProcess, PathDataWrittenReadsBackToTheSameVertices) {
    struct Case {
        std::vector<std::string> args;
        std::size_t vertices;
    } const cases[] = {
        // A closing segment of no length: Z alone would not draw it back.
        {{"--d", "M0 0L10 0 10 10 0 0 0 0Z"}, 4},
        // A transform that collapses every segment, the closing one included.
        {{"--d", "M0 0L10 0 10 10Z", "transform", "matrix", "0", "0", "0", "0", "0", "0"}, 3},
        // One vertex closed on itself, curved and straight.
        {{"--d", "M0 0C10 10 20 0 0 0Z"}, 1},
        {{"--d", "M5 5L5 5Z"}, 1},
    };
    for (Case const& c : cases) {
        Outcome const written = run(c.args);
        ASSERT_EQ(written.code, 0) << written.err;
        nlohmann::json const before = infoJson(c.args), after = infoJson({"-"}, written.out);
        EXPECT_EQ(before["paths"][0]["vertices"], c.vertices) << written.out;
        EXPECT_EQ(after["paths"][0]["vertices"], c.vertices) << written.out;
        EXPECT_EQ(after["paths"][0]["closed"], true) << written.out;
    }
}

TEST_F(ToolProcess, NumbersAtTheEdgesOfTheDoubleRange) {
    // A drawing spanning most of the double range still gets a finite SVG frame.
    for (char const* command : {"convert", "render"}) {
        Outcome const svg = run({"--d", "M-1e308 0L1e308 0", "--format", "svg", command});
        EXPECT_EQ(svg.code, 0) << svg.err;
        EXPECT_EQ(svg.out.find("inf"), std::string::npos) << svg.out;
    }
    // Underflow reads as 0, whether written with an exponent or with 200,000 zeros.
    std::string const zeros = "0." + std::string(200000, '0') + "1";
    Outcome const tiny = run({"-"}, "M1e-999 " + zeros + " L-" + zeros + " 1e-400");
    EXPECT_EQ(tiny.out, "M0 0L0 0\n") << tiny.err;
    // A large arc on a circle of radius 1e200 through two points 1 apart goes round the whole circle.
    nlohmann::json const huge = infoJson({"--d", "M0 0A1e200 1e200 0 1 1 1 0"});
    EXPECT_NEAR(huge["paths"][0]["length"].get<double>() / (2 * M_PI * 1e200), 1.0, 1e-6);
    EXPECT_NEAR(huge["paths"][0]["bounds"][1].get<double>() / -2e200, 1.0, 1e-9);
}

TEST_F(ToolProcess, ADocumentNestedAMillionGroupsDeepIsRead) {
    std::string open, close;
    for (int i = 0; i < 1000000; ++i) {
        open += "<g>", close += "</g>";
    }
    std::string const xml = "<svg>" + open + "<path d='M0 0L1 1'/>" + close + "</svg>";
    Outcome const r = run({file("deep.svg", xml)});
    EXPECT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(r.out, "M0 0L1 1\n");
}
