#include "foundation/xml/xml_value.h"

#include <gtest/gtest.h>

TEST(XmlValue, NamedEntitiesDecodeAndUnknownOnesStayAsText) {
    EXPECT_EQ(DecodeXmlValue(L"&lt;a&gt; &amp; &apos;b&apos; &quot;c&quot;"), L"<a> & 'b' \"c\"");
    EXPECT_EQ(DecodeXmlValue(L"&nbsp;&copy;"), L"&nbsp;&copy;");
    EXPECT_EQ(DecodeXmlValue(L"a & b"), L"a & b");
    // An entity cut by the end of the value is not one.
    EXPECT_EQ(DecodeXmlValue(L"x&amp"), L"x&amp");
    EXPECT_EQ(DecodeXmlValue(L"&"), L"&");
}

TEST(XmlValue, CharacterReferencesInBothBases) {
    EXPECT_EQ(DecodeXmlValue(L"&#65;&#x42;&#x6a;"), L"ABj");
    EXPECT_EQ(DecodeXmlValue(L"&#233;t&#xE9;"), L"\u00e9t\u00e9");
    // Read like wcstol: digits up to the first other character, then on after the ';'.
    EXPECT_EQ(DecodeXmlValue(L"&#65z;!"), L"A!");
    // An upper-case X is no hexadecimal marker: it reads as decimal and gives nothing.
    EXPECT_EQ(DecodeXmlValue(L"&#X41;"), L"&#X41;");
}

TEST(XmlValue, CharacterReferenceNeedsItsSemicolonWithinSevenCharacters) {
    EXPECT_EQ(DecodeXmlValue(L"&#000065;"), L"A");            // ';' is the seventh after '#'
    EXPECT_EQ(DecodeXmlValue(L"&#0000065;"), L"&#0000065;");  // the eighth
    EXPECT_EQ(DecodeXmlValue(L"&#x000041;"), L"A");           // counted from the 'x'
    EXPECT_EQ(DecodeXmlValue(L"&#65"), L"&#65");
}

TEST(XmlValue, ZeroAndOutOfRangeReferences) {
    EXPECT_EQ(DecodeXmlValue(L"&#0;x"), L"&#0;x");
    EXPECT_EQ(DecodeXmlValue(L"&#;"), L"&#;");
    EXPECT_EQ(DecodeXmlValue(L"&#xD800;"), L"\xFFFD");
    EXPECT_EQ(DecodeXmlValue(L"&#x110000;"), L"\xFFFD");
    const std::wstring astral = DecodeXmlValue(L"&#x1F600;");
    if constexpr (sizeof(wchar_t) == 2)
        EXPECT_EQ(astral, std::wstring(L"\xD83D\xDE00"));
    else
        EXPECT_EQ(astral, std::wstring(1, static_cast<wchar_t>(0x1F600)));
}

TEST(XmlValue, EncodingRoundTripsThroughDecoding) {
    const std::wstring value = L"<a href=\"x\">it's & done</a> &amp;";
    EXPECT_EQ(DecodeXmlValue(EncodeXmlAttributeValue(value)), value);
    EXPECT_EQ(DecodeXmlValue(EncodeXmlText(value)), value);
    EXPECT_EQ(EncodeXmlText(L"'\"<"), L"'\"&lt;");
    EXPECT_EQ(EncodeXmlAttributeValue(L"'\""), L"&apos;&quot;");
}
