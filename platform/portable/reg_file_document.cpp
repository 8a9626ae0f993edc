#include "platform/portable/reg_file_document.h"

#include <algorithm>
#include <cstdint>

#include "foundation/no_case.h"
#include "foundation/text_encoding.h"
#include "foundation/hex_digit.h"

namespace {

constexpr std::wstring_view kHeader = L"Windows Registry Editor Version 5.00";
constexpr std::wstring_view kOldHeader = L"REGEDIT4";
// The registry editor breaks hex data after this many columns.
constexpr std::size_t kHexLineWidth = 76;

std::wstring_view Trim(std::wstring_view text) {
    while (!text.empty() && (text.front() == L' ' || text.front() == L'\t'))
        text.remove_prefix(1);
    while (!text.empty() && (text.back() == L' ' || text.back() == L'\t' || text.back() == L'\r'))
        text.remove_suffix(1);
    return text;
}

std::wstring DecodeText(std::string_view bytes) {
    if (bytes.size() >= 2 && static_cast<unsigned char>(bytes[0]) == 0xFF &&
        static_cast<unsigned char>(bytes[1]) == 0xFE) {
        return FromUtf16Le(bytes.substr(2));
    }
    if (bytes.size() >= 3 && bytes.substr(0, 3) == "\xEF\xBB\xBF")
        bytes.remove_prefix(3);
    return FromUtf8(bytes);
}

std::vector<std::wstring> SplitLines(const std::wstring& text) {
    std::vector<std::wstring> lines;
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = text.find(L'\n', start);
        if (end == std::wstring::npos)
            end = text.size();
        std::wstring line = text.substr(start, end - start);
        if (!line.empty() && line.back() == L'\r')
            line.pop_back();
        lines.push_back(std::move(line));
        start = end + 1;
    }
    return lines;
}

// Up to `maxDigits` hex digits and nothing else.
std::optional<std::uint32_t> ParseHexNumber(std::wstring_view text, std::size_t maxDigits) {
    if (text.empty() || text.size() > maxDigits)
        return std::nullopt;
    std::uint32_t number = 0;
    for (wchar_t c : text) {
        int digit = HexDigitValue(c);
        if (digit < 0)
            return std::nullopt;
        number = (number << 4) | static_cast<std::uint32_t>(digit);
    }
    return number;
}

// "xx,xx, xx" with line breaks already joined; an empty list is no bytes.
std::optional<std::vector<std::uint8_t>> ParseHexBytes(std::wstring_view text) {
    std::vector<std::uint8_t> bytes;
    text = Trim(text);
    if (text.empty())
        return bytes;
    while (true) {
        std::size_t comma = text.find(L',');
        auto byte = ParseHexNumber(Trim(text.substr(0, comma)), 2);
        if (!byte)
            return std::nullopt;
        bytes.push_back(static_cast<std::uint8_t>(*byte));
        if (comma == std::wstring_view::npos)
            return bytes;
        text.remove_prefix(comma + 1);
        // The editor leaves a comma before each line break; a final one ends the list.
        if (Trim(text).empty())
            return bytes;
    }
}

// A quoted string starting at text[0] == '"'; returns the text and how much was used.
std::optional<std::pair<std::wstring, std::size_t>> ParseQuoted(std::wstring_view text) {
    std::wstring out;
    for (std::size_t i = 1; i < text.size(); ++i) {
        wchar_t c = text[i];
        if (c == L'"')
            return std::make_pair(out, i + 1);
        if (c == L'\\' && i + 1 < text.size() && (text[i + 1] == L'\\' || text[i + 1] == L'"')) {
            c = text[++i];
        }
        out.push_back(c);
    }
    return std::nullopt;
}

