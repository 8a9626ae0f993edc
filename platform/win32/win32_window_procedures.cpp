#include "platform/win32/win32_window_procedures.h"

#include <windows.h>

#include <algorithm>
#include <cstddef>

#include "ports/window_messages.h"

// What a window's procedure was before Replace: the WNDPROC that GWLP_WNDPROC held and, when
// that was the shared procedure, the core procedure it was running.
struct OldWindowProcedure {
    HostWindow* window = nullptr;
    WNDPROC wndproc = nullptr;
    WindowProcedure core = nullptr;
    bool restored = false;
};

namespace {

constexpr wchar_t kCoreProcedureProperty[] = L"Tabrow.WindowProcedure";
constexpr wchar_t kHandlerProperty[] = L"Tabrow.WindowHandler";

// A notification's record is the control's: the handler reads its head through the twin, and
// the rest, where the code says there is more, at the same address.
static_assert(sizeof(win::NMHDR) == sizeof(::NMHDR) &&
              offsetof(win::NMHDR, idFrom) == offsetof(::NMHDR, idFrom) &&
              offsetof(win::NMHDR, code) == offsetof(::NMHDR, code));

HostWindow* HostOf(std::uintptr_t handle) {
    return reinterpret_cast<HostWindow*>(handle);
}

win::POINT PointOf(LPARAM lParam) {
    return win::POINT{static_cast<SHORT>(LOWORD(lParam)), static_cast<SHORT>(HIWORD(lParam))};
}

// The position goes to the handler as the core's twin and comes back with its changes.
MsgResult PositionChanging(WindowHandler& handler, ::WINDOWPOS& raw) {
    win::WINDOWPOS pos{raw.hwnd, raw.hwndInsertAfter, raw.x, raw.y, raw.cx, raw.cy, raw.flags};
    const MsgResult result = handler.OnWindowPosChanging(pos);
    raw.hwndInsertAfter = static_cast<HWND>(pos.hwndInsertAfter);
    raw.x = pos.x;
    raw.y = pos.y;
    raw.cx = pos.cx;
    raw.cy = pos.cy;
    raw.flags = pos.flags;
    return result;
}

MsgResult Sizing(WindowHandler& handler, unsigned edge, ::RECT& raw) {
    win::RECT rect{raw.left, raw.top, raw.right, raw.bottom};
    const MsgResult result = handler.OnSizing(edge, rect);
    raw = ::RECT{rect.left, rect.top, rect.right, rect.bottom};
    return result;
}

MsgResult Decode(WindowHandler& handler, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto control = static_cast<std::uintptr_t>(lParam);
    switch (message) {
        case WM_CREATE: return handler.OnCreate();
        case WM_DESTROY: return handler.OnDestroy();
        case WM_NCDESTROY: return handler.OnNcDestroy();
        case WM_CLOSE: return handler.OnClose();
        case WM_NCACTIVATE: return handler.OnNcActivate(wParam != 0);
        case WM_SIZING:
            if (lParam == 0)
                return MsgResult::NotHandled();
            return Sizing(handler, static_cast<unsigned>(wParam), *reinterpret_cast<::RECT*>(lParam));
        case WM_EXITSIZEMOVE: return handler.OnExitSizeMove();
        case WM_SIZE:
            return handler.OnSize(static_cast<unsigned>(wParam),
                                  win::SIZE{LOWORD(lParam), HIWORD(lParam)});
        case WM_PAINT: return handler.OnPaint();
        case WM_ERASEBKGND: return handler.OnEraseBkgnd();
        case WM_SETCURSOR: return handler.OnSetCursor(HostOf(wParam), LOWORD(lParam), HIWORD(lParam));
        case WM_MOUSEMOVE: return handler.OnMouseMove(PointOf(lParam), LOWORD(wParam));
        case WM_LBUTTONDOWN: return handler.OnLButtonDown(PointOf(lParam), LOWORD(wParam));
        case WM_LBUTTONUP: return handler.OnLButtonUp(PointOf(lParam), LOWORD(wParam));
        case WM_LBUTTONDBLCLK: return handler.OnLButtonDblClk(PointOf(lParam), LOWORD(wParam));
        case WM_TIMER: return handler.OnTimer(static_cast<unsigned>(wParam));
        case WM_WINDOWPOSCHANGING:
            if (lParam == 0)
                return MsgResult::NotHandled();
            return PositionChanging(handler, *reinterpret_cast<::WINDOWPOS*>(lParam));
        case WM_CONTEXTMENU: return handler.OnContextMenu(HostOf(wParam), PointOf(lParam));
        case WM_MENUSELECT: return handler.OnMenuSelect(LOWORD(wParam), HIWORD(wParam));
        case WM_COMMAND: return handler.OnCommand(LOWORD(wParam), HIWORD(wParam), HostOf(control));
        case WM_NOTIFY:
            if (lParam == 0)
                return MsgResult::NotHandled();
            return handler.OnNotify(*reinterpret_cast<const win::NMHDR*>(lParam));
        case WM_HSCROLL:
            return handler.OnHScroll(LOWORD(wParam), static_cast<SHORT>(HIWORD(wParam)),
                                     HostOf(control));
        case WM_VSCROLL:
            return handler.OnVScroll(LOWORD(wParam), static_cast<SHORT>(HIWORD(wParam)),
                                     HostOf(control));
        case wm::kAcadKeepFocus: return handler.OnKeepFocus();
        default:
            if (message >= WM_USER)
                return handler.OnUserMessage(message, wParam, lParam);
            return MsgResult::NotHandled();
    }
}

HWND ToHwnd(HostWindow* window) {
    return reinterpret_cast<HWND>(window);
}

HANDLE AsProperty(WindowProcedure procedure) {
    return reinterpret_cast<HANDLE>(reinterpret_cast<std::intptr_t>(procedure));
}

WindowProcedure CoreProcedureOf(HWND hwnd) {
    return reinterpret_cast<WindowProcedure>(
        reinterpret_cast<std::intptr_t>(::GetPropW(hwnd, kCoreProcedureProperty)));
}

LRESULT CALLBACK SharedWindowProcedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    WindowProcedure core = CoreProcedureOf(hwnd);
    if (core == nullptr)
        return ::DefWindowProcW(hwnd, message, wParam, lParam);
    // Nothing may cross back into the window system: a failure ends here as "not handled".
    try {
        return core(reinterpret_cast<HostWindow*>(hwnd), message, wParam, lParam);
    } catch (...) {
        return 0;
    }
}

}  // namespace

