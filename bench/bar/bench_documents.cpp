// What a new drawing costs the bar when many are open: OnDocumentCreated for the 200th drawing,
// sorted by path (each tab's path is read again for the walk, the palette sorts all records),
// against the same drawing with no sorting at all, in the same run.

#include <benchmark/benchmark.h>

#include <unistd.h>
#include <chrono>
#include <filesystem>
#include <random>
#include <string>

#include "bar/hv_tabrow.h"
#include "host/tabrow_app.h"
#include "platform/sim/sim_file_system.h"
#include "platform/sim/sim_host.h"

namespace {

using Clock = std::chrono::steady_clock;
constexpr int kOpenBefore = 199;

// A session with 199 drawings in shuffled folders and the module loaded with `sortBy`; it
// times the bar's part of opening one more, taken out again between the rounds.
double MicrosecondsPerCreation(int sortBy, int rounds) {
    const std::filesystem::path disk = std::filesystem::temp_directory_path() /
                                       ("tabrow-bench-documents-" + std::to_string(getpid()));
    std::filesystem::create_directories(disk);
    double total = 0;
    {
        SimFileSystem files(disk.wstring() + L"/");
        ScopedPort<FileSystem> filesPort(files);
        SimHost host;
        const std::wstring key = L"Software\\Harvane\\Tabrow\\2.0 - R17";
        host.Registry().CreateKey(RegHive::CurrentUser, key);
        host.Registry().SetValue(
            RegHive::CurrentUser, key, L"SortBy",
            RegValue{reg::kDword, {static_cast<std::uint8_t>(sortBy), 0, 0, 0}});
        std::mt19937 random(7);
        for (int i = 0; i < kOpenBefore; ++i) {
            host.OpenDrawing(L"C:\\jobs\\" + std::to_wstring(random() % 1000) + L"\\sheet" +
                             std::to_wstring(i) + L".dwg");
        }
        MapModule();
        int packet = 0;
        auto* pkt = reinterpret_cast<HostAppPacket*>(&packet);
        acrxEntryPoint(kInitAppMsg, pkt);
        HostDocument* last = host.OpenDrawing(L"C:\\jobs\\500\\sheet-new.dwg");
        for (int round = 0; round < rounds; ++round) {
            g_pTabrow->OnDocumentToBeDestroyed(last);
            const auto start = Clock::now();
            g_pTabrow->OnDocumentCreated(last);
            total += std::chrono::duration<double, std::micro>(Clock::now() - start).count();
        }
        acrxEntryPoint(kUnloadAppMsg, pkt);
    }
    std::error_code ignored;
    std::filesystem::remove_all(disk, ignored);
    return total / rounds;
}

void BM_DocumentCreatedAt200(benchmark::State& state) {
    constexpr int kRounds = 200;
    double unsortedUs = 0;
    double byPathUs = 0;
    for (auto _ : state) {
        unsortedUs += MicrosecondsPerCreation(0, kRounds);
        byPathUs += MicrosecondsPerCreation(2, kRounds);
    }
    const double n = static_cast<double>(state.iterations());
    state.counters["sortby0_us"] = unsortedUs / n;
    state.counters["sortby2_us"] = byPathUs / n;
    state.counters["ratio"] = byPathUs / unsortedUs;
    state.SetLabel("OnDocumentCreated, 200th drawing");
}
BENCHMARK(BM_DocumentCreatedAt200)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace

BENCHMARK_MAIN();
