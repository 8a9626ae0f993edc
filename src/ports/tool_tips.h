#pragma once
// Tool tip controls: a tip window owned by a window, holding tools, each a rectangle of some
// window's client area with a text. The control sees the mouse only through the messages that
// its owner relays to it (TTM_RELAYEVENT); when the mouse rests on a tool for the initial delay
// it shows the tool's text in a box no wider than the maximum width, and hides it after the
// auto-pop delay or when the mouse leaves. A tracking tool shows only when told, where told.
//
// As on the real system, a call on a destroyed control or with a tool on a window that doesn't
// exist fails (false, 0 or nothing done), and a control dies with its owner.

#include <string>

#include "foundation/win_types.h"

struct HostWindow;
struct HostToolTip;
struct HostMessage;

// TTM_SETDELAYTIME's kinds (TTDT_...).
namespace ttdt {
constexpr int kAutomatic = 0;
constexpr int kReshow = 1;
constexpr int kAutoPop = 2;
constexpr int kInitial = 3;
}  // namespace ttdt

// Asked for a tool's text before its tip shows, so that the text is fresh each time the mouse
// comes onto the tool. Not owned by the control; it must outlive the tools that name it.
class ToolTipTextSource {
public:
    virtual ~ToolTipTextSource() = default;
    virtual std::wstring ToolTipText(HostWindow* window, unsigned id) = 0;
};

// One tool (TOOLINFO). A tool is known by its window and id.
struct ToolTipTool {
    HostWindow* window = nullptr;  // the window whose client area `rect` is in
    unsigned id = 0;
    win::RECT rect;
    std::wstring text;                        // used when `textSource` is null
    ToolTipTextSource* textSource = nullptr;  // not owned
    bool tracking = false;  // TTF_TRACK | TTF_ABSOLUTE: shown by TrackActivate only
};

class ToolTips {
public:
    virtual ~ToolTips() = default;

    // A tip control owned by `owner`; null when it can't be made (no such window).
    virtual HostToolTip* Create(HostWindow* owner) = 0;
    // Destroys the control and its tools; a control already gone is ignored.
    virtual void Destroy(HostToolTip* tip) = 0;

    // TTM_ACTIVATE: an inactive control shows no tip but keeps its tools.
    virtual void Activate(HostToolTip* tip, bool active) = 0;
    // TTM_SETDELAYTIME, `which` one of ttdt::, the time in ms as its low 16 bits.
    virtual void SetDelayTime(HostToolTip* tip, int which, int ms) = 0;
    // TTM_SETMAXTIPWIDTH: texts wrap at this width in pixels; -1 lets them run.
    virtual void SetMaxTipWidth(HostToolTip* tip, int width) = 0;

    // TTM_ADDTOOL: false on a dead control or window, or when the tool is there already.
    virtual bool AddTool(HostToolTip* tip, const ToolTipTool& tool) = 0;
    // TTM_DELTOOL: a tool that isn't there is ignored.
    virtual void DelTool(HostToolTip* tip, HostWindow* window, unsigned id) = 0;
    // TTM_NEWTOOLRECT and TTM_UPDATETIPTEXT: false when there is no such tool.
    virtual bool SetToolRect(HostToolTip* tip, HostWindow* window, unsigned id,
                             const win::RECT& rect) = 0;
    virtual bool SetToolText(HostToolTip* tip, HostWindow* window, unsigned id,
                             const std::wstring& text) = 0;
    // TTM_GETTOOLCOUNT; 0 for a dead control.
    virtual int ToolCount(HostToolTip* tip) = 0;

    // TTM_RELAYEVENT: a mouse message of a window, as the loop takes it; others are ignored.
    virtual void RelayEvent(HostToolTip* tip, const HostMessage& message) = 0;
    // TTM_POP: hides the tip that shows.
    virtual void Pop(HostToolTip* tip) = 0;

    // TTM_TRACKPOSITION in screen coordinates, and TTM_TRACKACTIVATE of a tracking tool.
    virtual void TrackPosition(HostToolTip* tip, win::POINT screen) = 0;
    virtual void TrackActivate(HostToolTip* tip, HostWindow* window, unsigned id,
                               bool activate) = 0;
    // TTM_GETBUBBLESIZE: the size of the box that shows the tool's tip now; empty while it
    // doesn't show.
    virtual win::SIZE BubbleSize(HostToolTip* tip, HostWindow* window, unsigned id) = 0;
};
