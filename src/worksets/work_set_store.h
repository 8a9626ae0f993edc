#pragma once
// The work set file: every work set of a user is one section of a profile file, its lines the
// files to open together ("File1=C:\Jobs\site.dwg,0", the path and the read-only flag), numbered
// from 1 in list order. The file is the model: each operation makes a fresh HvIniFile on the
// path, reads or writes what it needs, and drops it, so two readers never disagree for long and
// nothing waits to be saved. A missing or unwritable file raises nothing: reads give nothing
// and writes go unnoticed.

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "foundation/file_entry.h"
#include "foundation/file_path.h"

class HvRegImpl;
struct SystemValues;

// The rows of the work set menu: id to a path object holding the row's text.
using TrWorkSetRows = std::map<unsigned, CFilePath>;

// The second row of each work set: this text immediately followed by the name.
inline constexpr wchar_t kWorkSetSelectPrefix[] = L"<SELECT>";
// The single row of a menu without work sets, where the caller asks for one.
inline constexpr wchar_t kWorkSetNoneFound[] = L"None Found";

// The setting's path as it stands when one is stored (whether the file exists or not),
// otherwise the default search of the settings.
std::wstring GetWorkSetFile(const HvRegImpl& settings, const SystemValues& system);

// Opens one file of a work set; the bar passes its OpenFile with warnings on and DBMOD kept.
using TrOpenEntry = std::function<void(const TrFileEntry&)>;

// Runs the dialog that lets the user tick which files of a work set to open, modally; true for
// OK, with the ticked entries, read-only flags as the user left them, in row order.
using TrChooseWorkSetFiles =
    std::function<bool(const std::wstring& name, std::vector<TrFileEntry>& chosen)>;

class TrWorkSetStore {
public:
    explicit TrWorkSetStore(std::wstring path) : m_strPath(std::move(path)) {}

    const std::wstring& GetPath() const { return m_strPath; }

    // The work sets' names in file order (creation order).
    std::vector<std::wstring> GetNames() const;

    // Empties `map`, then takes two ids per work set from `*pNextId`: the first maps to the
    // name (open the whole set), the second to "<SELECT>" and the name (choose files). With
    // `bSort` the names go in plain string order, capitals first; the file keeps its order.
    // With `bNoneFound` and no work set, one id maps to "None Found".
    void BuildWorkSetRows(unsigned* pNextId, TrWorkSetRows& map, bool bNoneFound, bool bSort) const;

    // What the whole-set open reads: every line holding "=", whatever its key, the value cut
    // at a second "=".
    std::vector<TrFileEntry> GetOpenEntries(const std::wstring& name) const;
    // What the manager lists: only lines whose key begins with "File". Appends to `entries`
    // and returns how many it read.
    int ReadEntries(const std::wstring& name, std::vector<TrFileEntry>& entries) const;

    // Opens every file of the work set in order, one failure not stopping the others, then
    // records the name as the work set opened last. A work set without lines says "No files in
    // Work Set!" and is not recorded.
    void OpenWorkSet(const std::wstring& name, HvRegImpl& settings, const TrOpenEntry& open) const;

    // The message that refuses a new work set's name, or empty when the name will do: no
    // name or a placeholder text of the manager's, or a name already used in any letter case.
    std::wstring CheckNewName(const std::wstring& name) const;

    // Takes out of `files` each entry whose path is already stored in the work set (in any
    // letter case) and returns how many went.
    int RemoveDuplicates(const std::wstring& name, std::vector<TrFileEntry>& files) const;
    // Adds the files not stored yet behind the work set's lines, numbered on from the number
    // of its keys; tells the user how many were there already.
    void AddFiles(const std::wstring& name, std::vector<TrFileEntry> files) const;
    // Replaces the work set's lines with `files`, numbered densely from 1.
    void RewriteWorkSet(const std::wstring& name, const std::vector<TrFileEntry>& files) const;
    void CreateWorkSet(const std::wstring& name) const;  // an empty header, if none is there
    void DeleteWorkSet(const std::wstring& name) const;

private:
    std::wstring m_strPath;
};
