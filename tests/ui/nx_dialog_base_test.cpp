#include "framework_dialog.h"

#include "testutil/journal.h"

#include <NXOpen/NXException.hxx>
#include <nxsim/platform.h>

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using NXOpen::UIStyler::DialogResponse;

class NXDialogBase : public ::testing::Test {
protected:
    nxsim::JournalResult run(const std::string& journal, const std::function<void()>& entry) {
        return TestUtil::runJournal(journal, entry, {}, QORFMT_UI_TEST_RESOURCES);
    }
};

TEST_F(NXDialogBase, InitializesBeforeConstructAndRunsUpdatesAfterIt) {
    FrameworkDialog dialog;
    EXPECT_JOURNAL_PASSES(
        run("run\ndialog qorfmt_test_framework\ncancel\n", [&] { dialog.show(); }));
    const std::vector<std::string> expected{"initializeDialog", "construct", "update button",
                                            "update list"};
    EXPECT_EQ(dialog.calls, expected);
}

TEST_F(NXDialogBase, EveryUpdateFunctionRunsOnceWithItsOwnItemAfterEveryEvent) {
    FrameworkDialog dialog;
    EXPECT_JOURNAL_PASSES(run(R"(run
dialog qorfmt_test_framework
  press BUTTON
  select LIST 1
  ok
)",
                              [&] { dialog.show(); }));
    const std::vector<std::string> expected{"initializeDialog",
                                            "construct",
                                            "update button",
                                            "update list", //
                                            "button",
                                            "update button",
                                            "update list", //
                                            "list",
                                            "update button",
                                            "update list", //
                                            "ok",
                                            "update button",
                                            "update list"};
    EXPECT_EQ(dialog.calls, expected);
}

TEST_F(NXDialogBase, ShowReturnsOkResponse) {
    FrameworkDialog dialog;
    DialogResponse response = NXOpen::UIStyler::DialogResponseCancel;
    EXPECT_JOURNAL_PASSES(
        run("run\ndialog qorfmt_test_framework\nok\n", [&] { response = dialog.show(); }));
    EXPECT_EQ(response, NXOpen::UIStyler::DialogResponseOk);
    EXPECT_EQ(static_cast<int>(response), 2);
}

TEST_F(NXDialogBase, ShowReturnsCancelResponse) {
    FrameworkDialog dialog;
    DialogResponse response = NXOpen::UIStyler::DialogResponseOk;
    EXPECT_JOURNAL_PASSES(
        run("run\ndialog qorfmt_test_framework\ncancel\n", [&] { response = dialog.show(); }));
    EXPECT_EQ(response, NXOpen::UIStyler::DialogResponseCancel);
}

TEST_F(NXDialogBase, HandlerOtherThanOkEndingTheDialogGivesResponseNine) {
    FrameworkDialog dialog;
    DialogResponse response = NXOpen::UIStyler::DialogResponseOk;
    EXPECT_JOURNAL_PASSES(run("run\ndialog qorfmt_test_framework\npress EXIT_BUTTON\n",
                              [&] { response = dialog.show(); }));
    EXPECT_EQ(static_cast<int>(response), 9);
}

TEST_F(NXDialogBase, DialogWithEmptyNameIsShownFromItsResourceFileAlone) {
    namespace Names = TestDialogNames::Unnamed;
    // The unnamed dialog has only BUTTON: bind it through a dialog of its own.
    class Unnamed : public KivNX::UI::NXDialogBase {
    public:
        Unnamed() : NXDialogBase(Names::kResourceFile, Names::kDialogName) {}
        boost::shared_ptr<NXOpen::UIStyler::PushButton> button;

    private:
        void initializeDialog() override {
            button = getControl<NXOpen::UIStyler::PushButton>(Names::BUTTON);
        }
    } unnamed;
    DialogResponse response = NXOpen::UIStyler::DialogResponseCancel;
    EXPECT_JOURNAL_PASSES(run(R"(run
dialog qorfmt_test_unnamed.dlg
  expect title "Unnamed"
  ok
)",
                              [&] { response = unnamed.show(); }));
    EXPECT_EQ(response, NXOpen::UIStyler::DialogResponseOk);
    EXPECT_TRUE(unnamed.dialogName().empty());
}

TEST_F(NXDialogBase, ExceptionFromHandlerPassesOutOfShow) {
    FrameworkDialog dialog;
    dialog.onButton = [](FrameworkDialog&) { throw std::runtime_error("from the handler"); };
    bool caught = false;
    const auto result = run("run\ndialog qorfmt_test_framework\npress BUTTON\n", [&] {
        try {
            dialog.show();
        } catch (const std::runtime_error& error) {
            caught = std::string(error.what()) == "from the handler";
        }
    });
    EXPECT_TRUE(caught);
    EXPECT_JOURNAL_PASSES(result);
}

