#pragma once
// The docked tab control's thickness, from what the window system says of it.

#include "foundation/win_types.h"

struct TabBarMeasure {
    int dockSide = 0;
    int captionHeight = 0;  // the start value, and the result when no item rectangle is known
    int rows = 1;
    const win::RECT* selectedItem = nullptr;  // null when the control gave none
};

// The selected item's height (top, bottom) or width (left, right) times the rows, plus the
// side's padding; on any other side the caption height stands for the item.
int TabBarThickness(const TabBarMeasure& measure);
