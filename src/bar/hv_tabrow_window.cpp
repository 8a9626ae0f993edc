// The bar's window: its children, its docking forms and their layout.

#include "bar/hv_tabrow.h"

#include "layout/host_windows.h"
#include "layout/relayout.h"
#include "ports/port.h"
#include "ports/system_look.h"
#include "ports/tab_control.h"
#include "ports/tool_tips.h"
#include "ports/window_system.h"
#include "settings/reg_impl.h"
#include "settings/settings_keys.h"

namespace {

constexpr unsigned kTabControlStyle =
    ws::kChild | tcs::kOwnerDrawFixed | tcs::kRaggedRight | tcs::kMultiLine | tcs::kHotTrack;
static_assert(kTabControlStyle == 0x40002A40);

constexpr unsigned kRedrawNow = ws::kRdwInvalidate | ws::kRdwErase | ws::kRdwUpdateNow;

// A font setting, or the stock GUI font when it holds no valid value.
win::LOGFONTW FontSetting(const HvRegImpl& store, const wchar_t* key) {
    win::LOGFONTW font;
    if (store.GetFont(keys::kRoot, key, font))
        return font;
    return IsInstalled<SystemLook>() ? Use<SystemLook>().DefaultGuiFont() : win::LOGFONTW{};
}

// The tab control's style bits for the tabs' side.
void TabSideStyle(int side, unsigned& remove, unsigned& add) {
    remove = 0;
    add = 0;
    switch (side) {
        case dock::kLeft:
            add = tcs::kVertical;
            remove = tcs::kBottom;
            break;
        case dock::kRight:
            add = tcs::kVertical | tcs::kRight;
            break;
        case dock::kBottom:
            add = tcs::kBottom;
            remove = tcs::kVertical;
            break;
        default:
            remove = tcs::kVertical | tcs::kBottom;
            break;
    }
}

}  // namespace

MsgResult HvTabrow::OnCreate() {
    WindowSystem& windows = Use<WindowSystem>();
    if (IsInstalled<ToolTips>()) {
        m_tip = Use<ToolTips>().Create(m_hWnd);
        m_tipPalette = Use<ToolTips>().Create(m_hWnd);
    }
    RefreshTips();  // with m_bCreated still clear, only the delays and the width
    // Failures are not reported: the bar stays without children and m_bCreated clear.
    if (!CreateViews())
        return MsgResult::Handled(0);
    m_lfLabelFont = FontSetting(m_store, keys::kLabelFont);
    windows.SetFont(m_palette.m_hWnd, m_lfLabelFont, false);
    SetTabFont(FontSetting(m_store, keys::kTabFont), false);
    m_floatDlg.Create(TrFloatDlg::kTemplateId, g_hwndFrame);
    m_palette.UpdateColors();
    m_bCreated = 1;
    SetTabMode(m_store.GetInt(keys::kRoot, keys::kTabMode, m_bTabMode) >= 1, false);
    if (m_bFloating != 0)
        SetFloating(true, false);
    SetDockSide(m_nDockSide, false);
    BuildDocumentList();
    return MsgResult::Handled(0);
}

// The palette and the tab control, both hidden until a drawing is open.
bool HvTabrow::CreateViews() {
    WindowSystem& windows = Use<WindowSystem>();
    ChildWindowSpec palette;
    palette.parent = m_hWnd;
    palette.className = L"HvDwgPalette";
    palette.title = L"Harvane Doc Palette";
    palette.rect = win::RECT{0, 0, 10, 10};
    palette.style = ws::kChild;
    palette.id = kPaletteId;
    palette.handler = &m_palette;
    m_palette.m_hWnd = windows.CreateChild(palette);
    ChildWindowSpec tabs;
    tabs.parent = m_hWnd;
    tabs.className = L"SysTabControl32";
    tabs.style = kTabControlStyle;
    tabs.id = kTabCtrlId;
    tabs.handler = &m_tabCtrl;  // paints the tabs, as the control's subclass
    m_tabCtrl.m_hWnd = windows.CreateChild(tabs);
    if (m_palette.m_hWnd == nullptr || m_tabCtrl.m_hWnd == nullptr)
        return false;
    m_tabCtrl.m_onTextsChanged = [this] { RefreshTips(); };
    m_tabCtrl.m_onDoubleClick = [this](unsigned keys) { DoubleClicked(keys); };
    m_palette.m_onDoubleClick = [this](unsigned keys) { DoubleClicked(keys); };
    return true;
}

