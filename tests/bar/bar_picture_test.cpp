// Pictures of the host's window with the bar in tab mode: every dock side, the styles on and
// off, no drawing, one and twelve. Each picture is saved beside the test program as
// screen-SIDE-theme|plain-N.png; the checks look at the pixels that tell the cases apart, and a
// few cases are compared whole with reference pictures kept in pictures/ beside this file, as
// is the bar floating in its own window with a tip.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <ostream>
#include <string>

#include "bar/document_session.h"
#include "layout/host_windows.h"
#include "layout/relayout.h"
#include "platform/sim/canvas/freetype_font_rasteriser.h"
#include "platform/sim/sim_drawing_view.h"
#include "ports/com_error.h"
#include "ports/window_messages.h"
#include "support/png_writer.h"
#include "tools/dwgthumb/png_codec.h"
#include "views/empty_bar_painter.h"

namespace {

struct PictureCase {
    int side;
    bool theme;
    int drawings;
    const char* reference = nullptr;  // in pictures/, for a whole-picture comparison
};

void PrintTo(const PictureCase& c, std::ostream* os) {
    *os << "side " << c.side << (c.theme ? ", styles on, " : ", styles off, ") << c.drawings
        << " drawings";
}

// Text may rasterise a little differently from one font library release to the next: a
// channel may be off by kChannelTolerance, and one pixel in kOutlierShare may be off by more.
constexpr int kChannelTolerance = 8;
constexpr int kOutlierShare = 200;

::testing::AssertionResult LooksLike(const SoftwareCanvas& screen, const std::string& reference,
                                     const std::string& saved) {
    const std::string path = std::string(TABROW_BAR_PICTURES) + "/" + reference;
    const std::optional<DecodedPng> expected = ReadPngFile(path);
    if (!expected || expected->width != screen.Width() || expected->height != screen.Height())
        return ::testing::AssertionFailure() << "no reference picture of the size at " << path;
    const std::vector<std::uint8_t>& actual = screen.Pixels();
    const std::vector<std::uint8_t>& want = expected->rgb;
    auto off = [&](std::size_t i) { return std::abs(actual[i] - want[i]) > kChannelTolerance; };
    std::size_t outliers = 0;
    for (std::size_t i = 0; i < actual.size(); i += 3)
        outliers += off(i) || off(i + 1) || off(i + 2) ? 1 : 0;
    if (outliers * kOutlierShare > actual.size() / 3)
        return ::testing::AssertionFailure() << outliers << " pixels of " << saved << " differ";
    return ::testing::AssertionSuccess();
}

win::COLORREF Tinted(win::COLORREF under, win::COLORREF color, std::uint8_t alpha) {
    SoftwareCanvas pixel(1, 1);
    pixel.FillRect({0, 0, 1, 1}, under);
    pixel.AlphaTint({0, 0, 1, 1}, color, alpha);
    return pixel.PixelAt(0, 0);
}

class BarPictures : public DocumentSession {
protected:
    // The bar docked at `side` in tab mode, in a frame small enough to look at whole.
    void Start(int side) {
        Store(L"DockSide", static_cast<std::uint32_t>(side));
        Store(L"TabMode", 1);
        Store(L"HideOnSingle", 0);
        host.Windows().Move(host.Windows().HostFrame(), {0, 0, 800, 480}, true);
        Load();
        RefreshHostLayout(g_hwndFrame);
    }
    void Paint(const std::string& name) {
        screen = host.Windows().PaintScreen();
        SavePng(BesideProgram(name), screen->Pixels().data(), screen->Width(), screen->Height(),
                screen->Width() * 3);
    }
    win::RECT Place(HostWindow* window) { return host.Windows().ScreenRect(window); }
    int Count(const win::RECT& area, win::COLORREF color) {
        int n = 0;
        for (int y = area.top; y < area.bottom; ++y)
            for (int x = area.left; x < area.right; ++x)
                n += screen->PixelAt(x, y) == color ? 1 : 0;
        return n;
    }
    // The bounds of the pixels of `area` that are darker than half.
    win::RECT DarkBounds(const win::RECT& area) {
        win::RECT bounds{area.right, area.bottom, area.left, area.top};
        for (int y = area.top; y < area.bottom; ++y)
            for (int x = area.left; x < area.right; ++x)
                if (win::GreenOf(screen->PixelAt(x, y)) < 0x80)
                    bounds = {std::min(bounds.left, x), std::min(bounds.top, y),
                              std::max(bounds.right, x + 1), std::max(bounds.bottom, y + 1)};
        return bounds;
    }

