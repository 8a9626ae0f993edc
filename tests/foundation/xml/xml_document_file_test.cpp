#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <map>

#include "foundation/text_encoding.h"
#include "foundation/xml/xml_document.h"
#include "ports/file_system.h"
#include "ports/port.h"
#include "support/memory_file_system.h"

namespace {

std::wstring ErrorText(int code) {
    return FromUtf8(std::strerror(code));
}

class XmlDocumentFile : public ::testing::Test {
protected:
    MemoryFileSystem m_files;
    ScopedPort<FileSystem> m_port{m_files};
};

}  // namespace

TEST_F(XmlDocumentFile, LoadsUtf8AndReportsTheConversion) {
    m_files.files[L"/p.xml"] = "<r a=\"caf\xC3\xA9\"/>";
    XmlDocument doc;
    EXPECT_TRUE(doc.Load(L"/p.xml"));
    EXPECT_EQ(doc.Error(), L"UTF-8 14 bytes to 13 wide chars");
    ASSERT_TRUE(doc.FindSibling());
    EXPECT_EQ(doc.Attribute(L"a"), L"caf\u00e9");
}

TEST_F(XmlDocumentFile, ByteOrderMarks) {
    // A UTF-8 mark comes through as a character before the root and is passed over.
    m_files.files[L"/u8.xml"] = "\xEF\xBB\xBF<r/>";
    XmlDocument doc;
    EXPECT_TRUE(doc.Load(L"/u8.xml"));
    EXPECT_EQ(doc.Text(), L"\xFEFF<r/>");
    m_files.files[L"/u16.xml"] = std::string("\xFF\xFE<\0r\0/\0>\0", 10);
    EXPECT_TRUE(doc.Load(L"/u16.xml"));
    EXPECT_EQ(doc.Error(), L"UTF-16LE 10 bytes to 4 wide chars");
    EXPECT_EQ(doc.Text(), L"<r/>");
}

TEST_F(XmlDocumentFile, StatusTextComesBeforeTheParseMessage) {
    m_files.files[L"/bad.xml"] = "<r><x></r>";
    XmlDocument doc;
    EXPECT_FALSE(doc.Parse(L"<old>"));  // an earlier parse's message is not carried on
    EXPECT_FALSE(doc.Load(L"/bad.xml"));
    EXPECT_EQ(doc.Error(),
              L"UTF-8 10 bytes to 10 wide chars, End tag 'r' at offset 6 does not match start "
              L"tag 'x' at offset 3");
    EXPECT_FALSE(doc.HasRoot());
}

TEST_F(XmlDocumentFile, MissingFileLeavesAnEmptyDocument) {
    XmlDocument doc;
    ASSERT_TRUE(doc.Parse(L"<old/>"));
    EXPECT_FALSE(doc.Load(L"/missing.xml"));
    EXPECT_EQ(doc.Error(), ErrorText(ENOENT));
    EXPECT_FALSE(doc.HasRoot());
    EXPECT_EQ(doc.Text(), L"");
}

TEST_F(XmlDocumentFile, SaveWritesUtf8AndReadsBack) {
    XmlDocument doc;
    const std::wstring text = L"<r>\u00e9\u4e2d &amp; <e a='1'/></r>\r\n";
    ASSERT_TRUE(doc.Parse(text));
    ASSERT_TRUE(doc.Save(L"/out.xml"));
    EXPECT_EQ(doc.Error(), L"28 wide chars to UTF-8 31 bytes");
    XmlDocument again;
    EXPECT_TRUE(again.Load(L"/out.xml"));
    EXPECT_EQ(again.Text(), text);

    m_files.failingWrite = L"/locked.xml";
    m_files.files[L"/locked.xml"] = "keep";
    EXPECT_FALSE(doc.Save(L"/locked.xml"));
    EXPECT_EQ(doc.Error(), ErrorText(EACCES));
    EXPECT_EQ(m_files.files[L"/locked.xml"], "keep");
}
