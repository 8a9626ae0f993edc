#include "gdi_test_support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <optional>

#include "platform/win32/gdi_handles.h"
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

namespace {

constexpr char kFaceFile[] = "/usr/share/fonts/truetype/liberation/LiberationSans-Regular.ttf";
constexpr wchar_t kFaceName[] = L"Liberation Sans";

// The file as Wine sees it: the root of the Linux file system is drive Z:.
std::wstring FaceFileOnZ() {
    std::wstring path = L"Z:";
    for (const char* c = kFaceFile; *c != 0; ++c)
        path += *c == '/' ? L'\\' : static_cast<wchar_t>(*c);
    return path;
}

}  // namespace

TestFace::TestFace()
    : m_added(::AddFontResourceExW(FaceFileOnZ().c_str(), FR_PRIVATE, nullptr) > 0) {
    if (!m_added) {
        m_problem = std::string("cannot add ") + kFaceFile +
                    " (fonts-liberation; scripts/install-deps windows installs it)";
        return;
    }
    // A name GDI does not know gives some other face without a word: ask which one it chose.
    const MemoryDc dc(::CreateCompatibleDC(nullptr));
    const FontHandle font = MakeFont(Font(-12));
    wchar_t chosen[LF_FACESIZE] = {};
    if (dc && font) {
        const SelectGuard selected(dc.Get(), font.Get());
        ::GetTextFaceW(dc.Get(), LF_FACESIZE, chosen);
    }
    if (std::wcscmp(chosen, kFaceName) != 0) {
        char narrow[LF_FACESIZE] = {};
        std::wcstombs(narrow, chosen, sizeof narrow - 1);
        m_problem = std::string("a font named Liberation Sans selects \"") + narrow + "\"";
    }
}

TestFace::~TestFace() {
    if (m_added)
        ::RemoveFontResourceExW(FaceFileOnZ().c_str(), FR_PRIVATE, nullptr);
}

win::LOGFONTW TestFace::Font(int height) const {
    win::LOGFONTW font;
    font.lfHeight = height;
    font.lfWeight = FW_NORMAL;
    for (std::size_t i = 0; kFaceName[i] != 0; ++i)
        font.lfFaceName[i] = static_cast<char16_t>(kFaceName[i]);
    return font;
}
