#include "foundation/xml/xml_value.h"

#include <array>
#include <optional>

namespace {

struct NamedEntity {
    std::wstring_view text;
    wchar_t character;
};

constexpr std::array<NamedEntity, 5> kEntities{{
    {L"&lt;", L'<'},
    {L"&amp;", L'&'},
    {L"&gt;", L'>'},
    {L"&apos;", L'\''},
    {L"&quot;", L'"'},
}};

// The ';' of a character reference stands among the seven characters after the '#' (or after
// the 'x' of a hexadecimal one).
constexpr std::size_t kReferenceReach = 7;

int DigitValue(wchar_t c) {
    if (c >= L'0' && c <= L'9')
        return c - L'0';
    if (c >= L'a' && c <= L'z')
        return c - L'a' + 10;
    if (c >= L'A' && c <= L'Z')
        return c - L'A' + 10;
    return 99;
}

// Reads a number as the C library's wcstol does: leading white space, a sign, and for base 16
// an optional "0x"; it stops at the first character that is not a digit.
long ReadNumber(std::wstring_view digits, int base) {
    std::size_t i = 0;
    while (i < digits.size() && (digits[i] == L' ' || (digits[i] >= L'\t' && digits[i] <= L'\r')))
        ++i;
    bool negative = false;
    if (i < digits.size() && (digits[i] == L'+' || digits[i] == L'-'))
        negative = digits[i++] == L'-';
    if (base == 16 && i + 2 < digits.size() && digits[i] == L'0' &&
        (digits[i + 1] == L'x' || digits[i + 1] == L'X') && DigitValue(digits[i + 2]) < base)
        i += 2;
    long value = 0;
    for (; i < digits.size() && DigitValue(digits[i]) < base; ++i)
        value = value * base + DigitValue(digits[i]);  // at most seven digits: no overflow
    return negative ? -value : value;
}

void AppendCode(std::wstring& out, long code) {
    if (code < 0 || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) {
        out.push_back(static_cast<wchar_t>(0xFFFD));
        return;
    }
    if constexpr (sizeof(wchar_t) == 2) {
        if (code >= 0x10000) {
            code -= 0x10000;
            out.push_back(static_cast<wchar_t>(0xD800 + (code >> 10)));
            out.push_back(static_cast<wchar_t>(0xDC00 + (code & 0x3FF)));
            return;
        }
    }
    out.push_back(static_cast<wchar_t>(code));
}

// A character reference at `amp`: the code and the length up to and including its ';'.
std::optional<std::pair<long, std::size_t>> ReadReference(std::wstring_view value,
                                                          std::size_t amp) {
    std::size_t digits = amp + 2;
    int base = 10;
    if (digits < value.size() && value[digits] == L'x') {
        base = 16;
        ++digits;
    }
    const std::size_t reach = std::min(value.size(), digits + kReferenceReach);
    for (std::size_t i = digits; i < reach; ++i) {
        if (value[i] == L';') {
            const long code = ReadNumber(value.substr(digits, i - digits), base);
            // A reference that reads as zero is no reference: the '&' stands as itself.
            if (code == 0)
                return std::nullopt;
            return std::pair{code, i + 1 - amp};
        }
    }
    return std::nullopt;
}

std::wstring Encode(std::wstring_view value, bool quotes) {
    std::wstring out;
    out.reserve(value.size());
    for (const wchar_t c : value) {
        switch (c) {
            case L'<':
                out += L"&lt;";
                break;
            case L'&':
                out += L"&amp;";
                break;
            case L'>':
                out += L"&gt;";
                break;
            case L'\'':
                quotes ? out += L"&apos;" : out += c;
                break;
            case L'"':
                quotes ? out += L"&quot;" : out += c;
                break;
            default:
                out += c;
        }
    }
    return out;
}

}  // namespace

std::wstring DecodeXmlValue(std::wstring_view value) {
    std::wstring out;
    out.reserve(value.size());
    std::size_t i = 0;
    while (i < value.size()) {
        const std::size_t amp = value.find(L'&', i);
        if (amp == std::wstring_view::npos) {
            out.append(value.substr(i));
            break;
        }
        out.append(value.substr(i, amp - i));
        i = amp + 1;
        if (amp + 1 < value.size() && value[amp + 1] == L'#') {
            if (const auto reference = ReadReference(value, amp)) {
                AppendCode(out, reference->first);
                i = amp + reference->second;
                continue;
            }
        } else {
            bool named = false;
            for (const NamedEntity& entity : kEntities) {
                if (value.substr(amp, entity.text.size()) == entity.text) {
                    out.push_back(entity.character);
                    i = amp + entity.text.size();
                    named = true;
                    break;
                }
            }
            if (named)
                continue;
        }
        out.push_back(L'&');
    }
    return out;
}

std::wstring EncodeXmlAttributeValue(std::wstring_view value) {
    return Encode(value, true);
}
std::wstring EncodeXmlText(std::wstring_view value) {
    return Encode(value, false);
}
