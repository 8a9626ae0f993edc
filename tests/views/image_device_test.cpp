// The operations that meet a canvas, smooth text, and the software canvas's pixel rules that
// the window system's canvas is compared against.

#include <gtest/gtest.h>

#include "platform/sim/canvas/software_canvas.h"
#include "ports/port.h"
#include "tools/dwgsamples/dwg_sample_writer.h"
#include "views/image_library.h"
#include "views/image_ops.h"
#include "views/text_layout.h"
#include "views_test_support.h"

#ifdef TABROW_HAS_FREETYPE
#include "platform/sim/canvas/freetype_font_rasteriser.h"
#endif

namespace {

using Bytes = std::vector<std::uint8_t>;

win::LOGFONTW Font(int height) {
    win::LOGFONTW font;
    font.lfHeight = height;
    return font;
}

}  // namespace

TEST(SoftwareCanvas, FillsFramesTintsAndMasksToThePixel) {
    SoftwareCanvas canvas(10, 8);
    canvas.FillRect({-5, -5, 3, 2}, 0x0000FF);
    EXPECT_EQ(canvas.PixelAt(2, 1), 0x0000FFu);
    EXPECT_EQ(canvas.PixelAt(3, 1), 0u);
    EXPECT_EQ(canvas.PixelAt(2, 2), 0u);

    canvas.Draw3dRect({1, 1, 6, 5}, 0x111111, 0x222222);
    EXPECT_EQ(canvas.PixelAt(1, 1), 0x111111u);
    EXPECT_EQ(canvas.PixelAt(4, 1), 0x111111u);
    EXPECT_EQ(canvas.PixelAt(5, 1), 0x222222u);  // the top row less its last pixel
    EXPECT_EQ(canvas.PixelAt(1, 3), 0x111111u);
    EXPECT_EQ(canvas.PixelAt(1, 4), 0x222222u);
    EXPECT_EQ(canvas.PixelAt(3, 3), 0u);

    canvas.FillRect({0, 0, 10, 8}, 0x00C86432);  // r 0x32, g 0x64, b 0xC8
    AlphaFillRect(&canvas, {0, 0, 1, 1}, 0x00FFFFFF, 68);
    // (255 * 68 + 0x32 * 187) >> 8 = 104; green (17340 + 18700) >> 8 = 140; blue 213.
    EXPECT_EQ(canvas.PixelAt(0, 0), win::MakeColor(104, 140, 213));
    AlphaFillRect(&canvas, {1, 0, 2, 1}, 0x00FFFFFF, 256);
    EXPECT_EQ(canvas.PixelAt(1, 0), 0x00C86432u);

    const Bytes mask = {1, 0, 0, 1};
    canvas.FillMask(mask.data(), 2, 2, 2, 8, 6, 0x0000FF00);
    EXPECT_EQ(canvas.PixelAt(8, 6), 0x0000FF00u);
    EXPECT_EQ(canvas.PixelAt(9, 6), 0x00C86432u);
    EXPECT_EQ(canvas.PixelAt(9, 7), 0x0000FF00u);
}

TEST(SoftwareCanvas, StretchModesKeepBlackOrWhiteLinesWhenReducing) {
    // Four columns: white, black, white, white; halved to two.
    DibSpec spec = SizedDib(4, 1, 1);
    spec.palette = {0xFFFFFF, 0x000000};
    std::string dib = MakeDib(spec);
    dib.back() = 0;
    dib[dib.size() - 4] = static_cast<char>(0x40);  // bits 0100: the second pixel is black
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(dib.data());
    SoftwareCanvas canvas(2, 1);
    canvas.StretchDib(bytes, dib.size(), {0, 0, 2, 1}, StretchMode::kBlackOnWhite);
    EXPECT_EQ(canvas.PixelAt(0, 0), 0u);
    EXPECT_EQ(canvas.PixelAt(1, 0), 0xFFFFFFu);
    canvas.StretchDib(bytes, dib.size(), {0, 0, 2, 1}, StretchMode::kWhiteOnBlack);
    EXPECT_EQ(canvas.PixelAt(0, 0), 0xFFFFFFu);
    canvas.StretchDib(bytes, dib.size(), {0, 0, 2, 1}, StretchMode::kColorOnColor);
    EXPECT_EQ(canvas.PixelAt(0, 0), 0xFFFFFFu);  // the first of the pair
    // Enlarging repeats pixels.
    SoftwareCanvas wide(8, 2);
    wide.StretchDib(bytes, dib.size(), {0, 0, 8, 2}, StretchMode::kColorOnColor);
    EXPECT_EQ(wide.PixelAt(2, 1), 0u);
    EXPECT_EQ(wide.PixelAt(3, 1), 0u);
    EXPECT_EQ(wide.PixelAt(4, 0), 0xFFFFFFu);
}

