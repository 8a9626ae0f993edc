#include "bar/hv_tabrow.h"

#include <cwchar>

#include "bar/batch_commands.h"
#include "bar/menu_ids.h"
#include "bar/plot_all.h"
#include "bar/save_view.h"
#include "layout/host_windows.h"
#include "layout/relayout.h"
#include "ports/host_services.h"
#include "ports/message_box.h"
#include "ports/port.h"
#include "ports/system_look.h"
#include "ports/window_messages.h"
#include "ports/window_system.h"
#include "settings/reg_impl.h"
#include "settings/settings_keys.h"

HvTabrow::HvTabrow(const BarContext& context)
    : m_store(context.settings),
      m_strAppDataFolder(context.appDataFolder),
      m_pHostApp(context.hostApp) {
    WindowSystem& windows = Use<WindowSystem>();
    m_hArrowCursor = windows.StandardCursor(idc::kArrow);
    m_hSizeNSCursor = windows.StandardCursor(idc::kSizeNS);
    m_hSizeWECursor = windows.StandardCursor(idc::kSizeWE);
    m_tracker.m_nStyle = TrRectTracker::hatchedBorder;
    LoadSettings();
    // The image adjustments act from the next grab on, whenever they were changed.
    m_palette.m_readAdjustments = [this](bool bDarkBack) {
        return ReadImageAdjustments(m_store, bDarkBack);
    };
    m_palette.m_onCellToolsReset = [this] { RefreshCellTips(); };
    m_palette.m_onCellPainted = [this](const TrDocItem& item) { UpdateCellTip(item); };
    // The host's manager opens sheet sets by itself exactly when the setting asks for it.
    if (IsInstalled<HostServices>()) {
        HostServices& host = Use<HostServices>();
        host.SetVariable(L"SSMAUTOOPEN", std::to_wstring(m_bOpenSheetSetInSSM));
        // The release text leads with the version number ("17.0s (...)" is 17.0).
        m_dHostVersion = std::wcstod(host.ReleaseName().c_str(), nullptr);
    }
}

HvTabrow::~HvTabrow() {
    WindowSystem& windows = Use<WindowSystem>();
    // The bar's window takes its tip controls and, in its WM_DESTROY, the floating window.
    if (m_hWnd != nullptr)
        windows.Destroy(m_hWnd);
    // Left when the host's frame took the bar's window before.
    if (m_floatDlg.m_hWnd != nullptr)
        windows.Destroy(m_floatDlg.m_hWnd);
}

void HvTabrow::LoadSettings() {
    SystemValues system;
    // Before the hook has seen the command window, its present width gives the default.
    if (g_hwndCmdWnd != nullptr)
        system.commandWindowWidth = Use<WindowSystem>().RectInParent(g_hwndCmdWnd).Width();
    system.appDataFolder = m_strAppDataFolder;
    if (IsInstalled<SystemLook>()) {
        SystemLook& look = Use<SystemLook>();
        system.btnFace = look.SysColor(syscolor::kBtnFace);
        system.btnText = look.SysColor(syscolor::kBtnText);
        system.guiFont = look.DefaultGuiFont();
    }
    // The sheet set folder falls back to the one the host's own wizard used last.
    if (IsInstalled<HostServices>())
        system.hostProfileKey = Use<HostServices>().ProfileKey();
    Load(m_store, system);
}

bool HvTabrow::Create() {
    // The hook moves the bar while it lays out the window it cuts from, which is safe only for
    // a sibling of that window: the command window's container holds the bar docked there, the
    // frame holds it beside the MDI client and while it floats (OnCreate moves it then).
    HostWindow* parent = m_bFloating == 0 && dock::IsInCommandWindow(m_nDockSide)
                             ? g_hwndCmdContainer
                             : g_hwndFrame;
    ChildWindowSpec spec;
    spec.parent = parent;
    spec.className = L"HvTabrow";
    spec.title = L"Harvane Tabrow Wnd";
    spec.style = ws::kChild | ws::kVisible;
    spec.id = kBarId;
    spec.handler = this;
    spec.attach = &m_hWnd;
    return Use<WindowSystem>().CreateChild(spec) != nullptr;
}

void HvTabrow::ShowBar() {
    WindowSystem& windows = Use<WindowSystem>();
    if (m_bFloating != 0) {
        if (m_floatDlg.m_hWnd != nullptr)
            windows.Show(m_floatDlg.m_hWnd, true);
    } else if (m_hWnd != nullptr) {
        windows.Show(m_hWnd, true);
        RefreshHostLayout(g_hwndFrame);  // only a docked bar takes room from the host
    }
}

