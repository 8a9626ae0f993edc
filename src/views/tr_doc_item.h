#pragma once
// The palette's record of one open drawing. The palette owns its records; the document is the
// host's.

#include <cstdint>
#include <string>

#include "foundation/file_path.h"
#include "foundation/win_types.h"
#include "views/dib.h"

struct HostDocument;

struct TrDocItem {
    DibBlock hImage;               // the preview as a packed DIB; empty while there is none
    win::RECT rcItem;              // the cell on the palette
    HostDocument* pDoc = nullptr;  // not owned
    std::int32_t nIndex = -1;      // place in the palette's list, renumbered after each sort
    CFilePath path;
    // Kept with the record, never painted.
    std::wstring strNoImageText = L"NO IMAGE\nAVAILABLE";
    std::int32_t nImageWidth = 1;
    std::int32_t nImageHeight = 1;
    bool bClipped = false;     // only partly in view
    bool bLocked = false;      // the user locked the preview: it is no longer replaced
    bool bPaperSpace = false;  // TILEMODE was off when the image was taken
    bool bDarkBack = false;    // the image's background is dark
    bool bModified = false;
    bool bDirty = true;      // the image is out of date
    bool bFromView = false;  // the last image came from the drawing's view window
};
