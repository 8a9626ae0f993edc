#include "platform/win32/gdi_canvas.h"

#include <algorithm>
#include <vector>

#include "platform/win32/gdi_dib.h"

namespace {

RECT Native(const win::RECT& rect) {
    return {rect.left, rect.top, rect.right, rect.bottom};
}

BITMAPINFO TopDownInfo(int width, int height, WORD bits) {
    BITMAPINFO info{};
    info.bmiHeader = TopDownHeader(width, height, bits);
    return info;
}

// The rows of a monochrome bitmap as CreateBitmap takes them: padded to 16 bits, high bit
// first. A mask pixel that is set becomes 0, the bit that DrawState paints with the brush;
// 1 leaves the destination.
std::vector<std::uint8_t> MonoRows(const std::uint8_t* mask, int width, int height, int stride) {
    const std::size_t rowBytes = (static_cast<std::size_t>(width) + 15) / 16 * 2;
    std::vector<std::uint8_t> rows(rowBytes * static_cast<std::size_t>(height), 0xFF);
    for (int y = 0; y < height; ++y) {
        const std::uint8_t* in = mask + static_cast<std::size_t>(y) * stride;
        std::uint8_t* out = rows.data() + static_cast<std::size_t>(y) * rowBytes;
        for (int x = 0; x < width; ++x) {
            if (in[x] != 0)
                out[x / 8] = static_cast<std::uint8_t>(out[x / 8] & ~(0x80u >> (x % 8)));
        }
    }
    return rows;
}

}  // namespace

