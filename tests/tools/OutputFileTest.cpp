#include "toolkit/OutputFile.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include <unistd.h>

using namespace sptool;
namespace fs = std::filesystem;

namespace {

// A fresh folder under the system's temporary folder, removed with everything in it at the end.
class ScratchFolder {
  public:
    ScratchFolder() {
        std::string pattern = (fs::temp_directory_path() / "simplepath-output-XXXXXX").string();
        path_ = ::mkdtemp(pattern.data()) ? pattern : std::string();
    }
    ~ScratchFolder() {
        std::error_code ignored;
        fs::permissions(path_, fs::perms::owner_all, ignored);
        fs::remove_all(path_, ignored);
    }
    std::string const& path() const { return path_; }
    std::size_t entries() const {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(path_), {}));
    }

  private:
    std::string path_;
};

std::string contents(std::string const& path) {
    std::string error;
    return readWholeFile(path, error);
}

} // namespace

TEST(OutputFile, ReplacesTheWholeFileAndLeavesNoTemporaryBehind) {
    ScratchFolder folder;
    ASSERT_FALSE(folder.path().empty());
    std::string const target = folder.path() + "/out.svg";
    EXPECT_EQ(writeFileAtomically(target, "a long first version of the file"), "");
    EXPECT_EQ(writeFileAtomically(target, "short"), "");
    EXPECT_EQ(contents(target), "short");
    EXPECT_EQ(folder.entries(), 1u);
    // A new file gets ordinary permissions, not the private ones of a temporary file.
    EXPECT_NE(fs::status(target).permissions() & fs::perms::owner_read, fs::perms::none);
}

TEST(OutputFile, FailureLeavesTheTargetAsItWas) {
    ScratchFolder folder;
    std::string const target = folder.path() + "/keep.txt";
    ASSERT_EQ(writeFileAtomically(target, "original"), "");
    EXPECT_EQ(writeFileAtomically(folder.path() + "/missing/x.svg", "x"),
              "cannot write '" + folder.path() + "/missing/x.svg': No such file or directory");
    EXPECT_EQ(writeFileAtomically(folder.path() + "/", "x"),
              "cannot write '" + folder.path() + "/': not a file name");
    EXPECT_EQ(folder.entries(), 1u);

    fs::permissions(folder.path(), fs::perms::owner_read | fs::perms::owner_exec);
    if (::access(folder.path().c_str(), W_OK) == 0) {
        GTEST_SKIP() << "running with rights that ignore folder permissions";
    }
    std::string const error = writeFileAtomically(target, "replacement");
    EXPECT_EQ(error, "cannot write '" + target + "': Permission denied");
    EXPECT_EQ(contents(target), "original");
    EXPECT_EQ(folder.entries(), 1u);
}

TEST(OutputFile, ReadingReportsTheReason) {
    std::string error;
    EXPECT_EQ(readWholeFile("/nonexistent/file.svg", error), "");
    EXPECT_EQ(error, "cannot read '/nonexistent/file.svg': No such file or directory");
    readWholeFile(fs::temp_directory_path().string(), error);
    EXPECT_NE(error.find("Is a directory"), std::string::npos);
}
