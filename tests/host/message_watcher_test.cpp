// The watcher of the host's main loop: wheel and middle-button events on the drawing view renew
// the palette's preview 800 ms after the last of them.

#include "host/message_watcher.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

#include "bar/document_session.h"
#include "host/subclass_wnd.h"
#include "ports/window_messages.h"

namespace {

// Counts the palette's WM_TIMER 101 on its way to the palette.
class TimerCounter : public CSubclassWnd {
public:
    int fired = 0;
    MsgResult OnTimer(unsigned id) override {
        if (id == HvDwgPalette::kViewChangedTimer)
            ++fired;
        return MsgResult::NotHandled();
    }
};

class WatcherSession : public DocumentSession {
protected:
    WatcherSession() {
        host.OpenDrawing(L"C:\\jobs\\site.dwg");
        host.OpenDrawing(L"C:\\jobs\\plan.dwg");
        Load();  // the start tells the bar the active drawing, and so its view
        counter.HookWindow(Palette());
    }
    ~WatcherSession() override { counter.HookWindow(nullptr); }
    void Pump(HostWindow* window, unsigned message) {
        host.PumpMessage(HostMessage{window, message, 0, 0});
    }

    TimerCounter counter;
};

TEST_F(WatcherSession, TheViewIsRenewedOnceAfterTheLastWheelStep) {
    ASSERT_NE(g_hwndDwgView, nullptr);
    EXPECT_EQ(host.MessageWatchers(), (std::vector<HostMessageWatcher>{TabrowMessageWatcher}));
    Pump(g_hwndDwgView, wm::kMouseWheel);
    host.Windows().Elapse(500);
    Pump(g_hwndDwgView, wm::kMouseWheel);  // restarts the one timer
    host.Windows().Elapse(799);
    EXPECT_EQ(counter.fired, 0);
    host.Windows().Elapse(1);
    EXPECT_EQ(counter.fired, 1);
    host.Windows().Elapse(5000);
    EXPECT_EQ(counter.fired, 1);  // one-shot

    Pump(g_hwndDwgView, wm::kMButtonUp);  // the end of a pan
    host.Windows().Elapse(800);
    EXPECT_EQ(counter.fired, 2);
}

TEST_F(WatcherSession, OtherWindowsAndOtherButtonsSetNoTimer) {
    for (unsigned message : {wm::kMouseWheel, wm::kMButtonUp})
        Pump(g_hwndMdiClient, message);
    for (unsigned message : {wm::kContextMenu, wm::kRButtonDown, wm::kRButtonUp, wm::kLButtonUp})
        Pump(g_hwndDwgView, message);
    host.Windows().Elapse(2000);
    EXPECT_EQ(counter.fired, 0);
}

// A window system whose timers cannot be set.
class NoTimers : public SimWindowSystem {
public:
    bool IsWindow(HostWindow*) override { return true; }
    void SetTimer(HostWindow*, unsigned, unsigned) override {
        throw std::runtime_error("no timer to be had");
    }
};

TEST_F(WatcherSession, AFailingPortStopsInTheWatcherAndTheMessageGoesOn) {
    {
        NoTimers failing;
        ScopedPort<WindowSystem> port(failing);
        EXPECT_NO_THROW(Pump(g_hwndDwgView, wm::kMouseWheel));
    }
    host.Windows().Elapse(2000);
    EXPECT_EQ(counter.fired, 0);
    Pump(g_hwndDwgView, wm::kMouseWheel);  // the watcher works on with the port back
    host.Windows().Elapse(800);
    EXPECT_EQ(counter.fired, 1);
}

}  // namespace
