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

constexpr std::uint64_t kPrime1 = 0x9E3779B185EBCA87ULL;
constexpr std::uint64_t kPrime2 = 0xC2B2AE3D27D4EB4FULL;
constexpr std::uint64_t kPrime3 = 0x165667B19E3779F9ULL;
constexpr std::uint64_t kPrime4 = 0x85EBCA77C2B2AE63ULL;
constexpr std::uint64_t kPrime5 = 0x27D4EB2F165667C5ULL;

std::uint64_t rotateLeft(std::uint64_t value, int bits) {
    return (value << bits) | (value >> (64 - bits));
}

std::uint64_t load64(const unsigned char* data) {
    std::uint64_t value = 0;
    std::memcpy(&value, data, sizeof value);
    return value;
}

std::uint32_t load32(const unsigned char* data) {
    std::uint32_t value = 0;
    std::memcpy(&value, data, sizeof value);
    return value;
}

std::uint64_t mixLane(std::uint64_t lane, std::uint64_t input) {
    return rotateLeft(lane + input * kPrime2, 31) * kPrime1;
}

std::uint64_t mergeLane(std::uint64_t hash, std::uint64_t lane) {
    return (hash ^ mixLane(0, lane)) * kPrime1 + kPrime4;
}

[[noreturn]] void cannotTell(const fs::path& file, int error) {
    throw DocumentError(file.string(), 0,
                        std::string("cannot tell whether the file was changed on disk: ") +
                            std::strerror(error));
}

std::int64_t nanoseconds(const struct timespec& time) {
    return static_cast<std::int64_t>(time.tv_sec) * 1000000000 + time.tv_nsec;
}

} // namespace

ContentHash::ContentHash() : m_lanes{kPrime1 + kPrime2, kPrime2, 0, 0 - kPrime1}, m_tail{} {}

void ContentHash::stripe(const unsigned char* data) {
    for (int lane = 0; lane < 4; ++lane) {
        m_lanes[lane] = mixLane(m_lanes[lane], load64(data + 8 * lane));
    }
}

void ContentHash::update(const char* text, std::size_t size) {
    const auto* data = reinterpret_cast<const unsigned char*>(text);
    m_length += size;
    if (m_tailSize > 0) {
        const std::size_t taken = std::min(size, sizeof m_tail - m_tailSize);
        std::memcpy(m_tail + m_tailSize, data, taken);
        m_tailSize += taken;
        data += taken;
        size -= taken;
        if (m_tailSize < sizeof m_tail) {
            return;
        }
        stripe(m_tail);
        m_tailSize = 0;
    }
    for (; size >= 32; data += 32, size -= 32) {
        stripe(data);
    }
    std::memcpy(m_tail, data, size);
    m_tailSize = size;
}

std::uint64_t ContentHash::value() const {
    std::uint64_t hash = 0;
    if (m_length >= 32) {
        hash = rotateLeft(m_lanes[0], 1) + rotateLeft(m_lanes[1], 7) + rotateLeft(m_lanes[2], 12) +
               rotateLeft(m_lanes[3], 18);
        for (std::uint64_t lane : m_lanes) {
            hash = mergeLane(hash, lane);
        }
    } else {
        hash = kPrime5;
    }
    hash += m_length;
    const unsigned char* data = m_tail;
    std::size_t left = m_tailSize;
    for (; left >= 8; data += 8, left -= 8) {
        hash = rotateLeft(hash ^ mixLane(0, load64(data)), 27) * kPrime1 + kPrime4;
    }
    if (left >= 4) {
        hash = rotateLeft(hash ^ (load32(data) * kPrime1), 23) * kPrime2 + kPrime3;
        data += 4;
        left -= 4;
    }
    for (; left > 0; ++data, --left) {
        hash = rotateLeft(hash ^ (*data * kPrime5), 11) * kPrime1;
    }
    hash ^= hash >> 33;
    hash *= kPrime2;
    hash ^= hash >> 29;
    hash *= kPrime3;
    hash ^= hash >> 32;
    return hash;
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
