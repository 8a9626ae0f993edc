// The bar's room in the host's frame: the cut of a position on each dock side, and sessions in
// which the host lays out its windows through the hooks and the bar ends up in the gap.

#include "host/mdi_client_hook.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "bar/document_session.h"
#include "layout/relayout.h"
#include "settings/tabrow_settings.h"

namespace {

TEST(CutBarRoom, EachSideGivesTheBarItsStripAndTheWindowTheRest) {
    struct Case {
        int side;
        win::RECT window;
        win::RECT bar;
    };
    const Case cases[] = {
        {dock::kTop, {10, 160, 1010, 860}, {10, 60, 1010, 160}},
        {dock::kLeft, {110, 60, 1010, 860}, {10, 60, 110, 860}},
        {dock::kRight, {10, 60, 910, 860}, {910, 60, 1010, 860}},
        {dock::kBottom, {10, 60, 1010, 760}, {10, 760, 1010, 860}},
        {dock::kCmdWndLeft, {110, 60, 1010, 860}, {10, 60, 110, 860}},
        {dock::kCmdWndRight, {10, 60, 910, 860}, {910, 60, 1010, 860}},
        {59423, {10, 60, 1010, 860}, {10, 60, 1010, 860}},  // no side: nothing is cut
    };
    for (const Case& c : cases) {
        win::WINDOWPOS pos{nullptr, nullptr, 10, 60, 1000, 800, 0};
        EXPECT_EQ(CutBarRoom(pos, c.side, 100), c.bar) << c.side;
        EXPECT_EQ((win::RECT{pos.x, pos.y, pos.x + pos.cx, pos.y + pos.cy}), c.window) << c.side;
    }
}

// The host at start: a maximised frame whose MDI client has the room {0, 60, 1920, 880} and
// whose command window fills its container, {0, 0, 1920, 140}.
constexpr win::RECT kMdiRoom{0, 60, 1920, 880};
constexpr win::RECT kCmdRoom{0, 0, 1920, 140};

class LayoutSession : public DocumentSession {
protected:
    void OpenTwo() {
        host.OpenDrawing(L"C:\\jobs\\site.dwg");
        host.OpenDrawing(L"C:\\jobs\\plan.dwg");
    }
    void LoadDocked(int side) {
        Store(L"DockSide", static_cast<std::uint32_t>(side));
        Load();
    }
    void Refresh() { RefreshHostLayout(g_hwndFrame); }
    win::RECT Rect(HostWindow* window) { return host.Windows().RectInParent(window); }
    HostWindow* BarWindow() { return Bar().GetSafeHwnd(); }
};

TEST_F(LayoutSession, OnEverySideTheBarTakesItsRoomFromTheHostsWindow) {
    struct Case {
        int side;
        win::RECT mdiClient;
        win::RECT cmdWnd;
        win::RECT bar;
    };
    // Previews 100 pixels thick; 300 pixels beside the command line.
    const Case cases[] = {
        {dock::kTop, {0, 160, 1920, 880}, kCmdRoom, {0, 60, 1920, 160}},
        {dock::kLeft, {100, 60, 1920, 880}, kCmdRoom, {0, 60, 100, 880}},
        {dock::kRight, {0, 60, 1820, 880}, kCmdRoom, {1820, 60, 1920, 880}},
        {dock::kBottom, {0, 60, 1920, 780}, kCmdRoom, {0, 780, 1920, 880}},
        {dock::kCmdWndLeft, kMdiRoom, {300, 0, 1920, 140}, {0, 0, 300, 140}},
        {dock::kCmdWndRight, kMdiRoom, {0, 0, 1620, 140}, {1620, 0, 1920, 140}},
    };
    OpenTwo();
    Store(L"WidthOnCmdWnd", 300);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.side);
        LoadDocked(c.side);
        Refresh();
        EXPECT_EQ(Rect(g_hwndMdiClient), c.mdiClient);
        EXPECT_EQ(Rect(g_hwndCmdWnd), c.cmdWnd);
        EXPECT_EQ(Rect(BarWindow()), c.bar);
        // The bar is moved only while a sibling is laid out: beside the MDI client a child of
        // the frame, in the command window one of its container.
        EXPECT_TRUE(host.Windows().MisplacedMoves().empty());
        EXPECT_EQ(host.Windows().Parent(BarWindow()),
                  host.Windows().Parent(dock::IsInCommandWindow(c.side) ? g_hwndCmdWnd
                                                                        : g_hwndMdiClient));
        // The host's own wishes are remembered uncut, and the command line fills what is left.
        EXPECT_EQ(g_rcMdiClient, kMdiRoom);
        EXPECT_EQ(g_rcMdiClientSize, kMdiRoom);
        EXPECT_EQ(g_rcCmdWnd, kCmdRoom);
        EXPECT_EQ(Rect(host.Windows().DockedCommandLine()).Width(), c.cmdWnd.Width());
        Unload();
        EXPECT_EQ(Rect(g_hwndMdiClient), kMdiRoom);  // the room goes back with the bar
        EXPECT_EQ(Rect(g_hwndCmdWnd), kCmdRoom);
        MapModule();
    }
}

