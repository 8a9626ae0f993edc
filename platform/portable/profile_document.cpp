#include "platform/portable/profile_document.h"

#include <algorithm>

#include "foundation/no_case.h"
#include "foundation/text_encoding.h"

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16Mark = "\xFF\xFE";

// Windows-1252 at 0x80-0x9F; the five unassigned bytes keep their C1 code points.
constexpr char16_t kCp1252High[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

bool IsValidUtf8(std::string_view bytes) {
    std::size_t i = 0;
    while (i < bytes.size()) {
        const auto lead = static_cast<unsigned char>(bytes[i]);
        std::size_t extra = 0;
        unsigned minimum = 0;
        unsigned code = 0;
        if (lead < 0x80) {
            ++i;
            continue;
        } else if ((lead & 0xE0) == 0xC0) {
            extra = 1, minimum = 0x80, code = lead & 0x1F;
        } else if ((lead & 0xF0) == 0xE0) {
            extra = 2, minimum = 0x800, code = lead & 0x0F;
        } else if ((lead & 0xF8) == 0xF0) {
            extra = 3, minimum = 0x10000, code = lead & 0x07;
        } else {
            return false;
        }
        if (bytes.size() - i <= extra)
            return false;
        for (std::size_t k = 1; k <= extra; ++k) {
            const auto next = static_cast<unsigned char>(bytes[i + k]);
            if ((next & 0xC0) != 0x80)
                return false;
            code = (code << 6) | (next & 0x3F);
        }
        if (code < minimum || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF))
            return false;
        i += extra + 1;
    }
    return true;
}

std::wstring FromCp1252(std::string_view bytes) {
    std::wstring text;
    text.reserve(bytes.size());
    for (char byte : bytes) {
        const auto b = static_cast<unsigned char>(byte);
        text.push_back(b >= 0x80 && b < 0xA0 ? static_cast<wchar_t>(kCp1252High[b - 0x80])
                                             : static_cast<wchar_t>(b));
    }
    return text;
}

}  // namespace

bool IsProfileSpace(wchar_t c) {
    return c == L' ' || (c >= L'\t' && c <= L'\r') || c == 0x1A;
}

