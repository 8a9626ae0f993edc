#include "platform/sim/sim_system_look.h"

win::COLORREF SimSystemLook::SysColor(int index) {
    switch (index) {
        case syscolor::kBtnFace:
            return kBtnFace;
        case syscolor::kBtnText:
            return kBtnText;
        case syscolor::kActiveCaption:
            return kActiveCaption;
        case syscolor::kBtnShadow:
            return kBtnShadow;
        case syscolor::kBtnHighlight:
            return kBtnHighlight;
        default:
            return kOther;
    }
}

win::LOGFONTW SimSystemLook::DefaultGuiFont() {
    win::LOGFONTW font;
    font.lfHeight = -11;  // 8 points at 96 dots per inch
    font.lfWeight = 400;
    font.lfCharSet = 1;  // DEFAULT_CHARSET
    const char16_t face[] = u"MS Shell Dlg";
    for (std::size_t i = 0; i < sizeof face / sizeof face[0]; ++i)
        font.lfFaceName[i] = face[i];
    return font;
}
