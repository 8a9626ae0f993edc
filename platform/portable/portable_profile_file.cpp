#include "platform/portable/portable_profile_file.h"

#include <algorithm>
#include <cstdint>

#include "platform/portable/profile_document.h"
#include "ports/file_system.h"
#include "ports/port.h"
#include "foundation/hex_digit.h"

namespace {

enum class FileState { Missing, Unreadable, Read };

struct LoadedFile {
    FileState state = FileState::Missing;
    ProfileDocument document;
};

LoadedFile Load(const std::wstring& path) {
    LoadedFile loaded;
    FileSystem& files = Use<FileSystem>();
    const auto found = files.Stat(path);
    if (!found)
        return loaded;
    const auto bytes =
        found->isFolder ? std::nullopt : files.ReadAll(path, PortableProfileFile::kMaxFileBytes);
    if (!bytes) {
        loaded.state = FileState::Unreadable;
        return loaded;
    }
    loaded.state = FileState::Read;
    loaded.document = ProfileDocument::Parse(*bytes);
    return loaded;
}

bool Save(const std::wstring& path, const ProfileDocument& document) {
    return Use<FileSystem>().WriteAtomic(path, document.Serialize());
}

// A value as the string reader hands it out: one pair of matching quotes around it taken off,
// and cut to fit `capacity` characters with the terminator. The quote is dropped from the end
// only when the cut left it in, so a cut inside a quoted value loses one more character; the
// platform's reader does the same.
std::wstring CopyEntry(std::wstring_view value, std::size_t capacity) {
    if (capacity == 0)
        return {};
    bool quoted = false;
    if (value.size() > 1 && (value.front() == L'\'' || value.front() == L'"') &&
        value.back() == value.front()) {
        quoted = true;
        value.remove_prefix(1);
    }
    std::wstring copy(value.substr(0, capacity - 1));
    if (quoted && capacity >= value.size() && !copy.empty())
        copy.pop_back();
    return copy;
}

// The section lines as the platform puts them into a buffer of `capacity` characters: each
// "key=value" (or a lone key) with its terminator, blank lines and comments left out. The string
// that does not fit is cut, and nothing follows it.
std::vector<std::wstring> FillSectionBuffer(const ProfileDocument& document,
                                            const ProfileDocument::Section& section,
                                            std::size_t capacity) {
    std::vector<std::wstring> result;
    std::size_t left = capacity;  // characters still free in the platform's buffer
    const auto& lines = document.Lines();
    for (std::size_t i = section.begin; i < section.end && left > 2; ++i) {
        const auto& line = lines[i];
        if (line.kind != ProfileDocument::Kind::Entry)
            continue;
        if (!line.name.empty() && line.name.front() == L';')
            continue;
        std::wstring text = line.name.substr(0, left - 2);
        left -= text.size() + 1;
        if (left >= 2 && line.value) {
            const std::size_t count = std::min(line.value->size(), left - 2);
            left -= count + 1;
            text += L'=';
            text.append(*line.value, 0, count);
        }
        result.push_back(std::move(text));
        if (left < 2)
            break;
    }
    return result;
}

// Section names into a buffer of `capacity` characters; the name that reaches the end of the
// buffer is cut to leave room for the double terminator, and ends the list.
std::vector<std::wstring> FillNamesBuffer(const std::vector<std::wstring>& names,
                                          std::size_t capacity) {
    std::vector<std::wstring> result;
    if (capacity < 2)
        return result;
    std::size_t left = capacity - 1;
    for (const std::wstring& name : names) {
        const std::size_t needed = name.size() + 1;
        if (needed >= left) {
            if (left > 1)
                result.push_back(name.substr(0, left - 1));
            break;
        }
        result.push_back(name);
        left -= needed;
    }
    return result;
}

// The platform's integer reading: blanks, a sign, decimal digits; wraps like its 32-bit sum.
int ParseProfileInt(std::wstring_view text) {
    std::size_t i = 0;
    while (i < text.size() && text[i] <= L' ')
        ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == L'+' || text[i] == L'-'))
        negative = text[i++] == L'-';
    std::uint32_t total = 0;
    for (; i < text.size() && text[i] >= L'0' && text[i] <= L'9'; ++i) {
        total = total * 10u + static_cast<std::uint32_t>(text[i] - L'0');
    }
    if (negative)
        total = 0u - total;
    return static_cast<int>(total);
}

}  // namespace

std::wstring PortableProfileFile::GetString(const std::wstring& path, const std::wstring& section,
                                            const std::wstring& key, const std::wstring& fallback,
                                            std::size_t capacity) {
    const LoadedFile loaded = Load(path);
    if (const auto found = loaded.document.FindSection(section)) {
        if (const auto entry = loaded.document.FindEntry(*found, key)) {
            const auto& value = loaded.document.Lines()[*entry].value;
            if (value)
                return CopyEntry(*value, capacity);
        }
    }
    std::wstring_view trimmed = fallback;
    while (!trimmed.empty() && trimmed.back() == L' ')
        trimmed.remove_suffix(1);
    return CopyEntry(trimmed, capacity);
}

