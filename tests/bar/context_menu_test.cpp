// The bar's right-click menu on the simulated host: what it offers where the user clicks, and
// what each row does when chosen, the row found by its text as the user finds it.

#include <gtest/gtest.h>

#include <filesystem>

#include "bar/document_session.h"
#include "bar/menu_ids.h"
#include "bar/view_layout.h"
#include "foundation/text_encoding.h"
#include "layout/host_windows.h"
#include "layout/relayout.h"
#include "platform/portable/portable_profile_file.h"

namespace {

using Texts = std::vector<std::wstring>;

// Two drawings, "a.dwg" active and full of things to go to, "b.dwg" empty; a recent drawing,
// a work set, a template, on disk.
class ContextMenu : public DocumentSession {
public:
    using DocumentSession::Bar;
    using DocumentSession::host;
    void Open(std::uint32_t tabMode = 1) {
        Store(L"TabMode", tabMode);
        Store(L"HideOnSingle", 0);
        Load();
        b = host.OpenDrawing(Drawing(L"b.dwg"));
        a = host.OpenDrawing(Drawing(L"a.dwg"));
        SimDatabase& db = host.DatabaseOf(a);
        db.AddLayout(L"Sheet B", 2);
        db.AddView(L"East");
        db.AddPaperspaceView(L"North", {10, 20});
        SetViewLayout(L"North", L"Sheet B", a);
        host.SetViewValue(a, L"North", ViewProperty::Height, {4, 0, 0});
        host.SetViewValue(a, L"North", ViewProperty::Width, {6, 0, 0});
        db.AddLayerState(L"Walls");
        db.AddXref(L"site", Drawing(L"site.dwg"));
        db.AddXref(L"gone", scratch.File(L"gone.dwg"));
        const std::wstring mru = std::wstring(kKey) + L"\\MRU";
        host.Registry().CreateKey(RegHive::CurrentUser, mru);
        host.Registry().SetValue(RegHive::CurrentUser, mru, L"Path_1",
                                 RegValue{reg::kSz, reg::StringBytes(Drawing(L"old.dwg"))});
        std::filesystem::create_directories(scratch.Path() / "templates");
        host.SetTemplatePath(scratch.File(L"templates/"));
        scratch.Write(L"templates/metric.dwt", "x");
    }
    std::wstring Drawing(const std::wstring& name) {
        return scratch.Write(name, "AC1018" + std::string(64, '\0'));
    }
    void WriteWorkSets(const std::string& text) {
        std::filesystem::path file(Bar().GetWorkSetFile());
        std::filesystem::create_directories(file.parent_path());
        scratch.Write(file.wstring().substr(scratch.Folder().size()), text);
    }
    // A right click on the tab of `doc`, or beside the tabs when null, and what the user then
    // chooses; with nothing to choose (and nothing queued) the menu is closed.
    void RightClick(HostDocument* doc, const Texts& choice = {}) {
        if (!choice.empty())
            host.Menus().QueueChoice(choice);
        RefreshHostLayout(g_hwndFrame);
        SimWindowSystem& windows = host.Windows();
        HostWindow* window = Bar().m_bTabMode != 0 ? Tabs() : Palette();
        win::POINT at;
        if (windows.IsVisible(window) && doc != nullptr) {
            win::RECT tab;
            ASSERT_TRUE(host.TabControl().ItemRect(Tabs(), Bar().m_tabCtrl.FindDocument(doc), tab));
            at = windows.ClientToScreen(Tabs(), {tab.left + 2, tab.top + 2});
        } else {
            window = windows.IsVisible(window) ? window : Bar().GetSafeHwnd();
            const win::RECT r = windows.ScreenRect(window);
            at = {r.right - 2, r.bottom - 2};
        }
        const int tracked = host.Menus().Tracked();
        windows.Mouse(wm::kRButtonDown, at);
        windows.Mouse(wm::kRButtonUp, at);
        ASSERT_EQ(host.Menus().Tracked(), tracked + 1);
        ASSERT_EQ(host.Menus().Failures(), std::vector<std::string>{});
    }
    // The menu's first level, a separator as "-".
    Texts TopRows() {
        Texts rows;
        for (const MenuRow& row : host.Menus().LastMenu())
            rows.push_back((row.flags & mf::kSeparator) != 0 ? L"-" : row.text);
        return rows;
    }

