// The image operations on GDI's own bitmaps and device contexts: every depth read back, DIBs
// made into device bitmaps, drawing, the tint on both of its paths, and the capability checks
// through a stand-in for the device's answers.

#include "platform/win32/gdi_image_device.h"

#include <gtest/gtest.h>

#include <cstring>

#include "gdi_test_support.h"
#include "platform/win32/gdi_canvas.h"
#include "platform/sim/canvas/software_canvas.h"
#include "platform/win32/gdi_dib.h"
#include "ports/port.h"
#include "tools/dwgsamples/dwg_sample_writer.h"
#include "views/image_library.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

const BYTE* BytesOf(const std::string& dib) {
    return reinterpret_cast<const BYTE*>(dib.data());
}

Bytes Decoded(const std::string& dib) {
    Bytes rgb;
    int width = 0;
    int height = 0;
    EXPECT_TRUE(DibToRgb(BytesOf(dib), dib.size(), rgb, width, height));
    return rgb;
}

// A DIB section holding the DIB's pixels, as a picture on a display would be.
BitmapHandle SectionOf(const std::string& dib) {
    const GdiDib source(BytesOf(dib), dib.size());
    void* bits = nullptr;
    BitmapHandle section(
        ::CreateDIBSection(nullptr, source.Info(), DIB_RGB_COLORS, &bits, nullptr, 0));
    const std::size_t rowBytes =
        (static_cast<std::size_t>(source.Width()) * source.BitCount() + 31) / 32 * 4;
    if (bits != nullptr)
        std::memcpy(bits, source.Bits(), rowBytes * source.Height());
    return section;
}

// A device whose answers a test chooses; other questions go to the real one.
class ChosenCaps : public DeviceCapsReader {
public:
    explicit ChosenCaps(int raster, int paletteSize = 0)
        : m_raster(raster), m_paletteSize(paletteSize) {}
    int Get(HDC dc, int index) override {
        if (index == RASTERCAPS)
            return m_raster;
        if (index == SIZEPALETTE)
            return m_paletteSize;
        return ::GetDeviceCaps(dc, index);
    }

private:
    int m_raster;
    int m_paletteSize;
};

constexpr int kFullCaps = RC_BITBLT | RC_BITMAP64 | RC_DI_BITMAP | RC_STRETCHBLT;

}  // namespace

TEST(GdiImageDevice, ReadsBitmapsOfEveryDepthIntoRgb) {
    const WindowDc screen = GetWindowDc(nullptr);
    DibSpec core = SizedDib(7, 5, 4);
    core.coreHeader = true;
    DibSpec fewColours = SizedDib(9, 4, 8);
    fewColours.colorsUsed = 20;
    const std::string dibs[] = {
        MakeDib(SizedDib(13, 6, 1)),    MakeDib(SizedDib(9, 7, 4)),  MakeDib(fewColours),
        MakeDib(core),                  MakeDib(SizedDib(11, 3, 24)), DeepDib(10, 4, 16, false),
        DeepDib(10, 4, 16, true),       DeepDib(6, 5, 32, false),     DeepDib(6, 5, 32, true),
    };
    for (const std::string& dib : dibs) {
        const BitmapHandle section = SectionOf(dib);
        ASSERT_TRUE(section);
        const Bytes expected = Decoded(dib);
        Bytes rgb(expected.size(), 0xAB);
        ASSERT_EQ(IS40_HBITMAPToRGB(section.Get(), screen.Get(), nullptr, rgb.data()), 1);
        EXPECT_EQ(ImageLibrary().lastError, 0u);
        EXPECT_EQ(rgb, expected) << "bits " << DibBitCount(BytesOf(dib), dib.size());
    }
}

TEST(GdiImageDevice, MakesDeviceBitmapsOfDibsAndMonochromeOnesOfOneBitDibs) {
    DibSpec blackAndWhite = SizedDib(12, 5, 1);
    blackAndWhite.palette = {0x000000, 0xFFFFFF};
    const std::string dibs[] = {MakeDib(SizedDib(9, 5, 8)), MakeDib(SizedDib(8, 3, 24)),
                                MakeDib(blackAndWhite)};
    const WindowDc screen = GetWindowDc(nullptr);
    for (const std::string& dib : dibs) {
        const BitmapHandle bitmap = IS40_DIBToHBITMAP(BytesOf(dib), dib.size(), nullptr, nullptr);
        ASSERT_TRUE(bitmap);
        BITMAP described{};
        ::GetObjectW(bitmap.Get(), sizeof described, &described);
        const bool oneBit = DibBitCount(BytesOf(dib), dib.size()) == 1;
        EXPECT_EQ(described.bmBitsPixel == 1, oneBit);
        Bytes rgb(static_cast<std::size_t>(described.bmWidth) * described.bmHeight * 3);
        ASSERT_EQ(IS40_HBITMAPToRGB(bitmap.Get(), screen.Get(), nullptr, rgb.data()), 1);
        EXPECT_EQ(rgb, Decoded(dib));
    }
    // A block cut short in its rows makes a bitmap whose missing rows are black.
    const std::string whole = MakeDib(SizedDib(4, 4, 24));
    const std::string cut = whole.substr(0, whole.size() - 2 * 12);
    const BitmapHandle bitmap = IS40_DIBToHBITMAP(BytesOf(cut), cut.size(), nullptr, screen.Get());
    ASSERT_TRUE(bitmap);
    Bytes rgb(4 * 4 * 3, 0xAB);
    ASSERT_EQ(IS40_HBITMAPToRGB(bitmap.Get(), screen.Get(), nullptr, rgb.data()), 1);
    EXPECT_EQ(rgb, Decoded(cut));
}

