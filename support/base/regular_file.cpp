#include "base/regular_file.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Base {

std::string fileKind(mode_t mode) {
    switch (mode & S_IFMT) {
    case S_IFREG:
        return "a regular file";
    case S_IFDIR:
        return "a folder";
    case S_IFIFO:
        return "a FIFO (named pipe)";
    case S_IFCHR:
        return "a character device";
    case S_IFBLK:
        return "a block device";
    case S_IFSOCK:
        return "a socket";
    case S_IFLNK:
        return "a symbolic link";
    default:
        return "a special file";
    }
}

std::string byteCount(std::uint64_t limit) {
    static const char* const units[] = {"bytes", "KiB", "MiB", "GiB", "TiB"};
    int unit = 0;
    while (unit < 4 && limit >= 1024 && limit % 1024 == 0) {
        limit /= 1024;
        ++unit;
    }
    return std::to_string(limit) + " " + units[unit];
}

std::string readRegularFile(const boost::filesystem::path& file, std::uint64_t limit,
                            const char* kind, struct stat* info) {
    // Non-blocking, so that opening a FIFO without a writer returns at once; the kind check
    // below refuses it.
    const int fd = ::open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (fd < 0) {
        const int error = errno;
        struct stat status {};
        // A socket cannot be opened at all (ENXIO): say what it is.
        if (::stat(file.c_str(), &status) == 0 && !S_ISREG(status.st_mode)) {
            throw UnreadableFile("it is " + fileKind(status.st_mode) + ", not a regular file");
        }
        throw UnreadableFile(std::string("cannot open the file: ") + std::strerror(error));
    }
    struct Closer {
        int fd;
        ~Closer() { ::close(fd); }
    } closer{fd};
    struct stat status {};
    if (::fstat(fd, &status) != 0) {
        throw UnreadableFile(std::string("cannot read the file: ") + std::strerror(errno));
    }
    if (!S_ISREG(status.st_mode)) {
        throw UnreadableFile("it is " + fileKind(status.st_mode) + ", not a regular file");
    }
    const std::string tooLarge = std::string("the file is larger than ") + byteCount(limit) +
                                 ", the most allowed for " + kind;
    if (static_cast<std::uint64_t>(status.st_size) > limit) {
        throw UnreadableFile(tooLarge);
    }
    ::fcntl(fd, F_SETFL, ::fcntl(fd, F_GETFL) & ~O_NONBLOCK);
    // Read into the size the file has, then on to its end in pieces (a file that grew, or one
    // whose size stat does not know, as in /proc), without moving what was read.
    std::string content(static_cast<std::size_t>(status.st_size), '\0');
    std::size_t have = 0;
    const auto readSome = [fd](char* into, std::size_t room) {
        while (true) {
            const ssize_t got = ::read(fd, into, room);
            if (got >= 0) {
                return static_cast<std::size_t>(got);
            }
            if (errno != EINTR) {
                throw UnreadableFile(std::string("cannot read the file: ") + std::strerror(errno));
            }
        }
    };
    while (have < content.size()) {
        const std::size_t got = readSome(&content[have], content.size() - have);
        if (got == 0) {
            break;
        }
        have += got;
    }
    content.resize(have);
    char chunk[1 << 16];
    while (const std::size_t got = readSome(chunk, sizeof chunk)) {
        content.append(chunk, got);
        if (content.size() > limit) {
            throw UnreadableFile(tooLarge);
        }
    }
    if (info) {
        *info = status;
    }
    return content;
}

} // namespace Base
