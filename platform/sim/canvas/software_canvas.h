#pragma once
// A canvas that paints into an RGB buffer held in memory: the window system of the tests and
// the reference against which the real one is compared. Its pixel rules are the canvas port's.

#include <cstdint>
#include <vector>

#include "ports/canvas.h"
#include "ports/font_rasteriser.h"

class SoftwareCanvas : public Canvas {
public:
    // A black canvas. `fonts` (not owned) sets text; null means the installed rasteriser, if
    // any, and without one text is neither drawn nor measured.
    SoftwareCanvas(int width, int height, FontRasteriser* fonts = nullptr);

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

    win::COLORREF PixelAt(int x, int y) const;
    const std::vector<std::uint8_t>& Pixels() const { return m_pixels; }

private:
    win::RECT Clip(const win::RECT& rect) const;
    void Put(int x, int y, win::COLORREF color);
    FontRasteriser* Fonts() const;

    int m_nWidth;
    int m_nHeight;
    std::vector<std::uint8_t> m_pixels;
    FontRasteriser* m_pFonts;  // not owned
};

// The simulated screen: each use gets a black software canvas of the screen's size.
class SoftwareScreen : public ScreenDevice {
public:
    SoftwareScreen(int width, int height, FontRasteriser* fonts = nullptr)
        : m_nWidth(width), m_nHeight(height), m_pFonts(fonts) {}

    std::unique_ptr<Canvas> OpenScreen() override {
        return std::make_unique<SoftwareCanvas>(m_nWidth, m_nHeight, m_pFonts);
    }

private:
    int m_nWidth;
    int m_nHeight;
    FontRasteriser* m_pFonts;  // not owned
};
