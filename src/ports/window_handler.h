#pragma once
// A window's messages as named calls. The window system decodes wParam and lParam once, in its
// adapter, and calls the handler of the message; a handler answers "handled, with this result"
// or "not handled", and a message that is not handled goes to the window's default procedure
// (or, for a hook, on along the chain to the procedure it replaced). Every handler here answers
// "not handled" until a window overrides it.

#include <cstdint>
#include <optional>

#include "foundation/win_types.h"

struct HostWindow;

class MsgResult {
public:
    MsgResult() = default;
    static MsgResult Handled(std::intptr_t value = 0) { return MsgResult(value); }
    static MsgResult NotHandled() { return MsgResult(); }

    bool IsHandled() const { return m_value.has_value(); }
    // The answer of a handled message; 0 when it was not handled.
    std::intptr_t Value() const { return m_value.value_or(0); }
    friend bool operator==(const MsgResult&, const MsgResult&) = default;

private:
    explicit MsgResult(std::intptr_t value) : m_value(value) {}
    std::optional<std::intptr_t> m_value;
};

// Mouse message key states (MK_...).
namespace mk {
constexpr unsigned kLButton = 0x0001;
constexpr unsigned kShift = 0x0004;
constexpr unsigned kControl = 0x0008;
}  // namespace mk

class WindowHandler {
public:
    virtual ~WindowHandler() = default;

    virtual MsgResult OnCreate() { return {}; }
    virtual MsgResult OnDestroy() { return {}; }
    // The last message a window gets; it is still a window while it handles it.
    virtual MsgResult OnNcDestroy() { return {}; }
    virtual MsgResult OnClose() { return {}; }
    // The caption is to be drawn active or inactive; the default draws it.
    virtual MsgResult OnNcActivate(bool /*active*/) { return {}; }
    // The user drags an edge (`edge` a WMSZ_ value); `rect`, in screen coordinates, may change.
    virtual MsgResult OnSizing(unsigned /*edge*/, win::RECT& /*rect*/) { return {}; }
    virtual MsgResult OnExitSizeMove() { return {}; }
    // `type` is SIZE_RESTORED, SIZE_MINIMIZED ...; `client` the new client area's size.
    virtual MsgResult OnSize(unsigned /*type*/, win::SIZE /*client*/) { return {}; }
    virtual MsgResult OnPaint() { return {}; }
    virtual MsgResult OnEraseBkgnd() { return {}; }
    // `hitTest` as WM_NCHITTEST answered, `mouseMessage` the message that moved the cursor.
    virtual MsgResult OnSetCursor(HostWindow* /*window*/, unsigned /*hitTest*/,
                                  unsigned /*mouseMessage*/) {
        return {};
    }
    // Points of mouse messages are in client coordinates; `keys` holds mk:: flags.
    virtual MsgResult OnMouseMove(win::POINT /*point*/, unsigned /*keys*/) { return {}; }
    virtual MsgResult OnLButtonDown(win::POINT /*point*/, unsigned /*keys*/) { return {}; }
    virtual MsgResult OnLButtonUp(win::POINT /*point*/, unsigned /*keys*/) { return {}; }
    virtual MsgResult OnLButtonDblClk(win::POINT /*point*/, unsigned /*keys*/) { return {}; }
    virtual MsgResult OnTimer(unsigned /*id*/) { return {}; }
    // A hook may change the position; the window takes what the last procedure leaves in it.
    virtual MsgResult OnWindowPosChanging(win::WINDOWPOS& /*pos*/) { return {}; }
    // `screen` is {-1, -1} when the menu key asked for it.
    virtual MsgResult OnContextMenu(HostWindow* /*window*/, win::POINT /*screen*/) { return {}; }
    virtual MsgResult OnMenuSelect(unsigned /*item*/, unsigned /*flags*/) { return {}; }
    // `control` is null for a menu or an accelerator.
    virtual MsgResult OnCommand(unsigned /*id*/, unsigned /*code*/, HostWindow* /*control*/) {
        return {};
    }
    // A control's notification; the record behind `header` is the control's, as the code says.
    virtual MsgResult OnNotify(const win::NMHDR& /*header*/) { return {}; }
    // Scroll bars: `bar` is null for the window's own bars.
    virtual MsgResult OnHScroll(unsigned /*code*/, int /*position*/, HostWindow* /*bar*/) {
        return {};
    }
    virtual MsgResult OnVScroll(unsigned /*code*/, int /*position*/, HostWindow* /*bar*/) {
        return {};
    }
    // The host asks a modeless window whether it wants to keep the keyboard focus.
    virtual MsgResult OnKeepFocus() { return {}; }
    // Messages from WM_USER up are the program's own: their parameters mean what it says.
    virtual MsgResult OnUserMessage(unsigned /*message*/, std::uintptr_t /*wParam*/,
                                    std::intptr_t /*lParam*/) {
        return {};
    }
};
