#pragma once
// The preview pane of the work set dialog: a column of pictures of the selected files, each as
// wide as the pane. A drawing shows its stored preview in a square, on black; any other file
// the shell's picture of it, as high as its shape makes it. There is no scrolling: what doesn't
// fit isn't seen. The previews are read again at each selection, one file after another.

#include <memory>
#include <string>
#include <vector>

#include "views/dib.h"
#include "views/dwg_preview.h"
#include "ports/window_handler.h"

class Canvas;
struct HostWindow;

struct TrPreviewItem {
    std::int32_t bShellImage = 0;  // 1: the shell's picture, 0: the drawing's stored preview
    DibBlock bitmap;               // the shell's picture; empty when it gave none
    TrDwgPreview preview{0, true, false};
};

struct PreviewPaneColors {
    win::COLORREF shadow = 0;
    win::COLORREF light = 0;
    win::COLORREF face = 0;
};

// The items of `paths` in order, each picture asked for at `squareSize`.
std::vector<std::unique_ptr<TrPreviewItem>> LoadPreviewItems(const std::vector<std::wstring>& paths,
                                                             int squareSize);
// The pane's client area: a sunken frame, the face, and the items from the top down until the
// pane is full.
void PaintPreviewPane(Canvas& canvas, const std::vector<std::unique_ptr<TrPreviewItem>>& items,
                      const PreviewPaneColors& colors, const win::LOGFONTW& font);

class TrPreviewStatic : public WindowHandler {
public:
    // By value: the caller's selection may change while the files are read.
    void SetFiles(std::vector<std::wstring> paths);
    MsgResult OnPaint() override;
    MsgResult OnEraseBkgnd() override { return MsgResult::Handled(1); }

    HostWindow* m_hWnd = nullptr;  // the static control, the dialog's
    std::vector<std::unique_ptr<TrPreviewItem>> m_items;
};
