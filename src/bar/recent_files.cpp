// The bar's own list of recent drawings, in the settings store: section "MRU", "Path_1" (the
// newest) up to "Path_<MRUCount>". The limit acts only where the list meets the store.

#include <algorithm>
#include <cwchar>

#include "bar/hv_tabrow.h"
#include "foundation/file_path.h"
#include "ports/message_box.h"
#include "ports/port.h"
#include "settings/reg_impl.h"
#include "settings/settings_keys.h"

namespace {

std::wstring PathKey(int position) {
    wchar_t key[32];
    std::swprintf(key, 32, keys::kMruPathFormat, position);
    return key;
}

}  // namespace

void HvTabrow::LoadRecentFiles() {
    m_RecentFiles.clear();
    for (int i = 1; i <= m_nMRUCount; ++i) {
        std::wstring path = m_store.GetString(keys::kMru, PathKey(i), L"");
        // A file gone from the disk drops out of the list quietly; its value stays.
        if (!path.empty() && FileExists(path))
            m_RecentFiles.push_back(std::move(path));
    }
}

void HvTabrow::SaveRecentFiles() {
    // Positions past the list's end keep what they hold, so an older entry comes back at the
    // next load; this is intended.
    for (int i = 1; i <= m_nMRUCount && static_cast<std::size_t>(i) <= m_RecentFiles.size(); ++i)
        m_store.SetString(keys::kMru, PathKey(i), m_RecentFiles[static_cast<std::size_t>(i - 1)]);
}

void HvTabrow::AddRecentFile(const std::wstring& path) {
    // Case counts: a path recorded in other letters is another entry. The open's own events
    // may add the same path twice in one opening; the erase makes that harmless.
    auto it = std::find(m_RecentFiles.begin(), m_RecentFiles.end(), path);
    if (it != m_RecentFiles.end())
        m_RecentFiles.erase(it);
    m_RecentFiles.push_front(path);
    SaveRecentFiles();
}

void HvTabrow::OpenLastDrawing() {
    LoadRecentFiles();
    MessageBoxes& boxes = Use<MessageBoxes>();
    if (m_RecentFiles.empty()) {
        boxes.Show(L"No drawings in most recent used list!", L"", mb::kOk);
        return;
    }
    const std::wstring newest = m_RecentFiles.front();
    if (!FileExists(newest)) {
        boxes.Show(L"Unable to find last opened drawing -\n" + newest, L"", mb::kOk);
        return;
    }
    OpenFile(ParseFileEntry(newest), true, true);
}
