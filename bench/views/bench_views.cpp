// What the views do often: a thumbnail of a grabbed view, and reading the previews of many
// drawings. Each is timed against a baseline in the same run: a memcpy of the grab, and plain
// reads of the same files.

#include <benchmark/benchmark.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>
#include <vector>

#include "against_baseline.h"
#include "foundation/text_encoding.h"
#include "platform/posix/posix_file_system.h"
#include "ports/port.h"
#include "tools/dwgsamples/dwg_sample_writer.h"
#include "views/area_reduction.h"
#include "views/dwg_preview.h"
#include "views/image_ops.h"

namespace {

// A grab that looks like a drawing: a light background, lines, and noise in the low bits.
std::vector<std::uint8_t> MakeGrab(unsigned width, unsigned height) {
    std::vector<std::uint8_t> grab(static_cast<std::size_t>(width) * height * 3);
    std::mt19937 random(1);
    for (std::size_t i = 0; i < grab.size(); ++i)
        grab[i] = static_cast<std::uint8_t>(200 + (random() & 31));
    for (unsigned y = 0; y < height; y += 37)
        std::memset(grab.data() + static_cast<std::size_t>(y) * width * 3, 20, width * 3);
    return grab;
}

// The thumbnail pipeline of the palette: reduce, gamma, sharpen, DIB.
std::size_t Thumbnail(const std::vector<std::uint8_t>& grab, unsigned width, unsigned height) {
    constexpr unsigned kWidth = 178;
    constexpr unsigned kHeight = 100;
    std::vector<std::uint8_t> small(kWidth * kHeight * 3);
    std::vector<std::uint8_t> sharp(small.size());
    ResizeRequest r;
    r.source = grab.data();
    r.sourceWidth = width;
    r.sourceHeight = height;
    r.sourceStride = width * 3;
    r.target = small.data();
    r.targetWidth = kWidth;
    r.targetHeight = kHeight;
    r.targetStride = kWidth * 3;
    IS40_ResizeImage(r);
    IS40_AdjustGamma(small.data(), kWidth, kHeight, 3, kWidth * 3, 1.4, 0);
    IS40_SharpenImage(small.data(), kWidth, kHeight, 3, kWidth * 3, sharp.data(), kWidth * 3, 20,
                      7);
    return IS40_RGBToDIB(sharp.data(), kWidth, kHeight, kWidth * 3, 0).size();
}

void BM_ThumbnailOfGrab(benchmark::State& state) {
    const auto width = static_cast<unsigned>(state.range(0));
    const auto height = static_cast<unsigned>(state.range(1));
    const std::vector<std::uint8_t> grab = MakeGrab(width, height);
    std::vector<std::uint8_t> copy(grab.size());
    TimeAgainstBaseline(
        state, "memcpy", [&] { std::memcpy(copy.data(), grab.data(), grab.size()); },
        "pipeline", [&] { benchmark::DoNotOptimize(Thumbnail(grab, width, height)); });
    state.SetLabel(AreaReductionKernel());
}
BENCHMARK(BM_ThumbnailOfGrab)
    ->Args({3840, 2160})
    ->Args({1920, 1080})
    ->Unit(benchmark::kMillisecond);

class DrawingFolder {
public:
    DrawingFolder() : m_folder(std::filesystem::temp_directory_path() / "tabrow-bench-dwg") {
        std::filesystem::create_directories(m_folder);
        const std::vector<std::string>& versions = KnownDwgVersions();
        for (int i = 0; i < 1000; ++i) {
            DwgSampleSpec spec;
            spec.version = versions[static_cast<std::size_t>(i) % versions.size()];
            spec.bodyBytes = 20000;
            spec.records.emplace_back(1, std::string(80, 'h'));
            DibSpec dib = SizedDib(180, 110, i % 3 == 0 ? 24 : 8);
            dib.seed = static_cast<std::uint32_t>(i);
            spec.records.emplace_back(2, MakeDib(dib));
            const std::filesystem::path path = m_folder / ("d" + std::to_string(i) + ".dwg");
            std::ofstream(path, std::ios::binary) << MakeDwg(spec);
            m_paths.push_back(path);
        }
    }
    ~DrawingFolder() {
        std::error_code code;
        std::filesystem::remove_all(m_folder, code);
    }
    const std::vector<std::filesystem::path>& Paths() const { return m_paths; }

private:
    std::filesystem::path m_folder;
    std::vector<std::filesystem::path> m_paths;
};

void BM_ReadPreviews(benchmark::State& state) {
    const DrawingFolder folder;
    PosixFileSystem files;
    ScopedPort<FileSystem> port(files);
    std::vector<std::wstring> paths;
    for (const auto& path : folder.Paths())
        paths.push_back(FromUtf8(path.string()));
    TimeAgainstBaseline(
        state, "plain_reads",
        [&] {
            std::size_t bytes = 0;
            for (const std::wstring& path : paths)
                bytes += files.ReadAll(path, 1u << 30)->size();
            benchmark::DoNotOptimize(bytes);
        },
        "previews",
        [&] {
            int pictures = 0;
            for (const std::wstring& path : paths) {
                TrDwgPreview preview;
                pictures += preview.Read(path, false);
            }
            benchmark::DoNotOptimize(pictures);
        });
}
BENCHMARK(BM_ReadPreviews)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