void HvTabrow::HideBar() {
    WindowSystem& windows = Use<WindowSystem>();
    if (m_bFloating != 0) {
        if (m_floatDlg.m_hWnd != nullptr)
            windows.Show(m_floatDlg.m_hWnd, false);
    } else if (m_hWnd != nullptr) {
        windows.Show(m_hWnd, false);
        RefreshHostLayout(g_hwndFrame);
    }
}

bool HvTabrow::IsBarVisible() const {
    return m_hWnd != nullptr && Use<WindowSystem>().IsVisible(m_hWnd);
}

void HvTabrow::CenterFloating() {
    if (m_floatDlg.m_hWnd != nullptr)
        Use<WindowSystem>().CenterInScreen(m_floatDlg.m_hWnd);
}

MsgResult HvTabrow::OnClose() {
    return MsgResult::Handled();
}

MsgResult HvTabrow::OnDestroy() {
    if (m_floatDlg.m_hWnd != nullptr)
        Use<WindowSystem>().Destroy(m_floatDlg.m_hWnd);
    return MsgResult::NotHandled();
}

MsgResult HvTabrow::OnKeepFocus() {
    return MsgResult::Handled(1);
}

MsgResult HvTabrow::OnNotify(const win::NMHDR& header) {
    if (header.hwndFrom != m_tabCtrl.m_hWnd || m_tabCtrl.m_hWnd == nullptr)
        return MsgResult::NotHandled();
    switch (header.code) {
        case tcn::kSelChanging: return MsgResult::Handled(OnTabSelChanging() ? 1 : 0);
        case tcn::kSelChange: OnTabSelChange(); return MsgResult::Handled();
        default: return MsgResult::NotHandled();
    }
}

MsgResult HvTabrow::OnCommand(unsigned id, unsigned /*code*/, HostWindow* /*control*/) {
    return id < cmd::kFirstDynamic ? OnFixedCommand(id) : OnMenuCommand(id);
}

MsgResult HvTabrow::OnFixedCommand(unsigned id) {
    TrBatchCommands batch(*this, m_pHostApp);
    TrPlotAll plot(batch);
    switch (id) {
        case cmd::kSaveAll: batch.OnSaveAll(); break;
        case cmd::kCloseAll: batch.OnCloseAll(); break;
        case cmd::kSaveAndCloseAll: batch.OnSaveAndCloseAll(); break;
        case cmd::kCloseAllNoSave: batch.OnCloseAllNoSave(); break;
        case cmd::kClose: batch.OnClose(); break;
        case cmd::kPlotDrawing: plot.OnPlotDrawing(); break;
        case cmd::kQuickPlotAll: plot.OnQuickPlotAll(); break;
        case cmd::kPlotDialog: plot.OnPlotDialog(); break;
        case cmd::kPlotAll: plot.OnPlotAll(); break;
        case cmd::kExitSaveAll: batch.OnExitSaveAll(); break;
        case cmd::kExitNoSave: batch.OnExitNoSave(); break;
        case cmd::kChangeTemplatePath: OnChangeTemplatePath(); break;
        case cmd::kEmptyDrawing: OnEmptyDrawing(); break;
        case cmd::kSheetSetSearchPath: SetSheetSetSearchPath(); break;
        case cmd::kOpenSheetSetsInManager: ToggleOpenSheetSetInSSM(); break;
        case cmd::kLockPreview:
            if (m_bTabMode == 0 && m_pMenuDoc != nullptr)
                m_palette.ToggleLock(m_pMenuDoc);
            break;
        case cmd::kOpenFolder: OpenMenuDocumentFolder(); break;
        case cmd::kSaveView: OnSaveView(m_pMenuDoc); break;
        case cmd::kRefreshPreview: OnRefreshPreview(); break;
        case cmd::kRefreshPreviews: OnRefreshPreviews(); break;
        case cmd::kAbout:
            if (m_showAbout)
                m_showAbout();
            break;
        case cmd::kOptions:
            if (m_showOptions)
                m_showOptions();
            break;
        default: return MsgResult::NotHandled();
    }
    return MsgResult::Handled();
}

MsgResult HvTabrow::OnLButtonDblClk(win::POINT, unsigned keys) {
    DoubleClicked(keys);
    return MsgResult::NotHandled();  // the default handling follows
}

void HvTabrow::DoubleClicked(unsigned keys) {
    if ((keys & mk::kControl) == 0) {
        OpenLastDrawing();
        return;
    }
    // Read at the moment: every whole-set open writes it while the bar runs.
    const std::wstring last = m_store.GetString(keys::kRoot, keys::kLastWorkset, L"");
    if (last.empty())
        Use<MessageBoxes>().Show(L"No workset has been opened yet!", L"", mb::kOk);
    else
        OpenWorkSet(last);
}
