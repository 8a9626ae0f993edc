#pragma once
// A private key below HKEY_CURRENT_USER\Software for one test, deleted with everything below it
// when the test ends.

#include <windows.h>

#include <random>
#include <string>

#include "platform/win32/unique_handle.h"

class ScratchRegistryKey {
public:
    ScratchRegistryKey() {
        std::random_device random;
        m_path = L"Software\\Tabrow Tests\\" + std::to_wstring(random()) + L"-" +
                 std::to_wstring(::GetCurrentProcessId());
    }
    ~ScratchRegistryKey() {
        ::RegDeleteTreeW(HKEY_CURRENT_USER, m_path.c_str());
        ::RegDeleteKeyW(HKEY_CURRENT_USER, m_path.c_str());
        // The shared parent goes when no other run is using it; a full one refuses quietly.
        ::RegDeleteKeyW(HKEY_CURRENT_USER, L"Software\\Tabrow Tests");
    }
    ScratchRegistryKey(const ScratchRegistryKey&) = delete;
    ScratchRegistryKey& operator=(const ScratchRegistryKey&) = delete;

    // The key's path below HKEY_CURRENT_USER; the key itself is not created.
    const std::wstring& Path() const { return m_path; }

    bool Exists() const {
        return static_cast<bool>(OpenRegistryKey(HKEY_CURRENT_USER, m_path.c_str(), KEY_READ));
    }

private:
    std::wstring m_path;
};