bool PortableProfileFile::WriteString(const std::wstring& path, const std::wstring& section,
                                      const std::wstring& key,
                                      const std::optional<std::wstring>& value) {
    LoadedFile loaded = Load(path);
    if (loaded.state == FileState::Unreadable)
        return false;
    ProfileDocument& document = loaded.document;
    auto found = document.FindSection(section);
    if (!value) {
        const auto entry = found ? document.FindEntry(*found, key) : std::nullopt;
        if (!entry)
            return true;
        document.Erase(*entry, *entry + 1);
        return Save(path, document);
    }
    std::wstring_view text = *value;
    while (!text.empty() && IsProfileSpace(text.front()))
        text.remove_prefix(1);
    const std::wstring stored(text);
    if (!found)
        found = document.AddSection(section);
    if (const auto entry = document.FindEntry(*found, key)) {
        if (document.Lines()[*entry].value == stored)
            return true;
        document.SetValue(*entry, stored);
    } else {
        document.AddEntry(*found, std::wstring(TrimProfileSpace(key)), stored);
    }
    return Save(path, document);
}

bool PortableProfileFile::DeleteSection(const std::wstring& path, const std::wstring& section) {
    LoadedFile loaded = Load(path);
    if (loaded.state == FileState::Unreadable)
        return false;
    const auto found = loaded.document.FindSection(section);
    if (!found)
        return true;
    const std::size_t first = found->header == ProfileDocument::npos ? found->begin : found->header;
    if (first == found->end)
        return true;
    loaded.document.Erase(first, found->end);
    return Save(path, loaded.document);
}

int PortableProfileFile::GetInt(const std::wstring& path, const std::wstring& section,
                                const std::wstring& key, int fallback) {
    // The platform reads the value into a buffer of 30 characters before it converts it.
    const std::wstring text = GetString(path, section, key, L"", 30);
    return text.empty() ? fallback : ParseProfileInt(text);
}

std::vector<std::wstring> PortableProfileFile::GetSection(const std::wstring& path,
                                                          const std::wstring& section,
                                                          std::size_t capacity) {
    const LoadedFile loaded = Load(path);
    const auto found = loaded.document.FindSection(section);
    if (!found)
        return {};
    return FillSectionBuffer(loaded.document, *found, capacity);
}

bool PortableProfileFile::WriteSection(const std::wstring& path, const std::wstring& section,
                                       const std::optional<std::vector<std::wstring>>& lines) {
    if (!lines)
        return DeleteSection(path, section);
    LoadedFile loaded = Load(path);
    if (loaded.state == FileState::Unreadable)
        return false;
    // The platform takes the lines as one buffer of terminated strings: an empty line ends it.
    std::vector<std::wstring> kept;
    for (const std::wstring& line : *lines) {
        if (line.empty())
            break;
        kept.push_back(line);
    }
    auto found = loaded.document.FindSection(section);
    if (!found)
        found = loaded.document.AddSection(section);
    loaded.document.ReplaceLines(*found, kept);
    return Save(path, loaded.document);
}

std::vector<std::wstring> PortableProfileFile::GetSectionNames(const std::wstring& path,
                                                               std::size_t capacity) {
    return FillNamesBuffer(Load(path).document.SectionNames(), capacity);
}

bool PortableProfileFile::GetStruct(const std::wstring& path, const std::wstring& section,
                                    const std::wstring& key, void* data, std::size_t size) {
    const LoadedFile loaded = Load(path);
    const auto found = loaded.document.FindSection(section);
    const auto entry = found ? loaded.document.FindEntry(*found, key) : std::nullopt;
    if (!entry)
        return false;
    const auto& value = loaded.document.Lines()[*entry].value;
    if (!value || value->size() != (size + 1) * 2)
        return false;
    std::vector<unsigned char> bytes(size + 1);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const int high = HexDigitValue((*value)[2 * i]);
        const int low = HexDigitValue((*value)[2 * i + 1]);
        if (high < 0 || low < 0)
            return false;
        bytes[i] = static_cast<unsigned char>(high * 16 + low);
    }
    unsigned char sum = 0;
    for (std::size_t i = 0; i < size; ++i)
        sum = static_cast<unsigned char>(sum + bytes[i]);
    if (sum != bytes[size])
        return false;
    if (size > 0)
        std::copy(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size),
                  static_cast<unsigned char*>(data));
    return true;
}

bool PortableProfileFile::WriteStruct(const std::wstring& path, const std::wstring& section,
                                      const std::wstring& key, const void* data, std::size_t size) {
    static constexpr wchar_t kHex[] = L"0123456789ABCDEF";
    std::wstring text;
    text.reserve((size + 1) * 2);
    const auto* bytes = static_cast<const unsigned char*>(data);
    unsigned char sum = 0;
    for (std::size_t i = 0; i < size; ++i) {
        text += kHex[bytes[i] >> 4];
        text += kHex[bytes[i] & 0x0F];
        sum = static_cast<unsigned char>(sum + bytes[i]);
    }
    text += kHex[sum >> 4];
    text += kHex[sum & 0x0F];
    return WriteString(path, section, key, text);
}
