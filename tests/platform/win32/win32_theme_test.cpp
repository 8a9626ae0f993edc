// The theme port over the system's styles library: whatever the system answers, the tab strip
// paints, themed where styles are on and classic where they are off, and leaks nothing.

#include <gtest/gtest.h>

#include <cstdio>

#include "gdi_test_support.h"
#include "platform/sim/canvas/software_canvas.h"
#include "platform/win32/gdi_canvas.h"
#include "platform/win32/win32_theme.h"
#include "ports/port.h"
#include "support/png_writer.h"
#include "support/test_files.h"
#include "views/tab_painter.h"

TEST(Win32Theme, AnswersNoThemeGracefullyOrPaintsTheStripThemed) {
    constexpr int kWidth = 240;
    constexpr int kHeight = 80;
    std::unique_ptr<GdiCanvas> canvas = GdiCanvas::Create(kWidth, kHeight);
    ASSERT_NE(canvas, nullptr);
    const TestFace face;
    ASSERT_EQ(face.Problem(), "");
    TabStrip strip{.client = {0, 0, kWidth, kHeight},
                   .displayArea = {4, 26, kWidth - 4, kHeight - 4},
                   .tabs = {{{2, 2, 80, 22}, L"* Drawing1"},
                            {{80, 2, 150, 22}, L"Drawing2"},
                            {{150, 2, 236, 22}, L"[R]- Drawing3"}},
                   .selected = 2,
                   .hot = 1,
                   .font = face.Font(-11),
                   .colors = {0x00C8D0D4, 0, 0x00808080, 0x00FFFFFF, 0x006A240A}};
    TabPainter painter;
    auto save = [&](const wchar_t* name) {
        const std::vector<std::uint8_t> pixels = PixelsOf(*canvas);
        EXPECT_TRUE(SavePng(BesideProgram(name), pixels.data(), kWidth, kHeight, kWidth * 3));
        return pixels;
    };

    Win32Theme missing(L"no-such-styles-library.dll");
    EXPECT_FALSE(missing.IsActive());
    EXPECT_EQ(missing.Open(L"TAB"), nullptr);
    {
        const ScopedPort<Theme> none(missing);
        EXPECT_FALSE(painter.Paint(*canvas, strip));
        EXPECT_EQ(CoverageBox(save(L"tabs-win32-classic.png"), kWidth, strip.displayArea,
                              strip.colors.btnFace),
                  (win::RECT{}));
    }

    Win32Theme theme;
    const ScopedPort<Theme> port(theme);
    const bool active = theme.IsActive();
    std::printf("visual styles: %s\n", active ? "active" : "off");
    EXPECT_EQ(painter.Paint(*canvas, strip), active);
    // The first paint leaves the system's caches behind; later ones must leave nothing.
    const int objects = LiveGdiObjects();
    for (int i = 0; i < 5; ++i)
        painter.Paint(*canvas, strip);
    EXPECT_EQ(LiveGdiObjects(), objects);
    const std::vector<std::uint8_t> pixels = save(L"tabs-win32.png");
    if (!active)
        return;
    // The selected tab is tinted with the caption's blue, and so bluer than the first tab.
    auto blue = [&](const TabRecord& tab) {
        const std::size_t at = (12 * kWidth + tab.rect.left + 3) * 3;
        return pixels[at + 2] - pixels[at];
    };
    EXPECT_GT(blue(strip.tabs[2]), blue(strip.tabs[0]) + 15);
    // A canvas that is not the window system's gets nothing drawn.
    SoftwareCanvas other(4, 4);
    EXPECT_FALSE(theme.Open(L"TAB")->DrawBackground(other, tab_theme::kPane, 0, {0, 0, 4, 4}));
}