std::optional<RegValue> ParseData(std::wstring_view data) {
    data = Trim(data);
    if (!data.empty() && data.front() == L'"') {
        auto quoted = ParseQuoted(data);
        if (!quoted || !Trim(data.substr(quoted->second)).empty())
            return std::nullopt;
        return RegValue{reg::kSz, reg::StringBytes(quoted->first)};
    }
    std::size_t colon = data.find(L':');
    if (colon == std::wstring_view::npos)
        return std::nullopt;
    std::wstring_view kind = data.substr(0, colon);
    std::wstring_view rest = data.substr(colon + 1);
    if (EqualNoCase(kind, L"dword")) {
        auto number = ParseHexNumber(Trim(rest), 8);
        if (!number)
            return std::nullopt;
        RegValue value{reg::kDword, {}};
        for (int shift = 0; shift < 32; shift += 8)
            value.data.push_back(static_cast<std::uint8_t>((*number >> shift) & 0xFF));
        return value;
    }
    std::uint32_t type = reg::kBinary;
    if (kind.size() > 5 && EqualNoCase(kind.substr(0, 4), L"hex(") && kind.back() == L')') {
        auto number = ParseHexNumber(kind.substr(4, kind.size() - 5), 8);
        if (!number)
            return std::nullopt;
        type = *number;
    } else if (!EqualNoCase(kind, L"hex")) {
        return std::nullopt;
    }
    auto bytes = ParseHexBytes(rest);
    if (!bytes)
        return std::nullopt;
    return RegValue{type, std::move(*bytes)};
}

// One logical value line; nullopt for anything else (a deletion "=-" included).
std::optional<RegFileValue> ParseValueLine(std::wstring_view line) {
    line = Trim(line);
    RegFileValue entry;
    std::size_t used = 0;
    if (!line.empty() && line.front() == L'@') {
        used = 1;
    } else if (!line.empty() && line.front() == L'"') {
        auto quoted = ParseQuoted(line);
        if (!quoted)
            return std::nullopt;
        entry.name = quoted->first;
        used = quoted->second;
    } else {
        return std::nullopt;
    }
    std::wstring_view rest = Trim(line.substr(used));
    if (rest.empty() || rest.front() != L'=')
        return std::nullopt;
    auto value = ParseData(rest.substr(1));
    if (!value)
        return std::nullopt;
    entry.value = std::move(*value);
    return entry;
}

// "[HKEY_...\\path]" as a hive and a normalised path.
std::optional<std::pair<RegHive, std::wstring>> ParseKeyLine(std::wstring_view line) {
    line = Trim(line);
    if (line.size() < 3 || line.front() != L'[' || line.back() != L']' || line[1] == L'-')
        return std::nullopt;
    std::wstring path = NormalizeKeyPath(line.substr(1, line.size() - 2));
    std::size_t cut = path.find(L'\\');
    RegHive hive = reg::HiveFromName(std::wstring_view(path).substr(0, cut));
    if (hive == RegHive::None)
        return std::nullopt;
    return std::make_pair(hive, cut == std::wstring::npos ? std::wstring() : path.substr(cut + 1));
}

bool EndsWithContinuation(std::wstring_view line) {
    line = Trim(line);
    return !line.empty() && line.back() == L'\\';
}

// The physical lines of one logical line starting at `index`: hex data goes on after a
// trailing backslash, but never onto a blank line or a key, which would swallow them.
std::size_t LogicalLineEnd(const std::vector<std::wstring>& lines, std::size_t index) {
    std::size_t end = index;
    while (end + 1 < lines.size() && EndsWithContinuation(lines[end])) {
        std::wstring_view next = Trim(lines[end + 1]);
        if (next.empty() || next.front() == L'[')
            break;
        ++end;
    }
    return end + 1;
}

std::wstring JoinContinued(const std::vector<std::wstring>& lines, std::size_t from,
                           std::size_t to) {
    std::wstring joined;
    for (std::size_t i = from; i < to; ++i) {
        std::wstring_view part = Trim(lines[i]);
        if (i + 1 < to)
            part.remove_suffix(1);  // the backslash
        joined += part;
    }
    return joined;
}

void AppendLine(std::wstring& out, std::wstring_view line) {
    out += line;
    out += L"\r\n";
}

