#include "host_test_support.h"

#include <testutil/temp_dir.h>

#include <QImage>

#include <cstdio>
#include <fstream>

using namespace HostTest;

namespace {

struct ProgramRun {
    int exitCode = -1;
    std::string output;
};

class HostProgramTest : public ::testing::Test {
protected:
    /// Runs qorfmt-host in the test parts directory with the stand-in's test dialogs; `prefix`
    /// goes before the program (e.g. an env command).
    ProgramRun host(const std::string& arguments, const std::string& prefix = "") {
        return program("QORFMT_RESOURCE_PATH='" + (kNxsimData / "dlg").string() + "' " + prefix,
                       arguments);
    }
    /// Runs qorfmt-host as the README does: the product's dialogs, its library and site.
    ProgramRun product(const std::string& arguments) {
        return program("env -u QORFMT_RESOURCE_PATH -u QORFMT_SITE", arguments);
    }
    ProgramRun program(const std::string& prefix, const std::string& arguments) {
        const fs::path out = temp.path() / "output.txt";
        const std::string command = "cd '" + (kNxsimData / "parts").string() + "' && " + prefix +
                                    " '" QORFMT_HOST "' " + arguments + " >'" + out.string() +
                                    "' 2>&1";
        const int status = std::system(command.c_str());
        ProgramRun run;
        run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        run.output = TestUtil::readFile(out);
        return run;
    }
    std::string testLibrary() const {
        return "--library '" NXSIM_TEST_UFUNC "' --site '" + kHostData.string() + "'";
    }
    std::vector<std::string> pictures(const fs::path& dir) const {
        std::vector<std::string> names;
        if (fs::is_directory(dir)) {
            for (const auto& entry : fs::directory_iterator(dir)) {
                names.push_back(entry.path().filename().string());
            }
        }
        std::sort(names.begin(), names.end());
        return names;
    }
    TestUtil::TempDir temp;
};

} // namespace

TEST_F(HostProgramTest, OffscreenReplayPassesAndSavesAPictureOfEveryDialogAndBox) {
    const fs::path shots = temp.path() / "shots";
    ProgramRun run = host("--offscreen --replay '" + (kHostData / "host_session.journal").string() +
                          "' --screenshots '" + shots.string() + "' " + testLibrary());
    EXPECT_EQ(run.exitCode, 0) << run.output;
    EXPECT_EQ(
        pictures(shots),
        (std::vector<std::string>{
            "001_nxsim_test_main.png", "002_message-Info.png", "003_nxsim_test_child.dlg.png",
            "004_nxsim_test_child.dlg-ended.png", "005_pick-Frame_Templates.png",
            "006_nxsim_test_main-ended.png", "007_main_window.png", "008_listing_window.png"}));
    QImage main(QString::fromStdString((shots / "001_nxsim_test_main.png").string()));
    ASSERT_FALSE(main.isNull());
    EXPECT_GT(main.width(), 100);
    EXPECT_GT(main.height(), 100);
}

TEST_F(HostProgramTest, AFailingJournalExitsOneNamingFileAndLine) {
    ProgramRun run = host("--offscreen --replay '" + (kHostData / "host_fails.journal").string() +
                          "' " + testLibrary());
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_NE(run.output.find("host_fails.journal:7: "), std::string::npos) << run.output;
}

TEST_F(HostProgramTest, WithoutADisplayItExitsTwoAndSaysHowToRunOffscreen) {
    ProgramRun run = host(testLibrary(), "env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM");
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_NE(run.output.find("--offscreen --screenshots DIR"), std::string::npos) << run.output;
}

TEST_F(HostProgramTest, OffscreenWithoutAJournalShowsTheDialogClosesItAndQuits) {
    const fs::path shots = temp.path() / "shots";
    ProgramRun run = host("--offscreen --screenshots '" + shots.string() + "' " + testLibrary());
    EXPECT_EQ(run.exitCode, 0) << run.output;
    EXPECT_EQ(pictures(shots),
              (std::vector<std::string>{"001_nxsim_test_main.png", "002_main_window.png"}));
}

TEST_F(HostProgramTest, RecordingOffscreenWritesAJournalThatReplays) {
    const fs::path journal = temp.path() / "auto.journal";
    ProgramRun run = host("--offscreen --record '" + journal.string() + "' " + testLibrary());
    ASSERT_EQ(run.exitCode, 0) << run.output;
    EXPECT_EQ(
        TestUtil::readFile(journal),
        "# recorded by qorfmt-host\nrun\ndialog nxsim_test_main\n  close\nexpect listing \"\"\n");
    ProgramRun replay = host("--offscreen --replay '" + journal.string() + "' " + testLibrary());
    EXPECT_EQ(replay.exitCode, 0) << replay.output;
}

TEST_F(HostProgramTest, UsageErrorsAndAMissingLibraryExitTwo) {
    EXPECT_EQ(host("--offscreen --no-such-option").exitCode, 2);
    EXPECT_EQ(host("--offscreen --replay a.journal --record b.journal").exitCode, 2);
    ProgramRun missing = host("--offscreen --library '" + (temp.path() / "libnone.so").string() +
                              "' --site '" + kHostData.string() + "'");
    EXPECT_EQ(missing.exitCode, 2);
    EXPECT_NE(missing.output.find("libnone.so"), std::string::npos);
    ProgramRun site = host("--offscreen --site '" + (temp.path() / "nosite").string() + "'");
    EXPECT_EQ(site.exitCode, 2);
    EXPECT_NE(site.output.find("nosite"), std::string::npos);
}

