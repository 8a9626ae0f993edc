#include "platform/sim/sim_drawing_view.h"

#include <algorithm>
#include <cstdint>

#include "ports/canvas.h"
#include "ports/window_system.h"

namespace {

std::uint32_t Hash(const std::wstring& text) {
    std::uint32_t h = 2166136261u;
    for (wchar_t c : text)
        h = (h ^ static_cast<std::uint32_t>(c)) * 16777619u;
    return h;
}

void Line(Canvas& canvas, int x0, int y0, int x1, int y1, win::COLORREF color) {
    // Only plan lines: along one axis each.
    canvas.FillRect(
        {std::min(x0, x1), std::min(y0, y1), std::max(x0, x1) + 1, std::max(y0, y1) + 1}, color);
}

}  // namespace

MsgResult SimDrawingView::OnPaint() {
    std::unique_ptr<Canvas> canvas = m_windows.BeginPaint(m_view);
    if (canvas == nullptr)
        return MsgResult::Handled();
    const int width = canvas->Width();
    const int height = canvas->Height();
    canvas->FillRect({0, 0, width, height}, kBackground);

    // A plan: an outer wall, rooms cut by walls at places the name decides, a dimension line.
    std::uint32_t h = Hash(m_title);
    const int left = width / 8 + static_cast<int>(h % 40);
    const int top = height / 6 + static_cast<int>((h >> 6) % 30);
    const int right = width - width / 6 - static_cast<int>((h >> 12) % 60);
    const int bottom = height - height / 5;
    for (int inset = 0; inset < 3; inset += 2)
        canvas->Draw3dRect({left + inset, top + inset, right - inset, bottom - inset}, kWalls,
                           kWalls);
    const int rooms = 2 + static_cast<int>((h >> 18) % 3);
    for (int i = 1; i < rooms; ++i) {
        const int x = left + (right - left) * i / rooms + static_cast<int>((h >> (i * 3)) % 17);
        Line(*canvas, x, top, x, bottom - 1, kWalls);
    }
    const int y = top + (bottom - top) * (1 + static_cast<int>((h >> 24) % 2)) / 3;
    Line(*canvas, left, y, right - 1, y, kWalls);
    Line(*canvas, left, bottom + 12, right - 1, bottom + 12, kLines);
    Line(*canvas, left, bottom + 8, left, bottom + 16, kLines);
    Line(*canvas, right - 1, bottom + 8, right - 1, bottom + 16, kLines);

    win::LOGFONTW font;
    font.lfHeight = -16;
    font.lfWeight = 700;
    canvas->DrawText(m_title, {8, 6, width - 8, 30}, font, kName, kTextLeft | kTextSingleLine);
    return MsgResult::Handled();
}
