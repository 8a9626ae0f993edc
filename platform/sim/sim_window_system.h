#pragma once
// The simulated window system: a tree of windows with class names, titles, rectangles in their
// parents' coordinates, styles and a visible state, laid out like the host's main window (frame,
// MDI client, command-line container, command window, the command-line control). Every move
// passes through the window's hook chain first, newest hook first, as subclassed window
// procedures see WM_WINDOWPOSCHANGING. Moves, redraws and shows are logged for tests.

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "ports/window_system.h"

struct SimWindow {
    std::wstring className;
    std::wstring title;
    HostWindow* parent = nullptr;
    win::RECT rect;  // in the parent's coordinates
    unsigned style = ws::kChild | ws::kVisible;
    bool zoomed = false;
    std::vector<WindowHook*> hooks;  // oldest first, not owned
    int redraws = 0;
    int controlId = 0;
    WindowMessageHandler* handler = nullptr;  // not owned
    struct Timer {
        unsigned period = 0;
        long long due = 0;  // on the window system's clock, in ms
    };
    std::map<unsigned, Timer> timers;
};

class SimWindowSystem : public WindowSystem {
public:
    SimWindowSystem();

    // The host's windows as it builds them at start; a test may take the command line away.
    HostWindow* MdiClient() { return m_mdiClient; }
    HostWindow* CommandWindow() { return m_cmdWnd; }
    HostWindow* CommandContainer() { return m_cmdContainer; }
    void RemoveDockedCommandLine() { m_cmdLine = nullptr; }
    void RemoveFrame() { m_frame = nullptr; }

    SimWindow& Window(HostWindow* window);
    // Every Move in order, as (window, rectangle it finally took).
    struct MoveRecord {
        HostWindow* window;
        win::RECT rect;
        bool repaint;
    };
    const std::vector<MoveRecord>& Moves() const { return m_moves; }
    std::vector<HostWindow*> ChildrenOf(HostWindow* parent, const std::wstring& className);
    // Lets `ms` of time pass: each timer that falls due sends WM_TIMER to its window's handler,
    // in the order they fall due.
    void Elapse(unsigned ms);
    long long Now() const { return m_now; }

    HostWindow* HostFrame() override { return m_frame; }
    HostWindow* DockedCommandLine() override { return m_cmdLine; }
    HostWindow* FindChild(HostWindow* parent, const std::wstring& className,
                          const std::wstring& title) override;
    HostWindow* Parent(HostWindow* window) override;
    bool IsWindow(HostWindow* window) override;
    HostWindow* CreateChild(HostWindow* parent, const std::wstring& className,
                            const win::RECT& rect, unsigned style) override;
    void Destroy(HostWindow* window) override;
    win::RECT RectInParent(HostWindow* window) override;
    win::RECT ScreenRect(HostWindow* window) override;
    void Move(HostWindow* window, const win::RECT& rect, bool repaint) override;
    void Redraw(HostWindow* window, unsigned flags) override;
    void Show(HostWindow* window, bool show) override;
    bool IsVisible(HostWindow* window) override;
    bool IsZoomed(HostWindow* window) override;
    void Maximize(HostWindow* window) override;
    void CenterInScreen(HostWindow* window) override;
    unsigned Style(HostWindow* window) override;
    void ModifyStyle(HostWindow* window, unsigned remove, unsigned add) override;
    void SetParent(HostWindow* window, HostWindow* parent) override;
    int ControlId(HostWindow* window) override { return Window(window).controlId; }
    win::RECT MdiClientRoom(HostWindow* frame) override;
    int SystemMetric(int index) override;
    void SetMessageHandler(HostWindow* window, WindowMessageHandler* handler) override;
    void SetTimer(HostWindow* window, unsigned id, unsigned ms) override;
    void KillTimer(HostWindow* window, unsigned id) override;
    void Hook(HostWindow* window, WindowHook* hook) override;
    void Unhook(HostWindow* window, WindowHook* hook) override;

    static constexpr win::RECT kScreen{0, 0, 1920, 1080};
    // The frame's own bars: the toolbars above the MDI client, the status bar at the bottom.
    static constexpr int kToolbarsHeight = 60;
    static constexpr int kStatusBarHeight = 20;
    static constexpr int kMdiClientId = 0xE900;

private:
    HostWindow* Make(HostWindow* parent, const std::wstring& className, const win::RECT& rect,
                     unsigned style);

    std::map<HostWindow*, std::unique_ptr<SimWindow>> m_windows;
    std::vector<MoveRecord> m_moves;
    long long m_now = 0;
    HostWindow* m_frame = nullptr;
    HostWindow* m_mdiClient = nullptr;
    HostWindow* m_cmdContainer = nullptr;
    HostWindow* m_cmdWnd = nullptr;
    HostWindow* m_cmdLine = nullptr;
};
