#pragma once
// A path with what the shell and the file system say about the file: icon, type, size, date.

#include <cstdint>
#include <ctime>
#include <string>

#include "foundation/file_path.h"

class CFileInfo {
public:
    CFileInfo() = default;
    explicit CFileInfo(const std::wstring& path);
    virtual ~CFileInfo() = default;
    CFileInfo(const CFileInfo&) = default;
    CFileInfo& operator=(const CFileInfo&) = default;

    void SetFile(const std::wstring& path);
    bool HasFileTitle(const std::wstring& name) const;

    // Ordering and equality go by the last-written time alone.
    friend bool operator<(const CFileInfo& a, const CFileInfo& b) { return a.m_time < b.m_time; }
    friend bool operator==(const CFileInfo& a, const CFileInfo& b) { return a.m_time == b.m_time; }

    CFilePath m_path;
    int m_iIcon = -1;
    std::wstring m_strTypeName;
    std::wstring m_strDate;
    std::int64_t m_time = 0;
    std::wstring m_strSize;
    std::uint32_t m_nLength = 0;
    std::uint32_t m_nReserved = 0;
};

// "1000 bytes", "1 KB": a thousand, not 1024, is meant.
std::wstring FileSizeText(std::uint32_t length);
// "3/5/2024 9:07 AM": month, day and hour without leading zeros.
std::wstring FileDateText(const std::tm& local);
