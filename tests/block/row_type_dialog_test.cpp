// The row type dialog alone, shown by the test on a row type of a block layout built here, end to
// end through its resource file and the field dialog's.

#include "block/row_type_dialog.h"
#include "block/row_type_dialog_names.h"
#include "model/block_layout.h"
#include "model/definition_document.h"
#include "testutil/journal.h"
#include "testutil/temp_dir.h"

#include <nxsim/platform.h>
#include <uf.h>

#include <boost/make_shared.hpp>

#include <gtest/gtest.h>

namespace fs = boost::filesystem;
using QorBorder::BlockLayout;
using QorBorder::BlockStyle;
using QorBorder::Choice;
using QorBorder::Field;
using QorBorder::RowType;
using QorBorderConf::RowTypeDialog;
namespace Names = QorBorderConf::RowTypeDialogNames;

namespace {

boost::shared_ptr<Field> tableField(const std::string& id, int type = 0) {
    auto field = boost::make_shared<Field>(true);
    field->id = id;
    field->type = type;
    return field;
}

Choice choice(const std::string& key, const std::string& shortValue) {
    Choice result;
    result.lookupKey = key;
    result.shortValue = shortValue;
    result.fullValue = shortValue;
    return result;
}

/// The parts list's ITEM row: POS (key field), QTY, KIND (type manager, three choices), UNIT;
/// the input dialog shows POS and QTY; choices 0 and 1 of KIND have texts.
RowType itemRow() {
    RowType row;
    row.id = "ITEM";
    row.headerRow = 2;
    row.showBottomBorder = true;
    row.listSeparator = ",";
    row.appendField(tableField("POS"));
    row.appendField(tableField("QTY"));
    auto kind = tableField("KIND", 1);
    kind->setTextChoices(
        {choice("P", "Part"), choice("S", "Standard part"), choice("M", "Material")});
    row.appendField(kind);
    row.appendField(tableField("UNIT"));
    row.keyFieldId = "POS";
    row.typeManagerFieldId = "KIND";
    row.setDialogListFields({"POS", "QTY"});
    row.setValidSymbolIndices(0, "0 1");
    row.setDisabledFieldIds(0, "UNIT");
    row.setValidSymbolIndices(1, "2");
    return row;
}

class RowTypeDialogTest : public ::testing::Test {
protected:
    RowTypeDialogTest() {
        nxsim::reset();
        UF_initialize();
        layout->id = "PARTSLIST";
        auto style = boost::make_shared<BlockStyle>();
        style->id = "STD";
        for (const char* id : {"POS", "QTY", "KIND", "UNIT"}) {
            style->setTableColumn("ITEM", id, static_cast<int>(style->tableColumns().size()) + 1);
        }
        layout->addStyle(style);
        layout->getTable().addRowType(rowType);
    }
    ~RowTypeDialogTest() override { UF_terminate(); }

    /// Shows the dialog on `rowType` and `layout` while `journal` (the dialog's own lines, and
    /// those of the dialogs it opens) runs; returns its response.
    int show(const std::string& journal) {
        int response = -1;
        EXPECT_JOURNAL_PASSES(TestUtil::runJournal(
            std::string("run\ndialog ") + Names::kDialogName + "\n" + journal, [&] {
                RowTypeDialog dialog(rowType, layout);
                response = dialog.show();
            }));
        return response;
    }

    const BlockStyle& style() const { return *layout->styles().front(); }

