// The menu's sheet sets: the host manager's recent ones and those of the search folder, the two
// settings the menu flips, and opening a sheet set's drawings.

#include "bar/auto_ref.h"
#include "bar/hv_tabrow.h"
#include "layout/host_windows.h"
#include "ports/document_automation.h"
#include "ports/host_services.h"
#include "ports/message_box.h"
#include "ports/port.h"
#include "settings/reg_impl.h"
#include "settings/settings_keys.h"
#include "sheetsets/sheet_set_dlg.h"
#include "sheetsets/sheet_set_lists.h"

namespace {

// Each path under the next id; an empty list gets the one "None Found" row when asked for.
void FillRows(TrPathRows& rows, const std::vector<std::wstring>& paths, unsigned* pNextId,
              bool bNoneFound) {
    for (const std::wstring& path : paths)
        rows[(*pNextId)++] = CFilePath(path);
    if (bNoneFound && rows.empty())
        rows[(*pNextId)++] = CFilePath(kNoneFound);
}

}  // namespace

void HvTabrow::BuildSheetSetRows(unsigned* pNextId, bool bNoneFound) {
    m_recentSheetSets.clear();
    m_foundSheetSets.clear();
    FillRows(m_recentSheetSets, ReadRecentSheetSets(Use<HostServices>().RoamableRootFolder()),
             pNextId, bNoneFound);
    FillRows(m_foundSheetSets, FindSheetSets(m_strSsSearchPath), pNextId, bNoneFound);
}

void HvTabrow::OpenSheetSet(const std::wstring& path) {
    if (m_bOpenSheetSetInSSM != 0) {
        // The host's manager palette takes the sheet set over; nothing of it is read here.
        DocumentAutomation& automation = Use<DocumentAutomation>();
        AutoDocumentPtr active(automation.ActiveDocument(m_pHostApp));
        if (active.Get() == nullptr)
            throw ComError(hr::kPointer, L"Invalid pointer");
        automation.SendCommand(active.Get(), L"-OPENSHEETSET \"" + path + L"\"\n");
        return;
    }
    SheetSetDlg dialog(path, g_hwndFrame);
    if (dialog.DoModal() != mb::kIdOk)
        return;
    // Each drawing opens quietly: one already open comes to the front without a word.
    for (const std::wstring& file : dialog.m_files)
        OpenFile(ParseFileEntry(file), false, false);
}

void HvTabrow::SetSheetSetSearchPath() {
    CFilePath folder(m_strSsSearchPath);
    if (!folder.BrowseForFolder(g_hwndFrame, L"Select new path to search for Sheet Set files",
                                false))
        return;
    m_strSsSearchPath = folder.GetPath();
    m_store.SetString(keys::kRoot, keys::kSsSearchPath, m_strSsSearchPath);
}

void HvTabrow::ToggleOpenSheetSetInSSM() {
    m_bOpenSheetSetInSSM = m_bOpenSheetSetInSSM == 0 ? 1 : 0;
    m_store.SetInt(keys::kRoot, keys::kOpenSheetSetInSSM, m_bOpenSheetSetInSSM);
    if (HostHasSheetSets())
        Use<HostServices>().SetVariable(L"SSMAUTOOPEN", std::to_wstring(m_bOpenSheetSetInSSM));
}
