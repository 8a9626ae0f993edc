#pragma once
// The document bar. It is created by the application's start-up as a child of the host's frame
// (or inside its own floating window), shown and hidden by TRON and TROFF, and told which
// drawing is active. Its settings are fields of its own, as the rest of the system reads them.

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "foundation/win_types.h"
#include "bar/doc_manager_reactor.h"
#include "bar/drawing_contents.h"
#include "bar/editor_reactor.h"
#include "bar/list_dialog.h"
#include "bar/rect_tracker.h"
#include "bar/tr_float_dlg.h"
#include "foundation/file_entry.h"
#include "ports/popup_menu.h"
#include "ports/window_handler.h"
#include "settings/tabrow_settings.h"
#include "views/dwg_palette.h"
#include "views/dwg_tab_ctrl.h"
#include "worksets/work_set_store.h"

class HvRegImpl;
struct HostApplication;
struct HostCursor;
struct HostDocument;
struct HostMessage;
struct HostToolTip;
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
    // Moves the bar into its floating window, or back to its dock side.
    void SetFloating(bool bFloating, bool bRefresh);
    // Restyles the tab control for the side; with `bRefresh` a docked bar moves to the side's
    // parent (the frame or the command window's container), and the host lays out anew.
    void SetDockSide(int side, bool bRefresh);
    void SetTabFont(const win::LOGFONTW& font, bool bRedraw);
    // The tip controls take the tip settings; the tools follow the tabs in tab mode, the
    // palette's cells in preview mode.
    void RefreshTips();
    // The palette's cells get one tool each, on their rectangles, id index plus 1.
    void RefreshCellTips();
    // After the cell's paint: its tool where it was painted, with a fresh text.
    void UpdateCellTip(const TrDocItem& item);
    // The name or path of the drawing and, as set, its summary properties.
    std::wstring GetTipText(HostDocument* doc);
    // Every message of the bar and its children passes here before the window gets it: the
    // mouse goes on to both tip controls.
    void PreTranslateMessage(const HostMessage& message);

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
    // The bar's window. Makes the palette and the tab control, hidden, and lays them out.
    MsgResult OnCreate() override;
    MsgResult OnSize(unsigned type, win::SIZE client) override;
    // The edge drag: the cursor on the bar's inner edge, a press there captures the mouse, the
    // moves measure the new thickness, the release stores it and lays the host out.
    MsgResult OnSetCursor(HostWindow* window, unsigned hitTest, unsigned mouseMessage) override;
    MsgResult OnMouseMove(win::POINT point, unsigned keys) override;
    MsgResult OnLButtonUp(win::POINT point, unsigned keys) override;
    MsgResult OnLButtonDblClk(win::POINT point, unsigned keys) override;
    // The bar's double click, also the one its two views hand on: with Control the last work
    // set, without it the newest recent drawing.
    void DoubleClicked(unsigned keys);
    // A close message is ignored, so the bar can't be closed by a message.
    MsgResult OnClose() override;
    // The floating window goes with the bar.
    MsgResult OnDestroy() override;
    MsgResult OnKeepFocus() override;
    // The bar's own surface, which shows while neither view does: with no drawing open, the
    // product's line on a tinted strip. The paint covers the whole client area, so the
    // background is never erased.
    MsgResult OnPaint() override;
    MsgResult OnEraseBkgnd() override;
    // The tab control's selection notifications go to OnTabSelChanging and OnTabSelChange.
    MsgResult OnNotify(const win::NMHDR& header) override;
    // The context menu (context_menu.cpp), built afresh at each right click.
    MsgResult OnContextMenu(HostWindow* window, win::POINT screen) override;
    // While a work set's "All" row is highlighted, a tip beside its popup lists its files.
    MsgResult OnMenuSelect(unsigned item, unsigned flags) override;
    // The menu's commands: the fixed ids by the table, a list's row decoded by its id.
    MsgResult OnCommand(unsigned id, unsigned code, HostWindow* control) override;
    // The drawing under a point of the bar's client area: the tab's or the cell's, by the mode.
    HostDocument* HitTestDocument(win::POINT ptClient);

    // Opening drawings: any file through its program, a drawing through the host unless it is
    // open already. The recent drawings live in the settings store, newest first; the list here
    // is a copy that each load renews.
    void OpenFile(const TrFileEntry& entry, bool bWarn, bool bPopDbmod);
    void LoadRecentFiles();
    void SaveRecentFiles();
    void AddRecentFile(const std::wstring& path);
    // The double click on the bar: the newest recent drawing.
    void OpenLastDrawing();
    // The "*.dwt" files of the host's template folder, one id each from the counter.
    void LoadTemplates(unsigned* pNextId);
    // The menu's "Change Template Path..." (the host profile's folder) and "Empty Drawing".
    void OnChangeTemplatePath();
    void OnEmptyDrawing();

    // Previews (hv_tabrow_previews.cpp). Asks the views to renew the drawing's preview.
    void RefreshDocument(HostDocument* doc, bool bForce);
    // The menu's "Refresh Preview" for the drawing under the mouse (m_pMenuDoc), and "Refresh
    // Previews" for every drawing; each activates drawings and puts the active one back.
    void OnRefreshPreview();
    void OnRefreshPreviews();

    // Work sets. The file's path is looked up at each use; the menu's rows, the whole-set open
    // (which records the set as the last one) and the open of files chosen from a set.
    std::wstring GetWorkSetFile();
    void BuildWorkSetRows(unsigned* pNextId, TrWorkSetRows& map, bool bNoneFound);
    void OpenWorkSet(const std::wstring& name);
    void SelectWorkSetFiles(const std::wstring& name);
    // The selection dialog behind SelectWorkSetFiles.
    TrChooseWorkSetFiles m_chooseWorkSetFiles;

    // Sheet sets, on hosts above 16.0. The menu's two lists, one id each from the counter: the
    // host's recent sheet sets and the ".dst" files of the search folder, each with a
    // "None Found" row when empty and `bNoneFound` asks for it.
    void BuildSheetSetRows(unsigned* pNextId, bool bNoneFound);
    // A sheet set row chosen: the user picks its drawings, or the host's manager takes it over
    // when OpenSheetSetInSSM is on.
    void OpenSheetSet(const std::wstring& path);
    // The menu's "Set Sheet Set Search Path..." and "Open Sheet Sets In Manager".
    void SetSheetSetSearchPath();
    void ToggleOpenSheetSetInSSM();
    bool HostHasSheetSets() const { return m_dHostVersion > 16.0; }

    // The thickness that the hook cuts out of the MDI client or the command window.
    int CalcTabBarSize(const win::RECT* prc);
    int GetPreviewBarSize();
    int GetCmdWndBarWidth();
    // Application.Documents.Count; throws ComError.
    int GetOpenDocumentCount();

    HostWindow* GetSafeHwnd() const { return m_hWnd; }
    HostWindow* FloatingWindow() const { return m_floatDlg.m_hWnd; }
    // The drawing whose tab is selected, or null.
    HostDocument* ActiveDocument();

    HvRegImpl& m_store;  // the settings' store; outlives the bar. Before the reactors, which read it
    HvDwgTabCtrl m_tabCtrl{*this};
    HvDwgPalette m_palette{*this};
    std::deque<std::wstring> m_RecentFiles;
    TrPathRows m_TemplateItems;
    TrPathRows m_recentSheetSets;
    TrPathRows m_foundSheetSets;
    double m_dHostVersion = 0;  // the host's release number, from its release text
    HvTrEditorReactor m_editorReactor{this};
    HvTrDocManagerReactor m_docManagerReactor{this};
    // Both owned by the bar's window, which takes them with it. m_tip holds the tools of the
    // tabs and of the cells; m_tipPalette only shares its settings.
    HostToolTip* m_tip = nullptr;
    HostToolTip* m_tipPalette = nullptr;
    TrFloatDlg m_floatDlg{*this};
    // Only notes which drawings asked for a tip: nothing stores a text in it.
    std::map<HostDocument*, std::wstring> m_TipTexts;
    std::int32_t m_bCreated = 0;    // the children exist
    std::int32_t m_nTabRows = 1;    // the tab control's rows as last seen
    std::uint8_t m_bResizing = 0;   // a drag of the bar's edge is under way
    std::uint8_t m_bSwitching = 0;  // the bar itself asks the host to switch drawings
    HostDocument* m_pMenuDoc = nullptr;  // the drawing the context menu was opened on
    // The context menu's lists, each id to its row; they outlive the menu until the next
    // opening, for the command of the row chosen.
    TrWorkSetRows m_WorkSetItems;
    TrTextRows m_LayoutItems;
    TrPathRows m_XrefItems;
    TrPathRows m_ImageItems;
    TrPathRows m_OleLinkItems;
    TrPathRows m_HyperlinkItems;
    TrTextRows m_LayerStateItems;
    TrViewRows m_ViewItems;
    // Shows the list dialog (the layout of a paper space view without one); until a window
    // layer sets it, the question is answered with Cancel.
    ListDialogRunner m_runListDialog;
    // The About box and the preferences dialog live with the application; it sets these.
    std::function<void()> m_showAbout;
    std::function<void()> m_showOptions;

    // Shared standard cursors: never freed.
    HostCursor* m_hArrowCursor = nullptr;
    HostCursor* m_hSizeNSCursor = nullptr;
    HostCursor* m_hSizeWECursor = nullptr;
    TrRectTracker m_tracker;

    // The ids of the bar's window and its two children.
    static constexpr int kBarId = 11265;
    static constexpr int kPaletteId = 1001;
    static constexpr int kTabCtrlId = 1003;

