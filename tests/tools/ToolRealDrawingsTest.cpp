// Cases found by running the tool on real drawings, each run as a process with the input that showed it:
// path data that must read back to the same vertices, numbers at the edges of the double range, arcs at
// every scale, and hostile or mistaken input files.
#include "toolkit/OutputFile.h"
#include "tools/RunTool.h"

#include <nlohmann/json.hpp>

#include <cmath>

#include <sys/stat.h>

using namespace sptool;
using namespace sptool::testing;

namespace {

std::string file(std::string const& name, std::string const& bytes) {
    std::string const path = (scratch() / name).string();
    EXPECT_EQ(writeFileAtomically(path, bytes), "");
    return path;
}

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
    // Overflow, while reading or editing, is refused with one line naming it; nothing is written.
    struct Refused {
        std::vector<std::string> args;
        std::string err;
    } const refused[] = {
        {{"--d", "M1.7e308 0 l1.7e308 0"},
         "--d: path data at offset 12: the coordinates of this l command overflow the range of double "
         "precision"},
        {{"--d", "M0 0L1e400 0"},
         "--d: path data at offset 5: expected a number within the range of double precision, found '1'"},
        {{"--d", "M0 0L1 1", "transform", "scale", "1e300", "transform", "scale", "1e300", "--format",
          "spath"},
         "transform: path 0 would get coordinates beyond the range of double precision (about 1.8e308)"},
        {{"--d", "M-1e308 0L1e308 0", "info"},
         "info: the length of path 0 overflows the range of double precision"},
        {{"--d", "M-1e308 0L1e308 0", "nearest", "1e308", "1e308"},
         "nearest: the distance overflows the range of double precision"},
    };
    for (Refused const& c : refused) {
        Outcome const r = run(c.args);
        EXPECT_EQ(r.code, 1) << c.err;
        EXPECT_EQ(r.out, "") << c.err;
        EXPECT_EQ(r.err, "simplepath: error: " + c.err + "\n");
    }
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
}

TEST_F(ToolProcess, ArcsKeepTheirRelativeAccuracyAtEveryScale) {
    for (double r : {1e-6, 0.01, 1.0, 1e6}) {
        std::string const radius = std::to_string(r), diameter = std::to_string(2 * r);
        std::string const d = "M0 0a" + radius + " " + radius + " 0 1 1 " + diameter + " 0a" + radius + " " +
                              radius + " 0 1 1 -" + diameter + " 0Z";
        double const length = infoJson({"--d", d})["paths"][0]["length"].get<double>();
        EXPECT_NEAR(length / (2 * M_PI * r), 1.0, 1e-9) << r;
    }
    // A large arc on a circle of radius 1e200 through two points 1 apart goes round the whole circle.
    nlohmann::json const huge = infoJson({"--d", "M0 0A1e200 1e200 0 1 1 1 0"});
    EXPECT_NEAR(huge["paths"][0]["length"].get<double>() / (2 * M_PI * 1e200), 1.0, 1e-6);
    EXPECT_NEAR(huge["paths"][0]["bounds"][1].get<double>() / -2e200, 1.0, 1e-9);
}

TEST_F(ToolProcess, InputFilesAreReadAsTheirExtensionSays) {
    std::string const empty = file("empty.svg", ""), blank = file("blank.txt", " \n"),
                      notSvg = file("notes.svg", "M0 0L1 1"), text = file("text.spath", "M0 0L1 1\n"),
                      emptySpath = file("empty.spath", ""),
                      xmlAsData = file("drawing.txt", "<svg><path d='M0 0L1 1'/></svg>");
    struct Case {
        std::vector<std::string> args;
        std::string err;
    } const cases[] = {
        {{empty}, empty + ": the file is empty"},
        {{blank}, blank + ": the file is empty"},
        {{"-"}, "standard input: nothing was read"},
        {{notSvg}, notSvg + ": not an SVG document (it does not start with '<')"},
        {{text}, text + ": not a readable .spath stream: its start claims 807415885 paths in only 9 bytes"},
        {{emptySpath}, emptySpath + ": the file is empty, not a .spath stream"},
        {{xmlAsData}, xmlAsData + ": path data at offset 0: expected a moveto command (M or m), found '<'"},
    };
    for (Case const& c : cases) {
        Outcome const r = run(c.args);
        EXPECT_EQ(r.code, 1) << c.err;
        EXPECT_EQ(r.err, "simplepath: error: " + c.err + "\n");
    }
    // Standard input is sniffed.
    EXPECT_EQ(run({"-"}, "<svg><path d='M0 0L1 1'/></svg>").out, "M0 0L1 1\n");
    EXPECT_EQ(run({"-"}, "M0 0L1 1").out, "M0 0L1 1\n");
}

