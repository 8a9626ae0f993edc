#pragma once
// A packed DIB made safe to hand to GDI: GDI reads the header, the colour table and every row
// the header claims, with no idea of the block's size. A block that decodes but falls short
// is copied and padded with zeros (black, as the canvas rules want), and a core header is
// widened to an info header, which every GDI call and DrawDib take.

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <vector>

// The header of an uncompressed DIB of `width` by `height`, rows from the top.
BITMAPINFOHEADER TopDownHeader(int width, int height, WORD bits);

class GdiDib {
public:
    GdiDib(const std::uint8_t* dib, std::size_t size);

    // False for what the core's decoder refuses (run-length pictures, odd depths, no pixels).
    bool IsValid() const { return m_pInfo != nullptr; }
    int Width() const { return m_nWidth; }
    int Height() const { return m_nHeight; }
    int BitCount() const { return m_nBits; }
    const BITMAPINFO* Info() const { return m_pInfo; }
    const BITMAPINFOHEADER* Header() const { return &m_pInfo->bmiHeader; }
    const void* Bits() const { return m_pBits; }
    // The colour table, for a palette; empty above 8 bits.
    const std::vector<RGBQUAD>& Colors() const { return m_colors; }

private:
    void CopyWithInfoHeader(const std::uint8_t* dib, std::size_t size, bool info,
                            std::size_t sourceBits, std::size_t bitsSize);

    std::vector<std::uint8_t> m_copy;
    std::vector<RGBQUAD> m_colors;
    const BITMAPINFO* m_pInfo = nullptr;  // into the caller's block or m_copy
    const void* m_pBits = nullptr;
    int m_nWidth = 0;
    int m_nHeight = 0;
    int m_nBits = 0;
};
