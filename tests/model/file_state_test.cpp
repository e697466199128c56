#include "model/document_error.h"
#include "model/file_replace.h"
#include "model/file_state.h"

#include "testutil/temp_dir.h"

#include <boost/filesystem/operations.hpp>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

using namespace QorBorder;
namespace fs = boost::filesystem;

namespace {

std::uint64_t hashOf(const std::string& bytes) {
    ContentHash hash;
    hash.update(bytes.data(), bytes.size());
    return hash.value();
}

std::string someBytes(std::size_t size) {
    std::string bytes;
    for (std::size_t i = 0; i < size; ++i) {
        bytes += static_cast<char>((i * 7919 + 13) % 251);
    }
    return bytes;
}

// Writes `bytes` into the existing file in place: same inode, no rename.
void overwriteInPlace(const fs::path& file, const std::string& bytes) {
    const int fd = ::open(file.c_str(), O_WRONLY | O_TRUNC);
    ASSERT_GE(fd, 0);
    ASSERT_EQ(::write(fd, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    ::close(fd);
}

void setModificationTime(const fs::path& file, const struct timespec& time) {
    const struct timespec times[2] = {time, time};
    ASSERT_EQ(::utimensat(AT_FDCWD, file.c_str(), times, 0), 0);
}

struct timespec modificationTime(const fs::path& file) {
    struct stat info {};
    ::stat(file.c_str(), &info);
    return info.st_mtim;
}

} // namespace

TEST(ContentHash, HashOfPiecesEqualsHashOfTheWhole) {
    const std::string bytes = someBytes(1000);
    for (std::size_t first : {0u, 1u, 7u, 31u, 32u, 33u, 64u, 500u, 999u, 1000u}) {
        for (std::size_t second : {0u, 3u, 32u, 100u}) {
            const std::size_t middle = std::min(second, bytes.size() - first);
            ContentHash pieces;
            pieces.update(bytes.data(), first);
            pieces.update(bytes.data() + first, middle);
            pieces.update(bytes.data() + first + middle, bytes.size() - first - middle);
            EXPECT_EQ(pieces.value(), hashOf(bytes)) << first << " + " << middle;
        }
    }
}

// The documents' file states hold XXH64 values: the same as the library's one-shot hash.
TEST(ContentHash, IsXxh64WithSeedZero) {
    const std::string bytes = someBytes(1000);
    EXPECT_EQ(hashOf(bytes), XXH64(bytes.data(), bytes.size(), 0));
    EXPECT_EQ(hashOf(""), 0xEF46DB3751D8E999ULL);
}

TEST(ContentHash, ChangingAnyByteOrTheLengthChangesTheHash) {
    const std::string bytes = someBytes(100);
    const std::uint64_t original = hashOf(bytes);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        std::string changed = bytes;
        changed[i] = static_cast<char>(changed[i] ^ 1);
        EXPECT_NE(hashOf(changed), original) << "byte " << i;
    }
    EXPECT_NE(hashOf(bytes + '\0'), original);
    EXPECT_NE(hashOf(bytes.substr(0, 99)), original);
    EXPECT_NE(hashOf(""), hashOf(std::string(1, '\0')));
}

TEST(ChangedOnDisk, FileAsItWasWrittenIsUnchanged) {
    TestUtil::TempDir dir;
    const fs::path file = dir.path() / "a.fordef";
    const FileState written = replaceFileAtomically(file, "contents");
    EXPECT_FALSE(changedOnDisk(file, written));
}

TEST(ChangedOnDisk, ReplacementWithOtherBytesIsAChange) {
    TestUtil::TempDir dir;
    const fs::path file = dir.path() / "a.fordef";
    const FileState written = replaceFileAtomically(file, "contents");
    replaceFileAtomically(file, "other contents");
    EXPECT_TRUE(changedOnDisk(file, written));
}

// The same size, the old modification time put back, the same inode: only the bytes tell.
TEST(ChangedOnDisk, SameSizeRewrittenInPlaceWithTheOldTimeIsAChange) {
    TestUtil::TempDir dir;
    const fs::path file = dir.path() / "a.fordef";
    const FileState written = replaceFileAtomically(file, "contents");
    const struct timespec before = modificationTime(file);
    overwriteInPlace(file, "CONTENTS");
    setModificationTime(file, before);
    EXPECT_TRUE(changedOnDisk(file, written));
}

TEST(ChangedOnDisk, FileOnlyTouchedOrRewrittenWithTheSameBytesIsUnchanged) {
    TestUtil::TempDir dir;
    const fs::path file = dir.path() / "a.fordef";
    const FileState written = replaceFileAtomically(file, "contents");
    setModificationTime(file, {12345, 0});
    EXPECT_FALSE(changedOnDisk(file, written));
    replaceFileAtomically(file, "contents");
    EXPECT_FALSE(changedOnDisk(file, written));
    fs::permissions(file, fs::perms(0600));
    EXPECT_FALSE(changedOnDisk(file, written));
}

TEST(ChangedOnDisk, RemovedFileAndUnknownStateAreUnchanged) {
    TestUtil::TempDir dir;
    const fs::path file = dir.path() / "a.fordef";
    const FileState written = replaceFileAtomically(file, "contents");
    EXPECT_FALSE(changedOnDisk(file, FileState()));
    fs::remove(file);
    EXPECT_FALSE(changedOnDisk(file, written));
}

TEST(ChangedOnDisk, FileThatCannotBeExaminedIsReportedWithTheReason) {
    TestUtil::TempDir dir;
    const fs::path folder = dir.mkdir("folder");
    const fs::path file = folder / "a.fordef";
    const FileState written = replaceFileAtomically(file, "contents");
    fs::remove_all(folder);
    dir.write("folder", "a file where the folder was");
    try {
        changedOnDisk(file, written);
        FAIL() << "no exception";
    } catch (const DocumentError& error) {
        EXPECT_EQ(error.file(), file.string());
        EXPECT_NE(error.reason().find("cannot tell whether the file was changed"),
                  std::string::npos)
            << error.what();
    }
}
