#pragma once
// Popup menus: the core builds the tree of rows, the window system shows it at a screen point
// and tracks it. While the user moves over the rows the owner gets WM_MENUSELECT (a command
// row's id, or a popup's position in its parent, with the row's flags and kPopup); when the
// menu closes it gets WM_MENUSELECT with kClosed, and the chosen row's id comes back.

#include <cstddef>
#include <string>
#include <vector>

#include "foundation/win_types.h"

struct HostWindow;

// The row flags (MF_...), the window system's own values.
namespace mf {
constexpr unsigned kGrayed = 0x0001;
constexpr unsigned kChecked = 0x0008;
constexpr unsigned kPopup = 0x0010;
constexpr unsigned kOwnerDraw = 0x0100;
constexpr unsigned kSeparator = 0x0800;
// WM_MENUSELECT's flags when the menu has closed.
constexpr unsigned kClosed = 0xFFFF;
}  // namespace mf

// One row: a command with an id, a popup holding rows, or a separator.
struct MenuRow {
    unsigned id = 0;
    std::wstring text;
    unsigned flags = 0;
    std::vector<MenuRow> rows;  // a popup's

    static MenuRow Command(unsigned id, std::wstring text, unsigned flags = 0) {
        return MenuRow{id, std::move(text), flags, {}};
    }
    static MenuRow Popup(std::wstring text, std::vector<MenuRow> rows, unsigned flags = 0) {
        return MenuRow{0, std::move(text), flags | mf::kPopup, std::move(rows)};
    }
    static MenuRow Separator() { return MenuRow{0, L"", mf::kSeparator, {}}; }
    bool IsPopup() const { return (flags & mf::kPopup) != 0; }
};

using MenuRows = std::vector<MenuRow>;

class PopupMenus {
public:
    virtual ~PopupMenus() = default;
    // Shows the rows with their top left at `screen` for `owner` and tracks the user's choice;
    // modal, so the owner's messages run meanwhile. The tree must stay as it is until this
    // returns. Returns the chosen row's id, 0 when the user chose none.
    virtual unsigned Track(const MenuRows& rows, win::POINT screen, HostWindow* owner) = 0;
    // GetMenuItemRect: the screen rectangle of the `item`th row of `popup`, a popup row of the
    // tree being tracked; empty when that popup is not open.
    virtual win::RECT ItemRect(const MenuRow& popup, std::size_t item) = 0;
};
