#include "block/field_dialog.h"

#include "model/field.h"
#include "testutil/journal.h"

#include <nxsim/platform.h>
#include <uf.h>

#include <boost/make_shared.hpp>

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace {

using QorBorder::Choice;
using QorBorder::Field;

Choice makeChoice(const std::string& key, const std::string& menuText) {
    Choice choice;
    choice.lookupKey = key;
    choice.shortValue = menuText;
    choice.fullValue = menuText + " (full)";
    return choice;
}

class FieldDialogTest : public ::testing::Test {
protected:
    FieldDialogTest() {
        nxsim::reset();
        UF_initialize();
    }
    ~FieldDialogTest() override { UF_terminate(); }

    /// A block field of type 1 with three choices, the second one the default.
    static boost::shared_ptr<Field> choiceField(bool tableField = false) {
        auto field = boost::make_shared<Field>(tableField);
        field->id = "DEPT";
        field->type = 1;
        field->controlType = 4;
        field->defaultChoice = 1;
        field->setTextChoices({makeChoice("ENG", "Engineering"), makeChoice("TOOL", "Tooling"),
                               makeChoice("QA", "Quality")});
        return field;
    }

    /// Shows the dialog on `field`: with `secondLanguageIds` as a block layout's field, else
    /// as a row type's field. The journal's lines follow its `dialog` line.
    nxsim::JournalResult show(const boost::shared_ptr<Field>& field, const std::string& lines,
                              std::optional<std::vector<std::string>> secondLanguageIds = {}) {
        return TestUtil::runJournal("run\ndialog qorborder_config_field\n" + lines, [&] {
            if (secondLanguageIds) {
                QorBorderConf::FieldDialog dialog(field, *secondLanguageIds);
                response = dialog.show();
            } else {
                QorBorderConf::FieldDialog dialog(field);
                response = dialog.show();
            }
        });
    }

    int response = 0;
};

TEST_F(FieldDialogTest, FillShowsTheFieldAndItsChoicesWithTheDefaultMarked) {
    auto field = choiceField();
    field->prefix = "Dept. ";
    field->suffix = ";";
    field->broadcastTitle = "DEPARTMENT";
    field->broadcastType = 2;
    field->syncField = true;
    EXPECT_JOURNAL_PASSES(show(field, R"J(
  expect title "Field"
  expect value ID "DEPT"
  expect index TYPE 1
  expect index CONTROL_TYPE 4
  expect visible CONTROLLED_SETTINGS yes
  expect items CHOICE_LIST ["  Engineering", "* Tooling", "  Quality"]
  expect selected CHOICE_LIST -1
  expect sensitive EDIT_CHOICE no
  expect sensitive COPY_CHOICE no
  expect sensitive DELETE_CHOICE no
  expect sensitive DEFAULT_CHOICE no
  expect sensitive ADD_CHOICE yes
  expect value PREFIX "Dept. "
  expect value SUFFIX ";"
  expect index BROADCAST_TYPE 2
  expect value BROADCAST_TITLE "DEPARTMENT"
  expect value SYNC_FIELD on
  expect visible DEFAULT_STRING no
  expect visible ATTR_TITLE no
  cancel
)J",
                               std::vector<std::string>{"DEPT", "TITLE"}));
}

