// The README's tool section runs as shown: every command of its console block is run from a copy of the
// repository's layout (examples/ and build/tools/simplepath) and must print exactly the lines under it.
#include "tools/RunTool.h"

#include <cstdio>
#include <sstream>

using namespace sptool;
using namespace sptool::testing;

TEST_F(ToolProcess, TheReadmeCommandsPrintWhatTheReadmeShows) {
    fs::path const root = fs::path(SIMPLEPATH_SAMPLE_DATA).parent_path().parent_path();
    std::string error;
    std::string const readme = readWholeFile((root / "README.md").string(), error);
    ASSERT_EQ(error, "");
    std::size_t const section = readme.find("## The command-line tool");
    std::size_t const sectionEnd = readme.find("\n## ", section + 1);
    ASSERT_NE(section, std::string::npos);
    // A working folder shaped like a clone after `make demo`.
    fs::path const work = scratch() / "clone";
    fs::create_directories(work / "build" / "tools");
    fs::create_symlink(root / "examples", work / "examples");
    fs::create_symlink(SIMPLEPATH_TOOL_PATH, work / "build" / "tools" / "simplepath");

    std::string line, command, expected;
    int commands = 0;
    auto const check = [&] {
        if (command.empty()) {
            return;
        }
        ++commands;
        std::string const out = (scratch() / "readme-out").string();
        std::system(
            ("cd " + quoted(work.string()) + " && " + command + " >" + quoted(out) + " 2>&1").c_str());
        EXPECT_EQ(readWholeFile(out, error), expected) << command;
        command.clear();
        expected.clear();
    };
    // Every console block of the section, in order: later blocks may use files the earlier ones wrote.
    for (std::size_t start = readme.find("```console\n", section); start < sectionEnd;
         start = readme.find("```console\n", start + 1)) {
        std::size_t const end = readme.find("\n```", start + 1);
        ASSERT_NE(end, std::string::npos);
        std::istringstream lines(readme.substr(start + 11, end - start - 10));
        bool continued = false;
        while (std::getline(lines, line)) {
            if (continued) {
                command += " " + line;
            } else if (line.rfind("$ ", 0) == 0) {
                check();
                command = line.substr(2);
            } else {
                expected += line + "\n";
            }
            continued = !line.empty() && line.back() == '\\';
            if (continued) {
                command.pop_back();
            }
        }
        check();
    }
    EXPECT_GE(commands, 5);
}
