// Pictures of the tab strip on its four sides, with the theme and without, and of the empty
// bar. Each is saved as a PNG beside the test program and checked by the pixels that tell
// states, sides and turns apart.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "platform/sim/canvas/sim_theme.h"
#include "platform/sim/canvas/software_canvas.h"
#include "ports/port.h"
#include "ports/tab_control.h"
#include "settings/tabrow_settings.h"
#include "support/png_writer.h"
#include "support/test_files.h"
#include "views/empty_bar_painter.h"
#include "views/image_ops.h"
#include "views/tab_painter.h"
#include "views_test_support.h"

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

win::COLORREF Tinted(win::COLORREF under, unsigned alpha) {
    auto mix = [&](int s) {
        return static_cast<std::uint8_t>(
            ((kColors.activeCaption >> s & 0xFF) * alpha + (under >> s & 0xFF) * (255 - alpha)) >>
            8);
    };
    return win::MakeColor(mix(0), mix(8), mix(16));
}

bool Vertical(int side) {
    return side == kTabLeft || side == kTabRight;
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
    TabStrip strip{.client = {0, 0, kSize, kSize},
                   .style = kStyles[side] | tcs::kMultiLine,
                   .selected = count - 1,
                   .hot = count >= 3 ? 1 : -1,
                   .colors = kColors};
    strip.font.lfHeight = -11;
    for (int i = 0, along = 2; i < count; ++i) {
        const std::wstring text =
            i == 0 ? L"x   Drawing" : (i % 2 ? L"* Plan" : L"[R]- Sec") + std::to_wstring(i);
        const int length = 12 + 7 * static_cast<int>(text.size());
        if (along + length > kSize - 2) {
            along = 2;
            ++strip.rows;
        }
        const int across = 2 + (strip.rows - 1) * kRow;  // from the strip's outer edge
        const int a = side == kTabBottom || side == kTabRight ? kSize - across - kRow : across;
        strip.tabs.push_back({Vertical(side) ? win::RECT{a, along, a + kRow, along + length}
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
    return strip;
}

// The pixel `depth` in from the outer edge of a rectangle on `side`, halfway along it.
win::COLORREF FromOuterEdge(const SoftwareCanvas& canvas, const win::RECT& r, int side, int depth) {
    const int midX = (r.left + r.right) / 2;
    const int midY = (r.top + r.bottom) / 2;
    const win::POINT at[] = {{midX, r.top + depth},
                             {midX, r.bottom - 1 - depth},
                             {r.left + depth, midY},
                             {r.right - 1 - depth, midY}};
    return canvas.PixelAt(at[side].x, at[side].y);
}

// Whether the text of the rectangle starts (its short first word) at the low end of the axis
// along the strip: left for a horizontal strip, top for a vertical one.
bool TextStartsLow(const SoftwareCanvas& canvas, const win::RECT& r, bool vertical) {
    std::vector<int> ink;
    for (int a = 0; a < (vertical ? r.Height() : r.Width()); ++a) {
        bool any = false;
        for (int b = 0; b < (vertical ? r.Width() : r.Height()); ++b)
            any = any || (vertical ? canvas.PixelAt(r.left + b, r.top + a)
                                   : canvas.PixelAt(r.left + a, r.top + b)) == kColors.btnText;
        if (any)
            ink.push_back(a);
    }
    std::size_t gap = 1;
    for (std::size_t i = 1; i < ink.size(); ++i)
        gap = ink[i] - ink[i - 1] > ink[gap] - ink[gap - 1] ? i : gap;
    return ink.size() > 1 && gap < ink.size() - gap;
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
    EXPECT_EQ(canvas.PixelAt((area.left + area.right) / 2, (area.top + area.bottom) / 2),
              themed ? SimTheme::kPaneFill : kColors.btnFace);
    if (!themed) {
        const std::vector<std::uint8_t>& all = canvas.Pixels();
        for (std::size_t i = 0; i < all.size(); i += 3)
            ASSERT_NE(win::MakeColor(all[i], all[i + 1], all[i + 2]), SimTheme::kBorder);
    }
    if (count == 0)
        return;
    // The short first word: at the top where the face turns clockwise (the plain right side),
    // at the bottom where it turns anticlockwise (the left side, and every themed side).
    if (count > 1) {
        EXPECT_EQ(TextStartsLow(canvas, strip.tabs[0].rect, Vertical(side)),
                  !Vertical(side) || (!themed && side == kTabRight));
    }
    const win::RECT& chosen = strip.tabs.back().rect;
    if (!themed) {
        // The plain strip's face highlights the selected tab: tinted, framed twice.
        painter.DrawItem(canvas, strip, strip.selected, chosen, {true});
        EXPECT_EQ(canvas.PixelAt(chosen.left + 1, chosen.top + 1), kColors.activeCaption);
        EXPECT_EQ(FromOuterEdge(canvas, chosen, side, 2), Tinted(kColors.btnFace, 68));
        return;
    }
    const std::pair<int, win::COLORREF> tabs[] = {
        {count - 1, Tinted(SimTheme::kSelectedAccent, kActiveTintAlpha)},
        {count > 1 ? 0 : -1, SimTheme::kNormalAccent},
        {strip.hot, SimTheme::kHotAccent}};
    for (const auto& [index, accent] : tabs) {
        const int out = index == strip.selected ? 2 : 0;
        // With several rows, the limit that keeps a selected tab off the page's lower frame
        // leaves nothing of it on the bottom side, where the page lies above the tabs.
        if (index < 0 || (out != 0 && side == kTabBottom && strip.rows > 1))
            continue;
        const win::RECT& r = strip.tabs[static_cast<std::size_t>(index)].rect;
        const win::RECT drawn{r.left - out, r.top - out, r.right + out, r.bottom + out};
        EXPECT_EQ(FromOuterEdge(canvas, drawn, side, 2), accent) << index;
    }
}

constexpr PaintCase kCases[] = {
    {kTabTop, true, 0},     {kTabTop, true, 1},     {kTabTop, true, 5},    {kTabTop, true, 14},
    {kTabTop, false, 5},    {kTabTop, false, 14},   {kTabBottom, true, 0}, {kTabBottom, true, 5},
    {kTabBottom, true, 14}, {kTabBottom, false, 5}, {kTabLeft, true, 1},   {kTabLeft, true, 5},
    {kTabLeft, true, 14},   {kTabLeft, false, 0},   {kTabLeft, false, 5},  {kTabRight, true, 5},
    {kTabRight, true, 14},  {kTabRight, false, 5},  {kTabRight, false, 14}};

INSTANTIATE_TEST_SUITE_P(Table, TabPictures, ::testing::ValuesIn(kCases));

// The bounding box of the pixels that differ from `background`, `margin` in from the canvas's
// edges, as RGB rows; `width` receives the box's width.
std::vector<std::uint8_t> Ink(SoftwareCanvas& canvas, win::COLORREF background, int margin,
                              int& width) {
    win::RECT box{canvas.Width(), canvas.Height(), 0, 0};
    for (int y = margin; y < canvas.Height() - margin; ++y)
        for (int x = margin; x < canvas.Width() - margin; ++x)
            if (canvas.PixelAt(x, y) != background)
                box = {std::min<int>(box.left, x), std::min<int>(box.top, y),
                       std::max<int>(box.right, x + 1), std::max<int>(box.bottom, y + 1)};
    width = std::max(box.Width(), 0);
    std::vector<std::uint8_t> rgb(static_cast<std::size_t>(width) * std::max(box.Height(), 0) * 3);
    canvas.ReadRgb(box.left, box.top, width, box.Height(), rgb.data());
    return rgb;
}

TEST(EmptyBarPicture, TintsTheFramedStripAndTurnsItsLineOnTheSides) {
    PictureFonts fonts;
    const ScopedPort<FontRasteriser> port(fonts);
    const struct {
        int dock;
        bool floating;
        int width, height;
        const char* name;
    } sides[] = {{dock::kTop, false, 300, 40, "top"},
                 {dock::kLeft, false, 40, 300, "left"},
                 {dock::kRight, false, 40, 300, "right"},
                 {dock::kLeft, true, 300, 40, "floating"}};
    const win::COLORREF background = Tinted(kColors.btnFace, kEmptyBarTintAlpha);
    std::vector<std::uint8_t> upright;
    int uprightWidth = 0;
    for (const auto& side : sides) {
        SoftwareCanvas canvas(side.width, side.height, &fonts);
        EmptyBar bar{{0, 0, side.width, side.height}, side.dock, side.floating, 0, {}, kColors};
        bar.font.lfHeight = -11;
        PaintEmptyBar(canvas, bar);
        Save(canvas, std::string("empty-bar-") + side.name + ".png");
        EXPECT_EQ(canvas.PixelAt(1, 1), kColors.btnFace) << side.name;  // outside the strip
        EXPECT_EQ(canvas.PixelAt(2, 2), Tinted(kColors.btnShadow, 102));
        EXPECT_EQ(canvas.PixelAt(3, 3), background) << side.name;
        int width = 0;
        std::vector<std::uint8_t> ink = Ink(canvas, background, 3, width);
        if (side.dock == dock::kTop) {
            upright = ink;
            uprightWidth = width;
            ASSERT_GT(width, 100);
            continue;
        }
        // Anticlockwise on the left, clockwise on the right; upright while floating.
        std::vector<std::uint8_t> expected = upright;
        const int uprightHeight = static_cast<int>(upright.size()) / 3 / uprightWidth;
        if (!side.floating)
            IS40_QuickRotateImageInPlace(expected.data(), uprightWidth, uprightHeight,
                                         side.dock == dock::kLeft ? 2 : 0, 3, 0);
        EXPECT_EQ(ink, expected) << side.name;
        EXPECT_EQ(width, side.floating ? uprightWidth : uprightHeight);

        bar.documentCount = 1;
        PaintEmptyBar(canvas, bar);
        EXPECT_EQ(Ink(canvas, kColors.btnFace, 0, width).size(), 0u) << side.name;
    }
}

}  // namespace
