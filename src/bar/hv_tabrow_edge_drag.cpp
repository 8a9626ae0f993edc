// The bar's inner edge, dragged with the mouse: previews on any side, and tabs in the command
// window, take the thickness the user gives them. The bar doesn't change until the button is
// released; then the setting is written and the host lays itself out anew.

#include "bar/hv_tabrow.h"

#include "layout/host_windows.h"
#include "layout/relayout.h"
#include "ports/port.h"
#include "ports/window_messages.h"
#include "ports/window_system.h"
#include "settings/reg_impl.h"
#include "settings/settings_keys.h"

HostCursor* HvTabrow::EdgeCursorAt(win::POINT point) {
    WindowSystem& windows = Use<WindowSystem>();
    const int tol = windows.SystemMetric(ws::kSmCxFrame);
    const win::RECT rc = windows.RectInParent(m_hWnd);
    const int width = rc.Width();
    const int height = rc.Height();
    auto near = [tol](int value, int edge) { return edge - tol <= value && value <= edge + tol; };
    switch (m_nDockSide) {
        case dock::kTop:
            return near(point.y, height) ? m_hSizeNSCursor : nullptr;
        case dock::kBottom:
            return near(point.y, 0) ? m_hSizeNSCursor : nullptr;
        case dock::kLeft:
        case dock::kCmdWndLeft:
            return near(point.x, width) ? m_hSizeWECursor : nullptr;
        case dock::kRight:
        case dock::kCmdWndRight:
            return near(point.x, 0) ? m_hSizeWECursor : nullptr;
        default:
            return nullptr;
    }
}

MsgResult HvTabrow::OnSetCursor(HostWindow*, unsigned, unsigned mouseMessage) {
    // Tabs beside the MDI client are as thick as their rows: only previews, and the command
    // window's room, follow the mouse.
    if (m_bFloating != 0 || (m_bTabMode != 0 && !dock::IsInCommandWindow(m_nDockSide)) ||
        m_bLockSize != 0)
        return MsgResult::NotHandled();
    WindowSystem& windows = Use<WindowSystem>();
    HostCursor* edge = EdgeCursorAt(windows.ScreenToClient(m_hWnd, windows.CursorPos()));
    if (edge != nullptr && mouseMessage == wm::kLButtonDown) {
        windows.SetCapture(m_hWnd);
        m_bResizing = 1;
        windows.SetCursor(edge);
        return MsgResult::Handled(1);
    }
    m_bResizing = 0;
    windows.SetCursor(edge != nullptr ? edge : m_hArrowCursor);
    return MsgResult::Handled(1);
}

MsgResult HvTabrow::OnMouseMove(win::POINT point, unsigned) {
    if (m_bResizing == 0)
        return MsgResult::NotHandled();
    WindowSystem& windows = Use<WindowSystem>();
    const win::RECT client = windows.RectInParent(m_hWnd);
    win::RECT rc{0, 0, client.Width(), client.Height()};
    switch (m_nDockSide) {
        case dock::kTop:
            rc.bottom = point.y;
            break;
        case dock::kBottom:
            rc.top += point.y;
            break;
        case dock::kLeft:
        case dock::kCmdWndLeft:
            rc.right = point.x;
            break;
        case dock::kRight:
        case dock::kCmdWndRight:
            rc.left += point.x;
            break;
        default:
            break;
    }
    if (dock::IsInCommandWindow(m_nDockSide))
        m_nWidthOnCmdWnd = rc.Width();
    else if (m_nDockSide == dock::kTop || m_nDockSide == dock::kBottom)
        m_nSize = rc.Height();
    else
        m_nSize = rc.Width();
    // The bar holds the capture, so the tracker returns at once: no band follows the mouse.
    m_tracker.m_rect = windows.ScreenRect(m_hWnd);
    m_tracker.Track(m_hWnd, point);
    return MsgResult::NotHandled();
}

MsgResult HvTabrow::OnLButtonUp(win::POINT, unsigned) {
    Use<WindowSystem>().ReleaseCapture();
    if (m_bResizing == 0)
        return MsgResult::NotHandled();
    m_bResizing = 0;
    if (dock::IsInCommandWindow(m_nDockSide)) {
        m_store.SetInt(keys::kRoot, keys::kWidthOnCmdWnd, m_nWidthOnCmdWnd);
    } else {
        m_store.SetInt(keys::kRoot, keys::kSize, m_nSize);
        m_palette.RecalcLayout();
    }
    RefreshHostLayout(g_hwndFrame);
    return MsgResult::Handled();
}
