#pragma once
// The profile file port on the window system's private profile functions.

#include "ports/profile_file.h"

class Win32ProfileFile : public ProfileFile {
public:
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
