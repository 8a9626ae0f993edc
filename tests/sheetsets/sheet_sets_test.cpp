// Sheet sets on the simulated host: the menu's recent and found lists, the model read through
// the host's manager and how a failure leaves it, opening a sheet set's drawings or handing it
// to the host's manager, and the host version that has sheet sets at all.

#include <gtest/gtest.h>

#include <filesystem>

#include "bar/document_session.h"
#include "foundation/text_encoding.h"
#include "sheetsets/sheet_set_dlg.h"
#include "sheetsets/sheet_set_lists.h"
#include "sheetsets/sheet_set_manager.h"

namespace {

using Texts = std::vector<std::wstring>;

// A profile whose tools hold `tools` (already written elements).
std::string Profile(const std::string& tools) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<StorageRoot><AcApData><Other/>"
           "<AdUiTools><ToolsInfo>\r\n" +
           tools +
           "</ToolsInfo></AdUiTools></AcApData>"
           "</StorageRoot>\r\n";
}
std::string Tool(const std::string& clsid, const std::string& files) {
    std::string text = "<Tool CLSID=\"" + clsid + "\"><Settings/><MRU_FILES>";
    for (char name : files)
        text += std::string("<MRU_FILE fileName=\"C:\\Sets\\") + name + ".dst\"/>";
    return text + "</MRU_FILES></Tool>\r\n";
}
const std::string kManager = "{bebbb318-2898-4c03-ada2-360dc6b7aa69}";  // any case matches
const std::string kThree = Profile(Tool("{00000000-0000-0000-0000-000000000000}", "x") +
                                   Tool(kManager, "abc") + Tool(kManager, "y"));

class SheetSetSession : public DocumentSession {
protected:
    SheetSetSession() {
        std::filesystem::create_directories(scratch.Path() / "roaming/Support/Profiles");
        std::filesystem::create_directories(scratch.Path() / "sets/below");
        host.SetRoamableRootFolder(scratch.File(L"roaming/"));
        SimRegistry& registry = host.Registry();
        registry.CreateKey(RegHive::CurrentUser, kKey);
        registry.SetValue(RegHive::CurrentUser, kKey, L"SsSearchPath",
                          RegValue{reg::kSz, reg::StringBytes(scratch.File(L"sets/"))});
        Load();
    }
    void WriteProfile(const std::string& text) {
        scratch.Write(L"roaming/Support/Profiles/FixedProfile.aws", text);
    }
    // The two lists' rows as "id text" from the counter at 5000; the counter as it ends.
    Texts Rows(bool bNoneFound, unsigned* pEnd = nullptr) {
        unsigned next = 5000;
        Bar().BuildSheetSetRows(&next, bNoneFound);
        Texts rows;
        for (const TrPathRows* list : {&Bar().m_recentSheetSets, &Bar().m_foundSheetSets}) {
            for (const auto& [id, path] : *list)
                rows.push_back(std::to_wstring(id) + L" " + path.GetFileTitle());
            rows.push_back(L"|");
        }
        if (pEnd != nullptr)
            *pEnd = next;
        return rows;
    }
    std::wstring SheetSetFile(const std::wstring& name, const std::string& text) {
        return scratch.Write(L"sets/" + name, text);
    }

    SimSheetSets& sets = host.SheetSetManager();
};

}  // namespace

struct ListCase {
    const char* name;
    std::optional<std::string> profile;  // none: no profile file
    bool roaming;
    Texts files;  // below the search folder
    bool bNoneFound;
    Texts rows;  // recent, "|", found, "|"
};

