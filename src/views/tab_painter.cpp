#include "views/tab_painter.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "ports/canvas.h"
#include "ports/port.h"
#include "ports/tab_control.h"
#include "ports/theme.h"
#include "views/image_ops.h"

namespace {

// What DrawThemeTab is asked to draw.
enum ThemeTabFlags : unsigned {
    kPage = 1,
    kSelected = 2,
    kHot = 4,
    kBottomSide = 8,  // bottom, or right when vertical
    kVertical = 16,
};

constexpr std::size_t kThemedTextLimit = 127;
constexpr std::size_t kOwnerDrawnTextLimit = 63;
// The text colour of a fresh memory context, which the themed path never sets.
constexpr win::COLORREF kContextTextColor = 0x000000;

using Pixels = std::vector<BYTE>;

// A picture of the canvas as an RGB buffer, rows tight.
Pixels ReadPicture(Canvas& picture) {
    Pixels rgb(static_cast<std::size_t>(picture.Width()) * picture.Height() * 3);
    IS40_HBITMAPToRGB(&picture, rgb.data());
    return rgb;
}

void MirrorRows(Pixels& rgb, int width, int first, int count) {
    const std::size_t row = static_cast<std::size_t>(width) * 3;
    for (int i = 0; i < count / 2; ++i) {
        BYTE* a = rgb.data() + static_cast<std::size_t>(first + i) * row;
        BYTE* b = rgb.data() + static_cast<std::size_t>(first + count - 1 - i) * row;
        std::swap_ranges(a, a + row, b);
    }
}

void Normalise(win::RECT& rect) {
    if (rect.left > rect.right)
        std::swap(rect.left, rect.right);
    if (rect.top > rect.bottom)
        std::swap(rect.top, rect.bottom);
}

// The text and image of a themed tab, drawn into its picture (which has the form of a top tab).
// No image list is set on the bar's tabs, so the image step only moves the rectangle.
void DrawTabContent(Canvas& picture, const TabStrip& strip, int index, win::RECT rect,
                    unsigned flags) {
    const bool selected = (flags & kSelected) != 0;
    const bool bottomSide = (flags & kBottomSide) != 0;
    rect.bottom += selected ? -1 : 2;
    rect.left += bottomSide ? 3 : 6;
    rect.top += (bottomSide ? 3 : 2) + (selected ? 1 : 0) + (!selected && !bottomSide ? 3 : 0);
    rect.left -= 2;
    rect.right -= 2;
    const std::wstring text =
        strip.tabs[static_cast<std::size_t>(index)].text.substr(0, kThemedTextLimit);
    if (text.empty())
        return;
    rect.right -= 3;
    const int dx = bottomSide ? -1 : 0;
    const int dy = selected ? 1 : -1;
    rect = rect.Offset(dx, dy);
    // Cut to the width with an ellipsis, then centred on the rectangle's first line.
    picture.DrawText(text, rect, strip.font, kContextTextColor,
                     kTextCenter | kTextSingleLine | kTextEndEllipsis);
}

// One theme picture, made as a top tab (or the page of a top strip), mirrored for the bottom
// and right sides, turned for the left and right ones, and copied to `rect`. `index` is -1 for
// the page.
void DrawThemeTab(Canvas& canvas, const TabStrip& strip, int index, const win::RECT& rect,
                  unsigned flags) {
    if (rect.Width() < 2 || rect.Height() < 2)
        return;
    const bool vertical = (flags & kVertical) != 0;
    const bool bottomSide = (flags & kBottomSide) != 0;
    const bool page = (flags & kPage) != 0;
    const bool selected = (flags & kSelected) != 0;
    const int width = vertical ? rect.Height() : rect.Width();
    const int height = vertical ? rect.Width() : rect.Height();
    std::unique_ptr<Canvas> picture = canvas.CreateCompatible(width, height);
    if (picture == nullptr)
        return;

    // Opened afresh for each picture: the theme may have gone since the last one. A failed
    // draw leaves the picture as it is, unreported.
    std::unique_ptr<ThemeData> theme = IsInstalled<Theme>() ? Use<Theme>().Open(L"TAB") : nullptr;
    if (theme != nullptr) {
        const int state = selected              ? tab_theme::kStateSelected
                          : (flags & kHot) != 0 ? tab_theme::kStateHot
                                                : tab_theme::kStateNormal;
        // A selected tab's picture runs one line past the bottom, so that its lower edge, which
        // would part it from the page, is cut off.
        theme->DrawBackground(*picture, page ? tab_theme::kPane : tab_theme::kTabItem,
                              page ? 0 : state, {0, 0, width, height + (selected ? 1 : 0)});
    }

    if (bottomSide) {
        Pixels rgb = ReadPicture(*picture);
        // A horizontal page keeps its first three lines and its last one where they are.
        const bool band = page && !vertical;
        MirrorRows(rgb, width, band ? 3 : 0, band ? height - 4 : height);
        if (page && vertical)
            MirrorRows(rgb, width, 2, height - 4);
        IS40_DrawRGB(picture.get(), rgb.data(), width, height, width * 3, 0, 0);
    }
    // The text goes on after the mirror, so that it stands upright.
    if (!page)
        DrawTabContent(*picture, strip, index, {0, 0, width, height}, flags);

    Pixels rgb = ReadPicture(*picture);
    if (vertical) {
        // A tab turns a quarter anticlockwise on both sides; the page is transposed.
        IS40_QuickRotateImageInPlace(rgb.data(), width, height, 2, 3, 0);
        if (page)
            MirrorRows(rgb, height, 0, width);
    }
    IS40_DrawRGB(&canvas, rgb.data(), rect.Width(), rect.Height(), rect.Width() * 3, rect.left,
                 rect.top);
    if (selected)
        AlphaFillRect(&canvas, rect, strip.colors.activeCaption, kActiveTintAlpha);
}

// The edge of a rectangle on a side, numbered as the orientations are.
std::int32_t& Edge(win::RECT& rect, int side) {
    switch (side) {
        case kTabTop:
            return rect.top;
        case kTabBottom:
            return rect.bottom;
        case kTabLeft:
            return rect.left;
        default:
            return rect.right;
    }
}

int Opposite(int side) {
    return side ^ 1;
}

// Towards the page from tabs on `side`: down or right for top and left tabs.
int TowardsPage(int side) {
    return side == kTabTop || side == kTabLeft ? 1 : -1;
}

// The frame the control draws around a tab without a theme: open towards the page.
void DrawClassicTabFrame(Canvas& canvas, const PaintColors& colors, win::RECT frame,
                         int orientation) {
    canvas.Draw3dRect(frame, colors.btnHighlight, colors.btnShadow);
    win::RECT open = frame;
    const int along = orientation == kTabTop || orientation == kTabBottom ? kTabLeft : kTabTop;
    Edge(open, along) += 1;
    Edge(open, Opposite(along)) -= 1;
    Edge(open, orientation) = Edge(frame, Opposite(orientation)) - TowardsPage(orientation);
    canvas.FillRect(open, colors.btnFace);
}

// The selected tab of the classic strip stands 2 pixels out on every side but the page's,
// over which it reaches by one pixel to cover the page's frame.
win::RECT ClassicFrame(win::RECT item, int orientation, bool selected) {
    if (!selected)
        return item;
    win::RECT frame = item.Inflated(2);
    const int pageSide = Opposite(orientation);
    Edge(frame, pageSide) = Edge(item, pageSide) + TowardsPage(orientation);
    return frame;
}

}  // namespace