    PortableProfileFile profiles;  // the work set file's reader
    ScopedPort<ProfileFile> profilesPort{profiles};
    HostDocument* a = nullptr;
    HostDocument* b = nullptr;
};

const Texts kLists{L"Recent Drawings", L"Work Sets", L"Sheet Sets", L"New", L"-"};
const Texts kBatch{L"Quick Plot All", L"Save All",      L"Close All", L"Save and Close All",
                   L"Close All, No Save", L"Exit, Save All", L"Exit, No Save", L"-"};
const Texts kDrawing{L"Close [a]", L"Open Folder", L"Layouts", L"References",
                     L"Layer States", L"Views", L"-"};
const Texts kEnd{L"Options...", L"About Tabrow..."};

Texts Join(std::initializer_list<Texts> parts) {
    Texts all;
    for (const Texts& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

TEST_F(ContextMenu, OffersTheDrawingUnderTheMouseAndTheListsAroundIt) {
    Open();
    SimDatabase& db = host.DatabaseOf(a);
    db.SetCurrentLayout(db.AddLayout(L"A", 3));
    RightClick(a);
    EXPECT_EQ(TopRows(), Join({kDrawing, kLists, kBatch, kEnd}));
    const SimPopupMenus& menus = host.Menus();
    // The check of a layout row asks for a one-letter name equal to its id: never met, not
    // even by the active layout "A".
    for (const MenuRow& row : menus.Row({L"Layouts"}).rows)
        EXPECT_EQ(row.flags & mf::kChecked, 0u) << row.text;
    EXPECT_EQ(menus.Row({L"Views"}).rows.front().text, L"Save...");
    EXPECT_EQ(menus.Row({L"References", L"Xrefs"}).flags & mf::kGrayed, 0u);
    EXPECT_NE(menus.Row({L"References", L"Images"}).flags & mf::kGrayed, 0u);
    EXPECT_EQ(menus.Row({L"References", L"Images"}).rows.front().text, L"None Found");

    RightClick(b);  // not the active drawing: no view to save
    EXPECT_EQ(menus.Row({L"Views"}).rows.front().text, L"None Found");
    RightClick(nullptr);
    EXPECT_EQ(TopRows(), Join({kLists, kBatch, kEnd}));
    EXPECT_EQ(Bar().m_pMenuDoc, nullptr);
    // Without a drawing its lists hold their "None Found" rows all the same, which keeps each
    // list's ids in place for the decoding.
    const HvTabrow& bar = Bar();
    for (std::size_t rows : {bar.m_LayoutItems.size(), bar.m_XrefItems.size(),
                             bar.m_ImageItems.size(), bar.m_OleLinkItems.size(),
                             bar.m_HyperlinkItems.size(), bar.m_LayerStateItems.size(),
                             bar.m_ViewItems.size()})
        EXPECT_EQ(rows, 1u);
}

TEST_F(ContextMenu, SettingsAndAnEmptyHostLeaveRowsOut) {
    Store(L"DisableNewMenu", 1);
    Open(0);
    RightClick(nullptr);  // previews renew themselves: nothing to refresh by hand
    EXPECT_EQ(TopRows().front(), L"Recent Drawings");
    Bar().m_bAutoUpdatePreviews = 0;
    RightClick(nullptr);
    EXPECT_EQ(TopRows(), Join({{L"Refresh Previews"}, {L"Recent Drawings", L"Work Sets",
                                                       L"Sheet Sets", L"-"}, kBatch, kEnd}));
    host.QueueAnswer(mb::kIdYes);  // to losing the changes
    RightClick(nullptr, {L"Close All, No Save"});
    EXPECT_TRUE(host.Documents().empty());
    RightClick(nullptr);
    EXPECT_EQ(TopRows(), Join({{L"Refresh Previews", L"Recent Drawings", L"Work Sets",
                                L"Sheet Sets", L"-"},
                               kEnd}));
}

// Highlighting a work set's "All" row shows its files in a tip beside the set's popup; the tip
// goes with the highlight.
TEST_F(ContextMenu, AWorkSetsFilesShowBesideItsPopup) {
    Open();
    WriteWorkSets("[Proj.A]\nFile1=C:\\jobs\\w1.dwg,1\nFile2=C:\\jobs\\w2.dwg,0\n");
    SimToolTips& tips = host.ToolTipControls();
    const int tools = tips.ToolCount(Bar().m_tip);
    std::wstring shown;
    win::RECT tip, row;
    auto look = [&] {
        SimPopupMenus& menus = host.Menus();
        shown = tips.ShownText(Bar().m_tip);
        tip = host.Windows().ScreenRect(tips.Find(Bar().m_tip)->popup);
        row = menus.ItemRect(menus.Row({L"Work Sets", L"Proj"}), 0);
    };
    host.Menus().QueueChoice({L"Work Sets", L"Proj", L"Select..."}, look);
    RightClick(nullptr);
    EXPECT_EQ(shown, L"");
    host.Menus().QueueChoice({L"Work Sets", L"Proj", L"All"}, look);
    RightClick(nullptr);
    EXPECT_EQ(shown, L"w1.dwg\nw2.dwg");
    EXPECT_FALSE(row.IsEmpty());
    EXPECT_EQ(tip.left, row.right + 1);
    EXPECT_EQ(tip.top, row.top);
    EXPECT_EQ(tips.ShownText(Bar().m_tip), L"");
    EXPECT_EQ(tips.ToolCount(Bar().m_tip), tools);
    EXPECT_EQ(tips.Refusals(), Texts{});
}

// One row chosen on a drawing's tab (or beside the tabs), and what the host shows for it
// afterwards. "%" in front of the chosen text stands for the scratch folder.
struct RowCase {
    const char* name;
    const wchar_t* on;  // the drawing under the mouse, null for none
    Texts path;
    Texts log;     // the automation calls made, in order
    Texts opened;  // drawings opened, "(R)" after a read-only one
    Texts states;  // layer states restored in "a.dwg"
    void (*setUp)(ContextMenu&) = nullptr;
    std::size_t boxes = 0;  // message boxes shown
};

// clang-format off
const RowCase kRowCases[] = {
    {"Layout", L"a", {L"Layouts", L"Sheet B"}, {L"Activate a.dwg", L"ActiveLayout Sheet B a.dwg"}, {}, {}},
    {"SameLayoutStays", L"a", {L"Layouts", L"Model"}, {L"Activate a.dwg"}, {}, {}},
    {"ModelView", L"a", {L"Views", L"East"},
     {L"Activate a.dwg", L"SetView East", L"ActiveViewport a.dwg"}, {}, {}},
    {"PaperViewWithItsLayout", L"a", {L"Views", L"North"},
     {L"Activate a.dwg", L"ActiveSpace 0 a.dwg", L"ActiveLayout Sheet B a.dwg",
      L"ZoomWindow 7,18 13,22 a.dwg"}, {}, {}},
    {"LayerState", L"a", {L"Layer States", L"Walls"}, {L"Activate a.dwg", L"Regen a.dwg"}, {},
     {L"Walls"}},
    // The drawing's "None Found" rows do nothing, and ask nothing of the host.
    {"NoLayerState", L"b", {L"Layer States", L"None Found"}, {}, {}, {}},
    {"NoView", L"b", {L"Views", L"None Found"}, {}, {}, {}},
    {"Xref", L"a", {L"References", L"Xrefs", L"site.dwg"}, {}, {L"site.dwg"}, {}},
    {"MissingXrefWarns", L"a", {L"References", L"Xrefs", L"gone.dwg"}, {}, {}, {}, nullptr, 1},
    {"RecentDrawing", nullptr, {L"Recent Drawings", L"%old.dwg"}, {}, {L"old.dwg"}, {}},
    {"WorkSetAll", nullptr, {L"Work Sets", L"Proj", L"All"}, {}, {L"w1.dwg (R)", L"w2.dwg"}, {}},
    // With no recent drawing, "Empty" carries the first work set row's id, and acts as it.
    {"EmptyRecentListOpensTheFirstWorkSet", nullptr, {L"Recent Drawings", L"Empty"}, {},
     {L"w1.dwg (R)", L"w2.dwg"}, {}, [](ContextMenu& t) { t.Bar().m_nMRUCount = 0; }},
    {"SheetSetChosenSheets", nullptr, {L"Sheet Sets", L"Found", L"tower"}, {}, {L"w2.dwg"}, {},
     [](ContextMenu& t) { t.host.SheetSetManager().QueueTicks(std::vector<std::size_t>{0}); }},
    {"SheetSetHandedToTheManager", nullptr, {L"Sheet Sets", L"Found", L"tower"},
     {L"SendCommand b.dwg -OPENSHEETSET \"%sheets/tower.dst\"\n"}, {}, {}, [](ContextMenu& t) { t.Bar().m_bOpenSheetSetInSSM = 1; }},
    {"Template", nullptr, {L"New", L"metric"}, {}, {L"Drawing1.dwg"}, {}},
    {"CloseTheDrawing", L"a", {L"Close [a]"}, {L"Close a.dwg"}, {}, {}},
};
// clang-format on

class ChosenRow : public ContextMenu, public ::testing::WithParamInterface<RowCase> {};

TEST_P(ChosenRow, DoWhatTheySay) {
    const RowCase& c = GetParam();
    Open();
    host.Activate(b);
    WriteWorkSets("[Proj.A]\nFile1=" + ToUtf8(Drawing(L"w1.dwg")) + ",1\nFile2=" +
                  ToUtf8(Drawing(L"w2.dwg")) + ",0\n");
    std::filesystem::create_directories(scratch.Path() / "sheets");
    scratch.Write(L"sheets/tower.dst", "name Tower\nsheet A1|1|Plan||" + ToUtf8(scratch.File(L"w2.dwg")) + "\n");
    Bar().m_strSsSearchPath = scratch.File(L"sheets/");
    if (c.setUp != nullptr)
        c.setUp(*this);
    Texts path = c.path;
    if (path.back().starts_with(L"%"))
        path.back() = scratch.File(path.back().substr(1));
    const std::size_t logged = host.AutomationLog().size();
    const std::size_t documents = host.Documents().size();

    RightClick(c.on == nullptr ? nullptr : std::wstring(c.on) == L"a" ? a : b, path);

    Texts log(host.AutomationLog().begin() + static_cast<long>(logged),
              host.AutomationLog().end());
    for (std::wstring& call : log) {
        if (std::size_t at = call.find(scratch.Folder()); at != std::wstring::npos)
            call.replace(at, scratch.Folder().size(), L"%");
    }
    EXPECT_EQ(log, c.log);
    Texts opened;
    for (std::size_t i = documents; i < host.Documents().size(); ++i) {
        HostDocument* doc = host.Documents()[i];
        opened.push_back(host.Title(doc) + (host.IsReadOnly(doc) ? L" (R)" : L""));
    }
    EXPECT_EQ(opened, c.opened);
    if (host.Documents().size() >= documents) {
        EXPECT_EQ(host.DatabaseOf(a).RestoredLayerStates(), c.states);
    }
    EXPECT_EQ(host.MessageBoxesShown().size(), c.boxes);
    EXPECT_EQ(host.DatabasePort().LockDepth(), 0);
}

INSTANTIATE_TEST_SUITE_P(All, ChosenRow, ::testing::ValuesIn(kRowCases),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
