#include "views_test_support.h"

#include <algorithm>
#include <cstring>

int BoxFontRasteriser::Height(const win::LOGFONTW& font) {
    return font.lfHeight == 0 ? 16 : std::abs(font.lfHeight);
}

int BoxFontRasteriser::TextWidth(const std::wstring& text, const win::LOGFONTW& font) {
    return static_cast<int>(text.size()) * (Height(font) / 2);
}

bool BoxFontRasteriser::DrawLine(const std::wstring& text, const win::LOGFONTW& font, int x,
                                 int top, const win::RECT& clip, MonoBitmap& target) {
    const int h = Height(font);
    const int w = h / 2;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == L' ')
            continue;
        const int left = x + static_cast<int>(i) * w;
        for (int y = top + 1; y < top + h - 1; ++y) {
            for (int px = left + 1; px < left + w - 1; ++px) {
                if (px >= std::max(clip.left, 0) && px < std::min(clip.right, target.width) &&
                    y >= std::max(clip.top, 0) && y < std::min(clip.bottom, target.height))
                    target.bits[static_cast<std::size_t>(y) * target.width + px] = 1;
            }
        }
    }
    return true;
}