std::wstring_view TrimProfileSpace(std::wstring_view text) {
    while (!text.empty() && IsProfileSpace(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsProfileSpace(text.back()))
        text.remove_suffix(1);
    return text;
}

ProfileDocument::Line ProfileDocument::ParseLine(std::wstring_view text) {
    Line line;
    text = TrimProfileSpace(text);
    if (text.empty())
        return line;
    const std::size_t close = text.rfind(L']');
    if (text.front() == L'[' && close != std::wstring_view::npos) {
        line.kind = Kind::Header;
        line.name = text.substr(1, close - 1);
        return line;
    }
    line.kind = Kind::Entry;
    const std::size_t equals = text.find(L'=');
    if (equals == std::wstring_view::npos) {
        line.name = text;
        return line;
    }
    line.name = TrimProfileSpace(text.substr(0, equals));
    line.value = std::wstring(TrimProfileSpace(text.substr(equals + 1)));
    return line;
}

ProfileDocument::Line ProfileDocument::MakeLine(const std::wstring& text) {
    // A line break inside a value would start a new line, perhaps a new section, in the file.
    std::wstring single = text;
    for (wchar_t& c : single) {
        if (c == L'\r' || c == L'\n')
            c = L' ';
    }
    return ParseLine(single);
}

ProfileDocument ProfileDocument::Parse(std::string_view bytes) {
    ProfileDocument document;
    document.m_byteOrderMark = false;
    document.m_carriageReturn = false;
    if (bytes.substr(0, kUtf16Mark.size()) == kUtf16Mark) {
        // Rewritten as UTF-8, so no line keeps its bytes; the mark tells readers the encoding.
        document.m_byteOrderMark = true;
        document.m_carriageReturn = true;
        const std::wstring text = FromUtf16Le(bytes.substr(kUtf16Mark.size()));
        std::size_t start = 0;
        while (start < text.size()) {
            std::size_t end = text.find(L'\n', start);
            if (end == std::wstring::npos)
                end = text.size();
            document.m_lines.push_back(
                ParseLine(std::wstring_view(text).substr(start, end - start)));
            start = end + 1;
        }
        return document;
    }
    if (bytes.substr(0, kUtf8Mark.size()) == kUtf8Mark) {
        document.m_byteOrderMark = true;
        bytes.remove_prefix(kUtf8Mark.size());
    }
    document.m_source = bytes;
    const std::string_view source = document.m_source;
    document.m_lines.reserve(
        static_cast<std::size_t>(std::count(bytes.begin(), bytes.end(), '\n')) + 1);
    std::size_t start = 0;
    while (start < source.size()) {
        std::size_t end = source.find('\n', start);
        if (end == std::string_view::npos)
            end = source.size();
        const std::string_view raw = source.substr(start, end - start);
        if (start == 0)
            document.m_carriageReturn = !raw.empty() && raw.back() == '\r';
        Line line = ParseLine(IsValidUtf8(raw) ? FromUtf8(raw) : FromCp1252(raw));
        line.hasRaw = true;
        line.rawBegin = start;
        line.rawLength = raw.size();
        document.m_lines.push_back(std::move(line));
        start = end + 1;
    }
    return document;
}

std::string ProfileDocument::Serialize() const {
    std::string bytes;
    if (m_byteOrderMark)
        bytes += kUtf8Mark;
    const char* lineEnd = m_carriageReturn ? "\r\n" : "\n";
    for (const Line& line : m_lines) {
        if (line.hasRaw) {
            bytes.append(m_source, line.rawBegin, line.rawLength);
            bytes += '\n';
            continue;
        }
        switch (line.kind) {
            case Kind::Blank:
                break;
            case Kind::Header:
                bytes += '[' + ToUtf8(line.name) + ']';
                break;
            case Kind::Entry:
                bytes += ToUtf8(line.name);
                if (line.value)
                    bytes += '=' + ToUtf8(*line.value);
                break;
        }
        bytes += lineEnd;
    }
    return bytes;
}

std::optional<ProfileDocument::Section> ProfileDocument::FindSection(std::wstring_view name) const {
    name = TrimProfileSpace(name);
    std::size_t header = npos;
    std::size_t begin = 0;
    bool found = name.empty();  // the lines before the first header
    for (std::size_t i = 0; i <= m_lines.size(); ++i) {
        const bool atEnd = i == m_lines.size();
        if (!atEnd && m_lines[i].kind != Kind::Header)
            continue;
        if (found)
            return Section{header, begin, i};
        if (atEnd)
            break;
        header = i;
        begin = i + 1;
        found = EqualNoCase(m_lines[i].name, name);
    }
    return std::nullopt;
}

std::optional<std::size_t> ProfileDocument::FindEntry(const Section& section,
                                                      std::wstring_view key) const {
    key = TrimProfileSpace(key);
    for (std::size_t i = section.begin; i < section.end; ++i) {
        if (m_lines[i].kind == Kind::Entry && EqualNoCase(m_lines[i].name, key))
            return i;
    }
    return std::nullopt;
}

std::vector<std::wstring> ProfileDocument::SectionNames() const {
    std::vector<std::wstring> names;
    for (const Line& line : m_lines) {
        if (line.kind == Kind::Header && !line.name.empty())
            names.push_back(line.name);
    }
    return names;
}

void ProfileDocument::SetValue(std::size_t entry, const std::wstring& value) {
    const std::wstring key = m_lines[entry].name;
    m_lines[entry] = MakeLine(key + L"=" + value);
}

void ProfileDocument::Erase(std::size_t first, std::size_t last) {
    m_lines.erase(m_lines.begin() + static_cast<std::ptrdiff_t>(first),
                  m_lines.begin() + static_cast<std::ptrdiff_t>(last));
}

std::size_t ProfileDocument::LastFilled(const Section& section) const {
    std::size_t at = section.begin;
    for (std::size_t i = section.begin; i < section.end; ++i) {
        if (m_lines[i].kind != Kind::Blank)
            at = i + 1;
    }
    return at;
}

void ProfileDocument::AddEntry(const Section& section, const std::wstring& key,
                               const std::wstring& value) {
    const std::size_t at = LastFilled(section);
    m_lines.insert(m_lines.begin() + static_cast<std::ptrdiff_t>(at), MakeLine(key + L"=" + value));
}

ProfileDocument::Section ProfileDocument::AddSection(const std::wstring& name) {
    Line header;
    header.kind = Kind::Header;
    header.name = name;
    for (wchar_t& c : header.name) {
        if (c == L'\r' || c == L'\n')
            c = L' ';
    }
    m_lines.push_back(std::move(header));
    return Section{m_lines.size() - 1, m_lines.size(), m_lines.size()};
}

void ProfileDocument::ReplaceLines(const Section& section, const std::vector<std::wstring>& lines) {
    const std::size_t keepFrom = LastFilled(section);
    std::vector<Line> made;
    made.reserve(lines.size());
    for (const std::wstring& text : lines)
        made.push_back(MakeLine(text));
    Erase(section.begin, keepFrom);
    m_lines.insert(m_lines.begin() + static_cast<std::ptrdiff_t>(section.begin),
                   std::make_move_iterator(made.begin()), std::make_move_iterator(made.end()));
}
