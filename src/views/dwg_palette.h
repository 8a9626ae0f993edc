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
#include "views/palette_layout.h"
#include "views/palette_painter.h"
#include "views/tr_doc_item.h"

class Canvas;
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

    // The cell under a point of the client area, or null; tested from the last cell to the
    // first, so that a later cell wins where two overlap.
    TrDocItem* ItemFromPoint(win::POINT point);
    // The drawing of the cell under the point, or null.
    HostDocument* DocumentAt(win::POINT point);

    // A dock side (dock:: value) other than the one held lays the cells out anew.
    void SetDockSide(int side);
    // The font of the names; the cells are laid out anew.
    void SetLabelFont(const win::LOGFONTW& font);
    // The place of the active drawing's record, or -1.
    int ActiveIndex();
    // Makes the two scroll bars, hidden.
    MsgResult OnCreate() override;
    // The cells, their marks and the active drawing's tint, painted off-screen; a dirty active
    // picture is taken anew on the way.
    MsgResult OnPaint() override;
    MsgResult OnEraseBkgnd() override { return MsgResult::Handled(1); }
    // The palette's own scroll bars move the cells; other controls' scrolls go on by default.
    MsgResult OnHScroll(unsigned code, int position, HostWindow* bar) override;
    MsgResult OnVScroll(unsigned code, int position, HostWindow* bar) override;

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
    // The bar's tips over the cells: every layout gives each record a fresh tool, and every
    // paint moves a cell's tool to where the cell was painted and renews its text.
    std::function<void()> m_onCellToolsReset;
    std::function<void(const TrDocItem& item)> m_onCellPainted;

    int m_nDockSide = -1;  // dock:: value
    HostWindow* m_vertScroll = nullptr;  // children: destroyed with the palette
    HostWindow* m_horzScroll = nullptr;
    win::RECT m_rcCells;  // the room for the cells, the scroll bar's taken off
    std::int32_t m_nFirstFull = 0;
    std::int32_t m_nLastFull = 0;
    std::int32_t m_nScrollPos = 0;
    std::int32_t m_nLength = 0;
    std::int32_t m_nContentLength = 0;
    win::LOGFONTW m_font;
    // Where the host's drawing area was last seen (the hook records it); the cells take their
    // shape from it. Not owned; null until the bar says.
    const win::RECT* m_pDrawingArea = nullptr;

private:
    void Sort();
    void Renumber();
    void Redraw();
    PaletteMetrics Metrics() const;
    PaletteLook Look() const;
    void PaintCells(Canvas& canvas, const win::RECT& client);
    MsgResult OnScroll(unsigned code, int position, HostWindow* bar);

    const TabrowSettings& m_settings;
};
