#include "platform/win32/gdi_image_device.h"

#include <cstring>
#include <new>
#include <optional>
#include <vector>

#include "platform/win32/gdi_dib.h"
#include "ports/port.h"
#include "views/dib.h"
#include "views/image_library.h"

namespace {

int Fail(std::uint32_t code, const char* function) {
    ReportImageError(code, function);
    return 0;
}

// The system palette's first 255 entries, for reading a bitmap on a palette device.
PaletteHandle SystemPalette(HDC dc) {
    constexpr WORD kEntries = 255;
    std::vector<std::uint8_t> block(sizeof(LOGPALETTE) + kEntries * sizeof(PALETTEENTRY));
    auto* palette = reinterpret_cast<LOGPALETTE*>(block.data());
    palette->palVersion = 0x300;
    palette->palNumEntries = kEntries;
    ::GetSystemPaletteEntries(dc, 0, kEntries, palette->palPalEntry);
    return PaletteHandle(::CreatePalette(palette));
}

PaletteHandle PaletteOf(const std::vector<RGBQUAD>& colors) {
    std::vector<std::uint8_t> block(sizeof(LOGPALETTE) + colors.size() * sizeof(PALETTEENTRY));
    auto* palette = reinterpret_cast<LOGPALETTE*>(block.data());
    palette->palVersion = 0x300;
    palette->palNumEntries = static_cast<WORD>(colors.size());
    for (std::size_t i = 0; i < colors.size(); ++i)
        palette->palPalEntry[i] = {colors[i].rgbRed, colors[i].rgbGreen, colors[i].rgbBlue, 0};
    return PaletteHandle(::CreatePalette(palette));
}

// The bitmap as a packed DIB of its own depth, bottom-up, with a full colour table at 8 bits
// or fewer and the three masks when the device gives bit fields. Empty if GDI refuses.
std::vector<std::uint8_t> ReadDib(HBITMAP bitmap, HDC dc) {
    BITMAP described{};
    if (::GetObjectW(bitmap, sizeof described, &described) == 0 || described.bmWidth <= 0 ||
        described.bmHeight <= 0)
        return {};
    const unsigned bits = static_cast<unsigned>(described.bmPlanes) * described.bmBitsPixel;
    const auto rows = static_cast<UINT>(described.bmHeight);
    // The first call, with no pixels and no bit count, fills in the header; the room behind
    // it is for a table that GDI may write as well.
    std::vector<std::uint8_t> first(sizeof(BITMAPINFOHEADER) + 256 * sizeof(RGBQUAD));
    auto* asked = reinterpret_cast<BITMAPINFOHEADER*>(first.data());
    asked->biSize = sizeof(BITMAPINFOHEADER);
    if (::GetDIBits(dc, bitmap, 0, rows, nullptr, reinterpret_cast<BITMAPINFO*>(first.data()),
                    DIB_RGB_COLORS) == 0)
        return {};
    const bool bitfields = asked->biCompression == BI_BITFIELDS && (bits == 16 || bits == 32);
    BITMAPINFOHEADER header = *asked;
    header.biBitCount = static_cast<WORD>(bits);
    header.biCompression = bitfields ? BI_BITFIELDS : BI_RGB;
    header.biHeight = described.bmHeight;
    header.biClrUsed = 0;
    header.biClrImportant = 0;
    const std::size_t table = bits <= 8 ? (std::size_t{1} << bits) * sizeof(RGBQUAD)
                                        : (bitfields ? 3 * sizeof(DWORD) : 0);
    const std::size_t rowBytes = (static_cast<std::size_t>(described.bmWidth) * bits + 31) / 32 * 4;
    header.biSizeImage = static_cast<DWORD>(rowBytes * rows);
    const std::size_t offset = sizeof(BITMAPINFOHEADER) + table;

    std::vector<std::uint8_t> dib(offset + header.biSizeImage);
    std::memcpy(dib.data(), &header, sizeof header);
    if (::GetDIBits(dc, bitmap, 0, rows, dib.data() + offset,
                    reinterpret_cast<BITMAPINFO*>(dib.data()), DIB_RGB_COLORS) !=
        static_cast<int>(rows))
        return {};
    // The layout is the one set above, whatever GDI wrote back into the header.
    std::memcpy(dib.data(), &header, sizeof header);
    return dib;
}

}  // namespace

int DeviceCaps(HDC dc, int index) {
    if (IsInstalled<DeviceCapsReader>())
        return Use<DeviceCapsReader>().Get(dc, index);
    return ::GetDeviceCaps(dc, index);
}

