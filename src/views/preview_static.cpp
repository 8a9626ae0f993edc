#include "views/preview_static.h"

#include <cmath>

#include "foundation/no_case.h"
#include "ports/canvas.h"
#include "ports/port.h"
#include "ports/shell_pictures.h"
#include "ports/system_look.h"
#include "ports/window_system.h"

namespace {

constexpr unsigned kRedrawNow = ws::kRdwInvalidate | ws::kRdwErase | ws::kRdwUpdateNow;

bool IsDrawing(const std::wstring& path) {
    return path.size() >= 4 && EqualNoCase(path.substr(path.size() - 4), L".dwg");
}

}  // namespace

std::vector<std::unique_ptr<TrPreviewItem>> LoadPreviewItems(const std::vector<std::wstring>& paths,
                                                             int squareSize) {
    std::vector<std::unique_ptr<TrPreviewItem>> items;
    for (const std::wstring& path : paths) {
        auto item = std::make_unique<TrPreviewItem>();
        if (IsDrawing(path)) {
            item->preview.Read(path, true);
        } else {
            item->bShellImage = 1;
            // Without a shell the item stays, with no picture.
            if (IsInstalled<ShellPictures>())
                item->bitmap = Use<ShellPictures>().Extract(path, squareSize);
        }
        items.push_back(std::move(item));
    }
    return items;
}

void PaintPreviewPane(Canvas& canvas, const std::vector<std::unique_ptr<TrPreviewItem>>& items,
                      const PreviewPaneColors& colors, const win::LOGFONTW& font) {
    win::RECT rc{0, 0, canvas.Width(), canvas.Height()};
    canvas.Draw3dRect(rc, colors.shadow, colors.light);
    rc = {rc.left + 2, rc.top + 2, rc.right - 2, rc.bottom - 2};
    canvas.FillRect(rc, colors.face);
    int y = rc.top;
    for (const auto& item : items) {
        if (y > rc.bottom)
            break;
        if (item->bShellImage != 0) {
            const int bw = item->bitmap.empty() ? 0 : DibWidth(item->bitmap);
            const int bh = item->bitmap.empty() ? 0 : std::abs(DibHeight(item->bitmap));
            if (bw <= 0)
                continue;  // no picture: no height
            const float ratio = static_cast<float>(bh) / static_cast<float>(bw);
            const int height = static_cast<int>(std::trunc(static_cast<float>(rc.Width()) * ratio));
            canvas.StretchDib(item->bitmap.data(), item->bitmap.size(),
                              {rc.left, y, rc.right, y + height}, StretchMode::kColorOnColor);
            y += height;
        } else {
            const win::RECT square{rc.left, y, rc.right, y + rc.Width()};
            item->preview.Draw(&canvas, square, font);
            y = square.bottom;
        }
    }
}

void TrPreviewStatic::SetFiles(std::vector<std::wstring> paths) {
    WindowSystem& windows = Use<WindowSystem>();
    const int size = windows.RectInParent(m_hWnd).Width();
    m_items.clear();
    m_items = LoadPreviewItems(paths, size);
    windows.Redraw(m_hWnd, kRedrawNow);
}

MsgResult TrPreviewStatic::OnPaint() {
    std::unique_ptr<Canvas> canvas = Use<WindowSystem>().BeginPaint(m_hWnd);
    if (canvas == nullptr)
        return MsgResult::Handled();
    SystemLook& look = Use<SystemLook>();
    PaintPreviewPane(*canvas, m_items,
                     {look.SysColor(syscolor::kBtnShadow), look.SysColor(syscolor::k3dLight),
                      look.SysColor(syscolor::kBtnFace)},
                     look.DefaultGuiFont());
    return MsgResult::Handled();
}
