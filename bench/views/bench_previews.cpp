// Renewing the thumbnails of 40 open drawings whose views are 1920 by 1080, as the palette does
// after a change of its cells' size: each drawing activated, grabbed, reduced and adjusted. The
// baseline in the same run is a memcpy of the 40 grabs. The host's pictures are painted once
// beforehand, so the time is the palette's and not the simulated painting's.

#include <benchmark/benchmark.h>

#include <cstring>
#include <filesystem>
#include <map>
#include <vector>

#include "against_baseline.h"
#include "platform/sim/canvas/software_canvas.h"
#include "platform/sim/sim_file_system.h"
#include "platform/sim/sim_host.h"
#include "settings/tabrow_settings.h"
#include "views/dwg_palette.h"

namespace {

constexpr int kDrawings = 40;
constexpr win::RECT kView{0, 0, 1920, 1080};

// A screen shot read where the host keeps it.
class HeldScreenShot : public HostScreenShot {
public:
    explicit HeldScreenShot(const HostScreenShot& shot) : m_shot(shot) {}
    int Width() const override { return m_shot.Width(); }
    int Height() const override { return m_shot.Height(); }
    const std::uint8_t* Pixels() const override { return m_shot.Pixels(); }
    std::size_t Stride() const override { return m_shot.Stride(); }

private:
    const HostScreenShot& m_shot;
};

// The graphics system of a host whose screen shows each drawing's view as painted once; a copy
// of the window is a copy of that picture, as a blit of the screen would be.
class PaintedScreen : public HostGraphics {
public:
    PaintedScreen(SimHost& host, bool windowGrab) : m_host(host), m_bWindowGrab(windowGrab) {
        for (HostDocument* doc : host.Documents()) {
            host.Activate(doc);
            host.Windows().Move(host.Document(doc).view, kView, false);
            m_shots[doc] = host.Graphics().ScreenShot(0);
            m_pictures[doc] = host.Windows().Window(host.Document(doc).view).picture;
        }
    }
    const HostScreenShot& Shot(HostDocument* doc) { return *m_shots.at(doc); }
    const std::vector<std::uint8_t>& Picture(HostDocument* doc) { return m_pictures.at(doc); }

    bool HasGsView(int) override { return m_bWindowGrab; }
    std::vector<int> ViewportVisualStyles() override { return {}; }
    std::unique_ptr<HostScreenShot> ScreenShot(int) override {
        return std::make_unique<HeldScreenShot>(Shot(m_host.MdiActiveDocument()));
    }
    std::unique_ptr<Canvas> CopyClientArea(HostWindow*) override {
        auto bitmap = std::make_unique<SoftwareCanvas>(kView.Width(), kView.Height());
        bitmap->BlitRgb(Picture(m_host.MdiActiveDocument()).data(), kView.Width(),
                        kView.Height(), kView.Width() * 3, 0, 0);
        return bitmap;
    }
    HostDrawingColors CurrentColors() override { return {0x000000, 0xFFFFFF}; }

private:
    SimHost& m_host;
    bool m_bWindowGrab;
    std::map<HostDocument*, std::unique_ptr<HostScreenShot>> m_shots;
    std::map<HostDocument*, std::vector<std::uint8_t>> m_pictures;  // red, green, blue
};

// Arg 0: through the graphics system's screen shot; 1: through a copy of the view window.
void BM_RenewFortyThumbnails(benchmark::State& state) {
    // New drawings never touch the disk; the host only wants one to stand behind it.
    SimFileSystem files(std::filesystem::temp_directory_path().wstring() + L"/");
    ScopedPort<FileSystem> filesPort(files);
    SimHost host;
    for (int i = 0; i < kDrawings; ++i)
        host.NewDrawing();
    PaintedScreen screen(host, state.range(0) != 0);
    ScopedPort<HostGraphics> graphicsPort(screen);
    TabrowSettings settings;
    HvDwgPalette palette(settings);
    for (HostDocument* doc : host.Documents())
        palette.AddDocument(doc);
    palette.m_nThumbExtent = 178;
    palette.m_dAspect = double(kView.Width()) / kView.Height();
    palette.UpdateColors();

    const std::size_t grabBytes = static_cast<std::size_t>(kView.Width()) * kView.Height() * 3;
    std::vector<std::uint8_t> copies(grabBytes);
    TimeAgainstBaseline(
        state, "memcpy",
        [&] {
            for (HostDocument* doc : host.Documents()) {
                std::memcpy(copies.data(), screen.Picture(doc).data(), grabBytes);
                benchmark::ClobberMemory();
            }
        },
        "renew",
        [&] {
            for (auto& item : palette.m_items)
                item->bDirty = true;
            palette.RefreshPreviews();
            benchmark::DoNotOptimize(palette.m_items.back()->hImage.data());
        });
}
BENCHMARK(BM_RenewFortyThumbnails)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
