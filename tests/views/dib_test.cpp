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

TEST(Dib, HeadersThatPromiseMoreThanTheBytesHoldReadBlackBeyondTheEnd) {
    const DibSpec spec = SizedDib(16, 16, 24);
    auto dib = Block(MakeDib(spec));
    dib.resize(40 + 48 * 3);  // three of sixteen rows (bottom-up: the last three)
    const DibPixels pixels(dib.data(), dib.size());
    ASSERT_TRUE(pixels.IsValid());
    EXPECT_EQ(pixels.At(0, 15), DibPatternPixel(spec, 0, 15));
    EXPECT_EQ(pixels.At(0, 0), 0u);

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
