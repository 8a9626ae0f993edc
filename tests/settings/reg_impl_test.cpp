#include "settings/reg_impl.h"

#include <gtest/gtest.h>

#include <cstring>

#include "platform/portable/reg_file_store.h"
#include "platform/sim/sim_window_system.h"
#include "settings/registry_key.h"
#include "settings/window_placement.h"
#include "settings_test_disk.h"

namespace {

const std::wstring kRoot = L"Software\\Harvane\\Tabrow\\2.0 - R17";

class HvRegImplTest : public ::testing::Test {
protected:
    // Stores a value of any type and size, as a hand edit or another program could.
    void PutRaw(const std::wstring& section, const std::wstring& key, const RegValue& value) {
        CRegistryKey sectionKey(RegHive::CurrentUser, reg.SectionPath(section), true);
        ASSERT_TRUE(sectionKey.SetValue(key, value));
    }

    ScratchFolder scratch;
    SettingsTestDisk disk{scratch};
    ScopedPort<FileSystem> diskPort{disk};
    RegFileStore store{RegFileStore::DefaultPath()};
    ScopedPort<KeyValueStore> storePort{store};
    HvRegImpl reg{kRoot};
};

win::LOGFONTW SampleFont() {
    win::LOGFONTW font;
    font.lfHeight = -13;
    font.lfWeight = 700;
    font.lfItalic = 1;
    font.lfCharSet = 1;
    std::memcpy(font.lfFaceName, u"Segoe UI", sizeof(u"Segoe UI"));
    return font;
}

}  // namespace

TEST_F(HvRegImplTest, ReadingASectionLeavesItsKeyBehind) {
    EXPECT_FALSE(store.KeyExists(RegHive::CurrentUser, kRoot + L"\\Colors"));
    EXPECT_EQ(reg.GetInt(L"Colors", L"ReadOnly", 172), 172);
    EXPECT_TRUE(store.KeyExists(RegHive::CurrentUser, kRoot + L"\\Colors"));
    EXPECT_TRUE(store.ValueNames(RegHive::CurrentUser, kRoot + L"\\Colors").empty());
    EXPECT_EQ(reg.GetString(L"", L"LastWorkset", L""), L"");
    EXPECT_TRUE(store.KeyExists(RegHive::CurrentUser, kRoot)) << "the root key is section \"\"";
}

TEST_F(HvRegImplTest, KeysNameTheirHiveOrTakeItFromTheParent) {
    CRegistryKey named(RegHive::None, L"hkey_Current_User\\Software\\Host\\Profiles\\P1", true);
    ASSERT_TRUE(named.IsOpen());
    EXPECT_EQ(named.m_hKey.hive, RegHive::CurrentUser);
    EXPECT_EQ(named.m_strPath, L"HKEY_CURRENT_USER\\Software\\Host\\Profiles\\P1");
    CRegistryKey below(named, L"\\General\\", true);
    ASSERT_TRUE(below.SetString(L"TemplatePath", L"C:\\templates\\"));
    CRegistryKey again(RegHive::CurrentUser, L"SOFTWARE\\host\\profiles\\p1\\general", false);
    ASSERT_TRUE(again.IsOpen());
    EXPECT_EQ(reg::StringText(again.QueryValue(L"templatepath")->data), L"C:\\templates\\");

    EXPECT_FALSE(CRegistryKey(RegHive::None, L"HKEY_NOWHERE\\Software", true).IsOpen());
    EXPECT_FALSE(CRegistryKey(RegHive::None, L"Software\\Host", true).IsOpen());
    CRegistryKey missing(RegHive::LocalMachine, L"Software\\Missing", false);
    EXPECT_FALSE(missing.IsOpen());
    EXPECT_FALSE(missing.SetDword(L"x", 1));
    EXPECT_FALSE(CRegistryKey(missing, L"Below", true).IsOpen());
    EXPECT_FALSE(store.KeyExists(RegHive::LocalMachine, L"Software\\Missing"));
}