    boost::shared_ptr<BlockLayout> layout = boost::make_shared<BlockLayout>();
    boost::shared_ptr<RowType> rowType = boost::make_shared<RowType>(itemRow());
};

TEST_F(RowTypeDialogTest, FillShowsTheRowTypeWithRoleMarkersAndTheFirstChoicesTexts) {
    show(R"J(
  expect value ID "ITEM"
  expect value HEADER_ROW 2
  expect value SHOW_BOTTOM_BORDER on
  expect value LIST_SEPARATOR ","
  expect items FIELD_LIST ["@ POS", "  QTY", "-   KIND", "  UNIT"]
  expect items DIALOGFIELDS_LIST ["POS", "QTY"]
  expect items DIALOGFIELDS_TO_ADD ["KIND", "UNIT"]
  expect items TYPE_MANAGER_CHOICE ["Part", "Standard part", "Material"]
  expect sensitive TYPE_MANAGER_CHOICE yes
  expect value VALID_SYMBOL_LIST "0 1"
  expect value DISABLED_FIELD_LIST "UNIT"
  expect sensitive EDIT_FIELD no
  expect sensitive SET_ZONE no
  cancel
)J");
}

TEST_F(RowTypeDialogTest, CopyingAFieldAddsItsIdFollowedByCopyAtOnce) {
    show(R"J(
  select FIELD_LIST 1
  press COPY_FIELD
  expect items FIELD_LIST ["@ POS", "  QTY", "-   KIND", "  UNIT", "  QTYcopy"]
  expect selected FIELD_LIST 1
  cancel
)J");
    // The copy goes into the row type at once and stays after Cancel: intended.
    ASSERT_EQ(rowType->fields().size(), 5u);
    EXPECT_EQ(rowType->fields().back()->id, "QTYcopy");
    EXPECT_TRUE(rowType->fields().back()->isTableField);
    EXPECT_TRUE(style().hasTableColumn("ITEM", "QTYcopy"));
}

// The buttons never let one field hold two roles; a field given several roles otherwise shows
// their markers in the order zone, type manager, key.
TEST_F(RowTypeDialogTest, RoleMarkersStandInFixedOrderAndTheButtonsKeepRolesApart) {
    show(R"J(
  select FIELD_LIST 0
  expect sensitive SET_ZONE no
  expect sensitive SET_TYPE_MANAGER no
  expect sensitive SET_KEY_FIELD yes
  select FIELD_LIST 1
  expect sensitive SET_ZONE yes
  expect sensitive SET_TYPE_MANAGER no
  press SET_ZONE
  expect items FIELD_LIST ["@ POS", "*   QTY", "-   KIND", "  UNIT"]
  expect sensitive SET_ZONE yes
  expect sensitive SET_KEY_FIELD no
  select FIELD_LIST 2
  expect sensitive SET_ZONE no
  expect sensitive SET_KEY_FIELD no
  expect sensitive SET_TYPE_MANAGER yes
  select FIELD_LIST 1
  press SET_ZONE
  expect items FIELD_LIST ["@ POS", "  QTY", "-   KIND", "  UNIT"]
  ok
)J");
    EXPECT_EQ(rowType->zoneFieldId, "");

    rowType->zoneFieldId = "KIND";
    rowType->keyFieldId = "KIND";
    show(R"J(
  expect items FIELD_LIST ["  POS", "  QTY", "* - @ KIND", "  UNIT"]
  cancel
)J");
}

TEST_F(RowTypeDialogTest, WithoutATypeManagerOfTypeOneTheMenuReadsNoChoicesAndTheBoxesAreEmpty) {
    rowType->typeManagerFieldId.clear();
    show(R"J(
  expect items TYPE_MANAGER_CHOICE ["No Choices"]
  expect value VALID_SYMBOL_LIST ""
  expect value DISABLED_FIELD_LIST ""
  expect sensitive TYPE_MANAGER_CHOICE no
  expect sensitive VALID_SYMBOL_LIST no
  expect sensitive DISABLED_FIELD_LIST no
  select FIELD_LIST 0
  expect sensitive SET_TYPE_MANAGER no
  select FIELD_LIST 2
  expect sensitive SET_TYPE_MANAGER yes
  press SET_TYPE_MANAGER
  expect items FIELD_LIST ["@ POS", "  QTY", "-   KIND", "  UNIT"]
  expect items TYPE_MANAGER_CHOICE ["Part", "Standard part", "Material"]
  expect sensitive TYPE_MANAGER_CHOICE yes
  expect value VALID_SYMBOL_LIST ""
  press SET_TYPE_MANAGER
  expect items TYPE_MANAGER_CHOICE ["No Choices"]
  expect sensitive VALID_SYMBOL_LIST no
  cancel
)J");

    // A type manager field without choices.
    rowType = boost::make_shared<RowType>(itemRow());
    rowType->getField(2)->setTextChoices({});
    show(R"J(
  expect items TYPE_MANAGER_CHOICE ["No Choices"]
  expect value VALID_SYMBOL_LIST "0 1"
  cancel
)J");
}

// Renaming the key field in the field dialog renames it in the row type and its styles at once,
// but the dialog keeps its own copy of the roles: the marker disappears and OK stores the old ID
// as key field. Intended.
TEST_F(RowTypeDialogTest, RenamingAFieldThatHoldsARoleDropsItsMarkerAndOkStoresTheOldId) {
    show(R"J(
  select FIELD_LIST 0
  press EDIT_FIELD
    dialog qorborder_config_field
    expect value ID "POS"
    set ID "ITEMNO"
    ok
  expect items FIELD_LIST ["  ITEMNO", "  QTY", "-   KIND", "  UNIT"]
  expect items DIALOGFIELDS_LIST ["POS", "QTY"]
  ok
)J");
    EXPECT_EQ(rowType->fields().front()->id, "ITEMNO");
    EXPECT_EQ(rowType->keyFieldId, "POS");
    EXPECT_EQ(rowType->dialogListFields(), (std::vector<std::string>{"POS", "QTY"}));
    EXPECT_FALSE(style().hasTableColumn("ITEM", "POS"));
    EXPECT_EQ(style().getTableColumn("ITEM", "ITEMNO"), 1);
}

TEST_F(RowTypeDialogTest, EditingAFieldWithoutChangingItsIdOrCancellingRenamesNothing) {
    show(R"J(
  select FIELD_LIST 1
  press EDIT_FIELD
    dialog qorborder_config_field
    set ID "AMOUNT"
    cancel
  expect items FIELD_LIST ["@ POS", "  QTY", "-   KIND", "  UNIT"]
  select FIELD_LIST 1
  press EDIT_FIELD
    dialog qorborder_config_field
    set PREFIX "x"
    ok
  cancel
)J");
    EXPECT_EQ(rowType->fields()[1]->id, "QTY");
    EXPECT_EQ(rowType->fields()[1]->prefix, "x");
    EXPECT_EQ(style().getTableColumn("ITEM", "QTY"), 2);
}

TEST_F(RowTypeDialogTest, AddedFieldIsATableFieldAddedOnOkOnly) {
    show(R"J(
  press ADD_FIELD
    dialog qorborder_config_field
    set ID "MAT"
    cancel
  expect items FIELD_LIST ["@ POS", "  QTY", "-   KIND", "  UNIT"]
  press ADD_FIELD
    dialog qorborder_config_field
    set ID "MAT"
    ok
  expect items FIELD_LIST ["@ POS", "  QTY", "-   KIND", "  UNIT", "  MAT"]
  expect items DIALOGFIELDS_TO_ADD ["KIND", "MAT", "UNIT"]
  cancel
)J");
    ASSERT_EQ(rowType->fields().size(), 5u);
    EXPECT_TRUE(rowType->fields().back()->isTableField);
    EXPECT_TRUE(style().hasTableColumn("ITEM", "MAT"));
}

TEST_F(RowTypeDialogTest, DeletingAFieldRemovesItAtOnceWithItsStyleEntries) {
    show(R"J(
  select FIELD_LIST 3
  press DELETE_FIELD
  expect items FIELD_LIST ["@ POS", "  QTY", "-   KIND"]
  expect selected FIELD_LIST -1
  expect sensitive DELETE_FIELD no
  select FIELD_LIST 1
  press DELETE_FIELD
  expect items FIELD_LIST ["@ POS", "-   KIND"]
  expect selected FIELD_LIST 1
  cancel
)J");
    ASSERT_EQ(rowType->fields().size(), 2u);
    EXPECT_FALSE(style().hasTableColumn("ITEM", "UNIT"));
    EXPECT_FALSE(style().hasTableColumn("ITEM", "QTY"));
}

TEST_F(RowTypeDialogTest, WithEveryFieldInTheInputDialogListTheMenuHoldsOnlyNone) {
    show(R"J(
  expect sensitive ADD_DIALOGFIELD yes
  press ADD_DIALOGFIELD
  expect items DIALOGFIELDS_LIST ["POS", "QTY", "KIND"]
  expect items DIALOGFIELDS_TO_ADD ["UNIT"]
  press ADD_DIALOGFIELD
  expect items DIALOGFIELDS_TO_ADD ["None"]
  expect sensitive ADD_DIALOGFIELD no
  ok
)J");
    EXPECT_EQ(rowType->dialogListFields(),
              (std::vector<std::string>{"POS", "QTY", "KIND", "UNIT"}));
}

// The delete handler has always cleared the list before reading its selection and rows, relying
// on a list that still reports them afterwards. Our list forgets them on ClearList, so the
// handler reads them first: the selected entry, and only it, goes.
TEST_F(RowTypeDialogTest, DeletingAnInputDialogFieldRemovesTheSelectedEntryThoughClearListForgets) {
    rowType->setDialogListFields({"POS", "QTY", "KIND"});
    show(R"J(
  expect sensitive DELETE_DIALOGFIELD no
  select DIALOGFIELDS_LIST 1
  press DELETE_DIALOGFIELD
  expect items DIALOGFIELDS_LIST ["POS", "KIND"]
  expect items DIALOGFIELDS_TO_ADD ["QTY", "UNIT"]
  expect selected DIALOGFIELDS_LIST -1
  ok
)J");
    EXPECT_EQ(rowType->dialogListFields(), (std::vector<std::string>{"POS", "KIND"}));
}

TEST_F(RowTypeDialogTest, MovingAnInputDialogFieldKeepsItSelected) {
    rowType->setDialogListFields({"POS", "QTY", "KIND"});
    show(R"J(
  select DIALOGFIELDS_LIST 0
  expect sensitive MOVEUP_DIALOGFIELD no
  expect sensitive MOVEDOWN_DIALOGFIELD yes
  press MOVEDOWN_DIALOGFIELD
  expect items DIALOGFIELDS_LIST ["QTY", "POS", "KIND"]
  expect selected DIALOGFIELDS_LIST 1
  press MOVEDOWN_DIALOGFIELD
  expect selected DIALOGFIELDS_LIST 2
  expect sensitive MOVEDOWN_DIALOGFIELD no
  press MOVEUP_DIALOGFIELD
  expect items DIALOGFIELDS_LIST ["QTY", "POS", "KIND"]
  expect selected DIALOGFIELDS_LIST 1
  ok
)J");
    EXPECT_EQ(rowType->dialogListFields(), (std::vector<std::string>{"QTY", "POS", "KIND"}));
}

// The texts of a type manager choice go into the row type when another choice is shown, and
// stay after Cancel; "SET_TYPE_MANAGER" drops them all at once. Intended.
TEST_F(RowTypeDialogTest, ChoiceTextsAreStoredAtEachChangeOfChoiceAndSurviveCancel) {
    show(R"J(
  set VALID_SYMBOL_LIST "0"
  choose TYPE_MANAGER_CHOICE "Standard part"
  expect value VALID_SYMBOL_LIST "2"
  expect value DISABLED_FIELD_LIST ""
  set DISABLED_FIELD_LIST "QTY UNIT"
  choose TYPE_MANAGER_CHOICE 2
  expect value VALID_SYMBOL_LIST ""
  set VALID_SYMBOL_LIST "3"
  cancel
)J");
    EXPECT_EQ(rowType->validSymbolIndices(0), "0");
    EXPECT_EQ(rowType->disabledFieldIds(1), "QTY UNIT");
    EXPECT_EQ(rowType->validSymbolIndices(2), "");

    show(R"J(
  select FIELD_LIST 2
  press SET_TYPE_MANAGER
  cancel
)J");
    EXPECT_TRUE(rowType->typeManagerSettings().empty());
    EXPECT_EQ(rowType->typeManagerFieldId, "KIND");
}

TEST_F(RowTypeDialogTest, EmptyIdOrOneWithAnUnderscoreIsRefusedAndNothingIsWritten) {
    EXPECT_EQ(show(R"J(
  set ID ""
  set HEADER_ROW 5
  ok
  message error "Validation Error" "ID must not be empty."
  expect focus ID
  set ID "ITEM_2"
  ok
  message error "Validation Error" "ID must not contain an underscore."
  expect focus ID
  expect value HEADER_ROW 5
  cancel
)J"),
              3);
    EXPECT_EQ(*rowType, itemRow());
}

TEST_F(RowTypeDialogTest, OkWritesEveryControl) {
    EXPECT_EQ(show(R"J(
  set ID "POSITION"
  set HEADER_ROW 1
  set SHOW_BOTTOM_BORDER off
  set LIST_SEPARATOR ";"
  select FIELD_LIST 0
  press SET_KEY_FIELD
  select FIELD_LIST 3
  press SET_KEY_FIELD
  select FIELD_LIST 1
  press SET_ZONE
  press ADD_DIALOGFIELD
  choose TYPE_MANAGER_CHOICE 1
  set VALID_SYMBOL_LIST "4 5"
  ok
)J"),
              2);
    RowType expected = itemRow();
    expected.id = "POSITION";
    expected.headerRow = 1;
    expected.showBottomBorder = false;
    expected.listSeparator = ";";
    expected.keyFieldId = "UNIT";
    expected.zoneFieldId = "QTY";
    expected.setDialogListFields({"POS", "QTY", "KIND"});
    expected.setValidSymbolIndices(1, "4 5");
    expected.setDisabledFieldIds(1, "");
    EXPECT_EQ(*rowType, expected);
}

TEST_F(RowTypeDialogTest, CancelWritesNothingOfTheRowTypesOwnSettings) {
    EXPECT_EQ(show(R"J(
  set ID "OTHER"
  set HEADER_ROW 9
  set SHOW_BOTTOM_BORDER off
  set LIST_SEPARATOR "/"
  select FIELD_LIST 1
  press SET_ZONE
  select FIELD_LIST 0
  press SET_KEY_FIELD
  press ADD_DIALOGFIELD
  select DIALOGFIELDS_LIST 0
  press DELETE_DIALOGFIELD
  cancel
)J"),
              3);
    EXPECT_EQ(*rowType, itemRow());
}

TEST_F(RowTypeDialogTest, RowTypeEditedAndSavedReadsBackEqual) {
    show(R"J(
  set ID "POSITION"
  set LIST_SEPARATOR ";"
  press ADD_FIELD
    dialog qorborder_config_field
    set ID "MAT"
    ok
  select FIELD_LIST 4
  press SET_ZONE
  press ADD_DIALOGFIELD
  choose TYPE_MANAGER_CHOICE 2
  set DISABLED_FIELD_LIST "MAT"
  ok
)J");
    layout->rowTypeRenamed(0, "ITEM");
    TestUtil::TempDir dir;
    const fs::path file = dir.path() / "blocks.fordef";
    QorBorder::DefinitionDocument document("");
    document.addBlockLayout(layout);
    document.save(file);

    const auto reread = QorBorder::DefinitionDocument::load(file)->getBlockLayout("PARTSLIST");
    ASSERT_TRUE(reread);
    ASSERT_EQ(reread->getTable().rowTypes().size(), 1u);
    EXPECT_EQ(*reread->getTable().rowTypes().front(), *rowType);
    EXPECT_EQ(reread->getTable().rowTypes().front()->zoneFieldId, "MAT");
    EXPECT_EQ(*reread->styles().front(), style());
}

} // namespace