// clang-format off
const ListCase kListCases[] = {
    {"FirstToolOfTheManagerOnlyAndDstFilesOfTheFolderOnly", kThree, true,
     {L"b.dst", L"A.DST", L"notes.txt", L"below/c.dst"}, true,
     {L"5000 a", L"5001 b", L"5002 c", L"|", L"5003 A", L"5004 b", L"|"}},
    {"NoEntries", Profile(Tool(kManager, "")), true, {}, true,
     {L"5000 None Found", L"|", L"5001 None Found", L"|"}},
    {"NoneFoundOnlyWhenAsked", Profile(Tool(kManager, "")), true, {}, false, {L"|", L"|"}},
    {"NoToolOfTheId", Profile(Tool("{00000000-0000-0000-0000-000000000000}", "x")), true,
     {L"a.dst"}, true, {L"5000 None Found", L"|", L"5001 a", L"|"}},
    {"BrokenXml", kThree.substr(0, kThree.size() - 20), true, {}, true,
     {L"5000 None Found", L"|", L"5001 None Found", L"|"}},
    {"NoProfileFile", std::nullopt, true, {}, false, {L"|", L"|"}},
    {"NoRoamingFolder", kThree, false, {}, false, {L"|", L"|"}},
};
// clang-format on

class SheetSetRows : public SheetSetSession, public ::testing::WithParamInterface<ListCase> {};

TEST_P(SheetSetRows, FollowTheProfileAndTheFolder) {
    const ListCase& c = GetParam();
    if (c.profile)
        WriteProfile(*c.profile);
    if (!c.roaming)
        host.SetRoamableRootFolder(L"");
    for (const std::wstring& file : c.files)
        scratch.Write(L"sets/" + file, "");
    unsigned end = 0;
    EXPECT_EQ(Rows(c.bNoneFound, &end), c.rows);
    EXPECT_EQ(end, 5000 + c.rows.size() - 2);  // one id per row, from the menu's counter
    for (const auto& [id, path] : Bar().m_foundSheetSets)  // whole paths, to be opened
        EXPECT_TRUE(path.GetFileTitle() == L"None Found" || FileExists(path.GetPath())) << id;
}

