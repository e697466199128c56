#include "model/row_type.h"

#include <boost/make_shared.hpp>

#include <gtest/gtest.h>

#include <stdexcept>

using namespace QorBorder;

namespace {

boost::shared_ptr<Field> tableField(const std::string& id) {
    auto f = boost::make_shared<Field>(true);
    f->id = id;
    return f;
}

RowType::StyleList twoStyles() {
    return {boost::make_shared<BlockStyle>(), boost::make_shared<BlockStyle>()};
}

} // namespace

TEST(RowType, AddFieldGivesEveryStyleAColumnEntryForTheField) {
    RowType row;
    row.id = "ROW";
    RowType::StyleList styles = twoStyles();
    styles[1]->setTableColumn("ROW", "T", 4);
    row.addField(tableField("T"), styles);
    EXPECT_TRUE(styles[0]->hasTableColumn("ROW", "T"));
    EXPECT_EQ(styles[0]->getTableColumn("ROW", "T"), 0);
    EXPECT_EQ(styles[1]->getTableColumn("ROW", "T"), 4); // an existing entry is kept
    EXPECT_EQ(row.fields().size(), 1u);
}

TEST(RowType, AddFieldToARowTypeWithoutIdLeavesTheStylesAlone) {
    RowType row;
    RowType::StyleList styles = twoStyles();
    row.addField(tableField("T"), styles);
    EXPECT_TRUE(styles[0]->tableColumns().empty());
    EXPECT_TRUE(styles[1]->tableColumns().empty());
    EXPECT_EQ(row.fields().size(), 1u);
}

TEST(RowType, DeleteFieldRemovesItFromTheStyles) {
    RowType row;
    row.id = "ROW";
    RowType::StyleList styles = twoStyles();
    row.addField(tableField("T1"), styles);
    row.addField(tableField("T2"), styles);
    styles[0]->setTableColumn("ROW", "T1", 3);
    row.deleteField(0, styles);
    EXPECT_FALSE(styles[0]->hasTableColumn("ROW", "T1"));
    EXPECT_FALSE(styles[1]->hasTableColumn("ROW", "T1"));
    EXPECT_TRUE(styles[0]->hasTableColumn("ROW", "T2"));
    ASSERT_EQ(row.fields().size(), 1u);
    EXPECT_EQ(row.fields()[0]->id, "T2");
}

TEST(RowType, DeleteFieldClearsTheRolesAndDialogEntriesItHeld) {
    RowType row;
    RowType::StyleList styles;
    row.addField(tableField("T1"), styles);
    row.addField(tableField("T2"), styles);
    row.zoneFieldId = "T1";
    row.keyFieldId = "T2";
    row.typeManagerFieldId = "T1";
    row.setValidSymbolIndices(0, "1,2");
    row.setDialogListFields({"T1", "T2", "T1"});
    row.deleteField(0, styles);
    EXPECT_EQ(row.zoneFieldId, "");
    EXPECT_EQ(row.typeManagerFieldId, "");
    EXPECT_EQ(row.keyFieldId, "T2");
    EXPECT_EQ(row.dialogListFields(), std::vector<std::string>{"T2"});
    EXPECT_TRUE(row.typeManagerSettings().empty());
}

TEST(RowType, DeleteFieldOutsideTheListThrowsOutOfRange) {
    RowType row;
    RowType::StyleList styles;
    EXPECT_THROW(row.deleteField(0, styles), std::out_of_range);
}

TEST(RowType, FieldRenamedUpdatesRolesDialogListAndStyles) {
    RowType row;
    row.id = "ROW";
    RowType::StyleList styles = twoStyles();
    row.addField(tableField("OLD"), styles);
    row.addField(tableField("OTHER"), styles);
    row.zoneFieldId = "OLD";
    row.typeManagerFieldId = "OLD";
    row.keyFieldId = "OTHER";
    row.setDialogListFields({"OTHER", "OLD"});
    styles[0]->setTableColumn("ROW", "OLD", 6);
    row.getField(0)->id = "NEW";
    row.fieldRenamed(0, "OLD", styles);
    EXPECT_EQ(row.zoneFieldId, "NEW");
    EXPECT_EQ(row.typeManagerFieldId, "NEW");
    EXPECT_EQ(row.keyFieldId, "OTHER");
    EXPECT_EQ(row.dialogListFields(), (std::vector<std::string>{"OTHER", "NEW"}));
    EXPECT_FALSE(styles[0]->hasTableColumn("ROW", "OLD"));
    EXPECT_EQ(styles[0]->getTableColumn("ROW", "NEW"), 6);
    EXPECT_FALSE(styles[1]->hasTableColumn("ROW", "OLD"));
}

TEST(RowType, GetFieldByIdFindsTheFirstOrNothing) {
    RowType row;
    RowType::StyleList styles;
    row.addField(tableField("A"), styles);
    auto second = tableField("A");
    second->type = 1;
    row.addField(second, styles);
    ASSERT_TRUE(row.getField("A"));
    EXPECT_EQ(row.getField("A")->type, 0);
    EXPECT_FALSE(row.getField("B"));
    EXPECT_FALSE(row.getField(2));
}

TEST(RowType, TypeManagerTextsAreStoredPerChoiceAndClearedTogether) {
    RowType row;
    EXPECT_EQ(row.validSymbolIndices(0), "");
    row.setValidSymbolIndices(0, "1, 2");
    row.setDisabledFieldIds(3, "A B");
    EXPECT_EQ(row.validSymbolIndices(0), "1, 2");
    EXPECT_EQ(row.disabledFieldIds(0), "");
    EXPECT_EQ(row.disabledFieldIds(3), "A B");
    row.clearTypeManagerSettings();
    EXPECT_EQ(row.validSymbolIndices(0), "");
    EXPECT_EQ(row.disabledFieldIds(3), "");
}

TEST(RowType, SetDialogListFieldsReplacesTheList) {
    RowType row;
    row.setDialogListFields({"A", "B"});
    row.setDialogListFields({"C"});
    EXPECT_EQ(row.dialogListFields(), std::vector<std::string>{"C"});
}

TEST(RowType, CopyIsDeep) {
    RowType source;
    source.appendField(tableField("A"));
    RowType copy(source);
    copy.getField(0)->id = "changed";
    EXPECT_EQ(source.fields()[0]->id, "A");
    RowType assigned;
    assigned = source;
    assigned.getField(0)->id = "changed";
    EXPECT_EQ(source.fields()[0]->id, "A");
    EXPECT_EQ(RowType(source), source);
}
