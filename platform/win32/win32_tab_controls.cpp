#include "platform/win32/win32_tab_controls.h"

#include <windows.h>
// After windows.h.
#include <commctrl.h>

#include <vector>

namespace {

HWND ToHwnd(HostWindow* tabs) {
    return reinterpret_cast<HWND>(tabs);
}

LRESULT Send(HostWindow* tabs, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    return ::SendMessageW(ToHwnd(tabs), message, wParam, lParam);
}

}  // namespace

int Win32TabControls::ItemCount(HostWindow* tabs) {
    return static_cast<int>(Send(tabs, TCM_GETITEMCOUNT));
}

bool Win32TabControls::GetItem(HostWindow* tabs, int index, int maxChars, std::wstring& text,
                               std::intptr_t& param) {
    if (maxChars <= 0)
        return false;
    std::vector<wchar_t> buffer(static_cast<std::size_t>(maxChars), L'\0');
    TCITEMW item{};
    item.mask = TCIF_TEXT | TCIF_PARAM;
    item.pszText = buffer.data();
    item.cchTextMax = maxChars;
    if (Send(tabs, TCM_GETITEMW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item)) == 0)
        return false;
    // The control may hand back its own copy instead of filling the buffer.
    text = item.pszText != nullptr ? item.pszText : L"";
    if (text.size() >= static_cast<std::size_t>(maxChars))
        text.resize(static_cast<std::size_t>(maxChars) - 1);
    param = item.lParam;
    return true;
}

bool Win32TabControls::SetItemText(HostWindow* tabs, int index, const std::wstring& text) {
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    item.pszText = const_cast<wchar_t*>(text.c_str());
    return Send(tabs, TCM_SETITEMW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item)) !=
           0;
}

int Win32TabControls::InsertItem(HostWindow* tabs, int index, const std::wstring& text,
                                 std::intptr_t param) {
    TCITEMW item{};
    item.mask = TCIF_TEXT | TCIF_PARAM;
    item.pszText = const_cast<wchar_t*>(text.c_str());
    item.lParam = param;
    return static_cast<int>(
        Send(tabs, TCM_INSERTITEMW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item)));
}

bool Win32TabControls::DeleteItem(HostWindow* tabs, int index) {
    return Send(tabs, TCM_DELETEITEM, static_cast<WPARAM>(index)) != 0;
}

bool Win32TabControls::DeleteAllItems(HostWindow* tabs) {
    return Send(tabs, TCM_DELETEALLITEMS) != 0;
}

int Win32TabControls::GetCurSel(HostWindow* tabs) {
    return static_cast<int>(Send(tabs, TCM_GETCURSEL));
}

int Win32TabControls::SetCurSel(HostWindow* tabs, int index) {
    return static_cast<int>(Send(tabs, TCM_SETCURSEL, static_cast<WPARAM>(index)));
}

int Win32TabControls::RowCount(HostWindow* tabs) {
    return static_cast<int>(Send(tabs, TCM_GETROWCOUNT));
}

bool Win32TabControls::ItemRect(HostWindow* tabs, int index, win::RECT& rect) {
    RECT native{};
    if (Send(tabs, TCM_GETITEMRECT, static_cast<WPARAM>(index),
             reinterpret_cast<LPARAM>(&native)) == 0)
        return false;
    rect = {native.left, native.top, native.right, native.bottom};
    return true;
}

int Win32TabControls::HitTest(HostWindow* tabs, win::POINT point) {
    TCHITTESTINFO info{};
    info.pt = {point.x, point.y};
    return static_cast<int>(Send(tabs, TCM_HITTEST, 0, reinterpret_cast<LPARAM>(&info)));
}

win::RECT Win32TabControls::DisplayArea(HostWindow* tabs) {
    RECT area{};
    ::GetClientRect(ToHwnd(tabs), &area);
    Send(tabs, TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&area));
    return {area.left, area.top, area.right, area.bottom};
}
