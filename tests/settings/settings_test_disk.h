#pragma once
// The disk of the settings tests: the real file system, with the program, the user and the
// user's configuration folder placed inside a scratch folder.

#include <string>

#include "ports/port.h"
#include "support/disk_file_system.h"
#include "support/test_files.h"

class SettingsTestDisk : public DiskFileSystem {
public:
    explicit SettingsTestDisk(const ScratchFolder& scratch) : m_root(scratch.Folder()) {}

    std::wstring ModulePath() override { return m_root + L"program/Tabrow.arx"; }
    std::wstring UserName() override { return m_userName; }
    std::wstring UserDataFolder() override { return m_root + L"config/"; }

    std::wstring m_root;
    std::wstring m_userName = L"drafter";
};