TEST(GdiImageDevice, DrawsRgbAtFullSizeAsTheCanvasOperationDoes) {
    const auto canvas = GdiCanvas::Create(20, 12);
    ASSERT_NE(canvas, nullptr);
    SoftwareCanvas expected(20, 12);
    Bytes rgb(18 * 3);  // 5 by 3 pixels in rows of 18 bytes, three of them padding
    for (std::size_t i = 0; i < rgb.size(); ++i)
        rgb[i] = static_cast<std::uint8_t>(i * 29);
    ASSERT_EQ(IS40_DrawRGB(canvas->Dc(), rgb.data(), 5, 3, 18, 13, 8, nullptr), 1);
    EXPECT_EQ(ImageLibrary().lastError, 0u);
    ASSERT_EQ(IS40_DrawRGB(&expected, rgb.data(), 5, 3, 18, 13, 8), 1);
    EXPECT_EQ(PixelsOf(*canvas), expected.Pixels());
}

TEST(GdiImageDevice, ReportsBadArgumentsAndPicturesGdiCannotMake) {
    const auto canvas = GdiCanvas::Create(4, 4);
    ASSERT_NE(canvas, nullptr);
    const Bytes rgb(4 * 4 * 3, 0x80);
    EXPECT_EQ(IS40_DrawRGB(nullptr, rgb.data(), 4, 4, 12, 0, 0, nullptr), 0);
    EXPECT_EQ(ImageLibrary().lastError, kImageBadArgument);
    EXPECT_EQ(IS40_DrawRGB(canvas->Dc(), nullptr, 4, 4, 12, 0, 0, nullptr), 0);
    EXPECT_EQ(ImageLibrary().lastError, kImageBadArgument);
    EXPECT_EQ(IS40_DrawRGB(canvas->Dc(), rgb.data(), 0, 4, 12, 0, 0, nullptr), 0);
    EXPECT_EQ(ImageLibrary().lastError, kImageBadArgument);
    EXPECT_EQ(IS40_HBITMAPToRGB(nullptr, canvas->Dc(), nullptr, Bytes(48).data()), 0);
    EXPECT_EQ(ImageLibrary().lastError, kImageBadArgument);

    // Run-length pictures and nonsense headers are not handed to GDI.
    std::string rle = MakeDib(SizedDib(4, 4, 8));
    rle[16] = BI_RLE8;
    EXPECT_FALSE(IS40_DIBToHBITMAP(BytesOf(rle), rle.size(), nullptr, canvas->Dc()));
    EXPECT_EQ(ImageLibrary().lastError, kImageCreateBitmapFailed);

    // A device that claims to read DIBs but makes no bitmap: CreateDIBitmap fails.
    const HDC gone = MemoryDc(::CreateCompatibleDC(nullptr)).Get();
    ChosenCaps claims(kFullCaps);
    const ScopedPort<DeviceCapsReader> seam(claims);
    const std::string dib = MakeDib(SizedDib(4, 4, 24));
    EXPECT_FALSE(IS40_DIBToHBITMAP(BytesOf(dib), dib.size(), nullptr, gone));
    EXPECT_EQ(ImageLibrary().lastError, kImageCreateBitmapFailed);
    EXPECT_EQ(IS40_DrawRGB(gone, rgb.data(), 4, 4, 12, 0, 0, nullptr), 0);
    EXPECT_EQ(ImageLibrary().lastError, kImageCreateBitmapFailed);
    EXPECT_EQ(ImageLibrary().errorLog.back().message.rfind("Error 35 in IS40_DrawRGB", 0), 0u);
}

