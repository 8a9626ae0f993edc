#pragma once
// The tab control port over the common controls' tab control: each call is its TCM_ message.

#include "ports/tab_control.h"

class Win32TabControls : public TabControls {
public:
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
};
