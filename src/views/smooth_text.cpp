// Anti-aliased text on an RGB buffer: black and white at four times the size, reduced by area,
// then blended through a table.

#include <algorithm>
#include <array>
#include <new>
#include <vector>

#include "foundation/text_encoding.h"
#include "ports/font_rasteriser.h"
#include "ports/port.h"
#include "views/area_reduction.h"
#include "views/image_library.h"
#include "views/image_ops.h"
#include "views/text_layout.h"

namespace {

using BlendTable = std::array<std::array<std::uint8_t, 256>, 256>;

// T[x][y] = y * (x / 255.0), truncated: a mask value of x scales a sample y.
const BlendTable& Blend() {
    static const BlendTable table = [] {
        BlendTable t{};
        for (int x = 0; x < 256; ++x)
            for (int y = 0; y < 256; ++y)
                t[x][y] = static_cast<std::uint8_t>(static_cast<int>(y * (x / 255.0)));
        return t;
    }();
    return table;
}

struct Placement {
    int left;
    int top;
};

void BlendMask(BYTE* image, UINT width, UINT height, UINT stride, const std::vector<BYTE>& mask,
               int maskWidth, int maskHeight, Placement at, win::COLORREF color) {
    const BlendTable& t = Blend();
    const BYTE colour[3] = {win::RedOf(color), win::GreenOf(color), win::BlueOf(color)};
    for (int my = 0; my < maskHeight; ++my) {
        const std::int64_t y = static_cast<std::int64_t>(at.top) + my;
        if (y < 0 || y >= height)
            continue;
        for (int mx = 0; mx < maskWidth; ++mx) {
            const std::int64_t x = static_cast<std::int64_t>(at.left) + mx;
            if (x < 0 || x >= width)
                continue;
            const BYTE a = mask[static_cast<std::size_t>(my) * maskWidth + mx];
            BYTE* p =
                image + static_cast<std::size_t>(y) * stride + static_cast<std::size_t>(x) * 3;
            for (int c = 0; c < 3; ++c)
                p[c] = static_cast<BYTE>(t[255 - a][p[c]] + t[a][colour[c]]);
        }
    }
}

}  // namespace

int IS40_DrawSmoothTextOnRGB2(BYTE* image, UINT width, UINT height, UINT stride,
                              const SmoothTextRequest& request) {
    static const char* const kName = "IS40_DrawSmoothTextOnRGB2";
    ImageOperationScope scope;
    if (image == nullptr || request.font == nullptr || request.rect == nullptr ||
        request.smoothing == 0 || request.smoothing > 16) {
        ReportImageError(kImageBadArgument, kName);
        return 0;
    }
    if (request.text == nullptr || request.rect->IsEmpty()) {
        ReportImageError(kImageOk, kName);
        return 1;
    }
    if (!IsInstalled<FontRasteriser>()) {
        ReportImageError(kImageNoFont, kName);
        return 0;
    }
    FontRasteriser& fonts = Use<FontRasteriser>();
    const int s = static_cast<int>(request.smoothing);
    win::LOGFONTW big = *request.font;
    big.lfHeight *= s;
    if (fonts.LineHeight(big) <= 0) {
        ReportImageError(kImageNoFont, kName);
        return 0;
    }
    const std::wstring text = FromUtf8(request.text);
    const win::RECT& rect = *request.rect;
    const int margin = fonts.TextWidth(L" ", *request.font);  // m; M is s times it
    const int w = rect.Width();
    const int h = rect.Height();
    MonoBitmap mono;
    std::vector<BYTE> wide;
    std::vector<BYTE> mask;
    try {
        mono = MonoBitmap((w + 2 * margin) * s, h * s);
        const std::uint32_t format =
            (request.textFlags & ~kTextCalcRect) | (request.options == 0 ? kTextNoClip : 0u);
        const win::RECT box{margin * s, 0, margin * s + w * s, h * s};
        RasteriseText(fonts, text, box, big, format, {0, 0}, mono);

        const BYTE on = static_cast<BYTE>(static_cast<int>(ImageLibrary().opacity * 255.0));
        wide.resize(mono.bits.size());
        std::transform(mono.bits.begin(), mono.bits.end(), wide.begin(),
                       [on](std::uint8_t bit) { return static_cast<BYTE>(bit * on); });
        const int maskWidth = w + 2 * margin;
        mask.resize(static_cast<std::size_t>(maskWidth) * h);
        ResizeRequest reduce;
        reduce.source = wide.data();
        reduce.sourceWidth = static_cast<UINT>(mono.width);
        reduce.sourceHeight = static_cast<UINT>(mono.height);
        reduce.sourceStride = static_cast<UINT>(mono.width);
        reduce.target = mask.data();
        reduce.targetWidth = static_cast<UINT>(maskWidth);
        reduce.targetHeight = static_cast<UINT>(h);
        reduce.targetStride = static_cast<UINT>(maskWidth);
        reduce.bytesPerPixel = 1;
        if (IS40_ResizeImage(reduce) == 0) {
            ReportImageError(ImageLibrary().lastError, kName);
            return 0;
        }
        BlendMask(image, width, height, stride, mask, maskWidth, h, {rect.left - margin, rect.top},
                  request.color);
    } catch (const std::bad_alloc&) {
        ReportImageError(kImageOutOfMemory, kName);
        return 0;
    }
    ReportImageError(kImageOk, kName);
    return 1;
}

std::vector<BYTE> SmoothTextStrip(int width, int height, win::COLORREF back,
                                  SmoothTextRequest request) {
    std::vector<BYTE> rgb;
    if (width <= 0 || height <= 0)
        return rgb;
    try {
        rgb.resize(static_cast<std::size_t>(width) * height * 3);
    } catch (const std::bad_alloc&) {
        return rgb;
    }
    const win::RECT whole{0, 0, width, height};
    const auto w = static_cast<UINT>(width);
    const auto h = static_cast<UINT>(height);
    IS40_FillSolidRect(rgb.data(), w, h, 3, w * 3, &whole, back, 0);
    request.rect = &whole;
    IS40_DrawSmoothTextOnRGB2(rgb.data(), w, h, w * 3, request);
    return rgb;
}
