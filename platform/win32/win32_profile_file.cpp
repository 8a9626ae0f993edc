#include "platform/win32/win32_profile_file.h"

#include <windows.h>

#include <algorithm>
#include <limits>
#include <vector>

namespace {

// Buffer sizes are DWORDs; larger requests are served as the largest one.
DWORD BufferSize(std::size_t capacity) {
    return static_cast<DWORD>(std::min<std::size_t>(capacity, std::numeric_limits<DWORD>::max()));
}

// A buffer of terminated strings, as the section readers fill it: `length` characters up to the
// final terminator. A string cut at the end of the buffer still counts.
std::vector<std::wstring> SplitStrings(const std::wstring& buffer, std::size_t length) {
    std::vector<std::wstring> strings;
    std::size_t start = 0;
    while (start < length) {
        std::size_t end = buffer.find(L'\0', start);
        if (end == std::wstring::npos || end > length)
            end = length;
        if (end == start)
            break;
        strings.push_back(buffer.substr(start, end - start));
        start = end + 1;
    }
    return strings;
}

}  // namespace

std::wstring Win32ProfileFile::GetString(const std::wstring& path, const std::wstring& section,
                                         const std::wstring& key, const std::wstring& fallback,
                                         std::size_t capacity) {
    if (capacity == 0)
        return {};
    std::wstring buffer(capacity, L'\0');
    const DWORD length =
        ::GetPrivateProfileStringW(section.c_str(), key.c_str(), fallback.c_str(), buffer.data(),
                                   BufferSize(capacity), path.c_str());
    buffer.resize(std::min<std::size_t>(length, capacity - 1));
    return buffer;
}

bool Win32ProfileFile::WriteString(const std::wstring& path, const std::wstring& section,
                                   const std::wstring& key,
                                   const std::optional<std::wstring>& value) {
    return ::WritePrivateProfileStringW(section.c_str(), key.c_str(),
                                        value ? value->c_str() : nullptr, path.c_str()) != 0;
}

bool Win32ProfileFile::DeleteSection(const std::wstring& path, const std::wstring& section) {
    return ::WritePrivateProfileStringW(section.c_str(), nullptr, nullptr, path.c_str()) != 0;
}

int Win32ProfileFile::GetInt(const std::wstring& path, const std::wstring& section,
                             const std::wstring& key, int fallback) {
    return static_cast<int>(
        ::GetPrivateProfileIntW(section.c_str(), key.c_str(), fallback, path.c_str()));
}

std::vector<std::wstring> Win32ProfileFile::GetSection(const std::wstring& path,
                                                       const std::wstring& section,
                                                       std::size_t capacity) {
    if (capacity == 0)
        return {};
    std::wstring buffer(capacity, L'\0');
    const DWORD length = ::GetPrivateProfileSectionW(section.c_str(), buffer.data(),
                                                     BufferSize(capacity), path.c_str());
    return SplitStrings(buffer, std::min<std::size_t>(length, capacity));
}

bool Win32ProfileFile::WriteSection(const std::wstring& path, const std::wstring& section,
                                    const std::optional<std::vector<std::wstring>>& lines) {
    if (!lines) {
        return ::WritePrivateProfileSectionW(section.c_str(), nullptr, path.c_str()) != 0;
    }
    // Terminated strings and one more terminator; an empty line ends the text there, as it
    // would in any such buffer.
    std::wstring text;
    for (const std::wstring& line : *lines) {
        text += line;
        text += L'\0';
    }
    text += L'\0';
    return ::WritePrivateProfileSectionW(section.c_str(), text.c_str(), path.c_str()) != 0;
}

std::vector<std::wstring> Win32ProfileFile::GetSectionNames(const std::wstring& path,
                                                            std::size_t capacity) {
    if (capacity == 0)
        return {};
    std::wstring buffer(capacity, L'\0');
    const DWORD length =
        ::GetPrivateProfileSectionNamesW(buffer.data(), BufferSize(capacity), path.c_str());
    return SplitStrings(buffer, std::min<std::size_t>(length, capacity));
}

bool Win32ProfileFile::GetStruct(const std::wstring& path, const std::wstring& section,
                                 const std::wstring& key, void* data, std::size_t size) {
    if (size > std::numeric_limits<UINT>::max())
        return false;
    // The stored text must be exactly the bytes and the checksum: not every implementation of
    // the platform function refuses a longer value whose first bytes happen to sum right.
    const std::size_t digits = (size + 1) * 2;
    if (GetString(path, section, key, L"", digits + 2).size() != digits)
        return false;
    // The platform decodes into the buffer before it checks the checksum; a failed read must
    // leave the caller's data as it was.
    std::vector<unsigned char> read(std::max<std::size_t>(size, 1));
    if (!::GetPrivateProfileStructW(section.c_str(), key.c_str(), read.data(),
                                    static_cast<UINT>(size), path.c_str())) {
        return false;
    }
    std::copy(read.begin(), read.begin() + static_cast<std::ptrdiff_t>(size),
              static_cast<unsigned char*>(data));
    return true;
}

bool Win32ProfileFile::WriteStruct(const std::wstring& path, const std::wstring& section,
                                   const std::wstring& key, const void* data, std::size_t size) {
    if (size > std::numeric_limits<UINT>::max())
        return false;
    // To the platform a null pointer means "remove the key"; to the port, no bytes are still
    // data, stored as the checksum alone.
    unsigned char none = 0;
    void* bytes = data != nullptr ? const_cast<void*>(data) : &none;
    return ::WritePrivateProfileStructW(section.c_str(), key.c_str(), bytes,
                                        static_cast<UINT>(size), path.c_str()) != 0;
}
