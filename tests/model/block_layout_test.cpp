#include "model/block_layout.h"

#include <boost/make_shared.hpp>

#include <gtest/gtest.h>

#include <stdexcept>

using namespace QorBorder;

namespace {

boost::shared_ptr<Field> field(const std::string& id) {
    auto f = boost::make_shared<Field>();
    f->id = id;
    return f;
}

boost::shared_ptr<BlockStyle> style(const std::string& id) {
    auto s = boost::make_shared<BlockStyle>();
    s->id = id;
    return s;
}

boost::shared_ptr<RowType> rowType(const std::string& id, std::vector<std::string> fieldIds) {
    auto r = boost::make_shared<RowType>();
    r->id = id;
    for (const std::string& fieldId : fieldIds) {
        auto f = boost::make_shared<Field>(true);
        f->id = fieldId;
        r->appendField(f);
    }
    return r;
}

} // namespace

TEST(BlockLayout, SymbolTypesNamesOfLayoutWithoutSymbolTypesIsEmpty) {
    EXPECT_TRUE(BlockLayout().symbolTypesNames().empty());
}

TEST(BlockLayout, SymbolTypesNamesAreDialogTextsInOrder) {
    BlockLayout layout;
    for (const char* text : {"Revision", "Arrow"}) {
        auto symbol = boost::make_shared<SymbolType>();
        symbol->dialogText = text;
        layout.addSymbolType(symbol);
    }
    EXPECT_EQ(layout.symbolTypesNames(), (std::vector<std::string>{"Revision", "Arrow"}));
    layout.deleteSymbolType(0);
    EXPECT_EQ(layout.symbolTypesNames(), std::vector<std::string>{"Arrow"});
}

TEST(BlockLayout, GettersHandOutTheLayoutsOwnObjects) {
    BlockLayout layout;
    layout.addField(field("A"));
    layout.addStyle(style("S"));
    layout.getField(0)->id = "B";
    layout.getStyle(0)->templateType = 1;
    EXPECT_EQ(layout.fields()[0]->id, "B");
    EXPECT_EQ(layout.styles()[0]->templateType, 1);
    EXPECT_EQ(layout.styles2()[0], layout.getStyle(0));
}

TEST(BlockLayout, GettersOutsideTheListsReturnEmptyPointers) {
    BlockLayout layout;
    layout.addField(field("A"));
    EXPECT_FALSE(layout.getField(1));
    EXPECT_FALSE(layout.getField(-1));
    EXPECT_FALSE(layout.getStyle(0));
    EXPECT_FALSE(layout.getSymbolType(0));
    EXPECT_FALSE(layout.getTable().getRowType(0));
}

TEST(BlockLayout, DeletesOutsideTheListsThrowOutOfRange) {
    BlockLayout layout;
    EXPECT_THROW(layout.deleteField(0), std::out_of_range);
    EXPECT_THROW(layout.deleteStyle(0), std::out_of_range);
    EXPECT_THROW(layout.deleteSymbolType(0), std::out_of_range);
    EXPECT_THROW(layout.getTable().deleteRowType(0), std::out_of_range);
}

TEST(BlockLayout, ListsKeepOrderAndDeleteRemovesByIndex) {
    BlockLayout layout;
    layout.addField(field("C"));
    layout.addField(field("A"));
    layout.addField(field("B"));
    layout.deleteField(1);
    EXPECT_EQ(layout.fieldIds(), (std::vector<std::string>{"C", "B"}));
}

TEST(BlockLayout, CopyEditingAFieldOfTheCopyLeavesSourceFieldUnchanged) {
    BlockLayout source;
    source.id = "TITLE";
    source.addField(field("A"));
    source.addStyle(style("S"));
    source.getTable().addRowType(rowType("ROW", {"T"}));
    source.addSymbolType(boost::make_shared<SymbolType>());
    BlockLayout copy(source);
    copy.getField(0)->id = "changed";
    copy.getStyle(0)->setRow("A", 5);
    copy.getTable().getRowType(0)->getField(0)->id = "changed";
    copy.getSymbolType(0)->dialogText = "changed";
    EXPECT_EQ(source.getField(0)->id, "A");
    EXPECT_EQ(source.getStyle(0)->getRow("A"), 0);
    EXPECT_EQ(source.tableFieldIds("ROW"), std::vector<std::string>{"T"});
    EXPECT_EQ(source.getSymbolType(0)->dialogText, "");
    EXPECT_NE(copy.getField(0).get(), source.getField(0).get());
}

