#include "model/file_state.h"

#include "model/document_error.h"

#include "base/regular_file.h"

#include <boost/filesystem/operations.hpp>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <vector>

namespace fs = boost::filesystem;

namespace QorBorder {

namespace {

[[noreturn]] void cannotTell(const fs::path& file, int error) {
    throw DocumentError(file.string(), 0,
                        std::string("cannot tell whether the file was changed on disk: ") +
                            std::strerror(error));
}

std::int64_t nanoseconds(const struct timespec& time) {
    return static_cast<std::int64_t>(time.tv_sec) * 1000000000 + time.tv_nsec;
}

} // namespace

ContentHash::ContentHash() {
    XXH64_reset(&m_state, 0);
}

void ContentHash::update(const char* data, std::size_t size) {
    XXH64_update(&m_state, data, size);
}

std::uint64_t ContentHash::value() const {
    return XXH64_digest(&m_state);
}

FileState fileStateOf(const struct stat& info, std::uint64_t size, std::uint64_t hash) {
    FileState state;
    state.known = true;
    state.device = static_cast<std::uint64_t>(info.st_dev);
    state.inode = static_cast<std::uint64_t>(info.st_ino);
    state.size = size;
    state.modifiedNs = nanoseconds(info.st_mtim);
    state.changedNs = nanoseconds(info.st_ctim);
    state.hash = hash;
    return state;
}

bool changedOnDisk(const fs::path& file, const FileState& known) {
    if (!known.known) {
        return false;
    }
    // Non-blocking: a FIFO put in the file's place must not hang the save.
    const int fd = ::open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (fd < 0) {
        if (errno == ENOENT) {
            return false;
        }
        cannotTell(file, errno);
    }
    struct stat info {};
    if (::fstat(fd, &info) != 0) {
        const int error = errno;
        ::close(fd);
        cannotTell(file, error);
    }
    if (!S_ISREG(info.st_mode)) {
        ::close(fd);
        throw DocumentError(file.string(), 0,
                            "cannot save: it is " + Base::fileKind(info.st_mode) +
                                ", not a regular file");
    }
    const FileState now = fileStateOf(info, static_cast<std::uint64_t>(info.st_size), known.hash);
    if (now.device == known.device && now.inode == known.inode && now.size == known.size &&
        now.modifiedNs == known.modifiedNs && now.changedNs == known.changedNs) {
        ::close(fd);
        return false;
    }
    if (now.size != known.size) {
        ::close(fd);
        return true;
    }
    ContentHash hash;
    std::vector<char> buffer(1 << 20);
    std::uint64_t total = 0;
    while (true) {
        const ssize_t got = ::read(fd, buffer.data(), buffer.size());
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got < 0) {
            const int error = errno;
            ::close(fd);
            cannotTell(file, error);
        }
        if (got == 0) {
            break;
        }
        hash.update(buffer.data(), static_cast<std::size_t>(got));
        total += static_cast<std::uint64_t>(got);
    }
    ::close(fd);
    return total != known.size || hash.value() != known.hash;
}

fs::path normalisedPath(const fs::path& file) {
    boost::system::error_code ec;
    const fs::path absolute = fs::absolute(file);
    const fs::path canonical = fs::weakly_canonical(absolute, ec);
    return ec ? absolute.lexically_normal() : canonical;
}

} // namespace QorBorder
