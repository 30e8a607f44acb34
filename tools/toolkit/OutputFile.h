#pragma once

#include <string>
#include <string_view>

namespace sptool {

// Replaces the file at `path` with `contents` so that no reader ever sees a partial file: the contents go
// to a new temporary file in the same folder, which is flushed to disk and then renamed over the target
// (an atomic step within one file system). On failure the temporary file is removed, the target is left
// as it was, and the result is a one-line reason ("cannot write 'out.svg': Permission denied"); on
// success it is empty. A new file gets the usual permissions (0666 less the umask); a replaced file
// keeps its own. A symbolic link is followed and its target replaced, the link kept; anything that is not
// a regular file (a device node, a fifo, a directory) is refused, never replaced.
std::string writeFileAtomically(std::string const& path, std::string_view contents);

// Reads a whole file; on failure `error` gets a one-line reason and the result is empty.
std::string readWholeFile(std::string const& path, std::string& error);

} // namespace sptool