INSTANTIATE_TEST_SUITE_P(Cases, SheetSetRows, ::testing::ValuesIn(kListCases),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(SheetSetLists, AProfileCutAtAnyByteReadsWholeOrNothing) {
    const std::wstring text =
        L"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n"
        L"<StorageRoot><AcApData><Other/><AdUiTools><ToolsInfo>\r\n"
        L"  <Tool CLSID=\"{00000000-0000-0000-0000-000000000000}\" Name=\"Tool &amp; Co\">\r\n"
        L"    <MRU_FILES><MRU_FILE fileName=\"C:\\wrong.dst\"/></MRU_FILES></Tool>\r\n"
        L"  <Tool Name=\"Sheets\" CLSID='{bebbb318-2898-4c03-ada2-360dc6b7aa69}'>\r\n"
        L"    <Settings/><MRU_FILES>\r\n"
        L"      <MRU_FILE fileName=\"C:\\Sets\\A &amp; B.dst\"/>\r\n"
        L"      <MRU_FILE fileName=\"C:\\Sets\\caf&#233;.dst\"></MRU_FILE>\r\n"
        L"    </MRU_FILES></Tool>\r\n"
        L"</ToolsInfo></AdUiTools></AcApData></StorageRoot>\r\n";
    const Texts all{L"C:\\Sets\\A & B.dst", L"C:\\Sets\\caf\u00e9.dst"};
    const std::size_t rootEnd = text.find(L"</StorageRoot>") + 14;
    for (std::size_t cut = 0; cut <= text.size(); ++cut)
        ASSERT_EQ(RecentSheetSetsFromXml(text.substr(0, cut)), cut < rootEnd ? Texts{} : all)
            << "cut at " << cut;
}

const char kProject[] =
    "name Project & Co\n"
    "sheet A-101|101|Plan|Ground floor|%a\n"
    "component AcSmSheetSelSets\n"
    "opaque\n"
    "subset Details|Doors and windows\n"
    "  sheet D-1|D1|Door|Door detail|%d\n"
    "end\n"
    "resource C:/res/\n"
    "resource C:/more/\n";

// The project above with its two drawings in the scratch folder.
std::string Project(const ScratchFolder& scratch, std::string text = kProject) {
    for (const char* name : {"a", "d"}) {
        const std::size_t at = text.find(std::string("%") + name);
        if (at != std::string::npos)
            text.replace(at, 2, ToUtf8(scratch.Write(FromUtf8(name) + L".dwg", "AC1018")));
    }
    return text;
}

TEST_F(SheetSetSession, TheModelCopiesTheTreeAndGivesEveryReferenceBack) {
    const std::wstring path = SheetSetFile(L"project.dst", Project(scratch));
    {
        const auto model = LoadSheetSet(g_pSheetSetMgr, path);
        EXPECT_EQ(model->m_strName, L"Project & Co");
        ASSERT_EQ(model->m_sheets.size(), 1u);  // other kinds of component are passed over
        const CAcSmSheet& plan = *model->m_sheets[0];
        EXPECT_EQ((Texts{plan.m_strName, plan.m_strNumber, plan.m_strTitle, plan.m_strDesc}),
                  (Texts{L"A-101", L"101", L"Plan", L"Ground floor"}));
        ASSERT_EQ(model->m_subsets.size(), 1u);
        EXPECT_EQ(model->m_subsets[0]->m_strName + L"/" + model->m_subsets[0]->m_strDesc,
                  L"Details/Doors and windows");
        EXPECT_EQ(model->SheetCount(), 2u);
        EXPECT_EQ(SheetSetDlg::SheetFiles(*model),
                  (Texts{scratch.File(L"a.dwg"), scratch.File(L"d.dwg")}));
        Texts folders;
        for (const auto& reference : model->m_resources->m_fileReferences)
            folders.push_back(reference->m_strFileName);
        EXPECT_EQ(folders, (Texts{L"C:/res/", L"C:/more/"}));
        EXPECT_GT(sets.OpenReferences(), 0u);
    }
    EXPECT_EQ(sets.OpenReferences(), 0u);  // the database too
}

// The code a load fails with; 0 when it reads the set.
HRESULT LoadFailure(const std::wstring& path) {
    try {
        LoadSheetSet(g_pSheetSetMgr, path);
    } catch (const ComError& e) {
        return e.Error();
    }
    return 0;
}

TEST_F(SheetSetSession, AnyFailedReadFailsTheWholeSetAndLeavesNoReference) {
    const std::wstring path = SheetSetFile(L"project.dst", Project(scratch));
    for (int call = 0; call <= static_cast<int>(SimSheetSetCall::GetFileName); ++call) {
        sets.FailCall(static_cast<SimSheetSetCall>(call), 0x80040000 + call, L"No");
        EXPECT_EQ(LoadFailure(path), 0x80040000 + call);
        EXPECT_EQ(sets.OpenReferences(), 0u) << "call " << call;
    }
    // A subset inside a subset gives no sheet; a line the host can't read is a damaged file.
    EXPECT_EQ(LoadFailure(SheetSetFile(L"nested.dst", "subset A|\nsubset B|\nend\nend\n")),
              hr::kPointer);
    EXPECT_EQ(LoadFailure(SheetSetFile(L"bad.dst", "sheet\nnonsense\n")), hr::kFail);
    EXPECT_EQ(sets.OpenReferences(), 0u);
}

struct OpenCase {
    const char* name;
    bool inManager;                                 // OpenSheetSetInSSM
    const char* text;                               // null: the project
    std::optional<std::vector<std::size_t>> ticks;  // none: Cancel
    Texts boxes;
    Texts opened;  // titles of the drawings opened after a.dwg, "*" when DBMOD is set
    Texts offers;  // titles offered by the selection
};

// clang-format off
const OpenCase kOpenCases[] = {
    {"TickedDrawingsOpenQuietlyAsTheHostLeavesThem", false, nullptr, std::vector<std::size_t>{0, 1},
     {}, {L"d*"}, {L"a", L"d"}},
    {"NothingTicked", false, nullptr, std::vector<std::size_t>{}, {}, {}, {L"a", L"d"}},
    {"Cancelled", false, nullptr, std::nullopt, {}, {}, {L"a", L"d"}},
    {"ASetThatFailsToOpenIsShownAndOffersNothing", false, "nonsense\n",
     std::vector<std::size_t>{}, {L"Unable to open the sheet set file %s"}, {}, {}},
    {"TheManagerTakesItOverAndNothingIsRead", true, nullptr, std::vector<std::size_t>{0}, {}, {},
     {}},
};
// clang-format on

class OpenSheetSets : public SheetSetSession, public ::testing::WithParamInterface<OpenCase> {};

TEST_P(OpenSheetSets, ThroughTheSelectionOrTheHostsManager) {
    const OpenCase& c = GetParam();
    const std::wstring path = SheetSetFile(L"p.dst", c.text ? c.text : Project(scratch));
    host.OpenDrawing(scratch.File(L"a.dwg"));
    Bar().m_bOpenSheetSetInSSM = c.inManager;
    sets.QueueTicks(c.ticks);

    Bar().OpenSheetSet(path);

    Texts boxes = c.boxes, opened, offers;
    for (std::wstring& box : boxes)
        box.replace(box.find(L"%s"), 2, path);
    for (HostDocument* doc : host.Documents())  // after the one open before; "*": DBMOD set
        opened.push_back(CFilePath(host.FileName(doc)).GetFileTitle() +
                         (host.Document(doc).dbmod != 0 ? L"*" : L""));
    for (const auto& offer : sets.Offers())
        for (const std::wstring& file : offer)
            offers.push_back(CFilePath(file).GetFileTitle());
    EXPECT_EQ(Boxes(), boxes);
    EXPECT_EQ(Texts(opened.begin() + 1, opened.end()), c.opened);
    EXPECT_EQ(offers, c.offers);
    EXPECT_EQ(sets.InManager(), c.inManager ? Texts{path} : Texts{});
    EXPECT_TRUE(!c.inManager || sets.Opened().empty());  // nothing of the model is read
    EXPECT_EQ(sets.OpenReferences(), 0u);
}

INSTANTIATE_TEST_SUITE_P(Cases, OpenSheetSets, ::testing::ValuesIn(kOpenCases),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(SheetSetSession, OnlyHostsAbove16HaveSheetSetsAndAreToldOfTheManagerSetting) {
    for (auto [release, above] : {std::pair{L"15.06s (LMS Tech)", false},
                                  {L"16.0s", false},
                                  {L"16.1s (LMS Tech)", true},
                                  {L"17.0s (LMS Tech)", true}}) {
        Unload();
        host.SetRelease(release, "AC1018");
        Load();
        EXPECT_EQ(Bar().HostHasSheetSets(), above) << release;
        const int before = Bar().m_bOpenSheetSetInSSM;
        Bar().ToggleOpenSheetSetInSSM();
        const std::wstring now = std::to_wstring(1 - before);
        auto stored = host.Registry().QueryValue(RegHive::CurrentUser, kKey, L"OpenSheetSetInSSM");
        ASSERT_TRUE(stored.has_value());
        EXPECT_EQ(stored->data.at(0), 1 - before) << release;
        // Loading set the variable to the old value; only a host with sheet sets hears the new.
        EXPECT_EQ(host.GetVariable(L"SSMAUTOOPEN"), above ? now : std::to_wstring(before))
            << release;
    }
}

TEST_F(SheetSetSession, TheSearchFolderChosenIsKeptWithItsSeparatorAndSearched) {
    scratch.Write(L"sets/below/c.dst", "");
    host.QueueFolder(std::nullopt);
    Bar().SetSheetSetSearchPath();
    EXPECT_EQ(Rows(false), (Texts{L"|", L"|"}));
    host.QueueFolder(scratch.File(L"sets/below"));
    Bar().SetSheetSetSearchPath();
    EXPECT_EQ(host.FolderChoosers().back().first, L"Select new path to search for Sheet Set files");
    const std::wstring folder = scratch.File(L"sets/below/");
    auto stored = host.Registry().QueryValue(RegHive::CurrentUser, kKey, L"SsSearchPath");
    ASSERT_TRUE(stored.has_value());
    EXPECT_EQ(reg::StringText(stored->data), folder);
    EXPECT_EQ(Rows(false), (Texts{L"|", L"5000 c", L"|"}));
}
