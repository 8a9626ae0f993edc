#include "platform/win32/win32_window_procedures.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "test_window.h"

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
    EXPECT_EQ(::GetPropW(window.Hwnd(), L"Tabrow.WindowProcedure"), nullptr);
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