// A kept group of lines as it was. One that ends in a backslash gets a blank line after it, so
// that it does not take in whatever is written next when the file is read again.
void AppendKept(std::wstring& out, std::wstring_view group) {
    for (std::size_t cut; (cut = group.find(L'\n')) != std::wstring_view::npos;) {
        AppendLine(out, group.substr(0, cut));
        group.remove_prefix(cut + 1);
    }
    AppendLine(out, group);
    if (EndsWithContinuation(group))
        AppendLine(out, L"");
}

std::wstring Quote(std::wstring_view text) {
    std::wstring out = L"\"";
    for (wchar_t c : text) {
        if (c == L'\\' || c == L'"')
            out += L'\\';
        out += c;
    }
    return out + L'"';
}

// Whether a string value can be written in quotes and read back to the same bytes: one
// terminator at the very end and no control characters, which would break the line.
bool IsQuotable(const RegValue& value) {
    if (value.type != reg::kSz)
        return false;
    std::wstring text = reg::StringText(value.data);
    if (std::any_of(text.begin(), text.end(), [](wchar_t c) { return c < 0x20; }))
        return false;
    return reg::StringBytes(text) == value.data;
}

std::wstring HexByte(std::uint8_t byte) {
    constexpr wchar_t digits[] = L"0123456789abcdef";
    return {digits[byte >> 4], digits[byte & 0xF]};
}

std::wstring FormatValue(const RegFileValue& entry) {
    std::wstring line = entry.name.empty() ? L"@=" : Quote(entry.name) + L'=';
    const RegValue& value = entry.value;
    if (IsQuotable(value))
        return line + Quote(reg::StringText(value.data));
    if (value.type == reg::kDword && value.data.size() == 4) {
        line += L"dword:";
        for (int i = 3; i >= 0; --i)
            line += HexByte(value.data[i]);
        return line;
    }
    if (value.type == reg::kBinary) {
        line += L"hex:";
    } else {
        std::wstring type;
        for (std::uint32_t t = value.type; type.empty() || t != 0; t >>= 4)
            type.insert(type.begin(), L"0123456789abcdef"[t & 0xF]);
        line += L"hex(" + type + L"):";
    }
    std::size_t column = line.size();
    for (std::size_t i = 0; i < value.data.size(); ++i) {
        line += HexByte(value.data[i]);
        column += 2;
        if (i + 1 == value.data.size())
            break;
        line += L',';
        ++column;
        if (column > kHexLineWidth) {
            line += L"\\\r\n  ";
            column = 2;
        }
    }
    return line;
}

}  // namespace

std::wstring NormalizeKeyPath(std::wstring_view path) {
    std::wstring normal;
    std::size_t start = 0;
    while (start <= path.size()) {
        std::size_t end = std::min(path.find(L'\\', start), path.size());
        if (end > start) {
            if (!normal.empty())
                normal += L'\\';
            normal += path.substr(start, end - start);
        }
        start = end + 1;
    }
    return normal;
}

RegFileValue* FindValue(RegFileKey& key, std::wstring_view name) {
    for (RegFileValue& value : key.values) {
        if (EqualNoCase(value.name, name))
            return &value;
    }
    return nullptr;
}

std::optional<RegFileDocument> RegFileDocument::Parse(std::string_view bytes) {
    RegFileDocument document;
    std::vector<std::wstring> lines = SplitLines(DecodeText(bytes));
    std::size_t index = 0;
    while (index < lines.size() && Trim(lines[index]).empty())
        ++index;
    if (index == lines.size())
        return document;
    std::wstring_view header = Trim(lines[index]);
    if (header != kHeader && header != kOldHeader)
        return std::nullopt;

    RegFileKey* current = nullptr;
    auto keep = [&](std::size_t from, std::size_t to) {
        std::wstring group = lines[from];
        for (std::size_t i = from + 1; i < to; ++i)
            group += L'\n' + lines[i];
        (current ? current->keptLines : document.m_prologue).push_back(std::move(group));
    };
    for (++index; index < lines.size();) {
        std::wstring_view line = Trim(lines[index]);
        if (line.empty()) {
            ++index;
            continue;
        }
        if (line.front() == L'[') {
            if (auto key = ParseKeyLine(line)) {
                current = &document.AddKey(key->first, key->second);
            } else {
                // Values under a key that cannot be named are kept with its header, unparsed.
                document.m_keys.push_back(RegFileKey{});
                current = &document.m_keys.back();
                current->keptLines.push_back(lines[index]);
            }
            ++index;
            continue;
        }
        std::size_t end = LogicalLineEnd(lines, index);
        std::optional<RegFileValue> value;
        if (current && current->hive != RegHive::None)
            value = ParseValueLine(JoinContinued(lines, index, end));
        if (value) {
            if (RegFileValue* existing = FindValue(*current, value->name)) {
                existing->value = std::move(value->value);  // the last one wins, as on import
            } else {
                current->values.push_back(std::move(*value));
            }
        } else {
            keep(index, end);
        }
        index = end;
    }
    return document;
}

