// Edits as operations, run as a process: a chain of edits recorded on a sample drawing replays onto a
// copy of it to the same bytes, and undo takes each edit back to the input.
#include "tools/RunTool.h"

using namespace sptool::testing;
using sptool::readWholeFile;

namespace {

std::string fileText(fs::path const& path) {
    std::string error;
    return readWholeFile(path.string(), error);
}

// Chains that touch every edit the tool records: a drag (recorded as the changes of the triples it moved),
// split, join, moves of anchors and handles with snaps, the modes, insert, delete, and an edit taken back by
// undo, which leaves no record.
struct Chain {
    char const* drawing;
    char const* edits;
} const kChains[] = {
    {"icon.svg",
     "move --path 2 --vertex 3 --to 5 9 --snap vertical delete --path 4 --vertex 0 split --path 3 "
     "--vertex 0 mode symmetric --path 0 --vertex 7 mode straight --path 1 --vertex 2 move --path 1 "
     "--vertex 3 --handle out --to 1 1 --snap horizontal"},
    {"exported-drawing.svg",
     "drag --path 3 --at 2:0.5 --to 10 12 split --path 0 --vertex 1 join 1:end 2:start move --path 2 "
     "--vertex "
     "4 --handle in --to 50 50 mode cusp --path 2 --vertex 5 insert --path 2 --at 2:0.25 undo delete "
     "--path 3 --vertex 1"},
};

TEST_F(ToolProcess, RecordedChainsReplayOntoACopyToTheSameBytesAndUndoTakesEachEditBack) {
    fs::path const dir = scratch();
    std::string const recorded = (dir / "edits.json").string();
    for (Chain const& chain : kChains) {
        SCOPED_TRACE(chain.drawing);
        std::string const copy = file("copy.svg", fileText(sample(chain.drawing)));
        Outcome const edited = run(with({sample(chain.drawing), "--record", recorded}, words(chain.edits)));
        ASSERT_EQ(edited.code, 0) << edited.err;
        ASSERT_NE(edited.out, fileText(sample(chain.drawing)));
        Outcome const replayed = run({copy, "replay", recorded, "--record", (dir / "again.json").string()});
        ASSERT_EQ(replayed.code, 0) << replayed.err;
        EXPECT_EQ(replayed.out, edited.out);
        // Replayed edits record themselves as they were recorded.
        EXPECT_EQ(fileText(dir / "again.json"), fileText(recorded));
    }

    std::string const drawing = sample("exported-drawing.svg");
    Outcome const input = run({drawing});
    std::string const edits[] = {
        "delete --path 1 --vertex 1",
        "insert --path 3 --at 7:0.3",
        "mode symmetric --path 3 --vertex 2",
        "split --path 2 --vertex 1",
        "join 1:end 2:start",
        "move --path 3 --vertex 0 --handle out --to -4 8 --snap angle",
        "drag --path 3 --at 2:0.5 --to 10 12",
        "transform rotate 30", // every path, about the drawing's centre
        "slice 3:1:0.5 3:5:0",
        "close --path 2",
        "delete-path --path 1",
        "replay " + recorded, // a whole replay (of the last chain) is one step
    };
    for (std::string const& edit : edits) {
        SCOPED_TRACE(edit);
        std::vector<std::string> args = with({drawing}, words(edit));
        Outcome const changed = run(args);
        ASSERT_EQ(changed.code, 0) << changed.err;
        EXPECT_NE(changed.out, input.out);
        args.push_back("undo");
        Outcome const undone = run(args);
        ASSERT_EQ(undone.code, 0) << undone.err;
        EXPECT_EQ(undone.out, input.out);
    }
}

} // namespace
