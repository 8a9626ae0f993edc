#pragma once
// The folders below a root, breadth first, each with a trailing separator.

#include <string>
#include <vector>

class Folders {
public:
    Folders(const std::wstring& root, bool recurse);
    virtual ~Folders() = default;
    Folders(const Folders&) = default;
    Folders& operator=(const Folders&) = default;

    std::vector<std::wstring> m_folders;
};

// `folder` with its trailing separators replaced by the file system's one.
std::wstring WithTrailingSeparator(const std::wstring& folder);
