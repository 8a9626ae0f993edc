// Where a palette cell's marks go: the state mark at the name strip's or the folded strip's
// foot, the padlock of a locked picture in its corner on the drawing's background, the plate
// under a mark when there is no name strip.

#include <gtest/gtest.h>

#include <vector>

#include "platform/sim/canvas/software_canvas.h"
#include "ports/port.h"
#include "views/image_ops.h"
#include "views/palette_painter.h"
#include "views_test_support.h"

namespace {

constexpr win::COLORREF kReadOnly = 0x0000AC, kModified = 0x058F28, kModelFore = 0xFF00FF,
                        kLayoutFore = 0x00FFFF, kPicture = 0x808080, kBack = 0xF0F0F0;

// The bounds of the pixels of `color`; empty when there are none.
win::RECT Bounds(const SoftwareCanvas& canvas, win::COLORREF color) {
    win::RECT b{canvas.Width(), canvas.Height(), 0, 0};
    for (int y = 0; y < canvas.Height(); ++y)
        for (int x = 0; x < canvas.Width(); ++x)
            if (canvas.PixelAt(x, y) == color)
                b = {std::min(b.left, x), std::min(b.top, y), std::max(b.right, x + 1),
                     std::max(b.bottom, y + 1)};
    return b.IsEmpty() ? win::RECT{} : b;
}

}  // namespace

TEST(PalettePainter, MarksStandAtTheFootOfTheNameOrTheFoldedStripAndThePadlockInTheCorner) {
    BoxFontRasteriser fonts;
    const ScopedPort<FontRasteriser> fontsPort(fonts);
    std::vector<BYTE> grey(100 * 70 * 3, 0x80);
    const DibBlock picture = IS40_RGBToDIB(grey.data(), 100, 70, 300, 0);
    struct Case {
        const char* what;
        PaletteCell cell;
        bool horizontal, showName, nameAbove;
        win::COLORREF mark;  // the one colour looked for
        win::RECT bounds;
    };
    // The cell is 10, 10 to 110, 80; name strips of 15. The modified mask's top four rows are
    // empty.
    const win::RECT cell{10, 10, 110, 80};
    const Case cases[] = {
        {"name below, read-only hiding modified",
         {.rect = cell, .readOnly = true, .modified = true}, true, true, false, kReadOnly,
         {13, 66, 20, 77}},
        {"name above", {.rect = cell, .modified = true}, true, true, true, kModified,
         {13, 15, 20, 22}},
        {"no name: on a plate", {.rect = cell, .modified = true}, true, false, false, kModified,
         {13, 70, 20, 77}},
        {"folded in a row: centred", {.rect = {10, 10, 25, 80}, .clipped = true, .modified = true},
         true, true, false, kModified, {14, 70, 21, 77}},
        {"folded in a column", {.rect = {10, 10, 110, 25}, .clipped = true, .readOnly = true},
         false, true, false, kReadOnly, {14, 11, 21, 22}},
        {"locked", {.rect = cell, .locked = true}, true, true, false, kModelFore,
         {99, 13, 106, 24}},
        {"locked on a layout", {.rect = cell, .locked = true, .paperSpace = true}, true, true,
         false, kLayoutFore, {99, 13, 106, 24}},
        {"locked but folded", {.rect = {10, 10, 25, 80}, .clipped = true, .locked = true}, true,
         true, false, kModelFore, {}},
    };
    for (Case c : cases) {
        SCOPED_TRACE(c.what);
        PaletteLook look{.horizontal = c.horizontal, .showName = c.showName,
                         .nameAbove = c.nameAbove, .nameHeight = 15, .font = {.lfHeight = -8}};
        look.colors = {kBack, 0xE0E0E0, 0x000000, kReadOnly, kModified, 0xA0A0A0,
                       0xFFFFFF, 0xD1B499, 0x000000, kModelFore, 0xFFFFFF, kLayoutFore};
        c.cell.image = &picture;
        c.cell.name = L"plan";
        SoftwareCanvas canvas(120, 90);
        canvas.FillRect({0, 0, 120, 90}, kBack);
        PaintPaletteCell(canvas, look, c.cell);
        EXPECT_EQ(Bounds(canvas, c.mark), c.bounds);
        EXPECT_TRUE(!c.cell.readOnly || Bounds(canvas, kModified).IsEmpty());
        // Without a name strip the mark stands on a plate of the strip's background, 13 high;
        // a padlock on one of the drawing's background, 13 high from the picture's top plus 1.
        if (!c.cell.clipped && (!c.showName || c.nameAbove)) {
            EXPECT_EQ(canvas.PixelAt(12, 65), c.showName ? kPicture : kBack);
            EXPECT_EQ(canvas.PixelAt(12, 64), kPicture);
        }
        if (c.cell.locked && !c.cell.clipped) {
            EXPECT_EQ(canvas.PixelAt(98, 24), c.cell.paperSpace ? 0xFFFFFFu : 0x000000u);
            EXPECT_EQ(canvas.PixelAt(98, 25), kPicture);
        }
        // Names begin 12 in from the strip's left (a folded one is inside its frame), a box
        // glyph a pixel inside its cell.
        if (c.showName && !c.cell.locked && !(c.cell.clipped && c.horizontal)) {
            EXPECT_EQ(Bounds(canvas, 0x000000).left, c.cell.clipped ? 24 : 23);
        }
    }
}
