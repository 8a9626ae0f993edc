#include "platform/portable/reg_file_document.h"

#include <gtest/gtest.h>

#include "foundation/text_encoding.h"

namespace {

std::string Utf16File(const std::wstring& text) {
    std::vector<std::uint8_t> units = reg::StringBytes(text);
    return "\xFF\xFE" + std::string(units.begin(), units.end() - 2);  // without the terminator
}

std::wstring TextOf(const std::string& bytes) {
    EXPECT_EQ(bytes.substr(0, 2), "\xFF\xFE");
    return FromUtf16Le(bytes.substr(2));
}

RegValue Dword(std::uint32_t n) {
    return RegValue{
        reg::kDword,
        {std::uint8_t(n), std::uint8_t(n >> 8), std::uint8_t(n >> 16), std::uint8_t(n >> 24)}};
}

const RegFileKey& KeyAt(const RegFileDocument& document, const std::wstring& path) {
    const RegFileKey* key = document.FindKey(RegHive::CurrentUser, path);
    EXPECT_NE(key, nullptr) << "missing key";
    static const RegFileKey none;
    return key ? *key : none;
}

}  // namespace

TEST(RegFileDocument, ReadsEveryValueFormTheEditorExports) {
    auto document =
        RegFileDocument::Parse(ToUtf8(L"Windows Registry Editor Version 5.00\r\n\r\n"
                                      L"[HKEY_CURRENT_USER\\Software\\A]\r\n"
                                      L"@=\"default\"\r\n"
                                      L"\"Text\"=\"C:\\\\dwg\\\\\\\"q\\\"\"\r\n"
                                      L"\"Number\"=dword:0000e81c\r\n"
                                      L"\"Bytes\"=hex:01,02,\\\r\n"
                                      L"  ff\r\n"
                                      L"\"Empty\"=hex:\r\n"
                                      L"\"Expand\"=hex(2):41,00,00,00\r\n"));
    ASSERT_TRUE(document);
    const RegFileKey& key = KeyAt(*document, L"software\\a");
    ASSERT_EQ(key.values.size(), 6u);
    EXPECT_EQ(key.values[0].name, L"");
    EXPECT_EQ(reg::StringText(key.values[0].value.data), L"default");
    EXPECT_EQ(reg::StringText(key.values[1].value.data), L"C:\\dwg\\\"q\"");
    EXPECT_EQ(key.values[2].value, Dword(59420));
    EXPECT_EQ(key.values[3].value, (RegValue{reg::kBinary, {1, 2, 0xFF}}));
    EXPECT_EQ(key.values[4].value, (RegValue{reg::kBinary, {}}));
    EXPECT_EQ(key.values[5].value, (RegValue{reg::kExpandSz, {0x41, 0, 0, 0}}));
    EXPECT_TRUE(key.keptLines.empty());
}

