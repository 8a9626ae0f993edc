#pragma once
// Portable twins of the window system's value types that the core keeps or stores. Where bytes
// are stored (a font in the settings), the layout is the window system's to the byte.
//
// They live in namespace win so that an adapter can include them beside the window system's own
// headers; the helpers avoid the names that those headers define as macros (RGB, RedOf ...).

#include <cstdint>

namespace win {

using COLORREF = std::uint32_t;  // 0x00BBGGRR

constexpr COLORREF MakeColor(std::uint8_t r, std::uint8_t g, std::uint8_t b) {
    return static_cast<COLORREF>(r) | (static_cast<COLORREF>(g) << 8) |
           (static_cast<COLORREF>(b) << 16);
}
constexpr std::uint8_t RedOf(COLORREF c) { return static_cast<std::uint8_t>(c & 0xFF); }
constexpr std::uint8_t GreenOf(COLORREF c) { return static_cast<std::uint8_t>((c >> 8) & 0xFF); }
constexpr std::uint8_t BlueOf(COLORREF c) { return static_cast<std::uint8_t>((c >> 16) & 0xFF); }

struct POINT {
    std::int32_t x = 0;
    std::int32_t y = 0;
    friend bool operator==(const POINT&, const POINT&) = default;
};

struct SIZE {
    std::int32_t cx = 0;
    std::int32_t cy = 0;
    friend bool operator==(const SIZE&, const SIZE&) = default;
};

struct RECT {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;
    std::int32_t Width() const { return right - left; }
    std::int32_t Height() const { return bottom - top; }
    bool IsEmpty() const { return right <= left || bottom <= top; }
    // The same rectangle moved by (dx, dy).
    RECT Offset(std::int32_t dx, std::int32_t dy) const {
        return {left + dx, top + dy, right + dx, bottom + dy};
    }
    // The same rectangle grown by `by` on every side (shrunk for a negative `by`).
    RECT Inflated(std::int32_t by) const { return {left - by, top - by, right + by, bottom + by}; }
    friend bool operator==(const RECT&, const RECT&) = default;
};

// The window system's LOGFONTW: 92 bytes, the face name as 32 UTF-16 code units.
struct LOGFONTW {
    std::int32_t lfHeight = 0;
    std::int32_t lfWidth = 0;
    std::int32_t lfEscapement = 0;
    std::int32_t lfOrientation = 0;
    std::int32_t lfWeight = 0;
    std::uint8_t lfItalic = 0;
    std::uint8_t lfUnderline = 0;
    std::uint8_t lfStrikeOut = 0;
    std::uint8_t lfCharSet = 0;
    std::uint8_t lfOutPrecision = 0;
    std::uint8_t lfClipPrecision = 0;
    std::uint8_t lfQuality = 0;
    std::uint8_t lfPitchAndFamily = 0;
    char16_t lfFaceName[32] = {};
};
static_assert(sizeof(LOGFONTW) == 92, "stored fonts must keep the window system's layout");

// WINDOWPOS as a hook sees it in a position-changing message.
struct WINDOWPOS {
    void* hwnd = nullptr;
    void* hwndInsertAfter = nullptr;
    std::int32_t x = 0;
    std::int32_t y = 0;
    std::int32_t cx = 0;
    std::int32_t cy = 0;
    std::uint32_t flags = 0;
};

// NMHDR, the head of every control notification.
struct NMHDR {
    void* hwndFrom = nullptr;
    std::uintptr_t idFrom = 0;
    std::uint32_t code = 0;
};

}  // namespace win
