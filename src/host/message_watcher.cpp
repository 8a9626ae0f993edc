#include "host/message_watcher.h"

#include "bar/hv_tabrow.h"
#include "host/tabrow_app.h"
#include "ports/port.h"
#include "ports/window_messages.h"
#include "ports/window_system.h"

namespace {

HostWindow* PaletteWindow() {
    return g_pTabrow != nullptr ? g_pTabrow->m_palette.m_hWnd : nullptr;
}

void Watch(const HostMessage& message) {
    if (g_pTabrow != nullptr)
        g_pTabrow->PreTranslateMessage(message);  // the bar's tips see the mouse
    switch (message.message) {
    case wm::kMButtonUp:
    case wm::kMouseWheel:
        // Pan and zoom end here. Setting the running timer again restarts it, so the preview
        // is renewed once, after the last wheel step.
        if (message.window != nullptr && message.window == g_hwndDwgView) {
            WindowSystem& windows = Use<WindowSystem>();
            HostWindow* palette = PaletteWindow();
            if (windows.IsWindow(palette))
                windows.SetTimer(palette, HvDwgPalette::kViewChangedTimer,
                                 HvDwgPalette::kTimerDelay);
        }
        break;
    case wm::kContextMenu:
    case wm::kRButtonDown:
    case wm::kRButtonUp:
        // Looked at and deliberately left alone: the bar's menu has its own way in.
        break;
    default:
        break;
    }
}

}  // namespace

void TabrowMessageWatcher(const HostMessage& message) {
    // Every message of the host's main loop passes here: nothing may stop it on its way.
    try {
        Watch(message);
    } catch (...) {
    }
}
