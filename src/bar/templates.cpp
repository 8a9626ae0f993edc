// The drawing templates of the "New" menu: the "*.dwt" files of the host's own template folder,
// which lives in the host's current profile and not among the bar's settings.

#include "bar/hv_tabrow.h"
#include "foundation/files.h"
#include "layout/host_windows.h"
#include "ports/host_automation.h"
#include "ports/host_documents.h"
#include "ports/host_services.h"
#include "ports/port.h"
#include "settings/registry_key.h"

namespace {

constexpr wchar_t kTemplatePath[] = L"TemplatePath";

// The "General" key of the host's current profile, not made when missing; not open when the
// host cannot name its profile.
CRegistryKey HostGeneralKey() {
    std::wstring profile = Use<HostServices>().ProfileKey();
    if (profile.empty())
        return CRegistryKey(RegHive::None, L"", false);
    // The host names its profile key with or without the hive; without, it is the user's.
    const std::wstring general = profile + L"\\General";
    const RegHive hive = reg::HiveFromName(general.substr(0, general.find(L'\\'))) == RegHive::None
                             ? RegHive::CurrentUser
                             : RegHive::None;
    return CRegistryKey(hive, general, false);
}

std::wstring TemplateFolder(const CRegistryKey& general) {
    std::optional<RegValue> value = general.QueryValue(kTemplatePath);
    return value ? reg::StringText(value->data) : L"";
}

}  // namespace

void HvTabrow::LoadTemplates(unsigned* pNextId) {
    m_TemplateItems.clear();
    Files templates(true, true);
    templates.Load(TemplateFolder(HostGeneralKey()), L"*.dwt", L"", false);
    for (const std::wstring& path : templates.m_files)
        m_TemplateItems[(*pNextId)++] = CFilePath(path);
    // Unlike the drawing's lists this one has no switch: an empty folder always shows the row.
    if (m_TemplateItems.empty())
        m_TemplateItems[(*pNextId)++] = CFilePath(kNoneFound);
}

void HvTabrow::OnChangeTemplatePath() {
    CRegistryKey general = HostGeneralKey();
    if (!general.IsOpen())
        return;
    // The host's own setting: the change holds for the host's new drawings as well.
    CFilePath folder(TemplateFolder(general));
    if (folder.BrowseForFolder(g_hwndFrame, L"Select new template path", false))
        general.SetString(kTemplatePath, folder.GetPath());
}

void HvTabrow::OnEmptyDrawing() {
    if (!Use<HostDocuments>().Documents().empty()) {
        HostAutomation& automation = Use<HostAutomation>();
        automation.Release(automation.AddDocument(m_pHostApp, L""));
    } else {
        Use<HostDocuments>().AppContextNewDocument(L"");
    }
}
