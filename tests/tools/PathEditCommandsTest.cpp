// The path-level edits of the tool, run as a process: slice cuts where it is asked (adding a vertex first
// inside a segment), close and delete-path act on one path, and undo takes each back to the input.
#include "tools/RunTool.h"

using namespace sptool::testing;

namespace {

struct Case {
    char const* data;
    std::vector<std::string> edit;
    char const* out;
};

TEST_F(ToolProcess, PathEditsGiveTheirDrawingAndUndoTakesThemBack) {
    Case const cases[] = {
        // One open path cut inside two segments: the piece between the cuts is closed by the straight cut.
        {"M0 0L10 0L20 0L30 0",
         {"slice", "0:0:0.5", "0:2:0.5"},
         "M5 0L10 0 20 0 25 0Z\nM0 0L5 0 25 0 30 0\n"},
        // Cuts on anchors add no vertex.
        {"M0 0L10 0L20 0L30 0", {"slice", "0:1:0", "0:2:1"}, "M10 0L20 0 30 0Z\nM0 0L10 0 30 0\n"},
        // A closed outline falls into two closed outlines that share the cut.
        {"M0 0L10 0L10 10L0 10Z",
         {"slice", "0:0:0.5", "0:2:0.5"},
         "M5 0L10 0 10 10 5 10Z\nM5 10L0 10 0 0 5 0Z\n"},
        // Two closed outlines cut once each join into one.
        {"M0 0L10 0L10 10L0 10Z M20 0L30 0L30 10Z",
         {"slice", "0:1:0.5", "1:2:0.5"},
         "M10 5L10 10 0 10 0 0 10 0 10 5 25 5 20 0 30 0 30 10 25 5Z\n"},
        {"M0 0L10 0L10 10", {"close"}, "M0 0L10 0 10 10Z\n"},
        {"M0 0L10 0M5 5L6 6", {"delete-path"}, "M5 5L6 6\n"},
    };
    for (Case const& c : cases) {
        SCOPED_TRACE(c.data + (" " + c.edit.front()));
        std::vector<std::string> args = {"--d", c.data};
        args.insert(args.end(), c.edit.begin(), c.edit.end());
        Outcome const edited = run(args);
        ASSERT_EQ(edited.code, 0) << edited.err;
        EXPECT_EQ(edited.out, c.out);
        args.push_back("undo");
        Outcome const undone = run(args);
        ASSERT_EQ(undone.code, 0) << undone.err;
        EXPECT_EQ(undone.out, run({"--d", c.data}).out);
    }
}

TEST_F(ToolProcess, PathEditsAreRefusedWhereTheyCannotBeMade) {
    fs::path const dir = scratch();
    struct Refused {
        std::vector<std::string> args;
        char const* message;
    } const cases[] = {
        {{"--d", "M0 0L10 0L20 0", "--record", (dir / "r.json").string(), "slice", "0:0:0.5", "0:1:0.5"},
         "slice cannot be recorded"},
        {{"--d", "M0 0L10 0L20 0", "slice", "0:0:0.5", "0:5:0.5"}, "segment 5 is out of range"},
        {{"--d", "M0 0L10 0L20 0", "slice", "0:0:0.5", "3:0:0.5"}, "path 3 is out of range"},
        {{"--d", "M0 0L10 0L20 0", "slice", "0:0:0.5", "x"}, "P:SEG:T"},
        {{"--d", "M0 0L10 0L20 0", "slice", "0:1:0.5", "0:1:0.5"}, "both positions are the same"},
        {{"--d", "M0 0L10 0L20 0", "delete-path", "--path", "1"}, "path 1 is out of range"},
    };
    for (Refused const& c : cases) {
        Outcome const r = run(c.args);
        EXPECT_NE(r.code, 0) << c.message;
        EXPECT_NE(r.err.find(c.message), std::string::npos) << r.err;
    }
    EXPECT_FALSE(fs::exists(dir / "r.json"));
}

// A replay is one step: one undo takes back every edit it made.
TEST_F(ToolProcess, OneUndoTakesBackAWholeReplay) {
    fs::path const dir = scratch();
    std::string const drawing = sample("open-paths.svg");
    ASSERT_EQ(run({drawing, "--record", (dir / "r.json").string(), "delete", "--vertex", "1", "insert",
                   "--at", "1:0.5", "mode", "cusp", "--vertex", "2"})
                  .code,
              0);
    Outcome const undone = run({drawing, "replay", (dir / "r.json").string(), "undo"});
    ASSERT_EQ(undone.code, 0) << undone.err;
    EXPECT_EQ(undone.out, run({drawing}).out);
}

} // namespace
