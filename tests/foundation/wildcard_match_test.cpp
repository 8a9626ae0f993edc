#include "foundation/wildcard_match.h"

#include <gtest/gtest.h>

#include "foundation/no_case.h"

TEST(WildcardMatchTest, StarAndQuestionMark) {
    EXPECT_TRUE(WildcardMatch(L"a*c", L"abbc", false));
    EXPECT_FALSE(WildcardMatch(L"a?c", L"ac", false));
    EXPECT_TRUE(WildcardMatch(L"a?c", L"abc", false));
    EXPECT_TRUE(WildcardMatch(L"*", L"", false));
    EXPECT_TRUE(WildcardMatch(L"", L"", false));
    EXPECT_FALSE(WildcardMatch(L"", L"a", false));
    EXPECT_FALSE(WildcardMatch(L"a", L"", false));
    EXPECT_TRUE(WildcardMatch(L"**", L"", false));
    EXPECT_TRUE(WildcardMatch(L"*.dwg", L"plan.v2.dwg", false));
    EXPECT_FALSE(WildcardMatch(L"*.dwg", L"plan.dwg.bak", false));
    EXPECT_TRUE(WildcardMatch(L"*a*b*c", L"xxaxxbxxbc", false));
    EXPECT_FALSE(WildcardMatch(L"*.*", L"noext", false));
    EXPECT_TRUE(WildcardMatch(L"a*", L"a", false));
}

TEST(WildcardMatchTest, CaseIsIgnoredUnlessAsked) {
    EXPECT_TRUE(WildcardMatch(L"*.DWG", L"plan.dwg", false));
    EXPECT_FALSE(WildcardMatch(L"*.DWG", L"plan.dwg", true));
    EXPECT_TRUE(WildcardMatch(L"\u00dcBER*", L"\u00fcber.dwg", false));
    EXPECT_TRUE(WildcardMatch(L"\u0416*", L"\u0436.dwg", false));
}

TEST(NoCaseTest, FoldsLettersOnlyAndOrdersTotally) {
    EXPECT_TRUE(EqualNoCase(L"Work Sets \u00c4\u0141", L"work sets \u00e4\u0142"));
    EXPECT_FALSE(EqualNoCase(L"a", L"ab"));
    EXPECT_FALSE(EqualNoCase(L"\u00d7", L"\u00f7"));  // signs, not letters
    EXPECT_TRUE(LessNoCase(L"apple", L"Banana"));
    EXPECT_TRUE(LessNoCase(L"B", L"b"));
    EXPECT_FALSE(LessNoCase(L"b", L"B"));
    EXPECT_TRUE(LessNoCase(L"ab", L"AB1"));
}
