#include "kiv/site.h"
#include "kiv/system_information.h"

#include "testutil/temp_dir.h"

#include <gtest/gtest.h>

namespace {

class SystemInformation : public ::testing::Test {
protected:
    SystemInformation() {
        env.set("QORFMT_SITE", dir.path().string());
        env.set("QORFMT_CONFIGURATION", nullptr);
    }

    TestUtil::TempDir dir;
    TestUtil::ScopedEnvironment env;
};

TEST_F(SystemInformation, InstallPathIsTheSiteDirectory) {
    EXPECT_EQ(Kiv::SystemInformation().installPath(), dir.path());
}

TEST_F(SystemInformation, RelativeSiteDirectoryIsMadeAbsolute) {
    env.set("QORFMT_SITE", "relative/site/../site");
    const auto path = Kiv::SystemInformation().installPath();
    EXPECT_TRUE(path.is_absolute());
    EXPECT_EQ(path.filename(), "site");
    EXPECT_EQ(path.parent_path().filename(), "relative");
}

TEST_F(SystemInformation, NoSiteGivesEmptyInstallPathAndDefaultSubdirectory) {
    env.set("QORFMT_SITE", nullptr);
    Kiv::SystemInformation system;
    EXPECT_TRUE(system.installPath().empty());
    EXPECT_EQ(system.configurationSubdirectory(), "nx");
}

TEST_F(SystemInformation, ConfigurationSubdirectoryComesFromSiteConf) {
    dir.write("site.conf", "# site settings\n\n  configuration_subdirectory =  nx_config  \n");
    EXPECT_EQ(Kiv::SystemInformation().configurationSubdirectory(), "nx_config");
}

TEST_F(SystemInformation, MalformedSiteConfNamesFileLineAndReason) {
    dir.write("site.conf", "configuration_subdirectory = nx\nthis line has no equals sign\n");
    try {
        Kiv::SystemInformation system;
        FAIL() << "expected ConfigurationError";
    } catch (const Kiv::ConfigurationError& error) {
        const std::string text = error.what();
        EXPECT_NE(text.find((dir.path() / "site.conf").string() + ":2: expected 'key = value'"),
                  std::string::npos)
            << text;
    }
}

TEST_F(SystemInformation, UnknownSiteKeyIsRefused) {
    dir.write("site.conf", "colour = blue\n");
    EXPECT_THROW(Kiv::SystemInformation(), Kiv::ConfigurationError);
}

TEST_F(SystemInformation, KeyGivenTwiceIsRefused) {
    dir.write("site.conf", "default_configuration = a\ndefault_configuration = b\n");
    try {
        Kiv::SiteSettings::read(dir.path());
        FAIL() << "expected ConfigurationError";
    } catch (const Kiv::ConfigurationError& error) {
        EXPECT_NE(std::string(error.what())
                      .find(":2: key 'default_configuration' already set "
                            "on line 1"),
                  std::string::npos)
            << error.what();
    }
}

TEST_F(SystemInformation, SiteConfThatIsADirectoryIsRefused) {
    dir.mkdir("site.conf");
    EXPECT_THROW(Kiv::SystemInformation(), Kiv::ConfigurationError);
}

} // namespace