int TabOrientationOf(unsigned style) {
    const bool bottom = (style & tcs::kBottom) != 0;
    if ((style & tcs::kVertical) != 0)
        return bottom ? kTabRight : kTabLeft;
    return bottom ? kTabBottom : kTabTop;
}

bool TabPainter::UseThemeDrawing(const TabStrip& strip) {
    if (m_bExtended == 0)
        return false;
    m_nOrientation = TabOrientationOf(strip.style);
    return IsInstalled<Theme>() && Use<Theme>().IsActive();
}

bool TabPainter::Paint(Canvas& canvas, const TabStrip& strip) {
    if (!UseThemeDrawing(strip)) {
        PaintClassic(canvas, strip);
        return false;
    }
    PaintThemed(canvas, strip);
    return true;
}

void TabPainter::PaintThemed(Canvas& canvas, const TabStrip& strip) {
    canvas.FillRect(strip.client, strip.colors.btnFace);
    // The page reaches from the client's far side to just past the display area's tab side.
    static constexpr int kPageOverlap[] = {-2, 3, -1, 3};
    win::RECT page = strip.client;
    win::RECT area = strip.displayArea;
    Edge(page, m_nOrientation) = Edge(area, m_nOrientation) + kPageOverlap[m_nOrientation];
    const bool bottomSide = m_nOrientation == kTabBottom || m_nOrientation == kTabRight;
    const bool vertical = m_nOrientation == kTabLeft || m_nOrientation == kTabRight;
    const unsigned base = (bottomSide ? kBottomSide : 0u) | (vertical ? kVertical : 0u);
    DrawThemeTab(canvas, strip, -1, page, base | kPage);
    const int count = static_cast<int>(strip.tabs.size());
    for (int i = 0; i < count; ++i) {
        if (i == strip.selected)
            continue;
        win::RECT rect = strip.tabs[static_cast<std::size_t>(i)].rect;
        if (m_nOrientation == kTabLeft)
            rect.right += 1;
        DrawThemeTab(canvas, strip, i, rect, base | (i == strip.hot ? kHot : 0u));
    }
    if (strip.selected < 0 || strip.selected >= count)
        return;
    win::RECT rect = strip.tabs[static_cast<std::size_t>(strip.selected)].rect;
    Normalise(rect);
    rect = rect.Inflated(2);
    if (m_nOrientation == kTabTop)
        rect.bottom -= 1;
    // In several rows the selected tab must not run over the page's lower frame.
    if (strip.rows > 1 && (strip.style & tcs::kMultiLine) != 0)
        rect.bottom = std::min(rect.bottom, page.bottom - 2);
    DrawThemeTab(canvas, strip, strip.selected, rect, base | kSelected);
}