TEST(RegFileDocument, WritesTheEditorsFormAndReadsItBack) {
    RegFileDocument document;
    document.AddKey(RegHive::LocalMachine, L"Software\\Empty");
    RegFileKey& key = document.AddKey(RegHive::CurrentUser, L"Software\\Harvane\\Tabrow");
    std::vector<std::uint8_t> font(92);
    for (std::size_t i = 0; i < font.size(); ++i)
        font[i] = static_cast<std::uint8_t>(i * 7);
    key.values = {
        {L"On", Dword(1)},
        {L"Say \"hi\"", RegValue{reg::kSz, reg::StringBytes(L"back\\slash")}},
        {L"SaveCommand", RegValue{reg::kSz, reg::StringBytes(L"_.QSAVE\n")}},
        {L"TabFont", RegValue{reg::kBinary, font}},
        {L"", RegValue{reg::kSz, reg::StringBytes(L"10:20:30:40:NORMAL")}},
        {L"Odd", RegValue{reg::kSz, {0x41}}},
        {L"Qword", RegValue{reg::kQword, {1, 2, 3, 4, 5, 6, 7, 8}}},
    };

    std::string bytes = document.Serialize();
    std::wstring text = TextOf(bytes);
    EXPECT_EQ(text.find(L"Windows Registry Editor Version 5.00\r\n\r\n"), 0u);
    EXPECT_NE(text.find(L"[HKEY_CURRENT_USER\\Software\\Harvane\\Tabrow]\r\n"), std::wstring::npos);
    EXPECT_NE(text.find(L"\"On\"=dword:00000001\r\n"), std::wstring::npos);
    EXPECT_NE(text.find(L"\"Say \\\"hi\\\"\"=\"back\\\\slash\"\r\n"), std::wstring::npos);
    // A line break cannot stand inside quotes; the string goes as typed hex instead.
    EXPECT_NE(text.find(L"\"SaveCommand\"=hex(1):5f,00,2e,00"), std::wstring::npos);
    EXPECT_NE(text.find(L"@=\"10:20:30:40:NORMAL\"\r\n"), std::wstring::npos);
    EXPECT_NE(text.find(L"\"Qword\"=hex(b):01,02"), std::wstring::npos);
    EXPECT_NE(text.find(L"[HKEY_LOCAL_MACHINE\\Software\\Empty]\r\n"), std::wstring::npos);
    for (std::size_t start = 0, end; (end = text.find(L"\r\n", start)) != std::wstring::npos;
         start = end + 2) {
        EXPECT_LE(end - start, 80u) << "hex data is wrapped as the editor wraps it";
    }

    auto again = RegFileDocument::Parse(bytes);
    ASSERT_TRUE(again);
    EXPECT_EQ(KeyAt(*again, L"Software\\Harvane\\Tabrow").values.size(), key.values.size());
    for (std::size_t i = 0; i < key.values.size(); ++i) {
        EXPECT_EQ(KeyAt(*again, L"Software\\Harvane\\Tabrow").values[i].value, key.values[i].value)
            << "value " << i;
    }
    EXPECT_TRUE(again->HasKeyOrDescendant(RegHive::LocalMachine, L"SOFTWARE\\empty"));
}

TEST(RegFileDocument, KeepsLinesItDoesNotUnderstandUnderTheirKey) {
    const std::wstring hand =
        L"Windows Registry Editor Version 5.00\n"
        L"; top comment\n"
        L"[HKEY_CURRENT_USER\\S]\n"
        L"\"Good\"=dword:00000002\n"
        L"garbage without equals\n"
        L"\"Bad\"=dword:xyz\n"
        L"\"Gone\"=-\n"
        L"\"Unclosed=\"x\"\n"
        L"[NOT_A_HIVE\\X]\n"
        L"\"Lost\"=dword:00000001\n"
        L"[-HKEY_CURRENT_USER\\Old]\n"
        L"[HKEY_CURRENT_USER\\s]\n"
        L"\"Good\"=dword:00000003\n";
    auto document = RegFileDocument::Parse(ToUtf8(hand));
    ASSERT_TRUE(document);
    const RegFileKey& key = KeyAt(*document, L"S");
    ASSERT_EQ(key.values.size(), 1u);
    EXPECT_EQ(key.values[0].value, Dword(3)) << "a later value of a repeated key wins";
    EXPECT_EQ(key.keptLines,
              (std::vector<std::wstring>{L"garbage without equals", L"\"Bad\"=dword:xyz",
                                         L"\"Gone\"=-", L"\"Unclosed=\"x\""}));
    EXPECT_EQ(document->m_prologue, std::vector<std::wstring>{L"; top comment"});
    EXPECT_FALSE(document->FindKey(RegHive::None, L"X"));

    std::wstring written = TextOf(document->Serialize());
    for (const wchar_t* line :
         {L"; top comment", L"garbage without equals", L"\"Bad\"=dword:xyz", L"[NOT_A_HIVE\\X]",
          L"\"Lost\"=dword:00000001", L"[-HKEY_CURRENT_USER\\Old]"}) {
        EXPECT_NE(written.find(std::wstring(line) + L"\r\n"), std::wstring::npos) << line;
    }
    auto again = RegFileDocument::Parse(document->Serialize());
    ASSERT_TRUE(again);
    EXPECT_EQ(TextOf(again->Serialize()), written) << "a second round changes nothing";
}

