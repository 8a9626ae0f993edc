// Reading work set files through the profile reader, against a plain read of the same bytes:
// the price of parsing the whole file on every call.

#include <benchmark/benchmark.h>

#include <unistd.h>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>

#include "foundation/ini_file.h"
#include "platform/portable/portable_profile_file.h"
#include "platform/posix/posix_file_system.h"
#include "ports/port.h"

namespace fs = std::filesystem;

namespace {

struct Files {
    fs::path folder;
    fs::path bigSection;  // one section of 64000 characters
    fs::path manySets;    // 200 work sets of ten files each

    Files() {
        folder = fs::temp_directory_path() / ("tabrow-bench-" + std::to_string(::getpid()));
        fs::create_directories(folder);
        bigSection = folder / "big.worksets";
        manySets = folder / "many.worksets";

        std::string big = "[Big]\r\n";
        for (int i = 1; big.size() < 64000; ++i) {
            big += "File" + std::to_string(i) + "=C:\\Jobs\\Project\\Sheet " + std::to_string(i) +
                   ".dwg,0\r\n";
        }
        std::ofstream(bigSection, std::ios::binary) << big;

        std::string many;
        for (int set = 1; set <= 200; ++set) {
            many += "[Work set " + std::to_string(set) + "]\r\n";
            for (int file = 1; file <= 10; ++file) {
                many += "File" + std::to_string(file) + "=C:\\Jobs\\" + std::to_string(set) +
                        "\\Plan " + std::to_string(file) + ".dwg,0\r\n";
            }
        }
        std::ofstream(manySets, std::ios::binary) << many;
    }
    ~Files() {
        std::error_code ignored;
        fs::remove_all(folder, ignored);
    }
};

Files& TheFiles() {
    static Files files;
    return files;
}

PosixFileSystem g_disk;
PortableProfileFile g_profile;
ScopedPort<FileSystem> g_diskPort(g_disk);
ScopedPort<ProfileFile> g_profilePort(g_profile);

// The same read of the bytes that the profile reader makes, without the parsing.
std::string PlainRead(const fs::path& path) {
    return g_disk.ReadAll(path.wstring(), PortableProfileFile::kMaxFileBytes).value_or("");
}

// The mean time of a plain read of `path`, measured in the same run as the benchmark.
double PlainReadSeconds(const fs::path& path) {
    constexpr int kRounds = 2000;
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < kRounds; ++i)
        benchmark::DoNotOptimize(PlainRead(path));
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count() /
           kRounds;
}

void Report(benchmark::State& state, double profileSeconds, double plainSeconds) {
    state.counters["profile_us"] = profileSeconds * 1e6;
    state.counters["plain_read_us"] = plainSeconds * 1e6;
    state.counters["ratio"] = profileSeconds / plainSeconds;
}

void BM_GetLinesOf64000Characters(benchmark::State& state) {
    const fs::path& path = TheFiles().bigSection;
    const HvIniFile ini(path.wstring(), true);
    std::size_t count = 0;
    const auto start = std::chrono::steady_clock::now();
    for (auto _ : state) {
        std::vector<std::wstring> lines;
        ini.GetLines(L"Big", lines);
        count = lines.size();
        benchmark::DoNotOptimize(lines.data());
    }
    const double seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count() /
        static_cast<double>(state.iterations());
    state.counters["lines"] = static_cast<double>(count);
    Report(state, seconds, PlainReadSeconds(path));
}
BENCHMARK(BM_GetLinesOf64000Characters);

void BM_GetSectionNamesOf200WorkSets(benchmark::State& state) {
    const fs::path& path = TheFiles().manySets;
    const HvIniFile ini(path.wstring(), true);
    std::size_t count = 0;
    const auto start = std::chrono::steady_clock::now();
    for (auto _ : state) {
        std::vector<std::wstring> names;
        ini.GetSectionNames(names);
        count = names.size();
        benchmark::DoNotOptimize(names.data());
    }
    const double seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count() /
        static_cast<double>(state.iterations());
    state.counters["names"] = static_cast<double>(count);
    Report(state, seconds, PlainReadSeconds(path));
}
BENCHMARK(BM_GetSectionNamesOf200WorkSets);

}  // namespace

BENCHMARK_MAIN();
