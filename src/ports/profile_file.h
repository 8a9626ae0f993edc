#pragma once
// Text files of "[section]" headers and "key=value" lines, with the semantics of the
// platform's private profile functions: section and key names compare without regard to case,
// every call reads or rewrites the file, nothing is cached.
//
// Buffer sizes are in characters and count terminators as the platform's functions do, so that
// every backend cuts long results at the same place.

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

class ProfileFile {
public:
    virtual ~ProfileFile() = default;

    // The value of `key`, cut to `capacity` - 1 characters; `fallback` when the key or the file is
    // missing. An empty value reads as the empty string.
    virtual std::wstring GetString(const std::wstring& path, const std::wstring& section,
                                   const std::wstring& key, const std::wstring& fallback,
                                   std::size_t capacity) = 0;

    // Writes `key=value`; a null value removes the key. Section and file are created as needed.
    virtual bool WriteString(const std::wstring& path, const std::wstring& section,
                             const std::wstring& key, const std::optional<std::wstring>& value) = 0;

    // Removes the section with its header.
    virtual bool DeleteSection(const std::wstring& path, const std::wstring& section) = 0;

    // The leading decimal integer of the value ("12abc" gives 12), or `fallback` when absent.
    virtual int GetInt(const std::wstring& path, const std::wstring& section, const std::wstring& key,
                       int fallback) = 0;

    // Every line of the section in file order, as the platform returns it into a buffer of
    // `capacity` characters (each line with its terminator, plus a final one).
    virtual std::vector<std::wstring> GetSection(const std::wstring& path, const std::wstring& section,
                                                 std::size_t capacity) = 0;

    // Replaces the section's lines; a null text removes the section, an empty one leaves the header.
    virtual bool WriteSection(const std::wstring& path, const std::wstring& section,
                              const std::optional<std::vector<std::wstring>>& lines) = 0;

    // Section names in file order, as many as fit in `capacity` characters with terminators.
    virtual std::vector<std::wstring> GetSectionNames(const std::wstring& path,
                                                      std::size_t capacity) = 0;

    // Binary data as hexadecimal digits followed by a one-byte checksum (the sum of the bytes).
    // Reading fails unless the stored size and checksum match exactly.
    virtual bool GetStruct(const std::wstring& path, const std::wstring& section,
                           const std::wstring& key, void* data, std::size_t size) = 0;
    virtual bool WriteStruct(const std::wstring& path, const std::wstring& section,
                             const std::wstring& key, const void* data, std::size_t size) = 0;
};
