#include "foundation/file_path.h"

#include <algorithm>
#include <cwchar>

#include "foundation/no_case.h"
#include "foundation/split.h"
#include "ports/file_system.h"
#include "ports/folder_dialog.h"
#include "ports/message_box.h"
#include "ports/port.h"

namespace {

template <std::size_t N>
void CopyCut(wchar_t (&target)[N], std::wstring_view text) {
    const std::size_t count = std::min(text.size(), N - 1);
    std::wmemcpy(target, text.data(), count);
    target[count] = L'\0';
}

std::wstring Doubled(const std::wstring& text) {
    std::wstring result;
    result.reserve(text.size());
    for (wchar_t c : text) {
        result += c;
        if (c == L'\\')
            result += c;
    }
    return result;
}

std::wstring WithoutTrailingSeparators(std::wstring text) {
    while (!text.empty() && IsPathSeparator(text.back()))
        text.pop_back();
    return text;
}

}  // namespace

bool IsPathSeparator(wchar_t c) {
    return c == L'\\' || c == L'/';
}

CFilePath::CFilePath() {
    SetPath(L"");
}

CFilePath::CFilePath(const std::wstring& path) {
    SetPath(path);
}

CFilePath::CFilePath(ThisModule) {
    SetModule();
}

void CFilePath::SetModule() {
    SetPath(Use<FileSystem>().ModulePath());
}

void CFilePath::SetPath(const std::wstring& text) {
    m_bExists = false;
    m_bIsFolder = false;
    m_strPath = text;
    if (!text.empty()) {
        FileSystem& files = Use<FileSystem>();
        if (const auto found = files.Stat(text)) {
            m_bExists = true;
            if (found->isFolder) {
                m_bIsFolder = true;
                m_strPath = WithoutTrailingSeparators(text) + files.Separator();
            }
        }
    }
    SplitParts();
}

void CFilePath::SplitParts() {
    std::wstring_view rest = m_strPath;
    std::wstring_view drive;
    if (rest.size() >= 2 && rest[1] == L':' &&
        ((rest[0] >= L'A' && rest[0] <= L'Z') || (rest[0] >= L'a' && rest[0] <= L'z'))) {
        drive = rest.substr(0, 2);
        rest.remove_prefix(2);
    }
    std::size_t nameStart = 0;
    for (std::size_t i = 0; i < rest.size(); ++i) {
        if (IsPathSeparator(rest[i]))
            nameStart = i + 1;
    }
    const std::wstring_view dir = rest.substr(0, nameStart);
    const std::wstring_view name = rest.substr(nameStart);
    const std::size_t dot = name.rfind(L'.');
    CopyCut(m_szDrive, drive);
    CopyCut(m_szDir, dir);
    CopyCut(m_szFile, name.substr(0, dot));
    CopyCut(m_szExt, dot == std::wstring_view::npos ? std::wstring_view() : name.substr(dot));
}

void CFilePath::Rebuild() {
    m_strPath = std::wstring(m_szDrive) + m_szDir + m_szFile + m_szExt;
}

std::wstring CFilePath::GetPath(bool doubled) const {
    return doubled ? Doubled(m_strPath) : m_strPath;
}

std::wstring CFilePath::GetFolder(bool trailing, bool doubled) const {
    const std::wstring dir = m_szDir;
    std::wstring folder = WithoutTrailingSeparators(std::wstring(m_szDrive) + dir);
    if (trailing) {
        // The separator the path itself used; a bare drive gets the platform's classic one.
        folder += dir.empty() ? L'\\' : dir.back();
    }
    return doubled ? Doubled(folder) : folder;
}

void CFilePath::GetFolderParts(std::vector<std::wstring>& parts) const {
    std::wstring part;
    for (const wchar_t* c = m_szDir; *c != L'\0'; ++c) {
        if (!IsPathSeparator(*c)) {
            part += *c;
        } else if (!part.empty()) {
            parts.push_back(part);
            part.clear();
        }
    }
    if (!part.empty())
        parts.push_back(part);
}

std::wstring CFilePath::GetFileName() const {
    return std::wstring(m_szFile) + m_szExt;
}

std::wstring CFilePath::GetPathNoExtension(bool doubled) const {
    const std::wstring path = std::wstring(m_szDrive) + m_szDir + m_szFile;
    return doubled ? Doubled(path) : path;
}

void CFilePath::SetExtension(const std::wstring& text) {
    CopyCut(m_szExt, text);
    Rebuild();
}

void CFilePath::SetFileTitle(const std::wstring& text) {
    CopyCut(m_szFile, text);
    Rebuild();
}

bool CFilePath::BrowseForFolder(void* parent, const std::wstring& title, bool withFiles) {
    unsigned flags = browse::kFileSystemFoldersOnly | browse::kNewDialogStyle;
    if (withFiles)
        flags |= browse::kIncludeFiles;
    const auto chosen = Use<FolderDialog>().Choose(parent, title, m_strPath, flags);
    if (!chosen)
        return false;
    std::wstring path = *chosen;
    if (!withFiles && (path.empty() || !IsPathSeparator(path.back()))) {
        path += IsInstalled<FileSystem>() ? Use<FileSystem>().Separator() : L'\\';
    }
    SetPath(path);
    return true;
}

bool operator==(const CFilePath& a, const CFilePath& b) {
    return EqualNoCase(a.m_strPath, b.m_strPath);
}

bool IsValidFileName(const std::wstring& text, bool report) {
    if (text.find_first_of(L"<>:\"*?|") == std::wstring::npos)
        return true;
    if (report && IsInstalled<MessageBoxes>()) {
        Use<MessageBoxes>().Show(
            L"File names cannot contain the following characters-\n< > : \" * ? |", L"",
            mb::kOk | mb::kIconWarning);
    }
    return false;
}

bool FileExists(const std::wstring& text) {
    return !text.empty() && !Use<FileSystem>().Find(text).empty();
}

bool CreatePath(const std::wstring& path) {
    FileSystem& files = Use<FileSystem>();
    const std::wstring trimmed = WithoutTrailingSeparators(path);
    if (!trimmed.empty() && files.Stat(trimmed))
        return true;

    std::wstring uniform = trimmed;
    std::replace(uniform.begin(), uniform.end(), L'/', L'\\');
    const CSplit pieces(uniform, L"\\");
    if (pieces.m_pieces.empty())
        return true;
    // The first piece is a drive, a share's start or the root; it is never created.
    std::wstring built = pieces.m_pieces.front();
    for (std::size_t i = 1; i < pieces.m_pieces.size(); ++i) {
        built += files.Separator();
        built += pieces.m_pieces[i];
        if (!files.Stat(built) && !files.CreateFolder(built))
            return false;
    }
    return true;
}
