#include "views/paint_window.h"

#include <cstdint>
#include <memory>
#include <vector>

#include "ports/canvas.h"
#include "ports/port.h"
#include "ports/system_look.h"
#include "ports/window_system.h"
#include "views/tab_painter.h"

bool PaintOffScreen(HostWindow* window,
                    const std::function<void(Canvas&, const win::RECT& client)>& paint) {
    std::unique_ptr<Canvas> surface = Use<WindowSystem>().BeginPaint(window);
    if (surface == nullptr)
        return false;
    const int width = surface->Width();
    const int height = surface->Height();
    if (width <= 0 || height <= 0)
        return false;
    std::unique_ptr<Canvas> memory = surface->CreateCompatible(width, height);
    if (memory == nullptr)
        return false;
    paint(*memory, win::RECT{0, 0, width, height});
    std::vector<std::uint8_t> rgb(static_cast<std::size_t>(width) * height * 3);
    if (!memory->ReadRgb(0, 0, width, height, rgb.data()))
        return false;
    surface->BlitRgb(rgb.data(), width, height, width * 3, 0, 0);
    return true;
}

PaintColors SystemPaintColors() {
    PaintColors colors;
    if (!IsInstalled<SystemLook>())
        return colors;
    SystemLook& look = Use<SystemLook>();
    colors.btnFace = look.SysColor(syscolor::kBtnFace);
    colors.btnText = look.SysColor(syscolor::kBtnText);
    colors.btnShadow = look.SysColor(syscolor::kBtnShadow);
    colors.btnHighlight = look.SysColor(syscolor::kBtnHighlight);
    colors.activeCaption = look.SysColor(syscolor::kActiveCaption);
    return colors;
}
