#include "platform/win32/win32_window_procedures.h"

#include <windows.h>

#include <algorithm>

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

std::intptr_t Win32WindowProcedures::Send(HostWindow* window, unsigned message,
                                          std::uintptr_t wParam, std::intptr_t lParam) {
    return ::SendMessageW(ToHwnd(window), message, wParam, lParam);
}

std::size_t Win32WindowProcedures::ActiveReplacements() const {
    return static_cast<std::size_t>(std::count_if(
        m_records.begin(), m_records.end(), [](const auto& held) { return !held->restored; }));
}
