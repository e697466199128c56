#include "ui/message_dialogs.h"
#include "ui/single_select_dialog.h"

#include "testutil/journal.h"

#include <nxsim/platform.h>

#include <gtest/gtest.h>

namespace {

TEST(MessageDialogs, ErrorDialogShowsAnErrorBoxWithTitleAndText) {
    EXPECT_JOURNAL_PASSES(TestUtil::runJournal(
        "run\nmessage error \"Validation Error\" \"Block ID must not be empty.\"\n",
        [] { KivNX::UI::errorDialog("Validation Error", "Block ID must not be empty."); }));
}

TEST(MessageDialogs, InformationDialogShowsAnInformationBox) {
    EXPECT_JOURNAL_PASSES(
        TestUtil::runJournal("run\nmessage information \"Done\" \"two lines\\nof text\"\n",
                             [] { KivNX::UI::informationDialog("Done", "two lines\nof text"); }));
}

TEST(MessageDialogs, WrongMessageKindFailsTheJournal) {
    const auto result = TestUtil::runJournal("run\nmessage information \"T\" \"X\"\n",
                                             [] { KivNX::UI::errorDialog("T", "X"); });
    EXPECT_FALSE(result.passed);
    EXPECT_NE(result.message.find("test.journal:2:"), std::string::npos) << result.message;
}

TEST(SingleSelectDialog, ReturnsTheChosenRow) {
    int chosen = -5;
    EXPECT_JOURNAL_PASSES(TestUtil::runJournal("run\npick \"Templates\" 1\n", [&] {
        chosen = KivNX::UI::SingleSelectDialog::show("Templates", "Select a template",
                                                     {"a3.prt", "a4.prt"}, -1);
    }));
    EXPECT_EQ(chosen, 1);
    const auto pickers = nxsim::shownPickers();
    ASSERT_FALSE(pickers.empty());
    EXPECT_EQ(pickers.back().prompt, "Select a template");
    EXPECT_EQ(pickers.back().items, (std::vector<std::string>{"a3.prt", "a4.prt"}));
}

TEST(SingleSelectDialog, CancelGivesANegativeValue) {
    int chosen = 0;
    EXPECT_JOURNAL_PASSES(TestUtil::runJournal("run\npick \"Templates\" cancel\n", [&] {
        chosen = KivNX::UI::SingleSelectDialog::show("Templates", "p", {"a"}, -1);
    }));
    EXPECT_LT(chosen, 0);
}

} // namespace
