#include "layout/host_windows.h"

HostWindow* g_hwndFrame = nullptr;
HostWindow* g_hwndMdiClient = nullptr;
HostWindow* g_hwndCmdWnd = nullptr;
HostWindow* g_hwndCmdContainer = nullptr;
HostWindow* g_hwndDwgView = nullptr;
std::uint8_t g_bTabrowOn = 1;
win::RECT g_rcCmdWnd;
win::RECT g_rcMdiClient;
win::RECT g_rcMdiClientSize;

void ForgetHostWindows() {
    g_hwndFrame = g_hwndMdiClient = g_hwndCmdWnd = g_hwndCmdContainer = g_hwndDwgView = nullptr;
    g_bTabrowOn = 1;
    g_rcCmdWnd = g_rcMdiClient = g_rcMdiClientSize = win::RECT{};
}
