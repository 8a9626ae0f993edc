#pragma once
// The file system port on the window system's own disk functions. Both '\' and '/' separate
// folders in the paths the core passes in; paths that come back use '\'.

#include "ports/file_system.h"

class Win32FileSystem : public FileSystem {
public:
    wchar_t Separator() const override { return L'\\'; }
    std::vector<FoundFile> Find(const std::wstring& pattern) override;
    std::optional<FoundFile> Stat(const std::wstring& path) override;
    std::unique_ptr<InputFile> OpenRead(const std::wstring& path) override;
    std::optional<std::string> ReadAll(const std::wstring& path, std::uint64_t limit) override;
    bool WriteAtomic(const std::wstring& path, const std::string& bytes) override;
    bool Rename(const std::wstring& from, const std::wstring& to) override;
    bool CreateFolder(const std::wstring& path) override;
    bool Remove(const std::wstring& path) override;
    std::wstring CreateUniqueFile(const std::wstring& folder, const std::wstring& prefix) override;
    std::wstring ModulePath() override;
    std::wstring UserName() override;
    std::wstring UserDataFolder() override;
    std::wstring TempFolder() override;
};