private:
    MsgResult OnFixedCommand(unsigned id);
    // The context menu's parts, each taking its ids from the counter.
    MenuRows BuildRecentRows(unsigned* pNextId);
    MenuRows BuildWorkSetMenu(unsigned* pNextId);
    // Null on a host without sheet sets, whose lists are filled all the same.
    std::optional<MenuRows> BuildSheetSetMenu(unsigned* pNextId);
    void AppendDrawingRows(MenuRows& menu, unsigned* pNextId);
    MsgResult OnMenuCommand(unsigned id);
    // A list's row chosen; an answer ends the command there, none lets it go on.
    std::optional<MsgResult> RunMenuRow(unsigned id);
    void SwitchLayout(const std::wstring& name);
    void RestoreLayerState(const std::wstring& name);
    // False when the user left a paper space view's layout unchosen.
    bool RestoreView(const ViewItem& item);
    void OpenMenuDocumentFolder();
    // The files of a work set, one a line, for the tip of its "All" row.
    std::wstring WorkSetTipText(const std::wstring& name);
    // The palette first, then the tabs, as every list change goes.
    template <class Change>
    void ForEachView(Change change) {
        change(static_cast<DwgListView&>(m_palette));
        change(static_cast<DwgListView&>(m_tabCtrl));
    }
    bool CreateViews();
    void ShowViews(bool anyOpen);
    // Deletes the tools of `window`, ids 1 to the control's tool count.
    void RemoveTools(HostWindow* window);
    // RelayoutMdiClient or RelayoutCmdWnd, by the dock side.
    void RelayoutDocked();
    // The cursor of the edge that can be dragged on the dock side, when `point` (client
    // coordinates) is on it; null when not.
    HostCursor* EdgeCursorAt(win::POINT point);

    std::wstring m_strAppDataFolder;
    HostApplication* m_pHostApp = nullptr;  // not owned
    HostWindow* m_hWnd = nullptr;           // owned: destroyed with the bar
};
