// The drawing templates of the "New" menu: the "*.dwt" files of the host's own template folder,
// which lives in the host's current profile and not among the bar's settings.

#include "bar/hv_tabrow.h"
#include "foundation/files.h"
#include "ports/host_services.h"
#include "ports/port.h"
#include "settings/registry_key.h"

namespace {

// TemplatePath of the host's current profile, empty when the profile or the value is missing.
std::wstring HostTemplateFolder() {
    std::wstring profile = Use<HostServices>().ProfileKey();
    if (profile.empty())
        return L"";
    // The host names its profile key with or without the hive; without, it is the user's.
    const std::wstring general = profile + L"\\General";
    const RegHive hive = reg::HiveFromName(general.substr(0, general.find(L'\\'))) == RegHive::None
                             ? RegHive::CurrentUser
                             : RegHive::None;
    CRegistryKey key(hive, general, false);
    std::optional<RegValue> value = key.QueryValue(L"TemplatePath");
    return value ? reg::StringText(value->data) : L"";
}

}  // namespace

void HvTabrow::LoadTemplates(unsigned* pNextId) {
    m_TemplateItems.clear();
    Files templates(true, true);
    templates.Load(HostTemplateFolder(), L"*.dwt", L"", false);
    for (const std::wstring& path : templates.m_files)
        m_TemplateItems[(*pNextId)++] = CFilePath(path);
    // Unlike the drawing's lists this one has no switch: an empty folder always shows the row.
    if (m_TemplateItems.empty())
        m_TemplateItems[(*pNextId)++] = CFilePath(kNoneFound);
}
