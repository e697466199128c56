#include "block/text_choice_dialog.h"

#include "model/choice.h"
#include "testutil/journal.h"

#include <nxsim/platform.h>
#include <uf.h>

#include <gtest/gtest.h>

#include <string>

namespace {

class TextChoiceDialogTest : public ::testing::Test {
protected:
    TextChoiceDialogTest() {
        nxsim::reset();
        UF_initialize();
        choice.lookupKey = "ENG";
        choice.shortValue = "Engineering";
        choice.fullValue = "Engineering department";
    }
    ~TextChoiceDialogTest() override { UF_terminate(); }

    /// Shows the dialog on `choice`; the journal's lines follow its `dialog` line.
    nxsim::JournalResult show(const std::string& lines) {
        return TestUtil::runJournal("run\ndialog qorborder_config_choice\n" + lines, [this] {
            QorBorderConf::TextChoiceDialog dialog(choice);
            response = dialog.show();
        });
    }

    QorBorder::Choice choice;
    int response = 0;
};

TEST_F(TextChoiceDialogTest, FillShowsTheChoice) {
    EXPECT_JOURNAL_PASSES(show(R"J(
  expect title "Text Choice"
  expect value SHORT_VALUE "Engineering"
  expect value LOOKUP_KEY "ENG"
  expect value FULL_VALUE "Engineering department"
  cancel
)J"));
}

TEST_F(TextChoiceDialogTest, OkWritesAllThreeControlsAndAMultiLineFullText) {
    EXPECT_JOURNAL_PASSES(show(R"J(
  set SHORT_VALUE "Tooling"
  set LOOKUP_KEY "TOOL"
  set FULL_VALUE "Tooling\nand fixtures"
  ok
)J"));
    EXPECT_EQ(response, NXOpen::UIStyler::DialogResponseOk);
    EXPECT_EQ(choice.shortValue, "Tooling");
    EXPECT_EQ(choice.lookupKey, "TOOL");
    EXPECT_EQ(choice.fullValue, "Tooling\nand fixtures");
}

TEST_F(TextChoiceDialogTest, OkWithEmptyMenuTextShowsTheErrorAndLeavesTheChoiceUnchanged) {
    EXPECT_JOURNAL_PASSES(show(R"J(
  set SHORT_VALUE ""
  set LOOKUP_KEY "NEW"
  set FULL_VALUE "New full text"
  ok
  message error "Validation Error" "Menu Text must not be empty."
  expect focus SHORT_VALUE
  expect value LOOKUP_KEY "NEW"
  cancel
)J"));
    EXPECT_NE(response, NXOpen::UIStyler::DialogResponseOk);
    EXPECT_EQ(choice.shortValue, "Engineering");
    EXPECT_EQ(choice.lookupKey, "ENG");
    EXPECT_EQ(choice.fullValue, "Engineering department");
}

TEST_F(TextChoiceDialogTest, CancelAfterChangingAllThreeControlsLeavesTheChoiceUnchanged) {
    const QorBorder::Choice before = choice;
    EXPECT_JOURNAL_PASSES(show(R"J(
  set SHORT_VALUE "Changed"
  set LOOKUP_KEY "CHG"
  set FULL_VALUE "Changed\ntext"
  cancel
)J"));
    EXPECT_NE(response, NXOpen::UIStyler::DialogResponseOk);
    EXPECT_EQ(choice, before);
}

TEST_F(TextChoiceDialogTest, EmptyLookupKeyAndFullTextAreAccepted) {
    EXPECT_JOURNAL_PASSES(show(R"J(
  set LOOKUP_KEY ""
  set FULL_VALUE ""
  ok
)J"));
    EXPECT_EQ(response, NXOpen::UIStyler::DialogResponseOk);
    EXPECT_EQ(choice.lookupKey, "");
    EXPECT_EQ(choice.fullValue, "");
}

} // namespace
