#pragma once
// The canvas over GDI: a memory context holding a 32-bit DIB section, so that what GDI draws
// can be read back without a round trip through the device.
//
// How the port's calls map: fills and frames are FillRect; text is DrawTextW (with
// DT_NOPREFIX, since the port has no mnemonics) and measuring GetTextExtentPoint32W; an RGB
// buffer goes in as one DIB and one StretchDIBits at full size; a stretched DIB is DrawDibDraw
// for colour on colour, which is how DrawDib reduces, and StretchDIBits under the stretch mode
// for black on white and white on black, which DrawDib has no way to ask for; the tint is
// AlphaFillRect (AlphaBlend, or the software blend where there is none); a mask is DrawState
// with a monochrome bitmap.
//
// Where GDI differs from the port's pixel rules: AlphaBlend divides by 255 and rounds, so a
// tinted sample may be up to 2 above the rule's (the software blend is exact); a reduction
// colour on colour keeps the pixel in the middle of each span under Wine, where the rule keeps
// the first; 5 and 6-bit samples are widened by repeating their high bits, so they may differ
// by 1 from the decoder's; text is the system's rasteriser's.

#include <windows.h>

#include <memory>

#include "platform/win32/gdi_handles.h"
#include "platform/win32/gdi_image_device.h"
#include "ports/canvas.h"

class GdiCanvas : public Canvas {
public:
    // A black canvas compatible with `reference` (the screen when null); null if GDI can't
    // make one. `blend` is the AlphaBlend to tint with, null for the software blend.
    static std::unique_ptr<GdiCanvas> Create(int width, int height, HDC reference = nullptr,
                                             AlphaBlendFunction blend = SystemAlphaBlend());

    GdiCanvas(const GdiCanvas&) = delete;
    GdiCanvas& operator=(const GdiCanvas&) = delete;

    HDC Dc() const { return m_dc.Get(); }

    // Copies the whole picture to `target` at x, y: the one blit of a paint.
    bool BlitTo(HDC target, int x, int y) const;

    int Width() const override { return m_nWidth; }
    int Height() const override { return m_nHeight; }
    void FillRect(const win::RECT& rect, win::COLORREF color) override;
    void Draw3dRect(const win::RECT& rect, win::COLORREF topLeft,
                    win::COLORREF bottomRight) override;
    void DrawText(const std::wstring& text, const win::RECT& rect, const win::LOGFONTW& font,
                  win::COLORREF color, std::uint32_t format) override;
    win::SIZE MeasureText(const std::wstring& text, const win::LOGFONTW& font) override;
    void BlitRgb(const std::uint8_t* rgb, int width, int height, int stride, int x, int y) override;
    void StretchDib(const std::uint8_t* dib, std::size_t size, const win::RECT& dest,
                    StretchMode mode) override;
    void AlphaTint(const win::RECT& rect, win::COLORREF color, std::uint8_t alpha) override;
    void FillMask(const std::uint8_t* mask, int width, int height, int stride, int x, int y,
                  win::COLORREF color) override;
    bool ReadRgb(int x, int y, int width, int height, std::uint8_t* rgb) override;
    std::unique_ptr<Canvas> CreateCompatible(int width, int height) override;

private:
    GdiCanvas(MemoryDc dc, BitmapHandle bitmap, const std::uint8_t* bits, int width, int height,
              AlphaBlendFunction blend);

    // Declared in this order so that the bitmap is put out of the context before it is
    // deleted, and the context deleted last.
    MemoryDc m_dc;
    BitmapHandle m_bitmap;
    SelectGuard m_selected;
    DrawDibHandle m_drawDib;                 // opened at the first stretch
    const std::uint8_t* m_pBits;             // the DIB section's, not owned: BGRX, top-down
    int m_nWidth;
    int m_nHeight;
    AlphaBlendFunction m_blend;
};