void HvTabrow::SetTabFont(const win::LOGFONTW& font, bool bRedraw) {
    m_lfTabFont = font;
    if (m_tabCtrl.m_hWnd == nullptr)
        return;
    WindowSystem& windows = Use<WindowSystem>();
    windows.SetFont(m_tabCtrl.m_hWnd, m_lfTabFont, true);
    if (bRedraw)
        windows.Redraw(m_tabCtrl.m_hWnd, kRedrawNow);
}

void HvTabrow::RelayoutDocked() {
    if (dock::IsInCommandWindow(m_nDockSide))
        RelayoutCmdWnd();
    else
        RelayoutMdiClient();
}

void HvTabrow::SetFloating(bool bFloating, bool bRefresh) {
    m_bFloating = bFloating ? 1 : 0;
    if (m_bCreated == 0 || m_floatDlg.m_hWnd == nullptr)
        return;
    WindowSystem& windows = Use<WindowSystem>();
    if (!bFloating) {
        windows.Show(m_floatDlg.m_hWnd, false);
        SetDockSide(m_nDockSide, bRefresh);
        return;
    }
    windows.SetParent(m_hWnd, m_floatDlg.m_hWnd);
    windows.Show(m_floatDlg.m_hWnd, true);
    const win::RECT room = windows.RectInParent(m_floatDlg.m_hWnd);
    windows.Move(m_hWnd, win::RECT{0, 0, room.Width(), room.Height()}, true);
    windows.Redraw(m_hWnd, kRedrawNow);
    // The host's window gets back the room the docked bar took.
    if (bRefresh)
        RelayoutDocked();
    if (m_bTabMode == 0)
        m_palette.RecalcLayout();
}

void HvTabrow::SetDockSide(int side, bool bRefresh) {
    const bool changed = side != m_nDockSide;
    m_nDockSide = side;
    if (changed)
        m_palette.RecalcLayout();
    if (m_bCreated == 0)
        return;
    WindowSystem& windows = Use<WindowSystem>();
    if (m_bTabMode != 0) {
        unsigned remove = 0;
        unsigned add = 0;
        TabSideStyle(side, remove, add);
        windows.ModifyStyle(m_tabCtrl.m_hWnd, remove, add);
        SetTabFont(m_lfTabFont, false);
    }
    if (!bRefresh || m_bFloating != 0)
        return;
    // Only a change of parent lays the host out here; for the rest the caller refreshes the
    // frame as a whole.
    HostWindow* parent = dock::IsInCommandWindow(side) ? g_hwndCmdContainer : g_hwndFrame;
    if (windows.Parent(m_hWnd) != parent) {
        windows.SetParent(m_hWnd, parent);
        RelayoutDocked();
    }
    try {
        ShowViews(GetOpenDocumentCount() >= 1);
    } catch (...) {
        // A failed count leaves the views as they were.
    }
    if (m_bTabMode == 0)
        m_palette.RecalcLayout();
}

MsgResult HvTabrow::OnSize(unsigned, win::SIZE client) {
    if (m_bCreated == 0)
        return MsgResult::NotHandled();
    win::RECT rcPal{0, 0, client.cx, client.cy};
    win::RECT rcTab = rcPal;
    // Room for the edges that the host's windows draw beside the bar.
    if (m_bFloating == 0) {
        switch (m_nDockSide) {
            case dock::kTop:
                rcTab.top += 1;
                break;
            case dock::kLeft:
                rcTab.left += 2;
                break;
            case dock::kRight:
                rcTab.right -= 1;
                break;
            case dock::kCmdWndLeft:
            case dock::kCmdWndRight:
                rcPal.left += 1;
                rcPal.top += 1;
                rcPal.right -= 1;
                rcPal.bottom -= 3;
                break;
            default:
                break;
        }
    }
    WindowSystem& windows = Use<WindowSystem>();
    windows.Move(m_palette.m_hWnd, rcPal, false);
    windows.Move(m_tabCtrl.m_hWnd, rcTab, true);
    m_nTabRows = Use<TabControls>().RowCount(m_tabCtrl.m_hWnd);
    // The tabs' tools hang on rectangles that a new size moves.
    if (m_bTabMode != 0)
        RefreshTips();
    windows.Redraw(g_hwndFrame, kRedrawNow);
    return MsgResult::Handled();
}
