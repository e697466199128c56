#include "ui/message_dialogs.h"
#include "ui/single_select_dialog.h"

#include "testutil/journal.h"

#include <nxsim/platform.h>
#include <uf.h>

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

/// The list picker is NX's menu, which needs an initialized session.
class SingleSelectDialog : public ::testing::Test {
protected:
    SingleSelectDialog() {
        nxsim::reset();
        UF_initialize();
    }
    ~SingleSelectDialog() override { UF_terminate(); }

    static std::vector<std::string> names(int count) {
        std::vector<std::string> result;
        for (int i = 0; i < count; ++i) {
            result.push_back("template_" + std::to_string(i) + ".prt");
        }
        return result;
    }
};

TEST_F(SingleSelectDialog, ReturnsTheChosenRow) {
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

TEST_F(SingleSelectDialog, CancelGivesANegativeValue) {
    int chosen = 0;
    EXPECT_JOURNAL_PASSES(TestUtil::runJournal("run\npick \"Templates\" cancel\n", [&] {
        chosen = KivNX::UI::SingleSelectDialog::show("Templates", "p", {"a"}, -1);
    }));
    EXPECT_LT(chosen, 0);
}

TEST_F(SingleSelectDialog, FourteenItemsFitOneMenu) {
    int chosen = -5;
    EXPECT_JOURNAL_PASSES(TestUtil::runJournal("run\npick \"Templates\" 13\n", [&] {
        chosen = KivNX::UI::SingleSelectDialog::show("Templates", "p", names(14), -1);
    }));
    EXPECT_EQ(chosen, 13);
    EXPECT_EQ(nxsim::shownPickers().back().items, names(14));
}

TEST_F(SingleSelectDialog, ALongerListIsShownInPagesTurnedByMore) {
    int chosen = -5;
    EXPECT_JOURNAL_PASSES(
        TestUtil::runJournal("run\npick \"Templates\" 13\npick \"Templates\" 2\n", [&] {
            chosen = KivNX::UI::SingleSelectDialog::show("Templates", "p", names(20), -1);
        }));
    EXPECT_EQ(chosen, 15);
    const auto pickers = nxsim::shownPickers();
    ASSERT_EQ(pickers.size(), 2u);
    const std::vector<std::string> all = names(20);
    std::vector<std::string> firstPage(all.begin(), all.begin() + 13);
    firstPage.push_back("More...");
    EXPECT_EQ(pickers[0].items, firstPage);
    std::vector<std::string> secondPage(all.begin() + 13, all.end());
    secondPage.push_back("More...");
    EXPECT_EQ(pickers[1].items, secondPage);
}

TEST_F(SingleSelectDialog, MoreOnTheLastPageTurnsBackToTheFirst) {
    int chosen = -5;
    EXPECT_JOURNAL_PASSES(
        TestUtil::runJournal("run\npick \"T\" 13\npick \"T\" 7\npick \"T\" 0\n", [&] {
            chosen = KivNX::UI::SingleSelectDialog::show("T", "p", names(20), -1);
        }));
    EXPECT_EQ(chosen, 0);
}

TEST_F(SingleSelectDialog, NamesLongerThanAMenuEntryAreCutInTheMenuButChosenWhole) {
    const std::string longName(50, 'x');
    int chosen = -5;
    EXPECT_JOURNAL_PASSES(TestUtil::runJournal("run\npick \"T\" 0\n", [&] {
        chosen = KivNX::UI::SingleSelectDialog::show("T", "p", {longName}, -1);
    }));
    EXPECT_EQ(chosen, 0);
    EXPECT_EQ(nxsim::shownPickers().back().items,
              (std::vector<std::string>{longName.substr(0, 37)}));
}

TEST_F(SingleSelectDialog, AnEmptyListShowsNothingAndCountsAsCancel) {
    EXPECT_LT(KivNX::UI::SingleSelectDialog::show("T", "p", {}, -1), 0);
    EXPECT_TRUE(nxsim::shownPickers().empty());
}

} // namespace