TEST_F(LayoutSession, TabsTakeTheirRowsAndWithoutDrawingsACaption) {
    Store(L"DockSide", dock::kTop);
    Load();
    Refresh();
    EXPECT_EQ(Rect(BarWindow()), (win::RECT{0, 60, 1920, 83}));  // the caption's 23 pixels
    Unload();

    MapModule();
    OpenTwo();
    Store(L"TabMode", 1);
    Load();
    Refresh();
    // Both tabs fit in one row at the MDI client's width; 6 pixels of padding on top.
    const int thickness = SimTabControl::kRowHeight + 6;
    EXPECT_EQ(Rect(g_hwndMdiClient), (win::RECT{0, 60 + thickness, 1920, 880}));
    EXPECT_EQ(Rect(BarWindow()), (win::RECT{0, 60, 1920, 60 + thickness}));
}

TEST_F(LayoutSession, ALoneDrawingWithHideOnSingleLeavesTheHostItsFullLayout) {
    host.OpenDrawing(L"C:\\jobs\\site.dwg");
    Store(L"HideOnSingle", 1);
    Store(L"DockSide", dock::kLeft);
    Load();
    const win::RECT barBefore = Rect(BarWindow());
    Refresh();
    EXPECT_EQ(Rect(g_hwndMdiClient), kMdiRoom);
    EXPECT_EQ(Rect(BarWindow()), barBefore);
    EXPECT_EQ(g_rcMdiClient, win::RECT{});  // passed on before anything was remembered

    host.OpenDrawing(L"C:\\jobs\\plan.dwg");  // two again: the bar comes back
    Refresh();
    EXPECT_EQ(Rect(g_hwndMdiClient), (win::RECT{100, 60, 1920, 880}));
}

TEST_F(LayoutSession, AnEmptyPositionPassesUncutAndIsNotRemembered) {
    OpenTwo();
    LoadDocked(dock::kTop);
    Refresh();
    const win::RECT bar = Rect(BarWindow());
    host.Windows().Move(g_hwndMdiClient, win::RECT{0, 60, 0, 880}, true);
    EXPECT_EQ(Rect(g_hwndMdiClient), (win::RECT{0, 60, 0, 880}));
    host.Windows().Move(g_hwndMdiClient, win::RECT{0, 60, 1920, 60}, true);
    EXPECT_EQ(Rect(g_hwndMdiClient), (win::RECT{0, 60, 1920, 60}));
    EXPECT_EQ(g_rcMdiClient, kMdiRoom);
    EXPECT_EQ(Rect(BarWindow()), bar);
}

// The MDI client's own procedure: what position it is asked to take.
class PositionWitness : public WindowHandler {
public:
    MsgResult OnWindowPosChanging(win::WINDOWPOS& pos) override {
        seen.push_back(win::RECT{pos.x, pos.y, pos.x + pos.cx, pos.y + pos.cy});
        return MsgResult::NotHandled();
    }
    std::vector<win::RECT> seen;
};

