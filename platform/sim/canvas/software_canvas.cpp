#include "platform/sim/canvas/software_canvas.h"

#include <algorithm>

#include "ports/port.h"
#include "views/dib.h"
#include "views/text_layout.h"

SoftwareCanvas::SoftwareCanvas(int width, int height, FontRasteriser* fonts)
    : m_nWidth(std::max(width, 0)),
      m_nHeight(std::max(height, 0)),
      m_pixels(static_cast<std::size_t>(m_nWidth) * static_cast<std::size_t>(m_nHeight) * 3),
      m_pFonts(fonts) {}

FontRasteriser* SoftwareCanvas::Fonts() const {
    if (m_pFonts != nullptr)
        return m_pFonts;
    return IsInstalled<FontRasteriser>() ? &Use<FontRasteriser>() : nullptr;
}

win::RECT SoftwareCanvas::Clip(const win::RECT& rect) const {
    return {std::max(rect.left, 0), std::max(rect.top, 0), std::min(rect.right, m_nWidth),
            std::min(rect.bottom, m_nHeight)};
}

void SoftwareCanvas::Put(int x, int y, win::COLORREF color) {
    if (x < 0 || y < 0 || x >= m_nWidth || y >= m_nHeight)
        return;
    std::uint8_t* p = m_pixels.data() + (static_cast<std::size_t>(y) * m_nWidth + x) * 3;
    p[0] = win::RedOf(color);
    p[1] = win::GreenOf(color);
    p[2] = win::BlueOf(color);
}

win::COLORREF SoftwareCanvas::PixelAt(int x, int y) const {
    if (x < 0 || y < 0 || x >= m_nWidth || y >= m_nHeight)
        return 0;
    const std::uint8_t* p = m_pixels.data() + (static_cast<std::size_t>(y) * m_nWidth + x) * 3;
    return win::MakeColor(p[0], p[1], p[2]);
}

void SoftwareCanvas::FillRect(const win::RECT& rect, win::COLORREF color) {
    const win::RECT area = Clip(rect);
    for (int y = area.top; y < area.bottom; ++y)
        for (int x = area.left; x < area.right; ++x)
            Put(x, y, color);
}

void SoftwareCanvas::Draw3dRect(const win::RECT& rect, win::COLORREF topLeft,
                                win::COLORREF bottomRight) {
    if (rect.IsEmpty())
        return;
    FillRect({rect.left, rect.top, rect.right - 1, rect.top + 1}, topLeft);
    FillRect({rect.left, rect.top, rect.left + 1, rect.bottom - 1}, topLeft);
    FillRect({rect.right - 1, rect.top, rect.right, rect.bottom}, bottomRight);
    FillRect({rect.left, rect.bottom - 1, rect.right, rect.bottom}, bottomRight);
}

void SoftwareCanvas::DrawText(const std::wstring& text, const win::RECT& rect,
                              const win::LOGFONTW& font, win::COLORREF color,
                              std::uint32_t format) {
    FontRasteriser* fonts = Fonts();
    if (fonts == nullptr || (format & kTextCalcRect) != 0)
        return;
    // Glyphs land only inside the rectangle (or anywhere on the canvas without clipping), so
    // the mask covers just that.
    const win::RECT area =
        (format & kTextNoClip) != 0 ? win::RECT{0, 0, m_nWidth, m_nHeight} : Clip(rect);
    if (area.IsEmpty())
        return;
    MonoBitmap mask(area.Width(), area.Height());
    RasteriseText(*fonts, text, rect, font, format, {area.left, area.top}, mask);
    FillMask(mask.bits.data(), mask.width, mask.height, mask.width, area.left, area.top, color);
}

win::SIZE SoftwareCanvas::MeasureText(const std::wstring& text, const win::LOGFONTW& font) {
    FontRasteriser* fonts = Fonts();
    if (fonts == nullptr)
        return {};
    return {fonts->TextWidth(text, font), fonts->LineHeight(font)};
}

void SoftwareCanvas::BlitRgb(const std::uint8_t* rgb, int width, int height, int stride, int x,
                             int y) {
    if (rgb == nullptr)
        return;
    const win::RECT area = Clip({x, y, x + width, y + height});
    for (int row = area.top; row < area.bottom; ++row) {
        const std::uint8_t* in = rgb + static_cast<std::size_t>(row - y) * stride +
                                 static_cast<std::size_t>(area.left - x) * 3;
        std::copy(in, in + static_cast<std::size_t>(area.right - area.left) * 3,
                  m_pixels.data() + (static_cast<std::size_t>(row) * m_nWidth + area.left) * 3);
    }
}

