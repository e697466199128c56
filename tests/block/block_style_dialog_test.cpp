// The block style dialog alone, shown by the test on a block layout built here, end to end
// through its resource file.

#include "base/wildcard_filter.h"
#include "block/block_style_dialog.h"
#include "block/block_style_dialog_names.h"
#include "kivug/search_file_list.h"
#include "model/block_layout.h"
#include "model/definition_document.h"
#include "testutil/journal.h"
#include "testutil/temp_dir.h"

#include <nxsim/platform.h>
#include <uf.h>

#include <boost/make_shared.hpp>

#include <gtest/gtest.h>

#include <set>

namespace fs = boost::filesystem;
using QorBorder::BlockLayout;
using QorBorder::BlockStyle;
using QorBorder::Field;
using QorBorder::RowType;
using QorBorderConf::BlockStyleDialog;
namespace Names = QorBorderConf::BlockStyleDialogNames;

namespace {

boost::shared_ptr<Field> field(const std::string& id, bool tableField = false) {
    auto result = boost::make_shared<Field>(tableField);
    result->id = id;
    return result;
}

/// A layout with the fields TITLE, DATE and NUMBER; with `withTable` also the row types ITEM
/// (table fields POS and QTY) and HEADER (no table fields).
boost::shared_ptr<BlockLayout> makeLayout(bool withTable) {
    auto layout = boost::make_shared<BlockLayout>();
    layout->id = "TB";
    for (const char* id : {"TITLE", "DATE", "NUMBER"}) {
        layout->addField(field(id));
    }
    if (withTable) {
        auto item = boost::make_shared<RowType>();
        item->id = "ITEM";
        item->appendField(field("POS", true));
        item->appendField(field("QTY", true));
        layout->getTable().addRowType(item);
        auto header = boost::make_shared<RowType>();
        header->id = "HEADER";
        layout->getTable().addRowType(header);
    }
    return layout;
}

/// A style with a value under every key of the layout made by makeLayout(true).
boost::shared_ptr<BlockStyle> makeStyle() {
    auto style = boost::make_shared<BlockStyle>();
    style->id = "SHEET1";
    style->dialogText = "First sheet";
    style->templateFile = "title_block.prt";
    style->templateType = 0;
    style->setRow("TITLE", 1);
    style->setColumn("TITLE", 2);
    style->setFieldInHeader("TITLE", false);
    style->setRow("DATE", 5);
    style->setColumn("DATE", 6);
    style->setFieldInHeader("DATE", true);
    style->setFieldIndex("TITLE", 11);
    style->setFieldIndex("DATE", 12);
    style->setTableColumn("ITEM", "POS", 1);
    style->setTableColumn("ITEM", "QTY", 2);
    return style;
}

class BlockStyleDialogTest : public ::testing::Test {
protected:
    BlockStyleDialogTest() {
        nxsim::reset();
        UF_initialize();
    }
    ~BlockStyleDialogTest() override { UF_terminate(); }

    /// Shows the dialog on `style` and `layout` while `journal` (the dialog's own lines) runs;
    /// returns its response.
    int show(const std::string& journal) {
        int response = -1;
        EXPECT_JOURNAL_PASSES(TestUtil::runJournal(
            std::string("run\ndialog ") + Names::kDialogName + "\n" + journal, [&] {
                BlockStyleDialog dialog(style, layout);
                response = dialog.show();
            }));
        return response;
    }

