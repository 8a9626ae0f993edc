#include "views/empty_bar_painter.h"

#include <vector>

#include "foundation/text_encoding.h"
#include "ports/canvas.h"
#include "settings/tabrow_settings.h"
#include "views/image_ops.h"

void PaintEmptyBar(Canvas& canvas, const EmptyBar& bar) {
    const PaintColors& colors = bar.colors;
    canvas.FillRect(bar.client, colors.btnFace);
    if (bar.documentCount > 0)
        return;
    win::RECT rect{bar.client.left + 2, bar.client.top + 2, bar.client.right - 2,
                   bar.client.bottom - 2};
    canvas.Draw3dRect(rect, colors.btnShadow, colors.btnShadow);

    const std::wstring text = FromUtf8(kNoDrawingsText);
    const win::SIZE extent = canvas.MeasureText(text, bar.font);
    const int w = extent.cx + 8;
    const int h = extent.cy;
    SmoothTextRequest request;
    request.text = kNoDrawingsText;
    request.font = &bar.font;
    request.smoothing = 4;
    request.color = colors.btnText;
    std::vector<BYTE> rgb = SmoothTextStrip(w, h, colors.btnFace, request);
    if (rgb.empty())
        return;  // painting swallows its failures; the next paint tries again

    // Turned only while docked at a side; floating, the bar keeps its side but not the turn.
    const bool turned =
        !bar.floating && (bar.dockSide == dock::kLeft || bar.dockSide == dock::kRight);
    if (turned) {
        IS40_QuickRotateImageInPlace(rgb.data(), w, h, bar.dockSide == dock::kLeft ? 2 : 0, 3, 0);
        const int offset = (rect.Width() - h) / 2;
        IS40_DrawRGB(&canvas, rgb.data(), h, w, h * 3, rect.left + offset, rect.top + offset);
    } else {
        const int offset = (rect.Height() - h) / 2;
        IS40_DrawRGB(&canvas, rgb.data(), w, h, w * 3, rect.left + offset, rect.top + offset);
    }
    AlphaFillRect(&canvas, rect, colors.activeCaption, kEmptyBarTintAlpha);
}
