#pragma once
// Window subclassing with chains: any number of hooks on one window, each seeing the window's
// messages before the window's own procedure. The newest hook sees a message first, as a named
// call (window_handler.h); a message it does not handle goes on to the next hook and at last to
// the procedure that the first hook replaced. A hook that wants the rest of the chain's answer
// first calls Default() and answers with it.
//
// Works over the WindowProcedures port only, so it knows nothing of the windows it hooks.

#include <cstddef>
#include <cstdint>

#include "ports/window_handler.h"

struct HostWindow;
struct OldWindowProcedure;

class CSubclassWnd : public WindowHandler {
public:
    CSubclassWnd() = default;
    // A hook that is still on a living window takes itself out of the chain: a chain must never
    // hold a deleted hook, or the window's next message would call into freed memory.
    ~CSubclassWnd() override;
    CSubclassWnd(const CSubclassWnd&) = delete;
    CSubclassWnd& operator=(const CSubclassWnd&) = delete;

    // A window adds this hook in front of the window's chain (a window that doesn't exist adds
    // nothing); null takes it out again. Always true.
    bool HookWindow(HostWindow* window);
    bool IsHooked() const { return m_pWndHooked != nullptr; }
    // Gives this hook, made with new, to its window: it stays in the chain and is deleted when
    // the window dies. For an owner that goes while the window lives on for a moment (a plug-in
    // unloaded while its host quits). A hook on no window is deleted at once.
    void LeaveWithWindow();

    // The first hook of a window's chain, or null when the window isn't hooked.
    static CSubclassWnd* FirstHookOf(HostWindow* window);
    // Windows that have at least one hook.
    static std::size_t HookedWindowCount();

    HostWindow* m_pWndHooked = nullptr;           // not owned
    OldWindowProcedure* m_pOldWndProc = nullptr;  // the window's procedure before any hook
    CSubclassWnd* m_pNext = nullptr;              // the next hook on the same window, not owned
    bool m_bOwnedByWindow = false;                // deleted when the window dies

protected:
    // Passes the message being handled on to the rest of the chain now and gives its answer.
    std::intptr_t Default();

private:
    static std::intptr_t HookWndProc(HostWindow* window, unsigned message, std::uintptr_t wParam,
                                     std::intptr_t lParam);
    void Unhook();
};
