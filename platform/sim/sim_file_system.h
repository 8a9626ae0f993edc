#pragma once
// The simulated machine's disk: the real file system below a folder of the test's own, with
// the module, the user's data folder and the user's name placed there. The rename that ends
// every atomic write can be made to fail, or to find the machine stopped.

#include <string>

#include "platform/posix/posix_file_system.h"

// Thrown where the machine stops: nothing after it runs, and the disk stays as it is.
struct SimulatedCrash {};

class SimFileSystem : public PosixFileSystem {
public:
    // `root` ends with a separator.
    explicit SimFileSystem(std::wstring root) : m_root(std::move(root)) {}

    std::wstring ModulePath() override { return m_root + L"modules/Tabrow.arx"; }
    std::wstring UserName() override { return L"cad-user"; }
    std::wstring UserDataFolder() override { return m_userData; }
    // An empty folder stands for a machine where the data folder cannot be found.
    void SetUserDataFolder(std::wstring folder) { m_userData = std::move(folder); }

    enum class RenameFault { None, Fail, Crash };
    // The rename after `skip` more that succeed: fails (the atomic write then takes its temporary
    // file away), or throws SimulatedCrash with the temporary file written and the old file in
    // place, as a power cut between the two steps leaves them.
    void BreakRename(RenameFault fault, int skip = 0) {
        m_renameFault = fault;
        m_renamesToSkip = skip;
    }
    bool Rename(const std::wstring& from, const std::wstring& to) override {
        if (m_renameFault == RenameFault::None || m_renamesToSkip-- > 0)
            return PosixFileSystem::Rename(from, to);
        const RenameFault fault = m_renameFault;
        m_renameFault = RenameFault::None;
        if (fault == RenameFault::Crash)
            throw SimulatedCrash{};
        return false;
    }

private:
    std::wstring m_root;
    std::wstring m_userData = m_root + L"appdata/";
    RenameFault m_renameFault = RenameFault::None;
    int m_renamesToSkip = 0;
};