void SoftwareCanvas::StretchDib(const std::uint8_t* dib, std::size_t size, const win::RECT& dest,
                                StretchMode mode) {
    const DibPixels source(dib, size);
    if (!source.IsValid() || dest.IsEmpty())
        return;
    const std::int64_t sw = source.Width();
    const std::int64_t sh = source.Height();
    const std::int64_t dw = dest.Width();
    const std::int64_t dh = dest.Height();
    auto span = [](std::int64_t d, std::int64_t s, std::int64_t dLen) {
        const std::int64_t first = d * s / dLen;
        return std::pair<std::int64_t, std::int64_t>(first,
                                                     std::max((d + 1) * s / dLen, first + 1));
    };
    const win::RECT area = Clip(dest);
    for (int y = area.top; y < area.bottom; ++y) {
        const auto rows = span(y - dest.top, sh, dh);
        for (int x = area.left; x < area.right; ++x) {
            const auto columns = span(x - dest.left, sw, dw);
            win::COLORREF color =
                source.At(static_cast<int>(columns.first), static_cast<int>(rows.first));
            if (mode != StretchMode::kColorOnColor) {
                for (std::int64_t sy = rows.first; sy < rows.second; ++sy) {
                    for (std::int64_t sx = columns.first; sx < columns.second; ++sx) {
                        const win::COLORREF c =
                            source.At(static_cast<int>(sx), static_cast<int>(sy));
                        color = mode == StretchMode::kBlackOnWhite ? (color & c) : (color | c);
                    }
                }
            }
            Put(x, y, color);
        }
    }
}

void SoftwareCanvas::AlphaTint(const win::RECT& rect, win::COLORREF color, std::uint8_t alpha) {
    const win::RECT area = Clip(rect);
    const unsigned samples[3] = {win::RedOf(color), win::GreenOf(color), win::BlueOf(color)};
    for (int y = area.top; y < area.bottom; ++y) {
        std::uint8_t* p =
            m_pixels.data() + (static_cast<std::size_t>(y) * m_nWidth + area.left) * 3;
        for (int x = area.left; x < area.right; ++x)
            for (int c = 0; c < 3; ++c, ++p)
                *p = static_cast<std::uint8_t>((samples[c] * alpha + *p * (255u - alpha)) >> 8);
    }
}

void SoftwareCanvas::FillMask(const std::uint8_t* mask, int width, int height, int stride, int x,
                              int y, win::COLORREF color) {
    if (mask == nullptr)
        return;
    const win::RECT area = Clip({x, y, x + width, y + height});
    for (int row = area.top; row < area.bottom; ++row) {
        const std::uint8_t* m = mask + static_cast<std::size_t>(row - y) * stride;
        for (int column = area.left; column < area.right; ++column) {
            if (m[column - x] != 0)
                Put(column, row, color);
        }
    }
}

bool SoftwareCanvas::ReadRgb(int x, int y, int width, int height, std::uint8_t* rgb) {
    if (rgb == nullptr || width < 0 || height < 0)
        return false;
    if (x >= 0 && y >= 0 && x + width <= m_nWidth && y + height <= m_nHeight) {
        // Wholly inside: whole rows at a time, as a copy of a window's picture reads it.
        const std::size_t rowBytes = static_cast<std::size_t>(width) * 3;
        for (int row = 0; row < height; ++row, rgb += rowBytes) {
            const std::uint8_t* in =
                m_pixels.data() + (static_cast<std::size_t>(y + row) * m_nWidth + x) * 3;
            std::copy(in, in + rowBytes, rgb);
        }
        return true;
    }
    for (int row = 0; row < height; ++row) {
        for (int column = 0; column < width; ++column) {
            const win::COLORREF c = PixelAt(x + column, y + row);
            *rgb++ = win::RedOf(c);
            *rgb++ = win::GreenOf(c);
            *rgb++ = win::BlueOf(c);
        }
    }
    return true;
}

std::unique_ptr<Canvas> SoftwareCanvas::CreateCompatible(int width, int height) {
    if (width <= 0 || height <= 0)
        return nullptr;
    return std::make_unique<SoftwareCanvas>(width, height, m_pFonts);
}
