#pragma once
// What the GDI tests share: the count of live GDI objects, pictures compared pixel by pixel,
// DIBs of the depths the sample writer doesn't make, fonts by face name.

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

win::LOGFONTW FontOf(const wchar_t* face, int height);
