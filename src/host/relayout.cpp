#include "host/relayout.h"

#include "host/mdi_client_hook.h"
#include "host/tabrow_app.h"
#include "ports/port.h"
#include "ports/window_system.h"

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
