#include "regular_file.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace nxsim::detail {

namespace {

std::string kindOf(mode_t mode) {
    switch (mode & S_IFMT) {
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
    default:
        return "a special file";
    }
}

std::string mebibytes(std::uint64_t limit) {
    return std::to_string(limit >> 20) + " MiB";
}

// The length of a well-formed UTF-8 sequence at `at`, 0 when there is none.
std::size_t utf8Length(const std::string& text, std::size_t at) {
    const unsigned char lead = static_cast<unsigned char>(text[at]);
    const std::size_t length = lead >= 0xC2 && lead <= 0xDF   ? 2
                               : lead >= 0xE0 && lead <= 0xEF ? 3
                               : lead >= 0xF0 && lead <= 0xF4 ? 4
                                                              : 0;
    if (length == 0 || at + length > text.size()) {
        return 0;
    }
    for (std::size_t i = 1; i < length; ++i) {
        if ((static_cast<unsigned char>(text[at + i]) & 0xC0) != 0x80) {
            return 0;
        }
    }
    return length;
}

} // namespace

std::string readRegularFile(const boost::filesystem::path& file, std::uint64_t limit,
                            const char* kind) {
    // Non-blocking, so that a FIFO without a writer does not hang the open.
    const int fd = ::open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (fd < 0) {
        const int error = errno;
        struct stat status {};
        // A socket cannot be opened at all (ENXIO): say what it is.
        if (::stat(file.c_str(), &status) == 0 && !S_ISREG(status.st_mode)) {
            throw UnreadableFile("it is " + kindOf(status.st_mode) + ", not a regular file");
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
        throw UnreadableFile("it is " + kindOf(status.st_mode) + ", not a regular file");
    }
    const std::string tooLarge =
        "the file is larger than " + mebibytes(limit) + ", the most allowed for " + kind;
    if (static_cast<std::uint64_t>(status.st_size) > limit) {
        throw UnreadableFile(tooLarge);
    }
    ::fcntl(fd, F_SETFL, ::fcntl(fd, F_GETFL) & ~O_NONBLOCK);
    std::string content;
    char buffer[1 << 16];
    while (true) {
        const ssize_t got = ::read(fd, buffer, sizeof buffer);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got < 0) {
            throw UnreadableFile(std::string("cannot read the file: ") + std::strerror(errno));
        }
        if (got == 0) {
            break;
        }
        content.append(buffer, static_cast<std::size_t>(got));
        if (content.size() > limit) {
            throw UnreadableFile(tooLarge);
        }
    }
    return content;
}

std::string visibleText(const std::string& text, KeepLineBreaks keep) {
    std::string out;
    char escaped[8];
    for (std::size_t i = 0; i < text.size();) {
        const unsigned char c = static_cast<unsigned char>(text[i]);
        const std::size_t length = c >= 0x80 ? utf8Length(text, i) : 1;
        if (c == '\n' && keep == KeepLineBreaks::Yes) {
            out += '\n';
        } else if (c == '\t' || c == '\n' || c == '\r') {
            out += c == '\t' ? "\\t" : c == '\n' ? "\\n" : "\\r";
        } else if (c < 0x20 || c == 0x7F || length == 0) {
            std::snprintf(escaped, sizeof escaped, "\\x%02X", c);
            out += escaped;
        } else {
            out.append(text, i, length);
            i += length;
            continue;
        }
        ++i;
    }
    return out;
}

} // namespace nxsim::detail
