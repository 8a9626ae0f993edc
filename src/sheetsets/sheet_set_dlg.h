#pragma once
// The sheet selection: one sheet set's drawings offered for the user to tick, the ticked ones
// handed back.

#include <memory>
#include <string>
#include <vector>

#include "sheetsets/sheet_set_model.h"

struct HostWindow;

class SheetSetDlg {
public:
    SheetSetDlg(std::wstring path, HostWindow* parent)
        : m_strFile(std::move(path)), m_pParent(parent) {}
    virtual ~SheetSetDlg() = default;

    // mb::kIdOk with m_files filled, or mb::kIdCancel.
    int DoModal();

    // The drawing of each sheet in tree order: the sheet set's own sheets, then each subset's.
    static std::vector<std::wstring> SheetFiles(const CAcSmSheetSet& model);

    std::wstring m_strFile;
    std::vector<std::wstring> m_files;

private:
    // The model as the tree loads it; nothing when the manager is missing or the file can't be
    // read, which the user has been told.
    std::unique_ptr<CAcSmSheetSet> Load();

    HostWindow* m_pParent;  // not owned
};
