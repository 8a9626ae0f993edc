// One picture painted through the software canvas and through GDI: fills, frames, the two
// tints of the marks, text turned on its side by the image operations, text drawn as text, and
// a DIB reduced in each stretch mode. Both are saved as PNG beside the test program
// (gdi-picture-software.png, gdi-picture-gdi.png), and compared where the two must agree.

#include <gtest/gtest.h>


#include "gdi_test_support.h"
#include "platform/sim/canvas/software_canvas.h"
#include "platform/win32/gdi_canvas.h"
#include "platform/win32/gdi_font_rasteriser.h"
#include "ports/port.h"
#include "support/png_writer.h"
#include "support/test_files.h"
#include "tools/dwgsamples/dwg_sample_writer.h"
#include "views/dib.h"
#include "views/image_ops.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr int kWidth = 320;
constexpr int kHeight = 240;
constexpr win::COLORREF kGround = 0x00F0F0F0;
constexpr win::COLORREF kCaption = 0x00D1B499;  // the active caption's colour of the marks

// Where the picture puts each thing, for the comparisons.
const win::RECT kSwatches{10, 10, 180, 40};
const win::RECT kFrames[] = {{8, 8, 182, 42}, {190, 10, 310, 60}, {192, 12, 308, 58}};
const win::RECT kTints[] = {{14, 50, 96, 90}, {104, 50, 186, 90}};
const win::RECT kTurned[] = {{10, 100, 32, 210}, {40, 100, 62, 210}};
const win::RECT kTexts[] = {{80, 100, 180, 124}, {80, 130, 140, 150}};
const win::RECT kStretched[] = {{190, 70, 222, 94}, {230, 70, 262, 94}, {270, 70, 302, 94}};

// 64 by 48, one bit: lines one pixel wide at every column 1 of 4, black on white on the left
// half and white on black on the right, so that halving the picture keeps or drops them by mode.
std::string LinesDib() {
    DibSpec spec = SizedDib(64, 48, 1);
    spec.palette = {0xFFFFFF, 0x000000};
    std::string dib = MakeDib(spec);
    const std::size_t bits = dib.size() - 8 * 48;
    for (int row = 0; row < 48; ++row) {
        char* p = dib.data() + bits + row * 8;
        for (int i = 0; i < 4; ++i)
            p[i] = 0x44;  // 0100 0100: black at columns 1 and 5
        for (int i = 4; i < 8; ++i)
            p[i] = static_cast<char>(0xBB);  // the complement: white lines on black
    }
    return dib;
}

// Smooth text on a white strip, turned a quarter: rotation 0 clockwise, 2 anticlockwise.
Bytes TurnedText(const char* text, const TestFace& face, UINT rotation) {
    const win::LOGFONTW font = face.Font(-12);
    const win::RECT strip{0, 0, 109, 22};  // 110 columns wide: the fill takes one more
    Bytes rgb(110 * 22 * 3);
    IS40_FillSolidRect(rgb.data(), 110, 22, 3, 110 * 3, &strip, 0x00FFFFFF, 0);
    const win::RECT box{3, 0, 107, 22};
    SmoothTextRequest request;
    request.text = text;
    request.font = &font;
    request.rect = &box;
    request.textFlags = kTextVCenter | kTextSingleLine | kTextEndEllipsis;
    request.color = 0x00000080;
    IS40_DrawSmoothTextOnRGB2(rgb.data(), 110, 22, 110 * 3, request);
    IS40_QuickRotateImageInPlace(rgb.data(), 110, 22, rotation, 3, 0);
    return rgb;
}

