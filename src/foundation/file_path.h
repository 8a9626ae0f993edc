#pragma once
// A path held whole and in its parts, with what the disk said about it when it was set.
//
// Splitting follows the platform's classic rules on every platform: '\' and '/' both separate
// folders, a drive is a letter and a colon, and each part is cut to the size of its buffer.

#include <string>
#include <vector>

class CFilePath {
public:
    struct ThisModule {};  // tag: the path of the running module

    CFilePath();
    CFilePath(const std::wstring& path);  // NOLINT: paths convert, as they always have
    explicit CFilePath(ThisModule);
    virtual ~CFilePath() = default;
    CFilePath(const CFilePath&) = default;
    CFilePath& operator=(const CFilePath&) = default;

    // Looks the path up on disk; a folder found there gets one trailing separator.
    void SetPath(const std::wstring& text);
    void SetModule();

    // With `doubled`, every backslash becomes two, as the host's command line wants them.
    std::wstring GetPath(bool doubled = false) const;
    std::wstring GetFolder(bool trailing = true, bool doubled = false) const;
    void GetFolderParts(std::vector<std::wstring>& parts) const;
    std::wstring GetDrive() const { return m_szDrive; }
    std::wstring GetFileTitle() const { return m_szFile; }
    std::wstring GetExtension() const { return m_szExt; }
    std::wstring GetFileName() const;
    std::wstring GetPathNoExtension(bool doubled = false) const;

    // Replace one part and rebuild the path from the parts, without a look at the disk.
    void SetExtension(const std::wstring& text);
    void SetFileTitle(const std::wstring& text);

    // The shell's folder chooser, starting at this path; true if something was chosen.
    bool BrowseForFolder(void* parent, const std::wstring& title, bool withFiles);

    friend bool operator==(const CFilePath& a, const CFilePath& b);

    bool m_bExists = false;
    bool m_bIsFolder = false;
    std::wstring m_strPath;
    wchar_t m_szDrive[3] = {};
    wchar_t m_szDir[260] = {};
    wchar_t m_szFile[256] = {};
    wchar_t m_szExt[256] = {};

private:
    void SplitParts();
    void Rebuild();
};

// True if `text` holds none of the characters that file names cannot hold. With `report`, tells
// the user which ones they are.
bool IsValidFileName(const std::wstring& text, bool report);
// True if the file finder finds the path (or, with wildcards, anything that matches it).
bool FileExists(const std::wstring& text);
// Creates every missing folder of `path` below its first part; false when one cannot be made.
bool CreatePath(const std::wstring& path);

bool IsPathSeparator(wchar_t c);