TEST_F(LayoutSession, ACountThatFailsDuringAMoveLeavesTheHostItsOwnPositionUncut) {
    OpenTwo();
    LoadDocked(dock::kTop);
    Refresh();
    const win::RECT bar = Rect(BarWindow());
    PositionWitness own;
    host.Windows().SetMessageHandler(g_hwndMdiClient, &own);
    Bar().m_bHideOnSingle = 1;  // the count is asked for at each move
    host.FailAutomation(hr::kFail, L"Unspecified error");
    host.Windows().Move(g_hwndMdiClient, kMdiRoom, true);
    host.ClearAutomationFailure();
    EXPECT_EQ(own.seen, std::vector<win::RECT>{kMdiRoom});
    EXPECT_EQ(Rect(g_hwndMdiClient), kMdiRoom);
    EXPECT_EQ(Rect(BarWindow()), bar);

    Refresh();  // the next move cuts again
    EXPECT_EQ(Rect(g_hwndMdiClient), (win::RECT{0, 160, 1920, 880}));
    host.Windows().SetMessageHandler(g_hwndMdiClient, nullptr);
}

TEST_F(LayoutSession, TroffGivesTheRoomBackAndStopsRememberingTronTakesItAgain) {
    OpenTwo();
    LoadDocked(dock::kRight);
    Refresh();
    ASSERT_TRUE(host.Type(L"TROFF"));
    EXPECT_EQ(Rect(g_hwndMdiClient), kMdiRoom);
    host.Windows().Move(g_hwndMdiClient, win::RECT{0, 60, 1000, 500}, true);
    EXPECT_EQ(g_rcMdiClient, kMdiRoom);

    ASSERT_TRUE(host.Type(L"TRON"));
    EXPECT_EQ(Rect(g_hwndMdiClient), (win::RECT{0, 60, 1820, 880}));
}

TEST_F(LayoutSession, AFloatingBarTakesNoRoomButTheHostsWishesAreRemembered) {
    OpenTwo();
    Store(L"Floating", 1);
    LoadDocked(dock::kTop);
    const win::RECT bar = Rect(BarWindow());
    Refresh();
    EXPECT_EQ(Rect(g_hwndMdiClient), kMdiRoom);
    EXPECT_EQ(Rect(g_hwndCmdWnd), kCmdRoom);
    EXPECT_EQ(Rect(BarWindow()), bar);
    EXPECT_EQ(g_rcMdiClient, kMdiRoom);
    EXPECT_EQ(g_rcCmdWnd, kCmdRoom);
}

TEST_F(LayoutSession, RelayoutsBringANewThicknessIntoTheHostsWindows) {
    OpenTwo();
    LoadDocked(dock::kBottom);
    Refresh();
    Bar().m_nSize = 150;
    RelayoutMdiClient();
    EXPECT_EQ(Rect(g_hwndMdiClient), (win::RECT{0, 60, 1920, 730}));
    EXPECT_EQ(Rect(BarWindow()), (win::RECT{0, 730, 1920, 880}));
    // The host's window moves without repainting; the bar, in the gap, repaints.
    const auto& moves = host.Windows().Moves();
    EXPECT_FALSE(moves.back().repaint);
    EXPECT_TRUE(std::find_if(moves.rbegin(), moves.rend(), [this](const auto& move) {
                    return move.window == BarWindow();
                })->repaint);

    Unload();
    MapModule();
    LoadDocked(dock::kCmdWndRight);
    Refresh();
    Bar().m_nWidthOnCmdWnd = 500;
    RelayoutCmdWnd();
    EXPECT_EQ(Rect(g_hwndCmdWnd), (win::RECT{0, 0, 1420, 140}));
    EXPECT_EQ(Rect(BarWindow()), (win::RECT{1420, 0, 1920, 140}));
}

}  // namespace