int IS40_HBITMAPToRGB(HBITMAP bitmap, HDC dc, HPALETTE palette, BYTE* rgb) {
    static const char* const kName = "IS40_HBITMAPToRGB";
    ImageOperationScope scope;
    if (bitmap == nullptr || dc == nullptr || rgb == nullptr)
        return Fail(kImageBadArgument, kName);
    const int caps = DeviceCaps(dc, RASTERCAPS);
    if ((caps & RC_DI_BITMAP) == 0)
        return Fail(kImageNoCapability, kName);
    PaletteHandle temporary;
    if ((caps & RC_PALETTE) != 0 && palette == nullptr) {
        temporary = SystemPalette(dc);
        palette = temporary.Get();
    }
    std::optional<PaletteGuard> realised;
    if (palette != nullptr)
        realised.emplace(dc, palette);
    try {
        const std::vector<std::uint8_t> dib = ReadDib(bitmap, dc);
        std::vector<std::uint8_t> pixels;
        int width = 0;
        int height = 0;
        if (dib.empty() || !DibToRgb(dib.data(), dib.size(), pixels, width, height))
            return Fail(kImageNoDevice, kName);
        std::memcpy(rgb, pixels.data(), pixels.size());
    } catch (const std::bad_alloc&) {
        return Fail(kImageOutOfMemory, kName);
    }
    ReportImageError(kImageOk, kName);
    return 1;
}

namespace {

constexpr const char* kDibToBitmap = "IS40_DIBToHBITMAP";

// The work of IS40_DIBToHBITMAP, which reports its outcome; it may throw only bad_alloc.
BitmapHandle MakeDeviceBitmap(const BYTE* dib, std::size_t size, HPALETTE palette, HDC dc) {
    const GdiDib source(dib, size);
    // A 1-bit picture is made on a memory context, whose bitmap is monochrome, so that it
    // stays monochrome; any other on the screen's context.
    MemoryDc memory;
    WindowDc screen;
    if (dc == nullptr) {
        if (source.IsValid() && source.BitCount() == 1) {
            memory = MemoryDc(::CreateCompatibleDC(nullptr));
            dc = memory.Get();
        } else {
            screen = GetWindowDc(nullptr);
            dc = screen.Get();
        }
        if (dc == nullptr) {
            Fail(kImageNoDevice, kDibToBitmap);
            return {};
        }
    }
    const int caps = DeviceCaps(dc, RASTERCAPS);
    if ((caps & RC_DI_BITMAP) == 0) {
        Fail(kImageNoCapability, kDibToBitmap);
        return {};
    }
    if (!source.IsValid()) {
        Fail(kImageCreateBitmapFailed, kDibToBitmap);
        return {};
    }
    PaletteHandle own;
    if (palette == nullptr && (caps & RC_PALETTE) != 0 && DeviceCaps(dc, SIZEPALETTE) <= 256 &&
        !source.Colors().empty()) {
        own = PaletteOf(source.Colors());
        palette = own.Get();
    }
    std::optional<PaletteGuard> realised;
    if (palette != nullptr)
        realised.emplace(dc, palette);
    BitmapHandle bitmap(::CreateDIBitmap(dc, source.Header(), CBM_INIT, source.Bits(),
                                         source.Info(), DIB_RGB_COLORS));
    if (!bitmap) {
        Fail(kImageCreateBitmapFailed, kDibToBitmap);
        return {};
    }
    ReportImageError(kImageOk, kDibToBitmap);
    return bitmap;
}

}  // namespace

BitmapHandle IS40_DIBToHBITMAP(const BYTE* dib, std::size_t size, HPALETTE palette, HDC dc) {
    ImageOperationScope scope;
    if (dib == nullptr) {
        Fail(kImageBadArgument, kDibToBitmap);
        return {};
    }
    try {
        return MakeDeviceBitmap(dib, size, palette, dc);
    } catch (const std::bad_alloc&) {
        Fail(kImageOutOfMemory, kDibToBitmap);
        return {};
    }
}

