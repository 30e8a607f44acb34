// Cases found by running the tool on real drawings, each run as a process with the input that showed it.
// Refused input is in the table of refusals.
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

TEST_F(ToolProcess, AClosingSegmentOfNoLengthIsWrittenSoItReadsBack) {
    // Z alone would not draw it back: the written data must keep the fourth vertex.
    Outcome const written = run({"--d", "M0 0L10 0 10 10 0 0 0 0Z"});
    EXPECT_EQ(infoJson({"-"}, written.out)["paths"][0]["vertices"], 4) << written.out;
}

TEST_F(ToolProcess, NumbersAtTheEdgesOfTheDoubleRangeAndDeepNesting) {
    // A drawing spanning most of the double range still gets a finite SVG frame.
    Outcome const svg = run({"--d", "M-1e308 0L1e308 0", "--format", "svg", "render"});
    EXPECT_EQ(svg.code, 0) << svg.err;
    EXPECT_EQ(svg.out.find("inf"), std::string::npos) << svg.out;
    // Underflow reads as 0, whether written with an exponent or with 200,000 zeros.
    std::string const zeros = "0." + std::string(200000, '0') + "1";
    EXPECT_EQ(run({"-"}, "M1e-999 " + zeros + " L-" + zeros + " 1e-400").out, "M0 0L0 0\n");
    // A large arc on a circle of radius 1e200 through two points 1 apart goes round the whole circle.
    nlohmann::json const huge = infoJson({"--d", "M0 0A1e200 1e200 0 1 1 1 0"});
    EXPECT_NEAR(huge["paths"][0]["length"].get<double>() / (2 * M_PI * 1e200), 1.0, 1e-6);
    // A document nested a million groups deep.
    std::string open, close;
    for (int i = 0; i < 1000000; ++i) {
        open += "<g>", close += "</g>";
    }
    Outcome const r = run({file("deep.svg", "<svg>" + open + "<path d='M0 0L1 1'/>" + close + "</svg>")});
    EXPECT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(r.out, "M0 0L1 1\n");
}