    FreeTypeFontRasteriser fonts;
    ScopedPort<FontRasteriser> fontsPort{fonts};
    std::unique_ptr<SoftwareCanvas> screen;
};

class BarPictureCases : public BarPictures, public ::testing::WithParamInterface<PictureCase> {};

}  // namespace

TEST_P(BarPictureCases, ShowTheBarOnItsSideInTheStylesOfTheMoment) {
    const PictureCase c = GetParam();
    Start(c.side);
    HostDocument* last = nullptr;
    for (int i = 1; i <= c.drawings; ++i)
        last = host.OpenDrawing(L"C:\\jobs\\level-" + std::to_wstring(i) + L"-floor-plan.dwg");
    if (c.drawings > 0) {
        // The pointer over the first tab makes it hot.
        const win::RECT first = Place(Tabs());
        host.Windows().SetCursorPos({first.left + 6, first.top + 6});
    }
    // The styles are on at start; turned off, the next paint is a plain one.
    Paint("screen-first.png");
    host.VisualStyles().SetActive(c.theme);
    const std::string name = "screen-" + std::to_string(c.side) +
                             (c.theme ? "-theme-" : "-plain-") + std::to_string(c.drawings) +
                             ".png";
    Paint(name);
    SCOPED_TRACE(name);
    if (c.reference != nullptr) {
        EXPECT_TRUE(LooksLike(*screen, c.reference, BesideProgram(name).string()));
    }

    const win::RECT bar = Place(Bar().GetSafeHwnd());
    ASSERT_FALSE(bar.IsEmpty());
    if (c.drawings == 0) {
        // The framed strip under the tint, and the line turned with the bar at its sides.
        const win::RECT strip{bar.left + 2, bar.top + 2, bar.right - 2, bar.bottom - 2};
        EXPECT_EQ(
            screen->PixelAt(strip.right - 2, strip.bottom - 2),
            Tinted(SimSystemLook::kBtnFace, SimSystemLook::kActiveCaption, kEmptyBarTintAlpha));
        const win::RECT text =
            DarkBounds({strip.left + 1, strip.top + 1, strip.right - 1, strip.bottom - 1});
        ASSERT_FALSE(text.IsEmpty());
        EXPECT_EQ(text.Width() > text.Height(), c.side != dock::kLeft && c.side != dock::kRight);
        EXPECT_EQ(Count(Place(host.Windows().MdiClient()), SimDrawingView::kBackground), 0);
        return;
    }
    // The tabs show, in the styles of the moment: the pane and the hot tab's accent, or the
    // classic frame's light edge and no theme colour at all.
    const win::RECT tabs = Place(Tabs());
    // A single row can leave the page no more than its frame; under several its fill shows.
    const int paneFill = Count(tabs, SimTheme::kPaneFill);
    EXPECT_TRUE(c.theme || paneFill == 0);
    EXPECT_TRUE(!c.theme || c.drawings == 1 || paneFill > 0);
    EXPECT_EQ(Count(tabs, SimTheme::kBorder) > 0, c.theme);
    EXPECT_EQ(Count(tabs, SimTheme::kHotAccent) > 0, c.theme && c.drawings > 1);
    EXPECT_GT(Count(tabs, c.theme ? SimTheme::kBorder : SimSystemLook::kBtnHighlight), 0);
    EXPECT_FALSE(DarkBounds(tabs).IsEmpty());  // the tabs' texts
    EXPECT_EQ(host.TabControl().RowCount(Tabs()) > 1, c.drawings == 12);
    // The active drawing's view shows its plan inside the drawing area, beside the bar.
    const win::RECT area = Place(host.Windows().MdiClient());
    EXPECT_GT(Count(area, SimDrawingView::kBackground), 0);
    EXPECT_GT(Count(area, SimDrawingView::kWalls), 0);
    EXPECT_EQ(Count(bar, SimDrawingView::kBackground), 0);
    EXPECT_EQ(host.MdiActiveDocument(), last);
}

