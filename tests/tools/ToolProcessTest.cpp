// Runs the built simplepath program as a process on the sample drawings, as a user would.
#include "toolkit/OutputFile.h"
#include "toolkit/PathDataParser.h"
#include "toolkit/SvgDocument.h"
#include "tools/ChainSampling.h"
#include "tools/RunTool.h"

#include <gtest/gtest.h>
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

std::vector<CubicChain> chainsOfFile(std::string const& path) {
    std::string error;
    SvgReadResult read = readSvgDocument(readWholeFile(path, error));
    EXPECT_TRUE(read.ok()) << read.error;
    return read.document.chains;
}

char const* const kSamples[] = {"icon.svg", "open-paths.svg", "exported-logo.svg", "exported-drawing.svg",
                                "minified-icons.svg"};

} // namespace

TEST_F(ToolProcess, ConvertsEverySampleToPathDataThatDrawsTheSameCurves) {
    for (char const* name : kSamples) {
        Outcome const r = run({sample(name)});
        ASSERT_EQ(r.code, 0) << name << ": " << r.err;
        EXPECT_EQ(r.err, "");
        std::vector<CubicChain> const expected = chainsOfFile(sample(name));
        EXPECT_FALSE(expected.empty()) << name;
        EXPECT_EQ(sampledDistance(chainsOfLines(r.out), expected), 0.0) << name;
    }
    // The icon has closed outlines, the open drawing open ones.
    std::string const icon = run({sample("icon.svg")}).out;
    EXPECT_NE(icon.find('Z'), std::string::npos);
    EXPECT_EQ(run({sample("open-paths.svg")}).out.find('Z'), std::string::npos);
}

TEST_F(ToolProcess, WritesSvgAndJsonInTheInputFrame) {
    fs::path const out = scratch() / "converted.svg";
    Outcome const r = run({sample("exported-drawing.svg"), "convert", "--format", "svg", "-o", out.string()});
    ASSERT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(r.out, "");
    std::string error;
    SvgReadResult const back = readSvgDocument(readWholeFile(out.string(), error));
    ASSERT_TRUE(back.ok()) << back.error;
    EXPECT_EQ(back.document.frame.width, "210mm");
    EXPECT_EQ(back.document.frame.viewBox, (std::array<double, 4>{0, 0, 210, 148}));
    EXPECT_EQ(sampledDistance(back.document.chains, chainsOfFile(sample("exported-drawing.svg"))), 0.0);

    Outcome const json = run({"--d", "M0 0L10 0Q20 0 20 10Z m5 5h1", "--json", "--decimals", "2"});
    ASSERT_EQ(json.code, 0) << json.err;
    nlohmann::json const report = nlohmann::json::parse(json.out);
    ASSERT_EQ(report["paths"].size(), 2u);
    EXPECT_EQ(report["paths"][0]["closed"], true);
    EXPECT_EQ(report["paths"][0]["segments"], 3);
    EXPECT_EQ(report["paths"][0]["d"], "M0 0L10 0C16.67 0 20 3.33 20 10Z");
    EXPECT_EQ(report["paths"][1]["d"], "M5 5L6 5");
}

TEST_F(ToolProcess, ReadsPathDataFromFilesAndStandardInput) {
    fs::path const data = scratch() / "shape.txt";
    ASSERT_EQ(writeFileAtomically(data.string(), "M0 0 q5 5 10 0\n"), "");
    Outcome const fromFile = run({data.string()});
    EXPECT_EQ(fromFile.code, 0) << fromFile.err;
    Outcome const fromStdin =
        run({"-"}, "<svg xmlns='http://www.w3.org/2000/svg'><path d='M0 0 q5 5 10 0'/></svg>");
    EXPECT_EQ(fromStdin.code, 0) << fromStdin.err;
    EXPECT_EQ(fromFile.out, fromStdin.out);
    EXPECT_EQ(fromFile.out,
              "M0 0C3.333333333333333 3.333333333333333 6.666666666666667 3.333333333333333 10 0\n");
}

