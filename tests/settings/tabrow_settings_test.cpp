#include "settings/tabrow_settings.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>

#include "foundation/text_encoding.h"
#include "platform/portable/reg_file_store.h"
#include "settings/reg_impl.h"
#include "settings/registry_key.h"
#include "settings/settings_keys.h"
#include "settings_test_disk.h"

namespace fs = std::filesystem;

namespace {

const std::wstring kRoot = L"Software\\Harvane\\Tabrow\\2.0 - R17";

win::LOGFONTW Font(std::int32_t height, const char16_t* face) {
    win::LOGFONTW font;
    font.lfHeight = height;
    std::memcpy(font.lfFaceName, face, std::char_traits<char16_t>::length(face) * 2);
    return font;
}

bool SameFont(const win::LOGFONTW& a, const win::LOGFONTW& b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

class TabrowSettingsTest : public ::testing::Test {
protected:
    TabrowSettingsTest() {
        system.btnFace = 0xF0F0F0;
        system.btnText = 0x000001;
        system.guiFont = Font(-11, u"MS Shell Dlg");
        system.commandWindowWidth = 801;
        system.appDataFolder = scratch.Folder() + L"appdata/";
    }
    void PutFile(const std::wstring& name) {
        fs::path path = DiskPath(scratch.Folder() + name);
        fs::create_directories(path.parent_path());
        std::ofstream(path) << "x";
    }
    TabrowSettings Loaded() {
        TabrowSettings settings;
        settings.Load(reg, system);
        return settings;
    }

    ScratchFolder scratch;
    SettingsTestDisk disk{scratch};
    ScopedPort<FileSystem> diskPort{disk};
    RegFileStore store{RegFileStore::DefaultPath()};
    ScopedPort<KeyValueStore> storePort{store};
    HvRegImpl reg{kRoot};
    SystemValues system;
};

}  // namespace

TEST_F(TabrowSettingsTest, AnEmptyStoreGivesEveryDefault) {
    const TabrowSettings s = Loaded();
    EXPECT_EQ(s.m_bLoadOnCommand, 0);
    EXPECT_EQ(s.m_bShowTips, 1);
    EXPECT_EQ(s.m_nTipWidth, 300);
    EXPECT_EQ(s.m_nTipDelay, 3000);
    EXPECT_EQ(s.m_nTipRemain, 10000);
    EXPECT_EQ(s.m_bShowFullPathInTips + s.m_bShowDwgPropsInTips + s.m_bShowFullPathInRefs +
                  s.m_bShowFullPathInSheetSets + s.m_nSortBy + s.m_bHideOnSingle + s.m_bLockSize +
                  s.m_bFloating + s.m_bTabMode + s.m_bHasScrollBar + s.m_bOpenSheetSetInSSM +
                  s.m_bSortWorksets,
              0);
    EXPECT_EQ(s.m_bZoomExtentsOnSave, 1);
    EXPECT_EQ(s.m_bSwitchOnBusy, 1);
    EXPECT_EQ(s.m_nDockSide, 59420);
    EXPECT_EQ(s.m_nSize, 100);
    EXPECT_EQ(s.m_nWidthOnCmdWnd, 400) << "half the command window";
    EXPECT_EQ(s.m_nMinSize, 26);
    EXPECT_EQ(s.m_nMRUCount, 10);
    EXPECT_EQ(s.m_nNumSheetSets, 15);
    EXPECT_EQ(s.m_strLastWorkset, L"");
    EXPECT_EQ(s.m_strSaveCommand, L"_.QSAVE\n");
    EXPECT_TRUE(SameFont(s.m_lfTabFont, system.guiFont));
    EXPECT_TRUE(SameFont(s.m_lfLabelFont, system.guiFont));
    EXPECT_EQ(s.m_clrReadOnly, 172u);
    EXPECT_EQ(s.m_clrModified, 364328u);
    EXPECT_EQ(s.m_clrBackground, system.btnFace);
    EXPECT_EQ(s.m_clrTitleBack, system.btnFace);
    EXPECT_EQ(s.m_clrTitleText, system.btnText);
    EXPECT_EQ(s.m_bAutoUpdatePreviews, 1);
    EXPECT_EQ(s.m_bShowDwgName, 1);
    EXPECT_EQ(s.m_bDwgNameAbove + s.m_bScrollOverflow, 0);
    EXPECT_EQ(s.m_nScrollBarSize, 12);
    EXPECT_EQ(s.m_whiteBack.m_dGamma, 0.0);
    EXPECT_EQ(s.m_blackBack.m_dGamma, 2.5);
    EXPECT_EQ(s.m_whiteBack.m_nSharpness, 20);
    EXPECT_EQ(s.m_blackBack.m_dBrightness + s.m_blackBack.m_dContrast, 0.0);
    EXPECT_EQ(s.m_strSsSearchPath, scratch.Folder() + L"program/");
    EXPECT_EQ(s.m_strWorksetsPath, system.appDataFolder + L"drafter.worksets");

    EXPECT_TRUE(LoadBarOn(reg));
    EXPECT_FALSE(LoadAutoCheckForUpdates(reg) || LoadDisableNewMenu(reg) ||
                 LoadAvoidSaveasInLisp(reg) || LoadLoadOnCommand(reg));
    for (const wchar_t* section :
         {keys::kColors, keys::kPreviews, keys::kWhiteBack, keys::kBlackBack, keys::kWorksets}) {
        EXPECT_TRUE(store.KeyExists(RegHive::CurrentUser, reg.SectionPath(section))) << section;
    }
}

TEST_F(TabrowSettingsTest, EveryKeySurvivesARoundTripThroughTheFile) {
    TabrowSettings s = Loaded();
    // The whole-number fields Save writes; no range is enforced: any number goes through as it is.
    using S = TabrowSettings;
    int S::*const saved[] = {&S::m_bLoadOnCommand,
                             &S::m_bShowTips,
                             &S::m_nTipWidth,
                             &S::m_nTipDelay,
                             &S::m_nTipRemain,
                             &S::m_bShowFullPathInTips,
                             &S::m_bShowDwgPropsInTips,
                             &S::m_bShowFullPathInRefs,
                             &S::m_bShowFullPathInSheetSets,
                             &S::m_nSortBy,
                             &S::m_bZoomExtentsOnSave,
                             &S::m_bSwitchOnBusy,
                             &S::m_bHideOnSingle,
                             &S::m_nDockSide,
                             &S::m_bFloating,
                             &S::m_bTabMode,
                             &S::m_bSortWorksets,
                             &S::m_nNumSheetSets,
                             &S::m_bAutoUpdatePreviews,
                             &S::m_bShowDwgName,
                             &S::m_bDwgNameAbove,
                             &S::m_bScrollOverflow,
                             &S::m_nScrollBarSize};
    int n = 1001;
    for (int S::*field : saved)
        s.*field = n++;
    s.m_clrBackground = 0x010203;
    s.m_clrTitleBack = 0x040506;
    s.m_clrTitleText = 0x070809;
    s.m_clrReadOnly = 0xFFFFFF;
    s.m_clrModified = 0;
    ASSERT_TRUE(s.Save(reg));

    // The keys that other moments write: a drag, the menu, the dialogs, or a hand in the file.
    const std::pair<const wchar_t*, int> others[] = {
        {keys::kLockSize, 1},         {keys::kSize, 140},       {keys::kWidthOnCmdWnd, 260},
        {keys::kMinSize, 30},         {keys::kHasScrollBar, 1}, {keys::kMRUCount, 4},
        {keys::kOpenSheetSetInSSM, 1}};
    for (const auto& [key, value] : others)
        ASSERT_TRUE(reg.SetInt(L"", key, value));
    ASSERT_TRUE(reg.SetString(L"", keys::kSsSearchPath, L"D:\\sheets\\\\"));
    ASSERT_TRUE(reg.SetString(L"", keys::kLastWorkset, L"Site \"B\""));
    ASSERT_TRUE(reg.SetString(L"", keys::kSaveCommand, L"_.SAVE\n"));
    ASSERT_TRUE(reg.SetFont(L"", keys::kTabFont, Font(-20, u"Tahoma")));
    ASSERT_TRUE(reg.SetFont(L"", keys::kLabelFont, Font(-9, u"Arial")));
    ASSERT_TRUE(reg.SetDouble(keys::kWhiteBack, keys::kBrightness, -0.25));
    ASSERT_TRUE(reg.SetDouble(keys::kBlackBack, keys::kGamma, 1.8));
    ASSERT_TRUE(reg.SetInt(keys::kBlackBack, keys::kSharpness, 0));
    ASSERT_TRUE(reg.SetString(keys::kWorksets, keys::kPath, L"C:\\sets\\office.worksets"));

    RegFileStore restarted(RegFileStore::DefaultPath());
    ScopedPort<KeyValueStore> port(restarted);
    const TabrowSettings r = Loaded();
    for (int S::*field : saved)
        EXPECT_EQ(r.*field, s.*field) << "the field set to " << s.*field;
    EXPECT_EQ(r.m_clrBackground, 0x010203u);
    EXPECT_EQ(r.m_clrTitleText, 0x070809u);
    EXPECT_EQ(r.m_clrReadOnly, 0xFFFFFFu);
    EXPECT_EQ(r.m_clrModified, 0u);
    EXPECT_EQ(r.m_bLockSize + r.m_bHasScrollBar + r.m_bOpenSheetSetInSSM, 3);
    EXPECT_EQ(r.m_nSize, 140);
    EXPECT_EQ(r.m_nWidthOnCmdWnd, 260);
    EXPECT_EQ(r.m_nMinSize, 30);
    EXPECT_EQ(r.m_nMRUCount, 4);
    EXPECT_EQ(r.m_strSsSearchPath, L"D:\\sheets\\") << "one trailing backslash";
    EXPECT_EQ(r.m_strLastWorkset, L"Site \"B\"");
    EXPECT_EQ(r.m_strSaveCommand, L"_.SAVE\n");
    EXPECT_TRUE(SameFont(r.m_lfTabFont, Font(-20, u"Tahoma")));
    EXPECT_TRUE(SameFont(r.m_lfLabelFont, Font(-9, u"Arial")));
    EXPECT_EQ(r.m_whiteBack.m_dBrightness, -0.25);
    EXPECT_EQ(r.m_blackBack.m_dGamma, 1.8);
    EXPECT_EQ(r.m_blackBack.m_nSharpness, 0);
    EXPECT_EQ(r.m_strWorksetsPath, L"C:\\sets\\office.worksets");
    TabrowSettings resaved = r;
    EXPECT_TRUE(resaved.Save(reg));
}

TEST_F(TabrowSettingsTest, SaveWritesInThePreferencesOrder) {
    // A new value goes to the end of its key in the file, so the file shows the order of writes.
    ASSERT_TRUE(Loaded().Save(reg));
    auto names = [this](const wchar_t* section) {
        return store.ValueNames(RegHive::CurrentUser, reg.SectionPath(section));
    };
    EXPECT_EQ(
        names(keys::kRoot),
        (std::vector<std::wstring>{
            L"ShowTips", L"TipWidth", L"TipDelay", L"TipRemain", L"LoadOnCommand", L"Floating",
            L"HideOnSingle", L"SwitchOnBusy", L"ZoomExtentsOnSave", L"ShowFullPathInTips",
            L"ShowDwgPropsInTips", L"ShowFullPathInRefs", L"ShowFullPathInSheetSets",
            L"SortWorksets", L"NumSheetSets", L"SortBy", L"TabMode", L"DockSide"}));
    EXPECT_EQ(names(keys::kColors),
              (std::vector<std::wstring>{L"Background", L"TitleBack", L"TitleText", L"ReadOnly",
                                         L"Modified"}));
    EXPECT_EQ(names(keys::kPreviews),
              (std::vector<std::wstring>{L"AutoUpdatePreviews", L"ScrollBarSize", L"ScrollOverflow",
                                         L"ShowDwgName", L"DwgNameAbove"}));
}

TEST_F(TabrowSettingsTest, BadStoredValuesFallBackToTheirDefaults) {
    ASSERT_TRUE(reg.SetString(L"", keys::kSaveCommand, L""));
    std::vector<std::uint8_t> font91(91, 0x41);
    ASSERT_TRUE(reg.SetBinary(L"", keys::kTabFont, font91.data(), font91.size()));
    ASSERT_TRUE(reg.SetString(L"", keys::kLabelFont, L"Arial"));
    system.commandWindowWidth = 0;
    const TabrowSettings s = Loaded();
    EXPECT_EQ(s.m_strSaveCommand, L"_.QSAVE\n");
    EXPECT_TRUE(SameFont(s.m_lfTabFont, system.guiFont));
    EXPECT_TRUE(SameFont(s.m_lfLabelFont, system.guiFont));
    EXPECT_EQ(s.m_nWidthOnCmdWnd, 0) << "known only after the first layout";
}

TEST_F(TabrowSettingsTest, TheWorkSetFileIsSearchedOnceAndStored) {
    PutFile(L"program/drafter.worksets");
    EXPECT_EQ(Loaded().m_strWorksetsPath, scratch.Folder() + L"program/drafter.worksets");
    PutFile(L"program/Company.worksets");
    EXPECT_EQ(Loaded().m_strWorksetsPath, scratch.Folder() + L"program/drafter.worksets")
        << "a shared file that appears later is not noticed while the key is set";
    ASSERT_TRUE(reg.SetString(keys::kWorksets, keys::kPath, L""));
    EXPECT_EQ(Loaded().m_strWorksetsPath, scratch.Folder() + L"program/Company.worksets");

    disk.m_userName.clear();
    fs::remove(DiskPath(scratch.Folder() + L"program/Company.worksets"));
    EXPECT_EQ(DefaultWorkSetFile(system), scratch.Folder() + L"program/Company.worksets")
        << "without a user name the shared file is named even though it is missing";
}

TEST_F(TabrowSettingsTest, TheSheetSetFolderFallsBackToTheHostsWizard) {
    const std::wstring profile = L"HKEY_CURRENT_USER\\Software\\Host\\R17\\Profiles\\<<Unnamed>>";
    system.hostProfileKey = profile;
    EXPECT_EQ(FindSheetSetSearchPath(reg, system), scratch.Folder() + L"program/")
        << "no wizard key: the program's folder";
    EXPECT_FALSE(store.KeyExists(RegHive::CurrentUser,
                                 L"Software\\Host\\R17\\Profiles\\<<Unnamed>>\\Dialogs"))
        << "the host's key is only read";

    CRegistryKey wizard(RegHive::None, profile + keys::kSheetSetWizardKey, true);
    ASSERT_TRUE(wizard.SetString(keys::kSheetSetCreatePath, L"E:\\wizard"));
    EXPECT_EQ(FindSheetSetSearchPath(reg, system), L"E:\\wizard\\");
    EXPECT_EQ(reg.GetString(L"", keys::kSsSearchPath, L"unset"), L"unset") << "not written back";

    system.hostProfileKey = L"Software\\Host\\R17\\Profiles\\<<Unnamed>>";
    EXPECT_EQ(FindSheetSetSearchPath(reg, system), L"E:\\wizard\\") << "hive left out: the user's";

    ASSERT_TRUE(reg.SetString(L"", keys::kSsSearchPath, L"F:\\mine"));
    EXPECT_EQ(FindSheetSetSearchPath(reg, system), L"F:\\mine\\");
}

TEST_F(TabrowSettingsTest, AStoreThatCannotBeWrittenStillLoadsAndSaysSaveFailed) {
    ASSERT_TRUE(reg.SetInt(L"", keys::kTipWidth, 512));
    TabrowSettings s = Loaded();
    fs::path file = DiskPath(RegFileStore::DefaultPath());
    const std::string before = ReadBytes(file);
    fs::permissions(file, fs::perms::owner_write | fs::perms::group_write,
                    fs::perm_options::remove);
    RegFileStore readOnly(RegFileStore::DefaultPath());
    ScopedPort<KeyValueStore> port(readOnly);
    EXPECT_EQ(Loaded().m_nTipWidth, 512);
    s.m_nTipWidth = 1;
    EXPECT_FALSE(s.Save(reg));
    EXPECT_EQ(ReadBytes(file), before);
}
