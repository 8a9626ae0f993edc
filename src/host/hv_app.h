#pragma once
// The application object: names and versions, the command table, the demand-load keys, the
// banners, and the settings root it gives its HvRegImpl base.

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "foundation/file_path.h"
#include "settings/reg_impl.h"

struct HostAppPacket;
struct HostWindow;

struct HvCommandEntry {
    std::function<void()> pfnHandler;
    std::wstring strGroup;
    std::wstring strName;
    std::wstring strDescription;
    std::uint32_t nFlags = 0;
    std::uint32_t nLocalNameId = 0xFFFFFFFF;  // none
};

class HvApp : public HvRegImpl {
public:
    HvApp(std::wstring appName, std::wstring version, std::wstring regRoot, std::wstring regVersion,
          std::wstring aboutText, std::wstring groupPrefix, int productNumber);

    void AddCommand(std::function<void()> handler, const std::wstring& group,
                    const std::wstring& name, const std::wstring& description,
                    std::uint32_t flags = 0, std::uint32_t localNameId = 0xFFFFFFFF);
    // loadCtrls is the host's LOADCTRLS value; a negative one writes no demand-load keys.
    void RegisterCommands(int loadCtrls, HostAppPacket* pkt);
    void UnregisterCommands();

    void Start(void* hInstance, const std::wstring& resourceStem = {},
               const std::wstring& logStem = {});
    void Stop();

    void* GetResourceHandle() const { return m_hResources ? m_hResources : m_hModule; }
    void ShowAbout(HostWindow* parent);
    // "Software\\<root>\\<registry version>", the settings' root below the user hive.
    std::wstring GetSoftwareKey() const;
    // The demand-load key below the user hive.
    std::wstring DemandLoadKey() const;

    std::wstring m_strAppName;
    std::wstring m_strVersion;
    std::wstring m_strRegRoot;
    std::wstring m_strRegVersion;
    std::wstring m_strAboutText;
    std::wstring m_strGroupPrefix;
    int m_nProductNumber;
    std::wstring m_strFullName;
    CFilePath m_modulePath;
    std::wstring m_strAppDataDir;
    std::wstring m_strBuild;
    std::wstring m_strComputerName;
    std::wstring m_strUserName;
    std::wstring m_strLogFile;
    std::vector<HvCommandEntry> m_commands;
    HostAppPacket* m_pktApp = nullptr;
    void* m_hModule = nullptr;
    void* m_hResources = nullptr;
    // Runs the update check on a thread of its own; set by the update checker when it is built
    // in, and started by Start when AutoCheckForUpdates is on.
    std::function<void()> m_pfnStartUpdateCheck;

private:
    void PrintRegisteredCommands(wchar_t fill);
    void WriteDemandLoadKeys(int loadCtrls);
    std::wstring LocalName(const HvCommandEntry& entry) const;
    void FindAppDataFolder();
};

// "2, 0, 0, 97" gives "97": the part behind the last blank.
std::wstring BuildFromProductVersion(const std::wstring& productVersion);
