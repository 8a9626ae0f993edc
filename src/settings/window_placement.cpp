#include "settings/window_placement.h"

#include <cwchar>

#include "foundation/split.h"

namespace {

// Leading blanks, an optional sign, digits; whatever follows is ignored and no digits give 0,
// as the C library's integer conversion reads a hand-edited field.
std::int32_t FieldNumber(const std::wstring& field) {
    return static_cast<std::int32_t>(std::wcstol(field.c_str(), nullptr, 10));
}

}  // namespace

std::wstring FormatWindowPlacement(const WindowPlacement& placement) {
    const win::RECT& r = placement.rect;
    return std::to_wstring(r.left) + L':' + std::to_wstring(r.top) + L':' +
           std::to_wstring(r.right) + L':' + std::to_wstring(r.bottom) + L':' +
           (placement.maximized ? L"MAXIMIZED" : L"NORMAL");
}

std::optional<WindowPlacement> ParseWindowPlacement(const std::wstring& text) {
    CSplit fields(text, L":");
    if (fields.m_pieces.size() != 5)
        return std::nullopt;
    WindowPlacement placement;
    if (fields.m_pieces[4] == L"MAXIMIZED") {
        placement.maximized = true;
        return placement;
    }
    placement.rect = {FieldNumber(fields.m_pieces[0]), FieldNumber(fields.m_pieces[1]),
                      FieldNumber(fields.m_pieces[2]), FieldNumber(fields.m_pieces[3])};
    return placement;
}
