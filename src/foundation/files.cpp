#include "foundation/files.h"

#include "foundation/file_path.h"
#include "foundation/folders.h"
#include "foundation/split.h"
#include "foundation/wildcard_match.h"
#include "ports/file_system.h"
#include "ports/port.h"

namespace {

bool IsPlainFile(const FoundFile& found) {
    return !found.isFolder && found.name != L"." && found.name != L"..";
}

}  // namespace

void Files::Add(const std::wstring& path) {
    const CFilePath file(path);
    if (m_bFullPath) {
        m_files.push_back(m_bExtension ? file.GetPath() : file.GetPathNoExtension());
    } else {
        m_files.push_back(m_bExtension ? file.GetFileName() : file.GetFileTitle());
    }
}

void Files::Load(const std::wstring& root, const std::wstring& includes,
                 const std::wstring& excludes, bool recurse) {
    if (root.empty())
        return;
    m_strRoot = WithTrailingSeparator(root);
    FileSystem& files = Use<FileSystem>();
    for (const std::wstring& folder : Folders(m_strRoot, recurse).m_folders) {
        if (excludes.empty()) {
            for (const std::wstring& pattern : CSplit(includes, L",").m_pieces) {
                for (const FoundFile& found : files.Find(folder + pattern)) {
                    if (IsPlainFile(found))
                        Add(folder + found.name);
                }
            }
            continue;
        }
        const CSplit patterns(excludes, L",");
        for (const FoundFile& found : files.Find(folder + L"*.*")) {
            if (!IsPlainFile(found))
                continue;
            bool excluded = false;
            for (const std::wstring& pattern : patterns.m_pieces) {
                excluded = excluded || WildcardMatch(pattern, found.name, false);
            }
            if (!excluded)
                Add(folder + found.name);
        }
    }
}