    boost::shared_ptr<BlockLayout> layout = makeLayout(true);
    boost::shared_ptr<BlockStyle> style = makeStyle();
};

TEST_F(BlockStyleDialogTest, FillShowsTheStyleAndTheFirstKeyOfEachList) {
    show(R"J(
  expect value ID "SHEET1"
  expect value DIALOG_TEXT "First sheet"
  expect value TEMPLATE_FILE "title_block.prt"
  expect index TEMPLATE_TYPE 0
  expect focus ID
  expect items FIELD_LIST ["TITLE", "DATE", "NUMBER"]
  expect value FIELD_LIST "TITLE"
  expect value ROW_LOC 1
  expect value COL_LOC 2
  expect value IN_HEADER off
  expect items ROW_TYPE ["ITEM", "HEADER"]
  expect items TABLE_FIELD ["POS", "QTY"]
  expect value TABLE_FIELD_COLUMN 1
  expect items FIELD_INDEX_LIST ["TITLE", "DATE", "NUMBER"]
  expect value FIELD_INDEX 11
  expect visible TABULAR_NOTE_SETTINGS yes
  expect visible TABLE_SETTINGS yes
  expect visible GENERAL_SETTINGS no
  cancel
)J");
}

TEST_F(BlockStyleDialogTest, SwitchingFieldListStoresThePreviousFieldsValuesAtOnceAndShowsTheNext) {
    show(R"J(
  set ROW_LOC 3
  set COL_LOC 4
  set IN_HEADER on
  choose FIELD_LIST "DATE"
  expect value ROW_LOC 5
  expect value COL_LOC 6
  expect value IN_HEADER on
  cancel
)J");
    // Stored at the switch, so Cancel keeps them: intended.
    EXPECT_EQ(style->getRow("TITLE"), 3);
    EXPECT_EQ(style->getColumn("TITLE"), 4);
    EXPECT_TRUE(style->isFieldInHeader("TITLE"));
    EXPECT_EQ(style->getRow("DATE"), 5);
}

TEST_F(BlockStyleDialogTest, SwitchingTableFieldAndFieldIndexStoresThePreviousValuesAtOnce) {
    show(R"J(
  set TABLE_FIELD_COLUMN 8
  choose TABLE_FIELD "QTY"
  expect value TABLE_FIELD_COLUMN 2
  expect focus TABLE_FIELD_COLUMN
  choose TEMPLATE_TYPE 0
  cancel
)J");
    EXPECT_EQ(style->getTableColumn("ITEM", "POS"), 8);
    EXPECT_EQ(style->getTableColumn("ITEM", "QTY"), 2);

    layout = makeLayout(false);
    show(R"J(
  choose TEMPLATE_TYPE 1
  set FIELD_INDEX 21
  choose FIELD_INDEX_LIST "NUMBER"
  expect value FIELD_INDEX 0
  cancel
)J");
    EXPECT_EQ(style->getFieldIndex("TITLE"), 21);
    EXPECT_EQ(style->getFieldIndex("DATE"), 12);
}

// A layout with a table can only be drawn from a tabular note template, so the other entry of
// "TEMPLATE_TYPE" cannot be chosen. Intended.
TEST_F(BlockStyleDialogTest, LayoutWithRowTypesOffersOnlyTemplateTypeZero) {
    show(R"J(
  expect sensitive TEMPLATE_TYPE[0] yes
  expect sensitive TEMPLATE_TYPE[1] no
  cancel
)J");
    layout = makeLayout(false);
    show(R"J(
  expect sensitive TEMPLATE_TYPE[1] yes
  expect visible TABLE_SETTINGS no
  choose TEMPLATE_TYPE 1
  expect visible TABULAR_NOTE_SETTINGS no
  expect visible GENERAL_SETTINGS yes
  choose TEMPLATE_TYPE 0
  expect visible TABULAR_NOTE_SETTINGS yes
  expect visible GENERAL_SETTINGS no
  cancel
)J");
}

// Choosing a row type without table fields keeps the previous row type's table fields in the
// menu and forgets the current table field: no column is stored until a table field is chosen,
// and the one chosen then is stored under the new row type. Intended.
TEST_F(BlockStyleDialogTest, RowTypeWithoutTableFieldsLeavesThePreviousItemsAndStoresNoColumn) {
    show(R"J(
  set TABLE_FIELD_COLUMN 7
  choose ROW_TYPE "HEADER"
  expect items TABLE_FIELD ["POS", "QTY"]
  set TABLE_FIELD_COLUMN 9
  choose ROW_TYPE "ITEM"
  expect value TABLE_FIELD_COLUMN 7
  choose ROW_TYPE "HEADER"
  choose TABLE_FIELD "QTY"
  expect value TABLE_FIELD_COLUMN 0
  set TABLE_FIELD_COLUMN 4
  ok
)J");
    EXPECT_EQ(style->getTableColumn("ITEM", "POS"), 7);
    EXPECT_FALSE(style->hasTableColumn("HEADER", "POS"));
    EXPECT_EQ(style->getTableColumn("HEADER", "QTY"), 4);
    EXPECT_EQ(style->getTableColumn("ITEM", "QTY"), 2);
}

TEST_F(BlockStyleDialogTest, LayoutWithoutFieldsHidesTheFieldGroupsAndStoresNoPlacement) {
    layout = boost::make_shared<BlockLayout>();
    auto empty = boost::make_shared<BlockStyle>();
    style = empty;
    EXPECT_EQ(show(R"J(
  expect visible FIELD_SETTINGS no
  expect visible TABLE_SETTINGS no
  expect visible GENERAL_SETTINGS no
  choose TEMPLATE_TYPE 1
  expect visible GENERAL_SETTINGS no
  set ID "S"
  ok
)J"),
              NXOpen::UIStyler::DialogResponseOk);
    EXPECT_TRUE(style->placements().empty());
    EXPECT_TRUE(style->tableColumns().empty());
    EXPECT_EQ(style->templateType, 1);
}

TEST_F(BlockStyleDialogTest, EmptyIdIsRefusedAndNothingIsWritten) {
    EXPECT_EQ(show(R"J(
  set ID ""
  set DIALOG_TEXT "changed"
  ok
  message error "Validation Error" "Name must not be empty."
  expect focus ID
  expect value DIALOG_TEXT "changed"
  cancel
)J"),
              3);
    EXPECT_EQ(*style, *makeStyle());
}

// Only an empty ID is refused: blanks pass, as does an ID another style of the layout uses.
// Intended.
TEST_F(BlockStyleDialogTest, IdOfBlanksPassesValidation) {
    EXPECT_EQ(show("set ID \"   \"\nok\n"), NXOpen::UIStyler::DialogResponseOk);
    EXPECT_EQ(style->id, "   ");
}

TEST_F(BlockStyleDialogTest, OkWritesEveryControl) {
    layout = makeLayout(false);
    EXPECT_EQ(show(R"J(
  set ID "FOLLOW"
  set DIALOG_TEXT "Continuation sheets"
  set TEMPLATE_FILE "follow.prt"
  enter TEMPLATE_FILE
  set ROW_LOC 7
  set COL_LOC 8
  set IN_HEADER on
  choose TEMPLATE_TYPE 1
  set FIELD_INDEX 31
  ok
)J"),
              NXOpen::UIStyler::DialogResponseOk);
    BlockStyle expected = *makeStyle();
    expected.id = "FOLLOW";
    expected.dialogText = "Continuation sheets";
    expected.templateFile = "follow.prt";
    expected.templateType = 1;
    expected.setRow("TITLE", 7);
    expected.setColumn("TITLE", 8);
    expected.setFieldInHeader("TITLE", true);
    expected.setFieldIndex("TITLE", 31);
    EXPECT_EQ(*style, expected);
}

TEST_F(BlockStyleDialogTest, CancelWritesNothing) {
    EXPECT_EQ(show(R"J(
  set ID "OTHER"
  set DIALOG_TEXT "Other"
  set TEMPLATE_FILE "other.prt"
  set ROW_LOC 9
  set TABLE_FIELD_COLUMN 9
  cancel
)J"),
              3);
    EXPECT_EQ(*style, *makeStyle());
}

TEST_F(BlockStyleDialogTest, StyleEditedAndSavedReadsBackEqual) {
    show(R"J(
  set ID "SHEET2"
  set TEMPLATE_FILE "sheet2.prt"
  choose FIELD_LIST "NUMBER"
  set ROW_LOC 4
  set COL_LOC 5
  set IN_HEADER on
  choose TABLE_FIELD "QTY"
  set TABLE_FIELD_COLUMN 6
  ok
)J");
    layout->addStyle(style);
    TestUtil::TempDir dir;
    const fs::path file = dir.path() / "blocks.fordef";
    QorBorder::DefinitionDocument document("");
    document.addBlockLayout(layout);
    document.save(file);

    const auto reread = QorBorder::DefinitionDocument::load(file);
    const auto rereadLayout = reread->getBlockLayout("TB");
    ASSERT_TRUE(rereadLayout);
    ASSERT_EQ(rereadLayout->styles().size(), 1u);
    EXPECT_EQ(*rereadLayout->styles().front(), *style);
    EXPECT_EQ(rereadLayout->styles().front()->getRow("NUMBER"), 4);
    EXPECT_EQ(rereadLayout->styles().front()->getTableColumn("ITEM", "QTY"), 6);
}

/// A site whose installation and configurations each hold block templates, one name in two of
/// them.
class BlockTemplateSite : public BlockStyleDialogTest {
protected:
    BlockTemplateSite() {
        dir.write("site/site.conf", "configurations_directory = ../configurations\n"
                                    "default_configuration = plant\n");
        dir.write("configurations/plant/configuration.conf", "common = common\n");
        dir.write("site/format_defs/block_templates/title.prt", "x");
        dir.write("site/format_defs/block_templates/logo.prt", "x");
        dir.write("configurations/common/nx/format_defs/block_templates/title.prt", "x");
        dir.write("configurations/common/nx/format_defs/block_templates/notice.prt", "x");
        dir.write("configurations/plant/nx/format_defs/block_templates/revisions.prt", "x");
        dir.write("configurations/plant/nx/format_defs/block_templates/readme.txt", "x");
        env.set("QORFMT_SITE", (dir.path() / "site").string());
        env.set("QORFMT_CONFIGURATION", nullptr);
        env.set("QORFMT_SEARCH_PATH", nullptr);
    }

