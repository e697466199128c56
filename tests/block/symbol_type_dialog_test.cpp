// The symbol type dialog alone, shown by the test on a symbol type built here, end to end
// through its resource file.

#include "block/symbol_type_dialog.h"
#include "block/symbol_type_dialog_names.h"
#include "model/block_layout.h"
#include "model/definition_document.h"
#include "model/symbol_type.h"
#include "testutil/journal.h"
#include "testutil/temp_dir.h"

#include <nxsim/platform.h>
#include <uf.h>

#include <boost/make_shared.hpp>

#include <gtest/gtest.h>

using QorBorder::SymbolType;
using QorBorderConf::SymbolTypeDialog;
namespace Names = QorBorderConf::SymbolTypeDialogNames;

namespace {

SymbolType balloon() {
    SymbolType symbol;
    symbol.dialogText = "Item balloon";
    symbol.type = 0;
    symbol.color = 186;
    symbol.layer = 230;
    symbol.line1FieldIds = {"POS"};
    symbol.line2FieldIds = {"QTY", "POS"};
    symbol.fontName = "blockfont";
    symbol.symbolSize = 10;
    symbol.textSize = 3.5;
    symbol.textAspect = 0.8;
    symbol.line1Scale = 1;
    symbol.line2Scale = 0.7;
    symbol.customSymbolName = "";
    return symbol;
}

class SymbolTypeDialogTest : public ::testing::Test {
protected:
    SymbolTypeDialogTest() {
        nxsim::reset();
        UF_initialize();
    }
    ~SymbolTypeDialogTest() override { UF_terminate(); }

    /// Shows the dialog on `symbol` offering `fieldIds` while `journal` (the dialog's own lines)
    /// runs; returns its response.
    int show(const std::string& journal) {
        int response = -1;
        EXPECT_JOURNAL_PASSES(TestUtil::runJournal(
            std::string("run\ndialog ") + Names::kDialogName + "\n" + journal, [&] {
                SymbolTypeDialog dialog(symbol, fieldIds);
                response = dialog.show();
            }));
        return response;
    }

