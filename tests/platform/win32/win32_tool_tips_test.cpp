#include "platform/win32/win32_tool_tips.h"

#include <gtest/gtest.h>

#include <commctrl.h>

#include <string>

#include "ports/window_messages.h"
#include "test_window.h"

namespace {

class CountingSource : public ToolTipTextSource {
public:
    std::wstring ToolTipText(HostWindow*, unsigned id) override {
        return L"asked " + std::to_wstring(++asked) + L" for " + std::to_wstring(id);
    }
    int asked = 0;
};

// The text the control holds for a tool.
std::wstring TextOf(HostToolTip* tip, HWND window, UINT id) {
    wchar_t buffer[128] = {};
    TTTOOLINFOW info{};
    info.cbSize = TTTOOLINFOW_V2_SIZE;
    info.hwnd = window;
    info.uId = id;
    info.lpszText = buffer;
    ::SendMessageW(reinterpret_cast<HWND>(tip), TTM_GETTEXTW, 128, reinterpret_cast<LPARAM>(&info));
    return buffer;
}

ToolTipTool ToolOn(const TestWindow& window, unsigned id, const std::wstring& text) {
    ToolTipTool tool;
    tool.window = window.Host();
    tool.id = id;
    tool.rect = {0, 0, 50, 20};
    tool.rect.left += static_cast<int>(id - 1) * 50;
    tool.rect.right += static_cast<int>(id - 1) * 50;
    tool.text = text;
    return tool;
}

}  // namespace

TEST(Win32ToolTips, AControlOwnedByAWindowKeepsItsToolsSettingsAndTextsAndDiesWithIt) {
    Win32ToolTips tips;
    TestWindow owner;
    HostToolTip* tip = tips.Create(owner.Host());
    ASSERT_NE(tip, nullptr);
    const HWND control = reinterpret_cast<HWND>(tip);
    EXPECT_EQ(::GetWindow(control, GW_OWNER), owner.Hwnd());
    tips.SetDelayTime(tip, ttdt::kInitial, 400);
    tips.SetDelayTime(tip, ttdt::kAutoPop, 7000);
    tips.SetMaxTipWidth(tip, 250);
    EXPECT_EQ(::SendMessageW(control, TTM_GETDELAYTIME, TTDT_INITIAL, 0), 400);
    EXPECT_EQ(::SendMessageW(control, TTM_GETDELAYTIME, TTDT_AUTOPOP, 0), 7000);
    EXPECT_EQ(::SendMessageW(control, TTM_GETMAXTIPWIDTH, 0, 0), 250);

    EXPECT_TRUE(tips.AddTool(tip, ToolOn(owner, 1, L"plan.dwg")));
    EXPECT_TRUE(tips.AddTool(tip, ToolOn(owner, 2, L"site.dwg")));
    EXPECT_FALSE(tips.AddTool(tip, ToolOn(owner, 2, L"again")));  // there already
    EXPECT_EQ(tips.ToolCount(tip), 2);
    EXPECT_TRUE(tips.SetToolText(tip, owner.Host(), 2, L"annex.dwg"));
    EXPECT_EQ(TextOf(tip, owner.Hwnd(), 2), L"annex.dwg");
    EXPECT_FALSE(tips.SetToolText(tip, owner.Host(), 9, L"none"));
    tips.DelTool(tip, owner.Host(), 1);
    EXPECT_EQ(tips.ToolCount(tip), 1);

    // A text from a source is asked for as the mouse comes onto its tool.
    CountingSource source;
    ToolTipTool asked = ToolOn(owner, 3, L"");
    asked.textSource = &source;
    ASSERT_TRUE(tips.AddTool(tip, asked));
    tips.RelayEvent(tip, {owner.Host(), WM_MOUSEMOVE, 0, MAKELPARAM(110, 5)});
    EXPECT_EQ(TextOf(tip, owner.Hwnd(), 3), L"asked 1 for 3");

    // A window that is gone takes no tool, and its control goes with its owner.
    TestWindow other;
    HostWindow* gone = other.Host();
    other.Destroy();
    ToolTipTool stale = ToolOn(owner, 4, L"x");
    stale.window = gone;
    EXPECT_FALSE(tips.AddTool(tip, stale));
    owner.Destroy();
    EXPECT_FALSE(::IsWindow(control));
    EXPECT_EQ(tips.ToolCount(tip), 0);
}