void TabPainter::PaintClassic(Canvas& canvas, const TabStrip& strip) {
    const PaintColors& colors = strip.colors;
    const int orientation = TabOrientationOf(strip.style);
    canvas.FillRect(strip.client, colors.btnFace);
    canvas.Draw3dRect(strip.displayArea.Inflated(2), colors.btnHighlight, colors.btnShadow);
    const int count = static_cast<int>(strip.tabs.size());
    auto drawTab = [&](int i) {
        const bool selected = i == strip.selected;
        const win::RECT frame =
            ClassicFrame(strip.tabs[static_cast<std::size_t>(i)].rect, orientation, selected);
        // The selected tab stands over its neighbours' edges.
        if (selected)
            canvas.FillRect(frame, colors.btnFace);
        DrawClassicTabFrame(canvas, colors, frame, orientation);
        DrawItem(canvas, strip, i, frame.Inflated(-2));
    };
    for (int i = 0; i < count; ++i) {
        if (i != strip.selected)
            drawTab(i);
    }
    if (strip.selected >= 0 && strip.selected < count)
        drawTab(strip.selected);
}

void TabPainter::DrawItem(Canvas& canvas, const TabStrip& strip, int index, const win::RECT& rect,
                          TabItemOptions options) {
    if (index < 0 || index >= static_cast<int>(strip.tabs.size()))
        return;
    m_nOrientation = TabOrientationOf(strip.style);
    const bool selected = index == strip.selected;
    const bool vertical = m_nOrientation == kTabLeft || m_nOrientation == kTabRight;
    const int width = vertical ? rect.Height() : rect.Width();
    const int height = vertical ? rect.Width() : rect.Height();
    std::unique_ptr<Canvas> picture =
        width > 0 && height > 0 ? canvas.CreateCompatible(width, height) : nullptr;
    if (picture == nullptr)
        return;
    const PaintColors& colors = strip.colors;
    picture->FillRect({0, 0, width, height}, colors.btnFace);
    // Unselected tabs but those at the bottom have their text low, towards the page.
    const std::uint32_t format =
        kTextCenter | kTextSingleLine |
        (selected || m_nOrientation == kTabBottom ? kTextVCenter : kTextBottom);
    picture->DrawText(
        strip.tabs[static_cast<std::size_t>(index)].text.substr(0, kOwnerDrawnTextLimit),
        {0, 0, width, height}, strip.font, colors.btnText, format);

    Pixels rgb = ReadPicture(*picture);
    if (vertical) {
        // Three quarter turns clockwise on the left, one on the right.
        if (m_nOrientation == kTabLeft) {
            IS40_QuickRotateImageInPlace(rgb.data(), width, height, 0, 3, 0);
            IS40_QuickRotateImageInPlace(rgb.data(), height, width, 0, 3, 0);
        }
        IS40_QuickRotateImageInPlace(rgb.data(), width, height, 0, 3, 0);
    }
    IS40_DrawRGB(&canvas, rgb.data(), rect.Width(), rect.Height(), rect.Width() * 3, rect.left,
                 rect.top);
    if (options.highlightSelected && selected) {
        PaintActiveMark(canvas, rect, colors.activeCaption);
    }
}

void PaintActiveMark(Canvas& canvas, const win::RECT& rect, win::COLORREF color) {
    AlphaFillRect(&canvas, rect, color, kActiveTintAlpha);
    canvas.Draw3dRect(rect, color, color);
    canvas.Draw3dRect(rect.Inflated(-1), color, color);
}
