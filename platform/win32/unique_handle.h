#pragma once
// One owner type for every kind of handle this layer makes or is handed.
//
// An owner holds one handle and gives it back with the call of its kind, which a traits type
// names: DeleteObject for GDI objects, DeleteDC for a context made with CreateCompatibleDC and
// ReleaseDC, with its window, for one got with GetDC; FindClose, CloseHandle, RegCloseKey,
// FreeLibrary, ImageList_Destroy, DestroyMenu, DrawDibClose. Owners move and never copy.
//
// Wrap a handle in the expression that makes it, before anything that can throw: a handle that
// waits in a raw variable is one bad_alloc away from never being given back.

#include <windows.h>
// Both need windows.h first.
#include <commctrl.h>
#include <vfw.h>

#include <type_traits>
#include <utility>

template <class Traits>
class UniqueHandle {
public:
    using Handle = typename Traits::Handle;

    UniqueHandle() = default;
    explicit UniqueHandle(Handle handle, Traits traits = {}) : m_handle(handle), m_traits(traits) {}
    ~UniqueHandle() { Reset(); }
    UniqueHandle(UniqueHandle&& other) noexcept
        : m_handle(std::exchange(other.m_handle, Traits::Invalid())), m_traits(other.m_traits) {}
    UniqueHandle& operator=(UniqueHandle&& other) noexcept {
        if (this != &other) {
            Reset();
            m_handle = std::exchange(other.m_handle, Traits::Invalid());
            m_traits = other.m_traits;
        }
        return *this;
    }
    UniqueHandle(const UniqueHandle&) = delete;
    UniqueHandle& operator=(const UniqueHandle&) = delete;

    explicit operator bool() const { return m_handle != Traits::Invalid(); }
    Handle Get() const { return m_handle; }

    // Gives the handle back now. False when the release call failed, which for a file written
    // through the handle is the last word on whether the bytes reached the disk.
    bool Reset() {
        if (m_handle == Traits::Invalid())
            return true;
        return m_traits.Close(std::exchange(m_handle, Traits::Invalid()));
    }

private:
    Handle m_handle = Traits::Invalid();
    [[no_unique_address]] Traits m_traits;
};

template <class Owner>
constexpr bool kMoveOnly =
    !std::is_copy_constructible_v<Owner> && !std::is_copy_assignable_v<Owner> &&
    std::is_nothrow_move_constructible_v<Owner> && std::is_nothrow_move_assignable_v<Owner>;

// Traits of the handles that are null when there is none.
template <class H>
struct NullIsNone {
    using Handle = H;
    static Handle Invalid() { return nullptr; }
};

template <class H>
struct GdiObjectTraits : NullIsNone<H> {
    static bool Close(H object) { return ::DeleteObject(object) != FALSE; }
};
using BitmapHandle = UniqueHandle<GdiObjectTraits<HBITMAP>>;
static_assert(kMoveOnly<BitmapHandle>, "a bitmap has one owner");
using BrushHandle = UniqueHandle<GdiObjectTraits<HBRUSH>>;
static_assert(kMoveOnly<BrushHandle>, "a brush has one owner");
using FontHandle = UniqueHandle<GdiObjectTraits<HFONT>>;
static_assert(kMoveOnly<FontHandle>, "a font has one owner");
using PaletteHandle = UniqueHandle<GdiObjectTraits<HPALETTE>>;
static_assert(kMoveOnly<PaletteHandle>, "a palette has one owner");

// A context made with CreateCompatibleDC or CreateDC.
struct MemoryDcTraits : NullIsNone<HDC> {
    static bool Close(HDC dc) { return ::DeleteDC(dc) != FALSE; }
};
using MemoryDc = UniqueHandle<MemoryDcTraits>;
static_assert(kMoveOnly<MemoryDc>, "a memory context has one owner");

// A window's context got with GetDC, given back to the same window (null for the screen's).
struct WindowDcTraits : NullIsNone<HDC> {
    HWND window = nullptr;
    bool Close(HDC dc) const { return ::ReleaseDC(window, dc) == 1; }
};
using WindowDc = UniqueHandle<WindowDcTraits>;
static_assert(kMoveOnly<WindowDc>, "a window's context has one owner");

// The context of `window`, or of the screen for null.
inline WindowDc GetWindowDc(HWND window) {
    return WindowDc(::GetDC(window), WindowDcTraits{{}, window});
}

struct FindTraits {
    using Handle = HANDLE;
    static Handle Invalid() { return INVALID_HANDLE_VALUE; }
    static bool Close(HANDLE search) { return ::FindClose(search) != FALSE; }
};
using FindHandle = UniqueHandle<FindTraits>;
static_assert(kMoveOnly<FindHandle>, "a search has one owner");

// A file as CreateFileW opens it: INVALID_HANDLE_VALUE, not null, says there is none.
struct FileTraits {
    using Handle = HANDLE;
    static Handle Invalid() { return INVALID_HANDLE_VALUE; }
    static bool Close(HANDLE file) { return ::CloseHandle(file) != FALSE; }
};
using FileHandle = UniqueHandle<FileTraits>;
static_assert(kMoveOnly<FileHandle>, "a file has one owner");

// An opened or created key. The predefined root keys are never held by one.
struct RegistryKeyTraits : NullIsNone<HKEY> {
    static bool Close(HKEY key) { return ::RegCloseKey(key) == ERROR_SUCCESS; }
};
using RegistryKey = UniqueHandle<RegistryKeyTraits>;
static_assert(kMoveOnly<RegistryKey>, "a key has one owner");

// The key at `path` below `parent`, opened for `access`; empty where there is none to open.
inline RegistryKey OpenRegistryKey(HKEY parent, const wchar_t* path, REGSAM access) {
    HKEY key = nullptr;
    const LSTATUS status = ::RegOpenKeyExW(parent, path, 0, access, &key);
    return RegistryKey(status == ERROR_SUCCESS ? key : nullptr);
}

// A library loaded with LoadLibraryW; a module found with GetModuleHandle is not ours to free.
struct ModuleTraits : NullIsNone<HMODULE> {
    static bool Close(HMODULE module) { return ::FreeLibrary(module) != FALSE; }
};
using ModuleHandle = UniqueHandle<ModuleTraits>;
static_assert(kMoveOnly<ModuleHandle>, "a loaded library has one owner");

struct ImageListTraits : NullIsNone<HIMAGELIST> {
    static bool Close(HIMAGELIST list) { return ::ImageList_Destroy(list) != FALSE; }
};
using ImageListHandle = UniqueHandle<ImageListTraits>;
static_assert(kMoveOnly<ImageListHandle>, "an image list has one owner");

// A menu that no window holds: a window destroys the menu bar it was given by itself.
struct MenuTraits : NullIsNone<HMENU> {
    static bool Close(HMENU menu) { return ::DestroyMenu(menu) != FALSE; }
};
using MenuHandle = UniqueHandle<MenuTraits>;
static_assert(kMoveOnly<MenuHandle>, "a menu has one owner");

struct DrawDibTraits : NullIsNone<HDRAWDIB> {
    static bool Close(HDRAWDIB drawDib) { return ::DrawDibClose(drawDib) != FALSE; }
};
using DrawDibHandle = UniqueHandle<DrawDibTraits>;
static_assert(kMoveOnly<DrawDibHandle>, "a DrawDib context has one owner");
