// Opening drawings from the bar: the checks before a file is opened, the recent list in the
// settings store, the double click's newest drawing, the host's templates and a named view
// saved from the menu.

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <optional>

#include "bar/document_session.h"
#include "bar/save_view.h"
#include "bar/view_layout.h"
#include "layout/host_windows.h"
#include "layout/relayout.h"

namespace {

using Texts = std::vector<std::wstring>;
using SetUp = void (*)(SimHost&);

class Opening : public DocumentSession {
protected:
    Opening() { Load(); }

    // A drawing on disk whose head names `format`.
    std::wstring Drawing(const std::wstring& name, const std::string& format = "AC1018") {
        return scratch.Write(name, format + std::string(64, '\0'));
    }
    std::wstring Mru(int position) {
        std::wstring key = std::wstring(kKey) + L"\\MRU",
                     name = L"Path_" + std::to_wstring(position);
        auto value = host.Registry().QueryValue(RegHive::CurrentUser, key, name);
        return value ? reg::StringText(value->data) : L"";
    }
    void SetMru(int position, const std::wstring& path) {
        std::wstring key = std::wstring(kKey) + L"\\MRU";
        host.Registry().CreateKey(RegHive::CurrentUser, key);
        host.Registry().SetValue(RegHive::CurrentUser, key, L"Path_" + std::to_wstring(position),
                                 RegValue{reg::kSz, reg::StringBytes(path)});
    }
    void Reload(int mruCount) {
        Store(L"MRUCount", static_cast<std::uint32_t>(mruCount));
        Unload();
        Load();
    }
};

TEST_F(Opening, FileEntryTakesItsLastCommaPieceAsTheReadOnlyFlag) {
    // A path with a comma and no flag loses its tail: the work set files rely on the form.
    const std::tuple<const wchar_t*, const wchar_t*, bool> cases[] = {
        {L"C:\\a.dwg", L"C:\\a.dwg", false},   {L"C:\\a.dwg,1", L"C:\\a.dwg", true},
        {L"C:\\a.dwg,2", L"C:\\a.dwg", false}, {L"C:\\a,b.dwg,1", L"C:\\a,b.dwg", true},
        {L"C:\\a,b.dwg", L"C:\\a", false}, {L"C:\\a.dwg,4294967297", L"C:\\a.dwg", false},
        {L"C:\\a.dwg, 1", L"C:\\a.dwg", true}, {L"C:\\a.dwg,1a", L"C:\\a.dwg", true},
    };
    for (const auto& [text, path, readOnly] : cases) {
        TrFileEntry entry = ParseFileEntry(text);
        EXPECT_EQ(entry.GetPath(), path) << text;
        EXPECT_EQ(entry.m_bReadOnly, readOnly) << text;
    }
}

// One file opened from a session that holds "open.dwg" and "other.dwg" (active).
struct OpenCase {
    const char* name;
    const wchar_t* file;
    bool bWarn, bPopDbmod, bReadOnly;
    SetUp setUp;
    const wchar_t* box;   // "" for none; "%s" stands for the path
    const wchar_t* line;  // the last line printed, "" for none
    int opened;           // -1: nothing opened; else the new drawing's DBMOD
};

// clang-format off
const OpenCase kOpenCases[] = {
    {"MissingWarned", L"missing.dwg", true, true, false, nullptr,
     L"Specified file path does not exist -\n%s", L"", -1},
    {"MissingSilent", L"missing.dwg", false, true, false, nullptr, L"", L"", -1},
    {"AnotherTypeGoesToTheShell", L"notes.TXT", true, true, false, nullptr, L"", L"", -1},
    {"Drawing", L"new.dwg", true, true, false, nullptr, L"", L"", 0},
    {"NoPopKeepsTheOpensMark", L"new.dwg", true, false, false, nullptr, L"", L"", 1},
    {"ReadOnly", L"new.dwg", true, true, true, nullptr, L"", L"", 0},
    {"OpenAlreadyWarned", L"open.dwg", true, true, true, nullptr, L"%s is already open!\n", L"", -1},
    {"OpenAlreadySilent", L"open.dwg", false, true, false, nullptr, L"", L"", -1},
    {"RefusedByAutomation", L"new.dwg", true, true, false,
     [](SimHost& h) { h.FailAutomationCall(SimAutomationCall::OpenDocument, hr::kFail, L"No"); },
     L"Error [0x80004005]\nNo", L"No", -1},
    {"FailedOpenCheckOpensAgain", L"open.dwg", true, true, false,
     [](SimHost& h) { h.FailAutomationCall(SimAutomationCall::FullName, hr::kFail, L"x"); },
     L"", L"", 0},
    {"NewerThanTheHost", L"r21.dwg", true, true, false,
     [](SimHost& h) { h.SetRelease(L"16.2s (LMS Tech)", "AC1018"); }, L"",
     L"Cannot open a AutoCAD 2007 drawing in this version of AutoCAD!", -1},
    {"RefusedAtTheHostsOwnVersion", L"r21.dwg", true, true, false,
     [](SimHost& h) { h.SetRelease(L"17.0s (LMS Tech)", "AC1018"); }, L"",
     L"Unknown error in HvTabrow::OpenFile()!", -1},
    {"NewerThanAnyKnown", L"r24.dwg", true, true, false, nullptr, L"",
     L"Unknown error in HvTabrow::OpenFile()!", -1},
};
// clang-format on

class OpenFileChecks : public Opening, public ::testing::WithParamInterface<OpenCase> {};

TEST_P(OpenFileChecks, BeforeItOpens) {
    const OpenCase& c = GetParam();
    for (auto [name, format] : {std::pair{L"open.dwg", "AC1018"},
                                {L"new.dwg", "AC1018"},
                                {L"r21.dwg", "AC1021"},
                                {L"r24.dwg", "AC1024"},
                                {L"notes.TXT", ""}})
        Drawing(name, format);
    // The host knows the open drawing in other letters: it is the same drawing all the same.
    HostDocument* open = host.OpenDrawing(scratch.File(L"OPEN.DWG"));
    HostDocument* other = host.OpenDrawing(scratch.File(L"other.dwg"));
    const std::wstring release = host.ReleaseName();
    if (c.setUp != nullptr)
        c.setUp(host);
    // The bar learns the host's release when it is made: another host is another load.
    if (host.ReleaseName() != release) {
        Unload();
        Load();
    }
    Texts recent = Recent();
    const std::size_t lines = host.CommandLine().size();
    const std::wstring path = scratch.File(c.file);
    TrFileEntry entry(path);
    entry.m_bReadOnly = c.bReadOnly;

    Bar().OpenFile(entry, c.bWarn, c.bPopDbmod);

    std::wstring box = c.box;
    if (std::size_t at = box.find(L"%s"); at != std::wstring::npos)
        box.replace(at, 2, path);
    EXPECT_EQ(Boxes(), box.empty() ? Texts{} : Texts{box});
    EXPECT_EQ(host.CommandLine().size() == lines ? L"" : host.CommandLine().back(), c.line);
    ASSERT_EQ(host.Documents().size(), c.opened < 0 ? 2u : 3u);
    HostDocument* doc = host.Documents().back();
    if (c.opened >= 0) {  // to the front of the recent list, and the host's
        std::erase(recent, path);
        recent.insert(recent.begin(), path);
        EXPECT_EQ(host.Document(doc).dbmod, c.opened);
        EXPECT_EQ(host.IsReadOnly(doc), c.bReadOnly);
    }
    EXPECT_EQ(Recent(), recent);
    // A drawing open already comes to the front as it is; its read-only flag is not looked at.
    const bool openAlready = c.opened < 0 && std::wstring(c.file) == L"open.dwg";
    EXPECT_EQ(host.MdiActiveDocument(), c.opened >= 0 ? doc : openAlready ? open : other);
    EXPECT_FALSE(host.IsReadOnly(open));
    EXPECT_EQ(host.FileShell().Opened(),
              (std::vector<SimShellOpen>(path.ends_with(L"TXT"), {path, 5})));
    EXPECT_EQ(host.AutomationReferences(), 1);  // the bar's own application object
}

INSTANTIATE_TEST_SUITE_P(Cases, OpenFileChecks, ::testing::ValuesIn(kOpenCases),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(Opening, RecentListKeepsTheNewestFirstUpToItsCountAndLeavesTheRestAlone) {
    Texts paths;
    for (const wchar_t* name : {L"a.dwg", L"b.dwg", L"c.dwg", L"d.dwg", L"e.dwg"})
        paths.push_back(Drawing(name));
    const std::wstring gone = scratch.File(L"gone.dwg");
    Reload(3);
    const std::wstring stored[] = {paths[0], L"", gone, paths[1], paths[1]};  // edited by hand
    for (int i = 0; i < 5; ++i)
        SetMru(i + 1, stored[i]);
    Bar().LoadRecentFiles();  // a blank, a gone file and what is past the count are skipped
    EXPECT_EQ(Recent(), (Texts{paths[0]}));
    Bar().AddRecentFile(paths[2]);  // only the list's length is written
    EXPECT_EQ((Texts{Mru(1), Mru(2), Mru(3), Mru(4)}), (Texts{paths[2], paths[0], gone, paths[1]}));
    for (const auto& path : paths)
        Bar().OpenFile(TrFileEntry(path), true, true);
    EXPECT_EQ((Texts{Mru(1), Mru(2), Mru(3), Mru(4)}),
              (Texts{paths[4], paths[3], paths[2], paths[1]}));
    // Opened again it moves to the front; a path in other letters is another entry.
    Bar().AddRecentFile(paths[2]);
    Bar().AddRecentFile(L"/X/E.DWG");
    EXPECT_EQ((Texts{Mru(1), Mru(2), Mru(3)}), (Texts{L"/X/E.DWG", paths[2], paths[4]}));
    Bar().LoadRecentFiles();  // the made-up path is on no disk
    EXPECT_EQ(Recent(), (Texts{paths[2], paths[4]}));
}

// A double click on the bar, or on a view that hands it on, opens the newest recent drawing;
// with Control it asks for the last work set.
TEST_F(Opening, DoubleClickOpensTheNewestRecentDrawing) {
    Store(L"TabMode", 1);
    Store(L"HideOnSingle", 0);
    Unload();
    Load();
    SimWindowSystem& windows = host.Windows();
    auto doubleClick = [&](HostWindow* window, unsigned keys = 0) {
        RefreshHostLayout(g_hwndFrame);  // the host's layout gives the bar its room
        const win::RECT r = windows.ScreenRect(window);
        ASSERT_TRUE(windows.IsVisible(window));
        EXPECT_EQ(windows.Mouse(wm::kLButtonDblClk, {r.left + 4, r.bottom - 4}, keys), window);
    };
    doubleClick(Bar().GetSafeHwnd());  // the empty bar
    EXPECT_EQ(Boxes(), (Texts{L"No drawings in most recent used list!"}));
    doubleClick(Bar().GetSafeHwnd(), mk::kControl);
    EXPECT_EQ(Boxes().back(), L"No workset has been opened yet!");
    const std::wstring older = Drawing(L"older.dwg"), newer = Drawing(L"newer.dwg");
    SetMru(1, newer + L",1");  // as a stored text no file: skipped at the load
    SetMru(2, older);
    doubleClick(Bar().GetSafeHwnd());
    EXPECT_EQ(host.FileName(host.MdiActiveDocument()), older);
    SetMru(1, newer);
    doubleClick(Bar().m_tabCtrl.m_hWnd);
    EXPECT_EQ(host.FileName(host.MdiActiveDocument()), newer);
    EXPECT_EQ(host.Document(host.MdiActiveDocument()).dbmod, 0);  // the open's mark popped
    Bar().OpenLastDrawing();                                      // open already: a warned open
    EXPECT_EQ(Boxes().back(), newer + L" is already open!\n");
    EXPECT_EQ(Boxes().size(), 3u);
}

TEST_F(Opening, TemplatesComeFromTheHostsFolder) {
    const std::pair<const char*, Texts> cases[] = {
        {"none", {L"plan.dwg"}}, {"one", {L"iso.dwt"}}, {"many", {L"a.dwt", L"b.DWT", L"d.dwt"}}};
    unsigned next = 5000;
    Bar().LoadTemplates(&next);  // no folder in the profile at all, and none made by asking
    EXPECT_EQ(Bar().m_TemplateItems.at(5000).GetPath(), L"None Found");
    EXPECT_FALSE(host.Registry().KeyExists(RegHive::CurrentUser, host.ProfileKey() + L"\\General"));
    for (const auto& [name, files] : cases) {
        const std::wstring folder = scratch.File(std::wstring(name, name + std::strlen(name)));
        std::filesystem::create_directories(scratch.Path() / name / "sub");
        host.SetTemplatePath(folder + L"/");
        scratch.Write(folder.substr(scratch.Folder().size()) + L"/sub/deeper.dwt", "x");
        Texts expected;
        for (const auto& file : files) {
            scratch.Write(folder.substr(scratch.Folder().size()) + L"/" + file, "x");
            expected.push_back(file == L"plan.dwg" ? L"None Found" : folder + L"/" + file);
        }
        Bar().LoadTemplates(&next);
        Texts rows;
        for (const auto& [id, path] : Bar().m_TemplateItems)
            rows.push_back(path.GetPath());
        std::sort(rows.begin(), rows.end());
        EXPECT_EQ(rows, expected) << name;
        EXPECT_EQ(next, Bar().m_TemplateItems.rbegin()->first + 1) << name;  // no gaps, no reuse
        EXPECT_EQ(next - Bar().m_TemplateItems.begin()->first, Bar().m_TemplateItems.size());
    }
}

TEST_F(Opening, EmptyDrawingAndTheTemplateFolderChoice) {
    // With no drawing open there is no document for automation: the host's own way is taken.
    host.FailAutomationCall(SimAutomationCall::AddDocument, hr::kFail, L"No");
    Bar().OnEmptyDrawing();
    ASSERT_EQ(host.Documents().size(), 1u);
    EXPECT_THROW(Bar().OnEmptyDrawing(), ComError);  // now through Documents.Add
    Bar().OnEmptyDrawing();
    EXPECT_EQ(host.Documents().size(), 2u);
    EXPECT_EQ(host.AutomationReferences(), 1);

    const std::wstring first = scratch.Folder(), second = scratch.File(L"sub") + L"/";
    std::filesystem::create_directory(scratch.Path() / "sub");
    host.SetTemplatePath(first);
    host.QueueFolder(std::nullopt);
    host.QueueFolder(scratch.File(L"sub"));
    Bar().OnChangeTemplatePath();  // cancelled
    Bar().OnChangeTemplatePath();
    ASSERT_EQ(host.FolderChoosers().size(), 2u);
    EXPECT_EQ(host.FolderChoosers().back(),
              std::pair(std::wstring(L"Select new template path"), first));
    auto value = host.Registry().QueryValue(RegHive::CurrentUser, host.ProfileKey() + L"\\General",
                                            L"TemplatePath");
    EXPECT_EQ(reg::StringText(value->data), second);
}

// A view saved from the menu, in each space, and what the drawing then lists.
struct SaveViewCase {
    const char* name;
    bool paperSpace;
    const wchar_t* typed;  // null: Escape at the prompt
    SetUp setUp;
    bool listed, marked;              // marked: a paper space view of "Sheet A"
    std::optional<ViewValue> center;  // as the view was given it
    const wchar_t* box;
};

// clang-format off
const SaveViewCase kSaveViewCases[] = {
    {"PaperSpace", true, L"North elevation", nullptr, true, true, ViewValue{7, 8, 0}, L""},
    {"ModelSpace", false, L"Plan", nullptr, true, false, ViewValue{1, 2, 3}, L""},
    {"Escape", true, nullptr, nullptr, false, false, std::nullopt, L""},
    {"NoLinkManager", true, L"V", [](SimHost& h) { h.SetHasAutomation(false); }, false, false,
     std::nullopt, L""},
    // The view stays half filled: the add is not taken back, and no marker is written.
    {"FailingHalfWay", true, L"V",
     [](SimHost& h) { h.FailAutomationCall(SimAutomationCall::ActiveViewport, hr::kFail, L"No"); },
     true, false, std::nullopt, L"Error [0x80004005]\nNo"},
    {"LockRefusedLeavesItUnmarked", true, L"V",
     [](SimHost& h) { h.DatabasePort().RefuseLocks(dbs::kLockViolation); }, true, false,
     ViewValue{7, 8, 0}, L""},
};
// clang-format on

class SaveView : public Opening, public ::testing::WithParamInterface<SaveViewCase> {};

TEST_P(SaveView, TakesTheActiveViewportAndMarksPaperSpace) {
    const SaveViewCase& c = GetParam();
    HostDocument* doc = host.OpenDrawing(L"C:\\jobs\\site.dwg");
    SimDatabase& db = host.DatabaseOf(doc);
    const DbObjectId sheet = db.AddLayout(L"Sheet A", 2);
    if (c.paperSpace)
        db.SetCurrentLayout(sheet);
    host.Viewport(doc, false) = SimViewport{{1, 2, 3}, {0, 0, 1}, {40}, {1, 2, 0}, {60}};
    host.Viewport(doc, true) = SimViewport{{7, 8, 9}, {0, 1, 1}, {4}, {7, 8, 0}, {6}};
    if (c.typed != nullptr)
        host.QueueInput(c.typed);
    if (c.setUp != nullptr)
        c.setUp(host);

    OnSaveView(doc);

    EXPECT_EQ(host.Prompts(), (Texts{L"View Name: "}));
    const std::wstring name = c.typed != nullptr ? c.typed : L"";
    const SimViewport& from = host.Viewport(doc, c.paperSpace);
    using P = ViewProperty;
    EXPECT_EQ(host.ViewValues(doc, name),
              (c.center ? std::map<P, ViewValue>{{P::Center, *c.center},
                                                 {P::Direction, from.direction},
                                                 {P::Height, from.height},
                                                 {P::Target, from.target},
                                                 {P::Width, from.width}}
                        : std::map<P, ViewValue>{}));
    // The drawing lists the view again, with its layout found by the marker.
    unsigned next = 5000;
    TrViewRows views;
    ListViews(&next, &views, host.Database(doc), false);
    ASSERT_EQ(views.size(), c.listed ? 1u : 0u);
    if (c.listed) {
        const ViewItem& view = views.begin()->second;
        EXPECT_EQ(view.strName, name);
        EXPECT_EQ(view.bModelSpace, !c.marked);
        EXPECT_EQ(view.strLayout, c.marked ? L"Sheet A" : L"");
        const ViewValue center = c.center.value_or(ViewValue{});
        EXPECT_EQ(view.ptCenter, (DbPoint2d{center.x, center.y}));
    }
    EXPECT_EQ(Boxes(), *c.box ? Texts{c.box} : Texts{});
    EXPECT_EQ(host.AutomationReferences(), 1);
    EXPECT_EQ(db.OpenCount(), 0);
}

INSTANTIATE_TEST_SUITE_P(Cases, SaveView, ::testing::ValuesIn(kSaveViewCases),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