// A control that refuses a value no handler caught is the one exception the framework handles:
// the user reads why, the rest of that handler is skipped, the update functions still run, and
// the dialog stays open with what the user typed.
TEST_F(NXDialogBase, NoSuchEntryErrorFromAHandlerIsShownAndTheDialogStaysOpen) {
    FrameworkDialog dialog;
    dialog.onButton = [](FrameworkDialog& d) {
        d.string->SetItemValue("before");
        d.menu->SetItemValue(std::string("delta"));
        d.string->SetItemValue("after");
    };
    DialogResponse response = NXOpen::UIStyler::DialogResponseCancel;
    EXPECT_JOURNAL_PASSES(run(R"(run
dialog qorfmt_test_framework
  set WIDE "typed"
  choose MENU "beta"
  press BUTTON
  message error "Error" "The menu has no entry 'delta' (its entries: 'alpha', 'beta', 'gamma'); it keeps 'beta'."
  expect value STRING "before"
  expect value WIDE "typed"
  expect value MENU "beta"
  ok
)",
                              [&] { response = dialog.show(); }));
    EXPECT_EQ(response, NXOpen::UIStyler::DialogResponseOk);
    const std::vector<std::string> tail(dialog.calls.end() - 6, dialog.calls.end());
    EXPECT_EQ(tail, (std::vector<std::string>{"button", "update button", "update list", "ok",
                                              "update button", "update list"}));
}

TEST_F(NXDialogBase, NXExceptionFromHandlerStillPassesOutOfShow) {
    FrameworkDialog dialog;
    dialog.onButton = [](FrameworkDialog&) { throw NXOpen::NXException::Create(1105003); };
    int code = 0;
    const auto result = run("run\ndialog qorfmt_test_framework\npress BUTTON\n", [&] {
        try {
            dialog.show();
        } catch (const NXOpen::NXException& error) {
            code = error.ErrorCode();
        }
    });
    EXPECT_EQ(code, 1105003);
    EXPECT_JOURNAL_PASSES(result);
}

TEST_F(NXDialogBase, NestedDialogRunsModallyInsideHandler) {
    FrameworkDialog outer;
    DialogResponse innerResponse = NXOpen::UIStyler::DialogResponseCancel;
    outer.onButton = [&](FrameworkDialog&) {
        FrameworkDialog inner;
        innerResponse = inner.show();
    };
    EXPECT_JOURNAL_PASSES(run(R"(run
dialog qorfmt_test_framework
  press BUTTON
    dialog qorfmt_test_framework
    set STRING "inner"
    ok
  expect value STRING "initial"
  cancel
)",
                              [&] { outer.show(); }));
    EXPECT_EQ(innerResponse, NXOpen::UIStyler::DialogResponseOk);
}

TEST_F(NXDialogBase, GetControlOfMissingNameThrowsNamingDialogAndItem) {
    FrameworkDialog dialog;
    std::string message;
    dialog.onButton = [&](FrameworkDialog& self) {
        try {
            self.getControl<NXOpen::UIStyler::PushButton>("NO_SUCH_BUTTON");
        } catch (const NXOpen::NXException& error) {
            message = error.what();
        }
    };
    EXPECT_JOURNAL_PASSES(
        run("run\ndialog qorfmt_test_framework\npress BUTTON\ncancel\n", [&] { dialog.show(); }));
    EXPECT_NE(message.find("NO_SUCH_BUTTON"), std::string::npos) << message;
    EXPECT_NE(message.find(TestDialogNames::Framework::kDialogName), std::string::npos) << message;
}

TEST_F(NXDialogBase, GetControlOfAnotherKindThrowsNamingTheKind) {
    FrameworkDialog dialog;
    std::string message;
    dialog.onButton = [&](FrameworkDialog& self) {
        try {
            self.getControl<KivNX::UI::SingleSelectList>(TestDialogNames::Framework::BUTTON);
        } catch (const NXOpen::NXException& error) {
            message = error.what();
        }
    };
    EXPECT_JOURNAL_PASSES(
        run("run\ndialog qorfmt_test_framework\npress BUTTON\ncancel\n", [&] { dialog.show(); }));
    EXPECT_NE(message.find("BUTTON"), std::string::npos) << message;
    EXPECT_NE(message.find("push button"), std::string::npos) << message;
}

TEST_F(NXDialogBase, MissingResourceFileThrowsFromShow) {
    FrameworkDialog dialog("qorfmt_no_such_dialog.dlg", "none");
    EXPECT_THROW(dialog.show(), NXOpen::NXException);
}

using NXDialogBaseDeathTest = NXDialogBase;

TEST_F(NXDialogBaseDeathTest, UsingAControlBeforeItIsBoundStopsInAnAssertion) {
#ifdef NDEBUG
    GTEST_SKIP() << "assertions are compiled out of this build";
#endif
    FrameworkDialog dialog;
    // The control's shared pointer is still null: its own non-null assertion stops the program.
    EXPECT_DEATH(dialog.list->ClearList(), "operator->.*Assertion `px != 0' failed");
}

} // namespace