INSTANTIATE_TEST_SUITE_P(
    Sides, BarPictureCases,
    ::testing::Values(
        PictureCase{dock::kTop, true, 0}, PictureCase{dock::kLeft, true, 0, "left-theme-empty.png"},
        PictureCase{dock::kRight, false, 0}, PictureCase{dock::kBottom, true, 0},
        PictureCase{dock::kCmdWndLeft, true, 0}, PictureCase{dock::kCmdWndRight, false, 0},
        PictureCase{dock::kTop, true, 1}, PictureCase{dock::kTop, false, 1},
        PictureCase{dock::kTop, true, 12, "top-theme-twelve.png"},
        PictureCase{dock::kTop, false, 12}, PictureCase{dock::kBottom, true, 12},
        PictureCase{dock::kBottom, false, 1}, PictureCase{dock::kLeft, true, 12},
        PictureCase{dock::kLeft, false, 12}, PictureCase{dock::kRight, true, 1},
        PictureCase{dock::kRight, false, 12}, PictureCase{dock::kCmdWndLeft, true, 12},
        PictureCase{dock::kCmdWndLeft, false, 1}, PictureCase{dock::kCmdWndRight, true, 1},
        PictureCase{dock::kCmdWndRight, false, 12, "command-right-plain-twelve.png"}));

TEST_F(BarPictures, AFailedCountPaintsNoBarAndSaysSoWhileTheHostPaintsOnce) {
    Start(dock::kTop);
    host.FailAutomationCall(SimAutomationCall::DocumentCount, hr::kFail, L"count refused");
    SimWindowSystem& windows = host.Windows();
    const int paints = windows.Window(Bar().GetSafeHwnd()).paints;
    const int framePaints = windows.Window(windows.HostFrame()).paints;
    Paint("screen-failed-count.png");
    EXPECT_EQ(windows.Window(Bar().GetSafeHwnd()).paints, paints);
    EXPECT_EQ(windows.Window(windows.HostFrame()).paints, framePaints + 1);
    EXPECT_NE(host.CommandLineText().find(L"Error in HvTabrow::OnPaint() - count refused\n"),
              std::wstring::npos);
}

TEST_F(BarPictures, ShowTheBarFloatingInItsOwnWindowWithATipUnderTheMouse) {
    Store(L"Floating", 1);
    Store(L"TipDelay", 100);
    for (int i = 1; i <= 3; ++i)
        host.OpenDrawing(L"C:\\jobs\\level-" + std::to_wstring(i) + L"-floor-plan.dwg");
    Start(dock::kTop);
    SimWindowSystem& windows = host.Windows();
    HostWindow* floating = Bar().FloatingWindow();
    windows.Move(floating, {200, 150, 620, 230}, true);
    win::RECT tab;
    ASSERT_TRUE(host.TabControl().ItemRect(Tabs(), 0, tab));
    windows.Mouse(wm::kMouseMove, windows.ClientToScreen(Tabs(), {tab.left + 20, tab.top + 8}));
    windows.Elapse(100);
    Paint("screen-floating-tip.png");
    EXPECT_TRUE(LooksLike(*screen, "floating-tabs-tip.png",
                          BesideProgram("screen-floating-tip.png").string()));
    // The drawing area keeps all its room; the bar's tabs and the tip show in the window.
    EXPECT_EQ(Place(Bar().GetSafeHwnd()), (win::RECT{200, 150, 620, 230}));
    EXPECT_EQ(Place(host.Windows().MdiClient()).top, SimWindowSystem::kToolbarsHeight);
    EXPECT_FALSE(DarkBounds(Place(Tabs())).IsEmpty());
    const win::RECT box = windows.ScreenRect(host.ToolTipControls().Find(Bar().m_tip)->popup);
    EXPECT_GT(Count(box, 0xE1FFFF), box.Width() * box.Height() / 2);
    EXPECT_FALSE(DarkBounds(box).IsEmpty());  // the drawing's name
}
