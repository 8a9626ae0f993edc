// Pictures of the host's window with the bar in preview mode: one, five and forty drawings on
// each side of the drawing area, folding or scrolling what doesn't fit, the names below, above
// or left out. The first drawing is read-only, the second edited and active. Each picture is
// saved beside the test program as palette-SIDE-N-fold|scroll-NAMES.png; the checks look at the
// marks, the active tint and the scroll bar, and a few cases are compared whole with reference
// pictures in pictures/ beside this file.

#include <algorithm>
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
    // The colour against the model's background shows in a locked picture's padlock.
    constexpr win::COLORREF kAgainstModel = 0xFF00FF;
    host.SetCurrentColors({0x000000, 0xFFFFFF, kAgainstModel, 0x000000});
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
    if (c.drawings >= 3)
        Bar().m_palette.ToggleLock(docs[2]);
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
    if (c.drawings >= 3 && Shows(2)) {
        EXPECT_EQ(Count(palette, kAgainstModel), Bar().m_palette.m_items[2]->bClipped ? 0 : MaskPixels(kLockMask));
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

class PaletteClicks : public BarPictures {
protected:
    // Drawings on a strip at `side`, opened one by one once the bar is up; painted once so
    // that every cell has its place.
    void Open(int side, bool scroll, int count) {
        Store(L"ScrollOverflow", scroll ? 1 : 0, L"Previews");
        for (int i = 1; i <= count; ++i) {
            docs.push_back(host.OpenDrawing(L"C:\\jobs\\d" + std::to_wstring(i) + L".dwg"));
            if (i == 1)
                Start(side, false);
        }
        screen = host.Windows().PaintScreen();
    }
    TrDocItem& Cell(std::size_t i) { return *Bar().m_palette.m_items[i]; }
    // A press in the middle of a window's rectangle (client coordinates of the palette).
    void Press(HostWindow* window, const win::RECT& r, unsigned keys = 0) {
        const win::RECT place = Place(window);
        host.Windows().Mouse(wm::kLButtonDown,
                             {place.left + (r.left + r.right) / 2, place.top + (r.top + r.bottom) / 2},
                             keys);
        screen = host.Windows().PaintScreen();
    }
    std::vector<HostDocument*> docs;
};

TEST_F(PaletteClicks, AFoldedCellUnfoldsUnlessControlIsHeldWhichSwitchesToIt) {
    // Room for one full cell and 29 title strips: the first cell stays full.
    Open(dock::kTop, false, 30);
    HvDwgPalette& palette = Bar().m_palette;
    ASSERT_TRUE(Cell(20).bClipped);
    EXPECT_EQ(palette.DocumentAt({Cell(20).rcItem.left + 1, Cell(20).rcItem.top + 1}), docs[20]);
    EXPECT_EQ(palette.DocumentAt({Cell(20).rcItem.left - 300, Cell(20).rcItem.bottom + 5}),
              nullptr);
    // The strip slides just far enough: the cells before fold at the front, none switches.
    Press(Palette(), Cell(20).rcItem);
    EXPECT_EQ(palette.m_nFirstFull, 20);
    EXPECT_FALSE(Cell(20).bClipped);
    EXPECT_TRUE(Cell(19).bClipped && Cell(0).bClipped && Cell(21).bClipped);
    EXPECT_EQ(host.MdiActiveDocument(), docs[29]);
    // A folded cell at the front slides the strip back to it.
    Press(Palette(), Cell(3).rcItem);
    EXPECT_EQ(palette.m_nFirstFull, 3);
    EXPECT_FALSE(Cell(3).bClipped);
    Press(Palette(), Cell(25).rcItem, mk::kControl);
    EXPECT_EQ(host.MdiActiveDocument(), docs[25]);
    EXPECT_EQ(palette.m_nFirstFull, 3);
}

TEST_F(PaletteClicks, TheScrollBarMovesTheCellsByCellsAndPagesWithinTheContent) {
    Open(dock::kLeft, true, 40);
    HvDwgPalette& palette = Bar().m_palette;
    HostWindow* bar = palette.m_vertScroll;
    ASSERT_TRUE(host.Windows().IsVisible(bar));
    const int top = Cell(0).rcItem.top;
    const int line = palette.GetCellSize(nullptr).cy;  // the picture alone
    const SimWindowSystem::ScrollBarParts parts = host.Windows().PartsOf(bar);
    Press(bar, parts.lineDown);
    EXPECT_EQ(palette.m_nScrollPos, line);
    EXPECT_EQ(Cell(0).rcItem.top, top - line);
    EXPECT_EQ(host.Windows().GetScrollInfo(bar).pos, line);
    Press(bar, parts.lineUp);
    Press(bar, parts.lineUp);  // not before the first cell
    EXPECT_EQ(palette.m_nScrollPos, 0);
    host.Windows().Scroll(bar, sb::kThumbTrack, 30000);
    EXPECT_EQ(palette.m_nScrollPos, palette.m_nContentLength - palette.m_nLength);
    // Another control's scroll is none of the palette's.
    host.Windows().Send(Palette(), wm::kVScroll, sb::kLineUp, 0);
    EXPECT_EQ(palette.m_nScrollPos, palette.m_nContentLength - palette.m_nLength);
    EXPECT_FALSE(std::any_of(palette.m_items.begin(), palette.m_items.end(),
                             [](const auto& item) { return item->bClipped; }));
}
