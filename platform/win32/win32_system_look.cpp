#include "platform/win32/win32_system_look.h"

#include <windows.h>

#include <cstring>

static_assert(sizeof(::LOGFONTW) == sizeof(win::LOGFONTW), "the portable twin keeps the layout");

win::COLORREF Win32SystemLook::SysColor(int index) {
    return static_cast<win::COLORREF>(::GetSysColor(index));
}

win::LOGFONTW Win32SystemLook::DefaultGuiFont() {
    win::LOGFONTW font;
    // A stock object: neither selected nor deleted here.
    HGDIOBJ stock = ::GetStockObject(DEFAULT_GUI_FONT);
    ::LOGFONTW native{};
    if (stock != nullptr && ::GetObjectW(stock, sizeof native, &native) == sizeof native)
        std::memcpy(static_cast<void*>(&font), &native, sizeof font);
    return font;
}
