#pragma once

#include "toolkit/CommandLine.h"
#include "toolkit/CubicChain.h"
#include "toolkit/OutputFile.h"
#include "toolkit/PathDataWriter.h"
#include "toolkit/SvgDocument.h"

#include "simplepath/path/SimplePath.h"

#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace sptool {

class EditHistory;

// Exit codes of the tool.
constexpr int kExitOk = 0;
constexpr int kExitError = 1; // bad input, bad usage, an output that could not be written

// What one call of the tool works on: its options, the drawing read from the input, and its streams.
class Session {
  public:
    Session(GlobalOptions const& globalOptions, std::istream& input, std::ostream& output,
            std::ostream& errors)
        : options(globalOptions), in(input), out(output), err(errors) {}

    GlobalOptions const& options;
    std::string source; // where the drawing came from, for messages: a file name, "standard input", "--d"
    SvgFrame frame;     // the input document's canvas; empty for path data
    std::vector<CubicChain> chains; // the outlines as read, one per subpath, until adoptChains takes them
    // The drawing as library paths, in input order; the commands query and edit these. Paths are never
    // shared, so the session owns each one outright.
    std::vector<std::unique_ptr<SimplePath>> paths;
    // The edits made so far as operations, for undo and --record; made by the first edit. Declared after
    // `paths` so that the operations go before the paths they point to.
    std::shared_ptr<EditHistory> history;

    std::istream& in;
    std::ostream& out;
    std::ostream& err;

    // Prints "simplepath: error: <message>" as one line and returns kExitError.
    int fail(std::string const& message);
    // Writes a finished output to `path` (falling back to the global -o), replacing the file whole, or to
    // standard output when neither is given or the path is "-". Returns an exit code.
    int emit(std::string const& path, std::string const& text);
    // The number format that --decimals asks for.
    NumberFormat numberFormat() const { return NumberFormat{options.decimals}; }
};

// One output of a command, written piece by piece: to `path` (falling back to the global -o) through a
// temporary file that replaces the target at finish(), or to standard output when neither is given or
// the path is "-". Pieces are gathered into blocks, so that a report on a million paths is never held
// whole in memory.
class OutputWriter {
  public:
    OutputWriter(Session& session, std::string const& path);
    ~OutputWriter();
    OutputWriter(OutputWriter const&) = delete;
    OutputWriter& operator=(OutputWriter const&) = delete;

    void write(std::string_view piece);
    // Writes what is left and, for a file, replaces the target. Returns an exit code (after printing
    // the error line).
    int finish();

  private:
    void flush();

    Session& session_;
    std::unique_ptr<AtomicFile> file_; // null for standard output
    std::string buffer_;
    bool failed_ = false;
};

} // namespace sptool
