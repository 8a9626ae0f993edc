#pragma once
// Helpers on a packed device-independent bitmap: a header, a colour table, then the pixel rows,
// padded to four bytes. The first 32-bit word decides the header: 40 is an info header, anything
// else a core header. Every read is checked against the block's size: a field beyond it reads
// as 0 and an entry beyond it is neither read nor written.

#include <cstddef>
#include <cstdint>
#include <vector>

#include "foundation/win_types.h"

// A packed DIB block, owned by whoever holds it; empty stands for no picture.
using DibBlock = std::vector<std::uint8_t>;

constexpr std::uint32_t kInfoHeaderSize = 40;
constexpr std::uint32_t kCoreHeaderSize = 12;

std::int32_t DibWidth(const std::uint8_t* dib, std::size_t size);
std::int32_t DibHeight(const std::uint8_t* dib, std::size_t size);
std::uint16_t DibBitCount(const std::uint8_t* dib, std::size_t size);
std::uint16_t DibNumColors(const std::uint8_t* dib, std::size_t size);
std::uint32_t DibPaletteSize(const std::uint8_t* dib, std::size_t size);
// Offset of the pixels from the block's start: header plus colour table.
std::size_t DibBitsOffset(const std::uint8_t* dib, std::size_t size);
win::COLORREF DibGetPaletteEntry(const std::uint8_t* dib, std::size_t size, unsigned index);
int DibSetPaletteEntry(std::uint8_t* dib, std::size_t size, unsigned index, win::COLORREF color);

inline std::int32_t DibWidth(const DibBlock& dib) {
    return DibWidth(dib.data(), dib.size());
}
inline std::int32_t DibHeight(const DibBlock& dib) {
    return DibHeight(dib.data(), dib.size());
}
inline std::uint16_t DibNumColors(const DibBlock& dib) {
    return DibNumColors(dib.data(), dib.size());
}
inline win::COLORREF DibGetPaletteEntry(const DibBlock& dib, unsigned index) {
    return DibGetPaletteEntry(dib.data(), dib.size(), index);
}
inline int DibSetPaletteEntry(DibBlock& dib, unsigned index, win::COLORREF color) {
    return DibSetPaletteEntry(dib.data(), dib.size(), index, color);
}

// Random access to the pixels of a DIB for drawing and conversion. Uncompressed DIBs of 1, 4,
// 8, 16, 24 and 32 bits, with BI_RGB or BI_BITFIELDS, rows from the bottom or (negative height)
// from the top. Bytes beyond the block read as 0: an indexed pixel there is colour entry 0, any
// other black, as is an index beyond the colour table.
class DibPixels {
public:
    // Pictures larger than this many pixels are refused: no stored preview comes near it, and
    // a header that claims more must not cost its claim.
    static constexpr std::uint64_t kMaxPixels = 16u * 1024u * 1024u;

    DibPixels(const std::uint8_t* dib, std::size_t size);

    bool IsValid() const { return m_bValid; }
    int Width() const { return m_nWidth; }
    int Height() const { return m_nHeight; }
    // Column x, row y counted from the top, as 0x00BBGGRR.
    win::COLORREF At(int x, int y) const;

private:
    std::uint32_t ReadBits(std::size_t offset, unsigned bytes) const;

    const std::uint8_t* m_pDib;  // not owned
    std::size_t m_nSize = 0;
    bool m_bValid = false;
    bool m_bTopDown = false;
    int m_nWidth = 0;
    int m_nHeight = 0;
    unsigned m_nBits = 0;
    std::size_t m_nBitsOffset = 0;
    std::size_t m_nRowBytes = 0;
    std::uint32_t m_masks[3] = {};
    std::vector<win::COLORREF> m_palette;
};

// The whole DIB as an RGB buffer, tight rows from the top; false if it can't be decoded. Unlike
// DibPixels it also reads run-length DIBs of 8 and 4 bits, expanded first, with pixels that no
// run reaches in colour entry 0.
bool DibToRgb(const std::uint8_t* dib, std::size_t size, std::vector<std::uint8_t>& rgb, int& width,
              int& height);
