#include "foundation/file_info.h"

#include <cwchar>

#include "foundation/no_case.h"
#include "ports/file_system.h"
#include "ports/port.h"
#include "ports/shell.h"

CFileInfo::CFileInfo(const std::wstring& path) {
    SetFile(path);
}

void CFileInfo::SetFile(const std::wstring& path) {
    m_path.SetPath(path);
    if (IsInstalled<Shell>()) {
        const ShellFileInfo shell = Use<Shell>().DescribeFile(path);
        m_iIcon = shell.iconIndex;
        m_strTypeName = shell.typeName;
    }
    // What an earlier file gave goes first: a file that isn't found has no size or date.
    m_strDate.clear();
    m_strSize.clear();
    m_time = 0;
    m_nLength = 0;
    const auto found = Use<FileSystem>().Find(path);
    if (found.empty())
        return;
    m_nLength = static_cast<std::uint32_t>(found.front().size);
    m_time = found.front().lastWriteTime;
    m_strSize = FileSizeText(m_nLength);

    const std::time_t seconds = static_cast<std::time_t>(m_time);
    std::tm local{};
#ifdef _WIN32
    const bool converted = localtime_s(&local, &seconds) == 0;
#else
    const bool converted = localtime_r(&seconds, &local) != nullptr;
#endif
    m_strDate = converted ? FileDateText(local) : std::wstring();
}

bool CFileInfo::HasFileTitle(const std::wstring& name) const {
    return EqualNoCase(m_path.m_szFile, name);
}

std::wstring FileSizeText(std::uint32_t length) {
    wchar_t text[32];
    if (length <= 1000) {
        std::swprintf(text, 32, L"%i bytes", static_cast<int>(length));
    } else {
        std::swprintf(text, 32, L"%i KB", static_cast<int>(length / 1000));
    }
    return text;
}

std::wstring FileDateText(const std::tm& local) {
    const int hour12 = local.tm_hour % 12 == 0 ? 12 : local.tm_hour % 12;
    wchar_t text[128];
    const int length = std::swprintf(text, 128, L"%i/%i/%i %i:%02i %ls", local.tm_mon + 1,
                                     local.tm_mday, local.tm_year + 1900, hour12, local.tm_min,
                                     local.tm_hour < 12 ? L"AM" : L"PM");
    return length < 0 ? std::wstring() : std::wstring(text);
}