TEST_F(ToolProcess, ADocumentNestedAMillionGroupsDeepIsRead) {
    constexpr int kDepth = 1000000;
    std::string xml = "<svg>";
    xml.reserve(8 * kDepth + 64);
    for (int i = 0; i < kDepth; ++i) {
        xml += "<g>";
    }
    xml += "<path d='M0 0L1 1'/>";
    for (int i = 0; i < kDepth; ++i) {
        xml += "</g>";
    }
    xml += "</svg>";
    Outcome const r = run({file("deep.svg", xml)});
    EXPECT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(r.out, "M0 0L1 1\n");
}

TEST_F(ToolProcess, ANewcomersFirstCalls) {
    std::string const out = (scratch() / "out.svg").string(), report = (scratch() / "report.txt").string();
    struct Case {
        std::vector<std::string> args;
        int code;
        std::string out;
        std::string err; // the start of what is printed to standard error
    } const cases[] = {
        {{"info", "drawing.svg"},
         1,
         "",
         "simplepath: error: the input comes before the commands: simplepath drawing.svg info\n"},
        {{}, 2, "", "Reads outlines"},
        {{"--version"}, 0, "simplepath 0.1.0\n", ""},
        // Options after a command that takes any number of values, and a number written -.5.
        {{"--d", "M0 0L1 1", "transform", "translate", "-.5", "1", "--format", "d", "--decimals", "1"},
         0,
         "M-0.5 1L0.5 2\n",
         ""},
        // Reports are rounded for reading; JSON keeps every digit.
        {{"--d", "M0 0L1 1", "nearest", "1", "0"},
         0,
         "path 0 at 0:0.5, point 0.5 0.5, distance 0.707107\n",
         ""},
    };
    for (Case const& c : cases) {
        Outcome const r = run(c.args);
        EXPECT_EQ(r.code, c.code) << r.err;
        if (!c.out.empty()) {
            EXPECT_EQ(r.out, c.out);
        }
        EXPECT_EQ(r.err.substr(0, c.err.size()), c.err);
    }
    // A polyline's corners are cusps.
    nlohmann::json const json = infoJson({"--d", "M0 0L1 1"});
    EXPECT_EQ(json["paths"][0]["length"].get<double>(), std::sqrt(2.0));
    EXPECT_EQ(infoJson({"--d", "M0 0L10 0L10 10"})["paths"][0]["modes"],
              nlohmann::json({"cusp", "cusp", "cusp"}));

    // -o takes the drawing, and the report of a query, wherever it stands.
    ASSERT_EQ(run({"--d", "M0 0L1 1", "transform", "translate", "1", "1", "--format", "svg", "-o", out}).code,
              0);
    std::string error;
    EXPECT_NE(readWholeFile(out, error).find("<path d=\"M1 1L2 2\"/>"), std::string::npos);
    Outcome const r = run({"--d", "M0 0L1 1", "info", "-o", report});
    EXPECT_EQ(r.out, "");
    EXPECT_EQ(readWholeFile(report, error).substr(0, 25), "path 0: 2 vertices, open\n");
}

TEST_F(ToolProcess, OutputReplacesOnlyRegularFilesAndFollowsLinks) {
    fs::path const dir = scratch();
    std::string const fifo = (dir / "fifo").string(), folder = (dir / "folder").string(),
                      target = file("target.txt", "old\n"), link = (dir / "link.txt").string();
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    fs::create_directory(folder);
    fs::create_symlink("target.txt", link);
    struct Case {
        std::string output;
        std::string err;
    } const cases[] = {
        {fifo, "cannot write '" + fifo + "': it is a fifo, not a regular file"},
        {folder, "cannot write '" + folder + "': it is a directory, not a regular file"},
        {"/dev/null", "cannot write '/dev/null': it is a character device, not a regular file"},
    };
    for (Case const& c : cases) {
        Outcome const r = run({"--d", "M0 0L1 1", "-o", c.output});
        EXPECT_EQ(r.code, 1);
        EXPECT_EQ(r.err, "simplepath: error: " + c.err + "\n");
    }
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    EXPECT_TRUE(fs::is_fifo(fifo));
    // The link is kept and the file it names replaced.
    ASSERT_EQ(run({"--d", "M0 0L1 1", "-o", link}).code, 0);
    EXPECT_TRUE(fs::is_symlink(link));
    std::string error;
    EXPECT_EQ(readWholeFile(target, error), "M0 0L1 1\n");
}
