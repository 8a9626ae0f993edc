// Pictures of the host's window with the bar in preview mode: one, five and forty drawings on
// each side of the drawing area, folding or scrolling what doesn't fit, the names below, above
// or left out. The first drawing is read-only, the third's picture locked, the second edited and
// active. Each picture is saved beside the test program as palette-SIDE-N-fold|scroll-NAMES.png;
// the checks look at the marks, the active tint and the scroll bar, and three cases are compared
// whole with reference pictures in pictures/ beside this file. Then clicks and scrolls.

#include <algorithm>
#include <string>
#include <vector>

#include "bar/screen_pictures.h"
#include "platform/sim/sim_system_look.h"
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

// The pixels of the padlock and of the modified mark.
constexpr int kLockPixels = 55;
constexpr int kModifiedPixels = 43;
// The colour against the model's background: a locked picture's padlock.
constexpr win::COLORREF kAgainstModel = 0xFF00FF;

class PaletteSession : public BarPictures {
protected:
    // The bar comes up at `side` with one drawing open, at its preview thickness; the rest open
    // one by one. The first is read-only.
    void Open(int side, bool scroll, int count, Names names = kNamesBelow) {
        Store(L"ScrollOverflow", scroll ? 1 : 0, L"Previews");
        Store(L"ShowDwgName", names != kNoNames ? 1 : 0, L"Previews");
        Store(L"DwgNameAbove", names == kNamesAbove ? 1 : 0, L"Previews");
        host.SetCurrentColors({0x000000, 0xFFFFFF, kAgainstModel, 0x000000});
        for (int i = 1; i <= count; ++i) {
            docs.push_back(
                host.OpenDrawing(L"C:\\jobs\\level-" + std::to_wstring(i) + L"-plan.dwg", i == 1));
            if (i == 1)
                Start(side, false);
        }
        screen = host.Windows().PaintScreen();
    }
    TrDocItem& Cell(std::size_t i) { return *Bar().m_palette.m_items[i]; }
    // A press in the middle of a rectangle of the window's client area; the screen painted after.
    void Press(HostWindow* window, const win::RECT& r, unsigned keys = 0) {
        const win::RECT at = Place(window);
        host.Windows().Mouse(wm::kLButtonDown,
                             {at.left + (r.left + r.right) / 2, at.top + (r.top + r.bottom) / 2},
                             keys);
        screen = host.Windows().PaintScreen();
    }
    std::vector<HostDocument*> docs;
};

class PalettePictures : public PaletteSession, public ::testing::WithParamInterface<PaletteCase> {};

}  // namespace

