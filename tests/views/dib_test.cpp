// The DIB helpers and the pixel decoder on every kind of DIB the previews hold, and on DIBs
// whose headers promise more than their bytes.

#include "views/dib.h"

#include <gtest/gtest.h>

#include "tools/dwgsamples/dwg_sample_writer.h"

namespace {

std::vector<std::uint8_t> Block(const std::string& bytes) {
    return std::vector<std::uint8_t>(bytes.begin(), bytes.end());
}

}  // namespace

TEST(Dib, DecodesEveryDepthWithInfoAndCoreHeaders) {
    for (int bits : {1, 4, 8, 24}) {
        for (bool core : {false, true}) {
            DibSpec spec = SizedDib(13, 7, bits);
            spec.coreHeader = core;
            spec.seed = static_cast<std::uint32_t>(bits);
            const auto dib = Block(MakeDib(spec));
            EXPECT_EQ(DibWidth(dib), 13);
            EXPECT_EQ(DibHeight(dib), 7);
            const unsigned colors = bits <= 8 ? 1u << bits : 0u;
            EXPECT_EQ(DibNumColors(dib), colors);
            EXPECT_EQ(DibPaletteSize(dib.data(), dib.size()), colors * (core ? 3 : 4));
            std::vector<std::uint8_t> rgb;
            int w = 0, h = 0;
            ASSERT_TRUE(DibToRgb(dib.data(), dib.size(), rgb, w, h));
            for (int y = 0; y < 7; ++y)
                for (int x = 0; x < 13; ++x) {
                    const win::COLORREF c = DibPatternPixel(spec, x, y);
                    const std::uint8_t* p = &rgb[static_cast<std::size_t>(y * 13 + x) * 3];
                    ASSERT_EQ(win::MakeColor(p[0], p[1], p[2]), c)
                        << bits << (core ? " core " : " info ") << x << "," << y;
                }
        }
    }
}

TEST(Dib, TopDownRowsAndAShortColourTable) {
    DibSpec spec = SizedDib(5, 4, 8);
    spec.topDown = true;
    spec.colorsUsed = 40;
    const auto dib = Block(MakeDib(spec));
    EXPECT_EQ(DibNumColors(dib), 40);
    EXPECT_EQ(DibBitsOffset(dib.data(), dib.size()), 40u + 160u);
    const DibPixels pixels(dib.data(), dib.size());
    ASSERT_TRUE(pixels.IsValid());
    EXPECT_EQ(pixels.Height(), 4);
    EXPECT_EQ(pixels.At(4, 3), DibPatternPixel(spec, 4, 3));
}

TEST(Dib, PaletteEntriesBeyondTheCountAreNeitherReadNorWritten) {
    auto dib = Block(MakeDib(SizedDib(4, 4, 4)));
    EXPECT_EQ(DibSetPaletteEntry(dib, 15, 0x00ABCDEF), 1);
    EXPECT_EQ(DibGetPaletteEntry(dib, 15), 0x00ABCDEFu);
    EXPECT_EQ(dib[40 + 15 * 4], 0xAB);  // blue first
    const auto before = dib;
    EXPECT_EQ(DibSetPaletteEntry(dib, 16, 0), 0);
    EXPECT_EQ(DibGetPaletteEntry(dib, 16), 0u);
    EXPECT_EQ(dib, before);

    auto truecolour = Block(MakeDib(SizedDib(4, 4, 24)));
    EXPECT_EQ(DibNumColors(truecolour), 0);
    EXPECT_EQ(DibSetPaletteEntry(truecolour, 0, 0xFFFFFF), 0);
    EXPECT_EQ(DibBitsOffset(truecolour.data(), truecolour.size()), 40u);
    EXPECT_EQ(DibGetPaletteEntry(nullptr, 0, 0), 0u);

    // A colour table cut by the block's end: the entries past it are not there.
    auto cut = Block(MakeDib(SizedDib(2, 2, 8)));
    cut.resize(40 + 10 * 4);
    EXPECT_EQ(DibSetPaletteEntry(cut, 20, 0x123456), 0);
}

