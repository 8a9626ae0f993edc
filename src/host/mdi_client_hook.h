#pragma once
// The hook that gives the bar its room. The host lays out its MDI client and its command
// window as if the bar weren't there; this hook, on both windows, cuts the bar's thickness out of
// each new position on its way (WM_WINDOWPOSCHANGING) and moves the bar into the gap.

#include "foundation/win_types.h"
#include "host/subclass_wnd.h"
#include "layout/host_windows.h"

// Cuts `thickness` out of `pos` on the dock side and returns the bar's rectangle: the gap on
// that side of the rectangle that `pos` described. A side that doesn't apply leaves `pos` as it
// is and gives the whole rectangle.
win::RECT CutBarRoom(win::WINDOWPOS& pos, int dockSide, int thickness);

class HvTrMdiClientWnd : public CSubclassWnd {
public:
    // Tells by the hooked window whether it works for the MDI client or the command window.
    // Always passes the position on, cut or not: the host's own code must see it.
    MsgResult OnWindowPosChanging(win::WINDOWPOS& pos) override;

private:
    void CutCommandWindow(win::WINDOWPOS& pos);
    void CutMdiClient(win::WINDOWPOS& pos);
};
