#include "model/file_replace.h"

#include "model/document_error.h"

#include "base/regular_file.h"
#include "base/write_signals.h"

#include <boost/filesystem/operations.hpp>

#include <cctype>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <pthread.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <dirent.h>

#include <fstream>
#include <random>

namespace fs = boost::filesystem;

namespace QorBorder {

namespace {

std::string errnoText(int error) {
    return std::strerror(error);
}

// A failed write in the words a user understands, followed by the system's.
std::string writeFailure(int error) {
    switch (error) {
    case ENOSPC:
        return "the disk is full (" + errnoText(error) + ")";
    case EDQUOT:
        return "the disk quota is used up (" + errnoText(error) + ")";
    case EFBIG:
        return "the file would exceed the largest size allowed (" + errnoText(error) + ")";
    case EROFS:
        return "the file system is read-only (" + errnoText(error) + ")";
    default:
        return errnoText(error);
    }
}

// The process's umask, read without changing it (umask() can only be read by setting it).
mode_t currentUmask() {
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line)) {
        if (line.compare(0, 6, "Umask:") == 0) {
            return static_cast<mode_t>(std::stoul(line.substr(6), nullptr, 8));
        }
    }
    const mode_t mask = ::umask(022);
    ::umask(mask);
    return mask;
}

constexpr char kTemporaryMark[] = ".qorfmt-";
constexpr int kRandomLetters = 8;

// When process `pid` started, in clock ticks since boot (field 22 of /proc/PID/stat); 0 when
// /proc cannot tell. With the process ID it names one process, even after the ID is reused.
unsigned long long processStart(pid_t pid) {
    char path[64];
    std::snprintf(path, sizeof path, "/proc/%d/stat", static_cast<int>(pid));
    std::ifstream in(path);
    std::string stat;
    std::getline(in, stat);
    const auto close = stat.rfind(')');
    if (close == std::string::npos) {
        return 0;
    }
    std::size_t at = close + 2; // field 3, after ") "
    for (int field = 3; field < 22; ++field) {
        at = stat.find(' ', at);
        if (at == std::string::npos) {
            return 0;
        }
        ++at;
    }
    return std::strtoull(stat.c_str() + at, nullptr, 10);
}

// This machine's name as it may stand in a file name ('_' for anything else); a folder on a
// network file system is shared by several machines, whose process IDs mean nothing here.
std::string hostName() {
    char name[256] = {};
    if (::gethostname(name, sizeof name - 1) != 0 || name[0] == '\0') {
        return "localhost";
    }
    std::string host = name;
    for (char& c : host) {
        if (!std::isalnum(static_cast<unsigned char>(c)) && c != '-' && c != '.') {
            c = '_';
        }
    }
    return host;
}

