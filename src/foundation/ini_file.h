#pragma once
// A text file of "[section]" headers and "key=value" lines. The object holds only the file's
// path: every operation reads or rewrites the file, so two objects on one path always see each
// other's writes.

#include <istream>
#include <map>
#include <string>
#include <vector>

class HvIniFile {
public:
    // Characters read at most by one call; longer results come back cut.
    static constexpr std::size_t kValueLimit = 4000;
    static constexpr std::size_t kSectionLimit = 64000;
    static constexpr std::size_t kCopyLimit = 32767;

    explicit HvIniFile(bool removeEmpty = true);
    HvIniFile(const std::wstring& path, bool removeEmpty);
    // Copies the stream's lines into a new temporary file, removed again by the destructor.
    HvIniFile(std::wistream& text, bool removeEmpty);
    virtual ~HvIniFile();
    HvIniFile(const HvIniFile&) = delete;
    HvIniFile& operator=(const HvIniFile&) = delete;

    bool WriteBool(const std::wstring& section, const std::wstring& key, bool value);
    void WriteInt(const std::wstring& section, const std::wstring& key, int value);
    void WriteDouble(const std::wstring& section, const std::wstring& key, double value);
    // False when the file could not be written.
    bool WriteString(const std::wstring& section, const std::wstring& key,
                     const std::wstring& value);
    void WriteStruct(const std::wstring& section, const std::wstring& key, const void* data,
                     unsigned size);
    void DeleteSection(const std::wstring& section);
    void ClearSection(const std::wstring& section);
    // The section's lines replaced by `lines` ("key=value" each) in a single write of the file.
    void ReplaceSection(const std::wstring& section, const std::vector<std::wstring>& lines);
    void EnsureSection(const std::wstring& section);
    bool CopySection(const std::wstring& from, const std::wstring& to);
    bool RenameSection(const std::wstring& from, const std::wstring& to);

    std::wstring GetString(const std::wstring& section, const std::wstring& key,
                           const std::wstring& fallback = L"") const;
    bool GetBool(const std::wstring& section, const std::wstring& key, bool fallback) const;
    int GetInt(const std::wstring& section, const std::wstring& key, int fallback) const;
    double GetDouble(const std::wstring& section, const std::wstring& key, double fallback) const;
    bool GetStruct(const std::wstring& section, const std::wstring& key, void* data,
                   const unsigned* size) const;
    void GetKeys(const std::wstring& section, std::vector<std::wstring>& keys) const;
    void GetLines(const std::wstring& section, std::vector<std::wstring>& lines) const;
    void GetSectionMap(const std::wstring& section,
                       std::map<std::wstring, std::wstring>& map) const;
    void GetSectionNames(std::vector<std::wstring>& names) const;

    bool m_bDeleteTemp = true;
    bool m_bRemoveEmpty = true;
    std::wstring m_strPath;
    bool m_bIsTemp = false;
};