int IS40_DrawRGB(HDC dc, const BYTE* rgb, UINT width, UINT height, UINT stride, int x, int y,
                 HPALETTE palette) {
    static const char* const kName = "IS40_DrawRGB";
    ImageOperationScope scope;
    if (dc == nullptr || rgb == nullptr)
        return Fail(kImageBadArgument, kName);
    BitmapHandle bitmap;
    {
        const DibBlock dib = IS40_RGBToDIB(rgb, width, height, stride, 0);
        if (dib.empty())
            return Fail(ImageLibrary().lastError, kName);
        bitmap = IS40_DIBToHBITMAP(dib.data(), dib.size(), palette, dc);
        if (!bitmap)
            return Fail(ImageLibrary().lastError, kName);
    }
    const int caps = DeviceCaps(dc, RASTERCAPS);
    if ((caps & RC_BITBLT) == 0)
        return Fail(kImageNoCapability, kName);
    MemoryDc memory(::CreateCompatibleDC(dc));
    if (!memory)
        return Fail(kImageNoDevice, kName);
    const auto used =
        palette != nullptr ? palette : static_cast<HPALETTE>(::GetStockObject(DEFAULT_PALETTE));
    const PaletteGuard onDevice(dc, used);
    const PaletteGuard onMemory(memory.Get(), used);
    const SelectGuard selected(memory.Get(), bitmap.Get());
    if (!selected.Selected())
        return Fail((caps & RC_BITMAP64) != 0 ? kImageWrongBitmap : kImageNoCapability, kName);
    if (!::BitBlt(dc, x, y, static_cast<int>(width), static_cast<int>(height), memory.Get(), 0, 0,
                  SRCCOPY))
        return Fail(kImageBlitFailed, kName);
    ReportImageError(kImageOk, kName);
    return 1;
}

namespace {

// A 24-bit DIB section of `width` by `height`, top-down; its rows are padded to four bytes.
BitmapHandle Rgb24Section(HDC dc, int width, int height, std::uint8_t** bits) {
    BITMAPINFO info{};
    info.bmiHeader = TopDownHeader(width, height, 24);
    void* pixels = nullptr;
    BitmapHandle section(::CreateDIBSection(dc, &info, DIB_RGB_COLORS, &pixels, nullptr, 0));
    *bits = static_cast<std::uint8_t*>(pixels);
    return section;
}

// The blend without AlphaBlend: source and destination into DIB sections, the result into a
// third, copied back with one blit. The divisor is 256, not 255, as the rule says.
void SoftwareBlend(HDC dc, const RECT& rect, HBRUSH brush, unsigned alpha) {
    const int width = rect.right - rect.left;
    const int height = rect.bottom - rect.top;
    std::uint8_t* source = nullptr;
    std::uint8_t* destination = nullptr;
    std::uint8_t* result = nullptr;
    const BitmapHandle sourceSection = Rgb24Section(dc, width, height, &source);
    const BitmapHandle destinationSection = Rgb24Section(dc, width, height, &destination);
    const BitmapHandle resultSection = Rgb24Section(dc, width, height, &result);
    const MemoryDc memory(::CreateCompatibleDC(dc));
    if (!sourceSection || !destinationSection || !resultSection || !memory)
        return;
    {
        const SelectGuard selected(memory.Get(), sourceSection.Get());
        const RECT all{0, 0, width, height};
        ::FillRect(memory.Get(), &all, brush);
    }
    {
        const SelectGuard selected(memory.Get(), destinationSection.Get());
        ::BitBlt(memory.Get(), 0, 0, width, height, dc, rect.left, rect.top, SRCCOPY);
    }
    ::GdiFlush();
    const std::size_t bytes = (static_cast<std::size_t>(width) * 3 + 3) / 4 * 4 *
                              static_cast<std::size_t>(height);
    for (std::size_t i = 0; i < bytes; ++i)
        result[i] = static_cast<std::uint8_t>((source[i] * alpha + destination[i] * (255 - alpha)) >> 8);
    const SelectGuard selected(memory.Get(), resultSection.Get());
    ::BitBlt(dc, rect.left, rect.top, width, height, memory.Get(), 0, 0, SRCCOPY);
}

}  // namespace

void AlphaFillRect(HDC dc, const RECT& rect, COLORREF color, unsigned alpha,
                   AlphaBlendFunction blend) {
    const int width = rect.right - rect.left;
    const int height = rect.bottom - rect.top;
    // The callers tint with 68 and 102; a larger value is refused on both paths, not cut to a
    // byte on one of them.
    if (dc == nullptr || width <= 0 || height <= 0 || alpha > 255)
        return;
    const BrushHandle brush = MakeBrush(color);
    if (!brush)
        return;
    if (blend == nullptr) {
        SoftwareBlend(dc, rect, brush.Get(), alpha);
        return;
    }
    const MemoryDc memory(::CreateCompatibleDC(dc));
    const BitmapHandle bitmap(::CreateCompatibleBitmap(dc, width, height));
    if (!memory || !bitmap)
        return;
    const SelectGuard selected(memory.Get(), bitmap.Get());
    if (!selected.Selected())
        return;
    const RECT all{0, 0, width, height};
    ::FillRect(memory.Get(), &all, brush.Get());
    const BLENDFUNCTION function{AC_SRC_OVER, 0, static_cast<BYTE>(alpha), 0};
    blend(dc, rect.left, rect.top, width, height, memory.Get(), 0, 0, width, height, function);
}
