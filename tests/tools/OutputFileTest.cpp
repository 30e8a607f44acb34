#include "toolkit/OutputFile.h"
#include "tools/RunTool.h"

#include <sys/stat.h>
#include <unistd.h>

using namespace sptool;
using namespace sptool::testing;

TEST_F(ToolProcess, OutputFileIsReplacedWholeOrNotAtAll) {
    fs::path const folder = scratch() / "out";
    fs::create_directories(folder);
    auto entries = [&] { return std::distance(fs::directory_iterator(folder), {}); };
    std::string const target = (folder / "out.svg").string();
    std::string error;
    EXPECT_EQ(writeFileAtomically(target, "a long first version of the file"), "");
    EXPECT_EQ(writeFileAtomically(target, "short"), "");
    EXPECT_EQ(readWholeFile(target, error), "short");
    EXPECT_EQ(entries(), 1); // no temporary file left behind
    // A new file gets ordinary permissions, not the private ones of a temporary file.
    mode_t const mask = ::umask(0);
    ::umask(mask);
    EXPECT_EQ(fs::status(target).permissions(), static_cast<fs::perms>(0666 & ~mask));

    EXPECT_EQ(writeFileAtomically((folder / "missing/x.svg").string(), "x"),
              "cannot write '" + (folder / "missing/x.svg").string() + "': No such file or directory");
    EXPECT_EQ(writeFileAtomically(folder.string() + "/", "x"),
              "cannot write '" + folder.string() + "/': not a file name");
    EXPECT_EQ(readWholeFile("/nonexistent/file.svg", error), "");
    EXPECT_EQ(error, "cannot read '/nonexistent/file.svg': No such file or directory");
    readWholeFile(folder.string(), error);
    EXPECT_NE(error.find("Is a directory"), std::string::npos);
    EXPECT_EQ(entries(), 1);

    fs::permissions(folder, fs::perms::owner_read | fs::perms::owner_exec);
    if (::access(folder.c_str(), W_OK) == 0) {
        GTEST_SKIP() << "running with rights that ignore folder permissions";
    }
    EXPECT_EQ(writeFileAtomically(target, "replacement"), "cannot write '" + target + "': Permission denied");
    EXPECT_EQ(readWholeFile(target, error), "short");
    fs::permissions(folder, fs::perms::owner_all);
}
