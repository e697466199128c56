#include "nxsim_test_support.h"

#include <nxsim/journal_runner.h>
#include <nxsim/platform.h>
#include <nxsim/runtime.h>

#include "testutil/temp_dir.h"

#include <NXOpen/UI.hxx>
#include <NXOpen/UIStyler_Dialog.hxx>

#include <gtest/gtest.h>

#include <memory>

namespace {

/// Replays journals against the test user function, loaded in this process.
class JournalRunnerTest : public NxsimTest::Fixture {
protected:
    nxsim::JournalResult play(const std::string& text) {
        nxsim::JournalRunner runner(nxsim::parseJournal(text, "test.journal"), m_site.path());
        return runner.run([this] { m_library.callUfusr(); });
    }
    void passes(const std::string& text) {
        nxsim::JournalResult r = play(text);
        EXPECT_TRUE(r.passed) << r.message;
    }
    void failsWith(const std::string& text, const std::string& message) {
        nxsim::JournalResult r = play(text);
        EXPECT_FALSE(r.passed);
        EXPECT_EQ(r.message, message);
    }

    nxsim::UserFunctionLibrary m_library{NXSIM_TEST_UFUNC};
    TestUtil::TempDir m_site;
};

TEST_F(JournalRunnerTest, ConstructHandlerAndOkEndTheRun) {
    passes("run\n"
           "dialog nxsim_test_main\n"
           "  expect title \"Test Main\"\n"
           "  expect label RESULT \"constructed\"\n"
           "  set NAME x\n"
           "  ok\n");
    EXPECT_EQ(nxsim::initializeDepth(), 0) << "UF_terminate ran";
}

TEST_F(JournalRunnerTest, MessageBoxInsideAHandlerTakesTheMessageLine) {
    passes("run\n"
           "dialog nxsim_test_main\n"
           "  ok\n"
           "  message error \"Validation Error\" \"Name must not be empty.\"\n"
           "  expect focus NAME\n"
           "  set NAME \"Ann\"\n"
           "  press SHOW_INFO\n"
           "  message information \"Info\" \"Hello Ann\"\n"
           "  expect label RESULT \"informed\"\n"
           "  cancel\n");
    ASSERT_EQ(nxsim::shownMessages().size(), 2u);
    EXPECT_EQ(nxsim::shownMessages()[1].text, "Hello Ann");
}

TEST_F(JournalRunnerTest, NestedDialogLinesFollowTheActionThatOpenedIt) {
    passes("run\n"
           "dialog nxsim_test_main\n"
           "  press OPEN_CHILD\n"
           "    dialog nxsim_test_child.dlg\n"
           "    set TEXT \"typed\"\n"
           "    ok\n"
           "  expect label RESULT \"response 2 typed\"\n"
           "  press OPEN_CHILD\n"
           "    dialog nxsim_test_child.dlg\n"
           "    double-click FILES 1\n"
           "  expect label RESULT \"response 9 second.fordef\"\n"
           "  press OPEN_CHILD\n"
           "    dialog nxsim_test_child.dlg\n"
           "    close\n"
           "  expect label RESULT \"response 3 \"\n"
           "  press QUIT\n");
}

TEST_F(JournalRunnerTest, ListPickerTakesThePickLine) {
    passes("run\n"
           "dialog nxsim_test_main\n"
           "  press PICK\n"
           "  pick \"Frame Templates\" 2\n"
           "  expect label RESULT \"picked 2\"\n"
           "  press PICK\n"
           "  pick \"Frame Templates\" cancel\n"
           "  expect label RESULT \"picked -1\"\n"
           "  press QUIT\n");
    ASSERT_EQ(nxsim::shownPickers().size(), 2u);
    EXPECT_EQ(nxsim::shownPickers()[0].prompt, "Select template from list");
    EXPECT_EQ(nxsim::shownPickers()[0].chosen, 2);
}

TEST_F(JournalRunnerTest, PointAndObjectPicksAnswerFromTheJournal) {
    passes("run\n"
           "dialog nxsim_test_main\n"
           "  press POINT\n"
           "  expect label RESULT \"point 7\"\n"
           "  set PART_FILE \"" +
           part("a3_metric.prt") +
           "\"\n"
           "  press OPEN_PART\n"
           "  press POINT\n"
           "  point 12.5 30\n"
           "  expect cue \"Select corner point\"\n"
           "  expect label RESULT \"point 5 12.5 30\"\n"
           "  press POINT\n"
           "  point cancel\n"
           "  expect label RESULT \"point 2\"\n"
           "  press MEASURE\n"
           "  object 12\n"
           "  object 13\n"
           "  expect label RESULT \"distance 0 20\"\n"
           "  press MEASURE\n"
           "  object cancel\n"
           "  expect label RESULT \"measure cancelled\"\n"
           "  press QUIT\n");
    EXPECT_FALSE(nxsim::highlighted(12)) << "the program switched the highlight off";
}

TEST_F(JournalRunnerTest, ListingStoplightCueAndFileExpectations) {
    m_site.write("format_defs/a.fordef", "x");
    passes("run\n"
           "dialog nxsim_test_main\n"
           "  set NAME \"doc\"\n"
           "  press LISTING\n"
           "  press LISTING\n"
           "  expect listing \"Summary of doc\\nSummary of doc\\n\"\n"
           "  press SAVE\n"
           "  press SAVE\n"
           "  expect stoplight \"1 0 1 0\"\n"
           "  expect stoplight \"\"\n"
           "  expect cue \"Saving\"\n"
           "  press QUIT\n"
           "expect file format_defs/a.fordef exists\n"
           "expect file format_defs/b.fordef missing\n");
}

TEST_F(JournalRunnerTest, ExceptionFromAHandlerIsShownByTheUserFunction) {
    passes("run\n"
           "dialog nxsim_test_main\n"
           "  set CODE 3520002\n"
           "  press FAIL\n"
           "message error \"Error\" \"Invalid object tag\"\n"
           "run\n"
           "dialog nxsim_test_main\n"
           "  set CODE 1105003\n"
           "  press FAIL\n"
           "run\n"
           "dialog nxsim_test_main\n"
           "  press QUIT\n");
}

TEST_F(JournalRunnerTest, WrongDialogStopsWithFileLineAndBothNames) {
    failsWith("run\n"
              "dialog qorborder_config_main\n",
              "test.journal:2: dialog nxsim_test_main is shown, but the journal expects dialog "
              "qorborder_config_main");
}

TEST_F(JournalRunnerTest, WrongLineKindStops) {
    failsWith("run\n"
              "dialog nxsim_test_main\n"
              "  press SHOW_INFO\n"
              "  press QUIT\n",
              "test.journal:4: a message box is shown (`message information \"Info\" \"Hello \"`), "
              "but the journal expects `press QUIT`");
    failsWith("run\n"
              "dialog nxsim_test_main\n"
              "  message error \"A\" \"B\"\n",
              "test.journal:3: dialog nxsim_test_main expects an action or an expectation, found "
              "`message error \"A\" \"B\"`: no message box is shown");
    failsWith("press QUIT\n", "test.journal:1: `press QUIT` needs a shown dialog, but none is");
    failsWith("run\ndialog nxsim_test_main\n  press QUIT\ndialog nxsim_test_main\n",
              "test.journal:4: expected `run` or a top-level expectation, found `dialog "
              "nxsim_test_main`: no dialog is shown");
}

TEST_F(JournalRunnerTest, FailedExpectationStopsWithExpectedAndFound) {
    failsWith("run\n"
              "dialog nxsim_test_main\n"
              "  expect label RESULT \"other\"\n",
              "test.journal:3: expected label \"other\" of RESULT of dialog nxsim_test_main, found "
              "\"constructed\"");
    failsWith(
        "run\n"
        "dialog nxsim_test_main\n"
        "  expect value CODE 1\n",
        "test.journal:3: expected value \"1\" of CODE of dialog nxsim_test_main, found \"0\"");
    failsWith("run\n"
              "dialog nxsim_test_main\n"
              "  expect sensitive OK no\n",
              "test.journal:3: expected OK of dialog nxsim_test_main to be insensitive, but it is "
              "not");
    failsWith("run\n"
              "dialog nxsim_test_main\n"
              "  expect selected RESULT 0\n",
              "test.journal:3: `expect selected RESULT 0` needs a list, but RESULT is a label");
    failsWith("run\n"
              "dialog nxsim_test_main\n"
              "  expect visible NOPE yes\n",
              "test.journal:3: dialog nxsim_test_main has no item NOPE");
}

TEST_F(JournalRunnerTest, RefusedActionStopsTheRun) {
    failsWith("run\n"
              "dialog nxsim_test_main\n"
              "  select NAME 0\n",
              "test.journal:3: cannot select a row of NAME of dialog nxsim_test_main: it is a "
              "string item, not a single select list");
}

TEST_F(JournalRunnerTest, EarlyEndStopsWithTheDialogStillShown) {
    failsWith("run\n"
              "dialog nxsim_test_main\n"
              "  press OPEN_CHILD\n",
              "test.journal:4: the journal ends, but dialog nxsim_test_child.dlg is shown");
    failsWith("run\n"
              "dialog nxsim_test_main\n"
              "  set NAME a\n",
              "test.journal:4: the journal ends while dialog nxsim_test_main is still shown");
    EXPECT_TRUE(nxsim::shownDialogs().empty()) << "the failed run left no dialog behind";
    EXPECT_EQ(nxsim::initializeDepth(), 0);
}

TEST_F(JournalRunnerTest, PickOfARowOutOfRangeIsAFailure) {
    failsWith("run\n"
              "dialog nxsim_test_main\n"
              "  press PICK\n"
              "  pick \"Frame Templates\" 3\n",
              "test.journal:4: cannot pick row 3: the list picker \"Frame Templates\" with 3 rows "
              "[\"a3.prt\", \"a4.prt\", \"d.prt\"]");
    failsWith(
        "run\n"
        "dialog nxsim_test_main\n"
        "  press PICK\n"
        "  pick \"Templates\" 0\n",
        "test.journal:4: the list picker \"Frame Templates\" with 3 rows is shown, not the list "
        "picker \"Templates\"");
}

TEST_F(JournalRunnerTest, ObjectNotInTheDisplayPartIsAFailure) {
    failsWith("run\n"
              "dialog nxsim_test_main\n"
              "  set PART_FILE \"" +
                  part("a3_metric.prt") +
                  "\"\n"
                  "  press OPEN_PART\n"
                  "  press MEASURE\n"
                  "  object 99\n",
              "test.journal:6: the display part " + part("a3_metric.prt") +
                  " has no object with tag 99");
}

TEST_F(JournalRunnerTest, TheLibraryStaysLoadedBetweenRuns) {
    passes("run\ndialog nxsim_test_main\n  press QUIT\nrun\ndialog nxsim_test_main\n  "
           "press QUIT\n");
    EXPECT_EQ(nxsim::initializeDepth(), 0);
}

} // namespace

