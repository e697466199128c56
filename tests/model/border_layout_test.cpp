#include "model/border_layout.h"

#include <gtest/gtest.h>

#include <stdexcept>

using QorBorder::BorderLayout;
using QorBorder::DrawingSize;

namespace {

DrawingSize size(const std::string& name, const std::string& description) {
    DrawingSize s;
    s.name = name;
    s.description = description;
    return s;
}

} // namespace

TEST(BorderLayout, DefaultLayoutIsEmptyWithFirstUnits) {
    const BorderLayout layout;
    EXPECT_TRUE(layout.id.empty());
    EXPECT_TRUE(layout.coreRequiredBlocks.empty());
    EXPECT_TRUE(layout.secondLanguages.empty());
    EXPECT_EQ(layout.units, 1);
    EXPECT_EQ(layout.layer, 0);
    EXPECT_EQ(layout.bottomLeft, QorBorder::Point3());
    EXPECT_TRUE(layout.drawingSizes().empty());
}

TEST(BorderLayout, DrawingSizeDescriptionsOfLayoutWithoutSizesIsEmpty) {
    EXPECT_TRUE(BorderLayout().drawingSizeDescriptions().empty());
}

TEST(BorderLayout, DrawingSizeDescriptionsFollowListOrder) {
    BorderLayout layout;
    layout.addDrawingSize(size("A3", "A3 landscape"));
    layout.addDrawingSize(size("A1", "A1 landscape"));
    layout.addDrawingSize(size("A1", "A1 landscape"));
    EXPECT_EQ(layout.drawingSizeDescriptions(),
              (std::vector<std::string>{"A3 landscape", "A1 landscape", "A1 landscape"}));
}

TEST(BorderLayout, AddDrawingSizeStoresACopy) {
    BorderLayout layout;
    DrawingSize original = size("A4", "A4");
    layout.addDrawingSize(original);
    original.name = "changed";
    EXPECT_EQ(layout.getDrawingSize(0).name, "A4");
}

TEST(BorderLayout, GetDrawingSizeEditsTheStoredSizeInPlace) {
    BorderLayout layout;
    layout.addDrawingSize(size("A4", "A4"));
    layout.getDrawingSize(0).description = "edited";
    EXPECT_EQ(layout.drawingSizeDescriptions(), std::vector<std::string>{"edited"});
}

TEST(BorderLayout, DeleteFirstOfTwoSizesMovesSecondUp) {
    BorderLayout layout;
    layout.addDrawingSize(size("A3", "first"));
    layout.addDrawingSize(size("A2", "second"));
    layout.deleteDrawingSize(0);
    ASSERT_EQ(layout.drawingSizes().size(), 1u);
    EXPECT_EQ(layout.getDrawingSize(0).description, "second");
}

TEST(BorderLayout, IndexOutsideTheSizesThrowsOutOfRange) {
    BorderLayout layout;
    layout.addDrawingSize(size("A3", "first"));
    EXPECT_THROW(layout.getDrawingSize(1), std::out_of_range);
    EXPECT_THROW(layout.getDrawingSize(-1), std::out_of_range);
    EXPECT_THROW(layout.deleteDrawingSize(1), std::out_of_range);
    EXPECT_EQ(layout.drawingSizes().size(), 1u);
}

TEST(BorderLayout, CopyIsDeepSoEditingCopiedSizeLeavesSourceUnchanged) {
    BorderLayout source;
    source.id = "B";
    source.coreRequiredBlocks = {"TITLE"};
    source.addDrawingSize(size("A3", "A3"));
    BorderLayout copy(source);
    copy.getDrawingSize(0).height = 99;
    copy.getDrawingSize(0).name = "changed";
    copy.addDrawingSize(size("A4", "A4"));
    copy.coreRequiredBlocks.push_back("OTHER");
    EXPECT_EQ(source.getDrawingSize(0).name, "A3");
    EXPECT_EQ(source.getDrawingSize(0).height, 0.0);
    EXPECT_EQ(source.drawingSizes().size(), 1u);
    EXPECT_EQ(source.coreRequiredBlocks.size(), 1u);
}

TEST(BorderLayout, InformationStringNamesIdDescriptionAndSizes) {
    BorderLayout layout;
    layout.id = "FRAME";
    layout.description = "A frame";
    layout.addDrawingSize(size("A3", "A3 landscape"));
    const std::string text = layout.informationString();
    EXPECT_NE(text.find("FRAME"), std::string::npos);
    EXPECT_NE(text.find("A frame"), std::string::npos);
    EXPECT_NE(text.find("A3 landscape"), std::string::npos);
    EXPECT_NE(text.find('\n'), std::string::npos);
}

TEST(BorderLayout, EqualityComparesEveryMember) {
    BorderLayout a;
    a.addDrawingSize(size("A3", "A3"));
    BorderLayout b(a);
    EXPECT_EQ(a, b);
    b.topRight.z = 1;
    EXPECT_NE(a, b);
    b = a;
    b.getDrawingSize(0).verticalZones = 2;
    EXPECT_NE(a, b);
}
