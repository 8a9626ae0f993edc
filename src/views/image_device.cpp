// The image operations that meet a canvas: bitmaps in and out, drawing, and the tint.

#include "ports/port.h"
#include "views/image_library.h"
#include "views/image_ops.h"

int IS40_HBITMAPToRGB(Canvas* bitmap, BYTE* rgb) {
    static const char* const kName = "IS40_HBITMAPToRGB";
    ImageOperationScope scope;
    if (bitmap == nullptr || rgb == nullptr) {
        ReportImageError(kImageBadArgument, kName);
        return 0;
    }
    if (!bitmap->ReadRgb(0, 0, bitmap->Width(), bitmap->Height(), rgb)) {
        ReportImageError(kImageNoCapability, kName);
        return 0;
    }
    ReportImageError(kImageOk, kName);
    return 1;
}

std::unique_ptr<Canvas> IS40_DIBToHBITMAP(const BYTE* dib, std::size_t size, Canvas* dc) {
    static const char* const kName = "IS40_DIBToHBITMAP";
    ImageOperationScope scope;
    // Without a device the bitmap is made for the screen's, held for this call only.
    std::unique_ptr<Canvas> screen;
    if (dc == nullptr && IsInstalled<ScreenDevice>()) {
        screen = Use<ScreenDevice>().OpenScreen();
        dc = screen.get();
    }
    const DibPixels pixels(dib, size);
    if (dc == nullptr || !pixels.IsValid()) {
        ReportImageError(dc == nullptr ? kImageNoDevice : kImageCreateBitmapFailed, kName);
        return nullptr;
    }
    std::unique_ptr<Canvas> bitmap = dc->CreateCompatible(pixels.Width(), pixels.Height());
    if (bitmap == nullptr) {
        ReportImageError(kImageCreateBitmapFailed, kName);
        return nullptr;
    }
    bitmap->StretchDib(dib, size, {0, 0, pixels.Width(), pixels.Height()},
                       StretchMode::kColorOnColor);
    ReportImageError(kImageOk, kName);
    return bitmap;
}

int IS40_DrawRGB(Canvas* dc, const BYTE* rgb, UINT width, UINT height, UINT stride, int x, int y) {
    static const char* const kName = "IS40_DrawRGB";
    ImageOperationScope scope;
    if (dc == nullptr || rgb == nullptr) {
        ReportImageError(kImageBadArgument, kName);
        return 0;
    }
    if (width == 0 || height == 0 || stride < static_cast<std::uint64_t>(width) * 3) {
        ReportImageError(kImageBadArgument, kName);
        return 0;
    }
    // A canvas copies the buffer its own way (over a GDI device, a DIB and one blit).
    dc->BlitRgb(rgb, static_cast<int>(width), static_cast<int>(height), static_cast<int>(stride), x,
                y);
    ReportImageError(kImageOk, kName);
    return 1;
}

void AlphaFillRect(Canvas* dc, const win::RECT& rect, win::COLORREF color, unsigned alpha) {
    if (dc == nullptr || alpha > 255 || rect.IsEmpty())
        return;
    dc->AlphaTint(rect, color, static_cast<std::uint8_t>(alpha));
}
