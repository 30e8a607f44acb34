// Runs the built simplepath program as a process on the sample drawings, as a user would.
#include "toolkit/CommandLine.h"
#include "toolkit/PathDataParser.h"
#include "toolkit/SvgDocument.h"
#include "tools/ChainSampling.h"
#include "tools/RunTool.h"

#include <nlohmann/json.hpp>

#include <sstream>

using namespace sptool;
using namespace sptool::testing;

namespace {

std::vector<CubicChain> chainsOfLines(std::string const& text) {
    std::vector<CubicChain> chains;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        PathDataResult parsed = parsePathData(line);
        EXPECT_TRUE(parsed.ok()) << line;
        chains.insert(chains.end(), parsed.chains.begin(), parsed.chains.end());
    }
    return chains;
}

SvgDocument documentOfFile(std::string const& path) {
    std::string error;
    SvgReadResult read = readSvgDocument(readWholeFile(path, error));
    EXPECT_TRUE(read.ok()) << path << ": " << error << read.error;
    return read.document;
}

} // namespace

TEST_F(ToolProcess, SamplesConvertToPathDataAndSpathStreamsThatDrawTheSameCurves) {
    fs::path const first = scratch() / "first.spath";
    fs::path const second = scratch() / "second.spath";
    std::string error;
    for (char const* name :
         {"icon.svg", "open-paths.svg", "exported-logo.svg", "exported-drawing.svg", "minified-icons.svg"}) {
        Outcome const r = run({sample(name)});
        ASSERT_EQ(r.code, 0) << name << ": " << r.err;
        EXPECT_EQ(r.err, "");
        std::vector<CubicChain> const expected = documentOfFile(sample(name)).chains;
        EXPECT_FALSE(expected.empty()) << name;
        EXPECT_EQ(sampledDistance(chainsOfLines(r.out), expected), 0.0) << name;
        // A .spath stream reads back to the same curves and writes again to the same bytes.
        ASSERT_EQ(run({sample(name), "--format", "spath", "-o", first.string()}).code, 0) << name;
        Outcome const again = run({first.string(), "convert", "--format", "spath", "-o", second.string()});
        ASSERT_EQ(again.code, 0) << name << ": " << again.err;
        EXPECT_EQ(readWholeFile(first.string(), error), readWholeFile(second.string(), error)) << name;
        EXPECT_EQ(run({first.string()}).out, r.out) << name;
    }
}

TEST_F(ToolProcess, WritesSvgAndJsonAndReadsFilesAndStandardInput) {
    fs::path const out = scratch() / "converted.svg";
    Outcome const r = run({sample("exported-drawing.svg"), "convert", "--format", "svg", "-o", out.string()});
    ASSERT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(r.out, "");
    SvgDocument const back = documentOfFile(out.string());
    EXPECT_EQ(back.frame.width, "210mm"); // in the input's frame
    EXPECT_EQ(back.frame.viewBox, (std::array<double, 4>{0, 0, 210, 148}));
    EXPECT_EQ(sampledDistance(back.chains, documentOfFile(sample("exported-drawing.svg")).chains), 0.0);

    Outcome const json = run({"--d", "M0 0L10 0Q20 0 20 10Z m5 5h1", "--json", "--decimals", "2"});
    nlohmann::json const report = nlohmann::json::parse(json.out, nullptr, false);
    ASSERT_EQ(report["paths"].size(), 2u) << json.err;
    EXPECT_EQ(report["paths"][0]["closed"], true);
    EXPECT_EQ(report["paths"][0]["segments"], 3);
    EXPECT_EQ(report["paths"][0]["d"], "M0 0L10 0C16.67 0 20 3.33 20 10Z");
    EXPECT_EQ(report["paths"][1]["d"], "M5 5L6 5");

    // Path data in a file and an SVG on standard input.
    fs::path const data = scratch() / "shape.txt";
    ASSERT_EQ(writeFileAtomically(data.string(), "M0 0 q5 5 10 0\n"), "");
    Outcome const fromFile = run({data.string()});
    Outcome const fromStdin =
        run({"-"}, "<svg xmlns='http://www.w3.org/2000/svg'><path d='M0 0 q5 5 10 0'/></svg>");
    EXPECT_EQ(fromStdin.out, fromFile.out) << fromStdin.err;
    EXPECT_EQ(fromFile.out,
              "M0 0C3.333333333333333 3.333333333333333 6.666666666666667 3.333333333333333 10 0\n")
        << fromFile.err;

    Outcome const help = run({"--help"});
    EXPECT_EQ(help.code, 0);
    for (std::string const& name : commandNames()) {
        EXPECT_NE(help.out.find("\n  " + name), std::string::npos) << name;
    }
}

