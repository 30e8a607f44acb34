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

AtomicFile::AtomicFile(std::string const& requested)
    : requested_(requested), target_(resolveLinks(requested)) {
    // Only regular files are replaced: renaming over a device node, a fifo or a directory would turn it
    // into a file (as root, even /dev/null), which is never what an output option means.
    struct stat existing {};
    if (::stat(target_.c_str(), &existing) == 0 && !S_ISREG(existing.st_mode)) {
        error_ =
            "cannot write '" + requested + "': it is " + kindOf(existing.st_mode) + ", not a regular file";
        return;
    }
    std::size_t const slash = target_.find_last_of('/');
    std::string const folder = slash == std::string::npos ? std::string() : target_.substr(0, slash + 1);
    std::string const name = slash == std::string::npos ? target_ : target_.substr(slash + 1);
    if (name.empty() || name == "." || name == "..") {
        error_ = "cannot write '" + requested + "': not a file name";
        return;
    }
    std::vector<char> temporary(folder.begin(), folder.end());
    std::string const pattern = "." + name + ".XXXXXX";
    temporary.insert(temporary.end(), pattern.begin(), pattern.end());
    temporary.push_back('\0');
    fd_ = ::mkstemp(temporary.data());
    if (fd_ < 0) {
        error_ = reason("write", requested, errno);
        return;
    }
    temporary_ = temporary.data();
}

AtomicFile::~AtomicFile() {
    if (fd_ >= 0) {
        ::close(fd_);
    }
    if (!committed_ && !temporary_.empty()) {
        ::unlink(temporary_.c_str());
    }
}

bool AtomicFile::write(std::string_view piece) {
    if (fd_ < 0) {
        return false;
    }
    if (!writeAll(fd_, piece)) {
        error_ = reason("write", requested_, errno);
        return false;
    }
    return true;
}

std::string AtomicFile::commit() {
    if (fd_ < 0) {
        return error_;
    }
    bool const ok = ::fchmod(fd_, permissionsFor(target_)) == 0 && ::fsync(fd_) == 0;
    int const syncError = errno;
    int const closed = ::close(fd_);
    int const closeError = errno;
    fd_ = -1;
    if (!ok || closed != 0) {
        return error_ = reason("write", requested_, ok ? closeError : syncError);
    }
    if (::rename(temporary_.c_str(), target_.c_str()) != 0) {
        return error_ = reason("write", requested_, errno);
    }
    committed_ = true;
    return {};
}

std::string writeFileAtomically(std::string const& path, std::string_view contents) {
    AtomicFile file(path);
    if (!file.error().empty() || !file.write(contents)) {
        return file.error();
    }
    return file.commit();
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