// A hidden name `.LEAF.qorfmt-PID-START-HOST.XXXXXXXX` that carries the saving process's
// identity, so that a later save can tell a temporary whose process is gone from one still being
// written.
std::string temporaryName(const std::string& leaf) {
    static const char letters[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
    std::random_device random;
    const pid_t pid = ::getpid();
    std::string name = "." + leaf + kTemporaryMark + std::to_string(pid) + "-" +
                       std::to_string(processStart(pid)) + "-" + hostName() + ".";
    for (int i = 0; i < kRandomLetters; ++i) {
        name += letters[random() % (sizeof letters - 1)];
    }
    return name;
}

// The process a temporary's name says wrote it, and on which machine; false for any name not of
// that exact shape.
bool temporaryOwner(const std::string& name, pid_t& pid, unsigned long long& start,
                    std::string& host) {
    const std::size_t size = name.size();
    if (size < 2 + sizeof kTemporaryMark + kRandomLetters || name[0] != '.' ||
        name[size - kRandomLetters - 1] != '.') {
        return false;
    }
    for (std::size_t i = size - kRandomLetters; i < size; ++i) {
        if (!std::isalnum(static_cast<unsigned char>(name[i]))) {
            return false;
        }
    }
    const std::string head = name.substr(0, size - kRandomLetters - 1);
    const auto mark = head.rfind(kTemporaryMark);
    if (mark == std::string::npos || mark < 2) {
        return false;
    }
    // PID-START-HOST: two numbers, then the host name.
    const std::string identity = head.substr(mark + sizeof kTemporaryMark - 1);
    const auto first = identity.find('-');
    const auto second = first == std::string::npos ? first : identity.find('-', first + 1);
    if (first == 0 || first > 9 || second == std::string::npos || second == first + 1 ||
        second + 1 == identity.size() || identity.find_first_not_of("0123456789") != first ||
        identity.find_first_not_of("0123456789", first + 1) != second) {
        return false;
    }
    pid = static_cast<pid_t>(std::stol(identity.substr(0, first)));
    start = std::strtoull(identity.c_str() + first + 1, nullptr, 10);
    host = identity.substr(second + 1);
    return pid > 0;
}

bool processIsGone(pid_t pid, unsigned long long start) {
    if (::kill(pid, 0) != 0 && errno == ESRCH) {
        return true;
    }
    // Alive under that ID: gone all the same when the ID now names a later process.
    const unsigned long long now = processStart(pid);
    return start != 0 && now != 0 && now != start;
}

// The file a save writes: `file`, or the end of its chain of symbolic links, also when that end
// does not exist (it is then created and the links are kept).
fs::path saveTarget(const fs::path& file) {
    fs::path target = file;
    for (int hop = 0; hop < 40; ++hop) {
        boost::system::error_code ec;
        if (!fs::is_symlink(target, ec)) {
            return target;
        }
        const fs::path next = fs::read_symlink(target, ec);
        if (ec) {
            return target;
        }
        target = next.is_absolute() ? next : target.parent_path() / next;
    }
    throw DocumentError(file.string(), 0, "cannot save: " + errnoText(ELOOP));
}

// Removes from `folder` the temporaries of saves whose process is gone: regular files of this
// user, written on this machine, whose name has the exact shape temporaryName gives. Returns how
// many went.
int removeAbandonedTemporaries(int folder) {
    const int listed = ::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (listed < 0) {
        return 0;
    }
    DIR* entries = ::fdopendir(listed);
    if (!entries) {
        ::close(listed);
        return 0;
    }
    int removed = 0;
    const uid_t me = ::geteuid();
    const std::string thisHost = hostName();
    while (const struct dirent* entry = ::readdir(entries)) {
        const std::string entryName = entry->d_name;
        pid_t pid = 0;
        unsigned long long start = 0;
        std::string host;
        if (entryName[0] != '.' || !temporaryOwner(entryName, pid, start, host) ||
            host != thisHost) {
            continue;
        }
        struct stat info {};
        if (::fstatat(folder, entry->d_name, &info, AT_SYMLINK_NOFOLLOW) != 0 ||
            !S_ISREG(info.st_mode) || info.st_uid != me || !processIsGone(pid, start)) {
            continue;
        }
        if (::unlinkat(folder, entry->d_name, 0) == 0) {
            ++removed;
        }
    }
    ::closedir(entries);
    return removed;
}

// The new file while it is written. Unless committed, it leaves nothing behind: an unnamed file
// vanishes with its descriptor, a named one is removed.
struct NewFile {
    int folder = -1;
    int fd = -1;
    std::string named; ///< the temporary's name in the folder; empty while unnamed
    bool committed = false;

    ~NewFile() {
        if (fd >= 0) {
            ::close(fd);
        }
        if (!named.empty() && !committed) {
            ::unlinkat(folder, named.c_str(), 0);
        }
        if (folder >= 0) {
            ::close(folder);
        }
    }
};

// Links the unnamed file `fd` into `folder` as `temporary` and renames that over `leaf`; on a
// failed rename the link goes again. Only system calls, so that it can run in a vforked child.
// Returns 0 or the error number.
int linkAndRename(int fd, int folder, const char* procPath, const char* temporary,
                  const char* leaf) {
    if (::linkat(fd, "", folder, temporary, AT_EMPTY_PATH) != 0) {
        if (errno == EEXIST) {
            return EEXIST;
        }
        // Kernels that keep AT_EMPTY_PATH for privileged callers take the /proc link.
        if (::linkat(AT_FDCWD, procPath, folder, temporary, AT_SYMLINK_FOLLOW) != 0) {
            return errno;
        }
    }
    if (::renameat(folder, temporary, folder, leaf) != 0) {
        const int error = errno;
        ::unlinkat(folder, temporary, 0);
        return error;
    }
    return 0;
}

// Link and rename are two steps; between them the temporary name exists. Run by a vforked child,
// they finish even when this process is killed between them, so a killed save never leaves that
// name behind. The parent waits for the child (vfork suspends it meanwhile); signals stay
// blocked in the child, which shares the parent's memory. Without a child (vfork failed) the
// steps run here. Returns 0 or the error number, -1 when the child did not get to the end.
int commitOutlivingThisProcess(int fd, int folder, const char* procPath, const char* temporary,
                               const char* leaf) {
    sigset_t all;
    sigset_t previous;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &previous);
    volatile int result = -1;
    const pid_t child = ::vfork();
    if (child == 0) {
        // A group of its own, so that a kill of this process's group does not stop it halfway.
        ::setpgid(0, 0);
        result = linkAndRename(fd, folder, procPath, temporary, leaf);
        ::_exit(0);
    }
    ::pthread_sigmask(SIG_SETMASK, &previous, nullptr);
    if (child < 0) {
        return linkAndRename(fd, folder, procPath, temporary, leaf);
    }
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return result;
}