// Bytes past the block read as zero: black for direct colours, colour entry 0 for indices.
TEST(Dib, HeadersThatPromiseMoreThanTheBytesHoldReadZeroBytesBeyondTheEnd) {
    for (int bits : {1, 4, 8, 24}) {
        DibSpec spec = SizedDib(16, 16, bits);
        spec.palette = {win::COLORREF{0x123456}};
        auto dib = Block(MakeDib(spec));
        const std::size_t rowBytes = (16u * static_cast<unsigned>(bits) + 31) / 32 * 4;
        // Three of sixteen rows (bottom-up: the last three), and a quarter of the next.
        dib.resize(DibBitsOffset(dib.data(), dib.size()) + rowBytes * 3 + rowBytes / 4);
        const DibPixels pixels(dib.data(), dib.size());
        ASSERT_TRUE(pixels.IsValid());
        EXPECT_EQ(pixels.At(0, 15), DibPatternPixel(spec, 0, 15)) << bits;
        EXPECT_EQ(pixels.At(0, 12), DibPatternPixel(spec, 0, 12)) << bits;
        EXPECT_EQ(pixels.At(15, 12), bits == 24 ? 0u : 0x123456u) << bits;
        EXPECT_EQ(pixels.At(0, 0), bits == 24 ? 0u : 0x123456u) << bits;
    }
    const DibSpec spec = SizedDib(16, 16, 24);
    auto dib = Block(MakeDib(spec));
    dib.resize(40 + 48 * 3);

    // A claim of 60000 by 60000 pixels is refused, not allocated.
    auto huge = Block(MakeDib(SizedDib(2, 2, 24)));
    huge[4] = 0x60;
    huge[5] = 0xEA;
    huge[8] = 0x60;
    huge[9] = 0xEA;
    std::vector<std::uint8_t> rgb;
    int w = 0, h = 0;
    EXPECT_FALSE(DibToRgb(huge.data(), huge.size(), rgb, w, h));
    EXPECT_TRUE(rgb.empty());

    for (std::size_t cut = 0; cut < 12; ++cut)
        EXPECT_FALSE(DibPixels(dib.data(), cut).IsValid()) << cut;
}

// Run-length pictures read back expanded: runs, absolute stretches with their padding, a
// jump, ends of lines and of the picture; what no run reaches is colour entry 0.
TEST(Dib, RunLengthPicturesAreExpandedWhenReadBack) {
    struct Case {
        int bits;
        std::vector<std::uint8_t> runs;
        std::vector<unsigned> indices;  // rows from the top
    };
    const Case cases[] = {
        {8,
         {3, 5, 1, 7, 0, 0,         // bottom row: three 5s, a 7, end of line
          0, 3, 1, 2, 3, 0,         // 1 2 3 as they stand, padded to a whole word
          0, 2, 0, 1, 1, 9, 0, 1},  // one row up, a 9, end of picture
         {0, 0, 0, 9, 1, 2, 3, 0, 5, 5, 5, 7}},
        {4,
         {4, 0xAB, 0, 0,                    // nibbles taking turns
          0, 3, 0x12, 0x30, 1, 0xC0, 0, 0,  // three nibbles in two bytes, no padding
          0, 2, 1, 0, 1, 0xD0},             // one to the right, a 13, and no end mark
         {0, 13, 0, 0, 1, 2, 3, 12, 10, 11, 10, 11}},
    };
    for (const Case& c : cases) {
        std::string dib = MakeDib(SizedDib(4, 3, c.bits));  // 4 by 3 pixels
        const auto plain = Block(dib);
        dib.resize(DibBitsOffset(plain.data(), plain.size()));
        dib[16] = static_cast<char>(c.bits == 8 ? 1 : 2);
        dib.append(c.runs.begin(), c.runs.end());
        std::vector<std::uint8_t> rgb;
        int w = 0, h = 0;
        ASSERT_TRUE(
            DibToRgb(reinterpret_cast<const std::uint8_t*>(dib.data()), dib.size(), rgb, w, h))
            << c.bits;
        ASSERT_EQ(w * h, static_cast<int>(c.indices.size()));
        for (std::size_t i = 0; i < c.indices.size(); ++i) {
            const std::uint8_t* p = &rgb[i * 3];
            EXPECT_EQ(win::MakeColor(p[0], p[1], p[2]), DibGetPaletteEntry(plain, c.indices[i]))
                << c.bits << " bits, pixel " << i;
        }
    }
}
