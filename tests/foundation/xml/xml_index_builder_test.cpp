#include "foundation/xml/xml_index_builder.h"

#include <gtest/gtest.h>

#include <string>

#include "foundation/no_case.h"
#include "foundation/xml/xml_document.h"

namespace {

std::wstring Nested(int depth) {
    std::wstring text;
    text.reserve(static_cast<std::size_t>(depth) * 7);
    for (int i = 0; i < depth; ++i)
        text += L"<n>";
    text += L"<leaf/>";
    for (int i = 0; i < depth; ++i)
        text += L"</n>";
    return text;
}

// The walk that reads the host's recent sheet sets out of its profile.
std::vector<std::wstring> RecentSheetSets(XmlDocument& doc) {
    std::vector<std::wstring> files;
    if (!doc.FindSibling(L"StorageRoot"))
        return files;
    for (const wchar_t* level : {L"AcApData", L"AdUiTools", L"ToolsInfo"}) {
        if (!doc.FindChild(level) || !doc.Descend())
            return files;
    }
    bool found = false;
    while (!found && doc.FindChild(L"Tool"))
        found = EqualNoCase(doc.Attribute(doc.ChildIndex(), L"CLSID"),
                            L"{BEBBB318-2898-4C03-ADA2-360DC6B7AA69}");
    if (!found || !doc.Descend() || !doc.FindChild(L"MRU_FILES") || !doc.Descend())
        return files;
    while (doc.FindChild(L"MRU_FILE"))
        files.push_back(doc.Attribute(doc.ChildIndex(), L"fileName"));
    return files;
}

}  // namespace

TEST(XmlIndexBuilder, DeepNestingNeedsNoStackOfItsOwn) {
    constexpr int kDepth = 100000;
    XmlDocument doc;
    ASSERT_TRUE(doc.Parse(Nested(kDepth))) << doc.Error();
    int levels = 0;
    while (doc.FindChild(L"n") && doc.Descend())
        ++levels;
    EXPECT_EQ(levels, kDepth - 1);  // the root itself is n
    ASSERT_TRUE(doc.FindChild(L"leaf"));
    // The level word keeps 16 bits.
    EXPECT_EQ(doc.Index()[doc.ChildIndex()].levelFlags & kXmlLevelMask, kDepth & 0xFFFFu);
    while (doc.Ascend())
        --levels;
    EXPECT_EQ(levels, 0);
    EXPECT_EQ(doc.TagName(), L"n");

    XmlDocument unclosed;
    EXPECT_FALSE(unclosed.Parse(Nested(kDepth).substr(0, kDepth * 3 + 7)));
    EXPECT_EQ(unclosed.Error(),
              L"Element 'n' at offset " + std::to_wstring((kDepth - 1) * 3) + L" not ended");
}

TEST(XmlIndexBuilder, MoreElementsThanOnePageHolds) {
    constexpr int kCount = 70000;
    std::wstring text = L"<r>";
    for (int i = 0; i < kCount; ++i)
        text += L"<i v=\"" + std::to_wstring(i) + L"\"/>";
    text += L"</r>";
    XmlDocument doc;
    ASSERT_TRUE(doc.Parse(text));
    // Short tags outrun one record per 64 characters: the index grew over a page boundary.
    EXPECT_GT(doc.Index().Allocated(), XmlElementIndex::kPageSize);
    int count = 0;
    bool inOrder = true;
    while (doc.FindChild(L"i"))
        inOrder = inOrder && doc.Attribute(doc.ChildIndex(), L"v") == std::to_wstring(count++);
    EXPECT_EQ(count, kCount);
    EXPECT_TRUE(inOrder);
    // The first child's backward link reaches the last one.
    const XmlElementRecord& first = doc.Index()[doc.Index()[1].firstChild];
    EXPECT_EQ(first.previous, doc.ChildIndex());
    EXPECT_TRUE(first.levelFlags & kXmlFirstChild);
}

TEST(XmlIndexBuilder, StartTagsBeyondTheMaskStillParse) {
    const std::wstring big((1 << 20) + 100, L'x');
    const std::wstring start = L"<a v=\"" + big + L"\" w=\"ok\">";
    XmlDocument doc;
    ASSERT_TRUE(doc.Parse(start + L"<b/></a>"));
    ASSERT_TRUE(doc.FindSibling());
    EXPECT_EQ(doc.Attribute(L"w"), L"ok");
    EXPECT_EQ(doc.Attribute(L"v").size(), big.size());
    const XmlElementRecord& root = doc.Index()[doc.CurrentIndex()];
    EXPECT_EQ(root.tagLengths & kXmlStartTagMask, start.size() & kXmlStartTagMask);
    EXPECT_NE(start.size() & kXmlStartTagMask, start.size());  // bit 20 is lost, as intended
    EXPECT_EQ(root.length, doc.Text().size());
    EXPECT_TRUE(doc.FindChild(L"b"));
}

TEST(XmlIndexBuilder, RecentSheetSetsOfAProfile) {
    XmlDocument doc;
    ASSERT_TRUE(doc.Parse(
        L"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n"
        L"<StorageRoot><AcApData><Other/><AdUiTools><ToolsInfo>\r\n"
        L"  <Tool CLSID=\"{00000000-0000-0000-0000-000000000000}\" Name=\"Tool &amp; Co\">\r\n"
        L"    <MRU_FILES><MRU_FILE fileName=\"C:\\wrong.dst\"/></MRU_FILES></Tool>\r\n"
        L"  <Tool Name=\"Sheets\" CLSID='{bebbb318-2898-4c03-ada2-360dc6b7aa69}'>\r\n"
        L"    <Settings/><MRU_FILES>\r\n"
        L"      <MRU_FILE fileName=\"C:\\Sets\\A &amp; B.dst\"/>\r\n"
        L"      <MRU_FILE fileName=\"C:\\Sets\\caf&#233;.dst\"></MRU_FILE>\r\n"
        L"    </MRU_FILES></Tool>\r\n"
        L"  <Tool CLSID=\"{BEBBB318-2898-4C03-ADA2-360DC6B7AA69}\"><MRU_FILES>"
        L"<MRU_FILE fileName=\"C:\\second.dst\"/></MRU_FILES></Tool>\r\n"
        L"</ToolsInfo></AdUiTools></AcApData></StorageRoot>\r\n"));
    EXPECT_EQ(RecentSheetSets(doc),
              (std::vector<std::wstring>{L"C:\\Sets\\A & B.dst", L"C:\\Sets\\caf\u00e9.dst"}));

    ASSERT_TRUE(doc.Parse(L"<StorageRoot><AcApData><ToolsInfo/></AcApData></StorageRoot>"));
    EXPECT_TRUE(RecentSheetSets(doc).empty());
}
