#pragma once
// The files of a folder (and, if asked, of the folders below it) that match patterns.

#include <string>
#include <vector>

class Files {
public:
    Files(bool fullPath, bool extension) : m_bFullPath(fullPath), m_bExtension(extension) {}
    virtual ~Files() = default;
    Files(const Files&) = default;
    Files& operator=(const Files&) = default;

    // Comma-separated patterns. With `excludes` given, `includes` is ignored and every file that
    // matches no exclude pattern is taken; otherwise the files of each include pattern in turn,
    // a file matched twice taken twice.
    void Load(const std::wstring& root, const std::wstring& includes, const std::wstring& excludes,
              bool recurse);

    std::vector<std::wstring> m_files;
    std::wstring m_strRoot;
    bool m_bFullPath;
    bool m_bExtension;

private:
    void Add(const std::wstring& path);
};
