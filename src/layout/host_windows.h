#pragma once
// The host's windows that the bar takes its room from, found at start-up, and what the hook
// remembers of them: the application and the bar both read these, and neither owns them.

#include <cstdint>

#include "foundation/win_types.h"

struct HostWindow;

extern HostWindow* g_hwndFrame;
extern HostWindow* g_hwndMdiClient;
extern HostWindow* g_hwndCmdWnd;
extern HostWindow* g_hwndCmdContainer;
extern HostWindow* g_hwndDwgView;  // the active drawing's view; null with no drawing open

// Whether the bar is on (TRON, TROFF); off, the hook and the reactors leave the host alone.
extern std::uint8_t g_bTabrowOn;

// The rectangles the host last wanted for its windows, before the cut, in their parents'
// coordinates.
extern win::RECT g_rcCmdWnd;         // RelayoutCmdWnd, TRCMDCENTER, the WidthOnCmdWnd default
extern win::RECT g_rcMdiClient;      // the floating window's first placement
extern win::RECT g_rcMdiClientSize;  // the aspect ratio of the palette's previews

// Every one of the above back to its value before start-up.
void ForgetHostWindows();
