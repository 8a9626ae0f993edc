// The bar loaded into a host frame of real windows, driven by real mouse input and commands
// typed at the real command line.

#include <gtest/gtest.h>

#include <windows.h>

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "bar/hv_tabrow.h"
#include "gdi_test_support.h"
#include "host/tabrow_app.h"
#include "host_session.h"
#include "ports/host_graphics.h"
#include "settings/settings_keys.h"
#include "support/png_writer.h"
#include "support/test_files.h"

namespace {

constexpr int kWidth = 1024;
constexpr int kHeight = 720;
constexpr int kTop = 59419, kLeft = 59420, kRight = 59421, kBottom = 59422;
constexpr int kCmdLeft = 59424, kCmdRight = 59425;

RECT RectInParent(HWND hwnd) {
    RECT rect{};
    ::GetWindowRect(hwnd, &rect);
    ::MapWindowPoints(nullptr, ::GetParent(hwnd), reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

std::string Text(const RECT& r) {
    return std::to_string(r.left) + "," + std::to_string(r.top) + "," + std::to_string(r.right) +
           "," + std::to_string(r.bottom);
}

class BarOnRealWindows : public ::testing::Test {
protected:
    void LoadDocked(int side, bool tabs = true) {
        session.StoreSetting(keys::kDockSide, static_cast<std::uint32_t>(side));
        session.StoreSetting(keys::kTabMode, tabs ? 1 : 0);
        for (const wchar_t* name : {L"core", L"site", L"roof"})
            docs.push_back(
                session.Host().OpenDrawing(L"C:\\jobs\\" + std::wstring(name) + L".dwg"));
        ASSERT_TRUE(session.Load());
    }
    HWND Bar() const { return reinterpret_cast<HWND>(g_pTabrow->GetSafeHwnd()); }
    HWND Tabs() const { return reinterpret_cast<HWND>(g_pTabrow->m_tabCtrl.m_hWnd); }
    HWND ActiveView() {
        return reinterpret_cast<HWND>(
            ::SendMessageW(session.Frame().MdiClient(), WM_MDIGETACTIVE, 0, 0));
    }
    // The mouse as the user moves it: real input, delivered by the window system.
    void MouseTo(POINT screen) {
        ::SetCursorPos(screen.x, screen.y);
        INPUT move{};
        move.type = INPUT_MOUSE;
        move.mi.dwFlags = MOUSEEVENTF_MOVE;
        ::SendInput(1, &move, sizeof move);
        session.Pump();
    }
    void Button(bool down, bool right = false) {
        INPUT press{};
        press.type = INPUT_MOUSE;
        press.mi.dwFlags = right ? (down ? MOUSEEVENTF_RIGHTDOWN : MOUSEEVENTF_RIGHTUP)
                                 : (down ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_LEFTUP);
        ::SendInput(1, &press, sizeof press);
        session.Pump();
    }
    POINT TabCentre(HostDocument* doc) {
        RECT item{};
        const int index = g_pTabrow->m_tabCtrl.FindDocument(doc);
        EXPECT_TRUE(
            ::SendMessageW(Tabs(), TCM_GETITEMRECT, index, reinterpret_cast<LPARAM>(&item)));
        POINT centre{(item.left + item.right) / 2, (item.top + item.bottom) / 2};
        ::ClientToScreen(Tabs(), &centre);
        ::SetForegroundWindow(session.Frame().Frame());
        return centre;
    }
    void ClickTabOf(HostDocument* doc) {
        MouseTo(TabCentre(doc));
        Button(true);
        Button(false);
    }
    void TypeAtCommandLine(const wchar_t* command) {
        ::SetWindowTextW(session.Frame().CommandLine(), command);
        ::SendMessageW(session.Frame().CommandLine(), WM_CHAR, VK_RETURN, 0);
        session.Pump();
    }

    HostSession session{kWidth, kHeight};
    std::vector<HostDocument*> docs;
};

// Where the host's layout leaves the bar: beside the MDI client on its four sides, cut out of
// the command window on its two, as thick as its tabs' rows (or half the command window).
struct DockCase {
    int side;
    int padding;     // what the bar adds to its rows of tabs
    RECT tabsInBar;  // the tabs' rectangle less the bar's client area, side by side
};

class DockedBar : public BarOnRealWindows, public ::testing::WithParamInterface<DockCase> {};

TEST_P(DockedBar, TakesItsRoomFromTheHostsLayoutAndShowsEveryDrawing) {
    const DockCase c = GetParam();
    LoadDocked(c.side);
    const RECT room = session.Frame().MdiClientRoom();
    const RECT mdi = RectInParent(session.Frame().MdiClient());
    const RECT bar = RectInParent(Bar());
    RECT item{};
    const int selected = static_cast<int>(::SendMessageW(Tabs(), TCM_GETCURSEL, 0, 0));
    ::SendMessageW(Tabs(), TCM_GETITEMRECT, selected, reinterpret_cast<LPARAM>(&item));
    const int rows = static_cast<int>(::SendMessageW(Tabs(), TCM_GETROWCOUNT, 0, 0));
    const int across =
        (c.side == kLeft || c.side == kRight) ? item.right - item.left : item.bottom - item.top;
    const int t = across * rows + c.padding;
    RECT wantBar = room, wantMdi = room;
    switch (c.side) {
        case kTop:
            wantBar.bottom = wantMdi.top = room.top + t;
            break;
        case kBottom:
            wantBar.top = wantMdi.bottom = room.bottom - t;
            break;
        case kLeft:
            wantBar.right = wantMdi.left = room.left + t;
            break;
        case kRight:
            wantBar.left = wantMdi.right = room.right - t;
            break;
        default: {
            // Half the command window, at its named end; the MDI client keeps the whole room.
            RECT container{};
            ::GetClientRect(session.Frame().CommandBar(), &container);
            const int half = container.right / 2;
            wantBar = container;
            RECT cmd = container;
            if (c.side == kCmdLeft)
                wantBar.right = cmd.left = half;
            else
                wantBar.left = cmd.right = container.right - half;
            EXPECT_EQ(Text(cmd), Text(RectInParent(session.Frame().CommandWindow())));
        }
    }
    EXPECT_EQ(Text(wantMdi), Text(mdi));
    EXPECT_EQ(Text(wantBar), Text(bar));
    RECT tabs = RectInParent(Tabs());
    const RECT inset{tabs.left, tabs.top, tabs.right - (bar.right - bar.left),
                     tabs.bottom - (bar.bottom - bar.top)};
    EXPECT_EQ(Text(c.tabsInBar), Text(inset)) << "the tabs fill the bar";
    EXPECT_TRUE(::IsWindowVisible(Tabs()));
    // The tabs are drawn in the tab font (by default the system's GUI font), which stays alive
    // while the control holds it.
    LOGFONTW font{};
    const auto held = reinterpret_cast<HFONT>(::SendMessageW(Tabs(), WM_GETFONT, 0, 0));
    ASSERT_EQ(static_cast<int>(sizeof font), ::GetObjectW(held, sizeof font, &font));
    EXPECT_EQ(Win32SystemLook().DefaultGuiFont().lfHeight, font.lfHeight);
    EXPECT_EQ(3, ::SendMessageW(Tabs(), TCM_GETITEMCOUNT, 0, 0));
    EXPECT_EQ(g_pTabrow->m_tabCtrl.FindDocument(session.Host().MdiActiveDocument()), selected);

    // The frame as the screen shows it, and the active drawing's plan as the software canvas
    // paints the same view: the lines must agree to the pixel (the name's text is the system's).
    const HostPicture screen = session.Screenshot();
    ASSERT_FALSE(screen.rgb.empty());
    EXPECT_TRUE(SavePng(BesideProgram(L"host-dock-" + std::to_wstring(c.side) + L".png"),
                        screen.rgb.data(), screen.width, screen.height, screen.width * 3));
    RECT view{};
    ::GetClientRect(ActiveView(), &view);
    POINT corner{0, 0};
    ::ClientToScreen(ActiveView(), &corner);
    ::ScreenToClient(session.Frame().Frame(), &corner);
    SimWindowSystem sim;
    HostWindow* simView =
        sim.CreateChild(sim.MdiClient(), L"AfxFrameOrView", {0, 0, view.right, view.bottom},
                        ws::kChild | ws::kVisible);
    SimDrawingView painter(sim, simView,
                           session.Host().Document(session.Host().MdiActiveDocument()).title);
    sim.SetMessageHandler(simView, &painter);
    sim.Send(simView, WM_PAINT, 0, 0);
    const std::vector<std::uint8_t>& software = sim.Window(simView).picture;
    std::vector<std::uint8_t> real(software.size());
    for (int y = 0; y < view.bottom; ++y)
        std::copy_n(&screen.rgb[((corner.y + y) * screen.width + corner.x) * 3], view.right * 3,
                    &real[static_cast<std::size_t>(y) * view.right * 3]);
    EXPECT_EQ("", FirstDifference(software, real, view.right, {0, 32, view.right, view.bottom}));
}

INSTANTIATE_TEST_SUITE_P(
    SixSides, DockedBar,
    ::testing::Values(DockCase{kTop, 6, {0, 1, 0, 0}}, DockCase{kLeft, 8, {2, 0, 0, 0}},
                      DockCase{kRight, 5, {0, 0, -1, 0}}, DockCase{kBottom, 4, {0, 0, 0, 0}},
                      DockCase{kCmdLeft, 0, {0, 0, 0, 0}}, DockCase{kCmdRight, 0, {0, 0, 0, 0}}),
    [](const auto& info) { return std::to_string(info.param.side); });

TEST_F(BarOnRealWindows, AClickOnATabSwitchesDrawingsUnlessACommandRuns) {
    session.StoreSetting(keys::kSwitchOnBusy, 0);
    LoadDocked(kTop);
    ClickTabOf(docs[0]);
    EXPECT_EQ(docs[0], session.Host().MdiActiveDocument());
    EXPECT_EQ(session.ViewOf(docs[0]), ActiveView());

    session.Host().StartCommand(L"LINE");
    const std::size_t boxes = session.Host().MessageBoxesShown().size();
    ClickTabOf(docs[1]);
    EXPECT_EQ(docs[0], session.Host().MdiActiveDocument());
    EXPECT_EQ(g_pTabrow->m_tabCtrl.FindDocument(docs[0]),
              ::SendMessageW(Tabs(), TCM_GETCURSEL, 0, 0));
    ASSERT_EQ(boxes + 1, session.Host().MessageBoxesShown().size());
    EXPECT_EQ(L"Please finish the active command before switching drawings!",
              session.Host().MessageBoxesShown().back().text);
    session.Host().CancelCommand();
}

TEST_F(BarOnRealWindows, TheMouseRestingOnATabShowsTheDrawingsTipAfterTheDelay) {
    session.StoreSetting(keys::kShowDwgPropsInTips, 1);
    LoadDocked(kTop);
    const auto tip = reinterpret_cast<HWND>(g_pTabrow->m_tip);
    for (HostDocument* doc : {docs[1], docs[2]}) {
        MouseTo(TabCentre(doc));
        const DWORD start = ::GetTickCount();
        while (!::IsWindowVisible(tip) && ::GetTickCount() - start < 3000) {
            ::Sleep(20);
            session.Pump();
        }
        ASSERT_TRUE(::IsWindowVisible(tip));
        TTTOOLINFOW tool{};
        tool.cbSize = sizeof tool;
        ASSERT_TRUE(::SendMessageW(tip, TTM_GETCURRENTTOOLW, 0, reinterpret_cast<LPARAM>(&tool)));
        std::wstring text(1024, L'\0');
        tool.lpszText = text.data();
        ::SendMessageW(tip, TTM_GETTEXTW, text.size(), reinterpret_cast<LPARAM>(&tool));
        EXPECT_EQ(g_pTabrow->GetTipText(doc), std::wstring(text.c_str()));
    }
}

// The user in an open menu: arrow keys down the rows until the one whose text begins so is lit,
// then Enter; Esc when no such row comes round. Runs from a timer, which the menu's own loop
// dispatches.
std::wstring g_menuRow;
int g_menuSelects = 0;
int g_menuKeys = 0;

void CALLBACK ChooseMenuRow(HWND, UINT, UINT_PTR timer, DWORD) {
    HWND menuWindow = ::FindWindowW(L"#32768", nullptr);
    if (menuWindow == nullptr || !::IsWindowVisible(menuWindow))
        return;
    const auto menu = reinterpret_cast<HMENU>(::SendMessageW(menuWindow, MN_GETHMENU, 0, 0));
    for (int i = 0; i < ::GetMenuItemCount(menu); ++i) {
        wchar_t text[256] = L"";
        ::GetMenuStringW(menu, static_cast<UINT>(i), text, 256, MF_BYPOSITION);
        if ((::GetMenuState(menu, static_cast<UINT>(i), MF_BYPOSITION) & MF_HILITE) != 0 &&
            std::wstring(text).starts_with(g_menuRow)) {
            ::KillTimer(nullptr, timer);
            ::PostMessageW(menuWindow, WM_KEYDOWN, VK_RETURN, 0);
            return;
        }
    }
    ::PostMessageW(menuWindow, WM_KEYDOWN, ++g_menuKeys < 100 ? VK_DOWN : VK_ESCAPE, 0);
}

LRESULT CALLBACK CountMenuSelects(int code, WPARAM wParam, LPARAM lParam) {
    if (code == HC_ACTION && reinterpret_cast<const CWPSTRUCT*>(lParam)->message == WM_MENUSELECT)
        ++g_menuSelects;
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

TEST_F(BarOnRealWindows, ARightClickOnATabOpensTheMenuWhoseRowActsOnThatDrawing) {
    LoadDocked(kTop);
    g_menuRow = L"Close [site]";
    g_menuSelects = g_menuKeys = 0;
    HHOOK hook = ::SetWindowsHookExW(WH_CALLWNDPROC, CountMenuSelects, nullptr,
                                     ::GetCurrentThreadId());
    const UINT_PTR timer = ::SetTimer(nullptr, 0, 30, ChooseMenuRow);
    MouseTo(TabCentre(docs[1]));
    Button(true, true);
    Button(false, true);
    ::UnhookWindowsHookEx(hook);
    ::KillTimer(nullptr, timer);
    EXPECT_LT(0, g_menuSelects);
    EXPECT_EQ(nullptr, session.ViewOf(docs[1]));
    EXPECT_EQ(2, ::SendMessageW(Tabs(), TCM_GETITEMCOUNT, 0, 0));
    HWND menu = ::FindWindowW(L"#32768", nullptr);
    EXPECT_TRUE(menu == nullptr || !::IsWindowVisible(menu)) << "the menu is closed";
}

TEST_F(BarOnRealWindows, DraggingTheEdgeInTheCommandWindowWidensTheBarOnRelease) {
    LoadDocked(kCmdLeft);
    const RECT before = RectInParent(Bar());
    POINT edge{before.right - 1, (before.top + before.bottom) / 2};
    ::ClientToScreen(session.Frame().CommandBar(), &edge);
    MouseTo(edge);
    Button(true);
    MouseTo({edge.x + 100, edge.y});
    EXPECT_EQ(Text(before), Text(RectInParent(Bar())));  // no rubber band while dragging
    Button(false);
    const RECT after = RectInParent(Bar());
    // Pressed a pixel inside the edge, released 100 further: the new edge is where it let go.
    EXPECT_EQ(before.right - 1 + 100, after.right);
    EXPECT_EQ(after.right, RectInParent(session.Frame().CommandWindow()).left);
}

TEST_F(BarOnRealWindows, TroffGivesTheHostItsRoomBackAndTronTakesItAgain) {
    LoadDocked(kTop);
    const RECT docked = RectInParent(session.Frame().MdiClient());
    TypeAtCommandLine(L"TROFF");
    EXPECT_FALSE(::IsWindowVisible(Bar()));
    EXPECT_EQ(Text(session.Frame().MdiClientRoom()),
              Text(RectInParent(session.Frame().MdiClient())));
    TypeAtCommandLine(L"TRON");
    EXPECT_TRUE(::IsWindowVisible(Bar()));
    EXPECT_EQ(Text(docked), Text(RectInParent(session.Frame().MdiClient())));
}

TEST_F(BarOnRealWindows, AFloatingBarStandsInAWindowOfItsOwnAndLeavesTheHostItsRoom) {
    session.StoreSetting(keys::kFloating, 1);
    LoadDocked(kTop);
    HWND floating = ::GetParent(Bar());
    EXPECT_EQ(0, ::GetWindowLongPtrW(floating, GWL_STYLE) & WS_CHILD);
    EXPECT_EQ(session.Frame().Frame(), ::GetWindow(floating, GW_OWNER));
    EXPECT_TRUE(::IsWindowVisible(Bar()));
    EXPECT_EQ(Text(session.Frame().MdiClientRoom()),
              Text(RectInParent(session.Frame().MdiClient())));
    TypeAtCommandLine(L"TRCENTER");
    RECT work{}, placed{};
    ::SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    ::GetWindowRect(floating, &placed);
    EXPECT_NEAR((work.left + work.right) / 2, (placed.left + placed.right) / 2, 1);
    EXPECT_NEAR((work.top + work.bottom) / 2, (placed.top + placed.bottom) / 2, 1);
}

// In preview mode the thumbnails are the MDI children as the screen shows them: the graphics
// port's copy is the view's part of the frame's picture, and each cell shows more than a plain
// fill. The frame is saved as host-previews-SIDE.png beside the program.
class PreviewBar : public BarOnRealWindows, public ::testing::WithParamInterface<int> {};
INSTANTIATE_TEST_SUITE_P(FourSides, PreviewBar, ::testing::Values(kTop, kLeft, kRight, kBottom));

TEST_P(PreviewBar, ThumbnailsShowTheViewsOfTheRealFrame) {
    LoadDocked(GetParam(), false);
    for (HostDocument* doc : docs)
        session.Host().ActivateDocument(doc);
    const HostPicture screen = session.Screenshot();
    ASSERT_FALSE(screen.rgb.empty());
    EXPECT_TRUE(SavePng(BesideProgram(L"host-previews-" + std::to_wstring(GetParam()) + L".png"),
                        screen.rgb.data(), screen.width, screen.height, screen.width * 3));
    const auto area = [&](HWND window, RECT r) {
        ::MapWindowPoints(window, session.Frame().Frame(), reinterpret_cast<POINT*>(&r), 2);
        std::vector<std::uint8_t> rgb;
        for (int y = r.top; y < r.bottom; ++y)
            rgb.insert(rgb.end(), &screen.rgb[(y * screen.width + r.left) * 3],
                       &screen.rgb[(y * screen.width + r.right) * 3]);
        return rgb;
    };
    RECT view{};
    ::GetClientRect(ActiveView(), &view);
    const std::unique_ptr<Canvas> copy =
        Use<HostGraphics>().CopyClientArea(session.Host().ActiveDwgView());
    ASSERT_NE(nullptr, copy);
    std::vector<std::uint8_t> copied(static_cast<std::size_t>(view.right) * view.bottom * 3);
    ASSERT_TRUE(copy->ReadRgb(0, 0, view.right, view.bottom, copied.data()));
    EXPECT_EQ("", FirstDifference(area(ActiveView(), view), copied, view.right, {0, 0, view.right, view.bottom}));
    const auto palette = reinterpret_cast<HWND>(g_pTabrow->m_palette.m_hWnd);
    for (HostDocument* doc : docs) {
        const TrDocItem* item = g_pTabrow->m_palette.FindItem(doc);
        ASSERT_NE(nullptr, item);
        const win::RECT& r = item->rcItem;
        const std::vector<std::uint8_t> cell = area(palette, {r.left, r.top, r.right, r.bottom});
        std::set<std::uint32_t> colours;
        for (std::size_t i = 0; i < cell.size(); i += 3)
            colours.insert(cell[i] << 16 | cell[i + 1] << 8 | cell[i + 2]);
        EXPECT_LT(8u, colours.size()) << "the cell of " << doc;
    }
}

int ThreadWindows() {
    int count = 0;
    ::EnumThreadWindows(
        ::GetCurrentThreadId(),
        [](HWND top, LPARAM counter) {
            ++*reinterpret_cast<int*>(counter);
            ::EnumChildWindows(
                top, [](HWND, LPARAM n) { return ++*reinterpret_cast<int*>(n), TRUE; }, counter);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&count));
    return count;
}

int ModuleClasses() {
    int count = 0;
    for (const wchar_t* name : {L"HvTabrow", L"HvDwgPalette"}) {
        WNDCLASSEXW wc{};
        wc.cbSize = sizeof wc;
        count += ::GetClassInfoExW(::GetModuleHandleW(nullptr), name, &wc) ? 1 : 0;
    }
    return count;
}

TEST_F(BarOnRealWindows, TenLoadsAndUnloadsLeaveNoGdiObjectWindowOrClassBehind) {
    LoadDocked(kTop);
    session.Unload();
    const int gdi = LiveGdiObjects(), windows = ThreadWindows();
    EXPECT_EQ(0, ModuleClasses());
    for (int i = 0; i < 10; ++i) {
        ASSERT_TRUE(session.Load());
        EXPECT_EQ(2, ModuleClasses());
        session.Unload();
    }
    EXPECT_EQ(gdi, LiveGdiObjects());
    EXPECT_EQ(windows, ThreadWindows());
    EXPECT_EQ(0, ModuleClasses());
}

TEST_F(BarOnRealWindows, HostWindowsDestroyedUnderTheBarLeaveItWorking) {
    LoadDocked(kCmdLeft);
    ::DestroyWindow(session.Frame().CommandWindow());
    ::DestroyWindow(session.Frame().MdiClient());
    session.Type(L"TROFF");
    session.Type(L"TRON");
    session.Frame().LayOut();
    session.Pump();
    EXPECT_TRUE(::IsWindow(Bar()));
    session.Unload();
    EXPECT_FALSE(session.IsLoaded());
}

}  // namespace