void PaintPicture(Canvas& canvas, const TestFace& face) {
    canvas.FillRect({0, 0, kWidth, kHeight}, kGround);
    canvas.FillRect({10, 10, 60, 40}, 0x003050C0);
    canvas.FillRect({60, 10, 120, 40}, 0x0040A040);
    canvas.FillRect({120, 10, 180, 40}, 0x00C08020);
    canvas.Draw3dRect(kFrames[0], 0x00FFFFFF, 0x00808080);
    canvas.Draw3dRect(kFrames[1], 0x00808080, 0x00FFFFFF);
    canvas.Draw3dRect(kFrames[2], 0x00404040, 0x00E0E0E0);

    // Stripes under the tints, so that every sample of the rule is met.
    for (int x = 10; x < 190; x += 6)
        canvas.FillRect({x, 46, x + 3, 94}, win::MakeColor(static_cast<std::uint8_t>(x), 40, 200));
    canvas.AlphaTint(kTints[0], kCaption, 68);
    canvas.AlphaTint(kTints[1], kCaption, 102);

    const Bytes down = TurnedText("Drawing1.dwg", face, 0);
    const Bytes up = TurnedText("Drawing2 with a long name.dwg", face, 2);
    IS40_DrawRGB(&canvas, down.data(), 22, 110, 22 * 3, kTurned[0].left, kTurned[0].top);
    IS40_DrawRGB(&canvas, up.data(), 22, 110, 22 * 3, kTurned[1].left, kTurned[1].top);

    const win::LOGFONTW font = face.Font(-13);
    const std::uint32_t format = kTextVCenter | kTextSingleLine | kTextEndEllipsis;
    canvas.DrawText(L"Drawing1.dwg", kTexts[0], font, 0, format);
    canvas.DrawText(L"Drawing2 with a long name.dwg", kTexts[1], font, 0x00800000, format);

    const std::string lines = LinesDib();
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(lines.data());
    canvas.StretchDib(bytes, lines.size(), kStretched[0], StretchMode::kBlackOnWhite);
    canvas.StretchDib(bytes, lines.size(), kStretched[1], StretchMode::kWhiteOnBlack);
    canvas.StretchDib(bytes, lines.size(), kStretched[2], StretchMode::kColorOnColor);
}

}  // namespace

TEST(GdiPictures, TheSoftwareAndTheGdiPictureAgreeWhereTheRulesAreExact) {
    const TestFace face;
    ASSERT_EQ(face.Problem(), "");
    GdiFontRasteriser fonts;
    const ScopedPort<FontRasteriser> port(fonts);
    SoftwareCanvas software(kWidth, kHeight, &fonts);
    const auto gdi = GdiCanvas::Create(kWidth, kHeight);
    ASSERT_NE(gdi, nullptr);
    PaintPicture(software, face);
    PaintPicture(*gdi, face);
    const Bytes expected = software.Pixels();
    const Bytes pixels = PixelsOf(*gdi);
    EXPECT_TRUE(SavePng(BesideProgram(L"gdi-picture-software.png"), expected.data(), kWidth,
                        kHeight, kWidth * 3));
    EXPECT_TRUE(SavePng(BesideProgram(L"gdi-picture-gdi.png"), pixels.data(), kWidth, kHeight,
                        kWidth * 3));

    EXPECT_EQ(FirstDifference(pixels, expected, kWidth, kSwatches), "");
    for (const win::RECT& frame : kFrames)
        EXPECT_EQ(FirstDifference(pixels, expected, kWidth, frame), "");
    for (const win::RECT& turned : kTurned)
        EXPECT_EQ(FirstDifference(pixels, expected, kWidth, turned), "");
    EXPECT_EQ(FirstDifference(pixels, expected, kWidth, kStretched[0]), "");
    EXPECT_EQ(FirstDifference(pixels, expected, kWidth, kStretched[1]), "");
    // Colour on colour: the rule keeps the first pixel of each span, GDI (under Wine) the one
    // in its middle. Both keep one of the span's own.
    const std::string lines = LinesDib();
    const DibPixels source(reinterpret_cast<const std::uint8_t*>(lines.data()), lines.size());
    const win::RECT& halved = kStretched[2];
    for (int y = halved.top; y < halved.bottom; ++y) {
        for (int x = halved.left; x < halved.right; ++x) {
            const std::uint8_t* p = &pixels[(static_cast<std::size_t>(y) * kWidth + x) * 3];
            const win::COLORREF kept = win::MakeColor(p[0], p[1], p[2]);
            const int sx = 2 * (x - halved.left);
            const int sy = 2 * (y - halved.top);
            const bool ofItsSpan = kept == source.At(sx, sy) || kept == source.At(sx + 1, sy) ||
                                   kept == source.At(sx, sy + 1) ||
                                   kept == source.At(sx + 1, sy + 1);
            ASSERT_TRUE(ofItsSpan) << x << "," << y;
        }
    }
    // AlphaBlend divides by 255 and rounds; the rule divides by 256.
    for (const win::RECT& tint : kTints)
        EXPECT_EQ(FirstDifference(pixels, expected, kWidth, tint, 2), "");
    // Text is GDI's own on one side and GDI's one-bit text on the other: only where it lands is
    // the same, to a pixel or two.
    for (const win::RECT& text : kTexts) {
        const win::RECT a = CoverageBox(pixels, kWidth, text, kGround);
        const win::RECT b = CoverageBox(expected, kWidth, text, kGround);
        EXPECT_FALSE(a.IsEmpty());
        EXPECT_NEAR(a.left, b.left, 2);
        EXPECT_NEAR(a.top, b.top, 2);
        EXPECT_NEAR(a.right, b.right, 2);
        EXPECT_NEAR(a.bottom, b.bottom, 2);
    }
}
