#pragma once
// The bar's own surface, which shows while neither view is visible: the button face, and with
// no drawing open a framed, tinted strip with the product's line in smooth text, turned a
// quarter when the bar stands docked at the left or right.

#include "foundation/win_types.h"
#include "views/tab_painter.h"

inline constexpr char kNoDrawingsText[] = "Tabrow 2.0 - No Drawings Loaded";
// The tint over the strip is lighter than the selected tab's.
inline constexpr unsigned kEmptyBarTintAlpha = 102;

struct EmptyBar {
    win::RECT client;
    int dockSide = 0;  // dock:: value
    bool floating = false;
    int documentCount = 0;
    win::LOGFONTW font;  // the tab font
    PaintColors colors;
};

void PaintEmptyBar(Canvas& canvas, const EmptyBar& bar);
