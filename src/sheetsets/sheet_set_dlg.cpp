#include "sheetsets/sheet_set_dlg.h"

#include "ports/message_box.h"
#include "ports/port.h"
#include "ports/sheet_selection.h"
#include "sheetsets/sheet_set_manager.h"

HostSheetSetManager* g_pSheetSetMgr = nullptr;

std::unique_ptr<CAcSmSheetSet> SheetSetDlg::Load() {
    // Without the manager the tree says so in its one item, and no box is shown.
    if (g_pSheetSetMgr == nullptr)
        return nullptr;
    try {
        return LoadSheetSet(g_pSheetSetMgr, m_strFile);
    } catch (const ComError& e) {
        Use<MessageBoxes>().Show(e.Description(), L"", mb::kOk);
    } catch (...) {
        Use<MessageBoxes>().Show(L"Unknown error in CSheetSetTreeCtrl::Load()!", L"", mb::kOk);
    }
    return nullptr;
}

std::vector<std::wstring> SheetSetDlg::SheetFiles(const CAcSmSheetSet& model) {
    std::vector<std::wstring> files;
    for (const auto& sheet : model.m_sheets)
        files.push_back(sheet->m_layout.m_strFileName);
    for (const auto& subset : model.m_subsets) {
        for (const auto& sheet : subset->m_sheets)
            files.push_back(sheet->m_layout.m_strFileName);
    }
    return files;
}

int SheetSetDlg::DoModal() {
    const std::unique_ptr<CAcSmSheetSet> model = Load();
    const std::vector<std::wstring> offered =
        model ? SheetFiles(*model) : std::vector<std::wstring>{};
    // Until the dialog's own tree is built, the window system's sheet selection shows the
    // drawings and answers with the ticked ones.
    const auto ticked = Use<SheetSelectionDialog>().Run(m_pParent, L"Select Sheets", offered);
    if (!ticked)
        return mb::kIdCancel;
    for (std::size_t i : *ticked)
        m_files.push_back(offered.at(i));
    return mb::kIdOk;
}
