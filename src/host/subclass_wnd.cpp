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

std::intptr_t CSubclassWnd::WindowProc(unsigned message, std::uintptr_t wParam,
                                       std::intptr_t lParam) {
    if (m_pNext != nullptr)
        return m_pNext->WindowProc(message, wParam, lParam);
    if (m_pOldWndProc == nullptr)
        return 0;  // unhooked while handling this message: nobody left to pass it to
    return Use<WindowProcedures>().CallOld(m_pOldWndProc, m_pWndHooked, message, wParam, lParam);
}

std::intptr_t CSubclassWnd::Default() {
    const HostMessage& current = LastSentMessage();
    return CSubclassWnd::WindowProc(current.message, current.wParam, current.lParam);
}

std::intptr_t CSubclassWnd::HookWndProc(HostWindow* window, unsigned message, std::uintptr_t wParam,
                                        std::intptr_t lParam) {
    // Nothing may cross into the window system from a hook.
    try {
        LastSentScope scope(HostMessage{window, message, wParam, lParam});
        CSubclassWnd* first = FirstHookOf(window);
        if (message == wm::kNcDestroy) {
            // A dying window takes its hooks out of the map by itself; the old procedure is
            // called directly, as no hook is left to pass the message on.
            OldWindowProcedure* old = first != nullptr ? first->m_pOldWndProc : nullptr;
            while (CSubclassWnd* hook = FirstHookOf(window)) {
                hook->Unhook();
                if (hook->m_bOwnedByWindow)
                    delete hook;
            }
            return old != nullptr
                       ? Use<WindowProcedures>().CallOld(old, window, message, wParam, lParam)
                       : 0;
        }
        return first != nullptr ? first->WindowProc(message, wParam, lParam) : 0;
    } catch (...) {
        return 0;
    }
}
