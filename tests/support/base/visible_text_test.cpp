#include "base/visible_text.h"

#include <gtest/gtest.h>

TEST(VisibleText, PrintableTextAndUtf8StayAsTheyAre) {
    EXPECT_EQ(Base::visibleText("Größe 3 A"), "Größe 3 A");
}

TEST(VisibleText, ControlCharactersAndStrayBytesAreEscaped) {
    EXPECT_EQ(Base::visibleText(std::string("a\0b\tc\nd\re\x7F\xC3", 11)),
              "a\\x00b\\tc\\nd\\re\\x7F\\xC3");
}

TEST(VisibleText, InvisibleCharactersAreNamedByCodePoint) {
    EXPECT_EQ(Base::visibleText("\xEF\xBB\xBFkey\xC2\xA0x\xE2\x80\x8By"),
              "\\uFEFFkey\\u00A0x\\u200By");
}

TEST(VisibleText, ABackslashIsWrittenTwice) {
    EXPECT_EQ(Base::visibleText("a\\x00"), "a\\\\x00");
}
