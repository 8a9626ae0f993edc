#pragma once
// The window system's tab control, message by message (TCM_...), on a window that CreateChild
// made with the class "SysTabControl32". Texts and item parameters are the control's; the core
// keeps no copy. Indexes are 0-based; -1 means none.

#include <cstdint>
#include <string>

#include "foundation/win_types.h"

struct HostWindow;

namespace tcs {
constexpr unsigned kBottom = 0x0002;
constexpr unsigned kRight = 0x0002;  // with kVertical
constexpr unsigned kHotTrack = 0x0040;
constexpr unsigned kVertical = 0x0080;
constexpr unsigned kRaggedRight = 0x0800;
constexpr unsigned kOwnerDrawFixed = 0x2000;
constexpr unsigned kMultiLine = 0x0200;
}  // namespace tcs

class TabControls {
public:
    virtual ~TabControls() = default;

    virtual int ItemCount(HostWindow* tabs) = 0;
    // The item's text, cut to `maxChars - 1` characters as the control's buffer would be, and
    // its parameter. False for an index out of range.
    virtual bool GetItem(HostWindow* tabs, int index, int maxChars, std::wstring& text,
                         std::intptr_t& param) = 0;
    virtual bool SetItemText(HostWindow* tabs, int index, const std::wstring& text) = 0;
    // Inserts before `index` (an index past the end appends); returns the new item's index.
    virtual int InsertItem(HostWindow* tabs, int index, const std::wstring& text,
                           std::intptr_t param) = 0;
    virtual bool DeleteItem(HostWindow* tabs, int index) = 0;
    virtual bool DeleteAllItems(HostWindow* tabs) = 0;
    virtual int GetCurSel(HostWindow* tabs) = 0;
    // Selects without notifying the parent; returns the previous selection.
    virtual int SetCurSel(HostWindow* tabs, int index) = 0;
    // Rows of a multi-line control at its present size and font.
    virtual int RowCount(HostWindow* tabs) = 0;
    // The item's rectangle in the control's client coordinates.
    virtual bool ItemRect(HostWindow* tabs, int index, win::RECT& rect) = 0;
    // The item under a point of the client area, or -1.
    virtual int HitTest(HostWindow* tabs, win::POINT point) = 0;
    // The page's inside: the client rectangle less the tabs and the page's frame
    // (TCM_ADJUSTRECT with FALSE).
    virtual win::RECT DisplayArea(HostWindow* tabs) = 0;
};
