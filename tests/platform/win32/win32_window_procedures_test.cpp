#include "platform/win32/win32_window_procedures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>
#include <string>

#include "support/recording_handler.h"
#include "test_window.h"

static_assert(sizeof(win::WINDOWPOS) == sizeof(::WINDOWPOS) &&
                  offsetof(win::WINDOWPOS, cx) == offsetof(::WINDOWPOS, cx) &&
                  offsetof(win::WINDOWPOS, flags) == offsetof(::WINDOWPOS, flags),
              "the shared cases pack the core's twin where the window system's record goes");

namespace {

constexpr unsigned kPing = TestWindow::kFirstTestMessage;
constexpr unsigned kThrow = TestWindow::kFirstTestMessage + 1;

// The core procedures under test are plain functions: they reach the adapter and what they
// replaced through these.
Win32WindowProcedures* g_pProcedures = nullptr;
OldWindowProcedure* g_pOldOfFirst = nullptr;
OldWindowProcedure* g_pOldOfSecond = nullptr;

std::intptr_t FirstProcedure(HostWindow* window, unsigned message, std::uintptr_t wParam,
                             std::intptr_t lParam) {
    if (message == kThrow)
        throw std::runtime_error("a failing handler");
    if (message >= TestWindow::kFirstTestMessage)
        TestWindow::Log().push_back("first");
    const std::intptr_t answer =
        g_pProcedures->CallOld(g_pOldOfFirst, window, message, wParam, lParam);
    return message == kPing ? answer + 1 : answer;
}

std::intptr_t SecondProcedure(HostWindow* window, unsigned message, std::uintptr_t wParam,
                              std::intptr_t lParam) {
    if (message >= TestWindow::kFirstTestMessage)
        TestWindow::Log().push_back("second");
    const std::intptr_t answer =
        g_pProcedures->CallOld(g_pOldOfSecond, window, message, wParam, lParam);
    return message == kPing ? answer + 10 : answer;
}

class Win32WindowProceduresTest : public ::testing::Test {
protected:
    Win32WindowProceduresTest() {
        g_pProcedures = &procedures;
        TestWindow::Log().clear();
    }
    ~Win32WindowProceduresTest() override {
        window.Destroy();
        g_pProcedures = nullptr;
        g_pOldOfFirst = g_pOldOfSecond = nullptr;
    }
    WNDPROC Installed() const {
        return reinterpret_cast<WNDPROC>(::GetWindowLongPtrW(window.Hwnd(), GWLP_WNDPROC));
    }

    Win32WindowProcedures procedures;
    TestWindow window;
};

using Log = std::vector<std::string>;

}  // namespace

TEST_F(Win32WindowProceduresTest, ProceduresReplacedTwiceChainComeOffInTurnAndStayCallable) {
    g_pOldOfFirst = procedures.Replace(window.Host(), &FirstProcedure);
    g_pOldOfSecond = procedures.Replace(window.Host(), &SecondProcedure);
    ASSERT_NE(g_pOldOfSecond, nullptr);
    EXPECT_EQ(procedures.Send(window.Host(), kPing, 0, 0), 11);
    EXPECT_EQ(TestWindow::Log(), (Log{"second", "first", "class:0"}));

    procedures.Restore(window.Host(), g_pOldOfSecond);
    TestWindow::Log().clear();
    EXPECT_EQ(procedures.Send(window.Host(), kPing, 0, 0), 1);
    EXPECT_EQ(TestWindow::Log(), (Log{"first", "class:0"}));
    procedures.Restore(window.Host(), g_pOldOfFirst);
    EXPECT_EQ(Installed(), TestWindow::ClassProcedure());
    EXPECT_EQ(WindowsRunningCoreProcedures(), 0u);
    EXPECT_EQ(procedures.ActiveReplacements(), 0u);
    // A procedure given back can still be called: a dying window's subclass does that.
    TestWindow::Log().clear();
    EXPECT_EQ(procedures.CallOld(g_pOldOfSecond, window.Host(), kPing, 0, 0), 1);
    EXPECT_EQ(TestWindow::Log(), (Log{"first", "class:0"}));
}

TEST_F(Win32WindowProceduresTest, AFailureInTheCoreStopsAtTheWindowsEdge) {
    g_pOldOfFirst = procedures.Replace(window.Host(), &FirstProcedure);
    EXPECT_EQ(procedures.Send(window.Host(), kThrow, 0, 0), 0);
    EXPECT_EQ(procedures.Send(window.Host(), kPing, 0, 0), 1) << "and the window goes on";
    procedures.Restore(window.Host(), g_pOldOfFirst);
}

