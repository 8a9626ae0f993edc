#include "host/subclass_wnd.h"

#include <unordered_map>

#include "ports/port.h"
#include "ports/window_messages.h"
#include "ports/window_procedures.h"

namespace {

// From a window to the first hook of its chain. Process-wide by nature: a window's procedure is
// one shared function, and this is how it finds the hooks.
std::unordered_map<HostWindow*, CSubclassWnd*>& HookMap() {
    static std::unordered_map<HostWindow*, CSubclassWnd*> map(10);
    return map;
}

// The message that the shared procedure is handling on this thread, for Default().
HostMessage& LastSentMessage() {
    thread_local HostMessage last;
    return last;
}

// Puts back the record of the outer message when a nested one is done, also when it throws.
class LastSentScope {
public:
    explicit LastSentScope(const HostMessage& current) : m_saved(LastSentMessage()) {
        LastSentMessage() = current;
    }
    ~LastSentScope() { LastSentMessage() = m_saved; }
    LastSentScope(const LastSentScope&) = delete;
    LastSentScope& operator=(const LastSentScope&) = delete;

private:
    HostMessage m_saved;
};

}  // namespace

CSubclassWnd::~CSubclassWnd() {
    Unhook();
}

bool CSubclassWnd::HookWindow(HostWindow* window) {
    if (m_pWndHooked != nullptr)
        Unhook();  // one window per hook
    if (window == nullptr)
        return true;
    WindowProcedures& procedures = Use<WindowProcedures>();
    if (!procedures.IsWindow(window))
        return true;
    auto& map = HookMap();
    auto found = map.find(window);
    if (found == map.end()) {
        OldWindowProcedure* old = procedures.Replace(window, &HookWndProc);
        if (old == nullptr)
            return true;
        m_pOldWndProc = old;
        m_pNext = nullptr;
    } else {
        m_pNext = found->second;
        m_pOldWndProc = found->second->m_pOldWndProc;
    }
    map[window] = this;
    m_pWndHooked = window;
    return true;
}

void CSubclassWnd::Unhook() {
    HostWindow* window = m_pWndHooked;
    if (window == nullptr)
        return;
    auto& map = HookMap();
    auto found = map.find(window);
    if (found != map.end()) {
        if (found->second == this) {
            if (m_pNext != nullptr) {
                found->second = m_pNext;
            } else {
                map.erase(found);
                // A window that is already gone has nothing to restore.
                WindowProcedures& procedures = Use<WindowProcedures>();
                if (procedures.IsWindow(window))
                    procedures.Restore(window, m_pOldWndProc);
            }
        } else {
            for (CSubclassWnd* hook = found->second; hook != nullptr; hook = hook->m_pNext) {
                if (hook->m_pNext == this) {
                    hook->m_pNext = m_pNext;
                    break;
                }
            }
        }
    }
    m_pWndHooked = nullptr;
    m_pOldWndProc = nullptr;
    m_pNext = nullptr;
}

void CSubclassWnd::LeaveWithWindow() {
    if (m_pWndHooked == nullptr) {
        delete this;
        return;
    }
    m_bOwnedByWindow = true;
}

CSubclassWnd* CSubclassWnd::FirstHookOf(HostWindow* window) {
    auto& map = HookMap();
    auto found = map.find(window);
    return found == map.end() ? nullptr : found->second;
}

std::size_t CSubclassWnd::HookedWindowCount() {
    return HookMap().size();
}

namespace {

// Where a message stands on its way along a chain: whether it has reached the procedure the
// hooks replaced, so that a failure passes it on there once and never twice.
struct Passage {
    HostWindow* window = nullptr;
    OldWindowProcedure* old = nullptr;
    bool reachedOld = false;
};

// Offers the message to `hook` and the hooks after it, then to the replaced procedure.
std::intptr_t PassAlong(CSubclassWnd* hook, Passage& passage, const HostMessage& message) {
    WindowProcedures& procedures = Use<WindowProcedures>();
    for (; hook != nullptr; hook = hook->m_pNext) {
        const MsgResult result =
            procedures.Dispatch(*hook, message.message, message.wParam, message.lParam);
        if (result.IsHandled())
            return result.Value();
    }
    if (passage.old == nullptr)
        return 0;  // unhooked while handling this message: nobody left to pass it to
    passage.reachedOld = true;
    return procedures.CallOld(passage.old, passage.window, message.message, message.wParam,
                              message.lParam);
}

}  // namespace

std::intptr_t CSubclassWnd::Default() {
    Passage passage{m_pWndHooked, m_pOldWndProc};
    return PassAlong(m_pNext, passage, LastSentMessage());
}

std::intptr_t CSubclassWnd::HookWndProc(HostWindow* window, unsigned message, std::uintptr_t wParam,
                                        std::intptr_t lParam) {
    const HostMessage current{window, message, wParam, lParam};
    CSubclassWnd* first = FirstHookOf(window);
    Passage passage{window, first != nullptr ? first->m_pOldWndProc : nullptr};
    // Nothing may cross into the window system from a hook, and the host must still see its own
    // messages: after a failure the message goes on to the procedure the hooks replaced.
    try {
        LastSentScope scope(current);
        if (message == wm::kNcDestroy) {
            // A dying window takes its hooks out of the map by itself; the old procedure is
            // called directly, as no hook is left to pass the message on.
            while (CSubclassWnd* hook = FirstHookOf(window)) {
                hook->Unhook();
                if (hook->m_bOwnedByWindow)
                    delete hook;
            }
            return PassAlong(nullptr, passage, current);
        }
        return PassAlong(first, passage, current);
    } catch (...) {
    }
    if (passage.reachedOld || passage.old == nullptr)
        return 0;  // the failure was the old procedure's own: it is not called twice
    try {
        return Use<WindowProcedures>().CallOld(passage.old, window, message, wParam, lParam);
    } catch (...) {
        return 0;
    }
}