TEST_F(FieldDialogTest, OkWritesEveryControl) {
    auto field = boost::make_shared<Field>();
    EXPECT_JOURNAL_PASSES(show(field, R"J(
  set ID "TITLE"
  choose CONTROL_TYPE 2
  set DEFAULT_STRING "Line one\nLine two"
  set PREFIX "<"
  set SUFFIX ">"
  choose SEC_LANG_FIELD "TITLE2"
  toggle SYNC_FIELD on
  toggle COLLAPSENOVALUE on
  choose BROADCAST_TYPE 1
  set BROADCAST_TITLE "DB_PART_NAME"
  ok
)J",
                               std::vector<std::string>{"TITLE", "TITLE2"}));
    EXPECT_EQ(response, NXOpen::UIStyler::DialogResponseOk);
    EXPECT_EQ(field->id, "TITLE");
    EXPECT_EQ(field->type, 0);
    EXPECT_EQ(field->controlType, 2);
    EXPECT_EQ(field->defaultString, "Line one\nLine two");
    EXPECT_EQ(field->prefix, "<");
    EXPECT_EQ(field->suffix, ">");
    EXPECT_EQ(field->secondLanguageFieldId, "TITLE2");
    EXPECT_TRUE(field->syncField);
    EXPECT_TRUE(field->collapseNoValue);
    EXPECT_EQ(field->broadcastType, 1);
    EXPECT_EQ(field->broadcastTitle, "DB_PART_NAME");
}

// Values of controls that the type hides are written as they stand.
TEST_F(FieldDialogTest, OkWritesTheValuesOfHiddenControlsToo) {
    auto field = boost::make_shared<Field>();
    field->id = "ISSUED";
    EXPECT_JOURNAL_PASSES(show(field, R"J(
  choose TYPE 2
  toggle DEFAULT_TO_CURRENT_DATE on
  choose TYPE 4
  set ATTR_TITLE "DATE_OF_ISSUE"
  choose TYPE 0
  expect visible DEFAULT_TO_CURRENT_DATE no
  expect visible ATTR_TITLE no
  ok
)J",
                               std::vector<std::string>{}));
    EXPECT_EQ(field->type, 0);
    EXPECT_TRUE(field->defaultToCurrentDate);
    EXPECT_EQ(field->attrTitle, "DATE_OF_ISSUE");
}

TEST_F(FieldDialogTest, OkWithEmptyIdIsRefusedAndWritesNothing) {
    auto field = choiceField();
    const Field before = *field;
    EXPECT_JOURNAL_PASSES(show(field, R"J(
  set ID ""
  set PREFIX "changed"
  select CHOICE_LIST 0
  press DELETE_CHOICE
  ok
  message error "Validation Error" "ID must not be empty."
  expect focus ID
  expect value PREFIX "changed"
  cancel
)J",
                               std::vector<std::string>{}));
    EXPECT_NE(response, NXOpen::UIStyler::DialogResponseOk);
    EXPECT_EQ(*field, before);
}

TEST_F(FieldDialogTest, CancelLeavesTheFieldAndItsChoicesUntouched) {
    auto field = choiceField();
    const Field before = *field;
    EXPECT_JOURNAL_PASSES(show(field, R"J(
  set ID "OTHER"
  press ADD_CHOICE
    dialog qorborder_config_choice
    set SHORT_VALUE "Sales"
    ok
  select CHOICE_LIST 0
  press EDIT_CHOICE
    dialog qorborder_config_choice
    set SHORT_VALUE "Design"
    ok
  expect items CHOICE_LIST ["  Design", "* Tooling", "  Quality", "  Sales"]
  cancel
)J",
                               std::vector<std::string>{}));
    EXPECT_NE(response, NXOpen::UIStyler::DialogResponseOk);
    EXPECT_EQ(*field, before);
}

// Type 5 makes control type 5 selectable but still moves a 5 back to 0 whenever the rules run,
// also when the dialog opens. Intended.
TEST_F(FieldDialogTest, TypeFiveFieldWithControlTypeFiveShowsZeroAndOkStoresZeroAsIntended) {
    auto field = boost::make_shared<Field>();
    field->id = "SHEET";
    field->type = 5;
    field->controlType = 5;
    EXPECT_JOURNAL_PASSES(show(field, R"J(
  expect index TYPE 5
  expect index CONTROL_TYPE 0
  expect sensitive CONTROL_TYPE[5] yes
  expect sensitive CONTROL_TYPE[4] no
  expect visible ATTR_TITLE yes
  ok
)J",
                               std::vector<std::string>{}));
    EXPECT_EQ(response, NXOpen::UIStyler::DialogResponseOk);
    EXPECT_EQ(field->controlType, 0);
}

