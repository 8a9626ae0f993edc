#include "foundation/split.h"

#include <gtest/gtest.h>

using Pieces = std::vector<std::wstring>;

TEST(CSplitTest, EmptyPiecesAreKeptWhereDelimitersMeet) {
    EXPECT_TRUE(CSplit(L"", L",").m_pieces.empty());
    EXPECT_EQ(CSplit(L",", L",").m_pieces, (Pieces{L"", L""}));
    EXPECT_EQ(CSplit(L"a,b,", L",").m_pieces, (Pieces{L"a", L"b", L""}));
    EXPECT_EQ(CSplit(L",a", L",").m_pieces, (Pieces{L"", L"a"}));
    EXPECT_EQ(CSplit(L"a,,b", L",").m_pieces, (Pieces{L"a", L"", L"b"}));
    EXPECT_EQ(CSplit(L"abc", L",").m_pieces, (Pieces{L"abc"}));
}

TEST(CSplitTest, DelimiterIsAWholeCaseSensitiveString) {
    EXPECT_EQ(CSplit(L"a::b:c", L"::").m_pieces, (Pieces{L"a", L"b:c"}));
    EXPECT_EQ(CSplit(L"aXbxc", L"X").m_pieces, (Pieces{L"a", L"bxc"}));
    EXPECT_EQ(CSplit(L"a=b=c", L"=").m_pieces, (Pieces{L"a", L"b", L"c"}));
    EXPECT_EQ(CSplit(L"abc", L"").m_pieces, (Pieces{L"abc"}));
}

TEST(CSplitTest, SplitAppendsToPiecesAlreadyHeld) {
    CSplit split(L"a,b", L",");
    split.Split(L"", L",");
    split.Split(L"c", L",");
    EXPECT_EQ(split.m_pieces, (Pieces{L"a", L"b", L"c"}));
}

TEST(CSplitTest, TrimmingWorksOnEachPieceAfterSplitting) {
    EXPECT_EQ(CSplit(L" C:\\a b.dwg , 1 ,  ", L",", true).m_pieces,
              (Pieces{L"C:\\a b.dwg", L"1", L""}));
    CSplit split(L"xxaxx|xbx", L"|");
    split.Trim(L"x", true, false);
    EXPECT_EQ(split.m_pieces, (Pieces{L"axx", L"bx"}));
    split.Trim(L"x", false, true);
    EXPECT_EQ(split.m_pieces, (Pieces{L"a", L"b"}));
}

TEST(CSplitTest, JoinRestoresAnUnchangedText) {
    for (const wchar_t* text : {L"a,b,", L",", L",a,,b", L"plain"}) {
        EXPECT_EQ(CSplit(text, L",").Join(L","), text);
    }
    EXPECT_EQ(CSplit().Join(L","), L"");
    EXPECT_EQ(CSplit(L"a,b", L",").Join(L" - "), L"a - b");
}
