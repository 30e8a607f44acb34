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

// The same, written piece by piece: the pieces go to the temporary file as they come, so a large output
// never has to be held whole in memory. The target is replaced only by commit(); a file destroyed
// without a successful commit leaves the target as it was and removes its temporary file.
class AtomicFile {
  public:
    // Opens the temporary file; error() tells why when that failed.
    explicit AtomicFile(std::string const& path);
    ~AtomicFile();
    AtomicFile(AtomicFile const&) = delete;
    AtomicFile& operator=(AtomicFile const&) = delete;

    std::string const& error() const { return error_; }
    // Appends a piece; false (with error() set) when it could not be written.
    bool write(std::string_view piece);
    // Flushes the file to disk and renames it over the target. Returns the one-line reason on failure,
    // empty on success.
    std::string commit();

  private:
    std::string requested_; // the path as given, for messages
    std::string target_;    // where it lands once links are followed
    std::string temporary_;
    std::string error_;
    int fd_ = -1;
    bool committed_ = false;
};

// Reads a whole file; on failure `error` gets a one-line reason and the result is empty.
std::string readWholeFile(std::string const& path, std::string& error);

} // namespace sptool
