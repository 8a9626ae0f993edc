// Painting the palette in preview mode: forty cells in a column, each with its thumbnail and
// its name strip, some read-only, modified or locked, one active, into the software canvas.
// The baseline, in the same run, is a plain fill of the same area on the same canvas.

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "against_baseline.h"
#include "platform/sim/canvas/software_canvas.h"
#include "ports/port.h"
#include "views/image_ops.h"
#include "views/palette_layout.h"
#include "views/palette_painter.h"

#ifdef TABROW_HAS_FREETYPE
#include "platform/sim/canvas/freetype_font_rasteriser.h"
#endif

namespace {

constexpr int kCells = 40;

// A thumbnail of the cell's size, as a grab reduced to it would be: a dark view with lines.
DibBlock Thumbnail(int width, int height, int seed) {
    std::vector<BYTE> rgb(static_cast<std::size_t>(width) * height * 3);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            BYTE* p = &rgb[(static_cast<std::size_t>(y) * width + x) * 3];
            const bool line = (x + seed) % 17 == 0 || (y + seed) % 11 == 0;
            p[0] = line ? 0xFF : 0x26;
            p[1] = line ? 0xD0 : 0x2B;
            p[2] = line ? 0x40 : 0x30;
        }
    }
    return IS40_RGBToDIB(rgb.data(), static_cast<UINT>(width), static_cast<UINT>(height),
                         static_cast<UINT>(width * 3), 0);
}

void BM_PaintFortyCells(benchmark::State& state) {
#ifdef TABROW_HAS_FREETYPE
    FreeTypeFontRasteriser fonts;
    const ScopedPort<FontRasteriser> fontPort(fonts);
#endif
    const PaletteMetrics metrics{.horizontal = false,
                                 .thumbExtent = 160,
                                 .length = 0,
                                 .nameHeight = 16,
                                 .showName = true,
                                 .aspect = 16.0 / 9.0};
    const win::RECT client{0, 0, 162, PaletteContentLength(metrics, kCells) + 2};
    const win::RECT cells = client.Inflated(-1);
    PaletteLook look;
    look.horizontal = false;
    look.nameHeight = metrics.nameHeight;
    look.font.lfHeight = -11;
    look.colors = {0xF0F0F0, 0xF0F0F0, 0x000000, 0x0000AC, 0x058F28, 0xA0A0A0,
                   0xFFFFFF, 0xD1B499, 0x000000, 0xFFFFFF, 0xFFFFFF, 0x000000};
    const win::SIZE picture = PaletteCellSize(metrics, false);
    std::vector<DibBlock> images;
    std::vector<PaletteCell> drawings(kCells);
    for (int i = 0; i < kCells; ++i)
        images.push_back(Thumbnail(picture.cx, picture.cy, i));
    for (int i = 0; i < kCells; ++i) {
        PaletteCell& cell = drawings[static_cast<std::size_t>(i)];
        cell.name = L"level-" + std::to_wstring(i + 1) + L"-floor-plan.dwg";
        cell.image = &images[static_cast<std::size_t>(i)];
        cell.readOnly = i % 7 == 0;
        cell.modified = i % 3 == 0;
        cell.locked = i % 10 == 5;
        cell.active = i == 12;
    }
    SoftwareCanvas canvas(client.right, client.bottom);
    TimeAgainstFill(
        state, [&] { canvas.FillRect(client, look.colors.background); },
        [&] {
            canvas.Draw3dRect(client, look.colors.btnShadow, look.colors.btnHighlight);
            canvas.FillRect(cells, look.colors.background);
            PaletteCellPlacer placer(metrics, cells, kCells, kCells - 1, 0);
            for (PaletteCell& cell : drawings) {
                cell.rect = placer.Next(false);
                PaintPaletteCell(canvas, look, cell);
            }
        });
}
BENCHMARK(BM_PaintFortyCells)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
