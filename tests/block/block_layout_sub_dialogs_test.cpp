// The block layout dialog's style, row type and symbol type buttons, end to end: the block
// layout dialog opens the block style, row type and symbol type dialogs through their resource
// files, and adds, keeps or drops what they edited.

#include "block/block_layout_dialog.h"
#include "model/block_layout.h"
#include "testutil/journal.h"

#include <nxsim/platform.h>
#include <uf.h>

#include <boost/make_shared.hpp>

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace QorBorder;

boost::shared_ptr<Field> makeField(const std::string& id, bool tableField) {
    auto field = boost::make_shared<Field>(tableField);
    field->id = id;
    return field;
}

/// A parts list: field TITLE; row types ITEM (POS, QTY) and HEADER (HPOS); style STD with
/// columns for every table field; no symbol type.
boost::shared_ptr<BlockLayout> partsList() {
    auto layout = boost::make_shared<BlockLayout>();
    layout->id = "PL";
    layout->addField(makeField("TITLE", false));
    auto style = boost::make_shared<BlockStyle>();
    style->id = "STD";
    style->setRow("TITLE", 1);
    style->setTableColumn("ITEM", "POS", 1);
    style->setTableColumn("ITEM", "QTY", 2);
    style->setTableColumn("HEADER", "HPOS", 1);
    layout->addStyle(style);
    layout->defaultStyleId = "STD";
    auto item = boost::make_shared<RowType>();
    item->id = "ITEM";
    item->appendField(makeField("POS", true));
    item->appendField(makeField("QTY", true));
    item->keyFieldId = "POS";
    layout->getTable().addRowType(item);
    auto header = boost::make_shared<RowType>();
    header->id = "HEADER";
    header->appendField(makeField("HPOS", true));
    layout->getTable().addRowType(header);
    return layout;
}

class BlockLayoutSubDialogs : public ::testing::Test {
protected:
    BlockLayoutSubDialogs() {
        nxsim::reset();
        UF_initialize();
    }
    ~BlockLayoutSubDialogs() override { UF_terminate(); }

    /// Shows the block layout dialog on `layout` (an existing one) while `journal` runs.
    void show(const std::string& journal) {
        EXPECT_JOURNAL_PASSES(
            TestUtil::runJournal("run\ndialog qorborder_config_block\n" + journal, [&] {
                QorBorderConf::BlockLayoutDialog dialog(layout, true);
                dialog.show();
            }));
    }

    const BlockStyle& style(int index) const { return *layout->styles().at(index); }

    boost::shared_ptr<BlockLayout> layout = partsList();
};

TEST_F(BlockLayoutSubDialogs, AddStyleAddsTheNewStyleOnOkOnly) {
    show(R"J(
  press ADD_STYLE
    dialog qorborder_config_block_style
    set ID "WIDE"
    cancel
  expect items STYLES ["* STD"]
  press ADD_STYLE
    dialog qorborder_config_block_style
    expect value ID ""
    expect items ROW_TYPE ["ITEM", "HEADER"]
    expect sensitive TEMPLATE_TYPE[1] no
    set ID "WIDE"
    set TEMPLATE_FILE "wide.prt"
    ok
  expect items STYLES ["* STD", "  WIDE"]
  cancel
)J");
    ASSERT_EQ(layout->styles().size(), 2u);
    EXPECT_EQ(style(1).id, "WIDE");
    EXPECT_EQ(style(1).templateFile, "wide.prt");
    // The placements of the keys shown when OK was pressed.
    EXPECT_TRUE(style(1).hasPlacement("TITLE"));
    EXPECT_TRUE(style(1).hasTableColumn("ITEM", "POS"));
}

// The copy keeps its source's ID, and the style dialog does not refuse it. Intended.
TEST_F(BlockLayoutSubDialogs, CopyStyleOpensTheCopyWithItsSourcesIdAndAddsItOnOk) {
    show(R"J(
  select STYLES 0
  press COPY_STYLE
    dialog qorborder_config_block_style
    expect value ID "STD"
    expect value ROW_LOC 1
    set ROW_LOC 4
    ok
  expect items STYLES ["* STD", "* STD"]
  cancel
)J");
    ASSERT_EQ(layout->styles().size(), 2u);
    EXPECT_EQ(style(0).getRow("TITLE"), 1);
    EXPECT_EQ(style(1).getRow("TITLE"), 4);
    EXPECT_EQ(style(1).getTableColumn("HEADER", "HPOS"), 1);
}

