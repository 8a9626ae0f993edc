#include "platform/sim/sim_tab_control.h"

#include <stdexcept>

#include "platform/sim/sim_window_system.h"
#include "ports/window_messages.h"

SimTabControl::Control& SimTabControl::Of(HostWindow* tabs) {
    if (!m_windows.IsWindow(tabs) || m_windows.Window(tabs).className != L"SysTabControl32")
        throw std::logic_error("tab control message sent to a window that is no tab control");
    // A window made where a destroyed one was starts without its items.
    Control& control = m_controls[tabs];
    const long long serial = m_windows.Window(tabs).serial;
    if (control.serial != serial)
        control = Control{{}, -1, 0, serial};
    return control;
}

bool SimTabControl::Click(HostWindow* tabs, int index) {
    const Control& c = Of(tabs);
    if (index < 0 || index >= static_cast<int>(c.items.size()) || index == c.selected)
        return false;
    HostWindow* parent = m_windows.Parent(tabs);
    win::NMHDR header{tabs, 0, tcn::kSelChanging};
    if (m_windows.Send(parent, wm::kNotify, 0, reinterpret_cast<std::intptr_t>(&header)) != 0)
        return false;
    // Looked up again: the parent may have changed the control while it was asked.
    Control& now = Of(tabs);
    if (index >= static_cast<int>(now.items.size()))
        return false;
    now.selected = index;
    header.code = tcn::kSelChange;
    m_windows.Send(parent, wm::kNotify, 0, reinterpret_cast<std::intptr_t>(&header));
    return true;
}

int SimTabControl::SetCurSelCalls(HostWindow* tabs) {
    return Of(tabs).setCurSelCalls;
}

int SimTabControl::ItemCount(HostWindow* tabs) {
    return static_cast<int>(Of(tabs).items.size());
}

bool SimTabControl::GetItem(HostWindow* tabs, int index, int maxChars, std::wstring& text,
                            std::intptr_t& param) {
    Control& c = Of(tabs);
    if (index < 0 || index >= static_cast<int>(c.items.size()))
        return false;
    const Item& item = c.items[static_cast<std::size_t>(index)];
    const std::size_t room = maxChars > 0 ? static_cast<std::size_t>(maxChars - 1) : 0;
    text = item.text.substr(0, room);
    param = item.param;
    return true;
}

bool SimTabControl::SetItemText(HostWindow* tabs, int index, const std::wstring& text) {
    Control& c = Of(tabs);
    if (index < 0 || index >= static_cast<int>(c.items.size()))
        return false;
    c.items[static_cast<std::size_t>(index)].text = text;
    return true;
}

int SimTabControl::InsertItem(HostWindow* tabs, int index, const std::wstring& text,
                              std::intptr_t param) {
    Control& c = Of(tabs);
    if (index < 0)
        return -1;
    const int count = static_cast<int>(c.items.size());
    const int at = index > count ? count : index;
    c.items.insert(c.items.begin() + at, Item{text, param});
    if (count == 0)
        c.selected = 0;
    else if (c.selected >= at)
        ++c.selected;
    return at;
}

bool SimTabControl::DeleteItem(HostWindow* tabs, int index) {
    Control& c = Of(tabs);
    if (index < 0 || index >= static_cast<int>(c.items.size()))
        return false;
    c.items.erase(c.items.begin() + index);
    if (c.selected == index)
        c.selected = -1;
    else if (c.selected > index)
        --c.selected;
    return true;
}

bool SimTabControl::DeleteAllItems(HostWindow* tabs) {
    Control& c = Of(tabs);
    c.items.clear();
    c.selected = -1;
    return true;
}

int SimTabControl::GetCurSel(HostWindow* tabs) {
    return Of(tabs).selected;
}

int SimTabControl::SetCurSel(HostWindow* tabs, int index) {
    Control& c = Of(tabs);
    ++c.setCurSelCalls;
    if (index < 0 || index >= static_cast<int>(c.items.size()))
        return -1;
    const int previous = c.selected;
    c.selected = index;
    return previous;
}

std::vector<win::RECT> SimTabControl::Layout(HostWindow* tabs) {
    Control& c = Of(tabs);
    const unsigned style = m_windows.Style(tabs);
    const win::RECT client = m_windows.RectInParent(tabs);
    const bool vertical = (style & tcs::kVertical) != 0;
    const bool multiLine = (style & tcs::kMultiLine) != 0 || vertical;
    const bool farSide = (style & tcs::kBottom) != 0;  // bottom, or right when vertical
    const int length = vertical ? client.Height() : client.Width();
    const int depth = vertical ? client.Width() : client.Height();

    std::vector<win::RECT> rects;
    int row = 0;
    int along = 0;
    for (const Item& item : c.items) {
        const int extent = kTabPadding + kCharWidth * static_cast<int>(item.text.size());
        // A tab that doesn't fit starts a new row, unless it is the row's first.
        if (multiLine && along > 0 && along + extent > length) {
            ++row;
            along = 0;
        }
        const int across = farSide ? depth - (row + 1) * kRowHeight : row * kRowHeight;
        rects.push_back(vertical ? win::RECT{across, along, across + kRowHeight, along + extent}
                                 : win::RECT{along, across, along + extent, across + kRowHeight});
        along += extent;
    }
    return rects;
}

int SimTabControl::RowCount(HostWindow* tabs) {
    const std::vector<win::RECT> rects = Layout(tabs);
    if (rects.empty())
        return 1;
    const bool vertical = (m_windows.Style(tabs) & tcs::kVertical) != 0;
    const win::RECT& first = rects.front();
    const win::RECT& last = rects.back();
    const int spread = vertical ? last.left - first.left : last.top - first.top;
    return (spread < 0 ? -spread : spread) / kRowHeight + 1;
}

win::RECT SimTabControl::DisplayArea(HostWindow* tabs) {
    const unsigned style = m_windows.Style(tabs);
    const win::RECT window = m_windows.RectInParent(tabs);
    // Inside the page's two-pixel frame, and past the rows on the tabs' side.
    win::RECT area{2, 2, window.Width() - 2, window.Height() - 2};
    if (Of(tabs).items.empty())
        return area;
    const int band = RowCount(tabs) * kRowHeight;
    if ((style & tcs::kVertical) != 0) {
        if ((style & tcs::kRight) != 0)
            area.right -= band;
        else
            area.left += band;
    } else if ((style & tcs::kBottom) != 0) {
        area.bottom -= band;
    } else {
        area.top += band;
    }
    return area;
}

bool SimTabControl::ItemRect(HostWindow* tabs, int index, win::RECT& rect) {
    const std::vector<win::RECT> rects = Layout(tabs);
    if (index < 0 || index >= static_cast<int>(rects.size()))
        return false;
    rect = rects[static_cast<std::size_t>(index)];
    return true;
}

int SimTabControl::HitTest(HostWindow* tabs, win::POINT point) {
    const std::vector<win::RECT> rects = Layout(tabs);
    for (std::size_t i = 0; i < rects.size(); ++i) {
        const win::RECT& r = rects[i];
        if (point.x >= r.left && point.x < r.right && point.y >= r.top && point.y < r.bottom)
            return static_cast<int>(i);
    }
    return -1;
}