std::string RegFileDocument::Serialize() const {
    std::wstring text;
    AppendLine(text, kHeader);
    AppendLine(text, L"");
    for (const std::wstring& line : m_prologue)
        AppendKept(text, line);
    if (!m_prologue.empty())
        AppendLine(text, L"");
    for (const RegFileKey& key : m_keys) {
        if (key.hive != RegHive::None) {
            std::wstring full(reg::HiveName(key.hive));
            if (!key.path.empty())
                full += L'\\' + key.path;
            AppendLine(text, L'[' + full + L']');
            for (const RegFileValue& value : key.values)
                AppendLine(text, FormatValue(value));
        }
        for (const std::wstring& line : key.keptLines)
            AppendKept(text, line);
        AppendLine(text, L"");
    }
    std::vector<std::uint8_t> units = reg::StringBytes(text);
    units.resize(units.size() - 2);  // no terminator in a file
    std::string bytes = "\xFF\xFE";
    bytes.append(units.begin(), units.end());
    return bytes;
}

RegFileKey* RegFileDocument::FindKey(RegHive hive, std::wstring_view path) {
    for (RegFileKey& key : m_keys) {
        if (key.hive == hive && hive != RegHive::None && EqualNoCase(key.path, path))
            return &key;
    }
    return nullptr;
}

const RegFileKey* RegFileDocument::FindKey(RegHive hive, std::wstring_view path) const {
    return const_cast<RegFileDocument*>(this)->FindKey(hive, path);
}

RegFileKey& RegFileDocument::AddKey(RegHive hive, const std::wstring& path) {
    if (RegFileKey* key = FindKey(hive, path))
        return *key;
    m_keys.push_back(RegFileKey{hive, path, {}, {}});
    return m_keys.back();
}

bool RegFileDocument::HasKeyOrDescendant(RegHive hive, std::wstring_view path) const {
    if (path.empty())
        return hive != RegHive::None;  // a hive always exists
    for (const RegFileKey& key : m_keys) {
        if (key.hive != hive || key.path.size() < path.size())
            continue;
        std::wstring_view head = std::wstring_view(key.path).substr(0, path.size());
        if (EqualNoCase(head, path) &&
            (key.path.size() == path.size() || key.path[path.size()] == L'\\'))
            return true;
    }
    return false;
}

std::vector<std::wstring> RegFileDocument::ChildNames(RegHive hive, std::wstring_view path) const {
    std::vector<std::wstring> names;
    for (const RegFileKey& key : m_keys) {
        if (key.hive != hive || hive == RegHive::None)
            continue;
        std::wstring_view rest = key.path;
        if (!path.empty()) {
            if (rest.size() <= path.size() + 1 || rest[path.size()] != L'\\' ||
                !EqualNoCase(rest.substr(0, path.size()), path))
                continue;
            rest.remove_prefix(path.size() + 1);
        } else if (rest.empty()) {
            continue;
        }
        std::wstring child(rest.substr(0, rest.find(L'\\')));
        bool known = std::any_of(names.begin(), names.end(), [&](const std::wstring& name) {
            return EqualNoCase(name, child);
        });
        if (!known)
            names.push_back(child);
    }
    return names;
}
