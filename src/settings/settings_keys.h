#pragma once
// Every section and key name of the settings, below the root key of HvRegImpl. The names are
// stored in users' settings and must never change, letter case included (`LastWorkset` of the
// root section and `LastWorkSet` of "WorkSetDlg" are two different values).

namespace keys {

// Sections. The empty name is the root key itself.
inline constexpr wchar_t kRoot[] = L"";
inline constexpr wchar_t kColors[] = L"Colors";
inline constexpr wchar_t kPreviews[] = L"Previews";
inline constexpr wchar_t kWhiteBack[] = L"WhiteBack";
inline constexpr wchar_t kBlackBack[] = L"BlackBack";
inline constexpr wchar_t kMru[] = L"MRU";
inline constexpr wchar_t kWorksets[] = L"Worksets";
inline constexpr wchar_t kPreferencesDlg[] = L"PreferencesDlg";
inline constexpr wchar_t kWorkSetDlg[] = L"WorkSetDlg";
inline constexpr wchar_t kReferencesDialog[] = L"ReferencesDialog";
inline constexpr wchar_t kSheetSetDialog[] = L"SheetSetDialog";
inline constexpr wchar_t kSelectWsFilesDlg[] = L"SelectWsFilesDlg";

// Root section.
inline constexpr wchar_t kOn[] = L"On";
inline constexpr wchar_t kLoadOnCommand[] = L"LoadOnCommand";
inline constexpr wchar_t kShowTips[] = L"ShowTips";
inline constexpr wchar_t kTipWidth[] = L"TipWidth";
inline constexpr wchar_t kTipDelay[] = L"TipDelay";
inline constexpr wchar_t kTipRemain[] = L"TipRemain";
inline constexpr wchar_t kShowFullPathInTips[] = L"ShowFullPathInTips";
inline constexpr wchar_t kShowDwgPropsInTips[] = L"ShowDwgPropsInTips";
inline constexpr wchar_t kShowFullPathInRefs[] = L"ShowFullPathInRefs";
inline constexpr wchar_t kShowFullPathInSheetSets[] = L"ShowFullPathInSheetSets";
inline constexpr wchar_t kSortBy[] = L"SortBy";
inline constexpr wchar_t kZoomExtentsOnSave[] = L"ZoomExtentsOnSave";
inline constexpr wchar_t kSwitchOnBusy[] = L"SwitchOnBusy";
inline constexpr wchar_t kHideOnSingle[] = L"HideOnSingle";
inline constexpr wchar_t kLockSize[] = L"LockSize";
inline constexpr wchar_t kDockSide[] = L"DockSide";
inline constexpr wchar_t kFloating[] = L"Floating";
inline constexpr wchar_t kTabMode[] = L"TabMode";
inline constexpr wchar_t kSize[] = L"Size";
inline constexpr wchar_t kWidthOnCmdWnd[] = L"WidthOnCmdWnd";
inline constexpr wchar_t kMinSize[] = L"MinSize";
inline constexpr wchar_t kHasScrollBar[] = L"HasScrollBar";
inline constexpr wchar_t kMRUCount[] = L"MRUCount";
inline constexpr wchar_t kOpenSheetSetInSSM[] = L"OpenSheetSetInSSM";
inline constexpr wchar_t kSortWorksets[] = L"SortWorksets";
inline constexpr wchar_t kNumSheetSets[] = L"NumSheetSets";
inline constexpr wchar_t kSsSearchPath[] = L"SsSearchPath";
inline constexpr wchar_t kLastWorkset[] = L"LastWorkset";
inline constexpr wchar_t kSaveCommand[] = L"SaveCommand";
inline constexpr wchar_t kDisableNewMenu[] = L"DisableNewMenu";
inline constexpr wchar_t kAvoidSaveasInLisp[] = L"AvoidSaveasInLisp";
inline constexpr wchar_t kAutoCheckForUpdates[] = L"AutoCheckForUpdates";
inline constexpr wchar_t kTabFont[] = L"TabFont";
inline constexpr wchar_t kLabelFont[] = L"LabelFont";
inline constexpr wchar_t kFloatPosition[] = L"FloatPosition";

// "Colors".
inline constexpr wchar_t kReadOnly[] = L"ReadOnly";
inline constexpr wchar_t kModified[] = L"Modified";
inline constexpr wchar_t kBackground[] = L"Background";
inline constexpr wchar_t kTitleBack[] = L"TitleBack";
inline constexpr wchar_t kTitleText[] = L"TitleText";

// "Previews".
inline constexpr wchar_t kAutoUpdatePreviews[] = L"AutoUpdatePreviews";
inline constexpr wchar_t kShowDwgName[] = L"ShowDwgName";
inline constexpr wchar_t kDwgNameAbove[] = L"DwgNameAbove";
inline constexpr wchar_t kScrollOverflow[] = L"ScrollOverflow";
inline constexpr wchar_t kScrollBarSize[] = L"ScrollBarSize";

// "WhiteBack" and "BlackBack".
inline constexpr wchar_t kBrightness[] = L"Brightness";
inline constexpr wchar_t kContrast[] = L"Contrast";
inline constexpr wchar_t kGamma[] = L"Gamma";
inline constexpr wchar_t kSharpness[] = L"Sharpness";

// "MRU": "Path_1" ... "Path_n", formatted with kMruPathFormat.
inline constexpr wchar_t kMruPathFormat[] = L"Path_%i";
// "Worksets".
inline constexpr wchar_t kPath[] = L"Path";
// "PreferencesDlg".
inline constexpr wchar_t kLastTab[] = L"LastTab";
// "WorkSetDlg".
inline constexpr wchar_t kLastWorkSet[] = L"LastWorkSet";

// List controls below a dialog's section.
inline constexpr wchar_t kColumnWidthFormat[] = L"Col%i";
inline constexpr wchar_t kSort[] = L"Sort";
inline constexpr wchar_t kOrder[] = L"Order";

// The host's own keys.
inline constexpr wchar_t kSheetSetWizardKey[] = L"\\Dialogs\\Sheet Set Wizard";
inline constexpr wchar_t kSheetSetCreatePath[] = L"SheetSetCreatePath";

}  // namespace keys
