#include "views/dwg_palette.h"

#include <algorithm>
#include <string_view>

#include "ports/host_documents.h"
#include "ports/message_box.h"
#include "ports/port.h"
#include "settings/tabrow_settings.h"
#include "views/collation.h"
#include "views/document_name.h"

namespace {

// Resets the flag however the change ends.
class ListChange {
public:
    explicit ListChange(std::uint8_t& flag) : m_flag(flag) { m_flag = 1; }
    ~ListChange() { m_flag = 0; }
    ListChange(const ListChange&) = delete;
    ListChange& operator=(const ListChange&) = delete;

private:
    std::uint8_t& m_flag;
};

}  // namespace

TrDocItem* HvDwgPalette::FindItem(HostDocument* doc) {
    if (m_bListChanging != 0)
        return nullptr;
    if (doc == nullptr)
        doc = Use<HostDocuments>().MdiActiveDocument();
    for (auto& item : m_items) {
        if (item->pDoc == doc)
            return item.get();
    }
    return nullptr;
}

void HvDwgPalette::AddDocument(HostDocument* doc) {
    if (doc == nullptr)
        return;
    {
        ListChange change(m_bListChanging);
        // Finds nothing while the flag is set: a drawing listed twice stays listed twice.
        if (FindItem(doc) == nullptr) {
            auto item = std::make_unique<TrDocItem>();
            item->path.SetPath(DocumentPath(doc));
            item->pDoc = doc;
            item->rcItem = win::RECT{};
            item->bDirty = true;
            m_items.push_back(std::move(item));
        }
        if (m_settings.m_nSortBy != 0)
            Sort();
    }
    RecalcLayout();
}

void HvDwgPalette::RemoveDocument(HostDocument* doc) {
    if (doc == nullptr)
        return;
    bool removed = false;
    {
        ListChange change(m_bListChanging);
        auto it = std::find_if(m_items.begin(), m_items.end(),
                               [doc](const auto& item) { return item->pDoc == doc; });
        if (it != m_items.end()) {
            m_items.erase(it);
            removed = true;
        }
    }
    if (removed)
        RecalcLayout();
}

void HvDwgPalette::SetActive(HostDocument* doc) {
    OnDocumentActivated(doc);
}

void HvDwgPalette::SetDocumentPath(HostDocument* doc, const std::wstring& path) {
    TrDocItem* item = FindItem(doc);
    if (item == nullptr)
        return;
    item->path.SetPath(path);
    if (m_settings.m_nSortBy != 0)
        Sort();
    Renumber();
}

void HvDwgPalette::SetDocumentModified(HostDocument* doc, bool bModified) {
    OnDocumentModified(doc, bModified);
}

void HvDwgPalette::Rebuild() {
    if (m_settings.m_nSortBy != 0) {
        Sort();
    } else {
        std::vector<std::unique_ptr<TrDocItem>> ordered;
        for (HostDocument* doc : Use<HostDocuments>().Documents()) {
            auto it = std::find_if(m_items.begin(), m_items.end(),
                                   [doc](const auto& item) { return item && item->pDoc == doc; });
            if (it != m_items.end())
                ordered.push_back(std::move(*it));
        }
        m_items = std::move(ordered);
    }
    RecalcLayout();
}

void HvDwgPalette::Sort() {
    const bool byName = m_settings.m_nSortBy == 1;
    // Unstable on purpose: drawings of equal key may change places at each sort.
    // The path's parts are read in place: a copy per comparison would cost more than the sort.
    auto key = [byName](const TrDocItem& item) {
        return byName ? std::wstring_view(item.path.m_szFile)
                      : std::wstring_view(item.path.m_strPath);
    };
    std::sort(m_items.begin(), m_items.end(),
              [&key](const auto& a, const auto& b) { return CollateNoCase(key(*a), key(*b)) < 0; });
}

void HvDwgPalette::Renumber() {
    std::int32_t index = 0;
    for (auto& item : m_items)
        item->nIndex = index++;
}

// The cells' placement belongs to the painting of the palette; what the list needs of it is
// that every record knows its place.
void HvDwgPalette::RecalcLayout() {
    Renumber();
    Redraw();
}

void HvDwgPalette::Redraw() {
    if (m_hWnd != nullptr)
        Use<WindowSystem>().Redraw(m_hWnd, ws::kRdwInvalidate | ws::kRdwErase | ws::kRdwUpdateNow);
}

TrDocItem* HvDwgPalette::ItemFromPoint(win::POINT point) {
    for (auto it = m_items.rbegin(); it != m_items.rend(); ++it) {
        const win::RECT& r = (*it)->rcItem;
        if (point.x >= r.left && point.x < r.right && point.y >= r.top && point.y < r.bottom)
            return it->get();
    }
    return nullptr;
}

HostDocument* HvDwgPalette::DocumentAt(win::POINT point) {
    TrDocItem* item = ItemFromPoint(point);
    return item != nullptr ? item->pDoc : nullptr;
}

MsgResult HvDwgPalette::OnLButtonDown(win::POINT point, unsigned) {
    TrDocItem* hit = ItemFromPoint(point);
    if (hit == nullptr)
        return MsgResult::Handled();
    HostDocuments& docs = Use<HostDocuments>();
    HostDocument* current = docs.CurDocument();
    if (m_settings.m_bSwitchOnBusy == 0 && current != nullptr && !docs.IsQuiescent(current)) {
        Use<MessageBoxes>().Show(kBusySwitchText, L"", mb::kOk);
        return MsgResult::Handled();
    }
    docs.ActivateDocument(hit->pDoc);
    return MsgResult::Handled();
}

MsgResult HvDwgPalette::OnSize(unsigned, win::SIZE) {
    RecalcLayout();
    return MsgResult::Handled();
}

MsgResult HvDwgPalette::OnTimer(unsigned id) {
    // One-shot: every timer of the palette stops at its first tick.
    Use<WindowSystem>().KillTimer(m_hWnd, id);
    if (id == kRedrawTimer) {
        Redraw();
    } else if (id == kViewChangedTimer) {
        RefreshPreview(Use<HostDocuments>().MdiActiveDocument(), false);
    }
    return MsgResult::Handled();
}

bool HvDwgPalette::IsHorizontal() const {
    if (m_settings.m_bFloating != 0) {
        const win::RECT client =
            m_hWnd != nullptr ? Use<WindowSystem>().RectInParent(m_hWnd) : win::RECT{};
        return client.Width() > client.Height();
    }
    return m_settings.m_nDockSide != dock::kLeft && m_settings.m_nDockSide != dock::kRight;
}

win::SIZE HvDwgPalette::GetCellSize(const TrDocItem* item) const {
    const bool clipped = item != nullptr && item->bClipped;
    win::SIZE size;
    if (IsHorizontal()) {
        size.cy = m_nThumbExtent - (m_settings.m_bShowDwgName != 0 ? m_nNameHeight : 0);
        size.cx = clipped ? m_nNameHeight : static_cast<std::int32_t>(size.cy * m_dAspect);
    } else {
        size.cx = m_nThumbExtent;
        size.cy = clipped ? m_nNameHeight : static_cast<std::int32_t>(size.cx / m_dAspect);
    }
    return size;
}
