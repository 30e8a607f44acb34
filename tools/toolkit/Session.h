#pragma once

#include "toolkit/CommandLine.h"
#include "toolkit/CubicChain.h"
#include "toolkit/PathDataWriter.h"
#include "toolkit/SvgDocument.h"

#include "simplepath/path/SimplePath.h"

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

namespace sptool {

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

} // namespace sptool
