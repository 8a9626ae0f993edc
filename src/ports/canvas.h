#pragma once
// A surface to paint on: a window's off-screen picture, a memory bitmap, or a software buffer.
//
// Colour and font come with each call; a canvas keeps no pen, brush, text colour or selected
// font between calls. Coordinates are pixels with the origin at the top left. Rectangles are
// half-open: `right` and `bottom` are the first column and row outside. Everything is clipped
// to the canvas. The pixel rules below are what every adapter must give to the pixel; where
// the window system's own call differs, its adapter states and tests the difference.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "foundation/win_types.h"

// Text format bits, the window system's DT_ values.
enum TextFormat : std::uint32_t {
    kTextLeft = 0x0,
    kTextCenter = 0x1,
    kTextRight = 0x2,
    kTextVCenter = 0x4,
    kTextBottom = 0x8,
    kTextSingleLine = 0x20,
    kTextNoClip = 0x100,
    kTextCalcRect = 0x400,
    kTextEndEllipsis = 0x8000,
};

// How a reduced picture drops pixels; the window system's stretch modes.
enum class StretchMode {
    kBlackOnWhite = 1,  // samples of the dropped pixels are ANDed: black lines survive
    kWhiteOnBlack = 2,  // samples are ORed: white lines survive
    kColorOnColor = 3,  // the first pixel of each span stands for it
};

class Canvas {
public:
    virtual ~Canvas() = default;

    virtual int Width() const = 0;
    virtual int Height() const = 0;

    // Every pixel of `rect` gets `color`.
    virtual void FillRect(const win::RECT& rect, win::COLORREF color) = 0;

    // A one-pixel frame inside `rect`: the top row and the left column, less their last pixel,
    // in `topLeft`; the right column and the bottom row, whole, in `bottomRight`.
    virtual void Draw3dRect(const win::RECT& rect, win::COLORREF topLeft,
                            win::COLORREF bottomRight) = 0;

    // Text laid out in `rect` by `format` (TextFormat bits: alignment, vertical centring, one
    // line, ellipsis at the end, no clipping). Glyph pixels get `color`, others stay; without
    // kTextNoClip nothing outside `rect` changes. With kTextCalcRect nothing is drawn.
    virtual void DrawText(const std::wstring& text, const win::RECT& rect,
                          const win::LOGFONTW& font, win::COLORREF color, std::uint32_t format) = 0;

    // Width of the text on one line, and the font's line height.
    virtual win::SIZE MeasureText(const std::wstring& text, const win::LOGFONTW& font) = 0;

    // Copies an RGB buffer (red, green, blue; rows from the top, `stride` bytes apart) at full
    // size with its top left at x, y.
    virtual void BlitRgb(const std::uint8_t* rgb, int width, int height, int stride, int x,
                         int y) = 0;

    // Draws a packed DIB of `size` bytes into `dest`. Each destination column dx (0-based
    // within dest) stands for the source columns from dx*sw/dw to (dx+1)*sw/dw (integer
    // division, at least one), rows alike; `mode` says how those source pixels combine. A DIB
    // that can't be decoded draws nothing; bytes beyond `size` read as 0 (black, or colour
    // entry 0 of an indexed picture).
    virtual void StretchDib(const std::uint8_t* dib, std::size_t size, const win::RECT& dest,
                            StretchMode mode) = 0;

    // Tints `rect` with `color`: each sample becomes (c * alpha + d * (255 - alpha)) >> 8.
    virtual void AlphaTint(const win::RECT& rect, win::COLORREF color, std::uint8_t alpha) = 0;

    // Paints `color` wherever the byte mask (`width` by `height`, `stride` bytes a row) is not
    // zero, with the mask's top left at x, y.
    virtual void FillMask(const std::uint8_t* mask, int width, int height, int stride, int x, int y,
                          win::COLORREF color) = 0;

    // Reads pixels back as RGB, rows from the top, `width * 3` bytes a row. Pixels outside the
    // canvas read as black. False when the canvas can't be read.
    virtual bool ReadRgb(int x, int y, int width, int height, std::uint8_t* rgb) = 0;

    // A new off-screen canvas of this kind (a memory bitmap compatible with this one), filled
    // black; null when it can't be made.
    virtual std::unique_ptr<Canvas> CreateCompatible(int width, int height) = 0;
};

// The screen's device: what a bitmap is made compatible with when no device context is given.
class ScreenDevice {
public:
    virtual ~ScreenDevice() = default;

    // A canvas over the screen for the length of one use; null when there is none.
    virtual std::unique_ptr<Canvas> OpenScreen() = 0;
};
