#pragma once
// What the host's graphics system shows of the active drawing, for its thumbnail: whether a
// viewport is drawn by the graphics system (shaded views are, a wireframe in plan is not), the
// graphics system's own copy of the screen, a copy of the drawing view window's client area, and
// the colours the host paints the model and the paper on.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

class Canvas;
struct HostWindow;

// The visual style type of two-dimensional wireframe: the one style the host draws itself.
inline constexpr int kVisualStyle2dWireframe = 4;

// The host's drawing colours (acedGetCurrentColors) as far as the thumbnails use them.
struct HostDrawingColors {
    std::uint32_t modelBackground = 0;   // COLORREF
    std::uint32_t layoutBackground = 0;  // COLORREF, the paper
};

// The graphics system's screen shot, read where it lies.
class HostScreenShot {
public:
    virtual ~HostScreenShot() = default;
    virtual int Width() const = 0;
    virtual int Height() const = 0;
    // The top row's first pixel. Rows lie `Stride()` bytes apart, each `Width()` pixels of
    // three samples: blue, green, red.
    virtual const std::uint8_t* Pixels() const = 0;
    virtual std::size_t Stride() const = 0;
};

class HostGraphics {
public:
    virtual ~HostGraphics() = default;

    // A graphics system view exists for the viewport (numbered as CVPORT numbers them); none is
    // made by asking.
    virtual bool HasGsView(int viewport) = 0;
    // The visual style types of the viewports of the current space that have a visual style, in
    // the space's order; empty when there is no current space. Objects are opened for read and
    // closed at once.
    virtual std::vector<int> ViewportVisualStyles() = 0;
    // The screen shot of a viewport, 0 for the whole view; nothing when the host gives none.
    virtual std::unique_ptr<HostScreenShot> ScreenShot(int viewport) = 0;
    // The client area of `view` as the screen shows it, copied into a bitmap of its size; null
    // when the copy cannot be made.
    virtual std::unique_ptr<Canvas> CopyClientArea(HostWindow* view) = 0;
    virtual HostDrawingColors CurrentColors() = 0;
};
