#include "model/block_style.h"

#include <gtest/gtest.h>

using QorBorder::BlockStyle;

TEST(BlockStyle, GettersOfKeysNotHeldReturnZeroAndFalse) {
    const BlockStyle style;
    EXPECT_EQ(style.getRow("X"), 0);
    EXPECT_EQ(style.getColumn("X"), 0);
    EXPECT_FALSE(style.isFieldInHeader("X"));
    EXPECT_EQ(style.getFieldIndex("X"), 0);
    EXPECT_EQ(style.getTableColumn("R", "X"), 0);
    EXPECT_FALSE(style.hasPlacement("X"));
}

TEST(BlockStyle, SettersCreateTheEntryAndKeepTheOtherValues) {
    BlockStyle style;
    style.setRow("F", 2);
    EXPECT_TRUE(style.hasPlacement("F"));
    style.setColumn("F", 3);
    style.setFieldInHeader("F", true);
    style.setFieldIndex("F", -4);
    EXPECT_EQ(style.getRow("F"), 2);
    EXPECT_EQ(style.getColumn("F"), 3);
    EXPECT_TRUE(style.isFieldInHeader("F"));
    EXPECT_EQ(style.getFieldIndex("F"), -4);
}

TEST(BlockStyle, TableColumnsAreKeyedByRowTypeAndFieldTogether) {
    BlockStyle style;
    style.setTableColumn("R1", "F", 1);
    style.setTableColumn("R2", "F", 2);
    style.setTableColumn("R1", "G", 3);
    EXPECT_EQ(style.getTableColumn("R1", "F"), 1);
    EXPECT_EQ(style.getTableColumn("R2", "F"), 2);
    EXPECT_EQ(style.getTableColumn("R1", "G"), 3);
    EXPECT_EQ(style.getTableColumn("R2", "G"), 0);
}

TEST(BlockStyle, RenamePlacementReplacesWhatTheNewIdHeld) {
    BlockStyle style;
    style.setRow("OLD", 1);
    style.setRow("NEW", 2);
    style.renamePlacement("OLD", "NEW");
    EXPECT_FALSE(style.hasPlacement("OLD"));
    EXPECT_EQ(style.getRow("NEW"), 1);
}

TEST(BlockStyle, CopyKeepsEveryEntry) {
    BlockStyle style;
    style.id = "S";
    style.setRow("F", 1);
    style.setTableColumn("R", "F", 2);
    const BlockStyle copy(style);
    EXPECT_EQ(copy, style);
    EXPECT_EQ(copy.getTableColumn("R", "F"), 2);
}
