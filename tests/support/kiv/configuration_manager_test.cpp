#include "kiv/configuration_manager.h"
#include "kiv/site.h"

#include "testutil/temp_dir.h"

#include <gtest/gtest.h>

namespace {

class ConfigurationManager : public ::testing::Test {
protected:
    ConfigurationManager() {
        env.set("QORFMT_SITE", dir.path().string());
        env.set("QORFMT_CONFIGURATION", nullptr);
    }

    TestUtil::TempDir dir;
    TestUtil::ScopedEnvironment env;
};

TEST_F(ConfigurationManager, SiteWithOnlyFormatDefsHasEmptyConfigurationWithoutCommon) {
    dir.mkdir("format_defs");
    const auto configuration = Kiv::ConfigurationManager().currentConfiguration();
    ASSERT_TRUE(configuration);
    EXPECT_TRUE(configuration->name().empty());
    EXPECT_TRUE(configuration->path().empty());
    EXPECT_TRUE(configuration->commonConfigPath().empty());
    EXPECT_FALSE(configuration->hasCommonConfiguration());
}

TEST_F(ConfigurationManager, ConfigurationNamedInEnvironmentIsCurrent) {
    dir.mkdir("configurations/plant_a");
    env.set("QORFMT_CONFIGURATION", "plant_a");
    const auto configuration = Kiv::ConfigurationManager().currentConfiguration();
    EXPECT_EQ(configuration->name(), "plant_a");
    EXPECT_EQ(configuration->path(), dir.path() / "configurations" / "plant_a");
    EXPECT_FALSE(configuration->hasCommonConfiguration());
}

TEST_F(ConfigurationManager, DefaultConfigurationComesFromSiteConf) {
    dir.write("site.conf", "default_configuration = plant_b\n");
    dir.mkdir("configurations/plant_b");
    EXPECT_EQ(Kiv::ConfigurationManager().currentConfiguration()->name(), "plant_b");
}

TEST_F(ConfigurationManager, EnvironmentOverridesDefaultConfiguration) {
    dir.write("site.conf", "default_configuration = plant_b\n");
    dir.mkdir("configurations/plant_a");
    dir.mkdir("configurations/plant_b");
    env.set("QORFMT_CONFIGURATION", "plant_a");
    EXPECT_EQ(Kiv::ConfigurationManager().currentConfiguration()->name(), "plant_a");
}

TEST_F(ConfigurationManager, CommonConfigurationIsResolvedBesideTheConfiguration) {
    dir.mkdir("configurations/common");
    dir.write("configurations/plant_a/configuration.conf", "common = common\n");
    env.set("QORFMT_CONFIGURATION", "plant_a");
    const auto configuration = Kiv::ConfigurationManager().currentConfiguration();
    EXPECT_TRUE(configuration->hasCommonConfiguration());
    EXPECT_EQ(configuration->commonConfigPath(), dir.path() / "configurations" / "common");
}

TEST_F(ConfigurationManager, ConfigurationsDirectoryCanBeMoved) {
    dir.write("site.conf", "configurations_directory = configs\n");
    dir.mkdir("configs/x");
    env.set("QORFMT_CONFIGURATION", "x");
    EXPECT_EQ(Kiv::ConfigurationManager().currentConfiguration()->path(),
              dir.path() / "configs" / "x");
}

TEST_F(ConfigurationManager, MissingConfigurationIsReportedByName) {
    env.set("QORFMT_CONFIGURATION", "nowhere");
    try {
        Kiv::ConfigurationManager().currentConfiguration();
        FAIL() << "expected ConfigurationError";
    } catch (const Kiv::ConfigurationError& error) {
        EXPECT_NE(std::string(error.what()).find("configuration 'nowhere' not found"),
                  std::string::npos)
            << error.what();
    }
}

TEST_F(ConfigurationManager, ConfigurationNameWithSlashIsRefused) {
    dir.mkdir("configurations/a/b");
    env.set("QORFMT_CONFIGURATION", "a/b");
    EXPECT_THROW(Kiv::ConfigurationManager().currentConfiguration(), Kiv::ConfigurationError);
    env.set("QORFMT_CONFIGURATION", "..");
    EXPECT_THROW(Kiv::ConfigurationManager().currentConfiguration(), Kiv::ConfigurationError);
}

TEST_F(ConfigurationManager, MissingCommonConfigurationNamesFileAndLine) {
    dir.write("configurations/plant_a/configuration.conf", "\n# comment\ncommon = gone\n");
    env.set("QORFMT_CONFIGURATION", "plant_a");
    try {
        Kiv::ConfigurationManager().currentConfiguration();
        FAIL() << "expected ConfigurationError";
    } catch (const Kiv::ConfigurationError& error) {
        EXPECT_NE(std::string(error.what())
                      .find("configuration.conf:3: common configuration "
                            "'gone' not found"),
                  std::string::npos)
            << error.what();
    }
}

TEST_F(ConfigurationManager, ListsConfigurationNamesSorted) {
    dir.mkdir("configurations/zeta");
    dir.mkdir("configurations/alpha");
    dir.write("configurations/not_a_configuration.txt", "");
    EXPECT_EQ(Kiv::ConfigurationManager().configurationNames(),
              (std::vector<std::string>{"alpha", "zeta"}));
}

} // namespace
