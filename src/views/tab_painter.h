#pragma once
// The painting of a tab strip: every tab and the page under them, onto a canvas, on any of the
// four sides. With visual styles on, the theme's pictures of a top tab are drawn off-screen and
// mirrored or turned for the other sides; with them off, the control's classic frame is drawn
// and each tab's face is painted by DrawItem, as a top tab, then turned.
//
// The strip comes in as plain values (its rectangles, texts, selection, the tab under the
// pointer), so the painting needs no window and the window code feeds it what the control says.

#include <cstdint>
#include <string>
#include <vector>

#include "foundation/win_types.h"

class Canvas;
class Theme;

// The system colours that tabs and the bar are painted in.
struct PaintColors {
    win::COLORREF btnFace = 0;
    win::COLORREF btnText = 0;
    win::COLORREF btnShadow = 0;
    win::COLORREF btnHighlight = 0;
    win::COLORREF activeCaption = 0;
};

// The tint of the selected tab, and of the active drawing elsewhere.
inline constexpr unsigned kActiveTintAlpha = 68;
// The active drawing's mark: the tint and two frames inside each other in `color`.
void PaintActiveMark(Canvas& canvas, const win::RECT& rect, win::COLORREF color);

struct TabRecord {
    win::RECT rect;     // the item's rectangle in the control's client area
    std::wstring text;  // with its marks
};

struct TabStrip {
    win::RECT client{};       // the control's client rectangle
    win::RECT displayArea{};  // the page's inside, as the control adjusts the client rectangle
    unsigned style = 0;       // tcs:: bits
    std::vector<TabRecord> tabs{};
    int selected = -1;
    int hot = -1;  // the tab under the pointer, -1 for none
    int rows = 1;
    win::LOGFONTW font{};
    PaintColors colors{};
};

// Sides, as the control's orientation field numbers them.
enum TabOrientation : int { kTabTop = 0, kTabBottom = 1, kTabLeft = 2, kTabRight = 3 };

// The side a tab control's style puts its tabs on.
int TabOrientationOf(unsigned style);

// The faces of owner-drawn tabs. The plain strip (highlightSelected) also tints the selected
// tab and frames it twice in the caption colour.
struct TabItemOptions {
    bool highlightSelected = false;
};

class TabPainter {
public:
    // Paints the whole strip: with the theme when UseThemeDrawing says so, else the classic
    // frame and DrawItem for each tab. True when the theme painted it.
    bool Paint(Canvas& canvas, const TabStrip& strip);

    // Whether the theme draws this paint: theme drawing allowed and the theme active now.
    // Sets m_nOrientation from the style either way.
    bool UseThemeDrawing(const TabStrip& strip);

    // The themed strip: the page, the tabs in index order, the selected one last.
    void PaintThemed(Canvas& canvas, const TabStrip& strip);

    // What the control paints itself without a theme: its face, the page's frame and each tab's
    // frame, and each tab's face through DrawItem.
    void PaintClassic(Canvas& canvas, const TabStrip& strip);

    // One owner-drawn tab face in `rect` (the control's item rectangle for drawing).
    void DrawItem(Canvas& canvas, const TabStrip& strip, int index, const win::RECT& rect,
                  TabItemOptions options = {});

    int m_nOrientation = kTabBottom;
    std::int32_t m_bExtended = 1;  // theme drawing allowed
};
