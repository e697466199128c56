#include "model/field.h"

#include <gtest/gtest.h>

using QorBorder::Choice;
using QorBorder::Field;

TEST(Field, ConstructorFixesTheTableFieldFlag) {
    EXPECT_FALSE(Field().isTableField);
    EXPECT_FALSE(Field(false).isTableField);
    EXPECT_TRUE(Field(true).isTableField);
}

TEST(Field, DefaultFieldHasNoDefaultChoice) {
    const Field field;
    EXPECT_EQ(field.defaultChoice, -1);
    EXPECT_TRUE(field.textChoices().empty());
    EXPECT_EQ(field.type, 0);
    EXPECT_EQ(field.controlType, 0);
}

TEST(Field, TextChoicesHandsOutACopy) {
    Field field;
    Choice choice;
    choice.shortValue = "Steel";
    field.setTextChoices({choice});
    std::vector<Choice> copy = field.textChoices();
    copy[0].shortValue = "changed";
    copy.push_back(Choice());
    EXPECT_EQ(field.textChoices().size(), 1u);
    EXPECT_EQ(field.textChoices()[0].shortValue, "Steel");
}

TEST(Field, SetTextChoicesReplacesTheList) {
    Field field;
    Choice a;
    a.lookupKey = "a";
    Choice b;
    b.lookupKey = "b";
    field.setTextChoices({a, b});
    field.setTextChoices({b});
    ASSERT_EQ(field.textChoices().size(), 1u);
    EXPECT_EQ(field.textChoices()[0].lookupKey, "b");
}

TEST(Field, CopyKeepsChoicesAndTableFlag) {
    Field field(true);
    field.id = "F";
    Choice choice;
    choice.fullValue = "two\nlines";
    field.setTextChoices({choice});
    const Field copy(field);
    EXPECT_EQ(copy, field);
    EXPECT_TRUE(copy.isTableField);
}

TEST(Choice, CopyAssignmentCopiesAllThreeTexts) {
    Choice a;
    a.lookupKey = "k";
    a.shortValue = "s";
    a.fullValue = "f";
    Choice b;
    b = a;
    EXPECT_EQ(b, a);
}
