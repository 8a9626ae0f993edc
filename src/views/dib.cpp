#include "views/dib.h"

#include <algorithm>
#include <cstring>

namespace {

std::uint32_t Read32(const std::uint8_t* p, std::size_t size, std::size_t offset) {
    if (p == nullptr || offset + 4 > size)
        return 0;
    return static_cast<std::uint32_t>(p[offset]) |
           (static_cast<std::uint32_t>(p[offset + 1]) << 8) |
           (static_cast<std::uint32_t>(p[offset + 2]) << 16) |
           (static_cast<std::uint32_t>(p[offset + 3]) << 24);
}

std::uint16_t Read16(const std::uint8_t* p, std::size_t size, std::size_t offset) {
    if (p == nullptr || offset + 2 > size)
        return 0;
    return static_cast<std::uint16_t>(p[offset] | (p[offset + 1] << 8));
}

bool IsInfoHeader(const std::uint8_t* dib, std::size_t size) {
    return Read32(dib, size, 0) == kInfoHeaderSize;
}

// Where colour table entry `index` starts and how wide an entry is; false when it isn't there.
bool PaletteEntryPlace(const std::uint8_t* dib, std::size_t size, unsigned index,
                       std::size_t& offset) {
    if (dib == nullptr)
        return false;
    const unsigned count = DibNumColors(dib, size);
    if (count == 0 || static_cast<std::uint64_t>(index) + 1 > count)
        return false;
    const bool info = IsInfoHeader(dib, size);
    offset = info ? kInfoHeaderSize + 4u * static_cast<std::size_t>(index)
                  : kCoreHeaderSize + 3u * static_cast<std::size_t>(index);
    return offset + 3 <= size;
}

// Scales a masked field to 0..255.
std::uint8_t MaskedSample(std::uint32_t value, std::uint32_t mask) {
    if (mask == 0)
        return 0;
    unsigned shift = 0;
    while (((mask >> shift) & 1u) == 0)
        ++shift;
    const std::uint64_t maximum = mask >> shift;
    const std::uint64_t field = (value & mask) >> shift;
    return static_cast<std::uint8_t>((field * 255 + maximum / 2) / maximum);
}

constexpr std::uint32_t kRunLength8 = 1;
constexpr std::uint32_t kRunLength4 = 2;

void Write32(std::uint8_t* p, std::uint32_t value) {
    for (int i = 0; i < 4; ++i)
        p[i] = static_cast<std::uint8_t>(value >> (8 * i));
}

// Walks the runs of a run-length DIB, bottom row first, and puts each pixel's colour index.
class RunLengthReader {
public:
    RunLengthReader(const std::uint8_t* dib, std::size_t size, unsigned bits)
        : m_pDib(dib), m_nSize(size), m_nAt(DibBitsOffset(dib, size)), m_b4(bits == 4) {}

    // Calls put(x, y, index) for every pixel the runs give, y counted from the bottom.
    template <class Put>
    void Read(std::int64_t height, Put put) {
        std::int64_t x = 0;
        std::int64_t y = 0;
        while (y < height && m_nAt + 2 <= m_nSize) {
            const unsigned count = m_pDib[m_nAt++];
            const unsigned value = m_pDib[m_nAt++];
            if (count > 0) {
                // A run: one index repeated, or two nibbles taking turns.
                for (unsigned i = 0; i < count; ++i, ++x)
                    put(x, y, m_b4 ? (i % 2 == 0 ? value >> 4 : value & 15) : value);
            } else if (value == 0) {
                x = 0;
                ++y;
            } else if (value == 1) {
                break;
            } else if (value == 2) {
                x += Next();
                y += Next();
            } else {
                // `value` indices as they stand, padded to a 16-bit boundary.
                const std::size_t start = m_nAt;
                for (unsigned i = 0; i < value; ++i, ++x) {
                    const unsigned byte = At(start + (m_b4 ? i / 2 : i));
                    put(x, y, m_b4 ? (i % 2 == 0 ? byte >> 4 : byte & 15) : byte);
                }
                const std::size_t used = m_b4 ? (value + 1) / 2 : value;
                m_nAt = start + used + used % 2;
            }
        }
    }

private:
    unsigned At(std::size_t offset) const { return offset < m_nSize ? m_pDib[offset] : 0; }
    unsigned Next() { return At(m_nAt++); }

