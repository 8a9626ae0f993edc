#pragma once
// Owners of GDI handles and the guards that select objects into device contexts.
//
// Each kind of handle has its own owner type, and the owner knows the call that releases it:
// DeleteObject for pens, brushes, fonts, bitmaps and palettes, DeleteDC for a memory context,
// ReleaseDC for a window's context, DrawDibClose, FreeLibrary. Owners move and never copy.
//
// A guard restores what it displaced when it goes out of scope. Declare the object before the
// guard that selects it: the guard then puts the old object back before the object is deleted.

#include <windows.h>
#include <vfw.h>

#include <type_traits>
#include <utility>

#include "foundation/win_types.h"

template <class Handle, class Traits>
class UniqueHandle {
public:
    UniqueHandle() = default;
    explicit UniqueHandle(Handle handle) : m_handle(handle) {}
    ~UniqueHandle() { Reset(); }
    UniqueHandle(UniqueHandle&& other) noexcept : m_handle(std::exchange(other.m_handle, nullptr)) {}
    UniqueHandle& operator=(UniqueHandle&& other) noexcept {
        if (this != &other) {
            Reset();
            m_handle = std::exchange(other.m_handle, nullptr);
        }
        return *this;
    }
    UniqueHandle(const UniqueHandle&) = delete;
    UniqueHandle& operator=(const UniqueHandle&) = delete;

    explicit operator bool() const { return m_handle != nullptr; }
    Handle Get() const { return m_handle; }
    void Reset() {
        if (m_handle != nullptr)
            Traits::Close(m_handle);
        m_handle = nullptr;
    }

private:
    Handle m_handle = nullptr;
};

struct GdiObjectRelease {
    static void Close(HGDIOBJ object) { ::DeleteObject(object); }
};
struct MemoryDcRelease {
    static void Close(HDC dc) { ::DeleteDC(dc); }
};
struct DrawDibRelease {
    static void Close(HDRAWDIB drawDib) { ::DrawDibClose(drawDib); }
};
struct ModuleRelease {
    static void Close(HMODULE module) { ::FreeLibrary(module); }
};

using BitmapHandle = UniqueHandle<HBITMAP, GdiObjectRelease>;
using BrushHandle = UniqueHandle<HBRUSH, GdiObjectRelease>;
using FontHandle = UniqueHandle<HFONT, GdiObjectRelease>;
using PaletteHandle = UniqueHandle<HPALETTE, GdiObjectRelease>;
using MemoryDc = UniqueHandle<HDC, MemoryDcRelease>;
using DrawDibHandle = UniqueHandle<HDRAWDIB, DrawDibRelease>;
using ModuleHandle = UniqueHandle<HMODULE, ModuleRelease>;

static_assert(!std::is_copy_constructible_v<BitmapHandle> && !std::is_copy_assignable_v<BitmapHandle>,
              "a bitmap has one owner");
static_assert(!std::is_copy_constructible_v<MemoryDc> && !std::is_copy_assignable_v<MemoryDc>,
              "a memory context has one owner");
static_assert(!std::is_copy_constructible_v<DrawDibHandle> && !std::is_copy_assignable_v<DrawDibHandle>,
              "a DrawDib context has one owner");

// A window's device context (the screen's for a null window), given back with ReleaseDC.
class WindowDc {
public:
    explicit WindowDc(HWND window) : m_window(window), m_dc(::GetDC(window)) {}
    ~WindowDc() {
        if (m_dc != nullptr)
            ::ReleaseDC(m_window, m_dc);
    }
    WindowDc(const WindowDc&) = delete;
    WindowDc& operator=(const WindowDc&) = delete;

    HDC Get() const { return m_dc; }

private:
    HWND m_window;
    HDC m_dc;
};
static_assert(!std::is_copy_constructible_v<WindowDc>, "a window's context has one owner");

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
