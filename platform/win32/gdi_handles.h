#pragma once
// The guards that select objects into device contexts, and the GDI objects made of the core's
// descriptions. The owners of the handles themselves are in unique_handle.h.
//
// A guard restores what it displaced when it goes out of scope. Declare the object before the
// guard that selects it: the guard then puts the old object back before the object is deleted.

#include <windows.h>

#include "foundation/win_types.h"
#include "platform/win32/unique_handle.h"

// Selects a pen, brush, font or bitmap into a context for the guard's scope.
class SelectGuard {
public:
    SelectGuard(HDC dc, HGDIOBJ object) : m_dc(dc), m_old(::SelectObject(dc, object)) {}
    ~SelectGuard() {
        if (Selected())
            ::SelectObject(m_dc, m_old);
    }
    SelectGuard(const SelectGuard&) = delete;
    SelectGuard& operator=(const SelectGuard&) = delete;

    // False when the context refused the object (a bitmap of another device, for one).
    bool Selected() const { return m_old != nullptr && m_old != HGDI_ERROR; }

private:
    HDC m_dc;
    HGDIOBJ m_old;
};

// Selects and realises a palette for the guard's scope.
class PaletteGuard {
public:
    PaletteGuard(HDC dc, HPALETTE palette) : m_dc(dc), m_old(::SelectPalette(dc, palette, FALSE)) {
        if (m_old != nullptr)
            ::RealizePalette(dc);
    }
    ~PaletteGuard() {
        if (m_old != nullptr)
            ::SelectPalette(m_dc, m_old, FALSE);
    }
    PaletteGuard(const PaletteGuard&) = delete;
    PaletteGuard& operator=(const PaletteGuard&) = delete;

private:
    HDC m_dc;
    HPALETTE m_old;
};

// A font of the core's description. The layouts are the same to the byte.
FontHandle MakeFont(const win::LOGFONTW& font);

// A solid brush of the colour.
BrushHandle MakeBrush(win::COLORREF color);
