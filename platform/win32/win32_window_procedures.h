#pragma once
// Window procedures on real windows: a HostWindow* is the HWND.
//
// The core's procedure is not a WNDPROC, so the window gets one shared WNDPROC, which finds the
// core's procedure in a table by window and calls it. What Replace returns remembers the
// WNDPROC it displaced and, when that was the shared one, the core procedure it ran, so that
// procedures replaced twice still call each other in the right order.
//
// Those records stay callable after Restore, because a dying window's subclass gives its
// procedure back and then calls it with the last message; so they live as long as this object,
// which a plug-in destroys at unload, after its windows have been given back their procedures.

#include <windows.h>

#include <memory>
#include <vector>

#include "ports/window_procedures.h"

class Win32WindowProcedures : public WindowProcedures {
public:
    Win32WindowProcedures();
    ~Win32WindowProcedures() override;
    Win32WindowProcedures(const Win32WindowProcedures&) = delete;
    Win32WindowProcedures& operator=(const Win32WindowProcedures&) = delete;

    bool IsWindow(HostWindow* window) override;
    OldWindowProcedure* Replace(HostWindow* window, WindowProcedure procedure) override;
    void Restore(HostWindow* window, OldWindowProcedure* procedure) override;
    std::intptr_t CallOld(OldWindowProcedure* procedure, HostWindow* window, unsigned message,
                          std::uintptr_t wParam, std::intptr_t lParam) override;
    MsgResult Dispatch(WindowHandler& handler, unsigned message, std::uintptr_t wParam,
                       std::intptr_t lParam) override;
    std::intptr_t Send(HostWindow* window, unsigned message, std::uintptr_t wParam,
                       std::intptr_t lParam) override;

    // Replacements not yet undone through Restore.
    std::size_t ActiveReplacements() const;

private:
    std::vector<std::unique_ptr<OldWindowProcedure>> m_records;
};

// The window class procedure of the windows the core makes itself: each message goes to the
// window's handler as a named call, and what the handler does not handle (or fails in) goes to
// DefWindowProc, so that a window that names no WM_NCHITTEST or WM_PAINT still behaves.
LRESULT CALLBACK HandlerWindowProcedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
// Windows whose procedure is the shared one, running a core procedure.
std::size_t WindowsRunningCoreProcedures();
// One message as a named call of the handler, its parameters decoded as Win32 packs them.
MsgResult DispatchToHandler(WindowHandler& handler, UINT message, WPARAM wParam, LPARAM lParam);
// Gives a window of that class its handler (not owned); null takes it away. The window forgets
// it at WM_NCDESTROY.
void SetWindowHandler(HWND hwnd, WindowHandler* handler);
