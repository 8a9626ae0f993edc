#include "host/mdi_client_hook.h"

#include "bar/hv_tabrow.h"
#include "host/tabrow_app.h"
#include "ports/port.h"
#include "ports/window_system.h"

win::RECT CutBarRoom(win::WINDOWPOS& pos, int dockSide, int thickness) {
    win::RECT bar{pos.x, pos.y, pos.x + pos.cx, pos.y + pos.cy};
    switch (dockSide) {
    case dock::kTop:
        pos.y += thickness;
        bar.bottom = pos.y;
        pos.cy -= thickness;
        break;
    case dock::kLeft:
    case dock::kCmdWndLeft:
        pos.x += thickness;
        bar.right = pos.x;
        pos.cx -= thickness;
        break;
    case dock::kRight:
    case dock::kCmdWndRight:
        bar.left = pos.x + pos.cx - thickness;
        pos.cx -= thickness;
        break;
    case dock::kBottom:
        bar.top = pos.y + pos.cy - thickness;
        pos.cy -= thickness;
        break;
    default:
        break;
    }
    return bar;
}

MsgResult HvTrMdiClientWnd::OnWindowPosChanging(win::WINDOWPOS& pos) {
    // Once the module has let this hook go (an unload while the host quits) it passes
    // everything on.
    if (g_bTabrowOn == 0 || g_pTabrow == nullptr ||
        (this != g_pMdiClientHook && this != g_pCmdWndHook))
        return MsgResult::NotHandled();
    const bool bCmd = m_pWndHooked == g_hwndCmdWnd;
    const bool bMdi = m_pWndHooked == g_hwndMdiClient;
    if (!bCmd && !bMdi)
        return MsgResult::NotHandled();
    // A failure to count the drawings is let through on purpose: there is no fallback size, and
    // the subclass procedure then passes the position on uncut.
    const bool bSingleHidden =
        g_pTabrow->m_bHideOnSingle != 0 && g_pTabrow->GetOpenDocumentCount() == 1;
    // With a single drawing hidden the bar isn't moved: it sits behind the full-sized MDI client.
    if (bSingleHidden || pos.cx == 0 || pos.cy == 0)
        return MsgResult::NotHandled();
    if (bCmd)
        CutCommandWindow(pos);
    if (bMdi)
        CutMdiClient(pos);
    // The host's own position code gets the cut position and never sees the difference.
    return MsgResult::NotHandled();
}

void HvTrMdiClientWnd::CutCommandWindow(win::WINDOWPOS& pos) {
    HvTabrow& bar = *g_pTabrow;
    g_rcCmdWnd = win::RECT{pos.x, pos.y, pos.x + pos.cx, pos.y + pos.cy};
    if (!dock::IsInCommandWindow(bar.m_nDockSide) || bar.m_bFloating != 0)
        return;
    win::RECT rcBar = CutBarRoom(pos, bar.m_nDockSide, bar.GetCmdWndBarWidth());
    if (bar.GetSafeHwnd() != nullptr)
        Use<WindowSystem>().Move(bar.GetSafeHwnd(), rcBar, true);
}

void HvTrMdiClientWnd::CutMdiClient(win::WINDOWPOS& pos) {
    HvTabrow& bar = *g_pTabrow;
    const win::RECT rc{pos.x, pos.y, pos.x + pos.cx, pos.y + pos.cy};
    g_rcMdiClient = rc;
    g_rcMdiClientSize = rc;
    if (dock::IsInCommandWindow(bar.m_nDockSide) || bar.m_bFloating != 0) {
        // The bar's room is elsewhere, but the previews take their shape from this rectangle.
        bar.m_palette.RecalcLayout();
        return;
    }
    // With no drawing open the tab control's thickness holds even in preview mode: a caption.
    const int thickness = bar.GetOpenDocumentCount() == 0 || bar.m_bTabMode != 0
                              ? bar.CalcTabBarSize(&rc)
                              : bar.GetPreviewBarSize();
    win::RECT rcBar = CutBarRoom(pos, bar.m_nDockSide, thickness);
    if (bar.GetSafeHwnd() != nullptr)
        Use<WindowSystem>().Move(bar.GetSafeHwnd(), rcBar, true);
}