TEST(DeviceOperations, BitmapsRoundTripThroughRgbAndDibs) {
    SoftwareCanvas screen(40, 30);
    const DibSpec spec = SizedDib(9, 5, 8);
    const std::string dib = MakeDib(spec);
    std::unique_ptr<Canvas> bitmap =
        IS40_DIBToHBITMAP(reinterpret_cast<const std::uint8_t*>(dib.data()), dib.size(), &screen);
    ASSERT_NE(bitmap, nullptr);
    Bytes rgb(9 * 5 * 3);
    ASSERT_EQ(IS40_HBITMAPToRGB(bitmap.get(), rgb.data()), 1);
    EXPECT_EQ(win::MakeColor(rgb[3 * 10], rgb[3 * 10 + 1], rgb[3 * 10 + 2]),
              DibPatternPixel(spec, 1, 1));

    ASSERT_EQ(IS40_DrawRGB(&screen, rgb.data(), 9, 5, 27, 30, 27), 1);
    EXPECT_EQ(screen.PixelAt(31, 28), DibPatternPixel(spec, 1, 1));
    EXPECT_EQ(screen.PixelAt(29, 28), 0u);

    const DibBlock back = IS40_RGBToDIB(rgb.data(), 9, 5, 27, 0);
    Bytes again;
    int w = 0, h = 0;
    ASSERT_TRUE(DibToRgb(back.data(), back.size(), again, w, h));
    EXPECT_EQ(again, rgb);

    EXPECT_EQ(IS40_DrawRGB(nullptr, rgb.data(), 9, 5, 27, 0, 0), 0);
    EXPECT_EQ(ImageLibrary().lastError, kImageBadArgument);
    EXPECT_EQ(IS40_DIBToHBITMAP(nullptr, 0, &screen), nullptr);
}

// With no device given, the bitmap is made for the screen's; with no screen there is none.
TEST(DeviceOperations, ADibWithoutADeviceIsMadeForTheScreens) {
    const DibSpec spec = SizedDib(7, 3, 24);
    const std::string dib = MakeDib(spec);
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(dib.data());
    EXPECT_EQ(IS40_DIBToHBITMAP(bytes, dib.size(), nullptr), nullptr);
    EXPECT_EQ(ImageLibrary().lastError, kImageNoDevice);

    SoftwareScreen screenDevice(64, 48);
    const ScopedPort<ScreenDevice> port(screenDevice);
    const std::unique_ptr<Canvas> bitmap = IS40_DIBToHBITMAP(bytes, dib.size(), nullptr);
    ASSERT_NE(bitmap, nullptr);
    EXPECT_EQ(ImageLibrary().lastError, kImageOk);
    Bytes rgb(7 * 3 * 3);
    ASSERT_EQ(IS40_HBITMAPToRGB(bitmap.get(), rgb.data()), 1);
    EXPECT_EQ(win::MakeColor(rgb[3 * 13], rgb[3 * 13 + 1], rgb[3 * 13 + 2]),
              DibPatternPixel(spec, 6, 1));
}

TEST(TextLayout, AlignsCentresAndCutsWithAnEllipsis) {
    BoxFontRasteriser fonts;  // 8 pixels a character at height 16
    const win::LOGFONTW font = Font(-16);
    const TextLayout centred = LayOutText(fonts, L"abcd", {0, 0, 100, 40}, font,
                                          kTextCenter | kTextVCenter | kTextSingleLine);
    ASSERT_EQ(centred.lines.size(), 1u);
    EXPECT_EQ(centred.lines[0].x, 34);
    EXPECT_EQ(centred.lines[0].top, 12);
    const TextLayout right = LayOutText(fonts, L"ab", {0, 0, 100, 40}, font, kTextRight);
    EXPECT_EQ(right.lines[0].x, 84);
    const TextLayout cut =
        LayOutText(fonts, L"abcdefghij", {0, 0, 50, 16}, font, kTextSingleLine | kTextEndEllipsis);
    EXPECT_EQ(cut.lines[0].text, L"abc...");  // 48 of 50 pixels
    const TextLayout two = LayOutText(fonts, L"one\ntwo", {0, 0, 100, 100}, font, 0);
    ASSERT_EQ(two.lines.size(), 2u);
    EXPECT_EQ(two.lines[1].top, 16);
    EXPECT_EQ(two.bounds, (win::RECT{0, 0, 24, 32}));
}