TEST_F(HostProgramTest, HelpPrintsTheCommandLine) {
    ProgramRun run = host("--help");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_NE(run.output.find("--replay JOURNAL"), std::string::npos);
}

#ifdef HOST_TEST_CONFIGURATOR
// What the README's offscreen run command does: the configurator's own library and dialogs, on
// the example site, without any option but the offscreen ones.
TEST_F(HostProgramTest, OffscreenTheConfiguratorShowsItsMainDialogOnTheExampleSite) {
    const fs::path shots = temp.path() / "shots";
    ProgramRun run = product("--offscreen --screenshots '" + shots.string() + "'");
    EXPECT_EQ(run.exitCode, 0) << run.output;
    EXPECT_EQ(pictures(shots),
              (std::vector<std::string>{"001_qorborder_config_main.png", "002_main_window.png"}));
    QImage main(QString::fromStdString((shots / "001_qorborder_config_main.png").string()));
    EXPECT_GT(main.width(), 200);
}

// A CAD administrator's first steps in the host's windows: a new document, saved under a name,
// found and opened again in the next run; on a copy of the example site, which the run writes.
TEST_F(HostProgramTest, TheConfiguratorCreatesSavesAndReopensADocument) {
    const fs::path copy = temp.path() / "examples";
    ASSERT_EQ(
        std::system(("cp -r '" QORFMT_SOURCE_DIR "/examples' '" + copy.string() + "'").c_str()), 0);
    const fs::path shots = temp.path() / "shots";
    ProgramRun run = product("--offscreen --site '" + (copy / "site").string() + "' --replay '" +
                             QORFMT_SOURCE_DIR "/tests/journals/create_save_reopen.journal' " +
                             "--screenshots '" + shots.string() + "'");
    EXPECT_EQ(run.exitCode, 0) << run.output;
    EXPECT_TRUE(fs::is_regular_file(copy / "site/format_defs/drawing_office.fordef"));
    const std::vector<std::string> expected{"001_qorborder_config_main.png",
                                            "002_qorfmt_config_selectfile.dlg.png",
                                            "003_qorfmt_config_selectfile.dlg-ended.png",
                                            "004_qorborder_config_main-ended.png",
                                            "005_qorborder_config_main.png",
                                            "006_qorfmt_config_selectfile.dlg.png",
                                            "007_qorfmt_config_selectfile.dlg-ended.png",
                                            "008_qorborder_config_main-ended.png",
                                            "009_main_window.png"};
    EXPECT_EQ(pictures(shots), expected);
    EXPECT_FALSE(QImage(QString::fromStdString((shots / expected[7]).string())).isNull());
}

// The block layout dialog and the field dialog in the host's windows: the journal reaches every
// control the user works with; on a copy of the example site.
TEST_F(HostProgramTest, OffscreenEveryControlOfTheBlockLayoutAndFieldDialogsIsReachable) {
    const fs::path copy = temp.path() / "examples";
    ASSERT_EQ(
        std::system(("cp -r '" QORFMT_SOURCE_DIR "/examples' '" + copy.string() + "'").c_str()), 0);
    ProgramRun run = product("--offscreen --site '" + (copy / "site").string() + "' --replay '" +
                             (kHostData / "block_dialogs.journal").string() + "'");
    EXPECT_EQ(run.exitCode, 0) << run.output;
}

TEST_F(HostProgramTest, AConfiguratorJournalReplaysInTheHostWindows) {
    ProgramRun run = product("--offscreen --replay '" +
                             (kHostData / "configurator_main.journal").string() + "'");
    EXPECT_EQ(run.exitCode, 0) << run.output;
}
#endif

TEST_F(HostProgramTest, ResetLayoutForgetsTheKeptWindowGeometryAndNothingElse) {
    const fs::path config = temp.path() / "config";
    fs::create_directories(config / "qorfmt");
    const fs::path settings = config / "qorfmt" / "qorfmt-host.conf";
    std::ofstream(settings.string()) << "[layout]\nqorborder_config_main=@Rect(10 20 300 200)\n"
                                        "[other]\nkeep=1\n";
    ProgramRun kept = host("--offscreen --no-run", "XDG_CONFIG_HOME='" + config.string() + "'");
    ASSERT_EQ(kept.exitCode, 0) << kept.output;
    EXPECT_NE(TestUtil::readFile(settings).find("qorborder_config_main"), std::string::npos);
    ProgramRun reset =
        host("--offscreen --no-run --reset-layout", "XDG_CONFIG_HOME='" + config.string() + "'");
    ASSERT_EQ(reset.exitCode, 0) << reset.output;
    const std::string left = TestUtil::readFile(settings);
    EXPECT_EQ(left.find("qorborder_config_main"), std::string::npos) << left;
    EXPECT_NE(left.find("keep=1"), std::string::npos) << left;
}
