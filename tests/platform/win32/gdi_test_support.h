#pragma once
// What the GDI tests share: the count of live GDI objects, pictures compared pixel by pixel,
// DIBs of the depths the sample writer doesn't make, the face that text is drawn with.

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

#include "foundation/win_types.h"
#include "ports/canvas.h"

// GDI objects the process holds. GetGuiResources answers on Windows; Wine answers 0, and there
// the handle table is walked instead (it takes a handle by its low word alone).
int LiveGdiObjects();

// The whole canvas as RGB, rows from the top.
std::vector<std::uint8_t> PixelsOf(Canvas& canvas);

// "" when the two pictures (of `width` pixels a row) agree inside `area`; else the first pixel
// that differs by more than `tolerance` in a sample, with both colours.
std::string FirstDifference(const std::vector<std::uint8_t>& a, const std::vector<std::uint8_t>& b,
                            int width, const win::RECT& area, int tolerance = 0);

// The smallest rectangle holding every pixel of `area` that differs from `background`; empty
// when none does.
win::RECT CoverageBox(const std::vector<std::uint8_t>& rgb, int width, const win::RECT& area,
                      win::COLORREF background);

// A 16 or 32-bit DIB with a pattern in every channel; with `bitfields`, 16 bits are 5-6-5 and 32
// bits carry the masks of their usual layout.
std::string DeepDib(int width, int height, int bits, bool bitfields);

// The face every GDI text test draws with, added from its file for this process alone while the
// object lives: what a test measures then hangs neither on the fonts the machine happens to have
// nor on what the Wine prefix learnt of them when it was made. The file is Liberation Sans from
// Debian's fonts-liberation (scripts/install-deps installs it), seen by Wine on drive Z:.
class TestFace {
public:
    TestFace();
    ~TestFace();
    TestFace(const TestFace&) = delete;
    TestFace& operator=(const TestFace&) = delete;

    // "" once the file is added and a font of the face's name selects it; else what is wrong.
    const std::string& Problem() const { return m_problem; }
    // The face at `height` (negative: the em height in pixels), normal weight.
    win::LOGFONTW Font(int height) const;

private:
    bool m_added = false;
    std::string m_problem;
};
