// The palette's window: its scroll bars, the cells' layout along the strip, and scrolling.

#include "views/dwg_palette.h"

#include <algorithm>

#include "ports/host_documents.h"
#include "ports/port.h"
#include "ports/scroll_bar.h"
#include "settings/tabrow_settings.h"

MsgResult HvDwgPalette::OnCreate() {
    WindowSystem& windows = Use<WindowSystem>();
    ChildWindowSpec bar;
    bar.parent = m_hWnd;
    bar.className = L"ScrollBar";
    bar.style = ws::kChild | sbs::kVert;
    m_vertScroll = windows.CreateChild(bar);
    bar.style = ws::kChild;
    m_horzScroll = windows.CreateChild(bar);
    return MsgResult::Handled(0);
}

void HvDwgPalette::SetDockSide(int side) {
    if (side == m_nDockSide)
        return;
    m_nDockSide = side;
    RecalcLayout();
}

void HvDwgPalette::SetLabelFont(const win::LOGFONTW& font) {
    m_font = font;
    // The window keeps it too, as a control keeps the font it is given.
    if (m_hWnd != nullptr)
        Use<WindowSystem>().SetFont(m_hWnd, font, false);
    RecalcLayout();
}

bool HvDwgPalette::IsHorizontal() const {
    if (m_settings.m_bFloating != 0) {
        const win::RECT client =
            m_hWnd != nullptr ? Use<WindowSystem>().RectInParent(m_hWnd) : win::RECT{};
        return client.Width() > client.Height();
    }
    return m_nDockSide != dock::kLeft && m_nDockSide != dock::kRight;
}

PaletteMetrics HvDwgPalette::Metrics() const {
    PaletteMetrics m;
    m.horizontal = IsHorizontal();
    m.thumbExtent = m_nThumbExtent;
    m.length = m_nLength;
    m.nameHeight = m_nNameHeight;
    m.showName = m_settings.m_bShowDwgName != 0;
    m.aspect = m_dAspect;
    return m;
}

win::SIZE HvDwgPalette::GetCellSize(const TrDocItem* item) const {
    return PaletteCellSize(Metrics(), item != nullptr && item->bClipped);
}

int HvDwgPalette::ActiveIndex() {
    HostDocument* active = Use<HostDocuments>().MdiActiveDocument();
    for (std::size_t i = 0; i < m_items.size(); ++i) {
        if (m_items[i]->pDoc == active)
            return static_cast<int>(i);
    }
    return -1;
}

// At every change of the list, the dock side, the font or the window's size, and after a
// folded cell was unfolded.
void HvDwgPalette::RecalcLayout() {
    Renumber();
    if (m_hWnd == nullptr)
        return;
    WindowSystem& windows = Use<WindowSystem>();
    if (m_pDrawingArea != nullptr && m_pDrawingArea->Width() > 0 && m_pDrawingArea->Height() > 0)
        m_dAspect = static_cast<double>(m_pDrawingArea->Width()) / m_pDrawingArea->Height();
    for (HostWindow* bar : {m_vertScroll, m_horzScroll}) {
        if (bar != nullptr)
            windows.Show(bar, false);
    }
    if (m_onCellToolsReset)
        m_onCellToolsReset();
    const win::RECT client = windows.RectInParent(m_hWnd);
    win::RECT working = win::RECT{0, 0, client.Width(), client.Height()}.Inflated(-1);
    const bool horizontal = IsHorizontal();
    m_nThumbExtent = horizontal ? working.Height() : working.Width();
    m_nLength = horizontal ? working.Width() : working.Height();

    const PaletteMetrics metrics = Metrics();
    const bool scrolling = m_settings.m_bScrollOverflow != 0;
    const int count = static_cast<int>(m_items.size());
    const PaletteFold fold = FoldPaletteCells(metrics, count, m_nFirstFull, m_nLastFull, scrolling);
    for (int i = 0; i < count; ++i)
        m_items[static_cast<std::size_t>(i)]->bClipped =
            fold.clipped[static_cast<std::size_t>(i)] != 0;
    m_nLastFull = fold.lastFull;

    if (scrolling) {
        m_nContentLength = PaletteContentLength(metrics, count);
        const int maxPos = std::max(m_nContentLength - m_nLength, 0);
        ScrollInfo info;
        info.mask = sif::kRange | sif::kPage | sif::kDisableNoScroll;
        info.min = 0;
        info.max = m_nContentLength;
        info.page = static_cast<unsigned>(std::max(m_nLength, 0));
        if (m_nScrollPos > maxPos) {
            m_nScrollPos = maxPos;
            info.mask |= sif::kPos;
            info.pos = m_nScrollPos;
        }
        HostWindow* bar = horizontal ? m_horzScroll : m_vertScroll;
        if (fold.used > m_nLength && bar != nullptr) {
            windows.Show(bar, true);
            Use<ScrollBars>().SetScrollInfo(bar, info, true);
            windows.Move(bar, PlaceScrollBar(m_nDockSide, m_settings.m_nScrollBarSize, working),
                         true);
        } else {
            m_nScrollPos = 0;
        }
    }
    m_rcCells = working;
    Redraw();
}

MsgResult HvDwgPalette::OnHScroll(unsigned code, int position, HostWindow* bar) {
    return OnScroll(code, position, bar);
}

MsgResult HvDwgPalette::OnVScroll(unsigned code, int position, HostWindow* bar) {
    return OnScroll(code, position, bar);
}

MsgResult HvDwgPalette::OnScroll(unsigned code, int position, HostWindow* bar) {
    if (bar == nullptr || (bar != m_vertScroll && bar != m_horzScroll))
        return MsgResult::NotHandled();
    m_nScrollPos = ScrollPalette(Metrics(), m_nScrollPos, m_nContentLength, code, position);
    Use<ScrollBars>().SetScrollPos(bar, m_nScrollPos, true);
    Redraw();
    return MsgResult::Handled();
}
