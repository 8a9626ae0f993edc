#pragma once
// The image operations that meet GDI's own bitmaps and device contexts, with the raster
// capability checks and palette cases of the image library. They report through the same
// per-thread state as the rest of the library (ImageLibrary()), with the same codes.

#include <windows.h>

#include <cstddef>

#include "platform/win32/gdi_handles.h"
#include "platform/win32/system_libraries.h"
#include "views/image_ops.h"

// Where the operations read a device's capabilities. Nothing is installed in the product, and
// GetDeviceCaps answers; a test installs one (ScopedPort) to play a palette device or a device
// that lacks a capability, which no display under Wine does.
class DeviceCapsReader {
public:
    virtual ~DeviceCapsReader() = default;
    virtual int Get(HDC dc, int index) = 0;
};
int DeviceCaps(HDC dc, int index);

// The pixels of `bitmap` into `rgb` (width * height * 3 bytes), read through `dc`.
int IS40_HBITMAPToRGB(HBITMAP bitmap, HDC dc, HPALETTE palette, BYTE* rgb);

// A device bitmap of the packed DIB (`size` bytes); with no `dc`, one compatible with the
// screen, or a monochrome one for a 1-bit DIB. Empty on failure.
BitmapHandle IS40_DIBToHBITMAP(const BYTE* dib, std::size_t size, HPALETTE palette, HDC dc);

// Draws the buffer at full size with its top left at x, y of `dc`.
int IS40_DrawRGB(HDC dc, const BYTE* rgb, UINT width, UINT height, UINT stride, int x, int y,
                 HPALETTE palette);

// Tints `rect` of `dc` with `color` at `alpha`: through `blend` where there is one, else
// (s * alpha + d * (255 - alpha)) >> 8 per sample. An alpha above 255 draws nothing.
void AlphaFillRect(HDC dc, const RECT& rect, COLORREF color, unsigned alpha,
                   AlphaBlendFunction blend = SystemAlphaBlend());