    const std::uint8_t* m_pDib;  // not owned
    std::size_t m_nSize;
    std::size_t m_nAt;
    bool m_b4;
};

// The picture of a run-length DIB (8 bits, or 4) as an uncompressed one of 8 bits with the same
// colour table; pixels no run reaches are index 0. Empty for any other DIB.
DibBlock ExpandRunLengths(const std::uint8_t* dib, std::size_t size) {
    if (!IsInfoHeader(dib, size))
        return {};
    const std::uint32_t compression = Read32(dib, size, 16);
    const unsigned bits = DibBitCount(dib, size);
    if (!(compression == kRunLength8 && bits == 8) && !(compression == kRunLength4 && bits == 4))
        return {};
    const std::int64_t width = DibWidth(dib, size);
    const std::int64_t height = DibHeight(dib, size);
    if (width <= 0 || height <= 0 ||
        static_cast<std::uint64_t>(width) * static_cast<std::uint64_t>(height) >
            DibPixels::kMaxPixels)
        return {};
    const unsigned colors = DibNumColors(dib, size);
    const std::size_t bitsOffset = kInfoHeaderSize + 4u * colors;
    const std::size_t rowBytes = static_cast<std::size_t>(width + 3) / 4 * 4;
    DibBlock out(bitsOffset + rowBytes * static_cast<std::size_t>(height), 0);
    std::memcpy(out.data(), dib, std::min(size, bitsOffset));
    out[14] = 8;
    out[15] = 0;
    Write32(&out[16], 0);       // no compression
    Write32(&out[20], 0);       // image size: the rows say it
    Write32(&out[32], colors);  // the table keeps its length at 8 bits
    RunLengthReader(dib, size, bits).Read(height, [&](std::int64_t x, std::int64_t y, unsigned i) {
        if (x < width && y < height)
            out[bitsOffset + static_cast<std::size_t>(y) * rowBytes + static_cast<std::size_t>(x)] =
                static_cast<std::uint8_t>(i);
    });
    return out;
}

}  // namespace

std::int32_t DibWidth(const std::uint8_t* dib, std::size_t size) {
    if (IsInfoHeader(dib, size))
        return static_cast<std::int32_t>(Read32(dib, size, 4));
    return Read16(dib, size, 4);
}

std::int32_t DibHeight(const std::uint8_t* dib, std::size_t size) {
    if (IsInfoHeader(dib, size))
        return static_cast<std::int32_t>(Read32(dib, size, 8));
    return Read16(dib, size, 6);
}

std::uint16_t DibBitCount(const std::uint8_t* dib, std::size_t size) {
    return IsInfoHeader(dib, size) ? Read16(dib, size, 14) : Read16(dib, size, 10);
}

std::uint16_t DibNumColors(const std::uint8_t* dib, std::size_t size) {
    if (IsInfoHeader(dib, size)) {
        const std::uint32_t used = Read32(dib, size, 32);
        if (used != 0)
            return static_cast<std::uint16_t>(used);
    }
    switch (DibBitCount(dib, size)) {
        case 1:
            return 2;
        case 4:
            return 16;
        case 8:
            return 256;
        default:
            return 0;
    }
}

std::uint32_t DibPaletteSize(const std::uint8_t* dib, std::size_t size) {
    return DibNumColors(dib, size) * (IsInfoHeader(dib, size) ? 4u : 3u);
}

std::size_t DibBitsOffset(const std::uint8_t* dib, std::size_t size) {
    return static_cast<std::size_t>(Read32(dib, size, 0)) + DibPaletteSize(dib, size);
}

win::COLORREF DibGetPaletteEntry(const std::uint8_t* dib, std::size_t size, unsigned index) {
    std::size_t offset = 0;
    if (!PaletteEntryPlace(dib, size, index, offset))
        return 0;
    return win::MakeColor(dib[offset + 2], dib[offset + 1], dib[offset]);
}

int DibSetPaletteEntry(std::uint8_t* dib, std::size_t size, unsigned index, win::COLORREF color) {
    std::size_t offset = 0;
    if (!PaletteEntryPlace(dib, size, index, offset))
        return 0;
    dib[offset] = win::BlueOf(color);
    dib[offset + 1] = win::GreenOf(color);
    dib[offset + 2] = win::RedOf(color);
    return 1;
}

