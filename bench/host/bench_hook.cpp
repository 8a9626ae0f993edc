// What the bar's hook costs the host's windows. The MDI client sees many messages; the hook
// must pass anything but a position change on at once, and cut a position change quickly. Each
// batch goes through the hooked MDI client and, as the baseline in the same run, through a
// window of the same class without the hook.

#include <benchmark/benchmark.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <unistd.h>

#include "host/tabrow_app.h"
#include "platform/sim/sim_file_system.h"
#include "platform/sim/sim_host.h"
#include "ports/window_messages.h"

namespace {

using Clock = std::chrono::steady_clock;
constexpr int kMessages = 1'000'000;

double Milliseconds(Clock::duration d) {
    return std::chrono::duration<double, std::milli>(d).count();
}

// A host with two drawings and the module loaded, the bar docked on the left; the folder of
// the machine's disk is removed afterwards.
class LoadedHost {
public:
    LoadedHost()
        : m_folder(std::filesystem::temp_directory_path() /
                   ("tabrow-bench-hook-" + std::to_string(getpid()))),
          m_files(m_folder.wstring() + L"/"),
          m_filesPort(m_files) {
        std::filesystem::create_directories(m_folder);
        m_host.OpenDrawing(L"C:\\jobs\\site.dwg");
        m_host.OpenDrawing(L"C:\\jobs\\plan.dwg");
        acrxEntryPoint(kInitAppMsg, Packet());
        RefreshHostLayout(g_hwndFrame);
        m_plain = m_host.Windows().CreateChild(g_hwndFrame, L"MDIClient",
                                               m_host.Windows().RectInParent(g_hwndMdiClient),
                                               ws::kChild | ws::kVisible);
    }
    ~LoadedHost() {
        acrxEntryPoint(kUnloadAppMsg, Packet());
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
    }
    LoadedHost(const LoadedHost&) = delete;
    LoadedHost& operator=(const LoadedHost&) = delete;

    SimWindowSystem& Windows() { return m_host.Windows(); }
    HostWindow* Plain() { return m_plain; }

private:
    HostAppPacket* Packet() { return reinterpret_cast<HostAppPacket*>(&m_packetTag); }

    std::filesystem::path m_folder;
    SimFileSystem m_files;
    ScopedPort<FileSystem> m_filesPort;
    SimHost m_host;
    HostWindow* m_plain = nullptr;
    int m_packetTag = 0;
};

// Sends the batch to `window`: position changes of the whole MDI room, or mouse moves.
double SendBatch(SimWindowSystem& windows, HostWindow* window, unsigned message) {
    const auto start = Clock::now();
    for (int i = 0; i < kMessages; ++i) {
        win::WINDOWPOS pos;
        pos.x = 0;
        pos.y = 60;
        pos.cx = 1920;
        pos.cy = 820;
        benchmark::DoNotOptimize(
            windows.Send(window, message, 0, reinterpret_cast<std::intptr_t>(&pos)));
        benchmark::DoNotOptimize(pos);
    }
    return Milliseconds(Clock::now() - start);
}

void BM_HookedMdiClient(benchmark::State& state) {
    const auto message = static_cast<unsigned>(state.range(0));
    MapModule();
    LoadedHost host;
    double plainMs = 0;
    double hookedMs = 0;
    for (auto _ : state) {
        plainMs += SendBatch(host.Windows(), host.Plain(), message);
        hookedMs += SendBatch(host.Windows(), g_hwndMdiClient, message);
    }
    const double n = static_cast<double>(state.iterations());
    state.counters["plain_ms"] = plainMs / n;
    state.counters["hooked_ms"] = hookedMs / n;
    state.counters["ratio"] = hookedMs / plainMs;
    state.SetLabel(message == wm::kWindowPosChanging ? "1M WM_WINDOWPOSCHANGING"
                                                     : "1M WM_MOUSEMOVE");
}
BENCHMARK(BM_HookedMdiClient)
    ->Arg(wm::kWindowPosChanging)
    ->Arg(wm::kMouseMove)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);

}  // namespace

BENCHMARK_MAIN();
