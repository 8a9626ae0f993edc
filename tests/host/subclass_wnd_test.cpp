// Chains of hooks on simulated windows: who sees a message and in which order, what unhooking
// leaves behind, and a window that dies with its hooks on.

#include "host/subclass_wnd.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "platform/sim/sim_window_system.h"
#include "ports/port.h"
#include "ports/window_messages.h"

namespace {

using Log = std::vector<std::string>;

// The window's own procedure: records what reaches it and answers 7.
class OwnProcedure : public WindowHandler {
public:
    explicit OwnProcedure(Log& log) : m_log(log) {}
    MsgResult OnPaint() override { return Seen(wm::kPaint); }
    MsgResult OnWindowPosChanging(win::WINDOWPOS&) override { return Seen(wm::kWindowPosChanging); }
    MsgResult OnNcDestroy() override { return Seen(wm::kNcDestroy); }
    MsgResult OnUserMessage(unsigned message, std::uintptr_t, std::intptr_t) override {
        return Seen(message);
    }

private:
    MsgResult Seen(unsigned message) {
        m_log.push_back("own " + std::to_string(message));
        return MsgResult::Handled(7);
    }
    Log& m_log;
};

// Shifts a moving window right by `by`, and passes every message on.
class ShiftHook : public CSubclassWnd {
public:
    ShiftHook(std::string name, int by, Log& log) : m_name(std::move(name)), m_by(by), m_log(log) {}
    MsgResult OnWindowPosChanging(win::WINDOWPOS& pos) override {
        m_log.push_back(m_name + " " + std::to_string(wm::kWindowPosChanging));
        pos.x += m_by;
        return MsgResult::NotHandled();
    }
    MsgResult OnUserMessage(unsigned message, std::uintptr_t, std::intptr_t) override {
        m_log.push_back(m_name + " " + std::to_string(message));
        return MsgResult::NotHandled();
    }

private:
    std::string m_name;
    int m_by;
    Log& m_log;
};

// Sends another message to its window while handling one, then passes the first on by
// Default(): what reaches the window must be the first message, not the nested one.
class NestingHook : public CSubclassWnd {
public:
    explicit NestingHook(SimWindowSystem& windows) : m_windows(windows) {}
    MsgResult OnUserMessage(unsigned, std::uintptr_t, std::intptr_t) override {
        m_windows.Send(m_pWndHooked, wm::kPaint, 0, 0);
        return MsgResult::Handled(Default() + 1);
    }

private:
    SimWindowSystem& m_windows;
};

// Fails on a position change after it has changed the position.
class FailingHook : public CSubclassWnd {
public:
    MsgResult OnWindowPosChanging(win::WINDOWPOS& pos) override {
        pos.x += 1000;
        throw std::runtime_error("a failing hook");
    }
};

class SubclassWnd : public ::testing::Test {
protected:
    SubclassWnd() {
        window = windows.CreateChild(windows.HostFrame(), L"Test", win::RECT{0, 0, 100, 50},
                                     ws::kChild | ws::kVisible);
        windows.SetMessageHandler(window, &own);
    }

    SimWindowSystem windows;
    ScopedPort<WindowProcedures> procedures{windows};
    Log log;
    OwnProcedure own{log};
    HostWindow* window = nullptr;
};

TEST_F(SubclassWnd, HooksSeeMessagesNewestFirstAndUnhookingKeepsTheRestOfTheChain) {
    ShiftHook first("first", 1, log), middle("middle", 2, log), last("last", 4, log);
    EXPECT_TRUE(first.HookWindow(window));
    middle.HookWindow(window);
    last.HookWindow(window);
    windows.Move(window, win::RECT{0, 0, 100, 50}, true);
    EXPECT_EQ(log, (Log{"last 70", "middle 70", "first 70", "own 70"}));
    EXPECT_EQ(windows.RectInParent(window), (win::RECT{7, 0, 107, 50}));

    log.clear();
    middle.HookWindow(nullptr);  // from the middle
    last.HookWindow(nullptr);    // the first of the chain: the next one takes its place
    EXPECT_FALSE(last.IsHooked());
    EXPECT_EQ(CSubclassWnd::FirstHookOf(window), &first);
    EXPECT_EQ(windows.Send(window, wm::kUser, 0, 0), 7);  // the window's answer comes back
    EXPECT_EQ(log, (Log{"first 1024", "own 1024"}));

    first.HookWindow(nullptr);  // the last one puts the window's procedure back
    EXPECT_TRUE(windows.HasOwnProcedure(window));
    EXPECT_EQ(CSubclassWnd::HookedWindowCount(), 0u);

    {
        ShiftHook deleted("deleted", 1, log);
        deleted.HookWindow(window);
    }
    EXPECT_TRUE(windows.HasOwnProcedure(window));  // no chain keeps a deleted hook
}

TEST_F(SubclassWnd, AWindowThatDiesDropsItsHooksAndADeadWindowGetsNone) {
    ShiftHook first("first", 10, log), second("second", 5, log);
    first.HookWindow(window);
    second.HookWindow(window);
    windows.Destroy(window);
    EXPECT_EQ(log, (Log{"own 130"}));  // WM_NCDESTROY goes straight to the old procedure
    EXPECT_FALSE(first.IsHooked());
    EXPECT_FALSE(second.IsHooked());
    EXPECT_EQ(CSubclassWnd::HookedWindowCount(), 0u);

    EXPECT_TRUE(first.HookWindow(window));
    EXPECT_FALSE(first.IsHooked());
    EXPECT_EQ(CSubclassWnd::HookedWindowCount(), 0u);
}

TEST_F(SubclassWnd, DefaultPassesOnTheMessageBeingHandledAfterANestedOne) {
    NestingHook hook(windows);
    hook.HookWindow(window);
    EXPECT_EQ(windows.Send(window, wm::kUser, 0, 0), 8);  // the window's answer, and the hook's
    EXPECT_EQ(log, (Log{"own 15", "own 1024"}));
}

TEST_F(SubclassWnd, AfterAFailureTheWindowStillGetsTheMessageAsItWasPassedOn) {
    ShiftHook behind("behind", 1, log);
    FailingHook failing;
    behind.HookWindow(window);
    failing.HookWindow(window);
    windows.Move(window, win::RECT{0, 0, 100, 50}, true);
    // The failing hook's change stands, the hooks after it are skipped, the window answers.
    EXPECT_EQ(log, (Log{"own 70"}));
    EXPECT_EQ(windows.RectInParent(window), (win::RECT{1000, 0, 1100, 50}));
    log.clear();
    EXPECT_EQ(windows.Send(window, wm::kUser, 0, 0), 7);  // the chain goes on working
    EXPECT_EQ(log, (Log{"behind 1024", "own 1024"}));
}

}  // namespace
