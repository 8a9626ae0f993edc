#pragma once
// The palette's arithmetic: how big a cell is, given the shape of the drawing area and the
// strip's thickness; which cells fold to a title strip when the strip is too short for all of
// them; where each cell stands; where the scroll bar goes and how far a scroll moves.
//
// The cells run in a row (horizontal) or a column. A folded cell is a title strip as thick as
// a name: those before the first full cell stand at the near end in turn, those after the
// last full cell pile up at the far end.

#include <cstdint>
#include <vector>

#include "foundation/win_types.h"
#include "ports/scroll_bar.h"

struct PaletteMetrics {
    bool horizontal = true;  // the cells run in a row
    int thumbExtent = 0;     // the strip's thickness across the cells
    int length = 0;          // the strip's usable length
    int nameHeight = 15;     // a title strip's thickness
    bool showName = true;    // full cells carry a name strip
    double aspect = 1.0;     // width over height of the drawing area
};

// The picture's size alone: in a column the name strip comes on top of it, in a row it is a
// part of the thickness. A folded cell is a name strip thick along the strip.
win::SIZE PaletteCellSize(const PaletteMetrics& m, bool clipped);

// What the layout's walk over the cells decides.
struct PaletteFold {
    std::vector<std::uint8_t> clipped;  // per cell
    int lastFull = 0;
    int used = 0;  // the length of every cell counted as the walk counts it
};

// Cells before `firstFull` are folded. Without scrolling, a cell stays full while it, the
// cells before it and a title strip for each cell after it fit the length; the last such cell
// becomes the last full one. When not even the first fits, `lastFull` keeps its old value.
PaletteFold FoldPaletteCells(const PaletteMetrics& m, int count, int firstFull, int lastFull,
                             bool scrollOverflow);

// The length of all cells unfolded, as the scroll range counts it.
int PaletteContentLength(const PaletteMetrics& m, int count);

// Where the cells stand, one after the other, each one pixel behind the one before.
class PaletteCellPlacer {
public:
    // `scrollPos` below 0: no scrolling, the cells after `lastFull` pile up at the far end.
    PaletteCellPlacer(const PaletteMetrics& m, const win::RECT& cells, int count, int lastFull,
                      int scrollPos);
    // The next cell's rectangle; call once per cell, in order.
    win::RECT Next(bool clipped);

private:
    PaletteMetrics m_metrics;
    win::RECT m_cells;
    win::RECT m_run;
    int m_count;
    int m_lastFull;
    bool m_scrolling;
    int m_index = 0;
};

// The scroll bar's rectangle at the edge of `cells` that the dock side gives it (dock::
// values: top, left and right take their own edge, any other the bottom); `cells` loses it.
win::RECT PlaceScrollBar(int dockSide, int size, win::RECT& cells);

// The scroll position after a scroll bar's `code` (sb::), limited to 0 and the content's
// length less the strip's. A row's arrows move the other way round from a column's: kept as it
// always was.
int ScrollPalette(const PaletteMetrics& m, int scrollPos, int contentLength, unsigned code,
                  int position);
