#include "host_test_support.h"

#include "dialog_window.h"
#include "graphics_view.h"
#include "host_session.h"
#include "list_picker.h"
#include "listing_window.h"
#include "main_window.h"
#include "qt_presenter.h"
#include "session_recorder.h"

#include <testutil/temp_dir.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <cstdio>
#include <fstream>

using namespace HostTest;
using QorfmtHost::DialogWindow;

namespace {

// Answers the next modal box or picker that appears, as a user would.
void answerNextModal(int pickRow) {
    QTimer::singleShot(0, [pickRow] {
        for (QWidget* w : QApplication::topLevelWidgets()) {
            if (!w->isVisible()) {
                continue;
            }
            if (auto* picker = qobject_cast<QorfmtHost::ListPicker*>(w)) {
                picker->list()->setCurrentRow(pickRow);
                picker->accept();
                return;
            }
            if (auto* box = qobject_cast<QMessageBox*>(w)) {
                box->accept();
                return;
            }
        }
    });
}

int runReplayProgram(const fs::path& journal, const fs::path& site) {
    const std::string command =
        "cd '" + (kNxsimData / "parts").string() + "' && QORFMT_RESOURCE_PATH='" +
        (kNxsimData / "dlg").string() + "' '" QORFMT_REPLAY "' '" + journal.string() +
        "' --site '" + site.string() + "' --library '" NXSIM_TEST_UFUNC "' >/dev/null 2>&1";
    const int status = std::system(command.c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

class MainWindowTest : public Fixture {
protected:
    void SetUp() override {
        Fixture::SetUp();
        options.site = kHostData;
        options.library = NXSIM_TEST_UFUNC;
    }
    TestUtil::TempDir temp;
    QorfmtHost::HostOptions options;
    QorfmtHost::LibraryCache libraries;
};

} // namespace

TEST_F(MainWindowTest, ARecordedSessionReplaysWithQorfmtReplayToTheSameEndState) {
    const fs::path journal = temp.path() / "session.journal";
    {
        QorfmtHost::SessionRecorder recorder(journal);
        QorfmtHost::MainWindow window(options, libraries, &recorder, nullptr);
        window.show();
        window.presenter().onDialogShown = [](DialogWindow& w) {
            if (w.dialog().journalName() != "nxsim_test_main") {
                return;
            }
            QTimer::singleShot(0, &w, [&w] {
                auto* name = qobject_cast<QLineEdit*>(w.control("NAME"));
                name->setFocus();
                QTest::keyClicks(name, "Bob");
                answerNextModal(0);
                qobject_cast<QPushButton*>(w.control("SHOW_INFO"))->click();
                answerNextModal(1);
                qobject_cast<QPushButton*>(w.control("PICK"))->click();
                qobject_cast<QPushButton*>(w.control("LISTING"))->click();
                w.navigationButton(0)->click();
            });
        };
        ScopedCurrentPath parts(kNxsimData / "parts");
        ASSERT_TRUE(window.runLibrary(options.library, true));
        EXPECT_TRUE(window.ranUserFunction());
    }
    EXPECT_EQ(TestUtil::readFile(journal), "# recorded by qorfmt-host\n"
                                           "run\n"
                                           "dialog nxsim_test_main\n"
                                           "  set NAME \"Bob\"\n"
                                           "  press SHOW_INFO\n"
                                           "  message information \"Info\" \"Hello Bob\"\n"
                                           "  press PICK\n"
                                           "  pick \"Frame Templates\" 1\n"
                                           "  press LISTING\n"
                                           "  ok\n"
                                           "expect listing \"Summary of Bob\\n\"\n");
    EXPECT_EQ(runReplayProgram(journal, options.site), 0);

    // The end state is checked: a journal that arrives elsewhere fails.
    std::string text = TestUtil::readFile(journal);
    text.replace(text.find("Summary of Bob"), 14, "Summary of Eve");
    std::ofstream(journal.string()) << text;
    EXPECT_EQ(runReplayProgram(journal, options.site), 1);
}

TEST_F(MainWindowTest, AnExceptionFromAHandlerLeavesTheWindowsAndReachesTheUserFunction) {
    // The test user function shows an exception's text in an "Error" box, as ufusr does.
    QorfmtHost::MainWindow window(options, libraries, nullptr, nullptr);
    std::vector<std::string> shown;
    window.presenter().onDialogShown = [&shown](DialogWindow& w) {
        shown.push_back(w.dialog().journalName());
        QTimer::singleShot(0, &w, [&w] {
            qobject_cast<QLineEdit*>(w.control("CODE"))->setText("1105004");
            w.dialog().setValue("CODE", "1105004");
            answerNextModal(0);
            qobject_cast<QPushButton*>(w.control("FAIL"))->click();
        });
    };
    ASSERT_TRUE(window.runLibrary(options.library, true));
    EXPECT_EQ(shown, std::vector<std::string>{"nxsim_test_main"});
    EXPECT_TRUE(window.presenter().windows().empty());
    const auto messages = nxsim::shownMessages();
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_EQ(messages[0].title, "Error");
    EXPECT_EQ(nxsim::initializeDepth(), 0);
}

TEST_F(MainWindowTest, OffscreenWithoutAJournalClosesEachDialogAfterItsPicture) {
    QorfmtHost::MainWindow window(options, libraries, nullptr, nullptr);
    window.presenter().setMode(QorfmtHost::QtPresenter::Mode::AutoClose);
    int shown = 0;
    window.presenter().onDialogShown = [&shown](DialogWindow&) { ++shown; };
    ASSERT_TRUE(window.runLibrary(options.library, true));
    EXPECT_EQ(shown, 1);
    EXPECT_TRUE(nxsim::shownDialogs().empty());
}

TEST_F(MainWindowTest, ALibraryThatCannotBeLoadedIsReportedAndNotRun) {
    QorfmtHost::MainWindow window(options, libraries, nullptr, nullptr);
    answerNextModal(0);
    EXPECT_FALSE(window.runLibrary(temp.path() / "libnothing.so", true));
    EXPECT_FALSE(window.ranUserFunction());
}

TEST_F(MainWindowTest, APointPickAndObjectSelectionsAreAnsweredByClicksInTheGraphicsWindow) {
    const fs::path journal = temp.path() / "picks.journal";
    QorfmtHost::SessionRecorder recorder(journal);
    QorfmtHost::MainWindow window(options, libraries, &recorder, nullptr);
    window.resize(900, 700);
    window.show();
    QorfmtHost::GraphicsView& graphics = window.graphics();
    QString result;
    bool dialogHiddenDuringPick = false;
    // Clicks the graphics window at part coordinates once it waits for a pick.
    auto clickAt = [&](double x, double y) {
        QTimer::singleShot(0, &graphics, [&, x, y] {
            ASSERT_NE(graphics.pickMode(), QorfmtHost::GraphicsView::PickMode::None);
            dialogHiddenDuringPick = !window.presenter().windows().front()->isVisible();
            QTest::mouseClick(&graphics, Qt::LeftButton, Qt::NoModifier,
                              graphics.toScreen(x, y).toPoint());
        });
    };
    window.presenter().onDialogShown = [&](DialogWindow& w) {
        QTimer::singleShot(0, &w, [&, pw = &w] {
            auto* part = qobject_cast<QLineEdit*>(pw->control("PART_FILE"));
            part->setFocus();
            QTest::keyClicks(part, "a3_metric.prt");
            qobject_cast<QPushButton*>(pw->control("OPEN_PART"))->click();
            clickAt(100.0, 50.0);
            pw->setGeometry(QRect(700, 120, 520, 430));
            qobject_cast<QPushButton*>(pw->control("POINT"))->click();
            EXPECT_TRUE(pw->isVisible());
            // Out of the way during the pick, back at the same place and size after it.
            EXPECT_EQ(pw->geometry(), QRect(700, 120, 520, 430));
            result = qobject_cast<QLabel*>(pw->control("RESULT"))->text();
            clickAt(200.0, 0.0);
            QTimer::singleShot(0, &graphics, [&] { clickAt(300.0, 20.0); });
            qobject_cast<QPushButton*>(pw->control("MEASURE"))->click();
            EXPECT_EQ(qobject_cast<QLabel*>(pw->control("RESULT"))->text(), "distance 0 20");
            pw->navigationButton(3)->click();
        });
    };
    ScopedCurrentPath parts(kNxsimData / "parts");
    ASSERT_TRUE(window.runLibrary(options.library, true));
    EXPECT_TRUE(dialogHiddenDuringPick);
    const QStringList words = result.split(' ');
    ASSERT_EQ(words.size(), 4) << result.toStdString();
    EXPECT_EQ(words[1], "5");
    EXPECT_NEAR(words[2].toDouble(), 100.0, 1.5);
    EXPECT_NEAR(words[3].toDouble(), 50.0, 1.5);
    EXPECT_EQ(graphics.pickMode(), QorfmtHost::GraphicsView::PickMode::None);

    const std::string recorded = TestUtil::readFile(journal);
    EXPECT_NE(recorded.find("  press POINT\n  point "), std::string::npos) << recorded;
    EXPECT_NE(recorded.find("  press MEASURE\n  object 12\n  object 13\n  cancel\n"),
              std::string::npos)
        << recorded;
    EXPECT_EQ(runReplayProgram(journal, options.site), 0);
}

TEST_F(MainWindowTest, QuittingAfterAUserFunctionRanAsksAndStayKeepsTheWindow) {
    QorfmtHost::MainWindow window(options, libraries, nullptr, nullptr);
    window.show();
    window.close();
    EXPECT_FALSE(window.isVisible()) << "nothing ran yet: no question";

    window.show();
    window.presenter().setMode(QorfmtHost::QtPresenter::Mode::AutoClose);
    ASSERT_TRUE(window.runLibrary(options.library, true));
    auto answer = [](const QString& text) {
        QTimer::singleShot(0, [text] {
            for (QWidget* w : QApplication::topLevelWidgets()) {
                auto* box = qobject_cast<QMessageBox*>(w);
                if (box && box->isVisible() && box->objectName() == "quit_box") {
                    for (QAbstractButton* b : box->buttons()) {
                        if (b->text() == text) {
                            b->click();
                        }
                    }
                }
            }
        });
    };
    answer("Stay");
    window.close();
    EXPECT_TRUE(window.isVisible());
    answer("Quit");
    window.close();
    EXPECT_FALSE(window.isVisible());
}

TEST_F(MainWindowTest, AReplayCountsAsARunAndAsksNothingWhenConfirmationIsOff) {
    QorfmtHost::MainWindow window(options, libraries, nullptr, nullptr);
    window.setConfirmQuit(false);
    window.show();
    ScopedCurrentPath parts(kNxsimData / "parts");
    nxsim::ReplayOutcome outcome = window.replayJournal(kHostData / "host_session.journal");
    EXPECT_EQ(outcome.exitCode, 0) << outcome.message;
    EXPECT_TRUE(window.ranUserFunction());
    EXPECT_FALSE(window.running());
    window.close();
    EXPECT_FALSE(window.isVisible());
}

TEST_F(MainWindowTest, TheHostDoesNotQuitWhileAUserFunctionsDialogIsOpen) {
    QorfmtHost::MainWindow window(options, libraries, nullptr, nullptr);
    window.setConfirmQuit(false);
    window.show();
    bool stayedOpen = false;
    window.presenter().onDialogShown = [&](DialogWindow& w) {
        QTimer::singleShot(0, &w, [&, pw = &w] {
            window.close();
            stayedOpen = window.isVisible() && window.running();
            pw->close();
        });
    };
    ASSERT_TRUE(window.runLibrary(options.library, true));
    EXPECT_TRUE(stayedOpen);
    EXPECT_FALSE(window.running());
}

TEST_F(MainWindowTest, TheBusyCursorIsOnExactlyWhileTheStoplightIs) {
    QorfmtHost::MainWindow window(options, libraries, nullptr, nullptr);
    std::vector<bool> busy;
    std::vector<Qt::CursorShape> cursors;
    QObject::connect(&window, &QorfmtHost::MainWindow::busyChanged, [&](bool on) {
        busy.push_back(on);
        const QCursor* cursor = QApplication::overrideCursor();
        cursors.push_back(cursor ? cursor->shape() : Qt::ArrowCursor);
    });
    // The save handler switches the stoplight on and off again without returning to the loop.
    window.presenter().onDialogShown = [](DialogWindow& w) {
        QTimer::singleShot(0, &w, [pw = &w] {
            qobject_cast<QPushButton*>(pw->control("SAVE"))->click();
            pw->close();
        });
    };
    ASSERT_TRUE(window.runLibrary(options.library, true));
    EXPECT_EQ(busy, (std::vector<bool>{true, false}));
    EXPECT_EQ(cursors, (std::vector<Qt::CursorShape>{Qt::WaitCursor, Qt::ArrowCursor}));
    EXPECT_FALSE(window.busy());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

namespace {

// Counts the WindowBlocked events that a window receives (a modal window blocks it).
class BlockedCounter : public QObject {
public:
    int blocked = 0;
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::WindowBlocked) {
            ++blocked;
        }
        return QObject::eventFilter(watched, event);
    }
};

} // namespace

TEST_F(MainWindowTest, TheListingWindowIsItsOwnWindowUsableWhileADialogIsModal) {
    QorfmtHost::MainWindow window(options, libraries, nullptr, nullptr);
    window.show();
    QorfmtHost::ListingWindow& listing = window.listingWindow();
    EXPECT_TRUE(listing.isWindow());
    EXPECT_EQ(listing.parentWidget(), nullptr);
    listing.show();
    BlockedCounter mainBlocks;
    BlockedCounter listingBlocks;
    window.windowHandle()->installEventFilter(&mainBlocks);
    listing.windowHandle()->installEventFilter(&listingBlocks);
    const fs::path saved = temp.path() / "listing.txt";
    bool visibleWhileModal = false;
    std::string textWhileModal;
    window.presenter().onDialogShown = [&](DialogWindow& w) {
        QTimer::singleShot(0, &w, [&, pw = &w] {
            auto* name = qobject_cast<QLineEdit*>(pw->control("NAME"));
            QTest::keyClicks(name, "Ann");
            qobject_cast<QPushButton*>(pw->control("LISTING"))->click();
            visibleWhileModal = listing.isVisible();
            textWhileModal = listing.text().toPlainText().toStdString();
            // What a user does with it while the dialog is up: select, copy, save.
            listing.text().selectAll();
            listing.saveTo(QString::fromStdString(saved.string()));
            pw->navigationButton(3)->click();
        });
    };
    ScopedCurrentPath parts(kNxsimData / "parts");
    ASSERT_TRUE(window.runLibrary(options.library, true));
    EXPECT_GE(mainBlocks.blocked, 1);
    EXPECT_EQ(listingBlocks.blocked, 0);
    EXPECT_TRUE(visibleWhileModal);
    EXPECT_EQ(textWhileModal, "Summary of Ann\n");
    EXPECT_EQ(TestUtil::readFile(saved), "Summary of Ann\n");
    EXPECT_TRUE(listing.findChild<QPushButton*>("listing_copy")->isEnabled());
}

TEST_F(MainWindowTest, TheListingWindowKeepsItsTextAcrossRunsAndClearEmptiesTheViewOnly) {
    QorfmtHost::MainWindow window(options, libraries, nullptr, nullptr);
    window.show();
    window.presenter().onDialogShown = [&](DialogWindow& w) {
        QTimer::singleShot(0, &w, [pw = &w] {
            QTest::keyClicks(qobject_cast<QLineEdit*>(pw->control("NAME")), "Bo");
            qobject_cast<QPushButton*>(pw->control("LISTING"))->click();
            pw->navigationButton(3)->click();
        });
    };
    ScopedCurrentPath parts(kNxsimData / "parts");
    ASSERT_TRUE(window.runLibrary(options.library, true));
    ASSERT_TRUE(window.runLibrary(options.library, true));
    EXPECT_EQ(window.listing().toPlainText(), "Summary of Bo\nSummary of Bo\n");
    // The platform starts its text anew (a new session of the stand-in): the window keeps what
    // it showed and goes on below it.
    nxsim::reset();
    ASSERT_TRUE(window.runLibrary(options.library, true));
    EXPECT_EQ(window.listing().toPlainText(), "Summary of Bo\nSummary of Bo\nSummary of Bo\n");
    window.listingWindow().findChild<QPushButton*>("listing_clear")->click();
    EXPECT_EQ(window.listing().toPlainText(), "");
    EXPECT_EQ(nxsim::listingText(), "Summary of Bo\n");
}

TEST_F(MainWindowTest, DialogGeometryIsKeptPerDialogNameAcrossTwoRuns) {
    const QRect moved(130, 90, 620, 480);
    QRect mainAt;
    {
        QorfmtHost::MainWindow first(options, libraries, nullptr, nullptr);
        first.keepLayout();
        first.show();
        first.presenter().onDialogShown = [&](DialogWindow& w) {
            QTimer::singleShot(0, &w, [&, pw = &w] {
                pw->setGeometry(moved);
                pw->navigationButton(3)->click();
            });
        };
        ASSERT_TRUE(first.runLibrary(options.library, true));
        first.setGeometry(40, 30, 700, 500);
        mainAt = first.geometry();
        first.setConfirmQuit(false);
        first.close();
    }
    QorfmtHost::MainWindow second(options, libraries, nullptr, nullptr);
    second.keepLayout();
    EXPECT_EQ(second.geometry(), mainAt);
    second.show();
    QRect shownAt;
    second.presenter().onDialogShown = [&](DialogWindow& w) {
        shownAt = w.geometry();
        QTimer::singleShot(0, &w, [pw = &w] { pw->navigationButton(3)->click(); });
    };
    ASSERT_TRUE(second.runLibrary(options.library, true));
    EXPECT_EQ(shownAt, moved);

    // --reset-layout forgets it: the dialog opens beside the main window again.
    QorfmtHost::WindowLayout::forget();
    ASSERT_TRUE(second.runLibrary(options.library, true));
    EXPECT_NE(shownAt, moved);
}

TEST_F(MainWindowTest, WithoutKeptGeometryADialogOpensBesideTheGraphicsWindowWhereThereIsRoom) {
    QorfmtHost::MainWindow window(options, libraries, nullptr, nullptr);
    window.keepLayout();
    // The offscreen screen is 800 pixels wide.
    window.setGeometry(0, 30, 240, 300);
    window.show();
    QRect shownAt;
    window.presenter().onDialogShown = [&](DialogWindow& w) {
        shownAt = w.geometry();
        QTimer::singleShot(0, &w, [pw = &w] { pw->navigationButton(3)->click(); });
    };
    ASSERT_TRUE(window.runLibrary(options.library, true));
    ASSERT_LT(window.frameGeometry().right() + shownAt.width(),
              window.screen()->availableGeometry().right());
    EXPECT_FALSE(shownAt.intersects(window.frameGeometry()));
    EXPECT_GT(shownAt.left(), window.frameGeometry().right());
}

TEST_F(MainWindowTest, KeptLayoutIsOffUntilTheInteractiveHostAsksForIt) {
    QorfmtHost::MainWindow window(options, libraries, nullptr, nullptr);
    EXPECT_FALSE(window.layout().enabled());
    window.keepLayout();
    EXPECT_TRUE(window.layout().enabled());
}

TEST_F(MainWindowTest, ThePromptOfAPickLeavesTheCueLineWhenThePickEndsANewPromptShows) {
    QorfmtHost::MainWindow window(options, libraries, nullptr, nullptr);
    window.show();
    QorfmtHost::GraphicsView& graphics = window.graphics();
    QString cueAfterPick = "unset";
    QString cueAfterSave;
    window.presenter().onDialogShown = [&](DialogWindow& w) {
        QTimer::singleShot(0, &w, [&, pw = &w] {
            QTest::keyClicks(qobject_cast<QLineEdit*>(pw->control("PART_FILE")), "a3_metric.prt");
            qobject_cast<QPushButton*>(pw->control("OPEN_PART"))->click();
            QTimer::singleShot(0, &graphics, [&] {
                EXPECT_EQ(window.cueLine().text(), "Select corner point");
                QTest::mouseClick(&graphics, Qt::LeftButton, Qt::NoModifier,
                                  graphics.toScreen(100.0, 50.0).toPoint());
            });
            qobject_cast<QPushButton*>(pw->control("POINT"))->click();
            cueAfterPick = window.cueLine().text();
            EXPECT_EQ(nxsim::cueLine(), "Select corner point");
            qobject_cast<QPushButton*>(pw->control("SAVE"))->click();
            cueAfterSave = window.cueLine().text();
            pw->navigationButton(3)->click();
        });
    };
    ScopedCurrentPath parts(kNxsimData / "parts");
    ASSERT_TRUE(window.runLibrary(options.library, true));
    EXPECT_EQ(cueAfterPick, "");
    EXPECT_EQ(cueAfterSave, "Saving");
}

TEST_F(MainWindowTest, APromptSetAgainWithTheSameTextAfterAPickShowsAgain) {
    QorfmtHost::MainWindow window(options, libraries, nullptr, nullptr);
    window.show();
    QStringList cues;
    window.presenter().onDialogShown = [&](DialogWindow& w) {
        QTimer::singleShot(0, &w, [&, pw = &w] {
            qobject_cast<QPushButton*>(pw->control("SAVE"))->click();
            cues << window.cueLine().text();
            answerNextModal(1);
            qobject_cast<QPushButton*>(pw->control("PICK"))->click();
            cues << window.cueLine().text();
            qobject_cast<QPushButton*>(pw->control("SAVE"))->click();
            cues << window.cueLine().text();
            pw->navigationButton(3)->click();
        });
    };
    ASSERT_TRUE(window.runLibrary(options.library, true));
    EXPECT_EQ(cues, (QStringList{"Saving", "", "Saving"}));
}

#ifdef HOST_TEST_CONFIGURATOR
// The configurator's own Save As, as a user meets it: the name typed at once lands in the name
// field, not in the folder menu before it (whose first letters once switched the folder).
TEST_F(MainWindowTest, TheConfiguratorsSaveAsTakesTheNameTypedAtOnce) {
    TestUtil::ScopedEnvironment environment;
    for (const char* name :
         {"QORFMT_SITE", "QORFMT_CONFIGURATION", "QORFMT_SEARCH_PATH", "QORFMT_RESOURCE_PATH"}) {
        environment.set(name, nullptr);
    }
    options.site = fs::path(QORFMT_SOURCE_DIR) / "examples" / "site";
    options.library = fs::path(QORFMT_HOST).parent_path() / "libqorfmt_configure.so";
    QorfmtHost::applySetup(options);
    QorfmtHost::MainWindow window(options, libraries, nullptr, nullptr);
    window.show();
    std::string typedName;
    int filterShown = -1;
    bool nameHadFocus = false;
    window.presenter().onDialogShown = [&](DialogWindow& w) {
        QTimer::singleShot(0, &w, [&, pw = &w] {
            if (pw->dialog().journalName() == "qorborder_config_main") {
                qobject_cast<QPushButton*>(pw->control("NEW_FILE"))->click();
                qobject_cast<QPushButton*>(pw->control("SAVEAS_FILE"))->click();
                pw->navigationButton(3)->click();
                return;
            }
            QApplication::setActiveWindow(pw);
            nameHadFocus = QApplication::focusWidget() == pw->control("FILE_SELECTION");
            QTest::keyClicks(QApplication::focusWidget(), "company_a3");
            typedName = pw->dialog().item("FILE_SELECTION")->text();
            filterShown = pw->dialog().item("FILTER")->intValue();
            QTest::keyClick(pw, Qt::Key_Escape);
        });
    };
    ASSERT_TRUE(window.runLibrary(options.library, true));
    EXPECT_TRUE(nameHadFocus);
    EXPECT_EQ(typedName, "company_a3");
    EXPECT_EQ(filterShown, 0);
}
#endif
