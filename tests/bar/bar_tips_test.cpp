// The bar's tool tips and its floating window: what a drawing's tip says, which tools the tip
// control holds as drawings come, go and are renamed and as the view changes, the tip under the
// mouse, and the floating window's answers, size and place.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "bar/document_session.h"
#include "layout/host_windows.h"
#include "layout/relayout.h"
#include "ports/window_messages.h"
#include "settings/reg_impl.h"

namespace {

struct Tool {
    unsigned id;
    win::RECT rect;
    std::wstring text;
    friend bool operator==(const Tool&, const Tool&) = default;
};

class BarTips : public DocumentSession {
protected:
    void TearDown() override {
        if (!m_module)
            return;
        HostToolTip* tips[] = {Bar().m_tip, Bar().m_tipPalette};
        HostWindow* floating = Bar().FloatingWindow();
        Unload();
        // The bar's window takes all three with it; no call of the bar was ever refused.
        EXPECT_EQ(Tips().Find(tips[0]), nullptr);
        EXPECT_EQ(Tips().Find(tips[1]), nullptr);
        EXPECT_FALSE(host.Windows().IsWindow(floating));
        EXPECT_EQ(Tips().Refusals(), std::vector<std::wstring>{});
    }
    SimToolTips& Tips() { return host.ToolTipControls(); }
    const SimToolTip& Tip() { return *Tips().Find(Bar().m_tip); }
    std::vector<Tool> ToolsOn(HostWindow* window) {
        std::vector<Tool> tools;
        for (const ToolTipTool& t : Tip().tools) {
            if (t.window == window)
                tools.push_back({t.id, t.rect, t.text});
        }
        return tools;
    }
    std::vector<Tool> TabTools() {
        std::vector<Tool> tools;
        for (int i = 0; i < Bar().m_tabCtrl.GetItemCount(); ++i) {
            win::RECT rect;
            host.TabControl().ItemRect(Tabs(), i, rect);
            CFilePath path(host.Document(Bar().m_tabCtrl.GetDocument(i)).pathName);
            tools.push_back({static_cast<unsigned>(i + 1), rect, path.GetFileName()});
        }
        return tools;
    }
    std::vector<Tool> CellTools() {
        std::vector<Tool> tools;
        for (const auto& item : Bar().m_palette.m_items)
            tools.push_back({static_cast<unsigned>(tools.size() + 1), item->rcItem,
                             item->path.GetFileName()});
        return tools;
    }
};

}  // namespace

TEST_F(BarTips, ATipShowsTheNameOrPathAndTheDrawingsSummaryProperties) {
    HostDocument* plan = host.OpenDrawing(L"C:\\jobs\\plan.dwg");
    host.DatabaseOf(plan).summary = {L"Ann", L"Ground floor", L"Walls", L"plan; walls", L"draft",
                                     L"Bob", L"7", L"http://jobs/", {{L"Client", L"Harvane"},
                                     {L"Phase", L""}, {L"Lot", L"12"}}};
    HostDocument* custom = host.OpenDrawing(L"C:\\jobs\\custom.dwg");
    host.DatabaseOf(custom).summary.custom = {{L"Job", L"42"}};
    HostDocument* bare = host.OpenDrawing(L"C:\\jobs\\bare.dwg");
    host.DatabaseOf(bare).summary.author = L"Ann";
    host.DatabaseOf(bare).hasSummary = false;  // no record to read: just the name
    HostDocument* unsaved = host.NewDrawing();
    host.DatabaseOf(unsaved).summary.title = L"Sketch";
    Load();
    struct Case {
        HostDocument* doc;
        bool fullPath;
        bool properties;
        std::wstring tip;
    };
    const Case cases[] = {
        {plan, false, false, L"plan.dwg"},
        {plan, true, false, L"C:\\jobs\\plan.dwg"},
        // Every property in its fixed order, then the custom ones that have a value.
        {plan, false, true,
         L"plan.dwg\nAuthor: Ann\nTitle: Ground floor\nSubject: Walls\nKeywords: plan; walls\n"
         L"Comments: draft\nLastSavedBy: Bob\nRevisionNumber: 7\nHyperlinkBase: http://jobs/\n"
         L"Client: Harvane\nLot: 12"},
        {custom, true, true, L"C:\\jobs\\custom.dwg\nJob: 42"},
        {bare, true, true, L"C:\\jobs\\bare.dwg"},
        // A drawing never saved goes by the name the host gave it.
        {unsaved, false, true, L"Drawing1.dwg\nTitle: Sketch"},
        {unsaved, true, false, L"Drawing1.dwg"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.tip);
        Bar().m_bShowFullPathInTips = c.fullPath;
        Bar().m_bShowDwgPropsInTips = c.properties;
        EXPECT_EQ(Bar().GetTipText(c.doc), c.tip);
    }
}

