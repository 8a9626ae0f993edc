#pragma once
// The window system port over real windows: a HostWindow* is the HWND.
//
// Each call is the one Win32 call it names. What the port leaves to the host is handed in: which
// windows are the host's frame and its command line, the room that the frame's control bars
// leave for the MDI client, and how the frame lays itself out again; a frame class of a
// framework knows these, the window system does not.
//
// Windows that CreateChild makes get their handler before their first message: a class the
// system doesn't know is registered here (double clicks, an arrow cursor, no brush) with the
// handler procedure, and a class it knows (the tab control, an edit) is subclassed so that the
// handler comes first and the control's own procedure does what the handler leaves. Classes
// registered here are unregistered when this object goes, as a module unloading must.

#include <windows.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/win32/unique_handle.h"
#include "ports/scroll_bar.h"
#include "ports/window_system.h"

struct Win32HostFrame {
    HWND frame = nullptr;
    HWND commandLine = nullptr;
    // The MDI client's room in the frame's client coordinates; by default the client area.
    std::function<RECT(HWND frame)> mdiClientRoom;
    // The frame lays out its bars and MDI client again; by default a WM_SIZE of its client size.
    std::function<void(HWND frame)> recalcLayout;
};

class Win32WindowSystem : public WindowSystem, public ScrollBars {
public:
    explicit Win32WindowSystem(Win32HostFrame host,
                               HINSTANCE instance = ::GetModuleHandleW(nullptr));
    ~Win32WindowSystem() override;
    Win32WindowSystem(const Win32WindowSystem&) = delete;
    Win32WindowSystem& operator=(const Win32WindowSystem&) = delete;

    // Window classes registered so far and not yet unregistered.
    const std::vector<std::wstring>& RegisteredClasses() const { return m_classes; }

    HostWindow* HostFrame() override;
    HostWindow* DockedCommandLine() override;
    HostWindow* FindChild(HostWindow* parent, const std::wstring& className,
                          const std::wstring& title) override;
    HostWindow* Parent(HostWindow* window) override;
    bool IsWindow(HostWindow* window) override;
    HostWindow* CreateChild(HostWindow* parent, const std::wstring& className,
                            const win::RECT& rect, unsigned style) override;
    HostWindow* CreateChild(const ChildWindowSpec& spec) override;
    void Destroy(HostWindow* window) override;
    win::RECT RectInParent(HostWindow* window) override;
    win::RECT ScreenRect(HostWindow* window) override;
    void Move(HostWindow* window, const win::RECT& rect, bool repaint) override;
    void Redraw(HostWindow* window, unsigned flags) override;
    void RedrawRect(HostWindow* window, const win::RECT& rect, unsigned flags) override;
    void RecalcLayout(HostWindow* frame) override;
    void Show(HostWindow* window, bool show) override;
    bool IsVisible(HostWindow* window) override;
    bool IsZoomed(HostWindow* window) override;
    void Maximize(HostWindow* window) override;
    void CenterInScreen(HostWindow* window) override;
    unsigned Style(HostWindow* window) override;
    void ModifyStyle(HostWindow* window, unsigned remove, unsigned add) override;
    void SetParent(HostWindow* window, HostWindow* parent) override;
    win::RECT MdiClientRoom(HostWindow* frame) override;
    int SystemMetric(int index) override;
    void SetMessageHandler(HostWindow* window, WindowHandler* handler) override;
    void SetTimer(HostWindow* window, unsigned id, unsigned ms) override;
    void KillTimer(HostWindow* window, unsigned id) override;
    void SetFont(HostWindow* window, const win::LOGFONTW& font, bool redraw) override;
    void SetCapture(HostWindow* window) override;
    void ReleaseCapture() override;
    HostWindow* Capture() override;
    HostCursor* StandardCursor(int id) override;
    void SetCursor(HostCursor* cursor) override;
    win::POINT CursorPos() override;
    win::POINT ScreenToClient(HostWindow* window, win::POINT point) override;
    std::unique_ptr<Canvas> BeginPaint(HostWindow* window) override;
    // Scroll bar controls (SB_CTL); the masks are the system's own values.
    int SetScrollInfo(HostWindow* bar, const ScrollInfo& info, bool redraw) override;
    ScrollInfo GetScrollInfo(HostWindow* bar) override;
    int SetScrollPos(HostWindow* bar, int pos, bool redraw) override;

private:
    void EnsureClass(const std::wstring& className);
    // Fonts of windows that are gone.
    void ForgetDeadFonts();

    Win32HostFrame m_host;
    HINSTANCE m_instance;
    std::vector<std::wstring> m_classes;
    // WM_SETFONT hands a font over without giving it away: each stays here while its window
    // lives.
    std::map<HWND, FontHandle> m_fonts;
};

// A window that the adapter subclassed for a handler: the handler, and the procedure it put
// itself before. Both go at WM_NCDESTROY.
bool IsSubclassedForHandler(HWND hwnd);
