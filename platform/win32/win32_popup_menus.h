#pragma once
// Popup menus on the real window system: the core's tree becomes a menu with a popup per popup
// row, tracked with TrackPopupMenu. The owner gets WM_MENUSELECT from the window system itself
// while the user moves over the rows; the chosen id comes back when the menu closes.

#include <map>

#include "platform/win32/unique_handle.h"
#include "ports/popup_menu.h"

// The rows as a popup menu; each popup row's menu is noted in `popups`, owned by the menu.
// An owner-drawn row carries its row's address as its item data.
MenuHandle BuildPopupMenu(const MenuRows& rows, std::map<const MenuRow*, HMENU>& popups);

class Win32PopupMenus : public PopupMenus {
public:
    // 0 as well when the menu cannot be made or another is being tracked.
    unsigned Track(const MenuRows& rows, win::POINT screen, HostWindow* owner) override;
    win::RECT ItemRect(const MenuRow& popup, std::size_t item) override;

private:
    std::map<const MenuRow*, HMENU> m_popups;  // of the menu being tracked
    bool m_bTracking = false;
};
