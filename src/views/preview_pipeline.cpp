// The thumbnails of the open drawings: a picture of the active drawing's screen, reduced to the
// cell, adjusted in gamma and sharpness for its background, kept as a DIB on the record. Grabs
// run from paint and only for the active drawing; events mark records dirty and redraw.

#include <algorithm>
#include <cwchar>
#include <utility>
#include <vector>

#include "ports/canvas.h"
#include "ports/host_database.h"
#include "ports/host_documents.h"
#include "ports/host_services.h"
#include "ports/port.h"
#include "views/dwg_palette.h"
#include "views/image_ops.h"

namespace {

constexpr unsigned kRedrawNow = ws::kRdwInvalidate | ws::kRdwErase | ws::kRdwUpdateNow;

int CurrentViewport() {
    const std::optional<std::wstring> text = Use<HostServices>().GetVariable(L"CVPORT");
    return text ? static_cast<int>(std::wcstol(text->c_str(), nullptr, 10)) : 0;
}

// The largest sample below 64: a background that dark wants the brighter adjustments.
bool IsDarkBackground(win::COLORREF color) {
    const unsigned largest =
        std::max({color & 0xFFu, (color >> 8) & 0xFFu, (color >> 16) & 0xFFu});
    return largest < 64;
}

}  // namespace

bool HvDwgPalette::NeedsWindowGrab(bool layout) {
    const int viewport = CurrentViewport();
    HostGraphics& graphics = Use<HostGraphics>();
    if (!layout || viewport != 1)
        return graphics.HasGsView(viewport);
    // The layout's paper: the host draws it, but a viewport on it may be shaded.
    const std::vector<int> styles = graphics.ViewportVisualStyles();
    return std::any_of(styles.begin(), styles.end(),
                       [](int type) { return type != kVisualStyle2dWireframe; });
}

bool HvDwgPalette::GrabDrawing(TrDocItem& item, ScreenGrab& grab, bool layout) {
    HostGraphics& graphics = Use<HostGraphics>();
    if (NeedsWindowGrab(layout)) {
        // The graphics system's own copy lags behind what it shows; the window's client area
        // is what the user sees, without the window's frame.
        item.bFromView = true;
        std::unique_ptr<Canvas> bitmap =
            graphics.CopyClientArea(Use<HostServices>().ActiveDwgView());
        if (bitmap == nullptr || bitmap->Width() < 1 || bitmap->Height() < 1)
            return false;
        grab.width = bitmap->Width();
        grab.height = bitmap->Height();
        grab.stride = static_cast<std::size_t>(grab.width) * 3;
        grab.copy.reset(new std::uint8_t[grab.stride * static_cast<std::size_t>(grab.height)]);
        grab.pixels = grab.copy.get();
        grab.bBgr = false;
        return IS40_HBITMAPToRGB(bitmap.get(), grab.copy.get()) != 0;
    }
    item.bFromView = false;
    grab.shot = graphics.ScreenShot(0);
    if (grab.shot == nullptr || grab.shot->Width() < 1 || grab.shot->Height() < 1)
        return false;
    // Read where it lies: the reduction takes each sample by itself, so the order of the
    // three is put right on the thumbnail instead of on the whole screen.
    grab.width = grab.shot->Width();
    grab.height = grab.shot->Height();
    grab.stride = grab.shot->Stride();
    grab.pixels = grab.shot->Pixels();
    grab.bBgr = true;
    return true;
}

