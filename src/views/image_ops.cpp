// The image operations that work on buffers alone.

#include <algorithm>
#include <cmath>
#include <cstring>
#include <new>
#include <vector>

#include "views/image_library.h"
#include "views/image_ops.h"

namespace {

// What an operation ends with: its code goes to the report under its name.
int Finish(std::uint32_t code, const char* function) {
    ReportImageError(code, function);
    return code == kImageOk ? 1 : 0;
}

}  // namespace

DibBlock IS40_RGBToDIB(const BYTE* rgb, UINT width, UINT height, UINT stride, DWORD /*flags*/) {
    static const char* const kName = "IS40_RGBToDIB";
    ImageOperationScope scope;
    if (rgb == nullptr || width == 0 || height == 0) {
        Finish(kImageBadArgument, kName);
        return {};
    }
    const std::uint64_t rowBytes = (static_cast<std::uint64_t>(width) * 24 + 31) / 32 * 4;
    const std::uint64_t total = kInfoHeaderSize + rowBytes * height;
    if (total > 2147348438u) {
        Finish(kImageOutOfMemory, kName);
        return {};
    }
    DibBlock dib;
    try {
        dib.assign(static_cast<std::size_t>(total), 0);
    } catch (const std::bad_alloc&) {
        Finish(kImageOutOfMemory, kName);
        return {};
    }
    auto put32 = [&dib](std::size_t offset, std::uint32_t value) {
        for (int i = 0; i < 4; ++i)
            dib[offset + static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(value >> (8 * i));
    };
    put32(0, kInfoHeaderSize);
    put32(4, width);
    put32(8, height);
    dib[12] = 1;   // planes
    dib[14] = 24;  // bits per pixel
    put32(20, static_cast<std::uint32_t>(rowBytes * height));
    for (UINT y = 0; y < height; ++y) {
        const BYTE* in = rgb + static_cast<std::size_t>(height - 1 - y) * stride;
        BYTE* out = dib.data() + kInfoHeaderSize + static_cast<std::size_t>(y * rowBytes);
        for (UINT x = 0; x < width; ++x, in += 3, out += 3) {
            out[0] = in[2];
            out[1] = in[1];
            out[2] = in[0];
        }
    }
    Finish(kImageOk, kName);
    return dib;
}

int IS40_QuickRotateImageInPlace(BYTE* image, UINT width, UINT height, UINT rotation,
                                 UINT bytesPerPixel, DWORD /*flags*/) {
    static const char* const kName = "IS40_QuickRotateImageInPlace";
    ImageOperationScope scope;
    if (image == nullptr || bytesPerPixel == 0 || rotation > 2)
        return Finish(kImageBadArgument, kName);
    const std::size_t bpp = bytesPerPixel;
    const std::size_t w = width;
    const std::size_t h = height;
    if (rotation == 1) {
        // Reverse the order of the rows, then the pixels of each row.
        std::vector<BYTE> row(w * bpp);
        for (std::size_t y = 0; y < h / 2; ++y) {
            BYTE* a = image + y * w * bpp;
            BYTE* b = image + (h - 1 - y) * w * bpp;
            std::memcpy(row.data(), a, w * bpp);
            std::memcpy(a, b, w * bpp);
            std::memcpy(b, row.data(), w * bpp);
        }
        for (std::size_t y = 0; y < h; ++y) {
            BYTE* line = image + y * w * bpp;
            for (std::size_t x = 0; x < w / 2; ++x)
                std::swap_ranges(line + x * bpp, line + (x + 1) * bpp, line + (w - 1 - x) * bpp);
        }
        return Finish(kImageOk, kName);
    }
    std::vector<BYTE> scratch;
    try {
        scratch.resize(w * h * bpp);
    } catch (const std::bad_alloc&) {
        return Finish(kImageOutOfMemory, kName);
    }
    // The result is h wide and w high.
    for (std::size_t y = 0; y < h; ++y) {
        const BYTE* in = image + y * w * bpp;
        for (std::size_t x = 0; x < w; ++x, in += bpp) {
            const std::size_t column = rotation == 0 ? h - 1 - y : y;
            const std::size_t row = rotation == 0 ? x : w - 1 - x;
            std::memcpy(scratch.data() + (row * h + column) * bpp, in, bpp);
        }
    }
    std::memcpy(image, scratch.data(), scratch.size());
    return Finish(kImageOk, kName);
}

int IS40_FillSolidRect(BYTE* image, UINT width, UINT height, UINT bytesPerPixel, UINT stride,
                       const win::RECT* rect, win::COLORREF color, DWORD /*flags*/) {
    static const char* const kName = "IS40_FillSolidRect";
    ImageOperationScope scope;
    if (image == nullptr || rect == nullptr ||
        (bytesPerPixel != 1 && bytesPerPixel != 3 && bytesPerPixel != 4))
        return Finish(kImageBadArgument, kName);
    // A rectangle of no width or height fills nothing, extra column or not.
    if (rect->right == rect->left || rect->bottom == rect->top)
        return Finish(kImageOk, kName);
    // One column more than the rectangle is wide, and no extra row: callers allow for it.
    std::int64_t left = rect->left;
    std::int64_t top = rect->top;
    std::int64_t right = static_cast<std::int64_t>(rect->right) + 1;
    std::int64_t bottom = rect->bottom;
    left = std::max<std::int64_t>(left, 0);
    top = std::max<std::int64_t>(top, 0);
    right = std::min<std::int64_t>(right, width);
    bottom = std::min<std::int64_t>(bottom, height);
    if (left >= right || top >= bottom)
        return Finish(kImageOk, kName);

    const BYTE samples[4] = {win::RedOf(color), win::GreenOf(color), win::BlueOf(color),
                             static_cast<BYTE>(color >> 24)};
    const std::size_t bpp = bytesPerPixel;
    const std::size_t count = static_cast<std::size_t>(right - left);
    const bool uniform = bpp == 1 || (samples[0] == samples[1] && samples[1] == samples[2] &&
                                      (bpp == 3 || samples[3] == samples[0]));
    const bool whole = left == 0 && top == 0 && right == width && bottom == height &&
                       stride == width * bytesPerPixel;
    if (uniform && whole) {
        std::memset(image, samples[0], static_cast<std::size_t>(stride) * height);
        return Finish(kImageOk, kName);
    }
    for (std::int64_t y = top; y < bottom; ++y) {
        BYTE* out =
            image + static_cast<std::size_t>(y) * stride + static_cast<std::size_t>(left) * bpp;
        if (uniform) {
            std::memset(out, samples[0], count * bpp);
            continue;
        }
        for (std::size_t x = 0; x < count; ++x, out += bpp)
            std::memcpy(out, samples, bpp);
    }
    return Finish(kImageOk, kName);
}

int IS40_AdjustGamma(BYTE* image, UINT width, UINT height, UINT bytesPerPixel, UINT stride,
                     double gamma, DWORD /*flags*/) {
    static const char* const kName = "IS40_AdjustGamma";
    ImageOperationScope scope;
    if (image == nullptr || bytesPerPixel == 0 || !(gamma >= 0.0))
        return Finish(kImageBadArgument, kName);
    const double exponent = gamma == 0.0 ? 1.0 : 1.0 / gamma;
    BYTE table[256];
    for (int i = 0; i < 256; ++i) {
        // 256, not 255, on both sides: the table has always been built so.
        table[i] = static_cast<BYTE>(static_cast<int>(std::pow(i * 0.00390625, exponent) * 256.0));
    }
    const std::size_t rowSamples = static_cast<std::size_t>(width) * bytesPerPixel;
    for (UINT y = 0; y < height; ++y) {
        BYTE* row = image + static_cast<std::size_t>(y) * stride;
        for (std::size_t i = 0; i < rowSamples; ++i)
            row[i] = table[row[i]];
    }
    return Finish(kImageOk, kName);
}

int IS40_SharpenImage(const BYTE* source, UINT width, UINT height, UINT bytesPerPixel,
                      UINT sourceStride, BYTE* target, UINT targetStride, int level,
                      UINT /*flags*/) {
    static const char* const kName = "IS40_SharpenImage";
    ImageOperationScope scope;
    if (source == nullptr || target == nullptr || source == target || bytesPerPixel == 0 ||
        bytesPerPixel > 8)
        return Finish(kImageBadArgument, kName);
    const int k = std::clamp(level, 0, 100) * 5;
    const std::size_t bpp = bytesPerPixel;
    for (UINT y = 0; y < height; ++y) {
        // At an edge the missing row or column repeats the edge one.
        const BYTE* rows[3] = {
            source + static_cast<std::size_t>(y == 0 ? 0 : y - 1) * sourceStride,
            source + static_cast<std::size_t>(y) * sourceStride,
            source + static_cast<std::size_t>(y + 1 < height ? y + 1 : y) * sourceStride};
        BYTE* out = target + static_cast<std::size_t>(y) * targetStride;
        for (UINT x = 0; x < width; ++x) {
            const std::size_t columns[3] = {(x == 0 ? 0 : x - 1) * bpp, x * bpp,
                                            (x + 1 < width ? x + 1 : x) * bpp};
            for (std::size_t c = 0; c < bpp; ++c) {
                int sum = 0;
                for (const BYTE* row : rows)
                    sum += row[columns[0] + c] + row[columns[1] + c] + row[columns[2] + c];
                const int p = rows[1][columns[1] + c];
                const int value = p - (((sum - 9 * p) * k) >> 10);
                out[x * bpp + c] = static_cast<BYTE>(std::clamp(value, 0, 255));
            }
        }
    }
    return Finish(kImageOk, kName);
}