TEST(SmoothText, BlendsAnAntiAliasedMaskInsideTheRectangleOnly) {
    BoxFontRasteriser fonts;
    ScopedPort<FontRasteriser> port(fonts);
    const unsigned w = 60;
    const unsigned h = 30;
    Bytes image(w * h * 3, 255);
    const win::LOGFONTW font = Font(-16);
    const win::RECT rect{10, 5, 50, 25};
    SmoothTextRequest request;
    request.text = "AB";
    request.font = &font;
    request.rect = &rect;
    request.textFlags = kTextVCenter | kTextSingleLine | kTextEndEllipsis;
    request.color = 0x000000FF;  // red
    ASSERT_EQ(IS40_DrawSmoothTextOnRGB2(image.data(), w, h, w * 3, request), 1);
    // The line is 16 high, centred at 7..23; the box of "A" covers columns 10..18 less a
    // border of a quarter pixel.
    const std::uint8_t* inside = &image[(14 * w + 13) * 3];
    EXPECT_EQ(inside[0], 255);
    EXPECT_EQ(inside[1], 0);
    EXPECT_EQ(inside[2], 0);
    for (unsigned y = 0; y < h; ++y)
        for (unsigned x = 0; x < w; ++x) {
            const std::uint8_t* p = &image[(y * w + x) * 3];
            const bool outside = x < 10 - 4 || x >= 50 + 4 || y < 5 || y >= 25;
            if (outside) {
                ASSERT_EQ(p[1], 255) << x << "," << y;
            }
        }

    // Cut by the image's edge: nothing outside the buffer, nothing outside the rectangle.
    Bytes small(20 * 10 * 3, 255);
    const win::RECT over{5, 0, 40, 20};
    request.rect = &over;
    EXPECT_EQ(IS40_DrawSmoothTextOnRGB2(small.data(), 20, 10, 60, request), 1);

    request.text = nullptr;
    EXPECT_EQ(IS40_DrawSmoothTextOnRGB2(image.data(), w, h, w * 3, request), 1);
    request.font = nullptr;
    EXPECT_EQ(IS40_DrawSmoothTextOnRGB2(image.data(), w, h, w * 3, request), 0);
    EXPECT_EQ(ImageLibrary().lastError, kImageBadArgument);
}

TEST(SmoothText, HalfCoveredPixelsBlendThroughTheTable) {
    // A glyph edge at a quarter pixel: the box font at height 18 has cells of 9 (at 4x, 36 and
    // borders of one 4x pixel), so mask values between 0 and 255 appear.
    BoxFontRasteriser fonts;
    ScopedPort<FontRasteriser> port(fonts);
    Bytes image(40 * 20 * 3, 0);
    const win::LOGFONTW font = Font(-18);
    const win::RECT rect{4, 0, 36, 20};
    SmoothTextRequest request;
    request.text = "X";
    request.font = &font;
    request.rect = &rect;
    request.color = 0x00FFFFFF;
    ASSERT_EQ(IS40_DrawSmoothTextOnRGB2(image.data(), 40, 20, 120, request), 1);
    // Column 4 holds 4x columns 16..19 of the mask's text area offset by the margin; its
    // first 4x column is the glyph's border: coverage 3 of 4, value T[191][255] = 191.
    const std::uint8_t* edge = &image[(5 * 40 + 4) * 3];
    EXPECT_EQ(edge[0], 191);
    EXPECT_EQ(edge[0], edge[2]);
}

#ifdef TABROW_HAS_FREETYPE
TEST(FreeTypeFonts, ChoosesFacesAndDrawsReadableText) {
    win::LOGFONTW font = Font(-14);
    EXPECT_EQ(FreeTypeFontRasteriser::FaceFileFor(font), "DejaVuSans.ttf");
    font.lfWeight = 700;
    font.lfItalic = 1;
    EXPECT_EQ(FreeTypeFontRasteriser::FaceFileFor(font), "DejaVuSans-BoldOblique.ttf");
    const char16_t courier[] = u"Courier New";
    std::copy(std::begin(courier), std::end(courier), font.lfFaceName);
    EXPECT_EQ(FreeTypeFontRasteriser::FaceFileFor(font), "DejaVuSansMono-BoldOblique.ttf");

    FreeTypeFontRasteriser fonts;
    const win::LOGFONTW plain = Font(-14);
    EXPECT_GE(fonts.LineHeight(plain), 14);
    EXPECT_GT(fonts.TextWidth(L"WWW", plain), fonts.TextWidth(L"iii", plain));
    SoftwareCanvas canvas(120, 30, &fonts);
    canvas.DrawText(L"Drawing1.dwg", {0, 0, 120, 30}, plain, 0x00FFFFFF,
                    kTextCenter | kTextVCenter | kTextSingleLine);
    int lit = 0;
    for (int y = 0; y < 30; ++y)
        for (int x = 0; x < 120; ++x)
            lit += canvas.PixelAt(x, y) == 0x00FFFFFFu;
    EXPECT_GT(lit, 50);
    // Unknown faces fall back to the default one, and a missing folder makes no font.
    FreeTypeFontRasteriser nowhere("/nonexistent/");
    EXPECT_EQ(nowhere.LineHeight(plain), 0);
}
#endif
