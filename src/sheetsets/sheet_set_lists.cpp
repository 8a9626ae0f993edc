#include "sheetsets/sheet_set_lists.h"

#include "foundation/files.h"
#include "foundation/no_case.h"
#include "foundation/xml/xml_document.h"

namespace {

// The host's own tool id of its sheet set manager, under which it keeps the manager's recent
// files in its profile.
constexpr wchar_t kSheetSetManagerTool[] = L"{BEBBB318-2898-4C03-ADA2-360DC6B7AA69}";
constexpr wchar_t kProfileFile[] = L"Support\\Profiles\\FixedProfile.aws";

// A missing element anywhere ends the list where it stands. Only the first tool with the
// manager's id is looked into.
std::vector<std::wstring> RecentSheetSets(XmlDocument& doc) {
    std::vector<std::wstring> files;
    if (!doc.FindSibling(L"StorageRoot"))
        return files;
    for (const wchar_t* level : {L"AcApData", L"AdUiTools", L"ToolsInfo"}) {
        if (!doc.FindChild(level) || !doc.Descend())
            return files;
    }
    bool found = false;
    while (!found && doc.FindChild(L"Tool"))
        found = EqualNoCase(doc.Attribute(doc.ChildIndex(), L"CLSID"), kSheetSetManagerTool);
    if (!found || !doc.Descend() || !doc.FindChild(L"MRU_FILES") || !doc.Descend())
        return files;
    while (doc.FindChild(L"MRU_FILE"))
        files.push_back(doc.Attribute(doc.ChildIndex(), L"fileName"));
    return files;
}

}  // namespace

std::vector<std::wstring> RecentSheetSetsFromXml(const std::wstring& text) {
    XmlDocument doc;
    doc.Parse(text);
    return RecentSheetSets(doc);
}

std::vector<std::wstring> ReadRecentSheetSets(const std::wstring& roamingFolder) {
    if (roamingFolder.empty())
        return {};
    XmlDocument doc;
    doc.Load(roamingFolder + kProfileFile);
    return RecentSheetSets(doc);
}

std::vector<std::wstring> FindSheetSets(const std::wstring& folder) {
    Files found(true, true);
    found.Load(folder, L"*.dst", L"", false);
    return found.m_files;
}
