#include "views/xp_tab_ctrl.h"

#include <cstdint>

#include "ports/port.h"
#include "ports/tab_control.h"
#include "ports/window_system.h"
#include "views/paint_window.h"

namespace {
constexpr int kTextBuffer = 128;  // the themed path's; the owner-drawn one cuts shorter
}  // namespace

TabStrip CXPTabCtrl::ReadStrip(const win::LOGFONTW& font) {
    WindowSystem& windows = Use<WindowSystem>();
    TabControls& control = Use<TabControls>();
    TabStrip strip;
    const win::RECT window = windows.RectInParent(m_hWnd);
    strip.client = {0, 0, window.Width(), window.Height()};
    strip.displayArea = control.DisplayArea(m_hWnd);
    strip.style = windows.Style(m_hWnd);
    strip.rows = control.RowCount(m_hWnd);
    strip.selected = control.GetCurSel(m_hWnd);
    const int count = control.ItemCount(m_hWnd);
    for (int i = 0; i < count; ++i) {
        TabRecord record;
        std::intptr_t param = 0;
        // An item that went since the count is left out rather than painted empty.
        if (control.GetItem(m_hWnd, i, kTextBuffer, record.text, param) &&
            control.ItemRect(m_hWnd, i, record.rect))
            strip.tabs.push_back(record);
    }
    // The tab under the pointer, in the control's client coordinates.
    const win::POINT cursor = windows.CursorPos();
    const win::RECT screen = windows.ScreenRect(m_hWnd);
    strip.hot = control.HitTest(m_hWnd, {cursor.x - screen.left, cursor.y - screen.top});
    strip.font = font;
    strip.colors = SystemPaintColors();
    return strip;
}

MsgResult CXPTabCtrl::OnPaint() {
    // Painting lets nothing pass to the window system: a failed frame is skipped.
    try {
        const TabStrip strip = ReadStrip(Font());
        PaintOffScreen(m_hWnd,
                       [&](Canvas& canvas, const win::RECT&) { m_painter.Paint(canvas, strip); });
    } catch (...) {
    }
    return MsgResult::Handled();
}