// Editing an existing style and cancelling keeps what the dialog stored when the user switched
// from one key to another. Intended.
TEST_F(BlockLayoutSubDialogs, EditStyleCancelledKeepsTheValuesStoredAtEachSwitch) {
    show(R"J(
  select STYLES 0
  press EDIT_STYLE
    dialog qorborder_config_block_style
    set ID "CHANGED"
    set TABLE_FIELD_COLUMN 5
    choose TABLE_FIELD "QTY"
    cancel
  expect items STYLES ["* STD"]
  cancel
)J");
    EXPECT_EQ(style(0).id, "STD");
    EXPECT_EQ(style(0).getTableColumn("ITEM", "POS"), 5);
}

TEST_F(BlockLayoutSubDialogs, AddRowTypeAddsTheNewRowTypeOnOkOnly) {
    show(R"J(
  press ADD_ROWTYPE
    dialog qorborder_config_row_type
    set ID "NOTE"
    cancel
  expect items ROWTYPES ["ITEM", "HEADER"]
  press ADD_ROWTYPE
    dialog qorborder_config_row_type
    set ID "NOTE"
    press ADD_FIELD
      dialog qorborder_config_field
      set ID "TEXT"
      ok
    ok
  expect items ROWTYPES ["ITEM", "HEADER", "NOTE"]
  cancel
)J");
    ASSERT_EQ(layout->getTable().rowTypes().size(), 3u);
    EXPECT_EQ(layout->tableFieldIds("NOTE"), (std::vector<std::string>{"TEXT"}));
}

TEST_F(BlockLayoutSubDialogs, RowTypeRenamedMovesTheStylesTableColumns) {
    show(R"J(
  select ROWTYPES 0
  press EDIT_ROWTYPE
    dialog qorborder_config_row_type
    expect items FIELD_LIST ["@ POS", "  QTY"]
    set ID "POSITION"
    ok
  expect items ROWTYPES ["POSITION", "HEADER"]
  ok
)J");
    EXPECT_EQ(style(0).getTableColumn("POSITION", "QTY"), 2);
    EXPECT_FALSE(style(0).hasTableColumn("ITEM", "QTY"));
}

// A field renamed in the row type dialog goes through the row type's rename with the layout's
// styles, at once: also when the row type dialog is then cancelled.
TEST_F(BlockLayoutSubDialogs, FieldRenamedInTheRowTypeDialogReachesTheLayoutsStyles) {
    show(R"J(
  select ROWTYPES 0
  press EDIT_ROWTYPE
    dialog qorborder_config_row_type
    select FIELD_LIST 1
    press EDIT_FIELD
      dialog qorborder_config_field
      set ID "AMOUNT"
      ok
    cancel
  cancel
)J");
    EXPECT_EQ(layout->tableFieldIds("ITEM"), (std::vector<std::string>{"POS", "AMOUNT"}));
    EXPECT_EQ(style(0).getTableColumn("ITEM", "AMOUNT"), 2);
    EXPECT_FALSE(style(0).hasTableColumn("ITEM", "QTY"));
}

// The symbol type dialog always offers the first row type's fields, whichever row type is
// selected. Intended.
TEST_F(BlockLayoutSubDialogs, SymbolTypeDialogOffersTheFirstRowTypesFieldsWhicheverIsSelected) {
    show(R"J(
  select ROWTYPES 1
  press ADD_SYMBOLTYPE
    dialog qorborder_config_symbol_type
    expect items LINE1FIELDS_TO_ADD ["POS", "QTY"]
    set DIALOG_TEXT "Balloon"
    cancel
  expect items SYMBOLTYPES []
  press ADD_SYMBOLTYPE
    dialog qorborder_config_symbol_type
    set DIALOG_TEXT "Balloon"
    press ADD_LINE1FIELD
    ok
  expect items SYMBOLTYPES ["Balloon"]
  select SYMBOLTYPES 0
  press EDIT_SYMBOLTYPE
    dialog qorborder_config_symbol_type
    expect items LINE1FIELDS_LIST ["POS"]
    set DIALOG_TEXT "Item balloon"
    ok
  expect items SYMBOLTYPES ["Item balloon"]
  cancel
)J");
    ASSERT_EQ(layout->symbolTypesNames(), (std::vector<std::string>{"Item balloon"}));
    EXPECT_EQ(layout->getSymbolType(0)->line1FieldIds, (std::vector<std::string>{"POS"}));
}

} // namespace