TEST_F(FieldDialogTest, ChoosingTypeFiveMovesAChosenControlTypeFiveBackToZeroAsIntended) {
    auto field = boost::make_shared<Field>();
    field->id = "SHEET";
    field->type = 5;
    EXPECT_JOURNAL_PASSES(show(field, R"J(
  choose CONTROL_TYPE 5
  expect index CONTROL_TYPE 5
  choose TYPE 5
  expect index CONTROL_TYPE 0
  cancel
)J",
                               std::vector<std::string>{}));
}

TEST_F(FieldDialogTest, TypeRulesOfferOnlyTheInputControlsThatFitTheType) {
    auto field = boost::make_shared<Field>();
    field->id = "TEXT";
    field->controlType = 8;
    EXPECT_JOURNAL_PASSES(show(field, R"J(
  expect index CONTROL_TYPE 8
  expect sensitive CONTROL_TYPE[0] yes
  expect sensitive CONTROL_TYPE[1] yes
  expect sensitive CONTROL_TYPE[4] no
  expect sensitive CONTROL_TYPE[7] no
  expect sensitive CONTROL_TYPE[9] yes
  expect visible DEFAULT_STRING yes
  expect visible DEFAULT_TO_CURRENT_DATE no
  # A date: only the date picker fits; the text control falls back to 0.
  choose TYPE 2
  expect index CONTROL_TYPE 0
  expect sensitive CONTROL_TYPE[7] yes
  expect sensitive CONTROL_TYPE[1] no
  expect visible DEFAULT_STRING no
  expect visible DEFAULT_TO_CURRENT_DATE yes
  choose CONTROL_TYPE 7
  # No input: nothing but 0, and no broadcast settings.
  choose TYPE 3
  expect index CONTROL_TYPE 0
  expect sensitive CONTROL_TYPE[7] no
  expect visible BROADCAST_TYPE no
  expect visible BROADCAST_TITLE no
  expect visible SYNC_FIELD no
  # From an attribute: the attribute title is asked for.
  choose TYPE 4
  expect visible ATTR_TITLE yes
  expect sensitive CONTROL_TYPE[3] yes
  expect sensitive CONTROL_TYPE[5] no
  # A choice: the choices are shown.
  choose TYPE 1
  expect visible CONTROLLED_SETTINGS yes
  expect visible ATTR_TITLE no
  expect visible BROADCAST_TYPE yes
  expect visible SYNC_FIELD yes
  expect sensitive CONTROL_TYPE[4] yes
  cancel
)J",
                               std::vector<std::string>{}));
}

// Deleting a choice leaves the default index where it was, on purpose: the marker passes to the
// choice that moves up into the deleted one's place.
TEST_F(FieldDialogTest, DeletingTheDefaultChoiceMovesTheMarkerToTheChoiceThatTookItsPlace) {
    auto field = choiceField();
    EXPECT_JOURNAL_PASSES(show(field, R"J(
  select CHOICE_LIST 1
  press DELETE_CHOICE
  expect items CHOICE_LIST ["  Engineering", "* Quality"]
  expect selected CHOICE_LIST -1
  ok
)J",
                               std::vector<std::string>{}));
    ASSERT_EQ(field->textChoices().size(), 2u);
    EXPECT_EQ(field->defaultChoice, 1);
    EXPECT_EQ(field->textChoices()[1].shortValue, "Quality");
}

