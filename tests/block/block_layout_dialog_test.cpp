#include "block/block_layout_dialog.h"

#include "model/block_layout.h"
#include "model/def_document_manager.h"
#include "model/definition_document.h"
#include "testutil/journal.h"
#include "testutil/temp_dir.h"

#include <nxsim/platform.h>
#include <uf.h>

#include <boost/make_shared.hpp>

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace QorBorder;

boost::shared_ptr<BlockStyle> makeStyle(const std::string& id, int templateType = 0) {
    auto style = boost::make_shared<BlockStyle>();
    style->id = id;
    style->templateType = templateType;
    return style;
}

boost::shared_ptr<Field> makeField(const std::string& id) {
    auto field = boost::make_shared<Field>();
    field->id = id;
    return field;
}

boost::shared_ptr<RowType> makeRowType(const std::string& id) {
    auto rowType = boost::make_shared<RowType>();
    rowType->id = id;
    return rowType;
}

boost::shared_ptr<SymbolType> makeSymbolType(const std::string& name) {
    auto symbolType = boost::make_shared<SymbolType>();
    symbolType->dialogText = name;
    return symbolType;
}

class BlockLayoutDialogTest : public ::testing::Test {
protected:
    BlockLayoutDialogTest() {
        nxsim::reset();
        UF_initialize();
    }
    ~BlockLayoutDialogTest() override { UF_terminate(); }

    /// A title block with two styles (S2 the default), three fields, one row type and one
    /// symbol type.
    static boost::shared_ptr<BlockLayout> titleBlock() {
        auto layout = boost::make_shared<BlockLayout>();
        layout->id = "TB";
        layout->description = "Title block";
        layout->category = "Title blocks";
        layout->units = Millimeters;
        layout->layer = 251;
        layout->dialogFileName = "tb.dlg";
        layout->delegateLibrary = "tb_lib";
        layout->setStyleDelegate = "tb_set_style";
        layout->editFieldsDelegate = "tb_edit_fields";
        layout->repeatSpacing = "12.5";
        layout->columnForRowNumber = 2;
        layout->sbfBase = 1;
        layout->sbfFileName = "tb.sbf";
        layout->angle = 90.0;
        layout->borderTransition = 2;
        layout->maxHeightMargin = 3.5;
        layout->defaultStyleId = "S2";
        layout->addStyle(makeStyle("S1"));
        layout->addStyle(makeStyle("S2"));
        layout->addField(makeField("TITLE"));
        layout->addField(makeField("DWGNO"));
        layout->addField(makeField("TITLE2"));
        layout->getTable().addRowType(makeRowType("ITEM"));
        layout->addSymbolType(makeSymbolType("Item balloon"));
        return layout;
    }

    /// Shows the dialog on `layout`; the journal's lines follow its `dialog` line.
    nxsim::JournalResult show(const boost::shared_ptr<BlockLayout>& layout,
                              const std::string& lines, bool existingLayout = true) {
        return TestUtil::runJournal("run\ndialog qorborder_config_block\n" + lines, [&] {
            QorBorderConf::BlockLayoutDialog dialog(layout, existingLayout);
            response = dialog.show();
        });
    }

    /// Registers a document holding the block layouts `ids` with the document manager.
    void openDocumentWithBlocks(std::initializer_list<const char*> ids) {
        auto document = boost::make_shared<DefinitionDocument>("");
        for (const char* id : ids) {
            auto layout = boost::make_shared<BlockLayout>();
            layout->id = id;
            document->addBlockLayout(layout);
        }
        const auto file = dir.path() / "open.fordef";
        document->save(file);
        DefDocumentManager().getDocument(file);
    }

    TestUtil::TempDir dir;
    int response = 0;
};

