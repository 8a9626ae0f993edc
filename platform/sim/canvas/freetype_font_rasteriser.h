#pragma once
// The font rasteriser over FreeType with the DejaVu faces: black and white glyphs, hinted for
// monochrome output. The face comes from the font's name, weight and slant; any name it
// doesn't know gets the default face, DejaVu Sans.

#include <map>
#include <memory>
#include <string>

#include "ports/font_rasteriser.h"

class FreeTypeFontRasteriser : public FontRasteriser {
public:
    // `folder` holds the DejaVu files and ends with a separator.
    explicit FreeTypeFontRasteriser(std::string folder = "/usr/share/fonts/truetype/dejavu/");
    ~FreeTypeFontRasteriser() override;
    FreeTypeFontRasteriser(const FreeTypeFontRasteriser&) = delete;
    FreeTypeFontRasteriser& operator=(const FreeTypeFontRasteriser&) = delete;

    int LineHeight(const win::LOGFONTW& font) override;
    int TextWidth(const std::wstring& text, const win::LOGFONTW& font) override;
    bool DrawLine(const std::wstring& text, const win::LOGFONTW& font, int x, int top,
                  const win::RECT& clip, MonoBitmap& target) override;

    // The file chosen for a font, for tests and diagnostics.
    static std::string FaceFileFor(const win::LOGFONTW& font);

private:
    struct Library;
    // The face for the font, sized; null if neither it nor the default face can be loaded.
    void* Face(const win::LOGFONTW& font);

    std::string m_strFolder;
    std::unique_ptr<Library> m_library;
};
