#include "foundation/xml/xml_document.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// After a failed parse nothing at all may be found.
void ExpectNothingFound(XmlDocument& doc) {
    EXPECT_FALSE(doc.HasRoot());
    EXPECT_FALSE(doc.FindSibling());
    EXPECT_FALSE(doc.FindChild());
    EXPECT_FALSE(doc.Descend());
    EXPECT_FALSE(doc.Ascend());
    EXPECT_EQ(doc.TagName(), L"");
    EXPECT_EQ(doc.Attribute(1, L"a"), L"");
}

std::wstring ParseError(const wchar_t* text) {
    XmlDocument doc;
    EXPECT_FALSE(doc.Parse(text)) << text;
    ExpectNothingFound(doc);
    return doc.Error();
}

std::vector<std::wstring> ChildNames(XmlDocument& doc, const wchar_t* name = nullptr) {
    std::vector<std::wstring> names;
    while (doc.FindChild(name)) {
        doc.Descend();
        names.push_back(doc.TagName());
        doc.Ascend();
    }
    return names;
}

}  // namespace

TEST(XmlDocumentParse, EveryKindOfNodeOutsideElementsIsPassedOver) {
    XmlDocument doc;
    ASSERT_TRUE(doc.Parse(
        L"\xFEFF<?xml version=\"1.0\"?>\r\n"
        L"<!DOCTYPE r [<!ELEMENT r (#PCDATA)> <!ATTLIST r a CDATA \"x\"> <!ENTITY e \"v\">]>\n"
        L"stray text <!-- a <comment> -->"
        L"<r>text<![CDATA[<b>not an element</b>]]><?pi <c/>?><!-- <d/> --><e/></r> tail"))
        << doc.Error();
    EXPECT_EQ(doc.Error(), L"");
    EXPECT_TRUE(doc.FindSibling());
    EXPECT_EQ(doc.TagName(), L"r");
    EXPECT_EQ(ChildNames(doc), std::vector<std::wstring>{L"e"});
}

TEST(XmlDocumentParse, QuotesKeepTagEndsAndEmptyElementsHaveNoEndTag) {
    XmlDocument doc;
    ASSERT_TRUE(doc.Parse(L"<a b='1' c=\"2\" d=\"x>y\" e='say \"/>\"'><f g=\"/\"></f><h/></a>"));
    ASSERT_TRUE(doc.FindSibling());
    EXPECT_EQ(doc.Attribute(L"c"), L"2");
    EXPECT_EQ(doc.Attribute(L"d"), L"x>y");
    EXPECT_EQ(doc.Attribute(L"e"), L"say \"/>\"");
    ASSERT_TRUE(doc.FindChild(L"f"));  // "/" inside quotes does not make <f> empty
    ASSERT_TRUE(doc.FindChild(L"h"));
    const XmlElementRecord& empty = doc.Index()[doc.ChildIndex()];
    EXPECT_EQ(empty.length, 4u);
    EXPECT_EQ(empty.tagLengths >> kXmlEndTagShift, 0u);
    const XmlElementRecord& root = doc.Index()[doc.CurrentIndex()];
    EXPECT_EQ(root.length, doc.Text().size());
    EXPECT_EQ(root.tagLengths >> kXmlEndTagShift, 4u);
}

