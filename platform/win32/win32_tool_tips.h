#pragma once
// Tool tips on real windows: a HostToolTip* is the HWND of a tooltips_class32 popup owned by
// its owner, and each call is the control's message. Tools are added without TTF_SUBCLASS: the
// mouse reaches the control only through RelayEvent, as the owner's message loop hands it on.
// A tool whose text comes from a source gets it from there whenever the mouse comes onto it,
// before the control can show its tip.

#include <windows.h>

#include <map>
#include <tuple>

#include "ports/tool_tips.h"

// The system makes a popup's owner the top-level window of the one named, so a tip would outlive
// a child window that owns it: the owner is watched, and its tips are destroyed with it. Tips
// still alive when this object goes (the module unloading) are destroyed with it.
class Win32ToolTips : public ToolTips {
public:
    Win32ToolTips() = default;
    ~Win32ToolTips() override;
    Win32ToolTips(const Win32ToolTips&) = delete;
    Win32ToolTips& operator=(const Win32ToolTips&) = delete;

    HostToolTip* Create(HostWindow* owner) override;
    void Destroy(HostToolTip* tip) override;
    void Activate(HostToolTip* tip, bool active) override;
    void SetDelayTime(HostToolTip* tip, int which, int ms) override;
    void SetMaxTipWidth(HostToolTip* tip, int width) override;
    bool AddTool(HostToolTip* tip, const ToolTipTool& tool) override;
    void DelTool(HostToolTip* tip, HostWindow* window, unsigned id) override;
    bool SetToolRect(HostToolTip* tip, HostWindow* window, unsigned id,
                     const win::RECT& rect) override;
    bool SetToolText(HostToolTip* tip, HostWindow* window, unsigned id,
                     const std::wstring& text) override;
    int ToolCount(HostToolTip* tip) override;
    void RelayEvent(HostToolTip* tip, const HostMessage& message) override;
    void Pop(HostToolTip* tip) override;
    void TrackPosition(HostToolTip* tip, win::POINT screen) override;
    void TrackActivate(HostToolTip* tip, HostWindow* window, unsigned id, bool activate) override;
    win::SIZE BubbleSize(HostToolTip* tip, HostWindow* window, unsigned id) override;

private:
    using ToolKey = std::tuple<HWND, HWND, UINT>;  // the control, the tool's window, its id
    void AskSource(HWND tip, HWND window, POINT point);
    static LRESULT CALLBACK OwnerProc(HWND owner, UINT message, WPARAM wParam, LPARAM lParam,
                                      UINT_PTR tip, DWORD_PTR self);

    std::map<HWND, HWND> m_owners;  // each tip's owner

    std::map<ToolKey, ToolTipTextSource*> m_sources;  // not owned
};