TEST_F(HvRegImplTest, IntegersAreFourBytesOfAnyType) {
    ASSERT_TRUE(reg.SetInt(L"", L"Negative", -59420));
    EXPECT_EQ(reg.GetInt(L"", L"Negative", 0), -59420);
    EXPECT_EQ(store.QueryValue(RegHive::CurrentUser, kRoot, L"Negative")->type, reg::kDword);

    PutRaw(L"", L"Short", RegValue{reg::kBinary, {0x34, 0x12}});
    EXPECT_EQ(reg.GetInt(L"", L"Short", 0x7FFF0000), 0x7FFF1234) << "lands over the low bytes";
    PutRaw(L"", L"Binary4", RegValue{reg::kBinary, {1, 0, 0, 0}});
    EXPECT_EQ(reg.GetInt(L"", L"Binary4", 9), 1) << "the type is not looked at";
    PutRaw(L"", L"Text", RegValue{reg::kSz, reg::StringBytes(L"12")});
    EXPECT_EQ(reg.GetInt(L"", L"Text", 9), 9) << "six bytes do not fit into four";
    EXPECT_EQ(reg.GetInt(L"", L"Missing", -1), -1);
}

TEST_F(HvRegImplTest, EmptyStringsReadAsTheDefault) {
    ASSERT_TRUE(reg.SetString(L"", L"SaveCommand", L""));
    EXPECT_EQ(reg.GetString(L"", L"SaveCommand", L"_.QSAVE\n"), L"_.QSAVE\n");
    ASSERT_TRUE(reg.SetString(L"", L"SaveCommand", L"_.SAVE\n"));
    EXPECT_EQ(reg.GetString(L"", L"SaveCommand", L"_.QSAVE\n"), L"_.SAVE\n");
    PutRaw(L"", L"Unterminated", RegValue{reg::kSz, {'a', 0, 'b', 0}});
    EXPECT_EQ(reg.GetString(L"", L"Unterminated", L"x"), L"ab");
}

TEST_F(HvRegImplTest, DoublesAreStoredAsShortestGeneralText) {
    const std::pair<double, const wchar_t*> cases[] = {
        {2.5, L"2.5"}, {0.0, L"0"}, {-1e-7, L"-1e-07"}, {0.123456789, L"0.123457"}};
    for (const auto& [value, text] : cases) {
        ASSERT_TRUE(reg.SetDouble(L"BlackBack", L"Gamma", value));
        EXPECT_EQ(reg.GetString(L"BlackBack", L"Gamma", L""), text);
        EXPECT_DOUBLE_EQ(reg.GetDouble(L"BlackBack", L"Gamma", 9.0), std::wcstod(text, nullptr));
    }
    ASSERT_TRUE(reg.SetString(L"WhiteBack", L"Contrast", L"strong"));
    EXPECT_EQ(reg.GetDouble(L"WhiteBack", L"Contrast", 9.0), 0.0) << "text that is no number is 0";
    EXPECT_EQ(reg.GetDouble(L"WhiteBack", L"Missing", 9.0), 9.0);
}

TEST_F(HvRegImplTest, BinaryValuesReadOnlyAtTheirExactSizeAndType) {
    const std::uint8_t bytes[3] = {7, 8, 9};
    ASSERT_TRUE(reg.SetBinary(L"", L"Blob", bytes, sizeof bytes));
    std::uint8_t out[4] = {0xAA, 0xAA, 0xAA, 0xAA};
    EXPECT_FALSE(reg.GetBinary(L"", L"Blob", out, 4));
    EXPECT_FALSE(reg.GetBinary(L"", L"Blob", out, 2));
    EXPECT_EQ(out[0], 0xAA) << "a failed read leaves the buffer alone";
    EXPECT_TRUE(reg.GetBinary(L"", L"Blob", out, 3));
    EXPECT_EQ(std::vector<std::uint8_t>(out, out + 4), (std::vector<std::uint8_t>{7, 8, 9, 0xAA}));

    PutRaw(L"", L"NotBinary", RegValue{reg::kSz, {7, 8, 9}});
    EXPECT_FALSE(reg.GetBinary(L"", L"NotBinary", out, 3));
}

