#include "foundation/text_encoding.h"

#include <cstdint>

namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool IsSurrogate(char32_t c) { return c >= 0xD800 && c <= 0xDFFF; }

void AppendCodePoint(std::wstring& out, char32_t c) {
    if constexpr (sizeof(wchar_t) == 2) {
        if (c >= 0x10000) {
            c -= 0x10000;
            out.push_back(static_cast<wchar_t>(0xD800 + (c >> 10)));
            out.push_back(static_cast<wchar_t>(0xDC00 + (c & 0x3FF)));
            return;
        }
    }
    out.push_back(static_cast<wchar_t>(c));
}

void AppendUtf8(std::string& out, char32_t c) {
    if (c < 0x80) {
        out.push_back(static_cast<char>(c));
    } else if (c < 0x800) {
        out.push_back(static_cast<char>(0xC0 | (c >> 6)));
        out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    } else if (c < 0x10000) {
        out.push_back(static_cast<char>(0xE0 | (c >> 12)));
        out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    } else {
        out.push_back(static_cast<char>(0xF0 | (c >> 18)));
        out.push_back(static_cast<char>(0x80 | ((c >> 12) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    }
}

// Decodes one UTF-8 sequence at `i`, advancing `i` past it (one byte for a malformed one).
char32_t DecodeUtf8(std::string_view s, std::size_t& i) {
    const auto lead = static_cast<unsigned char>(s[i++]);
    if (lead < 0x80) return lead;
    int extra = 0;
    char32_t c = 0;
    char32_t minimum = 0;
    if ((lead & 0xE0) == 0xC0) {
        extra = 1, c = lead & 0x1F, minimum = 0x80;
    } else if ((lead & 0xF0) == 0xE0) {
        extra = 2, c = lead & 0x0F, minimum = 0x800;
    } else if ((lead & 0xF8) == 0xF0) {
        extra = 3, c = lead & 0x07, minimum = 0x10000;
    } else {
        return kReplacement;
    }
    if (s.size() - i < static_cast<std::size_t>(extra)) return kReplacement;
    for (int k = 0; k < extra; ++k) {
        const auto b = static_cast<unsigned char>(s[i + k]);
        if ((b & 0xC0) != 0x80) return kReplacement;
        c = (c << 6) | (b & 0x3F);
    }
    if (c < minimum || c > 0x10FFFF || IsSurrogate(c)) return kReplacement;
    i += extra;
    return c;
}

// Reads one code point from a wide string, joining UTF-16 surrogate pairs where wchar_t is 16 bits.
char32_t NextCodePoint(std::wstring_view text, std::size_t& i) {
    char32_t c = static_cast<char32_t>(text[i++]);
    if constexpr (sizeof(wchar_t) == 2) {
        c &= 0xFFFF;
        if (c >= 0xD800 && c <= 0xDBFF && i < text.size()) {
            const char32_t low = static_cast<char32_t>(text[i]) & 0xFFFF;
            if (low >= 0xDC00 && low <= 0xDFFF) {
                ++i;
                return 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
            }
        }
    }
    if (IsSurrogate(c) || c > 0x10FFFF) return kReplacement;
    return c;
}

}  // namespace

std::string ToUtf8(std::wstring_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) AppendUtf8(out, NextCodePoint(text, i));
    return out;
}

std::wstring FromUtf8(std::string_view bytes) {
    std::wstring out;
    out.reserve(bytes.size());
    for (std::size_t i = 0; i < bytes.size();) AppendCodePoint(out, DecodeUtf8(bytes, i));
    return out;
}

std::wstring FromUtf16Le(std::string_view bytes) {
    std::wstring out;
    out.reserve(bytes.size() / 2);
    const std::size_t units = bytes.size() / 2;
    for (std::size_t u = 0; u < units; ++u) {
        char32_t c = static_cast<unsigned char>(bytes[2 * u]) |
                     (static_cast<char32_t>(static_cast<unsigned char>(bytes[2 * u + 1])) << 8);
        if (c >= 0xD800 && c <= 0xDBFF && u + 1 < units) {
            const char32_t low = static_cast<unsigned char>(bytes[2 * u + 2]) |
                                 (static_cast<char32_t>(static_cast<unsigned char>(bytes[2 * u + 3])) << 8);
            if (low >= 0xDC00 && low <= 0xDFFF) {
                AppendCodePoint(out, 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00));
                ++u;
                continue;
            }
        }
        AppendCodePoint(out, IsSurrogate(c) ? kReplacement : c);
    }
    return out;
}
