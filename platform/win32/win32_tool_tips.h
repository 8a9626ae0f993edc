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

class Win32ToolTips : public ToolTips {
public:
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

    std::map<ToolKey, ToolTipTextSource*> m_sources;  // not owned
};
