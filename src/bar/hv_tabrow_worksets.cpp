// The bar's side of the work sets: where the file is, the menu's rows, and the two ways of
// opening a set. The file itself is the work set store's.

#include "bar/hv_tabrow.h"
#include "ports/message_box.h"
#include "ports/port.h"

namespace {

// Stands where the file selection dialog will run until that dialog exists: it says so and
// answers Cancel, so nothing is opened.
bool SelectionDialogMissing(const std::wstring& /*name*/, std::vector<TrFileEntry>& /*chosen*/) {
    Use<MessageBoxes>().Show(L"Choosing files of a Work Set is not available yet: use All.", L"",
                             mb::kOk);
    return false;
}

}  // namespace

std::wstring HvTabrow::GetWorkSetFile() {
    SystemValues system;
    system.appDataFolder = m_strAppDataFolder;
    return ::GetWorkSetFile(m_store, system);
}

void HvTabrow::BuildWorkSetRows(unsigned* pNextId, TrWorkSetRows& map, bool bNoneFound) {
    TrWorkSetStore(GetWorkSetFile())
        .BuildWorkSetRows(pNextId, map, bNoneFound, m_bSortWorksets != 0);
}

void HvTabrow::OpenWorkSet(const std::wstring& name) {
    TrWorkSetStore(GetWorkSetFile()).OpenWorkSet(name, m_store, [this](const TrFileEntry& entry) {
        OpenFile(entry, true, false);
    });
}

void HvTabrow::SelectWorkSetFiles(const std::wstring& name) {
    std::vector<TrFileEntry> chosen;
    const TrChooseWorkSetFiles& choose =
        m_chooseWorkSetFiles ? m_chooseWorkSetFiles : TrChooseWorkSetFiles(SelectionDialogMissing);
    // The dialog is modal and pumps messages; only its answer is used afterwards.
    if (!choose(name, chosen))
        return;
    // Not recorded as the last work set: only the whole set's open is.
    for (const TrFileEntry& entry : chosen)
        OpenFile(entry, true, false);
}
