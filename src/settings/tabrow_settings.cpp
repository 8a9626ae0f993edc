#include "settings/tabrow_settings.h"

#include "ports/file_system.h"
#include "ports/port.h"
#include "settings/reg_impl.h"
#include "settings/registry_key.h"
#include "settings/settings_keys.h"

namespace {

std::wstring ModuleFolder() {
    std::wstring module = Use<FileSystem>().ModulePath();
    std::size_t cut = module.find_last_of(L"\\/");
    return cut == std::wstring::npos ? std::wstring() : module.substr(0, cut + 1);
}

bool FileExists(const std::wstring& path) {
    std::optional<FoundFile> found = Use<FileSystem>().Stat(path);
    return found && !found->isFolder;
}

win::COLORREF GetColor(const HvRegImpl& reg, const wchar_t* key, win::COLORREF fallback) {
    return static_cast<win::COLORREF>(reg.GetInt(keys::kColors, key, static_cast<int>(fallback)));
}

win::LOGFONTW GetFontOr(const HvRegImpl& reg, const wchar_t* key, const win::LOGFONTW& fallback) {
    win::LOGFONTW font = fallback;
    if (!reg.GetFont(keys::kRoot, key, font))
        font = fallback;
    return font;
}

void LoadAdjustments(const HvRegImpl& reg, const wchar_t* section, ImageAdjustments& adjust) {
    adjust.m_dBrightness = reg.GetDouble(section, keys::kBrightness, adjust.m_dBrightness);
    adjust.m_dContrast = reg.GetDouble(section, keys::kContrast, adjust.m_dContrast);
    adjust.m_dGamma = reg.GetDouble(section, keys::kGamma, adjust.m_dGamma);
    adjust.m_nSharpness = reg.GetInt(section, keys::kSharpness, adjust.m_nSharpness);
}

// Reads an integer field in place: the field's initial value is the default.
void Read(const HvRegImpl& reg, const wchar_t* section, const wchar_t* key, int& field) {
    field = reg.GetInt(section, key, field);
}

void LoadRootIntegers(const HvRegImpl& reg, TabrowSettings& s) {
    const wchar_t* root = keys::kRoot;
    Read(reg, root, keys::kLoadOnCommand, s.m_bLoadOnCommand);
    Read(reg, root, keys::kShowTips, s.m_bShowTips);
    Read(reg, root, keys::kTipWidth, s.m_nTipWidth);
    Read(reg, root, keys::kTipDelay, s.m_nTipDelay);
    Read(reg, root, keys::kTipRemain, s.m_nTipRemain);
    Read(reg, root, keys::kShowFullPathInTips, s.m_bShowFullPathInTips);
    Read(reg, root, keys::kShowDwgPropsInTips, s.m_bShowDwgPropsInTips);
    Read(reg, root, keys::kShowFullPathInRefs, s.m_bShowFullPathInRefs);
    Read(reg, root, keys::kShowFullPathInSheetSets, s.m_bShowFullPathInSheetSets);
    Read(reg, root, keys::kSortBy, s.m_nSortBy);
    Read(reg, root, keys::kZoomExtentsOnSave, s.m_bZoomExtentsOnSave);
    Read(reg, root, keys::kSwitchOnBusy, s.m_bSwitchOnBusy);
    Read(reg, root, keys::kHideOnSingle, s.m_bHideOnSingle);
    Read(reg, root, keys::kLockSize, s.m_bLockSize);
    Read(reg, root, keys::kDockSide, s.m_nDockSide);
    Read(reg, root, keys::kFloating, s.m_bFloating);
    Read(reg, root, keys::kTabMode, s.m_bTabMode);
    Read(reg, root, keys::kSize, s.m_nSize);
    Read(reg, root, keys::kWidthOnCmdWnd, s.m_nWidthOnCmdWnd);
    Read(reg, root, keys::kMinSize, s.m_nMinSize);
    Read(reg, root, keys::kHasScrollBar, s.m_bHasScrollBar);
    Read(reg, root, keys::kMRUCount, s.m_nMRUCount);
    Read(reg, root, keys::kOpenSheetSetInSSM, s.m_bOpenSheetSetInSSM);
    Read(reg, root, keys::kSortWorksets, s.m_bSortWorksets);
    Read(reg, root, keys::kNumSheetSets, s.m_nNumSheetSets);
}

void LoadPalette(const HvRegImpl& reg, const SystemValues& system, TabrowSettings& s) {
    s.m_clrReadOnly = GetColor(reg, keys::kReadOnly, 0x0000AC);
    s.m_clrModified = GetColor(reg, keys::kModified, 0x058F28);
    s.m_clrBackground = GetColor(reg, keys::kBackground, system.btnFace);
    s.m_clrTitleBack = GetColor(reg, keys::kTitleBack, system.btnFace);
    s.m_clrTitleText = GetColor(reg, keys::kTitleText, system.btnText);

    Read(reg, keys::kPreviews, keys::kAutoUpdatePreviews, s.m_bAutoUpdatePreviews);
    Read(reg, keys::kPreviews, keys::kShowDwgName, s.m_bShowDwgName);
    Read(reg, keys::kPreviews, keys::kDwgNameAbove, s.m_bDwgNameAbove);
    Read(reg, keys::kPreviews, keys::kScrollOverflow, s.m_bScrollOverflow);
    Read(reg, keys::kPreviews, keys::kScrollBarSize, s.m_nScrollBarSize);
    s.m_lfLabelFont = GetFontOr(reg, keys::kLabelFont, system.guiFont);

    LoadAdjustments(reg, keys::kWhiteBack, s.m_whiteBack);
    LoadAdjustments(reg, keys::kBlackBack, s.m_blackBack);
}

}  // namespace

