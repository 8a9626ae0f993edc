// How thick the bar is where the hook cuts it out of the host's windows.

#include "bar/hv_tabrow_thickness.h"

#include "bar/hv_tabrow.h"
#include "layout/host_windows.h"
#include "settings/reg_impl.h"
#include "ports/port.h"
#include "ports/tab_control.h"
#include "ports/window_system.h"
#include "settings/settings_keys.h"

namespace {

// With HideOnSingle a lone drawing needs no bar, and the bar takes no room.
bool HiddenOnSingle(HvTabrow& bar) {
    return bar.m_bHideOnSingle != 0 && bar.GetOpenDocumentCount() == 1;
}

}  // namespace

int TabBarThickness(const TabBarMeasure& measure) {
    if (measure.selectedItem == nullptr)
        return measure.captionHeight;
    int size = measure.captionHeight;
    int padding = 0;
    switch (measure.dockSide) {
    case dock::kTop:
        size = measure.selectedItem->Height();
        padding = 6;
        break;
    case dock::kLeft:
        size = measure.selectedItem->Width();
        padding = 8;
        break;
    case dock::kRight:
        size = measure.selectedItem->Width();
        padding = 5;
        break;
    case dock::kBottom:
        size = measure.selectedItem->Height();
        padding = 4;
        break;
    default:
        break;
    }
    return size * measure.rows + padding;
}

int HvTabrow::GetPreviewBarSize() {
    return HiddenOnSingle(*this) ? 0 : m_nSize;
}

int HvTabrow::GetCmdWndBarWidth() {
    if (HiddenOnSingle(*this))
        return 0;
    if (m_nWidthOnCmdWnd == 0) {
        m_nWidthOnCmdWnd =
            m_store.GetInt(keys::kRoot, keys::kWidthOnCmdWnd, g_rcCmdWnd.Width() / 2);
    }
    return m_nWidthOnCmdWnd;
}

int HvTabrow::CalcTabBarSize(const win::RECT* prc) {
    if (HiddenOnSingle(*this))
        return 0;
    WindowSystem& windows = Use<WindowSystem>();
    TabBarMeasure measure;
    measure.dockSide = m_nDockSide;
    measure.captionHeight = windows.SystemMetric(ws::kSmCyCaption);
    HostWindow* tabs = m_tabCtrl.m_hWnd;
    if (!windows.IsWindow(tabs))
        return measure.captionHeight;
    TabControls& control = Use<TabControls>();
    measure.rows = control.RowCount(tabs);
    if (prc != nullptr) {
        // The rows at the width the control is going to have: wrap it there for a moment.
        const win::RECT kept = windows.RectInParent(tabs);
        windows.Move(tabs, *prc, false);
        measure.rows = control.RowCount(tabs);
        windows.Move(tabs, kept, false);
    }
    win::RECT item;
    const int selected = control.GetCurSel(tabs);
    if (control.ItemRect(tabs, selected, item))
        measure.selectedItem = &item;
    return TabBarThickness(measure);
}
