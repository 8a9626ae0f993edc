#pragma once
// The window system's scroll bar control, on a window that CreateChild made with the class
// "ScrollBar" (sbs::kVert for a vertical one). The control keeps a range, a page and a position;
// the position always lies between the minimum and the maximum less the page plus one. It tells
// its parent of the user's scrolls by WM_HSCROLL or WM_VSCROLL, with the code, the position for
// the thumb's codes, and itself as the control.

#include "foundation/win_types.h"

struct HostWindow;

namespace sbs {
constexpr unsigned kVert = 0x0001;
}  // namespace sbs

// Scroll codes (SB_...).
namespace sb {
constexpr unsigned kLineUp = 0;
constexpr unsigned kLineDown = 1;
constexpr unsigned kPageUp = 2;
constexpr unsigned kPageDown = 3;
constexpr unsigned kThumbPosition = 4;
constexpr unsigned kThumbTrack = 5;
constexpr unsigned kEndScroll = 8;
}  // namespace sb

// Which fields of ScrollInfo a call sets or reads (SIF_...).
namespace sif {
constexpr unsigned kRange = 0x0001;
constexpr unsigned kPage = 0x0002;
constexpr unsigned kPos = 0x0004;
// A bar that has nothing to scroll is disabled rather than left as it was.
constexpr unsigned kDisableNoScroll = 0x0008;
}  // namespace sif

struct ScrollInfo {
    unsigned mask = 0;
    int min = 0;
    int max = 0;
    unsigned page = 0;
    int pos = 0;
};

class ScrollBars {
public:
    virtual ~ScrollBars() = default;
    // Sets what the mask names; returns the position the bar then has.
    virtual int SetScrollInfo(HostWindow* bar, const ScrollInfo& info, bool redraw) = 0;
    // Everything the bar holds, mask included as kRange | kPage | kPos.
    virtual ScrollInfo GetScrollInfo(HostWindow* bar) = 0;
    // Returns the position before; the new one is limited as any other.
    virtual int SetScrollPos(HostWindow* bar, int pos, bool redraw) = 0;
};
