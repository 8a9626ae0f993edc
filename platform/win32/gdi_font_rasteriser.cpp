#include "platform/win32/gdi_font_rasteriser.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "platform/win32/gdi_dib.h"

GdiFontRasteriser::GdiFontRasteriser() : m_dc(::CreateCompatibleDC(nullptr)) {}

HFONT GdiFontRasteriser::Font(const win::LOGFONTW& font) {
    win::LOGFONTW wanted = font;
    // One bit a pixel: an anti-aliased font would be cut at some grey level of GDI's choosing.
    wanted.lfQuality = NONANTIALIASED_QUALITY;
    if (!m_font || std::memcmp(&wanted, &m_fontDescription, sizeof wanted) != 0) {
        m_font = MakeFont(wanted);
        m_fontDescription = wanted;
    }
    return m_font.Get();
}

int GdiFontRasteriser::LineHeight(const win::LOGFONTW& font) {
    const HFONT handle = Font(font);
    if (!m_dc || handle == nullptr)
        return 0;
    const SelectGuard selected(m_dc.Get(), handle);
    TEXTMETRICW metrics{};
    return ::GetTextMetricsW(m_dc.Get(), &metrics) ? metrics.tmHeight : 0;
}

int GdiFontRasteriser::TextWidth(const std::wstring& text, const win::LOGFONTW& font) {
    const HFONT handle = Font(font);
    if (!m_dc || handle == nullptr)
        return 0;
    const SelectGuard selected(m_dc.Get(), handle);
    SIZE extent{};
    return ::GetTextExtentPoint32W(m_dc.Get(), text.c_str(), static_cast<int>(text.size()), &extent)
               ? extent.cx
               : 0;
}

bool GdiFontRasteriser::DrawLine(const std::wstring& text, const win::LOGFONTW& font, int x,
                                 int top, const win::RECT& clip, MonoBitmap& target) {
    const HFONT handle = Font(font);
    if (!m_dc || handle == nullptr)
        return false;
    const win::RECT area{std::max(clip.left, 0), std::max(clip.top, 0),
                         std::min(clip.right, target.width), std::min(clip.bottom, target.height)};
    if (area.IsEmpty() || text.empty())
        return true;
    const int width = area.Width();
    const int height = area.Height();
    const BitmapHandle mono(::CreateBitmap(width, height, 1, 1, nullptr));
    if (!mono)
        return true;
    {
        const SelectGuard bitmap(m_dc.Get(), mono.Get());
        const SelectGuard selected(m_dc.Get(), handle);
        ::PatBlt(m_dc.Get(), 0, 0, width, height, BLACKNESS);
        ::SetTextColor(m_dc.Get(), RGB(255, 255, 255));
        ::SetBkMode(m_dc.Get(), TRANSPARENT);
        RECT cell{x - area.left, top - area.top, x - area.left + 1, top - area.top + 1};
        ::DrawTextW(m_dc.Get(), text.c_str(), static_cast<int>(text.size()), &cell,
                    DT_LEFT | DT_TOP | DT_SINGLELINE | DT_NOCLIP | DT_NOPREFIX);
    }
    // Read back top-down, one bit a pixel; the bits of white, the text colour, are set.
    struct {
        BITMAPINFOHEADER header;
        RGBQUAD colors[2];
    } info{TopDownHeader(width, height, 1), {}};
    const std::size_t rowBytes = (static_cast<std::size_t>(width) + 31) / 32 * 4;
    std::vector<std::uint8_t> rows(rowBytes * static_cast<std::size_t>(height));
    if (::GetDIBits(m_dc.Get(), mono.Get(), 0, static_cast<UINT>(height), rows.data(),
                    reinterpret_cast<BITMAPINFO*>(&info), DIB_RGB_COLORS) != height)
        return true;
    const std::uint8_t on = info.colors[1].rgbRed != 0 ? 0x00 : 0xFF;  // 1 is white, as a rule
    for (int y = 0; y < height; ++y) {
        const std::uint8_t* in = rows.data() + static_cast<std::size_t>(y) * rowBytes;
        std::uint8_t* out = target.bits.data() +
                            static_cast<std::size_t>(area.top + y) * target.width + area.left;
        for (int column = 0; column < width; ++column) {
            const bool bit = ((in[column / 8] ^ on) & (0x80u >> (column % 8))) != 0;
            if (bit)
                out[column] = 1;
        }
    }
    return true;
}