ImageAdjustments ReadImageAdjustments(const HvRegImpl& reg, bool bDarkBack) {
    ImageAdjustments adjust = bDarkBack ? kBlackBackDefaults : kWhiteBackDefaults;
    LoadAdjustments(reg, bDarkBack ? keys::kBlackBack : keys::kWhiteBack, adjust);
    return adjust;
}

void TabrowSettings::Load(HvRegImpl& reg, const SystemValues& system) {
    *this = TabrowSettings();
    // Half the command window is the default width beside it; while that window's width is not
    // known the field stays 0 and is asked again when first used.
    m_nWidthOnCmdWnd = system.commandWindowWidth / 2;
    LoadRootIntegers(reg, *this);
    m_strLastWorkset = reg.GetString(keys::kRoot, keys::kLastWorkset, {});
    m_strSaveCommand = reg.GetString(keys::kRoot, keys::kSaveCommand, m_strSaveCommand);
    m_lfTabFont = GetFontOr(reg, keys::kTabFont, system.guiFont);
    LoadPalette(reg, system, *this);

    m_strWorksetsPath = reg.GetString(keys::kWorksets, keys::kPath, {});
    if (m_strWorksetsPath.empty()) {
        // Stored at once, so the search runs once per user: a shared file that appears later is
        // not noticed until the key is cleared.
        m_strWorksetsPath = DefaultWorkSetFile(system);
        reg.SetString(keys::kWorksets, keys::kPath, m_strWorksetsPath);
    }
    m_strSsSearchPath = FindSheetSetSearchPath(reg, system);
}

