#pragma once
// The text a window's placement is stored as: "left:top:right:bottom:MAXIMIZED" or
// "...:NORMAL", the rectangle in screen coordinates.

#include <optional>
#include <string>

#include "foundation/win_types.h"

struct WindowPlacement {
    win::RECT rect;
    bool maximized = false;
    friend bool operator==(const WindowPlacement&, const WindowPlacement&) = default;
};

std::wstring FormatWindowPlacement(const WindowPlacement& placement);

// Only a text of exactly five fields is a placement. A maximized one keeps no rectangle: the
// four numbers mean nothing then and are not read.
std::optional<WindowPlacement> ParseWindowPlacement(const std::wstring& text);
