// Pictures of the tab strip on its four sides, with the theme and without, and of the empty
// bar. Each is saved as a PNG beside the test program and checked by the pixels that tell
// states, sides and turns apart.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>

#include "platform/sim/canvas/sim_theme.h"
#include "platform/sim/canvas/software_canvas.h"
#include "ports/port.h"
#include "ports/tab_control.h"
#include "settings/tabrow_settings.h"
#include "support/png_writer.h"
#include "views/empty_bar_painter.h"
#include "views/tab_painter.h"
#include "views_test_support.h"

#ifdef _WIN32
#include <windows.h>
#endif

#ifdef TABROW_HAS_FREETYPE
#include "platform/sim/canvas/freetype_font_rasteriser.h"
using PictureFonts = FreeTypeFontRasteriser;
#else
using PictureFonts = BoxFontRasteriser;
#endif

namespace {

constexpr PaintColors kColors{0x00C8D0D4, 0x00000000, 0x00808080, 0x00FFFFFF, 0x006A240A};
constexpr int kRow = 20;  // a tab's thickness
constexpr int kSize = 260;

win::COLORREF Tinted(win::COLORREF under, win::COLORREF color, unsigned alpha) {
    auto mix = [&](int shift) {
        return static_cast<std::uint8_t>(
            (((color >> shift) & 0xFF) * alpha + ((under >> shift) & 0xFF) * (255 - alpha)) >> 8);
    };
    return win::MakeColor(mix(0), mix(8), mix(16));
}

bool Vertical(int side) { return side == kTabLeft || side == kTabRight; }

std::filesystem::path BesideProgram(const std::string& name) {
#ifdef _WIN32
    wchar_t path[MAX_PATH] = {};
    ::GetModuleFileNameW(nullptr, path, MAX_PATH);
    const std::filesystem::path program(path);
#else
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
#endif
    return program.parent_path() / name;
}

void Save(const SoftwareCanvas& canvas, const std::string& name) {
    EXPECT_TRUE(SavePng(BesideProgram(name), canvas.Pixels().data(), canvas.Width(),
                        canvas.Height(), canvas.Width() * 3));
}

// Tabs laid along the strip, 12 + 7 pixels a character long, wrapping into rows; tab 0 reads
// "x", a wide gap, then a name, so that the gap shows which way its text runs.
TabStrip MakeStrip(int side, int count) {
    static const unsigned kStyles[] = {0, tcs::kBottom, tcs::kVertical,
                                       tcs::kVertical | tcs::kRight};
    TabStrip strip;
    strip.client = {0, 0, kSize, kSize};
    strip.style = kStyles[side] | tcs::kMultiLine;
    strip.font.lfHeight = -11;
    strip.colors = kColors;
    int along = 2;
    strip.rows = 1;
    for (int i = 0; i < count; ++i) {
        const std::wstring text = i == 0 ? L"x   Drawing" : (i % 2 ? L"* Plan" : L"[R]- Sec") +
                                                                 std::to_wstring(i);
        const int length = 12 + 7 * static_cast<int>(text.size());
        if (along + length > kSize - 2) {
            along = 2;
            ++strip.rows;
        }
        const int across = 2 + (strip.rows - 1) * kRow;  // from the strip's outer edge
        const int a = side == kTabBottom || side == kTabRight ? kSize - across - kRow : across;
        strip.tabs.push_back(
            {Vertical(side) ? win::RECT{a, along, a + kRow, along + length}
                            : win::RECT{along, a, along + length, a + kRow},
             text});
        along += length;
    }
    const int band = 4 + strip.rows * kRow;
    const win::RECT areas[] = {{4, band, kSize - 4, kSize - 4},
                               {4, 4, kSize - 4, kSize - band},
                               {band, 4, kSize - 4, kSize - 4},
                               {4, 4, kSize - band, kSize - 4}};
    strip.displayArea = areas[side];
    strip.selected = count - 1;
    strip.hot = count >= 3 ? 1 : -1;
    return strip;
}

// The pixel `depth` in from the outer edge of a rectangle, halfway along it.
win::COLORREF FromOuterEdge(const SoftwareCanvas& canvas, const win::RECT& r, int side, int depth) {
    const int midX = (r.left + r.right) / 2;
    const int midY = (r.top + r.bottom) / 2;
    switch (side) {
    case kTabTop:
        return canvas.PixelAt(midX, r.top + depth);
    case kTabBottom:
        return canvas.PixelAt(midX, r.bottom - 1 - depth);
    case kTabLeft:
        return canvas.PixelAt(r.left + depth, midY);
    default:
        return canvas.PixelAt(r.right - 1 - depth, midY);
    }
}

// Whether the text of the rectangle starts (its short first word) at the low end of the axis
// along the strip: left for a horizontal strip, top for a vertical one.
bool TextStartsLow(const SoftwareCanvas& canvas, const win::RECT& r, bool vertical) {
    std::vector<int> ink;
    const int length = vertical ? r.Height() : r.Width();
    for (int a = 0; a < length; ++a) {
        bool any = false;
        for (int b = 0; b < (vertical ? r.Width() : r.Height()); ++b)
            any = any || (vertical ? canvas.PixelAt(r.left + b, r.top + a)
                                   : canvas.PixelAt(r.left + a, r.top + b)) == kColors.btnText;
        if (any)
            ink.push_back(a);
    }
    if (ink.size() < 2)
        return false;
    std::size_t gap = 1;
    for (std::size_t i = 1; i < ink.size(); ++i)
        gap = ink[i] - ink[i - 1] > ink[gap] - ink[gap - 1] ? i : gap;
    return gap < ink.size() - gap;
}

struct PaintCase {
    int side;
    bool themed;
    int count;
};

class TabPictures : public ::testing::TestWithParam<PaintCase> {
protected:
    PictureFonts m_fonts;
    ScopedPort<FontRasteriser> m_fontPort{m_fonts};
    SimTheme m_theme;
    ScopedPort<Theme> m_themePort{m_theme};
};

TEST_P(TabPictures, ShowStatesSidesAndTurns) {
    const auto [side, themed, count] = GetParam();
    const TabStrip strip = MakeStrip(side, count);
    SoftwareCanvas canvas(kSize, kSize, &m_fonts);
    TabPainter painter;
    EXPECT_TRUE(painter.Paint(canvas, strip));
    if (!themed) {
        // Turned off while running: the same painter falls back at its next paint.
        m_theme.SetActive(false);
        EXPECT_FALSE(painter.Paint(canvas, strip));
    }
    Save(canvas, "tabs-" + std::to_string(side) + (themed ? "-theme-" : "-plain-") +
                     std::to_string(count) + ".png");

    const win::RECT& area = strip.displayArea;
    const win::COLORREF middle = canvas.PixelAt((area.left + area.right) / 2, area.top + 4);
    EXPECT_EQ(middle, themed ? SimTheme::kPaneFill : kColors.btnFace);
    if (!themed) {
        const std::vector<std::uint8_t>& all = canvas.Pixels();
        for (std::size_t i = 0; i < all.size(); i += 3)
            ASSERT_NE(win::MakeColor(all[i], all[i + 1], all[i + 2]), SimTheme::kBorder);
    }
    if (count == 0)
        return;
    const win::RECT first = strip.tabs[0].rect;
    // The short first word: at the top where the face turns clockwise (the plain right side),
    // at the bottom where it turns anticlockwise (the left side, and every themed side).
    if (count > 1) {
        EXPECT_EQ(TextStartsLow(canvas, first, Vertical(side)),
                  !Vertical(side) || (!themed && side == kTabRight));
    }
    if (!themed)
        return;
    struct Expected {
        int index;
        win::COLORREF accent;
    };
    std::vector<Expected> tabs;
    // With several rows, the limit that keeps a selected tab off the page's lower frame leaves
    // nothing of it on the bottom side, where the page lies above the tabs.
    if (side != kTabBottom || strip.rows == 1)
        tabs.push_back({count - 1, Tinted(SimTheme::kSelectedAccent, kColors.activeCaption,
                                          kActiveTintAlpha)});
    if (count > 1)
        tabs.push_back({0, SimTheme::kNormalAccent});
    if (strip.hot >= 0)
        tabs.push_back({strip.hot, SimTheme::kHotAccent});
    for (const Expected& tab : tabs) {
        const int out = tab.index == strip.selected ? 2 : 0;
        const win::RECT& r = strip.tabs[static_cast<std::size_t>(tab.index)].rect;
        const win::RECT drawn{r.left - out, r.top - out, r.right + out, r.bottom + out};
        EXPECT_EQ(FromOuterEdge(canvas, drawn, side, 2), tab.accent) << tab.index;
    }
}

constexpr PaintCase kCases[] = {
    {kTabTop, true, 0},    {kTabTop, true, 1},    {kTabTop, true, 5},    {kTabTop, true, 14},
    {kTabTop, false, 5},   {kTabTop, false, 14},  {kTabBottom, true, 0}, {kTabBottom, true, 5},
    {kTabBottom, true, 14}, {kTabBottom, false, 5}, {kTabLeft, true, 1},  {kTabLeft, true, 5},
    {kTabLeft, true, 14},  {kTabLeft, false, 0},  {kTabLeft, false, 5},  {kTabRight, true, 5},
    {kTabRight, true, 14}, {kTabRight, false, 5}, {kTabRight, false, 14}};

INSTANTIATE_TEST_SUITE_P(Table, TabPictures, ::testing::ValuesIn(kCases));

// The pixels that differ from `background` inside the canvas less `margin` on every side, cut
// to their bounding box; `width` receives the box's width.
std::vector<win::COLORREF> Ink(const SoftwareCanvas& canvas, win::COLORREF background, int margin,
                               int& width) {
    win::RECT box{canvas.Width(), canvas.Height(), 0, 0};
    for (int y = margin; y < canvas.Height() - margin; ++y)
        for (int x = margin; x < canvas.Width() - margin; ++x)
            if (canvas.PixelAt(x, y) != background)
                box = {std::min<int>(box.left, x), std::min<int>(box.top, y),
                       std::max<int>(box.right, x + 1), std::max<int>(box.bottom, y + 1)};
    std::vector<win::COLORREF> pixels;
    for (int y = box.top; y < box.bottom; ++y)
        for (int x = box.left; x < box.right; ++x)
            pixels.push_back(canvas.PixelAt(x, y));
    width = std::max(box.Width(), 0);
    return pixels;
}

// A quarter turn of a block `width` wide: clockwise, or anticlockwise.
std::vector<win::COLORREF> Turned(const std::vector<win::COLORREF>& in, int width, bool clockwise) {
    const int height = width == 0 ? 0 : static_cast<int>(in.size()) / width;
    std::vector<win::COLORREF> out(in.size());
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const int column = clockwise ? height - 1 - y : y;
            const int row = clockwise ? x : width - 1 - x;
            out[static_cast<std::size_t>(row * height + column)] = in[y * width + x];
        }
    return out;
}

