// The simulated tab control: rows that wrap as the window system's do, selection through
// inserts and deletes, item rectangles and hit tests.

#include "platform/sim/sim_tab_control.h"

#include <gtest/gtest.h>

#include "platform/sim/sim_window_system.h"

namespace {

class SimTabs : public ::testing::Test {
protected:
    HostWindow* Make(unsigned style, win::RECT rect) {
        return windows.CreateChild(windows.HostFrame(), L"SysTabControl32", rect,
                                   ws::kChild | tcs::kMultiLine | style);
    }
    // A tab of `chars` characters is 12 + 7 * chars wide.
    void Add(HostWindow* t, int count, int chars) {
        for (int i = 0; i < count; ++i)
            tabs.InsertItem(t, 1000, std::wstring(static_cast<std::size_t>(chars), L'x'), i);
    }
    SimWindowSystem windows;
    SimTabControl tabs{windows};
};

TEST_F(SimTabs, RowsWrapAtTheWindowsWidthAndVerticalTabsAtItsHeight) {
    HostWindow* wide = Make(0, win::RECT{0, 0, 200, 60});
    EXPECT_EQ(tabs.RowCount(wide), 1);  // empty
    Add(wide, 3, 8);                    // 68 each: two fit in 200
    EXPECT_EQ(tabs.RowCount(wide), 2);
    windows.Move(wide, win::RECT{0, 0, 204, 60}, false);
    EXPECT_EQ(tabs.RowCount(wide), 1);

    HostWindow* tall = Make(tcs::kVertical, win::RECT{0, 0, 30, 136});
    Add(tall, 5, 8);
    EXPECT_EQ(tabs.RowCount(tall), 3);
    win::RECT third;
    ASSERT_TRUE(tabs.ItemRect(tall, 2, third));
    EXPECT_EQ(third, (win::RECT{20, 0, 40, 68}));
}

TEST_F(SimTabs, ATabTooLongForAnyRowStillTakesARowOfItsOwn) {
    HostWindow* t = Make(0, win::RECT{0, 0, 50, 60});
    Add(t, 2, 20);
    EXPECT_EQ(tabs.RowCount(t), 2);
    EXPECT_EQ(tabs.HitTest(t, win::POINT{100, 25}), 1);
    EXPECT_EQ(tabs.HitTest(t, win::POINT{160, 5}), -1);
}

TEST_F(SimTabs, SelectionFollowsInsertsAndDeletesAndSetCurSelIsCounted) {
    HostWindow* t = Make(0, win::RECT{0, 0, 800, 60});
    EXPECT_EQ(tabs.InsertItem(t, 5, L"b", 2), 0);
    EXPECT_EQ(tabs.GetCurSel(t), 0);  // the first item is selected by itself
    tabs.InsertItem(t, 0, L"a", 1);
    EXPECT_EQ(tabs.GetCurSel(t), 1);
    EXPECT_EQ(tabs.SetCurSel(t, 0), 1);
    EXPECT_TRUE(tabs.Click(t, 1));
    EXPECT_FALSE(tabs.Click(t, 1));  // the selected tab
    EXPECT_EQ(tabs.SetCurSelCalls(t), 1);
    tabs.DeleteItem(t, 1);
    EXPECT_EQ(tabs.GetCurSel(t), -1);

    std::wstring text;
    std::intptr_t param = 0;
    tabs.SetItemText(t, 0, L"longer text");
    ASSERT_TRUE(tabs.GetItem(t, 0, 5, text, param));
    EXPECT_EQ(text, L"long");  // cut to the buffer
    EXPECT_EQ(param, 1);
    EXPECT_FALSE(tabs.GetItem(t, 1, 5, text, param));
}

}  // namespace
