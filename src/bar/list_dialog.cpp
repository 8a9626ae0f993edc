#include "bar/list_dialog.h"

#include "foundation/no_case.h"

int CListDialog::OnInitDialog() {
    if (m_strInitial.empty())
        return -1;
    m_selected.push_back(m_strInitial);
    for (std::size_t i = 0; i < m_items.size(); ++i) {
        const std::wstring& item = m_items[i];
        if (item.size() >= m_strInitial.size() &&
            EqualNoCase(std::wstring_view(item).substr(0, m_strInitial.size()), m_strInitial)) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

void CListDialog::OnSelChange(const std::function<bool(int row)>& isSelected) {
    m_selected.clear();
    for (std::size_t i = 0; i < m_items.size(); ++i) {
        if (isSelected(static_cast<int>(i)))
            m_selected.push_back(m_items[i]);
    }
}

int CListDialog::SetItems(const std::vector<std::wstring>& items) {
    m_items = items;
    return m_items.empty() ? -1 : 0;
}