TEST(GdiImageDevice, RefusesDevicesThatLackACapability) {
    const auto canvas = GdiCanvas::Create(6, 6);
    ASSERT_NE(canvas, nullptr);
    const std::string dib = MakeDib(SizedDib(6, 6, 24));
    const BitmapHandle bitmap = IS40_DIBToHBITMAP(BytesOf(dib), dib.size(), nullptr, canvas->Dc());
    ASSERT_TRUE(bitmap);
    Bytes rgb(6 * 6 * 3, 0x55);
    {
        ChosenCaps noDibs(kFullCaps & ~RC_DI_BITMAP);
        const ScopedPort<DeviceCapsReader> seam(noDibs);
        EXPECT_EQ(IS40_HBITMAPToRGB(bitmap.Get(), canvas->Dc(), nullptr, rgb.data()), 0);
        EXPECT_EQ(ImageLibrary().lastError, kImageNoCapability);
        EXPECT_FALSE(IS40_DIBToHBITMAP(BytesOf(dib), dib.size(), nullptr, canvas->Dc()));
        EXPECT_EQ(ImageLibrary().lastError, kImageNoCapability);
    }
    {
        ChosenCaps noBlit(kFullCaps & ~RC_BITBLT);
        const ScopedPort<DeviceCapsReader> seam(noBlit);
        EXPECT_EQ(IS40_DrawRGB(canvas->Dc(), rgb.data(), 6, 6, 18, 0, 0, nullptr), 0);
        EXPECT_EQ(ImageLibrary().lastError, kImageNoCapability);
    }
    EXPECT_EQ(PixelsOf(*canvas), Bytes(6 * 6 * 3, 0));  // nothing was drawn
}

TEST(GdiImageDevice, PaletteDevicesReadAndMakeBitmapsThroughTemporaryPalettes) {
    const auto canvas = GdiCanvas::Create(8, 8);
    ASSERT_NE(canvas, nullptr);
    ChosenCaps palette(kFullCaps | RC_PALETTE, 256);
    const ScopedPort<DeviceCapsReader> seam(palette);
    const std::string dib = MakeDib(SizedDib(8, 8, 8));
    const HGDIOBJ paletteBefore = ::GetCurrentObject(canvas->Dc(), OBJ_PAL);
    const int objects = LiveGdiObjects();
    {
        const BitmapHandle bitmap =
            IS40_DIBToHBITMAP(BytesOf(dib), dib.size(), nullptr, canvas->Dc());
        ASSERT_TRUE(bitmap);
        Bytes rgb(8 * 8 * 3);
        ASSERT_EQ(IS40_HBITMAPToRGB(bitmap.Get(), canvas->Dc(), nullptr, rgb.data()), 1);
        EXPECT_EQ(rgb, Decoded(dib));
        ASSERT_EQ(IS40_DrawRGB(canvas->Dc(), rgb.data(), 8, 8, 24, 0, 0, nullptr), 1);
        EXPECT_EQ(PixelsOf(*canvas), rgb);
    }
    EXPECT_EQ(::GetCurrentObject(canvas->Dc(), OBJ_PAL), paletteBefore);
    EXPECT_EQ(LiveGdiObjects(), objects);  // the temporary palettes are gone
}

TEST(GdiImageDevice, TintsByTheRuleWithoutAlphaBlendAndWithinTwoWithIt) {
    ASSERT_NE(SystemAlphaBlend(), nullptr);
    for (const unsigned alpha : {68u, 102u, 0u, 255u}) {
        for (const AlphaBlendFunction blend : {AlphaBlendFunction(nullptr), SystemAlphaBlend()}) {
            const auto canvas = GdiCanvas::Create(64, 8);
            ASSERT_NE(canvas, nullptr);
            SoftwareCanvas expected(64, 8);
            for (Canvas* c : {static_cast<Canvas*>(canvas.get()), static_cast<Canvas*>(&expected)}) {
                for (int x = 0; x < 64; ++x)
                    c->FillRect({x, 0, x + 1, 8}, win::MakeColor(x * 4, 255 - x * 4, x * 2));
            }
            // Hangs over the left edge: the part outside is dropped.
            AlphaFillRect(canvas->Dc(), RECT{-3, 2, 40, 6}, 0x00D1B499, alpha, blend);
            expected.AlphaTint({-3, 2, 40, 6}, 0x00D1B499, static_cast<std::uint8_t>(alpha));
            const Bytes after = PixelsOf(*canvas);
            EXPECT_EQ(FirstDifference(after, expected.Pixels(), 64, {0, 0, 64, 8}, blend ? 2 : 0), "")
                << "alpha " << alpha;
            // An alpha above a byte is refused on both paths.
            AlphaFillRect(canvas->Dc(), RECT{0, 0, 64, 8}, 0x00D1B499, 256, blend);
            EXPECT_EQ(PixelsOf(*canvas), after);
        }
    }
}
