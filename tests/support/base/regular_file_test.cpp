#include "base/regular_file.h"

#include "testutil/temp_dir.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

TEST(RegularFile, ReadsTheWholeFile) {
    TestUtil::TempDir dir;
    const std::string content(200000, 'x');
    EXPECT_EQ(Base::readRegularFile(dir.write("a.txt", content), 1 << 20, "a test file"), content);
}

// Files in /proc say they are empty; they are read to their end all the same.
TEST(RegularFile, ReadsAFileWhoseSizeStatDoesNotKnow) {
    const std::string status = Base::readRegularFile("/proc/self/status", 1 << 20, "a test file");
    EXPECT_NE(status.find("Pid:"), std::string::npos);
}

TEST(RegularFile, AFileOverTheLimitIsRefusedWithTheLimitAndTheKind) {
    TestUtil::TempDir dir;
    const auto file = dir.write("a.txt", std::string(2049, 'x'));
    try {
        Base::readRegularFile(file, 2048, "a test file");
        FAIL() << "read over the limit";
    } catch (const Base::UnreadableFile& error) {
        EXPECT_STREQ(error.what(),
                     "the file is larger than 2 KiB, the most allowed for a test file");
    }
    EXPECT_EQ(Base::readRegularFile(dir.write("b.txt", std::string(2048, 'x')), 2048, "a test file")
                  .size(),
              2048u);
}

TEST(RegularFile, KindsAreNamedForAMessage) {
    EXPECT_EQ(Base::fileKind(S_IFIFO), "a FIFO (named pipe)");
    EXPECT_EQ(Base::fileKind(S_IFCHR), "a character device");
    EXPECT_EQ(Base::fileKind(S_IFBLK), "a block device");
    EXPECT_EQ(Base::fileKind(S_IFSOCK), "a socket");
    EXPECT_EQ(Base::fileKind(S_IFDIR), "a folder");
}

TEST(RegularFile, ByteCountsUseTheLargestUnitThatDividesThem) {
    EXPECT_EQ(Base::byteCount(std::uint64_t(1) << 30), "1 GiB");
    EXPECT_EQ(Base::byteCount(std::uint64_t(256) << 20), "256 MiB");
    EXPECT_EQ(Base::byteCount(1000), "1000 bytes");
}
