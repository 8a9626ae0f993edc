#pragma once
// Text as black and white pixels from GDI: DrawTextW of a font without anti-aliasing into a
// monochrome bitmap, read back as a DIB. Smooth text draws with it at four times the size.

#include <windows.h>

#include "platform/win32/gdi_handles.h"
#include "ports/font_rasteriser.h"

class GdiFontRasteriser : public FontRasteriser {
public:
    GdiFontRasteriser();
    GdiFontRasteriser(const GdiFontRasteriser&) = delete;
    GdiFontRasteriser& operator=(const GdiFontRasteriser&) = delete;

    int LineHeight(const win::LOGFONTW& font) override;
    int TextWidth(const std::wstring& text, const win::LOGFONTW& font) override;
    bool DrawLine(const std::wstring& text, const win::LOGFONTW& font, int x, int top,
                  const win::RECT& clip, MonoBitmap& target) override;

private:
    // The font of the last call, kept: layout measures the same font many times over.
    HFONT Font(const win::LOGFONTW& font);

    MemoryDc m_dc;
    FontHandle m_font;
    win::LOGFONTW m_fontDescription;
};