TEST(XmlDocumentParse, EachFailureNamesWhatAndWhereAndLeavesNothingToFind) {
    // End tags match by the name rule; names may begin above ASCII but not with digits or signs.
    for (const wchar_t* good : {L"<Tool[1]></Tool >", L"<\u00d7><~x/><_y/><:z/></\u00d7>"})
        EXPECT_TRUE(XmlDocument().Parse(good)) << good;
    const std::pair<const wchar_t*, const wchar_t*> failures[] = {
        {L"<ab></a>", L"End tag 'a' at offset 4 does not match start tag 'ab' at offset 0"},
        {L"<a></ab>", L"End tag 'ab' at offset 3 does not match start tag 'a' at offset 0"},
        {L"<a><b></a></b>", L"End tag 'a' at offset 6 does not match start tag 'b' at offset 3"},
        {L"<a><1/></a>", L"Incorrect tag name character at offset 3"},
        {L"<a>< b/></a>", L"Incorrect tag name character at offset 3"},
        {L"", L"Empty document"},
        {nullptr, L"Empty document"},
        {L" \r\n text <!-- c -->", L"Root element not found"},
        {L"<a/> <b/>", L"Element 'b' at offset 5 is sibling to root"},
        {L"<a></a><c>", L"Element 'c' at offset 7 is sibling to root"},
        {L"</a>", L"No start tag for end tag 'a' at offset 0"},
        {L"<a></a></b>", L"No start tag for end tag 'b' at offset 7"},
        {L"<a><b x='1'>", L"Element 'b' at offset 3 not ended"},
        {L"<a><!-x--></a>", L"Incorrect comment tag at offset 3"},
        {L"<a><![X[y]]></a>", L"Incorrect tag at offset 3"},
        {L"<a><!Q></a>", L"Incorrect ! tag at offset 3"},
        // A declaration outside a document type declaration fails without a message.
        {L"<!ENTITY e 'v'><a/>", L""},
        {L"<a><!ATTLIST a b CDATA #IMPLIED></a>", L""},
        // Text ending inside a node.
        {L"<a b='>'", L"Element tag at offset 0 unterminated"},
        {L"<a></a", L"Element end tag at offset 3 unterminated"},
        {L"<a><![CDATA[x]]", L"CDATA Section at offset 3 unterminated"},
        {L"<?xml ?", L"Processing instruction at offset 0 unterminated"},
        {L"<a><!-- x --", L"Comment at offset 3 unterminated"},
        {L"<a><!-", L"Comment at offset 3 unterminated"},
        {L"<!DOCTYPE a [<!ELEMENT a ANY>", L"Doctype at offset 0 unterminated"},
        {L"<a><", L"tag at offset 3 unterminated"},
        {L"<a><!", L"tag at offset 3 unterminated"},
    };
    for (const auto& [text, message] : failures)
        EXPECT_EQ(ParseError(text), message) << text;
}

TEST(XmlDocumentParse, EachParseStartsWithAClearedMessage) {
    XmlDocument doc;
    EXPECT_FALSE(doc.Parse(L""));
    EXPECT_EQ(doc.Error(), L"Empty document");
    EXPECT_TRUE(doc.Parse(L"<a/>"));
    EXPECT_EQ(doc.Error(), L"");
    EXPECT_FALSE(doc.Parse(L""));
    EXPECT_FALSE(doc.Parse(std::wstring(L"<b>")));
    EXPECT_EQ(doc.Error(), L"Element 'b' at offset 0 not ended");
    // A new parse drops the old index: the position is back at the start.
    EXPECT_TRUE(doc.Parse(L"<c><d/></c>"));
    EXPECT_EQ(doc.CurrentIndex(), 0);
    EXPECT_TRUE(doc.FindChild(L"d"));
}

TEST(XmlDocumentNavigation, RootWithoutChildren) {
    XmlDocument doc;
    ASSERT_TRUE(doc.Parse(L"<only a=\"1\"></only>"));
    EXPECT_TRUE(doc.HasRoot());
    EXPECT_FALSE(doc.FindChild());
    EXPECT_EQ(doc.TagName(), L"only");  // FindChild moved to the root first
    EXPECT_TRUE(doc.Descend());
    EXPECT_EQ(doc.ParentIndex(), 1);
    EXPECT_EQ(doc.CurrentIndex(), 0);
    EXPECT_EQ(doc.TagName(), L"");
    EXPECT_FALSE(doc.FindChild());
    EXPECT_FALSE(doc.Descend());
    EXPECT_TRUE(doc.Ascend());
    EXPECT_EQ(doc.TagName(), L"only");
    EXPECT_FALSE(doc.Ascend());
}

TEST(XmlDocumentNavigation, SameNamedChildrenLoopWithoutCounterAndNeverStartOver) {
    XmlDocument doc;
    ASSERT_TRUE(doc.Parse(L"<r><x n='1'/><y/><x n='2'/><z/><x n='3'/></r>"));
    std::vector<std::wstring> found;
    while (doc.FindChild(L"x"))
        found.push_back(doc.Attribute(doc.ChildIndex(), L"n"));
    EXPECT_EQ(found, (std::vector<std::wstring>{L"1", L"2", L"3"}));
    // The child position stays on the last hit after failures.
    const int last = doc.ChildIndex();
    EXPECT_FALSE(doc.FindChild(L"y"));  // stands before the child position
    EXPECT_EQ(doc.ChildIndex(), last);
    EXPECT_FALSE(doc.FindChild());
}