TEST(EmptyBarPicture, TintsTheFramedStripAndTurnsItsLineOnTheSides) {
    PictureFonts fonts;
    const ScopedPort<FontRasteriser> port(fonts);
    struct Side {
        int dock;
        bool floating;
        int width;
        int height;
        const char* name;
    };
    const Side sides[] = {{dock::kTop, false, 300, 40, "top"},
                          {dock::kLeft, false, 40, 300, "left"},
                          {dock::kRight, false, 40, 300, "right"},
                          {dock::kLeft, true, 300, 40, "floating"}};
    const win::COLORREF background = Tinted(kColors.btnFace, kColors.activeCaption, 102);
    std::vector<win::COLORREF> upright;
    int uprightWidth = 0;
    for (const Side& side : sides) {
        SoftwareCanvas canvas(side.width, side.height, &fonts);
        EmptyBar bar{{0, 0, side.width, side.height}, side.dock, side.floating, 0, {}, kColors};
        bar.font.lfHeight = -11;
        PaintEmptyBar(canvas, bar);
        Save(canvas, std::string("empty-bar-") + side.name + ".png");
        EXPECT_EQ(canvas.PixelAt(1, 1), kColors.btnFace) << side.name;  // outside the strip
        EXPECT_EQ(canvas.PixelAt(2, 2), Tinted(kColors.btnShadow, kColors.activeCaption, 102));
        EXPECT_EQ(canvas.PixelAt(3, 3), background) << side.name;
        int width = 0;
        const std::vector<win::COLORREF> ink = Ink(canvas, background, 3, width);
        if (side.dock == dock::kTop) {
            upright = ink;
            uprightWidth = width;
            ASSERT_GT(width, 100);
            continue;
        }
        // Anticlockwise on the left, clockwise on the right; upright while floating.
        const bool turned = !side.floating;
        EXPECT_EQ(ink, turned ? Turned(upright, uprightWidth, side.dock == dock::kRight) : upright)
            << side.name;
        EXPECT_EQ(width, turned ? static_cast<int>(upright.size()) / uprightWidth : uprightWidth);

        bar.documentCount = 1;
        PaintEmptyBar(canvas, bar);
        EXPECT_EQ(Ink(canvas, kColors.btnFace, 0, width).size(), 0u) << side.name;
    }
}

}  // namespace