namespace {

using namespace NXOpen;
using namespace NXOpen::UIStyler;

/// Journals driving a dialog of every item kind from C++ code, as tests of dialogs do.
class JournalOnAllItems : public NxsimTest::Fixture {
protected:
    nxsim::JournalResult play(const nxsim::JournalBuilder& journal) {
        nxsim::JournalRunner runner(journal.journal());
        return runner.run([this] {
            std::unique_ptr<Dialog> dialog(
                UI::GetUI()->Styler()->CreateStylerDialog("nxsim_test_all.dlg"));
            OptionMenu* units = dialog->GetOptionMenu("UNITS");
            dialog->GetPushButton("PRESS_ME")
                ->AddActivateHandler(NxsimTest::handler([units](StylerEvent*) {
                                         units->SetSensitivity(0, false);
                                         return DialogStateContinueDialog;
                                     }),
                                     false);
            response = dialog->Show();
        });
    }
    int response = 0;
};

TEST_F(JournalOnAllItems, ExpectationsReadEveryKindOfItem) {
    nxsim::JournalBuilder b("all.journal");
    b.run()
        .dialog("nxsim_test_all")
        .expectValue("NAME", "start")
        .expectValue("NOTES", "one\ntwo")
        .expectValue("COUNT", "7")
        .expectValue("SCALE", "1.50")
        .expectValue("ENABLED", "on")
        .expectValue("COLOUR", "186")
        .expectValue("UNITS", "Inches")
        .expectValue("CORNER", "Bottom left")
        .expectIndex("UNITS", 1)
        .expectItems("ROWS", {"alpha", "beta", "gamma"})
        .expectItems("UNITS", {"Millimetres", "Inches", "Points"})
        .expectSelected("ROWS", -1)
        .expectSensitive("UNITS", false, 2)
        .expectSensitive("UNITS", true, 0)
        .expectSensitive("DISABLED_BUTTON", false)
        .expectSensitive("INNER_BUTTON", false)
        .expectSensitive("OK", true)
        .expectVisible("HIDDEN_BUTTON", false)
        .expectVisible("APPLY", true)
        .expectVisible("BACK", false)
        .expectLabel("STATUS", "Ready")
        .expectLabel("NAME", "Name")
        .press("PRESS_ME")
        .expectSensitive("UNITS", false, 0)
        .choose("CORNER", "Top right")
        .expectIndex("CORNER", 1)
        .select("ROWS", 1)
        .expectSelected("ROWS", 1)
        .set("NOTES", "x\ny\nz")
        .expectValue("NOTES", "x\ny\nz")
        .toggle("ENABLED", false)
        .expectValue("ENABLED", "off")
        .ok();
    nxsim::JournalResult r = play(b);
    EXPECT_TRUE(r.passed) << r.message;
    EXPECT_EQ(response, 2);
}

TEST_F(JournalOnAllItems, ChoosingAnInsensitiveEntryFails) {
    nxsim::JournalBuilder b("all.journal");
    b.run().dialog("nxsim_test_all").choose("UNITS", 2);
    nxsim::JournalResult r = play(b);
    EXPECT_EQ(r.message, "all.journal:3: cannot choose entry 2 (\"Points\") of UNITS of dialog "
                         "nxsim_test_all: the entry is insensitive");
}

TEST_F(JournalOnAllItems, EntryExpectationFailureSaysWhichEntry) {
    nxsim::JournalBuilder b("all.journal");
    b.run().dialog("nxsim_test_all").expectSensitive("UNITS", true, 2);
    EXPECT_EQ(play(b).message,
              "all.journal:3: expected entry 2 of UNITS of dialog nxsim_test_all to "
              "be sensitive, but it is insensitive");
}

TEST_F(JournalOnAllItems, GroupInsensitivityIsNamedAsTheReason) {
    nxsim::JournalBuilder b("all.journal");
    b.run().dialog("nxsim_test_all").expectSensitive("INNER_BUTTON", true);
    EXPECT_EQ(play(b).message,
              "all.journal:3: expected INNER_BUTTON of dialog nxsim_test_all to be sensitive, but "
              "it is insensitive (an enclosing group is insensitive)");
}

/// A presenter in front of the runner, as a host that draws while it replays.
TEST_F(JournalOnAllItems, AFrontPresenterSeesEveryRequestFirst) {
    struct Front : nxsim::Presenter {
        nxsim::JournalRunner* runner = nullptr;
        std::vector<std::string> seen;
        void runDialog(nxsim::RuntimeDialog& d) override {
            seen.push_back(d.journalName());
            runner->runDialog(d);
        }
        void showMessage(nxsim::MessageKind k, const std::string& t,
                         const std::string& x) override {
            runner->showMessage(k, t, x);
        }
        int pickFromList(const std::string& t, const std::string& p,
                         const std::vector<std::string>& i, int s) override {
            return runner->pickFromList(t, p, i, s);
        }
        nxsim::PointAnswer indicatePoint(const std::string& c) override {
            return runner->indicatePoint(c);
        }
        nxsim::ObjectAnswer selectObject(const std::string& m, const std::string& t,
                                         int s) override {
            return runner->selectObject(m, t, s);
        }
    } front;
    nxsim::JournalBuilder b("all.journal");
    b.run().dialog("nxsim_test_all").cancel();
    nxsim::JournalRunner runner(b.journal());
    front.runner = &runner;
    nxsim::JournalResult r = runner.run(
        [] {
            std::unique_ptr<Dialog> dialog(
                UI::GetUI()->Styler()->CreateStylerDialog("nxsim_test_all.dlg"));
            dialog->Show();
        },
        front);
    EXPECT_TRUE(r.passed) << r.message;
    EXPECT_EQ(front.seen, (std::vector<std::string>{"nxsim_test_all"}));
}

} // namespace
