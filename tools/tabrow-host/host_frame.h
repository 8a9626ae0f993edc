#pragma once
// The host's main window as a CAD user sees it, made of real windows: a frame with a band of
// toolbars at the top and a status bar at the bottom, an MDI client in the room between, and
// below it the docked command line: a container, the command window in it with the history of
// the command line, and an edit control where commands are typed. The frame lays out its
// children on every WM_SIZE by moving them, so that hooks on them see WM_WINDOWPOSCHANGING as
// they would in the real host.

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

class HostFrame {
public:
    static constexpr int kToolbarsHeight = 28;
    static constexpr int kStatusBarHeight = 20;
    static constexpr int kCommandBarHeight = 96;
    static constexpr int kCommandLineHeight = 22;

    struct Events {
        std::function<void(const std::wstring&)> command;  // a line typed and Enter pressed
        std::function<void(HWND)> drawingActivated;        // the user brought a view forward
    };

    // A frame of this outer size at the screen's top left, shown.
    HostFrame(Events events, int width, int height);
    ~HostFrame();
    HostFrame(const HostFrame&) = delete;
    HostFrame& operator=(const HostFrame&) = delete;

    HWND Frame() const { return m_frame; }
    HWND MdiClient() const { return m_mdiClient; }
    HWND CommandBar() const { return m_commandBar; }
    HWND CommandWindow() const { return m_commandWindow; }
    HWND CommandLine() const { return m_commandLine; }

    // The MDI client's room in the frame's client coordinates: what the bars leave.
    RECT MdiClientRoom() const;
    // Moves the command line's container and the MDI client to their places.
    void LayOut();

    // An MDI child for a drawing, maximised; what SetWindowHandler gives it paints it.
    HWND AddDrawing(const std::wstring& title);
    void ActivateDrawing(HWND view);
    void RemoveDrawing(HWND view);
    void SetHistory(std::vector<std::wstring> lines);

private:
    static LRESULT CALLBACK FrameProcedure(HWND, UINT, WPARAM, LPARAM);
    static LRESULT CALLBACK CommandBarProcedure(HWND, UINT, WPARAM, LPARAM);
    static LRESULT CALLBACK CommandWindowProcedure(HWND, UINT, WPARAM, LPARAM);
    static LRESULT CALLBACK DrawingProcedure(HWND, UINT, WPARAM, LPARAM);
    static LRESULT CALLBACK CommandLineProcedure(HWND, UINT, WPARAM, LPARAM);
    void PaintHistory(HWND window);

    Events m_events;
    HINSTANCE m_instance;
    HWND m_frame = nullptr;
    HWND m_mdiClient = nullptr;
    HWND m_commandBar = nullptr;
    HWND m_commandWindow = nullptr;
    HWND m_commandLine = nullptr;
    WNDPROC m_editProcedure = nullptr;
    std::vector<std::wstring> m_history;
    bool m_bActivating = false;  // the host itself is bringing a view forward
};
