#include "host/hv_app.h"

#include "host/banner.h"
#include "ports/file_system.h"
#include "ports/host_services.h"
#include "ports/message_box.h"
#include "ports/port.h"
#include "settings/registry_key.h"
#include "settings/tabrow_settings.h"

HvApp::HvApp(std::wstring appName, std::wstring version, std::wstring regRoot,
             std::wstring regVersion, std::wstring aboutText, std::wstring groupPrefix,
             int productNumber)
    : m_strAppName(std::move(appName)),
      m_strVersion(std::move(version)),
      m_strRegRoot(std::move(regRoot)),
      m_strRegVersion(std::move(regVersion)),
      m_strAboutText(std::move(aboutText)),
      m_strGroupPrefix(std::move(groupPrefix)),
      m_nProductNumber(productNumber),
      m_strFullName(m_strAppName + L" " + m_strVersion) {}

void HvApp::AddCommand(std::function<void()> handler, const std::wstring& group,
                       const std::wstring& name, const std::wstring& description,
                       std::uint32_t flags, std::uint32_t localNameId) {
    m_commands.push_back(
        HvCommandEntry{std::move(handler), group, name, description, flags, localNameId});
}

std::wstring HvApp::LocalName(const HvCommandEntry& entry) const {
    // No resource library carries localised names in this program, so every id falls back.
    return entry.strName;
}

void HvApp::PrintRegisteredCommands(wchar_t fill) {
    if (m_commands.empty())
        return;
    PrintBannerLine(PadLine(L" Registered commands : ", fill, PadAlign::Left), fill);
    for (const HvCommandEntry& entry : m_commands) {
        if (entry.strDescription.empty())
            continue;
        PrintBannerLine(PadLine(L" " + entry.strName + L" - " + entry.strDescription + L" ", fill,
                                PadAlign::Left),
                        fill);
    }
    PrintBannerLine(std::wstring(kBannerWidth, fill), fill);
}

void HvApp::RegisterCommands(int loadCtrls, HostAppPacket* pkt) {
    m_pktApp = pkt;
    const wchar_t fill = L'+';
    PrintBanner(L" Harvane " + m_strFullName + L" (build " + m_strBuild + L") LOADED ", fill);
    PrintRegisteredCommands(fill);
    if (loadCtrls >= 0)
        WriteDemandLoadKeys(loadCtrls);
    HostServices& host = Use<HostServices>();
    for (const HvCommandEntry& entry : m_commands) {
        host.AddCommand(HostCommandRegistration{entry.strGroup, entry.strName, LocalName(entry),
                                                entry.nFlags, entry.pfnHandler});
    }
}

void HvApp::UnregisterCommands() {
    if (!m_commands.empty())
        Use<HostServices>().RemoveGroup(m_commands.front().strGroup);
    PrintBanner(L" Harvane " + m_strFullName + L" (build " + m_strBuild + L") UNLOADED ", L'-');
}

std::wstring HvApp::DemandLoadKey() const {
    return Use<HostServices>().ProductKey() + L"\\Applications\\" + m_strGroupPrefix + m_strAppName;
}

void HvApp::WriteDemandLoadKeys(int loadCtrls) {
    // A key that cannot be written is not reported: the load goes on either way.
    CRegistryKey app(RegHive::CurrentUser, DemandLoadKey(), true);
    app.SetDword(L"LOADCTRLS", static_cast<std::uint32_t>(loadCtrls));
    app.SetString(L"LOADER", m_modulePath.GetPath());
    app.SetString(L"DESCRIPTION", m_strFullName);
    if (m_commands.empty())
        return;
    CRegistryKey groups(app, L"Groups", true);
    groups.SetString(m_commands.front().strGroup, m_commands.front().strGroup);
    CRegistryKey commands(app, L"Commands", true);
    for (const HvCommandEntry& entry : m_commands)
        commands.SetString(entry.strName, LocalName(entry));
}

std::wstring HvApp::GetSoftwareKey() const {
    std::wstring key = L"Software\\" + m_strRegRoot;
    if (!m_strRegVersion.empty())
        key += L"\\" + m_strRegVersion;
    return key;
}

std::wstring BuildFromProductVersion(const std::wstring& productVersion) {
    std::size_t blank = productVersion.find_last_of(L' ');
    return blank == std::wstring::npos ? productVersion : productVersion.substr(blank + 1);
}

void HvApp::FindAppDataFolder() {
    FileSystem& files = Use<FileSystem>();
    std::wstring root = files.UserDataFolder();
    if (!root.empty()) {
        wchar_t sep = files.Separator();
        std::wstring folder = root + L"Harvane" + sep + m_strAppName + sep;
        if (CreatePath(folder)) {
            m_strAppDataDir = folder;
            return;
        }
    }
    m_strAppDataDir = m_modulePath.GetFolder(true);
}

void HvApp::Start(void* hInstance, const std::wstring& resourceStem, const std::wstring& logStem) {
    HostServices& host = Use<HostServices>();
    FileSystem& files = Use<FileSystem>();
    m_strComputerName = host.ComputerName();
    m_strUserName = files.UserName();
    m_hModule = hInstance;
    m_modulePath.SetPath(files.ModulePath());
    m_strBuild = BuildFromProductVersion(host.ModuleProductVersion());
    if (!logStem.empty())
        m_strLogFile = m_modulePath.GetFolder(true) + logStem + L".log";
    SetRegistryRoot(GetSoftwareKey(), m_strLogFile);
    // A separate resource library is a Windows build's concern; no portable build carries one.
    (void)resourceStem;
    FindAppDataFolder();
    if (m_pfnStartUpdateCheck && LoadAutoCheckForUpdates(*this))
        m_pfnStartUpdateCheck();
}

void HvApp::Stop() {
    m_hResources = nullptr;
}

void HvApp::ShowAbout(HostWindow*) {
    // The about dialog proper belongs to the window system's adapter; its text is this.
    Use<MessageBoxes>().Show(m_strFullName + L" (build " + m_strBuild + L")\n\n" + m_strAboutText,
                             m_strAppName, mb::kOk | mb::kIconInformation);
}
