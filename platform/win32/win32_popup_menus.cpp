#include "platform/win32/win32_popup_menus.h"

#include <stdexcept>

namespace {

void Fill(HMENU menu, const MenuRows& rows, std::map<const MenuRow*, HMENU>& popups) {
    for (const MenuRow& row : rows) {
        if (row.IsPopup()) {
            // Appended at once: from then on the parent owns it and destroys it with itself.
            HMENU popup = ::CreatePopupMenu();
            if (popup == nullptr)
                throw std::runtime_error("CreatePopupMenu failed");
            if (!::AppendMenuW(menu, row.flags | MF_POPUP, reinterpret_cast<UINT_PTR>(popup),
                               row.text.c_str())) {
                ::DestroyMenu(popup);
                throw std::runtime_error("AppendMenuW failed");
            }
            popups[&row] = popup;
            Fill(popup, row.rows, popups);
            continue;
        }
        const wchar_t* item = (row.flags & mf::kOwnerDraw) != 0
                                  ? reinterpret_cast<const wchar_t*>(&row)
                                  : row.text.c_str();
        if (!::AppendMenuW(menu, row.flags, row.id, item))
            throw std::runtime_error("AppendMenuW failed");
    }
}

}  // namespace

MenuHandle BuildPopupMenu(const MenuRows& rows, std::map<const MenuRow*, HMENU>& popups) {
    MenuHandle menu(::CreatePopupMenu());
    if (!menu)
        throw std::runtime_error("CreatePopupMenu failed");
    Fill(menu.Get(), rows, popups);
    return menu;
}

unsigned Win32PopupMenus::Track(const MenuRows& rows, win::POINT screen, HostWindow* owner) {
    if (m_bTracking)
        return 0;
    m_popups.clear();
    MenuHandle menu;
    try {
        menu = BuildPopupMenu(rows, m_popups);
    } catch (const std::runtime_error&) {
        m_popups.clear();
        return 0;
    }
    m_bTracking = true;
    // Modal: the owner's messages, WM_MENUSELECT among them, run inside.
    const BOOL chosen =
        ::TrackPopupMenu(menu.Get(), TPM_RETURNCMD | TPM_LEFTALIGN | TPM_TOPALIGN, screen.x,
                         screen.y, 0, reinterpret_cast<HWND>(owner), nullptr);
    m_bTracking = false;
    m_popups.clear();
    return static_cast<unsigned>(chosen);
}

win::RECT Win32PopupMenus::ItemRect(const MenuRow& popup, std::size_t item) {
    auto it = m_popups.find(&popup);
    RECT rect{};
    if (it == m_popups.end() ||
        !::GetMenuItemRect(nullptr, it->second, static_cast<UINT>(item), &rect))
        return {};
    return win::RECT{rect.left, rect.top, rect.right, rect.bottom};
}
