// The simulated frame's layout of its children through their procedures, and the main loop's
// messages.

#include "platform/sim/sim_window_system.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/sim/sim_host.h"
#include "support/recording_handler.h"
#include "ports/window_messages.h"

namespace {

std::vector<std::string> g_log;
SimWindowSystem* g_windows = nullptr;
OldWindowProcedure* g_old = nullptr;

// A replacement procedure: keeps a window 40 pixels lower than asked and logs what it sees
// before passing everything to the procedure it replaced.
std::intptr_t LowerBy40(HostWindow* window, unsigned message, std::uintptr_t wParam,
                        std::intptr_t lParam) {
    g_log.push_back("proc " + std::to_string(message));
    if (message == wm::kWindowPosChanging) {
        auto* pos = reinterpret_cast<win::WINDOWPOS*>(lParam);
        pos->y += 40;
        pos->cy -= 40;
    }
    return g_windows->CallOld(g_old, window, message, wParam, lParam);
}

class Recorder : public WindowHandler {
public:
    MsgResult OnTimer(unsigned id) override { return Seen(wm::kTimer, id); }
    MsgResult OnNcDestroy() override { return Seen(wm::kNcDestroy, 0); }
    MsgResult OnWindowPosChanging(win::WINDOWPOS&) override {
        return Seen(wm::kWindowPosChanging, 0);
    }

private:
    MsgResult Seen(unsigned message, unsigned wParam) {
        g_log.push_back("own " + std::to_string(message) + " " + std::to_string(wParam));
        return MsgResult::Handled();
    }
};

class SimWindowMessages : public ::testing::Test {
protected:
    SimWindowMessages() {
        g_log.clear();
        g_windows = &windows;
    }
    ~SimWindowMessages() override { g_windows = nullptr; }
    win::RECT Rect(HostWindow* window) { return windows.RectInParent(window); }

    SimWindowSystem windows;
};

TEST_F(SimWindowMessages, TheFrameLaysOutItsChildrenThroughTheirProcedures) {
    windows.Move(windows.HostFrame(), win::RECT{0, 0, 1000, 700}, true);
    EXPECT_EQ(Rect(windows.CommandContainer()), (win::RECT{0, 540, 1000, 680}));
    EXPECT_EQ(Rect(windows.CommandWindow()), (win::RECT{0, 0, 1000, 140}));
    EXPECT_EQ(Rect(windows.DockedCommandLine()), (win::RECT{0, 0, 1000, 140}));
    EXPECT_EQ(Rect(windows.MdiClient()), (win::RECT{0, 60, 1000, 540}));

    // What a procedure makes of a child's position is what the next level lays out in.
    g_old = windows.Replace(windows.CommandContainer(), &LowerBy40);
    windows.Move(windows.HostFrame(), win::RECT{0, 0, 1200, 800}, true);
    EXPECT_EQ(Rect(windows.CommandContainer()), (win::RECT{0, 680, 1200, 780}));
    EXPECT_EQ(Rect(windows.DockedCommandLine()), (win::RECT{0, 0, 1200, 100}));
    EXPECT_EQ(g_log, (std::vector<std::string>{"proc 70", "proc 5"}));  // the move, the new size

    windows.Restore(windows.CommandContainer(), g_old);
    EXPECT_TRUE(windows.HasOwnProcedure(windows.CommandContainer()));
    windows.Show(windows.CommandContainer(), false);
    windows.Move(windows.HostFrame(), win::RECT{0, 0, 1200, 800}, true);
    EXPECT_EQ(Rect(windows.MdiClient()), (win::RECT{0, 60, 1200, 780}));  // down to the status bar
}

TEST_F(SimWindowMessages, AWindowsHandlerGetsEachMessageAsANamedCall) {
    RecordingHandler handler;
    HostWindow* window =
        windows.CreateChild(windows.HostFrame(), L"View", win::RECT{}, ws::kChild);
    windows.SetMessageHandler(window, &handler);
    win::WINDOWPOS pos;
    win::NMHDR header;
    std::intptr_t answer = 0;
    for (const PackedMessage& c : DecodingCases(pos, header)) {
        EXPECT_EQ(windows.Send(window, c.message, c.wParam, c.lParam), ++answer) << c.call;
        EXPECT_EQ(handler.calls.back(), c.call);
    }
    // A move hands the handler the position it is about to take, then the new size; a move
    // that keeps the size sends none.
    handler.calls.clear();
    windows.Move(window, win::RECT{5, 6, 105, 56}, true);
    windows.Move(window, win::RECT{0, 0, 100, 50}, true);
    EXPECT_EQ(handler.calls,
              (std::vector<std::string>{"pos 5 6 100 50", "size 0 100 50", "pos 0 0 100 50"}));
}

void CountWatched(const HostMessage& message) {
    g_log.push_back("watcher " + std::to_string(message.message));
}

TEST(SimHostMessages, AMessageOfTheMainLoopReachesTheWatchersFirstThenItsWindow) {
    g_log.clear();
    SimHost host;
    g_windows = &host.Windows();
    Recorder own;
    HostWindow* view =
        host.Windows().CreateChild(host.Windows().MdiClient(), L"View", win::RECT{}, ws::kChild);
    host.Windows().SetMessageHandler(view, &own);
    host.RegisterMessageWatcher(CountWatched);
    host.PumpMessage(HostMessage{view, wm::kTimer, 3, 0});
    EXPECT_EQ(g_log, (std::vector<std::string>{"watcher 275", "own 275 3"}));
    g_windows = nullptr;
}

}  // namespace
