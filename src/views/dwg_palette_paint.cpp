// The palette's paint: the frame, the strip's background and every cell where the layout put
// it, the folded ones included.

#include "views/dwg_palette.h"

#include <algorithm>

#include "ports/canvas.h"
#include "ports/host_documents.h"
#include "ports/port.h"
#include "settings/tabrow_settings.h"
#include "views/paint_window.h"
#include "views/palette_painter.h"
#include "views/tab_painter.h"

namespace {

// A title strip is never thinner than this, whatever the font.
constexpr int kMinNameHeight = 15;

}  // namespace

PaletteLook HvDwgPalette::Look() const {
    const PaintColors system = SystemPaintColors();
    PaletteLook look;
    look.horizontal = IsHorizontal();
    look.showName = m_settings.m_bShowDwgName != 0;
    look.nameAbove = m_settings.m_bDwgNameAbove != 0;
    look.nameHeight = m_nNameHeight;
    look.font = m_font;
    PaletteColors& c = look.colors;
    c.background = m_settings.m_clrBackground;
    c.titleBack = m_settings.m_clrTitleBack;
    c.titleText = m_settings.m_clrTitleText;
    c.readOnly = m_settings.m_clrReadOnly;
    c.modified = m_settings.m_clrModified;
    c.btnShadow = system.btnShadow;
    c.btnHighlight = system.btnHighlight;
    c.activeCaption = system.activeCaption;
    c.modelBackground = m_colors.modelBackground;
    c.modelForeground = m_colors.modelForeground;
    c.layoutBackground = m_colors.layoutBackground;
    c.layoutForeground = m_colors.layoutForeground;
    return look;
}

MsgResult HvDwgPalette::OnPaint() {
    const int laidOutWith = m_nNameHeight;
    try {
        PaintOffScreen(m_hWnd, [this](Canvas& canvas, const win::RECT& client) {
            PaintCells(canvas, client);
        });
    } catch (...) {
        // Painting stops where the host failed; the next paint tries again.
    }
    // The layout counted title strips with what the last paint measured: a new font lays the
    // cells out once more.
    if (m_nNameHeight != laidOutWith)
        RecalcLayout();
    return MsgResult::Handled();
}

void HvDwgPalette::PaintCells(Canvas& canvas, const win::RECT& client) {
    HostDocuments& docs = Use<HostDocuments>();
    PaletteLook look = Look();
    canvas.Draw3dRect(client, look.colors.btnShadow, look.colors.btnHighlight);
    canvas.FillRect(m_rcCells, look.colors.background);
    m_nNameHeight = std::max(canvas.MeasureText(L"Ag", m_font).cy + 2, kMinNameHeight);
    look.nameHeight = m_nNameHeight;
    const bool scrolling = m_settings.m_bScrollOverflow != 0;
    PaletteCellPlacer placer(Metrics(), m_rcCells, static_cast<int>(m_items.size()), m_nLastFull,
                             scrolling ? m_nScrollPos : -1);
    HostDocument* active = docs.MdiActiveDocument();
    for (std::size_t i = 0; i < m_items.size() && m_bListChanging == 0; ++i) {
        TrDocItem& item = *m_items[i];
        item.rcItem = placer.Next(item.bClipped);
        if (item.bDirty)
            UpdatePreview(&item);
        PaletteCell cell;
        cell.rect = item.rcItem;
        cell.name = item.path.GetFileName();
        cell.image = &item.hImage;
        cell.clipped = item.bClipped;
        cell.locked = item.bLocked;
        cell.paperSpace = item.bPaperSpace;
        cell.readOnly = docs.IsReadOnly(item.pDoc);
        cell.modified = item.bModified;
        cell.active = item.pDoc == active;
        PaintPaletteCell(canvas, look, cell);
        if (m_onCellPainted)
            m_onCellPainted(item);
    }
}
