// Opening drawings from the bar: the checks before a file is opened, the recent list in the
// settings store, the double click's newest drawing, the host's templates and a named view
// saved from the menu.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <optional>

#include "bar/document_session.h"
#include "bar/open_file.h"
#include "bar/save_view.h"
#include "bar/view_layout.h"
#include "foundation/no_case.h"

namespace {

using Texts = std::vector<std::wstring>;

class Opening : public DocumentSession {
protected:
    Opening() { Load(); }

    // A drawing on disk whose head names `format`.
    std::wstring Drawing(const std::wstring& name, const std::string& format = "AC1018") {
        return scratch.Write(name, format + std::string(64, '\0'));
    }
    std::wstring MruKey() const { return std::wstring(kKey) + L"\\MRU"; }
    void StoreRecent(int position, const std::wstring& path) {
        host.Registry().CreateKey(RegHive::CurrentUser, MruKey());
        host.Registry().SetValue(RegHive::CurrentUser, MruKey(),
                                 L"Path_" + std::to_wstring(position),
                                 RegValue{reg::kSz, reg::StringBytes(path)});
    }
    // Path_1 up to Path_<count> as stored, an absent value as empty.
    Texts StoredRecent(int count) {
        Texts paths;
        for (int i = 1; i <= count; ++i) {
            auto value = host.Registry().QueryValue(RegHive::CurrentUser, MruKey(),
                                                    L"Path_" + std::to_wstring(i));
            paths.push_back(value ? reg::StringText(value->data) : L"");
        }
        return paths;
    }
    void Open(const std::wstring& path, bool bWarn = true, bool bPopDbmod = true,
              bool bReadOnly = false) {
        TrFileEntry entry(path);
        entry.m_bReadOnly = bReadOnly;
        Bar().OpenFile(entry, bWarn, bPopDbmod);
    }
    Texts Boxes() {
        Texts texts;
        for (const auto& box : host.MessageBoxesShown())
            texts.push_back(box.text);
        return texts;
    }
    HostDocument* Find(const std::wstring& path) {
        for (HostDocument* doc : host.Documents()) {
            if (EqualNoCase(host.FileName(doc), path))
                return doc;
        }
        return nullptr;
    }
};

TEST_F(Opening, FileEntryTakesItsLastCommaPieceAsTheReadOnlyFlag) {
    struct Case {
        const wchar_t* text;
        const wchar_t* path;
        bool readOnly;
    };
    const Case cases[] = {
        {L"C:\\a.dwg", L"C:\\a.dwg", false},
        {L"C:\\a.dwg,1", L"C:\\a.dwg", true},
        {L"C:\\a.dwg,0", L"C:\\a.dwg", false},
        {L"C:\\a.dwg,2", L"C:\\a.dwg", false},
        {L"C:\\a,b.dwg,1", L"C:\\a,b.dwg", true},
        // A path with a comma and no flag loses its tail: the work set files rely on the form.
        {L"C:\\a,b.dwg", L"C:\\a", false},
    };
    for (const Case& c : cases) {
        TrFileEntry entry = ParseFileEntry(c.text);
        EXPECT_EQ(entry.GetPath(), c.path) << c.text;
        EXPECT_EQ(entry.m_bReadOnly, c.readOnly) << c.text;
    }
}

// Each case opens one file from a session holding "open.dwg" and checks what the user sees.
struct OpenCase {
    const char* name;
    const wchar_t* file;  // below the scratch folder; "missing" names no file on disk
    bool bWarn = true;
    bool bPopDbmod = true;
    bool bReadOnly = false;
    std::function<void(SimHost&)> setUp;  // what the host does differently, if anything
    Texts boxes;                          // "%s" stands for the file's path
    const wchar_t* printed;               // the command line's last line, "" for none
    bool opened = false;                  // a new document
    bool recent = false;
    int dbmod = 0;  // of the opened drawing
    bool readOnly = false;
};

std::wstring Widen(const char* text) {
    return std::wstring(text, text + std::char_traits<char>::length(text));
}

std::wstring Fill(std::wstring text, const std::wstring& path) {
    std::size_t at = text.find(L"%s");
    return at == std::wstring::npos ? text : text.replace(at, 2, path);
}

class OpenFileChecks : public Opening, public ::testing::WithParamInterface<OpenCase> {};

TEST_P(OpenFileChecks, BeforeItOpens) {
    const OpenCase& c = GetParam();
    Drawing(L"open.dwg");
    Drawing(L"new.dwg");
    Drawing(L"r21.dwg", "AC1021");
    Drawing(L"r24.dwg", "AC1024");
    HostDocument* open = host.OpenDrawing(scratch.File(L"open.dwg"));
    HostDocument* other = host.OpenDrawing(scratch.File(L"other.dwg"));
    const Texts recentBefore = Recent();
    if (c.setUp)
        c.setUp(host);
    const std::size_t linesBefore = host.CommandLine().size();
    const std::wstring path = scratch.File(c.file);

    Open(path, c.bWarn, c.bPopDbmod, c.bReadOnly);

    Texts boxes;
    for (const auto& box : c.boxes)
        boxes.push_back(Fill(box, path));
    EXPECT_EQ(Boxes(), boxes);
    const auto& lines = host.CommandLine();
    EXPECT_EQ(lines.size() == linesBefore ? L"" : lines.back(), std::wstring(c.printed));
    EXPECT_EQ(host.Documents().size(), c.opened ? 3u : 2u);
    // An opened file moves to the front of the recent list, or comes in there.
    Texts expected = recentBefore;
    if (c.recent) {
        std::erase(expected, path);
        expected.insert(expected.begin(), path);
    }
    EXPECT_EQ(Recent(), expected);
    if (c.opened) {
        HostDocument* doc = host.Documents().back();
        EXPECT_EQ(host.MdiActiveDocument(), doc);
        EXPECT_EQ(host.Document(doc).dbmod, c.dbmod);
        EXPECT_EQ(host.IsReadOnly(doc), c.readOnly);
    } else if (std::wstring(c.file) == L"open.dwg") {
        EXPECT_EQ(host.MdiActiveDocument(), open);  // to the front, unchanged
        EXPECT_FALSE(host.IsReadOnly(open));
    } else {
        EXPECT_EQ(host.MdiActiveDocument(), other);
    }
    EXPECT_EQ(host.AutomationReferences(), 1);  // the bar's own application object
}

INSTANTIATE_TEST_SUITE_P(
    Cases, OpenFileChecks,
    ::testing::Values(
        OpenCase{"MissingWarned",
                 L"missing.dwg",
                 true,
                 true,
                 false,
                 {},
                 {L"Specified file path does not exist -\n%s"},
                 L""},
        OpenCase{"MissingSilent", L"missing.dwg", false, true, false, {}, {}, L""},
        OpenCase{"Drawing", L"new.dwg", true, true, false, {}, {}, L"", true, true, 0},
        OpenCase{
            "NoPopKeepsTheOpensMark", L"new.dwg", true, false, false, {}, {}, L"", true, true, 1},
        OpenCase{"ReadOnly", L"new.dwg", true, true, true, {}, {}, L"", true, true, 0, true},
        OpenCase{"OpenAlreadyWarned",
                 L"open.dwg",
                 true,
                 true,
                 true,
                 {},
                 {L"%s is already open!\n"},
                 L""},
        OpenCase{"OpenAlreadySilent", L"open.dwg", false, true, false, {}, {}, L""},
        OpenCase{"RefusedByAutomation",
                 L"new.dwg",
                 true,
                 true,
                 false,
                 [](SimHost& h) {
                     h.FailAutomationCall(SimAutomationCall::OpenDocument, hr::kFail, L"No");
                 },
                 {L"Error [0x80004005]\nNo"},
                 L"No"},
        OpenCase{
            "FailedOpenCheckOpensAgain",
            L"open.dwg",
            true,
            true,
            false,
            [](SimHost& h) { h.FailAutomationCall(SimAutomationCall::FullName, hr::kFail, L"x"); },
            {},
            L"",
            true,
            true},
        OpenCase{"NewerThanTheHost",
                 L"r21.dwg",
                 true,
                 true,
                 false,
                 [](SimHost& h) { h.SetRelease(L"16.2s (LMS Tech)", "AC1018"); },
                 {},
                 L"Cannot open a AutoCAD 2007 drawing in this version of AutoCAD!"},
        OpenCase{"NewerThanAnyKnown",
                 L"r24.dwg",
                 true,
                 true,
                 false,
                 {},
                 {},
                 L"Unknown error in HvTabrow::OpenFile()!"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(Opening, OtherFilesGoToTheShellAndStayOutOfTheRecentList) {
    const std::wstring sheet = scratch.Write(L"notes.TXT", "x");
    const std::wstring upper = Drawing(L"PLAN.DWG");
    Open(sheet);
    Open(upper);
    EXPECT_EQ(host.FileShell().Opened(), (std::vector<SimShellOpen>{{sheet, 5}}));
    EXPECT_EQ(Recent(), (Texts{upper}));
    // The host knows the drawing in other letters: it is the same drawing.
    host.OpenDrawing(scratch.File(L"plan.dwg"));
    HostDocument* first = host.Documents().front();
    host.Activate(first);
    Open(upper, false);
    EXPECT_EQ(host.Documents().size(), 2u);
    EXPECT_EQ(host.MdiActiveDocument(), host.Documents().back());  // the walk starts at the end
    EXPECT_TRUE(host.MessageBoxesShown().empty());
}

TEST_F(Opening, RecentListKeepsTheNewestFirstUpToItsCount) {
    Store(L"MRUCount", 3);
    Unload();
    Load();
    Texts paths;
    for (const wchar_t* name : {L"a.dwg", L"b.dwg", L"c.dwg", L"d.dwg", L"e.dwg"})
        paths.push_back(Drawing(name));
    for (const auto& path : paths)
        Open(path);
    EXPECT_EQ(StoredRecent(4), (Texts{paths[4], paths[3], paths[2], L""}));
    // Opened again it moves to the front; a path in other letters is another entry.
    Bar().AddRecentFile(paths[2]);
    Bar().AddRecentFile(L"/X/E.DWG");
    EXPECT_EQ(StoredRecent(3), (Texts{L"/X/E.DWG", paths[2], paths[4]}));
    Bar().LoadRecentFiles();  // the made-up path is on no disk
    EXPECT_EQ(Recent(), (Texts{paths[2], paths[4]}));
}

TEST_F(Opening, HandEditedRecentListWithGaps) {
    const std::wstring a = Drawing(L"a.dwg"), c = Drawing(L"c.dwg"), e = Drawing(L"e.dwg");
    Store(L"MRUCount", 3);
    Unload();
    Load();
    StoreRecent(1, a);
    StoreRecent(2, L"");                        // blanked by hand
    StoreRecent(3, scratch.File(L"gone.dwg"));  // deleted from disk
    StoreRecent(4, c);                          // past the count
    StoreRecent(5, e);
    Bar().LoadRecentFiles();
    EXPECT_EQ(Recent(), (Texts{a}));
    Bar().AddRecentFile(e);
    // Only the list's length is written: the gone file and the values past it stay.
    EXPECT_EQ(StoredRecent(5), (Texts{e, a, scratch.File(L"gone.dwg"), c, e}));
}

TEST_F(Opening, DoubleClickOpensTheNewestRecentDrawing) {
    Bar().OpenLastDrawing();
    EXPECT_EQ(Boxes(), (Texts{L"No drawings in most recent used list!"}));
    const std::wstring older = Drawing(L"older.dwg"), newer = Drawing(L"newer.dwg");
    StoreRecent(1, newer + L",1");  // the stored text is parsed as a work set entry
    StoreRecent(2, older);
    Bar().OpenLastDrawing();
    // The flag makes the stored text no file, so the list skips it and the next one opens.
    ASSERT_NE(Find(older), nullptr);
    EXPECT_EQ(Recent().front(), older);
    StoreRecent(1, newer);
    Bar().OpenLastDrawing();
    ASSERT_NE(Find(newer), nullptr);
    EXPECT_EQ(host.MdiActiveDocument(), Find(newer));
    EXPECT_EQ(Boxes().size(), 1u);
}

TEST_F(Opening, TemplatesComeFromTheHostsFolder) {
    struct Case {
        const char* name;
        Texts files;  // written in the template folder
        Texts rows;   // file names of the rows
    };
    const Case cases[] = {
        {"none", {L"plan.dwg"}, {L"None Found"}},
        {"one", {L"iso.dwt"}, {L"iso.dwt"}},
        {"many", {L"a.dwt", L"b.DWT", L"c.dwg", L"d.dwt"}, {L"a.dwt", L"b.DWT", L"d.dwt"}},
    };
    unsigned next = 5000;
    Bar().LoadTemplates(&next);  // no folder in the profile at all
    EXPECT_EQ(next, 5001u);
    EXPECT_EQ(Bar().m_TemplateItems.at(5000).GetPath(), L"None Found");
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const std::wstring folder = scratch.File(Widen(c.name)) + L"/";
        std::filesystem::create_directory(scratch.Path() / c.name);
        for (const auto& file : c.files)
            scratch.Write(Widen(c.name) + L"/" + file, "x");
        host.SetTemplatePath(folder);
        next = 6000;
        Bar().LoadTemplates(&next);
        Texts rows;
        unsigned id = 6000;
        for (const auto& [key, path] : Bar().m_TemplateItems) {
            EXPECT_EQ(key, id++);
            rows.push_back(path.GetFileName());
        }
        std::sort(rows.begin(), rows.end());
        EXPECT_EQ(rows, c.rows);
        EXPECT_EQ(next, id);
    }
}

// A view saved from the menu, in each space, and what the drawing then lists.
struct SaveViewCase {
    const char* name;
    bool paperSpace;
    std::optional<std::wstring> typed;  // nothing: Escape at the prompt
    std::function<void(SimHost&)> setUp;
    bool listed;
    bool marked;                                     // a paper space view of "Sheet A"
    std::optional<ViewValue> center = std::nullopt;  // as the view was given it
    const wchar_t* box = L"";
};

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
    if (c.typed)
        host.QueueInput(*c.typed);
    if (c.setUp)
        c.setUp(host);

    OnSaveView(doc);

    EXPECT_EQ(host.Prompts(), (Texts{L"View Name: "}));
    const std::wstring name = c.typed.value_or(L"");
    const auto values = host.ViewValues(doc, name);
    if (c.center) {
        const SimViewport& from = host.Viewport(doc, c.paperSpace);
        EXPECT_EQ(values.at(ViewProperty::Center), *c.center);
        EXPECT_EQ(values.at(ViewProperty::Direction), from.direction);
        EXPECT_EQ(values.at(ViewProperty::Height), from.height);
        EXPECT_EQ(values.at(ViewProperty::Target), from.target);
        EXPECT_EQ(values.at(ViewProperty::Width), from.width);
    }
    // The drawing lists the view again, with its layout found by the marker.
    unsigned next = 5000;
    TrViewRows views;
    ListViews(&next, &views, host.Database(doc), false);
    if (c.listed) {
        ASSERT_EQ(views.size(), 1u);
        const ViewItem& view = views.begin()->second;
        EXPECT_EQ(view.strName, name);
        EXPECT_EQ(view.bModelSpace, !c.marked);
        EXPECT_EQ(view.strLayout, c.marked ? L"Sheet A" : L"");
        EXPECT_EQ(GetViewLayout(name, host.Database(doc)), view.strLayout);
    } else {
        EXPECT_TRUE(views.empty());
    }
    EXPECT_EQ(Boxes(), *c.box ? Texts{c.box} : Texts{});
    EXPECT_EQ(host.AutomationReferences(), 1);
    EXPECT_EQ(db.OpenCount(), 0);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, SaveView,
    ::testing::Values(
        SaveViewCase{"PaperSpace", true, L"North elevation", {}, true, true, ViewValue{7, 8, 0}},
        SaveViewCase{"ModelSpace", false, L"Plan", {}, true, false, ViewValue{1, 2, 3}},
        SaveViewCase{"Escape", true, std::nullopt, {}, false, false},
        SaveViewCase{"NoLinkManager", true, L"V", [](SimHost& h) { h.SetHasAutomation(false); },
                     false, false},
        // The view stays half filled: the add is not taken back, and no marker is written.
        SaveViewCase{"FailingHalfWay", true, L"V",
                     [](SimHost& h) {
                         h.FailAutomationCall(SimAutomationCall::ActiveViewport, hr::kFail, L"No");
                     },
                     true, false, std::nullopt, L"Error [0x80004005]\nNo"},
        SaveViewCase{"LockRefusedLeavesItUnmarked", true, L"V",
                     [](SimHost& h) { h.DatabasePort().RefuseLocks(dbs::kLockViolation); }, true,
                     false, ViewValue{7, 8, 0}}),
    [](const auto& info) { return std::string(info.param.name); });

}  // namespace
