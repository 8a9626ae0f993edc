#include "views/palette_layout.h"

#include <algorithm>

#include "settings/tabrow_settings.h"

win::SIZE PaletteCellSize(const PaletteMetrics& m, bool clipped) {
    win::SIZE size;
    if (m.horizontal) {
        size.cy = m.thumbExtent - (m.showName ? m.nameHeight : 0);
        size.cx = clipped ? m.nameHeight : static_cast<int>(size.cy * m.aspect);
    } else {
        size.cx = m.thumbExtent;
        size.cy = clipped ? m.nameHeight : static_cast<int>(size.cx / m.aspect);
    }
    return size;
}

namespace {

// How far a cell reaches along the strip in the layout's count: a column counts the name
// strip of a folded cell too, as the layout always has.
int LayoutStep(const PaletteMetrics& m, bool clipped) {
    const win::SIZE size = PaletteCellSize(m, clipped);
    return m.horizontal ? size.cx : size.cy + (m.showName ? m.nameHeight : 0);
}

}  // namespace

PaletteFold FoldPaletteCells(const PaletteMetrics& m, int count, int firstFull, int lastFull,
                             bool scrollOverflow) {
    PaletteFold fold;
    fold.lastFull = lastFull;
    fold.clipped.assign(static_cast<std::size_t>(std::max(count, 0)), 0);
    for (int i = 0; i < count; ++i) {
        bool clipped = i < firstFull;
        const int step = LayoutStep(m, clipped);
        if (!scrollOverflow) {
            const int rest = (count - i - 1) * m.nameHeight;
            if (fold.used + step + rest <= m.length)
                fold.lastFull = i;
            if (i > fold.lastFull)
                clipped = true;
        }
        fold.clipped[static_cast<std::size_t>(i)] = clipped ? 1 : 0;
        fold.used += step;
    }
    return fold;
}

int PaletteContentLength(const PaletteMetrics& m, int count) {
    const win::SIZE cell = PaletteCellSize(m, false);
    if (m.horizontal)
        return count * cell.cx;
    return count * (cell.cy + (m.showName ? m.nameHeight : 0) + 1);
}

PaletteCellPlacer::PaletteCellPlacer(const PaletteMetrics& m, const win::RECT& cells, int count,
                                     int lastFull, int scrollPos)
    : m_metrics(m),
      m_cells(cells),
      m_run(cells),
      m_count(count),
      m_lastFull(lastFull),
      m_scrolling(scrollPos >= 0) {
    if (m_scrolling)
        m_run = m.horizontal ? cells.Offset(-scrollPos, 0) : cells.Offset(0, -scrollPos);
}

win::RECT PaletteCellPlacer::Next(bool clipped) {
    const PaletteMetrics& m = m_metrics;
    const win::SIZE size = PaletteCellSize(m, clipped);
    const int name = m.showName ? m.nameHeight : 0;
    if (!m_scrolling && m_index > m_lastFull) {
        // Folded at the far end: each one a name strip back from the one after it.
        const int rest = (m_count - m_index - 1) * m.nameHeight;
        m_run = m_cells;
        if (m.horizontal) {
            m_run.left = m_run.right - m.nameHeight;
            m_run = m_run.Offset(-rest, 0);
        } else {
            m_run.top = m_run.bottom - m.nameHeight;
            m_run = m_run.Offset(0, -rest);
        }
    } else if (m.horizontal) {
        m_run.right = m_run.left + size.cx;
    } else {
        // Scrolled, a column gives every cell its name strip; unscrolled, a folded cell has none.
        m_run.bottom = m_run.top + size.cy + (m_scrolling || !clipped ? name : 0);
    }
    const win::RECT placed = m_run;
    if (m.horizontal)
        m_run.left = m_run.right + 1;
    else
        m_run.top = m_run.bottom + 1;
    ++m_index;
    return placed;
}

win::RECT PlaceScrollBar(int dockSide, int size, win::RECT& cells) {
    win::RECT bar = cells;
    switch (dockSide) {
        case dock::kTop:
            bar.bottom = bar.top + size;
            cells.top = bar.bottom;
            break;
        case dock::kLeft:
            bar.right = bar.left + size;
            cells.left = bar.right;
            break;
        case dock::kRight:
            bar.left = bar.right - size;
            cells.right = bar.left;
            break;
        default:
            bar.top = bar.bottom - size;
            cells.bottom = bar.top;
            break;
    }
    return bar;
}

int ScrollPalette(const PaletteMetrics& m, int scrollPos, int contentLength, unsigned code,
                  int position) {
    const win::SIZE cell = PaletteCellSize(m, false);
    const int line = m.horizontal ? -cell.cx : cell.cy;
    switch (code) {
        case sb::kLineUp:
            scrollPos -= line;
            break;
        case sb::kLineDown:
            scrollPos += line;
            break;
        case sb::kPageUp:
            scrollPos -= m.length;
            break;
        case sb::kPageDown:
            scrollPos += m.length;
            break;
        case sb::kThumbPosition:
        case sb::kThumbTrack:
            scrollPos = position;
            break;
        default:
            break;
    }
    return std::max(std::min(scrollPos, contentLength - m.length), 0);
}
