// The bar's own surface.

#include "bar/hv_tabrow.h"
#include "ports/com_error.h"
#include "ports/host_services.h"
#include "ports/port.h"
#include "views/empty_bar_painter.h"
#include "views/paint_window.h"

MsgResult HvTabrow::OnPaint() {
    try {
        EmptyBar bar;
        bar.dockSide = m_nDockSide;
        bar.floating = m_bFloating != 0;
        bar.font = m_lfTabFont;
        bar.colors = SystemPaintColors();
        // Counted before the paint scope opens: a failed count paints nothing.
        bar.documentCount = GetOpenDocumentCount();
        PaintOffScreen(m_hWnd, [&](Canvas& canvas, const win::RECT& client) {
            bar.client = client;
            PaintEmptyBar(canvas, bar);
        });
    } catch (const ComError& e) {
        if (IsInstalled<HostServices>())
            Use<HostServices>().Print(L"Error in HvTabrow::OnPaint() - " + e.Description() + L"\n");
    } catch (...) {
    }
    return MsgResult::Handled();
}

MsgResult HvTabrow::OnEraseBkgnd() {
    return MsgResult::Handled(1);
}
