// The simulated scroll bar control: its range, page and position, its look and its presses.

#include <algorithm>

#include "platform/sim/sim_window_system.h"
#include "ports/window_messages.h"

namespace {

constexpr win::COLORREF kTrack = 0xE8E8E8;
constexpr win::COLORREF kFace = 0xF0F0F0;
constexpr win::COLORREF kLight = 0xFFFFFF;
constexpr win::COLORREF kShadow = 0xA0A0A0;
constexpr win::COLORREF kArrow = 0x606060;
constexpr int kMinThumb = 8;

bool IsVertical(const SimWindow& w) {
    return (w.style & sbs::kVert) != 0;
}

// The highest position the page leaves.
int MaxPos(const ScrollInfo& s) {
    return s.max - std::max(static_cast<int>(s.page) - 1, 0);
}

int Limited(const ScrollInfo& s, int pos) {
    return std::max(std::min(pos, MaxPos(s)), s.min);
}

}  // namespace

int SimWindowSystem::SetScrollInfo(HostWindow* bar, const ScrollInfo& info, bool redraw) {
    if (!IsWindow(bar) || Window(bar).className != L"ScrollBar")
        return 0;
    SimWindow& w = Window(bar);
    ScrollInfo& s = w.scroll;
    if (info.mask & sif::kRange) {
        s.min = info.min;
        s.max = std::max(info.max, info.min);
    }
    if (info.mask & sif::kPage)
        s.page = info.page;
    s.page = std::min<unsigned>(s.page, static_cast<unsigned>(s.max - s.min + 1));
    if (info.mask & sif::kPos)
        s.pos = info.pos;
    s.pos = Limited(s, s.pos);
    s.mask = sif::kRange | sif::kPage | sif::kPos;
    if (info.mask & sif::kDisableNoScroll)
        w.scrollDisabled = MaxPos(s) <= s.min;
    if (redraw)
        ++w.redraws;
    return s.pos;
}

ScrollInfo SimWindowSystem::GetScrollInfo(HostWindow* bar) {
    if (!IsWindow(bar) || Window(bar).className != L"ScrollBar")
        return ScrollInfo{};
    return Window(bar).scroll;
}

int SimWindowSystem::SetScrollPos(HostWindow* bar, int pos, bool redraw) {
    if (!IsWindow(bar) || Window(bar).className != L"ScrollBar")
        return 0;
    SimWindow& w = Window(bar);
    const int before = w.scroll.pos;
    w.scroll.pos = Limited(w.scroll, pos);
    if (redraw)
        ++w.redraws;
    return before;
}

SimWindowSystem::ScrollBarParts SimWindowSystem::PartsOf(HostWindow* bar) {
    const SimWindow& w = Window(bar);
    const bool vertical = IsVertical(w);
    const int length = vertical ? w.rect.Height() : w.rect.Width();
    const int across = vertical ? w.rect.Width() : w.rect.Height();
    const int arrow = std::min(across, length / 2);
    const int track = length - 2 * arrow;
    const ScrollInfo& s = w.scroll;
    const int range = s.max - s.min + 1;
    int thumbLength = 0;
    int thumbStart = arrow;
    if (!w.scrollDisabled && range > 0 && MaxPos(s) > s.min) {
        thumbLength = std::max(track * static_cast<int>(s.page) / range, kMinThumb);
        thumbLength = std::min(thumbLength, track);
        thumbStart += (track - thumbLength) * (s.pos - s.min) / (MaxPos(s) - s.min);
    }
    // Along the length as x, then turned for a vertical bar.
    auto span = [&](int from, int to) {
        return vertical ? win::RECT{0, from, across, to} : win::RECT{from, 0, to, across};
    };
    return {span(0, arrow), span(length - arrow, length),
            span(thumbStart, thumbStart + thumbLength)};
}

void SimWindowSystem::PaintScrollBar(HostWindow* bar, Canvas& canvas) {
    const ScrollBarParts parts = PartsOf(bar);
    canvas.FillRect({0, 0, canvas.Width(), canvas.Height()}, kTrack);
    for (const win::RECT& button : {parts.lineUp, parts.lineDown, parts.thumb}) {
        if (button.IsEmpty())
            continue;
        canvas.FillRect(button, kFace);
        canvas.Draw3dRect(button, kLight, kShadow);
    }
    // A dot in the middle of each arrow, dark while the bar scrolls.
    const win::COLORREF dot = Window(bar).scrollDisabled ? kShadow : kArrow;
    for (const win::RECT& arrow : {parts.lineUp, parts.lineDown}) {
        const int x = (arrow.left + arrow.right) / 2;
        const int y = (arrow.top + arrow.bottom) / 2;
        canvas.FillRect({x - 2, y - 2, x + 2, y + 2}, dot);
    }
}

void SimWindowSystem::PressScrollBar(HostWindow* bar, win::POINT point) {
    const SimWindow& w = Window(bar);
    if (w.scrollDisabled)
        return;
    const ScrollBarParts parts = PartsOf(bar);
    const bool vertical = IsVertical(w);
    const int at = vertical ? point.y : point.x;
    auto start = [vertical](const win::RECT& r) { return vertical ? r.top : r.left; };
    auto end = [vertical](const win::RECT& r) { return vertical ? r.bottom : r.right; };
    if (at < end(parts.lineUp))
        Scroll(bar, sb::kLineUp);
    else if (at >= start(parts.lineDown))
        Scroll(bar, sb::kLineDown);
    else if (!parts.thumb.IsEmpty() && at < start(parts.thumb))
        Scroll(bar, sb::kPageUp);
    else if (!parts.thumb.IsEmpty() && at >= end(parts.thumb))
        Scroll(bar, sb::kPageDown);
}

void SimWindowSystem::Scroll(HostWindow* bar, unsigned code, int position) {
    const SimWindow& w = Window(bar);
    const unsigned message = IsVertical(w) ? wm::kVScroll : wm::kHScroll;
    const auto wParam = static_cast<std::uintptr_t>(
        (code & 0xFFFF) | (static_cast<std::uint32_t>(position & 0xFFFF) << 16));
    Send(w.parent, message, wParam, reinterpret_cast<std::intptr_t>(bar));
}
