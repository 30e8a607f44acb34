#pragma once

// Runs the built simplepath program as a process, as a user would, and captures what it prints.
#include "toolkit/OutputFile.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

namespace sptool::testing {

namespace fs = std::filesystem;

struct Outcome {
    int code = -1;
    std::string out, err;
};

inline std::string quoted(std::string const& arg) {
    std::string q = "'";
    for (char c : arg) {
        q += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return q + "'";
}

inline fs::path scratch() {
    fs::path const dir = fs::temp_directory_path() / ("simplepath-tool-test-" + std::to_string(::getpid()));
    fs::create_directories(dir);
    return dir;
}

// Runs the tool with the arguments through the shell, capturing both streams.
inline Outcome run(std::vector<std::string> const& args, std::string const& input = "") {
    fs::path const dir = scratch();
    std::string command = quoted(SIMPLEPATH_TOOL_PATH);
    for (std::string const& a : args) {
        command += " " + quoted(a);
    }
    std::string const in = (dir / "stdin").string(), out = (dir / "stdout").string(),
                      err = (dir / "stderr").string();
    EXPECT_EQ(writeFileAtomically(in, input), "");
    int const status =
        std::system((command + " <" + quoted(in) + " >" + quoted(out) + " 2>" + quoted(err)).c_str());
    std::string ignored;
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, readWholeFile(out, ignored),
            readWholeFile(err, ignored)};
}

// Writes a file into the scratch folder and gives its path.
inline std::string file(std::string const& name, std::string const& bytes) {
    std::string const path = (scratch() / name).string();
    EXPECT_EQ(writeFileAtomically(path, bytes), "");
    return path;
}

// The words of a command line written as one string (none of them holds a space).
inline std::vector<std::string> words(std::string const& line) {
    std::istringstream in(line);
    return {std::istream_iterator<std::string>(in), std::istream_iterator<std::string>()};
}

// The arguments with more appended, for tables whose rows share a start.
inline std::vector<std::string> with(std::vector<std::string> args, std::vector<std::string> const& more) {
    args.insert(args.end(), more.begin(), more.end());
    return args;
}

inline std::string sample(char const* name) {
    return std::string(SIMPLEPATH_SAMPLE_DATA) + "/" + name;
}

// Removes the scratch folder that the runs of each test leave behind.
class ToolProcess : public ::testing::Test {
  protected:
    void TearDown() override {
        std::error_code ignored;
        fs::remove_all(scratch(), ignored);
    }
};

} // namespace sptool::testing
