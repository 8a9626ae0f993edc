// The bar's two document lists kept in step: the tab control and the palette get every
// document event, whichever of them shows.

#include "bar/hv_tabrow.h"

#include "layout/host_windows.h"
#include "layout/relayout.h"
#include "ports/host_automation.h"
#include "ports/host_documents.h"
#include "ports/host_services.h"
#include "ports/message_box.h"
#include "ports/port.h"
#include "ports/tab_control.h"
#include "ports/window_system.h"
#include "views/document_name.h"

namespace {

constexpr unsigned kRedrawNow = ws::kRdwInvalidate | ws::kRdwErase | ws::kRdwUpdateNow;

}  // namespace

HostDocument* HvTabrow::ActiveDocument() {
    if (m_bCreated == 0)
        return nullptr;
    return m_tabCtrl.GetDocument(Use<TabControls>().GetCurSel(m_tabCtrl.m_hWnd));
}

int HvTabrow::GetOpenDocumentCount() {
    return Use<HostAutomation>().DocumentCount(m_pHostApp);
}

std::wstring HvTabrow::GetDocumentName(HostDocument* doc, bool bFullPath) {
    return ::GetDocumentName(doc, bFullPath);
}

void HvTabrow::ShowViews(bool anyOpen) {
    WindowSystem& windows = Use<WindowSystem>();
    const bool tabs = m_bTabMode != 0;
    windows.Show(m_tabCtrl.m_hWnd, anyOpen && tabs);
    windows.Show(m_palette.m_hWnd, anyOpen && !tabs);
}

void HvTabrow::SetTabMode(bool bTabs, bool bRefresh) {
    m_bTabMode = bTabs ? 1 : 0;
    if (m_bCreated == 0)
        return;
    try {
        ShowViews(GetOpenDocumentCount() >= 1);
    } catch (...) {
        // A failed count leaves the views as they were.
    }
    if (bRefresh && m_bFloating == 0)
        RelayoutDocked();
    RefreshTips();  // the tools follow the view that shows
}

void HvTabrow::BuildDocumentList() {
    for (HostDocument* doc : Use<HostDocuments>().Documents())
        OnDocumentCreated(doc);
    Use<WindowSystem>().RecalcLayout(g_hwndFrame);
}

void HvTabrow::OnDocumentCreated(HostDocument* doc) {
    if (m_bCreated == 0)
        return;
    try {
        ForEachView([doc](DwgListView& view) { view.AddDocument(doc); });
        const int count = GetOpenDocumentCount();
        if (count == 1) {
            ShowViews(true);
        } else if (m_bHideOnSingle != 0 && count == 2 && m_bFloating == 0) {
            // The bar hid for a single drawing; the second one brings it back.
            RefreshHostLayout(g_hwndFrame);
            Use<WindowSystem>().Redraw(g_hwndFrame, kRedrawNow);
        }
        const int rows = Use<TabControls>().RowCount(m_tabCtrl.m_hWnd);
        if (m_bTabMode != 0) {
            if (rows != m_nTabRows)
                RelayoutMdiClient();  // the bar's thickness follows the rows
            RefreshTips();
        }
        m_nTabRows = rows;
    } catch (...) {
        // The list may lag behind the host; nothing is reported.
    }
}

void HvTabrow::OnDocumentToBeDestroyed(HostDocument* doc) {
    if (m_bCreated == 0)
        return;
    try {
        ForEachView([doc](DwgListView& view) { view.RemoveDocument(doc); });
        // The host still counts the drawing that is going.
        if (GetOpenDocumentCount() == 1) {
            g_hwndDwgView = nullptr;
            ShowViews(false);  // the bar paints its empty text
        } else {
            m_nTabRows = Use<TabControls>().RowCount(m_tabCtrl.m_hWnd);
            RelayoutMdiClient();
            RefreshTips();
        }
    } catch (...) {
        // As for a created document: nothing is reported.
    }
}

void HvTabrow::OnDocumentActivated(HostDocument* doc) {
    if (m_bCreated == 0)
        return;
    m_palette.SetActive(doc);
    g_hwndDwgView = Use<HostServices>().ActiveDwgView();
    // While the bar switches, the tab control already shows the drawing being activated.
    if (m_bSwitching == 0)
        m_tabCtrl.SetActive(doc);
}

void HvTabrow::SetDocumentPath(HostDocument* doc, const std::wstring& path) {
    if (m_bCreated != 0)
        ForEachView([&](DwgListView& view) { view.SetDocumentPath(doc, path); });
}

void HvTabrow::SetDocumentModified(HostDocument* doc, bool bModified) {
    if (m_bCreated != 0)
        ForEachView([&](DwgListView& view) { view.SetDocumentModified(doc, bModified); });
}

bool HvTabrow::OnTabSelChanging() {
    HostDocuments& docs = Use<HostDocuments>();
    HostDocument* active = docs.MdiActiveDocument();
    if (active == nullptr || m_bSwitchOnBusy != 0 || docs.IsQuiescent(active))
        return false;
    Use<MessageBoxes>().Show(kBusySwitchText, L"", mb::kOk);
    return true;
}

void HvTabrow::OnTabSelChange() {
    // Cleared however the switch ends: the host may fire documentActivated inside it.
    struct Switching {
        std::uint8_t& flag;
        explicit Switching(std::uint8_t& f) : flag(f) { flag = 1; }
        ~Switching() { flag = 0; }
    } switching(m_bSwitching);
    HostDocument* doc = m_tabCtrl.GetDocument(Use<TabControls>().GetCurSel(m_tabCtrl.m_hWnd));
    if (doc != nullptr)
        Use<HostDocuments>().SetCurDocument(doc);
    Use<WindowSystem>().Redraw(m_tabCtrl.m_hWnd, kRedrawNow);
}
