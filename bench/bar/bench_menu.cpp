// What a right click costs when everything is large: the bar's context menu opened on one of
// 200 open drawings, with 200 work sets of 50 files, 100 sheet sets in the search folder and 50
// templates, against building and tracking a bare menu of as many rows, in the same run.

#include <benchmark/benchmark.h>

#include <unistd.h>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>

#include "bar/hv_tabrow.h"
#include "host/tabrow_app.h"
#include "layout/host_windows.h"
#include "layout/relayout.h"
#include "platform/portable/portable_profile_file.h"
#include "platform/sim/sim_file_system.h"
#include "platform/sim/sim_host.h"
#include "settings/reg_impl.h"
#include "settings/settings_keys.h"

namespace {

using Clock = std::chrono::steady_clock;
constexpr int kDrawings = 200;
constexpr int kWorkSets = 200;
constexpr int kFilesPerSet = 50;
constexpr int kSheetSets = 100;
constexpr int kTemplates = 50;

void Touch(const std::filesystem::path& file) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file) << "x";
}

std::size_t CountRows(const MenuRows& rows) {
    std::size_t count = 0;
    for (const MenuRow& row : rows)
        count += 1 + CountRows(row.rows);
    return count;
}

// The same number of rows, flat, built and tracked the same way: what any menu of that size
// costs through the port.
double BareMenuMicroseconds(std::size_t rows, HostWindow* owner) {
    const auto start = Clock::now();
    MenuRows menu;
    for (std::size_t i = 0; i < rows; ++i)
        menu.push_back(MenuRow::Command(5000 + static_cast<unsigned>(i),
                                        L"C:\\jobs\\row" + std::to_wstring(i) + L".dwg"));
    Use<PopupMenus>().Track(menu, {10, 10}, owner);
    return std::chrono::duration<double, std::micro>(Clock::now() - start).count();
}

void BM_OpenMenuOnLargeSession(benchmark::State& state) {
    const std::filesystem::path disk = std::filesystem::temp_directory_path() /
                                       ("tabrow-bench-menu-" + std::to_string(getpid()));
    std::filesystem::create_directories(disk);
    {
        SimFileSystem files(disk.wstring() + L"/");
        ScopedPort<FileSystem> filesPort(files);
        PortableProfileFile profiles;
        ScopedPort<ProfileFile> profilesPort(profiles);
        SimHost host;
        for (int i = 0; i < kTemplates; ++i)
            Touch(disk / "templates" / ("t" + std::to_string(i) + ".dwt"));
        host.SetTemplatePath((disk / "templates").wstring() + L"/");
        for (int i = 0; i < kSheetSets; ++i)
            Touch(disk / "sheets" / ("s" + std::to_string(i) + ".dst"));
        for (int i = 0; i < kDrawings; ++i)
            host.OpenDrawing(L"C:\\jobs\\sheet" + std::to_wstring(i) + L".dwg");
        // Tabs: the drawing under the mouse is the first tab's.
        const std::wstring key = L"Software\\Harvane\\Tabrow\\2.0 - R17";
        host.Registry().CreateKey(RegHive::CurrentUser, key);
        host.Registry().SetValue(RegHive::CurrentUser, key, L"TabMode",
                                 RegValue{reg::kDword, {1, 0, 0, 0}});
        MapModule();
        int packet = 0;
        auto* pkt = reinterpret_cast<HostAppPacket*>(&packet);
        acrxEntryPoint(kInitAppMsg, pkt);
        g_pTabrow->m_store.SetString(keys::kRoot, keys::kSsSearchPath,
                                     (disk / "sheets").wstring() + L"/");
        g_pTabrow->LoadSettings();
        {
            std::filesystem::path sets(g_pTabrow->GetWorkSetFile());
            std::filesystem::create_directories(sets.parent_path());
            std::ofstream out(sets);
            for (int s = 0; s < kWorkSets; ++s) {
                out << "[Set " << s << "]\n";
                for (int f = 1; f <= kFilesPerSet; ++f)
                    out << "File" << f << "=C:\\jobs\\set" << s << "\\f" << f << ".dwg,0\n";
            }
        }
        SimWindowSystem& windows = host.Windows();
        RefreshHostLayout(g_hwndFrame);
        HostWindow* bar = g_pTabrow->GetSafeHwnd();
        HostWindow* tabs = g_pTabrow->m_tabCtrl.m_hWnd;
        win::RECT tab;
        host.TabControl().ItemRect(tabs, 0, tab);
        const win::POINT at = windows.ClientToScreen(tabs, {tab.left + 2, tab.top + 2});

        double menuUs = 0;
        double bareUs = 0;
        std::size_t rows = 0;
        for (auto _ : state) {
            host.Menus().QueueClose();
            const auto start = Clock::now();
            g_pTabrow->OnContextMenu(bar, at);
            menuUs += std::chrono::duration<double, std::micro>(Clock::now() - start).count();
            rows = CountRows(host.Menus().LastMenu());
            host.Menus().QueueClose();
            bareUs += BareMenuMicroseconds(rows, bar);
        }
        const double n = static_cast<double>(state.iterations());
        state.counters["menu_us"] = menuUs / n;
        state.counters["bare_us"] = bareUs / n;
        state.counters["ratio"] = menuUs / bareUs;
        state.counters["rows"] = static_cast<double>(rows);
        state.counters["on_drawing"] = g_pTabrow->m_pMenuDoc != nullptr ? 1 : 0;
        state.SetLabel("context menu against a bare menu of as many rows");
        acrxEntryPoint(kUnloadAppMsg, pkt);
    }
    std::error_code ignored;
    std::filesystem::remove_all(disk, ignored);
}
BENCHMARK(BM_OpenMenuOnLargeSession)->Unit(benchmark::kMillisecond)->Iterations(20);

}  // namespace

BENCHMARK_MAIN();
