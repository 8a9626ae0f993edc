#pragma once
// The simulated window system: a tree of windows with class names, titles, rectangles in their
// parents' coordinates, styles and a visible state, laid out like the host's main window (frame,
// MDI client, command-line container, command window, the command-line control). Every window
// has a procedure that may be replaced (subclassing); messages go through it, packed as the
// real window system packs them (points in lParam, records by pointer): a move sends
// WM_WINDOWPOSCHANGING, takes the WINDOWPOS that comes back and sends WM_SIZE when the size
// changed, a destruction sends WM_NCDESTROY, timers send WM_TIMER. The frame, the container and
// the command window lay out their host children when they move, through the same moves. Moves
// and redraws are logged.
//
// Painting: BeginPaint hands out a canvas of the window's client area; what is painted there
// becomes the window's picture when the canvas goes. PaintScreen sends WM_ERASEBKGND and
// WM_PAINT to every visible window, parents before children, and puts their pictures together,
// each clipped to its ancestors, into one picture of the frame. The host's own windows (frame,
// MDI client, command window) and any window whose handler leaves WM_PAINT alone are painted by
// the default procedure, in the look of their class.
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/sim/canvas/software_canvas.h"
#include "ports/window_messages.h"
#include "ports/window_procedures.h"
#include "ports/window_system.h"

// A window procedure as the simulated window system keeps it; `function` null is the window
// system's own default procedure.
struct SimProcedure {
    WindowProcedure function = nullptr;
};

struct SimWindow {
    std::wstring className;
    std::wstring title;
    HostWindow* parent = nullptr;
    win::RECT rect;  // in the parent's coordinates
    unsigned style = ws::kChild | ws::kVisible;
    bool zoomed = false;
    SimProcedure* procedure = nullptr;    // owned by the window system
    int redraws = 0;                      // of the whole window
    std::vector<win::RECT> redrawnRects;  // of parts of it, in order
    WindowHandler* handler = nullptr;     // not owned
    struct Timer {
        unsigned period = 0;
        long long due = 0;  // on the window system's clock, in ms
    };
    std::map<unsigned, Timer> timers;
    int id = 0;                      // the control id
    const win::LOGFONTW* font = nullptr;  // WM_SETFONT's; null for the system font
    win::LOGFONTW fontValue;
    long long serial = 0;  // order of creation: tells a window from a later one at its address
    long long zOrder = 0;  // among its siblings, the highest is on top
    // What the last paint left, as wide and high as the client area was then.
    int pictureWidth = 0;
    int pictureHeight = 0;
    std::vector<std::uint8_t> picture;
    int paints = 0;  // paint scopes ended
    HostWindow* owner = nullptr;  // a popup dies with the window that owns it
    bool dying = false;           // inside its destruction, which a second Destroy leaves alone
    bool captionActive = true;    // as the last WM_NCACTIVATE that reached the default left it
};

class SimWindowSystem : public WindowSystem, public WindowProcedures {
public:
    SimWindowSystem();

    // The host's windows as it builds them at start; a test may take the command line away.
    HostWindow* MdiClient() { return m_mdiClient; }
    HostWindow* CommandWindow() { return m_cmdWnd; }
    HostWindow* CommandContainer() { return m_cmdContainer; }
    void RemoveDockedCommandLine() { m_cmdLine = nullptr; }

