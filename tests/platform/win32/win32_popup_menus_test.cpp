#include "platform/win32/win32_popup_menus.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::wstring Text(HMENU menu, UINT position) {
    wchar_t text[64] = {};
    ::GetMenuStringW(menu, position, text, 64, MF_BYPOSITION);
    return text;
}

// The rows become the window system's menu as they stand: texts, ids, flags, popups in place,
// and each popup's menu known by its row.
TEST(Win32PopupMenus, BuildsTheTreeAsTheCoreMadeIt) {
    const MenuRows rows{
        MenuRow::Command(4011, L"Close [a]"),
        MenuRow::Popup(L"Work Sets", {MenuRow::Command(4030, L"Manage..."),
                                      MenuRow::Popup(L"Proj", {MenuRow::Command(5001, L"All")})}),
        MenuRow::Command(0, L"Sheet Sets", mf::kGrayed),
        MenuRow::Separator(),
        MenuRow::Command(4032, L"Open Sheet Sets In Manager", mf::kChecked),
    };
    std::map<const MenuRow*, HMENU> popups;
    MenuHandle menu = BuildPopupMenu(rows, popups);
    ASSERT_TRUE(menu);
    ASSERT_EQ(::GetMenuItemCount(menu.Get()), 5);
    EXPECT_EQ(Text(menu.Get(), 0), L"Close [a]");
    EXPECT_EQ(::GetMenuItemID(menu.Get(), 0), 4011u);
    EXPECT_NE(::GetMenuState(menu.Get(), 2, MF_BYPOSITION) & MF_GRAYED, 0u);
    EXPECT_NE(::GetMenuState(menu.Get(), 3, MF_BYPOSITION) & MF_SEPARATOR, 0u);
    EXPECT_NE(::GetMenuState(menu.Get(), 4, MF_BYPOSITION) & MF_CHECKED, 0u);
    EXPECT_EQ(::GetMenuState(menu.Get(), 0, MF_BYPOSITION) & (MF_CHECKED | MF_GRAYED), 0u);

    HMENU workSets = ::GetSubMenu(menu.Get(), 1);
    ASSERT_NE(workSets, nullptr);
    EXPECT_EQ(popups.at(&rows[1]), workSets);
    EXPECT_EQ(Text(workSets, 0), L"Manage...");
    HMENU proj = ::GetSubMenu(workSets, 1);
    EXPECT_EQ(popups.at(&rows[1].rows[1]), proj);
    EXPECT_EQ(::GetMenuItemID(proj, 0), 5001u);
    EXPECT_EQ(popups.size(), 2u);
    // Destroying the menu takes its popups with it.
    EXPECT_TRUE(menu.Reset());
    EXPECT_FALSE(::IsMenu(proj));
}

// Nothing is open outside tracking: no rectangle for any row.
TEST(Win32PopupMenus, NoItemRectangleOutsideTracking) {
    Win32PopupMenus menus;
    const MenuRow popup = MenuRow::Popup(L"Views", {MenuRow::Command(4050, L"Save...")});
    EXPECT_TRUE(menus.ItemRect(popup, 0).IsEmpty());
}

}  // namespace
