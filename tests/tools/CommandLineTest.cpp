#include "toolkit/CommandLine.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace sptool;

namespace {

struct Parsed {
    CommandLineResult result;
    std::string out;
    std::string err;
};

Parsed parse(std::vector<std::string> const& args) {
    std::ostringstream out, err;
    Parsed p{parseCommandLine(args, out, err), {}, {}};
    p.out = out.str();
    p.err = err.str();
    return p;
}

} // namespace

TEST(CommandLine, ChainedCommandsKeepTheirOrderAndArguments) {
    Parsed const p =
        parse({"in.svg",    "--decimals", "3",    "nearest",   "1.5",   "-2",          "drag",   "--near",
               "10",        "-20",        "--to", "5",         "6",     "--tolerance", "0.5",    "mode",
               "symmetric", "--vertex",   "2",    "--path",    "1",     "transform",   "scale",  "2",
               "--center",  "0",          "0",    "join",      "0:end", "1:start",     "insert", "--at",
               "3:0.25",    "render",     "-o",   "after.svg", "--json"});
    ASSERT_EQ(p.result.exitCode, -1) << p.err;
    Invocation const& inv = p.result.invocation;
    EXPECT_EQ(inv.options.input, "in.svg");
    EXPECT_EQ(inv.options.decimals, 3);
    EXPECT_TRUE(inv.options.json); // whole-call options may follow the commands
    ASSERT_EQ(inv.steps.size(), 7u);

    auto const& nearest = std::get<NearestStep>(inv.steps[0]);
    EXPECT_EQ(nearest.point, DPoint(1.5, -2));
    EXPECT_FALSE(nearest.path);

    auto const& drag = std::get<DragStep>(inv.steps[1]);
    EXPECT_EQ(drag.from.near, DPoint(10, -20));
    EXPECT_FALSE(drag.from.path);
    EXPECT_EQ(drag.from.tolerance, 0.5);
    EXPECT_EQ(drag.to, DPoint(5, 6));

    auto const& mode = std::get<ModeStep>(inv.steps[2]);
    EXPECT_EQ(mode.mode, VertexMode::Symmetric);
    EXPECT_EQ(mode.vertex.vertex, 2);
    EXPECT_EQ(mode.vertex.path, 1);

    auto const& transform = std::get<TransformStep>(inv.steps[3]);
    EXPECT_EQ(transform.kind, TransformKind::Scale);
    EXPECT_EQ(transform.values, (std::vector<double>{2, 2}));
    EXPECT_EQ(transform.center, DPoint(0, 0));

    auto const& join = std::get<JoinStep>(inv.steps[4]);
    ASSERT_TRUE(join.ends);
    EXPECT_EQ((*join.ends)[0].path, 0);
    EXPECT_FALSE((*join.ends)[0].atStart);
    EXPECT_TRUE((*join.ends)[1].atStart);

    auto const& insert = std::get<InsertStep>(inv.steps[5]);
    ASSERT_TRUE(insert.at.position);
    EXPECT_EQ(insert.at.position->segment, 3);
    EXPECT_EQ(insert.at.position->t, 0.25);
    EXPECT_EQ(insert.at.path, 0); // an index target defaults to the first path

    EXPECT_EQ(std::get<RenderStep>(inv.steps[6]).output, "after.svg");
    EXPECT_TRUE(isEdit(inv.steps[1]));
    EXPECT_FALSE(isEdit(inv.steps[6]));
}

TEST(CommandLine, MistakesGiveOneLineAndExitCodeOne) {
    struct Case {
        std::vector<std::string> args;
        char const* message;
    } const cases[] = {
        {{"in.svg", "frobnicate"},
         "simplepath: error: unknown command 'frobnicate' (run simplepath --help for the list)\n"},
        {{"in.svg", "--frob"}, "simplepath: error: unknown option '--frob'\n"},
        {{"nearest", "1", "2"},
         "simplepath: error: no input: give an SVG, .spath or path data file, or --d DATA\n"},
        {{"in.svg", "nearest", "1", "2", "3"}, "simplepath: error: nearest: unexpected argument '3'\n"},
        {{"in.svg", "delete"}, "simplepath: error: delete: name the target with either --vertex or --near\n"},
        {{"in.svg", "insert", "--at", "2"},
         "simplepath: error: insert: --at takes SEG:T, a segment index and a "
         "parameter in [0, 1], not '2'\n"},
        {{"in.svg", "join", "0:end", "1:middle"},
         "simplepath: error: join: a path end is P:start or P:end, not '1:middle'\n"},
        {{"in.svg", "transform", "rotate", "1", "2"},
         "simplepath: error: transform: rotate does not take 2 numbers\n"},
        {{"in.svg", "pick", "1", "2", "--tolerance", "-1"},
         "simplepath: error: pick: --tolerance must not be negative\n"},
    };
    for (Case const& c : cases) {
        Parsed const p = parse(c.args);
        EXPECT_EQ(p.result.exitCode, 1) << c.args.back();
        EXPECT_EQ(p.err, c.message);
    }
    // CLI11's own complaints are flattened into the same single line.
    Parsed const mode = parse({"in.svg", "mode", "wobbly", "--vertex", "1"});
    EXPECT_EQ(mode.result.exitCode, 1);
    EXPECT_EQ(mode.err.rfind("simplepath: error: mode: ", 0), 0u);
    EXPECT_EQ(mode.err.find('\n'), mode.err.size() - 1);
}

TEST(CommandLine, HelpListsEveryCommand) {
    Parsed const p = parse({"--help"});
    EXPECT_EQ(p.result.exitCode, 0);
    for (std::string const& name : commandNames()) {
        EXPECT_NE(p.out.find("\n  " + name), std::string::npos) << name;
    }
    Parsed const drag = parse({"in.svg", "drag", "--help"});
    EXPECT_EQ(drag.result.exitCode, 0);
    EXPECT_NE(drag.out.find("--to"), std::string::npos);
}
