#include "views/text_layout.h"

#include <algorithm>

#include "ports/canvas.h"

namespace {

std::vector<std::wstring> SplitLines(const std::wstring& text, bool singleLine) {
    std::vector<std::wstring> lines;
    if (singleLine) {
        // One line: the breaks are left out, as the window system shows them on one line.
        std::wstring joined;
        for (wchar_t c : text) {
            if (c != L'\n' && c != L'\r')
                joined += c;
        }
        lines.push_back(joined);
        return lines;
    }
    std::wstring current;
    for (wchar_t c : text) {
        if (c == L'\n') {
            lines.push_back(current);
            current.clear();
        } else if (c != L'\r') {
            current += c;
        }
    }
    lines.push_back(current);
    return lines;
}

// Cuts characters from the end until the text and "..." fit; "..." alone when nothing fits.
std::wstring WithEndEllipsis(FontRasteriser& fonts, const std::wstring& line,
                             const win::LOGFONTW& font, int width) {
    if (fonts.TextWidth(line, font) <= width)
        return line;
    std::wstring kept = line;
    while (!kept.empty()) {
        kept.pop_back();
        if (fonts.TextWidth(kept + L"...", font) <= width)
            return kept + L"...";
    }
    return L"...";
}

}  // namespace

TextLayout LayOutText(FontRasteriser& fonts, const std::wstring& text, const win::RECT& rect,
                      const win::LOGFONTW& font, std::uint32_t format) {
    TextLayout layout;
    const bool singleLine = (format & kTextSingleLine) != 0;
    const int lineHeight = fonts.LineHeight(font);
    const std::vector<std::wstring> lines = SplitLines(text, singleLine);

    int top = rect.top;
    if (singleLine && (format & kTextVCenter) != 0)
        top = rect.top + (rect.Height() - lineHeight) / 2;
    else if (singleLine && (format & kTextBottom) != 0)
        top = rect.bottom - lineHeight;

    int widest = 0;
    for (const std::wstring& raw : lines) {
        const std::wstring line = (format & kTextEndEllipsis) != 0
                                      ? WithEndEllipsis(fonts, raw, font, rect.Width())
                                      : raw;
        const int width = fonts.TextWidth(line, font);
        widest = std::max(widest, width);
        int x = rect.left;
        if ((format & kTextCenter) != 0)
            x = rect.left + (rect.Width() - width) / 2;
        else if ((format & kTextRight) != 0)
            x = rect.right - width;
        layout.lines.push_back({line, x, top});
        top += lineHeight;
    }
    const int height = lineHeight * static_cast<int>(lines.size());
    layout.bounds = {rect.left, rect.top, rect.left + widest, rect.top + height};
    return layout;
}

void RasteriseText(FontRasteriser& fonts, const std::wstring& text, const win::RECT& rect,
                   const win::LOGFONTW& font, std::uint32_t format, win::POINT origin,
                   MonoBitmap& target) {
    const TextLayout layout = LayOutText(fonts, text, rect, font, format);
    win::RECT clip{0, 0, target.width, target.height};
    if ((format & kTextNoClip) == 0) {
        clip = {std::max(0, rect.left - origin.x), std::max(0, rect.top - origin.y),
                std::min(target.width, rect.right - origin.x),
                std::min(target.height, rect.bottom - origin.y)};
    }
    if (clip.IsEmpty())
        return;
    for (const PlacedLine& line : layout.lines) {
        fonts.DrawLine(line.text, font, line.x - origin.x, line.top - origin.y, clip, target);
    }
}
