#pragma once
// Window procedures, the way a window is subclassed: a window has one procedure, which may be
// replaced, and whose predecessor is called through the window system (it need not be a
// plain function pointer there).

#include <cstdint>

#include "ports/window_handler.h"

struct HostWindow;

using WindowProcedure = std::intptr_t (*)(HostWindow* window, unsigned message,
                                          std::uintptr_t wParam, std::intptr_t lParam);

// What a replaced procedure was. Only the window system that returned it can call it.
struct OldWindowProcedure;

class WindowProcedures {
public:
    virtual ~WindowProcedures() = default;

    virtual bool IsWindow(HostWindow* window) = 0;

    // Makes `procedure` the window's procedure and returns the one it replaces; null when the
    // window doesn't exist.
    virtual OldWindowProcedure* Replace(HostWindow* window, WindowProcedure procedure) = 0;
    // Puts back a procedure that Replace returned.
    virtual void Restore(HostWindow* window, OldWindowProcedure* procedure) = 0;
    // Calls a procedure that Replace returned, as the window system calls a window's procedure.
    virtual std::intptr_t CallOld(OldWindowProcedure* procedure, HostWindow* window,
                                  unsigned message, std::uintptr_t wParam,
                                  std::intptr_t lParam) = 0;

    // Calls the handler named for the message, with its parameters decoded as this window
    // system packs them; what the handler changes in a passed record goes back into the message.
    virtual MsgResult Dispatch(WindowHandler& handler, unsigned message, std::uintptr_t wParam,
                               std::intptr_t lParam) = 0;

    // Sends a message to the window's current procedure and returns its answer.
    virtual std::intptr_t Send(HostWindow* window, unsigned message, std::uintptr_t wParam,
                               std::intptr_t lParam) = 0;
};
