#pragma once
// The settings table: every value the bar and its palette keep, with its default, read in one
// go when the bar is made and written in one go when the preferences are confirmed.
//
// Integers stay integers: no range is enforced anywhere, booleans are 0 or non-zero, and a value
// edited by hand is used as it stands. Defaults that depend on the machine come in through
// SystemValues, never from a global read in the middle.

#include <string>

#include "foundation/win_types.h"

class HvRegImpl;

// DockSide: the framework's four dock bars, then the program's two places in the command window.
namespace dock {
constexpr int kTop = 59419;
constexpr int kLeft = 59420;
constexpr int kRight = 59421;
constexpr int kBottom = 59422;
constexpr int kCmdWndLeft = 59424;
constexpr int kCmdWndRight = 59425;
// 59423 is unused: a value above it is in the command window, below it beside the MDI client.
constexpr bool IsInCommandWindow(int side) {
    return side > kBottom;
}
}  // namespace dock

// What the host and the window system say, for the defaults that depend on them.
struct SystemValues {
    win::COLORREF btnFace = 0;   // the system colour of button faces
    win::COLORREF btnText = 0;   // the system colour of button text
    win::LOGFONTW guiFont;       // the stock GUI font
    int commandWindowWidth = 0;  // 0 while the command window's width is not known
    // The registry key of the host's current profile, with or without the hive's name; empty when
    // the host cannot name it. The sheet set search folder falls back to a value below it.
    std::wstring hostProfileKey;
    // The per-user data folder of the application, ending with a separator.
    std::wstring appDataFolder;
};

// The image adjustments for previews on a light ("WhiteBack") or dark ("BlackBack") background.
struct ImageAdjustments {
    double m_dBrightness = 0.0;
    double m_dContrast = 0.0;
    double m_dGamma = 0.0;  // 0.0 means no gamma step at all
    int m_nSharpness = 20;
};
inline constexpr ImageAdjustments kWhiteBackDefaults{};
inline constexpr ImageAdjustments kBlackBackDefaults{0.0, 0.0, 2.5, 20};

struct TabrowSettings {
    // Root section.
    int m_bLoadOnCommand = 0;
    int m_bShowTips = 1;
    int m_nTipWidth = 300;
    int m_nTipDelay = 3000;
    int m_nTipRemain = 10000;
    int m_bShowFullPathInTips = 0;
    int m_bShowDwgPropsInTips = 0;
    int m_bShowFullPathInRefs = 0;
    int m_bShowFullPathInSheetSets = 0;
    int m_nSortBy = 0;  // 0 unsorted, 1 by drawing name, 2 by drawing path
    int m_bZoomExtentsOnSave = 1;
    int m_bSwitchOnBusy = 1;
    int m_bHideOnSingle = 0;
    int m_bLockSize = 0;  // never written: a change lasts until the host closes
    int m_nDockSide = dock::kLeft;
    int m_bFloating = 0;
    int m_bTabMode = 0;
    int m_nSize = 100;
    int m_nWidthOnCmdWnd = 0;
    int m_nMinSize = 26;
    int m_bHasScrollBar = 0;
    int m_nMRUCount = 10;
    int m_bOpenSheetSetInSSM = 0;
    int m_bSortWorksets = 0;
    int m_nNumSheetSets = 15;
    std::wstring m_strSsSearchPath;
    std::wstring m_strLastWorkset;
    std::wstring m_strSaveCommand = L"_.QSAVE\n";
    win::LOGFONTW m_lfTabFont;

    // "Colors".
    win::COLORREF m_clrReadOnly = 0x0000AC;
    win::COLORREF m_clrModified = 0x058F28;
    win::COLORREF m_clrBackground = 0;
    win::COLORREF m_clrTitleBack = 0;
    win::COLORREF m_clrTitleText = 0;

    // "Previews".
    int m_bAutoUpdatePreviews = 1;
    int m_bShowDwgName = 1;
    int m_bDwgNameAbove = 0;
    int m_bScrollOverflow = 0;
    int m_nScrollBarSize = 12;
    win::LOGFONTW m_lfLabelFont;

    // "WhiteBack" and "BlackBack"; nothing writes them.
    ImageAdjustments m_whiteBack = kWhiteBackDefaults;
    ImageAdjustments m_blackBack = kBlackBackDefaults;

    // "Worksets": the work set file; a computed default is stored at the first load.
    std::wstring m_strWorksetsPath;

    // Reads every value, each with its default. Stores the work set file's computed default when
    // the key is empty, and finds the sheet set search folder.
    void Load(HvRegImpl& reg, const SystemValues& system);
    // Writes what the preferences edit, in the order the preferences have always written it.
    // False when any write failed; the rest are still attempted.
    bool Save(HvRegImpl& reg) const;
};

// The adjustments for previews on a dark ("BlackBack") or light ("WhiteBack") background as the
// store holds them now, each value with its default.
ImageAdjustments ReadImageAdjustments(const HvRegImpl& reg, bool bDarkBack);

// The per-user values read by others than the bar.
bool LoadBarOn(const HvRegImpl& reg);                // "On": TRON/TROFF state, written at unload
bool LoadAutoCheckForUpdates(const HvRegImpl& reg);  // at start-up and in the about dialog
bool LoadDisableNewMenu(const HvRegImpl& reg);       // at each opening of the context menu
bool LoadAvoidSaveasInLisp(const HvRegImpl& reg);    // by the editor reactor
bool LoadLoadOnCommand(const HvRegImpl& reg);        // demand-load keys at start-up

// The sheet set search folder: the stored one, else the host's own wizard's last folder, else
// the program's folder; a found folder ends with exactly one backslash.
std::wstring FindSheetSetSearchPath(const HvRegImpl& reg, const SystemValues& system);

// Where the work set file is when the setting is empty: the office's shared file beside the
// program, else the user's file beside the program, else the user's file in the data folder.
std::wstring DefaultWorkSetFile(const SystemValues& system);