bool TabrowSettings::Save(HvRegImpl& reg) const {
    const wchar_t* root = keys::kRoot;
    bool ok = true;
    auto put = [&reg, &ok](const wchar_t* section, const wchar_t* key, int value) {
        ok = reg.SetInt(section, key, value) && ok;
    };
    put(root, keys::kShowTips, m_bShowTips);
    put(root, keys::kTipWidth, m_nTipWidth);
    put(root, keys::kTipDelay, m_nTipDelay);
    put(root, keys::kTipRemain, m_nTipRemain);
    put(root, keys::kLoadOnCommand, m_bLoadOnCommand);
    put(root, keys::kFloating, m_bFloating);
    put(root, keys::kHideOnSingle, m_bHideOnSingle);
    put(root, keys::kSwitchOnBusy, m_bSwitchOnBusy);
    put(root, keys::kZoomExtentsOnSave, m_bZoomExtentsOnSave);
    put(root, keys::kShowFullPathInTips, m_bShowFullPathInTips);
    put(root, keys::kShowDwgPropsInTips, m_bShowDwgPropsInTips);
    put(root, keys::kShowFullPathInRefs, m_bShowFullPathInRefs);
    put(root, keys::kShowFullPathInSheetSets, m_bShowFullPathInSheetSets);
    put(root, keys::kSortWorksets, m_bSortWorksets);
    put(root, keys::kNumSheetSets, m_nNumSheetSets);
    put(root, keys::kSortBy, m_nSortBy);

    put(keys::kColors, keys::kBackground, static_cast<int>(m_clrBackground));
    put(keys::kColors, keys::kTitleBack, static_cast<int>(m_clrTitleBack));
    put(keys::kColors, keys::kTitleText, static_cast<int>(m_clrTitleText));
    put(keys::kColors, keys::kReadOnly, static_cast<int>(m_clrReadOnly));
    put(keys::kColors, keys::kModified, static_cast<int>(m_clrModified));

    put(keys::kPreviews, keys::kAutoUpdatePreviews, m_bAutoUpdatePreviews);
    put(keys::kPreviews, keys::kScrollBarSize, m_nScrollBarSize);
    put(keys::kPreviews, keys::kScrollOverflow, m_bScrollOverflow);
    put(keys::kPreviews, keys::kShowDwgName, m_bShowDwgName);
    put(keys::kPreviews, keys::kDwgNameAbove, m_bDwgNameAbove);

    put(root, keys::kTabMode, m_bTabMode);
    put(root, keys::kDockSide, m_nDockSide);
    // Written twice, as it always has been; harmless, and the order is kept as it is.
    put(root, keys::kFloating, m_bFloating);
    return ok;
}

bool LoadBarOn(const HvRegImpl& reg) {
    return reg.GetInt(keys::kRoot, keys::kOn, 1) != 0;
}

bool LoadAutoCheckForUpdates(const HvRegImpl& reg) {
    return reg.GetInt(keys::kRoot, keys::kAutoCheckForUpdates, 0) != 0;
}

bool LoadDisableNewMenu(const HvRegImpl& reg) {
    return reg.GetInt(keys::kRoot, keys::kDisableNewMenu, 0) != 0;
}

bool LoadAvoidSaveasInLisp(const HvRegImpl& reg) {
    return reg.GetInt(keys::kRoot, keys::kAvoidSaveasInLisp, 0) != 0;
}

bool LoadLoadOnCommand(const HvRegImpl& reg) {
    return reg.GetInt(keys::kRoot, keys::kLoadOnCommand, 0) != 0;
}

std::wstring FindSheetSetSearchPath(const HvRegImpl& reg, const SystemValues& system) {
    std::wstring path = reg.GetString(keys::kRoot, keys::kSsSearchPath, {});
    if (path.empty() && !system.hostProfileKey.empty()) {
        // The host's wizard folder is only a fallback; it is never written back to the setting.
        // The host names its profile key with or without the hive; without, it is the user's.
        std::wstring wizardPath = system.hostProfileKey + keys::kSheetSetWizardKey;
        std::wstring firstPart = wizardPath.substr(0, wizardPath.find(L'\\'));
        RegHive hive =
            reg::HiveFromName(firstPart) == RegHive::None ? RegHive::CurrentUser : RegHive::None;
        CRegistryKey wizard(hive, wizardPath, false);
        std::wstring wizardFolder;
        if (std::optional<RegValue> value = wizard.QueryValue(keys::kSheetSetCreatePath)) {
            wizardFolder = reg::StringText(value->data);
        }
        path = reg.GetString(keys::kRoot, keys::kSsSearchPath, wizardFolder);
    }
    if (path.empty())
        return ModuleFolder();
    while (!path.empty() && path.back() == L'\\')
        path.pop_back();
    return path + L'\\';
}

std::wstring DefaultWorkSetFile(const SystemValues& system) {
    std::wstring moduleFolder = ModuleFolder();
    std::wstring shared = moduleFolder + L"Company.worksets";
    if (FileExists(shared))
        return shared;
    std::wstring user = Use<FileSystem>().UserName();
    if (user.empty())
        return shared;
    std::wstring besideProgram = moduleFolder + user + L".worksets";
    if (FileExists(besideProgram))
        return besideProgram;
    return system.appDataFolder + user + L".worksets";
}
