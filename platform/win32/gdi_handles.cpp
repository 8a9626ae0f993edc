#include "platform/win32/gdi_handles.h"

#include <cstring>

static_assert(sizeof(::LOGFONTW) == sizeof(win::LOGFONTW), "fonts cross as bytes");

FontHandle MakeFont(const win::LOGFONTW& font) {
    ::LOGFONTW native;
    std::memcpy(&native, &font, sizeof native);
    return FontHandle(::CreateFontIndirectW(&native));
}

BrushHandle MakeBrush(win::COLORREF color) {
    return BrushHandle(::CreateSolidBrush(color));
}
