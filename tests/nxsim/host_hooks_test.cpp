// What the platform offers a host beyond the NX calls: the busy indicator as it happens, and the
// environment of a replay.
#include <nxsim/journal_runner.h>
#include <nxsim/platform.h>
#include <uf.h>
#include <uf_ui.h>

#include <testutil/temp_dir.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace {

class HostHooksTest : public ::testing::Test {
protected:
    void SetUp() override {
        nxsim::reset();
        ASSERT_EQ(UF_initialize(), 0);
    }
    void TearDown() override {
        UF_terminate();
        nxsim::setStoplightListener({});
        nxsim::reset();
    }
};

std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "(unset)";
}

} // namespace

TEST_F(HostHooksTest, TheStoplightListenerHearsEveryToggleAtOnceAndSurvivesReset) {
    std::vector<bool> heard;
    nxsim::setStoplightListener([&heard](bool on) { heard.push_back(on); });
    nxsim::reset();
    ASSERT_EQ(UF_initialize(), 0);
    ASSERT_EQ(UF_UI_toggle_stoplight(1), 0);
    EXPECT_EQ(heard, std::vector<bool>{true});
    ASSERT_EQ(UF_UI_toggle_stoplight(0), 0);
    EXPECT_EQ(heard, (std::vector<bool>{true, false}));
    EXPECT_EQ(nxsim::stoplightToggles(), (std::vector<int>{1, 0}));
}

TEST_F(HostHooksTest, AFailedToggleIsNotHeardAndAnEmptyListenerHearsNothing) {
    std::vector<bool> heard;
    nxsim::setStoplightListener([&heard](bool on) { heard.push_back(on); });
    nxsim::injectFault("UF_UI_toggle_stoplight", 7, 1);
    EXPECT_NE(UF_UI_toggle_stoplight(1), 0);
    EXPECT_TRUE(heard.empty());
    nxsim::setStoplightListener({});
    EXPECT_EQ(UF_UI_toggle_stoplight(1), 0);
    EXPECT_TRUE(heard.empty());
}

TEST_F(HostHooksTest, TheReplayEnvironmentSetsWhatIsGivenAndLeavesTheRest) {
    TestUtil::ScopedEnvironment env;
    env.set("QORFMT_SITE", "/old/site");
    env.set("QORFMT_CONFIGURATION", "kept");
    env.set("QORFMT_SEARCH_PATH", nullptr);
    nxsim::ReplaySetup setup;
    setup.site = "/new/site";
    setup.searchPath = "/a:/b";
    nxsim::applyReplayEnvironment(setup);
    EXPECT_EQ(environment("QORFMT_SITE"), "/new/site");
    EXPECT_EQ(environment("QORFMT_CONFIGURATION"), "kept");
    EXPECT_EQ(environment("QORFMT_SEARCH_PATH"), "/a:/b");
}
