#include "host_options.h"

#include <testutil/temp_dir.h>

#include <gtest/gtest.h>

using QorfmtHost::HostOptions;
using QorfmtHost::parseHostOptions;
using QorfmtHost::UsageError;

TEST(HostOptionsTest, EveryOptionIsRead) {
    HostOptions o = parseHostOptions({"--site", "s", "--configuration", "c", "--search-path", "a:b",
                                      "--library", "l.so", "--replay", "j.journal", "--offscreen",
                                      "--screenshots", "shots", "--no-run", "--pause", "750",
                                      "--reset-layout"});
    EXPECT_EQ(o.site.string(), "s");
    EXPECT_EQ(o.configuration, "c");
    EXPECT_EQ(o.searchPath, "a:b");
    EXPECT_EQ(o.library.string(), "l.so");
    EXPECT_EQ(o.replay.string(), "j.journal");
    EXPECT_TRUE(o.offscreen);
    EXPECT_EQ(o.screenshots.string(), "shots");
    EXPECT_FALSE(o.runAtStart);
    EXPECT_EQ(o.pauseMs, 750);
    EXPECT_TRUE(o.resetLayout);
    EXPECT_TRUE(parseHostOptions({"--record", "out.journal"}).record == "out.journal");
}

TEST(HostOptionsTest, NothingGivenRunsTheLibraryInteractively) {
    HostOptions o = parseHostOptions({});
    EXPECT_TRUE(o.runAtStart);
    EXPECT_FALSE(o.offscreen);
    EXPECT_TRUE(o.replay.empty());
    EXPECT_TRUE(o.record.empty());
    EXPECT_TRUE(o.screenshots.empty());
    EXPECT_FALSE(o.resetLayout);
}

TEST(HostOptionsTest, UnknownArgumentMissingValueAndReplayWithRecordAreUsageErrors) {
    EXPECT_THROW(parseHostOptions({"--sight", "x"}), UsageError);
    EXPECT_THROW(parseHostOptions({"--site"}), UsageError);
    EXPECT_THROW(parseHostOptions({"--library", ""}), UsageError);
    EXPECT_THROW(parseHostOptions({"--replay", "a", "--record", "b"}), UsageError);
    EXPECT_THROW(parseHostOptions({"--pause", "-1"}), UsageError);
    EXPECT_THROW(parseHostOptions({"--pause", "5s"}), UsageError);
    try {
        parseHostOptions({"--screenshots"});
        FAIL();
    } catch (const UsageError& e) {
        EXPECT_STREQ(e.what(), "--screenshots needs a value");
    }
}

TEST(HostOptionsTest, DefaultsAreTheExampleSiteAndTheLibraryBesideTheHost) {
    HostOptions o;
    QorfmtHost::applyDefaults(o, "/opt/qorfmt/bin");
    EXPECT_EQ(o.site, boost::filesystem::path(QORFMT_SOURCE_DIR) / "examples" / "site");
    EXPECT_EQ(o.library.string(), "/opt/qorfmt/bin/libqorfmt_configure.so");

    HostOptions given = parseHostOptions({"--site", "/x", "--library", "/y.so"});
    QorfmtHost::applyDefaults(given, "/opt/qorfmt/bin");
    EXPECT_EQ(given.site.string(), "/x");
    EXPECT_EQ(given.library.string(), "/y.so");
}

TEST(HostOptionsTest, DisplayIsAvailableOnlyWithAPlatformOrADisplay) {
    TestUtil::ScopedEnvironment env;
    env.set("QT_QPA_PLATFORM", nullptr);
    env.set("DISPLAY", nullptr);
    env.set("WAYLAND_DISPLAY", nullptr);
    EXPECT_FALSE(QorfmtHost::displayAvailable());
    env.set("DISPLAY", ":7");
    EXPECT_TRUE(QorfmtHost::displayAvailable());
    env.set("DISPLAY", nullptr);
    env.set("QT_QPA_PLATFORM", "offscreen");
    EXPECT_TRUE(QorfmtHost::displayAvailable());
}

TEST(HostOptionsTest, HelpAndVersionAreRead) {
    EXPECT_TRUE(parseHostOptions({"--help"}).help);
    EXPECT_TRUE(parseHostOptions({"-h"}).help);
    EXPECT_TRUE(parseHostOptions({"--version"}).version);
    EXPECT_FALSE(parseHostOptions({}).version);
    EXPECT_EQ(QorfmtHost::versionText().rfind("qorfmt-host ", 0), 0u);
    EXPECT_NE(QorfmtHost::usageText().find("--version"), std::string::npos);
}

TEST(HostOptionsTest, AValueMayFollowAnEqualsSign) {
    const HostOptions o = parseHostOptions({"--site=/s", "--pause=20"});
    EXPECT_EQ(o.site.string(), "/s");
    EXPECT_EQ(o.pauseMs, 20);
}

TEST(HostOptionsTest, AnArgumentThatIsNoOptionIsAUsageError) {
    try {
        parseHostOptions({"--offscreen", "stray"});
        FAIL();
    } catch (const UsageError& e) {
        EXPECT_STREQ(e.what(), "unknown argument \"stray\"");
    }
    try {
        parseHostOptions({"--sight", "x"});
        FAIL();
    } catch (const UsageError& e) {
        EXPECT_STREQ(e.what(), "unknown argument \"--sight\"");
    }
}