TEST_F(BlockLayoutDialogTest, FillShowsEveryAttributeAndTheFourLists) {
    auto layout = titleBlock();
    layout->flip = true;
    layout->repeating = true;
    layout->requiredBlockOnly = true;
    layout->allowOverride = true;
    layout->getTable().rowsCreated = true;
    EXPECT_JOURNAL_PASSES(show(layout, R"J(
  expect title "Block Layout"
  expect value BLOCK_ID "TB"
  expect value DESCRIPTION "Title block"
  expect value CATEGORY "Title blocks"
  expect index UNITS 1
  expect value LAYER 251
  expect index EDIT_METHOD 0
  expect value DIALOG_FILENAME "tb.dlg"
  expect value DELEGATE_LIBRARY "tb_lib"
  expect value SET_STYLE_DELEGATE "tb_set_style"
  expect value EDIT_FIELDS_DELEGATE "tb_edit_fields"
  expect value REQ_BLOCK_ONLY on
  expect value REPEATING on
  expect value REPEAT_SPACING "12.5"
  expect value COL_FOR_ROW_NUM 2
  expect index SBF_BASE 1
  expect value SBF_FILENAME "tb.sbf"
  expect value FLIP_BLOCK on
  expect value ANGLE 90
  expect index BORDER_TRANSITION 2
  expect value ROWS_CREATED on
  expect value ALLOW_OVERRIDE on
  expect value MAXHEIGHT_MARGIN 3.5
  expect items STYLES ["  S1", "* S2"]
  expect items FIELDS ["TITLE", "DWGNO", "TITLE2"]
  expect items ROWTYPES ["ITEM"]
  expect items SYMBOLTYPES ["Item balloon"]
  cancel
)J"));
}

TEST_F(BlockLayoutDialogTest, OkWritesEveryAttributeWithTheUnitsOffset) {
    auto layout = titleBlock();
    EXPECT_JOURNAL_PASSES(show(layout, R"J(
  set BLOCK_ID "TB2"
  set DESCRIPTION "Second"
  set CATEGORY "Other"
  choose UNITS 0
  set LAYER 7
  choose EDIT_METHOD 1
  set DELEGATE_LIBRARY "lib2"
  set SET_STYLE_DELEGATE "set2"
  set EDIT_FIELDS_DELEGATE "edit2"
  toggle REQ_BLOCK_ONLY on
  toggle REPEATING on
  set REPEAT_SPACING "8"
  set COL_FOR_ROW_NUM 4
  choose SBF_BASE 2
  set SBF_FILENAME "other.sbf"
  toggle FLIP_BLOCK on
  set ANGLE 180
  choose BORDER_TRANSITION 1
  toggle ROWS_CREATED on
  toggle ALLOW_OVERRIDE on
  set MAXHEIGHT_MARGIN 1.25
  ok
)J"));
    EXPECT_EQ(response, NXOpen::UIStyler::DialogResponseOk);
    EXPECT_EQ(layout->id, "TB2");
    EXPECT_EQ(layout->description, "Second");
    EXPECT_EQ(layout->category, "Other");
    EXPECT_EQ(layout->units, 1);
    EXPECT_EQ(layout->layer, 7);
    EXPECT_EQ(layout->editMethod, 1);
    // Hidden by the edit method, still written.
    EXPECT_EQ(layout->dialogFileName, "tb.dlg");
    EXPECT_EQ(layout->delegateLibrary, "lib2");
    EXPECT_EQ(layout->setStyleDelegate, "set2");
    EXPECT_EQ(layout->editFieldsDelegate, "edit2");
    EXPECT_TRUE(layout->requiredBlockOnly);
    EXPECT_TRUE(layout->repeating);
    EXPECT_EQ(layout->repeatSpacing, "8");
    EXPECT_EQ(layout->columnForRowNumber, 4);
    EXPECT_EQ(layout->sbfBase, 2);
    EXPECT_EQ(layout->sbfFileName, "other.sbf");
    EXPECT_TRUE(layout->flip);
    EXPECT_DOUBLE_EQ(layout->angle, 180.0);
    EXPECT_EQ(layout->borderTransition, 1);
    EXPECT_TRUE(layout->getTable().rowsCreated);
    EXPECT_TRUE(layout->allowOverride);
    EXPECT_DOUBLE_EQ(layout->maxHeightMargin, 1.25);
}

TEST_F(BlockLayoutDialogTest, AnEditedLayoutSavedAndReadAgainIsEqual) {
    auto layout = titleBlock();
    EXPECT_JOURNAL_PASSES(show(layout, R"J(
  set DESCRIPTION "Edited"
  choose EDIT_METHOD 1
  toggle FLIP_BLOCK on
  select FIELDS 0
  press EDIT_FIELD
    dialog qorborder_config_field
    choose TYPE 1
    press ADD_CHOICE
      dialog qorborder_config_choice
      set SHORT_VALUE "A"
      set FULL_VALUE "first\nsecond"
      ok
    ok
  ok
)J"));
    DefinitionDocument document("");
    document.addBlockLayout(layout);
    const auto file = dir.path() / "edited.fordef";
    document.save(file);
    const auto reread = DefinitionDocument::load(file);
    const auto readLayout = reread->getBlockLayout("TB");
    ASSERT_TRUE(readLayout);
    EXPECT_EQ(*readLayout, *layout);
    EXPECT_EQ(readLayout->getField(0)->textChoices().at(0).fullValue, "first\nsecond");
}

TEST_F(BlockLayoutDialogTest, UnitsOfOneSelectTheFirstEntryAndTheThirdEntryStoresThree) {
    auto layout = titleBlock();
    layout->units = 1;
    EXPECT_JOURNAL_PASSES(show(layout, R"J(
  expect index UNITS 0
  choose UNITS 2
  ok
)J"));
    EXPECT_EQ(layout->units, 3);
}

TEST_F(BlockLayoutDialogTest, EditMethodShowsTheDialogFileOrTheDelegateControls) {
    auto layout = titleBlock();
    layout->editMethod = 1;
    EXPECT_JOURNAL_PASSES(show(layout, R"J(
  expect index EDIT_METHOD 1
  expect visible DIALOG_FILENAME no
  expect visible DELEGATE_LIBRARY yes
  expect visible FUNCTION_GROUP yes
  choose EDIT_METHOD 0
  expect visible DIALOG_FILENAME yes
  expect visible DELEGATE_LIBRARY no
  expect visible FUNCTION_GROUP no
  expect visible SET_STYLE_DELEGATE no
  cancel
)J"));
}

TEST_F(BlockLayoutDialogTest, CancelLeavesTheAttributesButNotTheListChanges) {
    auto layout = titleBlock();
    EXPECT_JOURNAL_PASSES(show(layout, R"J(
  set BLOCK_ID "CHANGED"
  set LAYER 1
  select FIELDS 1
  press DELETE_FIELD
  select STYLES 0
  press SET_DEFAULT_STYLE
  cancel
)J"));
    EXPECT_NE(response, NXOpen::UIStyler::DialogResponseOk);
    EXPECT_EQ(layout->id, "TB");
    EXPECT_EQ(layout->layer, 251);
    // The list buttons changed the layout at once; Cancel does not undo that.
    EXPECT_EQ(layout->fieldIds(), (std::vector<std::string>{"TITLE", "TITLE2"}));
    EXPECT_EQ(layout->defaultStyleId, "S1");
}

TEST_F(BlockLayoutDialogTest, WithoutStylesAllSixTableDependentControlsAreSensitive) {
    auto layout = titleBlock();
    layout->deleteStyle(1);
    layout->deleteStyle(0);
    EXPECT_JOURNAL_PASSES(show(layout, R"J(
  expect items STYLES []
  expect sensitive REPEATING yes
  expect sensitive REPEAT_SPACING yes
  expect sensitive COL_FOR_ROW_NUM yes
  expect sensitive ROWS_CREATED yes
  expect sensitive ROWTYPE_GROUP yes
  expect sensitive SYMBOL_GROUP yes
  cancel
)J"));
}

// A style of the non-tabular template type means a block without a table. The layout here has
// no row type, so the symbol group's own rule agrees with the styles' rule.
TEST_F(BlockLayoutDialogTest, OneNonTabularStyleMakesAllSixTableDependentControlsInsensitive) {
    auto layout = titleBlock();
    layout->getTable().deleteRowType(0);
    layout->addStyle(makeStyle("PLAIN", 1));
    EXPECT_JOURNAL_PASSES(show(layout, R"J(
  expect sensitive REPEATING no
  expect sensitive REPEAT_SPACING no
  expect sensitive COL_FOR_ROW_NUM no
  expect sensitive ROWS_CREATED no
  expect sensitive ROWTYPE_GROUP no
  expect sensitive ADD_ROWTYPE no
  expect sensitive SYMBOL_GROUP no
  expect sensitive ADD_SYMBOLTYPE no
  # Deleting that style makes them sensitive again, but for the symbols, which need a row type.
  select STYLES 2
  press DELETE_STYLE
  expect items STYLES ["  S1", "* S2"]
  expect sensitive REPEATING yes
  expect sensitive REPEAT_SPACING yes
  expect sensitive COL_FOR_ROW_NUM yes
  expect sensitive ROWS_CREATED yes
  expect sensitive ROWTYPE_GROUP yes
  expect sensitive SYMBOL_GROUP no
  cancel
)J"));
}

// The symbol group's own rule runs after every event, so with a row type it stays sensitive even
// beside a non-tabular style, which greys out the other table settings.
TEST_F(BlockLayoutDialogTest, WithARowTypeTheSymbolGroupFollowsTheRowTypesBesideANonTabularStyle) {
    auto layout = titleBlock();
    layout->addStyle(makeStyle("PLAIN", 1));
    EXPECT_JOURNAL_PASSES(show(layout, R"J(
  expect sensitive ROWTYPE_GROUP no
  expect sensitive REPEATING no
  expect sensitive SYMBOL_GROUP yes
  cancel
)J"));
}

TEST_F(BlockLayoutDialogTest, WithoutRowTypesTheSymbolGroupIsInsensitive) {
    auto layout = titleBlock();
    EXPECT_JOURNAL_PASSES(show(layout, R"J(
  expect sensitive SYMBOL_GROUP yes
  expect sensitive ADD_SYMBOLTYPE yes
  select ROWTYPES 0
  press DELETE_ROWTYPE
  expect items ROWTYPES []
  expect sensitive SYMBOL_GROUP no
  expect sensitive ADD_SYMBOLTYPE no
  expect sensitive SYMBOLTYPES no
  cancel
)J"));
    EXPECT_TRUE(layout->rowTypeIds().empty());
}

TEST_F(BlockLayoutDialogTest, SettingTheDefaultStyleMovesTheMarkerToTheSelectedRow) {
    auto layout = titleBlock();
    layout->addStyle(makeStyle("S3"));
    EXPECT_JOURNAL_PASSES(show(layout, R"J(
  expect items STYLES ["  S1", "* S2", "  S3"]
  expect sensitive SET_DEFAULT_STYLE no
  select STYLES 2
  expect sensitive SET_DEFAULT_STYLE yes
  press SET_DEFAULT_STYLE
  expect items STYLES ["  S1", "  S2", "* S3"]
  expect selected STYLES -1
  expect sensitive SET_DEFAULT_STYLE no
  cancel
)J"));
    EXPECT_EQ(layout->defaultStyleId, "S3");
}

TEST_F(BlockLayoutDialogTest, EditingAFieldAndChangingItsIdRenamesEveryReferenceToIt) {
    auto layout = titleBlock();
    layout->getStyle(0)->setRow("TITLE", 3);
    layout->getField(2)->secondLanguageFieldId = "TITLE";
    EXPECT_JOURNAL_PASSES(show(layout, R"J(
  select FIELDS 0
  press EDIT_FIELD
    dialog qorborder_config_field
    expect items SEC_LANG_FIELD ["TITLE", "DWGNO", "TITLE2", "None"]
    set ID "DWG_TITLE"
    ok
  expect items FIELDS ["DWG_TITLE", "DWGNO", "TITLE2"]
  cancel
)J"));
    // The rename reached the style's placement and the partner of TITLE2.
    EXPECT_FALSE(layout->getStyle(0)->hasPlacement("TITLE"));
    EXPECT_EQ(layout->getStyle(0)->getRow("DWG_TITLE"), 3);
    EXPECT_EQ(layout->getField(2)->secondLanguageFieldId, "DWG_TITLE");
}

TEST_F(BlockLayoutDialogTest, EditingAFieldWithoutChangingItsIdLeavesTheReferencesAsTheyWere) {
    auto layout = titleBlock();
    layout->getStyle(0)->setRow("TITLE", 3);
    layout->getField(2)->secondLanguageFieldId = "TITLE";
    const BlockStyle styleBefore = *layout->getStyle(0);
    EXPECT_JOURNAL_PASSES(show(layout, R"J(
  select FIELDS 0
  press EDIT_FIELD
    dialog qorborder_config_field
    set PREFIX "T: "
    ok
  cancel
)J"));
    EXPECT_EQ(layout->getField(0)->prefix, "T: ");
    EXPECT_EQ(*layout->getStyle(0), styleBefore);
    EXPECT_EQ(layout->getField(2)->secondLanguageFieldId, "TITLE");
}

TEST_F(BlockLayoutDialogTest, AddingAFieldAppendsItOnOkAndDropsItOnCancel) {
    auto layout = titleBlock();
    EXPECT_JOURNAL_PASSES(show(layout, R"J(
  press ADD_FIELD
    dialog qorborder_config_field
    set ID "DROPPED"
    cancel
  expect items FIELDS ["TITLE", "DWGNO", "TITLE2"]
  press ADD_FIELD
    dialog qorborder_config_field
    expect value ID ""
    set ID "SCALE"
    ok
  expect items FIELDS ["TITLE", "DWGNO", "TITLE2", "SCALE"]
  cancel
)J"));
    EXPECT_EQ(layout->fieldIds(), (std::vector<std::string>{"TITLE", "DWGNO", "TITLE2", "SCALE"}));
    EXPECT_FALSE(layout->getField(3)->isTableField);
}

TEST_F(BlockLayoutDialogTest, CopyingAFieldKeepsItsIdAndAddsTheCopyOnOk) {
    auto layout = titleBlock();
    layout->getField(1)->prefix = "No. ";
    EXPECT_JOURNAL_PASSES(show(layout, R"J(
  select FIELDS 1
  press COPY_FIELD
    dialog qorborder_config_field
    expect value ID "DWGNO"
    expect value PREFIX "No. "
    set PREFIX "Nr. "
    ok
  expect items FIELDS ["TITLE", "DWGNO", "TITLE2", "DWGNO"]
  cancel
)J"));
    EXPECT_EQ(layout->getField(1)->prefix, "No. ");
    EXPECT_EQ(layout->getField(3)->prefix, "Nr. ");
}

TEST_F(BlockLayoutDialogTest, DeletingAskNothingAndTakesEffectAtOnce) {
    auto layout = titleBlock();
    EXPECT_JOURNAL_PASSES(show(layout, R"J(
  select STYLES 0
  press DELETE_STYLE
  expect items STYLES ["* S2"]
  select FIELDS 2
  press DELETE_FIELD
  expect items FIELDS ["TITLE", "DWGNO"]
  select SYMBOLTYPES 0
  press DELETE_SYMBOLTYPE
  expect items SYMBOLTYPES []
  select ROWTYPES 0
  press DELETE_ROWTYPE
  expect items ROWTYPES []
  cancel
)J"));
    EXPECT_TRUE(nxsim::shownMessages().empty());
    EXPECT_EQ(layout->styles().size(), 1u);
    EXPECT_EQ(layout->fields().size(), 2u);
    EXPECT_TRUE(layout->symbolTypesNames().empty());
    EXPECT_TRUE(layout->rowTypeIds().empty());
}

TEST_F(BlockLayoutDialogTest, AfterAnyListRefreshNothingIsSelectedAndItsButtonsAreInsensitive) {
    auto layout = titleBlock();
    layout->addField(makeField("EXTRA"));
    layout->addSymbolType(makeSymbolType("Second"));
    layout->getTable().addRowType(makeRowType("HEADER"));
    EXPECT_JOURNAL_PASSES(show(layout, R"J(
  expect sensitive EDIT_STYLE no
  expect sensitive COPY_STYLE no
  expect sensitive DELETE_STYLE no
  expect sensitive EDIT_FIELD no
  expect sensitive COPY_FIELD no
  expect sensitive DELETE_FIELD no
  expect sensitive EDIT_ROWTYPE no
  expect sensitive DELETE_ROWTYPE no
  expect sensitive EDIT_SYMBOLTYPE no
  expect sensitive DELETE_SYMBOLTYPE no
  select STYLES 1
  expect sensitive EDIT_STYLE yes
  expect sensitive COPY_STYLE yes
  expect sensitive DELETE_STYLE yes
  press SET_DEFAULT_STYLE
  expect selected STYLES -1
  expect sensitive EDIT_STYLE no
  expect sensitive COPY_STYLE no
  expect sensitive DELETE_STYLE no
  select FIELDS 1
  expect sensitive EDIT_FIELD yes
  expect sensitive COPY_FIELD yes
  expect sensitive DELETE_FIELD yes
  press DELETE_FIELD
  expect selected FIELDS -1
  expect sensitive EDIT_FIELD no
  expect sensitive COPY_FIELD no
  expect sensitive DELETE_FIELD no
  select FIELDS 0
  press EDIT_FIELD
    dialog qorborder_config_field
    ok
  expect selected FIELDS -1
  expect sensitive EDIT_FIELD no
  select ROWTYPES 1
  expect sensitive EDIT_ROWTYPE yes
  expect sensitive DELETE_ROWTYPE yes
  press DELETE_ROWTYPE
  expect selected ROWTYPES -1
  expect sensitive EDIT_ROWTYPE no
  expect sensitive DELETE_ROWTYPE no
  select SYMBOLTYPES 1
  expect sensitive EDIT_SYMBOLTYPE yes
  expect sensitive DELETE_SYMBOLTYPE yes
  press DELETE_SYMBOLTYPE
  expect selected SYMBOLTYPES -1
  expect sensitive EDIT_SYMBOLTYPE no
  expect sensitive DELETE_SYMBOLTYPE no
  cancel
)J"));
}

TEST_F(BlockLayoutDialogTest, OkWithEmptyBlockIdIsRefusedAndWritesNothing) {
    auto layout = titleBlock();
    EXPECT_JOURNAL_PASSES(show(layout, R"J(
  set BLOCK_ID ""
  set DESCRIPTION "changed"
  ok
  message error "Validation Error" "Block ID must not be empty."
  expect focus BLOCK_ID
  expect value DESCRIPTION "changed"
  cancel
)J"));
    EXPECT_NE(response, NXOpen::UIStyler::DialogResponseOk);
    EXPECT_EQ(layout->id, "TB");
    EXPECT_EQ(layout->description, "Title block");
}

TEST_F(BlockLayoutDialogTest, BlockIdOfBlanksOnlyIsNotEmptyAndPasses) {
    auto layout = boost::make_shared<BlockLayout>();
    EXPECT_JOURNAL_PASSES(show(layout, R"J(
  set BLOCK_ID "   "
  ok
)J",
                               false));
    EXPECT_EQ(response, NXOpen::UIStyler::DialogResponseOk);
    EXPECT_EQ(layout->id, "   ");
}

TEST_F(BlockLayoutDialogTest, NewLayoutWithAnIdThatAnOpenDocumentUsesIsRefusedAsDuplicate) {
    openDocumentWithBlocks({"ISO7200", "PL"});
    auto layout = boost::make_shared<BlockLayout>();
    EXPECT_JOURNAL_PASSES(show(layout, R"J(
  set BLOCK_ID "PL"
  ok
  message error "Duplicate Error" "A block with ID was found. Block ID must be unique."
  expect focus BLOCK_ID
  set BLOCK_ID "PL2"
  ok
)J",
                               false));
    EXPECT_EQ(response, NXOpen::UIStyler::DialogResponseOk);
    EXPECT_EQ(layout->id, "PL2");
}

// Only a new layout is checked for a unique ID: an existing one may take the ID of another
// layout of an open document. Intended.
TEST_F(BlockLayoutDialogTest,
       EditingAnExistingLayoutAndGivingItTheIdOfAnotherIsAcceptedAsIntended) {
    openDocumentWithBlocks({"ISO7200", "PL"});
    auto layout = titleBlock();
    EXPECT_JOURNAL_PASSES(show(layout, R"J(
  set BLOCK_ID "PL"
  ok
)J"));
    EXPECT_EQ(response, NXOpen::UIStyler::DialogResponseOk);
    EXPECT_EQ(layout->id, "PL");
    EXPECT_TRUE(nxsim::shownMessages().empty());
}

} // namespace
