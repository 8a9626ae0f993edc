#pragma once
// Fakes the views' tests share: the file system in memory, and a font of box-shaped glyphs whose
// every pixel is known.

#include <map>
#include <string>

#include "support/memory_file_system.h"
#include "ports/font_rasteriser.h"

// Glyphs are boxes: a character cell is half the line height wide; every character but a blank
// covers its cell less a one-pixel border. The line height is |lfHeight|, or 16 for 0.
class BoxFontRasteriser : public FontRasteriser {
public:
    static int Height(const win::LOGFONTW& font);
    int LineHeight(const win::LOGFONTW& font) override { return Height(font); }
    int TextWidth(const std::wstring& text, const win::LOGFONTW& font) override;
    bool DrawLine(const std::wstring& text, const win::LOGFONTW& font, int x, int top,
                  const win::RECT& clip, MonoBitmap& target) override;
};
