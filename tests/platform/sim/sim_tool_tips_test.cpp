// The simulated tool tips: what the real control refuses, the delays between the mouse and the
// tip, and the tracking tip.

#include "platform/sim/sim_tool_tips.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "platform/sim/sim_window_system.h"
#include "ports/window_messages.h"

namespace {

class SimTips : public ::testing::Test {
protected:
    SimTips() {
        owner = windows.CreateChild(windows.HostFrame(), L"Bar", {0, 100, 300, 130},
                                    ws::kChild | ws::kVisible);
        tip = tips.Create(owner);
        tips.SetDelayTime(tip, ttdt::kInitial, 300);
        tips.SetDelayTime(tip, ttdt::kReshow, 50);
        tips.SetDelayTime(tip, ttdt::kAutoPop, 1000);
        for (unsigned id = 1; id <= 2; ++id)
            tips.AddTool(tip, Tool(id));
    }
    ToolTipTool Tool(unsigned id, bool tracking = false) {
        ToolTipTool tool;
        tool.window = owner;
        tool.id = id;
        tool.rect = {static_cast<int>(id - 1) * 100, 0, static_cast<int>(id) * 100, 30};
        tool.text = L"tool " + std::to_wstring(id);
        tool.tracking = tracking;
        return tool;
    }
    // The mouse over the owner at `x`, as the owner's loop relays it.
    void MoveTo(int x) {
        tips.RelayEvent(tip, {owner, wm::kMouseMove, 0, static_cast<std::intptr_t>(10 << 16 | x)});
    }
    std::wstring Shown() { return tips.ShownText(tip); }

    SimWindowSystem windows;
    SimToolTips tips{windows};
    HostWindow* owner = nullptr;
    HostToolTip* tip = nullptr;
};

}  // namespace

TEST_F(SimTips, CallsTheRealControlRefusesAreRefusedAndWrittenDown) {
    HostWindow* gone = windows.CreateChild(windows.HostFrame(), L"Gone", {}, ws::kChild);
    windows.Destroy(gone);
    struct Case {
        std::function<void()> call;
        std::wstring refusal;
    };
    ToolTipTool onGone = Tool(3);
    onGone.window = gone;
    const Case cases[] = {
        {[&] { tips.RelayEvent(nullptr, {owner, wm::kMouseMove, 0, 0}); },
         L"RelayEvent on a tip control that doesn't exist"},
        {[&] { tips.Create(gone); }, L"Create with an owner that doesn't exist"},
        {[&] { tips.AddTool(tip, onGone); }, L"AddTool on a window that doesn't exist"},
        {[&] { tips.AddTool(tip, Tool(2)); }, L"AddTool of a tool that is there already"},
        {[&] { tips.SetToolText(tip, owner, 7, L"x"); }, L"SetToolText of a tool that isn't there"},
        {[&] { tips.TrackActivate(tip, owner, 1, true); },
         L"TrackActivate of a tool that isn't a tracking tool"},
        // The owner takes its control with it.
        {[&] { windows.Destroy(owner); tips.ToolCount(tip); },
         L"ToolCount on a tip control that doesn't exist"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.refusal);
        const std::size_t before = tips.Refusals().size();
        c.call();
        ASSERT_EQ(tips.Refusals().size(), before + 1);
        EXPECT_EQ(tips.Refusals().back(), c.refusal);
    }
    EXPECT_EQ(tips.Find(tip), nullptr);
}

TEST_F(SimTips, ATipShowsAfterTheInitialDelayComesBackSoonerOnTheNextToolAndPopsByItself) {
    MoveTo(50);
    windows.Elapse(299);
    EXPECT_EQ(Shown(), L"");
    windows.Elapse(1);
    EXPECT_EQ(Shown(), L"tool 1");
    MoveTo(150);  // the next tool, while a tip shows: the reshow delay
    EXPECT_EQ(Shown(), L"");
    windows.Elapse(50);
    EXPECT_EQ(Shown(), L"tool 2");
    windows.Elapse(1000);
    EXPECT_EQ(Shown(), L"");
    windows.Elapse(5000);  // popped: not again until the mouse leaves the tool
    EXPECT_EQ(Shown(), L"");
    MoveTo(250);  // off every tool
    tips.Activate(tip, false);
    MoveTo(50);
    windows.Elapse(1000);
    EXPECT_EQ(Shown(), L"");
    EXPECT_EQ(tips.Refusals(), std::vector<std::wstring>{});
}

TEST_F(SimTips, ATrackingTipShowsWhereAndWhileItIsTold) {
    ASSERT_TRUE(tips.AddTool(tip, Tool(5, true)));
    MoveTo(450);  // the mouse never shows a tracking tool
    windows.Elapse(1000);
    EXPECT_EQ(Shown(), L"");
    tips.TrackPosition(tip, {400, 500});
    tips.TrackActivate(tip, owner, 5, true);
    EXPECT_EQ(Shown(), L"tool 5");
    const win::RECT box = windows.ScreenRect(tips.Find(tip)->popup);
    EXPECT_EQ((win::POINT{box.left, box.top}), (win::POINT{400, 500}));
    tips.TrackActivate(tip, owner, 5, false);
    EXPECT_EQ(Shown(), L"");
}
