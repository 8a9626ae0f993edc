#include "host/banner.h"

#include <gtest/gtest.h>

#include "platform/sim/sim_host.h"

namespace {

TEST(PadLine, LaysTextOverSeventyEightFillCharactersInThreeAlignments) {
    EXPECT_EQ(PadLine(L"", L'+', PadAlign::Center), std::wstring(78, L'+'));
    EXPECT_EQ(PadLine(L"ab", L'-', PadAlign::Left), L"ab" + std::wstring(76, L'-'));
    EXPECT_EQ(PadLine(L"ab", L'-', PadAlign::Right), std::wstring(76, L'-') + L"ab");
    // Centring starts at (78 - length) / 2, rounding the odd column to the right side.
    EXPECT_EQ(PadLine(L"abc", L' ', PadAlign::Center),
              std::wstring(37, L' ') + L"abc" + std::wstring(38, L' '));
}

TEST(PadLine, CutsTextBeyondTheLastColumn) {
    std::wstring longText(80, L'x');
    longText[0] = L'A';
    EXPECT_EQ(PadLine(longText, L' ', PadAlign::Left), L"A" + std::wstring(77, L'x'));
    // A centred or right-aligned start below 0 counts as 0.
    EXPECT_EQ(PadLine(longText, L' ', PadAlign::Center), L"A" + std::wstring(77, L'x'));
    EXPECT_EQ(PadLine(longText, L' ', PadAlign::Right), L"A" + std::wstring(77, L'x'));
    EXPECT_EQ(PadLine(std::wstring(78, L'y'), L'+', PadAlign::Center), std::wstring(78, L'y'));
}

TEST(Banner, PrintsFourFramedLinesAfterABlankOne) {
    SimHost host;
    host.SetMainExecutableYear(2007);
    PrintBanner(L" Hello ", L'+');
    const auto& lines = host.CommandLine();
    ASSERT_EQ(lines.size(), 5u);
    EXPECT_EQ(lines[0], L"");
    EXPECT_EQ(lines[1], std::wstring(80, L'+'));
    EXPECT_EQ(lines[2], L"+" + PadLine(L" Hello ", L' ', PadAlign::Center) + L"+");
    EXPECT_NE(lines[3].find(L"Harvane 2007"), std::wstring::npos);
    EXPECT_EQ(lines[3].size(), 80u);
    EXPECT_EQ(lines[4], std::wstring(80, L'+'));
}

}  // namespace
