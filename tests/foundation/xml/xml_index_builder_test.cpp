#include "foundation/xml/xml_index_builder.h"

#include <gtest/gtest.h>

#include <string>

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
