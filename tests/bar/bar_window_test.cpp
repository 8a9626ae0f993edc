// The bar's window in the host's frame: its children, its place on each dock side with no, one
// and many drawings, the drag of its inner edge, and its moves between parents.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "bar/document_session.h"
#include "layout/relayout.h"
#include "ports/window_messages.h"
#include "settings/reg_impl.h"
#include "settings/tabrow_settings.h"

namespace {

// The host at start: the MDI client's room, the command window's room in its container, and
// the container's top in the frame.
constexpr win::RECT kMdiRoom{0, 60, 1920, 880};
constexpr win::RECT kCmdRoom{0, 0, 1920, 140};
constexpr int kContainerTop = 880;

class BarWindowSession : public DocumentSession {
protected:
    void Open(int count) {
        // 28 characters: 208 pixels a tab, 9 to a row across the MDI client, 3 down its height.
        for (int i = 1; i <= count; ++i) {
            std::wstring number = (i < 10 ? L"0" : L"") + std::to_wstring(i);
            host.OpenDrawing(L"C:\\jobs\\level-" + number + L"-ground-floor-plan-a.dwg");
        }
    }
    void LoadDocked(int side) {
        Store(L"DockSide", static_cast<std::uint32_t>(side));
        Store(L"WidthOnCmdWnd", 300);
        Load();
        RefreshHostLayout(g_hwndFrame);
    }
    // The module goes, then every drawing: the next case starts from an empty host.
    void EndCase() {
        Unload();
        while (!host.Documents().empty())
            ASSERT_TRUE(host.Type(L"CLOSE"));
        MapModule();
    }
    SimWindowSystem& Windows() { return host.Windows(); }
    HostWindow* BarWindow() { return Bar().GetSafeHwnd(); }
    win::RECT Rect(HostWindow* window) { return Windows().RectInParent(window); }
    int Setting(const wchar_t* key) { return theApp.GetInt(L"", key, -1); }
};

TEST_F(BarWindowSession, TheBarMakesItsChildrenHiddenWithTheirTitlesIdsAndFontsAndCannotBeClosed) {
    win::LOGFONTW tabFont;
    tabFont.lfHeight = -15;
    ASSERT_TRUE(HvRegImpl(kKey, L"").SetFont(L"", L"TabFont", tabFont));
    Load();
    struct Case {
        HostWindow* window;
        const wchar_t* title;
        int id;
        HostWindow* parent;
        bool visible;
        int fontHeight;  // 0: no font set
    };
    // The stored tab font; the label font, never stored, is the stock GUI font (-11).
    const Case cases[] = {{BarWindow(), L"Harvane Tabrow Wnd", 11265, g_hwndFrame, true, 0},
                          {Palette(), L"Harvane Doc Palette", 1001, BarWindow(), false, -11},
                          {Tabs(), L"", 1003, BarWindow(), false, -15}};
    for (const Case& c : cases) {
        const SimWindow& w = Windows().Window(c.window);
        EXPECT_EQ(w.title, c.title);
        EXPECT_EQ(w.id, c.id);
        EXPECT_EQ(w.parent, c.parent);
        EXPECT_EQ(Windows().IsVisible(c.window), c.visible);
        EXPECT_EQ(w.font ? w.font->lfHeight : 0, c.fontHeight);
    }
    EXPECT_EQ(std::u16string(Windows().Window(Palette()).font->lfFaceName), u"MS Shell Dlg");
    // In preview mode the tabs keep the style they were made with.
    EXPECT_EQ(Windows().Style(Tabs()), 0x40002A40u);
    EXPECT_EQ(Windows().Send(BarWindow(), wm::kClose, 0, 0), 0);
    EXPECT_TRUE(Windows().IsWindow(BarWindow()));
    EXPECT_EQ(Windows().Send(BarWindow(), wm::kAcadKeepFocus, 0, 0), 1);
}

TEST_F(BarWindowSession, OnEachSideTabsTakeTheirRowsOrACaptionFromTheHostsWindow) {
    struct Case {
        int side;
        int drawings;
        int hideOnSingle;
        win::RECT bar;
        win::RECT host;  // the MDI client, or the command window for its two sides
        int rows;        // as the tab control has them at the bar's size; -1: not looked at
        unsigned sideStyle;
        win::RECT
            tabs{};  // in the bar, inside the edge the host's window draws; empty: not looked at
    };
    constexpr unsigned kV = tcs::kVertical;
    // No drawing: a caption (23). Tabs 20 pixels a row, plus the side's padding (top 6, left 8,
    // right 5, bottom 4). Twelve drawings wrap: 2 rows across, 4 columns down. The command
    // window's room is the stored 300 pixels, whatever the rows.
    const Case cases[] = {
        {dock::kTop, 0, 0, {0, 60, 1920, 83}, {0, 83, 1920, 880}, 1, 0},
        {dock::kTop, 1, 0, {0, 60, 1920, 86}, {0, 86, 1920, 880}, 1, 0},
        {dock::kTop, 12, 0, {0, 60, 1920, 106}, {0, 106, 1920, 880}, 2, 0, {0, 1, 1920, 46}},
        {dock::kLeft, 0, 0, {0, 60, 23, 880}, {23, 60, 1920, 880}, 1, kV},
        {dock::kLeft, 1, 0, {0, 60, 28, 880}, {28, 60, 1920, 880}, 1, kV},
        {dock::kLeft, 12, 0, {0, 60, 88, 880}, {88, 60, 1920, 880}, 4, kV, {2, 0, 88, 820}},
        {dock::kRight, 0, 0, {1897, 60, 1920, 880}, {0, 60, 1897, 880}, 1, kV | tcs::kRight},
        {dock::kRight, 1, 0, {1895, 60, 1920, 880}, {0, 60, 1895, 880}, 1, kV | tcs::kRight},
        {dock::kRight,
         12,
         0,
         {1835, 60, 1920, 880},
         {0, 60, 1835, 880},
         4,
         kV | tcs::kRight,
         {0, 0, 84, 820}},
        {dock::kBottom, 0, 0, {0, 857, 1920, 880}, {0, 60, 1920, 857}, 1, tcs::kBottom},
        {dock::kBottom, 1, 0, {0, 856, 1920, 880}, {0, 60, 1920, 856}, 1, tcs::kBottom},
        {dock::kBottom,
         12,
         0,
         {0, 836, 1920, 880},
         {0, 60, 1920, 836},
         2,
         tcs::kBottom,
         {0, 0, 1920, 44}},
        {dock::kCmdWndLeft, 0, 0, {0, 0, 300, 140}, {300, 0, 1920, 140}, 1, 0},
        {dock::kCmdWndLeft, 1, 0, {0, 0, 300, 140}, {300, 0, 1920, 140}, 1, 0},
        {dock::kCmdWndLeft, 12, 0, {0, 0, 300, 140}, {300, 0, 1920, 140}, 12, 0, {0, 0, 300, 140}},
        {dock::kCmdWndRight, 0, 0, {1620, 0, 1920, 140}, {0, 0, 1620, 140}, 1, 0},
        {dock::kCmdWndRight, 1, 0, {1620, 0, 1920, 140}, {0, 0, 1620, 140}, 1, 0},
        {dock::kCmdWndRight, 12, 0, {1620, 0, 1920, 140}, {0, 0, 1620, 140}, 12, 0},
        // A lone drawing hidden: the host keeps its whole room, the bar stays where it was made.
        {dock::kTop, 1, 1, {}, kMdiRoom, -1, 0},
        {dock::kCmdWndRight, 1, 1, {}, kCmdRoom, -1, 0},
        {dock::kTop, 2, 1, {0, 60, 1920, 86}, {0, 86, 1920, 880}, 1, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.side << " with " << c.drawings << " drawings");
        Open(c.drawings);
        Store(L"TabMode", 1);
        Store(L"HideOnSingle", static_cast<std::uint32_t>(c.hideOnSingle));
        LoadDocked(c.side);
        const bool inCmd = dock::IsInCommandWindow(c.side);
        EXPECT_EQ(Rect(BarWindow()), c.bar);
        EXPECT_EQ(Rect(inCmd ? g_hwndCmdWnd : g_hwndMdiClient), c.host);
        EXPECT_EQ(Rect(inCmd ? g_hwndMdiClient : g_hwndCmdWnd), inCmd ? kMdiRoom : kCmdRoom);
        EXPECT_EQ(Windows().Parent(BarWindow()), inCmd ? g_hwndCmdContainer : g_hwndFrame);
        if (c.tabs.Width() > 0) {
            EXPECT_EQ(Rect(Tabs()), c.tabs);
        }
        if (c.rows >= 0) {
            EXPECT_EQ(Bar().m_nTabRows, c.rows);
        }
        EXPECT_EQ(Windows().Style(Tabs()) & (kV | tcs::kBottom), c.sideStyle);
        EXPECT_EQ(Windows().IsVisible(Tabs()), c.drawings > 0);
        EXPECT_TRUE(Windows().MisplacedMoves().empty());
        EndCase();
    }
}

TEST_F(BarWindowSession, TheInnerEdgeDragsThePreviewsThicknessWhereTheBarAllowsIt) {
    enum Block { kNone, kLocked, kFloating, kTabs };  // what stands in the way, if anything
    struct Case {
        int side;
        Block block;
        win::POINT press;  // on the screen: on the bar's inner edge
        win::POINT release;
        int cursor;          // while the mouse is over the press point
        const wchar_t* key;  // the setting written at the release
        int written;         // its value; -1: not written (the stored 100 or 300 stays)
        win::RECT bar;       // after the release
    };
    // Previews 100 pixels thick, 300 beside the command line; the container's top is 880.
    const Case cases[] = {
        {dock::kTop, kNone, {900, 159}, {900, 200}, idc::kSizeNS, L"Size", 140, {0, 60, 1920, 200}},
        // The edge is the frame's width (4) either side of the bar's inner side; the new
        // thickness is where the mouse is let go, wherever on the edge it was pressed.
        {dock::kBottom,
         kNone,
         {900, 784},
         {900, 700},
         idc::kSizeNS,
         L"Size",
         180,
         {0, 700, 1920, 880}},
        {dock::kLeft, kNone, {96, 400}, {150, 420}, idc::kSizeWE, L"Size", 150, {0, 60, 150, 880}},
        {dock::kLeft, kNone, {95, 400}, {150, 420}, idc::kArrow, L"Size", -1, {0, 60, 100, 880}},
        {dock::kRight,
         kNone,
         {1821, 400},
         {1700, 400},
         idc::kSizeWE,
         L"Size",
         220,
         {1700, 60, 1920, 880}},
        {dock::kCmdWndLeft,
         kNone,
         {299, kContainerTop + 50},
         {400, kContainerTop + 50},
         idc::kSizeWE,
         L"WidthOnCmdWnd",
         400,
         {0, 0, 400, 140}},
        // Tabs in the command window take the user's width too.
        {dock::kCmdWndRight,
         kTabs,
         {1621, kContainerTop + 50},
         {1500, kContainerTop + 50},
         idc::kSizeWE,
         L"WidthOnCmdWnd",
         420,
         {1500, 0, 1920, 140}},
        // A release without a move writes the old size back and lays the host out.
        {dock::kLeft, kNone, {99, 400}, {99, 400}, idc::kSizeWE, L"Size", 100, {0, 60, 100, 880}},
        // Where the edge can't be dragged the children's cursor stays, and nothing is written.
        {dock::kLeft, kLocked, {99, 400}, {150, 400}, idc::kArrow, L"Size", -1, {0, 60, 100, 880}},
        {dock::kTop, kTabs, {900, 85}, {900, 200}, idc::kArrow, L"Size", -1, {0, 60, 1920, 86}},
        {dock::kLeft, kFloating, {299, 110}, {350, 110}, idc::kArrow, L"Size", -1, {0, 0, 300, 100}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.side << " blocked by " << c.block);
        Open(2);
        Store(L"LockSize", c.block == kLocked);
        Store(L"Floating", c.block == kFloating);
        Store(L"TabMode", c.block == kTabs);
        Store(L"Size", 100);
        LoadDocked(c.side);
        const int before = Setting(c.key);
        const auto movesBefore = static_cast<std::ptrdiff_t>(Windows().Moves().size());

        Windows().Mouse(wm::kMouseMove, c.press);
        EXPECT_EQ(Windows().CursorShape(), c.cursor);
        EXPECT_EQ(Windows().Capture(), nullptr);  // only a press takes the mouse
        Windows().Mouse(wm::kLButtonDown, c.press, mk::kLButton);
        EXPECT_EQ(Windows().Capture(), c.written < 0 ? nullptr : BarWindow());
        if (!(c.release == c.press))
            Windows().Mouse(wm::kMouseMove, c.release, mk::kLButton);
        EXPECT_EQ(Setting(c.key), before);  // nothing moves before the release
        Windows().Mouse(wm::kLButtonUp, c.release);
        EXPECT_EQ(Windows().Capture(), nullptr);
        EXPECT_EQ(Bar().m_bResizing, 0);
        EXPECT_EQ(Setting(c.key), c.written < 0 ? before : c.written);
        EXPECT_EQ(Rect(BarWindow()), c.bar);
        // The release lays out the whole frame: two moves of it.
        const auto& moves = Windows().Moves();
        EXPECT_EQ(std::count_if(moves.begin() + movesBefore, moves.end(),
                                [](const auto& move) { return move.window == g_hwndFrame; }),
                  c.written < 0 ? 0 : 2);
        EndCase();
    }
}

TEST_F(BarWindowSession, TheBarMovesBetweenParentsWhenItDocksInTheCommandWindowOrFloats) {
    Open(2);
    LoadDocked(dock::kLeft);
    struct Step {
        int side;
        bool floating;
        HostWindow* parent;  // null: the floating window
        win::RECT bar;
        win::RECT host;  // the window the bar takes its room from; the whole MDI client floating
    };
    // The side's relayout runs where the parent changes; the MDI client, left cut by the move
    // into the command window, gets its room back at the host's next layout.
    const Step steps[] = {
        {dock::kCmdWndLeft, false, g_hwndCmdContainer, {0, 0, 300, 140}, {300, 0, 1920, 140}},
        {dock::kLeft, false, g_hwndFrame, {0, 60, 100, 880}, {100, 60, 1920, 880}},
        {dock::kRight, true, nullptr, {0, 0, 300, 100}, kMdiRoom},
        {dock::kRight, false, g_hwndFrame, {1820, 60, 1920, 880}, {0, 60, 1820, 880}},
    };
    for (const Step& step : steps) {
        SCOPED_TRACE(testing::Message() << step.side << (step.floating ? " floating" : ""));
        if (step.floating)
            Bar().m_nDockSide = step.side;
        else if (Bar().m_bFloating == 0)
            Bar().SetDockSide(step.side, true);
        Bar().SetFloating(step.floating, true);
        HostWindow* parent = step.parent ? step.parent : Bar().FloatingWindow();
        EXPECT_EQ(Windows().Parent(BarWindow()), parent);
        EXPECT_EQ(Windows().IsVisible(Bar().FloatingWindow()), step.floating);
        EXPECT_EQ(Rect(BarWindow()), step.bar);
        EXPECT_EQ(Rect(step.side == dock::kCmdWndLeft ? g_hwndCmdWnd : g_hwndMdiClient), step.host);
        EXPECT_TRUE(Windows().IsVisible(Palette()));
        if (step.side == dock::kCmdWndLeft) {
            EXPECT_EQ(Rect(Palette()), (win::RECT{1, 1, 299, 137}));
        }
        // TROFF hides the floating window, or the docked bar, whose room goes back to the host.
        ASSERT_TRUE(host.Type(L"TROFF"));
        EXPECT_FALSE(Windows().IsVisible(BarWindow()));
        EXPECT_EQ(Rect(g_hwndMdiClient), kMdiRoom);
        ASSERT_TRUE(host.Type(L"TRON"));
        EXPECT_TRUE(Windows().IsVisible(BarWindow()));
    }
    EXPECT_TRUE(Windows().MisplacedMoves().empty());
}

}  // namespace
