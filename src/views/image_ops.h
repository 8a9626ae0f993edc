#pragma once
// The ten image operations that thumbnails and tabs are drawn with, and the tint of the active
// mark. Pictures between steps are RGB buffers: red, green, blue, rows from the top, `stride`
// bytes apart. Each operation returns 1 or 0 (or an object, empty on failure) and leaves its
// code in ImageLibrary().lastError.
//
// Where the window system has device contexts and bitmaps, these take a Canvas: a bitmap is an
// off-screen canvas, a device context the canvas painted on. Palettes have no part here: every
// caller passes none.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "foundation/win_types.h"
#include "ports/canvas.h"
#include "views/dib.h"

// The window system's own names, so that its headers and this one can meet in an adapter: there
// DWORD is an unsigned long of 32 bits, which std::uint32_t is not.
using BYTE = std::uint8_t;
using UINT = unsigned int;
#ifdef _WIN32
using DWORD = unsigned long;
#else
using DWORD = std::uint32_t;
#endif

// The pixels of `bitmap` into `rgb`, which holds width * height * 3 bytes.
int IS40_HBITMAPToRGB(Canvas* bitmap, BYTE* rgb);

// A new bitmap of the DIB (of `size` bytes), made compatible with `dc`, or with the screen's
// device when `dc` is null; null on failure.
std::unique_ptr<Canvas> IS40_DIBToHBITMAP(const BYTE* dib, std::size_t size, Canvas* dc);

// A 24-bit DIB of the buffer, rows from the bottom; empty on failure.
DibBlock IS40_RGBToDIB(const BYTE* rgb, UINT width, UINT height, UINT stride, DWORD flags);

// Draws the buffer at full size with its top left at x, y.
int IS40_DrawRGB(Canvas* dc, const BYTE* rgb, UINT width, UINT height, UINT stride, int x, int y);

// rotation 0: 90 degrees clockwise; 1: 180 degrees; 2: 90 degrees anticlockwise. Rows tight.
int IS40_QuickRotateImageInPlace(BYTE* image, UINT width, UINT height, UINT rotation,
                                 UINT bytesPerPixel, DWORD flags);

// Anti-aliased text: drawn at `smoothing` times its size in black and white, reduced, and
// blended in `color`. `text` is UTF-8.
struct SmoothTextRequest {
    const char* text = nullptr;
    const win::LOGFONTW* font = nullptr;
    UINT smoothing = 4;
    const win::RECT* rect = nullptr;
    UINT textFlags = 0;
    UINT options = 0;
    win::COLORREF color = 0;
};
int IS40_DrawSmoothTextOnRGB2(BYTE* image, UINT width, UINT height, UINT stride,
                              const SmoothTextRequest& request);

// A `width` by `height` buffer (rows tight) filled with `back`, with the request's text drawn
// over the whole of it (the request's rectangle is not read). Empty when there is no memory
// for it: painting skips the text then.
std::vector<BYTE> SmoothTextStrip(int width, int height, win::COLORREF back,
                                  SmoothTextRequest request);

// Fills columns left..right (one more than the rectangle's width) and rows top..bottom-1; a
// rectangle of zero width or height fills nothing.
int IS40_FillSolidRect(BYTE* image, UINT width, UINT height, UINT bytesPerPixel, UINT stride,
                       const win::RECT* rect, win::COLORREF color, DWORD flags);

int IS40_SharpenImage(const BYTE* source, UINT width, UINT height, UINT bytesPerPixel,
                      UINT sourceStride, BYTE* target, UINT targetStride, int level, UINT flags);

int IS40_AdjustGamma(BYTE* image, UINT width, UINT height, UINT bytesPerPixel, UINT stride,
                     double gamma, DWORD flags);

struct ResizeRequest {
    const BYTE* source = nullptr;
    UINT sourceWidth = 0;
    UINT sourceHeight = 0;
    UINT sourceStride = 0;
    BYTE* target = nullptr;
    UINT targetWidth = 0;
    UINT targetHeight = 0;
    UINT targetStride = 0;
    UINT bytesPerPixel = 3;
    UINT mode = 15;
    DWORD flags = 0;
};
// Mode 15: reduction by area. Nothing else exists.
int IS40_ResizeImage(const ResizeRequest& request);

// Tints `rect` of the canvas with `color` at `alpha` (0 to 255; above that nothing is drawn).
void AlphaFillRect(Canvas* dc, const win::RECT& rect, win::COLORREF color, unsigned alpha);
