#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace sptool {

// The whole tool: reads the command line, the input, runs the commands in order and writes the output.
// Returns the process exit code; errors are one line on `err`.
int runTool(std::vector<std::string> const& args, std::istream& in, std::ostream& out, std::ostream& err);
int runTool(int argc, char** argv, std::ostream& out, std::ostream& err);

} // namespace sptool
