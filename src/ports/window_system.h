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
struct HostCursor;

namespace ws {
// GetSystemMetrics indexes.
constexpr int kSmCxFrame = 32;
constexpr int kSmCyCaption = 4;
constexpr int kSmCxMaxTrack = 59;  // the largest a window can be made: where a tip must end
constexpr int kSmCyMaxTrack = 60;
constexpr unsigned kChild = 0x40000000;
constexpr unsigned kVisible = 0x10000000;
constexpr unsigned kClipChildren = 0x02000000;
constexpr unsigned kPopup = 0x80000000;
constexpr unsigned kCaption = 0x00C00000;
constexpr unsigned kThickFrame = 0x00040000;
// RedrawWindow flags.
constexpr unsigned kRdwInvalidate = 0x0001;
constexpr unsigned kRdwErase = 0x0004;
constexpr unsigned kRdwAllChildren = 0x0080;
constexpr unsigned kRdwUpdateNow = 0x0100;
// The window class of dialogs.
inline constexpr wchar_t kDialogClass[] = L"#32770";
// WM_NCHITTEST answer for the client area.
constexpr unsigned kHtClient = 1;
}  // namespace ws

// Standard cursors (IDC_...).
namespace idc {
constexpr int kArrow = 32512;
constexpr int kSizeWE = 32644;
constexpr int kSizeNS = 32645;
}  // namespace idc

// A child window as CreateWindowEx makes it. With a handler, the window's messages go to it from
// WM_CREATE on; an answer of -1 to WM_CREATE destroys the window and the creation fails. A window
// without ws::kChild is a popup: its rectangle is in screen coordinates and `parent`, when given,
// is its owner, which destroys it before itself.
struct ChildWindowSpec {
    HostWindow* parent = nullptr;
    std::wstring className;
    std::wstring title;
    win::RECT rect;
    unsigned style = 0;
    int id = 0;                         // the control id (GetDlgCtrlID)
    WindowHandler* handler = nullptr;   // not owned
    // Given the new window before WM_CREATE, as a framework attaches a window object before
    // its creation message; null when the window dies in it.
    HostWindow** attach = nullptr;
};

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
    virtual HostWindow* CreateChild(const ChildWindowSpec& spec) = 0;
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

    // WM_SETFONT: the font a control draws its text with; with `redraw` it repaints.
    virtual void SetFont(HostWindow* window, const win::LOGFONTW& font, bool redraw) = 0;

    // The mouse: while a window holds the capture every mouse message goes to it, in its client
    // coordinates, wherever the cursor is. A window that goes loses it.
    virtual void SetCapture(HostWindow* window) = 0;
    virtual void ReleaseCapture() = 0;
    virtual HostWindow* Capture() = 0;
    // A standard cursor (idc::...), shared: never freed.
    virtual HostCursor* StandardCursor(int id) = 0;
    virtual void SetCursor(HostCursor* cursor) = 0;
    // The cursor's position in screen coordinates, and a screen point in a window's client area.
    virtual win::POINT CursorPos() = 0;
    virtual win::POINT ScreenToClient(HostWindow* window, win::POINT point) = 0;

    // The paint scope of WM_PAINT (BeginPaint to EndPaint): the window's client area as a
    // canvas, origin at the client's top left. What is painted shows when the canvas goes,
    // which ends the scope. Null when the window can't be painted now.
    virtual std::unique_ptr<Canvas> BeginPaint(HostWindow* window) = 0;
};
