#pragma once
// The document bar. It is created by the application's start-up as a child of the host's frame
// (or inside its own floating window), shown and hidden by TRON and TROFF, and told which
// drawing is active. Its settings are fields of its own, as the rest of the system reads them.

#include <cstdint>
#include <string>
#include <vector>

#include "foundation/win_types.h"
#include "bar/doc_manager_reactor.h"
#include "bar/editor_reactor.h"
#include "ports/window_handler.h"
#include "settings/tabrow_settings.h"
#include "views/dwg_palette.h"
#include "views/dwg_tab_ctrl.h"

class HvRegImpl;
struct HostApplication;
struct HostDocument;
struct HostWindow;

// What the bar is given when it is made: the settings store it loads from and writes to, the
// per-user data folder, and the host's automation application (not owned; null when the host
// gave none).
struct BarContext {
    HvRegImpl& settings;
    std::wstring appDataFolder;
    HostApplication* hostApp = nullptr;
};

// The bar's window's messages come to the bar itself.
class HvTabrow : public TabrowSettings, public WindowHandler {
public:
    explicit HvTabrow(const BarContext& context);  // loads the settings, attaches the reactors
    virtual ~HvTabrow();
    HvTabrow(const HvTabrow&) = delete;
    HvTabrow& operator=(const HvTabrow&) = delete;

    virtual bool Create();
    void LoadSettings();
    void ShowBar();
    void HideBar();
    bool IsBarVisible() const;
    void CenterFloating();
    // Shows the view of the mode (when a drawing is open) and hides the other.
    void SetTabMode(bool bTabs, bool bRefresh);
    void RefreshTips();

    // The two lists, fed by the host's document events whichever view shows. Each does
    // nothing before the bar's children exist.
    void BuildDocumentList();
    void OnDocumentCreated(HostDocument* doc);
    void OnDocumentToBeDestroyed(HostDocument* doc);
    void OnDocumentActivated(HostDocument* doc);
    void SetDocumentPath(HostDocument* doc, const std::wstring& path);
    void SetDocumentModified(HostDocument* doc, bool bModified);
    std::wstring GetDocumentName(HostDocument* doc, bool bFullPath);
    // The tab control's notifications, as its parent's window procedure receives them.
    // TCN_SELCHANGING: true vetoes the change (a command runs and switching must wait).
    bool OnTabSelChanging();
    // TCN_SELCHANGE: switches to the drawing of the selected tab.
    void OnTabSelChange();
    // The bar's window. A close message is ignored, so the bar can't be closed by a message.
    MsgResult OnClose() override;
    MsgResult OnKeepFocus() override;
    // The bar's own surface, which shows while neither view does: with no drawing open, the
    // product's line on a tinted strip. The paint covers the whole client area, so the
    // background is never erased.
    MsgResult OnPaint() override;
    MsgResult OnEraseBkgnd() override;
    // The tab control's selection notifications go to OnTabSelChanging and OnTabSelChange.
    MsgResult OnNotify(const win::NMHDR& header) override;

    // The recent drawings; for now the names are only recorded, newest last.
    void AddRecentFile(const std::wstring& path);

    // The thickness that the hook cuts out of the MDI client or the command window.
    int CalcTabBarSize(const win::RECT* prc);
    int GetPreviewBarSize();
    int GetCmdWndBarWidth();
    // Application.Documents.Count; throws ComError.
    int GetOpenDocumentCount();

    HostWindow* GetSafeHwnd() const { return m_hWnd; }
    HostWindow* FloatingWindow() const { return m_hFloatWnd; }
    // The drawing whose tab is selected, or null.
    HostDocument* ActiveDocument();

    HvRegImpl& m_store;  // the settings' store; outlives the bar. Before the reactors, which read it
    HvDwgTabCtrl m_tabCtrl{*this};
    HvDwgPalette m_palette{*this};
    std::vector<std::wstring> m_RecentFiles;
    HvTrEditorReactor m_editorReactor{this};
    HvTrDocManagerReactor m_docManagerReactor{this};
    std::int32_t m_bCreated = 0;    // the children exist
    std::int32_t m_nTabRows = 1;    // the tab control's rows as last seen
    std::uint8_t m_bSwitching = 0;  // the bar itself asks the host to switch drawings

private:
    // The palette first, then the tabs, as every list change goes.
    template <class Change>
    void ForEachView(Change change) {
        change(static_cast<DwgListView&>(m_palette));
        change(static_cast<DwgListView&>(m_tabCtrl));
    }
    bool CreateViews();
    void ShowViews(bool anyOpen);

    std::wstring m_strAppDataFolder;
    HostApplication* m_pHostApp = nullptr;  // not owned
    HostWindow* m_hWnd = nullptr;           // owned: destroyed with the bar
    HostWindow* m_hFloatWnd = nullptr;  // owned, null while docked
};