    boost::shared_ptr<SymbolType> symbol = boost::make_shared<SymbolType>(balloon());
    std::vector<std::string> fieldIds{"QTY", "POS", "MAT", "DESC"};
};

TEST_F(SymbolTypeDialogTest, FillShowsEveryMemberAndTheSortedAddMenus) {
    show(R"J(
  expect value DIALOG_TEXT "Item balloon"
  expect index TYPE 0
  expect value COLOR 186
  expect value LAYER 230
  expect value FONTNAME "blockfont"
  expect value SYMBOLSIZE 10
  expect value TEXTSIZE 3.5
  expect value TEXTASPECT 0.8
  expect value LINE1_SCALE 1
  expect value LINE2_SCALE 0.7
  expect value CUSTOMSYMBOLNAME ""
  expect items LINE1FIELDS_LIST ["POS"]
  expect items LINE2FIELDS_LIST ["QTY", "POS"]
  expect items LINE1FIELDS_TO_ADD ["DESC", "MAT", "QTY"]
  expect items LINE2FIELDS_TO_ADD ["DESC", "MAT"]
  expect visible IDSYMBOL_GROUP yes
  expect visible LINE2FIELDS_GROUP yes
  expect visible CUSTOMSYMBOL_GROUP no
  expect sensitive DELETE_LINE1FIELD no
  cancel
)J");
}

TEST_F(SymbolTypeDialogTest, EveryOfferedFieldOnLineOneLeavesNoneAndAddInsensitive) {
    show(R"J(
  expect sensitive ADD_LINE1FIELD yes
  choose LINE1FIELDS_TO_ADD "QTY"
  press ADD_LINE1FIELD
  expect items LINE1FIELDS_TO_ADD ["DESC", "MAT"]
  press ADD_LINE1FIELD
  press ADD_LINE1FIELD
  expect items LINE1FIELDS_LIST ["POS", "QTY", "DESC", "MAT"]
  expect items LINE1FIELDS_TO_ADD ["None"]
  expect sensitive ADD_LINE1FIELD no
  expect items LINE2FIELDS_TO_ADD ["DESC", "MAT"]
  expect sensitive ADD_LINE2FIELD yes
  ok
)J");
    EXPECT_EQ(symbol->line1FieldIds, (std::vector<std::string>{"POS", "QTY", "DESC", "MAT"}));
}

TEST_F(SymbolTypeDialogTest, SwitchingTypeToCustomAndBackKeepsTheLineLists) {
    show(R"J(
  choose TYPE 1
  expect visible IDSYMBOL_GROUP no
  expect visible LINE2FIELDS_GROUP no
  expect visible CUSTOMSYMBOL_GROUP yes
  set CUSTOMSYMBOLNAME "std_part_flag"
  choose TYPE 0
  expect visible IDSYMBOL_GROUP yes
  expect visible LINE2FIELDS_GROUP yes
  expect visible CUSTOMSYMBOL_GROUP no
  expect items LINE1FIELDS_LIST ["POS"]
  expect items LINE2FIELDS_LIST ["QTY", "POS"]
  choose TYPE 1
  ok
)J");
    // The hidden group's values are written too.
    EXPECT_EQ(symbol->type, 1);
    EXPECT_EQ(symbol->customSymbolName, "std_part_flag");
    EXPECT_EQ(symbol->line2FieldIds, (std::vector<std::string>{"QTY", "POS"}));
    EXPECT_EQ(symbol->fontName, "blockfont");
}

// "MOVEUP_LINE1FIELD" is sensitive when the add menu's current entry is its second or later,
// whatever the list's selection: with the first entry of the list selected it can be pressed and
// moves nothing, and with a later one selected it stays insensitive while the menu shows its
// first entry. Intended.
TEST_F(SymbolTypeDialogTest, MoveUpFollowsTheAddMenusSelectionNotTheLists) {
    symbol->line1FieldIds = {"POS", "QTY"};
    show(R"J(
  expect items LINE1FIELDS_TO_ADD ["DESC", "MAT"]
  expect sensitive MOVEUP_LINE1FIELD no
  select LINE1FIELDS_LIST 1
  expect sensitive MOVEUP_LINE1FIELD no
  choose LINE1FIELDS_TO_ADD "MAT"
  expect sensitive MOVEUP_LINE1FIELD yes
  select LINE1FIELDS_LIST 0
  expect sensitive MOVEUP_LINE1FIELD yes
  press MOVEUP_LINE1FIELD
  expect items LINE1FIELDS_LIST ["POS", "QTY"]
  select LINE1FIELDS_LIST 1
  press MOVEUP_LINE1FIELD
  expect items LINE1FIELDS_LIST ["QTY", "POS"]
  expect selected LINE1FIELDS_LIST 0
  ok
)J");
    EXPECT_EQ(symbol->line1FieldIds, (std::vector<std::string>{"QTY", "POS"}));
}

TEST_F(SymbolTypeDialogTest, MoveDownAndDeleteWorkOnTheListsSelection) {
    show(R"J(
  select LINE2FIELDS_LIST 0
  expect sensitive MOVEDOWN_LINE2FIELD yes
  press MOVEDOWN_LINE2FIELD
  expect items LINE2FIELDS_LIST ["POS", "QTY"]
  expect selected LINE2FIELDS_LIST 1
  expect sensitive MOVEDOWN_LINE2FIELD no
  expect sensitive DELETE_LINE2FIELD yes
  press DELETE_LINE2FIELD
  expect items LINE2FIELDS_LIST ["POS"]
  expect items LINE2FIELDS_TO_ADD ["DESC", "MAT", "QTY"]
  expect sensitive DELETE_LINE2FIELD no
  ok
)J");
    EXPECT_EQ(symbol->line2FieldIds, (std::vector<std::string>{"POS"}));
}

TEST_F(SymbolTypeDialogTest, EmptyDialogTextIsRefusedAndNothingIsWritten) {
    EXPECT_EQ(show(R"J(
  set DIALOG_TEXT ""
  set LAYER 12
  ok
  message error "Validation Error" "Dialog text must not be empty."
  expect focus DIALOG_TEXT
  expect value LAYER 12
  cancel
)J"),
              3);
    EXPECT_EQ(*symbol, balloon());
}

TEST_F(SymbolTypeDialogTest, OkWritesEveryControl) {
    EXPECT_EQ(show(R"J(
  set DIALOG_TEXT "Flag"
  choose TYPE 1
  set COLOR 6
  set LAYER 231
  set SYMBOLSIZE 12
  set CUSTOMSYMBOLNAME "flag"
  choose TYPE 0
  set FONTNAME "iso"
  set TEXTSIZE 2.5
  set TEXTASPECT 1.2
  set LINE1_SCALE 0.9
  set LINE2_SCALE 0.5
  choose LINE1FIELDS_TO_ADD "MAT"
  press ADD_LINE1FIELD
  select LINE2FIELDS_LIST 1
  press DELETE_LINE2FIELD
  ok
)J"),
              2);
    SymbolType expected;
    expected.dialogText = "Flag";
    expected.type = 0;
    expected.color = 6;
    expected.layer = 231;
    expected.line1FieldIds = {"POS", "MAT"};
    expected.line2FieldIds = {"QTY"};
    expected.fontName = "iso";
    expected.symbolSize = 12;
    expected.textSize = 2.5;
    expected.textAspect = 1.2;
    expected.line1Scale = 0.9;
    expected.line2Scale = 0.5;
    expected.customSymbolName = "flag";
    EXPECT_EQ(*symbol, expected);
}

TEST_F(SymbolTypeDialogTest, CancelWritesNothing) {
    EXPECT_EQ(show(R"J(
  set DIALOG_TEXT "Flag"
  set LAYER 1
  choose LINE1FIELDS_TO_ADD "MAT"
  press ADD_LINE1FIELD
  select LINE2FIELDS_LIST 0
  press DELETE_LINE2FIELD
  choose TYPE 1
  cancel
)J"),
              3);
    EXPECT_EQ(*symbol, balloon());
}

TEST_F(SymbolTypeDialogTest, NoOfferedFieldsLeavesOnlyNoneOnBothLines) {
    fieldIds.clear();
    symbol = boost::make_shared<SymbolType>();
    show(R"J(
  expect items LINE1FIELDS_TO_ADD ["None"]
  expect items LINE2FIELDS_TO_ADD ["None"]
  expect sensitive ADD_LINE1FIELD no
  expect sensitive ADD_LINE2FIELD no
  expect sensitive MOVEDOWN_LINE1FIELD no
  cancel
)J");
}

TEST_F(SymbolTypeDialogTest, SymbolTypeEditedAndSavedReadsBackEqual) {
    show(R"J(
  set DIALOG_TEXT "Balloon with material"
  set TEXTASPECT 0.9
  choose LINE2FIELDS_TO_ADD "MAT"
  press ADD_LINE2FIELD
  select LINE2FIELDS_LIST 0
  press MOVEDOWN_LINE2FIELD
  ok
)J");
    auto layout = boost::make_shared<QorBorder::BlockLayout>();
    layout->id = "PL";
    layout->addSymbolType(symbol);
    TestUtil::TempDir dir;
    const boost::filesystem::path file = dir.path() / "blocks.fordef";
    QorBorder::DefinitionDocument document("");
    document.addBlockLayout(layout);
    document.save(file);

    const auto reread = QorBorder::DefinitionDocument::load(file)->getBlockLayout("PL");
    ASSERT_TRUE(reread);
    ASSERT_EQ(reread->symbolTypes().size(), 1u);
    EXPECT_EQ(*reread->symbolTypes().front(), *symbol);
    EXPECT_EQ(reread->symbolTypes().front()->line2FieldIds,
              (std::vector<std::string>{"POS", "QTY", "MAT"}));
}

} // namespace