TEST_F(HvRegImplTest, FontsAreTheWindowSystemsNinetyTwoBytes) {
    const win::LOGFONTW font = SampleFont();
    ASSERT_TRUE(reg.SetFont(L"", L"TabFont", font));
    EXPECT_EQ(store.QueryValue(RegHive::CurrentUser, kRoot, L"TabFont")->data.size(), 92u);
    win::LOGFONTW read;
    ASSERT_TRUE(reg.GetFont(L"", L"TabFont", read));
    EXPECT_EQ(std::memcmp(&read, &font, sizeof font), 0);

    std::vector<std::uint8_t> shorter(91, 1);
    PutRaw(L"", L"LabelFont", RegValue{reg::kBinary, shorter});
    win::LOGFONTW untouched;
    EXPECT_FALSE(reg.GetFont(L"", L"LabelFont", untouched));
    EXPECT_EQ(untouched.lfHeight, 0);
}

TEST(WindowPlacementText, HasExactlyFiveFields) {
    EXPECT_EQ(FormatWindowPlacement({{-8, 10, 1200, 900}, false}), L"-8:10:1200:900:NORMAL");
    EXPECT_EQ(FormatWindowPlacement({{1, 2, 3, 4}, true}), L"1:2:3:4:MAXIMIZED");
    EXPECT_EQ(ParseWindowPlacement(L"-8:10:1200:900:NORMAL"),
              (WindowPlacement{{-8, 10, 1200, 900}, false}));
    EXPECT_EQ(ParseWindowPlacement(L"1:2:3:4:MAXIMIZED"), (WindowPlacement{{}, true}));
    EXPECT_EQ(ParseWindowPlacement(L"1:2:3:4:anything"), (WindowPlacement{{1, 2, 3, 4}, false}));
    EXPECT_EQ(ParseWindowPlacement(L" 5x:y:7:8:NORMAL"), (WindowPlacement{{5, 0, 7, 8}, false}));
    EXPECT_FALSE(ParseWindowPlacement(L"1:2:3:4"));
    EXPECT_FALSE(ParseWindowPlacement(L"1:2:3:4:NORMAL:"));
    EXPECT_FALSE(ParseWindowPlacement(L""));
}

TEST_F(HvRegImplTest, WindowPlacementsAreSavedAndAppliedThroughTheWindowSystem) {
    SimWindowSystem windows;
    ScopedPort<WindowSystem> windowPort(windows);
    HostWindow* dialog = windows.CreateChild(nullptr, L"#32770", {100, 50, 500, 350}, 0);

    reg.SaveWindowPlacement(L"ReferencesDialog", L"", dialog);
    EXPECT_EQ(reg.GetString(L"ReferencesDialog", L"", L""), L"100:50:500:350:NORMAL");
    reg.SaveWindowPlacement(L"SheetSetDialog", L"", nullptr);
    EXPECT_EQ(reg.GetString(L"SheetSetDialog", L"", L"none"), L"none");

    reg.SetString(L"ReferencesDialog", L"", L"10:20:330:240:NORMAL");
    ASSERT_TRUE(reg.LoadWindowPlacement(L"ReferencesDialog", L"", dialog));
    EXPECT_EQ(windows.ScreenRect(dialog), (win::RECT{10, 20, 330, 240}));
    EXPECT_FALSE(windows.IsZoomed(dialog));

    reg.SetString(L"ReferencesDialog", L"", L"10:20:330");
    EXPECT_FALSE(reg.LoadWindowPlacement(L"ReferencesDialog", L"", dialog));
    reg.SetString(L"ReferencesDialog", L"", L"-5:-5:9999:9999:MAXIMIZED");
    ASSERT_TRUE(reg.LoadWindowPlacement(L"ReferencesDialog", L"", dialog));
    EXPECT_TRUE(windows.IsZoomed(dialog));
    EXPECT_EQ(windows.ScreenRect(dialog), (win::RECT{10, 20, 330, 240})) << "numbers ignored";
    EXPECT_FALSE(reg.LoadWindowPlacement(L"WorkSetDlg", L"", dialog)) << "nothing stored";
}
