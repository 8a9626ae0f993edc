#pragma once
// The simulated tab control: the items of every "SysTabControl32" window, laid out the way a
// multi-line control wraps them. A tab is as wide as its text in the control's font (a fixed
// advance per character here) plus its padding; rows fill from the first item, and a row that
// has no room for the next tab starts a new one. Vertical controls run their tabs down the
// window and wrap by its height; rows stand on the side the style names, the first row nearest
// that edge. Inserting into an empty control selects the new item and
// deleting the selected item leaves none selected, as the window system does.

#include <map>
#include <string>
#include <vector>

#include "ports/tab_control.h"

class SimWindowSystem;

class SimTabControl : public TabControls {
public:
    explicit SimTabControl(SimWindowSystem& windows) : m_windows(windows) {}

    static constexpr int kCharWidth = 7;    // the advance of one character of the tab font
    static constexpr int kTabPadding = 12;  // both sides of a tab's text together
    static constexpr int kRowHeight = 20;   // across a row, for every direction

    // A click on a tab as the control handles it, without TCM_SETCURSEL: it asks its parent
    // with TCN_SELCHANGING (an answer other than 0 vetoes), changes its selection and tells the
    // parent with TCN_SELCHANGE. A click on the selected tab or beside the tabs does nothing.
    // True when the selection changed.
    bool Click(HostWindow* tabs, int index);
    // How often TCM_SETCURSEL was sent to the control.
    int SetCurSelCalls(HostWindow* tabs);

    int ItemCount(HostWindow* tabs) override;
    bool GetItem(HostWindow* tabs, int index, int maxChars, std::wstring& text,
                 std::intptr_t& param) override;
    bool SetItemText(HostWindow* tabs, int index, const std::wstring& text) override;
    int InsertItem(HostWindow* tabs, int index, const std::wstring& text,
                   std::intptr_t param) override;
    bool DeleteItem(HostWindow* tabs, int index) override;
    bool DeleteAllItems(HostWindow* tabs) override;
    int GetCurSel(HostWindow* tabs) override;
    int SetCurSel(HostWindow* tabs, int index) override;
    int RowCount(HostWindow* tabs) override;
    bool ItemRect(HostWindow* tabs, int index, win::RECT& rect) override;
    int HitTest(HostWindow* tabs, win::POINT point) override;
    win::RECT DisplayArea(HostWindow* tabs) override;

private:
    struct Item {
        std::wstring text;
        std::intptr_t param = 0;
    };
    struct Control {
        std::vector<Item> items;
        int selected = -1;
        int setCurSelCalls = 0;
        long long serial = 0;  // of the window the items belong to
    };
    Control& Of(HostWindow* tabs);
    // Each item's rectangle, in order, for the control's present size and style.
    std::vector<win::RECT> Layout(HostWindow* tabs);

    SimWindowSystem& m_windows;
    std::map<HostWindow*, Control> m_controls;
};
