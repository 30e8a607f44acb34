// Runs the built simplepath program as a process on the sample drawings, as a user would.
#include "toolkit/CommandLine.h"
#include "toolkit/PathDataParser.h"
#include "toolkit/PathDataWriter.h"
#include "toolkit/SvgDocument.h"
#include "tools/RunTool.h"

#include <nlohmann/json.hpp>

#include <sys/stat.h>

using namespace sptool;
using namespace sptool::testing;

namespace {

SvgDocument documentOfFile(std::string const& path) {
    std::string error;
    SvgReadResult read = readSvgDocument(readWholeFile(path, error));
    EXPECT_TRUE(read.ok()) << path << ": " << error << read.error;
    return read.document;
}

} // namespace

TEST_F(ToolProcess, SamplesConvertToPathDataSvgAndSpathThatDrawTheSameCurves) {
    std::string const svg = (scratch() / "out.svg").string(), first = (scratch() / "first.spath").string(),
                      second = (scratch() / "second.spath").string();
    std::string error;
    for (char const* name :
         {"icon.svg", "open-paths.svg", "exported-logo.svg", "exported-drawing.svg", "minified-icons.svg"}) {
        SvgDocument const in = documentOfFile(sample(name));
        // The lines of path data read back to the very curves of the drawing.
        Outcome const r = run({sample(name)});
        ASSERT_EQ(r.code, 0) << name << ": " << r.err;
        EXPECT_EQ(writePathData(parsePathData(r.out).chains), writePathData(in.chains)) << name;
        // So does an SVG, in the input's frame.
        ASSERT_EQ(run({sample(name), "convert", "--format", "svg", "-o", svg}).out, "") << name;
        SvgDocument const back = documentOfFile(svg);
        EXPECT_EQ(writePathData(back.chains), writePathData(in.chains)) << name;
        EXPECT_EQ(back.frame.viewBox, in.frame.viewBox) << name;
        EXPECT_EQ(back.frame.width + back.frame.height, in.frame.width + in.frame.height) << name;
        // A .spath stream reads back to the same curves and writes again to the same bytes.
        ASSERT_EQ(run({sample(name), "--format", "spath", "-o", first}).code, 0) << name;
        ASSERT_EQ(run({first, "convert", "--format", "spath", "-o", second}).code, 0) << name;
        EXPECT_EQ(readWholeFile(first, error), readWholeFile(second, error)) << name;
        EXPECT_EQ(run({first}).out, r.out) << name;
    }
}

TEST_F(ToolProcess, WritesSvgAndJsonAndReadsFilesAndStandardInput) {
    // Without a frame of its own the SVG gets one around the drawing.
    SvgReadResult const framed = readSvgDocument(run({"--d", "M0 0L90 50", "--format", "svg"}).out);
    ASSERT_TRUE(framed.document.frame.hasViewBox) << framed.error;
    auto const& box = framed.document.frame.viewBox;
    EXPECT_TRUE(box[0] < 0 && box[1] < 0 && box[0] + box[2] > 90 && box[1] + box[3] > 50);

    nlohmann::json const report = nlohmann::json::parse(
        run({"--d", "M0 0L10 0Q20 0 20 10Z m5 5h1", "--json", "--decimals", "2"}).out, nullptr, false);
    ASSERT_EQ(report["paths"].size(), 2u);
    EXPECT_EQ(report["paths"][0]["segments"], 3);
    EXPECT_EQ(report["paths"][0]["d"], "M0 0L10 0C16.67 0 20 3.33 20 10Z");

    // Path data in a file and an SVG on standard input.
    Outcome const fromFile = run({file("shape.txt", "M0 0 q5 5 10 0\n")});
    Outcome const fromStdin =
        run({"-"}, "<svg xmlns='http://www.w3.org/2000/svg'><path d='M0 0 q5 5 10 0'/></svg>");
    EXPECT_EQ(fromStdin.out, fromFile.out) << fromStdin.err;
    EXPECT_EQ(fromFile.out.substr(0, 22), "M0 0C3.333333333333333") << fromFile.err;

    EXPECT_EQ(run({}).code, 2);
    Outcome const help = run({"--help"});
    EXPECT_EQ(help.code, 0);
    for (std::string const& name : commandNames()) {
        EXPECT_NE(help.out.find("\n  " + name), std::string::npos) << name;
    }
}

