#pragma once
// The one shape of a window's paint: the paint scope, an off-screen canvas the size of the
// client area, the painting, and one copy to the window. When the off-screen canvas can't be
// made the frame is skipped; the next paint tries again.

#include <functional>

#include "foundation/win_types.h"

class Canvas;
struct HostWindow;

// Paints `window` through `paint`, which gets the off-screen canvas and the client rectangle.
// False when nothing reached the window.
bool PaintOffScreen(HostWindow* window,
                    const std::function<void(Canvas&, const win::RECT& client)>& paint);

// The system colours that tabs and the bar paint in, as the window system gives them now.
struct PaintColors;
PaintColors SystemPaintColors();