    TestUtil::TempDir dir;
    TestUtil::ScopedEnvironment env;
};

// The picker offers logo, notice, revisions, title: title.prt, found twice, is row 3 and the
// last one (a list with it twice would have it at rows 3 and 4).
TEST_F(BlockTemplateSite, TemplateNamesFoundTwiceAppearOnceSorted) {
    show(R"J(
  press BROWSE_TEMPLATE
  pick "Block Templates" 3
  expect value TEMPLATE_FILE "title.prt"
  press BROWSE_TEMPLATE
  pick "Block Templates" 0
  expect value TEMPLATE_FILE "logo.prt"
  press BROWSE_TEMPLATE
  pick "Block Templates" 2
  expect value TEMPLATE_FILE "revisions.prt"
  press BROWSE_TEMPLATE
  pick "Block Templates" cancel
  expect value TEMPLATE_FILE "revisions.prt"
  ok
)J");
    EXPECT_EQ(style->templateFile, "revisions.prt");
}

// Asking for a fifth row makes the journal report how many rows the picker holds.
TEST_F(BlockTemplateSite, TemplatePickerHoldsEachNameOnce) {
    const auto result =
        TestUtil::runJournal(std::string("run\ndialog ") + Names::kDialogName +
                                 "\npress BROWSE_TEMPLATE\npick \"Block Templates\" 4\ncancel\n",
                             [&] {
                                 BlockStyleDialog dialog(style, layout);
                                 dialog.show();
                             });
    EXPECT_FALSE(result.passed);
    EXPECT_NE(result.message.find("\"Block Templates\" with 4 rows"), std::string::npos)
        << result.message;
}

// An empty search still shows the picker, with its title and no entries, so that the button is
// seen to work; its cancel changes nothing.
TEST_F(BlockStyleDialogTest, EmptyTemplateSearchShowsTheEmptyListAndItsCancelChangesNothing) {
    TestUtil::TempDir dir;
    dir.write("site/site.conf", "# no configurations\n");
    TestUtil::ScopedEnvironment env;
    env.set("QORFMT_SITE", (dir.path() / "site").string());
    env.set("QORFMT_CONFIGURATION", nullptr);
    env.set("QORFMT_SEARCH_PATH", nullptr);
    EXPECT_EQ(show("press BROWSE_TEMPLATE\npick \"Block Templates\" cancel\n"
                   "expect value TEMPLATE_FILE \"title_block.prt\"\nok\n"),
              NXOpen::UIStyler::DialogResponseOk);
    EXPECT_EQ(style->templateFile, "title_block.prt");
    const auto pickers = nxsim::shownPickers();
    ASSERT_EQ(pickers.size(), 1u);
    EXPECT_EQ(pickers[0].title, "Block Templates");
    EXPECT_EQ(pickers[0].prompt, "Select template from list");
    EXPECT_TRUE(pickers[0].items.empty());
}

/// The example site as the configurator finds it: installation, common and plant A.
class ExampleSiteTemplates : public BlockStyleDialogTest {
protected:
    ExampleSiteTemplates() {
        env.set("QORFMT_SITE", (fs::path(QORFMT_EXAMPLES_DIR) / "site").string());
        env.set("QORFMT_CONFIGURATION", nullptr);
        env.set("QORFMT_SEARCH_PATH", nullptr);
    }

    TestUtil::ScopedEnvironment env;
};

TEST_F(ExampleSiteTemplates, PickerOffersTheTemplateOfEveryStyleOfTheExampleDocuments) {
    const std::vector<std::string> offered = KivUg::NxSearchFileList("format_defs/block_templates")
                                                 .fileNames(Base::WildcardFilter("*.prt"));
    const std::set<std::string> offeredSet(offered.begin(), offered.end());
    int styles = 0;
    for (const fs::path& file :
         KivUg::NxSearchFileList("format_defs").filePaths(Base::WildcardFilter("*.fordef"))) {
        const auto document = QorBorder::DefinitionDocument::load(file);
        for (const auto& block : document->blockLayouts(QorBorder::AllUnits)) {
            for (const auto& blockStyle : block->styles()) {
                ++styles;
                EXPECT_EQ(offeredSet.count(blockStyle->templateFile), 1u)
                    << file.filename() << " " << block->id << " " << blockStyle->id << ": "
                    << blockStyle->templateFile << " is not offered";
            }
        }
    }
    EXPECT_GE(styles, 9);
}

} // namespace