TEST(RegFileDocument, TellsForeignBytesFromAnEmptyFile) {
    EXPECT_TRUE(RegFileDocument::Parse(""));
    EXPECT_TRUE(RegFileDocument::Parse("\r\n\r\n"));
    EXPECT_TRUE(RegFileDocument::Parse("REGEDIT4\r\n[HKEY_USERS\\x]\r\n"));
    EXPECT_TRUE(RegFileDocument::Parse("\xEF\xBB\xBFWindows Registry Editor Version 5.00\n"));
    EXPECT_TRUE(RegFileDocument::Parse(Utf16File(L"Windows Registry Editor Version 5.00\r\n")));
    EXPECT_FALSE(RegFileDocument::Parse("[settings]\r\nOn=1\r\n"));
    EXPECT_FALSE(RegFileDocument::Parse(std::string("\x89PNG\r\n\x1a\n\0\0\0", 11)));
    EXPECT_FALSE(RegFileDocument::Parse(Utf16File(L"Tabrow settings\r\n")));
}

TEST(RegFileDocument, KeyPathsIgnoreCaseAndEmptyParts) {
    EXPECT_EQ(NormalizeKeyPath(L"\\a\\\\b\\"), L"a\\b");
    EXPECT_EQ(NormalizeKeyPath(L""), L"");
    RegFileDocument document;
    document.AddKey(RegHive::CurrentUser, L"Software\\Maker\\App\\Colors");
    document.AddKey(RegHive::CurrentUser, L"Software\\Maker\\App\\Previews");
    document.AddKey(RegHive::CurrentUser, L"software\\maker\\app\\colors");
    document.AddKey(RegHive::CurrentUser, L"Software\\Maker\\Apple");
    EXPECT_EQ(document.m_keys.size(), 3u);
    EXPECT_TRUE(document.HasKeyOrDescendant(RegHive::CurrentUser, L"SOFTWARE\\maker"));
    EXPECT_FALSE(document.HasKeyOrDescendant(RegHive::CurrentUser, L"Software\\Mak"));
    EXPECT_FALSE(document.HasKeyOrDescendant(RegHive::LocalMachine, L"Software"));
    EXPECT_EQ(document.ChildNames(RegHive::CurrentUser, L"software\\maker"),
              (std::vector<std::wstring>{L"App", L"Apple"}));
}

TEST(RegFileDocument, ABrokenContinuationStaysApartFromWhatFollows) {
    // A value whose hex data breaks off before a blank line is kept; the stray data after the
    // blank must not join it when the file is written (values first) and read again.
    auto document =
        RegFileDocument::Parse(ToUtf8(L"Windows Registry Editor Version 5.00\n"
                                      L"[HKEY_CURRENT_USER\\S]\n"
                                      L"\"Cut\"=hex:01,02,\\\n"
                                      L"\n"
                                      L"  03,04\n"
                                      L"\"Whole\"=hex:05,\\\n"
                                      L"  06\n"));
    ASSERT_TRUE(document);
    const RegFileKey& key = KeyAt(*document, L"S");
    ASSERT_EQ(key.values.size(), 1u);
    EXPECT_EQ(key.values[0].value, (RegValue{reg::kBinary, {5, 6}}));
    EXPECT_EQ(key.keptLines, (std::vector<std::wstring>{L"\"Cut\"=hex:01,02,\\", L"  03,04"}));
    auto again = RegFileDocument::Parse(document->Serialize());
    ASSERT_TRUE(again);
    EXPECT_EQ(KeyAt(*again, L"S").values.size(), 1u);
    EXPECT_EQ(KeyAt(*again, L"S").keptLines, key.keptLines);
}
