// Pictures of the host's window with the bar in preview mode: one, five and forty drawings on
// each side of the drawing area, folding or scrolling what doesn't fit, the names below, above
// or left out. The first drawing is read-only, the second edited and active. Each picture is
// saved beside the test program as palette-SIDE-N-fold|scroll-NAMES.png; the checks look at the
// marks, the active tint and the scroll bar, and a few cases are compared whole with reference
// pictures in pictures/ beside this file.

#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

#include "bar/screen_pictures.h"
#include "platform/sim/sim_system_look.h"
#include "views/palette_painter.h"
#include "views/tab_painter.h"

namespace {

enum Names { kNoNames, kNamesBelow, kNamesAbove };

struct PaletteCase {
    int side;
    int drawings;
    bool scroll;
    Names names = kNamesBelow;
    const char* reference = nullptr;  // in pictures/, for a whole-picture comparison
};

void PrintTo(const PaletteCase& c, std::ostream* os) {
    *os << "side " << c.side << ", " << c.drawings << (c.scroll ? " scrolling" : " folding")
        << ", names " << c.names;
}

int MaskPixels(const std::uint8_t (&mask)[kMarkHeight][kMarkWidth]) {
    return static_cast<int>(std::count(&mask[0][0], &mask[0][0] + kMarkWidth * kMarkHeight, 1));
}

class PalettePictures : public BarPictures, public ::testing::WithParamInterface<PaletteCase> {
protected:
    // Whether the cell shows whole: inside the palette, and under no later cell.
    bool Shows(std::size_t index) {
        const auto& items = Bar().m_palette.m_items;
        const win::RECT r = items[index]->rcItem;
        const win::RECT client = host.Windows().RectInParent(Palette());
        if (r.left < 0 || r.top < 0 || r.right > client.Width() || r.bottom > client.Height())
            return false;
        return std::none_of(items.begin() + static_cast<std::ptrdiff_t>(index) + 1, items.end(),
                            [&r](const auto& later) {
                                const win::RECT& o = later->rcItem;
                                return std::max(r.left, o.left) < std::min(r.right, o.right) &&
                                       std::max(r.top, o.top) < std::min(r.bottom, o.bottom);
                            });
    }
};

}  // namespace

TEST_P(PalettePictures, ShowEveryDrawingAsACellMarkedAndTintedAsItStands) {
    const PaletteCase c = GetParam();
    Store(L"ScrollOverflow", c.scroll ? 1 : 0, L"Previews");
    Store(L"ShowDwgName", c.names != kNoNames ? 1 : 0, L"Previews");
    Store(L"DwgNameAbove", c.names == kNamesAbove ? 1 : 0, L"Previews");
    // The bar comes up with one drawing open, at its preview thickness; the rest open one by one.
    std::vector<HostDocument*> docs;
    for (int i = 1; i <= c.drawings; ++i) {
        docs.push_back(host.OpenDrawing(
            L"C:\\jobs\\level-" + std::to_wstring(i) + L"-plan.dwg", i == 1));
        if (i == 1)
            Start(c.side, false);
    }
    // A short strip shows each drawing once, so that each cell has its picture.
    if (c.drawings <= 5) {
        for (HostDocument* doc : docs) {
            host.Activate(doc);
            screen = host.Windows().PaintScreen();
        }
    }
    HostDocument* edited = docs[std::min<std::size_t>(1, docs.size() - 1)];
    host.Activate(edited);
    host.Modify(edited);
    ASSERT_TRUE(host.Type(L"LINE"));
    const std::string name = "palette-" + std::to_string(c.side) + "-" +
                             std::to_string(c.drawings) + (c.scroll ? "-scroll-" : "-fold-") +
                             std::to_string(c.names) + ".png";
    Paint(name);
    SCOPED_TRACE(name);
    if (c.reference != nullptr) {
        EXPECT_TRUE(LooksLike(*screen, c.reference, BesideProgram(name).string()));
    }

    EXPECT_TRUE(host.Windows().IsVisible(Palette()));
    EXPECT_FALSE(host.Windows().IsVisible(Tabs()));
    const win::RECT palette = Place(Palette());
    const HvDwgPalette& cells = Bar().m_palette;
    const int folded = static_cast<int>(std::count_if(
        cells.m_items.begin(), cells.m_items.end(), [](const auto& item) { return item->bClipped; }));
    if (c.scroll || c.drawings != 5) {
        EXPECT_EQ(folded > 0, !c.scroll && c.drawings == 40);
    }
    if (c.drawings == 40 || c.drawings == 1) {
        EXPECT_EQ(host.Windows().IsVisible(cells.m_vertScroll) ||
                      host.Windows().IsVisible(cells.m_horzScroll),
                  c.scroll && c.drawings == 40);
    }
    // The first drawing's padlock, whole, in the read-only colour; the edited drawing's mark
    // and frames under the active tint; each where its cell shows whole.
    const std::size_t active = docs.size() > 1 ? 1 : 0;
    EXPECT_TRUE(c.drawings == 40 || (Shows(0) && Shows(active)));
    const win::COLORREF readOnly = Bar().m_clrReadOnly;
    if (c.drawings > 1 && Shows(0)) {
        EXPECT_EQ(Count(palette, readOnly), MaskPixels(kLockMask));
    }
    if (Shows(active)) {
        const win::COLORREF mark = active == 1 ? Bar().m_clrModified : readOnly;
        EXPECT_EQ(Count(palette, Tinted(mark, SimSystemLook::kActiveCaption, kActiveTintAlpha)),
                  MaskPixels(active == 1 ? kModifiedMask : kLockMask));
        const win::RECT cell = cells.m_items[active]->rcItem.Offset(palette.left, palette.top);
        EXPECT_GT(Count(cell, SimSystemLook::kActiveCaption), 0);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Sides, PalettePictures,
    ::testing::Values(
        PaletteCase{dock::kTop, 1, false}, PaletteCase{dock::kTop, 5, false},
        PaletteCase{dock::kTop, 40, false, kNamesBelow, "palette-top-forty-folding.png"}, PaletteCase{dock::kTop, 1, true},
        PaletteCase{dock::kTop, 5, true}, PaletteCase{dock::kTop, 40, true},
        PaletteCase{dock::kBottom, 1, false}, PaletteCase{dock::kBottom, 5, false},
        PaletteCase{dock::kBottom, 40, false}, PaletteCase{dock::kBottom, 1, true},
        PaletteCase{dock::kBottom, 5, true}, PaletteCase{dock::kBottom, 40, true},
        PaletteCase{dock::kLeft, 1, false}, PaletteCase{dock::kLeft, 5, false},
        PaletteCase{dock::kLeft, 40, false}, PaletteCase{dock::kLeft, 1, true},
        PaletteCase{dock::kLeft, 5, true}, PaletteCase{dock::kLeft, 40, true, kNamesBelow, "palette-left-forty-scrolling.png"},
        PaletteCase{dock::kRight, 1, false, kNamesBelow, "palette-right-one.png"}, PaletteCase{dock::kRight, 5, false},
        PaletteCase{dock::kRight, 40, false}, PaletteCase{dock::kRight, 1, true},
        PaletteCase{dock::kRight, 5, true}, PaletteCase{dock::kRight, 40, true},
        PaletteCase{dock::kTop, 5, false, kNamesAbove}, PaletteCase{dock::kTop, 5, false, kNoNames},
        PaletteCase{dock::kLeft, 5, false, kNamesAbove},
        PaletteCase{dock::kLeft, 5, false, kNoNames}));
