#include "views/palette_painter.h"

#include <vector>

#include "foundation/text_encoding.h"
#include "ports/canvas.h"
#include "views/image_ops.h"
#include "views/tab_painter.h"

// '#' in the drawings of the marks.
const std::uint8_t kLockMask[kMarkHeight][kMarkWidth] = {
    {0, 0, 1, 1, 1, 0, 0}, {0, 1, 0, 0, 0, 1, 0}, {0, 1, 0, 0, 0, 1, 0}, {0, 1, 0, 0, 0, 1, 0},
    {1, 1, 1, 1, 1, 1, 1}, {1, 1, 1, 1, 1, 1, 1}, {1, 1, 1, 0, 1, 1, 1}, {1, 1, 1, 0, 1, 1, 1},
    {1, 1, 1, 0, 1, 1, 1}, {1, 1, 1, 1, 1, 1, 1}, {1, 1, 1, 1, 1, 1, 1},
};
const std::uint8_t kModifiedMask[kMarkHeight][kMarkWidth] = {
    {0, 0, 0, 0, 0, 0, 0}, {0, 0, 0, 0, 0, 0, 0}, {0, 0, 0, 0, 0, 0, 0}, {0, 0, 0, 0, 0, 0, 0},
    {1, 1, 1, 1, 1, 1, 1}, {1, 0, 0, 0, 0, 0, 1}, {1, 1, 1, 1, 1, 1, 1}, {1, 1, 1, 1, 1, 1, 1},
    {1, 1, 1, 0, 1, 1, 1}, {1, 1, 1, 1, 1, 1, 1}, {1, 1, 1, 1, 1, 1, 1},
};

namespace {

// The title's text leaves this much at the foot of a folded cell in a row, for the marks.
constexpr int kMarkRoom = 15;
// Names begin this far in from the strip's left, behind the state mark.
constexpr int kNameIndent = 12;

void DrawMark(Canvas& canvas, const std::uint8_t (&mask)[kMarkHeight][kMarkWidth], int x, int y,
              win::COLORREF color) {
    canvas.FillMask(&mask[0][0], kMarkWidth, kMarkHeight, kMarkWidth, x, y, color);
}

// A folded cell's title in a row reads from the bottom up, drawn level in smooth text, then
// turned a quarter anticlockwise.
void DrawTurnedTitle(Canvas& canvas, const PaletteLook& look, const std::wstring& name,
                     const win::RECT& outer) {
    const int w = outer.Height() - kMarkRoom;
    const int h = outer.Width();
    const std::string text = ToUtf8(name);
    SmoothTextRequest request;
    request.text = text.c_str();
    request.font = &look.font;
    request.smoothing = 4;
    request.textFlags = kTextEndEllipsis | kTextSingleLine | kTextVCenter;
    request.color = look.colors.titleText;
    std::vector<BYTE> rgb = SmoothTextStrip(w, h, look.colors.titleBack, request);
    if (rgb.empty())
        return;  // painting swallows its failures; the next paint tries again
    IS40_QuickRotateImageInPlace(rgb.data(), w, h, 2, 3, 0);
    IS40_DrawRGB(&canvas, rgb.data(), h, w, h * 3, outer.left, outer.top);
}

}  // namespace

void PaintPaletteCell(Canvas& canvas, const PaletteLook& look, const PaletteCell& cell) {
    const PaletteColors& colors = look.colors;
    const win::RECT& rc = cell.rect;
    win::RECT inner = rc.Inflated(-1);
    win::RECT outer = rc;
    if (cell.clipped) {
        canvas.FillRect(outer, colors.titleBack);
        canvas.Draw3dRect(outer, colors.btnHighlight, colors.btnShadow);
        outer = outer.Inflated(-1);
        if (look.horizontal) {
            DrawTurnedTitle(canvas, look, cell.name, outer);
        } else {
            canvas.DrawText(cell.name,
                            {outer.left + kNameIndent, outer.top, outer.right, outer.bottom},
                            look.font, colors.titleText,
                            kTextEndEllipsis | kTextSingleLine | kTextBottom | kTextVCenter);
        }
    } else {
        if (look.showName) {
            if (look.nameAbove) {
                outer.bottom = outer.top + look.nameHeight;
                inner.top = outer.bottom;
            } else {
                outer.top = outer.bottom - look.nameHeight;
                inner.bottom = outer.top;
            }
        }
        // Stretched only when the cell has changed size since the picture was taken.
        if (cell.image != nullptr && !cell.image->empty())
            canvas.StretchDib(cell.image->data(), cell.image->size(), inner,
                              StretchMode::kColorOnColor);
        if (look.showName) {
            canvas.FillRect(outer, colors.titleBack);
            canvas.Draw3dRect(outer, colors.btnHighlight, colors.btnShadow);
            canvas.DrawText(
                cell.name,
                {outer.left + kNameIndent, outer.top + 1, outer.right - 1, outer.bottom - 1},
                look.font, colors.titleText, kTextEndEllipsis | kTextSingleLine | kTextBottom);
        } else if (cell.readOnly || cell.modified) {
            // Without a name strip the state mark stands on a plate of the strip's background.
            const int left = outer.left + 2;
            const int bottom = outer.bottom - 2;
            canvas.FillRect({left, bottom - 13, left + 9, bottom}, colors.background);
        }
    }

    if (cell.locked && !cell.clipped) {
        const int left = inner.right - 11;
        const int top = inner.top + 1;
        canvas.FillRect({left, top, left + 9, top + 13},
                        cell.paperSpace ? colors.layoutBackground : colors.modelBackground);
        DrawMark(canvas, kLockMask, inner.right - 10, inner.top + 2,
                 cell.paperSpace ? colors.layoutForeground : colors.modelForeground);
    }
    const int y = outer.bottom - (cell.clipped ? 13 : 14);
    const int x = cell.clipped && look.horizontal ? outer.left + (outer.Width() - kMarkWidth) / 2
                                                  : outer.left + 3;
    // Read-only hides modified.
    if (cell.readOnly)
        DrawMark(canvas, kLockMask, x, y, colors.readOnly);
    else if (cell.modified)
        DrawMark(canvas, kModifiedMask, x, y, colors.modified);

    if (cell.active) {
        PaintActiveMark(canvas, rc, colors.activeCaption);
    }
}