TEST_F(ToolProcess, EveryRefusalIsOneLineWithExitCodeOne) {
    // Hostile files: a stream of two paths cut inside the second, one with a stray byte after its paths,
    // one whose last coordinate is a quiet NaN (little-endian), and files that are not what they say.
    std::string const two = run({"--d", "M0 0L1 1M2 2L3 3", "--format", "spath"}).out;
    std::string const cut = file("cut.spath", two.substr(0, two.size() - 3)),
                      longer = file("longer.spath", two + "x"),
                      nan = file("nan.spath",
                                 two.substr(0, two.size() - 8) + std::string("\0\0\0\0\0\0\xf8\x7f", 8)),
                      text = file("text.spath", "M0 0"),
                      bad = file("bad.svg", "<svg><path id='a' d='M0 0 L 5'/></svg>"),
                      empty = file("empty.svg", ""), notSvg = file("notes.svg", "M0 0L1 1");
    std::string const notSpath = ": not a readable .spath stream: ";
    std::string const drawing = sample("open-paths.svg"), record = (scratch() / "r.json").string();
    auto replay = [&](std::string const& name, std::string const& json) {
        return std::vector<std::string>{drawing, "replay", file(name + ".json", json)};
    };
    auto in = [](std::string const& name) { return "replay: " + (scratch() / name).string() + ".json: "; };
    std::vector<std::string> const shapes = {"--d", "M0 0L10 0L10 10Z M20 0C20 10 30 10 30 0"};
    struct Case {
        std::vector<std::string> args;
        std::string err;
    } const cases[] = {
        {{"--d", "M0 0 L1 x"}, "--d: path data at offset 8: expected a number, found 'x'"},
        {{bad},
         bad + ": <path id=\"a\"> at byte 5: d at offset 8: expected a number, found the end of the data"},
        {{"/nonexistent/drawing.svg"}, "cannot read '/nonexistent/drawing.svg': No such file or directory"},
        {{cut}, cut + notSpath + "path 1 of 2 is cut short or damaged"},
        {{longer}, longer + notSpath + "unexpected bytes after path 1"},
        {{nan}, nan + notSpath + "path 1 has a coordinate that is not a finite number"},
        {{text}, text + notSpath + "its start claims 807415885 paths in only 4 bytes"},
        {{empty}, empty + ": the file is empty"},
        {{"-"}, "standard input: nothing was read"},
        {{notSvg}, notSvg + ": not an SVG document (it does not start with '<')"},
        // Numbers beyond the double range, while reading or editing.
        {{"--d", "M1.7e308 0 l1.7e308 0"},
         "--d: path data at offset 12: the coordinates of this l command overflow the range of double "
         "precision"},
        {{"--d", "M0 0L1e400 0"},
         "--d: path data at offset 5: expected a number within the range of double precision, found '1'"},
        {{"--d", "M0 0L1 1", "transform", "scale", "1e300", "transform", "scale", "1e300"},
         "transform: path 0 would get coordinates beyond the range of double precision (about 1.8e308)"},
        {{"--d", "M-1e308 0L1e308 0", "info"},
         "info: the length of path 0 overflows the range of double precision"},
        {{drawing, "preview", "--vertex", "1", "--to", "nan", "1"}, "coordinates must be finite numbers"},
        // Mistakes on the command line, found before any input is read.
        {{drawing, "frobnicate"}, "unknown command 'frobnicate' (run simplepath --help for the list)"},
        {{"nearest", "1", "2"}, "no input: give an SVG, .spath or path data file, or --d DATA"},
        {{"info", "drawing.svg"}, "the input comes before the commands: simplepath drawing.svg info"},
        {{drawing, "delete"}, "delete: name the target with either --vertex or --near"},
        {{drawing, "insert", "--at", "2"},
         "insert: --at takes SEG:T, a segment index and a parameter in [0, 1], not '2'"},
        {{drawing, "pick", "1", "2", "--tolerance", "-1"}, "pick: --tolerance must not be negative"},
        {{drawing, "preview", "--vertex", "1", "--vertex", "2", "--handle", "in", "--to", "1", "1"},
         "preview: --handle drags one vertex: give a single --vertex"},
        // Targets that are not in the drawing, and edits that cannot be made there.
        {with(shapes, {"delete", "--vertex", "3"}), "vertex 3 is out of range: path 0 has 3 vertices"},
        {with(shapes, {"nearest", "1", "2", "--path", "-1"}),
         "path -1 is out of range: the drawing has 2 paths"},
        {with(shapes, {"drag", "--near", "50", "50", "--to", "0", "0"}), "no curve within 1 of (50, 50)"},
        {with(shapes, {"join", "0:end", "1:start"}), "join: path 0 is closed, so it has no ends"},
        {with(shapes, {"split", "--path", "1", "--vertex", "0"}),
         "split: cannot split at that vertex (an end of an open path)"},
        {with(shapes, {"slice", "0:1:0.5", "0:1:0.5"}),
         "slice: both positions are the same; a slice needs two places to cut between"},
        {{drawing, "undo"}, "undo: there is no edit before it to take back"},
        // What keeps no record, and record files that do not read or do not fit the drawing.
        {{drawing, "--record", record, "transform", "translate", "1", "1"},
         "transform cannot be recorded: path-level edits keep no record"},
        {replay("a", "{\"records\": ["), in("a") + "not valid JSON (at byte 14)"},
        {replay("c", "{\"records\": [{\"type\": 8}]}"), in("c") + "record 1 has the unknown type 8"},
        {replay("d", "{\"records\": [{\"type\": 9, \"vertexLocation\": [1]}]}"),
         in("d") + "record 1 (delete): its field \"vertexLocation\" is missing or not what it should be"},
    };
    for (Case const& c : cases) {
        Outcome const r = run(c.args);
        EXPECT_EQ(r.code, 1) << c.err;
        EXPECT_EQ(r.out, "") << c.err;
        EXPECT_EQ(r.err, "simplepath: error: " + c.err + "\n");
    }
    EXPECT_FALSE(fs::exists(record));
    // The command-line parser's own complaints are flattened into the same single line.
    Outcome const mode = run({drawing, "mode", "wobbly", "--vertex", "1"});
    EXPECT_EQ(mode.code, 1);
    EXPECT_EQ(mode.err, "simplepath: error: mode: wobbly not in {smooth,cusp,symmetric,straight}\n");
}