std::unique_ptr<GdiCanvas> GdiCanvas::Create(int width, int height, HDC reference,
                                             AlphaBlendFunction blend) {
    if (width <= 0 || height <= 0)
        return nullptr;
    MemoryDc dc(::CreateCompatibleDC(reference));
    if (!dc)
        return nullptr;
    const BITMAPINFO info = TopDownInfo(width, height, 32);
    void* bits = nullptr;
    BitmapHandle bitmap(::CreateDIBSection(dc.Get(), &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (!bitmap || bits == nullptr)
        return nullptr;
    std::unique_ptr<GdiCanvas> canvas(new GdiCanvas(std::move(dc), std::move(bitmap),
                                                    static_cast<const std::uint8_t*>(bits), width,
                                                    height, blend));
    if (!canvas->m_selected.Selected())
        return nullptr;
    return canvas;
}

GdiCanvas::GdiCanvas(MemoryDc dc, BitmapHandle bitmap, const std::uint8_t* bits, int width,
                     int height, AlphaBlendFunction blend)
    : m_dc(std::move(dc)),
      m_bitmap(std::move(bitmap)),
      m_selected(m_dc.Get(), m_bitmap.Get()),
      m_pBits(bits),
      m_nWidth(width),
      m_nHeight(height),
      m_blend(blend) {}

bool GdiCanvas::BlitTo(HDC target, int x, int y) const {
    return ::BitBlt(target, x, y, m_nWidth, m_nHeight, m_dc.Get(), 0, 0, SRCCOPY) != FALSE;
}

void GdiCanvas::FillRect(const win::RECT& rect, win::COLORREF color) {
    if (rect.IsEmpty())
        return;
    const BrushHandle brush = MakeBrush(color);
    const RECT area = Native(rect);
    if (brush)
        ::FillRect(m_dc.Get(), &area, brush.Get());
}

void GdiCanvas::Draw3dRect(const win::RECT& rect, win::COLORREF topLeft,
                           win::COLORREF bottomRight) {
    if (rect.IsEmpty())
        return;
    // The four strips of a frame, as four solid fills.
    const struct {
        win::RECT strip;
        win::COLORREF color;
    } strips[] = {
        {{rect.left, rect.top, rect.right - 1, rect.top + 1}, topLeft},
        {{rect.left, rect.top, rect.left + 1, rect.bottom - 1}, topLeft},
        {{rect.right - 1, rect.top, rect.right, rect.bottom}, bottomRight},
        {{rect.left, rect.bottom - 1, rect.right, rect.bottom}, bottomRight},
    };
    for (const auto& s : strips)
        FillRect(s.strip, s.color);
}

void GdiCanvas::DrawText(const std::wstring& text, const win::RECT& rect,
                         const win::LOGFONTW& font, win::COLORREF color, std::uint32_t format) {
    if ((format & kTextCalcRect) != 0)
        return;
    const FontHandle handle = MakeFont(font);
    if (!handle)
        return;
    const SelectGuard selected(m_dc.Get(), handle.Get());
    ::SetTextColor(m_dc.Get(), color);
    ::SetBkMode(m_dc.Get(), TRANSPARENT);
    RECT area = Native(rect);
    ::DrawTextW(m_dc.Get(), text.c_str(), static_cast<int>(text.size()), &area,
                format | DT_NOPREFIX);
}

win::SIZE GdiCanvas::MeasureText(const std::wstring& text, const win::LOGFONTW& font) {
    const FontHandle handle = MakeFont(font);
    if (!handle)
        return {};
    const SelectGuard selected(m_dc.Get(), handle.Get());
    SIZE extent{};
    TEXTMETRICW metrics{};
    // The extent of an empty text has no height; the line's height is the font's.
    if (!::GetTextExtentPoint32W(m_dc.Get(), text.c_str(), static_cast<int>(text.size()),
                                 &extent) ||
        !::GetTextMetricsW(m_dc.Get(), &metrics))
        return {};
    return {extent.cx, metrics.tmHeight};
}

void GdiCanvas::BlitRgb(const std::uint8_t* rgb, int width, int height, int stride, int x, int y) {
    if (rgb == nullptr || width <= 0 || height <= 0)
        return;
    const std::size_t rowBytes = (static_cast<std::size_t>(width) * 3 + 3) / 4 * 4;
    std::vector<std::uint8_t> bgr(rowBytes * static_cast<std::size_t>(height));
    for (int row = 0; row < height; ++row) {
        const std::uint8_t* in = rgb + static_cast<std::size_t>(row) * stride;
        std::uint8_t* out = bgr.data() + static_cast<std::size_t>(row) * rowBytes;
        for (int column = 0; column < width; ++column, in += 3, out += 3) {
            out[0] = in[2];
            out[1] = in[1];
            out[2] = in[0];
        }
    }
    const BITMAPINFO info = TopDownInfo(width, height, 24);
    ::StretchDIBits(m_dc.Get(), x, y, width, height, 0, 0, width, height, bgr.data(), &info,
                    DIB_RGB_COLORS, SRCCOPY);
}

void GdiCanvas::StretchDib(const std::uint8_t* dib, std::size_t size, const win::RECT& dest,
                           StretchMode mode) {
    const GdiDib source(dib, size);
    if (!source.IsValid() || dest.IsEmpty())
        return;
    // DrawDib stretches its own way on some systems and through the context's stretch mode
    // on others; the mode is set for both paths.
    const int old = ::SetStretchBltMode(m_dc.Get(), static_cast<int>(mode));
    if (mode == StretchMode::kColorOnColor && !m_drawDib)
        m_drawDib = DrawDibHandle(::DrawDibOpen());
    const bool drawn =
        mode == StretchMode::kColorOnColor && m_drawDib &&
        ::DrawDibDraw(m_drawDib.Get(), m_dc.Get(), dest.left, dest.top, dest.Width(),
                      dest.Height(), const_cast<BITMAPINFOHEADER*>(source.Header()),
                      const_cast<void*>(source.Bits()), 0, 0, source.Width(), source.Height(), 0);
    if (!drawn)
        ::StretchDIBits(m_dc.Get(), dest.left, dest.top, dest.Width(), dest.Height(), 0, 0,
                        source.Width(), source.Height(), source.Bits(), source.Info(),
                        DIB_RGB_COLORS, SRCCOPY);
    ::SetStretchBltMode(m_dc.Get(), old);
}

void GdiCanvas::AlphaTint(const win::RECT& rect, win::COLORREF color, std::uint8_t alpha) {
    AlphaFillRect(m_dc.Get(), Native(rect), color, alpha, m_blend);
}

void GdiCanvas::FillMask(const std::uint8_t* mask, int width, int height, int stride, int x,
                         int y, win::COLORREF color) {
    if (mask == nullptr || width <= 0 || height <= 0)
        return;
    const std::vector<std::uint8_t> rows = MonoRows(mask, width, height, stride);
    const BitmapHandle mono(::CreateBitmap(width, height, 1, 1, rows.data()));
    const BrushHandle brush = MakeBrush(color);
    if (!mono || !brush)
        return;
    ::DrawStateW(m_dc.Get(), brush.Get(), nullptr, reinterpret_cast<LPARAM>(mono.Get()), 0, x, y,
                 width, height, DST_BITMAP | DSS_MONO);
}

bool GdiCanvas::ReadRgb(int x, int y, int width, int height, std::uint8_t* rgb) {
    if (rgb == nullptr || width < 0 || height < 0)
        return false;
    ::GdiFlush();
    for (int row = y; row < y + height; ++row) {
        for (int column = x; column < x + width; ++column, rgb += 3) {
            if (row < 0 || column < 0 || row >= m_nHeight || column >= m_nWidth) {
                rgb[0] = rgb[1] = rgb[2] = 0;
                continue;
            }
            const std::uint8_t* p =
                m_pBits + (static_cast<std::size_t>(row) * m_nWidth + column) * 4;
            rgb[0] = p[2];
            rgb[1] = p[1];
            rgb[2] = p[0];
        }
    }
    return true;
}

std::unique_ptr<Canvas> GdiCanvas::CreateCompatible(int width, int height) {
    return Create(width, height, m_dc.Get(), m_blend);
}
