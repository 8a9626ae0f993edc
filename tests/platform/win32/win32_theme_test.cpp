// The theme port over the system's styles library: whatever the system answers, the tab strip
// paints, themed where styles are on and classic where they are off, and leaks nothing.

#include <gtest/gtest.h>

#include <cstdio>

#include "gdi_test_support.h"
#include "platform/sim/canvas/software_canvas.h"
#include "platform/win32/gdi_canvas.h"
#include "platform/win32/win32_theme.h"
#include "ports/port.h"
#include "ports/tab_control.h"
#include "support/png_writer.h"
#include "views/tab_painter.h"

TEST(Win32Theme, AnswersNoThemeGracefullyOrDrawsTheTabParts) {
    Win32Theme missing(L"no-such-styles-library.dll");
    EXPECT_FALSE(missing.IsActive());
    EXPECT_EQ(missing.Open(L"TAB"), nullptr);

    Win32Theme theme;
    const ScopedPort<Theme> port(theme);
    const bool active = theme.IsActive();
    std::printf("visual styles: %s\n", active ? "active" : "off");
    constexpr int kWidth = 240;
    constexpr int kHeight = 80;
    std::unique_ptr<GdiCanvas> canvas = GdiCanvas::Create(kWidth, kHeight);
    ASSERT_NE(canvas, nullptr);
    if (std::unique_ptr<ThemeData> data = theme.Open(L"TAB")) {
        constexpr win::COLORREF kMagenta = 0x00FF00FF;
        canvas->FillRect({0, 0, kWidth, kHeight}, kMagenta);
        EXPECT_TRUE(data->DrawBackground(*canvas, tab_theme::kTabItem, tab_theme::kStateSelected,
                                         {0, 0, 60, 24}));
        EXPECT_EQ(CoverageBox(PixelsOf(*canvas), kWidth, {0, 0, kWidth, kHeight}, kMagenta),
                  (win::RECT{0, 0, 60, 24}));
        SoftwareCanvas software(10, 10);
        EXPECT_FALSE(data->DrawBackground(software, tab_theme::kPane, 0, {0, 0, 10, 10}));
    } else {
        EXPECT_FALSE(active);
    }

    TabStrip strip;
    strip.client = {0, 0, kWidth, kHeight};
    strip.displayArea = {4, 26, kWidth - 4, kHeight - 4};
    strip.style = tcs::kMultiLine | tcs::kHotTrack;
    strip.tabs = {{{2, 2, 80, 22}, L"* Drawing1"}, {{80, 2, 150, 22}, L"Drawing2"},
                  {{150, 2, 236, 22}, L"[R]- Drawing3"}};
    strip.selected = 2;
    strip.hot = 1;
    strip.font = FontOf(L"Tahoma", -11);
    strip.colors = {0x00C8D0D4, 0, 0x00808080, 0x00FFFFFF, 0x006A240A};
    TabPainter painter;
    // The first paint leaves the system's caches (fonts, the library's own) behind; later
    // paints must leave nothing.
    EXPECT_EQ(painter.Paint(*canvas, strip), active);
    const int objects = LiveGdiObjects();
    for (int i = 0; i < 5; ++i)
        painter.Paint(*canvas, strip);
    EXPECT_EQ(LiveGdiObjects(), objects);
    {
        // Without the library the same painter draws the classic strip.
        const ScopedPort<Theme> none(missing);
        EXPECT_FALSE(painter.Paint(*canvas, strip));
        const std::vector<std::uint8_t> classic = PixelsOf(*canvas);
        EXPECT_TRUE(SavePng(BesideProgram(L"tabs-win32-classic.png"), classic.data(), kWidth,
                            kHeight, kWidth * 3));
        EXPECT_EQ(CoverageBox(classic, kWidth, strip.displayArea, strip.colors.btnFace),
                  (win::RECT{}));
    }
    painter.Paint(*canvas, strip);
    const std::vector<std::uint8_t> pixels = PixelsOf(*canvas);
    EXPECT_TRUE(SavePng(BesideProgram(L"tabs-win32.png"), pixels.data(), kWidth, kHeight,
                        kWidth * 3));
    // The selected tab is tinted with the caption's blue; the first tab is not.
    auto blueOverRed = [&](const win::RECT& r) {
        double sum = 0;
        for (int y = r.top; y < r.bottom; ++y)
            for (int x = r.left; x < r.right; ++x)
                sum += pixels[(y * kWidth + x) * 3 + 2] - pixels[(y * kWidth + x) * 3];
        return sum / (r.Width() * r.Height());
    };
    EXPECT_GT(blueOverRed(strip.tabs[2].rect), blueOverRed(strip.tabs[0].rect) + 15);
}
