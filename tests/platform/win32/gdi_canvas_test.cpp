// The GDI canvas against the software canvas's pixel rules: the same calls give the same
// pixels wherever the rules are exact; text is checked by where it lands.

#include "platform/win32/gdi_canvas.h"

#include <gtest/gtest.h>

#include "gdi_test_support.h"
#include "platform/sim/canvas/software_canvas.h"
#include "platform/win32/gdi_font_rasteriser.h"
#include "tools/dwgsamples/dwg_sample_writer.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

const std::uint8_t* BytesOf(const std::string& dib) {
    return reinterpret_cast<const std::uint8_t*>(dib.data());
}

// Paints `paint` on a GDI canvas and on a software one of the same size; "" when every pixel
// agrees, to `tolerance` in each sample.
template <class Paint>
std::string CompareWithSoftware(int width, int height, Paint paint, int tolerance = 0) {
    const auto gdi = GdiCanvas::Create(width, height);
    if (gdi == nullptr)
        return "no GDI canvas";
    SoftwareCanvas software(width, height);
    paint(*gdi);
    paint(software);
    return FirstDifference(PixelsOf(*gdi), software.Pixels(), width, {0, 0, width, height},
                           tolerance);
}

}  // namespace

TEST(GdiCanvas, FillsFramesBlitsAndMasksToTheSoftwareCanvasPixel) {
    Bytes rgb(7 * 5 * 3 + 2);  // 7 by 5 in rows of 22 bytes
    for (std::size_t i = 0; i < rgb.size(); ++i)
        rgb[i] = static_cast<std::uint8_t>(i * 37);
    Bytes mask(9 * 4);
    for (std::size_t i = 0; i < mask.size(); ++i)
        mask[i] = static_cast<std::uint8_t>(i % 3 == 0 ? 0 : i);
    EXPECT_EQ(CompareWithSoftware(40, 32,
                                  [&](Canvas& canvas) {
                                      canvas.FillRect({-5, -5, 13, 9}, 0x0000FF);
                                      canvas.FillRect({20, 20, 10, 30}, 0x00FF00);  // empty
                                      canvas.Draw3dRect({2, 2, 30, 20}, 0x111111, 0x222222);
                                      canvas.Draw3dRect({35, -3, 45, 50}, 0xFFFFFF, 0x808080);
                                      canvas.Draw3dRect({5, 22, 6, 23}, 0x00FFFF, 0xFF00FF);
                                      canvas.BlitRgb(rgb.data(), 7, 5, 22, -2, 25);
                                      canvas.BlitRgb(rgb.data(), 7, 5, 22, 36, 12);
                                      canvas.FillMask(mask.data(), 9, 4, 9, 10, 29, 0x00C0FFEE);
                                      canvas.FillMask(mask.data(), 3, 4, 9, -1, -1, 0x00123456);
                                  }),
              "");
}

TEST(GdiCanvas, DrawsDibsOfEveryDepthAsTheDecoderReadsThem) {
    DibSpec core = SizedDib(9, 6, 8);
    core.coreHeader = true;
    DibSpec topDown = SizedDib(9, 6, 4);
    topDown.topDown = true;
    const std::string whole = MakeDib(SizedDib(10, 8, 24));
    const std::string dibs[] = {
        MakeDib(SizedDib(13, 6, 1)), MakeDib(topDown),         MakeDib(core),
        DeepDib(10, 4, 16, true),    DeepDib(6, 5, 32, false), whole.substr(0, whole.size() - 50),
        std::string(60, 'x'),  // no picture at all: nothing is drawn
    };
    for (const StretchMode mode :
         {StretchMode::kColorOnColor, StretchMode::kBlackOnWhite, StretchMode::kWhiteOnBlack}) {
        for (const std::string& dib : dibs) {
            const std::uint8_t* bytes = BytesOf(dib);
            const win::RECT at{3, 2, 3 + DibWidth(bytes, dib.size()),
                               2 + std::abs(DibHeight(bytes, dib.size()))};
            // GDI widens 5 and 6-bit samples by repeating their high bits, the decoder by
            // scaling: the two differ by 1 at most.
            const int tolerance = DibBitCount(bytes, dib.size()) == 16 ? 1 : 0;
            EXPECT_EQ(CompareWithSoftware(
                          20, 12,
                          [&](Canvas& canvas) { canvas.StretchDib(bytes, dib.size(), at, mode); },
                          tolerance),
                      "")
                << "mode " << static_cast<int>(mode) << ", bits " << DibBitCount(bytes, dib.size());
        }
    }
}