    SimWindow& Window(HostWindow* window);
    // Every Move in order, as (window, rectangle it finally took).
    struct MoveRecord {
        HostWindow* window;
        win::RECT rect;
        bool repaint;
    };
    const std::vector<MoveRecord>& Moves() const { return m_moves; }
    // Windows moved while another window's WM_WINDOWPOSCHANGING was being handled without
    // being that window's sibling or inside one. Such a move is only safe between siblings: a window of
    // another parent is laid out in other coordinates, and on the real system may be moved
    // in the middle of its own parent's layout.
    const std::vector<HostWindow*>& MisplacedMoves() const { return m_misplaced; }
    // Lets `ms` of time pass: each timer that falls due sends WM_TIMER to its window, in the
    // order they fall due.
    void Elapse(unsigned ms);
    // The user moves the mouse to a point of the screen, or presses or releases its button
    // there: WM_SETCURSOR (unless a window holds the capture), then the mouse message, to the
    // window that holds the capture or else the topmost visible window under the point, in that
    // window's client coordinates. Returns the window that got it.
    HostWindow* Mouse(unsigned message, win::POINT screen, unsigned keys = 0);
    // The cursor last set (idc::...), 0 before any.
    int CursorShape() const { return m_cursor; }
    // A window's point in screen coordinates.
    win::POINT ClientToScreen(HostWindow* window, win::POINT point);
    // Puts the window above its siblings (an MDI child activated).
    void BringToTop(HostWindow* window);
    // Every visible window painted, and the frame's picture made of theirs.
    std::unique_ptr<SoftwareCanvas> PaintScreen();
    void SetCursorPos(win::POINT screen) { m_cursorPos = screen; }
    // The main loop's look at each mouse message before the window gets it (the host's
    // PreTranslateMessage and its watchers); sent messages such as WM_SETCURSOR pass it by.
    void SetMessageLoop(std::function<void(const HostMessage&)> loop) { m_loop = std::move(loop); }
    // The time of the window system's clock, in ms.
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
    HostWindow* CreateChild(const ChildWindowSpec& spec) override;
    void SetFont(HostWindow* window, const win::LOGFONTW& font, bool redraw) override;
    void SetCapture(HostWindow* window) override;
    void ReleaseCapture() override;
    HostWindow* Capture() override { return m_capture; }
    HostCursor* StandardCursor(int id) override;
    void SetCursor(HostCursor* cursor) override;
    win::POINT CursorPos() override { return m_cursorPos; }
    win::POINT ScreenToClient(HostWindow* window, win::POINT point) override;
    std::unique_ptr<Canvas> BeginPaint(HostWindow* window) override;

    // --- WindowProcedures ---
    OldWindowProcedure* Replace(HostWindow* window, WindowProcedure procedure) override;
    void Restore(HostWindow* window, OldWindowProcedure* procedure) override;
    std::intptr_t CallOld(OldWindowProcedure* procedure, HostWindow* window, unsigned message,
                          std::uintptr_t wParam, std::intptr_t lParam) override;
    MsgResult Dispatch(WindowHandler& handler, unsigned message, std::uintptr_t wParam,
                       std::intptr_t lParam) override;
    std::intptr_t Send(HostWindow* window, unsigned message, std::uintptr_t wParam,
                       std::intptr_t lParam) override;
    // Whether the window's procedure is still the one it was made with.
    bool HasOwnProcedure(HostWindow* window) { return Window(window).procedure == &m_default; }

    static constexpr win::RECT kScreen{0, 0, 1920, 1080};
    // The frame's own bars: the toolbars above the MDI client, the status bar at the bottom.
    static constexpr int kToolbarsHeight = 60;
    static constexpr int kStatusBarHeight = 20;

private:
    HostWindow* Make(HostWindow* parent, const std::wstring& className, const win::RECT& rect,
                     unsigned style);
    std::intptr_t Call(SimProcedure* procedure, HostWindow* window, unsigned message,
                       std::uintptr_t wParam, std::intptr_t lParam);
    std::intptr_t DefaultProcedure(HostWindow* window, unsigned message, std::uintptr_t wParam,
                                   std::intptr_t lParam);
    void LayOutChildren(HostWindow* window);
    HostWindow* WindowAt(HostWindow* parent, win::POINT screen);
    bool WithinSiblingOf(HostWindow* window, HostWindow* other);
    void PaintOwn(HostWindow* window);
    void PaintTree(HostWindow* window, SoftwareCanvas& screen, const win::RECT& clip);

    SimProcedure m_default;
    std::vector<std::unique_ptr<SimProcedure>> m_procedures;  // every procedure ever installed
    std::map<HostWindow*, std::unique_ptr<SimWindow>> m_windows;
    std::vector<MoveRecord> m_moves;
    std::vector<HostWindow*> m_positioning;  // windows inside their WM_WINDOWPOSCHANGING
    std::vector<HostWindow*> m_misplaced;
    long long m_now = 0;
    long long m_serial = 0;
    long long m_nextZ = 0;
    HostWindow* m_capture = nullptr;
    int m_cursor = 0;
    win::POINT m_cursorPos{-1, -1};
    HostWindow* m_frame = nullptr;
    HostWindow* m_mdiClient = nullptr;
    HostWindow* m_cmdContainer = nullptr;
    HostWindow* m_cmdWnd = nullptr;
    HostWindow* m_cmdLine = nullptr;
    std::function<void(const HostMessage&)> m_loop;
};
