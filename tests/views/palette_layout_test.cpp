// The palette's arithmetic: which cells fold and how far a scroll goes. Where the cells and the
// scroll bar stand shows in the palette's pictures.

#include <gtest/gtest.h>

#include <string>

#include "views/palette_layout.h"

namespace {

// Name strips of 15. A row 75 thick holds pictures 60 high, 90 wide at 1.5; a column 60 wide
// holds pictures 40 high, 55 along the strip with their names.
PaletteMetrics Row(int length) {
    return {.horizontal = true, .thumbExtent = 75, .length = length, .aspect = 1.5};
}
PaletteMetrics Column(int length) {
    return {.horizontal = false, .thumbExtent = 60, .length = length, .aspect = 1.5};
}

struct FoldCase {
    const char* what;
    PaletteMetrics metrics;
    int count, firstFull, lastFullBefore;
    bool scroll;
    std::string cells;  // F full, C folded
    int lastFull, used;
};

}  // namespace

TEST(PaletteLayout, CellsFoldWhereTheStripEndsAndOnlyThere) {
    const FoldCase cases[] = {
        {"one drawing", Row(20), 1, 0, 0, false, "F", 0, 90},
        {"a row with room for three and two title strips", Row(300), 5, 0, 0, false, "FFFCC", 2,
         450},
        {"too short for the first: the old last full cell holds", Row(50), 5, 0, 3, false,
         "FFFFC", 3, 450},
        {"folded at the front, a column counting their name strips", Column(200), 5, 2, 0, false,
         "CCFFC", 3, 225},
        {"scrolling folds nothing at the far end", Row(300), 5, 0, 0, true, "FFFFF", 0, 450},
        {"no names, the second cell just fitting", {.horizontal = false,
         .thumbExtent = 60, .length = 95, .showName = false, .aspect = 1.5}, 3, 0, 0, false,
         "FFC", 1, 120},
    };
    for (const FoldCase& c : cases) {
        SCOPED_TRACE(c.what);
        const PaletteFold fold =
            FoldPaletteCells(c.metrics, c.count, c.firstFull, c.lastFullBefore, c.scroll);
        std::string cells;
        for (std::uint8_t clipped : fold.clipped)
            cells += clipped != 0 ? 'C' : 'F';
        EXPECT_EQ(cells, c.cells);
        EXPECT_EQ(fold.lastFull, c.lastFull);
        EXPECT_EQ(fold.used, c.used);
    }
}

TEST(PaletteLayout, ScrollsMoveByCellsAndPagesWithinTheContent) {
    struct Case {
        PaletteMetrics metrics;
        int from;
        unsigned code;
        int position, to;
    };
    // Content 450 on a strip of 300: positions 0 to 150. A row's line up goes forward.
    const Case cases[] = {
        {Row(300), 0, sb::kLineUp, 0, 90},      {Row(300), 90, sb::kLineDown, 0, 0},
        {Column(300), 0, sb::kLineDown, 0, 40}, {Column(300), 100, sb::kLineUp, 0, 60},
        {Row(300), 0, sb::kPageDown, 0, 150},   {Row(300), 100, sb::kPageUp, 0, 0},
        {Row(300), 0, sb::kThumbTrack, 120, 120}, {Row(300), 0, sb::kThumbPosition, 900, 150},
        {Row(300), 70, sb::kEndScroll, 0, 70},  {Row(600), 0, sb::kThumbTrack, 50, 0},
    };
    for (const Case& c : cases)
        EXPECT_EQ(ScrollPalette(c.metrics, c.from, 450, c.code, c.position), c.to)
            << "code " << c.code << " from " << c.from;
    EXPECT_EQ(PaletteContentLength(Row(300), 5), 450);
    EXPECT_EQ(PaletteContentLength(Column(200), 3), 168);  // a pixel between each
}
