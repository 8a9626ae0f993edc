#include "platform/win32/win32_theme.h"

#include <uxtheme.h>

#include "platform/win32/gdi_canvas.h"
#include "platform/win32/gdi_handles.h"

namespace {

using IsThemeActiveFunction = BOOL(WINAPI*)();
using OpenThemeDataFunction = HTHEME(WINAPI*)(HWND, LPCWSTR);
using CloseThemeDataFunction = HRESULT(WINAPI*)(HTHEME);
using DrawThemeBackgroundFunction = HRESULT(WINAPI*)(HTHEME, HDC, int, int, const RECT*,
                                                     const RECT*);

template <class Function>
Function Lookup(const ModuleHandle& library, const char* name) {
    if (!library)
        return nullptr;
    return reinterpret_cast<Function>(
        reinterpret_cast<void*>(::GetProcAddress(library.Get(), name)));
}

// Reads the version as the system reports it to a program without a manifest's promises,
// which is what decided, when styles came, whether a program could use them.
bool SystemHasStyles() {
    OSVERSIONINFOW version{};
    version.dwOSVersionInfoSize = sizeof(version);
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
    if (!::GetVersionExW(&version))
        return false;
#pragma GCC diagnostic pop
    return MAKEWORD(version.dwMinorVersion, version.dwMajorVersion) >= MAKEWORD(1, 5);
}

class Win32ThemeData : public ThemeData {
public:
    explicit Win32ThemeData(ModuleHandle library)
        : m_library(std::move(library)),
          m_open(Lookup<OpenThemeDataFunction>(m_library, "OpenThemeData")),
          m_close(Lookup<CloseThemeDataFunction>(m_library, "CloseThemeData")),
          m_draw(Lookup<DrawThemeBackgroundFunction>(m_library, "DrawThemeBackground")) {}
    ~Win32ThemeData() override {
        // The theme is closed while the library that made it is still loaded.
        if (m_theme != nullptr && m_close != nullptr)
            m_close(m_theme);
    }
    Win32ThemeData(const Win32ThemeData&) = delete;
    Win32ThemeData& operator=(const Win32ThemeData&) = delete;

    // False when the library lacks the function or the class has no theme data.
    bool Open(const std::wstring& classList) {
        if (m_open != nullptr)
            m_theme = m_open(nullptr, classList.c_str());
        return m_theme != nullptr;
    }

    bool DrawBackground(Canvas& canvas, int part, int state, const win::RECT& rect) override {
        auto* gdi = dynamic_cast<GdiCanvas*>(&canvas);
        if (gdi == nullptr || m_draw == nullptr)
            return false;
        const RECT area{rect.left, rect.top, rect.right, rect.bottom};
        return SUCCEEDED(m_draw(m_theme, gdi->Dc(), part, state, &area, nullptr));
    }

private:
    ModuleHandle m_library;
    HTHEME m_theme = nullptr;
    OpenThemeDataFunction m_open;
    CloseThemeDataFunction m_close;
    DrawThemeBackgroundFunction m_draw;
};

}  // namespace

Win32Theme::Win32Theme(std::wstring library)
    : m_strLibrary(std::move(library)), m_bStylesExist(SystemHasStyles()) {}

bool Win32Theme::IsActive() {
    if (!m_bStylesExist)
        return false;
    const ModuleHandle library(::LoadLibraryW(m_strLibrary.c_str()));
    const auto isActive = Lookup<IsThemeActiveFunction>(library, "IsThemeActive");
    return isActive != nullptr && isActive() != FALSE;
}

std::unique_ptr<ThemeData> Win32Theme::Open(const std::wstring& classList) {
    if (!m_bStylesExist)
        return nullptr;
    ModuleHandle library(::LoadLibraryW(m_strLibrary.c_str()));
    if (!library)
        return nullptr;
    auto data = std::make_unique<Win32ThemeData>(std::move(library));
    if (!data->Open(classList))
        return nullptr;
    return data;
}
