// Subclassing on real windows: the chain of hooks, the window's own procedure behind it, the
// procedure put back when the last hook goes, and a window that dies with hooks on it.

#include "host/subclass_wnd.h"

#include <gtest/gtest.h>

#include <string>

#include "foundation/win_types.h"
#include "platform/win32/win32_window_procedures.h"
#include "ports/port.h"
#include "test_window.h"

namespace {

constexpr unsigned kPing = TestWindow::kFirstTestMessage;

// Writes its name for each test message and adds one to the answer of a ping; cuts room off the
// left of a new size when asked to.
class LoggingHook : public CSubclassWnd {
public:
    explicit LoggingHook(std::string name) : m_name(std::move(name)) {}

    MsgResult OnUserMessage(unsigned message, std::uintptr_t, std::intptr_t) override {
        if (message >= TestWindow::kFirstTestMessage)
            TestWindow::Log().push_back(m_name);
        if (message != kPing)
            return MsgResult::NotHandled();
        return MsgResult::Handled(Default() + 1);
    }
    MsgResult OnWindowPosChanging(win::WINDOWPOS& pos) override {
        // As the bar's hook does: take room off the left of the new position.
        if (m_cutLeft != 0 && (pos.flags & SWP_NOSIZE) == 0) {
            pos.x += m_cutLeft;
            pos.cx -= m_cutLeft;
        }
        return MsgResult::NotHandled();
    }

    int m_cutLeft = 0;

private:
    std::string m_name;
};

class SubclassWndTest : public ::testing::Test {
protected:
    SubclassWndTest() { TestWindow::Log().clear(); }

    WNDPROC Installed() const {
        return reinterpret_cast<WNDPROC>(::GetWindowLongPtrW(window.Hwnd(), GWLP_WNDPROC));
    }
    std::intptr_t Ping() { return ::SendMessageW(window.Hwnd(), kPing, 0, 0); }

    Win32WindowProcedures procedures;
    ScopedPort<WindowProcedures> procedurePort{procedures};
    TestWindow window;
    LoggingHook first{"first"};
    LoggingHook second{"second"};
};

using Log = std::vector<std::string>;

}  // namespace

TEST_F(SubclassWndTest, TwoHooksSeeMessagesNewestFirstAndComeOffInAnyOrder) {
    ASSERT_TRUE(first.HookWindow(window.Host()));
    ASSERT_TRUE(second.HookWindow(window.Host()));
    EXPECT_EQ(CSubclassWnd::FirstHookOf(window.Host()), &second);
    EXPECT_EQ(Ping(), 2) << "each hook added one to the class procedure's 0";
    EXPECT_EQ(TestWindow::Log(), (Log{"second", "first", "class:0"}));

    first.HookWindow(nullptr);
    TestWindow::Log().clear();
    EXPECT_NE(Installed(), TestWindow::ClassProcedure()) << "still subclassed by the second";
    EXPECT_EQ(Ping(), 1);
    EXPECT_EQ(TestWindow::Log(), (Log{"second", "class:0"}));

    second.HookWindow(nullptr);
    EXPECT_EQ(Installed(), TestWindow::ClassProcedure()) << "the window's own procedure is back";
    EXPECT_EQ(CSubclassWnd::HookedWindowCount(), 0u);
    EXPECT_EQ(procedures.ActiveReplacements(), 0u);
    TestWindow::Log().clear();
    EXPECT_EQ(Ping(), 0);
    EXPECT_EQ(TestWindow::Log(), Log{"class:0"});
}

TEST_F(SubclassWndTest, AWindowThatDiesTakesItsHooksOutOfTheMap) {
    first.HookWindow(window.Host());
    second.HookWindow(window.Host());
    window.Destroy();
    EXPECT_EQ(CSubclassWnd::HookedWindowCount(), 0u);
    EXPECT_FALSE(first.IsHooked());
    EXPECT_FALSE(second.IsHooked());
    EXPECT_EQ(TestWindow::Log(), Log{"class:ncdestroy"})
        << "the window's own procedure still saw its last message";
}

TEST_F(SubclassWndTest, AHookThatChangesTheNewPositionMovesTheWindowThere) {
    first.m_cutLeft = 30;
    first.HookWindow(window.Host());
    second.HookWindow(window.Host());
    ASSERT_TRUE(::SetWindowPos(window.Hwnd(), nullptr, 50, 60, 300, 200, SWP_NOZORDER));
    RECT rect{};
    ::GetWindowRect(window.Hwnd(), &rect);
    EXPECT_EQ(rect.left, 80);
    EXPECT_EQ(rect.top, 60);
    EXPECT_EQ(rect.right - rect.left, 270);
    EXPECT_EQ(rect.bottom - rect.top, 200);
    first.HookWindow(nullptr);
    second.HookWindow(nullptr);
}

TEST_F(SubclassWndTest, ADeadWindowIsNotHooked) {
    HostWindow* dead = window.Host();
    window.Destroy();
    EXPECT_TRUE(first.HookWindow(dead));
    EXPECT_FALSE(first.IsHooked());
    EXPECT_EQ(CSubclassWnd::HookedWindowCount(), 0u);
}
