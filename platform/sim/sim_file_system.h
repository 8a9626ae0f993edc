#pragma once
// The simulated machine's disk: the real file system below a folder of the test's own, with
// the module, the user's data folder and the user's name placed there.

#include <string>

#include "platform/posix/posix_file_system.h"

class SimFileSystem : public PosixFileSystem {
public:
    // `root` ends with a separator.
    explicit SimFileSystem(std::wstring root) : m_root(std::move(root)) {}

    std::wstring ModulePath() override { return m_root + L"modules/Tabrow.arx"; }
    std::wstring UserName() override { return L"cad-user"; }
    std::wstring UserDataFolder() override { return m_userData; }
    // An empty folder stands for a machine where the data folder cannot be found.
    void SetUserDataFolder(std::wstring folder) { m_userData = std::move(folder); }

private:
    std::wstring m_root;
    std::wstring m_userData = m_root + L"appdata/";
};
