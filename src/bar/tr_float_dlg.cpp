#include "bar/tr_float_dlg.h"

#include "bar/hv_tabrow.h"
#include "layout/host_windows.h"
#include "ports/port.h"
#include "ports/window_system.h"
#include "settings/reg_impl.h"
#include "settings/settings_keys.h"

namespace {

constexpr unsigned kFloatStyle = ws::kPopup | ws::kCaption | ws::kThickFrame;
constexpr unsigned kRedrawNow = ws::kRdwInvalidate | ws::kRdwErase | ws::kRdwUpdateNow;

}  // namespace

bool TrFloatDlg::Create(unsigned /*templateId*/, HostWindow* parent) {
    ChildWindowSpec spec;
    spec.parent = parent;
    spec.className = ws::kDialogClass;
    spec.title = L"Tabrow";
    spec.style = kFloatStyle;
    spec.handler = this;
    spec.attach = &m_hWnd;
    return Use<WindowSystem>().CreateChild(spec) != nullptr;
}

MsgResult TrFloatDlg::OnCreate() {
    if (m_bar.m_store.LoadWindowPlacement(keys::kRoot, keys::kFloatPosition, m_hWnd))
        return MsgResult::Handled(0);
    WindowSystem& windows = Use<WindowSystem>();
    // The drawing area's corner, from the frame's client coordinates to the screen's.
    const win::RECT frame = windows.IsWindow(g_hwndFrame) ? windows.ScreenRect(g_hwndFrame)
                                                          : win::RECT{};
    const int left = frame.left + g_rcMdiClient.left;
    const int top = frame.top + g_rcMdiClient.top;
    windows.Move(m_hWnd, {left, top, left + kFirstWidth, top + kFirstHeight}, true);
    return MsgResult::Handled(0);
}

MsgResult TrFloatDlg::OnSize(unsigned, win::SIZE client) {
    HostWindow* bar = m_bar.GetSafeHwnd();
    WindowSystem& windows = Use<WindowSystem>();
    // Also while the window is being made, before the bar has moved in.
    if (m_bar.m_bFloating == 0 || bar == nullptr || windows.Parent(bar) != m_hWnd)
        return MsgResult::NotHandled();
    windows.Move(bar, {0, 0, client.cx, client.cy}, true);
    windows.Redraw(m_hWnd, kRedrawNow);
    return MsgResult::Handled();
}

MsgResult TrFloatDlg::OnDestroy() {
    m_bar.m_store.SaveWindowPlacement(keys::kRoot, keys::kFloatPosition, m_hWnd);
    return MsgResult::NotHandled();
}

MsgResult TrFloatDlg::OnNcDestroy() {
    m_hWnd = nullptr;
    return MsgResult::NotHandled();
}

MsgResult TrFloatDlg::OnCommand(unsigned id, unsigned, HostWindow*) {
    if (id == kIdOk || id == kIdCancel)
        return MsgResult::Handled();
    return MsgResult::NotHandled();
}