TEST_F(ToolProcess, EveryErrorIsOneLineWithExitCodeOne) {
    std::string const dir = scratch().string();
    ASSERT_EQ(writeFileAtomically(dir + "/bad.svg", "<svg><path id='a' d='M0 0 L 5'/></svg>"), "");
    // A stream of two paths cut inside the second, one with a stray byte after its paths, one whose last
    // coordinate is not a number, and a file of text.
    ASSERT_EQ(run({"--d", "M0 0L1 1M2 2L3 3", "--format", "spath", "-o", dir + "/two.spath"}).code, 0);
    std::string error;
    std::string const bytes = readWholeFile(dir + "/two.spath", error);
    std::string const nan("\0\0\0\0\0\0\xf8\x7f", 8); // a quiet NaN, little-endian
    ASSERT_EQ(writeFileAtomically(dir + "/cut.spath", bytes.substr(0, bytes.size() - 3)), "");
    ASSERT_EQ(writeFileAtomically(dir + "/longer.spath", bytes + "x"), "");
    ASSERT_EQ(writeFileAtomically(dir + "/nan.spath", bytes.substr(0, bytes.size() - 8) + nan), "");
    ASSERT_EQ(writeFileAtomically(dir + "/text.spath", "M0 0"), "");
    std::string const notSpath = ": not a readable .spath stream: ";
    char const* const in = "in.svg";
    char const* const shapes = "M0 0L10 0L10 10Z M20 0C20 10 30 10 30 0"; // a triangle and an open curve
    struct Case {
        std::vector<std::string> args;
        std::string err;
    } const cases[] = {
        {{"--d", "M0 0 L1 x"}, "--d: path data at offset 8: expected a number, found 'x'"},
        {{dir + "/bad.svg"},
         dir + "/bad.svg: <path id=\"a\"> at byte 5: d at offset 8: expected a number, found the end of the "
               "data"},
        {{"/nonexistent/drawing.svg"}, "cannot read '/nonexistent/drawing.svg': No such file or directory"},
        {{dir + "/cut.spath"}, dir + "/cut.spath" + notSpath + "path 1 of 2 is cut short or damaged"},
        {{dir + "/longer.spath"}, dir + "/longer.spath" + notSpath + "unexpected bytes after path 1"},
        {{dir + "/nan.spath"},
         dir + "/nan.spath" + notSpath + "path 1 has a coordinate that is not a finite number"},
        {{dir + "/text.spath"},
         dir + "/text.spath" + notSpath + "path 0 of 807415885 is cut short or damaged"},
        // Mistakes on the command line, found before any input is read.
        {{in, "frobnicate"}, "unknown command 'frobnicate' (run simplepath --help for the list)"},
        {{"nearest", "1", "2"}, "no input: give an SVG, .spath or path data file, or --d DATA"},
        {{in, "delete"}, "delete: name the target with either --vertex or --near"},
        {{in, "insert", "--at", "2"},
         "insert: --at takes SEG:T, a segment index and a parameter in [0, 1], not '2'"},
        {{in, "join", "0:end", "1:middle"}, "join: a path end is P:start or P:end, not '1:middle'"},
        {{in, "pick", "1", "2", "--tolerance", "-1"}, "pick: --tolerance must not be negative"},
        // Targets that are not in the drawing.
        {{"--d", shapes, "delete", "--vertex", "3"}, "vertex 3 is out of range: path 0 has 3 vertices"},
        {{"--d", shapes, "mode", "cusp", "--path", "2", "--vertex", "0"},
         "path 2 is out of range: the drawing has 2 paths"},
        {{"--d", shapes, "nearest", "1", "2", "--path", "-1"},
         "path -1 is out of range: the drawing has 2 paths"},
        {{"--d", shapes, "insert", "--at", "2:0.5", "--path", "1"},
         "segment 2 is out of range: path 1 has 1 segment"},
        {{"--d", shapes, "drag", "--near", "50", "50", "--to", "0", "0"}, "no curve within 1 of (50, 50)"},
        {{"--d", shapes, "split", "--near", "50", "50", "--tolerance", "0.5"},
         "no vertex within 0.5 of (50, 50)"},
        {{"--d", shapes, "join", "0:end", "1:start"}, "join: path 0 is closed, so it has no ends"},
        {{"--d", shapes, "join", "1:end", "1:start"},
         "join: both ends are on path 1; join takes the ends of two different paths"},
    };
    for (Case const& c : cases) {
        Outcome const r = run(c.args);
        EXPECT_EQ(r.code, 1) << c.err;
        EXPECT_EQ(r.out, "") << c.err;
        EXPECT_EQ(r.err, "simplepath: error: " + c.err + "\n");
    }
    // The command-line parser's own complaints are flattened into the same single line.
    Outcome const mode = run({in, "mode", "wobbly", "--vertex", "1"});
    EXPECT_EQ(mode.code, 1);
    EXPECT_EQ(mode.err.rfind("simplepath: error: mode: ", 0), 0u) << mode.err;
    EXPECT_EQ(mode.err.find('\n'), mode.err.size() - 1) << mode.err;
}

TEST_F(ToolProcess, AFailedCallLeavesTheOutputFileUntouched) {
    std::string const out = (scratch() / "kept.txt").string();
    ASSERT_EQ(writeFileAtomically(out, "before"), "");
    EXPECT_EQ(run({"--d", "M0 0 L", "-o", out}).code, 1);
    EXPECT_EQ(run({"--d", "M0 0 L1 1", "delete", "--vertex", "9", "-o", out}).code, 1);
    std::string error;
    EXPECT_EQ(readWholeFile(out, error), "before");
    Outcome const unwritable =
        run({"--d", "M0 0 L1 1", "-o", (scratch() / "no-such-folder" / "x.txt").string()});
    EXPECT_EQ(unwritable.code, 1);
    EXPECT_NE(unwritable.err.find("No such file or directory"), std::string::npos);
    EXPECT_EQ(run({"--d", "M0 0 L1 1", "-o", out}).code, 0);
    EXPECT_EQ(readWholeFile(out, error), "M0 0L1 1\n");
}
