#include "base/wildcard_filter.h"

#include <gtest/gtest.h>

namespace {

using Base::WildcardFilter;
using boost::filesystem::path;

TEST(WildcardFilter, StarMatchesAnyRunIncludingNone) {
    WildcardFilter filter("*.fordef");
    EXPECT_TRUE(filter.matches(std::string("plan.fordef")));
    EXPECT_TRUE(filter.matches(std::string(".fordef")));
    EXPECT_TRUE(filter.matches(std::string("a.b.fordef")));
    EXPECT_FALSE(filter.matches(std::string("plan.fordef.bak")));
    EXPECT_FALSE(filter.matches(std::string("plan.prt")));
}

TEST(WildcardFilter, QuestionMarkMatchesExactlyOneCharacter) {
    WildcardFilter filter("a?.prt");
    EXPECT_TRUE(filter.matches(std::string("a3.prt")));
    EXPECT_FALSE(filter.matches(std::string("a.prt")));
    EXPECT_FALSE(filter.matches(std::string("a34.prt")));
}

TEST(WildcardFilter, IsCaseSensitive) {
    WildcardFilter filter("*.fordef");
    EXPECT_FALSE(filter.matches(std::string("PLAN.FORDEF")));
    EXPECT_FALSE(filter.matches(std::string("plan.Fordef")));
}

TEST(WildcardFilter, MatchesTheWholeLeafNameOnly) {
    WildcardFilter filter("*.prt");
    EXPECT_TRUE(filter.matches(path("/site/format_defs/frame_templates/a3.prt")));
    EXPECT_FALSE(filter.matches(path("/site/x.prt/readme.txt")));
    WildcardFilter exact("a3.prt");
    EXPECT_FALSE(exact.matches(std::string("xa3.prt")));
    EXPECT_FALSE(exact.matches(std::string("a3.prtx")));
}

TEST(WildcardFilter, TreatsRegexMetacharactersLiterally) {
    WildcardFilter filter("a+b(1)[x]{2}^$|\\.prt");
    EXPECT_TRUE(filter.matches(std::string("a+b(1)[x]{2}^$|\\.prt")));
    EXPECT_FALSE(filter.matches(std::string("aab1x2.prt")));
    WildcardFilter dot("a.prt");
    EXPECT_FALSE(dot.matches(std::string("axprt")));
}

TEST(WildcardFilter, MatchesNamesWithBlanksAndNonAsciiBytes) {
    WildcardFilter filter("*.fordef");
    EXPECT_TRUE(filter.matches(std::string("my plan.fordef")));
    EXPECT_TRUE(filter.matches(std::string("Zeichnungsk\xc3\xb6pfe.fordef")));
    WildcardFilter umlaut("k\xc3\xb6?f.prt");
    EXPECT_TRUE(umlaut.matches(std::string("k\xc3\xb6pf.prt")));
}

TEST(WildcardFilter, StarMatchesLineBreaksInNames) {
    WildcardFilter filter("a*b");
    EXPECT_TRUE(filter.matches(std::string("a\nb")));
}

} // namespace