// Deleting the last choice while it is the default leaves no choice marked, and OK stores the
// index that now lies outside the choices. Intended.
TEST_F(FieldDialogTest,
       DeletingTheLastChoiceWhileDefaultLeavesNoMarkerAndStoresTheOutOfRangeIndex) {
    auto field = choiceField();
    EXPECT_JOURNAL_PASSES(show(field, R"J(
  select CHOICE_LIST 2
  press DEFAULT_CHOICE
  expect items CHOICE_LIST ["  Engineering", "  Tooling", "* Quality"]
  select CHOICE_LIST 2
  press DELETE_CHOICE
  expect items CHOICE_LIST ["  Engineering", "  Tooling"]
  ok
)J",
                               std::vector<std::string>{}));
    EXPECT_EQ(field->textChoices().size(), 2u);
    EXPECT_EQ(field->defaultChoice, 2);
}

TEST_F(FieldDialogTest, CopyingAChoiceAppendsItWithCopyAfterItsMenuText) {
    auto field = choiceField();
    EXPECT_JOURNAL_PASSES(show(field, R"J(
  select CHOICE_LIST 0
  expect sensitive COPY_CHOICE yes
  press COPY_CHOICE
  expect items CHOICE_LIST ["  Engineering", "* Tooling", "  Quality", "  Engineering Copy"]
  ok
)J",
                               std::vector<std::string>{}));
    const std::vector<Choice> choices = field->textChoices();
    ASSERT_EQ(choices.size(), 4u);
    EXPECT_EQ(choices[3].shortValue, "Engineering Copy");
    EXPECT_EQ(choices[3].lookupKey, "ENG");
    EXPECT_EQ(choices[3].fullValue, "Engineering (full)");
}

TEST_F(FieldDialogTest, EditingAChoiceAndCancellingLeavesTheChoiceAsItWas) {
    auto field = choiceField();
    EXPECT_JOURNAL_PASSES(show(field, R"J(
  select CHOICE_LIST 0
  press EDIT_CHOICE
    dialog qorborder_config_choice
    expect value SHORT_VALUE "Engineering"
    set SHORT_VALUE "Design"
    cancel
  expect items CHOICE_LIST ["  Engineering", "* Tooling", "  Quality"]
  press ADD_CHOICE
    dialog qorborder_config_choice
    set SHORT_VALUE "Dropped"
    cancel
  expect items CHOICE_LIST ["  Engineering", "* Tooling", "  Quality"]
  ok
)J",
                               std::vector<std::string>{}));
    EXPECT_EQ(field->textChoices(), choiceField()->textChoices());
}

// A table field does not synchronise and does not collapse: the toggles stay hidden whatever the
// type, and OK keeps the values it holds.
TEST_F(FieldDialogTest, TableFieldNeverShowsSyncOrCollapseAndKeepsTheirValues) {
    auto field = choiceField(true);
    field->syncField = true;
    field->collapseNoValue = true;
    EXPECT_JOURNAL_PASSES(show(field, R"J(
  expect visible SYNC_FIELD no
  expect visible COLLAPSENOVALUE no
  expect visible BROADCAST_VALUE_TYPE yes
  expect sensitive TYPE[3] no
  expect sensitive TYPE[4] no
  expect sensitive TYPE[5] no
  expect sensitive TYPE[2] yes
  choose TYPE 0
  expect visible SYNC_FIELD no
  expect visible COLLAPSENOVALUE no
  choose TYPE 2
  expect visible SYNC_FIELD no
  ok
)J"));
    EXPECT_EQ(response, NXOpen::UIStyler::DialogResponseOk);
    EXPECT_TRUE(field->syncField);
    EXPECT_TRUE(field->collapseNoValue);
    EXPECT_EQ(field->type, 2);
}

// A block field never shows the broadcast value type, yet OK writes whatever that hidden menu
// holds. Intended: hidden controls are written as they are.
TEST_F(FieldDialogTest, BlockFieldNeverShowsBroadcastValueTypeButOkWritesItsHiddenValue) {
    auto field = boost::make_shared<Field>();
    field->id = "TITLE";
    field->broadcastValueType = 2;
    EXPECT_JOURNAL_PASSES(show(field, R"J(
  expect visible BROADCAST_VALUE_TYPE no
  expect index BROADCAST_VALUE_TYPE 2
  choose TYPE 1
  expect visible BROADCAST_VALUE_TYPE no
  choose TYPE 0
  expect visible BROADCAST_VALUE_TYPE no
  ok
)J",
                               std::vector<std::string>{"TITLE"}));
    EXPECT_EQ(field->broadcastValueType, 2);
}

