#include "views/dwg_tab_ctrl.h"

#include <cstdint>

#include "foundation/file_path.h"
#include "foundation/no_case.h"
#include "ports/host_documents.h"
#include "ports/port.h"
#include "ports/tab_control.h"
#include "settings/tabrow_settings.h"
#include "views/collation.h"
#include "views/document_name.h"

namespace {

constexpr int kTextBuffer = 256;
constexpr wchar_t kModifiedMark[] = L"* ";
constexpr wchar_t kReadOnlyMark[] = L"[R]- ";

std::wstring WithoutModifiedMark(const std::wstring& text) {
    const std::size_t start = text.find_first_not_of(L"* ");
    return start == std::wstring::npos ? std::wstring() : text.substr(start);
}

std::wstring ReadOnlyPrefix(HostDocument* doc) {
    return Use<HostDocuments>().IsReadOnly(doc) ? kReadOnlyMark : L"";
}

}  // namespace

void HvDwgTabCtrl::TextsChanged() {
    if (m_onTextsChanged)
        m_onTextsChanged();
}

void HvDwgTabCtrl::AddDocument(HostDocument* doc) {
    TabControls& tabs = Use<TabControls>();
    const std::wstring name = GetDocumentName(doc, false);
    const std::wstring text = ReadOnlyPrefix(doc) + name;
    const int count = tabs.ItemCount(m_hWnd);
    int at = count;
    if (m_settings.m_nSortBy != 0) {
        const bool byName = m_settings.m_nSortBy == 1;
        const std::wstring key = byName ? name : GetDocumentName(doc, true);
        // The first tab whose key is greater; an equal key doesn't stop the walk, so a new
        // drawing goes behind its equals.
        for (int i = 0; i < count; ++i) {
            HostDocument* other = GetDocument(i);
            if (other == nullptr)
                continue;
            if (CompareNoCase(GetDocumentName(other, !byName), key) > 0) {
                at = i;
                break;
            }
        }
    }
    tabs.InsertItem(m_hWnd, at, text, reinterpret_cast<std::intptr_t>(doc));
}

void HvDwgTabCtrl::RemoveDocument(HostDocument* doc) {
    const int index = FindDocument(doc);
    if (index >= 0)
        Use<TabControls>().DeleteItem(m_hWnd, index);
}

void HvDwgTabCtrl::SetActive(HostDocument* doc) {
    const int index = FindDocument(doc);
    if (index >= 0)
        Use<TabControls>().SetCurSel(m_hWnd, index);
}

void HvDwgTabCtrl::SetDocumentPath(HostDocument* doc, const std::wstring& path) {
    const std::wstring text = ReadOnlyPrefix(doc) + CFilePath(path).GetFileTitle();
    const int index = FindDocument(doc);
    if (index < 0)
        return;
    if (EqualNoCase(WithoutModifiedMark(GetItemText(index)), text))
        return;
    Use<TabControls>().SetItemText(m_hWnd, index, text);
    if (m_settings.m_nSortBy != 0)
        Rebuild();
    TextsChanged();
}

void HvDwgTabCtrl::SetDocumentModified(HostDocument* doc, bool bModified) {
    const int index = FindDocument(doc);
    if (index < 0)
        return;
    std::wstring text = WithoutModifiedMark(GetItemText(index));
    if (bModified)
        text = kModifiedMark + text;
    Use<TabControls>().SetItemText(m_hWnd, index, text);
    TextsChanged();
}

void HvDwgTabCtrl::Rebuild() {
    HostDocuments& docs = Use<HostDocuments>();
    Use<TabControls>().DeleteAllItems(m_hWnd);
    for (HostDocument* doc : docs.Documents())
        AddDocument(doc);
    SetActive(docs.MdiActiveDocument());
}

HostDocument* HvDwgTabCtrl::GetDocument(int index) {
    std::wstring text;
    std::intptr_t param = 0;
    if (!Use<TabControls>().GetItem(m_hWnd, index, 1, text, param))
        return nullptr;
    return reinterpret_cast<HostDocument*>(param);
}

int HvDwgTabCtrl::FindDocument(HostDocument* doc) {
    const int count = GetItemCount();
    for (int i = 0; i < count; ++i) {
        if (GetDocument(i) == doc)
            return i;
    }
    return -1;
}

HostDocument* HvDwgTabCtrl::DocumentAt(win::POINT point) {
    const int index = Use<TabControls>().HitTest(m_hWnd, point);
    return index >= 0 ? GetDocument(index) : nullptr;
}

int HvDwgTabCtrl::GetItemCount() {
    return Use<TabControls>().ItemCount(m_hWnd);
}

std::wstring HvDwgTabCtrl::GetItemText(int index) {
    std::wstring text;
    std::intptr_t param = 0;
    Use<TabControls>().GetItem(m_hWnd, index, kTextBuffer, text, param);
    return text;
}

win::LOGFONTW HvDwgTabCtrl::Font() {
    return m_settings.m_lfTabFont;
}
