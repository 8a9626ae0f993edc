// Painting the bar in tab mode: 50 drawings in three rows on a top strip, with the theme and
// without, into the software canvas. The baseline, in the same run, is a plain fill of the
// same rectangle on the same canvas.

#include <benchmark/benchmark.h>

#include <string>

#include "platform/sim/canvas/sim_theme.h"
#include "platform/sim/canvas/software_canvas.h"
#include "ports/port.h"
#include "ports/tab_control.h"
#include "views/tab_painter.h"
#include "against_baseline.h"

#ifdef TABROW_HAS_FREETYPE
#include "platform/sim/canvas/freetype_font_rasteriser.h"
#endif

namespace {

constexpr int kTabs = 50;
constexpr int kPerRow = 17;
constexpr int kTabLength = 70;
constexpr int kRow = 20;

// A top strip as wide as 17 tabs, with a page of a few lines under the three rows.
TabStrip FiftyTabs() {
    TabStrip strip;
    const int rows = (kTabs + kPerRow - 1) / kPerRow;
    strip.client = {0, 0, kPerRow * kTabLength + 4, rows * kRow + 12};
    strip.displayArea = {4, rows * kRow + 4, strip.client.right - 4, strip.client.bottom - 4};
    strip.style = tcs::kMultiLine | tcs::kHotTrack;
    strip.rows = rows;
    strip.font.lfHeight = -11;
    strip.colors = {0x00C8D0D4, 0x00000000, 0x00808080, 0x00FFFFFF, 0x006A240A};
    for (int i = 0; i < kTabs; ++i) {
        const int left = 2 + (i % kPerRow) * kTabLength;
        const int top = 2 + (i / kPerRow) * kRow;
        strip.tabs.push_back({{left, top, left + kTabLength, top + kRow},
                              (i % 3 == 0 ? L"* Drawing" : L"Drawing") + std::to_wstring(i + 1)});
    }
    strip.selected = 20;
    strip.hot = 7;
    return strip;
}

void BM_PaintFiftyTabs(benchmark::State& state) {
#ifdef TABROW_HAS_FREETYPE
    FreeTypeFontRasteriser fonts;
    const ScopedPort<FontRasteriser> fontPort(fonts);
#endif
    SimTheme theme;
    theme.SetActive(state.range(0) != 0);
    const ScopedPort<Theme> themePort(theme);
    const TabStrip strip = FiftyTabs();
    SoftwareCanvas canvas(strip.client.right, strip.client.bottom);
    TabPainter painter;
    TimeAgainstFill(
        state, [&] { canvas.FillRect(strip.client, strip.colors.btnFace); },
        [&] { benchmark::DoNotOptimize(painter.Paint(canvas, strip)); });
    state.SetLabel(state.range(0) != 0 ? "themed" : "classic");
}
BENCHMARK(BM_PaintFiftyTabs)->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