TEST_F(BarTips, ToolsFollowTheTabsAsDrawingsComeGoAndAreRenamedAndTheCellsInPreviewMode) {
    Store(L"TabMode", 1);
    Store(L"TipDelay", 400);
    Store(L"TipRemain", 7000);
    Store(L"TipWidth", 250);
    host.OpenDrawing(L"C:\\jobs\\alpha.dwg");
    Load();
    for (HostToolTip* tip : {Bar().m_tip, Bar().m_tipPalette}) {
        const SimToolTip& c = *Tips().Find(tip);
        EXPECT_EQ((std::vector<int>{c.initial, c.autoPop, c.reshow, c.maxWidth}),
                  (std::vector<int>{400, 7000, 250, 250}));
    }
    EXPECT_TRUE(Tips().Find(Bar().m_tipPalette)->tools.empty());
    const auto step = [&](const char* what, auto change) {
        SCOPED_TRACE(what);
        change();
        EXPECT_EQ(ToolsOn(Tabs()), TabTools());
        };
    step("at load", [] {});
    HostDocument* beta = nullptr;
    step("opened", [&] { beta = host.OpenDrawing(L"C:\\jobs\\beta.dwg"); });
    step("opened", [&] { host.OpenDrawing(L"C:\\jobs\\gamma.dwg"); });
    step("renamed", [&] {
        host.Activate(beta);
        host.QueueFileName(L"C:\\jobs\\aardvark.dwg");
        host.Type(L"SAVEAS");
    });
    step("closed", [&] { host.Type(L"CLOSE"); });
    // The tabs' tools stay behind on the hidden control, where no mouse comes.
    Bar().SetTabMode(false, true);
    EXPECT_EQ(ToolsOn(Palette()), CellTools());
    Bar().SetTabMode(true, true);
    EXPECT_EQ(ToolsOn(Tabs()), TabTools());
    Bar().m_bShowTips = 0;  // the tools stay, the control shows nothing
    Bar().RefreshTips();
    EXPECT_FALSE(Tip().active);
}

TEST_F(BarTips, TheTipUnderTheMouseShowsAfterTheDelayAsABoxAndGoesOnAPress) {
    Store(L"TabMode", 1);
    Store(L"TipDelay", 400);
    host.OpenDrawing(L"C:\\jobs\\alpha.dwg");
    host.OpenDrawing(L"C:\\jobs\\beta.dwg");
    Load();
    RefreshHostLayout(g_hwndFrame);
    SimWindowSystem& windows = host.Windows();
    win::RECT tab;
    ASSERT_TRUE(host.TabControl().ItemRect(Tabs(), 1, tab));
    const win::POINT over =
        windows.ClientToScreen(Tabs(), {(tab.left + tab.right) / 2, (tab.top + tab.bottom) / 2});
    // The mouse comes through the host's loop, which hands it to the bar's tip controls.
    windows.Mouse(wm::kMouseMove, over);
    windows.Elapse(399);
    EXPECT_EQ(Tips().ShownText(Bar().m_tip), L"");
    windows.Elapse(1);
    EXPECT_EQ(Tips().ShownText(Bar().m_tip), Bar().GetTipText(Bar().m_tabCtrl.GetDocument(1)));
    const win::RECT box = windows.ScreenRect(Tip().popup);
    EXPECT_GT(box.top, over.y);
    windows.Mouse(wm::kLButtonDown, over, mk::kLButton);
    EXPECT_EQ(Tips().ShownText(Bar().m_tip), L"");
    EXPECT_FALSE(windows.IsVisible(Tip().popup));
}

TEST_F(BarTips, TheFloatingWindowHoldsTheBarIgnoresEnterAndEscAndKeepsItsPlace) {
    Store(L"Floating", 1);
    host.OpenDrawing(L"C:\\jobs\\alpha.dwg");
    Load();
    SimWindowSystem& windows = host.Windows();
    HostWindow* floating = Bar().FloatingWindow();
    // A first start: the drawing area's top left corner, 300 by 100.
    const win::RECT frame = windows.ScreenRect(g_hwndFrame);
    const win::POINT corner{frame.left + g_rcMdiClient.left, frame.top + g_rcMdiClient.top};
    EXPECT_EQ(windows.ScreenRect(floating),
              (win::RECT{corner.x, corner.y, corner.x + 300, corner.y + 100}));
    EXPECT_EQ(windows.Parent(Bar().GetSafeHwnd()), floating);
    windows.Move(floating, {400, 300, 900, 420}, true);
    EXPECT_EQ(windows.RectInParent(Bar().GetSafeHwnd()), (win::RECT{0, 0, 500, 120}));
    EXPECT_EQ(windows.Send(floating, wm::kCommand, TrFloatDlg::kIdOk, 0), 0);
    EXPECT_EQ(windows.Send(floating, wm::kCommand, TrFloatDlg::kIdCancel, 0), 0);
    EXPECT_TRUE(windows.IsVisible(floating));
    EXPECT_EQ(windows.Send(floating, wm::kAcadKeepFocus, 0, 0), 1);
    EXPECT_EQ(windows.Send(floating, wm::kNcActivate, 0, 0), 1);
    Unload();
    EXPECT_EQ(HvRegImpl(kKey, L"").GetString(L"", L"FloatPosition", L""),
              L"400:300:900:420:NORMAL");
    MapModule();
    Load();
    EXPECT_EQ(windows.ScreenRect(Bar().FloatingWindow()), (win::RECT{400, 300, 900, 420}));
}
