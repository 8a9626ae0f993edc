// Compares the document with an established parser on generated well-formed documents, and
// pins down where the two differ on purpose.

#include <gtest/gtest.h>
#include <libxml/parser.h>
#include <libxml/tree.h>

#include <random>
#include <string>
#include <vector>

#include "foundation/text_encoding.h"
#include "foundation/xml/xml_document.h"

namespace {

struct LibxmlDoc {
    explicit LibxmlDoc(const std::string& bytes)
        : doc(xmlReadMemory(bytes.data(), static_cast<int>(bytes.size()), "generated.xml", "UTF-8",
                            XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_NONET)) {}
    ~LibxmlDoc() { xmlFreeDoc(doc); }
    LibxmlDoc(const LibxmlDoc&) = delete;
    LibxmlDoc& operator=(const LibxmlDoc&) = delete;
    xmlDocPtr doc;
};

std::wstring Wide(const xmlChar* text) {
    return FromUtf8(reinterpret_cast<const char*>(text ? text : BAD_CAST ""));
}

class DocumentGenerator {
public:
    explicit DocumentGenerator(unsigned seed) : m_random(seed) {}

    std::string Document() {
        std::string out = Pick(2) ? "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" : "";
        if (Pick(3) == 0)
            out += "<!-- head -->\n";
        Element(out, 0);
        out += "\n";
        return out;
    }

private:
    int Pick(int n) { return std::uniform_int_distribution<int>(0, n - 1)(m_random); }

    std::string Name() {
        static const char kFirst[] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_";
        static const char kRest[] = "abcxyzABCXYZ0123456789_.-";
        std::string name(1, kFirst[Pick(sizeof kFirst - 1)]);
        for (int n = Pick(8); n > 0; --n)
            name += kRest[Pick(sizeof kRest - 1)];
        if (Pick(6) == 0)
            name += "\xC3\xA9";  // a letter beyond ASCII inside the name
        return name;
    }

    std::string Value(char quote) {
        static const std::vector<std::string> kPieces = {
            "plain",    " ",      "&amp;",       "&lt;",
            "&gt;",     "&quot;", "&apos;",      "&#65;",
            "&#x4E2D;", "&#233;", "caf\xC3\xA9", "\xE4\xB8\xAD",
            ">",        "/",      "=",           "C:\\path\\file.dwg"};
        std::string value;
        for (int n = Pick(6); n > 0; --n)
            value += kPieces[Pick(static_cast<int>(kPieces.size()))];
        value += quote == '"' ? "'" : "\"";  // the other quote is plain text inside
        return value;
    }

    void Element(std::string& out, int depth) {
        const std::string name = Name();
        out += "<" + name;
        const int attributes = Pick(4);
        for (int i = 0; i < attributes; ++i) {
            const char quote = Pick(2) ? '"' : '\'';
            out += (Pick(3) ? " " : "\n  ") + Name() + std::to_string(i) + (Pick(4) ? "=" : " = ") +
                   quote + Value(quote) + quote;
        }
        const int children = depth < 5 ? Pick(5) : 0;
        if (children == 0 && Pick(2)) {
            out += Pick(2) ? "/>" : " />";
            return;
        }
        out += ">";
        for (int i = 0; i < children; ++i) {
            switch (Pick(5)) {
                case 0:
                    out += "text &amp; more ";
                    break;
                case 1:
                    out += "<!-- <not/> -->";
                    break;
                case 2:
                    out += "<![CDATA[<no>]]>";
                    break;
                default:
                    out += "\n  ";
                    break;
            }
            Element(out, depth + 1);
        }
        out += "</" + name + (Pick(4) ? ">" : " >");
    }

    std::mt19937 m_random;
};

// Walks both trees together; reports the first difference.
void CompareElement(XmlDocument& ours, xmlNodePtr theirs, const std::string& path) {
    SCOPED_TRACE(path);
    ASSERT_EQ(ours.TagName(), Wide(theirs->name));
    int place = 0;
    for (xmlAttrPtr attribute = theirs->properties; attribute; attribute = attribute->next) {
        const std::wstring name = Wide(attribute->name);
        xmlChar* value = xmlNodeListGetString(theirs->doc, attribute->children, 1);
        EXPECT_EQ(ours.Attribute(name.c_str()), Wide(value)) << "attribute " << ToUtf8(name);
        xmlFree(value);
        EXPECT_EQ(ours.AttributeName(place++), name);
    }
    EXPECT_EQ(ours.AttributeName(place), L"");
    for (xmlNodePtr child = theirs->children; child; child = child->next) {
        if (child->type != XML_ELEMENT_NODE)
            continue;
        ASSERT_TRUE(ours.FindChild()) << "missing child " << child->name;
        ASSERT_TRUE(ours.Descend());
        CompareElement(ours, child, path + "/" + reinterpret_cast<const char*>(child->name));
        ASSERT_TRUE(ours.Ascend());
    }
    EXPECT_FALSE(ours.FindChild()) << "extra child";
}

}  // namespace

TEST(XmlLibxml2Differential, GeneratedDocumentsAgreeOnNamesNestingAndQuotedValues) {
    for (unsigned seed = 1; seed <= 300; ++seed) {
        const std::string bytes = DocumentGenerator(seed).Document();
        SCOPED_TRACE("seed " + std::to_string(seed) + ": " + bytes);
        LibxmlDoc theirs(bytes);
        ASSERT_NE(theirs.doc, nullptr) << "the generator made a malformed document";
        XmlDocument ours;
        ASSERT_TRUE(ours.Parse(FromUtf8(bytes))) << ToUtf8(ours.Error());
        ASSERT_TRUE(ours.FindSibling());
        CompareElement(ours, xmlDocGetRootElement(theirs.doc), "");
    }
}

TEST(XmlLibxml2Differential, DeliberatelyUnquotedAttributeReadsAsAbsentWhereLibxml2Refuses) {
    const std::string bytes = "<r a=1 b=\"2\"/>";
    EXPECT_EQ(LibxmlDoc(bytes).doc, nullptr);
    XmlDocument ours;
    ASSERT_TRUE(ours.Parse(FromUtf8(bytes)));
    ASSERT_TRUE(ours.FindSibling());
    EXPECT_EQ(ours.Attribute(L"a"), L"");
    EXPECT_EQ(ours.Attribute(L"b"), L"2");
}

TEST(XmlLibxml2Differential, DeliberatelyUnknownEntitiesAndBareAmpersandsStayAsText) {
    const std::string bytes = "<r a=\"x &nbsp; &#0; & y\">&copy;</r>";
    EXPECT_EQ(LibxmlDoc(bytes).doc, nullptr);
    XmlDocument ours;
    ASSERT_TRUE(ours.Parse(FromUtf8(bytes)));
    ASSERT_TRUE(ours.FindSibling());
    EXPECT_EQ(ours.Attribute(L"a"), L"x &nbsp; &#0; & y");
}

TEST(XmlLibxml2Differential, DeliberatelyNamesMayBeginWithAnyCharacterAboveAscii) {
    const std::string bytes = "<\xC3\x97r><\xE2\x82\xAC/><~t/></\xC3\x97r>";  // U+00D7, U+20AC
    EXPECT_EQ(LibxmlDoc(bytes).doc, nullptr);
    XmlDocument ours;
    ASSERT_TRUE(ours.Parse(FromUtf8(bytes)));
    ASSERT_TRUE(ours.FindChild(L"\u20ac"));
    ASSERT_TRUE(ours.FindChild(L"~t"));
}