bool sameFile(const struct stat& a, const struct stat& b) {
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

} // namespace

int removeAbandonedTemporaries(const fs::path& folder) {
    const int fd =
        ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) {
        return 0;
    }
    const int removed = removeAbandonedTemporaries(fd);
    ::close(fd);
    return removed;
}

FileState replaceFileAtomically(const fs::path& file, const std::string& content) {
    return replaceFileAtomically(
        file, [&content](const ChunkSink& sink) { sink(content.data(), content.size()); });
}

FileState replaceFileAtomically(const fs::path& file, const ContentProducer& produce,
                                const CommitCheck& check, TemporaryFile temporary) {
    const std::string name = file.string();
    if (name.empty()) {
        throw DocumentError(name, 0, "the document has no file name");
    }
    // A file size limit or a closed pipe fails the write instead of ending the process (in NX:
    // the CAD session with every unsaved document).
    const Base::WriteSignalsHeld signalsHeld;
    // Replace the file a link points to, not the link.
    const fs::path target = saveTarget(file);
    struct stat existing {};
    const bool exists = ::stat(target.c_str(), &existing) == 0;
    if (exists && S_ISDIR(existing.st_mode)) {
        throw DocumentError(name, 0, "cannot save: it is a folder");
    }
    if (exists && !S_ISREG(existing.st_mode)) {
        throw DocumentError(name, 0,
                            "cannot save: it is " + Base::fileKind(existing.st_mode) +
                                ", not a regular file");
    }
    if (exists && ::access(target.c_str(), W_OK) != 0) {
        throw DocumentError(name, 0,
                            errno == EROFS ? "cannot save: the file system is read-only"
                                           : "cannot save: the file is read-only");
    }
    fs::path folderName = target.parent_path();
    if (folderName.empty()) {
        folderName = ".";
    }
    const std::string leaf = target.filename().string();
    auto fail = [&name](const std::string& what, int error) {
        throw DocumentError(name, 0, what + ": " + writeFailure(error));
    };
    auto cannotCreate = [&](int error) {
        fail("cannot create a file in the folder " + folderName.string(), error);
    };

    NewFile out;
    out.folder = ::open(folderName.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (out.folder < 0) {
        cannotCreate(errno);
    }
    removeAbandonedTemporaries(out.folder);
    if (temporary == TemporaryFile::Unnamed) {
        out.fd = ::openat(out.folder, ".", O_TMPFILE | O_WRONLY | O_CLOEXEC, 0666);
        // EISDIR: a kernel without O_TMPFILE; EOPNOTSUPP: a file system without it.
        if (out.fd < 0 && errno != EISDIR && errno != EOPNOTSUPP && errno != EINVAL) {
            cannotCreate(errno);
        }
    }
    if (out.fd < 0) {
        for (int attempt = 0; attempt < 100 && out.fd < 0; ++attempt) {
            out.named = temporaryName(leaf);
            out.fd = ::openat(out.folder, out.named.c_str(),
                              O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
            if (out.fd < 0 && errno != EEXIST) {
                out.named.clear();
                cannotCreate(errno);
            }
        }
        if (out.fd < 0) {
            out.named.clear();
            cannotCreate(EEXIST);
        }
    }
    const mode_t mode = exists ? (existing.st_mode & 07777) : (0666 & ~currentUmask());
    if (::fchmod(out.fd, mode) != 0) {
        fail("cannot set the permissions of the new file", errno);
    }

    struct WriteFailure {
        int error;
    };
    ContentHash hash;
    off_t offset = 0;
    const int fd = out.fd;
    const ChunkSink sink = [fd, &offset, &hash](const char* data, std::size_t left) {
        hash.update(data, left);
        const off_t start = offset;
        while (left > 0) {
            const ssize_t written = ::write(fd, data, left);
            if (written < 0) {
                if (errno == EINTR) {
                    continue;
                }
                throw WriteFailure{errno};
            }
            data += written;
            left -= static_cast<std::size_t>(written);
            offset += written;
        }
        // Start writing this piece to disk now, while the next one is generated, so that the
        // final fsync has little left to wait for. A failure here shows again at the fsync.
        ::sync_file_range(fd, start, offset - start, SYNC_FILE_RANGE_WRITE);
    };
    try {
        produce(sink);
    } catch (const WriteFailure& failure) {
        throw DocumentError(name, 0, "cannot write: " + writeFailure(failure.error));
    }
    if (::fsync(out.fd) != 0) {
        throw DocumentError(name, 0, "cannot flush to disk: " + writeFailure(errno));
    }
    if (check) {
        check();
    }

    if (out.named.empty()) {
        char procPath[64];
        std::snprintf(procPath, sizeof procPath, "/proc/self/fd/%d", out.fd);
        int error = EEXIST;
        for (int attempt = 0; attempt < 100 && error == EEXIST; ++attempt) {
            const std::string linked = temporaryName(leaf);
            error = commitOutlivingThisProcess(out.fd, out.folder, procPath, linked.c_str(),
                                               leaf.c_str());
        }
        if (error < 0) {
            // The child was killed on its way: see whether the rename happened.
            struct stat mine {};
            struct stat now {};
            error = ::fstat(out.fd, &mine) == 0 &&
                            ::fstatat(out.folder, leaf.c_str(), &now, 0) == 0 && sameFile(mine, now)
                        ? 0
                        : EINTR;
        }
        if (error != 0) {
            fail("cannot replace the file", error);
        }
    } else if (::renameat(out.folder, out.named.c_str(), out.folder, leaf.c_str()) != 0) {
        fail("cannot replace the file", errno);
    }
    out.committed = true;
    // Make the rename itself durable.
    ::fsync(out.folder);

    struct stat written {};
    ::fstat(out.fd, &written);
    return fileStateOf(written, static_cast<std::uint64_t>(offset), hash.value());
}

} // namespace QorBorder
