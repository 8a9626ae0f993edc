// What the contents popups of a right click cost on a large drawing: every lister of the
// drawing under the mouse, in the menu's order, over 1,000,000 entities of which 10,000 are
// referenced kinds, against a bare walk that opens and closes each entity of each layout once,
// in the same run.

#include <benchmark/benchmark.h>

#include <unistd.h>
#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

#include "bar/drawing_contents.h"
#include "foundation/dbptr/db_tables.h"
#include "platform/sim/sim_file_system.h"
#include "platform/sim/sim_host.h"

namespace {

using Clock = std::chrono::steady_clock;
constexpr int kEntities = 1'000'000;
constexpr int kLayouts = 4;
constexpr int kEachKind = 2000;  // xrefs, images, OLE links, hyperlinks
constexpr int kEachNamed = 1000;  // layer states, named views

std::wstring Numbered(const wchar_t* prefix, int i) {
    return prefix + std::to_wstring(i);
}

// Model space and four layouts share the entities; the referenced ones are spread evenly
// among the lines.
void Fill(SimDatabase& db) {
    std::vector<DbObjectId> spaces{db.ModelSpaceId(), db.PaperSpaceId()};
    for (int i = 2; i < kLayouts + 1; ++i)
        spaces.push_back(db.AddLayout(Numbered(L"Sheet ", i), i));
    for (int i = 0; i < kEachKind; ++i)
        db.AddXref(Numbered(L"X", i), Numbered(L"C:\\refs\\x", i) + L".dwg");
    for (int i = 0; i < kEachNamed; ++i) {
        db.AddLayerState(Numbered(L"State ", i));
        db.AddView(Numbered(L"View ", i));
    }
    constexpr int kStride = kEntities / (3 * kEachKind);
    int referenced = 0;
    for (int i = 0; i < kEntities; ++i) {
        DbObjectId space = spaces[i % spaces.size()];
        if (i % kStride != 0 || referenced >= 3 * kEachKind) {
            db.AddEntity(space, DbClass::kLine);
            continue;
        }
        int n = referenced / 3;
        switch (referenced++ % 3) {
            case 0:
                db.AddImage(space, db.AddImageDef(Numbered(L"C:\\img\\", n) + L".png"));
                break;
            case 1:
                db.AddOleFrame(space, 1, Numbered(L"C:\\ole\\", n) + L".xls");
                break;
            default:
                db.AddHyperlink(db.AddEntity(space, DbClass::kLine), Numbered(L"http://h/", n));
        }
    }
}

// Opens and closes every entity of every layout once: the least any lister has to do.
std::size_t BareWalk(HostDatabase* db) {
    std::size_t opened = 0;
    AcDbBlockTablePtr(DbOpenMode::kForRead, db).ForEachLayoutEntity([&](DbObject*) { ++opened; });
    return opened;
}

std::size_t ListAll(HostDatabase* db) {
    unsigned next = 5000;
    TrTextRows layouts, states;
    TrPathRows xrefs, images, oleLinks, hyperlinks;
    TrViewRows views;
    ListLayouts(&next, &layouts, db, true);
    ListReferences(&next, &xrefs, &images, &oleLinks, &hyperlinks, db, true);
    ListLayerStates(&next, &states, db, true);
    ListViews(&next, &views, db, true);
    return next - 5000;
}

template <class F>
double Milliseconds(F f, std::size_t& result) {
    const auto start = Clock::now();
    result = f();
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

void BM_ListContentsOfLargeDrawing(benchmark::State& state) {
    const std::filesystem::path disk = std::filesystem::temp_directory_path() /
                                       ("tabrow-bench-contents-" + std::to_string(getpid()));
    std::filesystem::create_directories(disk);
    {
        SimFileSystem files(disk.wstring() + L"/");
        ScopedPort<FileSystem> filesPort(files);
        SimHost host;
        HostDocument* doc = host.OpenDrawing(L"C:\\jobs\\large.dwg");
        Fill(host.DatabaseOf(doc));
        HostDatabase* db = host.Database(doc);
        double walkMs = 0;
        double listMs = 0;
        std::size_t entities = 0;
        std::size_t rows = 0;
        for (auto _ : state) {
            walkMs += Milliseconds([&] { return BareWalk(db); }, entities);
            listMs += Milliseconds([&] { return ListAll(db); }, rows);
        }
        const double n = static_cast<double>(state.iterations());
        state.counters["walk_ms"] = walkMs / n;
        state.counters["list_ms"] = listMs / n;
        state.counters["ratio"] = listMs / walkMs;
        state.counters["entities"] = static_cast<double>(entities);
        state.counters["rows"] = static_cast<double>(rows);
        state.SetLabel("all contents listers against a bare walk");
    }
    std::error_code ignored;
    std::filesystem::remove_all(disk, ignored);
}
BENCHMARK(BM_ListContentsOfLargeDrawing)->Unit(benchmark::kMillisecond)->Iterations(5);

}  // namespace

BENCHMARK_MAIN();
