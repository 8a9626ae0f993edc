#include "worksets/work_set_store.h"

#include <algorithm>

#include "foundation/ini_file.h"
#include "foundation/no_case.h"
#include "foundation/split.h"
#include "ports/message_box.h"
#include "ports/port.h"
#include "settings/reg_impl.h"
#include "settings/settings_keys.h"
#include "settings/tabrow_settings.h"

namespace {

// The manager's placeholders in its name field, which must never become work sets.
constexpr const wchar_t* kPlaceholderNames[] = {L"<Enter Work Set Name>", L"<Select Work Set>"};

void Tell(const std::wstring& text) {
    Use<MessageBoxes>().Show(text, L"", mb::kOk);
}

std::wstring EntryKey(std::size_t number) {
    return L"File" + std::to_wstring(number);
}

std::wstring EntryValue(const TrFileEntry& entry) {
    return entry.GetPath() + (entry.m_bReadOnly ? L",1" : L",0");
}

// The value of a "key=value" line as the readers of this file take it: the piece between the
// first "=" and a second one, so that a path holding "=" is cut there. Null without any "=".
const std::wstring* LineValue(const CSplit& pieces) {
    return pieces.m_pieces.size() >= 2 ? &pieces.m_pieces[1] : nullptr;
}

std::vector<std::wstring> LinesOf(const std::wstring& path, const std::wstring& name) {
    std::vector<std::wstring> lines;
    HvIniFile(path, true).GetLines(name, lines);
    return lines;
}

// The entries of every line that holds "=", whatever its key.
std::vector<TrFileEntry> OpenEntriesOf(const std::vector<std::wstring>& lines) {
    std::vector<TrFileEntry> entries;
    for (const std::wstring& line : lines) {
        const CSplit pieces(line, L"=");
        if (const std::wstring* value = LineValue(pieces))
            entries.push_back(ParseFileEntry(*value));
    }
    return entries;
}

// Writes `files` behind the first `count` keys of the section, one line at a time, so that a
// write cut short loses none of the lines that were there. The first write that fails ends it:
// the lines behind it would leave a gap in the numbers.
void AppendEntries(HvIniFile& ini, const std::wstring& name, std::size_t count,
                   const std::vector<TrFileEntry>& files) {
    for (const TrFileEntry& entry : files) {
        if (!ini.WriteString(name, EntryKey(++count), EntryValue(entry)))
            return;
    }
}

}  // namespace

std::wstring GetWorkSetFile(const HvRegImpl& settings, const SystemValues& system) {
    std::wstring path = settings.GetString(keys::kWorksets, keys::kPath, {});
    return path.empty() ? DefaultWorkSetFile(system) : path;
}

std::vector<std::wstring> TrWorkSetStore::GetNames() const {
    std::vector<std::wstring> names;
    HvIniFile(m_strPath, true).GetSectionNames(names);
    return names;
}

void TrWorkSetStore::BuildWorkSetRows(unsigned* pNextId, TrWorkSetRows& map, bool bNoneFound,
                                      bool bSort) const {
    map.clear();
    std::vector<std::wstring> names = GetNames();
    if (bSort)
        std::sort(names.begin(), names.end());
    for (const std::wstring& name : names) {
        map[(*pNextId)++] = CFilePath(name);
        map[(*pNextId)++] = CFilePath(kWorkSetSelectPrefix + name);
    }
    if (bNoneFound && map.empty())
        map[(*pNextId)++] = CFilePath(kWorkSetNoneFound);
}

std::vector<TrFileEntry> TrWorkSetStore::GetOpenEntries(const std::wstring& name) const {
    return OpenEntriesOf(LinesOf(m_strPath, name));
}

int TrWorkSetStore::ReadEntries(const std::wstring& name, std::vector<TrFileEntry>& entries) const {
    int count = 0;
    for (const std::wstring& line : LinesOf(m_strPath, name)) {
        const CSplit pieces(line, L"=");
        const std::wstring* value = LineValue(pieces);
        // The key's letters are compared as they stand: "file1" is no file of the list.
        if (value == nullptr || pieces.m_pieces[0].compare(0, 4, L"File") != 0)
            continue;
        entries.push_back(ParseFileEntry(*value));
        ++count;
    }
    return count;
}

void TrWorkSetStore::OpenWorkSet(const std::wstring& name, HvRegImpl& settings,
                                 const TrOpenEntry& open) const {
    const std::vector<std::wstring> lines = LinesOf(m_strPath, name);
    if (lines.empty()) {
        Tell(L"No files in Work Set!");
        return;
    }
    // A section whose lines all lack "=" opens nothing and still counts as opened.
    for (const TrFileEntry& entry : OpenEntriesOf(lines))
        open(entry);
    settings.SetString(keys::kRoot, keys::kLastWorkset, name);
}

std::wstring TrWorkSetStore::CheckNewName(const std::wstring& name) const {
    const bool placeholder = std::any_of(std::begin(kPlaceholderNames), std::end(kPlaceholderNames),
                                         [&](const wchar_t* text) { return name == text; });
    if (name.empty() || placeholder)
        return L"You need to give the Work Set a name!";
    for (const std::wstring& existing : GetNames()) {
        if (EqualNoCase(existing, name))
            return L"That name is already used!";
    }
    return {};
}

int TrWorkSetStore::RemoveDuplicates(const std::wstring& name,
                                     std::vector<TrFileEntry>& files) const {
    std::vector<TrFileEntry> stored;
    ReadEntries(name, stored);
    const auto isStored = [&](const TrFileEntry& entry) {
        return std::any_of(stored.begin(), stored.end(), [&](const TrFileEntry& old) {
            return EqualNoCase(old.GetPath(), entry.GetPath());
        });
    };
    const auto kept = std::remove_if(files.begin(), files.end(), isStored);
    const int removed = static_cast<int>(files.end() - kept);
    files.erase(kept, files.end());
    return removed;
}

void TrWorkSetStore::AddFiles(const std::wstring& name, std::vector<TrFileEntry> files) const {
    const int removed = RemoveDuplicates(name, files);
    if (removed > 0)
        Tell(std::to_wstring(removed) + L" files were already in the selected Work Set");
    HvIniFile ini(m_strPath, true);
    std::vector<std::wstring> keys;
    ini.GetKeys(name, keys);
    // Numbered on from the count of keys, not from the highest number: after a hand edit that
    // left a gap, an add can overwrite a line. Every rewrite makes the numbers dense again.
    AppendEntries(ini, name, keys.size(), files);
}

void TrWorkSetStore::RewriteWorkSet(const std::wstring& name,
                                    const std::vector<TrFileEntry>& files) const {
    // One write for the whole list, renumbered from 1: emptying the section first and adding
    // the lines back one by one would leave the set empty if the program stopped in between.
    std::vector<std::wstring> lines;
    for (const TrFileEntry& entry : files)
        lines.push_back(EntryKey(lines.size() + 1) + L"=" + EntryValue(entry));
    HvIniFile(m_strPath, true).ReplaceSection(name, lines);
}

void TrWorkSetStore::CreateWorkSet(const std::wstring& name) const {
    HvIniFile(m_strPath, true).EnsureSection(name);
}

void TrWorkSetStore::DeleteWorkSet(const std::wstring& name) const {
    HvIniFile(m_strPath, true).DeleteSection(name);
}