void HvDwgPalette::UpdatePreview(TrDocItem* item) {
    if (m_nThumbExtent <= 0)
        return;
    if (item == nullptr)
        item = FindItem(nullptr);
    if (item == nullptr)
        return;
    // A grab copies the whole view: only the active drawing's screen shows it.
    if (item->pDoc != Use<HostDocuments>().MdiActiveDocument() || item->bLocked || !item->bDirty)
        return;
    HostDatabasePort& databases = Use<HostDatabasePort>();
    if (HostDatabase* db = databases.WorkingDatabase())
        item->bPaperSpace = !databases.Tilemode(db);

    ScreenGrab grab;
    if (!GrabDrawing(*item, grab, item->bPaperSpace))
        return;  // still dirty: the next paint tries again
    item->bDirty = false;
    item->bDarkBack = IsDarkBackground(item->bPaperSpace ? m_colors.layoutBackground
                                                         : m_colors.modelBackground);
    // From here a failure leaves the cell empty.
    item->hImage.clear();
    try {
        const win::SIZE size = GetCellSize(nullptr);
        if (size.cx < 1 || size.cy < 1)
            return;
        const auto width = static_cast<UINT>(size.cx);
        const auto height = static_cast<UINT>(size.cy);
        const UINT stride = width * 3;
        std::vector<std::uint8_t> target(static_cast<std::size_t>(stride) * height);
        // Unchecked on purpose: a grab smaller than the cell is refused, and the cell then
        // shows the untouched buffer.
        IS40_ResizeImage({grab.pixels, static_cast<UINT>(grab.width),
                          static_cast<UINT>(grab.height), static_cast<UINT>(grab.stride),
                          target.data(), width, height, stride, 3, 15, 0});
        if (grab.bBgr) {
            for (std::size_t i = 0; i < target.size(); i += 3)
                std::swap(target[i], target[i + 2]);
        }
        grab = ScreenGrab();
        const ImageAdjustments adjust =
            m_readAdjustments ? m_readAdjustments(item->bDarkBack)
                              : (item->bDarkBack ? m_settings.m_blackBack : m_settings.m_whiteBack);
        // Brightness and contrast are read with the rest and, by design, not applied.
        if (adjust.m_dGamma != 0.0)
            IS40_AdjustGamma(target.data(), width, height, 3, stride, adjust.m_dGamma, 0);
        if (adjust.m_nSharpness > 0) {
            std::vector<std::uint8_t> sharpened(target.size());
            if (IS40_SharpenImage(target.data(), width, height, 3, stride, sharpened.data(),
                                  stride, adjust.m_nSharpness, 7) != 0)
                target.swap(sharpened);
        }
        item->nImageWidth = size.cx;
        item->nImageHeight = size.cy;
        item->hImage = IS40_RGBToDIB(target.data(), width, height, stride, 0);
    } catch (...) {
        // A thumbnail that cannot be made leaves an empty cell, and nobody is told.
    }
}

void HvDwgPalette::RefreshPreview(HostDocument* doc, bool force) {
    if (m_settings.m_bAutoUpdatePreviews == 0 && !force)
        return;
    TrDocItem* item = FindItem(doc);
    if (item == nullptr)
        return;
    item->bDirty = true;
    // Paint grabs it now if the drawing is active; otherwise when it becomes active.
    if (m_hWnd != nullptr)
        Use<WindowSystem>().RedrawRect(m_hWnd, item->rcItem, kRedrawNow);
}

void HvDwgPalette::RefreshPreviews() {
    if (m_settings.m_bAutoUpdatePreviews == 0)
        return;
    HostDocuments& docs = Use<HostDocuments>();
    const std::vector<HostDocument*> all = docs.Documents();
    if (all.size() == 1) {
        Redraw();
        return;
    }
    HostDocument* noted = docs.MdiActiveDocument();
    for (HostDocument* doc : all) {
        // Each activation fires the host's events, which may change the list: look again.
        docs.ActivateDocument(doc);
        if (TrDocItem* item = FindItem(doc))
            UpdatePreview(item);
    }
    if (noted != nullptr)
        docs.ActivateDocument(noted);
}

void HvDwgPalette::OnDocumentActivated(HostDocument* doc) {
    TrDocItem* item = FindItem(doc);
    if (item == nullptr)
        return;
    if (item->bFromView) {
        // A copy of the window needs the host to have painted the view: this paint still shows
        // the old picture, and the timer's paint takes the new one.
        Redraw();
        if (m_settings.m_bAutoUpdatePreviews != 0)
            item->bDirty = true;
        if (m_hWnd != nullptr)
            Use<WindowSystem>().SetTimer(m_hWnd, kRedrawTimer, kTimerDelay);
        return;
    }
    if (m_settings.m_bAutoUpdatePreviews != 0)
        item->bDirty = true;
    Redraw();
}

void HvDwgPalette::OnDocumentModified(HostDocument* doc, bool modified) {
    if (doc != Use<HostDocuments>().MdiActiveDocument())
        return;
    TrDocItem* item = FindItem(doc);
    if (item == nullptr)
        return;
    item->bModified = modified;
    // The host reports a change of the modified state, not each edit: the first change after
    // a save renews the picture, later ones don't.
    if (modified && m_settings.m_bAutoUpdatePreviews != 0)
        item->bDirty = true;
    Redraw();
}

void HvDwgPalette::ToggleLock(HostDocument* doc) {
    TrDocItem* item = FindItem(doc);
    if (item == nullptr)
        return;
    item->bLocked = !item->bLocked;
    if (!item->bLocked)
        item->bDirty = true;
    if (m_hWnd != nullptr)
        Use<WindowSystem>().RedrawRect(m_hWnd, item->rcItem, kRedrawNow);
}

void HvDwgPalette::UpdateColors() {
    m_colors = Use<HostGraphics>().CurrentColors();
}
