#pragma once
// The preview view's list: one TrDocItem per open drawing, in the host's order or sorted by
// name or path with the user's collation. Its window's messages come here: a click on an item
// switches drawings, and the one-shot timers 100 (redraw once the host has painted the view)
// and 101 (the view was panned or zoomed: the active preview is out of date).

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "ports/host_graphics.h"
#include "ports/window_system.h"
#include "settings/tabrow_settings.h"
#include "views/dwg_list_view.h"
#include "views/tr_doc_item.h"

struct HostDocument;
struct HostWindow;
struct TabrowSettings;

// What both views say when a click would switch drawings in the middle of a command.
inline constexpr wchar_t kBusySwitchText[] =
    L"Please finish the active command before switching drawings!";

// A picture of the active drawing's screen, held while its thumbnail is made.
struct ScreenGrab {
    const std::uint8_t* pixels = nullptr;  // the top row's first pixel
    int width = 0;
    int height = 0;
    std::size_t stride = 0;
    // Samples blue, green, red, as the graphics system keeps them; else red, green, blue.
    bool bBgr = false;
    // What `pixels` points into: the host's screen shot, or a copy of the window.
    std::unique_ptr<HostScreenShot> shot;
    std::unique_ptr<std::uint8_t[]> copy;
};

class HvDwgPalette : public DwgListView, public WindowHandler {
public:
    static constexpr unsigned kRedrawTimer = 100;
    static constexpr unsigned kViewChangedTimer = 101;
    static constexpr unsigned kTimerDelay = 800;

    // `settings` (the bar's) gives the sort order and the switching and preview rules; it
    // outlives the palette.
    explicit HvDwgPalette(const TabrowSettings& settings) : m_settings(settings) {}
    HvDwgPalette(const HvDwgPalette&) = delete;
    HvDwgPalette& operator=(const HvDwgPalette&) = delete;

    // Null means the active drawing. Null while the list is being changed.
    TrDocItem* FindItem(HostDocument* doc);
    // No check for a drawing already listed: the host announces each drawing once.
    void AddDocument(HostDocument* doc) override;
    void RemoveDocument(HostDocument* doc) override;
    void SetActive(HostDocument* doc) override;
    void SetDocumentPath(HostDocument* doc, const std::wstring& path) override;
    // Acts for the active drawing only.
    void SetDocumentModified(HostDocument* doc, bool bModified) override;
    // Sorted, or in the host's order of documents.
    void Rebuild() override;
    void RecalcLayout();
    // The host's drawing colours, read again after its options may have changed them.
    void UpdateColors();
    // A click on an item: the switch, unless a command runs and switching is not allowed then.
    MsgResult OnLButtonDown(win::POINT point, unsigned keys) override;
    MsgResult OnLButtonDblClk(win::POINT, unsigned keys) override {
        ForwardDoubleClick(keys);
        return {};
    }
    // Every timer of the palette is one-shot.
    MsgResult OnTimer(unsigned id) override;
    // The cells follow the window's size.
    MsgResult OnSize(unsigned type, win::SIZE client) override;

    // The cell under a point of the client area, or null; tested from the last cell to the
    // first, so that a later cell wins where two overlap.
    TrDocItem* ItemFromPoint(win::POINT point);
    // The drawing of the cell under the point, or null.
    HostDocument* DocumentAt(win::POINT point);

    // The cells run in a row: a floating bar wider than high, or docked anywhere but the left
    // and right sides.
    bool IsHorizontal() const;
    // The size of an item's cell picture across the strip; a clipped item keeps only a name's
    // height along it. Null asks for an unclipped cell: a thumbnail's size.
    win::SIZE GetCellSize(const TrDocItem* item) const;

    // --- the preview pipeline (preview_pipeline.cpp) ---
    // Whether only a copy of the window shows the view: the graphics system draws it (a shaded
    // view, or on a layout's paper a viewport whose visual style is not 2D wireframe).
    bool NeedsWindowGrab(bool layout);
    // The active drawing's picture; false when the host gives none.
    bool GrabDrawing(TrDocItem& item, ScreenGrab& grab, bool layout);
    // Takes a new thumbnail of the active drawing when its record (null: the active one's) is
    // dirty and not locked. Runs from paint.
    void UpdatePreview(TrDocItem* item);
    // Marks the record dirty and redraws its cell: the grab follows from paint while the
    // drawing is active. Without `force` only when previews renew themselves.
    void RefreshPreview(HostDocument* doc, bool force);
    // Every drawing's thumbnail anew after a change of the cells' size; activates each in turn.
    void RefreshPreviews();
    void OnDocumentActivated(HostDocument* doc);
    void OnDocumentModified(HostDocument* doc, bool modified);
    void ToggleLock(HostDocument* doc);

    HostWindow* m_hWnd = nullptr;  // destroyed with the bar
    std::vector<std::unique_ptr<TrDocItem>> m_items;
    std::uint8_t m_bListChanging = 0;
    HostDrawingColors m_colors;
    double m_dAspect = 1.0;          // width over height of the host's drawing area
    std::int32_t m_nThumbExtent = 0;  // the palette's size across the strip, pixels
    std::int32_t m_nNameHeight = 15;  // the height of a name strip
    // Reads the image adjustments for a dark or a light background from the settings' store,
    // at each grab; when empty the values loaded with the settings serve.
    std::function<ImageAdjustments(bool bDarkBack)> m_readAdjustments;

private:
    void Sort();
    void Renumber();
    void Redraw();

    const TabrowSettings& m_settings;
};
