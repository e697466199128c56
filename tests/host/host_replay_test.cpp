#include "host_test_support.h"

#include "dialog_window.h"
#include "graphics_view.h"
#include "host_session.h"
#include "main_window.h"
#include "qt_presenter.h"
#include "screenshots.h"

#include <testutil/temp_dir.h>

#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>

#include <map>

using namespace HostTest;
using QorfmtHost::DialogWindow;

namespace {

class HostReplayTest : public Fixture {
protected:
    void SetUp() override {
        Fixture::SetUp();
        options.site = kHostData;
        options.library = NXSIM_TEST_UFUNC;
        options.screenshots = temp.path() / "shots";
    }

    nxsim::ReplayOutcome replay(const fs::path& journal, QorfmtHost::MainWindow& window) {
        options.replay = journal;
        ScopedCurrentPath parts(kNxsimData / "parts");
        return QorfmtHost::replayInWindows(options, libraries, window.presenter());
    }

    TestUtil::TempDir temp;
    QorfmtHost::HostOptions options;
    QorfmtHost::LibraryCache libraries;
};

struct Shown {
    std::string name;
    QSize size;
};

} // namespace

TEST_F(HostReplayTest, AJournalReplaysInTheHostWindowsWhichFollowEveryStep) {
    QorfmtHost::Screenshots shots(options.screenshots);
    QorfmtHost::MainWindow window(options, libraries, nullptr, &shots);
    window.show();
    std::vector<Shown> shown;
    QStringList childRows;
    std::map<std::string, QString> atEnd;
    window.presenter().onDialogShown = [&](DialogWindow& w) {
        shown.push_back(Shown{w.dialog().journalName(), w.size()});
        if (auto* files = qobject_cast<QListWidget*>(w.control("FILES"))) {
            for (int i = 0; i < files->count(); ++i) {
                childRows << files->item(i)->text();
            }
        }
    };
    window.presenter().onDialogEnded = [&](DialogWindow& w) {
        if (w.dialog().journalName() == "nxsim_test_main") {
            atEnd["NAME"] = qobject_cast<QLineEdit*>(w.control("NAME"))->text();
            atEnd["PART_FILE"] = qobject_cast<QLineEdit*>(w.control("PART_FILE"))->text();
            atEnd["RESULT"] = qobject_cast<QLabel*>(w.control("RESULT"))->text();
            atEnd["title"] = w.windowTitle();
        }
    };

    nxsim::ReplayOutcome outcome = replay(kHostData / "host_session.journal", window);
    ASSERT_EQ(outcome.exitCode, 0) << outcome.message;

    ASSERT_EQ(shown.size(), 2u);
    EXPECT_EQ(shown[0].name, "nxsim_test_main");
    EXPECT_EQ(shown[1].name, "nxsim_test_child.dlg");
    EXPECT_EQ(childRows, (QStringList{"first.fordef", "second.fordef"}));
    EXPECT_EQ(atEnd["NAME"], "Ann");
    EXPECT_EQ(atEnd["PART_FILE"], "a3_metric.prt");
    EXPECT_EQ(atEnd["RESULT"], "distance 0 20");
    EXPECT_EQ(atEnd["title"], "Test Main");

    // The platform's other windows followed the run.
    window.refreshPlatform();
    EXPECT_EQ(window.listing().toPlainText(), "Summary of Ann\n");
    EXPECT_EQ(window.cueLine().text(), "Saving");
    EXPECT_EQ(fs::path(window.graphics().partFile()).filename().string(), "a3_metric.prt");
    ASSERT_TRUE(window.graphics().part().has_value());
    EXPECT_EQ(window.graphics().part()->objects.size(), 3u);

    // A picture of every dialog, message box and list picker, as large as the window.
    std::vector<std::string> names;
    for (const auto& file : shots.files()) {
        names.push_back(file.filename().string());
    }
    EXPECT_EQ(names, (std::vector<std::string>{
                         "001_nxsim_test_main.png", "002_message-Info.png",
                         "003_nxsim_test_child.dlg.png", "004_nxsim_test_child.dlg-ended.png",
                         "005_pick-Frame_Templates.png", "006_nxsim_test_main-ended.png"}));
    QImage main(QString::fromStdString(shots.files()[0].string()));
    ASSERT_FALSE(main.isNull());
    EXPECT_EQ(main.size(), shown[0].size * window.devicePixelRatio());
    QImage child(QString::fromStdString(shots.files()[2].string()));
    EXPECT_EQ(child.size(), shown[1].size * window.devicePixelRatio());
    EXPECT_GT(fs::file_size(shots.files()[1]), 0u);
}

TEST_F(HostReplayTest, AFailedExpectationEndsTheReplayWithFileLineAndReason) {
    QorfmtHost::MainWindow window(options, libraries, nullptr, nullptr);
    nxsim::ReplayOutcome outcome = replay(kHostData / "host_fails.journal", window);
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_NE(outcome.message.find("host_fails.journal:7:"), std::string::npos) << outcome.message;
    EXPECT_TRUE(nxsim::shownDialogs().empty());
    EXPECT_TRUE(window.presenter().windows().empty());
}

TEST_F(HostReplayTest, AMissingLibraryOrJournalIsASetupError) {
    QorfmtHost::MainWindow window(options, libraries, nullptr, nullptr);
    options.library = temp.path() / "libmissing.so";
    EXPECT_EQ(replay(kHostData / "host_session.journal", window).exitCode, 2);
    options.library = NXSIM_TEST_UFUNC;
    nxsim::ReplayOutcome outcome = replay(temp.path() / "missing.journal", window);
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_NE(outcome.message.find("missing.journal"), std::string::npos);
}

TEST_F(HostReplayTest, ThePresenterReturnsToItsModeAfterAReplay) {
    QorfmtHost::MainWindow window(options, libraries, nullptr, nullptr);
    replay(kHostData / "host_fails.journal", window);
    EXPECT_EQ(window.presenter().mode(), QorfmtHost::QtPresenter::Mode::Interactive);
}