TEST(BlockLayout, CopyAssignmentIsDeepAsWell) {
    BlockLayout source;
    source.addField(field("A"));
    BlockLayout target;
    target = source;
    target.getField(0)->id = "changed";
    EXPECT_EQ(source.getField(0)->id, "A");
    EXPECT_EQ(source, BlockLayout(source));
}

TEST(BlockLayout, CopyAssignmentOverAFilledLayoutReplacesEverythingAndCopiesTheTableDeeply) {
    BlockLayout source;
    source.id = "SOURCE";
    source.addField(field("A"));
    source.getTable().addRowType(rowType("ROW", {"T"}));
    BlockLayout target;
    target.id = "TARGET";
    target.addField(field("X"));
    target.addField(field("Y"));
    target.addStyle(style("S"));
    target = source;
    EXPECT_EQ(target, source);
    target.getTable().getRowType(0)->id = "changed";
    EXPECT_EQ(source.getTable().getRowType(0)->id, "ROW");
    const BlockLayout& same = target;
    target = same;
    EXPECT_EQ(target.id, "SOURCE") << "assigning a layout to itself keeps it";
}

TEST(BlockLayout, AfterFieldRenamedNoStyleEntryIsKeyedByOldId) {
    BlockLayout layout;
    layout.addField(field("OLD"));
    auto s1 = style("S1");
    s1->setRow("OLD", 2);
    s1->setColumn("OLD", 3);
    s1->setFieldInHeader("OLD", true);
    s1->setFieldIndex("OLD", 4);
    layout.addStyle(s1);
    auto s2 = style("S2");
    s2->setFieldIndex("OLD", 7);
    layout.addStyle(s2);
    layout.getField(0)->id = "NEW";
    layout.fieldRenamed(0, "OLD");
    for (const auto& s : layout.styles()) {
        EXPECT_FALSE(s->hasPlacement("OLD"));
        EXPECT_TRUE(s->hasPlacement("NEW"));
    }
    EXPECT_EQ(s1->getRow("NEW"), 2);
    EXPECT_EQ(s1->getColumn("NEW"), 3);
    EXPECT_TRUE(s1->isFieldInHeader("NEW"));
    EXPECT_EQ(s1->getFieldIndex("NEW"), 4);
    EXPECT_EQ(s2->getFieldIndex("NEW"), 7);
}

TEST(BlockLayout, FieldRenamedRewritesSecondLanguagePartners) {
    BlockLayout layout;
    layout.addField(field("TITLE"));
    auto german = field("TITLE_DE");
    german->secondLanguageFieldId = "TITLE";
    layout.addField(german);
    layout.getField(0)->id = "NAME";
    layout.fieldRenamed(0, "TITLE");
    EXPECT_EQ(layout.getField(1)->secondLanguageFieldId, "NAME");
}

TEST(BlockLayout, FieldRenamedWithUnchangedIdChangesNothing) {
    BlockLayout layout;
    layout.addField(field("A"));
    auto s = style("S");
    s->setRow("A", 1);
    layout.addStyle(s);
    const BlockLayout before(layout);
    layout.fieldRenamed(0, "A");
    EXPECT_EQ(layout, before);
}

TEST(BlockLayout, RowTypeRenamedMovesTheStylesTableColumns) {
    BlockLayout layout;
    layout.getTable().addRowType(rowType("OLD", {"T1", "T2"}));
    auto s = style("S");
    s->setTableColumn("OLD", "T1", 1);
    s->setTableColumn("OLD", "T2", 2);
    s->setTableColumn("OTHER", "T1", 9);
    layout.addStyle(s);
    layout.getTable().getRowType(0)->id = "NEW";
    layout.rowTypeRenamed(0, "OLD");
    EXPECT_FALSE(s->hasTableColumn("OLD", "T1"));
    EXPECT_FALSE(s->hasTableColumn("OLD", "T2"));
    EXPECT_EQ(s->getTableColumn("NEW", "T1"), 1);
    EXPECT_EQ(s->getTableColumn("NEW", "T2"), 2);
    EXPECT_EQ(s->getTableColumn("OTHER", "T1"), 9);
    EXPECT_EQ(layout.rowTypeIds(), std::vector<std::string>{"NEW"});
}

