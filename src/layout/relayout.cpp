#include "layout/relayout.h"

#include "layout/host_windows.h"
#include "ports/port.h"
#include "ports/window_system.h"

void RefreshHostLayout(HostWindow* hwnd) {
    WindowSystem& windows = Use<WindowSystem>();
    if (!windows.IsWindow(hwnd))
        return;
    win::RECT rect = windows.RectInParent(hwnd);
    win::RECT shrunk{rect.left + 10, rect.top + 10, rect.right - 10, rect.bottom - 10};
    windows.Move(hwnd, shrunk, false);
    windows.Move(hwnd, rect, true);
    windows.Redraw(hwnd,
                   ws::kRdwInvalidate | ws::kRdwErase | ws::kRdwAllChildren | ws::kRdwUpdateNow);
}

void RelayoutMdiClient() {
    WindowSystem& windows = Use<WindowSystem>();
    if (!windows.IsWindow(g_hwndFrame) || !windows.IsWindow(g_hwndMdiClient))
        return;
    windows.Move(g_hwndMdiClient, windows.MdiClientRoom(g_hwndFrame), false);
}

void RelayoutCmdWnd() {
    WindowSystem& windows = Use<WindowSystem>();
    if (!windows.IsWindow(g_hwndCmdWnd))
        return;
    windows.Move(g_hwndCmdWnd, g_rcCmdWnd, false);
}
