#pragma once
// The tab view's list: one tab per open drawing, its text the drawing's title with the marks
// "* " (modified) and "[R]- " (read-only) in front, its parameter the host's document. The
// control keeps the texts; this class only orders and edits them.

#include <functional>
#include <string>

#include "foundation/win_types.h"
#include "views/dwg_list_view.h"
#include "views/xp_tab_ctrl.h"

struct HostDocument;
struct HostWindow;
struct TabrowSettings;

class HvDwgTabCtrl : public DwgListView, public CXPTabCtrl {
public:
    // `settings` (the bar's) gives the sort order; it outlives the control.
    explicit HvDwgTabCtrl(const TabrowSettings& settings) : m_settings(settings) {}
    HvDwgTabCtrl(const HvDwgTabCtrl&) = delete;
    HvDwgTabCtrl& operator=(const HvDwgTabCtrl&) = delete;

    // Inserts the drawing's tab by the sort order; a new tab shows no modified mark.
    void AddDocument(HostDocument* doc) override;
    void RemoveDocument(HostDocument* doc) override;
    // Selects the drawing's tab without a change notification.
    void SetActive(HostDocument* doc) override;
    // Retitles (which drops the modified mark) and re-sorts.
    void SetDocumentPath(HostDocument* doc, const std::wstring& path) override;
    void SetDocumentModified(HostDocument* doc, bool bModified) override;
    // Every tab anew in the host's order of documents, sorted as set; the active one selected.
    void Rebuild() override;

    HostDocument* GetDocument(int index);
    int FindDocument(HostDocument* doc);  // -1 when the drawing has no tab
    HostDocument* DocumentAt(win::POINT point);
    int GetItemCount();
    std::wstring GetItemText(int index);  // as the control's 256-character buffer holds it
    // The tab font of the settings.
    win::LOGFONTW Font() override;
    MsgResult OnLButtonDblClk(win::POINT, unsigned keys) override {
        ForwardDoubleClick(keys);
        return {};
    }

    // m_hWnd, the "SysTabControl32" window, is destroyed with the bar.
    // Tool tips hang on tab rectangles: every text change calls this (the bar's RefreshTips).
    std::function<void()> m_onTextsChanged;

private:
    void TextsChanged();

    const TabrowSettings& m_settings;
};