TEST(XmlDocumentNavigation, SiblingsAndNestedWalk) {
    XmlDocument doc;
    ASSERT_TRUE(doc.Parse(L"<r><a><a1/><a2/></a><b><b1/></b></r>"));
    EXPECT_FALSE(doc.FindSibling(L"a"));  // from the start only the root is found
    ASSERT_TRUE(doc.FindSibling(L"r"));
    EXPECT_FALSE(doc.FindSibling());  // the root has no siblings
    ASSERT_TRUE(doc.FindChild(L"b"));
    ASSERT_TRUE(doc.Descend());
    EXPECT_EQ(doc.TagName(), L"b");
    EXPECT_EQ(ChildNames(doc), std::vector<std::wstring>{L"b1"});
    ASSERT_TRUE(doc.Ascend());
    EXPECT_EQ(doc.TagName(), L"r");
    EXPECT_EQ(doc.Index()[doc.ChildIndex()].start, 20u);  // back on <b>
    // Within the children of r, siblings of a: FindSibling walks the current level.
    ASSERT_TRUE(doc.Descend());
    EXPECT_EQ(doc.TagName(), L"b");
    EXPECT_FALSE(doc.FindSibling());
    ASSERT_TRUE(doc.Ascend());
    doc.Parse(L"<r><a><a1/><a2/></a><b><b1/></b></r>");
    doc.FindChild();
    doc.Descend();
    EXPECT_TRUE(doc.FindSibling(L"b"));
    EXPECT_EQ(ChildNames(doc), std::vector<std::wstring>{L"b1"});
}

TEST(XmlDocumentNavigation, NamesMatchByTheirFirstToken) {
    XmlDocument doc;
    ASSERT_TRUE(doc.Parse(L"<r><Tools/><Tool id='a'/></r>"));
    ASSERT_TRUE(doc.FindChild(L"Tool[1]"));
    EXPECT_EQ(doc.Attribute(doc.ChildIndex(), L"id"), L"a");
    doc.Parse(L"<r><Tool/></r>");
    EXPECT_FALSE(doc.FindChild(L"Too"));
    EXPECT_FALSE(doc.FindChild(L"tool"));
}

TEST(XmlDocumentAttributes, OnlyQuotedValuesTwoPlacesAfterTheFirstMatchingName) {
    XmlDocument doc;
    ASSERT_TRUE(
        doc.Parse(L"<e a=1 b = \"two\" c='&lt;&#51;&gt;' d=\"x\" d=\"y\" a='late' f g=\"h\"></e>"));
    ASSERT_TRUE(doc.FindSibling());
    EXPECT_EQ(doc.Attribute(L"a"), L"");  // unquoted, and the later a is not considered
    EXPECT_EQ(doc.Attribute(L"b"), L"two");
    EXPECT_EQ(doc.Attribute(L"c"), L"<3>");
    EXPECT_EQ(doc.Attribute(L"d"), L"x");
    EXPECT_EQ(doc.Attribute(L"g"), L"h");
    EXPECT_EQ(doc.Attribute(L"e"), L"");  // the tag name is no attribute
    EXPECT_EQ(doc.Attribute(L"missing"), L"");
    EXPECT_EQ(doc.Attribute(L""), L"");
    EXPECT_EQ(doc.Attribute(0, L"b"), L"");  // the document record has no tag
    EXPECT_EQ(doc.Attribute(99, L"b"), L"");
    EXPECT_EQ(doc.AttributeName(0), L"b");
    EXPECT_EQ(doc.AttributeName(1), L"c");
    EXPECT_EQ(doc.AttributeName(5), L"g");
    EXPECT_EQ(doc.AttributeName(6), L"");
}

TEST(XmlDocumentAttributes, SearchEndsAtTheTagEnd) {
    XmlDocument doc;
    ASSERT_TRUE(doc.Parse(L"<e a='1'/><!-- b='2' -->"));
    ASSERT_TRUE(doc.FindSibling());
    EXPECT_EQ(doc.Attribute(L"a"), L"1");
    EXPECT_EQ(doc.Attribute(L"b"), L"");
    ASSERT_TRUE(doc.Parse(L"<?pi?><e a='1'> b='2' </e>"));
    ASSERT_TRUE(doc.FindSibling());
    EXPECT_EQ(doc.Attribute(L"b"), L"");
}