TEST_F(ToolProcess, OutputFilesAreReplacedWholeOrNotAtAll) {
    fs::path const folder = scratch() / "out";
    fs::create_directories(folder);
    std::string const out = (folder / "kept.txt").string();
    std::string error;
    // A failed call leaves the file as it was; a good one replaces all of it and leaves no temporary file
    // behind. A new file gets the usual permissions, not the private ones of a temporary file.
    EXPECT_EQ(run({"--d", "M0 0 L1 1 L2 2 L3 3", "-o", out}).code, 0);
    EXPECT_EQ(run({"--d", "M0 0 L1 1", "delete", "--vertex", "9", "-o", out}).code, 1);
    EXPECT_EQ(readWholeFile(out, error), "M0 0L1 1 2 2 3 3\n");
    EXPECT_EQ(run({"--d", "M0 0 L1 1", "-o", out}).code, 0);
    EXPECT_EQ(readWholeFile(out, error), "M0 0L1 1\n");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 1);
    mode_t const mask = ::umask(0);
    ::umask(mask);
    EXPECT_EQ(fs::status(out).permissions(), static_cast<fs::perms>(0666 & ~mask));

    // Only regular files are replaced; a link is kept and the file it names replaced.
    std::string const link = (folder / "link.txt").string();
    auto failure = [&](std::string const& target) { return run({"--d", "M0 0 L1 1", "-o", target}).err; };
    EXPECT_EQ(failure(folder.string()), "simplepath: error: cannot write '" + folder.string() +
                                            "': it is a directory, not a regular file\n");
    fs::create_symlink("kept.txt", link);
    ASSERT_EQ(run({"--d", "M0 0L2 2", "-o", link}).code, 0);
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(readWholeFile(out, error), "M0 0L2 2\n");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 2);
}
