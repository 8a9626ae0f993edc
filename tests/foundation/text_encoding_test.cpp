#include "foundation/text_encoding.h"

#include <gtest/gtest.h>

TEST(TextEncoding, RoundTripsEveryPlaneThroughUtf8) {
    const std::wstring text = L"plan \u00e9\u00df \u4e2d\u6587 " + std::wstring(1, static_cast<wchar_t>(0x20AC)) +
                              (sizeof(wchar_t) == 2 ? std::wstring(L"\xD83D\xDE00") : std::wstring(1, static_cast<wchar_t>(0x1F600)));
    EXPECT_EQ(FromUtf8(ToUtf8(text)), text);
    EXPECT_EQ(ToUtf8(L"\u00e9"), "\xC3\xA9");
}

TEST(TextEncoding, MalformedUtf8BecomesReplacementCharacters) {
    // A lone continuation byte, a cut sequence, an overlong slash and an encoded surrogate.
    EXPECT_EQ(FromUtf8("a\x80" "b"), L"a\xFFFD" L"b");
    EXPECT_EQ(FromUtf8("\xE4\xB8"), L"\xFFFD\xFFFD");
    EXPECT_EQ(FromUtf8("\xC0\xAF"), L"\xFFFD\xFFFD");
    EXPECT_EQ(FromUtf8("\xED\xA0\x80"), L"\xFFFD\xFFFD\xFFFD");
}

TEST(TextEncoding, Utf16LeJoinsPairsAndReplacesLoneSurrogates) {
    const std::string pair("\x3D\xD8\x00\xDE", 4);
    const std::wstring decoded = FromUtf16Le(pair);
    EXPECT_EQ(ToUtf8(decoded), "\xF0\x9F\x98\x80");
    EXPECT_EQ(FromUtf16Le(std::string("\x00\xDC" "A\x00" "B", 5)), L"\xFFFD" L"A");
}