TEST(XmlDocumentPositions, MarkedPositionsComeBackByName) {
    XmlDocument doc;
    ASSERT_TRUE(doc.Parse(L"<r><a><a1/></a><b/></r>"));
    EXPECT_FALSE(doc.ReturnToPosition(L"none"));  // nothing stored yet
    doc.FindChild(L"a");
    doc.Descend();
    doc.FindChild(L"a1");
    ASSERT_TRUE(doc.MarkPosition(L"deep"));
    const int parent = doc.ParentIndex(), current = doc.CurrentIndex(), child = doc.ChildIndex();
    doc.Ascend();
    doc.Ascend();
    ASSERT_TRUE(doc.MarkPosition(L"top"));
    EXPECT_FALSE(doc.ReturnToPosition(L"Deep"));  // names are case-sensitive
    EXPECT_EQ(doc.ParentIndex(), 0);
    ASSERT_TRUE(doc.ReturnToPosition(L"deep"));
    EXPECT_EQ(doc.ParentIndex(), parent);
    EXPECT_EQ(doc.CurrentIndex(), current);
    EXPECT_EQ(doc.ChildIndex(), child);
    EXPECT_TRUE(doc.Descend());
    EXPECT_EQ(doc.TagName(), L"a1");
    ASSERT_TRUE(doc.ReturnToPosition(L"top"));
    EXPECT_EQ(doc.TagName(), L"r");
    // Marking again under a name replaces the old position.
    doc.FindChild(L"b");
    doc.MarkPosition(L"top");
    doc.ReturnToPosition(L"deep");
    doc.ReturnToPosition(L"top");
    EXPECT_EQ(doc.Index()[doc.ChildIndex()].start, 15u);
}

TEST(XmlDocumentPositions, BucketsGrowToTwiceTheirEntriesPlusTwelve) {
    XmlSavedPositions positions;
    // "g" and "n" share a bucket: 103 % 7 == 110 % 7 == 5.
    ASSERT_EQ(XmlSavedPositions::BucketOf(L"g"), XmlSavedPositions::BucketOf(L"n"));
    positions.Mark(L"g", {1, 2, 3});  // three entries overflow the first two
    EXPECT_EQ(positions.BucketCapacity(L"g"), 16u);
    positions.Mark(L"g", {4, 5, 6});  // replaced in place
    EXPECT_EQ(positions.BucketCapacity(L"g"), 16u);
    for (const wchar_t* name : {L"n", L"u", L"|", L"\x83", L"\x8a"})  // all 5 modulo 7
        positions.Mark(name, {7, 8, 9});
    EXPECT_EQ(positions.BucketCapacity(L"g"), 44u);
    XmlPosition found;
    ASSERT_TRUE(positions.Find(L"g", found));
    EXPECT_EQ(found.parent, 4);
    EXPECT_EQ(found.current, 5);
    EXPECT_EQ(found.child, 6);
}

TEST(XmlDocumentCopy, CopiesAreIndependentAndKeepPositions) {
    XmlDocument original;
    ASSERT_TRUE(original.Parse(L"<r><a x='1'/><b x='2'/></r>"));
    original.FindChild(L"b");
    original.MarkPosition(L"here");
    XmlDocument copy;
    copy = original;
    EXPECT_EQ(copy.ChildIndex(), original.ChildIndex());
    EXPECT_EQ(copy.Index().Allocated(), 8);
    copy.Parse(L"<other/>");
    EXPECT_EQ(original.Attribute(original.ChildIndex(), L"x"), L"2");
    XmlDocument second(original);
    original.Parse(L"<gone/>");
    ASSERT_TRUE(second.ReturnToPosition(L"here"));
    EXPECT_EQ(second.Attribute(second.ChildIndex(), L"x"), L"2");
    XmlDocument moved(std::move(copy));
    EXPECT_TRUE(moved.FindSibling(L"other"));
    EXPECT_FALSE(copy.FindSibling());  // what is left behind is still a usable document
    EXPECT_TRUE(copy.Parse(L"<again/>"));
}