Win32WindowProcedures::Win32WindowProcedures() = default;
Win32WindowProcedures::~Win32WindowProcedures() = default;

bool Win32WindowProcedures::IsWindow(HostWindow* window) {
    return window != nullptr && ::IsWindow(ToHwnd(window)) != FALSE;
}

OldWindowProcedure* Win32WindowProcedures::Replace(HostWindow* window, WindowProcedure procedure) {
    HWND hwnd = ToHwnd(window);
    if (procedure == nullptr || !IsWindow(window))
        return nullptr;
    auto record = std::make_unique<OldWindowProcedure>();
    record->window = window;
    const auto current = reinterpret_cast<WNDPROC>(::GetWindowLongPtrW(hwnd, GWLP_WNDPROC));
    if (current == &SharedWindowProcedure)
        record->core = CoreProcedureOf(hwnd);
    // The property first: the shared procedure may see a message the moment it is installed.
    if (!::SetPropW(hwnd, kCoreProcedureProperty, AsProperty(procedure)))
        return nullptr;
    ::SetLastError(ERROR_SUCCESS);
    const LONG_PTR previous =
        ::SetWindowLongPtrW(hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&SharedWindowProcedure));
    if (previous == 0 && ::GetLastError() != ERROR_SUCCESS) {
        if (record->core != nullptr)
            ::SetPropW(hwnd, kCoreProcedureProperty, AsProperty(record->core));
        else
            ::RemovePropW(hwnd, kCoreProcedureProperty);
        return nullptr;
    }
    record->wndproc = reinterpret_cast<WNDPROC>(previous);
    OldWindowProcedure* replaced = record.get();
    m_records.push_back(std::move(record));
    return replaced;
}

void Win32WindowProcedures::Restore(HostWindow* window, OldWindowProcedure* procedure) {
    const bool ours =
        std::any_of(m_records.begin(), m_records.end(),
                    [procedure](const auto& held) { return held.get() == procedure; });
    if (!ours || procedure->window != window || procedure->restored)
        return;
    procedure->restored = true;
    if (!IsWindow(window))
        return;
    HWND hwnd = ToHwnd(window);
    ::SetWindowLongPtrW(hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure->wndproc));
    if (procedure->core != nullptr)
        ::SetPropW(hwnd, kCoreProcedureProperty, AsProperty(procedure->core));
    else
        ::RemovePropW(hwnd, kCoreProcedureProperty);
}

std::intptr_t Win32WindowProcedures::CallOld(OldWindowProcedure* procedure, HostWindow* window,
                                             unsigned message, std::uintptr_t wParam,
                                             std::intptr_t lParam) {
    if (procedure == nullptr)
        return ::DefWindowProcW(ToHwnd(window), message, wParam, lParam);
    if (procedure->core != nullptr)
        return procedure->core(window, message, wParam, lParam);
    return ::CallWindowProcW(procedure->wndproc, ToHwnd(window), message, wParam, lParam);
}

MsgResult Win32WindowProcedures::Dispatch(WindowHandler& handler, unsigned message,
                                          std::uintptr_t wParam, std::intptr_t lParam) {
    return Decode(handler, message, wParam, lParam);
}

std::intptr_t Win32WindowProcedures::Send(HostWindow* window, unsigned message,
                                          std::uintptr_t wParam, std::intptr_t lParam) {
    return ::SendMessageW(ToHwnd(window), message, wParam, lParam);
}

std::size_t Win32WindowProcedures::ActiveReplacements() const {
    return static_cast<std::size_t>(std::count_if(
        m_records.begin(), m_records.end(), [](const auto& held) { return !held->restored; }));
}

LRESULT CALLBACK HandlerWindowProcedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* handler = static_cast<WindowHandler*>(::GetPropW(hwnd, kHandlerProperty));
    if (handler != nullptr) {
        // Nothing crosses back into the window system. A failure is taken as "not handled", so
        // that the default procedure still does its part (a WM_PAINT's region is validated).
        try {
            const MsgResult result = Decode(*handler, message, wParam, lParam);
            if (result.IsHandled())
                return result.Value();
        } catch (...) {
        }
    }
    if (message == WM_NCDESTROY)
        ::RemovePropW(hwnd, kHandlerProperty);
    return ::DefWindowProcW(hwnd, message, wParam, lParam);
}

void SetWindowHandler(HWND hwnd, WindowHandler* handler) {
    if (handler != nullptr)
        ::SetPropW(hwnd, kHandlerProperty, handler);
    else
        ::RemovePropW(hwnd, kHandlerProperty);
}
