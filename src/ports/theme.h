#pragma once
// The window system's visual styles: whether they are on, and the pictures of a control's parts
// drawn into a canvas, each at the size it is given. The answer to IsActive can change while the
// program runs (the user turns the styles off), so a painter asks it at every paint and keeps
// nothing between paints.

#include <memory>
#include <string>

#include "foundation/win_types.h"

class Canvas;

// The parts and states of the "TAB" class that the tab strip draws.
namespace tab_theme {
constexpr int kTabItem = 1;
constexpr int kPane = 9;
constexpr int kStateNormal = 1;
constexpr int kStateHot = 2;
constexpr int kStateSelected = 3;
}  // namespace tab_theme

// The theme data of one window class, open for as long as this object lives.
class ThemeData {
public:
    virtual ~ThemeData() = default;

    // Draws the part in `state` over `rect` of the canvas (clipped to it). False when nothing
    // could be drawn: the styles went off, the canvas is of another kind, the part is unknown.
    virtual bool DrawBackground(Canvas& canvas, int part, int state, const win::RECT& rect) = 0;
};

class Theme {
public:
    virtual ~Theme() = default;

    // True while visual styles are on for this program.
    virtual bool IsActive() = 0;

    // The theme data of a class list such as L"TAB"; null when no theme is active or the class
    // has none.
    virtual std::unique_ptr<ThemeData> Open(const std::wstring& classList) = 0;
};
