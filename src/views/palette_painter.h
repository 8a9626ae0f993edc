#pragma once
// The painting of one palette cell: a full cell (the picture, with or without its name strip
// above or below) or a folded one (a title strip, its text turned a quarter in a row), the
// marks (the padlock of a locked picture on the drawing's own background; the padlock of a
// read-only drawing or the body of the modified mark, in their colours), and the tint of the
// active drawing. The cell comes in as plain values, so the painting needs no window.

#include <cstdint>
#include <string>

#include "foundation/win_types.h"
#include "views/dib.h"

class Canvas;

// The two marks, 7 by 11 pixels each, a non-zero byte where the mark's colour shows.
inline constexpr int kMarkWidth = 7;
inline constexpr int kMarkHeight = 11;
extern const std::uint8_t kLockMask[kMarkHeight][kMarkWidth];
extern const std::uint8_t kModifiedMask[kMarkHeight][kMarkWidth];

// The colours the whole palette paints in.
struct PaletteColors {
    win::COLORREF background = 0;  // the strip behind the cells
    win::COLORREF titleBack = 0;
    win::COLORREF titleText = 0;
    win::COLORREF readOnly = 0;
    win::COLORREF modified = 0;
    win::COLORREF btnShadow = 0;
    win::COLORREF btnHighlight = 0;
    win::COLORREF activeCaption = 0;
    // The drawing's background and the colour that stands against it, in model space and on
    // a layout; a locked picture's padlock shows in them.
    win::COLORREF modelBackground = 0;
    win::COLORREF modelForeground = 0;
    win::COLORREF layoutBackground = 0;
    win::COLORREF layoutForeground = 0;
};

// How the palette shows its names, the same for every cell.
struct PaletteLook {
    bool horizontal = true;
    bool showName = true;
    bool nameAbove = false;
    int nameHeight = 15;
    win::LOGFONTW font{};
    PaletteColors colors{};
};

struct PaletteCell {
    win::RECT rect{};
    std::wstring name{};
    const DibBlock* image = nullptr;  // null or empty: the strip's background shows
    bool clipped = false;
    bool locked = false;
    bool paperSpace = false;  // the picture shows a layout
    bool readOnly = false;
    bool modified = false;
    bool active = false;
};

void PaintPaletteCell(Canvas& canvas, const PaletteLook& look, const PaletteCell& cell);
