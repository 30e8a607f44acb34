#include "toolkit/OutputFile.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace sptool {
namespace {

std::string reason(std::string const& what, std::string const& path, int error) {
    return "cannot " + what + " '" + path + "': " + std::strerror(error);
}

mode_t permissionsFor(std::string const& path) {
    struct stat existing {};
    if (::stat(path.c_str(), &existing) == 0) {
        return existing.st_mode & 07777;
    }
    mode_t const mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

bool writeAll(int fd, std::string_view contents) {
    while (!contents.empty()) {
        ssize_t const written = ::write(fd, contents.data(), contents.size());
        if (written < 0) {
            if (errno == EINTR) {
                continue;
            }
            return false;
        }
        contents.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

// Where a write to `path` lands: a symbolic link (or a chain of them) is followed to the file it names,
// so that the link stays and its target is replaced. A dangling link leads to the name it holds.
std::string resolveLinks(std::string path) {
    for (int hops = 0; hops < 40; ++hops) {
        struct stat link {};
        if (::lstat(path.c_str(), &link) != 0 || !S_ISLNK(link.st_mode)) {
            return path;
        }
        std::vector<char> target(static_cast<std::size_t>(link.st_size > 0 ? link.st_size : 255) + 1);
        ssize_t const length = ::readlink(path.c_str(), target.data(), target.size());
        if (length < 0 || static_cast<std::size_t>(length) >= target.size()) {
            return path;
        }
        std::string const name(target.data(), static_cast<std::size_t>(length));
        std::size_t const slash = path.find_last_of('/');
        path = name[0] == '/' || slash == std::string::npos ? name : path.substr(0, slash + 1) + name;
    }
    return path;
}

char const* kindOf(mode_t mode) {
    return S_ISDIR(mode)    ? "a directory"
           : S_ISFIFO(mode) ? "a fifo"
           : S_ISCHR(mode)  ? "a character device"
           : S_ISBLK(mode)  ? "a block device"
           : S_ISSOCK(mode) ? "a socket"
                            : "not a regular file";
}

} // namespace

std::string writeFileAtomically(std::string const& requested, std::string_view contents) {
    std::string const path = resolveLinks(requested);
    // Only regular files are replaced: renaming over a device node, a fifo or a directory would turn it
    // into a file (as root, even /dev/null), which is never what an output option means.
    struct stat existing {};
    if (::stat(path.c_str(), &existing) == 0 && !S_ISREG(existing.st_mode)) {
        return "cannot write '" + requested + "': it is " + kindOf(existing.st_mode) + ", not a regular file";
    }
    std::size_t const slash = path.find_last_of('/');
    std::string const folder = slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
    std::string const name = slash == std::string::npos ? path : path.substr(slash + 1);
    if (name.empty() || name == "." || name == "..") {
        return "cannot write '" + requested + "': not a file name";
    }
    std::vector<char> temporary(folder.begin(), folder.end());
    std::string const pattern = "." + name + ".XXXXXX";
    temporary.insert(temporary.end(), pattern.begin(), pattern.end());
    temporary.push_back('\0');

    int const fd = ::mkstemp(temporary.data());
    if (fd < 0) {
        return reason("write", requested, errno);
    }
    bool const ok = writeAll(fd, contents) && ::fchmod(fd, permissionsFor(path)) == 0 && ::fsync(fd) == 0;
    int const writeError = errno;
    if (::close(fd) != 0 || !ok) {
        int const error = ok ? errno : writeError;
        ::unlink(temporary.data());
        return reason("write", requested, error);
    }
    if (::rename(temporary.data(), path.c_str()) != 0) {
        int const error = errno;
        ::unlink(temporary.data());
        return reason("write", requested, error);
    }
    return {};
}

std::string readWholeFile(std::string const& path, std::string& error) {
    error.clear();
    int const fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        error = reason("read", path, errno);
        return {};
    }
    std::string contents;
    char buffer[1 << 14];
    while (true) {
        ssize_t const got = ::read(fd, buffer, sizeof buffer);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got < 0) {
            error = reason("read", path, errno);
            contents.clear();
            break;
        }
        if (got == 0) {
            break;
        }
        contents.append(buffer, static_cast<std::size_t>(got));
    }
    ::close(fd);
    return contents;
}

} // namespace sptool
