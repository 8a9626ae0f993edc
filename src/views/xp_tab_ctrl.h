#pragma once
// A tab control window that paints itself: with the visual styles when they are on, else the
// control's classic frame and an owner-drawn face per tab. Each paint reads the strip from the
// control (its items' rectangles and texts, rows, selection, the tab under the pointer, the
// page) and asks the theme afresh, so that styles turned off while running fall back to the
// owner-drawn faces at the next paint.

#include "ports/window_handler.h"
#include "views/tab_painter.h"

struct HostWindow;

class CXPTabCtrl : public WindowHandler {
public:
    CXPTabCtrl() = default;
    CXPTabCtrl(const CXPTabCtrl&) = delete;
    CXPTabCtrl& operator=(const CXPTabCtrl&) = delete;

    MsgResult OnPaint() override;
    MsgResult OnEraseBkgnd() override { return MsgResult::Handled(1); }

    // The strip as the control has it now, painted in `font`.
    TabStrip ReadStrip(const win::LOGFONTW& font);
    // The control's font (WM_GETFONT).
    virtual win::LOGFONTW Font() { return {}; }

    HostWindow* m_hWnd = nullptr;  // the "SysTabControl32" window, not owned
    TabPainter m_painter;          // m_nOrientation and m_bExtended live here
};
