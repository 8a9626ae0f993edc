#pragma once
// A file system over a map of files in memory, for the tests of what reads and writes files
// without a disk. Reads and writes that fail leave errno as the disk's would.

#include <map>
#include <string>

#include "ports/file_system.h"

class MemoryFileSystem : public FileSystem {
public:
    std::map<std::wstring, std::string> files;
    std::map<std::wstring, bool> locked;  // present but can't be opened
    std::wstring failingWrite;            // refuses writes as a read-only file would

    wchar_t Separator() const override { return L'/'; }
    std::vector<FoundFile> Find(const std::wstring& pattern) override;
    std::optional<FoundFile> Stat(const std::wstring& path) override;
    std::unique_ptr<InputFile> OpenRead(const std::wstring& path) override;
    std::optional<std::string> ReadAll(const std::wstring& path, std::uint64_t limit) override;
    bool WriteAtomic(const std::wstring& path, const std::string& bytes) override;
    bool Rename(const std::wstring&, const std::wstring&) override { return false; }
    bool CreateFolder(const std::wstring&) override { return true; }
    bool Remove(const std::wstring& path) override { return files.erase(path) != 0; }
    std::wstring CreateUniqueFile(const std::wstring&, const std::wstring&) override { return {}; }
    std::wstring ModulePath() override { return L"/module"; }
    std::wstring UserName() override { return L"user"; }
    std::wstring UserDataFolder() override { return L"/data/"; }
    std::wstring TempFolder() override { return L"/tmp/"; }
};
