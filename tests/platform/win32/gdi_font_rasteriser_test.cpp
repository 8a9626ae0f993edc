// Text as one-bit pixels from GDI, checked against GDI's own drawing of the same font, and the
// smooth text of the image operations drawn with it.

#include "platform/win32/gdi_font_rasteriser.h"

#include <gtest/gtest.h>

#include "gdi_test_support.h"
#include "platform/win32/gdi_canvas.h"
#include "ports/port.h"
#include "views/image_ops.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

}  // namespace

TEST(GdiFontRasteriser, DrawsTheOneBitPixelsGdiDrawsClippedAndAddedToTheTarget) {
    const TestFace face;
    ASSERT_EQ(face.Problem(), "");
    GdiFontRasteriser fonts;
    win::LOGFONTW font = face.Font(-16);
    font.lfQuality = NONANTIALIASED_QUALITY;
    const std::wstring text = L"Drawing1.dwg";
    const auto canvas = GdiCanvas::Create(120, 30);
    ASSERT_NE(canvas, nullptr);
    const win::SIZE measured = canvas->MeasureText(text, font);
    EXPECT_EQ(fonts.TextWidth(text, font), measured.cx);
    EXPECT_EQ(fonts.LineHeight(font), measured.cy);

    canvas->DrawText(text, {5, 3, 6, 4}, font, 0x00FFFFFF, kTextSingleLine | kTextNoClip);
    const Bytes drawn = PixelsOf(*canvas);
    MonoBitmap line(120, 30);
    ASSERT_TRUE(fonts.DrawLine(text, font, 5, 3, {0, 0, 120, 30}, line));
    int set = 0;
    for (int i = 0; i < 120 * 30; ++i) {
        ASSERT_EQ(line.bits[i], drawn[i * 3] != 0 ? 1 : 0) << i % 120 << "," << i / 120;
        set += line.bits[i];
    }
    EXPECT_GT(set, 40);

    // Clipped to the first 20 columns and rows 6 on; a pixel set before stays set.
    MonoBitmap clipped(120, 30);
    clipped.bits[119] = 1;
    ASSERT_TRUE(fonts.DrawLine(text, font, 5, 3, {-10, 6, 20, 40}, clipped));
    for (int y = 0; y < 30; ++y) {
        for (int x = 0; x < 120; ++x) {
            const int i = y * 120 + x;
            const int want = x < 20 && y >= 6 ? line.bits[i] : (i == 119 ? 1 : 0);
            ASSERT_EQ(clipped.bits[i], want) << x << "," << y;
        }
    }
    MonoBitmap outside(10, 10);
    EXPECT_TRUE(fonts.DrawLine(text, font, 0, 0, {10, 0, 20, 10}, outside));
    EXPECT_EQ(outside.bits, std::vector<std::uint8_t>(100, 0));
}

TEST(SmoothTextOverGdi, BlendsAntiAliasedTextIntoTheRectangleRowsOnly) {
    const TestFace face;
    ASSERT_EQ(face.Problem(), "");
    GdiFontRasteriser fonts;
    const ScopedPort<FontRasteriser> port(fonts);
    const win::LOGFONTW font = face.Font(-12);
    const unsigned width = 140;
    const unsigned height = 30;
    const win::RECT rect{6, 4, 70, 26};
    Bytes image(width * height * 3, 255);
    SmoothTextRequest request;
    request.text = "Drawing1 with a long name.dwg";
    request.font = &font;
    request.rect = &rect;
    request.textFlags = kTextVCenter | kTextSingleLine | kTextEndEllipsis;
    request.color = 0;
    ASSERT_EQ(IS40_DrawSmoothTextOnRGB2(image.data(), width, height, width * 3, request), 1);

    int grey = 0;
    int dark = 0;
    for (std::size_t i = 0; i < image.size(); ++i) {
        grey += image[i] > 0 && image[i] < 255 ? 1 : 0;
        dark += image[i] < 96 ? 1 : 0;
    }
    EXPECT_GT(grey, 30);  // edges are blended, not cut
    EXPECT_GT(dark, 30);
    const win::RECT box = CoverageBox(image, static_cast<int>(width), {0, 0, 140, 30}, 0x00FFFFFF);
    EXPECT_GE(box.top, rect.top);
    EXPECT_LE(box.bottom, rect.bottom);
    EXPECT_GE(box.left, rect.left);
    EXPECT_LE(box.right, rect.right);  // the ellipsis keeps the line inside
}