TEST(BlockLayout, DeleteFieldDropsItsPlacementsAndPartnerReferences) {
    BlockLayout layout;
    layout.addField(field("A"));
    auto b = field("B");
    b->secondLanguageFieldId = "A";
    layout.addField(b);
    auto s = style("S");
    s->setRow("A", 1);
    s->setRow("B", 2);
    layout.addStyle(s);
    layout.deleteField(0);
    EXPECT_FALSE(s->hasPlacement("A"));
    EXPECT_TRUE(s->hasPlacement("B"));
    EXPECT_EQ(b->secondLanguageFieldId, "");
}

TEST(BlockLayout, DeleteFieldKeepsEntriesWhileAnotherFieldHasTheSameId) {
    // A copied field keeps its source's ID; deleting one of the two keeps the shared entries.
    BlockLayout layout;
    layout.addField(field("A"));
    layout.addField(field("A"));
    auto s = style("S");
    s->setRow("A", 1);
    layout.addStyle(s);
    layout.deleteField(1);
    EXPECT_EQ(s->getRow("A"), 1);
}

TEST(BlockLayout, DeletedFieldHeldByADialogStaysUsableButDetached) {
    BlockLayout layout;
    layout.addField(field("A"));
    const boost::shared_ptr<Field> held = layout.getField(0);
    layout.deleteField(0);
    held->id = "still alive";
    EXPECT_TRUE(layout.fields().empty());
}

TEST(BlockLayout, TableFieldIdsOfUnknownRowTypeIsEmpty) {
    BlockLayout layout;
    layout.getTable().addRowType(rowType("ROW", {"T1", "T2"}));
    EXPECT_EQ(layout.tableFieldIds("ROW"), (std::vector<std::string>{"T1", "T2"}));
    EXPECT_TRUE(layout.tableFieldIds("NONE").empty());
}

TEST(BlockLayout, SecondLanguageFieldIdsOffersEveryFieldInOrder) {
    BlockLayout layout;
    layout.addField(field("B"));
    auto a = field("A");
    a->secondLanguageFieldId = "B";
    layout.addField(a);
    EXPECT_EQ(layout.secondLanguageFieldIds(), (std::vector<std::string>{"B", "A"}));
}

TEST(BlockLayout, TableRowsCreatedFlagIsReachedThroughGetTable) {
    BlockLayout layout;
    layout.getTable().rowsCreated = true;
    EXPECT_TRUE(static_cast<const BlockLayout&>(layout).getTable().rowsCreated);
}

TEST(BlockLayout, InformationStringNamesIdAndFields) {
    BlockLayout layout;
    layout.id = "TITLE";
    layout.addField(field("DRAWN_BY"));
    const std::string text = layout.informationString();
    EXPECT_NE(text.find("TITLE"), std::string::npos);
    EXPECT_NE(text.find("DRAWN_BY"), std::string::npos);
}

// The symbol types' lines name fields of the first row type: a rename of such a field reaches
// both lines of every symbol type.
TEST(BlockLayout, TableFieldsRenamedRewritesBothLinesOfEverySymbolType) {
    BlockLayout layout;
    auto first = boost::make_shared<SymbolType>();
    first->line1FieldIds = {"POS", "QTY"};
    first->line2FieldIds = {"POS"};
    auto second = boost::make_shared<SymbolType>();
    second->line1FieldIds = {"NAME"};
    second->line2FieldIds = {"QTY", "POS"};
    layout.addSymbolType(first);
    layout.addSymbolType(second);

    layout.tableFieldsRenamed({{"POS", "ITEM"}});

    EXPECT_EQ(first->line1FieldIds, (std::vector<std::string>{"ITEM", "QTY"}));
    EXPECT_EQ(first->line2FieldIds, (std::vector<std::string>{"ITEM"}));
    EXPECT_EQ(second->line1FieldIds, (std::vector<std::string>{"NAME"}));
    EXPECT_EQ(second->line2FieldIds, (std::vector<std::string>{"QTY", "ITEM"}));
}

