#pragma once
// What a drawing's view window shows in the simulated host: the model space's dark background,
// the drawing's name in its corner and a plan of lines that follows from the name, so that two
// drawings never look alike and a picture of the screen tells which one is active. It paints
// through the window system it is given, simulated or real.

#include <string>

#include "ports/window_handler.h"

class WindowSystem;

class SimDrawingView : public WindowHandler {
public:
    // `title` (the document's, not owned) is read at each paint: a save may rename it.
    SimDrawingView(WindowSystem& windows, HostWindow* view, const std::wstring& title)
        : m_windows(windows), m_view(view), m_title(title) {}

    static constexpr win::COLORREF kBackground = 0x302B26;
    static constexpr win::COLORREF kLines = 0xE0E0E0;
    static constexpr win::COLORREF kWalls = 0x40D0FF;
    static constexpr win::COLORREF kName = 0x80FFFF;

    MsgResult OnPaint() override;
    MsgResult OnEraseBkgnd() override { return MsgResult::Handled(1); }

private:
    WindowSystem& m_windows;
    HostWindow* m_view;  // not owned
    const std::wstring& m_title;
};
