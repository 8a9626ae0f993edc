#pragma once
// Text as black and white pixels: what smooth text draws at four times its size before it
// reduces the picture to anti-aliased edges, and what a software canvas paints glyphs with.

#include <cstdint>
#include <string>
#include <vector>

#include "foundation/win_types.h"

// One byte a pixel, 0 or 1, rows from the top.
struct MonoBitmap {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> bits;

    MonoBitmap() = default;
    MonoBitmap(int w, int h)
        : width(w), height(h), bits(static_cast<std::size_t>(w) * static_cast<std::size_t>(h)) {}
};

class FontRasteriser {
public:
    virtual ~FontRasteriser() = default;

    // Line height of the font (ascent plus descent) in pixels; 0 if the font can't be made.
    virtual int LineHeight(const win::LOGFONTW& font) = 0;

    // Advance width of `text` on one line.
    virtual int TextWidth(const std::wstring& text, const win::LOGFONTW& font) = 0;

    // Sets the coverage of `text` in `target`, one line whose cell has its top left at x, top.
    // Glyph pixels outside `clip` (half-open, in target coordinates) or the target are dropped.
    // False if the font can't be made.
    virtual bool DrawLine(const std::wstring& text, const win::LOGFONTW& font, int x, int top,
                          const win::RECT& clip, MonoBitmap& target) = 0;
};