TEST(GdiCanvas, DrawsTextInsideItsRectangleAndMeasuresLines) {
    const auto canvas = GdiCanvas::Create(80, 40);
    ASSERT_NE(canvas, nullptr);
    const TestFace face;
    ASSERT_EQ(face.Problem(), "");
    const win::LOGFONTW font = face.Font(-16);
    const win::SIZE wide = canvas->MeasureText(L"Drawing1.dwg", font);
    const win::SIZE narrow = canvas->MeasureText(L"D", font);
    const win::SIZE empty = canvas->MeasureText(L"", font);
    EXPECT_GT(wide.cx, narrow.cx);
    EXPECT_GE(wide.cy, 16);
    EXPECT_EQ(narrow.cy, wide.cy);
    EXPECT_EQ(empty.cx, 0);
    EXPECT_EQ(empty.cy, wide.cy);  // an empty line is still a line high

    const win::RECT rect{10, 5, 50, 35};
    canvas->DrawText(L"Drawing1.dwg", rect, font, 0x00FFFFFF,
                     kTextVCenter | kTextSingleLine | kTextEndEllipsis | kTextCalcRect);
    EXPECT_EQ(PixelsOf(*canvas), Bytes(80 * 40 * 3, 0));  // measuring draws nothing
    canvas->DrawText(L"Drawing1.dwg", rect, font, 0x00FFFFFF,
                     kTextVCenter | kTextSingleLine | kTextEndEllipsis);
    const Bytes pixels = PixelsOf(*canvas);
    const win::RECT box = CoverageBox(pixels, 80, {0, 0, 80, 40}, 0);
    EXPECT_FALSE(box.IsEmpty());
    EXPECT_GE(box.left, rect.left);
    EXPECT_LE(box.right, rect.right);
    EXPECT_GE(box.top, rect.top);
    EXPECT_LE(box.bottom, rect.bottom);

    // An ampersand is a character, not the mark of a mnemonic.
    const auto amp = GdiCanvas::Create(30, 20);
    amp->DrawText(L"&", {0, 0, 30, 20}, font, 0x00FFFFFF, kTextSingleLine);
    EXPECT_FALSE(CoverageBox(PixelsOf(*amp), 30, {0, 0, 30, 20}, 0).IsEmpty());
}

TEST(GdiCanvas, MakesBlackCompatibleCanvasesAndCopiesItselfWhole) {
    const auto canvas = GdiCanvas::Create(6, 4);
    ASSERT_NE(canvas, nullptr);
    EXPECT_EQ(canvas->CreateCompatible(5, -1), nullptr);
    const std::unique_ptr<Canvas> other = canvas->CreateCompatible(9, 7);
    ASSERT_NE(other, nullptr);
    EXPECT_EQ(PixelsOf(*other), Bytes(9 * 7 * 3, 0));
    canvas->FillRect({0, 0, 6, 4}, 0x00102030);
    const auto target = GdiCanvas::Create(10, 10);
    ASSERT_TRUE(canvas->BlitTo(target->Dc(), 3, 5));
    EXPECT_EQ(CoverageBox(PixelsOf(*target), 10, {0, 0, 10, 10}, 0), (win::RECT{3, 5, 9, 9}));
}

TEST(GdiCanvas, LeavesNoGdiObjectBehind) {
    const std::string dib = MakeDib(SizedDib(16, 16, 8));
    const TestFace face;  // any face would do: only what painting leaves behind counts here
    const win::LOGFONTW font = face.Font(-12);
    const Bytes mask(8 * 8, 1);
    const Bytes rgb(8 * 8 * 3, 0x7F);
    GdiFontRasteriser fonts;
    auto paintEverything = [&] {
        const auto canvas = GdiCanvas::Create(64, 48);
        ASSERT_NE(canvas, nullptr);
        const auto fallback = GdiCanvas::Create(8, 8, canvas->Dc(), nullptr);
        ASSERT_NE(fallback, nullptr);
        for (Canvas* c : {static_cast<Canvas*>(canvas.get()), static_cast<Canvas*>(fallback.get())}) {
            c->FillRect({0, 0, 64, 48}, 0x00FFFFFF);
            c->Draw3dRect({1, 1, 30, 30}, 0, 0x00808080);
            c->DrawText(L"Drawing1.dwg", {2, 2, 40, 20}, font, 0, kTextSingleLine | kTextEndEllipsis);
            c->MeasureText(L"Drawing1.dwg", font);
            c->BlitRgb(rgb.data(), 8, 8, 24, 3, 3);
            for (const StretchMode mode : {StretchMode::kColorOnColor, StretchMode::kBlackOnWhite,
                                           StretchMode::kWhiteOnBlack})
                c->StretchDib(BytesOf(dib), dib.size(), {0, 0, 8, 8}, mode);
            c->AlphaTint({0, 0, 20, 20}, 0x00D1B499, 68);
            c->FillMask(mask.data(), 8, 8, 8, 4, 4, 0x000000FF);
            ASSERT_NE(c->CreateCompatible(4, 4), nullptr);
        }
        MonoBitmap line(60, 20);
        fonts.DrawLine(L"Drawing1.dwg", font, 0, 0, {0, 0, 60, 20}, line);
    };
    paintEverything();  // the first run makes what GDI keeps for the process
    const int before = LiveGdiObjects();
    ASSERT_GT(before, 0);
    for (int i = 0; i < 10; ++i)
        paintEverything();
    EXPECT_EQ(LiveGdiObjects(), before);
}
