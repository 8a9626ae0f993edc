#include "platform/sim/canvas/freetype_font_rasteriser.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <algorithm>
#include <cctype>

namespace {

constexpr const char* kDefaultFace = "DejaVuSans.ttf";
constexpr int kDefaultCellHeight = 16;  // a font of height 0: the window system's small default

std::string LowerFaceName(const win::LOGFONTW& font) {
    std::string name;
    for (char16_t c : font.lfFaceName) {
        if (c == 0)
            break;
        name += c < 128 ? static_cast<char>(std::tolower(static_cast<int>(c))) : '?';
    }
    return name;
}

}  // namespace

struct FreeTypeFontRasteriser::Library {
    FT_Library library = nullptr;
    std::map<std::string, FT_Face> faces;  // by file name; null when it could not be loaded
};

FreeTypeFontRasteriser::FreeTypeFontRasteriser(std::string folder)
    : m_strFolder(std::move(folder)), m_library(std::make_unique<Library>()) {
    if (FT_Init_FreeType(&m_library->library) != 0)
        m_library->library = nullptr;
}

FreeTypeFontRasteriser::~FreeTypeFontRasteriser() {
    for (auto& entry : m_library->faces) {
        if (entry.second != nullptr)
            FT_Done_Face(entry.second);
    }
    if (m_library->library != nullptr)
        FT_Done_FreeType(m_library->library);
}

std::string FreeTypeFontRasteriser::FaceFileFor(const win::LOGFONTW& font) {
    const std::string name = LowerFaceName(font);
    const bool bold = font.lfWeight >= 600;
    const bool italic = font.lfItalic != 0;
    std::string family = "DejaVuSans";
    std::string slant = "Oblique";
    if (name.find("mono") != std::string::npos || name.find("courier") != std::string::npos ||
        name.find("consol") != std::string::npos) {
        family = "DejaVuSansMono";
    } else if (name.find("sans") == std::string::npos &&
               (name.find("serif") != std::string::npos ||
                name.find("times") != std::string::npos ||
                name.find("georgia") != std::string::npos)) {
        family = "DejaVuSerif";
        slant = "Italic";
    }
    std::string style;
    if (bold)
        style += "Bold";
    if (italic)
        style += slant;
    return family + (style.empty() ? "" : "-" + style) + ".ttf";
}

void* FreeTypeFontRasteriser::Face(const win::LOGFONTW& font) {
    if (m_library->library == nullptr)
        return nullptr;
    auto load = [this](const std::string& file) -> FT_Face {
        auto found = m_library->faces.find(file);
        if (found != m_library->faces.end())
            return found->second;
        FT_Face face = nullptr;
        if (FT_New_Face(m_library->library, (m_strFolder + file).c_str(), 0, &face) != 0)
            face = nullptr;
        m_library->faces[file] = face;
        return face;
    };
    FT_Face face = load(FaceFileFor(font));
    if (face == nullptr)
        face = load(kDefaultFace);
    if (face == nullptr)
        return nullptr;
    // Negative heights give the character height, positive ones the cell height.
    int height = font.lfHeight == 0 ? kDefaultCellHeight : font.lfHeight;
    FT_UInt pixels = 0;
    if (height < 0) {
        pixels = static_cast<FT_UInt>(-static_cast<long long>(height));
    } else {
        const long cell = face->ascender - face->descender;
        pixels = static_cast<FT_UInt>(
            std::max<long long>(1, static_cast<long long>(height) * face->units_per_EM / cell));
    }
    pixels = std::clamp<FT_UInt>(pixels, 1, 2048);
    if (FT_Set_Pixel_Sizes(face, 0, pixels) != 0)
        return nullptr;
    return face;
}

int FreeTypeFontRasteriser::LineHeight(const win::LOGFONTW& font) {
    FT_Face face = static_cast<FT_Face>(Face(font));
    if (face == nullptr)
        return 0;
    return static_cast<int>((face->size->metrics.ascender - face->size->metrics.descender + 63) >>
                            6);
}

int FreeTypeFontRasteriser::TextWidth(const std::wstring& text, const win::LOGFONTW& font) {
    FT_Face face = static_cast<FT_Face>(Face(font));
    if (face == nullptr)
        return 0;
    long advance = 0;
    for (wchar_t c : text) {
        if (FT_Load_Char(face, static_cast<FT_ULong>(c), FT_LOAD_DEFAULT | FT_LOAD_TARGET_MONO) ==
            0)
            advance += face->glyph->advance.x;
    }
    return static_cast<int>(advance >> 6);
}

bool FreeTypeFontRasteriser::DrawLine(const std::wstring& text, const win::LOGFONTW& font, int x,
                                      int top, const win::RECT& clip, MonoBitmap& target) {
    FT_Face face = static_cast<FT_Face>(Face(font));
    if (face == nullptr)
        return false;
    const int baseline = top + static_cast<int>((face->size->metrics.ascender + 63) >> 6);
    const win::RECT area{std::max(clip.left, 0), std::max(clip.top, 0),
                         std::min(clip.right, target.width), std::min(clip.bottom, target.height)};
    long pen = static_cast<long>(x) * 64;
    for (wchar_t c : text) {
        if (FT_Load_Char(face, static_cast<FT_ULong>(c),
                         FT_LOAD_RENDER | FT_LOAD_TARGET_MONO | FT_LOAD_MONOCHROME) != 0)
            continue;
        const FT_GlyphSlot glyph = face->glyph;
        const FT_Bitmap& bitmap = glyph->bitmap;
        const int left = static_cast<int>(pen >> 6) + glyph->bitmap_left;
        const int glyphTop = baseline - glyph->bitmap_top;
        for (unsigned row = 0; row < bitmap.rows; ++row) {
            const int y = glyphTop + static_cast<int>(row);
            if (y < area.top || y >= area.bottom)
                continue;
            const unsigned char* bits = bitmap.buffer + static_cast<long>(row) * bitmap.pitch;
            for (unsigned column = 0; column < bitmap.width; ++column) {
                const int px = left + static_cast<int>(column);
                if (px < area.left || px >= area.right)
                    continue;
                const bool on = bitmap.pixel_mode == FT_PIXEL_MODE_MONO
                                    ? (bits[column / 8] & (0x80 >> (column % 8))) != 0
                                    : bits[column] >= 128;
                if (on)
                    target.bits[static_cast<std::size_t>(y) * target.width + px] = 1;
            }
        }
        pen += glyph->advance.x;
    }
    return true;
}
