#pragma once
// Where the lines of a text go in a rectangle under the window system's text format bits:
// left, centred or right; top, centred or bottom for one line; an ellipsis at the end of a
// line that doesn't fit. Lines break only at "\n" (and not at all for kTextSingleLine).

#include <string>
#include <vector>

#include "foundation/win_types.h"
#include "ports/font_rasteriser.h"

struct PlacedLine {
    std::wstring text;  // after any ellipsis
    int x = 0;
    int top = 0;
};

struct TextLayout {
    std::vector<PlacedLine> lines;
    win::RECT bounds;  // the rectangle the lines take, as the measuring form of the call gives it
};

TextLayout LayOutText(FontRasteriser& fonts, const std::wstring& text, const win::RECT& rect,
                      const win::LOGFONTW& font, std::uint32_t format);

// Draws the laid-out text into `target` (whose pixel 0,0 stands at `origin` of the layout's
// coordinates); clipped to `rect` unless the format has kTextNoClip.
void RasteriseText(FontRasteriser& fonts, const std::wstring& text, const win::RECT& rect,
                   const win::LOGFONTW& font, std::uint32_t format, win::POINT origin,
                   MonoBitmap& target);
