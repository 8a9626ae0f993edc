#pragma once
// What the list dialog keeps and decides: the texts it shows, the one to preselect, and which
// texts are selected when it closes. The window layer shows it and reports the list box's
// selection back through OnSelChange.

#include <functional>
#include <string>
#include <vector>

class CListDialog {
public:
    std::wstring m_strInitial;  // item to preselect
    std::wstring m_strTitle;
    bool m_bMultiSelect = false;
    std::vector<std::wstring> m_selected;
    std::vector<std::wstring> m_items;

    // The list box's rows when the dialog opens, and the row the list box's string search
    // selects for m_strInitial (-1 for none): the first row that begins with it, in any case.
    // The initial text itself counts as selected, matched or not.
    int OnInitDialog();
    // The list box's selection changed: `isSelected` answers for each row, as LB_GETSEL does.
    void OnSelChange(const std::function<bool(int row)>& isSelected);
    // New rows for a live dialog: the row the list box then selects (the first, -1 when empty).
    int SetItems(const std::vector<std::wstring>& items);
};

// Shows the dialog modally, parented to the host's frame; true for OK.
using ListDialogRunner = std::function<bool(CListDialog& dialog)>;