TEST_F(FieldDialogTest, RowTypeFieldOffersOnlyNoneSoOkLeavesSecondLanguageEmpty) {
    auto field = choiceField(true);
    field->secondLanguageFieldId = "STALE";
    EXPECT_JOURNAL_PASSES(show(field, R"J(
  expect items SEC_LANG_FIELD ["None"]
  expect value SEC_LANG_FIELD "None"
  expect visible CONTROLLED_SETTINGS yes
  ok
)J"));
    EXPECT_TRUE(nxsim::shownMessages().empty());
    EXPECT_EQ(field->secondLanguageFieldId, "");
}

TEST_F(FieldDialogTest, BlockFieldOffersTheLayoutsFieldsThenNoneAndShowsItsPartner) {
    auto field = boost::make_shared<Field>();
    field->id = "TITLE";
    field->secondLanguageFieldId = "TITLE2";
    EXPECT_JOURNAL_PASSES(show(field, R"J(
  expect items SEC_LANG_FIELD ["TITLE", "TITLE2", "None"]
  expect value SEC_LANG_FIELD "TITLE2"
  ok
)J",
                               std::vector<std::string>{"TITLE", "TITLE2"}));
    EXPECT_EQ(field->secondLanguageFieldId, "TITLE2");
}

TEST_F(FieldDialogTest, SelectingNoneOnABlockFieldClearsItsSecondLanguageField) {
    auto field = boost::make_shared<Field>();
    field->id = "TITLE";
    field->secondLanguageFieldId = "TITLE2";
    EXPECT_JOURNAL_PASSES(show(field, R"J(
  choose SEC_LANG_FIELD "None"
  ok
)J",
                               std::vector<std::string>{"TITLE", "TITLE2"}));
    EXPECT_EQ(field->secondLanguageFieldId, "");
}

// A block field without a partner opens on "None", so that OK does not give it the first field
// offered as a partner.
TEST_F(FieldDialogTest, BlockFieldWithoutPartnerShowsNoneAndKeepsNoPartner) {
    auto field = boost::make_shared<Field>();
    field->id = "TITLE";
    EXPECT_JOURNAL_PASSES(show(field, R"J(
  expect value SEC_LANG_FIELD "None"
  ok
)J",
                               std::vector<std::string>{"TITLE", "TITLE2"}));
    EXPECT_EQ(field->secondLanguageFieldId, "");
}

// A partner that is not among the layout's fields is not offered: the menu shows "None", with
// no message, and OK stores no partner.
TEST_F(FieldDialogTest, BlockFieldWhosePartnerIsNoFieldOfTheLayoutShowsNone) {
    auto field = boost::make_shared<Field>();
    field->id = "TITLE";
    field->secondLanguageFieldId = "GONE";
    EXPECT_JOURNAL_PASSES(show(field, R"J(
  expect value SEC_LANG_FIELD "None"
  expect visible DEFAULT_STRING yes
  ok
)J",
                               std::vector<std::string>{"TITLE", "TITLE2"}));
    EXPECT_TRUE(nxsim::shownMessages().empty());
    EXPECT_EQ(field->secondLanguageFieldId, "");
}

TEST_F(FieldDialogTest, IdIsWrittenAsTypedWithoutAnyCheckOfItsCharacters) {
    auto field = boost::make_shared<Field>();
    field->id = "OLD";
    EXPECT_JOURNAL_PASSES(show(field, R"J(
  set ID "new id_with blanks"
  ok
)J",
                               std::vector<std::string>{"OLD"}));
    EXPECT_EQ(field->id, "new id_with blanks");
}

} // namespace