TEST_F(Win32WindowProceduresTest, ADeadWindowIsNotReplacedAndRestoringItIsHarmless) {
    g_pOldOfFirst = procedures.Replace(window.Host(), &FirstProcedure);
    HostWindow* dead = window.Host();
    window.Destroy();
    EXPECT_FALSE(procedures.IsWindow(dead));
    EXPECT_EQ(procedures.Replace(dead, &SecondProcedure), nullptr);
    EXPECT_FALSE(procedures.IsWindow(nullptr));
    procedures.Restore(dead, g_pOldOfFirst);
    EXPECT_EQ(procedures.ActiveReplacements(), 0u);
}

namespace {

// A real window of a class whose procedure is the handler adapter, with a recording handler.
class HandlerWindowTest : public ::testing::Test {
protected:
    HandlerWindowTest() {
        WNDCLASSW windowClass{};
        windowClass.lpfnWndProc = &HandlerWindowProcedure;
        windowClass.hInstance = ::GetModuleHandleW(nullptr);
        windowClass.lpszClassName = L"TabrowHandlerTestWindow";
        ::RegisterClassW(&windowClass);  // once per process; later calls fail harmlessly
        // Visible: a hidden window has no region to invalidate.
        hwnd = ::CreateWindowExW(0, L"TabrowHandlerTestWindow", L"",
                                 WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100, 100, 400, 300, nullptr,
                                 nullptr, ::GetModuleHandleW(nullptr), nullptr);
        SetWindowHandler(hwnd, &handler);
    }
    ~HandlerWindowTest() override {
        if (::IsWindow(hwnd))
            ::DestroyWindow(hwnd);
    }
    // Whether a WM_PAINT left no region to paint, as the default procedure leaves it.
    bool PaintValidates() {
        ::InvalidateRect(hwnd, nullptr, TRUE);
        if (::GetUpdateRect(hwnd, nullptr, FALSE) == FALSE)
            return false;
        ::SendMessageW(hwnd, WM_PAINT, 0, 0);
        return ::GetUpdateRect(hwnd, nullptr, FALSE) == FALSE;
    }

    RecordingHandler handler;
    HWND hwnd = nullptr;
};

// Paints by failing.
class FailingPainter : public WindowHandler {
public:
    MsgResult OnPaint() override { throw std::runtime_error("a failing paint"); }
};

}  // namespace

TEST_F(HandlerWindowTest, EachMessageReachesItsNamedCallDecoded) {
    ASSERT_NE(hwnd, nullptr);
    win::WINDOWPOS pos;
    win::NMHDR header;
    handler.calls.clear();
    std::intptr_t answer = 0;
    for (const PackedMessage& c : DecodingCases(pos, header)) {
        EXPECT_EQ(::SendMessageW(hwnd, c.message, c.wParam, c.lParam), ++answer) << c.call;
        EXPECT_EQ(handler.calls.back(), c.call);
    }
    // A real move: the handler sees the position, then the new client area's size.
    handler.calls.clear();
    ASSERT_TRUE(::SetWindowPos(hwnd, nullptr, 120, 130, 500, 320, SWP_NOZORDER));
    RECT client{};
    ::GetClientRect(hwnd, &client);
    std::string size = "size 0 ";
    size += std::to_string(client.right);
    size += ' ';
    size += std::to_string(client.bottom);
    for (const std::string& call : {std::string("pos 120 130 500 320"), size})
        EXPECT_NE(std::find(handler.calls.begin(), handler.calls.end(), call), handler.calls.end());
}

TEST_F(HandlerWindowTest, WhatTheHandlerLeavesOrFailsInGoesToTheDefaultProcedure) {
    // Hit testing and painting have no handler here: the default procedure answers.
    EXPECT_EQ(::SendMessageW(hwnd, WM_NCHITTEST, 0, MAKELPARAM(250, 250)), HTCLIENT);
    EXPECT_TRUE(PaintValidates());
    FailingPainter failing;
    SetWindowHandler(hwnd, &failing);
    EXPECT_TRUE(PaintValidates()) << "after a failure the default procedure still ran";
    SetWindowHandler(hwnd, nullptr);
}