TEST_F(ToolProcess, EveryErrorIsOneLineWithANonZeroExit) {
    fs::path const bad = scratch() / "bad.svg";
    ASSERT_EQ(writeFileAtomically(bad.string(), "<svg><path id='a' d='M0 0 L 5'/></svg>"), "");
    // A stream of two paths cut inside the second, one with a stray byte after its paths, one whose last
    // coordinate is not a number, and a file of text.
    fs::path const spath = scratch() / "two.spath";
    ASSERT_EQ(run({"--d", "M0 0L1 1M2 2L3 3", "--format", "spath", "-o", spath.string()}).code, 0);
    std::string error;
    std::string const bytes = readWholeFile(spath.string(), error);
    fs::path const cut = scratch() / "cut.spath";
    fs::path const longer = scratch() / "longer.spath";
    fs::path const text = scratch() / "text.spath";
    fs::path const nan = scratch() / "nan.spath";
    std::string const nanBytes("\0\0\0\0\0\0\xf8\x7f", 8); // a quiet NaN, little-endian
    ASSERT_EQ(writeFileAtomically(cut.string(), bytes.substr(0, bytes.size() - 3)), "");
    ASSERT_EQ(writeFileAtomically(longer.string(), bytes + "x"), "");
    ASSERT_EQ(writeFileAtomically(text.string(), "M0 0"), "");
    ASSERT_EQ(writeFileAtomically(nan.string(), bytes.substr(0, bytes.size() - 8) + nanBytes), "");
    std::string const unreadable = "simplepath: error: " + scratch().string();
    struct Case {
        std::vector<std::string> args;
        int code;
        std::string err;
    } const cases[] = {
        {{"--d", "M0 0 L1 x"},
         1,
         "simplepath: error: --d: path data at offset 8: expected a number, found 'x'\n"},
        {{bad.string()},
         1,
         "simplepath: error: " + bad.string() +
             ": <path id=\"a\"> at byte 5: d at offset 8: expected a number, found the end of the data\n"},
        {{"/nonexistent/drawing.svg"},
         1,
         "simplepath: error: cannot read '/nonexistent/drawing.svg': No such file or directory\n"},
        {{sample("icon.svg"), "frobnicate"},
         1,
         "simplepath: error: unknown command 'frobnicate' (run simplepath --help for the list)\n"},
        {{sample("icon.svg"), "delete", "--vertex"}, 1, ""},
        {{cut.string()},
         1,
         unreadable + "/cut.spath: not a readable .spath stream: path 1 of 2 is cut short or damaged\n"},
        {{longer.string()},
         1,
         unreadable + "/longer.spath: not a readable .spath stream: unexpected bytes after path 1\n"},
        {{text.string()},
         1,
         unreadable +
             "/text.spath: not a readable .spath stream: path 0 of 807415885 is cut short or damaged\n"},
        {{nan.string()},
         1,
         unreadable + "/nan.spath: not a readable .spath stream: path 1 has a coordinate that is not a "
                      "finite number\n"},
    };
    for (Case const& c : cases) {
        Outcome const r = run(c.args);
        EXPECT_EQ(r.code, c.code) << c.args.back();
        EXPECT_EQ(r.out, "") << c.args.back();
        if (!c.err.empty()) {
            EXPECT_EQ(r.err, c.err);
        } else {
            EXPECT_EQ(r.err.rfind("simplepath: error: delete: ", 0), 0u) << r.err;
        }
        EXPECT_EQ(r.err.find('\n'), r.err.size() - 1) << r.err;
    }
}

TEST_F(ToolProcess, AFailedCallLeavesTheOutputFileUntouched) {
    fs::path const out = scratch() / "kept.txt";
    ASSERT_EQ(writeFileAtomically(out.string(), "before"), "");
    Outcome const failed = run({"--d", "M0 0 L", "-o", out.string()});
    EXPECT_EQ(failed.code, 1);
    std::string error;
    EXPECT_EQ(readWholeFile(out.string(), error), "before");

    Outcome const unwritable =
        run({"--d", "M0 0 L1 1", "-o", (scratch() / "no-such-folder" / "x.txt").string()});
    EXPECT_EQ(unwritable.code, 1);
    EXPECT_NE(unwritable.err.find("No such file or directory"), std::string::npos);

    Outcome const written = run({"--d", "M0 0 L1 1", "-o", out.string()});
    EXPECT_EQ(written.code, 0);
    EXPECT_EQ(readWholeFile(out.string(), error), "M0 0L1 1\n");
}

TEST_F(ToolProcess, SpathStreamsReadBackToTheSameBytesAndCurves) {
    fs::path const first = scratch() / "first.spath";
    fs::path const second = scratch() / "second.spath";
    std::string error;
    for (char const* name : kSamples) {
        ASSERT_EQ(run({sample(name), "--format", "spath", "-o", first.string()}).code, 0) << name;
        Outcome const again = run({first.string(), "convert", "--format", "spath", "-o", second.string()});
        ASSERT_EQ(again.code, 0) << name << ": " << again.err;
        std::string const bytes = readWholeFile(first.string(), error);
        EXPECT_EQ(bytes, readWholeFile(second.string(), error)) << name;
        EXPECT_EQ(run({first.string()}).out, run({sample(name)}).out) << name;
    }
}

TEST_F(ToolProcess, RenderDrawsEveryVertexWithTheShapeOfItsMode) {
    // The middle vertex continues its curve (smooth); the kink at (20 0) is a cusp.
    Outcome const r = run({"--d", "M0 0C0 5 10 5 10 0S20 -5 20 0C25 0 30 5 30 10", "render"});
    ASSERT_EQ(r.code, 0) << r.err;
    auto count = [&](std::string const& what) {
        std::size_t n = 0;
        for (std::size_t at = r.out.find(what); at != std::string::npos; at = r.out.find(what, at + 1)) {
            ++n;
        }
        return n;
    };
    EXPECT_EQ(count("class=\"smooth\""), 3u); // the ends' retracted handles count as aligned
    EXPECT_EQ(count("class=\"cusp\""), 1u);
    EXPECT_EQ(count("<line "), 6u); // the handles that stand off their anchors
    SvgReadResult const drawing = readSvgDocument(r.out);
    ASSERT_TRUE(drawing.ok()) << drawing.error;
    EXPECT_EQ(sampledDistance(drawing.document.chains.front(),
                              parsePathData("M0 0C0 5 10 5 10 0S20 -5 20 0C25 0 30 5 30 10").chains.front()),
              0.0);
}
