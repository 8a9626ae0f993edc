#pragma once
// Windows as the core sees them: opaque handles with a class name, a parent, a rectangle in
// the parent's coordinates, a style and a visible state. Position changes pass through hooks
// installed on a window, which may change the WINDOWPOS before the window takes it.

#include <string>

#include "foundation/win_types.h"

struct HostWindow;

namespace ws {
constexpr unsigned kChild = 0x40000000;
constexpr unsigned kVisible = 0x10000000;
constexpr unsigned kClipChildren = 0x02000000;
// RedrawWindow flags.
constexpr unsigned kRdwInvalidate = 0x0001;
constexpr unsigned kRdwErase = 0x0004;
constexpr unsigned kRdwAllChildren = 0x0080;
constexpr unsigned kRdwUpdateNow = 0x0100;
}  // namespace ws

// A link of a window's procedure chain. The newest hook sees a message first.
class WindowHook {
public:
    virtual ~WindowHook() = default;
    virtual void OnWindowPosChanging(HostWindow* window, win::WINDOWPOS& pos) = 0;
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
    virtual void Destroy(HostWindow* window) = 0;  // with its children; a stale handle is ignored

    virtual win::RECT RectInParent(HostWindow* window) = 0;
    virtual win::RECT ScreenRect(HostWindow* window) = 0;
    virtual void Move(HostWindow* window, const win::RECT& rect, bool repaint) = 0;
    virtual void Redraw(HostWindow* window, unsigned flags) = 0;
    virtual void Show(HostWindow* window, bool show) = 0;
    virtual bool IsVisible(HostWindow* window) = 0;
    virtual bool IsZoomed(HostWindow* window) = 0;
    virtual void Maximize(HostWindow* window) = 0;
    virtual void CenterInScreen(HostWindow* window) = 0;

    virtual unsigned Style(HostWindow* window) = 0;
    virtual void ModifyStyle(HostWindow* window, unsigned remove, unsigned add) = 0;

    virtual void Hook(HostWindow* window, WindowHook* hook) = 0;  // hook not owned
    virtual void Unhook(HostWindow* window, WindowHook* hook) = 0;
};