TEST(BlockLayout, TableFieldsRenamedSwapsTwoIdsAtOnce) {
    BlockLayout layout;
    auto symbol = boost::make_shared<SymbolType>();
    symbol->line1FieldIds = {"A", "B"};
    layout.addSymbolType(symbol);

    layout.tableFieldsRenamed({{"A", "B"}, {"B", "A"}});

    EXPECT_EQ(symbol->line1FieldIds, (std::vector<std::string>{"B", "A"}));
}

// A table field's rename, as the block layout dialog passes it on after the row type dialog:
// nothing names the old ID any more, neither the row's roles and dialog list, nor the styles'
// table columns, nor the symbol types' lines.
TEST(BlockLayout, TableFieldRenameReachesRolesDialogListStylesAndSymbolTypes) {
    BlockLayout layout;
    auto itemStyle = style("S");
    layout.addStyle(itemStyle);
    auto itemRow = rowType("ITEM", {});
    layout.getTable().addRowType(itemRow);
    RowType::StyleList styles = layout.styles2();
    auto pos = boost::make_shared<Field>(true);
    pos->id = "POS";
    itemRow->addField(pos, styles);
    itemStyle->setTableColumn("ITEM", "POS", 4);
    itemRow->zoneFieldId = "POS";
    itemRow->keyFieldId = "POS";
    itemRow->setDialogListFields({"POS"});
    auto symbol = boost::make_shared<SymbolType>();
    symbol->line1FieldIds = {"POS"};
    layout.addSymbolType(symbol);

    pos->id = "ITEMNO";
    itemRow->fieldRenamed(0, "POS", styles);
    layout.tableFieldsRenamed({{"POS", "ITEMNO"}});

    EXPECT_EQ(itemRow->zoneFieldId, "ITEMNO");
    EXPECT_EQ(itemRow->keyFieldId, "ITEMNO");
    EXPECT_EQ(itemRow->dialogListFields(), (std::vector<std::string>{"ITEMNO"}));
    EXPECT_FALSE(itemStyle->hasTableColumn("ITEM", "POS"));
    EXPECT_EQ(itemStyle->getTableColumn("ITEM", "ITEMNO"), 4);
    EXPECT_EQ(symbol->line1FieldIds, (std::vector<std::string>{"ITEMNO"}));
}

// A block field's rename reaches every style's placement and every partner reference, and
// leaves the symbol types alone: their IDs name table fields.
TEST(BlockLayout, FieldRenamedReachesEveryStyleAndPartnerButNotTheSymbolTypes) {
    BlockLayout layout;
    auto first = style("S1");
    auto second = style("S2");
    first->setRow("TITLE", 1);
    second->setColumn("TITLE", 2);
    layout.addStyle(first);
    layout.addStyle(second);
    auto title = field("TITLE");
    auto partner = field("TITLE2");
    partner->secondLanguageFieldId = "TITLE";
    layout.addField(title);
    layout.addField(partner);
    auto symbol = boost::make_shared<SymbolType>();
    symbol->line1FieldIds = {"TITLE"};
    layout.addSymbolType(symbol);

    title->id = "NAME";
    layout.fieldRenamed(0, "TITLE");

    EXPECT_EQ(first->getRow("NAME"), 1);
    EXPECT_EQ(second->getColumn("NAME"), 2);
    EXPECT_FALSE(first->hasPlacement("TITLE"));
    EXPECT_FALSE(second->hasPlacement("TITLE"));
    EXPECT_EQ(partner->secondLanguageFieldId, "NAME");
    EXPECT_EQ(symbol->line1FieldIds, (std::vector<std::string>{"TITLE"}));
}

TEST(BlockLayout, RowTypeRenamedLeavesOtherRowTypesColumnsAlone) {
    BlockLayout layout;
    auto columns = style("S");
    columns->setTableColumn("ITEM", "POS", 1);
    columns->setTableColumn("HEAD", "POS", 2);
    layout.addStyle(columns);
    layout.getTable().addRowType(rowType("LINE", {"POS"}));

    layout.rowTypeRenamed(0, "ITEM");

    EXPECT_EQ(columns->getTableColumn("LINE", "POS"), 1);
    EXPECT_FALSE(columns->hasTableColumn("ITEM", "POS"));
    EXPECT_EQ(columns->getTableColumn("HEAD", "POS"), 2);
}
