#pragma once
// Windows as the core sees them: opaque handles with a class name, a parent, a rectangle in
// the parent's coordinates, a style and a visible state. A move sends WM_WINDOWPOSCHANGING to
// the window's procedure (see window_procedures.h for hooking it), which may change the
// WINDOWPOS before the window takes it.

#include <cstdint>
#include <memory>
#include <string>

#include "foundation/win_types.h"
#include "ports/window_handler.h"

class Canvas;
struct HostWindow;

namespace ws {
// GetSystemMetrics indexes.
constexpr int kSmCxFrame = 32;
constexpr int kSmCyCaption = 4;
constexpr unsigned kChild = 0x40000000;
constexpr unsigned kVisible = 0x10000000;
constexpr unsigned kClipChildren = 0x02000000;
// RedrawWindow flags.
constexpr unsigned kRdwInvalidate = 0x0001;
constexpr unsigned kRdwErase = 0x0004;
constexpr unsigned kRdwAllChildren = 0x0080;
constexpr unsigned kRdwUpdateNow = 0x0100;
}  // namespace ws

class WindowSystem {
public:
    virtual ~WindowSystem() = default;

    virtual HostWindow* HostFrame() = 0;          // null when the host has no frame
    virtual HostWindow* DockedCommandLine() = 0;  // the command-line control, or null

    virtual HostWindow* FindChild(HostWindow* parent, const std::wstring& className,
                                  const std::wstring& title) = 0;
    virtual HostWindow* Parent(HostWindow* window) = 0;
    virtual bool IsWindow(HostWindow* window) = 0;

    virtual HostWindow* CreateChild(HostWindow* parent, const std::wstring& className,
                                    const win::RECT& rect, unsigned style) = 0;
    virtual void Destroy(HostWindow* window) = 0;  // with its children; a stale handle is ignored

    virtual win::RECT RectInParent(HostWindow* window) = 0;
    virtual win::RECT ScreenRect(HostWindow* window) = 0;
    virtual void Move(HostWindow* window, const win::RECT& rect, bool repaint) = 0;
    virtual void Redraw(HostWindow* window, unsigned flags) = 0;
    // RedrawWindow of one rectangle of the window's client area.
    virtual void RedrawRect(HostWindow* window, const win::RECT& rect, unsigned flags) = 0;
    // The frame lays out its control bars and its MDI client again (RecalcLayout).
    virtual void RecalcLayout(HostWindow* frame) = 0;
    virtual void Show(HostWindow* window, bool show) = 0;
    virtual bool IsVisible(HostWindow* window) = 0;
    virtual bool IsZoomed(HostWindow* window) = 0;
    virtual void Maximize(HostWindow* window) = 0;
    virtual void CenterInScreen(HostWindow* window) = 0;

    virtual unsigned Style(HostWindow* window) = 0;
    virtual void ModifyStyle(HostWindow* window, unsigned remove, unsigned add) = 0;

    // Parent changes keep the rectangle's numbers, now in the new parent's coordinates.
    virtual void SetParent(HostWindow* window, HostWindow* parent) = 0;
    // The room that a frame's control bars leave for its MDI client, in the frame's client
    // coordinates (RepositionBars with reposQuery).
    virtual win::RECT MdiClientRoom(HostWindow* frame) = 0;
    // GetSystemMetrics.
    virtual int SystemMetric(int index) = 0;

    // Gives a window made by CreateChild the handler of its messages (see window_handler.h);
    // null detaches it. Not owned.
    virtual void SetMessageHandler(HostWindow* window, WindowHandler* handler) = 0;
    // A timer sends WM_TIMER (wParam the id) to the window every `ms` until it is killed;
    // setting an id that runs restarts it.
    virtual void SetTimer(HostWindow* window, unsigned id, unsigned ms) = 0;
    virtual void KillTimer(HostWindow* window, unsigned id) = 0;

    // The paint scope of WM_PAINT (BeginPaint to EndPaint): the window's client area as a
    // canvas, origin at the client's top left. What is painted shows when the canvas goes,
    // which ends the scope. Null when the window can't be painted now.
    virtual std::unique_ptr<Canvas> BeginPaint(HostWindow* window) = 0;
    // GetCursorPos: the mouse pointer in screen coordinates.
    virtual win::POINT CursorPos() = 0;
};
