#include "gdi_test_support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>

#include "platform/win32/system_libraries.h"
#include "ports/port.h"

namespace {

// The test program stands for the plug-in: the libraries are loaded before the first test and
// freed after the last, as at the plug-in's load and unload.
struct LoadedSystemLibraries : ::testing::Environment {
    void SetUp() override { installed.emplace(libraries.emplace()); }
    void TearDown() override {
        installed.reset();
        libraries.reset();
    }
    std::optional<SystemLibraries> libraries;
    std::optional<ScopedPort<SystemLibraries>> installed;
};
[[maybe_unused]] auto* const kLoaded =
    ::testing::AddGlobalTestEnvironment(new LoadedSystemLibraries);

}  // namespace

int LiveGdiObjects() {
    const DWORD reported = ::GetGuiResources(::GetCurrentProcess(), GR_GDIOBJECTS);
    if (reported != 0)
        return static_cast<int>(reported);
    int count = 0;
    for (std::uintptr_t index = 1; index < 0x10000; ++index) {
        if (::GetObjectType(reinterpret_cast<HGDIOBJ>(index)) != 0)
            ++count;
    }
    return count;
}

std::vector<std::uint8_t> PixelsOf(Canvas& canvas) {
    std::vector<std::uint8_t> rgb(static_cast<std::size_t>(canvas.Width()) * canvas.Height() * 3);
    canvas.ReadRgb(0, 0, canvas.Width(), canvas.Height(), rgb.data());
    return rgb;
}

std::string FirstDifference(const std::vector<std::uint8_t>& a, const std::vector<std::uint8_t>& b,
                            int width, const win::RECT& area, int tolerance) {
    for (int y = area.top; y < area.bottom; ++y) {
        for (int x = area.left; x < area.right; ++x) {
            const std::size_t at = (static_cast<std::size_t>(y) * width + x) * 3;
            for (int c = 0; c < 3; ++c) {
                if (std::abs(a[at + c] - b[at + c]) > tolerance) {
                    char text[96];
                    std::snprintf(text, sizeof text, "%d,%d: %d %d %d against %d %d %d", x, y,
                                  a[at], a[at + 1], a[at + 2], b[at], b[at + 1], b[at + 2]);
                    return text;
                }
            }
        }
    }
    return {};
}

win::RECT CoverageBox(const std::vector<std::uint8_t>& rgb, int width, const win::RECT& area,
                      win::COLORREF background) {
    win::RECT box{area.right, area.bottom, area.left, area.top};
    for (int y = area.top; y < area.bottom; ++y) {
        for (int x = area.left; x < area.right; ++x) {
            const std::uint8_t* p = rgb.data() + (static_cast<std::size_t>(y) * width + x) * 3;
            if (win::MakeColor(p[0], p[1], p[2]) == background)
                continue;
            box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1),
                   std::max(box.bottom, y + 1)};
        }
    }
    return box.IsEmpty() ? win::RECT{} : box;
}

std::string DeepDib(int width, int height, int bits, bool bitfields) {
    const std::size_t rowBytes = (static_cast<std::size_t>(width) * bits + 31) / 32 * 4;
    const std::size_t masks = bitfields ? 12 : 0;
    std::string dib(sizeof(BITMAPINFOHEADER) + masks + rowBytes * height, '\0');
    BITMAPINFOHEADER header{};
    header.biSize = sizeof header;
    header.biWidth = width;
    header.biHeight = height;
    header.biPlanes = 1;
    header.biBitCount = static_cast<WORD>(bits);
    header.biCompression = bitfields ? BI_BITFIELDS : BI_RGB;
    std::memcpy(dib.data(), &header, sizeof header);
    if (bitfields) {
        const DWORD fields[3] = {bits == 16 ? 0xF800u : 0xFF0000u, bits == 16 ? 0x07E0u : 0xFF00u,
                                 bits == 16 ? 0x001Fu : 0xFFu};
        std::memcpy(dib.data() + sizeof header, fields, sizeof fields);
    }
    for (int y = 0; y < height; ++y) {
        char* row = dib.data() + sizeof header + masks + rowBytes * y;
        for (int x = 0; x < width; ++x) {
            const unsigned value = static_cast<unsigned>(x * 2654435761u + y * 40503u) >> 7;
            std::memcpy(row + x * (bits / 8), &value, static_cast<std::size_t>(bits / 8));
        }
    }
    return dib;
}

win::LOGFONTW FontOf(const wchar_t* face, int height) {
    win::LOGFONTW font;
    font.lfHeight = height;
    font.lfWeight = FW_NORMAL;
    for (int i = 0; i < 31 && face[i] != 0; ++i)
        font.lfFaceName[i] = static_cast<char16_t>(face[i]);
    return font;
}
