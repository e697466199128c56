// site.conf and configuration.conf: every refusal names the file, the line and the reason, with
// what cannot be seen spelled out.
#include "kiv/settings_file.h"
#include "kiv/site.h"

#include "testutil/temp_dir.h"

#include <boost/filesystem/operations.hpp>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace fs = boost::filesystem;
using namespace std::string_literals;

namespace {

std::string errorOf(const fs::path& file) {
    try {
        Kiv::readSettingsFile(file);
    } catch (const Kiv::ConfigurationError& error) {
        return error.what();
    }
    return "read without an error";
}

} // namespace

TEST(SettingsFile, AByteOrderMarkBeforeTheFirstKeyIsAccepted) {
    TestUtil::TempDir dir;
    dir.write("site.conf", "\xEF\xBB\xBF"
                           "configurations_directory = configs\n");
    const Kiv::SiteSettings settings = Kiv::SiteSettings::read(dir.path());
    EXPECT_EQ(settings.configurationsDirectory, dir.path() / "configs");
}

TEST(SettingsFile, ANulByteIsRefusedWithLineAndShownEscaped) {
    TestUtil::TempDir dir;
    const fs::path file = dir.write("site.conf", "# settings\ndefault_configuration = pla\0nt\n"s);
    EXPECT_EQ(errorOf(file), file.string() + ":2: a control character in the line "
                                             "'default_configuration = pla\\x00nt'");
}

TEST(SettingsFile, AnInvisibleCharacterInAnUnknownKeyIsShownEscaped) {
    TestUtil::TempDir dir;
    const fs::path file = dir.write("site.conf", "default\xE2\x80\x8B_configuration = a\n");
    try {
        Kiv::SiteSettings::read(dir.path());
        FAIL() << "read without an error";
    } catch (const Kiv::ConfigurationError& error) {
        EXPECT_EQ(std::string(error.what()),
                  file.string() + ":1: unknown key 'default\\u200B_configuration'");
    }
}

TEST(SettingsFile, ALineWithoutEqualsShowsItsControlCharactersEscaped) {
    TestUtil::TempDir dir;
    const fs::path file = dir.write("configuration.conf", "\n\ncommon\t\xFF\n");
    EXPECT_EQ(errorOf(file), file.string() + ":3: expected 'key = value', found 'common\\t\\xFF'");
}

TEST(SettingsFile, AFifoIsRefusedAtOnceWithItsKind) {
    TestUtil::TempDir dir;
    const fs::path file = dir.path() / "site.conf";
    ASSERT_EQ(::mkfifo(file.c_str(), 0644), 0);
    EXPECT_EQ(errorOf(file), file.string() + ": it is a FIFO (named pipe), not a regular file");
}

TEST(SettingsFile, AFolderIsRefusedWithItsKind) {
    TestUtil::TempDir dir;
    const fs::path file = dir.mkdir("site.conf");
    EXPECT_EQ(errorOf(file), file.string() + ": it is a folder, not a regular file");
}

TEST(SettingsFile, ALinkToADeviceIsRefusedWithItsKind) {
    TestUtil::TempDir dir;
    const fs::path file = dir.path() / "site.conf";
    fs::create_symlink("/dev/zero", file);
    EXPECT_EQ(errorOf(file), file.string() + ": it is a character device, not a regular file");
}

TEST(SettingsFile, AFileLargerThanOneMebibyteIsRefusedBeforeItIsRead) {
    TestUtil::TempDir dir;
    const fs::path file = dir.write("site.conf");
    fs::resize_file(file, (1 << 20) + 1);
    EXPECT_EQ(errorOf(file), file.string() +
                                 ": the file is larger than 1 MiB, the most allowed for a "
                                 "settings file");
}

TEST(SettingsFile, ALinkWhoseTargetIsGoneIsAnError) {
    TestUtil::TempDir dir;
    const fs::path file = dir.path() / "site.conf";
    fs::create_symlink("gone.conf", file);
    EXPECT_EQ(errorOf(file), file.string() + ": cannot open the file: No such file or directory");
}

TEST(SettingsFile, ACarriageReturnEndsALineButIsRefusedWithinOne) {
    TestUtil::TempDir dir;
    const fs::path file =
        dir.write("site.conf", "default_configuration = a\r\nconfig\ruration = b\r\n");
    EXPECT_EQ(errorOf(file), file.string() + ":2: a control character in the line "
                                             "'config\\ruration = b\\r'");
}
