#include "platform/win32/gdi_dib.h"

#include <algorithm>
#include <cstring>

#include "views/dib.h"

BITMAPINFOHEADER TopDownHeader(int width, int height, WORD bits) {
    BITMAPINFOHEADER header{};
    header.biSize = sizeof header;
    header.biWidth = width;
    header.biHeight = -height;
    header.biPlanes = 1;
    header.biBitCount = bits;
    header.biCompression = BI_RGB;
    return header;
}

GdiDib::GdiDib(const std::uint8_t* dib, std::size_t size) {
    const DibPixels pixels(dib, size);
    if (!pixels.IsValid())
        return;
    m_nWidth = pixels.Width();
    m_nHeight = pixels.Height();
    m_nBits = DibBitCount(dib, size);
    const bool info = size >= kInfoHeaderSize && dib[0] == kInfoHeaderSize && dib[1] == 0 &&
                      dib[2] == 0 && dib[3] == 0;
    const bool bitfields = info && dib[16] == BI_BITFIELDS;
    const std::size_t bitsOffset = DibBitsOffset(dib, size) + (bitfields ? 12 : 0);
    const std::size_t rowBytes =
        (static_cast<std::size_t>(m_nWidth) * static_cast<std::size_t>(m_nBits) + 31) / 32 * 4;
    const std::size_t bitsSize = rowBytes * static_cast<std::size_t>(m_nHeight);

    if (m_nBits <= 8) {
        const unsigned count = DibNumColors(dib, size);
        for (unsigned i = 0; i < count; ++i) {
            const win::COLORREF c = DibGetPaletteEntry(dib, size, i);
            m_colors.push_back({win::BlueOf(c), win::GreenOf(c), win::RedOf(c), 0});
        }
    }
    if (info && bitsOffset + bitsSize <= size) {
        m_pInfo = reinterpret_cast<const BITMAPINFO*>(dib);
        m_pBits = dib + bitsOffset;
        return;
    }
    CopyWithInfoHeader(dib, size, info, bitsOffset, bitsSize);
}

// An info header keeps its header, masks and table as they stand; a core header gets an info
// header and a table of RGBQUADs. Of the pixels, only those whose bytes are all in the block are
// copied: one cut through stays black, as a pixel beyond the block reads.
void GdiDib::CopyWithInfoHeader(const std::uint8_t* dib, std::size_t size, bool info,
                                std::size_t sourceBits, std::size_t bitsSize) {
    const std::size_t bitsOffset =
        info ? sourceBits : sizeof(BITMAPINFOHEADER) + m_colors.size() * sizeof(RGBQUAD);
    m_copy.assign(bitsOffset + bitsSize, 0);
    if (info) {
        std::memcpy(m_copy.data(), dib, std::min(size, bitsOffset));
    } else {
        // Rows from the bottom, as a core header's always are.
        BITMAPINFOHEADER header = TopDownHeader(m_nWidth, -m_nHeight, static_cast<WORD>(m_nBits));
        header.biClrUsed = static_cast<DWORD>(m_colors.size());
        std::memcpy(m_copy.data(), &header, sizeof header);
        if (!m_colors.empty())
            std::memcpy(m_copy.data() + sizeof header, m_colors.data(),
                        m_colors.size() * sizeof(RGBQUAD));
    }
    if (sourceBits < size) {
        std::size_t available = std::min(size - sourceBits, bitsSize);
        if (m_nBits >= 8) {
            const std::size_t rowBytes = bitsSize / static_cast<std::size_t>(m_nHeight);
            available -= available % rowBytes % (static_cast<std::size_t>(m_nBits) / 8);
        }
        std::memcpy(m_copy.data() + bitsOffset, dib + sourceBits, available);
    }
    m_pInfo = reinterpret_cast<const BITMAPINFO*>(m_copy.data());
    m_pBits = m_copy.data() + bitsOffset;
}