DibPixels::DibPixels(const std::uint8_t* dib, std::size_t size) : m_pDib(dib), m_nSize(size) {
    if (dib == nullptr || size < kCoreHeaderSize)
        return;
    const bool info = IsInfoHeader(dib, size);
    std::int64_t width = DibWidth(dib, size);
    std::int64_t height = DibHeight(dib, size);
    m_nBits = DibBitCount(dib, size);
    std::uint32_t compression = 0;
    if (info) {
        compression = Read32(dib, size, 16);
        if (height < 0) {
            m_bTopDown = true;
            height = -height;
        }
    }
    const bool bitfields = compression == 3 && (m_nBits == 16 || m_nBits == 32);
    if (compression != 0 && !bitfields)
        return;  // run-length pictures are not stored as previews
    if (m_nBits != 1 && m_nBits != 4 && m_nBits != 8 && m_nBits != 16 && m_nBits != 24 &&
        m_nBits != 32)
        return;
    if (width <= 0 || height <= 0 ||
        static_cast<std::uint64_t>(width) * static_cast<std::uint64_t>(height) > kMaxPixels)
        return;
    m_nWidth = static_cast<int>(width);
    m_nHeight = static_cast<int>(height);
    m_nRowBytes = (static_cast<std::size_t>(m_nWidth) * m_nBits + 31) / 32 * 4;
    m_nBitsOffset = DibBitsOffset(dib, size);
    if (bitfields) {
        for (int i = 0; i < 3; ++i)
            m_masks[i] = Read32(dib, size, kInfoHeaderSize + 4u * static_cast<unsigned>(i));
        m_nBitsOffset += 12;
    } else if (m_nBits == 16) {
        m_masks[0] = 0x7C00;
        m_masks[1] = 0x03E0;
        m_masks[2] = 0x001F;
    } else if (m_nBits == 32) {
        m_masks[0] = 0xFF0000;
        m_masks[1] = 0xFF00;
        m_masks[2] = 0xFF;
    }
    const unsigned colors = m_nBits <= 8 ? DibNumColors(dib, size) : 0;
    m_palette.reserve(colors);
    for (unsigned i = 0; i < colors; ++i)
        m_palette.push_back(DibGetPaletteEntry(dib, size, i));
    m_bValid = true;
}

std::uint32_t DibPixels::ReadBits(std::size_t offset, unsigned bytes) const {
    if (offset > m_nSize || m_nSize - offset < bytes)
        return 0;
    std::uint32_t value = 0;
    for (unsigned i = 0; i < bytes; ++i)
        value |= static_cast<std::uint32_t>(m_pDib[offset + i]) << (8 * i);
    return value;
}

win::COLORREF DibPixels::At(int x, int y) const {
    if (!m_bValid || x < 0 || y < 0 || x >= m_nWidth || y >= m_nHeight)
        return 0;
    const std::size_t row =
        m_bTopDown ? static_cast<std::size_t>(y) : static_cast<std::size_t>(m_nHeight - 1 - y);
    const std::size_t start = m_nBitsOffset + row * m_nRowBytes;
    const std::size_t bit = static_cast<std::size_t>(x) * m_nBits;
    if (m_nBits <= 8) {
        // A byte beyond the block reads as 0, so a picture cut short shows colour entry 0
        // there, as it would from a zero-filled block of the size its header claims.
        const std::uint32_t byte = ReadBits(start + bit / 8, 1);
        const unsigned shift = 8 - m_nBits - static_cast<unsigned>(bit % 8);
        const std::uint32_t index = (byte >> shift) & ((1u << m_nBits) - 1);
        return index < m_palette.size() ? m_palette[index] : 0;
    }
    const unsigned bytes = m_nBits / 8;
    const std::size_t offset = start + bit / 8;
    if (offset > m_nSize || m_nSize - offset < bytes)
        return 0;
    const std::uint32_t value = ReadBits(offset, bytes);
    if (m_nBits == 24)
        return win::MakeColor(static_cast<std::uint8_t>(value >> 16),
                              static_cast<std::uint8_t>(value >> 8),
                              static_cast<std::uint8_t>(value));
    return win::MakeColor(MaskedSample(value, m_masks[0]), MaskedSample(value, m_masks[1]),
                          MaskedSample(value, m_masks[2]));
}

bool DibToRgb(const std::uint8_t* dib, std::size_t size, std::vector<std::uint8_t>& rgb, int& width,
              int& height) {
    const DibBlock expanded = ExpandRunLengths(dib, size);
    if (!expanded.empty()) {
        dib = expanded.data();
        size = expanded.size();
    }
    const DibPixels pixels(dib, size);
    if (!pixels.IsValid())
        return false;
    width = pixels.Width();
    height = pixels.Height();
    rgb.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3);
    std::uint8_t* out = rgb.data();
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const win::COLORREF c = pixels.At(x, y);
            *out++ = win::RedOf(c);
            *out++ = win::GreenOf(c);
            *out++ = win::BlueOf(c);
        }
    }
    return true;
}
