// The bar's two lists in a user's session: drawings opened, switched, saved under new names and
// closed, with both views in step.

#include <gtest/gtest.h>

#include "bar/document_session.h"
#include "ports/window_messages.h"

namespace {

using Texts = std::vector<std::wstring>;

TEST_F(DocumentSession, DocumentEventsReachBothListsWhicheverViewShows) {
    HostDocument* plan = host.OpenDrawing(L"C:\\jobs\\plan.dwg");
    host.OpenDrawing(L"C:\\jobs\\site.dwg", true);
    Load();
    EXPECT_EQ(TabTexts(), (Texts{L"plan", L"[R]- site"}));
    EXPECT_EQ(PaletteTitles(), (Texts{L"plan", L"site"}));
    EXPECT_TRUE(host.Windows().IsVisible(Palette()));  // preview mode by default
    EXPECT_FALSE(host.Windows().IsVisible(Tabs()));

    HostDocument* roof = host.OpenDrawing(L"C:\\jobs\\roof.dwg");
    EXPECT_EQ(TabTexts(), (Texts{L"plan", L"[R]- site", L"roof"}));
    EXPECT_EQ(PaletteTitles(), (Texts{L"plan", L"site", L"roof"}));
    EXPECT_EQ(Bar().ActiveDocument(), roof);
    EXPECT_EQ(g_hwndDwgView, host.ActiveDwgView());

    host.Activate(plan);
    EXPECT_EQ(Bar().ActiveDocument(), plan);
    host.Type(L"CLOSE");
    EXPECT_EQ(TabTexts(), (Texts{L"[R]- site", L"roof"}));
    EXPECT_EQ(PaletteTitles(), (Texts{L"site", L"roof"}));
    EXPECT_EQ(Bar().ActiveDocument(), roof);
}

TEST_F(DocumentSession, MarksShowModifiedForAnyTabButOnlyTheActivePreview) {
    HostDocument* plan = host.OpenDrawing(L"C:\\jobs\\plan.dwg", true);
    HostDocument* site = host.OpenDrawing(L"C:\\jobs\\site.dwg");
    Load();
    host.Modify(site);
    host.Type(L"LINE");
    EXPECT_EQ(TabTexts(), (Texts{L"[R]- plan", L"* site"}));
    EXPECT_TRUE(Item(site)->bModified);

    Bar().SetDocumentModified(plan, true);  // not the active drawing
    EXPECT_EQ(TabTexts(), (Texts{L"* [R]- plan", L"* site"}));
    EXPECT_FALSE(Item(plan)->bModified);
    Bar().SetDocumentModified(plan, false);
    EXPECT_EQ(TabTexts()[0], L"[R]- plan");
}

TEST_F(DocumentSession, ATabClickSwitchesAndTheTabControlIsLeftStill) {
    Store(L"TabMode", 1);
    HostDocument* plan = host.OpenDrawing(L"C:\\jobs\\plan.dwg");
    HostDocument* site = host.OpenDrawing(L"C:\\jobs\\site.dwg");
    Load();
    EXPECT_TRUE(host.Windows().IsVisible(Tabs()));
    EXPECT_FALSE(host.Windows().IsVisible(Palette()));
    host.Activate(plan);
    host.Activate(site);
    const int selections = host.TabControl().SetCurSelCalls(Tabs());

    ClickTab(0);
    EXPECT_EQ(host.MdiActiveDocument(), plan);
    EXPECT_EQ(SelectedTab(), 0);
    EXPECT_EQ(g_hwndDwgView, host.ActiveDwgView());
    // The activation came back through the reactor while the bar switched.
    EXPECT_EQ(host.TabControl().SetCurSelCalls(Tabs()), selections);
    EXPECT_EQ(Bar().m_bSwitching, 0);
    EXPECT_TRUE(host.MessageBoxesShown().empty());
}

TEST_F(DocumentSession, ATabClickDuringACommandIsRefusedOnceWhenSwitchingMustWait) {
    Store(L"TabMode", 1);
    Store(L"SwitchOnBusy", 0);
    HostDocument* plan = host.OpenDrawing(L"C:\\jobs\\plan.dwg");
    HostDocument* site = host.OpenDrawing(L"C:\\jobs\\site.dwg");
    Load();
    host.Activate(plan);
    host.Activate(site);
    host.StartCommand(L"LINE");

    ClickTab(0);
    EXPECT_EQ(host.MdiActiveDocument(), site);
    EXPECT_EQ(SelectedTab(), 1);
    ASSERT_EQ(host.MessageBoxesShown().size(), 1u);
    EXPECT_EQ(host.MessageBoxesShown()[0].text,
              L"Please finish the active command before switching drawings!");
}

TEST_F(DocumentSession, APreviewClickSwitchesUnlessACommandMustFinishFirst) {
    Store(L"SwitchOnBusy", 0);
    HostDocument* plan = host.OpenDrawing(L"C:\\jobs\\plan.dwg");
    HostDocument* site = host.OpenDrawing(L"C:\\jobs\\site.dwg");
    Load();
    // Where the palette's layout put the cells.
    Item(plan)->rcItem = win::RECT{0, 0, 100, 80};
    Item(site)->rcItem = win::RECT{0, 80, 100, 160};
    const std::intptr_t inPlan = (40 << 16) | 50;

    host.StartCommand(L"LINE");
    host.Windows().Send(Palette(), wm::kLButtonDown, 0, inPlan);
    EXPECT_EQ(host.MdiActiveDocument(), site);
    EXPECT_EQ(host.MessageBoxesShown().size(), 1u);

    host.CancelCommand();
    host.Windows().Send(Palette(), wm::kLButtonDown, 0, inPlan);
    EXPECT_EQ(host.MdiActiveDocument(), plan);
    EXPECT_EQ(host.MessageBoxesShown().size(), 1u);
}

// SaveAs of "zeta" in C:\a as "aaa" in C:\y, among "mid" in C:\z and "alpha" in C:\m.
struct RenameCase {
    int sortBy;
    Texts before;
    Texts after;
};

class SaveAsRenames : public DocumentSession, public ::testing::WithParamInterface<RenameCase> {};

TEST_P(SaveAsRenames, InBothViewsAndResortsWhenSorted) {
    Store(L"SortBy", static_cast<std::uint32_t>(GetParam().sortBy));
    host.OpenDrawing(L"C:\\z\\mid.dwg");
    HostDocument* zeta = host.OpenDrawing(L"C:\\a\\zeta.dwg");
    host.OpenDrawing(L"C:\\m\\alpha.dwg");
    Load();
    EXPECT_EQ(TabTexts(), GetParam().before);
    EXPECT_EQ(PaletteTitles(), GetParam().before);

    host.Activate(zeta);
    host.Modify(zeta);
    host.QueueFileName(L"C:\\y\\aaa.dwg");
    host.Type(L"SAVEAS");
    EXPECT_EQ(TabTexts(), GetParam().after);
    EXPECT_EQ(PaletteTitles(), GetParam().after);
    EXPECT_EQ(Bar().ActiveDocument(), zeta);
    for (std::size_t i = 0; i < Bar().m_palette.m_items.size(); ++i)
        EXPECT_EQ(Bar().m_palette.m_items[i]->nIndex, static_cast<int>(i));
    EXPECT_EQ(Bar().m_RecentFiles.front(), L"C:\\y\\aaa.dwg");
}

INSTANTIATE_TEST_SUITE_P(
    SortBy, SaveAsRenames,
    ::testing::Values(RenameCase{0, {L"mid", L"zeta", L"alpha"}, {L"mid", L"aaa", L"alpha"}},
                      RenameCase{1, {L"alpha", L"mid", L"zeta"}, {L"aaa", L"alpha", L"mid"}},
                      RenameCase{2, {L"zeta", L"alpha", L"mid"}, {L"alpha", L"aaa", L"mid"}}),
    [](const auto& info) { return "SortBy" + std::to_string(info.param.sortBy); });

TEST_F(DocumentSession, DrawingsOfOneNameKeepTheirOpeningOrderAmongTheTabs) {
    Store(L"SortBy", 1);
    HostDocument* first = host.OpenDrawing(L"C:\\one\\plan.dwg");
    HostDocument* second = host.OpenDrawing(L"C:\\two\\Plan.dwg");
    HostDocument* third = host.OpenDrawing(L"C:\\three\\PLAN.dwg");
    host.OpenDrawing(L"C:\\x\\a.dwg");
    Load();
    EXPECT_EQ(TabTexts(), (Texts{L"a", L"plan", L"Plan", L"PLAN"}));
    EXPECT_EQ(Bar().m_tabCtrl.GetDocument(1), first);
    EXPECT_EQ(Bar().m_tabCtrl.GetDocument(2), second);
    EXPECT_EQ(Bar().m_tabCtrl.GetDocument(3), third);
    // The palette's sort may put equals in any order; each drawing is there once.
    EXPECT_EQ(Bar().m_palette.m_items.size(), 4u);
    EXPECT_EQ(PaletteTitles()[0], L"a");
    EXPECT_NE(Item(first), nullptr);
    EXPECT_NE(Item(second), nullptr);
    EXPECT_NE(Item(third), nullptr);
}

TEST_F(DocumentSession, ANeverSavedDrawingIsNamedAndSortedByTheHostsFileName) {
    Store(L"SortBy", 1);
    host.OpenDrawing(L"C:\\x\\Beta.dwg");
    HostDocument* fresh = host.NewDrawing();
    host.OpenDrawing(L"C:\\x\\alpha.dwg");
    Load();
    EXPECT_EQ(TabTexts(), (Texts{L"alpha", L"Beta", L"Drawing1"}));
    EXPECT_EQ(PaletteTitles(), (Texts{L"alpha", L"Beta", L"Drawing1"}));
    EXPECT_EQ(Bar().GetDocumentName(fresh, true), L"Drawing1.dwg");
}

TEST_F(DocumentSession, HideOnSingleGivesTheRoomBackAtOneDrawingAndTakesItAtTwo) {
    Store(L"HideOnSingle", 1);
    host.OpenDrawing(L"C:\\jobs\\plan.dwg");
    host.OpenDrawing(L"C:\\jobs\\site.dwg");
    Load();
    auto frameMoves = [&] {
        std::size_t n = 0;
        for (const auto& move : host.Windows().Moves())
            n += move.window == g_hwndFrame;
        return n;
    };
    const std::size_t before = frameMoves();

    host.Type(L"CLOSE");
    EXPECT_EQ(frameMoves(), before + 2);  // shrunk and grown back
    EXPECT_EQ(host.PromptsPosted(), 1);

    host.OpenDrawing(L"C:\\jobs\\roof.dwg");
    EXPECT_EQ(frameMoves(), before + 4);
    EXPECT_EQ(host.PromptsPosted(), 1);
    host.OpenDrawing(L"C:\\jobs\\wall.dwg");  // the third: the bar is there already
    EXPECT_EQ(frameMoves(), before + 4);
    EXPECT_TRUE(host.ReactorFailures().empty());
}

TEST_F(DocumentSession, ClosingTheLastDrawingEmptiesBothListsAndForgetsTheView) {
    host.OpenDrawing(L"C:\\jobs\\plan.dwg");
    Load();
    host.OpenDrawing(L"C:\\jobs\\site.dwg");
    RefreshHostLayout(g_hwndFrame);  // the host's first layout
    EXPECT_NE(g_hwndDwgView, nullptr);
    const int redraws = host.Windows().Window(g_hwndFrame).redraws;
    host.Type(L"CLOSE");
    EXPECT_EQ(host.PromptsPosted(), 0);  // without HideOnSingle one drawing left changes no room
    EXPECT_EQ(host.Windows().Window(g_hwndFrame).redraws, redraws);
    host.Type(L"CLOSE");
    EXPECT_TRUE(TabTexts().empty());
    EXPECT_TRUE(Bar().m_palette.m_items.empty());
    EXPECT_EQ(g_hwndDwgView, nullptr);
    EXPECT_FALSE(host.Windows().IsVisible(Tabs()));
    EXPECT_FALSE(host.Windows().IsVisible(Palette()));

    host.OpenDrawing(L"C:\\jobs\\roof.dwg");
    EXPECT_TRUE(host.Windows().IsVisible(Palette()));
}

TEST_F(DocumentSession, AFailedCountEndsTheDocumentEventSilently) {
    Store(L"TabMode", 1);
    Load();
    host.FailAutomationCall(SimAutomationCall::DocumentCount, hr::kFail, L"Unspecified error");
    host.OpenDrawing(L"C:\\jobs\\plan.dwg");
    EXPECT_EQ(TabTexts(), (Texts{L"plan"}));  // added before the count
    EXPECT_FALSE(host.Windows().IsVisible(Tabs()));  // what follows the count never ran
    EXPECT_TRUE(host.ReactorFailures().empty());
    EXPECT_TRUE(host.MessageBoxesShown().empty());
    host.OpenDrawing(L"C:\\jobs\\site.dwg");  // the failure was the one call's alone
    EXPECT_EQ(TabTexts(), (Texts{L"plan", L"site"}));
}

TEST_F(DocumentSession, APaletteOfANewSizeLaysOutItsCellsAgain) {
    host.OpenDrawing(L"C:\\jobs\\plan.dwg");
    Load();
    const int redraws = host.Windows().Window(Palette()).redraws;
    host.Windows().Move(Palette(), win::RECT{0, 0, 300, 100}, false);
    EXPECT_EQ(host.Windows().Window(Palette()).redraws, redraws + 1);
    host.Windows().Move(Palette(), win::RECT{10, 0, 310, 100}, false);  // moved, same size
    EXPECT_EQ(host.Windows().Window(Palette()).redraws, redraws + 1);
}

// A change of view relays out the host only when asked, and only for a docked bar: the MDI
// client beside it, the command window around it.
TEST_F(DocumentSession, AChangeOfViewRelaysOutTheWindowTheBarTakesItsRoomFrom) {
    const struct {
        int floating;
        int side;
        bool refresh;
        int mdiMoves;
        int cmdMoves;
    } cases[] = {{0, dock::kTop, true, 1, 0},
                 {0, dock::kTop, false, 0, 0},
                 {1, dock::kTop, true, 0, 0},
                 {0, dock::kCmdWndLeft, true, 0, 1}};
    host.OpenDrawing(L"C:\\jobs\\plan.dwg");
    for (const auto& c : cases) {
        Store(L"Floating", static_cast<std::uint32_t>(c.floating));
        Store(L"DockSide", static_cast<std::uint32_t>(c.side));
        Load();
        const std::size_t before = host.Windows().Moves().size();
        Bar().SetTabMode(true, c.refresh);
        int mdiMoves = 0, cmdMoves = 0;
        for (std::size_t i = before; i < host.Windows().Moves().size(); ++i) {
            mdiMoves += host.Windows().Moves()[i].window == g_hwndMdiClient;
            cmdMoves += host.Windows().Moves()[i].window == g_hwndCmdWnd;
        }
        EXPECT_EQ(mdiMoves, c.mdiMoves) << c.floating << " " << c.side << " " << c.refresh;
        EXPECT_EQ(cmdMoves, c.cmdMoves) << c.floating << " " << c.side << " " << c.refresh;
        EXPECT_TRUE(host.Windows().IsVisible(Tabs()) || c.floating != 0);
        Unload();
        MapModule();
    }
}

TEST_F(DocumentSession, TheViewTimerMarksTheActivePreviewOutOfDateOnce) {
    HostDocument* plan = host.OpenDrawing(L"C:\\jobs\\plan.dwg");
    Load();
    Item(plan)->bDirty = false;
    host.Windows().SetTimer(Palette(), HvDwgPalette::kViewChangedTimer, 800);  // a wheel step
    host.Windows().Elapse(799);
    EXPECT_FALSE(Item(plan)->bDirty);
    const int redraws = host.Windows().Window(Palette()).redraws;
    host.Windows().Elapse(1);
    EXPECT_TRUE(Item(plan)->bDirty);
    EXPECT_TRUE(host.Windows().Window(Palette()).timers.empty());  // killed at its first tick
    // Only that preview's cell is redrawn.
    EXPECT_EQ(host.Windows().Window(Palette()).redraws, redraws);
    EXPECT_EQ(host.Windows().Window(Palette()).redrawnRects,
              std::vector<win::RECT>{Item(plan)->rcItem});
}

}  // namespace
