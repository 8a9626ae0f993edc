#pragma once
// The profile file port written over the file system port, for every platform. Reads follow the
// window system's private profile functions, including where they cut results that do not fit
// a buffer; every write replaces the file atomically and keeps each line it did not change.

#include <cstdint>

#include "ports/profile_file.h"

class ProfileDocument;

class PortableProfileFile : public ProfileFile {
public:
    // Files larger than this are not read; writes to them fail rather than lose their contents.
    static constexpr std::uint64_t kMaxFileBytes = 256ull << 20;

    std::wstring GetString(const std::wstring& path, const std::wstring& section,
                           const std::wstring& key, const std::wstring& fallback,
                           std::size_t capacity) override;
    bool WriteString(const std::wstring& path, const std::wstring& section, const std::wstring& key,
                     const std::optional<std::wstring>& value) override;
    bool DeleteSection(const std::wstring& path, const std::wstring& section) override;
    int GetInt(const std::wstring& path, const std::wstring& section, const std::wstring& key,
               int fallback) override;
    std::vector<std::wstring> GetSection(const std::wstring& path, const std::wstring& section,
                                         std::size_t capacity) override;
    bool WriteSection(const std::wstring& path, const std::wstring& section,
                      const std::optional<std::vector<std::wstring>>& lines) override;
    std::vector<std::wstring> GetSectionNames(const std::wstring& path,
                                              std::size_t capacity) override;
    bool GetStruct(const std::wstring& path, const std::wstring& section, const std::wstring& key,
                   void* data, std::size_t size) override;
    bool WriteStruct(const std::wstring& path, const std::wstring& section, const std::wstring& key,
                     const void* data, std::size_t size) override;
};
