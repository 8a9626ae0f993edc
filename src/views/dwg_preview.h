#pragma once
// One drawing file's stored preview picture, read without the host: a short walk through the
// file's head and its preview block, and nothing else of the file.

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "foundation/file_info.h"
#include "foundation/win_types.h"
#include "ports/canvas.h"
#include "views/dib.h"

// One entry of the preview block. Type 2 is a DIB; 1 (header data), 3 (a metafile) and any
// other type are kept and otherwise ignored.
struct TrDwgImageRecord {
    std::int8_t type = 0;
    std::uint32_t size = 0;          // as the file claims it
    std::int32_t address = 0;        // absolute file offset of the bytes
    std::vector<std::uint8_t> data;  // the bytes the file holds, at most `size`
};

// The 16 bytes that open a preview block.
extern const std::uint8_t kDwgPreviewSentinel[16];

class TrDwgPreview {
public:
    TrDwgPreview();
    TrDwgPreview(win::COLORREF back, bool fitPalette, bool flag);
    ~TrDwgPreview();
    TrDwgPreview(const TrDwgPreview&) = delete;
    TrDwgPreview& operator=(const TrDwgPreview&) = delete;

    // True (1) only when the walk reached the end of the record list.
    int Read(const std::wstring& path, bool setFile);
    void StartBackgroundRead();
    // Paints the preview, or the status or error text in red, into `rect`. The text is set
    // in `font`.
    void Draw(Canvas* dc, const win::RECT& rect, const win::LOGFONTW& font);

    void SetFile(const std::wstring& path);
    void Clear();
    void SetDib(DibBlock dib);
    void SetBackColor(win::COLORREF color);
    bool IsFile(const std::wstring& path) const;
    win::SIZE GetImageSize() const;
    // A bitmap of the picture for `dc`, or for the screen when `dc` is null; null without one.
    std::unique_ptr<Canvas> CreateBitmap(Canvas* dc = nullptr) const;
    // Rewrites the entries the host draws background and foreground with, for m_crBack.
    void FitPalette();

    win::RECT m_rcUpdate;
    std::thread m_pThread;
    std::wstring m_strStatus = L"Loading...";
    std::wstring m_strError;
    std::int32_t m_nReserved = 0;
    win::RECT m_rcImage;
    bool m_bFlag = false;
    DibBlock m_hDib;
    // Asked for a redraw of m_rcUpdate at the end of a read, when set.
    std::function<void(const win::RECT&)> m_hWndNotify;
    bool m_bBackground = false;
    bool m_bFitPalette = false;
    win::COLORREF m_crBack = 0;
    win::COLORREF m_crSentinelEntry = 0;
    CFileInfo m_fileInfo;
    std::int32_t m_nVersion = 16;
    std::int32_t m_nPaletteVersion = 0;
    std::uint8_t m_nWriterByte = 0;
    std::uint32_t m_nPreviewAddress = 0;
    std::vector<std::unique_ptr<TrDwgImageRecord>> m_records;
    bool m_bRead = false;
    std::atomic<bool> m_bThreadRunning{false};

private:
    void Reset();
    bool Walk(class DwgFileCursor& file);  // false when no preview block is found
    void AdoptPicture(const TrDwgImageRecord& record);
    void DrawStatusText(Canvas* dc, const win::RECT& rect, const win::LOGFONTW& font);
};
