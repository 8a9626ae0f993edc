#pragma once
// The rubber band of a drag: a rectangle and the look of its border. The bar's edge drag keeps
// one and hands it the bar's screen rectangle at each move, while the bar holds the capture; a
// tracker refuses to track then, as the framework's does, so the bar changes only when the
// button is released and no band is ever drawn.

#include "foundation/win_types.h"

struct HostWindow;

class TrRectTracker {
public:
    // Border styles (CRectTracker::StyleFlags).
    static constexpr unsigned solidLine = 1;
    static constexpr unsigned dottedLine = 2;
    static constexpr unsigned hatchedBorder = 4;

    // False at once, the rectangle untouched, while any window holds the capture. Tracking
    // with the mouse free would need a loop of its own, which nothing here asks for: it is a
    // logic error.
    bool Track(HostWindow* window, win::POINT point);

    win::RECT m_rect;
    unsigned m_nStyle = 0;
};