TEST_P(PalettePictures, ShowEveryDrawingAsACellMarkedAndTintedAsItStands) {
    const PaletteCase c = GetParam();
    Open(c.side, c.scroll, c.drawings, c.names);
    HvDwgPalette& palette = Bar().m_palette;
    // A short strip shows each drawing once, so that each cell has its picture.
    for (std::size_t i = 0; c.drawings <= 5 && i < docs.size(); ++i) {
        host.Activate(docs[i]);
        screen = host.Windows().PaintScreen();
    }
    if (c.drawings >= 3)
        palette.ToggleLock(docs[2]);
    const std::size_t active = docs.size() > 1 ? 1 : 0;
    host.Activate(docs[active]);
    host.Modify(docs[active]);
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
    const bool folded = std::any_of(palette.m_items.begin(), palette.m_items.end(),
                                    [](const auto& item) { return item->bClipped; });
    HostWindow* bar = palette.IsHorizontal() ? palette.m_horzScroll : palette.m_vertScroll;
    // Five drawings fit some sides and not others.
    if (c.scroll || c.drawings != 5) {
        EXPECT_EQ(folded, !c.scroll && c.drawings == 40);
    }
    if (c.drawings != 5) {
        EXPECT_EQ(host.Windows().IsVisible(bar), c.scroll && c.drawings == 40);
    }
    // A scroll bar takes the edge of the dock side (top, left, right, bottom), inside the frame.
    const win::RECT b = host.Windows().RectInParent(bar),
                    p = host.Windows().RectInParent(Palette());
    const int gap[] = {b.top, b.left, p.Width() - b.right, p.Height() - b.bottom};
    EXPECT_TRUE(!host.Windows().IsVisible(bar) || gap[c.side - dock::kTop] == 1);
    // The padlocks, whole, in the read-only colour and in the host's; the edited drawing's mark
    // and frames under the active tint. Forty drawings leave some cells under others.
    const win::RECT place = Place(Palette());
    const win::COLORREF readOnly = Bar().m_clrReadOnly;
    if (c.drawings == 5) {
        EXPECT_EQ(Count(place, readOnly), kLockPixels);
        EXPECT_EQ(Count(place, kAgainstModel), Cell(2).bClipped ? 0 : kLockPixels);
    }
    if (c.drawings < 40) {
        const win::COLORREF mark = active == 1 ? Bar().m_clrModified : readOnly;
        EXPECT_EQ(Count(place, Tinted(mark, SimSystemLook::kActiveCaption, kActiveTintAlpha)),
                  active == 1 ? kModifiedPixels : kLockPixels);
        EXPECT_GT(
            Count(Cell(active).rcItem.Offset(place.left, place.top), SimSystemLook::kActiveCaption),
            0);
    }
    if (c.scroll && c.drawings == 40) {
        // The far arrow: a column goes on by a picture, a row back (so not before its start).
        Press(bar, host.Windows().PartsOf(bar).lineDown);
        const int line = palette.IsHorizontal() ? 0 : palette.GetCellSize(nullptr).cy;
        EXPECT_EQ(palette.m_nScrollPos, line);
        EXPECT_EQ(host.Windows().GetScrollInfo(bar).pos, line);
        // Another control's scroll is none of the palette's.
        host.Windows().Send(Palette(), wm::kVScroll, sb::kPageDown, 0);
        EXPECT_EQ(palette.m_nScrollPos, line);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Sides, PalettePictures,
    ::testing::Values(
        PaletteCase{dock::kTop, 1, false}, PaletteCase{dock::kTop, 5, false},
        PaletteCase{dock::kTop, 40, false, kNamesBelow, "palette-top-forty-folding.png"},
        PaletteCase{dock::kTop, 1, true}, PaletteCase{dock::kTop, 5, true},
        PaletteCase{dock::kTop, 40, true}, PaletteCase{dock::kBottom, 1, false},
        PaletteCase{dock::kBottom, 5, false}, PaletteCase{dock::kBottom, 40, false},
        PaletteCase{dock::kBottom, 1, true}, PaletteCase{dock::kBottom, 5, true},
        PaletteCase{dock::kBottom, 40, true}, PaletteCase{dock::kLeft, 1, false},
        PaletteCase{dock::kLeft, 5, false}, PaletteCase{dock::kLeft, 40, false},
        PaletteCase{dock::kLeft, 1, true}, PaletteCase{dock::kLeft, 5, true},
        PaletteCase{dock::kLeft, 40, true, kNamesBelow, "palette-left-forty-scrolling.png"},
        PaletteCase{dock::kRight, 1, false, kNamesBelow, "palette-right-one.png"},
        PaletteCase{dock::kRight, 5, false}, PaletteCase{dock::kRight, 40, false},
        PaletteCase{dock::kRight, 1, true}, PaletteCase{dock::kRight, 5, true},
        PaletteCase{dock::kRight, 40, true}, PaletteCase{dock::kTop, 5, false, kNamesAbove},
        PaletteCase{dock::kTop, 5, false, kNoNames},
        PaletteCase{dock::kLeft, 5, false, kNamesAbove},
        PaletteCase{dock::kLeft, 5, false, kNoNames}));

TEST_F(PaletteSession, AFoldedCellUnfoldsUnlessControlIsHeldWhichSwitchesToIt) {
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
