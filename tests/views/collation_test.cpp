// The two sort orders of the bar's lists: the tab control's plain one and the palette's
// dictionary order.

#include "views/collation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace {

int Sign(int value) {
    return (value > 0) - (value < 0);
}

using Pair = std::pair<std::wstring_view, std::wstring_view>;

// Each pair in the order given: the first strictly before the second.
void ExpectOrdered(int (*compare)(std::wstring_view, std::wstring_view),
                   std::initializer_list<Pair> pairs) {
    for (const auto& [first, second] : pairs) {
        EXPECT_LT(compare(first, second), 0) << std::wstring(first).size();
        EXPECT_GT(compare(second, first), 0) << std::wstring(second).size();
    }
}

TEST(CompareNoCase, FoldsToLowerCaseAndPutsAPrefixFirst) {
    EXPECT_EQ(CompareNoCase(L"Plan", L"pLAN"), 0);
    EXPECT_EQ(CompareNoCase(L"ÄRGER", L"ärger"), 0);
    // Folding to lower case puts the underscore before letters, as the system's does.
    ExpectOrdered(CompareNoCase, {{L"plan", L"plan2"}, {L"A", L"b"}, {L"_site", L"site"}});
}

TEST(CollateNoCase, CaseNeverDecides) {
    EXPECT_EQ(CollateNoCase(L"Plan", L"pLaN"), 0);
    EXPECT_EQ(CollateNoCase(L"ÉCOLE", L"école"), 0);
    EXPECT_EQ(CollateNoCase(L"", L""), 0);
}

TEST(CollateNoCase, AccentedLettersSortWithTheirBaseLetterAndAfterThePlainOne) {
    // Code points would put every accented letter after "z".
    ExpectOrdered(CollateNoCase, {{L"eagle", L"école"},
                                  {L"école", L"fox"},
                                  {L"Łódź", L"Lyon"},
                                  {L"ecole", L"école"},
                                  {L"résumé", L"resumes"}});
}

TEST(CollateNoCase, LigaturesAndSharpSCountAsTwoLetters) {
    ExpectOrdered(
        CollateNoCase,
        {{L"Strasse", L"Straße"}, {L"Straße", L"Strasses"}, {L"Adz", L"Æon"}, {L"Æon", L"Af"}});
}

TEST(CollateNoCase, HyphensAndApostrophesArePassedOverAtFirst) {
    ExpectOrdered(
        CollateNoCase,
        {{L"co-op", L"copy"}, {L"coop", L"co-op"}, {L"cant", L"can't"}, {L"red", L"re-do"}});
}

TEST(CollateNoCase, SymbolsComeBeforeDigitsAndDigitsBeforeLetters) {
    ExpectOrdered(CollateNoCase, {{L"_site", L"1site"},
                                  {L"[a]", L"0"},
                                  {L"9", L"a"},
                                  {L"z", L"ω"},                // Latin before Greek
                                  {L"C:\\a\\x", L"C:\\ab"}});  // a separator before a letter
}

TEST(CollateNoCase, IsAConsistentOrderForSorting) {
    std::vector<std::wstring> words{L"Zeta",    L"école", L"Eagle", L"co-op", L"coop", L"Straße",
                                    L"strasse", L"1st",   L"_tmp",  L"Ærø",   L"aero", L"résumé"};
    for (const auto& a : words) {
        EXPECT_EQ(CollateNoCase(a, a), 0);
        for (const auto& b : words)
            EXPECT_EQ(Sign(CollateNoCase(a, b)), -Sign(CollateNoCase(b, a))) << "a: " << a.size();
    }
    std::sort(words.begin(), words.end(),
              [](const auto& a, const auto& b) { return CollateNoCase(a, b) < 0; });
    EXPECT_EQ(words, (std::vector<std::wstring>{L"_tmp", L"1st", L"aero", L"Ærø", L"coop", L"co-op",
                                                L"Eagle", L"école", L"résumé", L"strasse",
                                                L"Straße", L"Zeta"}));
}

}  // namespace
